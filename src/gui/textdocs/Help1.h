#pragma once
// The number-format help window, and the about box.

#include <QWidget>

#include "platform/Frame.h"

class QAction;
class QMenu;
class QPlainTextEdit;

namespace zarvion::gui {

//! `Help1`, "Zarvion   Number Format": a read-only text on the number format the program needs.
class Help1 : public QWidget, public ChildMenus {
    Q_OBJECT
public:
    explicit Help1(QWidget* parent = nullptr);
    QList<QMenu*> menus() const override { return m_menus; }
    QPlainTextEdit* box() const { return m_box; }
    //! Text sizes 14, 11, 9; the size in force does nothing.
    void setTextSize(int size);
    int textSize() const { return m_size; }

    //! The fixed text of the window.
    static QString HelpText();

    Q_INVOKABLE void ToolBr();

private:
    QPlainTextEdit* m_box;
    QList<QMenu*> m_menus;
    QAction* m_sizes[3] = {};
    int m_size = 0;
};

//! Opens the number-format help in the frame.
Help1* ShowHelp1();

//! Shows the about box with the program's name and version.
void ShowAbout(QWidget* parent);

} // namespace zarvion::gui
