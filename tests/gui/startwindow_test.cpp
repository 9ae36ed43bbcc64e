// The solver start window and the solver run, driven through the real widgets: a solver
// file opened in the frame, "Run Solver" from its text window, the checks, the settings, and
// a real run of the solver program.
#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSortFilterProxyModel>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "GuiTestSupport.h"
#include "shell/MDIForm1.h"
#include "shell/SessionState.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"
#include "solverfile/RunSolver.h"
#include "solverfile/SOL_RUN.h"
#include "textdocs/RES_ShowFile.h"

using namespace zarvion::gui;
using namespace zarvion::gui::testing;

namespace {

struct Fixture {
    ProgramFolder folder;
    MessageRecorder boxes;
    std::unique_ptr<MDIForm1> frame;
    QString path;

    explicit Fixture(const QString& source = fixture("toy_mechanism.txt"),
                     const QString& name = QStringLiteral("toy.txt"))
    {
        frame = std::make_unique<MDIForm1>(folder.frameOptions());
        path = folder.copy(source, name);
        frame->OpenDocument(path);
    }

    RES_ShowFile* document() const
    {
        for (QWidget* w : frame->Children()) {
            if (auto* doc = qobject_cast<RES_ShowFile*>(w); doc && doc->MePath() == path)
                return doc;
        }
        return nullptr;
    }

    //! "Run Solver" of the text window; the frame creates the start window a moment later.
    SOL_RUN* openStartWindow()
    {
        RES_ShowFile* doc = document();
        if (!doc)
            return nullptr;
        doc->RunSol();
        (void)QTest::qWaitFor([] { return SOL_RUN::Instance() != nullptr; }, 3000);
        SOL_RUN* run = SOL_RUN::Instance();
        if (run) {
            run->activateWindow();
            (void)QTest::qWaitForWindowActive(run);
        }
        return run;
    }
};

QString fieldInFocus()
{
    QWidget* w = QApplication::focusWidget();
    return w ? w->objectName() : QString();
}

} // namespace

class StartWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanup() { SetConsoleObserver({}); }

    void fieldsComeFromTheFile()
    {
        Fixture f;
        SOL_RUN* run = f.openStartWindow();
        QVERIFY(run);
        QCOMPARE(run->windowTitle(), QStringLiteral("Solver File   toy"));
        QCOMPARE(run->Text1->text(), QStringLiteral("1.00E+00"));
        QVERIFY(run->Option3->isChecked()); // line 15 is 1: the energy equation
        QVERIFY(!run->Option1->isChecked());
        QCOMPARE(run->Text3->text(), QStringLiteral("1.2E+03"));
        QCOMPARE(run->Text4[1]->text(), QStringLiteral("1.0E-03"));
        QCOMPARE(run->Text4[5]->text(), QStringLiteral("3")); // 2 in the file, raised to 3
        QCOMPARE(run->Text4[6]->text(), QStringLiteral("1")); // 0 in the file, raised to 1
        QCOMPARE(run->Label2->text(), QStringLiteral("Reaction mechanism consists of 5 reactions."));
        QCOMPARE(run->fractions()->rowCount(), 4);
        QCOMPARE(run->fractions()->index(1, FractionsModel::Species).data().toString(),
                 QStringLiteral("O2"));
        QVERIFY(!run->Command7->isEnabled()); // no "!$END": no last step
        QVERIFY(run->GridEX1->isColumnHidden(FractionsModel::MolFormula));
    }

    void fieldErrorsInOrderWithFocusOnTheField()
    {
        Fixture f;
        SOL_RUN* run = f.openStartWindow();
        QVERIFY(run);
        run->Text1->setText(QStringLiteral("abc"));
        run->Text4[5]->setText(QStringLiteral("-"));
        run->Text7->setText(QStringLiteral("9000")); // would fail later, must not come first
        run->TabStrip1->setCurrentIndex(1);
        run->Command5->click();
        QCOMPARE(f.boxes.last(), QStringLiteral("Pressure, please enter a positive number."));
        QCOMPARE(f.boxes.shown.last().style, 48);
        QCOMPARE(run->TabStrip1->currentIndex(), 0);
        QTRY_COMPARE(fieldInFocus(), QStringLiteral("Text1"));
        QCOMPARE(run->Text1->selectedText(), QStringLiteral("abc"));

        run->Text1->setText(QStringLiteral("1"));
        run->Command5->click();
        QCOMPARE(f.boxes.last(),
                 QStringLiteral("Maximum number of computed steps, please enter a positive "
                                "integer less than 100000."));
        QCOMPARE(run->TabStrip1->currentIndex(), 1);
        QTRY_COMPARE(fieldInFocus(), QStringLiteral("Text4_5"));

        run->Text4[5]->setText(QStringLiteral("1E6")); // huge
        run->Command5->click();
        QTRY_COMPARE(fieldInFocus(), QStringLiteral("Text4_5"));

        run->Text4[5]->setText(QStringLiteral("500"));
        run->fractions()->Fractions[2] = "-0.1";
        run->Command5->click();
        QCOMPARE(f.boxes.last(), QStringLiteral("Initial mole fractions, please enter positive numbers."));
        // The cursor goes to the refused row, column "Fraction", a moment later.
        QTRY_COMPARE(run->GridEX1->currentIndex().row(), 2);
        QCOMPARE(run->GridEX1->currentIndex().column(), int(FractionsModel::Inval));

        run->fractions()->Fractions[2] = "";
        run->Command5->click();
        QCOMPARE(f.boxes.last(),
                 QStringLiteral("Allowable temperature interval, the minimum value is equal to or "
                                "greater than the maximum value. Enter a correct values."));
        QTRY_COMPARE(fieldInFocus(), QStringLiteral("Text7"));
        // Nothing has been written: the file is the fixture still.
        QCOMPARE(zarvion::shell::ReadLines(f.path.toStdString()),
                 zarvion::shell::ReadLines(fixture("toy_mechanism.txt").toStdString()));
    }

    void savedSettingsAreEnteredByName()
    {
        Fixture f;
        SOL_RUN* run = f.openStartWindow();
        QVERIFY(run);
        run->Text3->setText(QStringLiteral("1500"));
        run->Option1->setChecked(true);
        run->fractions()->Fractions = {"0.5", "0", "0.25", ""};
        run->Command3->click();
        QVERIFY(run->Command6->isEnabled());

        run->DefoultVaues();
        QCOMPARE(run->Text7->text(), QStringLiteral("200"));
        QCOMPARE(run->Text4[1]->text(), QStringLiteral("1.E+00"));
        QCOMPARE(run->Text3->text(), QStringLiteral("1500")); // not touched by the defaults
        run->Command4->click(); // Clear Table
        QCOMPARE(run->fractions()->Fractions, (std::vector<std::string>{"0", "0", "0", "0"}));
        run->Text3->setText(QStringLiteral("999"));
        run->Option3->setChecked(true);

        run->Command6->click(); // Enter
        QCOMPARE(run->Text3->text(), QStringLiteral("1500"));
        QCOMPARE(run->Text7->text(), QStringLiteral("3.0E+02"));
        QVERIFY(run->Option1->isChecked());
        const auto& entered = run->fractions()->Fractions;
        QCOMPARE(entered.size(), std::size_t(4));
        QCOMPARE(entered[1], std::string("0"));
        QCOMPARE(entered[3], std::string("0"));
        QCOMPARE(zarvion::shell::ToDouble(entered[0]).value_or(-1), 0.5);
        QCOMPARE(zarvion::shell::ToDouble(entered[2]).value_or(-1), 0.25);
        QVERIFY2(entered[0].find('E') != std::string::npos, entered[0].c_str()); // "0.###E+00"
    }

    void typedCellIsTakenByTheCommandsAndHeaderClicksSort()
    {
        Fixture f;
        SOL_RUN* run = f.openStartWindow();
        QVERIFY(run);
        QTableView* grid = run->GridEX1;
        // Type into the fraction cell of species 1 and press "Save" with the editor open.
        const QModelIndex cell = grid->model()->index(0, FractionsModel::Inval);
        grid->setCurrentIndex(cell);
        grid->edit(cell);
        auto* editor = grid->viewport()->findChild<QLineEdit*>();
        QVERIFY(editor);
        QTest::keyClicks(editor, QStringLiteral("0.7"));
        run->Save();
        QCOMPARE(run->fractions()->Fractions[0], std::string("0.7"));
        const auto saved = zarvion::shell::ReadLines(
            zarvion::shell::SolverDataPath(zarvion::shell::Session()));
        QVERIFY(std::find(saved.begin(), saved.end(), "H 0.7") != saved.end());

        // Zero shows as an empty cell; a header click sorts, a second one reverses.
        QCOMPARE(grid->model()->index(2, FractionsModel::Inval).data().toString(), QString());
        auto* header = grid->horizontalHeader();
        const int x = header->sectionViewportPosition(FractionsModel::Species) + 5;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, 5));
        const QString first = grid->model()->index(0, FractionsModel::Species).data().toString();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, 5));
        const QString last = grid->model()->index(0, FractionsModel::Species).data().toString();
        QVERIFY(first < last);
        // Ctrl+Home goes back to the first row of the present order.
        grid->setFocus();
        QTest::keyClick(grid, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(grid->currentIndex().row(), 3);
        QTest::keyClick(grid, Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(grid->currentIndex().row(), 0);
    }

    void runOnTheSampleSolvesAndShowsTheNewResults_data()
    {
        QTest::addColumn<QString>("sample");
        QTest::newRow("H2/O2") << QStringLiteral("h2o2.txt");
        QTest::newRow("GRI-Mech 3.0") << QStringLiteral("gri30.txt");
    }

    void runOnTheSampleSolvesAndShowsTheNewResults()
    {
        QFETCH(QString, sample);
        const QString source = QStringLiteral(ZARVION_BIN_DIR "/Samples/") + sample;
        if (!QFileInfo::exists(source))
            QSKIP("the sample is not in the build folder");
        Fixture f(source, QStringLiteral("run.txt"));
        if (!f.folder.hasSolver())
            QSKIP("zarvion-solver is not built");
        SOL_RUN* run = f.openStartWindow();
        QVERIFY(run);
        const QString caption = f.document()->windowTitle();
        run->Check1->setChecked(false);
        bool consoleSeen = false;
        SetConsoleObserver([&](SolverConsole* console) {
            consoleSeen = true;
            QVERIFY(console->isModal());
        });
        f.boxes.answers = {AnswerYes};
        run->Command5->click();
        QVERIFY(consoleSeen);
        QVERIFY(!f.boxes.shown.isEmpty());
        QCOMPARE(f.boxes.shown.first().text,
                 QStringLiteral("The chemical kinetic problem has been successfully solved.\r\n\r\n"
                                "Show results?"));
        QCOMPARE(f.boxes.shown.first().style, 64 + 4);
        // Yes reopened the file's window, which now shows the appended results.
        QTRY_VERIFY(f.document() != nullptr);
        QCOMPARE(f.document()->windowTitle(), caption);
        QVERIFY(f.document()->box()->toPlainText().contains(QStringLiteral("!$Results")));
        QCOMPARE(QString::fromStdString(zarvion::shell::Session().ResultsFilePath), f.path);

        // The finished run offers its last state as new initial conditions.
        run = f.openStartWindow();
        QVERIFY(run);
        QVERIFY(run->Command7->isEnabled());
        const QString before = run->Text4[0]->text();
        run->Command7->click();
        QVERIFY(run->Text4[0]->text() != before);
        QVERIFY(zarvion::shell::LeadingValue(run->Text4[0]->text().toStdString()) > 0);
        run->Cancel();
    }

    void stoppedRunEndsAbnormallyAndLeavesAFileThatOpens()
    {
        Fixture f;
        f.folder.useStalledSolver();
        SOL_RUN* run = f.openStartWindow();
        QVERIFY(run);
        run->Check1->setChecked(true); // the console would stay open; Stop ends it all the same
        SetConsoleObserver([](SolverConsole* console) {
            QObject::connect(console, &SolverConsole::started, console, [console] {
                console->Stop();
                QTimer::singleShot(0, console, &QDialog::accept);
            });
        });
        run->Command5->click();
        QVERIFY(!f.boxes.shown.isEmpty());
        QVERIFY(f.boxes.shown.first().text.startsWith(
            QStringLiteral(" The solver has been terminated abnormally.\r\n")));
        QCOMPARE(f.boxes.shown.first().style & 0x70, 48);
        // The text window was stale and is gone; the file opens again as a solver file.
        QVERIFY(f.document() == nullptr);
        f.frame->OpenDocument(f.path);
        QVERIFY(f.document() != nullptr);
        QVERIFY(f.document()->GetIsSolFile());
    }

    void keptConsoleStaysOpenAfterTheEnd()
    {
        Fixture f;
        if (!f.folder.hasSolver())
            QSKIP("zarvion-solver is not built");
        SOL_RUN* run = f.openStartWindow();
        QVERIFY(run);
        run->Check1->setChecked(true);
        bool openAfterEnd = false;
        QString output;
        SetConsoleObserver([&](SolverConsole* console) {
            auto* poll = new QTimer(console);
            QObject::connect(poll, &QTimer::timeout, console, [&, console, poll] {
                if (console->running())
                    return;
                poll->stop();
                openAfterEnd = console->isVisible();
                output = console->output()->toPlainText();
                console->stopButton()->click(); // "Close"
            });
            poll->start(50);
        });
        run->Command5->click();
        QVERIFY(openAfterEnd);
        QVERIFY(output.startsWith(
            QStringLiteral("To end the task, click the button CLOSE (X) in this window.")));
        QVERIFY(zarvion::shell::Session().KeepConsole);
    }
};

QTEST_MAIN(StartWindowTest)
#include "startwindow_test.moc"
