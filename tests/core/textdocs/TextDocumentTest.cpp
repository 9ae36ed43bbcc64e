#include "shell/AtomicFile.h"
#include "textdocs/TextDocument.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <unistd.h>

using namespace zarvion::textdocs;
namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

fs::path tempFile(const std::string& name, const std::string& content)
{
    const fs::path p = fs::temp_directory_path() /
                       ("zarv-textdocs-" + std::to_string(::getpid()) + "-" + name);
    zarvion::shell::WriteFileAtomically(p, content);
    return p;
}

} // namespace

TEST(NewTextDocument, LowestFreeNumber)
{
    EXPECT_EQ(NewTextDocument({}), "Text Doc1");
    EXPECT_EQ(NewTextDocument({"Text Doc1", "Text Doc3", "Temporary Chart "}), "Text Doc2");
    // Only exact captions take a number.
    EXPECT_EQ(NewTextDocument({"Text Doc 1", "Text Doc01", "text doc1", "Text Doc1 "}),
              "Text Doc1");
    EXPECT_EQ(NewTextDocument({"Text Doc101"}), "Text Doc1");
    std::vector<std::string> all;
    for (int n = 1; n <= 100; ++n) {
        all.push_back("Text Doc" + std::to_string(n));
    }
    EXPECT_EQ(NewTextDocument(all), "");
    all.erase(all.begin() + 41);
    EXPECT_EQ(NewTextDocument(all), "Text Doc42");
}

TEST(TextDocument, KeysThatMarkAChange)
{
    // Harmless keys: 16-20, 27, 33-40, 45, 91-93, 112-123 (function keys), 144 and 145.
    const std::vector<int> harmless = {16,  17,  18,  19,  20,  27,  33,  34,  35,  36,  37,
                                       38,  39,  40,  45,  91,  92,  93,  112, 113, 114, 115,
                                       116, 117, 118, 119, 120, 121, 122, 123, 144, 145};
    EXPECT_EQ(TypedKeyExceptions(), harmless);
    for (int code = 0; code < 256; ++code) {
        EXPECT_EQ(IsTypedKeyException(code),
                  std::find(harmless.begin(), harmless.end(), code) != harmless.end()) << code;
    }

    // F1, left arrow, Ctrl+A and Ctrl+C leave the document; Ctrl+Shift+C isn't the Ctrl state.
    struct Key {
        int code, shift;
        bool marks;
    };
    for (Key k : {Key{112, 0, false}, Key{37, 0, false}, Key{65, 2, false}, Key{67, 2, false},
                  Key{67, 3, true}, Key{65, 0, true}}) {
        TextDocument doc;
        doc.onKeyDown(k.code, k.shift, 0);
        EXPECT_EQ(doc.Modified, k.marks) << k.code << " shift " << k.shift;
    }
    TextDocument paste;
    paste.onKeyDown(86, 2, 17); // Ctrl+V marks even with an empty clipboard
    EXPECT_EQ(std::tuple(paste.Modified, paste.CtrlDown, paste.PastePosition),
              std::tuple(true, true, 17));
    paste.onKeyDown(37, 0, 0); // stays changed
    EXPECT_EQ(std::pair(paste.Modified, paste.CtrlDown), std::pair(true, false));
}

TEST(TextDocument, CloseQuestionPathsAndNames)
{
    TextDocument doc;
    EXPECT_TRUE(doc.closeQuestion("Text Doc2").empty());
    doc.Modified = true;
    auto q = doc.closeQuestion("Text Doc2");
    EXPECT_EQ(std::tuple(q.text, q.style & zarvion::shell::StyleYesNoCancel, q.title),
              std::tuple("Do you want to save the text document Text Doc2?"s,
                         +zarvion::shell::StyleYesNoCancel, "ZARVION"s));
    doc.Path = "/x/a.txt";
    EXPECT_EQ(doc.closeQuestion("a.txt").text, "Do you want to save changes to /x/a.txt?");
    doc.IsSolverDocument = true;
    EXPECT_TRUE(doc.closeQuestion("a.txt").empty());

    // The data-view file has no path of its own.
    const fs::path tmp = tempFile("TmpPlot.txt", "data");
    TextDocument view;
    view.setLoadedPath(tmp.string(), tmp);
    EXPECT_EQ(std::pair(view.Path, view.FileName), std::pair(""s, tmp.filename().string()));
    view.setLoadedPath("/a/b/notes.txt", tmp);
    EXPECT_EQ(std::pair(view.Path, view.FileName), std::pair("/a/b/notes.txt"s, "notes.txt"s));
    fs::remove(tmp);

    std::tm t{};
    t.tm_year = 114;
    t.tm_mon = 2;
    t.tm_mday = 5;
    t.tm_hour = 14;
    t.tm_min = 7;
    t.tm_sec = 9;
    EXPECT_EQ(DateTimeText(t), "Mar 5 2014, 14:07:09");
    EXPECT_EQ(DefaultDocumentName(t).rfind("Zarvion,  Mar 5 2014, 14:07:09", 0), 0u);
}

TEST(GibtEsRes, LooksForTheResultsMark)
{
    const std::pair<const char*, bool> files[] = {{"header\r\n  !$Results   $$\r\nrow\r\n", true},
                                                  {"x\n!$RESULTSX\n", true},
                                                  {"x !$results\n!$END\n", false}};
    for (const auto& [content, marked] : files) {
        const fs::path p = tempFile("results.txt", content);
        EXPECT_EQ(GibtEsRes(p), marked) << content;
        fs::remove(p);
    }
    EXPECT_FALSE(GibtEsRes(fs::temp_directory_path() / "zarv-no-such-file.txt"));
}

TEST(FindInText, OptionsAndBounds)
{
    EXPECT_EQ(FindInText("One one", "one", 0, 0), 0);
    EXPECT_EQ(FindInText("One one", "one", 0, FindMatchCase), 4);
    EXPECT_EQ(FindInText("bone one", "one", 0, FindWholeWord), 5);
    EXPECT_EQ(FindInText("bone_one one2", "one", 0, FindWholeWord), -1);
    EXPECT_EQ(FindInText("(one)", "ONE", 0, FindWholeWord), 1);
    EXPECT_EQ(FindInText("abc", "c", 3, 0), -1);
    EXPECT_EQ(FindInText("abc", "c", 2, 0), 2);
    EXPECT_EQ(FindInText("abc", "", 0, 0), -1);
    EXPECT_EQ(FindInText("abc", "abcd", 0, 0), -1);
    EXPECT_EQ(FindInText("abc", "a", -1, 0), -1);
}

TEST(FindRich, FindsInTurnWrapsAndReplacesThePresentHit)
{
    MemoryTextBox box;
    box.setText("one two one");
    TextDocument doc;
    // Hit, selection start and length, and where the next search starts.
    auto hit = [&] {
        return std::array{doc.FindResult, box.selStart(), box.selLength(), doc.FindPosition};
    };
    EXPECT_TRUE(doc.Find_Rich(box, "one", 0, true).empty());
    EXPECT_EQ(hit(), (std::array{0, 0, 3, 3}));
    doc.Find_Rich(box, "one", 0, true);
    EXPECT_EQ(hit(), (std::array{8, 8, 3, 11}));
    const auto end = doc.Find_Rich(box, "one", 0, true);
    EXPECT_EQ(std::tuple(end.text, end.style, doc.FindResult, doc.FindPosition),
              std::tuple("End of search."s, +zarvion::shell::StylePlain, -1, 0));
    doc.Find_Rich(box, "one", 0, true);
    EXPECT_EQ(doc.FindResult, 0); // wrapped to the top
    doc.FindPosition = 4;
    EXPECT_TRUE(doc.Find_Rich(box, "zzz", 0, false).empty()); // no message without the flag
    EXPECT_EQ(doc.FindPosition, 0);

    box.setText("a cat a cat");
    TextDocument cats;
    cats.Replace_Rich(box, "dog"); // no hit yet
    EXPECT_EQ(std::pair(box.text(), cats.Modified), std::pair("a cat a cat"s, false));
    cats.Find_Rich(box, "cat", 0, true);
    cats.Replace_Rich(box, "mouse");
    EXPECT_EQ(std::tuple(box.text(), box.selStart(), box.selLength(), cats.FindPosition),
              std::tuple("a mouse a cat"s, 2, 5, 7));
    EXPECT_TRUE(cats.Modified);
}

TEST(ReplaceAll, CountsAndAlwaysMarks)
{
    // A replacement that holds the search text ends: the search passes each replacement.
    // Text, search, replacement, options, the text after and the message.
    using Case = std::tuple<const char*, const char*, const char*, int, std::string, std::string>;
    const Case cases[] = {
        {"cat cat cat", "cat", "dog", 0, "dog dog dog",
         "In the document, 3 replacement(s) have been made."},
        {"cat Cat", "cat", "cats", 0, "cats cats",
         "In the document, 2 replacement(s) have been made."},
        {"Cat cat", "cat", "x", FindMatchCase, "Cat x",
         "In the document, 1 replacement(s) have been made."},
        {"aaaa", "aa", "", 0, "", "In the document, 2 replacement(s) have been made."},
        {"nothing here", "cat", "dog", 0, "nothing here",
         "In the document, 0 replacement(s) have been made."}};
    for (const auto& [text, what, replacement, options, after, message] : cases) {
        MemoryTextBox box;
        box.setText(text);
        TextDocument doc;
        int count = -1;
        const auto m = doc.Replace_ALL(box, what, replacement, options, &count);
        EXPECT_EQ(std::tuple(box.text(), m.text, doc.Modified), std::tuple(after, message, true));
        // The count handed back is the one in the message.
        EXPECT_EQ("In the document, " + std::to_string(count) + " replacement(s) have been made.",
                  message);
    }
}
