// End-to-end runs of the solver on a small hand-written solver file: the appended section, the
// honoured header values, the failure endings and the program's exit codes.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "shell/TextFile.h"
#include "solver/SolverRun.h"
#include "solverfile/ResultsWriter.h"
#include "solverfile/SolverFileReader.h"

using namespace zarvion;
namespace fs = std::filesystem;

namespace {

// Header lines of the solver file.
enum Line { TemperatureMode = 15, MaxTemperature = 18, FinalTime = 20, MaxSteps = 22,
            OutputEvery = 28 };

class SolverRunTest : public ::testing::Test {
protected:
    const std::string test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    const fs::path dir = fs::temp_directory_path() / ("zarvion_solver_" + test);
    void SetUp() override { fs::remove_all(dir); fs::create_directories(dir); }
    void TearDown() override { fs::remove_all(dir); }

    // The toy mechanism (1 atm, 1200 K, energy equation, T allowed in 300-3500 K) with H
    // present (mole fraction 0.01), run to 1e-4 s in at most 5000 steps with every step
    // written; header values given in set take precedence over these.
    fs::path makeFile(std::map<int, std::string> set = {}, const std::string& name = "case.txt")
    {
        auto lines = shell::ReadLines(ZARVION_SOURCE_DIR "/tests/data/toy_mechanism.txt");
        set.insert({{FinalTime, "1.0E-04"}, {MaxSteps, "5000"}, {OutputEvery, "1"}});
        for (const auto& [line, value] : set)
            lines[line - 1] = " " + value + lines[line - 1].substr(lines[line - 1].find(" !"));
        lines[34].replace(74, 10, "1.000E-02 ");
        const fs::path path = dir / name;
        std::ofstream(path, std::ios::binary) << shell::JoinCrLf(lines);
        return path;
    }
};

// A run of the solver on path and what it left in the file behind the untouched input side:
// the lines, the position of the results keyword and the data rows behind the head, each split
// into its numeric fields (time, T, species..., step).
struct Outcome {
    solver::SolverRunResult result;
    std::vector<std::string> lines;
    std::size_t key = 0;
    std::vector<std::vector<double>> rows;
};

Outcome solve(const fs::path& path)
{
    std::string input = shell::ReadFile(path);
    input.resize(std::min(input.size(), input.find("!$Results")));
    Outcome o{solver::RunSolverFile(path, {}), shell::ReadLines(path), 0, {}};
    EXPECT_EQ(shell::ReadFile(path).substr(0, input.size()), input);
    o.key = std::find(o.lines.begin(), o.lines.end(), "!$Results   $$") - o.lines.begin();
    for (std::size_t k = o.key + 2; k < o.lines.size() && o.lines[k] != "!$END" &&
                                    o.lines[k].rfind("ERROR", 0) != 0;
         ++k) {
        auto& v = o.rows.emplace_back();
        for (std::size_t pos = 7; pos + 16 <= o.lines[k].size(); pos += 17)
            v.push_back(std::stod(o.lines[k].substr(pos, 16)));
    }
    return o;
}

} // namespace

TEST_F(SolverRunTest, ReplacesTheResultsSection)
{
    // A file with old results; every 4th accepted step is to be written, plus the first and the
    // last row.
    const auto path = makeFile({{OutputEvery, "4"}});
    std::ofstream(path, std::ios::binary | std::ios::app) << "\r\n!$Results   $$\r\nstale\r\n";
    const auto mech = solverfile::ReadMechanism(path);
    const auto [result, lines, key, rows] = solve(path);
    ASSERT_TRUE(result.success) << result.errorReason;

    const std::string text = shell::ReadFile(path);
    EXPECT_EQ(text.find("stale"), std::string::npos);
    ASSERT_EQ(key, static_cast<std::size_t>(mech.reactionsEndLine) + 1);
    EXPECT_EQ(lines[key - 1], "");
    EXPECT_EQ(lines[key + 1], solverfile::FormatHeadRecord(mech.speciesNames)[0]);
    const long steps = result.statistics.steps;
    EXPECT_EQ(result.rowsWritten, 1 + steps / 4 + (steps % 4 != 0 ? 1 : 0));
    ASSERT_EQ(static_cast<long>(rows.size()), result.rowsWritten);
    ASSERT_GE(rows.size(), 3u);
    const std::size_t end = key + 2 + rows.size();
    EXPECT_EQ(lines[end], "!$END");
    EXPECT_EQ(lines[end + 1], "Statistics");
    EXPECT_NE(text.find("Accepted steps: " + std::to_string(steps)), std::string::npos);

    // First row: t0, T0, mass fractions of the normalised mole fractions (0.01, 0.2, 0, 0.8
    // sum to 1.01), step 0.
    double W[4], mix = 0;
    const double x[4] = {0.01, 0.2, 0.0, 0.8};
    for (int i = 0; i < 4; ++i) W[i] = mech.thermo[i][15];
    for (int i = 0; i < 4; ++i) mix += x[i] * W[i];
    EXPECT_EQ(rows[0][0], 0.0);
    EXPECT_EQ(rows[0][1], 1200.0);
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(rows[0][2 + i], x[i] * W[i] / mix, 1e-9);
    EXPECT_EQ(rows[0][6], 0.0);
    // Last row at the final time; the step column is the time since the row before.
    EXPECT_NEAR(rows.back()[0], 1e-4, 1e-14);
    for (std::size_t k = 1; k < rows.size(); ++k)
        EXPECT_NEAR(rows[k][6], rows[k][0] - rows[k - 1][0], 1e-9 * rows[k][0]);
    // H and O atoms per gram (in H, O2, HO2) are conserved in the written table (10 digits).
    auto atoms = [&](const std::vector<double>& r) {
        return std::array{r[2] / W[0] + r[4] / W[2], 2 * r[3] / W[1] + 2 * r[4] / W[2]};
    };
    for (const auto& r : rows)
        for (int e : {0, 1}) EXPECT_NEAR(atoms(r)[e], atoms(rows[0])[e], 1e-9 * atoms(rows[0])[e]);
    // Recombination of H with O2 releases heat: the adiabatic run warms up.
    EXPECT_GT(rows.back()[1], 1200.0);
    EXPECT_NEAR(result.finalTemperature, rows.back()[1], 1e-6 * rows.back()[1]);
}

TEST_F(SolverRunTest, FailuresEndWithAnErrorLineBehindReadableRows)
{
    // Leaving [300, 1200.5] K as the adiabatic run warms up shows the offending row; a limit of
    // 4 steps writes t0 and the four steps.
    struct Case { int line; std::string value, reason; long rows; double lastTAbove; };
    for (const auto& c : {Case{MaxTemperature, "1.2005E+03",
                               "Temperature outside the allowable interval", -1, 1200.5},
                          Case{MaxSteps, "4", "Maximum number of steps reached", 5, 0}}) {
        SCOPED_TRACE(c.reason);
        const auto [result, lines, key, rows] = solve(makeFile({{c.line, c.value}}));
        EXPECT_FALSE(result.success);
        EXPECT_EQ(result.errorReason, c.reason);
        ASSERT_GE(rows.size(), 2u);
        EXPECT_EQ(static_cast<long>(rows.size()), result.rowsWritten);
        if (c.rows >= 0) { EXPECT_EQ(result.rowsWritten, c.rows); }
        if (c.lastTAbove > 0) { EXPECT_GT(rows.back()[1], c.lastTAbove); }
        ASSERT_LT(key + 2 + rows.size(), lines.size());
        EXPECT_EQ(lines[key + 2 + rows.size()], "ERROR " + c.reason);
        EXPECT_EQ(std::count(lines.begin(), lines.end(), "!$END"), 0);
    }
}

TEST_F(SolverRunTest, ConstantTemperatureKeepsT)
{
    const auto [result, lines, key, rows] = solve(makeFile({{TemperatureMode, "0"}}));
    ASSERT_TRUE(result.success);
    ASSERT_GE(rows.size(), 2u);
    for (const auto& r : rows) EXPECT_EQ(r[1], 1200.0);
    EXPECT_LT(rows.back()[2], rows[0][2]);  // H is consumed
}

TEST_F(SolverRunTest, ProgramExitCodesAndPathFile)
{
    const auto good = makeFile({}, "good.txt");
    makeFile({{MaxSteps, "3"}}, "bad.txt");
    auto run = [&](const std::string& args) {
        const int status = std::system(("cd '" + dir.string() + "' && '" ZARVION_BIN_DIR
                                        "/zarvion-solver' " + args + " > out.txt 2>&1").c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    std::ofstream(dir / "SolverFilePath.txt") << good.string() << "\r\n";
    EXPECT_EQ(run(""), 0);
    EXPECT_NE(shell::ReadFile(dir / "out.txt").find("steps = "), std::string::npos);  // progress
    EXPECT_NE(shell::ReadFile(good).find("!$END"), std::string::npos);
    EXPECT_EQ(run("bad.txt"), 1);
    EXPECT_EQ(run("missing.txt"), 2);
    // A comma ends the path in the path file.
    std::ofstream(dir / "SolverFilePath.txt") << good.string() << ",ignored\r\n";
    EXPECT_EQ(run(""), 0);
}
