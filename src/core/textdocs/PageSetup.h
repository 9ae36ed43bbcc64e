#pragma once
// The print set-up of a text document without widgets: validation of the dialog's fields, the
// page parameters it stores, the paper geometry, and the texts of the report.

#include "shell/Message.h"

#include <array>
#include <cstdint>
#include <string>

namespace zarvion::textdocs {

inline constexpr int PaperLetter = 1;
inline constexpr int PaperA4 = 9;
inline constexpr int Portrait = 1;
inline constexpr int Landscape = 2;
inline constexpr double TwipsPerInch = 1440.0;

//! What the user typed into the set-up dialog.
struct PageSetupInput {
    std::array<std::string, 4> margins; //!< Left, Right, Top, Bottom [inch], as typed
    std::string firstPageNumber;        //!< may be empty
    int paper = PaperLetter;            //!< 1 Letter, 9 A4
    int orientation = Portrait;         //!< 1 portrait, 2 landscape
};

//! The fields a refusal points at.
enum class PageSetupField { None = -1, Left = 0, Right = 1, Top = 2, Bottom = 3, FirstPage = 4 };

struct PageSetupResult {
    bool ok = false;
    PageSetupField field = PageSetupField::None; //!< the box to focus when refused
    shell::Message message;                      //!< warning, title "ZARVION"
    //! True once the margins passed and the parameters below were set; they are stored even
    //! when the size check that follows refuses the margins.
    bool parametersSet = false;
    std::array<float, 6> pageParameters{};
};

//! Checks the fields in order (margins numeric, margins above 0, first page number whole),
//! then forms the page parameters (each margin through "0.##", held to 0.25..10) and checks
//! that one inch of text remains each way on 97% of the paper.
PageSetupResult ValidatePageSetup(const PageSetupInput& input);

//! A margin as the dialog shows it, through "0.##".
std::string MarginText(double inches);

//! Paper size at 97% [twips], width and height, exchanged for landscape.
std::array<double, 2> PrintablePaperTwips(int paper, int orientation);

//! The three report forms.
enum class ReportForm { PRINT_PREVIEW, PRINT_PREVIEW_Land, PRINT_PREVIEW_Lett_Land };
ReportForm SelectReportForm(const std::array<float, 6>& pageParameters);

//! Width of the printed text [twips]: the report's paper width times 0.97 less both margins.
std::int32_t PrintWidthTwips(const std::array<float, 6>& pageParameters);

//! The note of the dialog, by whether the document has a selection.
std::string PageSetupNote(bool hasSelection);

//! The page number field: page + first - 1, with three blanks on the side away from the
//! alignment (1 right: number then blanks; 0 left: blanks then number).
std::string PageNumberText(std::int32_t reportPage, std::int32_t firstPageNumber,
                           std::int32_t alignment);

//! Height of the page header band [twips]: 0 without heading and page numbers, else 360.
std::int32_t PageHeaderHeight(const std::string& heading, bool pageNumbers);

//! The warning when the printer's paper differs from the chosen one; empty when they agree.
shell::Message PaperMismatchMessage(int chosenPaper, int printerPaper);

} // namespace zarvion::textdocs
