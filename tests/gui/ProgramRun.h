#pragma once
// Runs the command-line programs built beside the tests, so that a window's output can be set
// against theirs.

#include <QByteArray>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>

namespace zarvion::gui::testing {

//! Runs bin/program with args in folder; the standard output, or a null array when the program
//! did not start or end with exit code 0.
inline QByteArray RunProgram(const QString& program, const QStringList& args,
                             const QString& folder = QString())
{
    QProcess process;
    if (!folder.isEmpty())
        process.setWorkingDirectory(folder);
    process.start(QDir(QStringLiteral(ZARVION_BIN_DIR)).filePath(program), args);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        qWarning("%s failed: %s", qPrintable(program), process.readAllStandardError().constData());
        return {};
    }
    return process.readAllStandardOutput();
}

//! A time stamp "Mmm d yyyy, hh:mm:ss" as files and texts of the program carry it.
inline const QRegularExpression& StampPattern()
{
    static const QRegularExpression pattern(
        QStringLiteral("[A-Z][a-z]{2} [0-9]{1,2} [0-9]{4}, [0-9]{2}:[0-9]{2}:[0-9]{2}"));
    return pattern;
}

//! text with its first time stamp replaced by "<stamp>"; the count of stamps replaced.
inline QByteArray WithoutStamp(const QByteArray& text, int* replaced = nullptr)
{
    QString s = QString::fromLatin1(text);
    const auto match = StampPattern().match(s);
    if (replaced)
        *replaced = match.hasMatch() ? 1 : 0;
    if (match.hasMatch())
        s.replace(match.capturedStart(), match.capturedLength(), QStringLiteral("<stamp>"));
    return s.toLatin1();
}

} // namespace zarvion::gui::testing
