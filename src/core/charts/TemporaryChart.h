#pragma once
// The temporary chart that plot commands feed, and the moving of subsets between charts:
// replace or add a profile, add and delete subsets, cut, copy and paste through the
// clipboard's subset text block.

#include "charts/ChartDocument.h"
#include "charts/ChartInteraction.h"
#include "charts/PlotExchange.h"
#include "shell/Message.h"

#include <ctime>
#include <string>
#include <vector>

namespace zarvion::charts {

//! Caption of the temporary chart; the trailing blank is part of the marker.
inline constexpr const char* TemporaryChartCaption = "Temporary Chart ";
//! Caption of a leftover window that is closed before plotting.
inline constexpr const char* LeftoverTemporaryCaption = "Temporary Chart";
//! Title whose curve is drawn as a thick line without symbols.
inline constexpr const char* SteadyStateTitle = "Steady State Interval";

//! True when some window has the temporary chart's caption.
bool TemporaryChartExists(const std::vector<std::string>& captions);
//! True for the leftover caption without the trailing blank.
bool IsLeftoverTemporaryChart(const std::string& caption);
//! The question asked when a changed chart closes, naming its file (the caption of a chart
//! never saved); empty for the temporary chart (compared upper-cased and trimmed) and for an
//! unchanged chart. Yes/No/Cancel with the question icon.
shell::Message SaveQuestion(const ChartDocument& chart, const std::string& caption);

//! True when some point has a numeric X and Y, both other than NullValue.
bool HasPlottableValues(const std::vector<std::vector<double>>& xy);
//! The producer's refusal of a profile without values.
std::string EmptyProfileMessage(const std::string& function, bool logarithmic);

//! The X axis label of a time profile: "Time (sec)" or "Log10 Time ... (sec)", with
//! " x " + scale when the time scale isn't 1.
std::string TimeAxisLabel(double timeScale, bool logTime);

//! One profile handed over by a producer.
struct ProfileRequest {
    int pointCount = 0; //!< points plus one
    std::vector<std::vector<double>> xy; //!< row 0 X, row 1 Y
    std::string title;
    std::string label;
    bool exists = false;       //!< a temporary chart was open before this plot
    bool addRequested = false; //!< Ctrl held; cleared on return
    double timeScale = 1.0;
    bool logTime = false;
};

struct PlotProfileResult {
    bool failed = false;
    bool added = false; //!< the profile became a further subset
};

//! Plots a profile on the temporary chart: a new subset when a chart exists and adding was
//! requested, else the chart's content is replaced.
PlotProfileResult PlotProfile(ChartDocument& chart, ChartWindowState& state,
                              PlotExchange& exchange, ProfileRequest& request,
                              const RandomSource& random);

//! Adds the subsets of the exchange's add buffer, with the overflow pair of a reaction label.
//! A chart with one subset of one point counts as empty and is replaced.
void SubSetAdd(ChartDocument& chart, const PlotExchange& exchange, const std::string& piece1,
               const std::string& piece2, const RandomSource& random);

inline constexpr const char* LastProfileMessage =
    "The chart contains only one profile; it cannot be deleted.";

//! Deletes subset k; refuses the last one.
shell::Message SubsetDel(ChartDocument& chart, ChartWindowState& state, int subset);

//! Result of cut and copy: the clipboard text when a subset was selected.
struct ClipboardAction {
    bool done = false;
    std::string clipboardText;
    shell::Message message;
};

//! Cut: the selected subset's block for the clipboard, then the subset is deleted.
ClipboardAction CUTSS(ChartDocument& chart, ChartWindowState& state, const std::string& caption,
                      const std::tm& now);
//! Copy: the selected subset's block for the clipboard; the selection ends.
ClipboardAction SAVESS(ChartDocument& chart, ChartWindowState& state, const std::string& caption,
                       const std::tm& now);
//! Delete of the selected subset.
shell::Message DeleteSelectedSubset(ChartDocument& chart, ChartWindowState& state);
//! Paste: reads clipboard text and adds it as a further subset.
shell::Message PASTESS(ChartDocument& chart, PlotExchange& exchange,
                       const std::string& clipboardText, const RandomSource& random);

} // namespace zarvion::charts
