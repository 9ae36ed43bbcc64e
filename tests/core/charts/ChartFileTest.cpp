#include "ChartTestSupport.h"

#include "charts/ChartFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;

namespace {

ChartDocument saveAndLoad(const ChartDocument& original, const std::string& name)
{
    const auto path = TempDir(name) / "chart.pg";
    EXPECT_TRUE(StoreChart(original, path));
    ChartDocument loaded;
    const auto r = OPENPLOT(loaded, path);
    EXPECT_FALSE(r.failed);
    EXPECT_EQ(r.caption, "chart.pg");
    EXPECT_EQ(loaded.ChartPath, path.string());
    return loaded;
}

} // namespace

TEST(ChartFile, RoundTripIsExact)
{
    for (int count : {1, 10, 11}) {
        const ChartDocument original = RichChart(count, 37, static_cast<unsigned>(count));
        EXPECT_EQ(Props(saveAndLoad(original, "rt" + std::to_string(count))), Props(original))
            << count << " subsets";
    }
    ChartDocument histogram = RichChart(3, 4);
    histogram.plottingMethod = HistogramMethod;
    histogram.annotations[HistogramSlot].text = HistogramText;
    histogram.pointLabels = {{"", "R1", "R7", "R12"}, {"a", "b", "c", "d"}, {"x"}};
    EXPECT_EQ(Props(saveAndLoad(histogram, "histogram")), Props(histogram));

    // A selected subset is stored with its own colour, not the selection colour on screen.
    ChartDocument selected = RichChart(2, 3);
    const ChartDocument before = selected;
    selected.selected = {true, 1, selected.subsets[1].color};
    selected.subsets[1].color = 0xFF00FF;
    EXPECT_EQ(Props(saveAndLoad(selected, "selected")), Props(before));

    // An emptied annotation comes back as a free slot, a point that isn't finite as NullValue.
    ChartDocument c = RichChart(1, 2);
    c.annotations[5] = Annotation{"", 3.0, 4.0, 2, 0x123456};
    c.subsets[0].x[1] = std::numeric_limits<double>::infinity();
    const ChartDocument loaded = saveAndLoad(c, "empty-slot");
    EXPECT_EQ(std::pair(loaded.annotations[5].isFree(), loaded.annotations[5].type),
              std::pair(true, 0));
    EXPECT_EQ(loaded.subsets[0].x[1], NullValue);
}

TEST(ChartFile, MonochromeChartIsStoredWithItsTrueColoursAndReopensInColour)
{
    const ChartDocument colour = RichChart(4, 6);
    ChartDocument mono = colour;
    mono.Monochr();
    ASSERT_EQ(mono.subsets[2].color, 0u);
    const ChartDocument loaded = saveAndLoad(mono, "mono");
    EXPECT_TRUE(loaded.COLORBOOLTT());
    EXPECT_EQ(Props(loaded), InOneAnnotationColour(colour));
    // Storing did not change the open chart's look.
    EXPECT_FALSE(mono.COLORBOOLTT());
    EXPECT_EQ(mono.subsets[2].color, 0u);
}

TEST(ChartFile, BadFilesLeaveTheChartAsItWas)
{
    const auto dir = TempDir("bad");
    const std::string valid = ChartToJson(RichChart(2, 5));
    std::vector<std::string> bad = {"", "not json", valid.substr(0, valid.size() / 2),
                                    R"({"format":"zarvion-chart","version":2})",
                                    R"({"format":"other","version":1})"};
    // Structurally broken variants of a valid file.
    const std::pair<const char*, const char*> edits[] = {
        {"\"points\": 5", "\"points\": 6"}, // count mismatch
        {"\"points\": 5", "\"points\": -1"},
        {"\"textSize\": 2", "\"textSize\": 3"},
        {"\"textSize\": 2", "\"textSize\": 2.5"},
        {"\"slot\": 0", "\"slot\": 301"},
        {"\"gridLines\": true", "\"gridLines\": 1"},
        {"\"shadow\": 3355443", "\"shadow\": 16777216"},
    };
    for (auto [from, to] : edits) {
        const auto at = valid.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        bad.push_back(std::string(valid).replace(at, std::string(from).size(), to));
    }
    ChartDocument target = RichChart(3, 2, 99);
    const ChartProperties before = Props(target);
    for (std::size_t i = 0; i < bad.size(); ++i) {
        const auto path = dir / ("bad" + std::to_string(i) + ".pg");
        std::ofstream(path, std::ios::binary) << bad[i];
        EXPECT_TRUE(OPENPLOT(target, path).failed) << i;
        EXPECT_EQ(Props(target), before) << i;
        EXPECT_TRUE(target.hasFile);
    }
    EXPECT_TRUE(OPENPLOT(target, dir / "missing.pg").failed);
    EXPECT_EQ(Props(target), before);

    // A blank chart may not claim millions of points.
    ChartDocument blank;
    blank.points = 1000;
    EXPECT_TRUE(ChartFromJson(ChartToJson(blank)).has_value());
    blank.points = 2000000;
    EXPECT_FALSE(ChartFromJson(ChartToJson(blank)).has_value());
}

TEST(ChartFile, SaveNeedsAPathAndSaveAsSetsTheFlags)
{
    const auto dir = TempDir("save");
    ChartDocument c = RichChart(1, 3);
    c.MustSave();
    EXPECT_FALSE(SaveTT(c)); // no path yet: the caller runs Save as
    EXPECT_TRUE(c.mustSave);

    const Color own = c.subsets[0].color;
    c.selected = {true, 0, own};
    c.subsets[0].color = 0xFF00FF;
    ASSERT_TRUE(SaveGraphTT(c, dir / "a.pg")); // the selection ends
    EXPECT_EQ(std::tuple(c.selected.active, c.subsets[0].color, c.ChartPath, c.mustSave, c.hasFile),
              std::tuple(false, own, (dir / "a.pg").string(), false, true));

    c.mainTitle = "changed";
    c.MustSave();
    ASSERT_TRUE(SaveTT(c));
    EXPECT_FALSE(c.mustSave);
    ChartDocument back;
    ASSERT_FALSE(OPENPLOT(back, dir / "a.pg").failed);
    EXPECT_EQ(back.mainTitle, "changed");

    c.ChartPath = (dir / "no-such-folder" / "b.pg").string();
    c.MustSave();
    EXPECT_FALSE(SaveTT(c));
    EXPECT_TRUE(c.mustSave);
}
