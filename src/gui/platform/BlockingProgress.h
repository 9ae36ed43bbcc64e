#pragma once
// Long work done inside one event keeps its blocking meaning - nothing else can be done
// meanwhile - but the program keeps painting and shows how far the work has come.

#include <QString>
#include <memory>

class QProgressDialog;
class QWidget;

namespace zarvion::gui {

//! A modal progress dialog for work that runs on the GUI thread. It appears only when the work
//! lasts longer than a moment, shows the wait cursor for its lifetime, and offers Cancel when
//! the work can stop between steps.
class BlockingProgress {
public:
    BlockingProgress(const QString& label, int maximum, bool cancellable,
                     QWidget* parent = nullptr);
    ~BlockingProgress();
    BlockingProgress(const BlockingProgress&) = delete;
    BlockingProgress& operator=(const BlockingProgress&) = delete;

    //! Moves the bar to value (0 .. maximum) and lets the windows paint; false once the user
    //! has asked to cancel.
    bool step(int value);
    //! Changes the text above the bar.
    void setLabel(const QString& label);
    bool cancelled() const;
    //! The dialog itself (tests look at it).
    QProgressDialog* dialog() const { return m_dialog.get(); }

private:
    std::unique_ptr<QProgressDialog> m_dialog;
};

} // namespace zarvion::gui
