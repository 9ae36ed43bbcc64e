// Rate module against hand formulas. Expected values are evaluated here from the textbook
// forms (NASA 7-coefficient polynomials, Arrhenius, Lindemann, Troe, SRI) written out
// independently of the module; agreement is required to 1e-10 relative unless stated.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "postprocessor/ResultSet.h"
#include "postprocessor/ThermoModule.h"

using namespace zarvion;
using namespace zarvion::postprocessor;
using solverfile::ReactionInts;
using solverfile::ReactionReals;
using solverfile::ThermoRecord;

namespace {

constexpr double R1 = 1.987204259;   // cal/(mol K)
constexpr double R2 = 82.05736608;   // cm^3 atm/(mol K)
constexpr double Tol = 1e-10;

void expectRel(double expected, double actual, double tol = Tol)
{
    EXPECT_NEAR(actual, expected, tol * std::abs(expected) + 1e-300) << "expected " << expected;
}

// Two-range record: low range a, high range b = a with perturbed a1, a6 (so the branch shows).
ThermoRecord makeThermo(std::array<double, 7> low, std::array<double, 7> high, double tCommon,
                        double weight)
{
    ThermoRecord t{};
    for (int k = 0; k < 7; ++k) {
        t[1 + k] = high[k];
        t[8 + k] = low[k];
    }
    t[15] = weight;
    t[16] = 300;
    t[17] = 5000;
    t[18] = tCommon;
    return t;
}

// g/RT in the closed NASA form, a different algebraic route from h/RT - s/R.
double gOverRT(const std::array<double, 7>& a, double T)
{
    return a[0] * (1 - std::log(T)) - a[1] * T / 2 - a[2] * T * T / 6 - a[3] * T * T * T / 12 -
           a[4] * T * T * T * T / 20 + a[5] / T - a[6];
}
double hOverRT(const std::array<double, 7>& a, double T)
{
    return a[0] + a[1] * T / 2 + a[2] * T * T / 3 + a[3] * T * T * T / 4 +
           a[4] * T * T * T * T / 5 + a[5] / T;
}

struct Rx {
    ReactionInts ints{};
    ReactionReals reals{};
};

// reactants/products are 1-based species numbers.
Rx makeReaction(std::vector<int> reactants, std::vector<int> products, double A, double n, double E,
                int reversible = 1)
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
    return r;
}

// Five species with fully populated low ranges (all five polynomial terms) below 1000 K
// and distinct high ranges.
struct Toy {
    std::vector<std::array<double, 7>> low, high;
    std::vector<ThermoRecord> thermo;
    Toy()
    {
        low = {{3.1, 1.2e-3, -3.0e-7, 4.0e-11, -2.0e-15, -1200.0, 4.1},
               {2.5, 0.0, 0.0, 0.0, 0.0, 29000.0, 4.6},
               {3.5, 2.0e-3, -1.1e-6, 3.0e-10, -2.5e-14, -30000.0, 2.9},
               {3.9, -4.0e-4, 1.5e-6, -9.0e-10, 1.6e-13, 3600.0, 0.4},
               {3.3, 1.4e-3, -4.0e-7, 5.0e-11, -2.2e-15, -1000.0, 5.5}};
        for (auto a : low) {
            auto b = a;
            b[0] += 0.15;
            b[5] -= 210.0;
            high.push_back(b);
        }
        const double weights[] = {32.0, 1.0, 33.0, 17.0, 28.0};
        for (int i = 0; i < 5; ++i) thermo.push_back(makeThermo(low[i], high[i], 1000.0, weights[i]));
    }
    const std::array<double, 7>& range(int species, double T) const
    {
        return T > 1000.0 ? high[species - 1] : low[species - 1];
    }
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

TEST(EvaluateThermoPolynomial, BranchesAndForms)
{
    Toy toy;
    const auto& t = toy.thermo[2];
    for (double T : {300.0, 1000.0, 1000.0000001, 2500.0}) {
        const double powers[5] = {0, std::log(T), T * T, T * T * T, T * T * T * T};
        double h, cp, s;
        EvaluateThermoPolynomial(t.data(), T, t[18], powers, h, cp, s);
        // T == Tcommon belongs to the low range (slots 8-14).
        const auto& a = T > 1000.0 ? toy.high[2] : toy.low[2];
        expectRel(hOverRT(a, T), h);
        expectRel(a[0] + a[1] * T + a[2] * T * T + a[3] * T * T * T + a[4] * T * T * T * T, cp);
        expectRel(hOverRT(a, T) - gOverRT(a, T), s);
    }
    // At exactly Tcommon the low branch is used: its a1 differs from the high one by 0.15.
    const double T = 1000.0;
    const double powers[5] = {0, std::log(T), T * T, T * T * T, T * T * T * T};
    double h, cp, s;
    EvaluateThermoPolynomial(t.data(), T, T, powers, h, cp, s);
    expectRel(hOverRT(toy.low[2], T), h);
}

TEST(EvaluateThermoPolynomial, DerivativesAreConsistent)
{
    // cp/R = d(h/R)/dT and cp/(R T) = d(s/R)/dT, by central differences (step 1e-3 K, the
    // truncation error of a quartic is below 1e-9 relative here).
    Toy toy;
    const auto& t = toy.thermo[3];
    auto eval = [&](double T, double& h, double& cp, double& s) {
        const double powers[5] = {0, std::log(T), T * T, T * T * T, T * T * T * T};
        EvaluateThermoPolynomial(t.data(), T, t[18], powers, h, cp, s);
    };
    for (double T : {450.0, 1700.0}) {
        const double d = 1e-3;
        double hp, cpp, sp, hm, cpm, sm, h, cp, s;
        eval(T + d, hp, cpp, sp);
        eval(T - d, hm, cpm, sm);
        eval(T, h, cp, s);
        EXPECT_NEAR((hp * (T + d) - hm * (T - d)) / (2 * d), cp, 1e-7 * cp);
        EXPECT_NEAR((sp - sm) / (2 * d), cp / T, 1e-7 * cp / T);
    }
}

TEST(EvaluateThermoPolynomial, EmptyRangeGivesZeros)
{
    ThermoRecord t{};
    std::array<double, 7> low{3.0, 1e-3, 0, 0, 0, -100, 2};
    for (int k = 0; k < 7; ++k) t[8 + k] = low[k];  // high range left all zero
    t[18] = 1000;
    double h = 1, cp = 1, s = 1;
    const double T = 1500;
    const double powers[5] = {0, std::log(T), T * T, T * T * T, T * T * T * T};
    EvaluateThermoPolynomial(t.data(), T, 1000, powers, h, cp, s);
    EXPECT_EQ(h, 0.0);
    EXPECT_EQ(cp, 0.0);
    EXPECT_EQ(s, 0.0);
    // A range whose coefficients merely sum to zero counts as empty as well.
    ThermoRecord u{};
    u[8] = 1.0;
    u[13] = -1.0;
    u[18] = 1000;
    EvaluateThermoPolynomial(u.data(), 500, 1000, powers, h, cp, s);
    EXPECT_EQ(cp, 0.0);
}

TEST(ComputeTemperatureFunctions, KcFromGibbsEnergies)
{
    Toy toy;
    // 1 + 2 = 3 (dn = -1) and 3 = 4 + 4 (dn = +1, a species twice).
    std::vector<Rx> rx = {makeReaction({1, 2}, {3}, 1e13, 0.5, 1500),
                          makeReaction({3}, {4, 4}, 2e12, -0.7, 52000)};
    std::vector<ReactionInts> ints;
    std::vector<ReactionReals> reals;
    for (auto& r : rx) {
        ints.push_back(r.ints);
        reals.push_back(r.reals);
    }
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    for (double T : {700.0, 1000.0, 2200.0}) {
        ComputeTemperatureFunctions(T, ws);
        const double kc1 = std::exp(-(toy.g(3, T) - toy.g(1, T) - toy.g(2, T))) / std::pow(R2 * T, -1);
        const double kc2 = std::exp(-(2 * toy.g(4, T) - toy.g(3, T))) / std::pow(R2 * T, 1);
        expectRel(kc1, ws.equilibriumConstant()[0]);
        expectRel(kc2, ws.equilibriumConstant()[1]);
        expectRel(1e13 * std::pow(T, 0.5) * std::exp(-1500 / (R1 * T)), ws.kInfinity()[0]);
        expectRel(2e12 * std::pow(T, -0.7) * std::exp(-52000 / (R1 * T)), ws.kInfinity()[1]);
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
    const double dH = 2 * toy.h(4, T) - toy.h(3, T);  // in units of R T
    EXPECT_NEAR(slope, dH / T, 1e-7 * std::abs(dH / T));

    // The computed slots land in real slots 22-25.
    ComputeTemperatureFunctions(T, ws);
    ws.writeComputedSlots(reals);
    EXPECT_EQ(reals[1][22], ws.kInfinity()[1]);
    EXPECT_EQ(reals[1][23], ws.equilibriumConstant()[1]);
}

class RateTypes : public ::testing::Test {
protected:
    Toy toy;
    std::vector<ReactionInts> ints;
    std::vector<ReactionReals> reals;
    std::vector<double> c{2.0e-6, 3.0e-7, 4.0e-6, 1.5e-7, 5.0e-6};  // mol/cm^3
    double P = 1.3;                                              // atm
    double T = 1350;

    int add(const Rx& r)
    {
        ints.push_back(r.ints);
        reals.push_back(r.reals);
        return static_cast<int>(ints.size()) - 1;
    }
    double ctot() const { return P / (R2 * T); }
    double kc(const std::vector<int>& re, const std::vector<int>& pr) const
    {
        double dG = 0;
        for (int s : pr) dG += toy.g(s, T);
        for (int s : re) dG -= toy.g(s, T);
        return std::exp(-dG) / std::pow(R2 * T, double(pr.size()) - double(re.size()));
    }
    double prod(const std::vector<int>& sp) const
    {
        double p = 1;
        for (int s : sp) p *= c[s - 1];
        return p;
    }
};

TEST_F(RateTypes, EachReactionTypeMatchesHandFormula)
{
    const double k1 = 3.3e12 * std::pow(T, 0.2) * std::exp(-4200 / (R1 * T));
    const double k0 = 7.0e17 * std::pow(T, -1.1) * std::exp(-100 / (R1 * T));

    // 0: plain reversible 1 + 2 = 3 + ... (here 1 + 2 = 3)
    Rx plain = makeReaction({1, 2}, {3}, 3.3e12, 0.2, 4200);
    add(plain);
    // 1: third body with efficiencies (kind 2): species 5 at 2.5, species 4 at 0
    Rx tb = makeReaction({1, 2}, {3}, 3.3e12, 0.2, 4200);
    tb.ints[12] = 2;
    tb.ints[13] = 2;
    tb.ints[17] = 5;
    tb.ints[18] = 4;
    tb.reals[12] = 2.5;
    tb.reals[13] = 0.0;
    add(tb);
    // 2: Lindemann, M = total concentration
    Rx lind = makeReaction({1, 2}, {3}, 3.3e12, 0.2, 4200);
    lind.ints[12] = 1;
    lind.ints[14] = 1;
    lind.reals[4] = 7.0e17;
    lind.reals[5] = -1.1;
    lind.reals[6] = 100;
    add(lind);
    // 3: Troe with three parameters
    Rx troe3 = lind;
    troe3.ints[15] = 3;
    troe3.reals[7] = 0.62;
    troe3.reals[8] = 180;
    troe3.reals[9] = 1100;
    add(troe3);
    // 4: Troe with four parameters
    Rx troe4 = troe3;
    troe4.ints[15] = 1;
    troe4.reals[10] = 5000;
    add(troe4);
    // 5: SRI with five parameters
    Rx sri = lind;
    sri.ints[15] = 2;
    sri.reals[7] = 1.1;
    sri.reals[8] = 650;
    sri.reals[9] = 900;
    sri.reals[10] = 1.3;
    sri.reals[11] = -0.2;
    add(sri);
    // 6: explicit partner (+5) in place of M: kind 0, one partner, efficiency 1
    Rx partner = lind;
    partner.ints[12] = 0;
    partner.ints[13] = 1;
    partner.ints[17] = 5;
    partner.reals[12] = 1.0;
    add(partner);
    // 7: irreversible 3 => 4 + 4
    add(makeReaction({3}, {4, 4}, 2e12, 0, 30000, 0));

    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    auto e = run(ws, c, P, T, 0, false, false, false);

    const double Kc = kc({1, 2}, {3});
    auto check = [&](int j, double k) {
        const double f = k * prod({1, 2});
        const double r = k / Kc * prod({3});
        expectRel(f, e.rates[j][1]);
        expectRel(f - r, e.rates[j][0]);
    };
    check(0, k1);
    const double M = ctot() + (2.5 - 1) * c[4] + (0 - 1) * c[3];
    check(1, k1 * M);

    const double pr = k0 * ctot() / k1;
    check(2, k1 * pr / (1 + pr));

    auto troe = [&](double fcent) {
        const double L = std::log10(pr), Fc = std::log10(fcent);
        const double cc = -0.4 - 0.67 * Fc, nn = 0.75 - 1.27 * Fc;
        const double w = (L + cc) / (nn - 0.14 * (L + cc));
        return k1 * pr / (1 + pr) * std::pow(10.0, Fc / (1 + w * w));
    };
    const double fc3 = 0.38 * std::exp(-T / 180) + 0.62 * std::exp(-T / 1100);
    check(3, troe(fc3));
    check(4, troe(fc3 + std::exp(-5000 / T)));

    const double X = 1 / (1 + std::pow(std::log10(pr), 2));
    const double Fsri = std::pow(1.1 * std::exp(-650 / T) + std::exp(-T / 900), X) * 1.3 * std::pow(T, -0.2);
    check(5, k1 * pr / (1 + pr) * Fsri);

    const double prPartner = k0 * c[4] / k1;
    check(6, k1 * prPartner / (1 + prPartner));

    const double k7 = 2e12 * std::exp(-30000 / (R1 * T));
    expectRel(k7 * c[2], e.rates[7][1]);
    EXPECT_EQ(e.rates[7][0], e.rates[7][1]);  // no reverse part
    EXPECT_EQ(ws.equilibriumConstant()[7], 0.0);

    // Production: net and gross sums over slots, species 4 formed twice by reaction 7.
    double net1 = 0, net3 = 0, gross3 = 0;
    for (int j = 0; j < 7; ++j) {
        net1 -= e.rates[j][0];
        net3 += e.rates[j][0];
        if (e.rates[j][0] > 0) gross3 += e.rates[j][0];
    }
    net3 -= e.rates[7][0];
    expectRel(net1, e.production[0][0]);
    expectRel(net3, e.production[2][0]);
    expectRel(gross3, e.production[2][1]);
    expectRel(2 * e.rates[7][0], e.production[3][0]);
    expectRel(2 * e.rates[7][0], e.production[3][1]);
}

TEST_F(RateTypes, SriWithThreeParametersAndTroeGuard)
{
    Rx sri = makeReaction({1, 2}, {3}, 3.3e12, 0.2, 4200);
    sri.ints[12] = 1;
    sri.ints[14] = 1;
    sri.ints[15] = 2;
    sri.reals[4] = 7.0e17;
    sri.reals[7] = 0.5;
    sri.reals[8] = 300;
    sri.reals[9] = 700;
    add(sri);  // d = 0 and e = 0: neither factor applies
    Rx troe = sri;
    troe.ints[15] = 1;
    troe.reals[7] = 0.4;
    troe.reals[8] = 1e-30;  // T / T3 far above 500: clipped, exp(-500) stays finite
    troe.reals[9] = 1e-30;
    troe.reals[10] = 1e-30; // T2 / T tiny
    add(troe);
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    ComputeTemperatureFunctions(T, ws);
    expectRel(0.5 * std::exp(-300 / T) + std::exp(-T / 700), ws.falloffCentre()[0]);
    const double fcent = 0.6 * std::exp(-500.0) + 0.4 * std::exp(-500.0) + std::exp(-1e-30 / T);
    expectRel(std::log10(fcent), ws.falloffCentre()[1] + 0.0, 1e-12);
    auto e = run(ws, c, P, T);
    EXPECT_TRUE(std::isfinite(e.rates[1][0]));

    const double k1 = 3.3e12 * std::pow(T, 0.2) * std::exp(-4200 / (R1 * T));
    const double pr = 7.0e17 * ctot() / k1;
    const double F = std::pow(0.5 * std::exp(-300 / T) + std::exp(-T / 700), 1 / (1 + std::pow(std::log10(pr), 2)));
    expectRel(k1 * pr / (1 + pr) * F * prod({1, 2}), e.rates[0][1]);
}

TEST_F(RateTypes, ZeroThirdBodyStopsReaction)
{
    // Explicit partner 4 whose concentration is 0 (M = 0), and a kind-2 third body whose zero
    // efficiencies take more than the total concentration away (M < 0): rates are 0 and
    // production is untouched.
    Rx partner = makeReaction({1, 2}, {3}, 1e13, 0, 0);
    partner.ints[13] = 1;
    partner.ints[14] = 1;
    partner.ints[17] = 4;
    partner.reals[12] = 1;
    partner.reals[4] = 1e16;
    add(partner);
    Rx cancel = makeReaction({1, 2}, {3}, 1e13, 0, 0);
    cancel.ints[12] = 2;
    cancel.ints[13] = 5;
    for (int k = 0; k < 5; ++k) {
        cancel.ints[17 + k] = k + 1;
        cancel.reals[12 + k] = 0.0;
    }
    add(cancel);
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    c[3] = 0;
    P = 0.5 * (c[0] + c[1] + c[2] + c[4]) * R2 * T;  // Ctot is half the species sum
    auto e = run(ws, c, P, T);
    for (int j = 0; j < 2; ++j) {
        EXPECT_EQ(e.rates[j][0], 0.0);
        EXPECT_EQ(e.rates[j][1], 0.0);
    }
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(e.production[i][0], 0.0);
        EXPECT_EQ(e.production[i][1], 0.0);
    }
}

TEST_F(RateTypes, SmallDifferenceCutAndActiveMask)
{
    add(makeReaction({1, 2}, {3}, 3.3e12, 0.2, 4200));
    add(makeReaction({3}, {4, 4}, 2e12, 0, 30000, 0));
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    // Put reaction 0 at q / f = 5e-7: c3 = Kc c1 c2 (1 - 5e-7).
    c[2] = kc({1, 2}, {3}) * c[0] * c[1] * (1 - 5e-7);
    auto cut = run(ws, c, P, T);
    EXPECT_EQ(cut.rates[0][0], 0.0);
    EXPECT_GT(cut.rates[0][1], 0.0);
    EXPECT_EQ(cut.production[0][0], 0.0);
    EXPECT_EQ(cut.production[1][1], 0.0);
    auto exact = run(ws, c, P, T, 0, false, false, false);
    expectRel(5e-7 * exact.rates[0][1], exact.rates[0][0], 1e-6);  // cancellation limits digits
    // At q / f = 2e-6 the cut does not apply.
    c[2] = kc({1, 2}, {3}) * c[0] * c[1] * (1 - 2e-6);
    EXPECT_NE(run(ws, c, P, T).rates[0][0], 0.0);

    // An inactive reaction keeps its rates row and adds nothing.
    const std::vector<std::uint8_t> active{0, 1};
    auto e = run(ws, c, P, T, 0, false, false, true, active);
    EXPECT_EQ(e.rates[0][0], -9.0);
    EXPECT_EQ(e.rates[0][1], -9.0);
    EXPECT_EQ(e.production[0][0], 0.0);
    expectRel(2 * e.rates[1][0], e.production[3][0]);
}

TEST_F(RateTypes, HeatAndTemperatureDerivative)
{
    add(makeReaction({1, 2}, {3}, 3.3e12, 0.2, 4200));
    add(makeReaction({3}, {4, 4}, 2e12, 0, 30000, 0));
    add(makeReaction({1, 4}, {5}, 1e12, 0, 1000, 1));
    Rx photo = makeReaction({5}, {1}, 1e3, 0, 0, -1);
    add(photo);
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    std::vector<double> cT = c;
    cT.push_back(T);  // mode 1: T at index NS

    auto plain = run(ws, cT, P, 0.0, 1, false, false, false);
    auto heat = run(ws, cT, P, 0.0, 1, true, false, false);
    auto dT = run(ws, cT, P, 0.0, 1, true, true, false);

    const double dH[3] = {toy.h(3, T) - toy.h(1, T) - toy.h(2, T), 2 * toy.h(4, T) - toy.h(3, T),
                          toy.h(5, T) - toy.h(1, T) - toy.h(4, T)};
    for (int j = 0; j < 3; ++j) expectRel(plain.rates[j][0] * dH[j] * T, heat.rates[j][0]);
    EXPECT_EQ(heat.rates[3][0], 0.0);      // Reversible -1: left out of the heat sums
    EXPECT_GT(heat.rates[3][1], 0.0);      // but its forward rate stands

    // dT/dt = -T sum_i h_i w_i / (Ctot sum_i x_i cp_i), the constant-pressure energy balance.
    double A = 0, B = 0;
    for (int i = 0; i < 5; ++i) {
        A -= plain.production[i][0] * toy.h(i + 1, T);
        const auto& a = toy.range(i + 1, T);
        B += c[i] / ctot() * (a[0] + a[1] * T + a[2] * T * T + a[3] * T * T * T + a[4] * T * T * T * T);
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

TEST(RateWorkspace, BuiltFromResultSetMatchesRows)
{
    Toy toy;
    ResultSet rs;
    rs.thermo = toy.thermo;
    Rx r = makeReaction({1, 2}, {3}, 3.3e12, 0.2, 4200);
    rs.ReactionInts = {r.ints};
    rs.ReactionReals = {r.reals};
    rs.GasConstantEnergy = R1;
    rs.GasConstantConc = R2;
    RateWorkspace a(rs);
    RateWorkspace b(rs.thermo, rs.ReactionInts, rs.ReactionReals, R1, R2);
    ComputeTemperatureFunctions(1500, a);
    ComputeTemperatureFunctions(1500, b);
    EXPECT_EQ(a.speciesCount(), 5);
    EXPECT_EQ(a.equilibriumConstant()[0], b.equilibriumConstant()[0]);
    EXPECT_EQ(a.molecularWeights()[4], 28.0);
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
    std::vector<std::array<double, 3>> params;
    for (double n : {-2.5, 0.0, 0.7, 3.1})
        for (double E : {-30000.0, 0.0, 1234.5, 45000.0, 1.2e5, 1.3e6, 2.0e6}) params.push_back({1e13, n, E});
    for (const auto& p : params) {
        Rx r = makeReaction({1, 2}, {3}, p[0], p[1], p[2], 0);
        ints.push_back(r.ints);
        reals.push_back(r.reals);
    }
    RateWorkspace ws(toy.thermo, ints, reals, R1, R2);
    for (double T : {650.0, 1000.0, 1777.7}) {
        ComputeTemperatureFunctions(T, ws);
        for (std::size_t j = 0; j < params.size(); ++j) {
            const double expected = params[j][0] * std::pow(T, params[j][1]) * std::exp(-params[j][2] / (R1 * T));
            if (expected == 0.0) {
                EXPECT_EQ(ws.kInfinity()[j], 0.0);
            } else {
                const double x = std::abs(params[j][1] * std::log(T)) + std::abs(params[j][2] / (R1 * T));
                expectRel(expected, ws.kInfinity()[j], 4e-16 * (x + 10));
            }
        }
    }
}
