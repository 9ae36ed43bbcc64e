// Paper sizes are those of the set-up rules: A4 11907 x 29.7*567 twips, Letter 8.5*1440 x 15840
// twips, taken at 97%. Boundaries below are worked out by hand from these numbers.
#include "textdocs/PageSetup.h"

#include <gtest/gtest.h>

using namespace zarvion::textdocs;

namespace {

PageSetupInput input(std::string l, std::string r, std::string t, std::string b, int paper = 1,
                     int orientation = 1, std::string first = "")
{
    PageSetupInput in;
    in.margins = {l, r, t, b};
    in.paper = paper;
    in.orientation = orientation;
    in.firstPageNumber = first;
    return in;
}

} // namespace

TEST(PageSetup, AcceptsTheStartValues)
{
    const auto r = ValidatePageSetup(input("0.5", "0.5", "1", "1"));
    EXPECT_TRUE(r.ok);
    EXPECT_TRUE(r.message.empty());
    EXPECT_EQ(r.pageParameters, (std::array<float, 6>{0.5f, 0.5f, 1.0f, 1.0f, 1.0f, 1.0f}));
    EXPECT_EQ(MarginText(1.0), "1.");
    EXPECT_EQ(MarginText(0.5), "0.5");
}

TEST(PageSetup, FieldChecksInOrder)
{
    auto r = ValidatePageSetup(input("0.5", "abc", "1", "1"));
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.field, PageSetupField::Right);
    EXPECT_EQ(r.message.text, "Right margin, please enter a positive number.");
    EXPECT_EQ(r.message.style, zarvion::shell::StyleWarning);
    EXPECT_FALSE(r.parametersSet);

    // All margins are checked for numbers before any is checked for sign.
    r = ValidatePageSetup(input("-1", "0.5", "1", "x"));
    EXPECT_EQ(r.message.text, "Bottom margin, please enter a positive number.");
    r = ValidatePageSetup(input("-1", "0.5", "1", "1"));
    EXPECT_EQ(r.message.text, "Left margin, please enter a positive number.");
    r = ValidatePageSetup(input("1", "0.5", "0", "1"));
    EXPECT_EQ(r.field, PageSetupField::Top);
    EXPECT_EQ(r.message.text, "Top margin, please enter a positive number.");
    r = ValidatePageSetup(input("1", "0.5", "", "1"));
    EXPECT_EQ(r.field, PageSetupField::Top);

    for (const char* bad : {"2.5", "x", "1,0"}) {
        r = ValidatePageSetup(input("1", "1", "1", "1", 1, 1, bad));
        EXPECT_EQ(r.field, PageSetupField::FirstPage) << bad;
        EXPECT_EQ(r.message.text, "First page number, please enter an integer.");
    }
    for (const char* good : {"", "5", "-3", "1E3"}) {
        EXPECT_TRUE(ValidatePageSetup(input("1", "1", "1", "1", 1, 1, good)).ok) << good;
    }
}

TEST(PageSetup, MarginsAreRoundedAndHeld)
{
    // 0.1 is raised to 0.25; 12 lowered to 10; A4 portrait height 16334.7 twips takes
    // 10 + 0.25 + 1 inch = 16200 twips.
    auto r = ValidatePageSetup(input("0.756", "1.004", "12", "0.1", 9, 1));
    ASSERT_TRUE(r.ok) << r.message.text;
    EXPECT_FLOAT_EQ(r.pageParameters[0], 0.76f); // "0.##": 0.756 -> 0.76
    EXPECT_FLOAT_EQ(r.pageParameters[1], 1.0f);  // 1.004 -> "1."
    EXPECT_FLOAT_EQ(r.pageParameters[2], 10.0f);
    EXPECT_FLOAT_EQ(r.pageParameters[3], 0.25f);
    EXPECT_FLOAT_EQ(r.pageParameters[4], 9.0f);
    // 0.001 passes as positive, becomes "0." and is then raised.
    r = ValidatePageSetup(input("0.001", "1", "1", "1"));
    EXPECT_FLOAT_EQ(r.pageParameters[0], 0.25f);
}

TEST(PageSetup, OneInchOfTextMustRemain)
{
    // A4 portrait: width 11907*0.97 = 11549.79 twips. 3.5+3.5+1 in = 11520 fits; 3.6 = 11808 not.
    EXPECT_TRUE(ValidatePageSetup(input("3.5", "3.5", "1", "1", 9, 1)).ok);
    auto r = ValidatePageSetup(input("3.6", "3.6", "1", "1", 9, 1));
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.message.text, "Print setup, reduce the page margins.");
    EXPECT_EQ(r.field, PageSetupField::Left);
    EXPECT_TRUE(r.parametersSet); // stored before the size check
    EXPECT_FLOAT_EQ(r.pageParameters[0], 3.6f);
    // A4 portrait height 16839.9*0.97 = 16334.70: 5.1+5.1+1 in = 16128 fits, 5.2 = 16416 not.
    EXPECT_TRUE(ValidatePageSetup(input("1", "1", "5.1", "5.1", 9, 1)).ok);
    r = ValidatePageSetup(input("1", "1", "5.2", "5.2", 9, 1));
    EXPECT_EQ(r.field, PageSetupField::Top);
    // Letter landscape width 15840*0.97 = 15364.8: 4.83*2+1 in = 15350.4 fits, 4.84 = 15379.2 not.
    EXPECT_TRUE(ValidatePageSetup(input("4.83", "4.83", "1", "1", 1, 2)).ok);
    EXPECT_FALSE(ValidatePageSetup(input("4.84", "4.84", "1", "1", 1, 2)).ok);
    // The same margins fit Letter landscape but not Letter portrait (11872.8 twips).
    EXPECT_FALSE(ValidatePageSetup(input("4.83", "4.83", "1", "1", 1, 1)).ok);
}

TEST(PageSetup, PaperAndReports)
{
    auto a4 = PrintablePaperTwips(9, 1);
    EXPECT_NEAR(a4[0], 11549.79, 1e-6);
    EXPECT_NEAR(a4[1], 16334.703, 1e-6);
    auto letterLand = PrintablePaperTwips(1, 2);
    EXPECT_NEAR(letterLand[0], 15364.8, 1e-6);
    EXPECT_NEAR(letterLand[1], 11872.8, 1e-6);

    EXPECT_EQ(SelectReportForm({0.5f, 0.5f, 1, 1, 9, 1}), ReportForm::PRINT_PREVIEW);
    EXPECT_EQ(SelectReportForm({0.5f, 0.5f, 1, 1, 9, 2}), ReportForm::PRINT_PREVIEW_Land);
    EXPECT_EQ(SelectReportForm({0.5f, 0.5f, 1, 1, 1, 2}), ReportForm::PRINT_PREVIEW_Lett_Land);
    // Letter portrait: 12240*0.97 - 1440 = 10432.8 -> 10433 twips.
    EXPECT_EQ(PrintWidthTwips({0.5f, 0.5f, 1, 1, 1, 1}), 10433);
    // A4 landscape: 16839.9*0.97 - 2880 = 13454.703 -> 13455 twips.
    EXPECT_EQ(PrintWidthTwips({1, 1, 1, 1, 9, 2}), 13455);
}

TEST(PageSetup, ReportTexts)
{
    EXPECT_EQ(PageNumberText(1, 5, 1), "5   "); // first page shows the first page number
    EXPECT_EQ(PageNumberText(3, 5, 0), "   7");
    EXPECT_EQ(PageHeaderHeight("", false), 0);
    EXPECT_EQ(PageHeaderHeight("", true), 360);
    EXPECT_EQ(PageHeaderHeight("Heading", false), 360);
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
