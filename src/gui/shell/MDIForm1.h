#pragma once
// The multiple-document frame: menus, the two toolbars whose keys call operations by name on
// the active child, the deferred actions, the open-by-type rule and the close walk.

#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include "platform/Frame.h"
#include "shell/SessionState.h"

class QAction;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;

namespace zarvion::gui {

class Title;

//! Start-up options of the frame.
struct FrameOptions {
    bool showSplash = true;       //!< false in tests: no splash, no first dialog
    QStringList filesToOpen;      //!< opened through OpenDocument once start-up is done
    QString appPath;              //!< the program's folder; empty: the executable's folder
    //! The number conversion the start-up check looks at; empty: the program's own.
    shell::NumberFormatter numberFormatter;
};

//! `MDIForm1`, caption "  Zarvion-II".
class MDIForm1 : public QMainWindow, public FrameServices {
    Q_OBJECT
public:
    explicit MDIForm1(FrameOptions options = {}, QWidget* parent = nullptr);
    ~MDIForm1() override;

    // FrameServices
    void SetToolbarMode(int mode) override;
    void ZordTimer(const QString& caption) override;
    void Timer3Run(const QString& path, const QString& caption) override;
    void OpenDocument(const QString& path) override;
    void AddChild(QWidget* child) override;
    QList<QWidget*> Children() const override;
    bool CloseChild(QWidget* child) override;
    QWidget* FrameWidget() override { return this; }
    bool IsMaximised() const override { return isMaximized(); }
    bool IsMinimised() const override { return isMinimized(); }
    void Maximise() override { showMaximized(); }
    void NormalForStartWindow() override;
    void ShowSolverResults(const QString& path) override;
    void CloseDialogs(const QString& except) override;
    void UpdateCommands() override;
    void OpenReduction(const QString& path) override;
    void OpenComparison(const QString& path) override;
    void ReactionsInChemkinFormat(const QString& path) override;
    QAction* ToolbarButton(int toolbar, const QString& key) override;
    void ShowTextView(const QString& path, const QString& caption) override;

    //! Opens a solver file, or brings up the window that holds it; empty asks for one.
    void OpenSolverFile(const QString& path);
    //! Starts the close of the program (Timer2).
    void Exit();
    //! Runs the close walk now; false when a document refused and the program goes on.
    bool CloseWalk();

    QToolBar* Toolbar2 = nullptr;
    QToolBar* Toolbar5 = nullptr;
    //! The toolbar action of a key, e.g. "RICH_UNDO" on Toolbar5.
    QAction* toolbarAction(QToolBar* bar, const QString& key) const;
    QMdiArea* mdiArea() const { return m_area; }
    QWidget* activeChild() const;
    QString numberFormatMessage() const { return m_numberFormatMessage; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MDILoad();
    void buildMenus();
    void buildToolbars();
    void rebuildMenuBar();
    void callOnActiveChild(const QString& operation);
    void onToolbarKey(QAction* action);
    void onSubWindowActivated(QMdiSubWindow* window);
    void fillWindowMenu();
    void unload();

    QMdiArea* m_area = nullptr;
    FrameOptions m_options;
    QMenu* m_fileMenu = nullptr;
    QMenu* m_kineticsMenu = nullptr;
    QMenu* m_toolsMenu = nullptr;
    QMenu* m_windowMenu = nullptr;
    QMenu* m_helpMenu = nullptr;
    QAction* m_saveAction = nullptr;
    QAction* m_saveAsAction = nullptr;
    QAction* m_closeAction = nullptr;
    QAction* m_printAction = nullptr;
    QTimer Timer1, Timer2, Timer3, Timer4;
    QString m_numberFormatMessage;
    QString m_timer3Path, m_timer3Caption;
    QPointer<QWidget> m_zordWindow;
    bool m_closingDue = false;
    QPointer<Title> m_title;
    // Receiver of the signals of the area and its windows. Declared last, so it goes first when
    // the frame is destroyed and none of those signals reaches a half-destroyed frame.
    QObject m_childSignals;
};

} // namespace zarvion::gui
