#pragma once
// Size rules of chart export and printing: the checks before an export, the export actions,
// the image size that follows from the paper, and the size read-out.

#include "shell/Message.h"

#include <string>

namespace zarvion::charts {

//! Twips a inch and a centimetre.
inline constexpr double TwipsPerInch = 1440.0;
inline constexpr double TwipsPerCm = 567.0;
//! Largest chart that exports, in hundredths of a millimetre (7 inches).
inline constexpr double MaxExportSize = 17780.0;

inline constexpr const char* OversizedChartMessage =
    "Chart is oversized, the maximum chart size is 7 x 7 inches (178 x 178 mmm).";
//! Failure text of an export step that overflowed, and of the print image step.
inline constexpr const char* ExportOverflowMessage = "Chart is oversized.";
inline constexpr const char* PrintOverflowMessage = "Plot is oversized.";

//! Filter of the export dialog: the image forms this program writes. The first is the form of
//! a name typed without a known extension.
inline constexpr const char* ExportDialogFilter =
    "PNG Image (*.png)|*.png|Windows Bitmap (*.bmp)|*.bmp|PDF Document (*.pdf)|*.pdf|"
    "SVG Drawing (*.svg)|*.svg";
//! Refusal of a Windows metafile name: the vector forms here are PDF and SVG.
inline constexpr const char* MetafileNotWrittenMessage =
    "Windows metafiles (WMF) are not written; give the file the extension .pdf or .svg for a "
    "vector image, or .png or .bmp for a bitmap.";

//! Export action codes.
enum ExportAction : int {
    MetafileToClipboard = 12,
    MetafileToFile = 13,
    BitmapToClipboard = 14,
    BitmapToFile = 15,
};

//! Hundredths of a millimetre of a length in twips: 1000 twips / 567.
double TwipsToHundredthsMm(double twips);

//! The checks of ExportChart before anything is written: at most 10 subsets, then at most
//! 17780 hundredths of a millimetre in either direction.
shell::Message CheckExport(int subsetCount, double widthTwips, double heightTwips);

//! The action code for a metafile or bitmap going to the clipboard or a file.
int ExportActionCode(bool metafile, bool clipboard);

//! Whether a file name asks for the vector ("metafile") form: "WMF", "PDF", "SVG" do,
//! "BMP", "PNG" don't; any other extension keeps `dialogChoice`.
bool IsMetafileName(const std::string& fileName, bool dialogChoice);

//! Paper codes and orientations of the page set-up.
inline constexpr int PaperLetter = 1;
inline constexpr int PaperA4 = 9;
inline constexpr int Portrait = 1;
inline constexpr int Landscape = 2;

inline constexpr const char* PageSetupTitle = "Page Setup";
inline constexpr const char* PaperLetterItem = " Letter, 8 1/2 x 11 inches";
inline constexpr const char* PaperA4Item = " A4, 210 x 297 mm";
inline constexpr const char* PrintSizeNote =
    "You can't choose size of image optionally; the image is automatically "
    "rescaled to a certain size depending on the size and orientation of paper.";

//! The printed image's size and the report that holds it.
struct PrintImage {
    double paperWidth = 0.0; //!< [twips]
    double paperHeight = 0.0;
    double width = 0.0; //!< [twips]
    double height = 0.0;
    std::string report; //!< "PLOT_REPORT", "PLOT_REPORT_Land" or "PLOT_REPORT_Land_Lett"
};

//! The image size that follows from paper and orientation.
PrintImage PrintImageSize(int paper, int orientation);

//! The print image size in whole hundredths of a millimetre.
struct PrintPixels {
    long width = 0;
    long height = 0;
};
PrintPixels PRINT_CHART(double widthTwips, double heightTwips);

//! The size read-out shown while the chart window is resized.
std::string ChartSize(double widthTwips, double heightTwips);

//! The chart's size when fitted to its window [twips].
struct ChartExtent {
    double width = 0.0;
    double height = 0.0;
};
ChartExtent FullWin(double windowWidth, double windowHeight);

} // namespace zarvion::charts
