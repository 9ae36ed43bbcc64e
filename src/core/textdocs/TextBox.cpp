#include "textdocs/TextBox.h"

#include <algorithm>

namespace zarvion::textdocs {

void MemoryTextBox::changed()
{
    if (onChange) {
        onChange();
    }
}

void MemoryTextBox::selectionChanged()
{
    if (onSelectionChange) {
        onSelectionChange();
    }
}

void MemoryTextBox::setText(const std::string& text)
{
    m_text = text;
    m_selStart = 0; // a new text puts the caret at the top, as the box does
    m_selLength = 0;
    m_firstVisibleLine = 0;
    changed();
    selectionChanged();
}

void MemoryTextBox::setSelStart(std::int32_t start)
{
    const auto size = static_cast<std::int32_t>(m_text.size());
    m_selStart = std::clamp<std::int32_t>(start, 0, size);
    m_selLength = 0;
    selectionChanged();
}

void MemoryTextBox::setSelLength(std::int32_t length)
{
    const auto size = static_cast<std::int32_t>(m_text.size());
    m_selLength = std::clamp<std::int32_t>(length, 0, size - m_selStart);
    selectionChanged();
}

void MemoryTextBox::replaceSelection(const std::string& replacement)
{
    m_text.replace(static_cast<std::size_t>(m_selStart), static_cast<std::size_t>(m_selLength),
                   replacement);
    m_selStart += static_cast<std::int32_t>(replacement.size());
    m_selLength = 0;
    changed();
    selectionChanged();
}

void MemoryTextBox::scrollLines(std::int32_t lines)
{
    m_firstVisibleLine = std::clamp<std::int32_t>(m_firstVisibleLine + lines, 0,
                                                  std::max<std::int32_t>(lineCount() - 1, 0));
}

std::string MemoryTextBox::selectedText() const
{
    return m_text.substr(static_cast<std::size_t>(m_selStart),
                         static_cast<std::size_t>(m_selLength));
}

std::int32_t MemoryTextBox::lineCount() const
{
    return 1 + static_cast<std::int32_t>(std::count(m_text.begin(), m_text.end(), '\n'));
}

} // namespace zarvion::textdocs
