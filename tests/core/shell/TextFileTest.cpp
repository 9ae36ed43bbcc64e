#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "shell/TextFile.h"

#include "ShellTestSupport.h"

#include <gtest/gtest.h>

using namespace zarvion::shell;
namespace fs = std::filesystem;

TEST(SplitLines, EitherLineEndAndJoinCrLf)
{
    using V = std::vector<std::string>;
    const std::pair<const char*, V> cases[] = {
        {"a\r\nb\nc", {"a", "b", "c"}}, {"a\n", {"a"}}, {"", {}}, {"\n", {""}},
        {"a\rb\n", {"a\rb"}}, // a lone CR stays in the line
        {"a\r\n\r\n", {"a", ""}},
        {"x\r", {"x\r"}}, // no LF: the CR is not a line end
    };
    for (const auto& [text, lines] : cases) {
        EXPECT_EQ(SplitLines(text), lines) << text;
    }
    EXPECT_EQ(JoinCrLf({"a", "b"}), "a\r\nb\r\n");
    EXPECT_EQ(JoinCrLf({}), "");
    EXPECT_EQ(JoinCrLf({""}), "\r\n");
    EXPECT_EQ(SplitLines(JoinCrLf({"1", "", "3"})), (V{"1", "", "3"}));
}

TEST(ReadLines, ReadsFilesAndRefusesMissingOnes)
{
    TempFolder dir;
    const fs::path file = dir.path() / "t.txt";
    WriteFileAtomically(file, "first\r\nsecond\nthird");
    EXPECT_EQ(ReadLines(file), (std::vector<std::string>{"first", "second", "third"}));
    EXPECT_EQ(ReadFile(file), "first\r\nsecond\nthird");
    EXPECT_THROW(ReadLines(dir.path() / "missing.txt"), zarvion::Error);
    EXPECT_THROW(ReadLines(dir.path()), zarvion::Error);
}

TEST(AtomicFile, CreatesReplacesAndSurvivesInterruption)
{
    TempFolder dir;
    const fs::path file = dir.path() / "out.txt";
    for (const char* content : {"one", "two, longer", ""}) {
        WriteFileAtomically(file, content);
        EXPECT_EQ(ReadFile(file), content);
    }
    EXPECT_EQ(dir.entryCount(), 1u); // no temporary file left behind

    WriteFileAtomically(file, "good content");
    // An interrupted replacement keeps the old file; an interrupted new file never appears.
    for (const fs::path& target : {file, dir.path() / "new.txt"}) {
        SetAtomicWriteHookForTesting([] { throw std::runtime_error("power cut"); });
        EXPECT_THROW(WriteFileAtomically(target, "half"), std::runtime_error);
        SetAtomicWriteHookForTesting({});
        EXPECT_EQ(ReadFile(file), "good content");
        EXPECT_FALSE(fs::exists(dir.path() / "new.txt"));
        EXPECT_EQ(dir.entryCount(), 1u);
    }
}

TEST(AtomicFile, RefusesBadTargetsAndKeepsPermissions)
{
    TempFolder dir;
    EXPECT_THROW(WriteFileAtomically(dir.path() / "no" / "such" / "f.txt", "x"), zarvion::Error);
    EXPECT_THROW(WriteFileAtomically(dir.path(), "x"), zarvion::Error);

    const fs::path file = dir.path() / "private.txt";
    WriteFileAtomically(file, "a");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    WriteFileAtomically(file, "b");
    EXPECT_EQ(fs::status(file).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(ReadFile(file), "b");

    fs::permissions(file, fs::perms::owner_read);
    EXPECT_THROW(WriteFileAtomically(file, "c"), zarvion::Error);
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(ReadFile(file), "b");
    EXPECT_EQ(dir.entryCount(), 1u);
}
