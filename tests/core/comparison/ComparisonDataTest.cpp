#include <gtest/gtest.h>

#include <cmath>

#include "comparison/ComparisonData.h"
#include "shell/Error.h"
#include "core/reduction/SmallMechanism.h"

namespace zarvion::comparison {
namespace {

using namespace zarvion::testing;

std::vector<FixtureRow> Rows(std::size_t count, std::size_t species, double y = 0.1)
{
    std::vector<FixtureRow> rows;
    for (std::size_t i = 0; i < count; ++i) {
        rows.push_back({1e-4 * static_cast<double>(i), 1400.0 + 10.0 * static_cast<double>(i),
                        std::vector<double>(species, y)});
    }
    return rows;
}

class ComparisonLoadTest : public ::testing::Test {
protected:
    std::filesystem::path dir = FreshFolder("comparison_load");
    std::filesystem::path Write(const std::string& name, const std::vector<std::string>& lines)
    {
        WriteLines(dir / name, lines);
        return dir / name;
    }
};

TEST_F(ComparisonLoadTest, OpenFileRefusalsKeepTheirWording)
{
    ComparisonFile f;
    const auto missing = dir / "missing.txt";
    EXPECT_EQ(OpenFile(missing, 1, f).text,
              "File 1, the specified Path/File name cannot be accessed or is invalid.");
    EXPECT_EQ(OpenFile(missing, 2, f).text,
              "File 2, the specified Path/File name cannot be accessed or is invalid.");

    const auto noResults = Write("input.txt", SolverFileLines({}, SmallSpecies(), SmallReactions()));
    const auto m1 = OpenFile(noResults, 1, f);
    EXPECT_EQ(m1.text, "In the file 1 '" + noResults.string() +
                           "', results of calculation are not found.");
    EXPECT_EQ(m1.style, 48);
    // the second file's text has a doubled blank and lacks a word
    EXPECT_EQ(OpenFile(noResults, 2, f).text,
              "In the file 2 '" + noResults.string() + "', results of  are not found.");

    // head + 2 records = 3 result lines: too few; head + 3 records = 4 lines pass
    const auto short2 = Write("short.txt", SolverFileLines({}, SmallSpecies(), SmallReactions(),
                                                           Rows(2, 9)));
    EXPECT_EQ(OpenFile(short2, 1, f).text,
              "In the file 1 '" + short2.string() + "', results of calculation are not found.");
    EXPECT_EQ(OpenFile(short2, 2, f).text,
              "In the file 2 '" + short2.string() + "', results of calculation are incomplete.");
    const auto enough = Write("enough.txt", SolverFileLines({}, SmallSpecies(), SmallReactions(),
                                                            Rows(3, 9)));
    EXPECT_TRUE(OpenFile(enough, 2, f).empty());
    EXPECT_EQ(f.resultLines.size(), 4U);
}

TEST_F(ComparisonLoadTest, PressureStepMarkAndSpeciesMarks)
{
    FixtureProblem problem;
    problem.pressure = 2.5;
    problem.line12 = " 3 -1 3 7 !Targets T 1.000E-01, H 1.000E-01, AR 1.000E-01, Others 3.000E-01";
    ComparisonFile f;
    auto path = Write("a.txt", SolverFileLines(problem, SmallSpecies(), SmallReactions(),
                                               Rows(4, 9), false));
    ASSERT_TRUE(OpenFile(path, 1, f).empty());
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
    problem.line12 = " 3 5 !Targets";
    path = Write("b.txt", SolverFileLines(problem, SmallSpecies(), SmallReactions(), Rows(4, 9)));
    ASSERT_TRUE(OpenFile(path, 1, f).empty());
    EXPECT_TRUE(f.HasStepMark);
    ReadSpecies(f);
    EXPECT_EQ(f.SpeciesList[0][1], "*");
    EXPECT_EQ(f.SpeciesList[5][1], "v");
    problem.line12 = " 2 -1 5 Targets without comment mark";
    path = Write("c.txt", SolverFileLines(problem, SmallSpecies(), SmallReactions(), Rows(4, 9)));
    ASSERT_TRUE(OpenFile(path, 1, f).empty());
    ReadSpecies(f);
    for (const auto& s : f.SpeciesList) {
        EXPECT_EQ(s[1], "*") << s[0];
    }
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
    std::vector<FixtureSpecies> species = {{"A", "H2", 2.0}, {"B", "O2", 32.0}, {"C", "N2", 28.0}};
    FixtureProblem problem;
    problem.pressure = 2.0;
    problem.absoluteTolerance = 1e-8;
    std::vector<FixtureRow> rows = {
        {0.0, 1000.0, {0.5, 0.5, 0.0}},
        {1e-3, 2000.0, {0.5, 0.5, 1e-8}},   // equal to the tolerance: stays
        {2e-3, 2000.0, {0.5, 0.5, 9.9e-9}}, // just below: counts as 0
        {3e-3, 1000.0, {0.5, 0.5, 0.0}},
    };
    ComparisonFile f;
    ASSERT_TRUE(OpenFile(Write("p.txt", SolverFileLines(problem, species, {}, rows)), 1, f).empty());
    ReadSpecies(f);
    ConvertToMoleFractions(f);
    ASSERT_EQ(f.RecordCount, 4);
    // hand calculation: y/W = 0.25 and 0.015625, S = 0.265625, X_A = 0.94117647
    EXPECT_NEAR(f.ProfileTable[0][0], 0.0, 1e-15);
    EXPECT_NEAR(f.ProfileTable[0][1], 1000.0, 1e-9);
    EXPECT_NEAR(f.ProfileTable[0][2], 2.0 / 1000.0 * 0.25 / 0.265625, 1e-12);
    EXPECT_NEAR(f.ProfileTable[0][3], 2.0 / 1000.0 * 0.015625 / 0.265625, 1e-12);
    const double s1 = 0.25 + 0.015625 + 1e-8 / 28.0;
    EXPECT_NEAR(f.ProfileTable[1][4], 2.0 / 2000.0 * (1e-8 / 28.0) / s1, 1e-18);
    EXPECT_NEAR(f.ProfileTable[1][2], 2.0 / 2000.0 * 0.25 / s1, 1e-12);
    EXPECT_EQ(f.ProfileTable[2][4], 0.0);
    EXPECT_NEAR(f.ProfileTable[2][2], 2.0 / 2000.0 * 0.25 / 0.265625, 1e-12);
    EXPECT_NEAR(f.ProfileTable[3][0], 3e-3, 1e-15);
}

TEST_F(ComparisonLoadTest, RecordsOverSeveralLinesAndTheEndOfTheTable)
{
    // 53 species: each record has a second physical line for species 51 to 53
    std::vector<FixtureSpecies> species;
    for (int i = 1; i <= 53; ++i) {
        species.push_back({"S" + std::to_string(i), "H1", 1.0});
    }
    std::vector<FixtureRow> rows = Rows(5, 53, 0.01);
    rows[1].massFractions[50] = -0.01; // a negative value at the start of a further line
    rows[1].massFractions[51] = 0.02;
    auto lines = SolverFileLines({}, species, {}, rows);
    // cut the fifth record's first line short: the table ends behind the fourth record
    auto it = std::find(lines.begin(), lines.end(), "!$END");
    ASSERT_NE(it, lines.end());
    *(it - 2) = (it - 2)->substr(0, 100);
    ComparisonFile f;
    ASSERT_TRUE(OpenFile(Write("wide.txt", lines), 1, f).empty());
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
    const auto good = Write("good.txt", SolverFileLines({}, SmallSpecies(), SmallReactions(),
                                                        Rows(6, 9)));
    ComparisonSet set;
    const auto missing = dir / "gone.txt";
    shell::Message m = PrepGrid(good, missing, set);
    EXPECT_EQ(m.text, "File2, the specified Path/File name '" + missing.string() +
                          "' cannot be accessed or is invalid.");
    EXPECT_EQ(m.style, 48);
    EXPECT_TRUE(set.MergedTable.empty());

    // three records behind the head are too few for the check for results
    const auto few = Write("few.txt", SolverFileLines({}, SmallSpecies(), SmallReactions(),
                                                      Rows(3, 9)));
    m = PrepGrid(good, few, set);
    EXPECT_EQ(m.text, "In the file '" + few.string() + "', results of calculation are not found.");

    auto species = SmallSpecies();
    species.pop_back(); // the second file lacks H2O2
    const auto smaller = Write("smaller.txt", SolverFileLines({}, species, {}, Rows(6, 8)));
    ASSERT_TRUE(PrepGrid(good, " " + smaller.string() + " ", set).empty());
    EXPECT_EQ(set.file1.RecordCount, 6);
    EXPECT_EQ(set.file2.RecordCount, 6);
    ASSERT_EQ(set.MergedTable.size(), 10U);
    EXPECT_EQ(set.MergedTable[9].name, "H2O2");
    EXPECT_EQ(set.MergedTable[9].mark2, "");
    EXPECT_EQ(set.MergedTable[8].mark2, "*");
}

TEST_F(ComparisonLoadTest, ACountThatDoesNotFitIsAFaultNotAnAllocation)
{
    auto lines = SolverFileLines({}, SmallSpecies(), SmallReactions(), Rows(4, 9));
    lines[9] = " 1E+300 !Species";
    ComparisonFile f;
    ASSERT_TRUE(OpenFile(Write("huge.txt", lines), 1, f).empty());
    EXPECT_THROW(ReadSpecies(f), zarvion::Error);
    // a target count far beyond the numbers behind it reads the numbers that are there
    lines[9] = " 9 !Species";
    lines[11] = " 99999999999 -1 !Targets";
    ASSERT_TRUE(OpenFile(Write("count.txt", lines), 1, f).empty());
    ReadSpecies(f);
    EXPECT_EQ(f.SpeciesList[0][1], "v");
}

TEST(ExtractVal, TextAheadOfTheDelimiter)
{
    EXPECT_EQ(ExtractVal(" 12 !Species", "!"), " 12 ");
    EXPECT_EQ(ExtractVal("no mark", "!"), "");
}

} // namespace
} // namespace zarvion::comparison
