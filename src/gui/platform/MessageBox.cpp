#include "platform/MessageBox.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>

#include "shell/Message.h"
#include "shell/SessionState.h"

namespace zarvion::gui {

namespace {

MessageHandler& handler()
{
    static MessageHandler h;
    return h;
}

QMessageBox::Icon iconOf(int style)
{
    switch (style & 0x70) {
    case 16:
        return QMessageBox::Critical;
    case 32:
        return QMessageBox::Question;
    case 48:
        return QMessageBox::Warning;
    case 64:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

} // namespace

QString toQt(const std::string& text)
{
    return QString::fromStdString(text);
}

std::string fromQt(const QString& text)
{
    return text.toStdString();
}

void SetMessageHandler(MessageHandler h)
{
    handler() = std::move(h);
}

int ShowMessage(const QString& text, int style, const QString& title)
{
    if (handler())
        return handler()(ShownMessage{text, style, title});
    QMessageBox box(iconOf(style), title, QString(text).replace(QStringLiteral("\r\n"), "\n"),
                    QMessageBox::NoButton, QApplication::activeWindow());
    const int buttons = style & 0x7;
    if (buttons == 4) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    } else if (buttons == 3) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        box.setEscapeButton(QMessageBox::Cancel);
    } else {
        box.setStandardButtons(QMessageBox::Ok);
    }
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int answer = box.exec();
    QApplication::restoreOverrideCursor();
    switch (answer) {
    case QMessageBox::Yes:
        return AnswerYes;
    case QMessageBox::No:
        return AnswerNo;
    case QMessageBox::Cancel:
        return AnswerCancel;
    default:
        return buttons == 3 ? AnswerCancel : AnswerOk;
    }
}

int ShowMessage(const zarvion::shell::Message& message)
{
    return ShowMessage(toQt(message.text), message.style, toQt(message.title));
}

void ShowWarning(const QString& text)
{
    ShowMessage(text, 48, QString());
}

void ShowFieldError(const QString& message, QLineEdit* textBox)
{
    ShowMessage(message, 48);
    if (textBox) {
        textBox->setFocus(Qt::OtherFocusReason);
        textBox->selectAll();
    }
}

void ReportError(const QString& tag, const QString& description)
{
    ShowMessage(shell::ReportError(shell::Session(), fromQt(tag), fromQt(description)));
}

QString LastError()
{
    return toQt(shell::Session().LastError);
}

} // namespace zarvion::gui
