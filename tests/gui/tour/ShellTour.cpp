// The shell's part of the window tour: splash, frame, solver document, start window, console,
// find and replace, and the number-format help.
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "shell/MDIForm1.h"
#include "shell/Title.h"
#include "solverfile/RunSolver.h"
#include "solverfile/SOL_RUN.h"
#include "textdocs/Help1.h"
#include "textdocs/RES_FIND.h"
#include "textdocs/RES_ShowFile.h"
#include "tour/Tour.h"

namespace zarvion::gui::tour {

void tourShell(TourContext& context)
{
    MDIForm1& frame = *context.frame;
    const QString& file = context.solverFile;
    auto shootAs = [&context](const QString& name) { shoot(context, name); };
    auto* splash = new Title(&frame, {});
    splash->show();
    shootAs("Title-splash");
    splash->close();
    frame.show();
    frame.OpenDocument(file);
    shootAs("MDIForm1-solver-document");

    auto* doc = qobject_cast<RES_ShowFile*>(frame.activeChild());
    doc->RunSol();
    (void)QTest::qWaitFor([] { return SOL_RUN::Instance() != nullptr; }, 3000);
    SOL_RUN* run = SOL_RUN::Instance();
    shootAs("SOL_RUN-tab1");
    run->TabStrip1->setCurrentIndex(1);
    shootAs("SOL_RUN-tab2");
    run->TabStrip1->setCurrentIndex(0);
    run->Text4[1]->setText(QStringLiteral("abc"));
    run->Check1->setChecked(true);

    SetConsoleObserver([shootAs](SolverConsole* console) {
        auto* poll = new QTimer(console);
        bool* during = new bool(false);
        QObject::connect(poll, &QTimer::timeout, console, [console, poll, during, shootAs] {
            Q_UNUSED(during);
            if (console->running())
                return;
            poll->stop();
            shootAs("console-after-run");
            console->stopButton()->click();
        });
        poll->start(150);
    });
    {
        // The console while a program runs: a stand-in that writes slowly, so that the
        // window can be seen before the end.
        const QString script = QDir(context.outDir).filePath(QStringLiteral("slow.sh"));
        QFile f(script);
        f.open(QIODevice::WriteOnly);
        f.write("#!/bin/sh\nfor i in 1 2 3 4 5 6; do echo \"t = $i.0000E-04 s   T = 1.2$i E+03 K\"; sleep 0.3; done\n");
        f.close();
        f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        SolverConsole console(script, context.outDir, false, &frame);
        QTimer::singleShot(1000, [shootAs] { shootAs("console-running"); });
        console.ExecuteCommand();
    }
    run->Command5->click(); // refused: final time not numeric
    shootAs("SOL_RUN-field-error");
    run->Text4[1]->setText(QStringLiteral("1E-3"));
    run->Command5->click();
    QTest::qWait(500);

    RES_ShowFile::NewTextDocument();
    auto* text = qobject_cast<RES_ShowFile*>(frame.activeChild());
    text->box()->setPlainText(QStringLiteral("Reaction rates at 1200 K\nH2 + O2 = 2 OH\nH + O2 = O + OH\n"));
    RES_FIND* find = RES_FIND::Open();
    find->Text1->setText(QStringLiteral("OH"));
    find->Text2->setText(QStringLiteral("HO"));
    shootAs("RES_FIND");
    find->close();

    ShowHelp1();
    shootAs("Help1-number-format");
}

} // namespace zarvion::gui::tour
