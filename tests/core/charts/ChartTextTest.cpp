#include "ChartTestSupport.h"

#include "charts/ChartText.h"
#include "shell/TextFile.h"

#include <gtest/gtest.h>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;

namespace {

const std::string DataDir = ZARVION_SOURCE_DIR "/tests/data/charts/";

//! Two subsets of three points with absent values, a reaction label and its tail "ABC".
ChartDocument smallChart()
{
    ChartDocument c;
    c.xAxisLabel = "Time (sec)";
    c.points = 3;
    c.subsets = {Curve({1.5, NullValue, 3.0}, {-0.00025, 7.0, 123456789.0}),
                 Curve({2.5e-3, 0.0, NullValue}, {-1.0, 1e-300, NullValue})};
    c.subsets[0].label = "R12,H+O2=OH+O";
    c.subsets[1].label = "OH";
    c.annotations[101].text = "ABC";
    return c;
}

} // namespace

TEST(ClipboardBlock, ExactLayoutAndReadingBack)
{
    std::tm t{};
    t.tm_year = 2014 - 1900;
    t.tm_mon = 2;
    t.tm_mday = 5;
    t.tm_hour = 9;
    t.tm_min = 7;
    t.tm_sec = 3;
    ChartDocument c = smallChart();
    const std::string block = zarvion::shell::ReadFile(DataDir + "subset_block.txt");
    EXPECT_EQ(ToClipFile(c, 0, "Temporary Chart ", t), block);
    // Subset k's tail comes from slots k + 101 and k + 102, unlike the reaction labels.
    c.annotations[102].text = "P2";
    c.annotations[103].text = "P3";
    const std::string second = ToClipFile(c, 1, "x", t);
    for (const char* line : {"\"Time (sec)\",\"OH\",\"P2P3\"\r\n",
                             "   0.00000000E+00  1.00000000E-300\r\n", "\r\n Empty  Empty \r\n"}) {
        EXPECT_NE(second.find(line), std::string::npos) << line;
    }
    EXPECT_EQ(ReadSubsetText(second).subset.y, (Values{-1.0, 1e-300})); // three-digit exponent

    // The point with an absent X is left out; the others keep their values to the nine digits
    // of the block, which these values have exactly. A short tail is piece 1 alone.
    const auto r = ReadSubsetText(block);
    ASSERT_TRUE(r.ok()) << r.message.text;
    EXPECT_EQ((Strings{r.subset.xAxisLabel, r.subset.label, r.subset.piece1, r.subset.piece2}),
              (Strings{"Time (sec)", "R12,H+O2=OH+O", "ABC", "Empty"}));
    EXPECT_EQ(r.subset.x, (Values{1.5, 3.0}));
    EXPECT_EQ(r.subset.y, (Values{-0.00025, 123456789.0}));
}

TEST(ClipboardBlock, PlainColumnsAndNothingToPaste)
{
    // Blanks and tabs separate, a third column is dropped, "!" lines are comments and lines
    // without two numbers are skipped.
    const auto two = ReadSubsetText("1 2\n3\t4\n\n5   6\n");
    ASSERT_TRUE(two.ok());
    EXPECT_EQ(two.subset.x, (Values{1, 3, 5}));
    EXPECT_EQ(two.subset.y, (Values{2, 4, 6}));
    EXPECT_EQ((Strings{two.subset.label, two.subset.piece1}), (Strings{"", "Empty"}));
    const auto three =
        ReadSubsetText("\r\n\r\n0.1 1E-3 99\r\n! comment\r\n0.2 2E-3 98\r\nx y z\r\n7\r\n");
    ASSERT_TRUE(three.ok());
    EXPECT_EQ(three.subset.x, (Values{0.1, 0.2}));
    EXPECT_EQ(three.subset.y, (Values{1e-3, 2e-3}));

    for (const char* text : {"", "  \r\n \t", "! only\r\n!comments", "a b\nc d\n5\n1 x\n"}) {
        const auto none = ReadSubsetText(text);
        EXPECT_EQ((Strings{none.message.text, none.message.title}),
                  (Strings{"There is no data on the clipboard to plot a profile.", "ZARVION"}))
            << text;
        EXPECT_EQ(none.message.style, zarvion::shell::StyleWarning);
    }
}

TEST(ChartDataTable, ExactLayoutItsFilesAndTheLimit)
{
    ChartDocument c = smallChart();
    c.xAxisLabel = "  Time (sec) ";
    c.subsets[0].y[0] = NullValue;
    const std::string expected = zarvion::shell::ReadFile(DataDir + "chart_data_table.txt");
    const auto r = WriteChartDataTable(c);
    ASSERT_TRUE(r.message.empty());
    EXPECT_EQ(r.text, expected);
    const auto dir = TempDir("table");
    EXPECT_TRUE(WriteChartDataTableFile(c, dir).empty());
    EXPECT_EQ(zarvion::shell::ReadFile(dir / "TmpPlot.txt"), expected);
    EXPECT_TRUE(WriteChartDataTableFile(c, dir, 0).empty());
    EXPECT_EQ(zarvion::shell::ReadFile(dir / "CLIP.TMP"), expected);

    EXPECT_TRUE(WriteChartDataTable(RichChart(10, 2)).message.empty());
    const auto eleven = WriteChartDataTable(RichChart(11, 2));
    EXPECT_EQ(eleven.message.text, "You can view the numeric data for no more than 10 profiles; "
                                   "you are attempting to view 11.");
    EXPECT_EQ(eleven.message.style, zarvion::shell::StyleWarning);
    EXPECT_TRUE(eleven.text.empty());
    std::filesystem::remove(dir / "TmpPlot.txt");
    EXPECT_EQ(WriteChartDataTableFile(RichChart(11, 1), dir).text, eleven.message.text);
    EXPECT_FALSE(std::filesystem::exists(dir / "TmpPlot.txt"));

    // The tool tip attaches the overflow to a reaction label only.
    c.subsets.push_back(Curve({0, 0, 0}, {0, 0, 0}));
    c.subsets[2].label = "R3,A=B";
    SetOverflow(c, 2, "first", "second");
    EXPECT_EQ((Strings{ReactionToolTip(c, 2), ReactionToolTip(c, 0), ReactionToolTip(c, 1)}),
              (Strings{"R3,A=Bfirstsecond", "R12,H+O2=OH+OABC", ""}));
}
