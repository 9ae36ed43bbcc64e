// zarvion-cli check, info and results, run as a separate process on real files.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

#include "core/postprocessor/LargeResultsFile.h"

namespace {

std::filesystem::path dataFile(const std::string& name)
{
    return std::filesystem::path(ZARVION_SOURCE_DIR) / "tests" / "data" / name;
}

struct CliRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

std::filesystem::path scratch(const std::string& name)
{
    const auto dir = std::filesystem::temp_directory_path() /
                     ("zarvion-cli-test-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    return dir / name;
}

std::string quoted(const std::string& s) { return "'" + s + "'"; }

CliRun runCli(const std::string& arguments)
{
    const auto errFile = scratch("stderr.txt");
    const std::string command =
        quoted(ZARVION_CLI) + " " + arguments + " 2>" + quoted(errFile.string());
    CliRun run;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) {
        return run;
    }
    char buffer[4096];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) {
        run.out.append(buffer, n);
    }
    const int status = ::pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::ifstream err(errFile);
    run.err.assign(std::istreambuf_iterator<char>(err), {});
    return run;
}

std::vector<std::string> splitOn(const std::string& text, char sep)
{
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, sep)) {
        parts.push_back(part);
    }
    return parts;
}

//! The "key<TAB>value" lines ahead of the first empty line.
std::map<std::string, std::string> keyValues(const std::string& out)
{
    std::map<std::string, std::string> values;
    for (const auto& line : splitOn(out, '\n')) {
        if (line.empty()) {
            break;
        }
        const auto tab = line.find('\t');
        values[line.substr(0, tab)] = tab == std::string::npos ? "" : line.substr(tab + 1);
    }
    return values;
}

//! The lines behind the first empty line, up to the next empty line.
std::vector<std::string> tableAfterBlank(const std::string& out, int which = 1)
{
    std::vector<std::string> rows;
    int blanks = 0;
    for (const auto& line : splitOn(out, '\n')) {
        if (line.empty()) {
            ++blanks;
            continue;
        }
        if (blanks == which) {
            rows.push_back(line);
        }
    }
    return rows;
}

} // namespace

TEST(CliCheck, AnswersAndMessages)
{
    CliRun r = runCli("check " + quoted(dataFile("toy_results.txt").string()));
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "solver file\tyes\naccepted\tyes\nrefusal\t-\nresults keyword\tyes\n"
                     "results present\tyes\nresults message\t-\n");

    const std::string cv = dataFile("toy_constant_volume_2.txt").string();
    r = runCli("check " + quoted(cv));
    EXPECT_EQ(r.exitCode, 1);
    auto kv = keyValues(r.out);
    EXPECT_EQ(kv["solver file"], "yes");
    EXPECT_EQ(kv["accepted"], "no");
    EXPECT_EQ(kv["refusal"],
              "Zarvion-II is intended for simulating constant pressure processes only. The "
              "solver file you are attempting to open contains input data for a constant volume "
              "process; the file cannot be opened.\\n\\n" + cv);
    EXPECT_EQ(kv["results keyword"], "no");
    EXPECT_EQ(kv["results message"], "In the file " + cv + ", the output data has not been found.");

    const std::string three = dataFile("toy_results_3rows.txt").string();
    kv = keyValues(runCli("check " + quoted(three)).out);
    EXPECT_EQ(kv["results keyword"], "yes");
    EXPECT_EQ(kv["results present"], "no");
    EXPECT_EQ(kv["results message"],
              "In the file '" + three + "', results of calculation are not found.");

    r = runCli("check " + quoted(scratch("missing.txt").string()));
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.out.empty());
    EXPECT_NE(r.err.find("missing.txt"), std::string::npos);
}

TEST(CliInfo, HeaderSpeciesAndReactionSlots)
{
    const CliRun r = runCli("info " + quoted(dataFile("toy_mechanism.txt").string()));
    ASSERT_EQ(r.exitCode, 0) << r.err;
    auto kv = keyValues(r.out);
    EXPECT_EQ(kv["species"], "4");
    EXPECT_EQ(kv["reactions"], "5");
    EXPECT_EQ(kv["initial temperature K"], "1200");
    EXPECT_EQ(kv["maximum steps"], "3");
    EXPECT_EQ(kv["output every"], "1");
    EXPECT_EQ(kv["elements"], "e H O AR");
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

    const CliRun bad = runCli("info " + quoted(dataFile("toy_results_missing.txt").string()));
    EXPECT_EQ(bad.exitCode, 2);
}

TEST(CliResults, ToyTableAndRefusals)
{
    CliRun r = runCli("results " + quoted(dataFile("toy_results.txt").string()));
    ASSERT_EQ(r.exitCode, 0) << r.err;
    auto kv = keyValues(r.out);
    EXPECT_EQ(kv["form"], "MenuForm");
    EXPECT_EQ(kv["rows"], "6");
    EXPECT_EQ(kv["columns"], "7");
    EXPECT_EQ(kv["time end"], "0.001");
    EXPECT_EQ(kv["terminated"], "no");
    const auto table = tableAfterBlank(r.out);
    ASSERT_EQ(table.size(), 7u);
    EXPECT_EQ(table[0], "Time(s)\tT(K)\tRo\tH\tO2\tHO2\tAR");
    const auto row1 = splitOn(table[1], '\t');
    ASSERT_EQ(row1.size(), 7u);
    // Pure argon at 1200 K and 1 atm: 39.948 / (82.0573660809597 x 1200) g/cm^3.
    EXPECT_NEAR(std::stod(row1[2]), 4.056917933139e-4, 1e-15);
    EXPECT_EQ(splitOn(table[3], '\t')[5], "1.000000000E-03"); // -1E-3 seen as magnitude

    r = runCli("results " + quoted(dataFile("toy_no_marker.txt").string()));
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err, "Please run the Zarvion-II solver with the examined file to create output "
                     "in the required format.\n");
    r = runCli("results --sol-resx " + quoted(dataFile("toy_no_marker.txt").string()));
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(tableAfterBlank(r.out).size(), 7u);
    const std::string two = dataFile("toy_results_2rows.txt").string();
    r = runCli("results --sol-resx " + quoted(two));
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_EQ(r.err, "In the file " + two + ", the results of calculation are incomplete.\n");
}

class CliLargeResults : public ::testing::TestWithParam<int> {};

TEST_P(CliLargeResults, EverySpeciesColumnAsWritten)
{
    using namespace zarvion::testing;
    const int ns = GetParam();
    const int rows = 4;
    const auto path = scratch("large-" + std::to_string(ns) + ".txt");
    {
        std::ofstream out(path, std::ios::binary);
        out << LargeResultsFile(ns, rows);
    }
    const CliRun r = runCli("results " + quoted(path.string()));
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const auto table = tableAfterBlank(r.out);
    ASSERT_EQ(table.size(), static_cast<std::size_t>(rows + 1));
    const auto head = splitOn(table[0], '\t');
    ASSERT_EQ(head.size(), static_cast<std::size_t>(ns + 3));
    for (int k = 1; k <= rows; ++k) {
        const auto fields = splitOn(table[k], '\t');
        ASSERT_EQ(fields.size(), static_cast<std::size_t>(ns + 3)) << "row " << k;
        EXPECT_DOUBLE_EQ(std::stod(fields[0]), LargeFileTime(k));
        EXPECT_DOUBLE_EQ(std::stod(fields[1]), LargeFileTemperature(k));
        for (int i = 1; i <= ns; ++i) {
            EXPECT_EQ(head[i + 2], "S" + std::to_string(i));
            // 10 significant digits written: relative 5E-10.
            const double written = std::fabs(LargeFileValue(k, i));
            EXPECT_NEAR(std::stod(fields[i + 2]), written, 5e-10 * written)
                << "row " << k << " species " << i;
        }
    }
    std::filesystem::remove(path);
}

INSTANTIATE_TEST_SUITE_P(SpeciesCounts, CliLargeResults, ::testing::Values(51, 101));
