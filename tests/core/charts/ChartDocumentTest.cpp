#include "ChartTestSupport.h"

#include "charts/PlotExchange.h"
#include "shell/Error.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;

TEST(ChartStyle, RandomColourSkipsWhiteAndGreyAndRoundsHalfToEven)
{
    // c = round(8 r), half to even; 7 -> 9 and 8 -> 12.
    EXPECT_EQ(RandomColorIndex(0.0), 0);
    EXPECT_EQ(RandomColorIndex(0.0625), 0);  // 0.5 -> 0
    EXPECT_EQ(RandomColorIndex(0.1875), 2);  // 1.5 -> 2
    EXPECT_EQ(RandomColorIndex(0.8125), 6);  // 6.5 -> 6
    EXPECT_EQ(RandomColorIndex(0.875), 9);   // 7 -> 9
    EXPECT_EQ(RandomColorIndex(0.9375), 12); // 7.5 -> 8 -> 12
    EXPECT_EQ(RandomColorIndex(0.999), 12);
    for (int i = 0; i < 1000; ++i) {
        const int c = RandomColorIndex(i / 1000.0);
        EXPECT_NE(c, 7);
        EXPECT_NE(c, 8);
        EXPECT_TRUE((c >= 0 && c <= 6) || c == 9 || c == 12) << c;
    }
    EXPECT_EQ(RandomPointCode(0.25), 2); // 2.5 -> 2
    EXPECT_EQ(RandomPointCode(0.35), 4); // 3.5 -> 4
    EXPECT_EQ(RandomPointCode(0.99), 10);
    EXPECT_EQ(StandardColor(4), 0x800000u);
    EXPECT_EQ(StandardColor(9), 0x0000FFu);
    EXPECT_EQ(StandardColor(15), 0xFFFFFFu);
    EXPECT_EQ(StandardColor(16), 0u);
}

TEST(ChartStyle, ReactionLabelsNeedRNumberAndAnEarlyComma)
{
    EXPECT_TRUE(IsReactionLabel("R12,H+O2=OH+O"));
    EXPECT_TRUE(IsReactionLabel("  R 7 ,CH4+M"));
    EXPECT_TRUE(IsReactionLabel("R1234,X")); // comma at position 6
    EXPECT_FALSE(IsReactionLabel("R12345,X")); // comma at position 7
    EXPECT_FALSE(IsReactionLabel("Rate,X"));
    EXPECT_FALSE(IsReactionLabel("r12,X"));
    EXPECT_FALSE(IsReactionLabel("R12 H+O2"));
    EXPECT_FALSE(IsReactionLabel("R,X"));
    EXPECT_FALSE(IsReactionLabel(""));

    const std::string eq(50, 'a');
    auto [p1, p2] = SplitReactionTail(eq + "bc");
    EXPECT_EQ(p1, std::string(48, 'a'));
    EXPECT_EQ(p2, "aabc");
    auto [q1, q2] = SplitReactionTail(std::string(48, 'z'));
    EXPECT_EQ(q1, std::string(48, 'z'));
    EXPECT_EQ(q2, "Empty");
}

TEST(ChartColours, MonochromeKeepsTheColoursAndGivesThemBack)
{
    ChartDocument c = RichChart(3, 2);
    const ChartDocument colour = c;
    c.Monochr();
    ASSERT_EQ(c.ColorBackup.size(), 9u);
    EXPECT_EQ(c.colorBackupSlot(1), colour.colors.deskForeground);
    EXPECT_EQ(c.colorBackupSlot(5), colour.colors.shadow);
    EXPECT_EQ(c.colorBackupSlot(6), colour.annotations[0].color);
    EXPECT_EQ(c.colorBackupSlot(9), colour.subsets[2].color);
    EXPECT_EQ(c.colors.graphBackground, StandardColor(15));
    EXPECT_EQ(c.colors.graphForeground, StandardColor(0));
    EXPECT_EQ(c.annotations[100].color, 0u);
    for (const auto& s : c.subsets) {
        EXPECT_EQ(s.color, 0u);
    }
    c.Monochr(); // a second switch must not lose the stored colours
    c.PlotCol();
    EXPECT_TRUE(c.COLORBOOLTT());
    EXPECT_EQ(c.colors, colour.colors);
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(c.subsets[k].color, colour.subsets[k].color);
    }
    // One annotation colour for all user slots: that of slot 0.
    EXPECT_EQ(c.annotations[100].color, colour.annotations[0].color);
    EXPECT_THROW(c.colorBackupSlot(0), zarvion::Error);
}

namespace {

PlotExchange twoSubsetExchange()
{
    PlotExchange ex;
    ex.SubsetCount = 2;
    ex.PointCount = 6;
    ex.sizeChartBuffers();
    ex.SubsetLabelBuffer = {"OH", "H2O"};
    for (int p = 0; p < 6; ++p) {
        ex.ChartDataBuffer[0][p] = p;            // X of subset 0
        ex.ChartDataBuffer[1][p] = 10.0 * p;     // Y of subset 0
        ex.ChartDataBuffer[2][p] = p + 0.5;
        ex.ChartDataBuffer[3][p] = -p;
    }
    ex.ChartDataBuffer[1][2] = std::nan("");
    ex.ChartDataBuffer[3][4] = NullValue;
    ex.PlotTitles[1] = "Main";
    ex.PlotTitles[3] = "Time (sec)";
    ex.DefaultSubtitle = "Default sub";
    return ex;
}

} // namespace

TEST(Intit, BuildsTheChartFromTheExchange)
{
    ChartDocument c = RichChart(4, 3);
    c.xAxis.manualScale = 1;
    const PlotExchange ex = twoSubsetExchange();
    Intit(c, ex, false, false, Sequence({0.5, 0.25, 0.875, 0.05}));

    ASSERT_EQ(c.subsetCount(), 2);
    EXPECT_EQ(c.points, 6);
    EXPECT_EQ(c.subsets[0].label, "OH");
    EXPECT_EQ(c.subsets[0].y[2], NullValue); // not numeric
    EXPECT_EQ(c.subsets[1].y[4], NullValue);
    EXPECT_EQ(c.subsets[1].x[5], 5.5);
    EXPECT_EQ(c.mainTitle, "Main");
    EXPECT_EQ(c.subTitle, "Default sub");
    EXPECT_EQ(c.xAxisLabel, "Time (sec)");
    EXPECT_EQ(c.yAxisLabel, "Y-Axis");
    EXPECT_EQ(c.xAxis.manualScale, 0);
    EXPECT_EQ(c.annotations[0].text, "first note"); // slot 0 isn't cleared
    for (int slot : {1, 100, 101, 300}) {
        EXPECT_TRUE(c.annotations[slot].isFree()) << slot;
    }
    // Colour from r, point code from the next number: 0.5 -> red, 0.25 -> 2;
    // 0.875 -> light blue, 0.05 -> 0.
    EXPECT_EQ(c.subsets[0].color, StandardColor(4));
    EXPECT_EQ(c.subsets[0].pointType, 2);
    EXPECT_EQ(c.subsets[1].color, StandardColor(9));
    EXPECT_EQ(c.subsets[1].pointType, 0);
}

TEST(Intit, SkipTitlesAndHistogramLeaveTitlesAndStyles)
{
    ChartDocument c = RichChart(2, 3);
    PlotExchange ex = twoSubsetExchange();
    ex.PlotTitles[2] = "Given sub";
    Intit(c, ex, true, true, Sequence({0.5}));
    EXPECT_EQ(c.mainTitle, "Ignition of H2/O2");
    EXPECT_EQ(c.subsets[0].color, RichChart(2, 3).subsets[0].color);
    Intit(c, ex, false, true, Sequence({0.5}));
    EXPECT_EQ(c.subTitle, "Given sub");
}

TEST(CheckDiv, FlatAxisGetsManualBoundsAroundIt)
{
    ChartDocument c;
    c.subsets.resize(1);
    // The first three points don't count; X spreads, Y is flat to 0.04 %.
    c.subsets[0].x = {0, 1, 2, 3, 4, 5};
    c.subsets[0].y = {100, 200, 300, 5.0, 5.001, NullValue};
    c.points = 6;
    CheckDiv(c);
    EXPECT_EQ(c.xAxis.manualScale, 0);
    ASSERT_EQ(c.yAxis.manualScale, 1);
    // Hand calculation: d = (5.001 + 5) / 1000 = 0.010001.
    EXPECT_NEAR(c.yAxis.manualMax, 5.011001, 1e-12);
    EXPECT_NEAR(c.yAxis.manualMin, 4.989999, 1e-12);
    EXPECT_NEAR(c.yAxis.majorTick, 0.0050005, 1e-12);
    EXPECT_NEAR(c.yAxis.minorTick, 0.00250025, 1e-12);

    // Relative spread 0.0021 / 2.0021 = 0.00105, just above 0.001, counts as normal.
    ChartDocument d;
    d.subsets.resize(1);
    d.subsets[0].x = {0, 0, 0, 1, 2};
    d.subsets[0].y = {0, 0, 0, 1.0, 1.0021};
    d.points = 5;
    CheckDiv(d);
    EXPECT_EQ(d.yAxis.manualScale, 0);
    // A second subset can make the axis spread.
    d.subsets.push_back(Subset{});
    d.subsets[1].x = {9, 9, 9, 9, 9};
    d.subsets[1].y = {0, 0, 0, 1.0, 1.0};
    d.subsets[0].y = {0, 0, 0, 1.0, 1.0005};
    CheckDiv(d);
    EXPECT_EQ(d.yAxis.manualScale, 1); // 0.0005 / 2.0005 stays below 0.001
    EXPECT_EQ(d.xAxis.manualScale, 0);
}

TEST(Histogram, BarsAreOneSubsetEachWithTheirColoursAndMark)
{
    ChartDocument c = RichChart(3, 5);
    PlotExchange ex;
    ex.DefaultSubtitle = "sub";
    LayoutHistogram(c, ex, "OH Production", {{"R1", 2.5e-6}, {"R7", -1e-7}, {"R9", NullValue}});
    ASSERT_EQ(c.subsetCount(), 3);
    EXPECT_EQ(c.points, 1);
    EXPECT_EQ(c.plottingMethod, HistogramMethod);
    EXPECT_EQ(c.annotations[HistogramSlot].text, "Histogram");
    EXPECT_EQ(c.mainTitle, "OH Production");
    EXPECT_EQ(c.subsets[1].x[0], 2.0);
    EXPECT_EQ(c.subsets[1].y[0], -1e-7);
    EXPECT_EQ(c.subsets[2].y[0], NullValue);
    EXPECT_EQ(c.subsets[0].color, StandardColor(9)); // above 0
    EXPECT_EQ(c.subsets[1].color, StandardColor(12));
    EXPECT_EQ(c.subsets[2].color, StandardColor(12));
    EXPECT_EQ(c.pointLabels, (std::vector<std::vector<std::string>>{{"R1", "R7", "R9"}}));
    EXPECT_FALSE(ex.histogramLayout);
}
