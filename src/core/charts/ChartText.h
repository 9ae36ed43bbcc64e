#pragma once
// The two text formats of the chart: the subset text block that moves curves through the
// clipboard, and the data table of a chart's numbers.

#include "charts/ChartDocument.h"
#include "shell/Message.h"

#include <ctime>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zarvion::charts {

inline constexpr const char* NoClipboardDataMessage =
    "There is no data on the clipboard to plot a profile.";

//! The subset text block of subset k (CR LF line ends): a stamp line with the date and time,
//! "!" + caption, the quoted X axis label, subset label and overflow tail, and one line of
//! X and Y a point, " Empty " for a point without a value.
std::string ToClipFile(const ChartProperties& chart, int subset, const std::string& caption,
                       const std::tm& now);

//! A subset read from clipboard text.
struct ClipboardSubset {
    std::string xAxisLabel;
    std::string label;
    std::string piece1 = EmptySlotText; //!< overflow pieces of a reaction label
    std::string piece2 = EmptySlotText;
    std::vector<double> x; //!< the points that had a numeric X and Y, in order
    std::vector<double> y;
};

struct ClipboardReadResult {
    shell::Message message; //!< set when nothing can be pasted
    ClipboardSubset subset;
    bool ok() const { return message.empty(); }
};

//! Reads a subset text block, or plain text of two or three blank-separated columns (tabs
//! count as blanks; a third column is dropped). Lines that begin with "!" are comments.
ClipboardReadResult ReadSubsetText(std::string_view text);

inline constexpr const char* DataTableTitle = "Chart Data";

struct DataTableResult {
    shell::Message message; //!< set when the chart has more subsets than a table shows
    std::string text;
};

//! The data table of a chart: one line a subset, an empty line, the heading, and one line a
//! point with X and Y of every subset, 16 characters each (CR LF line ends).
DataTableResult WriteChartDataTable(const ChartProperties& chart);

//! Data views write the table to "TmpPlot.txt" in the auxiliary folder; mode 0 to "CLIP.TMP".
//! Writes atomically and returns the refusal when the chart has too many subsets.
shell::Message WriteChartDataTableFile(const ChartProperties& chart,
                                       const std::filesystem::path& assistFolder, int mode = 1);

//! The legend text of a subset with its reaction overflow attached, as its tool tip shows it;
//! empty for a label that is no reaction label.
std::string ReactionToolTip(const ChartProperties& chart, int subset);

} // namespace zarvion::charts
