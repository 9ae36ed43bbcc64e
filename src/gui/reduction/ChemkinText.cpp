#include "reduction/ChemkinText.h"

#include "platform/Frame.h"
#include "platform/MessageBox.h"
#include "platform/WaitCursor.h"
#include "reduction/ChemkinConversion.h"
#include "textdocs/RES_ShowFile.h"
#include "textdocs/UndoAdapter.h"

namespace zarvion::gui {

RES_ShowFile* ConvertReactions(const QString& path)
{
    reduction::ChemkinConversion conversion;
    try {
        WaitCursor wait;
        conversion = reduction::ConvertReactions(fromQt(path));
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Txt#401. "), toQt(e.what()));
        return nullptr;
    }
    if (!conversion.ok()) {
        ShowMessage(conversion.message);
        return nullptr;
    }
    const QString caption = RES_ShowFile::NewTextDocument(false);
    if (caption.isEmpty() || !Frame())
        return nullptr;
    for (QWidget* w : Frame()->Children()) {
        auto* doc = qobject_cast<RES_ShowFile*>(w);
        if (!doc || doc->windowTitle() != caption)
            continue;
        QString text;
        for (const std::string& line : conversion.lines)
            text += QString::fromLatin1(line.data(), static_cast<qsizetype>(line.size())) + '\n';
        text.chop(1);
        doc->box()->setPlainText(text);
        doc->box()->moveCursor(QTextCursor::Start);
        // The text is the document's first state: nothing to undo, nothing changed by the user.
        doc->undo()->Reset();
        return doc;
    }
    return nullptr;
}

} // namespace zarvion::gui
