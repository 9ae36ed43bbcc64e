#include "ChartTestSupport.h"

#include "charts/ChartText.h"
#include "charts/TemporaryChart.h"

#include <gtest/gtest.h>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;
using namespace std::string_literals;

namespace {

//! A profile of n points, X = p * 1E-4 and Y = slope * p; `add`: Ctrl with a chart open.
ProfileRequest profile(int n, double slope, const std::string& title, const std::string& label,
                       bool add = false)
{
    const auto size = static_cast<std::size_t>(n);
    ProfileRequest r{n + 1, {Values(size), Values(size)}, title, label, add, add, 1.0, false};
    for (int p = 0; p < n; ++p) {
        r.xy[0][p] = p * 1e-4;
        r.xy[1][p] = slope * p;
    }
    return r;
}

//! Plots on the temporary chart with 0.5 for every random number.
PlotProfileResult plot(ChartDocument& c, ProfileRequest r)
{
    ChartWindowState st;
    PlotExchange ex;
    return PlotProfile(c, st, ex, r, Sequence({0.5}));
}

const std::tm SomeTime = [] {
    std::tm t{};
    t.tm_year = 120;
    t.tm_mday = 1;
    return t;
}();

} // namespace

TEST(PlotProfile, NewPathReplacesTheContentAndAddPathAddsASubset)
{
    ChartDocument c = RichChart(3, 4);
    ChartWindowState st;
    st.textBox.visible = st.readout.enabled = true;
    PlotExchange ex;
    ex.DefaultSubtitle = "H2/O2, 1 atm";
    auto req = profile(5, 2.0, "OH", "Mole fraction OH");
    req.exists = true; // a chart exists, but without Ctrl it is replaced
    req.timeScale = 1000.0;
    auto r = PlotProfile(c, st, ex, req, Sequence({0.5, 0.3}));
    EXPECT_FALSE(r.failed || r.added);
    ASSERT_EQ(c.subsetCount(), 1);
    EXPECT_EQ(c.points, 5); // the count handed over is points plus one
    EXPECT_EQ(c.subsets[0].y, (Values{0, 2, 4, 6, 8}));
    EXPECT_EQ(Titles(c), (Strings{"OH", "Mole fraction OH", "Time (sec) x 1.0E+03", "Y-Axis"}));
    EXPECT_EQ(ColourAndSymbol(c.subsets[0]), std::pair(StandardColor(4), 3)); // 0.5, 0.3
    EXPECT_EQ(std::tuple(c.pointSize, c.annotations[101].text, ex.PlotTitles[1]),
              std::tuple(+PointMedium, "Empty"s, "OH"s));
    EXPECT_FALSE(st.textBox.visible || st.readout.enabled);

    // Ctrl with a chart open adds: point code from the first number, colour from the next
    // (0.25 -> 2, 0.5 -> red); the shorter old subset is padded.
    auto second = profile(6, -1.0, "B", "second", true);
    second.logTime = true;
    second.timeScale = 0.00125;
    r = PlotProfile(c, st, ex, second, Sequence({0.25, 0.5}));
    EXPECT_TRUE(r.added);
    EXPECT_FALSE(second.addRequested);
    ASSERT_EQ(c.subsetCount(), 2);
    EXPECT_EQ(c.points, 6);
    EXPECT_EQ(c.subsets[0].x[5], NullValue);
    EXPECT_EQ(c.subsets[1].y, (Values{0, -1, -2, -3, -4, -5}));
    EXPECT_EQ(c.subsets[1].label, "second");
    EXPECT_EQ(ColourAndSymbol(c.subsets[1]), std::pair(StandardColor(4), 2));
    // Adding leaves the main title; the subtitle goes back to the default.
    EXPECT_EQ(Titles(c), (Strings{"OH", "H2/O2, 1 atm", "Log10 Time x 1.25E-03 (sec)", "Y-Axis"}));

    // Ctrl without a temporary chart takes the new path.
    auto lone = profile(3, 1.0, "D", "fourth");
    lone.addRequested = true;
    EXPECT_FALSE(plot(c, lone).added);
    EXPECT_EQ(c.subsetCount(), 1);
    EXPECT_EQ(c.subsets[0].label, "fourth");
}

TEST(PlotProfile, SteadyStateIntervalAndLongReactionTitles)
{
    // A thick line without symbols: the new path looks for the words in the label, the add
    // path wants the exact title.
    ChartDocument c;
    plot(c, profile(3, 1.0, "T", "Temperature, Steady State Interval"));
    plot(c, profile(3, 1.0, "Steady State Interval", "interval", true));
    plot(c, profile(3, 1.0, "Steady State Interval x", "other", true));
    ASSERT_EQ(c.subsetCount(), 3);
    for (int k : {0, 1}) {
        EXPECT_EQ(std::pair(c.subsets[k].lineType, c.subsets[k].pointType),
                  std::pair(ThickLine, NoSymbols));
    }
    EXPECT_NE(c.subsets[2].pointType, NoSymbols);

    // A title past 48 characters goes into the overflow pair of an "R" label's subset.
    const std::string eq = "CH3+HO2<=>CH3O+OH (a long equation of sixty-odd characters)";
    ChartDocument d;
    plot(d, profile(3, 1.0, eq, "R12,CH3+HO2"));
    plot(d, profile(3, 1.0, "H+O2=OH+O", "R1,H+O2", true));
    plot(d, profile(3, 1.0, eq, "OH", true)); // no "R": no tail
    EXPECT_EQ(SlotTexts(d, 101, 106),
              (Strings{eq.substr(0, 48), eq.substr(48), "H+O2=OH+O", "Empty", "Empty", "Empty"}));
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
    EXPECT_EQ(SlotTexts(c, 101, 106), (Strings{"a0", "b0", "a2", "Empty", "Empty", "Empty"}));
    ASSERT_EQ(c.ColorBackup.size(), 8u);
    c.PlotCol();
    EXPECT_EQ(c.subsets, (std::vector<Subset>{before.subsets[0], before.subsets[2]}));

    SubsetDel(c, st, 0);
    const auto m = SubsetDel(c, st, 0);
    EXPECT_EQ(std::pair(m.text, m.style),
              std::pair("The chart contains only one profile; it cannot be deleted."s,
                        +zarvion::shell::StyleWarning));
    EXPECT_EQ(c.subsetCount(), 1);
}

TEST(SubsetClipboard, CutCopyPasteMoveSubsetsBetweenCharts)
{
    ChartDocument source = RichChart(2, 5);
    // Values of nine digits or fewer come through the block exactly; the absent point is dropped.
    source.subsets[0] = Curve({1, NullValue, 3, 4, 5}, {0.5, 2, -3.25, 1e-5, 12345678.9});
    source.subsets[0].label = "R5,start";
    const std::string longEq(70, 'q');
    SetOverflow(source, 0, longEq.substr(0, 48), longEq.substr(48));
    const Subset own = source.subsets[0];
    ChartWindowState st;
    EXPECT_FALSE(SAVESS(source, st, "a", SomeTime).done); // nothing selected
    SubSetSelect(source, st, 0);
    const auto copy = SAVESS(source, st, "a", SomeTime);
    ASSERT_TRUE(copy.done);
    EXPECT_FALSE(source.selected.active);
    EXPECT_EQ(source.subsets, (std::vector<Subset>{own, RichChart(2, 5).subsets[1]}));

    ChartDocument target = RichChart(1, 9);
    PlotExchange ex;
    target.mustSave = false;
    EXPECT_TRUE(PASTESS(target, ex, copy.clipboardText, Sequence({0.5})).empty());
    ASSERT_EQ(target.subsetCount(), 2);
    EXPECT_EQ(target.points, 9); // the shorter pasted subset is padded
    EXPECT_EQ(target.subsets[1].label, "R5,start");
    EXPECT_EQ(SlotTexts(target, 103, 104), (Strings{longEq.substr(0, 48), longEq.substr(48)}));
    const double n = NullValue;
    EXPECT_EQ(target.subsets[1].y, (Values{0.5, -3.25, 1e-5, 12345678.9, n, n, n, n, n}));
    EXPECT_TRUE(target.mustSave);
    // A blank chart (one subset of one point) takes the pasted subset as its first; a
    // monochrome chart draws it black and keeps its colour (0.5 -> red) for later.
    ChartDocument blank;
    blank.subsets.resize(1);
    blank.setPoints(1);
    blank.Monochr();
    EXPECT_TRUE(PASTESS(blank, ex, copy.clipboardText, Sequence({0.25, 0.5})).empty());
    EXPECT_EQ(std::tuple(blank.subsetCount(), blank.points, blank.subsets[0].label,
                         blank.subsets[0].color, blank.ColorBackup.size()),
              std::tuple(1, 4, "R5,start"s, 0u, 7u));
    blank.PlotCol();
    EXPECT_EQ(blank.subsets[0].color, StandardColor(4));

    SubSetSelect(source, st, 1);
    EXPECT_TRUE(CUTSS(source, st, "a", SomeTime).done);
    EXPECT_EQ(source.subsetCount(), 1);
    SubSetSelect(source, st, 0);
    EXPECT_EQ(CUTSS(source, st, "a", SomeTime).message.text, LastProfileMessage);
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
    // Yes/No/Cancel 3 + question icon 32.
    EXPECT_EQ(std::tuple(q.text, q.style, q.title),
              std::tuple("Do you want to save changes to /data/run1.pg?"s, 35, "ZARVION"s));
    EXPECT_TRUE(SaveQuestion(c, " temporary chart ").empty());
    c.ChartPath.clear(); // never saved: the question names the window
    EXPECT_EQ(SaveQuestion(c, "Chart 2").text, "Do you want to save changes to Chart 2?");

    EXPECT_FALSE(HasPlottableValues({{1, NullValue}, {NullValue, 2}}));
    EXPECT_TRUE(HasPlottableValues({{1, 3}, {NullValue, 2}}));
    EXPECT_EQ(EmptyProfileMessage("OH", false),
              "You are attempting to plot the function 'OH' where all values are zero.");
    EXPECT_EQ(EmptyProfileMessage("OH", true),
              "You are attempting to plot the function 'OH' where all values are zero or "
              "logarithms of negative numbers. ");
    EXPECT_EQ((Strings{TimeAxisLabel(1.0, false), TimeAxisLabel(1.0, true),
                       TimeAxisLabel(12345.0, false)}),
              (Strings{"Time (sec)", "Log10 Time (sec)", "Time (sec) x 1.235E+04"}));
}
