// Loading solved files for comparison: refusals, pressure, step mark, target marks, species
// merge, and profiles as P/T times mole fraction worked out by hand.

#include <gtest/gtest.h>

#include "comparison/ComparisonData.h"
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
    ASSERT_TRUE(Open("a.txt", DataLines("comparison/no_step_column.txt")).empty());
    EXPECT_DOUBLE_EQ(f.Pressure, 2.5);
    EXPECT_FALSE(f.HasStepMark);
    ReadSpecies(f);
    EXPECT_EQ(f.speciesCount, 9);
    EXPECT_DOUBLE_EQ(f.Tolerance, 1e-12);
    ASSERT_EQ(f.SpeciesList.size(), 10U);
    EXPECT_EQ(f.SpeciesList[0][1], "v"); // -1 stands for temperature
    EXPECT_EQ(f.SpeciesList[3][0], "H");
    EXPECT_EQ(f.SpeciesList[3][1], "v");
    EXPECT_EQ(f.SpeciesList[7][1], "v");
    EXPECT_EQ(f.SpeciesList[5][1], "*");
    EXPECT_DOUBLE_EQ(f.MolecularWeight[2], 31.998);

    // a count of 3 with only one number behind it marks that one; no "!" means no targets
    Lines lines = SmallSolved();
    lines[11] = " 3 5 !Targets";
    ASSERT_TRUE(Open("b.txt", lines).empty());
    EXPECT_TRUE(f.HasStepMark);
    ReadSpecies(f);
    EXPECT_EQ(f.SpeciesList[0][1], "*");
    EXPECT_EQ(f.SpeciesList[5][1], "v");
    lines[11] = " 2 -1 5 Targets without comment mark";
    ASSERT_TRUE(Open("c.txt", lines).empty());
    ReadSpecies(f);
    for (const auto& s : f.SpeciesList) {
        EXPECT_EQ(s[1], "*") << s[0];
    }
    // a species count that does not fit is a fault, not an allocation; a target count far
    // beyond the numbers behind it reads the numbers that are there
    lines[9] = " 1E+300 !Species";
    ASSERT_TRUE(Open("huge.txt", lines).empty());
    EXPECT_THROW(ReadSpecies(f), zarvion::Error);
    lines[9] = " 9 !Species";
    lines[11] = " 99999999999 -1 !Targets";
    ASSERT_TRUE(Open("count.txt", lines).empty());
    ReadSpecies(f);
    EXPECT_EQ(f.SpeciesList[0][1], "v");
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
    const auto t = MergeSpecies(a, b);
    ASSERT_EQ(t.size(), expected.size());
    for (std::size_t i = 0; i < t.size(); ++i) {
        SCOPED_TRACE("row " + std::to_string(i));
        EXPECT_EQ(t[i].name, expected[i].name);
        EXPECT_EQ(t[i].mark1, expected[i].mark1);
        EXPECT_EQ(t[i].mark2, expected[i].mark2);
        EXPECT_EQ(t[i].number1, expected[i].number1);
        EXPECT_EQ(t[i].number2, expected[i].number2);
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
    shell::Message m = PrepGrid(good, missing, set);
    EXPECT_EQ(m.text, "File2, the specified Path/File name '" + missing.string() +
                          "' cannot be accessed or is invalid.");
    EXPECT_EQ(m.style, 48);
    EXPECT_TRUE(set.MergedTable.empty());

    // three records behind the head are too few for the check for results
    const auto few = WriteLines(dir / "few.txt", FirstRecords(SmallSolved(), 3));
    m = PrepGrid(good, few, set);
    EXPECT_EQ(m.text, "In the file '" + few.string() + "', results of calculation are not found.");

    // the second file lacks H2O2; its path comes with blanks around it
    const auto smaller = WriteLines(dir / "smaller.txt", DataLines("comparison/without_h2o2.txt"));
    ASSERT_TRUE(PrepGrid(good, " " + smaller.string() + " ", set).empty());
    EXPECT_EQ(set.file1.RecordCount, 6);
    EXPECT_EQ(set.file2.RecordCount, 6);
    ASSERT_EQ(set.MergedTable.size(), 10U);
    EXPECT_EQ(set.MergedTable[9].name, "H2O2");
    EXPECT_EQ(set.MergedTable[9].mark2, "");
    EXPECT_EQ(set.MergedTable[8].mark2, "*");
}

} // namespace
} // namespace zarvion::comparison
