// The views of a loaded result set against hand values on the fixture of four species:
// species and mean-parameter curves, reaction-rate curves, chart filters and numeric tables.

#include "PostprocessorFixture.h"

#include "postprocessor/DataViews.h"
#include "postprocessor/MeanParameters.h"
#include "postprocessor/PlotData.h"
#include "postprocessor/ReactionRateViews.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zarvion::postprocessor {
namespace {

using namespace testing;

const double Rgd = Codata().gasConstantDensity(); // 82.057366 cm^3 atm/(mol K)
const double Ctot = 1.0 / (Rgd * 1000.0);          // P / (R T) at 1 atm, 1000 K [mol/cm^3]
const double Rho = Ctot / 0.04;                    // Ctot / S [g/cm^3]

TEST(MoleFract, FourUnitsAgainstHandValues)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    const double yA[4] = {0.3, 0.2, 0.1, 0.05};
    // x = y / (W S) = 1.25 y; [A] = y rho / W. Tolerance: the rows carry 10 digits.
    const struct {
        int kind;
        const char* label;
        double factor;
    } units[] = {{KindMassFraction, "A, Mass Fraction", 1.0},
                 {KindMolesPerGram, "{A} (mol/g)", 1.0 / 20.0},
                 {KindConcentration, "[A], (mol/cm^3)", Rho / 20.0},
                 {KindMoleFraction, "A, Mole Fraction", 1.25}};
    for (const auto& u : units) {
        const CurveData d = MoleFract(st, u.kind, 3, "A");
        EXPECT_EQ(d.label, u.label);
        ASSERT_EQ(d.values.size(), 4u);
        for (int k = 0; k < 4; ++k)
            EXPECT_NEAR(d.values[k], u.factor * yA[k], 1e-9 * u.factor * yA[k]) << u.label;
    }
    st.ConcentrationUnit = 1;
    st.ScaleY = 1000.0;
    const CurveData perMolecule = MoleFract(st, KindConcentration, 3, "A");
    const double expected = 0.3 * Rho / 20.0 * 6.02214076E+23; // [A] N_A [1/cm^3]
    EXPECT_NEAR(perMolecule.values[0], expected, 1e-9 * expected);
    EXPECT_EQ(perMolecule.label, "[A], (1/cm^3) x 1.00E+03");
    EXPECT_EQ(MoleFract(st, KindMoleFraction, 3, "A", {true, false}).label,
              "Log10 A, Mole Fraction x 1.00E+03");
}

TEST(MoleFract, TextModeZeroesValuesUnderTheThreshold)
{
    FixtureOptions o;
    o.absoluteTolerance = 8.0; // zero threshold 0.08: yA = 0.05 of the last row counts as zero
    PostprocessorState st(MakeResults(FourRows(), o), Codata());
    const CurveData text = MoleFract(st, KindMoleFraction, 3, "A", {false, true});
    EXPECT_NEAR(text.values[2], 0.125, 1e-9);
    EXPECT_EQ(text.values[3], 0.0);
    EXPECT_EQ(MoleFract(st, KindMoleFraction, 4, "B", {false, true}).values[0], 0.0);
    // Without the text option the value stays; the chart filter drops it later.
    EXPECT_NEAR(MoleFract(st, KindMoleFraction, 3, "A").values[3], 0.0625, 1e-9);
}

TEST(MeanParameters, SixItemsAgainstHandValues)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    const double R = 8.314462618;
    // Sum of x_i h_i/RT with h/RT = 3.5 + a6/T: 0.375*4.5 + 0.625*3.5 = 3.875 in row 1, then
    // 3.125, 2.375, 2.0 (hand calculation); H = sum x T R / 1000 [kJ/mol]. M = 1 / S.
    const double hSum[4] = {3.875, 3.125, 2.375, 2.0};
    const struct {
        int item;
        const char* label;
        double value, tolerance;
    } items[] = {{1, "T (K)", 1000.0, 1e-12}, {2, "Ctot (mol/cm^3)", Ctot, 1e-15},
                 {3, "", Rho, 1e-15},           {4, "", 25.0, 1e-8},
                 {5, "H (kJ/mol)", R, 1e-7},    {6, "Cp (J/K mol)", 3.5 * R, 1e-7}};
    for (const auto& i : items) {
        SCOPED_TRACE(i.item);
        const CurveData d = MEANVALF(st, i.item, false);
        if (*i.label) {
            EXPECT_EQ(d.label, i.label);
        }
        ASSERT_EQ(d.values.size(), 4u);
        for (int k = 0; k < 4; ++k) // H: R times the hand sums
            EXPECT_NEAR(d.values[k], i.value * (i.item == 5 ? hSum[k] : 1.0), i.tolerance);
    }
    EXPECT_EQ(MEANVALF(st, 3, false).name, "Density ");

    st.EnergyUnit = false;
    st.ConcentrationUnit = 1;
    EXPECT_NEAR(MEANVALF(st, 5, false).values[0], 3.875 * 1.987204259, 1e-7);
    EXPECT_NEAR(MEANVALF(st, 6, false).values[0], 3.5 * 1.987204259, 1e-7);
    EXPECT_EQ(MEANVALF(st, 6, true).label, "Log10 Cp (cal/K mol)");
    EXPECT_EQ(MEANVALF(st, 2, false).label, "Ctot (1/cm^3)");
    EXPECT_NEAR(MEANVALF(st, 2, false).values[0], 6.02214076E+23 * Ctot, 1e8);
    EXPECT_EQ(HabdCpUnits(true), (std::array<std::string, 2>{"kJ/mol", "J/K mol"}));
}

TEST(MeanParameters, ColdAndEmptyRows)
{
    // Row 2 below 100 K: H and Cp are 0. Row 3 has no species at all: S = 0, M, H, Cp are
    // passed over, while T and Ctot need no species.
    const std::vector<double> y{0.3, 0.0, 0.7, 0.0};
    const MeanTable t = MeanParameterTable(PostprocessorState(
        MakeResults({{0, 1000, y}, {1, 90, y}, {2, 1000, {0, 0, 0, 0}}, {3, 1000, y}}),
        Codata()));
    ASSERT_EQ(t.rows.size(), 4u);
    EXPECT_EQ(t.rows[1][4], 0.0);
    EXPECT_EQ(t.rows[1][5], 0.0);
    EXPECT_NEAR(t.rows[1][3], 25.0, 1e-8);
    for (int item : {3, 4, 5}) EXPECT_TRUE(std::isnan(t.rows[2][item])) << item;
    EXPECT_DOUBLE_EQ(t.rows[2][0], 1000.0);
    EXPECT_NEAR(t.rows[2][1], Ctot, 1e-15);
}

TEST(MeanParameters, EvaluateSpeciesThermoBranchesAndGuards)
{
    double c[15] = {};
    c[1] = 3.0;  // high range: cp/R = 3
    c[8] = 4.0;  // low range: cp/R = 4
    c[14] = 2.0; // low a7
    const SpeciesThermo at = EvaluateSpeciesThermo(c, 1000.0, 1000.0, "X", 100.0);
    EXPECT_TRUE(at.ok);
    EXPECT_DOUBLE_EQ(at.cpOverR, 4.0); // T equal to the common temperature: low range
    EXPECT_NEAR(at.sOverR, 4.0 * std::log(1000.0) + 2.0, 1e-12);
    EXPECT_DOUBLE_EQ(EvaluateSpeciesThermo(c, 1001.0, 1000.0, "X", 100.0).cpOverR, 3.0);
    const SpeciesThermo cold = EvaluateSpeciesThermo(c, 99.9, 1000.0, "X", 100.0);
    EXPECT_FALSE(cold.ok);
    EXPECT_EQ(cold.hOverRT, 0.0);
    EXPECT_EQ(cold.cpOverR, 0.0);
    EXPECT_TRUE(cold.error.empty());
    c[1] = 0.0; // no high range: zero above the common temperature, not an error
    const SpeciesThermo none = EvaluateSpeciesThermo(c, 1500.0, 1000.0, "X", 100.0);
    EXPECT_FALSE(none.ok);
    EXPECT_EQ(none.cpOverR, 0.0);
    EXPECT_TRUE(none.error.empty());
    c[12] = 1e300; // a5 of the low range overflows
    EXPECT_EQ(EvaluateSpeciesThermo(c, 500.0, 1000.0, "HO2", 100.0).error.text,
              "Mod1#006. Calculation error for thermodynamic functions of the species 'HO2'");
}

TEST(PloConcentration, FiltersScalesAndLogs)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    st.ScaleX = 1000.0; // ms
    st.ScaleY = 2.0;
    // B is 0 in row 1: the chart gets no point there.
    PlotCurve c = PloConcentration(st, MoleFract(st, KindMassFraction, 4, "B"), false);
    ASSERT_TRUE(c.ok());
    EXPECT_EQ(c.windowTitle, "Temporary Chart ");
    EXPECT_EQ(c.x[0], NullValue);
    EXPECT_EQ(c.y[0], NullValue);
    EXPECT_DOUBLE_EQ(c.x[1], 500.0);
    EXPECT_NEAR(c.y[1], 0.2, 1e-12);

    st.LogX = true; // log10 of 0 ms drops the first point, log10(500) = 2.69897
    c = PloConcentration(st, MoleFract(st, KindMassFraction, 3, "A"), true);
    EXPECT_EQ(c.x[0], NullValue);
    EXPECT_NEAR(c.x[1], std::log10(500.0), 1e-12);
    EXPECT_NEAR(c.y[1], std::log10(0.4), 1e-12);
}

TEST(PloConcentration, NothingToPlotMessages)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    PlotCurve c = PloConcentration(st, MoleFract(st, KindMoleFraction, 6, "Z"), false);
    EXPECT_FALSE(c.ok());
    EXPECT_EQ(c.message.text,
              "You are attempting to plot the function 'Z' where all values are zero.");
    EXPECT_EQ(c.message.style, shell::StyleWarning);
    EXPECT_TRUE(c.x.empty());
    c = PloConcentration(st, MoleFract(st, KindMoleFraction, 6, "Z"), true);
    EXPECT_EQ(c.message.text, "You are attempting to plot the function 'Z' where all values are "
                              "zero or logarithms of negative numbers. ");
    // Points that exist but are all 0 are refused as well.
    CurveData zeros;
    zeros.name = "flat";
    zeros.values.assign(4, 0.0);
    EXPECT_EQ(PloConcentration(st, zeros, false).message.text,
              "You are attempting to plot the function 'flat' where all values are zero.");
    zeros.values[2] = -1.0; // a negative value is plotted on a linear axis, not on a log one
    EXPECT_TRUE(PloConcentration(st, zeros, false).ok());
    EXPECT_FALSE(PloConcentration(st, zeros, true).ok());
}

// The golden files are written by hand from the layout: slot "@@@@@@", time through
// "0.00000000E+00" in 18, values in 13 (names of 12 symbols) or 15 (mean parameters).
TEST(DataViews, SpeciesAndMeanParameterLayoutsByteForByte)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    const DataViewContext ctx{"fixture.txt", GoldenDate(), "\r\n"};
    const DataView v = SpeciesData(st, {1, 2, 4}, 0, "Mole fraction", 12, ctx);
    ASSERT_TRUE(v.ok());
    EXPECT_EQ(v.title, "Species");
    EXPECT_EQ(v.text, ReadGolden("mole_fraction_view.txt"));
    const DataView m = MEANVALFTAB(st, ctx);
    ASSERT_TRUE(m.ok());
    EXPECT_EQ(m.title, "Mean Parameters");
    EXPECT_EQ(m.text, ReadGolden("mean_parameters_view.txt"));
}

TEST(DataViews, SixteenSymbolsThinningAndUnits)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    st.ShowEvery = 2; // slots: rows 1 and 3, then the end row 4
    st.UsedData();
    const DataViewContext ctx{"fixture.txt", GoldenDate(), "\n"};
    const DataView v = SpeciesData(st, {3}, 1, "Mass fraction", 16, ctx);
    const std::string expectedTail = "    No          Time sec                N\n"
                                     "     1    0.00000000E+00        7.000E-01\n"
                                     "     2    1.00000000E+00        7.000E-01\n"
                                     "     3    1.50000000E+00        7.000E-01\n";
    ASSERT_GE(v.text.size(), expectedTail.size());
    EXPECT_EQ(v.text.substr(v.text.size() - expectedTail.size()), expectedTail);

    st.ConcentrationUnit = 1;
    st.EnergyUnit = false;
    const DataView m = MEANVALFTAB(st, ctx);
    EXPECT_NE(m.text.find("     C (1/cm^3)   H (kcal/mol) Cp (cal/K mol)\n"), std::string::npos)
        << m.text;
}

TEST(DataViews, SelectionLimitOfTenAndValueFormat)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    EXPECT_EQ(CheckSpeciesSelection(0).text, "In the table there are no selected rows.");
    EXPECT_TRUE(CheckSpeciesSelection(10).empty());
    const shell::Message m = CheckSpeciesSelection(11);
    EXPECT_EQ(m.text, "You can view the numeric data for no more than 10 species; \n"
                      "you are attempting to view 11.");
    EXPECT_EQ(m.style, shell::StyleWarning);
    const DataView v = SpeciesData(st, std::vector<int>(11, 1), 0, "Mole fraction", 12,
                                   {"fixture.txt", GoldenDate(), "\r\n"});
    EXPECT_FALSE(v.ok());
    EXPECT_TRUE(v.text.empty());

    EXPECT_EQ(AllData(0.0, 13), "            0");
    EXPECT_EQ(AllData(1.23456e-7, 13), "    1.235E-07");
    EXPECT_EQ(AllData(-2.5, 17), "       -2.500E+00");
}

const double Kc2 = std::exp(6.0); // exp(-(h_B - h_A)/RT) at 1000 K, s/R cancels, dn = 0

// Concentrations of TwoStates(0.2, 0.1) by hand, c = y rho / W [mol/cm^3].
const double CA = 0.2 * Rho / 20.0, CB = 0.1 * Rho / 20.0, CN = 0.7 * Rho / 28.0;

std::vector<FixtureState> TwoStates(double yA, double yB)
{
    const std::vector<double> y{yA, yB, 0.7, 0.0};
    return {{0.0, 1000.0, y}, {1.0, 1000.0, y}, {2.0, 1000.0, y}};
}

TEST(PlotReac, SevenFormsAgainstHandRates)
{
    PostprocessorState st(MakeResults(TwoStates(0.2, 0.1)), Codata());
    const double q1 = 2.0 * CA;            // R1 A=>B, k = 2 /s
    const double f2 = 1e5 * CA * CN;       // R2 forward
    const double r2 = 1e5 / Kc2 * CB * CN; // R2 reverse
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
                 {RateSpeciesShare, 1, 2, "B", q1 / Rho},
                 {RateSpeciesShare, 1, 1, "A", -q1 / Rho},
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
    EXPECT_EQ(PlotReac(st, RateTemperatureShare, 1, "", 0, "", false).label,
              "R1,to T Deriv (K/sec)");
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
    const CurveData lowRate = PlotReac(low, RateForward, 1, "A=>B", 0, "", false);
    EXPECT_EQ(lowRate.values[0], 0.0);
    const PlotCurve none = PloConcentration(low, lowRate, false);
    EXPECT_EQ(none.message.text,
              "You are attempting to plot the function 'A=>B' where all values are zero.");
}

TEST(DerivativeCurve, SpeciesAndTemperature)
{
    PostprocessorState st(MakeResults(TwoStates(0.2, 0.1)), Codata());
    const double q1 = 2.0 * CA;
    const double q2 = 1e5 * CA * CN - 1e5 / Kc2 * CB * CN;
    // d{A}/dt = -(q1 + q2) / rho; N is formed and consumed by R2 and R3 alike: 0.
    EXPECT_NEAR(DerivativeCurve(st, 1, "A", false).values[0], -(q1 + q2) / Rho,
                1e-9 * (q1 + q2) / Rho);
    EXPECT_EQ(DerivativeCurve(st, 3, "N", false).values[0], 0.0);
    // No temperature derivative with constant temperature.
    EXPECT_TRUE(DerivativeCurve(st, 5, "T", false).values.empty());

    // Energy equation with R1 alone: dT/dt = T sum(-w_i h_i/RT) / (Ctot sum x_i cp_i/R)
    // = q1 (h_A - h_B)/R / (3.5 Ctot) = 6000 q1 / (3.5 Ctot), Ctot = P / (R T).
    FixtureOptions o;
    o.temperatureMode = 1;
    o.onlyFirstReaction = true;
    PostprocessorState hot(MakeResults(TwoStates(0.2, 0.1), o), Codata());
    const double dTdt = 6000.0 * q1 / (3.5 * Ctot);
    EXPECT_NEAR(DerivativeCurve(hot, 5, "T", false).values[0], dTdt, 1e-9 * dTdt);
    EXPECT_NEAR(PlotReac(hot, RateTemperatureShare, 1, "", 0, "", false).values[0], dTdt,
                1e-9 * dTdt);
}

} // namespace
} // namespace zarvion::postprocessor
