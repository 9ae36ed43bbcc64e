#include "shell/AtomicFile.h"
#include "shell/FileGuards.h"

#include "ShellTestSupport.h"

#include <gtest/gtest.h>

using namespace zarvion::shell;
namespace fs = std::filesystem;

namespace {

void makeReadOnly(const fs::path& p)
{
    fs::permissions(p, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
}

} // namespace

TEST(SplitPath, NameExtensionAndSeparator)
{
    struct Case {
        const char *path, *name, *ext;
        std::size_t pos; // 1-based position of the last separator, 0 for none
    };
    const Case cases[] = {
        {"/a/b/file.TXT", "file.TXT", "TXT", 5},
        {"  C:\\dir\\x.pg  ", "x.pg", "pg", 7}, // trimmed; backslash accepted
        {"/dir/README", "README", "/dir/README", 5}, // no point: the extension is the whole path
        {"noext", "noext", "noext", 0},
        {"", "", "", 0},
    };
    for (const Case& c : cases) {
        std::string name, ext;
        std::size_t pos = 99;
        SplitPath(c.path, name, ext, pos);
        EXPECT_EQ(name, c.name) << c.path;
        EXPECT_EQ(ext, c.ext) << c.path;
        EXPECT_EQ(pos, c.pos) << c.path;
    }
}

TEST(RefusedExtensions, CaseInsensitive)
{
    for (const char* e : {"exe", "EXE", "Pdf", "mdb", "bmp", "wmf", "doc", "gif", "msi", "dll",
                          "pdb"}) {
        EXPECT_TRUE(IsRefusedExtension(e)) << e;
    }
    for (const char* e : {"txt", "pg", "", "docx", "ex"}) {
        EXPECT_FALSE(IsRefusedExtension(e)) << e;
    }
}

TEST(GetReadOnlyState, StatesClearingAndSilentDelete)
{
    TempFolder dir;
    EXPECT_EQ(GetReadOnlyState("", false).state, 9999);
    const ReadOnlyState missing = GetReadOnlyState(dir.path() / "none.txt", false);
    EXPECT_EQ(missing.state, 9999);
    EXPECT_EQ(missing.message, "");

    const fs::path file = dir.path() / "f.txt";
    WriteFileAtomically(file, "x");
    EXPECT_EQ(GetReadOnlyState(file, false).state, 0);
    makeReadOnly(file);
    ReadOnlyState ro = GetReadOnlyState(file, false);
    EXPECT_EQ(ro.state, 1);
    EXPECT_EQ(ro.message, "File " + file.string() +
                              " is read-only, remove this attribute. The program has been "
                              "terminated.");
    ro = GetReadOnlyState(file, true);
    EXPECT_EQ(ro.state, 32);
    EXPECT_EQ(ro.message, "");
    EXPECT_EQ(GetReadOnlyState(file, false).state, 0); // cleared for good

    DeleteFile(file);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_NO_THROW(DeleteFile(file));
    fs::create_directory(dir.path() / "sub");
    DeleteFile(dir.path() / "sub");
    EXPECT_TRUE(fs::exists(dir.path() / "sub")); // folders are not deleted
}

TEST(DialogFilters, ByNumber)
{
    const std::string all = "All Files (*.*)|*.*|", text = "Windows Text (*.txt)|*.txt";
    EXPECT_EQ(OpenDialogFilter(1), all + text + "|Zarvion Charts (*.pg)|*.pg");
    EXPECT_EQ(OpenDialogFilter(6), text);
    EXPECT_EQ(OpenDialogFilter(2), "");
    EXPECT_EQ(SaveDialogFilter(2), all + text);
    EXPECT_EQ(SaveDialogFilter(4), "Zarvion Charts (*.pg)|*.pg");
    EXPECT_EQ(SaveDialogFilter(5), "Windows Bitmap (*.bmp)|*.bmp|Windows MetaFile (*.wmf)|*.wmf");
    EXPECT_EQ(SaveDialogFilter(6), text);
    EXPECT_EQ(SaveDialogFilter(1), "");

    const auto entries = SplitDialogFilter(OpenDialogFilter(1));
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[2], (DialogFilterEntry{"Zarvion Charts (*.pg)", "*.pg"}));
    EXPECT_EQ(FilterPattern(OpenDialogFilter(1), 3), "*.pg");
    EXPECT_EQ(FilterPattern(OpenDialogFilter(1), 4), "*.*");
    EXPECT_EQ(SplitDialogFilter("Only text").size(), 0u);
}

TEST(DecideOpen, RefusalChartAndReadOnlyNotice)
{
    TempFolder dir;
    OpenDecision d = DecideOpen("/x/picture.BMP");
    EXPECT_EQ(d.kind, OpenKind::Refused);
    EXPECT_EQ(d.refusal.text,
              "The specified Path/File name /x/picture.BMP cannot be accessed or is invalid.");
    EXPECT_EQ(d.refusal.style, StyleWarning);
    EXPECT_EQ(DecideOpen("/x/a.PG").kind, OpenKind::Chart);
    d = DecideOpen("/x/data");
    EXPECT_EQ(d.kind, OpenKind::ByContent);
    EXPECT_TRUE(d.readOnlyNotice.empty());

    const fs::path ro = dir.path() / "locked.txt";
    WriteFileAtomically(ro, "x");
    makeReadOnly(ro);
    d = DecideOpen(ro);
    EXPECT_EQ(d.kind, OpenKind::ByContent);
    EXPECT_EQ(d.readOnlyNotice.text, "The file " + ro.string() + " is read-only.");
    EXPECT_EQ(d.readOnlyNotice.style, StyleInformation);
    EXPECT_EQ(ChartOpenFailedMessage("/c.pg").text,
              "The file /c.pg cannot be opened. Make sure you open a chart file and the file name "
              "is correct.");
}
