// The reduction window on the solved GRI-Mech 3.0 sample, and the CHEMKIN text of a solver
// file, driven through the real widgets and set against what zarvion-cli writes for the same
// settings.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableView>
#include <QTest>
#include <functional>

#include "GuiTestSupport.h"
#include "ProgramRun.h"
#include "reduction/ChemkinText.h"
#include "reduction/RED_Gen.h"
#include "shell/AtomicFile.h"
#include "shell/MDIForm1.h"
#include "shell/SessionState.h"
#include "shell/TextFile.h"
#include "solverfile/SOL_RUN.h"
#include "textdocs/RES_ShowFile.h"

using namespace zarvion::gui;
using namespace zarvion::gui::testing;

namespace {

QString samplePath(const char* name)
{
    return QDir(QStringLiteral(ZARVION_BIN_DIR "/Samples")).filePath(QString::fromLatin1(name));
}

//! The species of the stoichiometric methane-air sample that are present at the start
//! (Samples/README.md: CH4 : O2 : N2 = 1 : 2 : 7.52).
const QStringList InitialSpecies = {QStringLiteral("O2"), QStringLiteral("CH4"), QStringLiteral("N2")};

//! The four species targets at 0.1 that the reduction is judged by.
const QStringList Targets = {QStringLiteral("O2"), QStringLiteral("H2O"), QStringLiteral("CH4"),
                             QStringLiteral("CO2")};

struct Fixture {
    ProgramFolder folder;
    MessageRecorder boxes;
    std::unique_ptr<MDIForm1> frame;
    QString source;

    explicit Fixture(const char* sample = "gri30_solved.txt")
    {
        frame = std::make_unique<MDIForm1>(folder.frameOptions());
        source = folder.copy(samplePath(sample), QString::fromLatin1(sample));
        frame->OpenDocument(source);
    }
    ~Fixture()
    {
        if (RED_Gen* window = RED_Gen::Instance())
            delete window;
    }

    RES_ShowFile* document(const QString& path) const
    {
        for (QWidget* w : frame->Children()) {
            if (auto* doc = qobject_cast<RES_ShowFile*>(w); doc && doc->MePath() == path)
                return doc;
        }
        return nullptr;
    }

    //! "Reduced Reaction Kinetics" of the source's text window.
    RED_Gen* openReduction()
    {
        RES_ShowFile* doc = document(source);
        auto* command = doc ? doc->findChild<QAction*>(QStringLiteral("REDKIN_RES")) : nullptr;
        if (!command || !command->isEnabled() || !command->parent())
            return nullptr;
        command->trigger();
        RED_Gen* window = RED_Gen::Instance();
        if (window) {
            window->activateWindow();
            (void)QTest::qWaitForWindowActive(window);
        }
        return window;
    }

    QString path(const char* name) const { return QDir(folder.path()).filePath(QString::fromLatin1(name)); }

    //! Opens the window and prepares it with the reduced file `reduced`.
    RED_Gen* prepared(const char* reduced = "reduced.txt")
    {
        RED_Gen* window = openReduction();
        if (!window)
            return nullptr;
        window->Text5->setText(path(reduced));
        window->Command7->click();
        return window->Command1->isEnabled() ? window : nullptr;
    }
};

int rowOf(const RED_Gen* window, const QString& species)
{
    for (int r = 0; r < window->species()->rowCount(); ++r) {
        if (window->species()->index(r, SpeciesTableModel::Species).data().toString() == species)
            return r;
    }
    return -1;
}

QString parameterOf(const RED_Gen* window, const QString& species)
{
    return window->species()->index(rowOf(window, species), SpeciesTableModel::Parameter).data().toString();
}

//! Types a parameter into the grid's cell, as the user does.
void typeParameter(RED_Gen* window, const QString& species, const QString& text)
{
    window->goToRow(rowOf(window, species));
    QTableView* grid = window->grid();
    grid->edit(grid->currentIndex());
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(editor && editor->parentWidget() == grid->viewport());
    editor->selectAll();
    if (text.isEmpty())
        QTest::keyClick(editor, Qt::Key_Delete);
    else
        QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents(); // the view commits the editor's text in a queued call
}

//! The targets of the judged reduction: CH4, O2, CO2, H2O and temperature at 0.1, others 0.3.
void setJudgedTargets(RED_Gen* window)
{
    for (int r = 0; r < window->species()->rowCount(); ++r) {
        const QString name = window->species()->index(r, SpeciesTableModel::Species).data().toString();
        const bool target = Targets.contains(name);
        if (target || !parameterOf(window, name).isEmpty())
            typeParameter(window, name, target ? QStringLiteral("0.1") : QString());
    }
    window->Text1[0]->setText(QStringLiteral("0.1"));
    window->Text1[1]->setText(QStringLiteral("0.3"));
}

QStringList reduceArguments(const QString& source, const QString& output)
{
    QStringList args{QStringLiteral("reduce"), source, QStringLiteral("-o"), output,
                     QStringLiteral("--temperature"), QStringLiteral("0.1"),
                     QStringLiteral("--others"), QStringLiteral("0.3")};
    for (const QString& t : Targets)
        args << QStringLiteral("--target") << t + QStringLiteral("=0.1");
    return args;
}

QByteArray fileBytes(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QString focusName()
{
    QWidget* w = QApplication::focusWidget();
    return w ? w->objectName() : QString();
}

} // namespace

class ReductionTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void prepareFillsTheTableWithTheSpeciesPresentAtTheStart()
    {
        Fixture f;
        RED_Gen* window = f.openReduction();
        QVERIFY(window);
        QCOMPARE(window->windowTitle(), QStringLiteral("Reduced Reaction Kinetics"));
        QCOMPARE(window->Text10->text(), f.source);
        QVERIFY(window->Text10->isReadOnly());
        for (QWidget* w : std::initializer_list<QWidget*>{window->Command1, window->Command2,
                                                          window->Command4, window->Command5,
                                                          window->Frame1})
            QVERIFY2(!w->isEnabled(), qPrintable(w->objectName()));
        QVERIFY(window->Command7->isEnabled());
        QVERIFY(!window->Label8->isVisible());

        window->Text5->setText(f.path("reduced.txt"));
        window->Command7->click();
        QVERIFY(f.boxes.shown.isEmpty());
        QVERIFY(window->Command1->isEnabled() && window->Frame1->isEnabled());
        QVERIFY(window->Label8->isVisible());

        // Line 10 of the file gives the species count; the results section holds two physical
        // lines per record (53 species, 50 a line) and the head record stands first.
        const auto lines = zarvion::shell::ReadLines(fromQt(f.source));
        QCOMPARE(window->species()->rowCount(), QString::fromStdString(lines[9]).split('!')[0].trimmed().toInt());
        int begin = 0;
        int end = 0;
        for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
            const QString l = QString::fromStdString(lines[static_cast<std::size_t>(i)]).trimmed().toUpper();
            if (l.startsWith(QStringLiteral("!$RESULTS")))
                begin = i;
            else if (l.startsWith(QStringLiteral("!$END")))
                end = i;
        }
        const int records = (end - begin - 1) / 2 - 1;
        QCOMPARE(window->Text6->text(), QString::number(records - 1));
        QCOMPARE(window->Text2->text(), QStringLiteral("1"));
        QCOMPARE(window->Text1[1]->text(), QStringLiteral("0.3"));
        // The sample solves the energy equation: temperature may be a target.
        QVERIFY(window->Text1[0]->isVisible());
        QCOMPARE(window->Text1[0]->text(), QStringLiteral("0.1"));

        const QColor highlight(static_cast<QRgb>(zarvion::shell::QBColorRgb(zarvion::shell::Session().HighlightColour)));
        for (int r = 0; r < window->species()->rowCount(); ++r) {
            const QString name = window->species()->index(r, SpeciesTableModel::Species).data().toString();
            const bool initial = InitialSpecies.contains(name);
            const QVariant back = window->species()->index(r, SpeciesTableModel::Parameter).data(Qt::BackgroundRole);
            QCOMPARE(back.isValid() && back.value<QColor>() == highlight, initial);
            QCOMPARE(parameterOf(window, name), initial ? QStringLiteral("0.1") : QString());
            // The Target mark appears only with an edit of the parameter.
            QVERIFY(!window->species()->target(r));
        }
        QCOMPARE(window->currentSpeciesRow(), 0);

        typeParameter(window, QStringLiteral("H2O"), QStringLiteral("0.2"));
        QCOMPARE(parameterOf(window, QStringLiteral("H2O")), QStringLiteral("0.2"));
        QVERIFY(window->species()->target(rowOf(window, QStringLiteral("H2O"))));
        typeParameter(window, QStringLiteral("H2O"), QString());
        QVERIFY(!window->species()->target(rowOf(window, QStringLiteral("H2O"))));
        QCOMPARE(parameterOf(window, QStringLiteral("H2O")), QString());
    }

    void aConstantTemperatureProblemHasNoTemperatureTarget()
    {
        // The H2/O2 sample with line 15 set to 0 (constant temperature), solved here.
        Fixture f("h2o2.txt");
        const QString isothermal = f.path("isothermal.txt");
        {
            auto lines = zarvion::shell::ReadLines(fromQt(f.source));
            lines[14] = " 0 !Temperature Equation";
            QFile out(isothermal);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(zarvion::shell::JoinCrLf(lines).c_str());
        }
        QVERIFY(!RunProgram(QStringLiteral("zarvion-solver"), {isothermal}).isNull());
        f.source = isothermal;
        f.frame->OpenDocument(isothermal);
        RED_Gen* window = f.prepared();
        QVERIFY(window);
        QCOMPARE(window->Label4->text(), QStringLiteral("Constant Temperature"));
        QVERIFY(!window->Text1[0]->isVisible());
        QVERIFY(window->Text1[0]->text().isEmpty());
        // A saved temperature parameter does not make temperature a target here.
        zarvion::shell::WriteFileAtomically(zarvion::shell::RedMechDataPath(zarvion::shell::Session()),
                                            " 2 \r\n0.1\r\n0.3\r\n1\r\n");
        window->Command5->click();
        QVERIFY(window->Text1[0]->text().isEmpty());
        QCOMPARE(window->Text1[1]->text(), QStringLiteral("0.3"));
    }

    void everyRefusalFocusesItsField()
    {
        struct Case {
            const char* name;
            std::function<void(Fixture&, RED_Gen*)> act;
            std::function<QString(const Fixture&)> message;
            QString focus; //!< the field selected, or empty
        };
        const QString notAccessible = QStringLiteral("Reduced file, the specified Path/File name cannot be accessed or is invalid.");
        const auto bad = [](const char* species) {
            return QStringLiteral("Bad value for the %1 parameter. If the species is a target, enter a "
                                  "number on the interval (0, 1). If the species is not a target, "
                                  "clear the table field.").arg(QString::fromLatin1(species));
        };
        const QString temperature = QStringLiteral(
            "Bad value for the temperature parameter. If temperature is a target, enter a number on "
            "the interval (0, 1). If temperature is not a target, clear the textbox.");
        const QString others = QStringLiteral("Non target parameter, please enter a number on the interval (0, 1).");
        const auto start = [](RED_Gen* w) { w->Command1->click(); };
        const auto prepare = [](RED_Gen* w) { w->Command7->click(); };
        const QList<Case> cases = {
            {"same paths in another case",
             [prepare](Fixture& f, RED_Gen* w) { w->Text5->setText(f.source.toUpper()); prepare(w); },
             [](const Fixture&) { return QStringLiteral("The paths of the source and reduced files are identical; the files should be different."); },
             QStringLiteral("Text5")},
            {"unreadable source",
             [prepare](Fixture& f, RED_Gen* w) { w->Text10->setText(f.path("gone.txt")); prepare(w); },
             [](const Fixture& f) { return QStringLiteral("The specified Path/File name %1 cannot be accessed or is invalid.").arg(f.path("gone.txt")); },
             QStringLiteral("Text10")},
            {"reduced file in a missing folder",
             [prepare](Fixture& f, RED_Gen* w) { w->Text5->setText(f.path("none/r.txt")); prepare(w); },
             [](const Fixture& f) { return QStringLiteral("Reduced file, the specified Path/File name '%1' cannot be accessed or is invalid.").arg(f.path("none/r.txt")); },
             QStringLiteral("Text5")},
            {"source without results",
             [prepare](Fixture& f, RED_Gen* w) {
                 w->Text10->setText(f.folder.copy(samplePath("gri30.txt"), QStringLiteral("gri30.txt")));
                 prepare(w);
             },
             [](const Fixture& f) { return QStringLiteral("In the file '%1', results of calculation are not found.").arg(f.path("gri30.txt")); },
             QString()},
            {"table parameter not a number",
             [start](Fixture&, RED_Gen* w) { typeParameter(w, QStringLiteral("CH4"), QStringLiteral("abc")); start(w); },
             [bad](const Fixture&) { return bad("CH4"); }, QStringLiteral("GridEX1")},
            {"table parameter above 1",
             [start](Fixture&, RED_Gen* w) { typeParameter(w, QStringLiteral("N2"), QStringLiteral("1.01")); start(w); },
             [bad](const Fixture&) { return bad("N2"); }, QStringLiteral("GridEX1")},
            {"temperature not a number",
             [start](Fixture&, RED_Gen* w) { w->Text1[0]->setText(QStringLiteral("abc")); start(w); },
             [temperature](const Fixture&) { return temperature; }, QStringLiteral("Text1_0")},
            {"no non-target parameter",
             [start](Fixture&, RED_Gen* w) { w->Text1[1]->clear(); start(w); },
             [others](const Fixture&) { return others; }, QStringLiteral("Text1_1")},
            {"non-target parameter above 1",
             [start](Fixture&, RED_Gen* w) { w->Text1[1]->setText(QStringLiteral("1.5")); start(w); },
             [others](const Fixture&) { return others; }, QStringLiteral("Text1_1")},
            {"no target",
             [start](Fixture&, RED_Gen* w) {
                 w->Command4->click();
                 w->Text1[1]->setText(QStringLiteral("0.3"));
                 start(w);
             },
             [](const Fixture&) { return QStringLiteral("Cannot start because no targets have been specified. For targets (temperature and/or species), enter parameters on the interval (0,1)."); },
             QString()},
            {"interval zero",
             [start](Fixture&, RED_Gen* w) { w->Text2->setText(QStringLiteral("0")); start(w); },
             [](const Fixture&) { return QStringLiteral("Interval of steps, please enter a positive integer. "); },
             QStringLiteral("Text2")},
            {"reduced file of a refused kind",
             [start](Fixture& f, RED_Gen* w) { w->Text5->setText(f.path("reduced.pdf")); start(w); },
             [notAccessible](const Fixture&) { return notAccessible; }, QStringLiteral("Text5")},
            {"reduced file gone before Start",
             [start](Fixture& f, RED_Gen* w) { w->Text5->setText(f.path("none/r.txt")); start(w); },
             [](const Fixture& f) { return QStringLiteral("Reduced file, the specified Path/File name '%1' cannot be accessed or is invalid.").arg(f.path("none/r.txt")); },
             QStringLiteral("Text5")},
        };
        Fixture f;
        for (const Case& c : cases) {
            RED_Gen* window = f.prepared();
            QVERIFY2(window, c.name);
            f.boxes.shown.clear();
            c.act(f, window);
            QVERIFY2(f.boxes.shown.size() == 1, c.name);
            QCOMPARE(f.boxes.last(), c.message(f));
            QCOMPARE(f.boxes.shown.last().style, 48);
            QCOMPARE(f.boxes.shown.last().title, QStringLiteral("ZARVION"));
            if (!c.focus.isEmpty())
                QCOMPARE(focusName(), c.focus);
            if (auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget()); box && !c.focus.isEmpty() && c.focus != QLatin1String("GridEX1"))
                QCOMPARE(box->selectedText(), box->text());
            if (c.focus == QLatin1String("GridEX1")) {
                const QString species = c.message(f).section(' ', 4, 4);
                QCOMPARE(window->currentSpeciesRow(), rowOf(window, species));
            }
            QVERIFY2(!QFile::exists(f.path("reduced.txt")), c.name);
            delete window;
        }
    }

    void saveThenClearAllThenEnterRestoresTheSettings()
    {
        Fixture f;
        RED_Gen* window = f.prepared();
        QVERIFY(window);
        window->Command5->click(); // nothing saved yet
        QCOMPARE(f.boxes.last(), QStringLiteral("Settings were not saved."));
        QCOMPARE(f.boxes.shown.last().style, 48);

        window->Text1[0]->setText(QStringLiteral("0.05"));
        window->Text1[1]->setText(QStringLiteral("0.25"));
        window->Text2->setText(QStringLiteral("3"));
        typeParameter(window, QStringLiteral("CH4"), QString());
        typeParameter(window, QStringLiteral("H2O"), QStringLiteral("0.2"));
        window->Command2->click();
        // Line 1 the count of species lines plus 2, then the three settings, then the species
        // with a parameter in table order (O2 4, H2O 6, N2 48 in the file).
        const auto saved = zarvion::shell::ReadLines(zarvion::shell::RedMechDataPath(zarvion::shell::Session()));
        const std::vector<std::string> expected = {" 5 ", "0.05", "0.25", "3", "O2 0.1", "H2O 0.2", "N2 0.1"};
        QCOMPARE(saved, expected);

        window->Command4->click();
        QVERIFY(window->Text1[0]->text().isEmpty());
        QVERIFY(window->Text1[1]->text().isEmpty());
        QCOMPARE(window->Text2->text(), QStringLiteral("3")); // Clear All leaves the interval
        for (int r = 0; r < window->species()->rowCount(); ++r)
            QVERIFY(window->species()->index(r, SpeciesTableModel::Parameter).data().toString().isEmpty());

        window->Text2->setText(QStringLiteral("7"));
        window->Command5->click();
        QCOMPARE(window->Text1[0]->text(), QStringLiteral("0.05"));
        QCOMPARE(window->Text1[1]->text(), QStringLiteral("0.25"));
        QCOMPARE(window->Text2->text(), QStringLiteral("3"));
        QCOMPARE(parameterOf(window, QStringLiteral("O2")), QStringLiteral("0.1"));
        QCOMPARE(parameterOf(window, QStringLiteral("H2O")), QStringLiteral("0.2"));
        QCOMPARE(parameterOf(window, QStringLiteral("N2")), QStringLiteral("0.1"));
        QCOMPARE(parameterOf(window, QStringLiteral("CH4")), QString());
    }

    void startWritesTheFileTheCommandLineWrites()
    {
        Fixture f;
        RED_Gen* window = f.prepared();
        QVERIFY(window);
        setJudgedTargets(window);
        QList<int> progress;
        connect(window->ProgressBar1, &QProgressBar::valueChanged, this, [&progress](int v) { progress << v; });
        f.boxes.shown.clear();
        window->Command1->click();

        const QString reduced = f.path("reduced.txt");
        QVERIFY(QFile::exists(reduced));
        QVERIFY(!window->ProgressBar1->isVisible());
        // The bar went from the start to its end in many steps, never back.
        QVERIFY(progress.size() > 100);
        QCOMPARE(progress.last(), window->ProgressBar1->maximum());
        QVERIFY(std::is_sorted(progress.begin(), progress.end()));

        const QByteArray written = fileBytes(reduced);
        const QByteArray fromCommand = RunProgram(QStringLiteral("zarvion-cli"),
                                                  reduceArguments(f.source, f.path("cli.txt")));
        QVERIFY(!fromCommand.isNull());
        int stamps = 0;
        const QByteArray mine = WithoutStamp(written, &stamps);
        QCOMPARE(stamps, 1);
        QVERIFY(mine.startsWith(" !$Zarvion Solver,  <stamp>\r\n"));
        QCOMPARE(mine, WithoutStamp(fileBytes(f.path("cli.txt"))));

        // The message counts what the file holds (lines 10 and 11).
        const QStringList lines = QString::fromLatin1(written).split(QStringLiteral("\r\n"));
        const QString species = lines[9].section('!', 0, 0).trimmed();
        const QString reactions = lines[10].section('!', 0, 0).trimmed();
        QCOMPARE(f.boxes.texts(), QStringList{
            QStringLiteral("Reduced reaction mechanism has been created successfully. \r\nThe mechanism consists of\r\n%1 species, \r\n%2 reactions.").arg(species, reactions)});
        QCOMPARE(f.boxes.shown.last().style, 64);
        QCOMPARE(QString::fromStdString(zarvion::shell::Session().ResultsFilePath), reduced);
        // The window keeps what the run made: the counts of the file and its path.
        QCOMPARE(window->Label10->text(), QStringLiteral("Last run: %1 of 53 species and %2 of 325 reactions kept, %3 rows analysed; written to %4")
                                              .arg(species, reactions, window->Text6->text(), reduced));
    }

    void cancelStopsTheRunBetweenRows()
    {
        Fixture f;
        RED_Gen* window = f.prepared();
        QVERIFY(window);
        connect(window->ProgressBar1, &QProgressBar::valueChanged, this, [window](int v) {
            // Cancel as the user would, a third of the way in.
            if (v > 330)
                if (auto* dialog = window->findChild<QProgressDialog*>())
                    dialog->cancel();
        });
        f.boxes.shown.clear();
        window->Command1->click();
        QVERIFY(!QFile::exists(f.path("reduced.txt")));
        QCOMPARE(f.boxes.shown.size(), 1);
        QVERIFY2(f.boxes.last().startsWith(QStringLiteral("The reduction has been cancelled after ")), qPrintable(f.boxes.last()));
        // The run stopped at the row whose progress went past a third, not at the end: of
        // 1272 rows (every one analysed) that is row 421; a tenth of a percent of slack.
        const int rows = f.boxes.last().section(' ', 6, 6).toInt();
        const int steps = window->Text6->text().toInt();
        QVERIFY2(rows * 1000 > 330 * steps && rows * 1000 < 332 * steps, qPrintable(f.boxes.last()));
        QVERIFY(!window->ProgressBar1->isVisible());
        QVERIFY(window->Command1->isEnabled());
    }

    void startReducedMechanismOpensTheNewFileWithItsStartWindow()
    {
        Fixture f;
        RED_Gen* window = f.prepared();
        QVERIFY(window);
        window->Check2->setChecked(true);
        window->Text2->setText(QStringLiteral("5")); // every fifth row is enough here
        window->Command1->click();
        const QString reduced = f.path("reduced.txt");
        RES_ShowFile* doc = f.document(reduced);
        QVERIFY(doc);
        QVERIFY(doc->GetIsSolFile());
        QVERIFY(QTest::qWaitFor([] { return SOL_RUN::Instance() != nullptr; }, 3000));
        QCOMPARE(SOL_RUN::Instance()->SolverPath(), reduced);
        QVERIFY(RED_Gen::Instance() == nullptr); // the solver-side windows of the source went
        delete SOL_RUN::Instance();
    }

    void chemkinTextOfASolverFileIsTheCommandLinesText()
    {
        Fixture f("h2o2_solved.txt");
        RES_ShowFile* doc = f.document(f.source);
        QVERIFY(doc);
        auto* command = doc->findChild<QAction*>(QStringLiteral("RESREACTIONSTools"));
        QVERIFY(command && command->isEnabled());
        const int before = f.frame->Children().size();
        command->trigger();
        QCOMPARE(f.frame->Children().size(), before + 1);
        auto* text = qobject_cast<RES_ShowFile*>(f.frame->activeChild());
        QVERIFY(text && text != doc);
        QVERIFY(text->windowTitle().startsWith(QStringLiteral("Text Doc")));
        QVERIFY(!text->GetIsSolFile());
        QVERIFY(text->MePath().isEmpty()); // unsaved: Save asks for a name
        const QByteArray fromCommand = RunProgram(QStringLiteral("zarvion-cli"),
                                                  {QStringLiteral("chemkin"), f.source});
        QVERIFY(!fromCommand.isNull());
        int stamps = 0;
        const QByteArray shown = WithoutStamp((text->box()->toPlainText() + '\n').toLatin1(), &stamps);
        QCOMPARE(stamps, 1);
        QCOMPARE(shown, WithoutStamp(fromCommand));
        QVERIFY(shown.contains("! Solver File:  " + f.source.toLatin1()));

        // A file whose reaction list lacks its closing keyword is refused, and no window opens.
        const QString broken = f.path("broken.txt");
        {
            auto lines = zarvion::shell::ReadLines(fromQt(f.source));
            for (auto& l : lines)
                if (QString::fromStdString(l).trimmed().compare(QStringLiteral("end"), Qt::CaseInsensitive) == 0)
                    l = "!";
            QFile out(broken);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(zarvion::shell::JoinCrLf(lines).c_str());
        }
        f.boxes.shown.clear();
        const int open = f.frame->Children().size();
        QVERIFY(ConvertReactions(broken) == nullptr);
        QCOMPARE(f.frame->Children().size(), open);
        QCOMPARE(f.boxes.shown.size(), 1);
        QCOMPARE(f.boxes.last(), QStringLiteral("In the file '%1', thermodynamic data do not contain the trailing keyword 'End'. The text conversion cannot be performed.").arg(broken));
    }
};

QTEST_MAIN(ReductionTest)
#include "reduction_test.moc"
