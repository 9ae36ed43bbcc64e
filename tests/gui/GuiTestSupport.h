#pragma once
// Helpers of the GUI tests: recorded and scripted message boxes and file dialogs, and a
// program folder in a temporary directory with the auxiliary files and the solver.

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <deque>

#include "platform/FileDialogs.h"
#include "platform/MessageBox.h"
#include "shell/MDIForm1.h"

namespace zarvion::gui::testing {

//! Records every box and answers from a script (default: No for questions, Ok otherwise).
struct MessageRecorder {
    QList<ShownMessage> shown;
    std::deque<int> answers;

    MessageRecorder()
    {
        SetMessageHandler([this](const ShownMessage& m) {
            shown << m;
            if (!answers.empty()) {
                const int a = answers.front();
                answers.pop_front();
                return a;
            }
            return (m.style & 7) ? static_cast<int>(AnswerNo) : static_cast<int>(AnswerOk);
        });
        SetFileDialogHandler([](bool, const QString&) { return QString(); });
    }
    ~MessageRecorder()
    {
        SetMessageHandler({});
        SetFileDialogHandler({});
    }
    QStringList texts() const
    {
        QStringList list;
        for (const auto& m : shown)
            list << m.text;
        return list;
    }
    QString last() const { return shown.isEmpty() ? QString() : shown.last().text; }
};

//! A program folder: AssistFiles copied from the build, the solver linked in.
struct ProgramFolder {
    QTemporaryDir dir;

    ProgramFolder()
    {
        const QDir bin(QStringLiteral(ZARVION_BIN_DIR));
        QDir(dir.path()).mkpath(QStringLiteral("AssistFiles"));
        QDir(dir.path()).mkpath(QStringLiteral("Samples"));
        const QDir assist(bin.filePath(QStringLiteral("AssistFiles")));
        for (const QString& f : assist.entryList(QDir::Files))
            QFile::copy(assist.filePath(f), QDir(path()).filePath(QStringLiteral("AssistFiles/") + f));
        QFile::link(bin.filePath(QStringLiteral("zarvion-solver")),
                    QDir(path()).filePath(QStringLiteral("zarvion-solver")));
    }
    QString path() const { return dir.path(); }
    //! Frame options for a frame that runs from this folder, without the splash.
    zarvion::gui::FrameOptions frameOptions() const
    {
        zarvion::gui::FrameOptions options;
        options.showSplash = false;
        options.appPath = path();
        return options;
    }
    bool hasSolver() const
    {
        return QFileInfo(QDir(QStringLiteral(ZARVION_BIN_DIR)).filePath(QStringLiteral("zarvion-solver")))
            .isExecutable();
    }
    //! Puts a solver in place that only waits, so that a test can stop a run that has surely
    //! not finished.
    void useStalledSolver() const
    {
        const QString target = QDir(path()).filePath(QStringLiteral("zarvion-solver"));
        QFile::remove(target);
        QFile script(target);
        if (!script.open(QIODevice::WriteOnly))
            return;
        script.write("#!/bin/sh\nexec sleep 30\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    //! Copies a fixture into the folder and returns its path.
    QString copy(const QString& source, const QString& name) const
    {
        const QString target = QDir(path()).filePath(name);
        QFile::remove(target);
        QFile::copy(source, target);
        QFile(target).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        return target;
    }
};

inline QString fixture(const char* name)
{
    return QStringLiteral(ZARVION_SOURCE_DIR "/tests/data/") + QString::fromLatin1(name);
}

} // namespace zarvion::gui::testing
