// zarvion: the desktop program. Files named on the command line open once start-up is done.
#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>

#include "platform/ProgramInfo.h"
#include "shell/MDIForm1.h"

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QLatin1String(zarvion::gui::ProgramName));
    QApplication::setApplicationVersion(QLatin1String(zarvion::gui::ProgramVersion));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("ZARVION-II, Program for Chemical Kinetics of Gas Phase Reactions"));
    parser.addHelpOption();
    parser.addVersionOption();
    QCommandLineOption noSplash(QStringLiteral("no-splash"), QStringLiteral("Start without the splash window."));
    parser.addOption(noSplash);
    parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Files to open."), QStringLiteral("[files...]"));
    parser.process(app);

    zarvion::gui::FrameOptions options;
    options.showSplash = !parser.isSet(noSplash);
    for (const QString& f : parser.positionalArguments())
        options.filesToOpen << QFileInfo(f).absoluteFilePath();
    zarvion::gui::MDIForm1 frame(options);
    return app.exec();
}
