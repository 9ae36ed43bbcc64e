// Import of large CHEMKIN mechanisms and the building of their solver-file lines.

#include "shell/TextFile.h"
#include "solverfile/ChemkinImport.h"
#include "solverfile/ChemkinWriter.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

namespace {

using namespace zarvion::solverfile;

std::string sharedFile(const std::string& folder, const std::string& name)
{
    return zarvion::shell::ReadFile(std::filesystem::path(ZARVION_SHARED_DIR) / "mechanisms" /
                                    folder / name);
}

void importMechanism(benchmark::State& state, const char* folder, const char* chem,
                     const char* therm)
{
    const std::string mechanism = sharedFile(folder, chem);
    const std::string thermo = sharedFile(folder, therm);
    for (auto _ : state) {
        ChemkinImport result = ImportChemkin(mechanism, thermo);
        benchmark::DoNotOptimize(result.reactions.data());
    }
}

void BM_ImportGriMech30(benchmark::State& state)
{
    importMechanism(state, "gri30", "gri30.inp", "gri30_thermo.dat");
}
BENCHMARK(BM_ImportGriMech30)->Unit(benchmark::kMillisecond);

void BM_ImportLlnlHeptane(benchmark::State& state)
{
    importMechanism(state, "llnl-nheptane-v3.1", "nc7_ver3.1_mech.txt",
                    "n_heptane_v3.1_therm.dat.txt");
}
BENCHMARK(BM_ImportLlnlHeptane)->Unit(benchmark::kMillisecond);

void BM_SolverFileLinesLlnlHeptane(benchmark::State& state)
{
    ChemkinImport result =
        ImportChemkin(sharedFile("llnl-nheptane-v3.1", "nc7_ver3.1_mech.txt"),
                      sharedFile("llnl-nheptane-v3.1", "n_heptane_v3.1_therm.dat.txt"));
    for (auto _ : state) {
        auto lines = BuildSolverFileLines(result, ProblemSettings{}, SolverFileSource{"m", "t"});
        benchmark::DoNotOptimize(lines.data());
    }
}
BENCHMARK(BM_SolverFileLinesLlnlHeptane)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
