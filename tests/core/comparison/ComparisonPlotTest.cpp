// Comparison curves: trimming, interpolation onto file 1's times, relative errors, units,
// plot settings and their refusals, labels.

#include <gtest/gtest.h>

#include <cmath>

#include "comparison/ComparisonPlot.h"

namespace zarvion::comparison {
namespace {

TEST(TrimProfile, LeadingZerosGoTrailingZerosStay)
{
    const Profile p = {{0, 0}, {1, 0}, {2, 3}, {3, 0}, {4, 2}, {5, 0}, {6, -1}};
    const Profile t = TrimProfile(p);
    ASSERT_EQ(t.size(), 4U);
    EXPECT_EQ(t.front()[0], 2);
    EXPECT_EQ(t.back()[0], 5);
    EXPECT_TRUE(TrimProfile({{0, 0}, {1, -2}}).empty());
}

TEST(InterpolateAt, LinearInsideNullInTheLastIntervalAndOutside)
{
    const Profile p = {{1, 10}, {2, 20}, {4, 0}, {5, 7}};
    // hand calculation: halfway between (2, 20) and (4, 0) is 10
    EXPECT_DOUBLE_EQ(InterpolateAt(3, p), 10.0);
    EXPECT_DOUBLE_EQ(InterpolateAt(1, p), 10.0);
    EXPECT_EQ(InterpolateAt(4.5, p), NullValue); // last interval
    EXPECT_EQ(InterpolateAt(5, p), NullValue);
    EXPECT_EQ(InterpolateAt(0.5, p), NullValue);
    // (t(i + 1) - t(i)) / (t(i + 1) + t(i)) below 1e-19 gives no value: with positive times
    // that needs a spacing below double precision, but a negative sum meets it
    const Profile close = {{1.0, 1}, {1.0 + 1e-15, 2}, {2, 3}, {3, 4}};
    EXPECT_DOUBLE_EQ(InterpolateAt(1.0, close), 1.0);
    const Profile negative = {{-2, 1}, {-1, 2}, {0, 3}, {1, 4}};
    EXPECT_EQ(InterpolateAt(-1.5, negative), NullValue);
    EXPECT_DOUBLE_EQ(InterpolateAt(0.5, {{0, 3}, {1, 4}, {2, 5}}), 3.5);
}

TEST(ErrorProfile, RelativeErrorWithParameterB)
{
    const Profile one = {{0, 0}, {1, 2}, {2, 4}, {3, 4}, {4, 4}};
    const Profile two = {{0, 0}, {1, 1}, {2, 2}, {3, 6}, {4, 6}, {5, 6}};
    // b = 1 divides by file 1's value, b = 0 by file 2's: |2 - 1| / 2 and / 1
    Profile e = ErrorProfile(one, two, 1.0);
    ASSERT_EQ(e.size(), 4U);
    EXPECT_DOUBLE_EQ(e[0][1], 0.5);
    EXPECT_DOUBLE_EQ(e[2][1], 0.5); // |4 - 6| / 4
    EXPECT_EQ(e[3][1], NullValue);  // t = 4 lies in file 2's last interval
    e = ErrorProfile(one, two, 0.0);
    EXPECT_DOUBLE_EQ(e[0][1], 1.0);
    EXPECT_DOUBLE_EQ(e[2][1], 2.0 / 6.0);
    e = ErrorProfile(one, two, 0.5);
    EXPECT_DOUBLE_EQ(e[0][1], 1.0 / 1.5);
    // identical profiles: every error is below 1e-6 and none is kept
    for (const auto& [t, v] : ErrorProfile(one, one, 0.5)) {
        EXPECT_EQ(v, NullValue) << t;
    }
    // a species that vanishes in file 2: those points are left out
    const Profile gone = {{0, 1}, {1, 1}, {2, 0}, {3, 0}, {4, 0}, {5, 0}};
    e = ErrorProfile(one, gone, 0.5);
    EXPECT_DOUBLE_EQ(e[0][1], 1.0 / 1.5);
    EXPECT_EQ(e[1][1], NullValue);
    EXPECT_EQ(e[2][1], NullValue);
}

TEST(UnitFactor, GasConstantAndBoltzmannOverOneAtmosphere)
{
    // R = 82.057366 cm^3 atm/(mol K) (CODATA 2018), k / 1 atm = 1.3626e-22
    EXPECT_NEAR(UnitFactor(false), 82.057366, 1e-5);
    EXPECT_NEAR(UnitFactor(true), 1.380649e-16 / 1013250.0, 1e-30);
}

TEST(CheckPlotSettings, EachFieldHasItsMessage)
{
    PlotSettings s;
    EXPECT_EQ(CheckPlotSettings("0", "1", "", s).message.text,
              "Scaling factor for X-axis, please enter a nonzero number.");
    EXPECT_EQ(CheckPlotSettings("abc", "1", "", s).field, 3);
    EXPECT_TRUE(CheckPlotSettings("-2", "-3", "7", s).message.empty()); // b not read
    EXPECT_EQ(s.XScale, -2);
    EXPECT_EQ(s.YScale, -3);
    EXPECT_EQ(CheckPlotSettings("1", "0", "", s).message.text,
              "Scaling factor for Y-axis, please enter a nonzero number.");
    s.logX = true;
    const auto cx = CheckPlotSettings("-1", "1", "", s);
    EXPECT_EQ(cx.message.text,
              "Scaling factor for logarithmic X-axis, please enter a positive number.");
    EXPECT_EQ(cx.message.style, 48);
    s.logY = true;
    EXPECT_EQ(CheckPlotSettings("1", "0", "", s).message.text,
              "Scaling factor for logarithmic Y-axis, please enter a positive number.");
    s.relativeError = true;
    for (const char* bad : {"-0.1", "1.01", "x", ""}) {
        const auto c = CheckPlotSettings("1", "1", bad, s);
        EXPECT_EQ(c.message.text,
                  "Relative error parameter, please enter a number on the interval [0, 1].");
        EXPECT_EQ(c.field, 5);
    }
    EXPECT_TRUE(CheckPlotSettings("1", "1", "1", s).message.empty());
    EXPECT_EQ(s.b, 1.0);
}

class RedPlotFunctionTest : public ::testing::Test {
protected:
    ComparisonSet set;
    void SetUp() override
    {
        // columns: time, T, species 1, species 2
        set.file1.ProfileTable = {{0, 1000, 0, 1e-3}, {1e-3, 1100, 2e-4, 1e-3},
                                  {2e-3, 1200, 4e-4, 1e-3}, {3e-3, 1300, 4e-4, 1e-3}};
        set.file1.RecordCount = 4;
        set.file2.ProfileTable = {{0, 1000, 1e-3}, {1e-3, 1000, 1e-3}, {2e-3, 1320, 1e-3},
                                  {3e-3, 1300, 1e-3}, {4e-3, 1300, 1e-3}};
        set.file2.RecordCount = 5;
        set.MergedTable = {{"Temperature", "*", "v", 0, 0},
                           {"OH", "*", "", 1, std::nullopt},
                           {"N2", "*", "*", 2, 1}};
    }
};

TEST_F(RedPlotFunctionTest, ConcentrationCurveLabelAndFilter)
{
    PlotSettings s;
    PlotCurve c = RedPlotFunction(set, 0, set.MergedTable[1], s);
    ASSERT_TRUE(c.message.empty());
    EXPECT_EQ(c.label, " F1, OH (mol/cm^3)");
    ASSERT_EQ(c.x.size(), 4U);
    // time 0 never has an X; a zero value has no point either
    EXPECT_EQ(c.x[0], NullValue);
    EXPECT_EQ(c.y[0], NullValue);
    EXPECT_DOUBLE_EQ(c.x[1], 1e-3);
    EXPECT_NEAR(c.y[1], 2e-4 / UnitFactor(false), 1e-18);

    s.molecules = true;
    s.logY = true;
    s.YScale = 2;
    c = RedPlotFunction(set, 1, set.MergedTable[2], s);
    EXPECT_EQ(c.label, " F2, N2 Log10 (1/cm^3) x 2.00E+00");
    EXPECT_NEAR(c.y[2], std::log10(2 * 1e-3 / UnitFactor(true)), 1e-12);

    s = PlotSettings{};
    s.logX = true;
    s.XScale = 1000;
    c = RedPlotFunction(set, 0, set.MergedTable[0], s);
    EXPECT_EQ(c.label, " F1, Temperature (K)");
    EXPECT_DOUBLE_EQ(c.x[1], 0.0); // log10(1e-3 x 1000)
    EXPECT_DOUBLE_EQ(c.y[1], 1100.0);

    // a species that file 2 lacks: nothing drawn, no message
    c = RedPlotFunction(set, 1, set.MergedTable[1], s);
    EXPECT_TRUE(c.skipped);
    EXPECT_TRUE(c.message.empty());
    EXPECT_TRUE(c.x.empty());
    EXPECT_TRUE(SecondCurveAdds(false, set.MergedTable[1]));
    EXPECT_FALSE(SecondCurveAdds(false, MergedRow{"X", "", "*", std::nullopt, 3}));
    EXPECT_TRUE(SecondCurveAdds(true, MergedRow{"X", "", "*", std::nullopt, 3}));
}

TEST_F(RedPlotFunctionTest, RelativeErrorAndItsRefusals)
{
    PlotSettings s;
    s.relativeError = true;
    s.b = 1.0;
    PlotCurve c = RedPlotFunction(set, 2, set.MergedTable[0], s);
    ASSERT_TRUE(c.message.empty()) << c.message.text;
    EXPECT_EQ(c.label, "Temperature, Relative Error");
    ASSERT_EQ(c.y.size(), 4U);
    EXPECT_EQ(c.y[0], NullValue);                    // time 0
    EXPECT_NEAR(c.y[1], 100.0 / 1100.0, 1e-12);      // |1100 - 1000| / 1100
    EXPECT_NEAR(c.y[2], 120.0 / 1200.0, 1e-12);
    EXPECT_EQ(c.y[3], NullValue);                    // file 2's last interval (3e-3, 4e-3)

    c = RedPlotFunction(set, 2, set.MergedTable[1], s);
    EXPECT_EQ(c.message.text, "File 2, the data for 'OH' is not available; the comparison "
                              "cannot be performed.");
    // file 2's refusal wins when both files lack the species
    c = RedPlotFunction(set, 2, MergedRow{"XY", "", "", std::nullopt, std::nullopt}, s);
    EXPECT_EQ(c.message.text, "File 2, the data for 'XY' is not available; the comparison "
                              "cannot be performed.");
    c = RedPlotFunction(set, 2, MergedRow{"Z", "", "*", std::nullopt, 1}, s);
    EXPECT_EQ(c.message.text, "File 1, the data for 'Z' is not available; the comparison "
                              "cannot be performed.");

    // identical values everywhere: all errors vanish
    c = RedPlotFunction(set, 2, set.MergedTable[2], s);
    EXPECT_EQ(c.message.text, "You are attempting to plot a function where all values are zero.");
    s.logY = true;
    c = RedPlotFunction(set, 2, set.MergedTable[2], s);
    EXPECT_EQ(c.message.text, "You are attempting to plot a function where all values are zero "
                              "or logarithms of negative numbers. ");
    // errors below 1 give negative logarithms, which are plotted
    c = RedPlotFunction(set, 2, set.MergedTable[0], s);
    EXPECT_EQ(c.label, "Temperature, Log10 Relative Error");
    EXPECT_NEAR(c.y[1], std::log10(100.0 / 1100.0), 1e-12);
}

} // namespace
} // namespace zarvion::comparison
