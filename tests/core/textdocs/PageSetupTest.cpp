// Paper sizes are those of the set-up rules: A4 11907 x 29.7*567 twips, Letter 8.5*1440 x 15840
// twips, taken at 97%. Boundaries below are worked out by hand from these numbers.
#include "textdocs/PageSetup.h"

#include <gtest/gtest.h>

using namespace zarvion::textdocs;
using namespace std::string_literals;

namespace {

PageSetupResult validate(std::array<std::string, 4> margins, int paper = PaperLetter,
                         int orientation = Portrait, std::string first = "")
{
    return ValidatePageSetup(
        PageSetupInput{std::move(margins), std::move(first), paper, orientation});
}

} // namespace

TEST(PageSetup, FieldChecksInOrder)
{
    const auto start = validate({"0.5", "0.5", "1", "1"});
    EXPECT_TRUE(start.ok && start.message.empty());
    EXPECT_EQ(start.pageParameters, (std::array<float, 6>{0.5f, 0.5f, 1.0f, 1.0f, 1.0f, 1.0f}));
    EXPECT_EQ(std::pair(MarginText(1.0), MarginText(0.5)), std::pair("1."s, "0.5"s));

    // All margins are checked for numbers before any is checked for sign.
    const std::string top = "Top margin, please enter a positive number.";
    const std::string firstPage = "First page number, please enter an integer.";
    using Margins = std::array<std::string, 4>;
    const std::tuple<Margins, std::string, PageSetupField, std::string> cases[] = {
        {{"0.5", "abc", "1", "1"}, "", PageSetupField::Right,
         "Right margin, please enter a positive number."},
        {{"-1", "0.5", "1", "x"}, "", PageSetupField::Bottom,
         "Bottom margin, please enter a positive number."},
        {{"-1", "0.5", "1", "1"}, "", PageSetupField::Left,
         "Left margin, please enter a positive number."},
        {{"1", "0.5", "0", "1"}, "", PageSetupField::Top, top},
        {{"1", "0.5", "", "1"}, "", PageSetupField::Top, top},
        {{"1", "1", "1", "1"}, "2.5", PageSetupField::FirstPage, firstPage},
        {{"1", "1", "1", "1"}, "x", PageSetupField::FirstPage, firstPage},
        {{"1", "1", "1", "1"}, "1,0", PageSetupField::FirstPage, firstPage},
    };
    for (const auto& [margins, first, field, text] : cases) {
        const auto r = validate(margins, PaperLetter, Portrait, first);
        EXPECT_FALSE(r.ok || r.parametersSet) << text;
        EXPECT_EQ(std::tuple(r.field, r.message.text, r.message.style),
                  std::tuple(field, text, +zarvion::shell::StyleWarning));
    }
    for (const char* good : {"", "5", "-3", "1E3"}) {
        EXPECT_TRUE(validate({"1", "1", "1", "1"}, PaperLetter, Portrait, good).ok) << good;
    }
}

TEST(PageSetup, MarginsAreRoundedAndHeld)
{
    // "0.##": 0.756 -> 0.76, 1.004 -> 1; 12 lowered to 10, 0.1 raised to 0.25. A4 portrait
    // height 16334.7 twips takes 10 + 0.25 + 1 inch = 16200 twips.
    auto r = validate({"0.756", "1.004", "12", "0.1"}, PaperA4);
    ASSERT_TRUE(r.ok) << r.message.text;
    EXPECT_EQ(r.pageParameters, (std::array<float, 6>{0.76f, 1.0f, 10.0f, 0.25f, 9.0f, 1.0f}));
    // 0.001 passes as positive, becomes "0." and is then raised.
    EXPECT_FLOAT_EQ(validate({"0.001", "1", "1", "1"}).pageParameters[0], 0.25f);
}

TEST(PageSetup, OneInchOfTextMustRemain)
{
    // A4 portrait width 11907*0.97 = 11549.79: 3.5+3.5+1 in = 11520 fits, 3.6 = 11808 not.
    const auto r = validate({"3.6", "3.6", "1", "1"}, PaperA4);
    // Refused, but the parameters were stored before the size check.
    EXPECT_EQ(std::tuple(r.ok, r.message.text, r.field, r.parametersSet, r.pageParameters[0]),
              std::tuple(false, "Print setup, reduce the page margins."s, PageSetupField::Left,
                         true, 3.6f));
    using Margins = std::array<std::string, 4>;
    // Margins, paper, orientation and the refused field (None: fits).
    const std::tuple<Margins, int, int, PageSetupField> cases[] = {
        {{"3.5", "3.5", "1", "1"}, PaperA4, Portrait, PageSetupField::None},
        // A4 portrait height 16839.9*0.97 = 16334.70: 5.1+5.1+1 in = 16128 fits, 5.2 = 16416 not.
        {{"1", "1", "5.1", "5.1"}, PaperA4, Portrait, PageSetupField::None},
        {{"1", "1", "5.2", "5.2"}, PaperA4, Portrait, PageSetupField::Top},
        // Letter landscape width 15840*0.97 = 15364.8: 4.83*2+1 in = 15350.4 fits, 4.84 = 15379.2
        // not; Letter portrait (11872.8 twips) takes neither.
        {{"4.83", "4.83", "1", "1"}, PaperLetter, Landscape, PageSetupField::None},
        {{"4.84", "4.84", "1", "1"}, PaperLetter, Landscape, PageSetupField::Left},
        {{"4.83", "4.83", "1", "1"}, PaperLetter, Portrait, PageSetupField::Left},
    };
    for (const auto& [margins, paper, orientation, field] : cases) {
        const auto v = validate(margins, paper, orientation);
        EXPECT_EQ(std::pair(v.ok, v.field), std::pair(field == PageSetupField::None, field))
            << margins[0] << " " << margins[2] << " on " << paper << "/" << orientation;
    }
}

TEST(PageSetup, PaperReportsAndTexts)
{
    // 11907*0.97, 16839.9*0.97; landscape Letter 15840*0.97, 12240*0.97 (to 1E-6 twips).
    EXPECT_NEAR(PrintablePaperTwips(PaperA4, Portrait)[0], 11549.79, 1e-6);
    EXPECT_NEAR(PrintablePaperTwips(PaperA4, Portrait)[1], 16334.703, 1e-6);
    EXPECT_NEAR(PrintablePaperTwips(PaperLetter, Landscape)[0], 15364.8, 1e-6);
    EXPECT_NEAR(PrintablePaperTwips(PaperLetter, Landscape)[1], 11872.8, 1e-6);

    EXPECT_EQ(SelectReportForm({0.5f, 0.5f, 1, 1, 9, 1}), ReportForm::PRINT_PREVIEW);
    EXPECT_EQ(SelectReportForm({0.5f, 0.5f, 1, 1, 9, 2}), ReportForm::PRINT_PREVIEW_Land);
    EXPECT_EQ(SelectReportForm({0.5f, 0.5f, 1, 1, 1, 2}), ReportForm::PRINT_PREVIEW_Lett_Land);
    // Letter portrait: 12240*0.97 - 1440 = 10432.8 -> 10433 twips.
    EXPECT_EQ(PrintWidthTwips({0.5f, 0.5f, 1, 1, 1, 1}), 10433);
    // A4 landscape: 16839.9*0.97 - 2880 = 13454.703 -> 13455 twips.
    EXPECT_EQ(PrintWidthTwips({1, 1, 1, 1, 9, 2}), 13455);

    // Page + first - 1, blanks away from the alignment.
    EXPECT_EQ(std::pair(PageNumberText(1, 5, 1), PageNumberText(3, 5, 0)),
              std::pair("5   "s, "   7"s));
    EXPECT_EQ((std::vector<int>{PageHeaderHeight("", false), PageHeaderHeight("", true),
                                PageHeaderHeight("Heading", false)}),
              (std::vector<int>{0, 360, 360}));
    EXPECT_EQ(PageSetupNote(true), "Selected portion of the text will be printed. To print the "
                                   "entire document, you should cancel text selection.");
    EXPECT_EQ(PageSetupNote(false), "The entire document will be printed. To print a portion of "
                                    "the text, you should select this portion.");
    EXPECT_TRUE(PaperMismatchMessage(1, 1).empty());
    EXPECT_EQ(PaperMismatchMessage(9, 1).text,
              "The entire document can be not mapped in printer image\r\n\r\nYou have specified "
              "the A4 paper size; the same size must be set on the printer.");
    EXPECT_NE(PaperMismatchMessage(1, 9).text.find("the Letter paper size"), std::string::npos);
}
