// Post-processor views over a solved GRI-Mech 3.0 file (CH4/air, 1 atm, 1400 K; at least
// 10,000 rows for the figures that matter): reading the file as the window does, the
// production analysis of one species over the whole table, and the mean-parameter table.
// Each reports rows per second.
//
// The solved file is taken from ZARVION_BENCH_FILE; without it, the GRI-Mech 3.0 sample's
// input side is solved once with rtol 1E-13 and atol 1E-24, which stores some 14,000 rows.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "postprocessor/MeanParameters.h"
#include "postprocessor/PostprocessorSession.h"
#include "postprocessor/ProductionAnalysis.h"
#include "postprocessor/ResultsReader.h"
#include "shell/AtomicFile.h"
#include "solver/SolverRun.h"

namespace {

using namespace zarvion;
using namespace zarvion::postprocessor;

//! The GRI-Mech 3.0 input side with tightened tolerances (lines 23 and 24), solved once.
std::filesystem::path SolveLargeSample()
{
    const std::filesystem::path input =
        std::filesystem::path(ZARVION_SOURCE_DIR) / "Samples" / "gri30.txt";
    std::ifstream in(input, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    std::string out;
    std::string line;
    int number = 0;
    while (std::getline(text, line)) {
        ++number;
        const bool cr = !line.empty() && line.back() == '\r';
        if (number == 23) line = std::string(" 1.00E-13 !Relative Tolerance") + (cr ? "\r" : "");
        if (number == 24) line = std::string(" 1.00E-24 !Absolute Tolerance") + (cr ? "\r" : "");
        out += line + "\n";
    }
    const std::filesystem::path solved =
        std::filesystem::temp_directory_path() / "zarvion_bench_gri30_large.txt";
    shell::WriteFileAtomically(solved, out);
    solver::RunSolverFile(solved, {});
    return solved;
}

std::filesystem::path SolvedFile()
{
    if (const char* env = std::getenv("ZARVION_BENCH_FILE")) {
        return env;
    }
    static const std::filesystem::path solved = SolveLargeSample();
    return solved;
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
