#include "comparison/ComparisonChart.h"

#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>

#include "charts/ChartProducer.h"
#include "charts/PLOT.h"
#include "platform/MessageBox.h"

namespace zarvion::gui {

bool ShowComparisonCurve(QWidget* producer, const QString& title,
                         const comparison::PlotCurve& curve,
                         const comparison::PlotSettings& settings, bool add)
{
    charts::ProfileRequest request;
    request.pointCount = static_cast<int>(curve.x.size()) + 1;
    request.xy = {curve.x, curve.y};
    request.title = fromQt(title);
    request.label = curve.label;
    request.addRequested = add;
    request.timeScale = settings.XScale;
    request.logTime = settings.logX;
    if (!PlotProfile(producer, request, toQt(curve.label), settings.logY))
        return false;
    PLOT* chart = TemporaryChartWindow();
    if (!chart)
        return false;
    if (settings.relativeError) {
        // An error is read on a linear axis, whatever scale the chart was given before.
        charts::AxisSettings& y = chart->document().yAxis;
        y.logScale = false;
        if (y.manualScale == 2)
            y.manualScale = 0;
        chart->Refr();
    }
    // The chart comes to the front, over the comparison window.
    if (auto* sub = qobject_cast<QMdiSubWindow*>(chart->parentWidget())) {
        if (QMdiArea* area = sub->mdiArea())
            area->setActiveSubWindow(sub);
        sub->raise();
    }
    return true;
}

QString ComparisonTitle(const QString& path1, const QString& path2)
{
    return QStringLiteral("F1 %1,  F2 %2")
        .arg(QFileInfo(path1).completeBaseName(), QFileInfo(path2.trimmed()).completeBaseName());
}

} // namespace zarvion::gui
