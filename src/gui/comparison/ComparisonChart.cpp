#include "comparison/ComparisonChart.h"

namespace zarvion::gui {

// The chart windows are not part of this program yet: nothing is drawn.
bool ShowComparisonCurve(QWidget*, const comparison::PlotCurve&, const comparison::PlotSettings&,
                         bool)
{
    return false;
}

} // namespace zarvion::gui
