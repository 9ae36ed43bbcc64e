#include <gtest/gtest.h>

#include "core/reduction/SmallMechanism.h"
#include "postprocessor/ResultsReader.h"
#include "reduction/ReductionSetup.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"
#include "solverfile/SolverFileChecks.h"
#include "solverfile/SolverFileReader.h"

namespace zarvion::reduction {
namespace {

using namespace zarvion::testing;

std::tm Stamp()
{
    return ClockAt(2020, 1, 1);
}

class ReductionRunTest : public ::testing::Test {
protected:
    std::filesystem::path dir = FreshFolder("reduction_run");
    std::filesystem::path source = dir / "solved.txt";
    postprocessor::ResultSet results;
    ReductionTables tables;

    void SetUp() override
    {
        WriteLines(source, SolverFileLines({}, SmallSpecies(), SmallReactions(), BurningRows(5)));
        postprocessor::ReadOutcome outcome;
        results = postprocessor::OPEN_Rich(source, postprocessor::ReaderForm::SOL_RESX, {}, outcome);
        ASSERT_FALSE(outcome.failed) << outcome.message.text;
        ASSERT_EQ(results.rowCount, 6);
    }

    ReductionRequest Request(std::vector<int> targets, std::vector<double> params,
                             double temperature, double others, int interval = 1)
    {
        ReductionRequest q;
        q.reducedPath = (dir / "reduced.txt").string();
        q.stepCount = results.rowCount - 2; // the last stored row is never analysed
        q.targetSpecies = std::move(targets);
        q.speciesParameters = std::move(params);
        q.temperatureParameter = temperature;
        q.nonTargetParameter = others;
        q.interval = interval;
        return q;
    }
};

TEST_F(ReductionRunTest, FullRunWritesAFileThatReadsAndChecksAgain)
{
    std::vector<float> progress;
    const auto run = ReduceMechanism(tables, results, source.string(),
                                     Request({1, 2}, {0.1, 0.1}, 0.1, 0.3),
                                     [&](float v) { progress.push_back(v); return true; }, Stamp());
    ASSERT_TRUE(run.fileWritten);
    EXPECT_EQ(run.rowsAnalysed, 4);
    EXPECT_EQ(progress, (std::vector<float>{2.5f, 5.0f, 7.5f, 10.0f}));
    ASSERT_EQ(run.messages.size(), 1U);
    EXPECT_EQ(run.messages[0].style, 64);
    EXPECT_EQ(run.messages[0].text,
              "Reduced reaction mechanism has been created successfully. \r\nThe mechanism "
              "consists of\r\n" +
                  std::to_string(tables.ReducedSpeciesCount) + " species, \r\n" +
                  std::to_string(tables.ReducedReactionCount) + " reactions.");
    EXPECT_TRUE(tables.KeptSpecies[0] && tables.KeptSpecies[1]); // targets are always kept
    // rows 1-4 hold the rates of the file's own mechanism: the reduction keeps a subset that
    // is closed over its species
    for (int r = 0; r < tables.NumReactions; ++r) {
        if (!tables.KeptReactions[r]) {
            continue;
        }
        for (int k = 1; k <= 9; ++k) {
            const int s = tables.ReactionInts[r][k];
            EXPECT_TRUE(s == 0 || tables.KeptSpecies[s - 1]) << "reaction " << r + 1;
        }
    }
    const auto check = solverfile::IsSolverFile(dir / "reduced.txt");
    EXPECT_TRUE(check.Accepted) << check.message.text;
    const auto mech = solverfile::ReadMechanism(dir / "reduced.txt");
    EXPECT_EQ(static_cast<int>(mech.speciesNames.size()), tables.ReducedSpeciesCount);
    EXPECT_EQ(static_cast<int>(mech.reactions.size()), tables.ReducedReactionCount);
    const auto lines = shell::ReadLines(dir / "reduced.txt");
    EXPECT_EQ(lines[11], " 3 -1 1 2 !Targets T 1.000E-01, H2 1.000E-01, O2 1.000E-01, "
                         "Others 3.000E-01");
}

TEST_F(ReductionRunTest, PrepareChecksTheSourceAndLoadsIt)
{
    ReductionSetup setup;
    setup.SourcePath = source.string();
    setup.reducedPathText = (dir / "out.txt").string();
    postprocessor::ResultSet loaded;
    PrepareRefusal r = Prepare(setup, loaded);
    ASSERT_TRUE(r.refusal.empty()) << r.refusal.message.text;
    EXPECT_EQ(loaded.rowCount, 6);
    EXPECT_EQ(setup.SpeciesTable.size(), 9U);
    EXPECT_EQ(setup.SpeciesTable[6].parameter, "0.1"); // AR is present at the start
    EXPECT_EQ(setup.reducedPathText, (dir / "out.txt").string());

    // a file without results: the check's message, nothing loaded
    const auto bare = dir / "bare.txt";
    WriteLines(bare, SolverFileLines({}, SmallSpecies(), SmallReactions()));
    setup.SourcePath = bare.string();
    r = Prepare(setup, loaded);
    EXPECT_EQ(r.refusal.message.text,
              "In the file '" + bare.string() + "', results of calculation are not found.");
    EXPECT_EQ(r.refusal.message.style, 48);
    EXPECT_EQ(loaded.rowCount, 0);
}

TEST_F(ReductionRunTest, EdgeRunsOfTheEngine)
{
    // one species target at 1 and nothing else: one species, no reaction, still a file
    auto run = ReduceMechanism(tables, results, source.string(), Request({6}, {1.0}, -1, 0.3),
                               {}, Stamp());
    EXPECT_TRUE(run.fileWritten);
    EXPECT_EQ(tables.ReducedSpeciesCount, 1);
    EXPECT_EQ(tables.ReducedReactionCount, 0);
    EXPECT_EQ(shell::ReadLines(dir / "reduced.txt")[9], " 1 !Species");

    // temperature alone at 1 keeps nothing: no file
    std::filesystem::remove(dir / "reduced.txt");
    run = ReduceMechanism(tables, results, source.string(), Request({}, {}, 1.0, 0.3), {}, Stamp());
    EXPECT_FALSE(run.fileWritten);
    ASSERT_EQ(run.messages.size(), 1U);
    EXPECT_EQ(run.messages[0].text, "The reaction mechanism consists of \r\n0 species, \r\n0 "
                                    "reactions. \r\nThe file has not been created.");
    EXPECT_EQ(run.messages[0].style, 48);
    EXPECT_FALSE(std::filesystem::exists(dir / "reduced.txt"));
    EXPECT_TRUE(tables.TemperatureIsTarget);

    // an interval beyond the step count analyses row 1 only
    run = ReduceMechanism(tables, results, source.string(), Request({1}, {0.1}, -1, 0.3, 50), {},
                          Stamp());
    EXPECT_EQ(run.rowsAnalysed, 1);

    // cancelled after the second row: nothing written, nothing said
    std::filesystem::remove(dir / "reduced.txt");
    int calls = 0;
    run = ReduceMechanism(tables, results, source.string(), Request({1}, {0.1}, 0.1, 0.3),
                          [&](float) { return ++calls < 2; }, Stamp());
    EXPECT_TRUE(run.cancelled);
    EXPECT_EQ(run.rowsAnalysed, 2);
    EXPECT_TRUE(run.messages.empty());
    EXPECT_FALSE(std::filesystem::exists(dir / "reduced.txt"));
}

TEST_F(ReductionRunTest, SourceChangedAfterLoadingGivesBothMessages)
{
    // The reaction block lost its closing keyword after the results were read: the writer's
    // refusal comes, then the success text all the same, and no file exists.
    auto lines = shell::ReadLines(source);
    auto end = std::find(lines.begin(), lines.end(), "END");
    end = std::find(end + 1, lines.end(), "END");
    ASSERT_NE(end, lines.end());
    *end = "FIN";
    WriteLines(source, lines);
    const auto run = ReduceMechanism(tables, results, source.string(),
                                     Request({1}, {0.1}, -1, 0.3), {}, Stamp());
    ASSERT_EQ(run.messages.size(), 2U);
    EXPECT_EQ(run.messages[0].text, "The reaction list of the source file does not contain the "
                                    "key word End. The file is changed or corrupted; the reduced "
                                    "file cannot be created.");
    EXPECT_EQ(run.messages[1].style, 64);
    EXPECT_FALSE(run.fileWritten);
    EXPECT_FALSE(std::filesystem::exists(dir / "reduced.txt"));
}

TEST_F(ReductionRunTest, ShowReacHalvesNetRatesOverDensity)
{
    std::vector<std::string> names(results.columnNames.begin() + 3, results.columnNames.end());
    LoadReductionTables(tables, results.SpeciesCount, names, results.ReactionCount,
                        results.ReactionInts, results.ReactionReals);
    postprocessor::RateWorkspace ws(results);
    ASSERT_TRUE(ShowReac(-2, 2, tables, results, ws).empty());
    ASSERT_TRUE(ShowReac(-3, 2, tables, results, ws).empty());
    // the same state evaluated directly: halved net rate over the density of row 2
    const int ns = results.SpeciesCount;
    std::vector<double> c(ns + 1);
    for (int k = 1; k <= ns; ++k) {
        const double y = std::stod(shell::Mid(results.rows[2], 17 * (k + 2) + 1, 16));
        c[k - 1] = y * results.density[2] / results.molecularWeight(k);
    }
    const double T = std::stod(shell::Mid(results.rows[2], 18, 16));
    c[ns] = T;
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
    for (const auto& h : tables.HeatTable) {
        sum += h.value;
    }
    double direct = 0;
    for (const auto& r : rates) {
        direct += r[0];
    }
    EXPECT_NEAR(sum, direct / 2.0, 1e-9 * std::abs(direct));
    // first-row concentrations: y x density / W of result row 1
    ASSERT_TRUE(FirstRowConcentrations(tables, results));
    const double y1 = std::stod(shell::Mid(results.rows[1], 17 * 3 + 1, 16));
    EXPECT_DOUBLE_EQ(tables.FirstRowConcentrations[0],
                     y1 * results.density[1] / results.molecularWeight(1));
}

} // namespace
} // namespace zarvion::reduction
