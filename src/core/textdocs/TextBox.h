#pragma once
// What the text logic needs of an edit box, so that the same logic drives the window's box and
// an in-memory box in tests and batch use. Positions count characters from 0.

#include <cstdint>
#include <functional>
#include <string>

namespace zarvion::textdocs {

//! An edit box: text, selection and scrolling. Setting the text or the selection raises the
//! box's own change and selection events, as a real box does.
class TextBox {
public:
    virtual ~TextBox() = default;

    virtual std::string text() const = 0;
    virtual void setText(const std::string& text) = 0;
    //! The text with its formatting, as undo snapshots keep it; plain boxes return text().
    virtual std::string richText() const { return text(); }
    virtual void setRichText(const std::string& rich) { setText(rich); }

    virtual std::int32_t selStart() const = 0;
    virtual std::int32_t selLength() const = 0;
    //! Moves the caret to `start` and empties the selection (clipped to the text).
    virtual void setSelStart(std::int32_t start) = 0;
    //! Extends the selection from selStart by `length` characters (clipped to the text).
    virtual void setSelLength(std::int32_t length) = 0;
    //! Replaces the selected text; the caret goes behind the new text.
    virtual void replaceSelection(const std::string& replacement) = 0;

    virtual std::int32_t firstVisibleLine() const = 0;
    virtual void scrollLines(std::int32_t lines) = 0;
};

//! A box held in memory. Change and selection listeners stand for the box's events.
class MemoryTextBox : public TextBox {
public:
    std::function<void()> onChange;
    std::function<void()> onSelectionChange;

    std::string text() const override { return m_text; }
    void setText(const std::string& text) override;
    std::int32_t selStart() const override { return m_selStart; }
    std::int32_t selLength() const override { return m_selLength; }
    void setSelStart(std::int32_t start) override;
    void setSelLength(std::int32_t length) override;
    void replaceSelection(const std::string& replacement) override;
    std::int32_t firstVisibleLine() const override { return m_firstVisibleLine; }
    //! Scrolls by a number of lines; the first visible line stays within the text's lines.
    void scrollLines(std::int32_t lines) override;

    //! The text of the selection.
    std::string selectedText() const;
    //! Types text at the caret, replacing the selection, as a user would.
    void type(const std::string& typed) { replaceSelection(typed); }
    std::int32_t lineCount() const;

private:
    void changed();
    void selectionChanged();

    std::string m_text;
    std::int32_t m_selStart = 0;
    std::int32_t m_selLength = 0;
    std::int32_t m_firstVisibleLine = 0;
};

} // namespace zarvion::textdocs
