#include "shell/AtomicFile.h"
#include "textdocs/TextDocument.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

using namespace zarvion::textdocs;
namespace fs = std::filesystem;

namespace {

fs::path tempFile(const std::string& name, const std::string& content)
{
    const fs::path p = fs::temp_directory_path() / ("zarv-textdocs-" + std::to_string(::getpid()) +
                                                    "-" + name);
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
    for (int code : {112, 123, 16, 20, 33, 40, 145, 27, 45, 91, 93, 144}) {
        EXPECT_TRUE(IsTypedKeyException(code)) << code;
    }
    for (int code : {111, 124, 15, 21, 32, 41, 46, 8, 13, 65, 94, 143}) {
        EXPECT_FALSE(IsTypedKeyException(code)) << code;
    }
    EXPECT_EQ(TypedKeyExceptions().size(), 32u); // 12 + 5 + 8 + 3 + 3 + 1

    TextDocument doc;
    doc.onKeyDown(112, 0, 0); // F1
    doc.onKeyDown(37, 0, 0);  // left arrow
    doc.onKeyDown(65, 2, 0);  // Ctrl+A
    doc.onKeyDown(67, 2, 0);  // Ctrl+C
    EXPECT_FALSE(doc.Modified);
    doc.onKeyDown(67, 3, 0); // Ctrl+Shift+C is not the Ctrl state
    EXPECT_TRUE(doc.Modified);

    TextDocument paste;
    paste.onKeyDown(86, 2, 17); // Ctrl+V marks even with an empty clipboard
    EXPECT_TRUE(paste.Modified);
    EXPECT_TRUE(paste.CtrlDown);
    EXPECT_EQ(paste.PastePosition, 17);
    paste.onKeyDown(37, 0, 0);
    EXPECT_FALSE(paste.CtrlDown);
    EXPECT_TRUE(paste.Modified); // stays changed

    TextDocument typing;
    typing.onKeyDown(65, 0, 0);
    EXPECT_TRUE(typing.Modified);
}

TEST(TextDocument, CloseQuestion)
{
    TextDocument doc;
    EXPECT_TRUE(doc.closeQuestion("Text Doc2").empty());
    doc.Modified = true;
    auto q = doc.closeQuestion("Text Doc2");
    EXPECT_EQ(q.text, "Do you want to save the text document Text Doc2?");
    EXPECT_EQ(q.style & zarvion::shell::StyleYesNoCancel, zarvion::shell::StyleYesNoCancel);
    EXPECT_EQ(q.title, "ZARVION");
    doc.Path = "/x/a.txt";
    EXPECT_EQ(doc.closeQuestion("a.txt").text, "Do you want to save changes to /x/a.txt?");
    doc.IsSolverDocument = true;
    EXPECT_TRUE(doc.closeQuestion("a.txt").empty());
}

TEST(TextDocument, LoadedPathAndDataView)
{
    const fs::path tmp = tempFile("TmpPlot.txt", "data");
    TextDocument view;
    view.setLoadedPath(tmp.string(), tmp);
    EXPECT_EQ(view.Path, "");
    EXPECT_EQ(view.FileName, tmp.filename().string());
    TextDocument plain;
    plain.setLoadedPath("/a/b/notes.txt", tmp);
    EXPECT_EQ(plain.Path, "/a/b/notes.txt");
    EXPECT_EQ(plain.FileName, "notes.txt");
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
    const fs::path with = tempFile("with.txt", "header\r\n  !$Results   $$\r\nrow\r\n");
    const fs::path prefix = tempFile("prefix.txt", "x\n!$RESULTSX\n");
    const fs::path without = tempFile("without.txt", "x !$results\n!$END\n");
    EXPECT_TRUE(GibtEsRes(with));
    EXPECT_TRUE(GibtEsRes(prefix));
    EXPECT_FALSE(GibtEsRes(without));
    EXPECT_FALSE(GibtEsRes(fs::temp_directory_path() / "zarv-no-such-file.txt"));
    fs::remove(with);
    fs::remove(prefix);
    fs::remove(without);
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

TEST(FindRich, FindsInTurnAndWraps)
{
    MemoryTextBox box;
    box.setText("one two one");
    TextDocument doc;
    EXPECT_TRUE(doc.Find_Rich(box, "one", 0, true).empty());
    EXPECT_EQ(doc.FindResult, 0);
    EXPECT_EQ(box.selStart(), 0);
    EXPECT_EQ(box.selLength(), 3);
    EXPECT_EQ(doc.FindPosition, 3);
    doc.Find_Rich(box, "one", 0, true);
    EXPECT_EQ(doc.FindResult, 8);
    EXPECT_EQ(box.selectedText(), "one");
    const auto end = doc.Find_Rich(box, "one", 0, true);
    EXPECT_EQ(end.text, "End of search.");
    EXPECT_EQ(end.style, zarvion::shell::StylePlain);
    EXPECT_EQ(doc.FindResult, -1);
    EXPECT_EQ(doc.FindPosition, 0);
    doc.Find_Rich(box, "one", 0, true);
    EXPECT_EQ(doc.FindResult, 0); // wrapped to the top

    doc.FindPosition = 4;
    EXPECT_TRUE(doc.Find_Rich(box, "zzz", 0, false).empty()); // no message without the flag
    EXPECT_EQ(doc.FindPosition, 0);
}

TEST(ReplaceRich, ReplacesThePresentHitOnly)
{
    MemoryTextBox box;
    box.setText("a cat a cat");
    TextDocument doc;
    doc.Replace_Rich(box, "dog"); // no hit yet
    EXPECT_EQ(box.text(), "a cat a cat");
    EXPECT_FALSE(doc.Modified);

    doc.Find_Rich(box, "cat", 0, true);
    doc.Replace_Rich(box, "mouse");
    EXPECT_EQ(box.text(), "a mouse a cat");
    EXPECT_EQ(box.selStart(), 2);
    EXPECT_EQ(box.selLength(), 5);
    EXPECT_EQ(doc.FindPosition, 7);
    EXPECT_TRUE(doc.Modified);
}

TEST(ReplaceAll, CountsAndAlwaysMarks)
{
    MemoryTextBox box;
    box.setText("cat cat cat");
    TextDocument doc;
    int count = -1;
    auto m = doc.Replace_ALL(box, "cat", "dog", 0, &count);
    EXPECT_EQ(box.text(), "dog dog dog");
    EXPECT_EQ(count, 3);
    EXPECT_EQ(m.text, "In the document, 3 replacement(s) have been made.");

    // A replacement that holds the search text ends: the search passes each replacement.
    box.setText("cat Cat");
    doc.Replace_ALL(box, "cat", "cats", 0, &count);
    EXPECT_EQ(box.text(), "cats cats");
    EXPECT_EQ(count, 2);

    box.setText("Cat cat");
    doc.Replace_ALL(box, "cat", "x", FindMatchCase, &count);
    EXPECT_EQ(box.text(), "Cat x");

    box.setText("aaaa");
    doc.Replace_ALL(box, "aa", "", 0, &count);
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(count, 2);

    TextDocument clean;
    box.setText("nothing here");
    m = clean.Replace_ALL(box, "cat", "dog", 0);
    EXPECT_EQ(m.text, "In the document, 0 replacement(s) have been made.");
    EXPECT_TRUE(clean.Modified);
}
