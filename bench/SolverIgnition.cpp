// Wall time of whole ignition integrations (set-up of the integrator included, the import not):
// GRI-Mech 3.0 CH4/air 1 atm 1400 K, H2/O2/Ar 1 atm 1000 K, both to 0.05 s at rtol 1e-6,
// atol 1e-15; and LLNL n-heptane/air 20 atm 800 K to 0.05 s with the sparse solver.

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "solver/CvodeIntegrator.h"
#include "BenchMechanism.h"

using namespace zarvion;
using namespace zarvion::solver;

namespace {

void ignition(benchmark::State& state, const solverfile::Mechanism& m,
              const std::map<std::string, double>& x, double P, double T0, double tf,
              LinearSolverKind kind)
{
    std::vector<double> moles(m.speciesNames.size(), 0.0);
    for (const auto& [name, v] : x)
        for (std::size_t i = 0; i < moles.size(); ++i)
            if (m.speciesNames[i] == name) moles[i] = v;
    double Tend = 0, tIgn = 0;
    long steps = 0, rhs = 0, jac = 0;
    for (auto _ : state) {
        ConstantPressureProblem p(m, P, 1, T0);
        auto y0 = p.massFractionsFromMoleFractions(moles);
        y0.push_back(T0);
        IntegratorSettings s;
        s.relativeTolerance = 1e-6;
        s.absoluteTolerance = 1e-15;
        s.finalTime = tf;
        s.linearSolver = kind;
        CvodeIntegrator integ(p, y0, 0.0, s);
        std::vector<double> dydt(p.size());
        double best = 0;
        while (!integ.step()) {
            integ.derivative(dydt);
            if (dydt.back() > best) {
                best = dydt.back();
                tIgn = integ.time();
            }
        }
        Tend = integ.state().back();
        const auto st = integ.statistics();
        steps = st.steps;
        rhs = p.rhsCount();
        jac = st.jacobianEvaluations;
    }
    state.counters["T_end"] = Tend;
    state.counters["t_ign_us"] = tIgn * 1e6;
    state.counters["steps"] = static_cast<double>(steps);
    state.counters["rhs"] = static_cast<double>(rhs);
    state.counters["jac"] = static_cast<double>(jac);
}

void BM_GriIgnition(benchmark::State& state)
{
    static const auto m = bench::ImportSharedMechanism("gri30/gri30.inp", "gri30/gri30_thermo.dat");
    ignition(state, m, {{"CH4", 1}, {"O2", 2}, {"N2", 7.52}}, 1.0, 1400, 0.05,
             static_cast<LinearSolverKind>(state.range(0)));
}
BENCHMARK(BM_GriIgnition)->Arg(0)->Arg(2)->Iterations(1)->Repetitions(5)->ReportAggregatesOnly(true)
    ->Unit(benchmark::kMillisecond);

void BM_H2O2Ignition(benchmark::State& state)
{
    static const auto m = bench::ImportSharedMechanism("h2o2/h2o2.inp");
    ignition(state, m, {{"H2", 2}, {"O2", 1}, {"AR", 7}}, 1.0, 1000, 0.05, LinearSolverKind::Automatic);
}
BENCHMARK(BM_H2O2Ignition)->Iterations(1)->Repetitions(5)->ReportAggregatesOnly(true)
    ->Unit(benchmark::kMillisecond);

void BM_NHeptaneIgnition(benchmark::State& state)
{
    static const auto m = bench::ImportSharedMechanism("llnl-nheptane-v3.1/nc7_ver3.1_mech.txt",
                                          "llnl-nheptane-v3.1/n_heptane_v3.1_therm.dat.txt");
    // Stoichiometric n-heptane/air: C7H16 + 11 (O2 + 3.76 N2).
    ignition(state, m, {{"NC7H16", 1}, {"O2", 11}, {"N2", 41.36}}, 20.0, 800, 0.05,
             LinearSolverKind::Sparse);
}
BENCHMARK(BM_NHeptaneIgnition)->Iterations(1)->Repetitions(1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
