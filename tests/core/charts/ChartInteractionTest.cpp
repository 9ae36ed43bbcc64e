#include "ChartTestSupport.h"

#include "charts/ChartExport.h"
#include "charts/ChartInteraction.h"

#include <gtest/gtest.h>

using namespace zarvion::charts;
using namespace zarvion::charts::testing;
using namespace std::string_literals;

TEST(ValueReadout, EntriesShowAndHide)
{
    // 10^0.5 = 3.16227766 and 10^-2 (hand calculation); 0.1 as a single is 0.100000001490116,
    // which the pattern hides; 1.2345678 as a single shows as 1.234568; 10^400 overflows.
    EXPECT_EQ(XVAL(0.5), (std::array{"X = 5.00E-01"s, "10^X = 3.16228E+00"s}));
    EXPECT_EQ(YVAL(-2.0), (std::array{"Y = -2.000E+00"s, "10^Y = 1.000E-02"s}));
    EXPECT_EQ(XVAL(0.1)[0], "X = 1.00E-01");
    EXPECT_EQ(XVAL(1.2345678)[0], "X = 1.234568E+00");
    EXPECT_EQ(XVAL(400.0)[1], "10^X = Overflow");
    EXPECT_EQ(YVAL(309.0)[1], "10^Y = Overflow");

    ChartDocument c = RichChart(2, 4);
    c.subsets[0].x[1] = 2.0;
    c.subsets[0].y[1] = NullValue;
    ChartWindowState st;
    auto shown = [&st] {
        return std::tuple(st.readout.visible, st.cursorMode, st.cursorSubset, st.cursorPoint,
                          st.readout.xText, st.readout.yText);
    };
    // No cursor yet: subset 0, point 1; an absent point is shown, -99999 to four digits.
    XYShowSub(c, st);
    EXPECT_EQ(shown(), std::tuple(true, CursorSquare, 0, 1, "X = 2.00E+00"s, "Y = -1.000E+05"s));
    ChooseXFormat(st, 1);
    EXPECT_EQ(st.readout.xText, "10^X = 1.000E+02");
    c.subsets[1].x[3] = 1.0;
    CursorMoved(c, st, 1, 3); // the chosen format stays
    EXPECT_EQ(st.lastCursorSubset, 1);
    EXPECT_EQ(st.readout.xText, "10^X = 1.000E+01");
    XYHIDESub(st);
    EXPECT_EQ(std::pair(st.readout.visible, st.cursorMode), std::pair(false, +CursorNone));
    TxtBoxEn(st, false);
    EXPECT_EQ(std::pair(st.readout.xText, st.readout.enabled), std::pair(""s, false));
}

TEST(Selection, DoubleClickSelectsAndCancelRestoresTheColour)
{
    ChartDocument c = RichChart(3, 4);
    const ChartDocument own = c;
    ChartWindowState st;
    EXPECT_FALSE(DataPointDoubleClicked(c, st, 1)); // no first click
    DataPointClicked(st, 1, 2);
    EXPECT_EQ(std::pair(st.cursorMode, st.cursorPoint), std::pair(+CursorSquare, 2));
    EXPECT_FALSE(DataPointDoubleClicked(c, st, 2)); // a different curve
    EXPECT_FALSE(c.selected.active);
    EXPECT_TRUE(DataPointDoubleClicked(c, st, 1));
    EXPECT_FALSE(st.clickPending);
    EXPECT_EQ(std::tuple(c.selected.active, c.selected.index, c.subsets[1].color),
              std::tuple(true, 1, SelectionColor()));
    // The label opens for editing.
    EXPECT_EQ(std::tuple(st.editItemsEnabled, st.textBox.visible, st.textBox.text, st.textBox.hint),
              std::tuple(true, true, c.subsets[1].label, "SubSet Label"s));

    SubSetSelect(c, st, 2); // a new selection gives the old subset its colour back
    EXPECT_EQ(c.subsets[1].color, own.subsets[1].color);
    SubSetSelCancel(c, st);
    EXPECT_EQ(c.subsets[2].color, own.subsets[2].color);
    EXPECT_FALSE(st.editItemsEnabled || c.selected.active);

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
    c.subsets = {Curve({1, 3}, {10, 30})};
    c.points = 2;
    EXPECT_TRUE(TextAnnotationsNew(c, "   ", std::nullopt, 1).empty());
    EXPECT_TRUE(c.annotations[0].isFree());
    // Trimmed, in the middle of the data ((1 + 3) / 2, (10 + 30) / 2), in the annotation colour.
    EXPECT_TRUE(TextAnnotationsNew(c, "  peak ", std::nullopt, 1).empty());
    EXPECT_EQ(c.annotations[0], (Annotation{"peak", 2.0, 20.0, 1, 0x0000FF}));

    c.annotations[1] = Annotation{"", NullValue, NullValue, 0, 0}; // empty text counts as free
    c.annotations[2] = Annotation{"Empty", 5.0, NullValue, 0, 0};  // placed: not free
    EXPECT_TRUE(TextAnnotationsNew(c, "b", std::make_pair(0.5, 0.25), 0).empty());
    EXPECT_EQ(c.annotations[1], (Annotation{"b", 0.5, 0.25, 0, 0x0000FF}));
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
    EXPECT_FALSE(st.textBox.visible);
    st.textBox = {true, true, "Temperature", "", EditKind::MainTitle, 0};
    CommitEdit(c, st);
    st.textBox = {true, false, "new label", "", EditKind::SubsetLabel, 1};
    CommitEdit(c, st);
    EXPECT_EQ(c.subsets[1].label, "new label");
    // An emptied text takes its default.
    EXPECT_EQ(Titles(c), (Strings{"Temperature", "Mole fraction", "X-Axis", "X(OH)"}));

    DeleteClickedText(c, EditKind::SubTitle, 0, "Default sub");
    DeleteClickedText(c, EditKind::MainTitle, 0, "Default sub");
    EXPECT_EQ(Titles(c), (Strings{"", "Default sub", "X-Axis", "X(OH)"}));
    c.subsets[0].label = " ";
    c.subsets[0].legend = false;
    c.yAxisLabel.clear();
    c.annotations[7] = Annotation{"", 1.0, 2.0, 0, 0};
    SHOWALLTEXT(c);
    EXPECT_EQ(Titles(c), (Strings{"Main Title", "Default sub", "X-Axis", "Y-Axis"}));
    EXPECT_EQ(std::tuple(c.subsets[0].label, c.subsets[1].label, c.subsets[0].legend),
              std::tuple("Subset 1"s, "new label"s, true));
    EXPECT_TRUE(c.annotations[7].isFree());
    EXPECT_EQ(EditHint(EditKind::NewAnnotation), "New Annotation"s);
}

TEST(SubsetStyle, LinePointsAndZoom)
{
    ChartDocument c = RichChart(1, 2);
    auto codes = [&c] { return std::pair(c.subsets[0].lineType, c.subsets[0].pointType); };
    c.subsets[0].lineType = 2;
    c.subsets[0].pointType = 5;
    SubsetLinePoints(c, 0, "L", false, false, 9, 9);
    EXPECT_EQ(codes(), std::pair(NoLine, NoSymbols));
    SubsetLinePoints(c, 0, "L", true, true, 3, 4);
    EXPECT_EQ(codes(), std::pair(3, 4));
    SubsetLinePoints(c, 0, "M", true, true, 7, 8); // a shown line keeps its code
    EXPECT_EQ(codes(), std::pair(3, 4));
    EXPECT_EQ(c.subsets[0].label, "M");
    c.mustSave = false;
    SetTextSize(c, TextLarge);
    EXPECT_TRUE(c.mustSave);
    LineaXY(c);
    EXPECT_EQ(std::pair(c.xAxis.manualScale, c.yAxis.manualScale), std::pair(1, 1));

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
    // 7 inches = 10080 twips = 17777.8 hundredths of a millimetre: exports;
    // 17780 * 567 / 1000 = 10081.26 twips is the limit.
    EXPECT_TRUE(CheckExport(10, 10080.0, 10080.0).empty());
    EXPECT_TRUE(CheckExport(1, 10081.26, 100.0).empty());
    EXPECT_EQ(CheckExport(1, 100.0, 10081.3).text,
              "Chart is oversized, the maximum chart size is 7 x 7 inches (178 x 178 mmm).");
    const auto many = CheckExport(11, 100.0, 100.0);
    EXPECT_EQ(std::tuple(many.text, many.style, many.title),
              std::tuple("You can process no more than 10 subsets; you are attempting to process "
                         "11."s, +zarvion::shell::StyleWarning, "ZARVION"s));

    EXPECT_EQ((std::array{ExportActionCode(true, true), ExportActionCode(true, false),
                          ExportActionCode(false, true), ExportActionCode(false, false)}),
              (std::array{12, 13, 14, 15}));
    // No extension or an unknown one: the dialog's type.
    EXPECT_EQ((std::array{IsMetafileName("a.wmf", false), IsMetafileName("a.Svg", false),
                          IsMetafileName("a.BMP", true), IsMetafileName("chart", true),
                          IsMetafileName("chart.txt", false)}),
              (std::array{true, true, false, true, false}));

    // Paper: A4 11907 x 29.7 * 567 = 16839.9 twips, Letter 8.5 * 1440 = 12240 x 15840 twips,
    // less the report's margins.
    const std::tuple<int, int, double, double, std::string> cases[] = {
        {PaperA4, Portrait, 11907.0 - 2800.0, 16839.9 - 5800.0, "PLOT_REPORT"},
        {PaperLetter, Portrait, 12240.0 - 2800.0, 15840.0 - 5800.0, "PLOT_REPORT"},
        {PaperA4, Landscape, 16839.9 - 4100.0, 11907.0 - 3200.0, "PLOT_REPORT_Land"},
        {PaperLetter, Landscape, 15840.0 - 4100.0, 12240.0 - 3500.0, "PLOT_REPORT_Land_Lett"},
    };
    for (const auto& [paper, orientation, width, height, report] : cases) {
        const auto image = PrintImageSize(paper, orientation);
        EXPECT_NEAR(image.width, width, 1e-9) << paper << "/" << orientation;
        EXPECT_NEAR(image.height, height, 1e-9) << paper << "/" << orientation;
        EXPECT_EQ(image.report, report);
    }
    // 567 twips = 1 cm = 1000 hundredths of a millimetre; 9107 twips = 16061.7 -> 16062.
    const auto px = PRINT_CHART(567.0, 9107.0);
    EXPECT_EQ(std::pair(px.width, px.height), std::pair(1000L, 16062L));
    // 10080 twips = 7.0 inches, 5112 twips = 3.55 inches.
    EXPECT_EQ(ChartSize(10080.0, 5112.0), "Chart: Width = 7.0'', Height = 3.6''");
    const auto fit = FullWin(8000.0, 6000.0);
    EXPECT_EQ(std::pair(fit.width, fit.height), std::pair(7700.0, 5300.0));
}
