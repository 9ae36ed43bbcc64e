#pragma once
// The hourglass during long work, set back on every way out of the scope.

#include <QApplication>

namespace zarvion::gui {

//! Shows the wait cursor for its lifetime.
class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

//! Removes every override cursor: "reset the mouse cursor to the default".
inline void ResetCursor()
{
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
}

} // namespace zarvion::gui
