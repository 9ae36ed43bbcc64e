#include "charts/ChartProducer.h"

#include <QMdiArea>
#include <QMdiSubWindow>

#include "charts/PLOT.h"
#include "platform/Frame.h"
#include "platform/MessageBox.h"

namespace zarvion::gui {

namespace {

const QString TemporaryCaption = QString::fromLatin1(charts::TemporaryChartCaption);

QList<QWidget*> children()
{
    return Frame() ? Frame()->Children() : QList<QWidget*>();
}

QMdiSubWindow* subWindowOf(QWidget* child)
{
    return child ? qobject_cast<QMdiSubWindow*>(child->parentWidget()) : nullptr;
}

//! Step 1 of the walk: leftovers closed, maximised windows restored, a minimised temporary
//! chart restored.
void prepareWindows()
{
    for (QWidget* w : children()) {
        if (charts::IsLeftoverTemporaryChart(fromQt(w->windowTitle()))) {
            Frame()->CloseChild(w);
            continue;
        }
        QMdiSubWindow* sub = subWindowOf(w);
        if (!sub)
            continue;
        if (sub->isMaximized())
            sub->showNormal();
        if (w->windowTitle() == TemporaryCaption && sub->isMinimized())
            sub->showNormal();
    }
}

//! The temporary chart, created in the frame when missing; `created` tells which.
PLOT* temporaryChart(bool& created)
{
    created = false;
    if (PLOT* chart = TemporaryChartWindow())
        return chart;
    auto* chart = new PLOT;
    chart->setWindowTitle(TemporaryCaption);
    created = true;
    if (Frame())
        Frame()->AddChild(chart);
    else
        chart->show();
    return chart;
}

//! Step 5 of the walk: a new chart goes to its place; the other windows except the producer
//! go back, or are minimised beside a new chart.
void arrangeWindows(PLOT* chart, QWidget* producer, bool created)
{
    QMdiSubWindow* sub = subWindowOf(chart);
    if (created && sub) {
        // 400 twips from the top and the left of the frame's area.
        const double dpi = chart->logicalDpiX() > 0 ? chart->logicalDpiX() : 96.0;
        const int offset = static_cast<int>(400.0 * dpi / 1440.0 + 0.5);
        sub->move(offset, offset);
    }
    if (sub)
        sub->show();
    chart->show();
    for (QWidget* w : children()) {
        if (w == chart || w == producer)
            continue;
        QMdiSubWindow* other = subWindowOf(w);
        if (!other)
            continue;
        if (created)
            other->showMinimized();
        else
            other->lower();
    }
    if (sub)
        sub->raise();
    if (QMdiSubWindow* own = subWindowOf(producer))
        own->raise();
}

} // namespace

bool TemporaryChartExists()
{
    std::vector<std::string> captions;
    for (QWidget* w : children())
        captions.push_back(fromQt(w->windowTitle()));
    return charts::TemporaryChartExists(captions);
}

PLOT* TemporaryChartWindow()
{
    for (QWidget* w : children()) {
        if (auto* chart = qobject_cast<PLOT*>(w); chart && w->windowTitle() == TemporaryCaption)
            return chart;
    }
    return nullptr;
}

bool PlotProfile(QWidget* producer, charts::ProfileRequest& request, const QString& function,
                 bool logarithmic)
{
    try {
        prepareWindows();
        if (!charts::HasPlottableValues(request.xy)) {
            request.addRequested = false;
            ShowMessage(toQt(charts::EmptyProfileMessage(fromQt(function), logarithmic)),
                        shell::StyleWarning);
            return false;
        }
        request.exists = TemporaryChartExists();
        bool created = false;
        PLOT* chart = temporaryChart(created);
        const charts::PlotProfileResult result = chart->plotProfile(request);
        if (result.failed) {
            if (Frame())
                Frame()->CloseChild(chart);
            else
                chart->close();
            return false;
        }
        arrangeWindows(chart, producer, created);
        return true;
    } catch (const std::exception& e) {
        request.addRequested = false;
        ReportError(QStringLiteral("Plot#201. "), toQt(e.what()));
        return false;
    }
}

bool ShowHistogram(QWidget* producer, const QString& title,
                   const std::vector<charts::HistogramBar>& bars)
{
    try {
        prepareWindows();
        if (bars.empty())
            return false;
        bool created = false;
        PLOT* chart = temporaryChart(created);
        chart->showHistogram(fromQt(title), bars);
        arrangeWindows(chart, producer, created);
        return true;
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Plot#202. "), toQt(e.what()));
        return false;
    }
}

} // namespace zarvion::gui
