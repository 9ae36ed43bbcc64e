#include "ChartTestSupport.h"

#include "charts/ChartExport.h"
#include "charts/ChartInteraction.h"

#include <gtest/gtest.h>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;

TEST(ValueReadout, EntriesUseTheirPatternsAndSinglePrecision)
{
    // 10^0.5 = 3.16227766 (hand calculation).
    const auto x = XVAL(0.5);
    EXPECT_EQ(x[0], "X = 5.00E-01");
    EXPECT_EQ(x[1], "10^X = 3.16228E+00");
    const auto y = YVAL(-2.0);
    EXPECT_EQ(y[0], "Y = -2.000E+00");
    EXPECT_EQ(y[1], "10^Y = 1.000E-02");
    // 0.1 as a single is 0.100000001490116; the pattern hides it.
    EXPECT_EQ(XVAL(0.1)[0], "X = 1.00E-01");
    // Single precision shows in the longer pattern: 1.2345678 -> 1.234568.
    EXPECT_EQ(XVAL(1.2345678)[0], "X = 1.234568E+00");
    EXPECT_EQ(XVAL(400.0)[1], "10^X = Overflow");
    EXPECT_EQ(YVAL(309.0)[1], "10^Y = Overflow");
    EXPECT_EQ(YVAL(NullValue)[0], "Y = -1.000E+05"); // -99999 to four digits
}

TEST(ValueReadout, ShowMovesAndHides)
{
    ChartDocument c = RichChart(2, 4);
    c.subsets[0].x[1] = 2.0;
    c.subsets[0].y[1] = NullValue;
    ChartWindowState st;
    XYShowSub(c, st);
    EXPECT_TRUE(st.readout.visible);
    EXPECT_EQ(st.cursorMode, CursorSquare);
    EXPECT_EQ(st.cursorSubset, 0);
    EXPECT_EQ(st.cursorPoint, 1);
    EXPECT_EQ(st.readout.xText, "X = 2.00E+00");
    EXPECT_EQ(st.readout.yText, "Y = -1.000E+05"); // an absent point is not filtered
    ChooseXFormat(st, 1);
    EXPECT_EQ(st.readout.xText, "10^X = 1.000E+02");
    c.subsets[1].x[3] = 1.0;
    CursorMoved(c, st, 1, 3);
    EXPECT_EQ(st.lastCursorSubset, 1);
    EXPECT_EQ(st.readout.xText, "10^X = 1.000E+01");
    XYHIDESub(st);
    EXPECT_FALSE(st.readout.visible);
    EXPECT_EQ(st.cursorMode, CursorNone);
    TxtBoxEn(st, false);
    EXPECT_TRUE(st.readout.xText.empty());
    EXPECT_FALSE(st.readout.enabled);
}

TEST(Selection, PaintsAndRestoresTheSubsetColour)
{
    ChartDocument c = RichChart(3, 2);
    const Color own1 = c.subsets[1].color;
    const Color own2 = c.subsets[2].color;
    ChartWindowState st;
    SubSetSelect(c, st, 1);
    EXPECT_TRUE(st.editItemsEnabled);
    EXPECT_EQ(c.subsets[1].color, SelectionColor());
    EXPECT_TRUE(st.textBox.visible);
    EXPECT_EQ(st.textBox.text, c.subsets[1].label);
    EXPECT_EQ(st.textBox.hint, "SubSet Label");
    SubSetSelect(c, st, 2); // a new selection gives the old subset its colour back
    EXPECT_EQ(c.subsets[1].color, own1);
    SubSetSelCancel(c, st);
    EXPECT_EQ(c.subsets[2].color, own2);
    EXPECT_FALSE(st.editItemsEnabled);
    EXPECT_FALSE(c.selected.active);
}

TEST(Selection, DoubleClickSelectsOnlyTheCurveFirstClicked)
{
    ChartDocument c = RichChart(3, 4);
    ChartWindowState st;
    EXPECT_FALSE(DataPointDoubleClicked(c, st, 1)); // no first click
    DataPointClicked(st, 1, 2);
    EXPECT_EQ(st.cursorMode, CursorSquare);
    EXPECT_EQ(st.cursorPoint, 2);
    EXPECT_FALSE(DataPointDoubleClicked(c, st, 2)); // a different curve
    EXPECT_FALSE(c.selected.active);
    EXPECT_TRUE(DataPointDoubleClicked(c, st, 1));
    EXPECT_TRUE(c.selected.active);
    EXPECT_EQ(c.selected.index, 1);
    EXPECT_FALSE(st.clickPending);
    SubSetSelCancel(c, st);
    st.cursorMode = CursorCross;
    DataPointClicked(st, 0, 0);
    EXPECT_EQ(st.cursorMode, CursorCross); // a point cursor stays as it is
    ClickWindowElapsed(st);
    EXPECT_FALSE(DataPointDoubleClicked(c, st, 0)); // too late
}

TEST(Annotations, FreeSlotSearchAndTheLimitMessage)
{
    ChartDocument c;
    c.annotations[0].color = 0x0000FF;
    c.subsets.resize(1);
    c.subsets[0].x = {1, 3};
    c.subsets[0].y = {10, 30};
    c.points = 2;
    EXPECT_TRUE(TextAnnotationsNew(c, "   ", std::nullopt, 1).empty());
    EXPECT_TRUE(c.annotations[0].isFree());

    EXPECT_TRUE(TextAnnotationsNew(c, "  peak ", std::nullopt, 1).empty());
    EXPECT_EQ(c.annotations[0].text, "peak");
    EXPECT_EQ(c.annotations[0].x, 2.0); // middle of the data: (1 + 3) / 2
    EXPECT_EQ(c.annotations[0].y, 20.0);
    EXPECT_EQ(c.annotations[0].color, 0x0000FFu);

    c.annotations[1] = Annotation{"", NullValue, NullValue, 0, 0}; // empty text counts as free
    c.annotations[2] = Annotation{"Empty", 5.0, NullValue, 0, 0};  // placed: not free
    EXPECT_TRUE(TextAnnotationsNew(c, "b", std::make_pair(0.5, 0.25), 0).empty());
    EXPECT_EQ(c.annotations[1].text, "b");
    EXPECT_EQ(c.annotations[1].x, 0.5);
    EXPECT_EQ(FindFreeAnnotationSlot(c), 3);

    for (int slot = 3; slot <= 100; ++slot) {
        c.annotations[slot] = Annotation{"n", 1.0, 1.0, 0, 0};
    }
    EXPECT_TRUE(c.annotations[101].isFree()); // the overflow slots are never used
    const auto m = TextAnnotationsNew(c, "one too many", std::nullopt, 0);
    EXPECT_EQ(m.text, "The number of annotations is greater than 1000. "
                      "The annotation cannot be created.");
    EXPECT_EQ(m.style, zarvion::shell::StyleWarning);

    TextAnnotationsOld(c, 50, "  ");
    EXPECT_TRUE(c.annotations[50].isFree());
    EXPECT_EQ(FindFreeAnnotationSlot(c), 50);
    DeleteClickedText(c, EditKind::Annotation, 60, "");
    EXPECT_TRUE(c.annotations[60].isFree());
}

TEST(TextEdits, CommitDeleteAndShowAllText)
{
    ChartDocument c = RichChart(2, 2);
    ChartWindowState st;
    st.textBox = {true, true, "", EditHint(EditKind::XLabel), EditKind::XLabel, 0};
    CommitEdit(c, st);
    EXPECT_EQ(c.xAxisLabel, "X-Axis"); // an emptied text takes its default
    EXPECT_FALSE(st.textBox.visible);
    st.textBox = {true, true, "Temperature", "", EditKind::MainTitle, 0};
    CommitEdit(c, st);
    EXPECT_EQ(c.mainTitle, "Temperature");
    st.textBox = {true, false, "new label", "", EditKind::SubsetLabel, 1};
    CommitEdit(c, st);
    EXPECT_EQ(c.subsets[1].label, "new label");

    DeleteClickedText(c, EditKind::SubTitle, 0, "Default sub");
    EXPECT_EQ(c.subTitle, "Default sub");
    DeleteClickedText(c, EditKind::MainTitle, 0, "Default sub");
    EXPECT_EQ(c.mainTitle, "");
    c.subsets[0].label = " ";
    c.subsets[0].legend = false;
    c.yAxisLabel.clear();
    c.annotations[7] = Annotation{"", 1.0, 2.0, 0, 0};
    SHOWALLTEXT(c);
    EXPECT_EQ(c.mainTitle, "Main Title");
    EXPECT_EQ(c.yAxisLabel, "Y-Axis");
    EXPECT_EQ(c.subTitle, "Default sub");
    EXPECT_EQ(c.subsets[0].label, "Subset 1");
    EXPECT_EQ(c.subsets[1].label, "new label");
    EXPECT_TRUE(c.subsets[0].legend);
    EXPECT_TRUE(c.annotations[7].isFree());
    EXPECT_EQ(EditHint(EditKind::NewAnnotation), std::string("New Annotation"));
}

TEST(SubsetStyle, LinePointsSizesLegendAxesAndZoom)
{
    ChartDocument c = RichChart(1, 2);
    c.subsets[0].lineType = 2;
    c.subsets[0].pointType = 5;
    SubsetLinePoints(c, 0, "L", false, false, 9, 9);
    EXPECT_EQ(c.subsets[0].lineType, NoLine);
    EXPECT_EQ(c.subsets[0].pointType, NoSymbols);
    SubsetLinePoints(c, 0, "L", true, true, 3, 4);
    EXPECT_EQ(c.subsets[0].lineType, 3);
    EXPECT_EQ(c.subsets[0].pointType, 4);
    SubsetLinePoints(c, 0, "M", true, true, 7, 8); // a shown line keeps its code
    EXPECT_EQ(c.subsets[0].lineType, 3);
    EXPECT_EQ(c.subsets[0].label, "M");

    c.mustSave = false;
    SetTextSize(c, TextLarge);
    EXPECT_EQ(c.textSize, 0);
    EXPECT_TRUE(c.mustSave);
    SetPointSize(c, PointSmall);
    EXPECT_EQ(c.pointSize, 0);
    SetLegend(c, false);
    EXPECT_FALSE(c.subsets[0].legend);
    LineaXY(c);
    EXPECT_EQ(c.yAxis.manualScale, 1);
    AUTOXY(c);
    EXPECT_EQ(c.xAxis.manualScale, 0);

    c.xAxis.manualMin = 1e-6;
    c.xAxis.manualMax = 1.0;
    c.yAxis.manualMin = 2.0;
    c.yAxis.manualMax = 3.0;
    EXPECT_TRUE(ZoomPermitted(c));
    c.yAxis.manualMax = -9e-6;
    EXPECT_FALSE(ZoomPermitted(c)); // both axes have a bound below 1E-05
    c.xAxis.manualMin = 1e-5;
    EXPECT_TRUE(ZoomPermitted(c));
}

TEST(Export, SizeChecksActionsAndPaper)
{
    // 7 inches = 10080 twips = 17777.8 hundredths of a millimetre: exports.
    EXPECT_TRUE(CheckExport(10, 10080.0, 10080.0).empty());
    // 17780 * 567 / 1000 = 10081.26 twips is the limit.
    EXPECT_TRUE(CheckExport(1, 10081.26, 100.0).empty());
    EXPECT_EQ(CheckExport(1, 100.0, 10081.3).text,
              "Chart is oversized, the maximum chart size is 7 x 7 inches (178 x 178 mmm).");
    const auto many = CheckExport(11, 100.0, 100.0);
    EXPECT_EQ(many.text, "You can process no more than 10 subsets; you are attempting to process 11.");
    EXPECT_EQ(many.style, zarvion::shell::StyleWarning);
    EXPECT_EQ(many.title, "ZARVION");

    EXPECT_EQ(ExportActionCode(true, true), 12);
    EXPECT_EQ(ExportActionCode(true, false), 13);
    EXPECT_EQ(ExportActionCode(false, true), 14);
    EXPECT_EQ(ExportActionCode(false, false), 15);
    EXPECT_TRUE(IsMetafileName("a.wmf", false));
    EXPECT_TRUE(IsMetafileName("a.Svg", false));
    EXPECT_FALSE(IsMetafileName("a.BMP", true));
    EXPECT_TRUE(IsMetafileName("chart", true)); // no extension: the dialog's type
    EXPECT_FALSE(IsMetafileName("chart.txt", false));

    // Paper table: A4 297 mm = 29.7 * 567 twips, Letter 8.5 * 1440 x 15840.
    const auto a4p = PrintImageSize(PaperA4, Portrait);
    EXPECT_DOUBLE_EQ(a4p.width, 11907.0 - 2800.0);
    EXPECT_NEAR(a4p.height, 16839.9 - 5800.0, 1e-9);
    EXPECT_EQ(a4p.report, "PLOT_REPORT");
    const auto lp = PrintImageSize(PaperLetter, Portrait);
    EXPECT_DOUBLE_EQ(lp.width, 12240.0 - 2800.0);
    EXPECT_DOUBLE_EQ(lp.height, 15840.0 - 5800.0);
    const auto a4l = PrintImageSize(PaperA4, Landscape);
    EXPECT_NEAR(a4l.width, 16839.9 - 4100.0, 1e-9);
    EXPECT_DOUBLE_EQ(a4l.height, 11907.0 - 3200.0);
    EXPECT_EQ(a4l.report, "PLOT_REPORT_Land");
    const auto ll = PrintImageSize(PaperLetter, Landscape);
    EXPECT_DOUBLE_EQ(ll.width, 15840.0 - 4100.0);
    EXPECT_DOUBLE_EQ(ll.height, 12240.0 - 3500.0);
    EXPECT_EQ(ll.report, "PLOT_REPORT_Land_Lett");

    // 567 twips = 1 cm = 1000 hundredths of a millimetre; 9107 twips = 16061.7 -> 16062.
    const auto px = PRINT_CHART(567.0, 9107.0);
    EXPECT_EQ(px.width, 1000);
    EXPECT_EQ(px.height, 16062);

    // 10080 twips = 7.0 inches, 5112 twips = 3.55 inches.
    EXPECT_EQ(ChartSize(10080.0, 5112.0), "Chart: Width = 7.0'', Height = 3.6''");
    const auto fit = FullWin(8000.0, 6000.0);
    EXPECT_EQ(fit.width, 7700.0);
    EXPECT_EQ(fit.height, 5300.0);
}
