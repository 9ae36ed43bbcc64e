#include "ChartTestSupport.h"

#include "charts/ChartText.h"
#include "charts/TemporaryChart.h"

#include <gtest/gtest.h>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;

namespace {

ProfileRequest profile(int n, double slope, const std::string& title, const std::string& label)
{
    ProfileRequest r;
    r.pointCount = n + 1;
    r.xy.assign(2, std::vector<double>(static_cast<std::size_t>(n)));
    for (int p = 0; p < n; ++p) {
        r.xy[0][p] = p * 1e-4;
        r.xy[1][p] = slope * p;
    }
    r.title = title;
    r.label = label;
    return r;
}

std::tm someTime()
{
    std::tm t{};
    t.tm_year = 120;
    t.tm_mday = 1;
    return t;
}

} // namespace

TEST(PlotProfile, NewPathReplacesTheContentAndLabelsTheAxes)
{
    ChartDocument c = RichChart(3, 4);
    ChartWindowState st;
    st.textBox.visible = true;
    st.readout.enabled = true;
    PlotExchange ex;
    ex.DefaultSubtitle = "H2/O2, 1 atm";
    auto req = profile(5, 2.0, "OH", "Mole fraction OH");
    req.exists = true; // a chart exists, but without Ctrl it is replaced
    req.timeScale = 1000.0;
    const auto r = PlotProfile(c, st, ex, req, Sequence({0.5, 0.3}));
    EXPECT_FALSE(r.failed);
    EXPECT_FALSE(r.added);
    ASSERT_EQ(c.subsetCount(), 1);
    EXPECT_EQ(c.points, 5); // the count handed over is points plus one
    EXPECT_EQ(c.subsets[0].y[3], 6.0);
    EXPECT_EQ(c.mainTitle, "OH");
    EXPECT_EQ(c.subTitle, "Mole fraction OH");
    EXPECT_EQ(c.xAxisLabel, "Time (sec) x 1.0E+03");
    EXPECT_EQ(c.yAxisLabel, "Y-Axis");
    EXPECT_EQ(c.pointSize, PointMedium);
    EXPECT_EQ(c.annotations[101].text, "Empty");
    EXPECT_EQ(c.subsets[0].color, StandardColor(4));
    EXPECT_EQ(c.subsets[0].pointType, 3);
    EXPECT_FALSE(st.textBox.visible);
    EXPECT_FALSE(st.readout.enabled);
    EXPECT_EQ(ex.PlotTitles[1], "OH");
}

TEST(PlotProfile, CtrlAddsOnlyWhenAChartExists)
{
    ChartDocument c;
    ChartWindowState st;
    PlotExchange ex;
    ex.DefaultSubtitle = "default";
    auto first = profile(4, 1.0, "A", "first");
    first.addRequested = true; // Ctrl with no temporary chart: the new path
    PlotProfile(c, st, ex, first, Sequence({0.1}));
    EXPECT_FALSE(first.addRequested);
    ASSERT_EQ(c.subsetCount(), 1);

    auto second = profile(6, -1.0, "B", "second");
    second.exists = true;
    second.addRequested = true;
    second.logTime = true;
    second.timeScale = 0.00125;
    // Point code from the first number, colour from the next: 0.25 -> 2, 0.5 -> red.
    const auto r = PlotProfile(c, st, ex, second, Sequence({0.25, 0.5}));
    EXPECT_TRUE(r.added);
    EXPECT_FALSE(second.addRequested);
    ASSERT_EQ(c.subsetCount(), 2);
    EXPECT_EQ(c.points, 6);
    EXPECT_EQ(c.subsets[0].x[4], NullValue); // the shorter old subset is padded
    EXPECT_EQ(c.subsets[1].y[5], -5.0);
    EXPECT_EQ(c.subsets[1].label, "second");
    EXPECT_EQ(c.subsets[1].pointType, 2);
    EXPECT_EQ(c.subsets[1].color, StandardColor(4));
    EXPECT_EQ(c.mainTitle, "A"); // adding leaves the main title
    EXPECT_EQ(c.subTitle, "default");
    EXPECT_EQ(c.xAxisLabel, "Log10 Time x 1.25E-03 (sec)");

    // Without Ctrl the three-subset chart becomes a one-subset chart.
    auto third = profile(3, 1.0, "C", "third");
    third.exists = true;
    third.addRequested = true;
    PlotProfile(c, st, ex, third, Sequence({0.4}));
    auto fourth = profile(3, 1.0, "D", "fourth");
    fourth.exists = true;
    PlotProfile(c, st, ex, fourth, Sequence({0.4}));
    EXPECT_EQ(c.subsetCount(), 1);
    EXPECT_EQ(c.subsets[0].label, "fourth");
}

TEST(PlotProfile, SteadyStateIntervalIsAThickLineWithoutSymbols)
{
    ChartDocument c;
    ChartWindowState st;
    PlotExchange ex;
    auto req = profile(3, 1.0, "T", "Temperature, Steady State Interval");
    PlotProfile(c, st, ex, req, Sequence({0.5}));
    EXPECT_EQ(c.subsets[0].lineType, ThickLine);
    EXPECT_EQ(c.subsets[0].pointType, NoSymbols);

    auto add = profile(3, 1.0, "Steady State Interval", "interval");
    add.exists = add.addRequested = true;
    PlotProfile(c, st, ex, add, Sequence({0.5}));
    EXPECT_EQ(c.subsets[1].lineType, ThickLine);
    EXPECT_EQ(c.subsets[1].pointType, NoSymbols);

    auto other = profile(3, 1.0, "Steady State Interval x", "other");
    other.exists = other.addRequested = true;
    PlotProfile(c, st, ex, other, Sequence({0.5}));
    EXPECT_NE(c.subsets[2].pointType, NoSymbols); // the add path wants the exact title
}

TEST(PlotProfile, LongReactionTitleGoesIntoTheOverflowSlots)
{
    ChartDocument c;
    ChartWindowState st;
    PlotExchange ex;
    const std::string eq = "CH3+HO2<=>CH3O+OH (a long equation of sixty-odd characters)";
    auto req = profile(3, 1.0, eq, "R12,CH3+HO2");
    PlotProfile(c, st, ex, req, Sequence({0.5}));
    EXPECT_EQ(c.annotations[101].text, eq.substr(0, 48));
    EXPECT_EQ(c.annotations[102].text, eq.substr(48));

    auto add = profile(3, 1.0, "H+O2=OH+O", "R1,H+O2");
    add.exists = add.addRequested = true;
    PlotProfile(c, st, ex, add, Sequence({0.5}));
    EXPECT_EQ(c.annotations[103].text, "H+O2=OH+O");
    EXPECT_EQ(c.annotations[104].text, "Empty");
    // A label that doesn't begin with "R" has no tail.
    auto plain = profile(3, 1.0, eq, "OH");
    plain.exists = plain.addRequested = true;
    PlotProfile(c, st, ex, plain, Sequence({0.5}));
    EXPECT_EQ(c.annotations[105].text, "Empty");
}

TEST(SubSetAdd, BlankChartTakesItsFirstSubsetAndMonochromeGetsBlack)
{
    ChartDocument c;
    c.subsets.resize(1);
    c.setPoints(1); // one subset of one point counts as empty
    c.Monochr();
    PlotExchange ex;
    ex.AddLabelBuffer = {"pasted"};
    ex.AddDataBuffer = {{1, 2, 3}, {4, 5, 6}};
    ex.AddSubsetCount = 1;
    ex.AddPointCount = 3;
    SubSetAdd(c, ex, "Empty", "Empty", Sequence({0.25, 0.5}));
    ASSERT_EQ(c.subsetCount(), 1);
    EXPECT_EQ(c.points, 3);
    EXPECT_EQ(c.subsets[0].label, "pasted");
    EXPECT_EQ(c.subsets[0].color, 0u);
    ASSERT_EQ(c.ColorBackup.size(), 7u);
    EXPECT_EQ(c.colorBackupSlot(7), StandardColor(4));
    c.PlotCol();
    EXPECT_EQ(c.subsets[0].color, StandardColor(4));
}

TEST(SubsetDel, ShiftsLabelsStylesOverflowAndBackupColours)
{
    ChartDocument c = RichChart(3, 2);
    SetOverflow(c, 0, "a0", "b0");
    SetOverflow(c, 1, "a1", "b1");
    SetOverflow(c, 2, "a2", "Empty");
    const ChartDocument before = c;
    c.Monochr();
    ChartWindowState st;
    st.editItemsEnabled = true;
    EXPECT_TRUE(SubsetDel(c, st, 5).empty()); // out of range: nothing
    EXPECT_FALSE(st.editItemsEnabled);
    EXPECT_EQ(c.subsetCount(), 3);

    EXPECT_TRUE(SubsetDel(c, st, 1).empty());
    ASSERT_EQ(c.subsetCount(), 2);
    EXPECT_EQ(c.subsets[1].label, before.subsets[2].label);
    EXPECT_EQ(c.subsets[1].lineType, before.subsets[2].lineType);
    EXPECT_EQ(c.subsets[1].y, before.subsets[2].y);
    EXPECT_EQ(c.annotations[101].text, "a0");
    EXPECT_EQ(c.annotations[103].text, "a2");
    EXPECT_EQ(c.annotations[104].text, "Empty");
    EXPECT_EQ(c.annotations[105].text, "Empty");
    EXPECT_EQ(c.annotations[106].text, "Empty");
    ASSERT_EQ(c.ColorBackup.size(), 8u);
    c.PlotCol();
    EXPECT_EQ(c.subsets[0].color, before.subsets[0].color);
    EXPECT_EQ(c.subsets[1].color, before.subsets[2].color);

    SubsetDel(c, st, 0);
    const auto m = SubsetDel(c, st, 0);
    EXPECT_EQ(m.text, "The chart contains only one profile; it cannot be deleted.");
    EXPECT_EQ(m.style, zarvion::shell::StyleWarning);
    EXPECT_EQ(c.subsetCount(), 1);
}

TEST(SubsetClipboard, CutCopyPasteMoveSubsetsBetweenCharts)
{
    ChartDocument source = RichChart(2, 5);
    const std::string longEq(70, 'q');
    SetOverflow(source, 0, longEq.substr(0, 48), longEq.substr(48));
    source.subsets[0].label = "R5,start";
    ChartWindowState st;
    EXPECT_FALSE(SAVESS(source, st, "a", someTime()).done); // nothing selected

    SubSetSelect(source, st, 0);
    const auto copy = SAVESS(source, st, "a", someTime());
    ASSERT_TRUE(copy.done);
    EXPECT_FALSE(source.selected.active);
    EXPECT_EQ(source.subsets[0].color, RichChart(2, 5).subsets[0].color);
    EXPECT_EQ(source.subsetCount(), 2);

    ChartDocument target = RichChart(1, 9);
    PlotExchange ex;
    EXPECT_TRUE(PASTESS(target, ex, copy.clipboardText, Sequence({0.5})).empty());
    ASSERT_EQ(target.subsetCount(), 2);
    EXPECT_EQ(target.points, 9); // the shorter pasted subset is padded
    EXPECT_EQ(target.subsets[1].label, "R5,start");
    EXPECT_EQ(OverflowTail(target, 1), longEq);
    // Present points keep their order; absent ones are left out (value to 9 digits).
    std::vector<double> expectedY;
    for (int p = 0; p < 5; ++p) {
        if (IsValue(source.subsets[0].x[p])) {
            expectedY.push_back(source.subsets[0].y[p]);
        }
    }
    for (std::size_t i = 0; i < expectedY.size(); ++i) {
        EXPECT_NEAR(target.subsets[1].y[i], expectedY[i], std::fabs(expectedY[i]) * 5e-9);
    }
    EXPECT_EQ(target.subsets[1].y[expectedY.size()], NullValue);
    EXPECT_TRUE(target.mustSave);

    SubSetSelect(source, st, 1);
    const auto cut = CUTSS(source, st, "a", someTime());
    EXPECT_TRUE(cut.done);
    EXPECT_EQ(source.subsetCount(), 1);
    SubSetSelect(source, st, 0);
    const auto refused = CUTSS(source, st, "a", someTime());
    EXPECT_EQ(refused.message.text, LastProfileMessage);
    EXPECT_FALSE(source.selected.active); // the selection ends all the same
    EXPECT_EQ(source.subsetCount(), 1);
    SubSetSelect(source, st, 0);
    EXPECT_EQ(DeleteSelectedSubset(source, st).text, LastProfileMessage);

    EXPECT_EQ(PASTESS(target, ex, "!only a comment", Sequence({0.5})).text,
              "There is no data on the clipboard to plot a profile.");
    EXPECT_EQ(target.subsetCount(), 2);
}

TEST(TemporaryChart, CaptionsQuestionsAndProducerChecks)
{
    EXPECT_TRUE(TemporaryChartExists({"a.pg", "Temporary Chart "}));
    EXPECT_FALSE(TemporaryChartExists({"Temporary Chart", "temporary chart "}));
    EXPECT_TRUE(IsLeftoverTemporaryChart("Temporary Chart"));
    EXPECT_FALSE(IsLeftoverTemporaryChart("Temporary Chart "));

    ChartDocument c;
    c.ChartPath = "/data/run1.pg";
    EXPECT_TRUE(SaveQuestion(c, "run1.pg").empty()); // unchanged
    c.MustSave();
    const auto q = SaveQuestion(c, "run1.pg");
    EXPECT_EQ(q.text, "Do you want to save changes to /data/run1.pg?");
    EXPECT_EQ(q.style, 35);
    EXPECT_EQ(q.title, "ZARVION");
    EXPECT_TRUE(SaveQuestion(c, " temporary chart ").empty());

    EXPECT_FALSE(HasPlottableValues({{1, NullValue}, {NullValue, 2}}));
    EXPECT_TRUE(HasPlottableValues({{1, 3}, {NullValue, 2}}));
    EXPECT_EQ(EmptyProfileMessage("OH", false),
              "You are attempting to plot the function 'OH' where all values are zero.");
    EXPECT_EQ(EmptyProfileMessage("OH", true),
              "You are attempting to plot the function 'OH' where all values are zero or "
              "logarithms of negative numbers. ");
    EXPECT_EQ(TimeAxisLabel(1.0, false), "Time (sec)");
    EXPECT_EQ(TimeAxisLabel(1.0, true), "Log10 Time (sec)");
    EXPECT_EQ(TimeAxisLabel(12345.0, false), "Time (sec) x 1.235E+04");
}
