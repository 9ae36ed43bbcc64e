#include "PostprocessorFixture.h"

#include "postprocessor/ProductionAnalysis.h"
#include "postprocessor/Ranking.h"
#include "postprocessor/RowFields.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace zarvion::postprocessor {
namespace {

using namespace testing;

//! Integrates g over rows p..e of a grid of times t[1..n] (t[0] unused) with the integrator.
double Integrate(const std::vector<double>& t, int p, int e, const std::function<double(double)>& g)
{
    const int rowCount = static_cast<int>(t.size());
    std::vector<double> h(t.size(), 0.0);
    for (int k = 2; k < rowCount; ++k) h[k] = t[k] - t[k - 1];
    ProductionIntegrator integ(h, rowCount, p, e, 1);
    for (int k = integ.firstRow(); k <= integ.lastRow(); ++k) {
        const double v = g(t[k]);
        integ.add(k, std::span<const double>(&v, 1));
    }
    return integ.integrals()[0];
}

TEST(Ranking, SortsByDescendingMagnitudeKeepingTiesInOrder)
{
    // Ties (|-2| = |2|, three zeros) must keep ascending numbers, as a neighbour exchange
    // with a strict test leaves them; a NaN ranks below every number and never breaks it.
    using Row = std::pair<int, double>;
    auto numbers = [](std::vector<Row> rows) {
        SortRowsByMagnitude(rows, [](const Row& r) { return r.second; });
        std::vector<int> out;
        for (const Row& r : rows) out.push_back(r.first);
        return out;
    };
    EXPECT_EQ(numbers({{1, 0.0}, {2, -2.0}, {3, 5.0}, {4, 2.0}, {5, 0.0}, {6, -7.5}, {7, 0.0}}),
              (std::vector<int>{6, 3, 2, 4, 1, 5, 7}));
    EXPECT_EQ(numbers({{1, std::nan("")}, {2, 1.0}, {3, std::nan("")}, {4, -3.0}}),
              (std::vector<int>{4, 2, 1, 3}));
    // Numeric rows ranked on one cell move whole; the tie 2, 3 keeps the earlier number first.
    std::vector<std::vector<double>> table{{1, 0, 1e-3}, {2, 0, -1e-2}, {3, 0, 1e-2}, {4, 0, 1}};
    SortRowsByMagnitude(table, 2);
    EXPECT_EQ(table, (std::vector<std::vector<double>>{{4, 0, 1}, {2, 0, -1e-2}, {3, 0, 1e-2},
                                                       {1, 0, 1e-3}}));
}

TEST(Ranking, CutoffCountLimitsAndTail)
{
    // Hand calculations of the cut-off: t = p x total; rows are dropped from the end while
    // their sum does not exceed t, and the last dropped row comes back when above 0.3 t.
    struct Case {
        std::vector<double> values;
        double p;
        std::size_t count;
    };
    const std::vector<double> v{5.0, -3.0, 1.0, 1.0}; // total 10
    const std::vector<Case> cases = {
        {v, 1.0, 0}, {v, 1.5, 0}, {v, 0.0, 4}, {v, -0.1, 4}, {{}, 0.5, 0},
        {{0.0, 0.0, 0.0}, 0.5, 0}, // zero allowance
        {{0.0, 0.0, 0.0}, 0.0, 3}, // p = 0 keeps even zero rows
        // t = 2.5: tail 1, 2, 5 > 2.5 at row 2, n = 2; row 3: 1 / 2.5 = 0.4 > 0.3, n = 3
        {v, 0.25, 3},
        // t = 4.5: tail 1, 2, 5 > 4.5 at row 2; row 3: 1 / 4.5 = 0.222 <= 0.3, n = 2
        {v, 0.45, 2},
        // t = 0.5: the last row alone exceeds it, n = count
        {v, 0.05, 4},
        // total 10, t = 3 equal to the tail sum 1 + 2 is not exceeded; row 2: 2/3 > 0.3
        {{7.0, 2.0, 1.0}, 0.3, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(::testing::Message() << "p = " << c.p << ", " << c.values.size() << " rows");
        EXPECT_EQ(CutoffCount(c.values, c.p), c.count);
    }
}

TEST(ProductionIntegrator, ExactForLowDegreePolynomials)
{
    std::vector<double> t{0.0, 0.0}; // 30 rows, steps between 0.01 and 0.09
    for (int k = 1; k < 30; ++k) t.push_back(t.back() + 0.05 + 0.04 * std::sin(1.7 * k));
    const int last = 30;
    // Whole table: the one-sided corrections come from the quadratic through three points,
    // the interior from the cubic through four, so any quadratic is integrated exactly.
    auto quad = [](double x) { return 1.0 + 2.0 * x - 3.0 * x * x; };
    auto quadF = [](double x) { return x + x * x - x * x * x; }; // its antiderivative
    EXPECT_NEAR(Integrate(t, 1, last, quad), quadF(t[last]) - quadF(t[1]), 1e-12);
    // A clipped interval takes its neighbour rows from the table and is exact for cubics.
    auto cubic = [](double x) { return 0.5 - x + 4.0 * x * x * x; };
    auto cubicF = [](double x) { return 0.5 * x - 0.5 * x * x + x * x * x * x; };
    EXPECT_NEAR(Integrate(t, 5, 20, cubic), cubicF(t[20]) - cubicF(t[5]), 1e-12);
    // On a smooth non-polynomial function the corrected rule beats the plain trapezoid by
    // more than an order of magnitude (trapezoid computed here directly).
    auto expo = [](double x) { return std::exp(-3.0 * x); };
    const double exact = (expo(t[1]) - expo(t[last])) / 3.0;
    double trapezoid = 0.0;
    for (int k = 2; k <= last; ++k)
        trapezoid += 0.5 * (t[k] - t[k - 1]) * (expo(t[k]) + expo(t[k - 1]));
    EXPECT_LT(std::fabs(Integrate(t, 1, last, expo) - exact), 0.1 * std::fabs(trapezoid - exact));
}

// Decay profile yA = 0.3 exp(-2t), yB = 0.3 - yA, yN = 0.7 over [0, 1] s on 40 uneven steps;
// the density is constant (S = 0.04). Production per gram of A:
//   R1: -2 yA / 20;   R2: -1E5 rho (yA yN - yB yN / Kc) / (20 x 28), Kc = exp(6).
const double Rho = 1.0 / (Codata().gasConstantDensity() * 1000.0) / 0.04;
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
    EXPECT_DOUBLE_EQ(table.difference, (RoundSeven(0.3 * std::exp(-2.0)) - 0.3) / 20.0);
    EXPECT_EQ(table.differenceText, "-1.30E-02");

    // A clipped interval integrates over its rows' times; thinning changes the shown rows,
    // never the integrals.
    st.IntervalBegin = 0.3;
    st.IntervalEnd = 0.7;
    st.UsedData();
    const double a = FieldValue(st.results().rows[st.IntervalFirst], 0);
    const double b = FieldValue(st.results().rows[st.IntervalLast], 0);
    ASSERT_LT(a, 0.3);
    ASSERT_GE(b, 0.7);
    const ProductionTable t1 = ShowReacDeRe(st, 1, true);
    EXPECT_NEAR(t1.rows[0].value, R1Integral(a, b), 1e-6 * std::fabs(R1Integral(a, b)));
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

//! A table of OH ranked by hand: 2.0E-3, -1.5E-3, 5.0E-4 (or the rows given).
ProductionTable HandTable(std::vector<ProductionRow> rows = {}, double difference = 1.0e-3)
{
    ProductionTable t;
    t.species = 5;
    t.speciesName = PreparedSpeciesName("OH");
    t.withValues = true;
    t.rows = {{3, "H+O2=O+OH", 2.0e-3, 1}, {1, "H2+O=H+OH", -1.5e-3, 1},
              {7, "OH+H2=H2O+H", 5e-4, -1}};
    if (!rows.empty()) t.rows = rows;
    t.difference = difference;
    ReacUpdate(t);
    return t;
}
//! Two rows that cancel: a small difference between large numbers.
const std::vector<ProductionRow> Cancelling{{1, "X", 1.0e-3, 1}, {2, "Y", -1.0e-3, 1}};

TEST(ShowReacMen, ParameterChecksAndCut)
{
    const ProductionTable t = HandTable();
    for (const std::string bad : {"", "abc", "-0.1", "1.5"})
        EXPECT_EQ(ShowReacMen(t, &bad).message.text,
                  "Parameter, please enter a number on the interval (0, 1).") << bad;
    // p = 0.5: t = 2E-3; the tail 5E-4 + 1.5E-3 does not exceed it, so n = 1 first; row 2
    // (1.5E-3 / 2E-3 = 0.75 > 0.3) comes back: n = 2.
    const std::string half = "0.5", one = "1", zero = "0";
    ShownRows s = ShowReacMen(t, &half);
    EXPECT_TRUE(s.message.empty());
    EXPECT_EQ(s.count, 2u);
    EXPECT_EQ(s.countLabel, "Important reactions 2");
    EXPECT_EQ(s.titleLabel, "OH           Production. (mol/g). Important reactions 2.");
    s = ShowReacMen(t, &one); // n = 0 shows every row
    EXPECT_EQ(s.count, 3u);
    EXPECT_EQ(s.countLabel, "All reactions 3");
    EXPECT_EQ(ShowReacMen(t, &zero).count, 3u);
    EXPECT_EQ(ShowReacMen(t, nullptr).countLabel, "All reactions 3");
}

TEST(TemperSum, SumDerivativeAndSmallDifference)
{
    const ProductionTable t = HandTable();
    SumDisplay s = TemperSum(t, 3, true); // 2E-3 - 1.5E-3 + 5E-4 = 1E-3; 1E-3 / 2.5E-3 = 0.4
    EXPECT_EQ(s.label, "Sum of Reactions");
    EXPECT_EQ(s.text, "1.00E-03");
    EXPECT_FALSE(s.warning);
    s = TemperSum(t, 3, false);
    EXPECT_EQ(s.label, "Derivative");
    EXPECT_EQ(s.text, "1.00E-03");
    EXPECT_TRUE(s.toolTip.empty());

    const ProductionTable c = HandTable(Cancelling, 0.0);
    s = TemperSum(c, 2, true);
    EXPECT_TRUE(s.smallDifference);
    EXPECT_EQ(s.text, "***");
    EXPECT_TRUE(s.centred);
    EXPECT_TRUE(s.warning);
    EXPECT_EQ(s.toolTip, "A small difference between large numbers");
    s = TemperSum(c, 2, false);
    EXPECT_EQ(s.toolTip, "The value cannot be defined exactly; it is a small difference "
                         "between large numbers.");
    EXPECT_TRUE(s.warning);
}

TEST(CopyReac, TextOfTheShownRows)
{
    // Golden text: number field 10, two blanks, text field 11 (the longest text).
    const CopyReacContext ctx{"h2o2.txt", "0.000000E+00", "1.000000E-03", GoldenDate(), "\n"};
    EXPECT_EQ(CopyReac(HandTable(), 3, ctx), ReadGolden("production_copy.txt"));
    const std::string small = CopyReac(HandTable(Cancelling), 2, ctx);
    EXPECT_NE(small.find("\nSum          ***   \nDerivative   1.00E-03\n\n Small difference "
                         "between large numbers, the correct value cannot be calculated.\n\n"),
              std::string::npos)
        << small;
}

TEST(ShowHisto, BarsColoursAndLabels)
{
    const ProductionTable t = HandTable();
    for (const char* bad : {"0", "x"})
        EXPECT_EQ(ShowHisto(t, 3, bad).message.text,
                  "Scaling factor, please enter a nonzero number.");
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
