#pragma once
// Snapshot undo for an edit box: once the user pauses, the whole text with the selection is
// recorded as one state; undo and redo swap whole states. At most 21 states are kept.

#include "textdocs/TextBox.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zarvion::textdocs {

//! One recorded state.
struct clsUndoElement {
    std::string Text;
    std::int32_t SelStart = 0;
    std::int32_t SelLength = 0;
};

//! The pause timer: single-shot in effect, since the engine disables it when it fires.
class UndoTimer {
public:
    virtual ~UndoTimer() = default;
    virtual void setInterval(int milliseconds) = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual bool isEnabled() const = 0;
};

//! The undo engine. The owner forwards the box's events to onChange, onSelectionChange and
//! onKeyDown, and the timer's tick to onTimer.
class clsUndo {
public:
    static constexpr std::size_t MaxStates = 21;
    static constexpr int KeyZ = 90;
    static constexpr int KeyY = 89;
    static constexpr int CtrlState = 2;

    //! Attaches the box and the timer (disabled, with the interval), resets; returns true.
    bool Create(TextBox& box, UndoTimer& timer, int intervalMs);
    //! The name the timer gets beside its box.
    static std::string TimerName(const std::string& boxName) { return "UndoTimer_" + boxName; }

    //! Empties both stacks and starts the timer for the baseline snapshot.
    void Reset();
    void Undo();
    void Redo();
    bool canUndo() const { return m_undoStack.size() >= 2; }
    bool canRedo() const { return !m_redoStack.empty(); }

    //! Raised after each change of the stacks.
    std::function<void()> StateChanged;

    // Event handlers.
    void onChange();
    void onSelectionChange();
    //! Ctrl+Z undoes, Ctrl+Y redoes; either key code is set to 0 (consumed). Returns whether
    //! the key was consumed.
    bool onKeyDown(int& keyCode, int shift);
    void onTimer();

    const std::vector<clsUndoElement>& undoStack() const { return m_undoStack; }
    const std::vector<clsUndoElement>& redoStack() const { return m_redoStack; }
    bool enabled() const { return m_enabled; }

    struct Selection {
        std::int32_t start = 0;
        std::int32_t length = 0;
    };
    Selection previousSelection() const { return m_previousSelection; }
    Selection currentSelection() const { return m_currentSelection; }

private:
    void raiseStateChanged();

    TextBox* m_box = nullptr;
    UndoTimer* m_timer = nullptr;
    bool m_enabled = true;
    std::vector<clsUndoElement> m_undoStack;
    std::vector<clsUndoElement> m_redoStack;
    Selection m_previousSelection;
    Selection m_currentSelection;
};

} // namespace zarvion::textdocs
