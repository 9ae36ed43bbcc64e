// A tour of the windows for visual review: opens each window on a real display and saves a
// picture of the screen into the folder given as the first argument. Run under Xvfb:
//   xvfb-run -s "-screen 0 1600x1000x24" window_tour OUTDIR SOLVERFILE
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScreen>
#include <QTest>

#include "platform/MessageBox.h"
#include "shell/MDIForm1.h"
#include "tour/Tour.h"

using namespace zarvion::gui;

namespace zarvion::gui::tour {

void shoot(const TourContext& context, const QString& name)
{
    QTest::qWait(400);
    QApplication::primaryScreen()->grabWindow(0).save(QDir(context.outDir).filePath(name + ".png"));
}

} // namespace zarvion::gui::tour

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc < 3)
        return 2;
    tour::TourContext context;
    context.outDir = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(context.outDir);
    // The tour runs the solver and rewrites files: it works on a copy of the file it is given.
    const QString given = QString::fromLocal8Bit(argv[2]);
    context.givenFile = QFileInfo(given).absoluteFilePath();
    context.solverFile = QDir(context.outDir).filePath(QFileInfo(given).fileName());
    QFile::remove(context.solverFile);
    if (!QFile::copy(given, context.solverFile))
        return 2;
    QFile(context.solverFile).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    SetMessageHandler([&](const ShownMessage& m) {
        context.messages << m.text;
        return (m.style & 7) ? int(AnswerNo) : int(AnswerOk);
    });

    FrameOptions options;
    options.showSplash = false;
    options.appPath = QStringLiteral(ZARVION_BIN_DIR);
    MDIForm1 frame(options);
    frame.resize(1400, 900);
    frame.move(20, 20);
    context.frame = &frame;

    tour::tourShell(context);
    tour::tourReductionComparison(context);

    for (const QString& m : context.messages)
        qInfo("%s", qPrintable(m));
    return 0;
}
