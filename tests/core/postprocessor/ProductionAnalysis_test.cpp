#include "PostprocessorFixture.h"

#include "postprocessor/ProductionAnalysis.h"
#include "postprocessor/RowFields.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace zarvion::postprocessor {
namespace {

using testing::Codata;
using testing::DecayStates;
using testing::MakeResults;

//! Integrates g over rows p..e of a grid of times t[1..n] (t[0] unused) with the integrator.
double Integrate(const std::vector<double>& t, int p, int e, const std::function<double(double)>& g)
{
    const int rowCount = static_cast<int>(t.size());
    std::vector<double> h(t.size(), 0.0);
    for (int k = 2; k < rowCount; ++k) {
        h[k] = t[k] - t[k - 1];
    }
    ProductionIntegrator integ(h, rowCount, p, e, 1);
    for (int k = integ.firstRow(); k <= integ.lastRow(); ++k) {
        const double v = g(t[k]);
        integ.add(k, std::span<const double>(&v, 1));
    }
    return integ.integrals()[0];
}

std::vector<double> UnevenGrid(int n)
{
    std::vector<double> t{0.0};
    double x = 0.0;
    for (int k = 1; k <= n; ++k) {
        t.push_back(x);
        x += 0.05 + 0.04 * std::sin(1.7 * k); // steps between 0.01 and 0.09
    }
    return t;
}

TEST(ProductionIntegrator, ExactForLowDegreePolynomials)
{
    const std::vector<double> t = UnevenGrid(30);
    const int last = 30;
    // Whole table: the one-sided corrections come from the quadratic through three points,
    // the interior from the cubic through four, so any quadratic is integrated exactly.
    auto quad = [](double x) { return 1.0 + 2.0 * x - 3.0 * x * x; };
    auto quadIntegral = [](double a, double b) {
        auto F = [](double x) { return x + x * x - x * x * x; };
        return F(b) - F(a);
    };
    EXPECT_NEAR(Integrate(t, 1, last, quad), quadIntegral(t[1], t[last]), 1e-12);
    // A clipped interval takes its neighbour rows from the table and is exact for cubics.
    auto cubic = [](double x) { return 0.5 - x + 4.0 * x * x * x; };
    auto cubicIntegral = [](double a, double b) {
        auto F = [](double x) { return 0.5 * x - 0.5 * x * x + x * x * x * x; };
        return F(b) - F(a);
    };
    EXPECT_NEAR(Integrate(t, 5, 20, cubic), cubicIntegral(t[5], t[20]), 1e-12);
    // On a smooth non-polynomial function the corrected rule beats the plain trapezoid by
    // more than an order of magnitude (trapezoid computed here directly).
    auto expo = [](double x) { return std::exp(-3.0 * x); };
    const double exact = (std::exp(-3.0 * t[1]) - std::exp(-3.0 * t[last])) / 3.0;
    double trapezoid = 0.0;
    for (int k = 2; k <= last; ++k) {
        trapezoid += 0.5 * (t[k] - t[k - 1]) * (expo(t[k]) + expo(t[k - 1]));
    }
    EXPECT_LT(std::fabs(Integrate(t, 1, last, expo) - exact), 0.1 * std::fabs(trapezoid - exact));
}

// Decay profile yA = 0.3 exp(-2t), yB = 0.3 - yA, yN = 0.7 over [0, 1] s on 40 uneven steps;
// the density is constant (S = 0.04). Production per gram of A:
//   R1: -2 yA / 20;   R2: -1E5 rho (yA yN - yB yN / Kc) / (20 x 28), Kc = exp(6).
const double Rgd = Codata().gasConstantDensity();
const double Rho = 1.0 / (Rgd * 1000.0) / 0.04;
double IntYA(double a, double b) { return 0.15 * (std::exp(-2 * a) - std::exp(-2 * b)); }
double R1Integral(double a, double b) { return -0.1 * IntYA(a, b); }
double R2Integral(double a, double b)
{
    const double intYB = 0.3 * (b - a) - IntYA(a, b);
    return -1e5 * Rho * 0.7 * (IntYA(a, b) - intYB / std::exp(6.0)) / 560.0;
}

TEST(ShowReacDeRe, IntegralsAgainstAnalyticProfile)
{
    PostprocessorState st(MakeResults(DecayStates(40)), Codata());
    const ProductionTable table = ShowReacDeRe(st, 1, true);
    ASSERT_EQ(table.rows.size(), 2u); // R3 does not touch A
    EXPECT_EQ(table.rows[0].number, 1); // |R1| = 1.3E-2 > |R2| = 4.9E-3
    EXPECT_EQ(table.rows[1].number, 2);
    EXPECT_EQ(table.rows[0].text, "A=>B");
    // Tolerance 1E-6 relative: fourth-order rule on steps below 0.04 s, 10-digit rows.
    EXPECT_NEAR(table.rows[0].value, R1Integral(0, 1), 1e-6 * std::fabs(R1Integral(0, 1)));
    EXPECT_NEAR(table.rows[1].value, R2Integral(0, 1), 1e-6 * std::fabs(R2Integral(0, 1)));
    EXPECT_EQ(table.countLabel, "All reactions  2");
    EXPECT_EQ(table.speciesName, "A           ");
    // Change of A: rows rounded through 0.000000E+00, over W = 20.
    const double yEnd = RoundSeven(0.3 * std::exp(-2.0));
    EXPECT_DOUBLE_EQ(table.difference, (yEnd - 0.3) / 20.0);
    EXPECT_EQ(table.differenceText, "-1.30E-02");
}

TEST(ShowReacDeRe, ClippedIntervalAndThinning)
{
    PostprocessorState st(MakeResults(DecayStates(40)), Codata());
    st.IntervalBegin = 0.3;
    st.IntervalEnd = 0.7;
    st.UsedData();
    const double a = FieldValue(st.results().rows[st.IntervalFirst], 0);
    const double b = FieldValue(st.results().rows[st.IntervalLast], 0);
    ASSERT_LT(a, 0.3);
    ASSERT_GE(b, 0.7);
    const ProductionTable t1 = ShowReacDeRe(st, 1, true);
    EXPECT_NEAR(t1.rows[0].value, R1Integral(a, b), 1e-6 * std::fabs(R1Integral(a, b)));
    // Thinning changes the shown rows, never the integrals.
    st.ShowEvery = 3;
    st.UsedData();
    ASSERT_LT(st.UsedRows.size(), static_cast<std::size_t>(st.pointCount));
    const ProductionTable t3 = ShowReacDeRe(st, 1, true);
    EXPECT_EQ(t3.rows[0].value, t1.rows[0].value);
    EXPECT_EQ(t3.rows[1].value, t1.rows[1].value);
}

TEST(ShowReacDeRe, ListsAndEmptyTables)
{
    PostprocessorState st(MakeResults(DecayStates(10)), Codata());
    const ProductionTable list = ShowReacDeRe(st, 2, false);
    ASSERT_EQ(list.rows.size(), 2u);
    EXPECT_EQ(list.rows[0].number, 1);
    EXPECT_EQ(list.rows[0].value, 0.0);
    EXPECT_EQ(list.countLabel, "Reactions: 2");
    const ProductionTable none = ShowReacDeRe(st, 4, true); // Z is in no reaction
    EXPECT_TRUE(none.rows.empty());
    EXPECT_EQ(none.countLabel, "All reactions  0");
    EXPECT_EQ(ShowReacDeRe(st, 3, true).rows.size(), 0u); // N on both sides of R2 and R3
}

//! A table ranked by hand: 2.0E-3, -1.5E-3, 5.0E-4.
ProductionTable HandTable()
{
    ProductionTable t;
    t.species = 5;
    t.speciesName = PreparedSpeciesName("OH");
    t.withValues = true;
    t.rows = {{3, "H+O2=O+OH", 2.0e-3, 1}, {1, "H2+O=H+OH", -1.5e-3, 1}, {7, "OH+H2=H2O+H", 5.0e-4, -1}};
    t.difference = 1.0e-3;
    ReacUpdate(t);
    return t;
}

TEST(ShowReacMen, ParameterChecksAndCut)
{
    const ProductionTable t = HandTable();
    for (const std::string bad : {"", "abc", "-0.1", "1.5"}) {
        const ShownRows s = ShowReacMen(t, &bad);
        EXPECT_EQ(s.message.text, "Parameter, please enter a number on the interval (0, 1).") << bad;
    }
    // p = 0.5: t = 2E-3; the tail 5E-4 + 1.5E-3 does not exceed it, so n = 1 first; row 2
    // (1.5E-3 / 2E-3 = 0.75 > 0.3) comes back: n = 2.
    const std::string half = "0.5";
    ShownRows s = ShowReacMen(t, &half);
    EXPECT_TRUE(s.message.empty());
    EXPECT_EQ(s.count, 2u);
    EXPECT_EQ(s.countLabel, "Important reactions 2");
    EXPECT_EQ(s.titleLabel, "OH           Production. (mol/g). Important reactions 2.");
    const std::string one = "1"; // n = 0 shows every row
    s = ShowReacMen(t, &one);
    EXPECT_EQ(s.count, 3u);
    EXPECT_EQ(s.countLabel, "All reactions 3");
    const std::string zero = "0";
    EXPECT_EQ(ShowReacMen(t, &zero).count, 3u);
    EXPECT_EQ(ShowReacMen(t, nullptr).countLabel, "All reactions 3");
}

TEST(TemperSum, SumDerivativeAndSmallDifference)
{
    ProductionTable t = HandTable();
    SumDisplay s = TemperSum(t, 3, true); // 2E-3 - 1.5E-3 + 5E-4 = 1E-3; 1E-3 / 2.5E-3 = 0.4
    EXPECT_EQ(s.label, "Sum of Reactions");
    EXPECT_EQ(s.text, "1.00E-03");
    EXPECT_FALSE(s.warning);
    s = TemperSum(t, 3, false);
    EXPECT_EQ(s.label, "Derivative");
    EXPECT_EQ(s.text, "1.00E-03");
    EXPECT_TRUE(s.toolTip.empty());

    t.rows = {{1, "X", 1.0e-3, 1}, {2, "Y", -1.0e-3, 1}};
    t.difference = 0.0;
    ReacUpdate(t);
    s = TemperSum(t, 2, true);
    EXPECT_TRUE(s.smallDifference);
    EXPECT_EQ(s.text, "***");
    EXPECT_TRUE(s.centred);
    EXPECT_TRUE(s.warning);
    EXPECT_EQ(s.toolTip, "A small difference between large numbers");
    s = TemperSum(t, 2, false);
    EXPECT_EQ(s.toolTip,
              "The value cannot be defined exactly; it is a small difference between large numbers.");
    EXPECT_TRUE(s.warning);
}

TEST(CopyReac, TextOfTheShownRows)
{
    CopyReacContext ctx;
    ctx.fileName = "h2o2.txt";
    ctx.intervalBeginText = "0.000000E+00";
    ctx.intervalEndText = "1.000000E-03";
    ctx.date.tm_year = 126;
    ctx.date.tm_mon = 2;
    ctx.date.tm_mday = 5;
    ctx.lineEnd = "\n";
    // Written by hand: number field 10, two blanks, text field 11 (the longest text).
    const std::string expected =
        "Zarvion Postprocessor, Mar 5 2026\n"
        "Solver File: h2o2.txt\n"
        "\n"
        "Time interval 0.000000E+00 - 1.000000E-03 sec\n"
        "\n"
        "        No  Reaction   Integral\n"
        "         3  H+O2=O+OH  2.00E-03\n"
        "         1  H2+O=H+OH  -1.50E-03\n"
        "         7  OH+H2=H2O+H5.00E-04\n"
        "  ------------------------------------------------------------------\n"
        "Sum                    1.00E-03\n"
        "Derivative             1.00E-03\n";
    EXPECT_EQ(CopyReac(HandTable(), 3, ctx), expected);

    ProductionTable t = HandTable();
    t.rows = {{1, "X", 1.0e-3, 1}, {2, "Y", -1.0e-3, 1}};
    const std::string small = CopyReac(t, 2, ctx);
    EXPECT_NE(small.find("\nSum          ***   \nDerivative   1.00E-03\n\n Small difference between "
                         "large numbers, the correct value cannot be calculated.\n\n"),
              std::string::npos)
        << small;
}

TEST(ShowHisto, BarsColoursAndLabels)
{
    const ProductionTable t = HandTable();
    EXPECT_EQ(ShowHisto(t, 3, "0").message.text, "Scaling factor, please enter a nonzero number.");
    EXPECT_EQ(ShowHisto(t, 3, "x").message.text, "Scaling factor, please enter a nonzero number.");
    const Histogram h = ShowHisto(t, 2, "2");
    EXPECT_EQ(h.title, "OH Production");
    EXPECT_EQ(h.plottingMethod, "Histogram");
    EXPECT_EQ(h.label, "(mol/g) x 2.0E+00");
    ASSERT_EQ(h.bars.size(), 2u);
    EXPECT_EQ(h.bars[0].label, "R3");
    EXPECT_EQ(h.bars[0].valueText, "2.00E-03");
    EXPECT_DOUBLE_EQ(h.bars[0].value, 4.0e-3);
    EXPECT_EQ(h.bars[0].colour, 9);
    EXPECT_EQ(h.bars[1].colour, 12);
    EXPECT_EQ(h.bars[1].valueText, "-1.50E-03");
    EXPECT_EQ(ShowHisto(t, 3, "1").label, "(mol/g)");
}

} // namespace
} // namespace zarvion::postprocessor
