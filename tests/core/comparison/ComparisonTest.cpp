// Comparing two solved files: loading (refusals, pressure, marks, merged species, profiles
// as P/T times mole fraction), curves, relative errors, units, plot settings, labels.

#include <gtest/gtest.h>

#include <cmath>

#include "comparison/ComparisonData.h"
#include "comparison/ComparisonPlot.h"
#include "core/reduction/TestFiles.h"
#include "shell/Error.h"

namespace zarvion::comparison {
namespace {

using namespace zarvion::testing;

class ComparisonLoadTest : public ::testing::Test {
protected:
    std::filesystem::path dir = FreshFolder("comparison_load");
    ComparisonFile f;
    //! Writes lines as dir/name and opens them as file n.
    shell::Message Open(const std::string& name, const Lines& lines, int n = 1)
    {
        return OpenFile(WriteLines(dir / name, lines), n, f);
    }
    //! Opens and reads the species of lines: their marks, temperature first.
    std::string Marks(const std::string& name, const Lines& lines)
    {
        EXPECT_TRUE(Open(name, lines).empty());
        ReadSpecies(f);
        std::string marks;
        for (const auto& s : f.SpeciesList) {
            marks += s[1];
        }
        return marks;
    }
};

TEST_F(ComparisonLoadTest, OpenFileRefusalsKeepTheirWording)
{
    const auto missing = dir / "missing.txt";
    EXPECT_EQ(OpenFile(missing, 1, f).text,
              "File 1, the specified Path/File name cannot be accessed or is invalid.");
    EXPECT_EQ(OpenFile(missing, 2, f).text,
              "File 2, the specified Path/File name cannot be accessed or is invalid.");
    const std::string bare = (dir / "bare.txt").string();
    const auto m1 = Open("bare.txt", SmallBare());
    EXPECT_EQ(m1.text, "In the file 1 '" + bare + "', results of calculation are not found.");
    EXPECT_EQ(m1.style, 48);
    // the second file's text has a doubled blank and lacks a word
    EXPECT_EQ(Open("bare.txt", SmallBare(), 2).text,
              "In the file 2 '" + bare + "', results of  are not found.");

    // head + 2 records = 3 result lines: too few; head + 3 records = 4 lines pass
    const std::string two = (dir / "two.txt").string();
    EXPECT_EQ(Open("two.txt", FirstRecords(SmallSolved(), 2)).text,
              "In the file 1 '" + two + "', results of calculation are not found.");
    EXPECT_EQ(Open("two.txt", FirstRecords(SmallSolved(), 2), 2).text,
              "In the file 2 '" + two + "', results of calculation are incomplete.");
    EXPECT_TRUE(Open("three.txt", FirstRecords(SmallSolved(), 3), 2).empty());
    EXPECT_EQ(f.resultLines.size(), 4U);
}

TEST_F(ComparisonLoadTest, PressureStepMarkAndSpeciesMarks)
{
    // pressure 2.5 atm, no step column, line 12 " 3 -1 3 7 !Targets T ..., H ..., AR ..."
    EXPECT_EQ(Marks("a.txt", DataLines("comparison/no_step_column.txt")), "v**v***v**");
    EXPECT_DOUBLE_EQ(f.Pressure, 2.5);
    EXPECT_FALSE(f.HasStepMark);
    EXPECT_EQ(f.speciesCount, 9);
    EXPECT_DOUBLE_EQ(f.Tolerance, 1e-12);
    EXPECT_EQ(f.SpeciesList[3][0], "H");
    EXPECT_DOUBLE_EQ(f.MolecularWeight[2], 31.998);

    // a count of 3 with only one number behind it marks that one; no "!" means no targets
    Lines lines = SmallSolved();
    lines[11] = " 3 5 !Targets";
    EXPECT_EQ(Marks("b.txt", lines), "*****v****");
    EXPECT_TRUE(f.HasStepMark);
    lines[11] = " 2 -1 5 Targets without comment mark";
    EXPECT_EQ(Marks("c.txt", lines), "**********");
    // a target part of nothing but white space other than blanks (a lone carriage return,
    // a tab) holds no count and marks nothing
    for (const char* blank : {" \r !Targets", "\t!Targets", " \r\t \v!"}) {
        lines[11] = blank;
        EXPECT_EQ(Marks("blank.txt", lines), "**********") << "line 12 '" << blank << "'";
    }
    // a species count that does not fit is a fault, not an allocation; a target count far
    // beyond the numbers behind it reads the numbers that are there
    lines[9] = " 1E+300 !Species";
    ASSERT_TRUE(Open("huge.txt", lines).empty());
    EXPECT_THROW(ReadSpecies(f), zarvion::Error);
    lines[9] = " 9 !Species";
    lines[11] = " 99999999999 -1 !Targets";
    EXPECT_EQ(Marks("count.txt", lines), "v*********");
}

TEST(MergeSpecies, PairsByExactNameAndAppendsTheRest)
{
    ComparisonFile a;
    a.speciesCount = 3;
    a.SpeciesList = {{"Temperature", "*"}, {"H2", "*"}, {"OH", "*"}, {"N2", "*"}};
    ComparisonFile b;
    b.speciesCount = 3;
    b.SpeciesList = {{"Temperature", "v"}, {"N2", "*"}, {"oh", "v"}, {"H2", "v"}};
    // "OH" and "oh" differ in case: two rows, each empty on the other side
    const std::vector<MergedRow> expected = {{"Temperature", "*", "v", 0, 0},
                                             {"H2", "*", "v", 1, 3},
                                             {"OH", "*", "", 2, std::nullopt},
                                             {"N2", "*", "*", 3, 1},
                                             {"oh", "", "v", std::nullopt, 2}};
    const auto key = [](const MergedRow& r) {
        return std::tuple(r.name, r.mark1, r.mark2, r.number1.value_or(-1), r.number2.value_or(-1));
    };
    const auto t = MergeSpecies(a, b);
    ASSERT_EQ(t.size(), expected.size());
    for (std::size_t i = 0; i < t.size(); ++i) {
        EXPECT_EQ(key(t[i]), key(expected[i])) << "row " << i;
    }
}

TEST_F(ComparisonLoadTest, ProfilesArePressureOverTemperatureTimesMoleFraction)
{
    // P = 2 atm, absolute tolerance 1e-8; species A, B, C of W = 2, 32, 28; rows
    // (t, T; y) = (0, 1000; 0.5, 0.5, 0), (1e-3, 2000; 0.5, 0.5, 1e-8),
    // (2e-3, 2000; 0.5, 0.5, 9.9e-9), (3e-3, 1000; 0.5, 0.5, 0)
    ASSERT_TRUE(Open("p.txt", DataLines("comparison/three_species.txt")).empty());
    ReadSpecies(f);
    ConvertToMoleFractions(f);
    ASSERT_EQ(f.RecordCount, 4);
    // hand calculation: y/W = 0.25 and 0.015625, S = 0.265625, X_A = 0.94117647
    EXPECT_NEAR(f.ProfileTable[0][0], 0.0, 1e-15);
    EXPECT_NEAR(f.ProfileTable[0][1], 1000.0, 1e-9);
    EXPECT_NEAR(f.ProfileTable[0][2], 2.0 / 1000.0 * 0.25 / 0.265625, 1e-12);
    EXPECT_NEAR(f.ProfileTable[0][3], 2.0 / 1000.0 * 0.015625 / 0.265625, 1e-12);
    const double s1 = 0.25 + 0.015625 + 1e-8 / 28.0; // C equal to the tolerance stays
    EXPECT_NEAR(f.ProfileTable[1][4], 2.0 / 2000.0 * (1e-8 / 28.0) / s1, 1e-18);
    EXPECT_NEAR(f.ProfileTable[1][2], 2.0 / 2000.0 * 0.25 / s1, 1e-12);
    EXPECT_EQ(f.ProfileTable[2][4], 0.0); // just below: counts as 0
    EXPECT_NEAR(f.ProfileTable[2][2], 2.0 / 2000.0 * 0.25 / 0.265625, 1e-12);
    EXPECT_NEAR(f.ProfileTable[3][0], 3e-3, 1e-15);
}

TEST_F(ComparisonLoadTest, RecordsOverSeveralLinesAndTheEndOfTheTable)
{
    // 53 species of weight 1, each record with a second physical line for species 51 to 53;
    // y = 0.01 everywhere but record 2's species 51 (-0.01, at the start of the further line)
    // and 52 (0.02); T = 1400 + 10 (record - 1); the fifth record's first line is cut short,
    // so the table ends behind the fourth
    ASSERT_TRUE(Open("wide.txt", DataLines("comparison/wide_53_species.txt")).empty());
    ReadSpecies(f);
    ConvertToMoleFractions(f);
    EXPECT_EQ(f.RecordCount, 4);
    // row 2, hand calculation: species 51 is negative and counts as below the tolerance;
    // species 1-50 and 53 hold 0.01, species 52 0.02, all of weight 1: S = 0.53
    const double sum = 0.53;
    const double pt = 1.0 / 1410.0;
    EXPECT_EQ(f.ProfileTable[1][1 + 51], 0.0);
    EXPECT_NEAR(f.ProfileTable[1][1 + 52], pt * 0.02 / sum, 1e-12);
    EXPECT_NEAR(f.ProfileTable[1][1 + 53], pt * 0.01 / sum, 1e-12);
    EXPECT_NEAR(f.ProfileTable[1][1 + 50], pt * 0.01 / sum, 1e-12);
}

TEST_F(ComparisonLoadTest, PrepGridChecksBothFilesThenLoadsThem)
{
    const auto good = WriteLines(dir / "good.txt", SmallSolved());
    ComparisonSet set;
    const auto missing = dir / "gone.txt";
    int refused = 0;
    shell::Message m = PrepGrid(good, missing, set, &refused);
    EXPECT_EQ(m.text, "File2, the specified Path/File name '" + missing.string() +
                          "' cannot be accessed or is invalid.");
    EXPECT_EQ(m.style, 48);
    EXPECT_EQ(refused, 2);
    EXPECT_TRUE(set.MergedTable.empty());
    PrepGrid(missing, good, set, &refused);
    EXPECT_EQ(refused, 1);

    // three records behind the head are too few for the check for results
    const auto few = WriteLines(dir / "few.txt", FirstRecords(SmallSolved(), 3));
    m = PrepGrid(good, few, set, &refused);
    EXPECT_EQ(m.text, "In the file '" + few.string() + "', results of calculation are not found.");
    EXPECT_EQ(refused, 2);

    // the second file lacks H2O2; its path comes with blanks around it
    const auto smaller = WriteLines(dir / "smaller.txt", DataLines("comparison/without_h2o2.txt"));
    ASSERT_TRUE(PrepGrid(good, " " + smaller.string() + " ", set, &refused).empty());
    EXPECT_EQ(refused, 0);
    EXPECT_EQ(set.file1.RecordCount, 6);
    EXPECT_EQ(set.file2.RecordCount, 6);
    ASSERT_EQ(set.MergedTable.size(), 10U);
    EXPECT_EQ(set.MergedTable[9].name, "H2O2");
    EXPECT_EQ(set.MergedTable[9].mark2, "");
    EXPECT_EQ(set.MergedTable[8].mark2, "*");
}

TEST(TrimProfile, LeadingZerosGoTrailingZerosStay)
{
    const Profile p = {{0, 0}, {1, 0}, {2, 3}, {3, 0}, {4, 2}, {5, 0}, {6, -1}};
    const Profile t = TrimProfile(p);
    ASSERT_EQ(t.size(), 4U);
    EXPECT_EQ(t.front()[0], 2);
    EXPECT_EQ(t.back()[0], 5);
    EXPECT_TRUE(TrimProfile({{0, 0}, {1, -2}}).empty());
}

TEST(InterpolateAt, LinearInsideNullInTheLastIntervalAndOutside)
{
    const Profile p = {{1, 10}, {2, 20}, {4, 0}, {5, 7}};
    // hand calculation: halfway between (2, 20) and (4, 0) is 10
    EXPECT_DOUBLE_EQ(InterpolateAt(3, p), 10.0);
    EXPECT_DOUBLE_EQ(InterpolateAt(1, p), 10.0);
    EXPECT_EQ(InterpolateAt(4.5, p), NullValue); // last interval
    EXPECT_EQ(InterpolateAt(5, p), NullValue);
    EXPECT_EQ(InterpolateAt(0.5, p), NullValue);
    // (t(i + 1) - t(i)) / (t(i + 1) + t(i)) below 1e-19 gives no value: with positive times
    // that needs a spacing below double precision, but a negative sum meets it
    const Profile close = {{1.0, 1}, {1.0 + 1e-15, 2}, {2, 3}, {3, 4}};
    EXPECT_DOUBLE_EQ(InterpolateAt(1.0, close), 1.0);
    const Profile negative = {{-2, 1}, {-1, 2}, {0, 3}, {1, 4}};
    EXPECT_EQ(InterpolateAt(-1.5, negative), NullValue);
    EXPECT_DOUBLE_EQ(InterpolateAt(0.5, {{0, 3}, {1, 4}, {2, 5}}), 3.5);
}

TEST(ErrorProfile, RelativeErrorWithParameterB)
{
    const Profile one = {{0, 0}, {1, 2}, {2, 4}, {3, 4}, {4, 4}};
    const Profile two = {{0, 0}, {1, 1}, {2, 2}, {3, 6}, {4, 6}, {5, 6}};
    // b = 1 divides by file 1's value, b = 0 by file 2's: |2 - 1| / 2 and / 1
    Profile e = ErrorProfile(one, two, 1.0);
    ASSERT_EQ(e.size(), 4U);
    EXPECT_DOUBLE_EQ(e[0][1], 0.5);
    EXPECT_DOUBLE_EQ(e[2][1], 0.5); // |4 - 6| / 4
    EXPECT_EQ(e[3][1], NullValue);  // t = 4 lies in file 2's last interval
    e = ErrorProfile(one, two, 0.0);
    EXPECT_DOUBLE_EQ(e[0][1], 1.0);
    EXPECT_DOUBLE_EQ(e[2][1], 2.0 / 6.0);
    e = ErrorProfile(one, two, 0.5);
    EXPECT_DOUBLE_EQ(e[0][1], 1.0 / 1.5);
    // identical profiles: every error is below 1e-6 and none is kept
    for (const auto& [t, v] : ErrorProfile(one, one, 0.5)) {
        EXPECT_EQ(v, NullValue) << t;
    }
    // a species that vanishes in file 2: those points are left out
    const Profile gone = {{0, 1}, {1, 1}, {2, 0}, {3, 0}, {4, 0}, {5, 0}};
    e = ErrorProfile(one, gone, 0.5);
    EXPECT_DOUBLE_EQ(e[0][1], 1.0 / 1.5);
    EXPECT_EQ(e[1][1], NullValue);
    EXPECT_EQ(e[2][1], NullValue);
}

TEST(UnitFactor, GasConstantAndBoltzmannOverOneAtmosphere)
{
    // R = 82.057366 cm^3 atm/(mol K) (CODATA 2018), k / 1 atm = 1.3626e-22
    EXPECT_NEAR(UnitFactor(false), 82.057366, 1e-5);
    EXPECT_NEAR(UnitFactor(true), 1.380649e-16 / 1013250.0, 1e-30);
}

TEST(CheckPlotSettings, EachFieldHasItsMessage)
{
    PlotSettings s;
    EXPECT_EQ(CheckPlotSettings("0", "1", "", s).message.text,
              "Scaling factor for X-axis, please enter a nonzero number.");
    EXPECT_EQ(CheckPlotSettings("abc", "1", "", s).field, 3);
    EXPECT_TRUE(CheckPlotSettings("-2", "-3", "7", s).message.empty()); // b not read
    EXPECT_EQ(s.XScale, -2);
    EXPECT_EQ(s.YScale, -3);
    EXPECT_EQ(CheckPlotSettings("1", "0", "", s).message.text,
              "Scaling factor for Y-axis, please enter a nonzero number.");
    s.logX = true;
    const auto cx = CheckPlotSettings("-1", "1", "", s);
    EXPECT_EQ(cx.message.text,
              "Scaling factor for logarithmic X-axis, please enter a positive number.");
    EXPECT_EQ(cx.message.style, 48);
    s.logY = true;
    EXPECT_EQ(CheckPlotSettings("1", "0", "", s).message.text,
              "Scaling factor for logarithmic Y-axis, please enter a positive number.");
    s.relativeError = true;
    for (const char* bad : {"-0.1", "1.01", "x", ""}) {
        const auto c = CheckPlotSettings("1", "1", bad, s);
        EXPECT_EQ(c.message.text,
                  "Relative error parameter, please enter a number on the interval [0, 1].");
        EXPECT_EQ(c.field, 5);
    }
    EXPECT_TRUE(CheckPlotSettings("1", "1", "1", s).message.empty());
    EXPECT_EQ(s.b, 1.0);
}

class RedPlotFunctionTest : public ::testing::Test {
protected:
    ComparisonSet set;
    void SetUp() override
    {
        // columns: time, T, species 1, species 2
        set.file1.ProfileTable = {{0, 1000, 0, 1e-3}, {1e-3, 1100, 2e-4, 1e-3},
                                  {2e-3, 1200, 4e-4, 1e-3}, {3e-3, 1300, 4e-4, 1e-3}};
        set.file1.RecordCount = 4;
        set.file2.ProfileTable = {{0, 1000, 1e-3}, {1e-3, 1000, 1e-3}, {2e-3, 1320, 1e-3},
                                  {3e-3, 1300, 1e-3}, {4e-3, 1300, 1e-3}};
        set.file2.RecordCount = 5;
        set.MergedTable = {{"Temperature", "*", "v", 0, 0},
                           {"OH", "*", "", 1, std::nullopt},
                           {"N2", "*", "*", 2, 1}};
    }
};

TEST_F(RedPlotFunctionTest, ConcentrationCurveLabelAndFilter)
{
    PlotSettings s;
    PlotCurve c = RedPlotFunction(set, 0, set.MergedTable[1], s);
    ASSERT_TRUE(c.message.empty());
    EXPECT_EQ(c.label, " F1, OH (mol/cm^3)");
    ASSERT_EQ(c.x.size(), 4U);
    // time 0 never has an X; a zero value has no point either
    EXPECT_EQ(c.x[0], NullValue);
    EXPECT_EQ(c.y[0], NullValue);
    EXPECT_DOUBLE_EQ(c.x[1], 1e-3);
    EXPECT_NEAR(c.y[1], 2e-4 / UnitFactor(false), 1e-18);

    s.molecules = true;
    s.logY = true;
    s.YScale = 2;
    c = RedPlotFunction(set, 1, set.MergedTable[2], s);
    EXPECT_EQ(c.label, " F2, N2 Log10 (1/cm^3) x 2.00E+00");
    EXPECT_NEAR(c.y[2], std::log10(2 * 1e-3 / UnitFactor(true)), 1e-12);

    s = PlotSettings{};
    s.logX = true;
    s.XScale = 1000;
    c = RedPlotFunction(set, 0, set.MergedTable[0], s);
    EXPECT_EQ(c.label, " F1, Temperature (K)");
    EXPECT_DOUBLE_EQ(c.x[1], 0.0); // log10(1e-3 x 1000)
    EXPECT_DOUBLE_EQ(c.y[1], 1100.0);

    // a species that file 2 lacks: nothing drawn, no message
    c = RedPlotFunction(set, 1, set.MergedTable[1], s);
    EXPECT_TRUE(c.skipped);
    EXPECT_TRUE(c.message.empty());
    EXPECT_TRUE(c.x.empty());
    EXPECT_TRUE(SecondCurveAdds(false, set.MergedTable[1]));
    EXPECT_FALSE(SecondCurveAdds(false, MergedRow{"X", "", "*", std::nullopt, 3}));
    EXPECT_TRUE(SecondCurveAdds(true, MergedRow{"X", "", "*", std::nullopt, 3}));
}

TEST_F(RedPlotFunctionTest, RelativeErrorAndItsRefusals)
{
    PlotSettings s;
    s.relativeError = true;
    s.b = 1.0;
    PlotCurve c = RedPlotFunction(set, 2, set.MergedTable[0], s);
    ASSERT_TRUE(c.message.empty()) << c.message.text;
    EXPECT_EQ(c.label, "Temperature, Relative Error");
    ASSERT_EQ(c.y.size(), 4U);
    EXPECT_EQ(c.y[0], NullValue);                    // time 0
    EXPECT_NEAR(c.y[1], 100.0 / 1100.0, 1e-12);      // |1100 - 1000| / 1100
    EXPECT_NEAR(c.y[2], 120.0 / 1200.0, 1e-12);
    EXPECT_EQ(c.y[3], NullValue);                    // file 2's last interval (3e-3, 4e-3)

    // a species one file lacks; file 2's refusal wins when both lack it
    const MergedRow neither{"XY", "", "", std::nullopt, std::nullopt};
    for (const auto& [row, file] : {std::pair(set.MergedTable[1], "2"), std::pair(neither, "2"),
                                    std::pair(MergedRow{"Z", "", "*", std::nullopt, 1}, "1")}) {
        EXPECT_EQ(RedPlotFunction(set, 2, row, s).message.text,
                  "File " + std::string(file) + ", the data for '" + row.name +
                      "' is not available; the comparison cannot be performed.");
    }

    // identical values everywhere: all errors vanish
    c = RedPlotFunction(set, 2, set.MergedTable[2], s);
    EXPECT_EQ(c.message.text, "You are attempting to plot a function where all values are zero.");
    s.logY = true;
    c = RedPlotFunction(set, 2, set.MergedTable[2], s);
    EXPECT_EQ(c.message.text, "You are attempting to plot a function where all values are zero "
                              "or logarithms of negative numbers. ");
    // errors below 1 give negative logarithms, which are plotted
    c = RedPlotFunction(set, 2, set.MergedTable[0], s);
    EXPECT_EQ(c.label, "Temperature, Log10 Relative Error");
    EXPECT_NEAR(c.y[1], std::log10(100.0 / 1100.0), 1e-12);
}

} // namespace
} // namespace zarvion::comparison
