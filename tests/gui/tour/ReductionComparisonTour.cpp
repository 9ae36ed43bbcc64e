// The reduction and comparison part of the window tour: RED_Gen before and after Prepare and
// after a run, Comparison with its grid and curves on the temporary chart, the CHEMKIN text
// window, the text page set-up and its print preview in both orientations, the about box.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "comparison/Comparison.h"
#include "reduction/RED_Gen.h"
#include "shell/MDIForm1.h"
#include "solverfile/RunSolver.h"
#include "textdocs/RES_PAGESETUP.h"
#include "textdocs/RES_ShowFile.h"
#include "textdocs/TextReport.h"
#include "tour/Tour.h"

namespace zarvion::gui::tour {

namespace {

RES_ShowFile* documentOf(MDIForm1& frame, const QString& path)
{
    for (QWidget* w : frame.Children()) {
        if (auto* doc = qobject_cast<RES_ShowFile*>(w); doc && doc->MePath() == path)
            return doc;
    }
    return nullptr;
}

void trigger(QWidget* window, const char* command)
{
    if (auto* action = window ? window->findChild<QAction*>(QString::fromLatin1(command)) : nullptr)
        action->trigger();
}

void setParameter(RED_Gen* window, const QString& species, const QString& value)
{
    SpeciesTableModel* model = window->species();
    for (int r = 0; r < model->rowCount(); ++r) {
        if (model->index(r, SpeciesTableModel::Species).data().toString() == species)
            model->setData(model->index(r, SpeciesTableModel::Parameter), value, Qt::EditRole);
    }
}

void doubleClickRow(Comparison* window, const QString& species, bool ctrl)
{
    QTableView* grid = window->grid();
    for (int r = 0; r < grid->model()->rowCount(); ++r) {
        if (grid->model()->index(r, MergedTableModel::Species).data().toString() != species)
            continue;
        grid->scrollTo(grid->model()->index(r, 0));
        QHeaderView* header = grid->verticalHeader();
        const QPoint at(header->width() / 2, header->sectionViewportPosition(r) + header->sectionSize(r) / 2);
        QTest::mouseDClick(header->viewport(), Qt::LeftButton, ctrl ? Qt::ControlModifier : Qt::NoModifier, at);
        return;
    }
}

//! Shoots the print preview of the document once it has painted, then closes it.
void shootPreview(TourContext& context, RES_ShowFile* doc, const QString& name, bool landscape)
{
    RES_PAGESETUP* setup = RES_PAGESETUP::Open(doc);
    setup->Text4->setText(QStringLiteral("GRI-Mech 3.0 reactions in CHEMKIN format"));
    setup->Check1->setChecked(true);
    setup->Combo1->setCurrentIndex(1);
    setup->Combo2->setCurrentIndex(landscape ? 1 : 0);
    (landscape ? setup->Option2 : setup->Option1)->setChecked(true);
    if (!landscape)
        shoot(context, QStringLiteral("RES_PAGESETUP"));
    SetPreviewObserver([&context, name](QPrintPreviewDialog* preview, QPrinter*) {
        preview->resize(1200, 880);
        preview->move(100, 40);
        QTimer::singleShot(300, preview, [&context, preview, name] {
            shoot(context, name);
            preview->reject();
        });
    });
    setup->Command5->click();
    SetPreviewObserver({});
}

} // namespace

void tourReductionComparison(TourContext& context)
{
    MDIForm1& frame = *context.frame;
    for (QWidget* w : frame.Children())
        frame.CloseChild(w);
    frame.showNormal();
    SetConsoleObserver({});

    // The reduction works on the file as it was given: the shell's part has run the solver on
    // its own copy with a short final time.
    const QDir out(context.outDir);
    const QString base = QFileInfo(context.givenFile).completeBaseName();
    const QString source = out.filePath(base + QStringLiteral("-source.txt"));
    const QString reduced = out.filePath(base + QStringLiteral("-reduced.txt"));
    QFile::remove(source);
    QFile::remove(reduced);
    QFile::copy(context.givenFile, source);
    QFile(source).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    frame.OpenDocument(source);
    QTest::qWait(400);

    trigger(documentOf(frame, source), "REDKIN_RES");
    RED_Gen* reduction = RED_Gen::Instance();
    if (!reduction)
        return;
    reduction->move(120, 90);
    reduction->Text5->setText(reduced);
    shoot(context, QStringLiteral("RED_Gen-opened"));
    reduction->Command7->click();
    shoot(context, QStringLiteral("RED_Gen-prepared"));
    // The judged reduction: CH4, O2, CO2, H2O and temperature at 0.1, others 0.3.
    setParameter(reduction, QStringLiteral("N2"), QString());
    for (const char* target : {"CH4", "O2", "CO2", "H2O"})
        setParameter(reduction, QString::fromLatin1(target), QStringLiteral("0.1"));
    reduction->Text1[0]->setText(QStringLiteral("0.1"));
    // Half-way through, the run is held long enough for its progress dialog to show.
    bool shotRunning = false;
    QObject::connect(reduction->ProgressBar1, &QProgressBar::valueChanged, reduction,
                     [&context, &shotRunning](int value) {
                         if (shotRunning || value < 500)
                             return;
                         shotRunning = true;
                         QTest::qWait(600);
                         shoot(context, QStringLiteral("RED_Gen-running"));
                     });
    reduction->Command1->click();
    shoot(context, QStringLiteral("RED_Gen-after-run"));
    reduction->close();

    // The reduced mechanism solved, as its start window would run it.
    QProcess solver;
    solver.start(QStringLiteral(ZARVION_BIN_DIR "/zarvion-solver"), {reduced});
    solver.waitForFinished(300000);

    trigger(documentOf(frame, source), "RESCOMP");
    Comparison* comparison = Comparison::Instance();
    if (!comparison)
        return;
    comparison->Text2->setText(reduced);
    comparison->Command3->click();
    (void)QTest::qWaitFor([comparison] { return comparison->table()->rowCount() > 0; }, 10000);
    shoot(context, QStringLiteral("Comparison-grid"));
    doubleClickRow(comparison, QStringLiteral("Temperature"), false);
    shoot(context, QStringLiteral("Comparison-temperature"));
    comparison->Option1_2->setChecked(true);
    doubleClickRow(comparison, QStringLiteral("Temperature"), false);
    shoot(context, QStringLiteral("Comparison-relative-error"));
    for (const char* target : {"CH4", "O2", "CO2", "H2O"})
        doubleClickRow(comparison, QString::fromLatin1(target), true);
    shoot(context, QStringLiteral("Comparison-relative-error-targets"));
    comparison->Option4->setChecked(true);
    doubleClickRow(comparison, QStringLiteral("Temperature"), false);
    for (const char* target : {"CH4", "O2", "CO2", "H2O"})
        doubleClickRow(comparison, QString::fromLatin1(target), true);
    shoot(context, QStringLiteral("Comparison-relative-error-log-time"));
    comparison->Option7->setChecked(true);
    doubleClickRow(comparison, QStringLiteral("Temperature"), false);
    for (const char* target : {"CH4", "O2", "CO2", "H2O"})
        doubleClickRow(comparison, QString::fromLatin1(target), true);
    shoot(context, QStringLiteral("Comparison-relative-error-log-log"));
    comparison->TabStrip1->setCurrentIndex(1);
    frame.mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(comparison->parentWidget()));
    shoot(context, QStringLiteral("Comparison-help"));
    for (QWidget* w : frame.Children()) {
        if (w != documentOf(frame, source))
            frame.CloseChild(w);
    }

    trigger(documentOf(frame, source), "RESREACTIONSTools");
    auto* chemkin = qobject_cast<RES_ShowFile*>(frame.activeChild());
    shoot(context, QStringLiteral("CHEMKIN-text"));
    if (chemkin) {
        shootPreview(context, chemkin, QStringLiteral("print-preview-text-portrait"), false);
        shootPreview(context, chemkin, QStringLiteral("print-preview-text-landscape"), true);
    }

    QTimer::singleShot(300, [&context] {
        shoot(context, QStringLiteral("about"));
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->accept();
    });
    trigger(&frame, "ABOUTCK");
}

} // namespace zarvion::gui::tour
