#include "textdocs/PageSetup.h"

#include "shell/TextFormat.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zarvion::textdocs {

namespace {

constexpr double PaperFactor = 0.97;
constexpr double A4Width = 11907.0;        // [twips], 210 mm
constexpr double A4Height = 29.7 * 567.0;  // [twips], 297 mm at 567 twips/cm
constexpr double LetterWidth = 8.5 * 1440.0;
constexpr double LetterHeight = 15840.0;   // 11 in
constexpr double MinMargin = 0.25;         // [inch]
constexpr double MaxMargin = 10.0;         // [inch]
constexpr const char* MarginNames[4] = {"Left", "Right", "Top", "Bottom"};

shell::Message warning(const std::string& text)
{
    return {text, shell::StyleWarning, shell::DefaultTitle};
}

} // namespace

std::string MarginText(double inches)
{
    return shell::Format(inches, "0.##");
}

PageSetupResult ValidatePageSetup(const PageSetupInput& input)
{
    PageSetupResult result;
    std::array<double, 4> margins{};
    for (int k = 0; k < 4; ++k) {
        const auto v = shell::ToDouble(input.margins[static_cast<std::size_t>(k)]);
        if (!v) {
            result.field = static_cast<PageSetupField>(k);
            result.message = warning(std::string(MarginNames[k]) +
                                     " margin, please enter a positive number.");
            return result;
        }
        margins[static_cast<std::size_t>(k)] = *v;
    }
    for (int k = 0; k < 4; ++k) {
        if (!(margins[static_cast<std::size_t>(k)] > 0.0)) {
            result.field = static_cast<PageSetupField>(k);
            result.message = warning(std::string(MarginNames[k]) +
                                     " margin, please enter a positive number.");
            return result;
        }
    }
    if (!input.firstPageNumber.empty()) {
        const auto v = shell::ToDouble(input.firstPageNumber);
        if (!v || std::floor(*v) != *v || *v < std::numeric_limits<std::int32_t>::min() ||
            *v > std::numeric_limits<std::int32_t>::max()) {
            result.field = PageSetupField::FirstPage;
            result.message = warning("First page number, please enter an integer.");
            return result;
        }
    }

    result.parametersSet = true;
    for (int k = 0; k < 4; ++k) {
        // Through the dialog's pattern: two decimals at most.
        double m = shell::ToDouble(MarginText(margins[static_cast<std::size_t>(k)])).value_or(0.0);
        m = std::clamp(m, MinMargin, MaxMargin);
        result.pageParameters[static_cast<std::size_t>(k)] = static_cast<float>(m);
    }
    result.pageParameters[4] = static_cast<float>(input.paper == PaperA4 ? PaperA4 : PaperLetter);
    result.pageParameters[5] =
        static_cast<float>(input.orientation == Landscape ? Landscape : Portrait);

    const auto paper = PrintablePaperTwips(input.paper, input.orientation);
    const auto& p = result.pageParameters;
    if ((p[0] + p[1]) * TwipsPerInch + TwipsPerInch > paper[0]) {
        result.field = PageSetupField::Left;
        result.message = warning("Print setup, reduce the page margins.");
        return result;
    }
    if ((p[2] + p[3]) * TwipsPerInch + TwipsPerInch > paper[1]) {
        result.field = PageSetupField::Top;
        result.message = warning("Print setup, reduce the page margins.");
        return result;
    }
    result.ok = true;
    return result;
}

std::array<double, 2> PrintablePaperTwips(int paper, int orientation)
{
    double w = paper == PaperA4 ? A4Width : LetterWidth;
    double h = paper == PaperA4 ? A4Height : LetterHeight;
    if (orientation == Landscape) {
        std::swap(w, h);
    }
    return {w * PaperFactor, h * PaperFactor};
}

ReportForm SelectReportForm(const std::array<float, 6>& pageParameters)
{
    if (static_cast<int>(pageParameters[5]) != Landscape) {
        return ReportForm::PRINT_PREVIEW;
    }
    return static_cast<int>(pageParameters[4]) == PaperA4 ? ReportForm::PRINT_PREVIEW_Land
                                                          : ReportForm::PRINT_PREVIEW_Lett_Land;
}

std::int32_t PrintWidthTwips(const std::array<float, 6>& p)
{
    double paperWidth = 0.0;
    switch (SelectReportForm(p)) {
    case ReportForm::PRINT_PREVIEW:
        paperWidth = static_cast<int>(p[4]) == PaperA4 ? A4Width : LetterWidth;
        break;
    case ReportForm::PRINT_PREVIEW_Land:
        paperWidth = A4Height;
        break;
    case ReportForm::PRINT_PREVIEW_Lett_Land:
        paperWidth = LetterHeight;
        break;
    }
    const double width = paperWidth * PaperFactor - p[0] * TwipsPerInch - p[1] * TwipsPerInch;
    return shell::ToInt32(width);
}

std::string PageSetupNote(bool hasSelection)
{
    return hasSelection ? "Selected portion of the text will be printed. To print the entire "
                          "document, you should cancel text selection."
                        : "The entire document will be printed. To print a portion of the text, "
                          "you should select this portion.";
}

std::string PageNumberText(std::int32_t reportPage, std::int32_t firstPageNumber,
                           std::int32_t alignment)
{
    const std::string number =
        std::to_string(static_cast<long long>(reportPage) + firstPageNumber - 1);
    return alignment == 1 ? number + "   " : "   " + number;
}

std::int32_t PageHeaderHeight(const std::string& heading, bool pageNumbers)
{
    return (heading.empty() && !pageNumbers) ? 0 : 360;
}

shell::Message PaperMismatchMessage(int chosenPaper, int printerPaper)
{
    if (chosenPaper == printerPaper) {
        return {};
    }
    return warning(std::string("The entire document can be not mapped in printer image\r\n\r\n") +
                   "You have specified the " + (chosenPaper == PaperA4 ? "A4" : "Letter") +
                   " paper size; the same size must be set on the printer.");
}

} // namespace zarvion::textdocs
