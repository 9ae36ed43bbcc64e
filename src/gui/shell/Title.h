#pragma once
// The splash window shown while the program starts: it checks the auxiliary files and ends
// in the first open dialog.

#include <QDialog>
#include <QStringList>
#include <QTimer>

class QProgressBar;

namespace zarvion::gui {

class MDIForm1;

//! `Title`: name, subtitle and version on a dark blue ground, with a progress bar.
class Title : public QDialog {
    Q_OBJECT
public:
    Title(MDIForm1* frame, QStringList filesToOpen);
    bool terminated() const { return m_terminate; }
    QProgressBar* ProgressBar1 = nullptr;

private:
    void stopTimers();
    void fail(const QString& message);
    void onTimer1();

    MDIForm1* m_frame;
    QStringList m_files;
    QTimer Timer1, Timer2, Timer3, Timer5;
    int m_progress = 0;
    bool m_terminate = false;
};

} // namespace zarvion::gui
