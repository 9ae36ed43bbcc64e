#include "charts/ChartExport.h"

#include "charts/ChartDocument.h"
#include "shell/TextFormat.h"

#include <cmath>
#include <filesystem>

namespace zarvion::charts {

double TwipsToHundredthsMm(double twips)
{
    return 1000.0 * twips / TwipsPerCm;
}

shell::Message CheckExport(int subsetCount, double widthTwips, double heightTwips)
{
    if (subsetCount > MaxSubsets) {
        return shell::Message{"You can process no more than 10 subsets; "
                              "you are attempting to process " +
                              std::to_string(subsetCount) + "."};
    }
    if (TwipsToHundredthsMm(widthTwips) > MaxExportSize ||
        TwipsToHundredthsMm(heightTwips) > MaxExportSize) {
        return shell::Message{OversizedChartMessage};
    }
    return {};
}

int ExportActionCode(bool metafile, bool clipboard)
{
    if (metafile) {
        return clipboard ? MetafileToClipboard : MetafileToFile;
    }
    return clipboard ? BitmapToClipboard : BitmapToFile;
}

bool IsMetafileName(const std::string& fileName, bool dialogChoice)
{
    const std::string ext = shell::UCase(std::filesystem::path(fileName).extension().string());
    if (ext == ".WMF" || ext == ".PDF" || ext == ".SVG") {
        return true;
    }
    if (ext == ".BMP" || ext == ".PNG") {
        return false;
    }
    return dialogChoice;
}

PrintImage PrintImageSize(int paper, int orientation)
{
    const double a4Long = 29.7 * TwipsPerCm;
    const double a4Short = 11907.0;
    const double letterShort = 8.5 * TwipsPerInch;
    const double letterLong = 15840.0;
    PrintImage image;
    if (orientation == Landscape) {
        if (paper == PaperA4) {
            image = {a4Long, a4Short, a4Long - 4100.0, a4Short - 3200.0, "PLOT_REPORT_Land"};
        } else {
            image = {letterLong, letterShort, letterLong - 4100.0, letterShort - 3500.0,
                     "PLOT_REPORT_Land_Lett"};
        }
    } else if (paper == PaperA4) {
        image = {a4Short, a4Long, a4Short - 2800.0, a4Long - 5800.0, "PLOT_REPORT"};
    } else {
        image = {letterShort, letterLong, letterShort - 2800.0, letterLong - 5800.0,
                 "PLOT_REPORT"};
    }
    return image;
}

PrintPixels PRINT_CHART(double widthTwips, double heightTwips)
{
    // Whole numbers as the program converts: half to even.
    return {static_cast<long>(std::nearbyint(TwipsToHundredthsMm(widthTwips))),
            static_cast<long>(std::nearbyint(TwipsToHundredthsMm(heightTwips)))};
}

std::string ChartSize(double widthTwips, double heightTwips)
{
    return "Chart: Width = " + shell::Format(widthTwips / TwipsPerInch, "0.0") + "'', " +
           "Height = " + shell::Format(heightTwips / TwipsPerInch, "0.0") + "''";
}

ChartExtent FullWin(double windowWidth, double windowHeight)
{
    return {windowWidth - 300.0, windowHeight - 700.0};
}

} // namespace zarvion::charts
