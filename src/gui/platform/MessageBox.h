#pragma once
// The application's message box: the style numbers of the program (16 critical, 48 warning,
// 64 information, 32 question; plus 4 for Yes/No, plus 3 for Yes/No/Cancel) over QMessageBox,
// with a hook through which tests answer boxes without showing them.

#include <QString>
#include <functional>
#include <string>

class QLineEdit;
class QWidget;

namespace zarvion::shell {
struct Message;
}

namespace zarvion::gui {

//! Answers of a box, numbered as the program numbers them.
enum MessageAnswer : int { AnswerOk = 1, AnswerCancel = 2, AnswerYes = 6, AnswerNo = 7 };

//! A box as it would be shown: text, style number and title.
struct ShownMessage {
    QString text;
    int style = 0;
    QString title;
};

//! Replaces the showing of boxes: the handler sees each box and returns the answer.
using MessageHandler = std::function<int(const ShownMessage&)>;

//! Installs a handler (tests); an empty one restores real boxes.
void SetMessageHandler(MessageHandler handler);

//! Shows a box and returns the answer. Line ends CR LF are shown as line breaks.
int ShowMessage(const QString& text, int style, const QString& title = QStringLiteral("ZARVION"));

//! Shows a core message with its style and title.
int ShowMessage(const zarvion::shell::Message& message);

//! A box with the warning icon and no title text.
void ShowWarning(const QString& text);

//! Refuses the content of a field: warning box, focus to the field, whole text selected.
void ShowFieldError(const QString& message, QLineEdit* textBox);

//! The common reporter: LastError = tag + description, shown by ShowWarning.
void ReportError(const QString& tag, const QString& description);

//! Text of the last error reported.
QString LastError();

QString toQt(const std::string& text);
std::string fromQt(const QString& text);

} // namespace zarvion::gui
