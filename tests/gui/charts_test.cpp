// The chart windows: the producer API on the temporary chart, chart files through the frame,
// the chart toolbar, subsets through the real clipboard, interaction, set-up and export.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStandardPaths>
#include <QTest>
#include <QToolBar>
#include <cmath>

#include "GuiTestSupport.h"
#include "charts/ChartFile.h"
#include "charts/ChartProducer.h"
#include "charts/ChartView.h"
#include "charts/PLOT.h"
#include "shell/FileGuards.h"

using namespace zarvion;
using namespace zarvion::gui;
using namespace zarvion::gui::testing;
using charts::NullValue;

namespace {

//! A profile of n points: X = 0.1 k [s], Y = k^2 (independent of the program: plain squares),
//! with point 2 left without a value.
charts::ProfileRequest squares(int n, const std::string& label)
{
    charts::ProfileRequest r;
    r.pointCount = n + 1;
    r.xy.assign(2, std::vector<double>(static_cast<std::size_t>(n)));
    for (int k = 0; k < n; ++k) {
        r.xy[0][k] = 0.1 * k;
        r.xy[1][k] = double(k) * k;
    }
    r.xy[1][2] = NullValue;
    r.title = label;
    r.label = label;
    return r;
}

//! Random styles from a fixed sequence, so that colours are known.
void fixedStyles()
{
    PLOT::SetRandomSource([] { return 0.3; }); // colour round(8 * 0.3) = 2 (green), symbol 3
}

QMdiSubWindow* subOf(QWidget* w)
{
    return qobject_cast<QMdiSubWindow*>(w->parentWidget());
}

} // namespace

class ChartsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        fixedStyles();
    }

    void producerReplacesAddsWithCtrlAndRefusesEmptyProfiles()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        MDIForm1 frame(folder.frameOptions());
        auto* producer = new QWidget;
        producer->setWindowTitle(QStringLiteral("Producer"));
        frame.AddChild(producer);
        auto* bystander = new QWidget;
        bystander->setWindowTitle(QStringLiteral("Other"));
        frame.AddChild(bystander);
        subOf(bystander)->showMaximized();

        // Nothing to plot: the producer's message, no chart.
        charts::ProfileRequest empty = squares(4, "OH");
        empty.xy[1].assign(4, NullValue);
        empty.addRequested = true;
        QVERIFY(!PlotProfile(producer, empty, QStringLiteral("OH"), true));
        QCOMPARE(boxes.last(), QStringLiteral("You are attempting to plot the function 'OH' where "
                                              "all values are zero or logarithms of negative numbers. "));
        QVERIFY(!TemporaryChartExists());
        QVERIFY(!empty.addRequested);

        // Ctrl held with no temporary chart: a new chart of one subset.
        charts::ProfileRequest first = squares(6, "OH");
        first.addRequested = true;
        QVERIFY(PlotProfile(producer, first, QStringLiteral("OH"), false));
        QVERIFY(!first.addRequested);
        QVERIFY(TemporaryChartExists());
        PLOT* chart = TemporaryChartWindow();
        QVERIFY(chart);
        QCOMPARE(chart->windowTitle(), QStringLiteral("Temporary Chart "));
        QCOMPARE(chart->document().subsetCount(), 1);
        QCOMPARE(chart->document().points, 6); // pointCount is the count plus one
        QCOMPARE(chart->document().xAxisLabel, std::string("Time (sec)"));
        // A new chart: the others are minimised (the maximised one restored first), the
        // producer stays; the chart sits 400 twips from the corner of the area.
        QVERIFY(subOf(bystander)->isMinimized());
        QVERIFY(!subOf(producer)->isMinimized());
        const int offset = int(400.0 * chart->logicalDpiX() / 1440.0 + 0.5);
        QCOMPARE(subOf(chart)->pos(), QPoint(offset, offset));

        // Drawn as one graph a subset, one entry a point, a gap at the point without a value.
        auto* graph = qobject_cast<QCPGraph*>(chart->view()->plottableOf(0));
        QVERIFY(graph);
        QCOMPARE(graph->data()->size(), 6);
        QVERIFY(std::isnan(graph->data()->at(2)->value));
        QCOMPARE(graph->data()->at(5)->value, 25.0);
        QCOMPARE(chart->view()->xAxis->label(), QStringLiteral("Time (sec)"));

        // Ctrl held: a further subset on the same window; the longer one pads the shorter.
        charts::ProfileRequest second = squares(8, "H2O");
        second.addRequested = true;
        QVERIFY(PlotProfile(producer, second, QStringLiteral("H2O"), false));
        QVERIFY(!second.addRequested);
        QCOMPARE(TemporaryChartWindow(), chart);
        QCOMPARE(chart->document().subsetCount(), 2);
        QCOMPARE(chart->document().points, 8);
        QCOMPARE(chart->document().subsets[0].y[7], NullValue);
        QCOMPARE(chart->view()->legend->itemCount(), 2);

        // Without Ctrl the content is replaced, and the other windows go back.
        subOf(bystander)->showNormal();
        charts::ProfileRequest third = squares(5, "CO");
        QVERIFY(PlotProfile(producer, third, QStringLiteral("CO"), false));
        QCOMPARE(chart->document().subsetCount(), 1);
        QCOMPARE(chart->document().subsets[0].label, std::string("CO"));
        QVERIFY(!subOf(bystander)->isMinimized());

        // A leftover captioned without the trailing blank is unloaded before a plot.
        auto* leftover = new PLOT;
        leftover->setWindowTitle(QStringLiteral("Temporary Chart"));
        QPointer<PLOT> guard(leftover);
        frame.AddChild(leftover);
        charts::ProfileRequest fourth = squares(5, "CO2");
        QVERIFY(PlotProfile(producer, fourth, QStringLiteral("CO2"), false));
        QTRY_VERIFY(guard.isNull());
        QCOMPARE(TemporaryChartWindow(), chart);
        QVERIFY(boxes.shown.size() == 1); // closing the temporary charts asked nothing
    }

    void histogramShowsBarsWithReactionTickLabels()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        MDIForm1 frame(folder.frameOptions());
        const std::vector<charts::HistogramBar> bars = {
            {"R1,H+O2=O+OH", 2.5e-6}, {"R2,O+H2=H+OH", -1.0e-6}, {"R3,OH+H2=H+H2O", 4.0e-7}};
        QVERIFY(!ShowHistogram(nullptr, QStringLiteral("Production"), {}));
        QVERIFY(ShowHistogram(nullptr, QStringLiteral("Production"), bars));
        PLOT* chart = TemporaryChartWindow();
        QVERIFY(chart);
        const auto& doc = chart->document();
        QCOMPARE(doc.plottingMethod, charts::HistogramMethod);
        QCOMPARE(doc.mainTitle, std::string("Production"));
        // Standard colour 9 (light blue) above zero, 12 (light red) otherwise.
        QCOMPARE(doc.subsets[0].color, charts::StandardColor(9));
        QCOMPARE(doc.subsets[1].color, charts::StandardColor(12));
        ChartView* view = chart->view();
        for (int k = 0; k < 3; ++k) {
            auto* b = qobject_cast<QCPBars*>(view->plottableOf(k));
            QVERIFY(b);
            QCOMPARE(b->data()->at(0)->key, double(k + 1));
            QCOMPARE(b->data()->at(0)->value, bars[k].value);
        }
        auto ticker = view->xAxis->ticker().dynamicCast<QCPAxisTickerText>();
        QVERIFY(ticker);
        QCOMPARE(ticker->ticks().value(2.0), QStringLiteral("R2,O+H2=H+OH"));
        QCOMPARE(view->legend->itemCount(), 0); // the bars are named on the axis
        QVERIFY(view->yAxis->range().lower < -1.0e-6 && view->yAxis->range().upper > 2.5e-6);
        QVERIFY(boxes.shown.isEmpty());
    }

    void chartFilesOpenThroughTheFrameAndTheToolbarCallsTheChart()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        MDIForm1 frame(folder.frameOptions());
        QVERIFY(!frame.Toolbar2->isVisibleTo(&frame)); // no child: no toolbar

        // MDI_NEW: a blank chart of one subset of one point, with the default texts.
        frame.findChild<QAction*>(QStringLiteral("MDI_NEW"))->trigger();
        auto* blank = qobject_cast<PLOT*>(frame.activeChild());
        QVERIFY(blank);
        QCOMPARE(blank->windowTitle(), QStringLiteral("Chart 1"));
        QCOMPARE(std::tuple(blank->document().subsetCount(), blank->document().points),
                 std::tuple(1, 1));
        QCOMPARE(blank->document().mainTitle, std::string("Main Title"));
        QVERIFY(frame.Toolbar2->isVisibleTo(&frame)); // ToolBr: SetToolbarMode(2)
        QVERIFY(!frame.Toolbar5->isVisibleTo(&frame));
        // The chart's own File menu stands in place of the frame's.
        QCOMPARE(frame.menuBar()->actions().first()->menu()->objectName(), QStringLiteral("GRAPH"));

        // A chart file opens in a chart window named after the file.
        charts::ChartDocument stored;
        charts::PlotExchange exchange;
        exchange.SubsetCount = 1;
        exchange.PointCount = 3;
        exchange.sizeChartBuffers();
        exchange.ChartDataBuffer = {{1, 2, 3}, {4, 5, 6}};
        exchange.SubsetLabelBuffer = {"T"};
        exchange.PlotTitles[1] = "Temperature";
        charts::Intit(stored, exchange, false, false, [] { return 0.5; });
        const QString path = QDir(folder.path()).filePath(QStringLiteral("run1.pg"));
        QVERIFY(charts::StoreChart(stored, path.toStdString()));
        frame.OpenDocument(path);
        auto* opened = qobject_cast<PLOT*>(frame.activeChild());
        QVERIFY(opened && opened != blank);
        QCOMPARE(opened->windowTitle(), QStringLiteral("run1.pg"));
        QCOMPARE(opened->document().mainTitle, std::string("Temperature"));
        QCOMPARE(opened->document().subsets[0].y, (std::vector<double>{4, 5, 6}));

        // A "pg" file of the wrong content: the message and no window.
        const QString bad = folder.copy(fixture("h2o2.txt"), QStringLiteral("bad.pg"));
        const int windows = frame.mdiArea()->subWindowList().size();
        frame.OpenDocument(bad);
        QCOMPARE(boxes.last(), QString::fromStdString(
                                   shell::ChartOpenFailedMessage(bad.toStdString()).text));
        QCOMPARE(frame.mdiArea()->subWindowList().size(), windows);

        // Toolbar keys call the chart's operations by name.
        opened->document().mainTitle.clear();
        frame.toolbarAction(frame.Toolbar2, QStringLiteral("SHOWTEXT"))->trigger();
        QCOMPARE(opened->document().mainTitle, std::string("Main Title"));
        QAction* marker = frame.toolbarAction(frame.Toolbar2, QStringLiteral("MARKER"));
        QVERIFY(marker->isChecked()); // marks on, as the chart has them
        marker->trigger();
        QVERIFY(!opened->document().markDataPoints);
        QAction* grid = frame.toolbarAction(frame.Toolbar2, QStringLiteral("GRIDLINE"));
        grid->trigger();
        QVERIFY(opened->document().gridLines);
        QVERIFY(opened->view()->xAxis->grid()->visible());
        QAction* colour = frame.toolbarAction(frame.Toolbar2, QStringLiteral("LEGEND"));
        QVERIFY(colour->isChecked());
        colour->trigger(); // up: monochrome
        QVERIFY(opened->document().monochrome);
        QCOMPARE(opened->document().subsets[0].color, charts::Color(0));
        colour->trigger();
        QVERIFY(!opened->document().monochrome);
        QCOMPARE(opened->document().subsets[0].color, stored.subsets[0].color);
    }
};

QTEST_MAIN(ChartsTest)
#include "charts_test.moc"
