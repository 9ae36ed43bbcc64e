#pragma once
// The run of the external solver: a modal console window shows its output while it runs,
// the verdict is read from the solver file, and the user is led into the results.

#include <QDialog>
#include <QProcess>
#include <functional>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace zarvion::gui {

//! The console of one solver run. Modal: while the solver runs no other window takes input,
//! but every window still paints. "Stop" ends the solver, as closing the console does.
class SolverConsole : public QDialog {
    Q_OBJECT
public:
    SolverConsole(const QString& program, const QString& workingFolder, bool keepOpen,
                  QWidget* parent = nullptr);

    //! Starts the solver and returns its exit code once it has ended and, with keepOpen,
    //! the user has closed the window; -1 when it could not start or was stopped.
    int ExecuteCommand();

    QPlainTextEdit* output() const { return m_output; }
    QPushButton* stopButton() const { return m_stop; }
    bool running() const { return m_process.state() != QProcess::NotRunning; }
    //! Ends the solver; the same as closing the console.
    void Stop();

signals:
    //! The solver has started (tests stop a run from here).
    void started();

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    void append(const QByteArray& bytes);
    void finished(int exitCode, QProcess::ExitStatus status);

    QProcess m_process;
    QString m_program;
    bool m_keepOpen;
    bool m_stopped = false;
    int m_exitCode = -1;
    QPlainTextEdit* m_output;
    QLabel* m_status;
    QPushButton* m_stop;
};

//! Called when the console has been created, before it runs (tests watch or stop it).
void SetConsoleObserver(std::function<void(SolverConsole*)> observer);

//! The solver program beside the executable.
QString SolverProgram();

//! Runs the solver on the file named in SolverFilePath.txt, tells the outcome, and on
//! "Show results?" reopens the file and turns to its results. caption is the caption of
//! the text window that shows the file.
void RunSolver(const QString& path, const QString& caption);

} // namespace zarvion::gui
