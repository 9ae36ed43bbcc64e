#pragma once
// A user-facing message as the core returns it: the exact text, the box style, the title.
// The GUI shows it; the CLI prints it. Core code never shows anything itself.

#include <string>

namespace zarvion::shell {

//! Box styles: icons 16 critical, 48 warning, 64 information, 32 question; plus 4 adds the
//! Yes/No buttons and 3 the Yes/No/Cancel buttons. 0 is a plain box.
enum MessageStyle : int {
    StylePlain = 0,
    StyleYesNoCancel = 3,
    StyleYesNo = 4,
    StyleCritical = 16,
    StyleQuestion = 32,
    StyleWarning = 48,
    StyleInformation = 64,
};

//! The title of every box unless a window says otherwise.
inline constexpr const char* DefaultTitle = "ZARVION";

//! One message for the user. An empty text means "nothing to say".
struct Message {
    std::string text;
    int style = StyleWarning;
    std::string title = DefaultTitle;

    bool empty() const { return text.empty(); }
};

} // namespace zarvion::shell
