#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "shell/TextFile.h"

#include "ShellTestSupport.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sys/stat.h>

using namespace zarvion::shell;
namespace fs = std::filesystem;

TEST(SplitLines, EitherLineEnd)
{
    using V = std::vector<std::string>;
    EXPECT_EQ(SplitLines("a\r\nb\nc"), (V{"a", "b", "c"}));
    EXPECT_EQ(SplitLines("a\n"), (V{"a"}));
    EXPECT_EQ(SplitLines(""), V{});
    EXPECT_EQ(SplitLines("\n"), (V{""}));
    EXPECT_EQ(SplitLines("a\rb\n"), (V{"a\rb"})); // a lone CR stays in the line
    EXPECT_EQ(SplitLines("a\r\n\r\n"), (V{"a", ""}));
    EXPECT_EQ(SplitLines("x\r"), (V{"x\r"})); // no LF: the CR is not a line end
}

TEST(JoinCrLf, EndsEveryLine)
{
    EXPECT_EQ(JoinCrLf({"a", "b"}), "a\r\nb\r\n");
    EXPECT_EQ(JoinCrLf({}), "");
    EXPECT_EQ(JoinCrLf({""}), "\r\n");
    EXPECT_EQ(SplitLines(JoinCrLf({"1", "", "3"})), (std::vector<std::string>{"1", "", "3"}));
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

TEST(AtomicFile, CreatesAndReplaces)
{
    TempFolder dir;
    const fs::path file = dir.path() / "out.txt";
    WriteFileAtomically(file, "one");
    EXPECT_EQ(ReadFile(file), "one");
    WriteFileAtomically(file, "two, longer");
    EXPECT_EQ(ReadFile(file), "two, longer");
    WriteFileAtomically(file, "");
    EXPECT_EQ(ReadFile(file), "");
    EXPECT_EQ(dir.entryCount(), 1u); // no temporary file left behind
}

TEST(AtomicFile, InterruptedWriteKeepsTheOldFile)
{
    TempFolder dir;
    const fs::path file = dir.path() / "keep.txt";
    WriteFileAtomically(file, "good content");
    SetAtomicWriteHookForTesting([] { throw std::runtime_error("power cut"); });
    EXPECT_THROW(WriteFileAtomically(file, "half"), std::runtime_error);
    SetAtomicWriteHookForTesting({});
    EXPECT_EQ(ReadFile(file), "good content");
    EXPECT_EQ(dir.entryCount(), 1u);

    // A new file that is interrupted does not appear at all.
    SetAtomicWriteHookForTesting([] { throw std::runtime_error("power cut"); });
    EXPECT_THROW(WriteFileAtomically(dir.path() / "new.txt", "x"), std::runtime_error);
    SetAtomicWriteHookForTesting({});
    EXPECT_FALSE(fs::exists(dir.path() / "new.txt"));
    EXPECT_EQ(dir.entryCount(), 1u);
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
