#include "PostprocessorFixture.h"

#include "postprocessor/MeanParameters.h"
#include "postprocessor/PlotData.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zarvion::postprocessor {
namespace {

using testing::Codata;
using testing::FixtureState;
using testing::FourRows;
using testing::MakeResults;

const double Rgd = Codata().gasConstantDensity(); // 82.057366 cm^3 atm/(mol K)

TEST(MoleFract, FourUnitsAgainstHandValues)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    const double rho = 1.0 / (Rgd * 1000.0) / 0.04; // P / (R T) / S [g/cm^3]
    const double yA[4] = {0.3, 0.2, 0.1, 0.05};

    const CurveData mass = MoleFract(st, KindMassFraction, 3, "A");
    const CurveData molg = MoleFract(st, KindMolesPerGram, 3, "A");
    const CurveData conc = MoleFract(st, KindConcentration, 3, "A");
    const CurveData mole = MoleFract(st, KindMoleFraction, 3, "A");
    ASSERT_EQ(mole.values.size(), 4u);
    for (int k = 0; k < 4; ++k) {
        // Tolerance: the rows carry 10 significant digits.
        EXPECT_NEAR(mass.values[k], yA[k], 1e-12);
        EXPECT_NEAR(molg.values[k], yA[k] / 20.0, 1e-12);
        EXPECT_NEAR(conc.values[k], yA[k] * rho / 20.0, 1e-9 * yA[k] * rho / 20.0);
        EXPECT_NEAR(mole.values[k], yA[k] * 1.25, 1e-9);
    }
    EXPECT_EQ(mass.label, "A, Mass Fraction");
    EXPECT_EQ(molg.label, "{A} (mol/g)");
    EXPECT_EQ(conc.label, "[A], (mol/cm^3)");
    EXPECT_EQ(mole.label, "A, Mole Fraction");

    st.ConcentrationUnit = 1;
    st.ScaleY = 1000.0;
    const CurveData perMolecule = MoleFract(st, KindConcentration, 3, "A");
    EXPECT_NEAR(perMolecule.values[0], 0.3 * rho / 20.0 * 6.02214076E+23, 1e-9 * perMolecule.values[0]);
    EXPECT_EQ(perMolecule.label, "[A], (1/cm^3) x 1.00E+03");
    EXPECT_EQ(MoleFract(st, KindMoleFraction, 3, "A", {true, false}).label,
              "Log10 A, Mole Fraction x 1.00E+03");
}

TEST(MoleFract, TextModeZeroesValuesUnderTheThreshold)
{
    testing::FixtureOptions o;
    o.absoluteTolerance = 8.0; // zero threshold 0.08: yA = 0.05 of the last row counts as zero
    PostprocessorState st(MakeResults(FourRows(), o), Codata());
    const CurveData text = MoleFract(st, KindMoleFraction, 3, "A", {false, true});
    EXPECT_NEAR(text.values[2], 0.125, 1e-9);
    EXPECT_EQ(text.values[3], 0.0);
    const CurveData b = MoleFract(st, KindMoleFraction, 4, "B", {false, true});
    EXPECT_EQ(b.values[0], 0.0);
    // Without the text option the value stays; the chart filter drops it later.
    EXPECT_NEAR(MoleFract(st, KindMoleFraction, 3, "A").values[3], 0.0625, 1e-9);
}

TEST(MeanParameters, SixItemsAgainstHandValues)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    const double R = 8.314462618;
    // Sum of x_i h_i/RT with h/RT = 3.5 + a6/T: 0.375*4.5 + 0.625*3.5 = 3.875 in row 1, then
    // 3.125, 2.375, 2.0 (hand calculation); H = sum x T R / 1000 [kJ/mol].
    const double hSum[4] = {3.875, 3.125, 2.375, 2.0};
    const CurveData T = MEANVALF(st, 1, false);
    const CurveData C = MEANVALF(st, 2, false);
    const CurveData Ro = MEANVALF(st, 3, false);
    const CurveData M = MEANVALF(st, 4, false);
    const CurveData H = MEANVALF(st, 5, false);
    const CurveData Cp = MEANVALF(st, 6, false);
    for (int k = 0; k < 4; ++k) {
        EXPECT_DOUBLE_EQ(T.values[k], 1000.0);
        EXPECT_NEAR(C.values[k], 1.0 / (Rgd * 1000.0), 1e-15);
        EXPECT_NEAR(Ro.values[k], 1.0 / (Rgd * 1000.0) / 0.04, 1e-15);
        EXPECT_NEAR(M.values[k], 25.0, 1e-8);
        EXPECT_NEAR(H.values[k], hSum[k] * R, 1e-7);
        EXPECT_NEAR(Cp.values[k], 3.5 * R, 1e-7);
    }
    EXPECT_EQ(T.label, "T (K)");
    EXPECT_EQ(C.label, "Ctot (mol/cm^3)");
    EXPECT_EQ(Ro.name, "Density ");
    EXPECT_EQ(H.label, "H (kJ/mol)");
    EXPECT_EQ(Cp.label, "Cp (J/K mol)");

    st.EnergyUnit = false;
    st.ConcentrationUnit = 1;
    EXPECT_NEAR(MEANVALF(st, 5, false).values[0], 3.875 * 1.987204259, 1e-7);
    EXPECT_NEAR(MEANVALF(st, 6, false).values[0], 3.5 * 1.987204259, 1e-7);
    EXPECT_EQ(MEANVALF(st, 6, true).label, "Log10 Cp (cal/K mol)");
    EXPECT_EQ(MEANVALF(st, 2, false).label, "Ctot (1/cm^3)");
    EXPECT_NEAR(MEANVALF(st, 2, false).values[0], 6.02214076E+23 / (Rgd * 1000.0), 1e8);
    EXPECT_EQ(HabdCpUnits(true), (std::array<std::string, 2>{"kJ/mol", "J/K mol"}));
}

TEST(MeanParameters, ColdAndEmptyRows)
{
    // Row 2 below 100 K: H and Cp are 0. Row 3 has no species at all: S = 0, M, H, Cp are
    // passed over, while T and Ctot need no species.
    std::vector<FixtureState> s{{0.0, 1000.0, {0.3, 0.0, 0.7, 0.0}},
                                {1.0, 90.0, {0.3, 0.0, 0.7, 0.0}},
                                {2.0, 1000.0, {0.0, 0.0, 0.0, 0.0}},
                                {3.0, 1000.0, {0.3, 0.0, 0.7, 0.0}}};
    PostprocessorState st(MakeResults(s), Codata());
    const MeanTable t = MeanParameterTable(st);
    ASSERT_EQ(t.rows.size(), 4u);
    EXPECT_EQ(t.rows[1][4], 0.0);
    EXPECT_EQ(t.rows[1][5], 0.0);
    EXPECT_NEAR(t.rows[1][3], 25.0, 1e-8);
    EXPECT_TRUE(std::isnan(t.rows[2][3]));
    EXPECT_TRUE(std::isnan(t.rows[2][4]));
    EXPECT_TRUE(std::isnan(t.rows[2][5]));
    EXPECT_DOUBLE_EQ(t.rows[2][0], 1000.0);
    EXPECT_NEAR(t.rows[2][1], 1.0 / (Rgd * 1000.0), 1e-15);
}

TEST(MeanParameters, EvaluateSpeciesThermoBranchesAndGuards)
{
    double c[15] = {};
    c[1] = 3.0;  // high range: cp/R = 3
    c[8] = 4.0;  // low range: cp/R = 4
    c[14] = 2.0; // low a7
    SpeciesThermo at = EvaluateSpeciesThermo(c, 1000.0, 1000.0, "X", 100.0);
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
    const SpeciesThermo bad = EvaluateSpeciesThermo(c, 500.0, 1000.0, "HO2", 100.0);
    EXPECT_EQ(bad.error.text,
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
    EXPECT_EQ(c.message.text, "You are attempting to plot the function 'Z' where all values are zero.");
    EXPECT_EQ(c.message.style, shell::StyleWarning);
    EXPECT_TRUE(c.x.empty());
    c = PloConcentration(st, MoleFract(st, KindMoleFraction, 6, "Z"), true);
    EXPECT_EQ(c.message.text, "You are attempting to plot the function 'Z' where all values are zero "
                              "or logarithms of negative numbers. ");
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

} // namespace
} // namespace zarvion::postprocessor
