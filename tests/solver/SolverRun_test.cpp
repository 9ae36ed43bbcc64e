// End-to-end runs of the solver on a small hand-written solver file: the appended section, the
// honoured header values, the failure endings and the program's exit codes.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "shell/TextFile.h"
#include "solver/SolverRun.h"
#include "solverfile/ResultsWriter.h"
#include "solverfile/SolverFileReader.h"

using namespace zarvion;
namespace fs = std::filesystem;

namespace {

struct Problem {
    std::string mode = "1";
    std::string T0 = "1.2E+03", Tmin = "3.0E+02", Tmax = "3.5E+03";
    std::string tf = "1.0E-04", maxSteps = "5000", deltaN = "1";
    std::vector<std::string> fractions{"1.000E-02", "2.000E-01", "0", "8.000E-01"};
};

class SolverRunTest : public ::testing::Test {
protected:
    fs::path dir;
    void SetUp() override
    {
        dir = fs::temp_directory_path() /
              ("zarvion_solver_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(dir);
        fs::create_directories(dir);
    }
    void TearDown() override { fs::remove_all(dir); }

    // The toy mechanism with the given header values and initial mole fractions.
    fs::path makeFile(const Problem& pr, const std::string& name = "case.txt")
    {
        auto lines = shell::ReadLines(ZARVION_SOURCE_DIR "/tests/data/toy_mechanism.txt");
        auto set = [&](int line, const std::string& value, const std::string& comment) {
            lines[line - 1] = " " + value + " " + comment;
        };
        set(15, pr.mode, "!Temperature mode");
        set(16, pr.T0, "!Initial Temperature");
        set(17, pr.Tmin, "!Minimal Allowable Temperature");
        set(18, pr.Tmax, "!Maximum Allowable Temperature");
        set(20, pr.tf, "!Final Time");
        set(22, pr.maxSteps, "!Maximum Number of Steps");
        set(28, pr.deltaN, "!Delta N");
        for (int i = 0; i < 4; ++i) {
            std::string& l = lines[34 + 4 * i];
            std::string f = pr.fractions[i];
            f.resize(10, ' ');
            l = l.substr(0, 74) + f;
        }
        const fs::path path = dir / name;
        std::ofstream(path, std::ios::binary) << shell::JoinCrLf(lines);
        return path;
    }
};

// Data rows of the section, each split into its numeric fields (time, T, species..., step).
std::vector<std::vector<double>> dataRows(const std::vector<std::string>& lines, std::size_t head)
{
    std::vector<std::vector<double>> rows;
    for (std::size_t k = head + 1; k < lines.size() && lines[k] != "!$END" &&
                                   lines[k].rfind("ERROR", 0) != 0;
         ++k) {
        std::vector<double> v;
        for (std::size_t pos = 7; pos + 16 <= lines[k].size(); pos += 17)
            v.push_back(std::stod(lines[k].substr(pos, 16)));
        rows.push_back(v);
    }
    return rows;
}

std::size_t findLine(const std::vector<std::string>& lines, const std::string& text)
{
    for (std::size_t k = 0; k < lines.size(); ++k)
        if (lines[k] == text) return k;
    return lines.size();
}

} // namespace

TEST_F(SolverRunTest, AppendsTheResultsSection)
{
    const auto path = makeFile({});
    const std::string input = shell::ReadFile(path);
    const auto mech = solverfile::ReadMechanism(path);
    const auto result = solver::RunSolverFile(path, {});
    ASSERT_TRUE(result.success) << result.errorReason;

    const std::string text = shell::ReadFile(path);
    EXPECT_EQ(text.substr(0, input.size()), input);  // input side untouched
    const auto lines = shell::SplitLines(text);
    const std::size_t key = findLine(lines, "!$Results   $$");
    ASSERT_EQ(key, static_cast<std::size_t>(mech.reactionsEndLine) + 1);
    EXPECT_EQ(lines[key - 1], "");
    EXPECT_EQ(lines[key + 1], solverfile::FormatHeadRecord(mech.speciesNames)[0]);
    const auto rows = dataRows(lines, key + 1);
    ASSERT_EQ(static_cast<long>(rows.size()), result.rowsWritten);
    ASSERT_GE(rows.size(), 3u);
    const std::size_t end = key + 2 + rows.size();
    EXPECT_EQ(lines[end], "!$END");
    EXPECT_EQ(lines[end + 1], "Statistics");
    EXPECT_NE(text.find("Accepted steps: " + std::to_string(result.statistics.steps)), std::string::npos);

    // First row: t0, T0, mass fractions of the normalised mole fractions (0.01, 0.2, 0, 0.8
    // sum to 1.01), step 0.
    double W[4];
    for (int i = 0; i < 4; ++i) W[i] = mech.thermo[i][15];
    const double x[4] = {0.01, 0.2, 0.0, 0.8};
    double mix = 0;
    for (int i = 0; i < 4; ++i) mix += x[i] * W[i];
    EXPECT_EQ(rows[0][0], 0.0);
    EXPECT_EQ(rows[0][1], 1200.0);
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(rows[0][2 + i], x[i] * W[i] / mix, 1e-9);
    EXPECT_EQ(rows[0][6], 0.0);
    // Last row at the final time; the step column is the time since the row before.
    EXPECT_NEAR(rows.back()[0], 1e-4, 1e-14);
    for (std::size_t k = 1; k < rows.size(); ++k)
        EXPECT_NEAR(rows[k][6], rows[k][0] - rows[k - 1][0], 1e-9 * rows[k][0]);
    // Hydrogen and oxygen atoms per gram are conserved in the written table (10 digits).
    auto atoms = [&](const std::vector<double>& r, double h, double o2, double ho2) {
        return r[2] * h / W[0] + r[3] * o2 / W[1] + r[4] * ho2 / W[2];
    };
    for (const auto& r : rows) {
        EXPECT_NEAR(atoms(r, 1, 0, 1), atoms(rows[0], 1, 0, 1), 1e-9 * atoms(rows[0], 1, 0, 1));
        EXPECT_NEAR(atoms(r, 0, 2, 2), atoms(rows[0], 0, 2, 2), 1e-9 * atoms(rows[0], 0, 2, 2));
    }
    // Recombination of H with O2 releases heat: the adiabatic run warms up.
    EXPECT_GT(rows.back()[1], 1200.0);
    EXPECT_NEAR(result.finalTemperature, rows.back()[1], 1e-6 * rows.back()[1]);
}

TEST_F(SolverRunTest, RerunReplacesOldResultsAndHonoursOutputStep)
{
    Problem pr;
    const auto path = makeFile(pr);
    const auto first = solver::RunSolverFile(path, {});
    ASSERT_TRUE(first.success);

    // Every 4th accepted step is written, plus the first and the last row.
    auto lines = shell::ReadLines(path);
    lines[27] = " 4 !Delta N";
    const auto mech = solverfile::ReadMechanism(path);
    std::vector<std::string> input(lines.begin(), lines.begin() + mech.reactionsEndLine);
    std::ofstream(path, std::ios::binary) << shell::JoinCrLf(input) << "\r\n!$Results   $$\r\nstale\r\n";
    const auto second = solver::RunSolverFile(path, {});
    ASSERT_TRUE(second.success);
    const std::string text = shell::ReadFile(path);
    EXPECT_EQ(text.find("stale"), std::string::npos);
    EXPECT_EQ(text.find("!$Results"), text.rfind("!$Results"));
    const long steps = second.statistics.steps;
    EXPECT_EQ(second.rowsWritten, 1 + steps / 4 + (steps % 4 != 0 ? 1 : 0));
}

TEST_F(SolverRunTest, LeavingTheTemperatureIntervalEndsWithError)
{
    Problem pr;
    pr.Tmax = "1.2005E+03";
    const auto path = makeFile(pr);
    const std::string input = shell::ReadFile(path);
    const auto result = solver::RunSolverFile(path, {});
    EXPECT_FALSE(result.success);
    EXPECT_EQ(result.errorReason, "Temperature outside the allowable interval");
    const auto lines = shell::ReadLines(path);
    EXPECT_EQ(shell::ReadFile(path).substr(0, input.size()), input);
    const std::size_t key = findLine(lines, "!$Results   $$");
    const auto rows = dataRows(lines, key + 1);
    ASSERT_GE(rows.size(), 2u);
    EXPECT_GT(rows.back()[1], 1200.5);  // the offending row is shown
    const std::size_t error = key + 2 + rows.size();
    ASSERT_LT(error, lines.size());
    EXPECT_EQ(lines[error], "ERROR Temperature outside the allowable interval");
    EXPECT_EQ(findLine(lines, "!$END"), lines.size());
}

TEST_F(SolverRunTest, StepLimitEndsWithError)
{
    Problem pr;
    pr.maxSteps = "4";
    const auto path = makeFile(pr);
    const auto result = solver::RunSolverFile(path, {});
    EXPECT_FALSE(result.success);
    EXPECT_EQ(result.errorReason, "Maximum number of steps reached");
    const auto lines = shell::ReadLines(path);
    EXPECT_LT(findLine(lines, "ERROR Maximum number of steps reached"), lines.size());
    EXPECT_EQ(findLine(lines, "!$END"), lines.size());
    EXPECT_EQ(result.rowsWritten, 5);  // t0 and the four steps
}

TEST_F(SolverRunTest, ConstantTemperatureKeepsT)
{
    Problem pr;
    pr.mode = "0";
    const auto path = makeFile(pr);
    const auto result = solver::RunSolverFile(path, {});
    ASSERT_TRUE(result.success);
    const auto lines = shell::ReadLines(path);
    const auto rows = dataRows(lines, findLine(lines, "!$Results   $$") + 1);
    for (const auto& r : rows) EXPECT_EQ(r[1], 1200.0);
    EXPECT_LT(rows.back()[2], rows[0][2]);  // H is consumed
}

TEST_F(SolverRunTest, ProgramExitCodesAndPathFile)
{
    const std::string exe = ZARVION_BIN_DIR "/zarvion-solver";
    const auto good = makeFile({}, "good.txt");
    Problem bad;
    bad.maxSteps = "3";
    const auto failing = makeFile(bad, "bad.txt");
    auto run = [&](const std::string& args) {
        const std::string cmd = "cd '" + dir.string() + "' && '" + exe + "' " + args + " > out.txt 2>&1";
        const int status = std::system(cmd.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    std::ofstream(dir / "SolverFilePath.txt") << good.string() << "\r\n";
    EXPECT_EQ(run(""), 0);
    const std::string console = shell::ReadFile(dir / "out.txt");
    EXPECT_NE(console.find("steps = "), std::string::npos);  // progress lines
    EXPECT_NE(shell::ReadFile(good).find("!$END"), std::string::npos);
    EXPECT_EQ(run("bad.txt"), 1);
    EXPECT_EQ(run("missing.txt"), 2);
    // A comma ends the path in the path file.
    std::ofstream(dir / "SolverFilePath.txt") << good.string() << ",ignored\r\n";
    EXPECT_EQ(run(""), 0);
}
