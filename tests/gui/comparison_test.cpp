// The comparison window on the solved GRI-Mech 3.0 sample and a reduced mechanism of it,
// solved here with the real solver, set against what zarvion-cli compare prints.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <functional>

#include "GuiTestSupport.h"
#include "ProgramRun.h"
#include "charts/ChartProducer.h"
#include "charts/PLOT.h"
#include "comparison/Comparison.h"
#include "shell/MDIForm1.h"
#include "shell/TextFile.h"
#include "textdocs/RES_ShowFile.h"

using namespace zarvion::gui;
using namespace zarvion::gui::testing;

namespace {

//! One curve as zarvion-cli compare prints it: "# label", "x<TAB>y", points.
struct Curve {
    QString label;
    std::vector<std::pair<double, double>> points;
};

std::vector<Curve> parseCurves(const QByteArray& text)
{
    std::vector<Curve> curves;
    for (const QString& line : QString::fromLatin1(text).split('\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(QStringLiteral("# "))) {
            curves.push_back({line.mid(2), {}});
        } else if (!curves.empty() && line != QLatin1String("x\ty")) {
            const QStringList xy = line.split('\t');
            curves.back().points.emplace_back(xy[0].toDouble(), xy[1].toDouble());
        }
    }
    return curves;
}

//! The points of a chart subset that have a value, as the chart holds them.
std::vector<std::pair<double, double>> shownPoints(const zarvion::charts::Subset& s)
{
    std::vector<std::pair<double, double>> points;
    for (std::size_t i = 0; i < s.x.size(); ++i) {
        if (zarvion::charts::IsValue(s.x[i]) && zarvion::charts::IsValue(s.y[i]))
            points.emplace_back(s.x[i], s.y[i]);
    }
    return points;
}

//! Compares a subset with a curve of the command line. The command prints 15 significant
//! digits, which read back within half a unit of the 15th digit: 5e-15 relative at most.
void compareCurve(const zarvion::charts::Subset& shown, const Curve& expected)
{
    QCOMPARE(QString::fromStdString(shown.label), expected.label);
    const auto points = shownPoints(shown);
    QCOMPARE(points.size(), expected.points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        QVERIFY(std::abs(points[i].first - expected.points[i].first) <= 5e-15 * std::abs(expected.points[i].first));
        QVERIFY(std::abs(points[i].second - expected.points[i].second) <= 5e-15 * std::abs(expected.points[i].second));
    }
}

QString focusName()
{
    QWidget* w = QApplication::focusWidget();
    return w ? w->objectName() : QString();
}

} // namespace

class ComparisonTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_files;
    QString m_full;
    QString m_reduced;

    //! A frame with the full file open, and its comparison window prepared with file2.
    struct Session {
        ProgramFolder folder;
        MessageRecorder boxes;
        std::unique_ptr<MDIForm1> frame;
        Comparison* window = nullptr;

        Session(const QString& file1, const QString& file2)
        {
            frame = std::make_unique<MDIForm1>(folder.frameOptions());
            frame->show();
            frame->OpenDocument(file1);
            for (QWidget* w : frame->Children()) {
                if (auto* doc = qobject_cast<RES_ShowFile*>(w); doc && doc->MePath() == file1) {
                    auto* command = doc->findChild<QAction*>(QStringLiteral("RESCOMP"));
                    if (command && command->isEnabled())
                        command->trigger();
                }
            }
            window = Comparison::Instance();
            if (!window)
                return;
            window->Text2->setText(file2);
            window->Command3->click();
            (void)QTest::qWaitFor([this] { return window->table()->rowCount() > 0 || !boxes.shown.isEmpty(); }, 10000);
        }
        ~Session()
        {
            if (PLOT* chart = TemporaryChartWindow())
                frame->CloseChild(chart);
        }
        int viewRowOf(const QString& name) const
        {
            for (int r = 0; r < window->grid()->model()->rowCount(); ++r) {
                if (window->grid()->model()->index(r, MergedTableModel::Species).data().toString() == name)
                    return r;
            }
            return -1;
        }
        //! A double click on the row header of a species, Ctrl held or not.
        void doubleClickRow(const QString& name, bool ctrl = false)
        {
            QHeaderView* header = window->grid()->verticalHeader();
            const int row = viewRowOf(name);
            const QPoint at(header->width() / 2, header->sectionViewportPosition(row) + header->sectionSize(row) / 2);
            const Qt::KeyboardModifiers modifiers = ctrl ? Qt::ControlModifier : Qt::NoModifier;
            QTest::mouseDClick(header->viewport(), Qt::LeftButton, modifiers, at);
        }
        const zarvion::charts::ChartDocument* chart() const
        {
            PLOT* c = TemporaryChartWindow();
            return c ? &c->document() : nullptr;
        }
    };

    QByteArray compare(const QStringList& more) const
    {
        return RunProgram(QStringLiteral("zarvion-cli"), QStringList{QStringLiteral("compare"), m_full, m_reduced} + more);
    }

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        // The full mechanism's solved sample, and the mechanism the flux-share rule keeps with
        // targets CH4, O2, CO2, H2O and temperature at 0.1 (others 0.3), solved here.
        m_full = QDir(m_files.path()).filePath(QStringLiteral("gri30_solved.txt"));
        m_reduced = QDir(m_files.path()).filePath(QStringLiteral("gri30_reduced.txt"));
        QVERIFY(QFile::copy(QStringLiteral(ZARVION_BIN_DIR "/Samples/gri30_solved.txt"), m_full));
        QFile(m_full).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        QStringList reduce{QStringLiteral("reduce"), m_full, QStringLiteral("-o"), m_reduced,
                           QStringLiteral("--temperature"), QStringLiteral("0.1"), QStringLiteral("--others"), QStringLiteral("0.3")};
        for (const char* t : {"CH4", "O2", "CO2", "H2O"})
            reduce << QStringLiteral("--target") << QString::fromLatin1(t) + QStringLiteral("=0.1");
        QVERIFY(!RunProgram(QStringLiteral("zarvion-cli"), reduce).isNull());
        QVERIFY(!RunProgram(QStringLiteral("zarvion-solver"), {m_reduced}).isNull());
    }

    void gridRowsAndMarksEqualTheCommandLine()
    {
        Session s(m_full, m_reduced);
        QVERIFY(s.window);
        QCOMPARE(s.window->windowTitle(), QStringLiteral("Comparing Solver Files"));
        QCOMPARE(s.window->Text1->text(), m_full);
        QVERIFY(s.boxes.shown.isEmpty());
        const QStringList expected = QString::fromLatin1(compare({})).split('\n', Qt::SkipEmptyParts).mid(1);
        QAbstractItemModel* grid = s.window->grid()->model();
        QCOMPARE(grid->rowCount(), expected.size());
        for (int r = 0; r < grid->rowCount(); ++r) {
            QStringList cells;
            for (int c = 0; c < grid->columnCount(); ++c)
                cells << grid->index(r, c).data().toString();
            QCOMPARE(cells.join('\t'), expected[r]);
        }
        // Independently, by the reduced file's own lines: line 12 names its targets
        // (temperature -1 and four species), line 10 its species count; the full file has
        // data for all of its 53 species.
        const auto lines = zarvion::shell::ReadLines(fromQt(m_reduced));
        const int kept = QString::fromStdString(lines[9]).section('!', 0, 0).trimmed().toInt();
        int v = 0, star = 0, absent = 0;
        for (int r = 0; r < grid->rowCount(); ++r) {
            QCOMPARE(grid->index(r, MergedTableModel::N1).data().toString(), QStringLiteral("*"));
            const QString n2 = grid->index(r, MergedTableModel::N2).data().toString();
            v += n2 == QLatin1String("v");
            star += n2 == QLatin1String("*");
            absent += n2.isEmpty();
        }
        QCOMPARE(v, 5);
        QCOMPARE(v + star, kept + 1);
        QCOMPARE(absent, 53 - kept);
        for (const char* target : {"Temperature", "CH4", "O2", "CO2", "H2O"})
            QCOMPARE(grid->index(s.viewRowOf(QString::fromLatin1(target)), MergedTableModel::N2).data().toString(), QStringLiteral("v"));
    }

    void doubleClickPlotsBothProfilesAndCtrlAdds()
    {
        Session s(m_full, m_reduced);
        QVERIFY(s.window);
        s.doubleClickRow(QStringLiteral("Temperature"));
        const auto* chart = s.chart();
        QVERIFY(chart);
        const auto temperature = parseCurves(compare({QStringLiteral("--species"), QStringLiteral("T")}));
        QCOMPARE(temperature.size(), std::size_t(2));
        QCOMPARE(chart->subsetCount(), 2);
        compareCurve(chart->subsets[0], temperature[0]);
        compareCurve(chart->subsets[1], temperature[1]);
        QCOMPARE(QString::fromStdString(chart->mainTitle), QStringLiteral("F1 gri30_solved,  F2 gri30_reduced"));
        // The chart stands in front of the comparison window.
        QCOMPARE(s.frame->activeChild(), static_cast<QWidget*>(TemporaryChartWindow()));

        s.doubleClickRow(QStringLiteral("CH4"), true);
        QCOMPARE(s.chart()->subsetCount(), 4);
        const auto methane = parseCurves(compare({QStringLiteral("--species"), QStringLiteral("CH4")}));
        compareCurve(s.chart()->subsets[2], methane[0]);
        compareCurve(s.chart()->subsets[3], methane[1]);

        // Without Ctrl the chart shows the new row alone; a species that the reduced file
        // dropped has one curve.
        s.doubleClickRow(QStringLiteral("C3H8"));
        QCOMPARE(s.chart()->subsetCount(), 1);
        QCOMPARE(QString::fromStdString(s.chart()->subsets[0].label), QStringLiteral(" F1, C3H8 (mol/cm^3)"));
        QVERIFY(s.boxes.shown.isEmpty());
    }

    void relativeErrorEqualsTheCommandLine()
    {
        Session s(m_full, m_reduced);
        QVERIFY(s.window);
        s.window->Option1_2->setChecked(true);
        QVERIFY(s.window->Text5->isEnabled());
        s.window->Text5->setText(QStringLiteral("0.5"));
        s.doubleClickRow(QStringLiteral("Temperature"));
        const auto* chart = s.chart();
        QVERIFY(chart);
        QCOMPARE(chart->subsetCount(), 1);
        const auto error = parseCurves(compare({QStringLiteral("--species"), QStringLiteral("T"), QStringLiteral("--error")}));
        QCOMPARE(error.size(), std::size_t(1));
        compareCurve(chart->subsets[0], error[0]);
        QVERIFY(!chart->yAxis.logScale);
        // The reduced mechanism ignites later: the error peaks at the front and stays below
        // one, since |T1 - T2| < (T1 + T2) / 2 for any two positive temperatures.
        double peak = 0;
        for (const auto& [t, e] : shownPoints(chart->subsets[0]))
            peak = std::max(peak, e);
        QVERIFY(peak > 0.01 && peak < 1.0);
        QVERIFY(s.boxes.shown.isEmpty());
    }

    void everyMessageSelectsItsField()
    {
        struct Case {
            const char* name;
            std::function<void(Session&)> act;
            QString message;
            QString focus; //!< field with the focus and its text selected, or empty
        };
        const QString missing = QDir(m_files.path()).filePath(QStringLiteral("gone.txt"));
        const QString unsolved = QStringLiteral(ZARVION_BIN_DIR "/Samples/gri30.txt");
        const auto prepare = [](Session& s, const QString& one, const QString& two) {
            s.window->Text1->setText(one);
            s.window->Text2->setText(two);
            bool failed = false;
            s.window->PrepGrid(failed);
        };
        const auto plot = [](Session& s, const char* species, const std::function<void(Comparison*)>& set) {
            set(s.window);
            s.doubleClickRow(QString::fromLatin1(species));
        };
        const auto error = [](Comparison* w) { w->Option1_2->setChecked(true); };
        const QList<Case> cases = {
            {"file 1 missing", [&](Session& s) { prepare(s, missing, m_reduced); },
             QStringLiteral("File1, the specified Path/File name '%1' cannot be accessed or is invalid.").arg(missing), QStringLiteral("Text1")},
            {"file 2 missing", [&](Session& s) { prepare(s, m_full, missing); },
             QStringLiteral("File2, the specified Path/File name '%1' cannot be accessed or is invalid.").arg(missing), QStringLiteral("Text2")},
            {"file 2 without results", [&](Session& s) { prepare(s, m_full, unsolved); },
             QStringLiteral("In the file '%1', results of calculation are not found.").arg(unsolved), QStringLiteral("Text2")},
            {"X scaling zero", [&](Session& s) { plot(s, "CO", [](Comparison* w) { w->Text3->setText(QStringLiteral("0")); }); },
             QStringLiteral("Scaling factor for X-axis, please enter a nonzero number."), QStringLiteral("Text3")},
            {"logarithmic X scaling negative",
             [&](Session& s) { plot(s, "CO", [](Comparison* w) { w->Option4->setChecked(true); w->Text3->setText(QStringLiteral("-1")); }); },
             QStringLiteral("Scaling factor for logarithmic X-axis, please enter a positive number."), QStringLiteral("Text3")},
            {"Y scaling not a number", [&](Session& s) { plot(s, "CO", [](Comparison* w) { w->Text4->setText(QStringLiteral("abc")); }); },
             QStringLiteral("Scaling factor for Y-axis, please enter a nonzero number."), QStringLiteral("Text4")},
            {"logarithmic Y scaling zero",
             [&](Session& s) { plot(s, "CO", [](Comparison* w) { w->Option7->setChecked(true); w->Text4->setText(QStringLiteral("0")); }); },
             QStringLiteral("Scaling factor for logarithmic Y-axis, please enter a positive number."), QStringLiteral("Text4")},
            {"b above 1", [&](Session& s) { plot(s, "CO", [error](Comparison* w) { error(w); w->Text5->setText(QStringLiteral("1.5")); }); },
             QStringLiteral("Relative error parameter, please enter a number on the interval [0, 1]."), QStringLiteral("Text5")},
            {"error of a species file 2 lacks", [&](Session& s) { plot(s, "C3H8", error); },
             QStringLiteral("File 2, the data for 'C3H8' is not available; the comparison cannot be performed."), QString()},
            {"error of a species file 1 lacks",
             [&](Session& s) { prepare(s, m_reduced, m_full); plot(s, "C3H8", error); },
             QStringLiteral("File 1, the data for 'C3H8' is not available; the comparison cannot be performed."), QString()},
            {"error of a file against itself", [&](Session& s) { prepare(s, m_full, m_full); plot(s, "OH", error); },
             QStringLiteral("You are attempting to plot a function where all values are zero."), QString()},
            {"logarithm of a species absent throughout",
             [&](Session& s) { plot(s, "AR", [](Comparison* w) { w->Option7->setChecked(true); }); },
             QStringLiteral("You are attempting to plot a function where all values are zero or logarithms of negative numbers. "), QString()},
        };
        for (const Case& c : cases) {
            Session s(m_full, m_reduced);
            QVERIFY2(s.window, c.name);
            s.window->TabStrip1->setCurrentIndex(1); // the help page: a refusal brings the plot page back
            s.boxes.shown.clear();
            c.act(s);
            QVERIFY2(!s.boxes.shown.isEmpty(), c.name);
            QCOMPARE(s.boxes.shown.first().text, c.message);
            QCOMPARE(s.boxes.shown.first().style, 48);
            QCOMPARE(s.boxes.shown.first().title, QStringLiteral("ZARVION"));
            if (!c.focus.isEmpty()) {
                QCOMPARE(focusName(), c.focus);
                auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
                QCOMPARE(box->selectedText(), box->text());
                if (c.focus.startsWith(QLatin1String("Text")) && c.focus != QLatin1String("Text1") && c.focus != QLatin1String("Text2"))
                    QCOMPARE(s.window->TabStrip1->currentWidget(), s.window->FramePlot);
            }
            QVERIFY2(TemporaryChartWindow() == nullptr, c.name); // nothing was plotted
        }
    }

    void helpPageExplainsTheMarksAndTheError()
    {
        const QString help = Comparison::HelpText();
        for (const char* line : {
                 "Plotting Functions",
                 "Select function you want to plot: species concentration or relative error. Move the table cursor ",
                 "to the chosen species and double click the corresponding row header. The profily appears on Temporary Chart. ",
                 "To add the profily to existing Temporary Chart, hold down the Ctrl button and double click the row header.",
                 "Relative Error Estimation", "abs(Ck,1 - Ck,2)", "Error = ----------------------------------",
                 "b Ck,1 + (1 - b) Ck,2",
                 "where Ck is the k-th species concentration or temperature, b is a parameter on the interval [0,1].",
                 "In the table, the asterisk (*) denotes species, for which the data are available; the 'v' symbol denotes target species specified during formation of reduced reaction mechanism."})
            QVERIFY2(help.contains(QString::fromLatin1(line)), line);
    }
};

QTEST_MAIN(ComparisonTest)
#include "comparison_test.moc"
