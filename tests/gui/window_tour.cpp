// A tour of the windows for visual review: opens each window on a real display and saves a
// picture of the screen into the folder given as the first argument. Run under Xvfb:
//   xvfb-run -s "-screen 0 1600x1000x24" window_tour OUTDIR SOLVERFILE
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "platform/MessageBox.h"
#include "shell/MDIForm1.h"
#include "shell/SessionState.h"
#include "shell/Title.h"
#include "solverfile/RunSolver.h"
#include "solverfile/SOL_RUN.h"
#include "textdocs/Help1.h"
#include "textdocs/RES_FIND.h"
#include "textdocs/RES_ShowFile.h"

using namespace zarvion::gui;

namespace {

QString g_out;

void shoot(const QString& name)
{
    QTest::qWait(400);
    QApplication::primaryScreen()->grabWindow(0).save(QDir(g_out).filePath(name + ".png"));
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc < 3)
        return 2;
    g_out = QString::fromLocal8Bit(argv[1]);
    const QString file = QString::fromLocal8Bit(argv[2]);
    QStringList messages;
    SetMessageHandler([&](const ShownMessage& m) {
        messages << m.text;
        return (m.style & 7) ? int(AnswerNo) : int(AnswerOk);
    });

    FrameOptions options;
    options.showSplash = false;
    options.appPath = QStringLiteral(ZARVION_BIN_DIR);
    MDIForm1 frame(options);
    frame.resize(1400, 900);
    frame.move(20, 20);
    auto* splash = new Title(&frame, {});
    splash->show();
    shoot("01-splash");
    splash->close();
    frame.show();
    frame.OpenDocument(file);
    shoot("02-frame-solver-document");

    auto* doc = qobject_cast<RES_ShowFile*>(frame.activeChild());
    doc->RunSol();
    (void)QTest::qWaitFor([] { return SOL_RUN::Instance() != nullptr; }, 3000);
    SOL_RUN* run = SOL_RUN::Instance();
    shoot("03-start-window-tab1");
    run->TabStrip1->setCurrentIndex(1);
    shoot("04-start-window-tab2");
    run->TabStrip1->setCurrentIndex(0);
    run->Text4[1]->setText(QStringLiteral("abc"));
    run->Check1->setChecked(true);

    SetConsoleObserver([](SolverConsole* console) {
        auto* poll = new QTimer(console);
        bool* during = new bool(false);
        QObject::connect(poll, &QTimer::timeout, console, [console, poll, during] {
            Q_UNUSED(during);
            if (console->running())
                return;
            poll->stop();
            shoot("07-console-after");
            console->stopButton()->click();
        });
        poll->start(150);
    });
    {
        // The console while a program runs: a stand-in that writes slowly, so that the
        // window can be seen before the end.
        const QString script = QDir(g_out).filePath(QStringLiteral("slow.sh"));
        QFile f(script);
        f.open(QIODevice::WriteOnly);
        f.write("#!/bin/sh\nfor i in 1 2 3 4 5 6; do echo \"t = $i.0000E-04 s   T = 1.2$i E+03 K\"; sleep 0.3; done\n");
        f.close();
        f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        SolverConsole console(script, g_out, false, &frame);
        QTimer::singleShot(1000, [] { shoot("06-console-running"); });
        console.ExecuteCommand();
    }
    run->Command5->click(); // refused: final time not numeric
    shoot("05-start-window-field-error");
    run->Text4[1]->setText(QStringLiteral("1E-3"));
    run->Command5->click();
    QTest::qWait(500);

    const QString caption = RES_ShowFile::NewTextDocument();
    auto* text = qobject_cast<RES_ShowFile*>(frame.activeChild());
    text->box()->setPlainText(QStringLiteral("Reaction rates at 1200 K\nH2 + O2 = 2 OH\nH + O2 = O + OH\n"));
    RES_FIND* find = RES_FIND::Open();
    find->Text1->setText(QStringLiteral("OH"));
    find->Text2->setText(QStringLiteral("HO"));
    shoot("08-find-replace");
    find->close();

    ShowHelp1();
    shoot("09-help-number-format");
    for (const QString& m : messages)
        qInfo("%s", qPrintable(m));
    return 0;
}
