// Rate module against hand formulas. Expected values are evaluated here from the textbook
// forms (NASA 7-coefficient polynomials, Arrhenius, Lindemann, Troe, SRI) written out
// independently of the module; agreement is required to 1e-10 relative unless stated.

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "postprocessor/ResultSet.h"
#include "postprocessor/ThermoModule.h"

using namespace zarvion;
using namespace zarvion::postprocessor;
using solverfile::ReactionInts;
using solverfile::ReactionReals;
using solverfile::ThermoRecord;

namespace {

constexpr double R1 = 1.987204259; // cal/(mol K)
constexpr double R2 = 82.05736608; // cm^3 atm/(mol K)

void expectRel(double expected, double actual, double tol = 1e-10)
{
    EXPECT_NEAR(actual, expected, tol * std::abs(expected) + 1e-300) << "expected " << expected;
}

using Coeffs = std::array<double, 7>;
// g/RT in the closed NASA form, a different algebraic route from h/RT - s/R.
double gOverRT(const Coeffs& a, double T)
{
    return a[0] * (1 - std::log(T)) - a[1] * T / 2 - a[2] * T * T / 6 - a[3] * T * T * T / 12 -
           a[4] * T * T * T * T / 20 + a[5] / T - a[6];
}
double hOverRT(const Coeffs& a, double T)
{
    return a[0] + a[1] * T / 2 + a[2] * T * T / 3 + a[3] * T * T * T / 4 +
           a[4] * T * T * T * T / 5 + a[5] / T;
}
double cpOverR(const Coeffs& a, double T)
{
    return a[0] + a[1] * T + a[2] * T * T + a[3] * T * T * T + a[4] * T * T * T * T;
}

//! EvaluateThermoPolynomial with the powers of T it expects.
void evaluate(const ThermoRecord& t, double T, double& h, double& cp, double& s)
{
    const double powers[5] = {0, std::log(T), T * T, T * T * T, T * T * T * T};
    EvaluateThermoPolynomial(t.data(), T, t[18], powers, h, cp, s);
}

struct Rx {
    ReactionInts ints{};
    ReactionReals reals{};
};
using IntSlots = std::vector<std::pair<int, int>>;
using RealSlots = std::vector<std::pair<int, double>>;

// Reactants/products are 1-based species numbers. Further slots: ints 12 third-body kind,
// 13 partner count, 14 low limit, 15 fall-off kind (1 Troe, 2 SRI, 3 three-parameter Troe),
// 17.. partners; reals 4-6 low limit, 7-11 fall-off parameters, 12.. efficiencies.
Rx makeReaction(std::vector<int> reactants, std::vector<int> products, double A, double n,
                double E, int reversible = 1, const IntSlots& is = {}, const RealSlots& rs = {})
{
    Rx r;
    for (std::size_t k = 0; k < reactants.size(); ++k) r.ints[1 + k] = reactants[k];
    for (std::size_t k = 0; k < products.size(); ++k) r.ints[4 + k] = products[k];
    r.ints[10] = static_cast<int>(reactants.size());
    r.ints[11] = static_cast<int>(products.size());
    r.ints[16] = reversible;
    r.reals[1] = A;
    r.reals[2] = n;
    r.reals[3] = E;
    for (auto [s, v] : is) r.ints[s] = v;
    for (auto [s, v] : rs) r.reals[s] = v;
    return r;
}

// Five species with fully populated low ranges (all five polynomial terms) at and below
// 1000 K; the high range is the low one with a1 + 0.15 and a6 - 210, so the branch shows.
struct Toy {
    std::vector<Coeffs> low{{3.1, 1.2e-3, -3.0e-7, 4.0e-11, -2.0e-15, -1200.0, 4.1},
                            {2.5, 0.0, 0.0, 0.0, 0.0, 29000.0, 4.6},
                            {3.5, 2.0e-3, -1.1e-6, 3.0e-10, -2.5e-14, -30000.0, 2.9},
                            {3.9, -4.0e-4, 1.5e-6, -9.0e-10, 1.6e-13, 3600.0, 0.4},
                            {3.3, 1.4e-3, -4.0e-7, 5.0e-11, -2.2e-15, -1000.0, 5.5}};
    std::vector<Coeffs> high;
    std::vector<ThermoRecord> thermo;
    Toy()
    {
        const double weights[] = {32.0, 1.0, 33.0, 17.0, 28.0};
        for (int i = 0; i < 5; ++i) {
            Coeffs b = low[i];
            b[0] += 0.15;
            b[5] -= 210.0;
            high.push_back(b);
            ThermoRecord t{};
            for (int k = 0; k < 7; ++k) {
                t[1 + k] = b[k];
                t[8 + k] = low[i][k];
            }
            t[15] = weights[i];
            t[18] = 1000;
            thermo.push_back(t);
        }
    }
    const Coeffs& range(int s, double T) const { return T > 1000.0 ? high[s - 1] : low[s - 1]; }
    double g(int s, double T) const { return gOverRT(range(s, T), T); }
    double h(int s, double T) const { return hOverRT(range(s, T), T); }
};

struct Evaluation {
    std::vector<RatePair> production, rates;
};

Evaluation run(RateWorkspace& ws, const std::vector<double>& c, double P, double T, int mode = 0,
               bool heat = false, bool dT = false, bool cut = true,
               std::span<const std::uint8_t> active = {})
{
    Evaluation e;
    e.production.assign(ws.speciesCount() + mode, {-7.0, -7.0});
    e.rates.assign(ws.reactionCount(), {-9.0, -9.0});
    ComputeReactionRates(c, e.production, ws, P, mode, T, active, e.rates, heat, dT, cut);
    return e;
}

} // namespace

TEST(EvaluateThermoPolynomial, BranchesFormsAndDerivatives)
{
    Toy toy;
    const auto& t = toy.thermo[2];
    // T == Tcommon belongs to the low range (slots 8-14).
    for (double T : {300.0, 1000.0, 1000.0000001, 2500.0}) {
        double h, cp, s;
        evaluate(t, T, h, cp, s);
        const Coeffs& a = toy.range(3, T);
        expectRel(hOverRT(a, T), h);
        expectRel(cpOverR(a, T), cp);
        expectRel(hOverRT(a, T) - gOverRT(a, T), s);
    }
    // cp/R = d(h/R)/dT and cp/(R T) = d(s/R)/dT, by central differences (step 1e-3 K, the
    // truncation error of a quartic is below 1e-9 relative here).
    for (double T : {450.0, 1700.0}) {
        const double d = 1e-3;
        double hp, cpp, sp, hm, cpm, sm, h, cp, s;
        evaluate(toy.thermo[3], T + d, hp, cpp, sp);
        evaluate(toy.thermo[3], T - d, hm, cpm, sm);
        evaluate(toy.thermo[3], T, h, cp, s);
        EXPECT_NEAR((hp * (T + d) - hm * (T - d)) / (2 * d), cp, 1e-7 * cp);
        EXPECT_NEAR((sp - sm) / (2 * d), cp / T, 1e-7 * cp / T);
    }
}

TEST(EvaluateThermoPolynomial, EmptyRangeGivesZeros)
{
    ThermoRecord t{};
    const Coeffs low{3.0, 1e-3, 0, 0, 0, -100, 2};
    for (int k = 0; k < 7; ++k) t[8 + k] = low[k]; // high range left all zero
    t[18] = 1000;
    double h = 1, cp = 1, s = 1;
    evaluate(t, 1500, h, cp, s);
    EXPECT_EQ((std::array{h, cp, s}), (std::array{0.0, 0.0, 0.0}));
    // A range whose coefficients merely sum to zero counts as empty as well.
    ThermoRecord u{};
    u[8] = 1.0;
    u[13] = -1.0;
    u[18] = 1000;
    evaluate(u, 500, h, cp, s);
    EXPECT_EQ(cp, 0.0);
}

TEST(ComputeTemperatureFunctions, KcFromGibbsEnergies)
{
    Toy toy;
    // 1 + 2 = 3 (dn = -1) and 3 = 4 + 4 (dn = +1, a species twice).
    const Rx rx[2] = {makeReaction({1, 2}, {3}, 1e13, 0.5, 1500),
                      makeReaction({3}, {4, 4}, 2e12, -0.7, 52000)};
    std::vector<ReactionInts> ints{rx[0].ints, rx[1].ints};
    std::vector<ReactionReals> reals{rx[0].reals, rx[1].reals};
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    for (double T : {700.0, 1000.0, 2200.0}) {
        ComputeTemperatureFunctions(T, ws);
        // Kc = exp(-dG/RT) (R T)^-dn
        expectRel(std::exp(-(toy.g(3, T) - toy.g(1, T) - toy.g(2, T))) * R2 * T,
                  ws.equilibriumConstant()[0]);
        expectRel(std::exp(-(2 * toy.g(4, T) - toy.g(3, T))) / (R2 * T),
                  ws.equilibriumConstant()[1]);
        for (int i = 1; i <= 5; ++i) expectRel(toy.g(i, T), ws.gOverRT()[i - 1], 1e-12);
    }
    // van 't Hoff: d ln Kp / dT = dH / (R T^2), central differences with step 1e-2 K
    // (truncation below 1e-8 relative).
    const double T = 1400, d = 1e-2;
    auto lnKp = [&](double t) {
        ComputeTemperatureFunctions(t, ws);
        return std::log(ws.equilibriumConstant()[1] * R2 * t);
    };
    const double slope = (lnKp(T + d) - lnKp(T - d)) / (2 * d);
    const double dH = 2 * toy.h(4, T) - toy.h(3, T); // in units of R T
    EXPECT_NEAR(slope, dH / T, 1e-7 * std::abs(dH / T));

    // A workspace built from a result set's copy of the rows computes the same.
    ResultSet rs;
    rs.thermo = toy.thermo;
    rs.ReactionInts = ints;
    rs.ReactionReals = reals;
    rs.GasConstantEnergy = R1;
    rs.GasConstantConc = R2;
    RateWorkspace fromSet(rs);
    ComputeTemperatureFunctions(T, fromSet);
    EXPECT_EQ(fromSet.speciesCount(), 5);
    EXPECT_EQ(fromSet.molecularWeights()[4], 28.0);
    // The computed slots land in real slots 22-25.
    ComputeTemperatureFunctions(T, ws);
    ws.writeComputedSlots(reals);
    EXPECT_EQ(reals[1][22], ws.kInfinity()[1]);
    EXPECT_EQ(reals[1][23], ws.equilibriumConstant()[1]);
    EXPECT_EQ(reals[1][23], fromSet.equilibriumConstant()[1]);
}

TEST(ComputeTemperatureFunctions, RateConstantsAcrossTheExponentRange)
{
    // k = A T^n exp(-E / R T) against std::pow and std::exp for arguments from about -1000 to
    // +40, across both sides of every power of two that the exponential splits on. Rounding of
    // an argument x alone moves exp(x) by |x| ulp, so agreement is asked to 4e-16 (|x| + 10)
    // relative, and exact 0 where std::exp underflows.
    Toy toy;
    std::vector<ReactionInts> ints;
    std::vector<ReactionReals> reals;
    std::vector<std::pair<double, double>> params;
    for (double n : {-2.5, 0.0, 0.7, 3.1})
        for (double E : {-30000.0, 0.0, 1234.5, 45000.0, 1.2e5, 1.3e6, 2.0e6}) {
            const Rx r = makeReaction({1, 2}, {3}, 1e13, n, E, 0);
            ints.push_back(r.ints);
            reals.push_back(r.reals);
            params.push_back({n, E});
        }
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    for (double T : {650.0, 1000.0, 1777.7}) {
        ComputeTemperatureFunctions(T, ws);
        for (std::size_t j = 0; j < params.size(); ++j) {
            const auto [n, E] = params[j];
            const double expected = 1e13 * std::pow(T, n) * std::exp(-E / (R1 * T));
            if (expected == 0.0) {
                EXPECT_EQ(ws.kInfinity()[j], 0.0);
            } else {
                const double x = std::abs(n * std::log(T)) + std::abs(E / (R1 * T));
                expectRel(expected, ws.kInfinity()[j], 4e-16 * (x + 10));
            }
        }
    }
}

class RateTypes : public ::testing::Test {
protected:
    Toy toy;
    std::vector<ReactionInts> ints;
    std::vector<ReactionReals> reals;
    std::vector<double> c{2.0e-6, 3.0e-7, 4.0e-6, 1.5e-7, 5.0e-6}; // mol/cm^3
    double P = 1.3;                                                 // atm
    double T = 1350;
    // 1 + 2 = 3 with k_inf = 3.3E12 T^0.2 exp(-4200 cal / RT) and k0 = 7E17 T^-1.1 exp(-100 / RT)
    const double k1 = 3.3e12 * std::pow(T, 0.2) * std::exp(-4200 / (R1 * T));
    const double k0 = 7.0e17 * std::pow(T, -1.1) * std::exp(-100 / (R1 * T));

    void add(const Rx& r)
    {
        ints.push_back(r.ints);
        reals.push_back(r.reals);
    }
    void add(const IntSlots& is, const RealSlots& rs = {})
    {
        add(makeReaction({1, 2}, {3}, 3.3e12, 0.2, 4200, 1, is, rs));
    }
    double ctot() const { return P / (R2 * T); }
    double kc() const // of 1 + 2 = 3
    {
        return std::exp(-(toy.g(3, T) - toy.g(1, T) - toy.g(2, T))) * R2 * T;
    }
};

TEST_F(RateTypes, EachReactionTypeMatchesHandFormula)
{
    // Fall-off forms: Pr = k0 [M] / k_inf, k = k_inf Pr / (1 + Pr) F.
    const double pr = k0 * ctot() / k1, lind = k1 * pr / (1 + pr);
    auto troe = [&](double fcent) {
        const double L = std::log10(pr), Fc = std::log10(fcent);
        const double cc = -0.4 - 0.67 * Fc, nn = 0.75 - 1.27 * Fc;
        const double w = (L + cc) / (nn - 0.14 * (L + cc));
        return lind * std::pow(10.0, Fc / (1 + w * w));
    };
    const double fc3 = 0.38 * std::exp(-T / 180) + 0.62 * std::exp(-T / 1100);
    const double X = 1 / (1 + std::pow(std::log10(pr), 2));
    const double sri = std::pow(1.1 * std::exp(-650 / T) + std::exp(-T / 900), X) * 1.3 *
                       std::pow(T, -0.2);
    const double sriBase = 0.5 * std::exp(-300 / T) + std::exp(-T / 700); // d = e = 0: no factor
    // T / T3 and T / T1 far above 500 are clipped, so exp(-500) stays finite; T2 / T tiny.
    const double fcGuard = 0.6 * std::exp(-500.0) + 0.4 * std::exp(-500.0) + std::exp(-1e-30 / T);
    const double prPartner = k0 * c[4] / k1;
    const RealSlots low{{4, 7.0e17}, {5, -1.1}, {6, 100}};
    auto with = [&](RealSlots more) {
        more.insert(more.end(), low.begin(), low.end());
        return more;
    };
    const struct {
        const char* name;
        IntSlots ints;
        RealSlots reals;
        double k;
    } cases[] = {
        {"plain", {}, {}, k1},
        // M = Ctot + (2.5 - 1) c5 + (0 - 1) c4
        {"third body, kind 2", {{12, 2}, {13, 2}, {17, 5}, {18, 4}}, {{12, 2.5}, {13, 0.0}},
         k1 * (ctot() + 1.5 * c[4] - c[3])},
        {"Lindemann", {{12, 1}, {14, 1}}, low, lind},
        {"Troe, three parameters", {{12, 1}, {14, 1}, {15, 3}},
         with({{7, 0.62}, {8, 180}, {9, 1100}}), troe(fc3)},
        {"Troe, four parameters", {{12, 1}, {14, 1}, {15, 1}},
         with({{7, 0.62}, {8, 180}, {9, 1100}, {10, 5000}}), troe(fc3 + std::exp(-5000 / T))},
        {"SRI, five parameters", {{12, 1}, {14, 1}, {15, 2}},
         with({{7, 1.1}, {8, 650}, {9, 900}, {10, 1.3}, {11, -0.2}}), lind * sri},
        {"SRI, three parameters", {{12, 1}, {14, 1}, {15, 2}}, with({{7, 0.5}, {8, 300}, {9, 700}}),
         lind * std::pow(sriBase, X)},
        {"Troe, clipped exponents", {{12, 1}, {14, 1}, {15, 1}},
         with({{7, 0.4}, {8, 1e-30}, {9, 1e-30}, {10, 1e-30}}), troe(fcGuard)},
        // (+5) in place of (+M): kind 0, one partner, efficiency 1
        {"explicit partner", {{13, 1}, {14, 1}, {17, 5}}, with({{12, 1.0}}),
         k1 * prPartner / (1 + prPartner)},
    };
    for (const auto& r : cases) add(r.ints, r.reals);
    add(makeReaction({3}, {4, 4}, 2e12, 0, 30000, 0)); // irreversible 3 => 4 + 4
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    const auto e = run(ws, c, P, T, 0, false, false, false);
    const int n = static_cast<int>(std::size(cases));
    for (int j = 0; j < n; ++j) {
        SCOPED_TRACE(cases[j].name);
        const double f = cases[j].k * c[0] * c[1];
        expectRel(f, e.rates[j][1]);
        expectRel(f - cases[j].k / kc() * c[2], e.rates[j][0]);
    }
    // Slot 25 holds the SRI base and the Troe log10 Fcent.
    expectRel(sriBase, ws.falloffCentre()[6]);
    expectRel(std::log10(fcGuard), ws.falloffCentre()[7] + 0.0, 1e-12);
    expectRel(2e12 * std::exp(-30000 / (R1 * T)) * c[2], e.rates[n][1]);
    EXPECT_EQ(e.rates[n][0], e.rates[n][1]); // no reverse part
    EXPECT_EQ(ws.equilibriumConstant()[n], 0.0);

    // Production: net and gross sums over slots, species 4 formed twice by the last reaction.
    double net1 = 0, net3 = -e.rates[n][0], gross3 = 0;
    for (int j = 0; j < n; ++j) {
        net1 -= e.rates[j][0];
        net3 += e.rates[j][0];
        if (e.rates[j][0] > 0) gross3 += e.rates[j][0];
    }
    expectRel(net1, e.production[0][0]);
    expectRel(net3, e.production[2][0]);
    expectRel(gross3, e.production[2][1]);
    expectRel(2 * e.rates[n][0], e.production[3][0]);
    expectRel(2 * e.rates[n][0], e.production[3][1]);
}

TEST_F(RateTypes, ZeroThirdBodyStopsReaction)
{
    // Explicit partner 4 whose concentration is 0 (M = 0), and a kind-2 third body whose zero
    // efficiencies take more than the total concentration away (M < 0): rates are 0 and
    // production is untouched.
    add(makeReaction({1, 2}, {3}, 1e13, 0, 0, 1,
                     {{13, 1}, {14, 1}, {17, 4}}, {{12, 1}, {4, 1e16}}));
    add(makeReaction({1, 2}, {3}, 1e13, 0, 0, 1,
                     {{12, 2}, {13, 5}, {17, 1}, {18, 2}, {19, 3}, {20, 4}, {21, 5}}));
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    c[3] = 0;
    P = 0.5 * (c[0] + c[1] + c[2] + c[4]) * R2 * T; // Ctot is half the species sum
    const auto e = run(ws, c, P, T);
    for (const RatePair& r : e.rates) EXPECT_EQ(r, (RatePair{0.0, 0.0}));
    for (const RatePair& p : e.production) EXPECT_EQ(p, (RatePair{0.0, 0.0}));
}

TEST_F(RateTypes, SmallDifferenceCutAndActiveMask)
{
    add(IntSlots{});
    add(makeReaction({3}, {4, 4}, 2e12, 0, 30000, 0));
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    // Put reaction 0 at q / f = 5e-7: c3 = Kc c1 c2 (1 - 5e-7).
    c[2] = kc() * c[0] * c[1] * (1 - 5e-7);
    const auto cut = run(ws, c, P, T);
    EXPECT_EQ(cut.rates[0][0], 0.0);
    EXPECT_GT(cut.rates[0][1], 0.0);
    EXPECT_EQ(cut.production[0][0], 0.0);
    EXPECT_EQ(cut.production[1][1], 0.0);
    const auto exact = run(ws, c, P, T, 0, false, false, false);
    expectRel(5e-7 * exact.rates[0][1], exact.rates[0][0], 1e-6); // cancellation limits digits
    // At q / f = 2e-6 the cut does not apply.
    c[2] = kc() * c[0] * c[1] * (1 - 2e-6);
    EXPECT_NE(run(ws, c, P, T).rates[0][0], 0.0);

    // An inactive reaction keeps its rates row and adds nothing.
    const std::vector<std::uint8_t> active{0, 1};
    const auto e = run(ws, c, P, T, 0, false, false, true, active);
    EXPECT_EQ(e.rates[0], (RatePair{-9.0, -9.0}));
    EXPECT_EQ(e.production[0][0], 0.0);
    expectRel(2 * e.rates[1][0], e.production[3][0]);
}

TEST_F(RateTypes, HeatAndTemperatureDerivative)
{
    add(IntSlots{});
    add(makeReaction({3}, {4, 4}, 2e12, 0, 30000, 0));
    add(makeReaction({1, 4}, {5}, 1e12, 0, 1000, 1));
    add(makeReaction({5}, {1}, 1e3, 0, 0, -1)); // Reversible -1: left out of the heat sums
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    std::vector<double> cT = c;
    cT.push_back(T); // mode 1: T at index NS
    const auto plain = run(ws, cT, P, 0.0, 1, false, false, false);
    const auto heat = run(ws, cT, P, 0.0, 1, true, false, false);
    const auto dT = run(ws, cT, P, 0.0, 1, true, true, false);

    const double dH[3] = {toy.h(3, T) - toy.h(1, T) - toy.h(2, T), 2 * toy.h(4, T) - toy.h(3, T),
                          toy.h(5, T) - toy.h(1, T) - toy.h(4, T)};
    for (int j = 0; j < 3; ++j) expectRel(plain.rates[j][0] * dH[j] * T, heat.rates[j][0]);
    EXPECT_EQ(heat.rates[3][0], 0.0);
    EXPECT_GT(heat.rates[3][1], 0.0); // but its forward rate stands

    // dT/dt = -T sum_i h_i w_i / (Ctot sum_i x_i cp_i), the constant-pressure energy balance.
    double A = 0, B = 0;
    for (int i = 0; i < 5; ++i) {
        A -= plain.production[i][0] * toy.h(i + 1, T);
        B += c[i] / ctot() * cpOverR(toy.range(i + 1, T), T);
    }
    expectRel(T * A / (B * ctot()), plain.production[5][0]);
    for (int j = 0; j < 3; ++j) expectRel(-heat.rates[j][0] / (B * ctot()), dT.rates[j][0]);
    // Without the photo reaction's species change the shares would add up to dT/dt; with it,
    // they miss exactly its enthalpy term.
    double shares = 0;
    for (int j = 0; j < 4; ++j) shares += dT.rates[j][0];
    const double photoTerm = -plain.rates[3][0] * (toy.h(1, T) - toy.h(5, T)) * T / (B * ctot());
    expectRel(plain.production[5][0], shares + photoTerm, 1e-9);
}
