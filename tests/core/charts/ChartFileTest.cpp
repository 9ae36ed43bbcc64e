#include "ChartTestSupport.h"

#include "charts/ChartFile.h"
#include "shell/TextFile.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;

namespace {

ChartProperties props(const ChartDocument& c)
{
    return static_cast<const ChartProperties&>(c);
}

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

TEST(ChartFile, RoundTripIsExactForOneTenAndElevenSubsets)
{
    for (int count : {1, 10, 11}) {
        const ChartDocument original = RichChart(count, 37, static_cast<unsigned>(count));
        const ChartDocument loaded = saveAndLoad(original, "rt" + std::to_string(count));
        EXPECT_EQ(props(loaded), props(original)) << count << " subsets";
    }
}

TEST(ChartFile, HistogramAndPointLabelsSurvive)
{
    ChartDocument c = RichChart(3, 4);
    c.plottingMethod = HistogramMethod;
    c.annotations[HistogramSlot].text = HistogramText;
    c.pointLabels = {{"", "R1", "R7", "R12"}, {"a", "b", "c", "d"}, {"x"}};
    const ChartDocument loaded = saveAndLoad(c, "histogram");
    EXPECT_EQ(loaded.plottingMethod, HistogramMethod);
    EXPECT_EQ(loaded.annotations[HistogramSlot].text, HistogramText);
    EXPECT_EQ(loaded.pointLabels, c.pointLabels);
    EXPECT_EQ(props(loaded), props(c));
}

TEST(ChartFile, MonochromeChartIsStoredWithItsTrueColoursAndReopensInColour)
{
    const ChartDocument colour = RichChart(4, 6);
    ChartDocument mono = colour;
    mono.Monochr();
    ASSERT_FALSE(mono.COLORBOOLTT());
    ASSERT_EQ(mono.subsets[2].color, 0u);
    ASSERT_EQ(mono.colors.deskBackground, 0xFFFFFFu);

    const ChartDocument loaded = saveAndLoad(mono, "mono");
    EXPECT_TRUE(loaded.COLORBOOLTT());
    // Back in colour, every user annotation slot takes the one annotation colour of slot 0.
    ChartDocument expected = colour;
    for (int slot = 0; slot <= LastUserAnnotationSlot; ++slot) {
        expected.annotations[slot].color = colour.annotations[0].color;
    }
    EXPECT_EQ(props(loaded), props(expected));
    // Storing did not change the open chart's look.
    EXPECT_FALSE(mono.COLORBOOLTT());
    EXPECT_EQ(mono.subsets[2].color, 0u);
}

TEST(ChartFile, SelectedSubsetIsStoredWithItsOwnColour)
{
    ChartDocument c = RichChart(2, 3);
    const ChartDocument before = c;
    c.selected = {true, 1, c.subsets[1].color};
    c.subsets[1].color = 0xFF00FF; // selection colour on screen
    const ChartDocument loaded = saveAndLoad(c, "selected");
    EXPECT_EQ(props(loaded), props(before));
}

TEST(ChartFile, BadFilesLeaveTheChartAsItWas)
{
    const auto dir = TempDir("bad");
    const ChartDocument good = RichChart(2, 5);
    const std::string valid = ChartToJson(good);
    std::vector<std::string> bad = {
        "",
        "not json",
        valid.substr(0, valid.size() / 2),
        R"({"format":"zarvion-chart","version":2})",
        R"({"format":"other","version":1})",
    };
    // Structurally broken variants of a valid file.
    auto replaced = [&](const std::string& from, const std::string& to) {
        std::string s = valid;
        const auto at = s.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        s.replace(at, from.size(), to);
        return s;
    };
    bad.push_back(replaced("\"points\": 5", "\"points\": 6"));       // count mismatch
    bad.push_back(replaced("\"points\": 5", "\"points\": -1"));
    bad.push_back(replaced("\"textSize\": 2", "\"textSize\": 3"));
    bad.push_back(replaced("\"textSize\": 2", "\"textSize\": 2.5"));
    bad.push_back(replaced("\"slot\": 0", "\"slot\": 301"));
    bad.push_back(replaced("\"gridLines\": true", "\"gridLines\": 1"));
    bad.push_back(replaced("\"shadow\": 3355443", "\"shadow\": 16777216"));

    ChartDocument target = RichChart(3, 2, 99);
    const ChartProperties before = props(target);
    for (std::size_t i = 0; i < bad.size(); ++i) {
        const auto path = dir / ("bad" + std::to_string(i) + ".pg");
        std::ofstream(path, std::ios::binary) << bad[i];
        const auto r = OPENPLOT(target, path);
        EXPECT_TRUE(r.failed) << i;
        EXPECT_EQ(props(target), before) << i;
        EXPECT_TRUE(target.hasFile);
    }
    EXPECT_TRUE(OPENPLOT(target, dir / "missing.pg").failed);
    EXPECT_EQ(props(target), before);
}

TEST(ChartFile, BlankChartMayNotClaimMillionsOfPoints)
{
    ChartDocument blank;
    blank.points = 1000;
    EXPECT_TRUE(ChartFromJson(ChartToJson(blank)).has_value());
    blank.points = 2000000;
    EXPECT_FALSE(ChartFromJson(ChartToJson(blank)).has_value());
}

TEST(ChartFile, EmptyAnnotationTextBecomesAFreeSlotAndNullPointsAreAbsent)
{
    ChartDocument c = RichChart(1, 2);
    c.annotations[5] = Annotation{"", 3.0, 4.0, 2, 0x123456};
    c.subsets[0].x[1] = std::numeric_limits<double>::infinity();
    const ChartDocument loaded = saveAndLoad(c, "empty-slot");
    EXPECT_TRUE(loaded.annotations[5].isFree());
    EXPECT_EQ(loaded.annotations[5].type, 0);
    EXPECT_EQ(loaded.subsets[0].x[1], NullValue);
}

TEST(ChartFile, SaveNeedsAPathAndSaveAsSetsTheFlags)
{
    const auto dir = TempDir("save");
    ChartDocument c = RichChart(1, 3);
    c.MustSave();
    EXPECT_FALSE(SaveTT(c)); // no path yet: the caller runs Save as
    EXPECT_TRUE(c.mustSave);

    c.selected = {true, 0, c.subsets[0].color};
    c.subsets[0].color = 0xFF00FF;
    ASSERT_TRUE(SaveGraphTT(c, dir / "a.pg"));
    EXPECT_FALSE(c.selected.active);
    EXPECT_NE(c.subsets[0].color, 0xFF00FFu);
    EXPECT_EQ(c.ChartPath, (dir / "a.pg").string());
    EXPECT_FALSE(c.mustSave);
    EXPECT_TRUE(c.hasFile);

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
