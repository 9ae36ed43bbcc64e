#pragma once
// The state and rules of one text window that need no widgets: captions of new documents,
// which keys mark a document as changed, the close question, search and replace, and the
// test for a results section.

#include "shell/Message.h"
#include "textdocs/TextBox.h"

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zarvion::textdocs {

//! Options word of a search: 0, plus FindWholeWord, plus FindMatchCase.
inline constexpr int FindWholeWord = 2;
inline constexpr int FindMatchCase = 4;

//! Where `what` next occurs in `text` at or after `start`, or -1. Whole word: no letter, digit
//! or underscore touches the hit on either side. Without match case, ASCII letters compare
//! case-folded. An empty `what` is never found.
std::int32_t FindInText(std::string_view text, std::string_view what, std::int32_t start,
                        int options);

//! The caption of a new text document: "Text Doc" + the lowest number 1..100 not used by an
//! open window captioned exactly "Text Doc" + n; empty when all hundred are taken.
std::string NewTextDocument(const std::vector<std::string>& openCaptions);

//! Whether a key code leaves a document unchanged: function keys 112-123, 16-20, 33-40,
//! 145, 27, 45, 91-93, 144.
bool IsTypedKeyException(int keyCode);

//! The key codes of TypedKeyExceptions, ascending.
const std::vector<int>& TypedKeyExceptions();

//! Whether the file holds a results section: some line, trimmed, starts with "!$results" in
//! any case. A file that cannot be read has none.
bool GibtEsRes(const std::filesystem::path& path);

//! Today's date and time as the Date/Time command inserts them: "Mar 5 2014, 14:07:09".
std::string DateTimeText(const std::tm& when);

//! The print name kept for a new document: "Zarvion,  " + date, time and blanks.
std::string DefaultDocumentName(const std::tm& when);

//! One text document's state.
class TextDocument {
public:
    std::string Path;
    std::string FileName;
    std::string MenuCaption;
    bool Modified = false;
    bool IsSolverDocument = false;
    bool TextEmptyOnActivate = false;
    std::int32_t WordWrapMargin = 0; //!< 0 word wrap, 200000 no wrap
    std::int32_t FontSize = 11;
    std::int32_t FindPosition = 0;
    std::int32_t FindResult = -1;
    bool CtrlDown = false;
    std::int32_t PastePosition = 0;

    //! Takes over the path of a loaded file; the data-view file has no path of its own.
    void setLoadedPath(const std::string& path, const std::filesystem::path& tmpPlotPath);

    //! The key-down rule: notes Ctrl (shift state exactly 2) and, with Ctrl+V, the paste
    //! position; then marks the document changed unless the key is harmless (an exception of
    //! the table, or Ctrl+A / Ctrl+C).
    void onKeyDown(int keyCode, int shift, std::int32_t selStart);

    //! The question before closing, or an empty message when none is asked (a solver document,
    //! or no change). Yes/No/Cancel, title "ZARVION".
    shell::Message closeQuestion(const std::string& caption) const;

    //! Finds the next hit from FindPosition and selects it. Returns "End of search." (plain box)
    //! when nothing is found and `showEndMessage` is set; the next search then starts at 0.
    shell::Message Find_Rich(TextBox& box, std::string_view what, int options,
                             bool showEndMessage);
    //! Replaces the present hit, if any, and selects the replacement.
    void Replace_Rich(TextBox& box, const std::string& replacement);
    //! Replaces every hit from the top; returns the count message. Marks the document changed.
    shell::Message Replace_ALL(TextBox& box, std::string_view what, const std::string& replacement,
                               int options, int* count = nullptr);
};

} // namespace zarvion::textdocs
