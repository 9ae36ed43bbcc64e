// Post-processor views over a solved GRI-Mech 3.0 file (CH4/air, 1 atm, 1400 K; at least
// 10,000 rows for the figures that matter): reading the file as the window does, the
// production analysis of one species over the whole table, and the mean-parameter table.
// Each reports rows per second.
//
// The solved file is taken from ZARVION_BENCH_FILE, else Samples/gri30_solved.txt beside the
// binaries or in the source tree.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

#include "postprocessor/MeanParameters.h"
#include "postprocessor/PostprocessorSession.h"
#include "postprocessor/ProductionAnalysis.h"
#include "postprocessor/ResultsReader.h"

namespace {

using namespace zarvion;
using namespace zarvion::postprocessor;

std::filesystem::path SolvedFile()
{
    if (const char* env = std::getenv("ZARVION_BENCH_FILE")) {
        return env;
    }
    const std::filesystem::path beside =
        std::filesystem::path(ZARVION_BIN_DIR) / "Samples" / "gri30_solved.txt";
    if (std::filesystem::exists(beside)) {
        return beside;
    }
    return std::filesystem::path(ZARVION_SOURCE_DIR) / "Samples" / "gri30_solved.txt";
}

SessionConstants Codata()
{
    return SessionConstants::FromStored(8.314462618, 1.987204259, 6.02214076E+23, 1.380649E-23,
                                        101.325);
}

//! The state of the whole file, loaded once for the view benchmarks.
PostprocessorState* SharedState(benchmark::State& state)
{
    static LoadedResults loaded = LoadForViews(SolvedFile(), Codata());
    if (!loaded.ok()) {
        state.SkipWithError(("cannot read " + SolvedFile().string() + ": " + loaded.message.text).c_str());
        return nullptr;
    }
    return loaded.state.get();
}

void ReportRows(benchmark::State& state, int rows)
{
    state.counters["rows"] = rows;
    state.counters["rows_per_s"] = benchmark::Counter(
        static_cast<double>(rows) * static_cast<double>(state.iterations()),
        benchmark::Counter::kIsRate);
}

void BM_LoadSolvedFile(benchmark::State& state)
{
    const auto path = SolvedFile();
    PhysicalConstants constants;
    int rows = 0;
    for (auto _ : state) {
        ReadOutcome outcome;
        ResultSet r = OPEN_Rich(path, ReaderForm::MenuForm, constants, outcome);
        if (outcome.failed) {
            state.SkipWithError(outcome.message.text.c_str());
            return;
        }
        rows = r.rowCount - 1;
        benchmark::DoNotOptimize(r.density.data());
    }
    ReportRows(state, rows);
}
BENCHMARK(BM_LoadSolvedFile)->Unit(benchmark::kMillisecond);

//! Production analysis over every stored row; the argument picks the species.
void BM_ProductionAnalysis(benchmark::State& state)
{
    PostprocessorState* st = SharedState(state);
    if (st == nullptr) {
        return;
    }
    const char* names[] = {"OH", "CO2", "CH4"};
    shell::Message m;
    const auto species = st->FindSpec(names[state.range(0)], m);
    if (!species) {
        state.SkipWithError(m.text.c_str());
        return;
    }
    std::size_t reactions = 0;
    for (auto _ : state) {
        const ProductionTable t = ShowReacDeRe(*st, *species, true);
        reactions = t.rows.size();
        benchmark::DoNotOptimize(t.rows.data());
    }
    state.SetLabel(names[state.range(0)]);
    state.counters["reactions"] = static_cast<double>(reactions);
    ReportRows(state, st->IntervalLast - st->IntervalFirst + 1);
}
BENCHMARK(BM_ProductionAnalysis)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

void BM_MeanParameterTable(benchmark::State& state)
{
    PostprocessorState* st = SharedState(state);
    if (st == nullptr) {
        return;
    }
    for (auto _ : state) {
        const MeanTable t = MeanParameterTable(*st);
        benchmark::DoNotOptimize(t.rows.data());
    }
    ReportRows(state, static_cast<int>(st->UsedRows.size()));
}
BENCHMARK(BM_MeanParameterTable)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
