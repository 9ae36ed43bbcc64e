// Reduction runs on the small solved set: the engine, Prepare, the rate tables it ranks, and
// the zarvion-cli commands reduce, chemkin and compare run as processes.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sys/wait.h>

#include "core/reduction/TestFiles.h"
#include "postprocessor/ResultsReader.h"
#include "reduction/ReductionSetup.h"
#include "shell/TextFormat.h"
#include "solverfile/SolverFileChecks.h"
#include "solverfile/SolverFileReader.h"

namespace zarvion::reduction {
namespace {

using namespace zarvion::testing;

class ReductionRunTest : public ::testing::Test {
protected:
    std::filesystem::path dir = FreshFolder("reduction_run");
    std::filesystem::path source = WriteLines(dir / "solved.txt", SmallSolved());
    std::filesystem::path reduced = dir / "reduced.txt";
    postprocessor::ResultSet results;
    ReductionTables tables;

    void SetUp() override
    {
        postprocessor::ReadOutcome outcome;
        using postprocessor::ReaderForm;
        results = postprocessor::OPEN_Rich(source, ReaderForm::SOL_RESX, {}, outcome);
        ASSERT_FALSE(outcome.failed) << outcome.message.text;
        ASSERT_EQ(results.rowCount, 7); // head and six records
    }
    ReductionOutcome Run(std::vector<int> targets, std::vector<double> params, double temperature,
                         int interval = 1, const ReductionProgress& progress = {})
    {
        ReductionRequest q;
        q.reducedPath = reduced.string();
        q.stepCount = results.rowCount - 2; // the last stored row is never analysed
        q.targetSpecies = std::move(targets);
        q.speciesParameters = std::move(params);
        q.temperatureParameter = temperature;
        q.nonTargetParameter = 0.3;
        q.interval = interval;
        return ReduceMechanism(tables, results, source.string(), q, progress,
                               ClockAt(2020, 1, 1, 0, 0, 0));
    }
};

TEST_F(ReductionRunTest, FullRunWritesAFileThatReadsAndChecksAgain)
{
    std::vector<float> progress;
    const auto run = Run({1, 2}, {0.1, 0.1}, 0.1, 1, [&](float v) {
        progress.push_back(v);
        return true;
    });
    ASSERT_TRUE(run.fileWritten);
    EXPECT_EQ(run.rowsAnalysed, 5);
    EXPECT_EQ(progress, (std::vector<float>{2, 4, 6, 8, 10}));
    ASSERT_EQ(run.messages.size(), 1U);
    EXPECT_EQ(run.messages[0].style, 64);
    EXPECT_EQ(run.messages[0].text,
              "Reduced reaction mechanism has been created successfully. \r\nThe mechanism "
              "consists of\r\n" + std::to_string(tables.ReducedSpeciesCount) + " species, \r\n" +
                  std::to_string(tables.ReducedReactionCount) + " reactions.");
    EXPECT_TRUE(tables.KeptSpecies[0] && tables.KeptSpecies[1]); // targets are always kept
    // the kept reactions are closed over their species
    for (int r = 0; r < tables.NumReactions; ++r) {
        for (int k = 1; k <= 9 && tables.KeptReactions[r]; ++k) {
            const int s = tables.ReactionInts[r][k];
            EXPECT_TRUE(s == 0 || tables.KeptSpecies[s - 1]) << "reaction " << r + 1;
        }
    }
    const auto check = solverfile::IsSolverFile(reduced);
    EXPECT_TRUE(check.Accepted) << check.message.text;
    const auto mech = solverfile::ReadMechanism(reduced);
    EXPECT_EQ(static_cast<int>(mech.speciesNames.size()), tables.ReducedSpeciesCount);
    EXPECT_EQ(static_cast<int>(mech.reactions.size()), tables.ReducedReactionCount);
    EXPECT_EQ(shell::ReadLines(reduced)[11], " 3 -1 1 2 !Targets T 1.000E-01, H2 1.000E-01, "
                                             "O2 1.000E-01, Others 3.000E-01");
}

TEST_F(ReductionRunTest, EdgeRunsOfTheEngine)
{
    // one species target at 1 and nothing else: one species, no reaction, still a file
    auto run = Run({6}, {1.0}, -1);
    EXPECT_TRUE(run.fileWritten);
    EXPECT_EQ(tables.ReducedSpeciesCount, 1);
    EXPECT_EQ(tables.ReducedReactionCount, 0);
    EXPECT_EQ(shell::ReadLines(reduced)[9], " 1 !Species");

    // temperature alone at 1 keeps nothing: no file
    std::filesystem::remove(reduced);
    run = Run({}, {}, 1.0);
    EXPECT_FALSE(run.fileWritten);
    ASSERT_EQ(run.messages.size(), 1U);
    EXPECT_EQ(run.messages[0].text, "The reaction mechanism consists of \r\n0 species, \r\n0 "
                                    "reactions. \r\nThe file has not been created.");
    EXPECT_EQ(run.messages[0].style, 48);
    EXPECT_FALSE(std::filesystem::exists(reduced));
    EXPECT_TRUE(tables.TemperatureIsTarget);

    EXPECT_EQ(Run({1}, {0.1}, -1, 50).rowsAnalysed, 1); // an interval beyond the step count

    // cancelled after the second row: nothing written, nothing said
    std::filesystem::remove(reduced);
    int calls = 0;
    run = Run({1}, {0.1}, 0.1, 1, [&](float) { return ++calls < 2; });
    EXPECT_TRUE(run.cancelled);
    EXPECT_EQ(run.rowsAnalysed, 2);
    EXPECT_TRUE(run.messages.empty());
    EXPECT_FALSE(std::filesystem::exists(reduced));

    // the reaction block lost its closing keyword after the results were read: the writer's
    // refusal comes, then the success text all the same, and no file exists
    Lines lines = SmallSolved();
    lines[LineOf(lines, "!$Results   $$") - 2] = "FIN";
    WriteLines(source, lines);
    run = Run({1}, {0.1}, -1);
    ASSERT_EQ(run.messages.size(), 2U);
    EXPECT_EQ(run.messages[0].text, "The reaction list of the source file does not contain the "
                                    "key word End. The file is changed or corrupted; the reduced "
                                    "file cannot be created.");
    EXPECT_EQ(run.messages[1].style, 64);
    EXPECT_FALSE(run.fileWritten);
    EXPECT_FALSE(std::filesystem::exists(reduced));
}

TEST_F(ReductionRunTest, PrepareChecksTheSourceAndLoadsIt)
{
    ReductionSetup setup;
    setup.SourcePath = source.string();
    setup.reducedPathText = (dir / "out.txt").string();
    postprocessor::ResultSet loaded;
    PrepareRefusal r = Prepare(setup, loaded);
    ASSERT_TRUE(r.refusal.empty()) << r.refusal.message.text;
    EXPECT_EQ(loaded.rowCount, 7);
    EXPECT_EQ(setup.SpeciesTable.size(), 9U);
    EXPECT_EQ(setup.SpeciesTable[6].parameter, "0.1"); // AR is present at the start
    EXPECT_EQ(setup.reducedPathText, (dir / "out.txt").string()); // kept over the defaults

    // a file without results: the check's message, nothing loaded
    setup.SourcePath = WriteLines(dir / "bare.txt", SmallBare()).string();
    r = Prepare(setup, loaded);
    EXPECT_EQ(r.refusal.message.text,
              "In the file '" + setup.SourcePath + "', results of calculation are not found.");
    EXPECT_EQ(r.refusal.message.style, 48);
    EXPECT_EQ(loaded.rowCount, 0);
}

TEST_F(ReductionRunTest, ShowReacHalvesNetRatesOverDensity)
{
    LoadReductionTables(tables, results.SpeciesCount,
                        {results.columnNames.begin() + 3, results.columnNames.end()},
                        results.ReactionCount, results.ReactionInts, results.ReactionReals);
    postprocessor::RateWorkspace ws(results);
    ASSERT_TRUE(ShowReac(-2, 2, tables, results, ws).empty());
    ASSERT_TRUE(ShowReac(-3, 2, tables, results, ws).empty());
    // the same state evaluated directly: halved net rate over the density of row 2
    const int ns = results.SpeciesCount;
    const auto field = [&](int row, int column) {
        return std::stod(shell::Mid(results.rows[row], 17 * column + 1, 16));
    };
    std::vector<double> c(ns + 1);
    for (int k = 1; k <= ns; ++k) {
        c[k - 1] = field(2, k + 2) * results.density[2] / results.molecularWeight(k);
    }
    const double T = c[ns] = field(2, 1);
    std::vector<postprocessor::RatePair> production(ns + 1);
    std::vector<postprocessor::RatePair> rates(results.ReactionCount);
    postprocessor::ComputeReactionRates(c, production, ws, results.pressureAtm, 1, T, {}, rates,
                                        false, false);
    for (int r = 0; r < results.ReactionCount; ++r) {
        EXPECT_EQ(tables.RateTable[r].id, r + 1);
        EXPECT_DOUBLE_EQ(tables.RateTable[r].value, rates[r][0] / results.density[2] / 2.0);
    }
    // the heat table holds each reaction's share of dT/dt, halved: their sums agree
    postprocessor::ComputeReactionRates(c, production, ws, results.pressureAtm, 1, T, {}, rates,
                                        true, true);
    double sum = 0;
    double direct = 0;
    for (int r = 0; r < results.ReactionCount; ++r) {
        sum += tables.HeatTable[r].value;
        direct += rates[r][0];
    }
    EXPECT_NEAR(sum, direct / 2.0, 1e-9 * std::abs(direct));
    // first-row concentrations: y x density / W of result row 1
    ASSERT_TRUE(FirstRowConcentrations(tables, results));
    EXPECT_DOUBLE_EQ(tables.FirstRowConcentrations[0],
                     field(1, 3) * results.density[1] / results.molecularWeight(1));
}

//! Runs zarvion-cli with arguments; stderr joins stdout. The exit code and the output.
std::pair<int, std::string> Cli(const std::string& arguments)
{
    const std::string command = "\"" ZARVION_BIN_DIR "/zarvion-cli\" " + arguments + " 2>&1";
    std::string out;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> buffer{};
    while (pipe && std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe)) {
        out += buffer.data();
    }
    const int status = pipe ? pclose(pipe) : -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

TEST_F(ReductionRunTest, CliReduceThenConvertAndCompare)
{
    if (!std::filesystem::exists(ZARVION_BIN_DIR "/zarvion-cli")) {
        GTEST_SKIP() << "zarvion-cli is not built in " << ZARVION_BIN_DIR;
    }
    const std::string in = "\"" + source.string() + "\" ";
    const std::string out = reduced.string();
    const std::string reduce = "reduce " + in + "-o \"" + out + "\" --target H2=0.1 ";
    auto [code, text] = Cli(reduce + "--target XY=0.1");
    EXPECT_EQ(code, 2);
    EXPECT_NE(text.find("no species 'XY'"), std::string::npos) << text;
    std::tie(code, text) = Cli(reduce + "--every 0");
    EXPECT_EQ(code, 2);
    EXPECT_NE(text.find("Interval of steps, please enter a positive integer. "), std::string::npos);

    std::tie(code, text) = Cli(reduce + "--temperature 0.1");
    ASSERT_EQ(code, 0) << text;
    EXPECT_EQ(text.rfind("Reduced reaction mechanism has been created successfully. \nThe "
                         "mechanism consists of\n", 0), 0U) << text;
    EXPECT_NE(text.find("rows analysed\t5\n"), std::string::npos) << text; // six rows, last not
    EXPECT_EQ(shell::ReadLines(out)[11].substr(0, 10), " 2 -1 1 !T");

    std::tie(code, text) = Cli("chemkin \"" + out + "\"");
    ASSERT_EQ(code, 0) << text;
    EXPECT_NE(text.find("\n! Solver File:  " + out + "\n"), std::string::npos) << text;

    std::tie(code, text) = Cli("compare " + in + in);
    ASSERT_EQ(code, 0) << text;
    EXPECT_EQ(text.substr(0, text.find('\n')), "#\tname\tN1\tN2\tnumber1\tnumber2");
    EXPECT_NE(text.find("\n1\tTemperature\t*\t*\t0\t0\n"), std::string::npos) << text;
    std::tie(code, text) = Cli("compare " + in + in + "--species OH");
    ASSERT_EQ(code, 0) << text;
    EXPECT_EQ(text.rfind("#  F1, OH (mol/cm^3)\nx\ty\n", 0), 0U) << text;
    EXPECT_NE(text.find("#  F2, OH (mol/cm^3)"), std::string::npos);
    // identical files: every error vanishes and the refusal says so
    std::tie(code, text) = Cli("compare " + in + in + "--species T --error");
    EXPECT_EQ(code, 2);
    EXPECT_NE(text.find("You are attempting to plot a function where all values are zero."),
              std::string::npos) << text;
    std::tie(code, text) = Cli("compare " + in + "\"" + out + "\""); // no results yet
    EXPECT_EQ(code, 2);
    EXPECT_NE(text.find("In the file '" + out + "', results of calculation are not found."),
              std::string::npos) << text;
}

} // namespace
} // namespace zarvion::reduction
