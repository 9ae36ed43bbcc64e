#include "solverfile/StartWindowLogic.h"

#include <gtest/gtest.h>

#include "TestFiles.h"
#include "shell/Error.h"
#include "shell/TextFile.h"

namespace zs = zarvion::solverfile;
using zarvion::testing::dataFile;
using zarvion::testing::ScratchDir;
using F = zs::StartField;

namespace {

//! A problem that passes every check: 1 atm, 1000 K in [200, 6000], 0..1 s.
zs::StartWindowFields goodFields()
{
    zs::StartWindowFields f;
    f.Text1 = "1";
    f.Text3 = "1000";
    f.Text4 = {"0", "1", "1E-10", "1E-6", "1E-15", "5000", "1"};
    f.Text7 = "200";
    f.Text6 = "6000";
    f.fractions = {"0.3", "", "0.7"};
    return f;
}

struct Edit {
    F field;
    const char* value;
    int row = 0; //!< species row when the field is the fraction table
};

std::string& at(zs::StartWindowFields& f, const Edit& e)
{
    switch (e.field) {
    case F::Text1: return f.Text1;
    case F::Text3: return f.Text3;
    case F::Text7: return f.Text7;
    case F::Text6: return f.Text6;
    case F::GridEX1: return f.fractions.at(e.row);
    default: return f.Text4.at(static_cast<int>(e.field) - static_cast<int>(F::Text4_0));
    }
}

const char* const Positive = "Pressure, please enter a positive number.";
const char* const Interval = "Allowable temperature interval, please enter a positive number.";
const char* const Fractions = "Initial mole fractions, please enter positive numbers.";

} // namespace

TEST(StartWindowLogic, NonNumericFieldsRefusedInWindowOrder)
{
    // Every field unusable: the first check names the pressure; mending the fields one by one
    // walks through the messages in the order the window checks them.
    struct Step {
        F field;
        int tab;
        const char* message;
    };
    const Step steps[] = {
        {F::Text1, 1, Positive},
        {F::Text3, 1, "Initial temperature, please enter a positive number."},
        {F::Text4_0, 1, "Initial time, please enter a number."},
        {F::Text4_1, 1, "Final time, please enter a number."},
        {F::Text4_2, 1, "Initial step size, please enter a positive number."},
        {F::Text4_3, 1, "Relative tolerance, please enter a number on the interval (1.E-14, 1)."},
        {F::Text4_4, 1, "Absolute tolerance, please enter a positive number."},
        {F::Text4_5, 2,
         "Maximum number of computed steps, please enter a positive integer less than 100000."},
        {F::Text4_6, 2, "Step of data output, please entera a positive integer."},
        {F::Text7, 2, Interval},
        {F::Text6, 2, Interval},
    };
    auto good = goodFields();
    zs::StartWindowFields f = good;
    f.Text1 = f.Text3 = f.Text7 = f.Text6 = "abc";
    f.Text4.fill("");
    for (const auto& step : steps) {
        const auto check = zs::ValidateStartWindow(f);
        ASSERT_FALSE(check.passed);
        EXPECT_EQ(check.field, step.field);
        EXPECT_EQ(check.tab, step.tab);
        EXPECT_EQ(check.message, step.message);
        at(f, {step.field, ""}) = at(good, {step.field, ""});
    }
    EXPECT_TRUE(zs::ValidateStartWindow(f).passed);
}

TEST(StartWindowLogic, BoundsRangesAndSilentCorrections)
{
    // Edits of the good problem, the field refused (None: passes), its tab, the message and
    // refused fraction row where checked, and field texts after the silent corrections.
    struct Case {
        std::vector<Edit> edits;
        F field;
        int tab = 0;
        const char* message = nullptr;
        int row = -2;
        std::vector<Edit> after = {};
    };
    const Case cases[] = {
        {{}, F::None, 0, nullptr, -2, {{F::Text4_5, "5000"}, {F::Text4_2, "1E-10"}}},
        // Step limit: the limit itself passes; a huge negative is refused without overflow.
        {{{F::Text4_5, "100000"}}, F::None}, {{{F::Text4_5, "100001"}}, F::Text4_5, 2},
        {{{F::Text4_5, "-1E300"}}, F::Text4_5, 2}, {{{F::Text4_5, "0"}}, F::Text4_5, 2},
        // Relative tolerance: closed interval at both ends.
        {{{F::Text4_3, "1"}}, F::None}, {{{F::Text4_3, "1E-14"}}, F::None},
        {{{F::Text4_3, "1.0001"}}, F::Text4_3, 1}, {{{F::Text4_3, "9E-15"}}, F::Text4_3, 1},
        {{{F::Text1, "0"}}, F::Text1, 1, Positive}, {{{F::Text1, "-5"}}, F::Text1, 1},
        // Beyond the double range: refused as non-numeric. Large but finite values pass the
        // numeric checks and meet the range checks.
        {{{F::Text1, "1E400"}}, F::Text1, 1}, {{{F::Text3, "1E300"}}, F::Text3, 1},
        {{{F::Text4_1, "-1E999"}}, F::Text4_1, 1, "Final time, please enter a number."},
        {{{F::GridEX1, "1E500"}}, F::GridEX1, 1, Fractions, 0},
        // Fractions: checked after the text fields and before the temperature interval.
        {{{F::GridEX1, "x", 1}, {F::GridEX1, "-1", 2}, {F::Text7, "7000"}}, F::GridEX1, 1,
         Fractions, 1},
        {{{F::GridEX1, "0", 1}, {F::GridEX1, "-1", 2}, {F::Text7, "7000"}}, F::GridEX1, 1,
         Fractions, 2},
        {{{F::GridEX1, "0", 1}, {F::GridEX1, "-1", 2}, {F::Text1, "q"}}, F::Text1, 1, Positive},
        // All zero or empty: refused last, after every field check.
        {{{F::GridEX1, "", 0}, {F::GridEX1, "0", 1}, {F::GridEX1, "0.0", 2}}, F::GridEX1, 1,
         "The solver cannot start because initial mole fractions have not been specified.", -1},
        {{{F::GridEX1, "", 0}, {F::GridEX1, "0.0", 2}, {F::Text4_4, "0"}}, F::Text4_4, 1},
        // Temperature and time intervals; 0 passes as a minimum, the ends are included.
        {{{F::Text7, "-1"}}, F::Text7, 2,
         "Minimum value of the allowable temperature interval, please enter a positive number."},
        {{{F::Text7, "0"}}, F::None}, {{{F::Text3, "6000"}}, F::None},
        {{{F::Text7, "6000"}}, F::Text7, 2,
         "Allowable temperature interval, the minimum value is equal to or greater than the "
         "maximum value. Enter a correct values."},
        {{{F::Text3, "199.5"}, {F::Text6, "2500.25"}}, F::Text3, 1,
         "The initial temperature is outside of the interval (200, 2500.25). Enter a correct "
         "value."},
        {{{F::Text4_0, "1"}}, F::Text4_0, 1,
         "The initial time is equal to or greater than the final time. Enter correct values."},
        {{{F::Text4_2, "0"}}, F::None}, {{{F::Text4_2, "-1E-9"}}, F::Text4_2, 1},
        // Span 1 s: an initial step of 1 becomes 1/100 = 1.0E-02.
        {{{F::Text4_2, "1"}}, F::None, 0, nullptr, -2, {{F::Text4_2, "1.0E-02"}}},
        // 5 steps with output every 4th: raised to 3 x 4 = 12; 2 steps with output every
        // step: raised to the minimum of 3.
        {{{F::Text4_5, "5"}, {F::Text4_6, "4"}}, F::None, 0, nullptr, -2, {{F::Text4_5, "12"}}},
        {{{F::Text4_5, "2"}, {F::Text4_6, "1"}}, F::None, 0, nullptr, -2, {{F::Text4_5, "3"}}},
        // Output step rounded half to even and written back: 2.5 -> 2, steps 3 x 2.
        {{{F::Text4_5, "2"}, {F::Text4_6, "2.5"}}, F::None, 0, nullptr, -2,
         {{F::Text4_6, "2"}, {F::Text4_5, "6"}}},
        // A rounded output step of 0 is written back and then refused.
        {{{F::Text4_5, "2"}, {F::Text4_6, "0.4"}}, F::Text4_6, 2, nullptr, -2, {{F::Text4_6, "0"}}},
        {{{F::Text4_6, "1E300"}}, F::Text4_6, 2},
    };
    for (std::size_t k = 0; k < std::size(cases); ++k) {
        SCOPED_TRACE("case " + std::to_string(k));
        const Case& c = cases[k];
        auto f = goodFields();
        for (const Edit& e : c.edits) at(f, e) = e.value;
        auto check = zs::ValidateStartWindow(f);
        EXPECT_EQ(check.passed, c.field == F::None) << check.message;
        EXPECT_EQ(check.field, c.field);
        if (c.tab) { EXPECT_EQ(check.tab, c.tab); }
        if (c.message) { EXPECT_EQ(check.message, c.message); }
        if (c.row != -2) { EXPECT_EQ(check.fractionRow, c.row); }
        for (const Edit& e : c.after) EXPECT_EQ(at(check.fields, e), e.value);
    }
}

TEST(StartWindowLogic, SpeciesTableAndPolynomialWarning)
{
    // H2O with data and a fraction, AR with all coefficients zero and no fraction.
    const auto lines = zarvion::testing::readLines(dataFile("solverfile/start_window_species.txt"));
    ASSERT_EQ(zs::FindFirstRecordLine(lines), 35);
    const auto species = zs::ReadStartWindowSpecies(lines, 35, 2);
    ASSERT_EQ(species.size(), 2u);
    EXPECT_EQ(species[0].name, "H2O");
    EXPECT_EQ(species[0].MolFormula, "H2O1");
    EXPECT_EQ(species[0].fraction, "2.500E-01");
    EXPECT_EQ(species[1].fraction, "");
    EXPECT_DOUBLE_EQ(species[0].weight, 18.01528);
    EXPECT_EQ(zs::PolinomCheckText(species),
              "Temperature can be calculated erroneously because thermodynamic data aren't "
              "specified for the species: 'AR'.");
    EXPECT_EQ(zs::PolinomCheckText({species[0]}), "");
    EXPECT_THROW(zs::ReadStartWindowSpecies(lines, 35, 3), zarvion::Error);

    // Seven species without data: five names, then "'...", cut to 142 characters plus "...".
    std::vector<zs::StartWindowSpecies> many(7, species[1]);
    for (auto& s : many) s.recordLines[0] = " 2    C6H5CH2OOHXYZ    C7H8O2";
    const auto text = zs::PolinomCheckText(many);
    EXPECT_EQ(text.size(), 145u);
    EXPECT_EQ(text.substr(142), "...");
}

TEST(StartWindowLogic, LastStepConvertsMassToMoleFractions)
{
    // Two species, H2 (2.016) and O2 (31.998), mass fractions 0.5 / 0.5 at the last record
    // (t 0.25 s, 1234.56 K): x_H2 = (0.5/2.016) / (0.5/2.016 + 0.5/31.998) = 0.940730 (hand
    // calculation) -> 9.407E-01, x_O2 = 1 - x_H2 = 0.059270 -> 5.927E-02; T to 0.1 K.
    const auto file = dataFile("solverfile/last_step_results.txt");
    const auto state = zs::LastVal(file, {2.016, 31.998}, 1E-15);
    ASSERT_TRUE(state.has_value());
    EXPECT_DOUBLE_EQ(state->LastTime, 0.25);
    EXPECT_EQ(state->values, (std::vector<std::string>{"1234.6", "9.407E-01", "5.927E-02"}));
    // A tolerance above a fraction zeroes it.
    EXPECT_EQ(zs::LastVal(file, {2.016, 31.998}, 0.1)->values[2], "0");
    // Without the closing "!$END" there is no last step.
    ScratchDir dir("laststep");
    auto lines = zarvion::testing::readLines(file);
    lines.resize(3);
    const auto noEnd = dir.write("noend.txt", zarvion::testing::joinCrLf(lines));
    EXPECT_FALSE(zs::LastVal(noEnd, {2.016, 31.998}, 1E-15).has_value());
}

TEST(StartWindowLogic, SettingsRoundTripDefaultsAndMatchByName)
{
    zs::SavedSettings s;
    s.SolverPath = "/tmp/a.txt";
    s.Text1 = "1";
    s.Text3 = "1400";
    s.Text7 = "300";
    s.Text6 = "5000";
    s.Text4 = {"0", "0.05", "1E-10", "1E-6", "1E-15", "9000", "2"};
    s.adiabatic = true;
    s.fractions = {{"CH4", "0.095"}, {"AR", "0"}, {"O2", "0.19"}};
    const auto lines = zarvion::shell::SplitLines(zs::ComposeSolverData(s));
    ASSERT_EQ(lines.size(), 17u); // count, entries 0..13, two fractions above 0
    EXPECT_EQ(lines[0], "15");
    EXPECT_EQ(lines[14], "");
    EXPECT_EQ(lines[15], "CH4 0.095");
    const auto back = zs::ParseSolverData(lines);
    EXPECT_EQ(back.Text3, "1400");
    EXPECT_EQ(back.Text4[6], "2");
    EXPECT_TRUE(back.adiabatic);
    ASSERT_EQ(back.fractions.size(), 2u);
    EXPECT_EQ(zs::ApplySavedFractions({"O2", "N2", "CH4"}, back),
              (std::vector<std::string>{"1.9E-01", "0", "9.5E-02"}));
    EXPECT_THROW(zs::ParseSolverData({"15", "a"}), zarvion::Error);
    EXPECT_THROW(zs::ParseSolverData({"garbage"}), zarvion::Error);

    const auto d = zs::DefoultVaues();
    EXPECT_EQ(d.Text4_1 + " " + d.Text4_2 + " " + d.Text4_4, "1.E+00 1.E-10 1.E-15");
}

TEST(StartWindowLogic, RunVerdictFromTheFile)
{
    ScratchDir dir("verdict");
    auto v = zs::EvaluateSolverRun(
        dir.write("ok.txt", "x\r\n!$Results   $$\r\nrow\r\n!$END\r\nStatistics\r\n"));
    EXPECT_TRUE(v.EndFound && v.ResultsFound && !v.ErrorFound);
    EXPECT_EQ(v.message,
              "The chemical kinetic problem has been successfully solved.\r\n\r\nShow results?");
    EXPECT_EQ(v.style, 68);

    v = zs::EvaluateSolverRun(
        dir.write("err.txt", "x\r\n!$Results   $$\r\nrow\r\nERROR step\r\nwhy\r\n!$END\r\n"));
    EXPECT_TRUE(v.ErrorFound);
    EXPECT_FALSE(v.EndFound); // the scan stops at the first of the two
    EXPECT_EQ(v.message,
              " The solver has been terminated abnormally.\r\nwhy\r\n!$END\r\n\r\nShow results?");
    EXPECT_EQ(v.style, 52);

    v = zs::EvaluateSolverRun(dir.write("cut.txt", "x\r\n!$END extra\r\nrow\r\n"));
    EXPECT_FALSE(v.EndFound); // "!$END" must be the whole line
    EXPECT_EQ(v.message, " The solver has been terminated abnormally.\r\n");
    EXPECT_EQ(v.style, 48);
    EXPECT_TRUE(
        zs::EvaluateSolverRun(dir.write("early.txt", "error in title\r\n!$Results\r\n!$END\r\n"))
            .ErrorFound);

    EXPECT_EQ(zs::ReadSolverFilePath(dir.write("path.txt", "/data/run,1/a.txt\r\n")), "/data/run");
    EXPECT_THROW(zs::ReadSolverFilePath("/nonexistent/SolverFilePath.txt"), zarvion::Error);
}
