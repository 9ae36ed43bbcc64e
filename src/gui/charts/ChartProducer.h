#pragma once
// The one way producers of curves (the post-processor, the comparison) reach the charts: the
// temporary chart, fed one profile at a time, with the window walk around each plot.

#include <QString>
#include <vector>

#include "charts/PlotExchange.h"
#include "charts/TemporaryChart.h"

class QWidget;

namespace zarvion::gui {

//! Some open child window has the caption "Temporary Chart " (trailing blank).
bool TemporaryChartExists();
//! Shows one profile on the temporary chart with the whole producer walk around PlotProfile:
//! leftover "Temporary Chart" windows unloaded, maximised children restored; the data test
//! (charts::HasPlottableValues) with the empty-profile message (charts::EmptyProfileMessage with
//! `function` and `logarithmic`) shown when nothing can be plotted; `request.exists` set from
//! TemporaryChartExists(); charts::PlotProfile on the temporary chart (created when missing,
//! placed at 400, 400 when new); then the other children except `producer` sent back (or
//! minimised when the chart is new). request.addRequested (Ctrl held) adds a subset and is
//! cleared on return. False when nothing was plotted (the message has been shown).
bool PlotProfile(QWidget* producer, charts::ProfileRequest& request, const QString& function,
                 bool logarithmic);
//! Shows bars as a histogram chart on the temporary chart (charts::LayoutHistogram), with the
//! same window walk. False when nothing was shown.
bool ShowHistogram(QWidget* producer, const QString& title,
                   const std::vector<charts::HistogramBar>& bars);
class PLOT; //!< src/gui/charts/PLOT.h; has `const charts::ChartDocument& document() const`
//! The temporary chart window, or nullptr.
PLOT* TemporaryChartWindow();

} // namespace zarvion::gui
