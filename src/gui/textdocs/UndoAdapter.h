#pragma once
// Snapshot undo on a QPlainTextEdit: the box and a QTimer adapted to the undo engine of the
// text documents, with the box's change, selection and key events forwarded to it.

#include <QObject>
#include <QTimer>
#include <memory>

#include "textdocs/TextBox.h"
#include "textdocs/clsUndo.h"

class QKeyEvent;
class QPlainTextEdit;

namespace zarvion::gui {

//! A QPlainTextEdit seen as the engine's text box. Text is single-byte (Latin-1), so a
//! position counts the same characters on both sides.
class QtTextBox : public textdocs::TextBox {
public:
    explicit QtTextBox(QPlainTextEdit* box) : m_box(box) {}
    std::string text() const override;
    void setText(const std::string& text) override;
    std::int32_t selStart() const override;
    std::int32_t selLength() const override;
    void setSelStart(std::int32_t start) override;
    void setSelLength(std::int32_t length) override;
    void replaceSelection(const std::string& replacement) override;
    std::int32_t firstVisibleLine() const override;
    void scrollLines(std::int32_t lines) override;

private:
    QPlainTextEdit* m_box;
};

//! A QTimer seen as the engine's pause timer.
class QtUndoTimer : public textdocs::UndoTimer {
public:
    QTimer timer;
    void setInterval(int ms) override { timer.setInterval(ms); }
    void setEnabled(bool enabled) override
    {
        if (enabled)
            timer.start();
        else
            timer.stop();
    }
    bool isEnabled() const override { return timer.isActive(); }
};

//! `clsUndo` attached to a box.
class UndoAdapter : public QObject {
    Q_OBJECT
public:
    UndoAdapter(QPlainTextEdit* box, int intervalMs, QObject* parent = nullptr);

    void Reset() { m_engine.Reset(); }
    void Undo() { m_engine.Undo(); }
    void Redo() { m_engine.Redo(); }
    bool canUndo() const { return m_engine.canUndo(); }
    bool canRedo() const { return m_engine.canRedo(); }
    int undoCount() const { return static_cast<int>(m_engine.undoStack().size()); }
    int redoCount() const { return static_cast<int>(m_engine.redoStack().size()); }
    bool timerRunning() const { return m_timer.isEnabled(); }

    //! Ctrl+Z and Ctrl+Y: runs Undo or Redo and returns true (the key is consumed).
    bool handleKey(QKeyEvent* event);

signals:
    void StateChanged();

private:
    QtTextBox m_box;
    QtUndoTimer m_timer;
    textdocs::clsUndo m_engine;
};

} // namespace zarvion::gui
