// zarvion-cli check, info and results, run as a separate process on real files.

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "cli/CliRunner.h"
#include "core/postprocessor/LargeResultsFile.h"

using namespace zarvion::testing;

namespace {

std::string dataFile(const std::string& name) { return ZARVION_SOURCE_DIR "/tests/data/" + name; }

//! The "key<TAB>value" lines ahead of the first empty line hold these values.
void expectKeys(const std::string& out, const std::map<std::string, std::string>& expected)
{
    std::map<std::string, std::string> found;
    for (const auto& line : splitOn(out.substr(0, out.find("\n\n")), '\n')) {
        const auto tab = line.find('\t');
        found[line.substr(0, tab)] = tab == std::string::npos ? "" : line.substr(tab + 1);
    }
    for (const auto& [key, value] : expected) EXPECT_EQ(found[key], value) << key;
}

//! The lines behind the which-th empty line, up to the next empty line.
std::vector<std::string> tableAfterBlank(const std::string& out, int which = 1)
{
    std::vector<std::string> rows;
    int blanks = 0;
    for (const auto& line : splitOn(out, '\n')) {
        if (line.empty()) ++blanks;
        else if (blanks == which) rows.push_back(line);
    }
    return rows;
}

} // namespace

TEST(CliCheck, AnswersAndMessages)
{
    CliRun r = runCli("check " + quoted(dataFile("toy_results.txt")));
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "solver file\tyes\naccepted\tyes\nrefusal\t-\nresults keyword\tyes\n"
                     "results present\tyes\nresults message\t-\n");

    const std::string cv = dataFile("toy_constant_volume_2.txt");
    r = runCli("check " + quoted(cv));
    EXPECT_EQ(r.exitCode, 1);
    expectKeys(r.out, {{"solver file", "yes"}, {"accepted", "no"}, {"results keyword", "no"},
                       {"refusal", "Zarvion-II is intended for simulating constant pressure "
                                   "processes only. The solver file you are attempting to open "
                                   "contains input data for a constant volume process; the file "
                                   "cannot be opened.\\n\\n" + cv},
                       {"results message",
                        "In the file " + cv + ", the output data has not been found."}});

    const std::string three = dataFile("toy_results_3rows.txt");
    expectKeys(runCli("check " + quoted(three)).out,
               {{"results keyword", "yes"}, {"results present", "no"},
                {"results message",
                 "In the file '" + three + "', results of calculation are not found."}});

    r = runCli("check " + quoted(scratch("missing.txt")));
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.out.empty());
    EXPECT_NE(r.err.find("missing.txt"), std::string::npos);
}

TEST(CliInfo, HeaderSpeciesAndReactionSlots)
{
    const CliRun r = runCli("info " + quoted(dataFile("toy_mechanism.txt")));
    ASSERT_EQ(r.exitCode, 0) << r.err;
    expectKeys(r.out, {{"species", "4"}, {"reactions", "5"}, {"initial temperature K", "1200"},
                       {"maximum steps", "3"}, {"output every", "1"}, {"elements", "e H O AR"}});
    const auto species = tableAfterBlank(r.out, 1);
    ASSERT_EQ(species.size(), 5u);
    EXPECT_EQ(species[0], "species\tname\tformula\tweight\tinitial mole fraction\tcomposition");
    EXPECT_EQ(species[2], "2\tO2\tO2\t31.9988\t0.2\tO 2");
    const auto reactions = tableAfterBlank(r.out, 2);
    ASSERT_EQ(reactions.size(), 6u);
    const auto r3 = splitOn(reactions[3], '\t');
    ASSERT_EQ(r3.size(), 4u);
    EXPECT_EQ(r3[1], "H+O2(+AR)=HO2(+AR)");
    EXPECT_EQ(r3[2], "1 2 0 3 0 0 0 0 0 2 1 0 1 1 2 1 4 0 0 0 0 0 0 0 0 0");
    EXPECT_EQ(splitOn(r3[3], ' ')[7], "797"); // SRI b in real slot 8

    EXPECT_EQ(runCli("info " + quoted(dataFile("toy_results_missing.txt"))).exitCode, 2);
}

TEST(CliResults, ToyTableAndRefusals)
{
    CliRun r = runCli("results " + quoted(dataFile("toy_results.txt")));
    ASSERT_EQ(r.exitCode, 0) << r.err;
    expectKeys(r.out, {{"form", "MenuForm"}, {"rows", "6"}, {"columns", "7"},
                       {"time end", "0.001"}, {"terminated", "no"}});
    const auto table = tableAfterBlank(r.out);
    ASSERT_EQ(table.size(), 7u);
    EXPECT_EQ(table[0], "Time(s)\tT(K)\tRo\tH\tO2\tHO2\tAR");
    const auto row1 = splitOn(table[1], '\t');
    ASSERT_EQ(row1.size(), 7u);
    // Pure argon at 1200 K and 1 atm: 39.948 / (82.0573660809597 x 1200) g/cm^3.
    EXPECT_NEAR(std::stod(row1[2]), 4.056917933139e-4, 1e-15);
    EXPECT_EQ(splitOn(table[3], '\t')[5], "1.000000000E-03"); // -1E-3 seen as magnitude

    const std::string noMarker = quoted(dataFile("toy_no_marker.txt"));
    r = runCli("results " + noMarker);
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err, "Please run the Zarvion-II solver with the examined file to create output "
                     "in the required format.\n");
    r = runCli("results --sol-resx " + noMarker);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(tableAfterBlank(r.out).size(), 7u);
    const std::string two = dataFile("toy_results_2rows.txt");
    r = runCli("results --sol-resx " + quoted(two));
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err, "In the file " + two + ", the results of calculation are incomplete.\n");
}

class CliLargeResults : public ::testing::TestWithParam<int> {};

TEST_P(CliLargeResults, EverySpeciesColumnAsWritten)
{
    const int ns = GetParam(), rows = 4;
    const auto path = scratch("large-" + std::to_string(ns) + ".txt");
    std::ofstream(path, std::ios::binary) << LargeResultsFile(ns, rows);
    const CliRun r = runCli("results " + quoted(path));
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const auto table = tableAfterBlank(r.out);
    ASSERT_EQ(table.size(), static_cast<std::size_t>(rows + 1));
    const auto head = splitOn(table[0], '\t');
    ASSERT_EQ(head.size(), static_cast<std::size_t>(ns + 3));
    for (int i = 1; i <= ns; ++i) EXPECT_EQ(head[i + 2], "S" + std::to_string(i));
    for (int k = 1; k <= rows; ++k) {
        const auto fields = splitOn(table[k], '\t');
        ASSERT_EQ(fields.size(), static_cast<std::size_t>(ns + 3)) << "row " << k;
        EXPECT_DOUBLE_EQ(std::stod(fields[0]), LargeFileTime(k));
        EXPECT_DOUBLE_EQ(std::stod(fields[1]), LargeFileTemperature(k));
        for (int i = 1; i <= ns; ++i) {
            // 10 significant digits written: relative 5E-10.
            const double written = std::fabs(LargeFileValue(k, i));
            EXPECT_NEAR(std::stod(fields[i + 2]), written, 5e-10 * written)
                << "row " << k << " species " << i;
        }
    }
    std::filesystem::remove(path);
}

INSTANTIATE_TEST_SUITE_P(SpeciesCounts, CliLargeResults, ::testing::Values(51, 101));
