#pragma once
// Hands one curve of the comparison window to the temporary chart.

#include "comparison/ComparisonPlot.h"

class QWidget;

namespace zarvion::gui {

//! Plots curve on the temporary chart as the comparison's producer: a new chart content, or
//! a further subset when add is set and the chart exists. The time axis is scaled and, with
//! logX, logarithmic as settings say; a relative error is plotted on a linear Y axis. False
//! when nothing was plotted.
bool ShowComparisonCurve(QWidget* producer, const comparison::PlotCurve& curve,
                         const comparison::PlotSettings& settings, bool add);

} // namespace zarvion::gui
