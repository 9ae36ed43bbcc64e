#pragma once
// The text window: one text document, either a plain text that the user edits and saves, or
// a solver file shown locked and tinted, from which the solver and the tools are reached.

#include <QPlainTextEdit>
#include <QPointer>
#include <QWidget>
#include <memory>

#include "platform/Frame.h"

class QAction;
class QMenu;

namespace zarvion::gui {

class UndoAdapter;

//! The document box: a monospaced plain-text editor that reports key presses to its window.
class RichTextBox : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit RichTextBox(QWidget* parent = nullptr);

signals:
    //! Before the box acts on a key; setting consumed stops the box from acting.
    void keyDown(QKeyEvent* event, bool& consumed);
    void keyUp();
    void mouseUp(Qt::MouseButton button, const QPoint& globalPos);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};

//! The text window `RES_ShowFile`.
class RES_ShowFile : public QWidget, public ChildMenus {
    Q_OBJECT
public:
    explicit RES_ShowFile(QWidget* parent = nullptr);
    ~RES_ShowFile() override;

    //! Loads a file as plain text; failed is set when it cannot be read.
    Q_INVOKABLE void OPEN_Rich(const QString& path, bool& failed);
    //! Marks the document as a solver file: locked box, tinted background, solver commands.
    Q_INVOKABLE void IsSolferFile(bool flag);
    Q_INVOKABLE bool GetIsSolFile() const { return m_isSolverDocument; }
    Q_INVOKABLE QString MePath() const { return m_path; }
    Q_INVOKABLE void MenuCap(const QString& caption) { m_menuCaption = caption; }
    Q_INVOKABLE void MUStSaVE_RICH() { setModified(true); }
    bool isModified() const { return m_modified; }

    // Late operations of the toolbar and the frame.
    Q_INVOKABLE void SVTXT(bool& failed);
    Q_INVOKABLE void SVTXT();
    Q_INVOKABLE void SaveAs();
    Q_INVOKABLE void TEXT_CUT();
    Q_INVOKABLE void TEXT_COPY();
    Q_INVOKABLE void ClipInRich();
    Q_INVOKABLE void Rich_Undo();
    Q_INVOKABLE void Rich_Redo();
    Q_INVOKABLE void ToolBr();
    Q_INVOKABLE void FntSize(int size);
    Q_INVOKABLE void RunSol();
    Q_INVOKABLE void OpResults();

    // Printing: the document's heading, page-numbers flag and first page number, kept for
    // the page set-up; the preview of the whole text, or of the selection when there is one.
    void Set_Page_SetUp(const QString& heading, bool pageNumbers, int firstPageNumber);
    void Get_Page_SetUp(QString& heading, bool& pageNumbers, int& firstPageNumber) const;
    Q_INVOKABLE bool SelZxBB() const;
    Q_INVOKABLE void Print_Rch();
    //! "PRINT": the page set-up of this document, which leads to the preview.
    Q_INVOKABLE void PrintText();

    // Search, driven by the find dialog.
    Q_INVOKABLE void Find_Rich(const QString& what, int options, bool showEndMessage);
    Q_INVOKABLE void Replace_Rich(const QString& replacement);
    Q_INVOKABLE int Replace_ALL(const QString& what, const QString& replacement, int options);
    int FindPosition() const { return m_findPosition; }
    int FindResult() const { return m_findResult; }

    //! Creates an empty text document "Text Doc" + the lowest free number; returns its caption.
    static QString NewTextDocument(bool flag = false);

    RichTextBox* box() const { return m_box; }
    UndoAdapter* undo() const { return m_undo.get(); }
    //! The window's menus, shown by the frame while the window is active.
    QList<QMenu*> menus() const override { return m_menus; }
    bool canUndo() const;
    bool canRedo() const;
    int fontSize() const { return m_fontSize; }

signals:
    void commandsChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus();
    void SolMenu(bool locked);
    void setModified(bool modified);
    void updateSelectionCommands();
    void onKeyDown(QKeyEvent* event, bool& consumed);
    void DATATIME();
    void TXTWORDWRAP();
    void selectAll();
    void deleteSelection();
    void writeTo(const QString& path, bool& failed);
    void UnloadAll();
    void activated();
    bool askToSave();

    RichTextBox* m_box = nullptr;
    std::unique_ptr<UndoAdapter> m_undo;
    QString m_path;
    QString m_fileName;
    QString m_menuCaption;
    QString m_printName;
    bool m_modified = false;
    bool m_isSolverDocument = false;
    bool m_textEmptyOnActivate = false;
    bool m_ctrlDown = false;
    int m_pastePosition = 0;
    int m_fontSize = 11;
    int m_findPosition = 0;
    int m_findResult = -1;
    QList<QMenu*> m_menus;
    QAction* m_undoAction = nullptr;
    QAction* m_redoAction = nullptr;
    QAction* m_cutAction = nullptr;
    QAction* m_copyAction = nullptr;
    QAction* m_pasteAction = nullptr;
    QAction* m_deleteAction = nullptr;
    QAction* m_dateAction = nullptr;
    QAction* m_wrapAction = nullptr;
    QAction* m_sizeActions[3] = {};
    QAction* m_runSolverAction = nullptr;
    QAction* m_postAction = nullptr;
    QAction* m_outputDialogAction = nullptr;
    QList<QAction*> m_laterActions;
    QMenu* m_solverMenu = nullptr;
    QMenu* m_popup = nullptr;
    QString m_pageHeading; //!< null until the page set-up stored one
    bool m_pageNumbers = true;
    int m_firstPageNumber = 1;
};

//! Maps a Qt key to the virtual key code of the key tables (A-Z 65-90, F1 112, ...).
int VirtualKeyCode(int qtKey);

} // namespace zarvion::gui
