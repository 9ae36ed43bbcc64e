#pragma once
// The chart file ("pg"): this program's own versioned JSON holding every chart property.
// A load goes into a scratch chart first, so that a bad file cannot spoil the open one.

#include "charts/ChartDocument.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace zarvion::charts {

//! Format name and version written into every chart file.
inline constexpr const char* ChartFileFormat = "zarvion-chart";
inline constexpr int ChartFileVersion = 1;

//! The chart file text of a set of properties.
std::string ChartToJson(const ChartProperties& chart);
//! The properties of a chart file text; std::nullopt for anything that isn't a well-formed
//! chart file of a known version.
std::optional<ChartProperties> ChartFromJson(std::string_view text);

//! Stores the chart with its true colours (a monochrome chart is stored in colour);
//! returns the success flag, never throws for I/O faults.
bool StoreChart(const ChartDocument& chart, const std::filesystem::path& path);

struct OpenPlotResult {
    bool failed = false;
    std::string caption; //!< the file name, for the window caption
};

//! Loads a chart file into `chart`. The file is read into a scratch chart first; on failure
//! the chart's properties are left as they were, and only ChartPath and the HasFile flag are
//! set. On success the chart shows the file in colour, with free annotation slots normalised.
OpenPlotResult OPENPLOT(ChartDocument& chart, const std::filesystem::path& path);

//! Puts the properties of chart file text into `chart` as OPENPLOT does, touching nothing on
//! failure; the file flags and path are left alone. Returns the success flag.
bool LoadChartText(ChartDocument& chart, std::string_view text);

//! Save: stores to ChartPath when there is one and clears MustSave on success. Returns
//! false when there was no path or the store failed: the caller then runs Save as.
bool SaveTT(ChartDocument& chart);

//! Save as, after the dialog gave `path`: cancels any subset selection, stores, and on
//! success sets ChartPath, clears MustSave and sets HasFile. Returns the success flag.
bool SaveGraphTT(ChartDocument& chart, const std::filesystem::path& path);

} // namespace zarvion::charts
