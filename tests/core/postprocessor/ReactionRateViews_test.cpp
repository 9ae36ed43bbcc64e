#include "PostprocessorFixture.h"

#include "postprocessor/PlotData.h"
#include "postprocessor/ReactionRateViews.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zarvion::postprocessor {
namespace {

using namespace testing;

const double Rgd = Codata().gasConstantDensity();
const double Kc2 = std::exp(6.0); // exp(-(h_B - h_A)/RT) at 1000 K, s/R cancels, dn = 0

struct Conc {
    double rho, a, b, n;
};

//! Concentrations of the fixture state (1000 K, 1 atm, S = 0.04) by hand [mol/cm^3].
Conc HandConc(double yA, double yB)
{
    const double rho = 1.0 / (Rgd * 1000.0) / 0.04;
    return {rho, yA * rho / 20.0, yB * rho / 20.0, 0.7 * rho / 28.0};
}

std::vector<FixtureState> TwoStates(double yA, double yB)
{
    const std::vector<double> y{yA, yB, 0.7, 0.0};
    return {{0.0, 1000.0, y}, {1.0, 1000.0, y}, {2.0, 1000.0, y}};
}

TEST(PlotReac, SevenFormsAgainstHandRates)
{
    PostprocessorState st(MakeResults(TwoStates(0.2, 0.1)), Codata());
    const Conc c = HandConc(0.2, 0.1);
    const double q1 = 2.0 * c.a;             // R1 A=>B, k = 2 /s
    const double f2 = 1e5 * c.a * c.n;       // R2 forward
    const double r2 = 1e5 / Kc2 * c.b * c.n; // R2 reverse
    // Heat: h_B/RT - h_A/RT = (-5000 - 1000) / 1000 = -6, so the heat term is -6000 q [K mol/
    // (cm^3 s)]; -term x R / 1000 is 6 q R kJ/(cm^3 s) (exothermic, positive).
    // Species shares: nu q / rho [mol/(g s)]; N stands on both sides of R3: nu = 0.
    const struct {
        int kind, reaction, species;
        const char* name;
        double expected;
    } cases[] = {{RateForward, 1, 0, "", q1},  {RateReverse, 1, 0, "", 0.0}, // R1 irreversible
                 {RateNet, 1, 0, "", q1},      {RateForward, 2, 0, "", f2},
                 {RateReverse, 2, 0, "", -r2}, {RateNet, 2, 0, "", f2 - r2},
                 {RateHeatKJ, 1, 0, "", 6.0 * q1 * 8.314462618},
                 {RateHeatKcal, 1, 0, "", 6.0 * q1 * 1.987204259},
                 {RateSpeciesShare, 1, 2, "B", q1 / c.rho},
                 {RateSpeciesShare, 1, 1, "A", -q1 / c.rho},
                 {RateSpeciesShare, 3, 3, "N", 0.0}};
    for (const auto& k : cases) {
        SCOPED_TRACE(::testing::Message() << "kind " << k.kind << ", R" << k.reaction);
        const CurveData d = PlotReac(st, k.kind, k.reaction, "", k.species, k.name, false);
        ASSERT_EQ(d.values.size(), 3u);
        for (double v : d.values) EXPECT_NEAR(v, k.expected, 1e-9 * std::fabs(k.expected));
    }
    st.ConcentrationUnit = 1;
    const double perMolecule = q1 * 6.02214076E+23;
    EXPECT_NEAR(PlotReac(st, RateForward, 1, "", 0, "", false).values[0], perMolecule,
                1e-9 * perMolecule);
    // R3 changes no species, so there is no heat, but it runs forward.
    EXPECT_EQ(PlotReac(st, RateHeatKJ, 3, "", 0, "", false).values[0], 0.0);
    EXPECT_GT(PlotReac(st, RateForward, 3, "", 0, "", false).values[0], 0.0);
}

TEST(PlotReac, LabelsAndScale)
{
    PostprocessorState st(MakeResults(TwoStates(0.2, 0.1)), Codata());
    EXPECT_EQ(PlotReac(st, RateForward, 1, "", 0, "", false).label, "R1, Forward (mol/cm^3 sec)");
    EXPECT_EQ(PlotReac(st, RateNet, 2, "", 0, "", true).label, " Log10(R2, Net (mol/cm^3 sec))");
    EXPECT_EQ(PlotReac(st, RateHeatKJ, 1, "", 0, "", false).label, "R1, Heat  (kJ/cm^3 sec)");
    EXPECT_EQ(PlotReac(st, RateHeatKcal, 1, "", 0, "", false).label, "R1, Heat  (kcal/cm^3 sec)");
    EXPECT_EQ(PlotReac(st, RateTemperatureShare, 1, "", 0, "", false).label, "R1,to T Deriv (K/sec)");
    st.ScaleY = -3.0;
    EXPECT_EQ(PlotReac(st, RateReverse, 1, "", 0, "", false).label, "R1, Reverse (mol/cm^3 sec)");
    EXPECT_EQ(st.ScaleY, -3.0);
    EXPECT_EQ(PlotReac(st, RateSpeciesShare, 1, "", 2, "B", false).label,
              "R1,to {B} Deriv (mol/g sec)");
    EXPECT_EQ(st.ScaleY, 3.0); // the species form takes the magnitude of the scale
    st.ConcentrationUnit = 1;
    EXPECT_EQ(PlotReac(st, RateNet, 1, "", 0, "", false).label, "R1, Net (1/cm^3 sec)");
    EXPECT_EQ(DerivativeCurve(st, 1, "A", false).label, "d{A}/dt (mol/g sec)");
}

TEST(PlotReac, PartialEquilibriumAndZeroThreshold)
{
    // c_B / c_A = Kc: R2 stands in equilibrium, |q| / f far below 1E-6. Net is exactly 0,
    // and so is the species share; the reverse form shows -f.
    const double yA = 0.3 / (1.0 + Kc2);
    PostprocessorState st(MakeResults(TwoStates(yA, 0.3 - yA)), Codata());
    const CurveData f = PlotReac(st, RateForward, 2, "", 0, "", false);
    EXPECT_GT(f.values[0], 0.0);
    EXPECT_EQ(PlotReac(st, RateNet, 2, "", 0, "", false).values[0], 0.0);
    EXPECT_EQ(PlotReac(st, RateSpeciesShare, 2, "", 1, "A", false).values[0], 0.0);
    EXPECT_NEAR(PlotReac(st, RateReverse, 2, "", 0, "", false).values[0], -f.values[0],
                1e-12 * f.values[0]);
    // A reactant at or below the zero threshold (1E-14) enters as 0: no rate at all.
    PostprocessorState low(MakeResults(TwoStates(1e-15, 0.3)), Codata());
    EXPECT_EQ(PlotReac(low, RateForward, 1, "", 0, "", false).values[0], 0.0);
    const PlotCurve none = PloConcentration(low, PlotReac(low, RateForward, 1, "A=>B", 0, "", false), false);
    EXPECT_EQ(none.message.text,
              "You are attempting to plot the function 'A=>B' where all values are zero.");
}

TEST(DerivativeCurve, SpeciesAndTemperature)
{
    PostprocessorState st(MakeResults(TwoStates(0.2, 0.1)), Codata());
    const Conc c = HandConc(0.2, 0.1);
    const double q1 = 2.0 * c.a;
    const double q2 = 1e5 * c.a * c.n - 1e5 / Kc2 * c.b * c.n;
    // d{A}/dt = -(q1 + q2) / rho; N is formed and consumed by R2 and R3 alike: 0.
    EXPECT_NEAR(DerivativeCurve(st, 1, "A", false).values[0], -(q1 + q2) / c.rho,
                1e-9 * (q1 + q2) / c.rho);
    EXPECT_EQ(DerivativeCurve(st, 3, "N", false).values[0], 0.0);
    // No temperature derivative with constant temperature.
    EXPECT_TRUE(DerivativeCurve(st, 5, "T", false).values.empty());

    // Energy equation with R1 alone: dT/dt = T sum(-w_i h_i/RT) / (Ctot sum x_i cp_i/R)
    // = q1 (h_A - h_B)/R / (3.5 Ctot) = 6000 q1 / (3.5 Ctot), Ctot = P / (R T).
    FixtureOptions o;
    o.temperatureMode = 1;
    o.onlyFirstReaction = true;
    PostprocessorState hot(MakeResults(TwoStates(0.2, 0.1), o), Codata());
    const double ctot = 1.0 / (Rgd * 1000.0);
    const double dTdt = 6000.0 * q1 / (3.5 * ctot);
    EXPECT_NEAR(DerivativeCurve(hot, 5, "T", false).values[0], dTdt, 1e-9 * dTdt);
    EXPECT_NEAR(PlotReac(hot, RateTemperatureShare, 1, "", 0, "", false).values[0], dTdt,
                1e-9 * dTdt);
}

} // namespace
} // namespace zarvion::postprocessor
