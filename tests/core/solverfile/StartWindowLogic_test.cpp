#include "solverfile/StartWindowLogic.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "shell/Error.h"
#include "shell/TextFile.h"

namespace zs = zarvion::solverfile;
using zs::StartField;

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

struct TempFile {
    std::filesystem::path path;
    explicit TempFile(const std::string& name, const std::string& content)
        : path(std::filesystem::temp_directory_path() / ("zarvion_swl_" + name))
    {
        std::ofstream(path, std::ios::binary) << content;
    }
    ~TempFile() { std::filesystem::remove(path); }
};

std::string field16(double v)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%16.9E", v);
    return buf;
}

} // namespace

TEST(StartWindowLogic, GoodProblemPassesUnchanged)
{
    const auto check = zs::ValidateStartWindow(goodFields());
    EXPECT_TRUE(check.passed) << check.message;
    EXPECT_EQ(check.fields.Text4[5], "5000");
    EXPECT_EQ(check.fields.Text4[2], "1E-10");
}

TEST(StartWindowLogic, NonNumericFieldsRefusedInWindowOrder)
{
    // Every field empty: the first check names the pressure; filling the fields one by one
    // walks through the messages in the order the window checks them.
    struct Step {
        std::string zs::StartWindowFields::*member;
        int text4;
        StartField field;
        int tab;
        const char* message;
    };
    const Step steps[] = {
        {&zs::StartWindowFields::Text1, -1, StartField::Text1, 1,
         "Pressure, please enter a positive number."},
        {&zs::StartWindowFields::Text3, -1, StartField::Text3, 1,
         "Initial temperature, please enter a positive number."},
        {nullptr, 0, StartField::Text4_0, 1, "Initial time, please enter a number."},
        {nullptr, 1, StartField::Text4_1, 1, "Final time, please enter a number."},
        {nullptr, 2, StartField::Text4_2, 1, "Initial step size, please enter a positive number."},
        {nullptr, 3, StartField::Text4_3, 1,
         "Relative tolerance, please enter a number on the interval (1.E-14, 1)."},
        {nullptr, 4, StartField::Text4_4, 1, "Absolute tolerance, please enter a positive number."},
        {nullptr, 5, StartField::Text4_5, 2,
         "Maximum number of computed steps, please enter a positive integer less than 100000."},
        {nullptr, 6, StartField::Text4_6, 2,
         "Step of data output, please entera a positive integer."},
        {&zs::StartWindowFields::Text7, -1, StartField::Text7, 2,
         "Allowable temperature interval, please enter a positive number."},
        {&zs::StartWindowFields::Text6, -1, StartField::Text6, 2,
         "Allowable temperature interval, please enter a positive number."},
    };
    const auto good = goodFields();
    zs::StartWindowFields f = good;
    f.Text1 = f.Text3 = f.Text7 = f.Text6 = "abc";
    for (auto& t : f.Text4)
        t = "";
    for (const auto& step : steps) {
        const auto check = zs::ValidateStartWindow(f);
        ASSERT_FALSE(check.passed);
        EXPECT_EQ(check.field, step.field);
        EXPECT_EQ(check.tab, step.tab);
        EXPECT_EQ(check.message, step.message);
        if (step.member)
            f.*step.member = good.*step.member;
        else
            f.Text4[step.text4] = good.Text4[step.text4];
    }
    EXPECT_TRUE(zs::ValidateStartWindow(f).passed);
}

TEST(StartWindowLogic, BoundsOfStepLimitToleranceAndPressure)
{
    auto f = goodFields();
    f.Text4[5] = "100000"; // the limit itself passes
    EXPECT_TRUE(zs::ValidateStartWindow(f).passed);
    f.Text4[5] = "100001";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text4_5);
    f.Text4[5] = "-1E300"; // huge negative: refused with the same message, no overflow
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text4_5);
    f.Text4[5] = "0";
    EXPECT_EQ(zs::ValidateStartWindow(f).tab, 2);

    f = goodFields();
    f.Text4[3] = "1"; // closed interval at both ends
    EXPECT_TRUE(zs::ValidateStartWindow(f).passed);
    f.Text4[3] = "1E-14";
    EXPECT_TRUE(zs::ValidateStartWindow(f).passed);
    f.Text4[3] = "1.0001";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text4_3);
    f.Text4[3] = "9E-15";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text4_3);

    f = goodFields();
    f.Text1 = "0";
    EXPECT_EQ(zs::ValidateStartWindow(f).message, "Pressure, please enter a positive number.");
    f.Text1 = "-5";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text1);
}

TEST(StartWindowLogic, ValuesBeyondDoubleRangeAreRefusedAsNonNumeric)
{
    auto f = goodFields();
    f.Text1 = "1E400";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text1);
    f = goodFields();
    f.Text4[1] = "-1E999";
    EXPECT_EQ(zs::ValidateStartWindow(f).message, "Final time, please enter a number.");
    f = goodFields();
    f.fractions[0] = "1E500";
    EXPECT_EQ(zs::ValidateStartWindow(f).fractionRow, 0);
    // Large but finite values pass the numeric checks and meet the range checks.
    f = goodFields();
    f.Text3 = "1E300";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text3);
}

TEST(StartWindowLogic, FractionsCheckedAfterTextFieldsAndBeforeTemperatures)
{
    auto f = goodFields();
    f.fractions = {"0.5", "x", "-1"};
    f.Text7 = "7000"; // interval error further down must not win
    auto check = zs::ValidateStartWindow(f);
    EXPECT_EQ(check.field, StartField::GridEX1);
    EXPECT_EQ(check.fractionRow, 1);
    EXPECT_EQ(check.message, "Initial mole fractions, please enter positive numbers.");
    f.fractions = {"0.5", "0", "-1"};
    EXPECT_EQ(zs::ValidateStartWindow(f).fractionRow, 2);

    // A pressure error ahead of the table comes first.
    f.Text1 = "q";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text1);

    // All zero or empty: refused last, after every field check.
    f = goodFields();
    f.fractions = {"", "0", "0.0"};
    check = zs::ValidateStartWindow(f);
    EXPECT_EQ(check.field, StartField::GridEX1);
    EXPECT_EQ(check.fractionRow, -1);
    EXPECT_EQ(check.message,
              "The solver cannot start because initial mole fractions have not been specified.");
    f.Text4[4] = "0";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text4_4);
}

TEST(StartWindowLogic, TemperatureAndTimeIntervals)
{
    auto f = goodFields();
    f.Text7 = "-1";
    EXPECT_EQ(zs::ValidateStartWindow(f).message,
              "Minimum value of the allowable temperature interval, please enter a positive "
              "number.");
    f.Text7 = "0"; // 0 passes this check
    EXPECT_TRUE(zs::ValidateStartWindow(f).passed);
    f.Text7 = "6000";
    auto check = zs::ValidateStartWindow(f);
    EXPECT_EQ(check.field, StartField::Text7);
    EXPECT_EQ(check.tab, 2);
    EXPECT_EQ(check.message,
              "Allowable temperature interval, the minimum value is equal to or greater than "
              "the maximum value. Enter a correct values.");

    f = goodFields();
    f.Text3 = "6000"; // ends included
    EXPECT_TRUE(zs::ValidateStartWindow(f).passed);
    f.Text3 = "199.5";
    f.Text6 = "2500.25";
    check = zs::ValidateStartWindow(f);
    EXPECT_EQ(check.field, StartField::Text3);
    EXPECT_EQ(check.tab, 1);
    EXPECT_EQ(check.message,
              "The initial temperature is outside of the interval (200, 2500.25). Enter a correct "
              "value.");

    f = goodFields();
    f.Text4[0] = "1";
    check = zs::ValidateStartWindow(f);
    EXPECT_EQ(check.field, StartField::Text4_0);
    EXPECT_EQ(check.message,
              "The initial time is equal to or greater than the final time. Enter correct values.");
    f = goodFields();
    f.Text4[2] = "-1E-9";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text4_2);
    f.Text4[2] = "0";
    EXPECT_TRUE(zs::ValidateStartWindow(f).passed);
}

TEST(StartWindowLogic, SilentCorrections)
{
    // Span 1 s: an initial step of 1 becomes 1/100 = 1.0E-02.
    auto f = goodFields();
    f.Text4[2] = "1";
    auto check = zs::ValidateStartWindow(f);
    ASSERT_TRUE(check.passed);
    EXPECT_EQ(check.fields.Text4[2], "1.0E-02");

    // 5 steps with output every 4th: raised to 3 x 4 = 12.
    f = goodFields();
    f.Text4[5] = "5";
    f.Text4[6] = "4";
    check = zs::ValidateStartWindow(f);
    ASSERT_TRUE(check.passed);
    EXPECT_EQ(check.fields.Text4[5], "12");
    // 2 steps with output every step: raised to the minimum of 3.
    f.Text4[5] = "2";
    f.Text4[6] = "1";
    EXPECT_EQ(zs::ValidateStartWindow(f).fields.Text4[5], "3");
    // Output step rounded half to even and written back: 2.5 -> 2.
    f.Text4[6] = "2.5";
    check = zs::ValidateStartWindow(f);
    EXPECT_EQ(check.fields.Text4[6], "2");
    EXPECT_EQ(check.fields.Text4[5], "6");
    // A rounded output step of 0 is written back and then refused.
    f.Text4[6] = "0.4";
    check = zs::ValidateStartWindow(f);
    EXPECT_EQ(check.field, StartField::Text4_6);
    EXPECT_EQ(check.fields.Text4[6], "0");
    f.Text4[6] = "1E300";
    EXPECT_EQ(zs::ValidateStartWindow(f).field, StartField::Text4_6);
}

TEST(StartWindowLogic, SpeciesTableAndPolynomialWarning)
{
    std::vector<std::string> lines(34, " x !");
    lines[33] = "THERMO";
    const std::string zeros(75, ' ');
    auto record = [&](int n, const std::string& name, const std::string& fraction, bool data) {
        char first[128];
        std::snprintf(first, sizeof first, " %-4d %-17sH2O1                     300.0   5000.0   1000.0 %10s",
                      n, name.c_str(), fraction.c_str());
        lines.push_back(first);
        const std::string coeffs = data ? " 1.000000000E+00 0.000000000E+00 0.000000000E+00 0.000000000E+00 0.000000000E+00"
                                        : " 0.000000000E+00 0.000000000E+00 0.000000000E+00 0.000000000E+00 0.000000000E+00";
        lines.push_back(coeffs.substr(1));
        lines.push_back(std::string(" 0.000000000E+00 0.000000000E+00 0.000000000E+00 0.000000000E+00 0.000000000E+00").substr(1));
        lines.push_back(std::string(" 0.000000000E+00 0.000000000E+00 0.000000000E+00 0.000000000E+00 1.801528000E+01").substr(1));
    };
    record(1, "H2O", "2.500E-01", true);
    record(2, "AR", "", false);
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
    for (auto& s : many)
        s.recordLines[0] = " 2    C6H5CH2OOHXYZ    C7H8O2";
    const auto text = zs::PolinomCheckText(many);
    EXPECT_EQ(text.size(), 145u);
    EXPECT_EQ(text.substr(142), "...");
}

TEST(StartWindowLogic, LastStepConvertsMassToMoleFractions)
{
    // Two species, H2 (2.016) and O2 (31.998), mass fractions 0.5 / 0.5 at the last record:
    // x_H2 = (0.5/2.016) / (0.5/2.016 + 0.5/31.998) = 0.94072 (hand calculation) -> 9.407E-01.
    auto row = [](int n, double t, double T, double y1, double y2) {
        char head[32];
        std::snprintf(head, sizeof head, "%7d", n);
        return std::string(head) + field16(t) + " " + field16(T) + " " + field16(y1) + " " +
               field16(y2) + " " + field16(0);
    };
    const std::string content = "header\r\n!$Results   $$\r\n" + row(1, 0, 1000, 0.1, 0.9) +
                                "\r\n" + row(2, 0.25, 1234.56, 0.5, 0.5) + "\r\n!$END\r\n";
    TempFile file("laststep.txt", content);
    const auto state = zs::LastVal(file.path, {2.016, 31.998}, 1E-15);
    ASSERT_TRUE(state.has_value());
    EXPECT_DOUBLE_EQ(state->LastTime, 0.25);
    ASSERT_EQ(state->values.size(), 3u);
    EXPECT_EQ(state->values[0], "1234.6");
    EXPECT_EQ(state->values[1], "9.407E-01");
    EXPECT_EQ(state->values[2], "5.927E-02");
    // A tolerance above a fraction zeroes it.
    EXPECT_EQ(zs::LastVal(file.path, {2.016, 31.998}, 0.1)->values[2], "0");

    TempFile noEnd("noend.txt", "header\r\n!$Results   $$\r\n" + row(1, 0, 1000, 0.1, 0.9));
    EXPECT_FALSE(zs::LastVal(noEnd.path, {2.016, 31.998}, 1E-15).has_value());
}

TEST(StartWindowLogic, SettingsRoundTripAndMatchByName)
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
    const std::string text = zs::ComposeSolverData(s);
    const auto lines = zarvion::shell::SplitLines(text);
    ASSERT_EQ(lines.size(), 17u); // count, entries 0..13, two fractions above 0
    EXPECT_EQ(lines[0], "15");
    EXPECT_EQ(lines[14], "");
    EXPECT_EQ(lines[15], "CH4 0.095");
    const auto back = zs::ParseSolverData(lines);
    EXPECT_EQ(back.Text3, "1400");
    EXPECT_EQ(back.Text4[6], "2");
    EXPECT_TRUE(back.adiabatic);
    ASSERT_EQ(back.fractions.size(), 2u);

    const auto applied = zs::ApplySavedFractions({"O2", "N2", "CH4"}, back);
    EXPECT_EQ(applied, (std::vector<std::string>{"1.9E-01", "0", "9.5E-02"}));
    EXPECT_THROW(zs::ParseSolverData({"15", "a"}), zarvion::Error);
    EXPECT_THROW(zs::ParseSolverData({"garbage"}), zarvion::Error);
}

TEST(StartWindowLogic, RunVerdictFromTheFile)
{
    TempFile ok("ok.txt", "x\r\n!$Results   $$\r\nrow\r\n!$END\r\nStatistics\r\n");
    auto v = zs::EvaluateSolverRun(ok.path);
    EXPECT_TRUE(v.EndFound && v.ResultsFound && !v.ErrorFound);
    EXPECT_EQ(v.message,
              "The chemical kinetic problem has been successfully solved.\r\n\r\nShow results?");
    EXPECT_EQ(v.style, 68);

    TempFile err("err.txt", "x\r\n!$Results   $$\r\nrow\r\nERROR step\r\nwhy\r\n!$END\r\n");
    v = zs::EvaluateSolverRun(err.path);
    EXPECT_TRUE(v.ErrorFound);
    EXPECT_FALSE(v.EndFound); // the scan stops at the first of the two
    EXPECT_EQ(v.message,
              " The solver has been terminated abnormally.\r\nwhy\r\n!$END\r\n\r\nShow results?");
    EXPECT_EQ(v.style, 52);

    TempFile cut("cut.txt", "x\r\n!$END extra\r\nrow\r\n");
    v = zs::EvaluateSolverRun(cut.path);
    EXPECT_FALSE(v.EndFound); // "!$END" must be the whole line
    EXPECT_EQ(v.message, " The solver has been terminated abnormally.\r\n");
    EXPECT_EQ(v.style, 48);

    TempFile early("early.txt", "error in title\r\n!$Results\r\n!$END\r\n");
    EXPECT_TRUE(zs::EvaluateSolverRun(early.path).ErrorFound);

    TempFile pathFile("path.txt", "/data/run,1/a.txt\r\n");
    EXPECT_EQ(zs::ReadSolverFilePath(pathFile.path), "/data/run");
    EXPECT_THROW(zs::ReadSolverFilePath("/nonexistent/SolverFilePath.txt"), zarvion::Error);
}

TEST(StartWindowLogic, DefaultSettingsTexts)
{
    const auto d = zs::DefoultVaues();
    EXPECT_EQ(d.Text4_1, "1.E+00");
    EXPECT_EQ(d.Text4_2, "1.E-10");
    EXPECT_EQ(d.Text4_4, "1.E-15");
}
