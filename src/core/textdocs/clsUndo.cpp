#include "textdocs/clsUndo.h"

namespace zarvion::textdocs {

bool clsUndo::Create(TextBox& box, UndoTimer& timer, int intervalMs)
{
    m_box = &box;
    m_timer = &timer;
    m_timer->setEnabled(false);
    m_timer->setInterval(intervalMs);
    Reset();
    return true;
}

void clsUndo::raiseStateChanged()
{
    if (StateChanged) {
        StateChanged();
    }
}

void clsUndo::Reset()
{
    m_undoStack.clear();
    m_redoStack.clear();
    m_enabled = true;
    onChange(); // the baseline snapshot follows one interval later
    raiseStateChanged();
}

void clsUndo::onChange()
{
    if (m_timer == nullptr) {
        return;
    }
    m_timer->setEnabled(false);
    if (m_enabled) {
        m_timer->setEnabled(true); // restart: fire one interval after the last change
    }
}

void clsUndo::onSelectionChange()
{
    if (m_box == nullptr || (m_timer != nullptr && m_timer->isEnabled())) {
        return;
    }
    m_previousSelection = m_currentSelection;
    m_currentSelection = {m_box->selStart(), m_box->selLength()};
}

bool clsUndo::onKeyDown(int& keyCode, int shift)
{
    if (shift != CtrlState) {
        return false;
    }
    if (keyCode == KeyZ) {
        Undo();
        keyCode = 0;
        return true;
    }
    if (keyCode == KeyY) {
        Redo();
        keyCode = 0;
        return true;
    }
    return false;
}

void clsUndo::onTimer()
{
    if (m_timer != nullptr) {
        m_timer->setEnabled(false);
    }
    if (!m_enabled || m_box == nullptr) {
        return;
    }
    // The state before this edit comes back with the selection that stood just before it.
    if (!m_undoStack.empty()) {
        m_undoStack.back().SelStart = m_previousSelection.start;
        m_undoStack.back().SelLength = m_previousSelection.length;
    }
    clsUndoElement element;
    element.Text = m_box->richText();
    if (m_undoStack.size() > MaxStates - 1) {
        m_undoStack.erase(m_undoStack.begin());
    }
    m_undoStack.push_back(std::move(element));
    m_redoStack.clear();
    raiseStateChanged();
    // The length of the previous selection takes the start, not the length.
    m_previousSelection.start = m_box->selStart();
    m_previousSelection.length = m_box->selStart();
    m_currentSelection.start = m_box->selStart();
    m_currentSelection.length = m_box->selLength();
}

void clsUndo::Undo()
{
    if (m_box == nullptr || m_undoStack.size() < 2) {
        return;
    }
    m_enabled = false;
    const std::int32_t lines = m_box->firstVisibleLine() + 1;
    m_redoStack.push_back(std::move(m_undoStack.back()));
    m_undoStack.pop_back();
    const clsUndoElement& element = m_undoStack.back();
    m_box->setRichText(element.Text);
    m_box->scrollLines(lines);
    m_box->setSelStart(element.SelStart);
    m_box->setSelLength(element.SelLength);
    m_enabled = true;
    raiseStateChanged();
}

void clsUndo::Redo()
{
    if (m_box == nullptr || m_redoStack.empty()) {
        return;
    }
    m_enabled = false;
    m_undoStack.push_back(std::move(m_redoStack.back()));
    m_redoStack.pop_back();
    const clsUndoElement& element = m_undoStack.back();
    m_box->setRichText(element.Text);
    m_box->setSelStart(element.SelStart);
    m_box->setSelLength(element.SelLength);
    m_enabled = true;
    raiseStateChanged();
}

} // namespace zarvion::textdocs
