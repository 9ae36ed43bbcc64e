// One full rate evaluation (all reactions, production, no allocation) of GRI-Mech 3.0 at 1800 K.

#include <benchmark/benchmark.h>

#include <vector>

#include "postprocessor/ThermoModule.h"
#include "BenchMechanism.h"

using namespace zarvion;

namespace {

solverfile::Mechanism griMechanism()
{
    return bench::ImportSharedMechanism("gri30/gri30.inp", "gri30/gri30_thermo.dat");
}

// A burning CH4/air mixture: main species as given, every other species at 1e-6 of Ctot.
std::vector<double> concentrations(const solverfile::Mechanism& m, double T, double P)
{
    const double ctot = P / (82.05736608 * T);
    std::vector<double> c(m.speciesNames.size(), 1e-6 * ctot);
    const std::pair<const char*, double> main[] = {{"N2", 0.70}, {"H2O", 0.12}, {"CO2", 0.05},
                                                   {"O2", 0.05}, {"CO", 0.02}, {"CH4", 0.02},
                                                   {"H2", 0.01}, {"OH", 0.005}, {"H", 0.003}, {"O", 0.002}};
    for (const auto& [name, x] : main)
        for (std::size_t i = 0; i < c.size(); ++i)
            if (m.speciesNames[i] == name) c[i] = x * ctot;
    return c;
}

void BM_GriRates1800K(benchmark::State& state)
{
    const auto m = griMechanism();
    postprocessor::RateWorkspace ws(m);
    const auto c = concentrations(m, 1800, 1.0);
    std::vector<postprocessor::RatePair> prod(ws.speciesCount()), rates(ws.reactionCount());
    // Alternate between two temperatures so the temperature work is redone on every call.
    double T[2] = {1800.0, 1800.0 * (1 + 1e-12)};
    int k = 0;
    for (auto _ : state) {
        postprocessor::ComputeReactionRates(c, prod, ws, 1.0, 0, T[k ^= 1], {}, rates, false, false, false);
        benchmark::DoNotOptimize(prod.data());
    }
    state.counters["reactions"] = ws.reactionCount();
}
BENCHMARK(BM_GriRates1800K);

// The same state over and over: the temperature work is kept from the first call, so this is
// the per-state part alone (third bodies, fall-off, rates, production).
void BM_GriRatesSameTemperature(benchmark::State& state)
{
    const auto m = griMechanism();
    postprocessor::RateWorkspace ws(m);
    const auto c = concentrations(m, 1800, 1.0);
    std::vector<postprocessor::RatePair> prod(ws.speciesCount()), rates(ws.reactionCount());
    for (auto _ : state) {
        postprocessor::ComputeReactionRates(c, prod, ws, 1.0, 0, 1800.0, {}, rates, false, false, false);
        benchmark::DoNotOptimize(prod.data());
    }
}
BENCHMARK(BM_GriRatesSameTemperature);

void BM_GriTemperatureFunctions(benchmark::State& state)
{
    const auto m = griMechanism();
    postprocessor::RateWorkspace ws(m);
    double T[2] = {1800.0, 1800.0 * (1 + 1e-12)};
    int k = 0;
    for (auto _ : state) {
        postprocessor::ComputeTemperatureFunctions(T[k ^= 1], ws);
        benchmark::DoNotOptimize(ws.equilibriumConstant().data());
    }
}
BENCHMARK(BM_GriTemperatureFunctions);

} // namespace

BENCHMARK_MAIN();
