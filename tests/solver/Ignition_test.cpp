// Physics of whole ignition runs on imported real mechanisms: conservation of elements and of
// enthalpy along the trajectory, closeness to equilibrium at the end, and convergence of the
// ignition delay and final temperature against a run at much tighter tolerances.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "solver/CvodeIntegrator.h"
#include "solverfile/ChemkinImport.h"

using namespace zarvion;
using namespace zarvion::solver;

namespace {

constexpr double R1 = 1.987204259;  // cal/(mol K), the importer's default units
constexpr double R2 = 82.05736608;  // cm^3 atm/(mol K)

struct Imported {
    solverfile::Mechanism mechanism;
    std::vector<std::map<std::string, int>> elements;
};

Imported import(const std::string& chem, const std::string& thermo = {})
{
    const std::string base = ZARVION_SHARED_DIR "/mechanisms/";
    std::optional<std::filesystem::path> th;
    if (!thermo.empty()) th = base + thermo;
    const auto imp = solverfile::ImportChemkinFiles(base + chem, th);
    if (!imp.succeeded()) throw std::runtime_error("import of " + chem + " failed");
    Imported out;
    auto& m = out.mechanism;
    for (const auto& s : imp.species) {
        m.speciesNames.push_back(s.name);
        m.thermo.push_back(s.thermo);
        auto& e = out.elements.emplace_back();
        for (const auto& [sym, n] : s.elements) e[sym] += n;
    }
    m.reactions = imp.reactions;
    m.header.GasConstantEnergy = R1;
    m.header.GasConstantConc = R2;
    return out;
}

// The states after every accepted step (the initial one first) and the steepest rise of T.
struct Trajectory {
    std::vector<std::vector<double>> y;
    double steepestTime = 0, steepestRate = 0;
    bool sparse = false;
    double finalT() const { return y.back().back(); }
};

// An adiabatic run at 1 atm from T0 [K] to tf [s], mole fractions given by species name.
Trajectory integrate(const solverfile::Mechanism& m, const std::map<std::string, double>& given,
                     double T0, double tf, double rtol, double atol,
                     LinearSolverKind kind = LinearSolverKind::Automatic)
{
    ConstantPressureProblem p(m, 1.0, 1, T0);
    std::vector<double> x;
    for (const auto& name : m.speciesNames) x.push_back(given.contains(name) ? given.at(name) : 0);
    auto y0 = p.massFractionsFromMoleFractions(x);
    y0.push_back(T0);
    CvodeIntegrator integ(p, y0, 0.0, {rtol, atol, 0, tf, kind});
    Trajectory tr{{y0}, 0, 0, integ.sparse()};
    std::vector<double> dydt(p.size());
    for (bool done = false; !done;) {
        done = integ.step();
        const auto y = integ.state();
        tr.y.emplace_back(y.begin(), y.end());
        integ.derivative(dydt);
        if (dydt.back() > tr.steepestRate) tr.steepestTime = integ.time();
        tr.steepestRate = std::max(tr.steepestRate, dydt.back());
    }
    return tr;
}

// Conservation along the run, ignition inside it (before tf [s]) and a hot end state (above
// hot [K]) near equilibrium in its fastest reversible reactions.
void checkIgnition(const Imported& imp, const Trajectory& tr, double tf, double hot, int fastest)
{
    const auto& m = imp.mechanism;
    postprocessor::RateWorkspace ws(m);
    const int ns = ws.speciesCount();
    const double* W = ws.molecularWeights().data();
    // Element moles per gram: linear invariants of the system, kept by BDF up to rounding.
    auto elements = [&](const std::vector<double>& y) {
        std::map<std::string, double> e;
        for (int i = 0; i < ns; ++i)
            for (const auto& [sym, n] : imp.elements[i]) e[sym] += y[i] * n / W[i];
        return e;
    };
    // Specific enthalpy in units of R [K mol/g]: sum_i Y_i (h_i/RT) T / W_i.
    auto enthalpy = [&](const std::vector<double>& y) {
        postprocessor::ComputeTemperatureFunctions(y[ns], ws);
        double h = 0;
        for (int i = 0; i < ns; ++i) h += y[i] * ws.hOverRT()[i] * y[ns] / W[i];
        return h;
    };
    const auto e0 = elements(tr.y.front());
    const double h0 = enthalpy(tr.y.front());
    for (const auto& y : tr.y) {
        auto e = elements(y);
        for (const auto& [sym, v0] : e0)
            if (v0 > 0) { ASSERT_NEAR(e[sym], v0, 1e-10 * v0) << sym; }
        // Adiabatic at constant pressure: the mixture enthalpy stays put (to the 1e-6 relative
        // accuracy that rtol 1e-6 allows).
        ASSERT_NEAR(enthalpy(y), h0, 1e-6 * std::abs(h0)) << "at T " << y[ns];
    }

    // Ignition happened: the steepest rise lies inside the run and the end is hot.
    EXPECT_GT(tr.steepestTime, 0.0);
    EXPECT_LT(tr.steepestTime, tf);
    EXPECT_GT(tr.finalT(), hot);
    // Close to equilibrium at the end: the fastest reversible reactions run both ways at nearly
    // the same rate, |q| < 1e-3 f. Concentrations c_i = Ctot x_i at 1 atm, x_i = Y_i / (W_i S).
    const auto& y = tr.y.back();
    double S = 0;
    for (int i = 0; i < ns; ++i) S += y[i] / W[i];
    std::vector<double> c(ns);
    for (int i = 0; i < ns; ++i) c[i] = 1.0 / (R2 * tr.finalT()) * y[i] / (W[i] * S);
    std::vector<postprocessor::RatePair> prod(ns), rates(ws.reactionCount());
    postprocessor::ComputeReactionRates(c, prod, ws, 1.0, 0, tr.finalT(), {}, rates, false, false,
                                        false);
    std::vector<int> order;
    for (int j = 0; j < ws.reactionCount(); ++j)
        if (m.reactions[j].ints[solverfile::slot::Reversible] == 1) order.push_back(j);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return rates[a][1] > rates[b][1]; });
    for (int k = 0; k < std::min<int>(fastest, order.size()); ++k)
        EXPECT_LT(std::abs(rates[order[k]][0]), 1e-3 * rates[order[k]][1])
            << m.reactions[order[k]].text;
}

} // namespace

TEST(Ignition, MethaneAirWithGriMech)
{
    const auto imp = import("gri30/gri30.inp", "gri30/gri30_thermo.dat");
    const std::map<std::string, double> x{{"CH4", 1}, {"O2", 2}, {"N2", 7.52}};
    const auto tr = integrate(imp.mechanism, x, 1400, 0.05, 1e-6, 1e-15);
    EXPECT_TRUE(tr.sparse);  // 54 unknowns: above the sparse threshold
    checkIgnition(imp, tr, 0.05, 2400, 10);

    // Convergence: at rtol 1e-10, atol 1e-20 the delay and the final temperature change by
    // less than the 0.5 % and 0.5 K the default tolerances must deliver.
    const auto fine = integrate(imp.mechanism, x, 1400, 0.05, 1e-10, 1e-20);
    EXPECT_NEAR(tr.steepestTime, fine.steepestTime, 0.005 * fine.steepestTime);
    EXPECT_NEAR(tr.finalT(), fine.finalT(), 0.5);
}

TEST(Ignition, HydrogenOxygenDenseAndSparseAgree)
{
    const auto imp = import("h2o2/h2o2.inp");
    const std::map<std::string, double> x{{"H2", 2}, {"O2", 1}, {"AR", 7}};
    const auto& m = imp.mechanism;
    const auto dense = integrate(m, x, 1000, 0.01, 1e-8, 1e-16, LinearSolverKind::Dense);
    const auto sparse = integrate(m, x, 1000, 0.01, 1e-8, 1e-16, LinearSolverKind::Sparse);
    ASSERT_TRUE(sparse.sparse);
    checkIgnition(imp, dense, 0.01, 2000, 8);
    checkIgnition(imp, sparse, 0.01, 2000, 8);
    // The sparse Newton matrix leaves out rank-one terms; that changes only the iteration, so
    // both reach the same solution within the tolerances.
    EXPECT_NEAR(dense.steepestTime, sparse.steepestTime, 1e-3 * dense.steepestTime);
    EXPECT_NEAR(dense.finalT(), sparse.finalT(), 1e-3);
}
