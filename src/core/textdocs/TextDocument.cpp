#include "textdocs/TextDocument.h"

#include "shell/FileGuards.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"

#include <algorithm>
#include <fstream>

namespace zarvion::textdocs {

namespace {

char fold(char c)
{
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isWordChar(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

} // namespace

std::int32_t FindInText(std::string_view text, std::string_view what, std::int32_t start,
                        int options)
{
    if (what.empty() || start < 0 || static_cast<std::size_t>(start) >= text.size()) {
        return -1;
    }
    const bool matchCase = (options & FindMatchCase) != 0;
    const bool wholeWord = (options & FindWholeWord) != 0;
    for (std::size_t i = static_cast<std::size_t>(start); i + what.size() <= text.size(); ++i) {
        bool match = true;
        for (std::size_t k = 0; k < what.size() && match; ++k) {
            match = matchCase ? text[i + k] == what[k] : fold(text[i + k]) == fold(what[k]);
        }
        if (!match) {
            continue;
        }
        if (wholeWord) {
            const bool before = i > 0 && isWordChar(text[i - 1]);
            const bool after = i + what.size() < text.size() && isWordChar(text[i + what.size()]);
            if (before || after) {
                continue;
            }
        }
        return static_cast<std::int32_t>(i);
    }
    return -1;
}

std::string NewTextDocument(const std::vector<std::string>& openCaptions)
{
    std::vector<bool> taken(101, false);
    const std::string stem = "Text Doc";
    for (const auto& caption : openCaptions) {
        if (caption.rfind(stem, 0) != 0) {
            continue;
        }
        for (int n = 1; n <= 100; ++n) {
            if (caption == stem + std::to_string(n)) {
                taken[static_cast<std::size_t>(n)] = true;
            }
        }
    }
    for (int n = 1; n <= 100; ++n) {
        if (!taken[static_cast<std::size_t>(n)]) {
            return stem + std::to_string(n);
        }
    }
    return {};
}

const std::vector<int>& TypedKeyExceptions()
{
    static const std::vector<int> codes = [] {
        std::vector<int> c;
        for (int k = 112; k <= 123; ++k) {
            c.push_back(k);
        }
        for (int k = 16; k <= 20; ++k) {
            c.push_back(k);
        }
        for (int k = 33; k <= 40; ++k) {
            c.push_back(k);
        }
        for (int k : {145, 27, 45, 91, 92, 93, 144}) {
            c.push_back(k);
        }
        std::sort(c.begin(), c.end());
        return c;
    }();
    return codes;
}

bool IsTypedKeyException(int keyCode)
{
    const auto& codes = TypedKeyExceptions();
    return std::binary_search(codes.begin(), codes.end(), keyCode);
}

bool GibtEsRes(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return false;
    }
    std::string line;
    while (std::getline(in, line)) {
        const std::string trimmed = shell::Trim(line);
        if (shell::LCase(shell::Left(trimmed, 9)) == "!$results") {
            return true;
        }
    }
    return false;
}

std::string DateTimeText(const std::tm& when)
{
    return shell::FormatDate(when, "mmm d yyyy") + ", " + shell::FormatDate(when, "hh:mm:ss");
}

std::string DefaultDocumentName(const std::tm& when)
{
    return "Zarvion,  " + DateTimeText(when) + "    ";
}

void TextDocument::setLoadedPath(const std::string& path, const std::filesystem::path& tmpPlotPath)
{
    Path = path;
    std::string extension;
    std::size_t position = 0;
    shell::SplitPath(path, FileName, extension, position);
    std::error_code ec;
    if (!path.empty() && !tmpPlotPath.empty() &&
        (std::filesystem::path(path) == tmpPlotPath ||
         std::filesystem::equivalent(path, tmpPlotPath, ec))) {
        Path.clear(); // a data view: Save asks for a name
    }
}

void TextDocument::onKeyDown(int keyCode, int shift, std::int32_t selStart)
{
    CtrlDown = shift == 2;
    if (CtrlDown && keyCode == 86) {
        PastePosition = selStart;
    }
    if (Modified || IsTypedKeyException(keyCode)) {
        return;
    }
    if (CtrlDown && (keyCode == 65 || keyCode == 67)) {
        return; // Ctrl+A, Ctrl+C
    }
    Modified = true;
}

shell::Message TextDocument::closeQuestion(const std::string& caption) const
{
    if (IsSolverDocument || !Modified) {
        return {};
    }
    const std::string text = Path.empty()
                                 ? "Do you want to save the text document " + caption + "?"
                                 : "Do you want to save changes to " + Path + "?";
    return {text, shell::StyleYesNoCancel + shell::StyleQuestion, shell::DefaultTitle};
}

shell::Message TextDocument::Find_Rich(TextBox& box, std::string_view what, int options,
                                       bool showEndMessage)
{
    FindResult = FindInText(box.text(), what, FindPosition, options);
    if (FindResult >= 0) {
        box.setSelStart(FindResult);
        box.setSelLength(static_cast<std::int32_t>(what.size()));
    }
    FindPosition = FindResult + static_cast<std::int32_t>(what.size());
    if (FindResult == -1) {
        FindPosition = 0; // the next search wraps to the top
        if (showEndMessage) {
            return {"End of search.", shell::StylePlain, shell::DefaultTitle};
        }
    }
    return {};
}

void TextDocument::Replace_Rich(TextBox& box, const std::string& replacement)
{
    if (FindResult < 0) {
        return;
    }
    box.replaceSelection(replacement);
    box.setSelStart(FindResult);
    box.setSelLength(static_cast<std::int32_t>(replacement.size()));
    FindPosition = FindResult + static_cast<std::int32_t>(replacement.size());
    Modified = true;
}

shell::Message TextDocument::Replace_ALL(TextBox& box, std::string_view what,
                                         const std::string& replacement, int options, int* count)
{
    box.setSelStart(0);
    FindPosition = 0;
    int counter = 0;
    for (;;) {
        Find_Rich(box, what, options, false);
        Replace_Rich(box, replacement);
        if (FindResult < 0) {
            break;
        }
        ++counter;
    }
    Modified = true;
    if (count != nullptr) {
        *count = counter;
    }
    return {"In the document, " + std::to_string(counter) + " replacement(s) have been made.",
            shell::StylePlain, shell::DefaultTitle};
}

} // namespace zarvion::textdocs
