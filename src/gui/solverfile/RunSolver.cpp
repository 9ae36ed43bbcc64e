#include "solverfile/RunSolver.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "platform/Frame.h"
#include "platform/MessageBox.h"
#include "platform/WaitCursor.h"
#include "shell/SessionState.h"
#include "solverfile/StartWindowLogic.h"
#include "textdocs/RES_ShowFile.h"

namespace zarvion::gui {

namespace {

std::function<void(SolverConsole*)>& observer()
{
    static std::function<void(SolverConsole*)> o;
    return o;
}

} // namespace

void SetConsoleObserver(std::function<void(SolverConsole*)> o)
{
    observer() = std::move(o);
}

QString SolverProgram()
{
    return QDir(toQt(shell::Session().AppPath)).filePath(QStringLiteral("zarvion-solver"));
}

SolverConsole::SolverConsole(const QString& program, const QString& workingFolder, bool keepOpen,
                             QWidget* parent)
    : QDialog(parent), m_program(program), m_keepOpen(keepOpen)
{
    setObjectName(QStringLiteral("SolverConsole"));
    setWindowTitle(QStringLiteral("ZARVION Solver"));
    setWindowModality(Qt::ApplicationModal);
    m_output = new QPlainTextEdit(this);
    m_output->setReadOnly(true);
    m_output->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_output->setMaximumBlockCount(20000);
    QFont mono = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    mono.setPointSize(10);
    m_output->setFont(mono);
    QPalette pal = m_output->palette();
    pal.setColor(QPalette::Base, QColor(12, 12, 12));
    pal.setColor(QPalette::Text, QColor(204, 204, 204));
    m_output->setPalette(pal);
    m_output->appendPlainText(QStringLiteral("To end the task, click the button CLOSE (X) in this window."));
    m_output->appendPlainText(
        QStringLiteral("---------------------------------------------------------------"));
    m_output->moveCursor(QTextCursor::End);
    m_output->insertPlainText(QStringLiteral("\n"));

    m_status = new QLabel(QStringLiteral("The solver is running..."), this);
    m_stop = new QPushButton(QStringLiteral("Stop"), this);
    m_stop->setAutoDefault(false);
    connect(m_stop, &QPushButton::clicked, this, [this] {
        if (running())
            Stop();
        else
            accept();
    });
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_status, 1);
    bottom->addWidget(m_stop);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_output, 1);
    layout->addLayout(bottom);
    const QFontMetrics fm(mono);
    resize(fm.horizontalAdvance(QString(90, QLatin1Char('x'))) + 40, fm.lineSpacing() * 28 + 60);

    m_process.setProgram(program);
    m_process.setWorkingDirectory(workingFolder);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_process, &QProcess::readyReadStandardOutput, this,
            [this] { append(m_process.readAllStandardOutput()); });
    connect(&m_process, &QProcess::finished, this, &SolverConsole::finished);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError e) {
        if (e == QProcess::FailedToStart) {
            append(QStringLiteral("\nThe solver %1 could not be started.\n").arg(m_program).toLocal8Bit());
            finished(-1, QProcess::CrashExit);
        }
    });
}

void SolverConsole::append(const QByteArray& bytes)
{
    QString text = QString::fromLocal8Bit(bytes);
    text.remove(QLatin1Char('\r'));
    QScrollBar* bar = m_output->verticalScrollBar();
    const bool atEnd = bar->value() == bar->maximum();
    m_output->moveCursor(QTextCursor::End);
    m_output->insertPlainText(text);
    if (atEnd)
        bar->setValue(bar->maximum());
}

int SolverConsole::ExecuteCommand()
{
    WaitCursor wait;
    m_process.start();
    emit started();
    if (m_process.state() != QProcess::NotRunning || m_keepOpen)
        exec();
    ResetCursor();
    return m_stopped ? -1 : m_exitCode;
}

void SolverConsole::finished(int exitCode, QProcess::ExitStatus status)
{
    m_exitCode = status == QProcess::NormalExit ? exitCode : -1;
    m_stop->setText(QStringLiteral("Close"));
    m_status->setText(m_stopped ? QStringLiteral("The solver has been stopped.")
                                : QStringLiteral("The solver has ended."));
    QApplication::restoreOverrideCursor();
    if (!m_keepOpen)
        accept();
}

void SolverConsole::Stop()
{
    if (!running())
        return;
    m_stopped = true;
    m_process.terminate();
    if (!m_process.waitForFinished(2000))
        m_process.kill();
    m_process.waitForFinished(2000);
}

void SolverConsole::closeEvent(QCloseEvent* event)
{
    Stop();
    QDialog::closeEvent(event);
}

void SolverConsole::reject()
{
    // Escape and the close button end the solver, as closing a console does.
    Stop();
    QDialog::reject();
}

void RunSolver(const QString& /*path*/, const QString& caption)
{
    auto& session = shell::Session();
    {
        SolverConsole console(SolverProgram(), toQt(session.AppPath), session.KeepConsole,
                              Frame() ? Frame()->FrameWidget() : nullptr);
        if (observer())
            observer()(&console);
        console.ExecuteCommand();
    }
    if (session.FrameWasMaximised && Frame())
        Frame()->Maximise();

    solverfile::SolverRunVerdict verdict;
    QString path;
    try {
        path = toQt(solverfile::ReadSolverFilePath(shell::SolverPathFilePath(session)));
        verdict = solverfile::EvaluateSolverRun(fromQt(path));
    } catch (const std::exception& e) {
        ResetCursor();
        ReportError(QStringLiteral("401#001. "), toQt(e.what()));
        return;
    }
    if (Frame() && Frame()->IsMinimised())
        Frame()->Maximise();

    // The text window of the file is out of date: close it, and remember its file.
    QString textPath;
    if (Frame()) {
        for (QWidget* w : Frame()->Children()) {
            if (w->windowTitle().toUpper() == caption.toUpper()) {
                if (auto* doc = qobject_cast<RES_ShowFile*>(w))
                    textPath = doc->MePath();
                Frame()->CloseChild(w);
                break;
            }
        }
    }
    ResetCursor();
    const int answer = ShowMessage(toQt(verdict.message), verdict.style);
    if (answer == AnswerYes && Frame()) {
        session.ResultsFilePath = fromQt(path);
        Frame()->OpenDocument(textPath);
        for (QWidget* w : Frame()->Children()) {
            if (w->windowTitle().toUpper() == caption.toUpper()) {
                QMetaObject::invokeMethod(w, "OpResults");
                break;
            }
        }
    }
    ResetCursor();
}

} // namespace zarvion::gui
