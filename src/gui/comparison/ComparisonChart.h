#pragma once
// Hands one curve of the comparison window to the temporary chart.

#include <QString>

#include "comparison/ComparisonPlot.h"

class QWidget;

namespace zarvion::gui {

//! Plots curve on the temporary chart as the comparison's producer, under title: a new chart
//! content, or a further subset when add is set and the chart exists. The time axis is scaled
//! and, with logX, logarithmic as settings say; a relative error is shown on a linear Y axis;
//! the chart then stands in front. False when nothing was plotted.
bool ShowComparisonCurve(QWidget* producer, const QString& title,
                         const comparison::PlotCurve& curve,
                         const comparison::PlotSettings& settings, bool add);

//! The chart title of a comparison: which file is F1 and which F2.
QString ComparisonTitle(const QString& path1, const QString& path2);

} // namespace zarvion::gui
