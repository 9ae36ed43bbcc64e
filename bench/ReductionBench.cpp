// Reduction of solved files with the targets CH4, O2, CO2, H2O and temperature at 0.1 and the
// others at 0.3 (CH4/air, 1 atm, 1400 K, energy equation, every accepted step stored):
//   BM_ReduceGri      GRI-Mech 3.0 (53 species, 325 reactions)
//   BM_ReduceNHeptane LLNL n-heptane v3.1 (647 species, 4846 reactions as imported)
// The argument is the sampling interval: 1 analyses every row, 2 every second, 4 every
// fourth, so the rows analysed halve from one size to the next and the time should follow.
//
// The solved files are made at start-up by importing the mechanisms of the shared folder and
// running zarvion-solver from the build's bin folder; ZARVION_BENCH_FILE names a solved file
// to use for BM_ReduceGri instead.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>

#include "postprocessor/ResultsReader.h"
#include "reduction/ReductionSetup.h"
#include "shell/TextFormat.h"
#include "solverfile/ChemkinWriter.h"

namespace {

using namespace zarvion;

//! Imports and solves a mechanism once; empty path when that is not possible here.
std::filesystem::path Solved(const std::string& key, const std::string& mechanism,
                             const std::string& thermo)
{
    static std::map<std::string, std::filesystem::path> made;
    if (auto it = made.find(key); it != made.end()) {
        return it->second;
    }
    std::filesystem::path result;
    const std::filesystem::path shared = std::filesystem::path(ZARVION_SHARED_DIR) / "mechanisms";
    const std::filesystem::path solver = std::filesystem::path(ZARVION_BIN_DIR) / "zarvion-solver";
    try {
        const auto mech = solverfile::ImportChemkinFiles(shared / mechanism, shared / thermo,
                                                         solverfile::ChemkinOptions{true});
        solverfile::ProblemSettings p;
        p.TemperatureMode = 1;
        p.initialTemperature = 1400;
        p.finalTime = 0.05;
        p.moleFractions = {{"CH4", 1.0}, {"O2", 2.0}, {"N2", 7.52}};
        const auto file = std::filesystem::temp_directory_path() / ("zarvion_bench_" + key + ".txt");
        solverfile::WriteSolverFile(file, solverfile::BuildSolverFileLines(mech, p, {mechanism, thermo}));
        const std::string command =
            "\"" + solver.string() + "\" \"" + file.string() + "\" > /dev/null 2>&1";
        if (std::filesystem::exists(solver) && std::system(command.c_str()) == 0) {
            result = file;
        }
    } catch (const std::exception&) {
        result.clear();
    }
    made[key] = result;
    return result;
}

void RunReduction(benchmark::State& state, const std::filesystem::path& path)
{
    if (path.empty()) {
        state.SkipWithError("no solved file: zarvion-solver or the mechanism is missing");
        return;
    }
    postprocessor::ReadOutcome outcome;
    const postprocessor::ResultSet results =
        postprocessor::OPEN_Rich(path, postprocessor::ReaderForm::SOL_RESX, {}, outcome);
    if (outcome.failed) {
        state.SkipWithError(("cannot read " + path.string() + ": " + outcome.message.text).c_str());
        return;
    }
    reduction::ReductionSetup setup;
    reduction::PrepData(results, path.string(), setup);
    for (auto& row : setup.SpeciesTable) {
        const bool target = row.name == "CH4" || row.name == "O2" || row.name == "CO2" ||
                            row.name == "H2O";
        row.parameter = target ? "0.1" : "";
    }
    setup.temperatureText = "0.1";
    setup.nonTargetText = "0.3";
    setup.intervalText = std::to_string(state.range(0));
    setup.reducedPathText =
        (std::filesystem::temp_directory_path() / "zarvion_bench_reduced.txt").string();
    reduction::ReductionRequest request;
    if (auto r = reduction::BuildRequest(setup, request); !r.empty()) {
        state.SkipWithError(r.message.text.c_str());
        return;
    }
    int rows = 0;
    int species = 0;
    int reactions = 0;
    for (auto _ : state) {
        reduction::ReductionTables tables;
        const auto run =
            reduction::ReduceMechanism(tables, results, path.string(), request, {}, shell::Now());
        rows = run.rowsAnalysed;
        species = tables.ReducedSpeciesCount;
        reactions = tables.ReducedReactionCount;
        benchmark::DoNotOptimize(tables.ReducedReactionCount);
    }
    state.counters["rows"] = rows;
    state.counters["species"] = species;
    state.counters["reactions"] = reactions;
    state.counters["per_row"] = benchmark::Counter(
        static_cast<double>(rows) * static_cast<double>(state.iterations()),
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_ReduceGri(benchmark::State& state)
{
    const char* env = std::getenv("ZARVION_BENCH_FILE");
    RunReduction(state, env ? std::filesystem::path(env)
                            : Solved("gri30", "gri30/gri30.inp", "gri30/gri30_thermo.dat"));
}
BENCHMARK(BM_ReduceGri)->Arg(1)->Arg(2)->Arg(4)->Unit(benchmark::kMillisecond);

void BM_ReduceNHeptane(benchmark::State& state)
{
    RunReduction(state, Solved("nheptane", "llnl-nheptane-v3.1/nc7_ver3.1_mech.txt",
                               "llnl-nheptane-v3.1/n_heptane_v3.1_therm.dat.txt"));
}
BENCHMARK(BM_ReduceNHeptane)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
