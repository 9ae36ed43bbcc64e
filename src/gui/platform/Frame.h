#pragma once
// What child windows need of the main frame. The frame implements it; children reach it
// through Frame(), so that the window libraries do not link the frame's library.

#include <QList>
#include <QString>

class QAction;
class QWidget;

namespace zarvion::gui {

//! Services of the multiple-document frame.
class FrameServices {
public:
    virtual ~FrameServices() = default;
    //! 0, 1, 4 hide both toolbars; 2 shows the chart toolbar; 5 the text toolbar.
    virtual void SetToolbarMode(int mode) = 0;
    //! Brings the child of this caption to the front once the present event has finished.
    virtual void ZordTimer(const QString& caption) = 0;
    //! Opens a new start window for the file once the present event has finished.
    virtual void Timer3Run(const QString& path, const QString& caption) = 0;
    //! Opens a file in the window its type calls for; an empty path asks for one.
    virtual void OpenDocument(const QString& path) = 0;
    //! Adds a window to the frame as a child and shows it.
    virtual void AddChild(QWidget* child) = 0;
    //! The open child windows, in window-list order.
    virtual QList<QWidget*> Children() const = 0;
    //! Closes a child; false when the child refused.
    virtual bool CloseChild(QWidget* child) = 0;
    //! The frame's own window (owner of dialogs).
    virtual QWidget* FrameWidget() = 0;
    //! Frame window state around the start window and the solver run.
    virtual bool IsMaximised() const = 0;
    virtual bool IsMinimised() const = 0;
    virtual void Maximise() = 0;
    virtual void NormalForStartWindow() = 0;
    //! Runs the result checks on a solver file and starts the post-processor on it.
    virtual void ShowSolverResults(const QString& path) = 0;
    //! Closes the find dialog and the solver-side dialogs of a closing solver document.
    virtual void CloseDialogs(const QString& except) = 0;
    //! Re-reads the active child's state (menus, toolbar buttons).
    virtual void UpdateCommands() = 0;
    //! Opens the reduction window on a solved solver file.
    virtual void OpenReduction(const QString& path) = 0;
    //! Opens the comparison window with a solved solver file as its first file.
    virtual void OpenComparison(const QString& path) = 0;
    //! Shows the reactions of a solver file in CHEMKIN syntax in a new text window.
    virtual void ReactionsInChemkinFormat(const QString& path) = 0;
    //! A button of the chart toolbar (2) or the text toolbar (5) by its key; nullptr if none.
    virtual QAction* ToolbarButton(int toolbar, const QString& key) = 0;
    //! Shows a file in a new text window under a caption (a data view), then deletes the file.
    virtual void ShowTextView(const QString& path, const QString& caption) = 0;
};

//! The frame of the process, or nullptr before it exists.
FrameServices* Frame();
void SetFrame(FrameServices* frame);

} // namespace zarvion::gui

namespace zarvion::gui {

//! A child window whose menus the frame shows while the child is active.
class ChildMenus {
public:
    virtual ~ChildMenus() = default;
    virtual QList<class QMenu*> menus() const = 0;
};

} // namespace zarvion::gui
