#include "platform/BlockingProgress.h"

#include <QApplication>
#include <QProgressDialog>

namespace zarvion::gui {

BlockingProgress::BlockingProgress(const QString& label, int maximum, bool cancellable,
                                   QWidget* parent)
    : m_dialog(std::make_unique<QProgressDialog>(label, cancellable ? QObject::tr("Cancel") : QString(),
                                                 0, maximum, parent))
{
    m_dialog->setWindowTitle(QStringLiteral("ZARVION"));
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setMinimumDuration(400);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    m_dialog->setValue(0);
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

BlockingProgress::~BlockingProgress()
{
    m_dialog->close();
    QApplication::restoreOverrideCursor();
}

bool BlockingProgress::step(int value)
{
    // A modal progress dialog lets the event loop run on each change of value: the windows
    // repaint and the Cancel button can be pressed, while input to other windows is blocked.
    if (value != m_dialog->value())
        m_dialog->setValue(std::min(value, m_dialog->maximum()));
    else
        QApplication::processEvents();
    return !m_dialog->wasCanceled();
}

void BlockingProgress::setLabel(const QString& label)
{
    m_dialog->setLabelText(label);
}

bool BlockingProgress::cancelled() const
{
    return m_dialog->wasCanceled();
}

} // namespace zarvion::gui
