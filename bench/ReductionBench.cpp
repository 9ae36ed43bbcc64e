// Reduction of a solved GRI-Mech 3.0 file (CH4/air, 1 atm, 1400 K) with the targets CH4, O2,
// CO2, H2O and temperature at 0.1 and the others at 0.3. The argument is the sampling
// interval: 1 analyses every row, 2 every second row, 4 every fourth, so the rows analysed
// halve from one size to the next and the time should follow them.
//
// The solved file is taken from ZARVION_BENCH_FILE, else Samples/gri30_solved.txt beside the
// binaries or in the source tree.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

#include "postprocessor/ResultsReader.h"
#include "reduction/ReductionSetup.h"
#include "shell/TextFormat.h"

namespace {

using namespace zarvion;

std::filesystem::path SolvedFile()
{
    if (const char* env = std::getenv("ZARVION_BENCH_FILE")) {
        return env;
    }
    const std::filesystem::path beside = std::filesystem::path(ZARVION_BIN_DIR) / "Samples" /
                                         "gri30_solved.txt";
    if (std::filesystem::exists(beside)) {
        return beside;
    }
    return std::filesystem::path(ZARVION_SOURCE_DIR) / "Samples" / "gri30_solved.txt";
}

void BM_ReduceGri(benchmark::State& state)
{
    const auto path = SolvedFile();
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
    state.counters["us_per_row"] = benchmark::Counter(
        static_cast<double>(rows) * static_cast<double>(state.iterations()),
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_ReduceGri)->Arg(1)->Arg(2)->Arg(4)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
