#include "ChartTestSupport.h"

#include "charts/ChartText.h"
#include "shell/TextFile.h"

#include <gtest/gtest.h>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;

namespace {

std::tm fixedTime()
{
    std::tm t{};
    t.tm_year = 2014 - 1900;
    t.tm_mon = 2;
    t.tm_mday = 5;
    t.tm_hour = 9;
    t.tm_min = 7;
    t.tm_sec = 3;
    return t;
}

ChartDocument smallChart()
{
    ChartDocument c;
    c.xAxisLabel = "Time (sec)";
    c.points = 3;
    Subset a;
    a.label = "R12,H+O2=OH+O";
    a.x = {1.5, NullValue, 3.0};
    a.y = {-0.00025, 7.0, 123456789.0};
    Subset b;
    b.label = "OH";
    b.x = {2.5e-3, 0.0, NullValue};
    b.y = {-1.0, 1e-300, NullValue};
    c.subsets = {a, b};
    return c;
}

} // namespace

TEST(ClipboardBlock, HasTheExactLayout)
{
    ChartDocument c = smallChart();
    c.annotations[101].text = "ABC";
    const std::string expected = "!ZARVION  Mar 5 2014  09:07:03\r\n"
                                 "!Temporary Chart \r\n"
                                 "\"Time (sec)\",\"R12,H+O2=OH+O\",\"ABC\"\r\n"
                                 "   1.50000000E+00  -2.50000000E-04\r\n"
                                 " Empty    7.00000000E+00\r\n"
                                 "   3.00000000E+00   1.23456789E+08\r\n";
    EXPECT_EQ(ToClipFile(c, 0, "Temporary Chart ", fixedTime()), expected);
    // Subset 1 looks at slots 102 and 103.
    c.annotations[102].text = "P2";
    c.annotations[103].text = "P3";
    const std::string second = ToClipFile(c, 1, "x", fixedTime());
    EXPECT_NE(second.find("\"Time (sec)\",\"OH\",\"P2P3\"\r\n"), std::string::npos);
    EXPECT_NE(second.find("   0.00000000E+00  1.00000000E-300\r\n"), std::string::npos);
    EXPECT_NE(second.find("\r\n Empty  Empty \r\n"), std::string::npos);
}

TEST(ClipboardBlock, RoundTripsPointsLabelsAndLongReactionTails)
{
    ChartDocument c = smallChart();
    const std::string longEq = "H+O2+M=HO2+M (enhanced third bodies, low-pressure limit) tail";
    ASSERT_GT(longEq.size(), 48u);
    auto [p1, p2] = SplitReactionTail(longEq);
    SetOverflow(c, 0, p1, p2);
    const auto r = ReadSubsetText(ToClipFile(c, 0, "chart.pg", fixedTime()));
    ASSERT_TRUE(r.ok()) << r.message.text;
    EXPECT_EQ(r.subset.xAxisLabel, "Time (sec)");
    EXPECT_EQ(r.subset.label, "R12,H+O2=OH+O");
    EXPECT_EQ(r.subset.piece1, p1);
    EXPECT_EQ(r.subset.piece2, p2);
    // The point with an absent X is absent after the paste; the others keep their values
    // to the nine digits of the block (relative 5E-9).
    ASSERT_EQ(r.subset.x.size(), 2u);
    EXPECT_DOUBLE_EQ(r.subset.x[0], 1.5);
    EXPECT_DOUBLE_EQ(r.subset.y[0], -0.00025);
    EXPECT_DOUBLE_EQ(r.subset.x[1], 3.0);
    EXPECT_DOUBLE_EQ(r.subset.y[1], 123456789.0);

    // A short tail comes back whole in piece 1.
    ChartDocument d = smallChart();
    d.subsets[1].label = "plain";
    const auto r2 = ReadSubsetText(ToClipFile(d, 1, "c", fixedTime()));
    ASSERT_TRUE(r2.ok());
    EXPECT_EQ(r2.subset.label, "plain");
    EXPECT_EQ(r2.subset.piece1, "Empty");
    EXPECT_EQ(r2.subset.piece2, "Empty");
    ASSERT_EQ(r2.subset.x.size(), 2u);
    EXPECT_EQ(r2.subset.y[1], 1e-300);
}

TEST(ClipboardBlock, PlainColumnsFromOtherPrograms)
{
    const auto two = ReadSubsetText("1 2\n3\t4\n\n5   6\n");
    ASSERT_TRUE(two.ok());
    EXPECT_EQ(two.subset.x, (std::vector<double>{1, 3, 5}));
    EXPECT_EQ(two.subset.y, (std::vector<double>{2, 4, 6}));
    EXPECT_EQ(two.subset.label, "");

    const auto three = ReadSubsetText("\r\n\r\n0.1 1E-3 99\r\n! comment\r\n0.2 2E-3 98\r\nx y z\r\n7\r\n");
    ASSERT_TRUE(three.ok());
    EXPECT_EQ(three.subset.x, (std::vector<double>{0.1, 0.2}));
    EXPECT_EQ(three.subset.y, (std::vector<double>{1e-3, 2e-3}));
}

TEST(ClipboardBlock, NothingToPasteGivesTheMessage)
{
    for (const char* text : {"", "  \r\n \t", "! only\r\n!comments", "a b\nc d\n5\n1 x\n"}) {
        const auto r = ReadSubsetText(text);
        EXPECT_FALSE(r.ok()) << text;
        EXPECT_EQ(r.message.text, "There is no data on the clipboard to plot a profile.");
        EXPECT_EQ(r.message.style, zarvion::shell::StyleWarning);
        EXPECT_EQ(r.message.title, "ZARVION");
    }
}

TEST(ChartDataTable, HasTheExactLayout)
{
    ChartDocument c = smallChart();
    c.xAxisLabel = "  Time (sec) ";
    c.annotations[101].text = "ABC";
    c.subsets[0].y[0] = NullValue;
    const auto r = WriteChartDataTable(c);
    ASSERT_TRUE(r.message.empty());
    const std::string blank16(16, ' ');
    const std::string expected =
        "   1Time (sec) ;    R12  ,H+O2=OH+OABC\r\n"
        "   2Time (sec) ;         OH\r\n"
        "\r\n" +
        std::string(9, ' ') + "X1" + std::string(14, ' ') + "Y1" + std::string(14, ' ') + "X2" +
        std::string(14, ' ') + "Y2\r\n" + "    1.500000E+00" + blank16 + "    2.500000E-03" +
        "   -1.000000E+00\r\n" + blank16 + "    7.000000E+00" + "    0.000000E+00" +
        "   1.000000E-300\r\n" + "    3.000000E+00" + "    1.234568E+08" + blank16 + blank16 +
        "\r\n";
    EXPECT_EQ(r.text, expected);
}

TEST(ChartDataTable, RefusesMoreThanTenSubsets)
{
    ChartDocument ten = RichChart(10, 2);
    EXPECT_TRUE(WriteChartDataTable(ten).message.empty());
    ChartDocument eleven = RichChart(11, 2);
    const auto r = WriteChartDataTable(eleven);
    EXPECT_EQ(r.message.text, "You can view the numeric data for no more than 10 profiles; "
                              "you are attempting to view 11.");
    EXPECT_EQ(r.message.style, zarvion::shell::StyleWarning);
    EXPECT_TRUE(r.text.empty());
}

TEST(ChartDataTable, WritesItsFileOrRefuses)
{
    const auto dir = TempDir("table");
    ChartDocument c = smallChart();
    EXPECT_TRUE(WriteChartDataTableFile(c, dir).empty());
    EXPECT_EQ(zarvion::shell::ReadFile(dir / "TmpPlot.txt"), WriteChartDataTable(c).text);
    EXPECT_TRUE(WriteChartDataTableFile(c, dir, 0).empty());
    EXPECT_TRUE(std::filesystem::exists(dir / "CLIP.TMP"));
    ChartDocument eleven = RichChart(11, 1);
    std::filesystem::remove(dir / "TmpPlot.txt");
    EXPECT_FALSE(WriteChartDataTableFile(eleven, dir).empty());
    EXPECT_FALSE(std::filesystem::exists(dir / "TmpPlot.txt"));
}

TEST(ChartDataTable, ReactionToolTipAttachesTheOverflow)
{
    ChartDocument c = smallChart();
    c.subsets.push_back(Subset{"R3,A=B", 0, 0, 0, true, true, {0, 0, 0}, {0, 0, 0}});
    SetOverflow(c, 2, "first", "second");
    EXPECT_EQ(ReactionToolTip(c, 2), "R3,A=Bfirstsecond");
    EXPECT_EQ(ReactionToolTip(c, 0), "R12,H+O2=OH+O");
    EXPECT_EQ(ReactionToolTip(c, 1), "");
}
