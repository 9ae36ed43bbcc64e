#include "textdocs/UndoAdapter.h"

#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScrollBar>

#include "textdocs/RES_ShowFile.h"

namespace zarvion::gui {

std::string QtTextBox::text() const
{
    return m_box->toPlainText().toLatin1().toStdString();
}

void QtTextBox::setText(const std::string& text)
{
    m_box->setPlainText(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
}

std::int32_t QtTextBox::selStart() const
{
    return m_box->textCursor().selectionStart();
}

std::int32_t QtTextBox::selLength() const
{
    const QTextCursor c = m_box->textCursor();
    return c.selectionEnd() - c.selectionStart();
}

void QtTextBox::setSelStart(std::int32_t start)
{
    QTextCursor c = m_box->textCursor();
    const int length = m_box->document()->characterCount() - 1;
    c.setPosition(std::clamp(start, 0, length));
    m_box->setTextCursor(c);
}

void QtTextBox::setSelLength(std::int32_t length)
{
    QTextCursor c = m_box->textCursor();
    const int start = c.selectionStart();
    const int end = std::clamp(start + length, 0, m_box->document()->characterCount() - 1);
    c.setPosition(start);
    c.setPosition(end, QTextCursor::KeepAnchor);
    m_box->setTextCursor(c);
}

void QtTextBox::replaceSelection(const std::string& replacement)
{
    QTextCursor c = m_box->textCursor();
    c.insertText(QString::fromLatin1(replacement.data(), static_cast<qsizetype>(replacement.size())));
    m_box->setTextCursor(c);
}

std::int32_t QtTextBox::firstVisibleLine() const
{
    return m_box->verticalScrollBar()->value();
}

void QtTextBox::scrollLines(std::int32_t lines)
{
    QScrollBar* bar = m_box->verticalScrollBar();
    bar->setValue(bar->value() + lines);
}

UndoAdapter::UndoAdapter(QPlainTextEdit* box, int intervalMs, QObject* parent)
    : QObject(parent), m_box(box)
{
    m_timer.timer.setObjectName(
        QString::fromStdString(textdocs::clsUndo::TimerName(box->objectName().toStdString())));
    m_engine.StateChanged = [this] { emit StateChanged(); };
    connect(&m_timer.timer, &QTimer::timeout, this, [this] { m_engine.onTimer(); });
    connect(box, &QPlainTextEdit::textChanged, this, [this] { m_engine.onChange(); });
    connect(box, &QPlainTextEdit::cursorPositionChanged, this,
            [this] { m_engine.onSelectionChange(); });
    connect(box, &QPlainTextEdit::selectionChanged, this, [this] { m_engine.onSelectionChange(); });
    m_engine.Create(m_box, m_timer, intervalMs);
}

bool UndoAdapter::handleKey(QKeyEvent* event)
{
    int code = VirtualKeyCode(event->key());
    const int shift = event->modifiers() == Qt::ControlModifier ? textdocs::clsUndo::CtrlState : 0;
    return m_engine.onKeyDown(code, shift);
}

} // namespace zarvion::gui
