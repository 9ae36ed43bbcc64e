#include "ChartTestSupport.h"

#include "charts/PlotExchange.h"
#include "shell/Error.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;
using namespace std::string_literals;

TEST(ChartStyle, RandomStylesStandardColoursAndReactionLabels)
{
    // Colour index round(8 r) half to even (0.5 -> 0, 1.5 -> 2, 6.5 -> 6), white 7 -> 9 and
    // grey 8 -> 12; point code round(10 r): 2.5 -> 2, 3.5 -> 4.
    const std::pair<double, int> colours[] = {{0.0, 0},    {0.0625, 0},  {0.1875, 2}, {0.8125, 6},
                                              {0.875, 9}, {0.9375, 12}, {0.999, 12}};
    for (auto [r, index] : colours) {
        EXPECT_EQ(RandomColorIndex(r), index) << r;
    }
    EXPECT_EQ(
        (std::vector<int>{RandomPointCode(0.25), RandomPointCode(0.35), RandomPointCode(0.99)}),
        (std::vector<int>{2, 4, 10}));
    EXPECT_EQ((std::vector<Color>{StandardColor(4), StandardColor(9), StandardColor(15),
                                  StandardColor(16)}),
              (std::vector<Color>{0x800000, 0x0000FF, 0xFFFFFF, 0}));

    // "R" + number + ",", the comma at 1-based position 6 at the latest.
    for (const char* yes : {"R12,H+O2=OH+O", "  R 7 ,CH4+M", "R1234,X"}) {
        EXPECT_TRUE(IsReactionLabel(yes)) << yes;
    }
    for (const char* no : {"R12345,X", "Rate,X", "r12,X", "R12 H+O2", "R,X", ""}) {
        EXPECT_FALSE(IsReactionLabel(no)) << no;
    }
    EXPECT_EQ(SplitReactionTail(std::string(50, 'a') + "bc"),
              std::make_pair(std::string(48, 'a'), std::string("aabc")));
    EXPECT_EQ(SplitReactionTail(std::string(48, 'z')),
              std::make_pair(std::string(48, 'z'), std::string("Empty")));
}

TEST(ChartColours, MonochromeKeepsTheColoursAndGivesThemBack)
{
    ChartDocument c = RichChart(3, 2);
    const ChartDocument colour = c;
    c.Monochr();
    const ChartColors& k = colour.colors;
    EXPECT_EQ(c.ColorBackup,
              (std::vector<Color>{k.deskForeground, k.deskBackground, k.graphForeground,
                                  k.graphBackground, k.shadow, colour.annotations[0].color,
                                  colour.subsets[0].color, colour.subsets[1].color,
                                  colour.subsets[2].color}));
    EXPECT_EQ(
        (std::vector<Color>{c.colors.graphForeground, c.colors.graphBackground,
                            c.annotations[100].color, c.subsets[0].color, c.subsets[2].color}),
        (std::vector<Color>{0, 0xFFFFFF, 0, 0, 0}));
    c.Monochr(); // a second switch must not lose the stored colours
    c.PlotCol();
    EXPECT_TRUE(c.COLORBOOLTT());
    EXPECT_EQ(Props(c), InOneAnnotationColour(colour));
    EXPECT_THROW(c.colorBackupSlot(0), zarvion::Error);
}

TEST(Intit, BuildsTheChartFromTheExchange)
{
    ChartDocument c = RichChart(4, 3);
    c.xAxis.manualScale = 1;
    PlotExchange ex;
    ex.SubsetCount = 2;
    ex.PointCount = 6;
    ex.ChartDataBuffer = {{0, 1, 2, 3, 4, 5},
                          {0, 10, std::nan(""), 30, 40, 50},
                          {0.5, 1.5, 2.5, 3.5, 4.5, 5.5},
                          {0, -1, -2, -3, NullValue, -5}};
    ex.SubsetLabelBuffer = {"OH", "H2O"};
    ex.PlotTitles[1] = "Main";
    ex.PlotTitles[3] = "Time (sec)";
    ex.DefaultSubtitle = "Default sub";
    Intit(c, ex, false, false, Sequence({0.5, 0.25, 0.875, 0.05}));
    ASSERT_EQ(c.subsetCount(), 2);
    EXPECT_EQ(std::tuple(c.points, c.subsets[0].label, c.xAxis.manualScale),
              std::tuple(6, "OH"s, 0));
    EXPECT_EQ(c.subsets[0].y, (Values{0, 10, NullValue, 30, 40, 50})); // NaN isn't a value
    EXPECT_EQ(c.subsets[1].x, ex.ChartDataBuffer[2]);
    EXPECT_EQ(c.subsets[1].y, ex.ChartDataBuffer[3]);
    EXPECT_EQ(Titles(c), (Strings{"Main", "Default sub", "Time (sec)", "Y-Axis"}));
    EXPECT_EQ(c.annotations[0].text, "first note"); // slot 0 isn't cleared
    for (int slot : {1, 100, 101, 300}) {
        EXPECT_TRUE(c.annotations[slot].isFree()) << slot;
    }
    // Colour from r, point code from the next number: 0.5 -> red (4), 0.25 -> 2;
    // 0.875 -> light blue (9), 0.05 -> 0.
    EXPECT_EQ(ColourAndSymbol(c.subsets[0]), std::make_pair(StandardColor(4), 2));
    EXPECT_EQ(ColourAndSymbol(c.subsets[1]), std::make_pair(StandardColor(9), 0));

    // Skipped titles and a histogram leave titles and styles; a given subtitle wins.
    c = RichChart(2, 3);
    ex.PlotTitles[2] = "Given sub";
    Intit(c, ex, true, true, Sequence({0.5}));
    EXPECT_EQ(c.mainTitle, "Ignition of H2/O2");
    EXPECT_EQ(c.subsets[0].color, RichChart(2, 3).subsets[0].color);
    Intit(c, ex, false, true, Sequence({0.5}));
    EXPECT_EQ(c.subTitle, "Given sub");
}

TEST(CheckDiv, FlatAxisGetsManualBoundsAroundIt)
{
    // The first three points don't count; X spreads, Y is flat to 0.01 %.
    ChartDocument c;
    c.subsets = {Curve({0, 1, 2, 3, 4, 5}, {100, 200, 300, 5.0, 5.001, NullValue})};
    CheckDiv(c);
    EXPECT_EQ(c.xAxis.manualScale, 0);
    ASSERT_EQ(c.yAxis.manualScale, 1);
    // Hand calculation: d = (5.001 + 5) / 1000 = 0.010001; bounds +-d, ticks d/2 and d/4.
    EXPECT_NEAR(c.yAxis.manualMax, 5.011001, 1e-12);
    EXPECT_NEAR(c.yAxis.manualMin, 4.989999, 1e-12);
    EXPECT_NEAR(c.yAxis.majorTick, 0.0050005, 1e-12);
    EXPECT_NEAR(c.yAxis.minorTick, 0.00250025, 1e-12);

    // Relative spread 0.0021 / 2.0021 = 0.00105, just above 0.001, counts as normal.
    ChartDocument d;
    d.subsets = {Curve({0, 0, 0, 1, 2}, {0, 0, 0, 1.0, 1.0021})};
    CheckDiv(d);
    EXPECT_EQ(d.yAxis.manualScale, 0);
    // Over two subsets 0.0005 / 2.0005 stays below 0.001; the X of both together spreads.
    d.subsets = {Curve({0, 0, 0, 1, 2}, {0, 0, 0, 1.0, 1.0005}),
                 Curve({9, 9, 9, 9, 9}, {0, 0, 0, 1.0, 1.0})};
    CheckDiv(d);
    EXPECT_EQ(d.yAxis.manualScale, 1);
    EXPECT_EQ(d.xAxis.manualScale, 0);
}

TEST(Histogram, BarsAreOneSubsetEachWithTheirColoursAndMark)
{
    ChartDocument c = RichChart(3, 5);
    PlotExchange ex;
    LayoutHistogram(c, ex, "OH Production", {{"R1", 2.5e-6}, {"R7", -1e-7}, {"R9", NullValue}});
    ASSERT_EQ(c.subsetCount(), 3);
    EXPECT_EQ(
        std::tuple(c.points, c.plottingMethod, c.annotations[HistogramSlot].text, c.mainTitle),
        std::tuple(1, HistogramMethod, "Histogram"s, "OH Production"s));
    EXPECT_EQ((Values{c.subsets[0].x[0], c.subsets[1].x[0], c.subsets[2].x[0]}), (Values{1, 2, 3}));
    EXPECT_EQ((Values{c.subsets[0].y[0], c.subsets[1].y[0], c.subsets[2].y[0]}),
              (Values{2.5e-6, -1e-7, NullValue}));
    // Blue (9) for a bar above 0, else bright red (12).
    EXPECT_EQ((std::vector<Color>{c.subsets[0].color, c.subsets[1].color, c.subsets[2].color}),
              (std::vector<Color>{StandardColor(9), StandardColor(12), StandardColor(12)}));
    EXPECT_EQ(c.pointLabels, (std::vector<Strings>{{"R1", "R7", "R9"}}));
    EXPECT_FALSE(ex.histogramLayout);
}
