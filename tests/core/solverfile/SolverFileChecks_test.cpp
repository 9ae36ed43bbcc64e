// The opening checks against real files: the hand-written fixtures and edited copies.

#include <gtest/gtest.h>

#include "TestFiles.h"
#include "shell/Error.h"
#include "solverfile/SolverFileChecks.h"

using namespace zarvion;
using namespace zarvion::solverfile;
using zarvion::testing::dataFile;
using zarvion::testing::joinCrLf;
using zarvion::testing::readBytes;
using zarvion::testing::readLines;
using zarvion::testing::ScratchDir;

namespace {

std::filesystem::path editedCopy(const ScratchDir& dir, const std::string& source, int lineNo,
                                 const std::string& text, const std::string& name = "edited.txt")
{
    auto lines = readLines(dataFile(source));
    lines[lineNo - 1] = text;
    return dir.write(name, joinCrLf(lines));
}

const std::string ConstantVolumeText =
    "Zarvion-II is intended for simulating constant pressure processes only. The solver file "
    "you are attempting to open contains input data for a constant volume process; the file "
    "cannot be opened.";

} // namespace

TEST(TestFileReadable, MissingEmptyAndFolderFail)
{
    ScratchDir dir("readable");
    bool failed = false;
    TestFileReadable(dataFile("toy_mechanism.txt"), failed);
    EXPECT_FALSE(failed);
    TestFileReadable(dir.write("empty.txt", ""), failed);
    EXPECT_TRUE(failed);
    TestFileReadable(dir.write("blank-line.txt", "\r\n"), failed);
    EXPECT_FALSE(failed); // one (empty) line can be read
    TestFileReadable(dir.path() / "missing.txt", failed);
    EXPECT_TRUE(failed);
    TestFileReadable(dir.path(), failed);
    EXPECT_TRUE(failed);
}

TEST(IsSolverFile, MagicOfLineOne)
{
    ScratchDir dir("magic");
    const SolverFileCheck toy = IsSolverFile(dataFile("toy_mechanism.txt"));
    EXPECT_TRUE(toy.isSolverFile);
    EXPECT_TRUE(toy.Accepted);
    EXPECT_TRUE(toy.message.empty());
    // As the reduced-file writer puts it: leading blank, mixed case, date behind.
    auto p = editedCopy(dir, "toy_mechanism.txt", 1, " !$Zarvion Solver,  Mar 5 2014, 10:11:12");
    EXPECT_TRUE(IsSolverFile(p).Accepted);
    p = editedCopy(dir, "toy_mechanism.txt", 1, "");
    EXPECT_FALSE(IsSolverFile(p).isSolverFile);
    p = editedCopy(dir, "toy_mechanism.txt", 1, "x !$Zarvion Solver");
    EXPECT_FALSE(IsSolverFile(p).isSolverFile);
    p = editedCopy(dir, "toy_mechanism.txt", 1, "!$Zarvion Solve");
    EXPECT_FALSE(IsSolverFile(p).isSolverFile);
    const SolverFileCheck empty = IsSolverFile(dir.write("empty.txt", ""));
    EXPECT_FALSE(empty.isSolverFile);
    EXPECT_FALSE(empty.Accepted);
    // Magic but cut ahead of line 15: an unexpected fault for the caller's reporter.
    EXPECT_THROW(IsSolverFile(dir.write("cut.txt", "!$ZARVION SOLVER\r\nline 2\r\n")), Error);
}

TEST(IsSolverFile, ConstantVolumeRefusedWithPathBehindEmptyLine)
{
    for (const char* name : {"toy_constant_volume_2.txt", "toy_constant_volume_3.txt"}) {
        const auto path = dataFile(name);
        const SolverFileCheck check = IsSolverFile(path);
        EXPECT_TRUE(check.isSolverFile) << name;
        EXPECT_FALSE(check.Accepted) << name;
        EXPECT_EQ(check.message.text, ConstantVolumeText + "\r\n\r\n" + path.string());
        EXPECT_EQ(check.message.style, 48);
        EXPECT_EQ(check.message.title, "ZARVION");
    }
    // Modes other than 2 and 3 pass, whatever they mean.
    EXPECT_TRUE(IsSolverFile(dataFile("toy_constant_temperature.txt")).Accepted);
    ScratchDir dir("modes");
    for (const char* mode : {" 0 !Constant Temperature", " 7 !odd", "1!Temperature Equation"}) {
        const SolverFileCheck check = IsSolverFile(editedCopy(dir, "toy_mechanism.txt", 15, mode));
        EXPECT_TRUE(check.Accepted) << mode;
    }
    EXPECT_FALSE(IsSolverFile(editedCopy(dir, "toy_mechanism.txt", 15, "  3")).Accepted);
}

TEST(FindRevReactions, ListsThreeTitlesThenEllipsis)
{
    const RevReactions rev = FindRevReactions(dataFile("toy_rev.txt"));
    EXPECT_TRUE(rev.found);
    EXPECT_EQ(rev.count, 4);
    EXPECT_EQ(rev.RevList,
              "    1 HO2+H=O2+H+H\r\n    2 HO2+H=O2+H+H\r\n    4 HO2+H=O2+H+H...");

    const SolverFileCheck check = IsSolverFile(dataFile("toy_rev.txt"));
    EXPECT_TRUE(check.isSolverFile);
    EXPECT_FALSE(check.Accepted);
    EXPECT_EQ(check.message.text,
              "The reaction mechanism contains reactions where the reverse rate constants are "
              "specified explicitly (the REV type).  \r\n" +
                  rev.RevList +
                  "\r\nZarvion-II does not support this reaction type; the file cannot be "
                  "opened.\r\n\r\n" +
                  dataFile("toy_rev.txt").string());
    EXPECT_FALSE(FindRevReactions(dataFile("toy_mechanism.txt")).found);
}

TEST(FindRevReactions, OneRevAndTheBlindSpotBehindReactions)
{
    ScratchDir dir("rev");
    // Only the fifth reaction keeps its REV line (lines 57, 61 and 68 become plain text).
    auto lines = readLines(dataFile("toy_rev.txt"));
    for (int n : {57, 61, 68}) {
        lines[n - 1] = " note";
    }
    const RevReactions one = FindRevReactions(dir.write("one.txt", joinCrLf(lines)));
    EXPECT_EQ(one.count, 1);
    EXPECT_EQ(one.RevList, "    5 HO2+H=O2+H+H"); // no CR LF, no "..."

    // A REV line among the three lines read unconditionally is not seen.
    lines = readLines(dataFile("toy_mechanism.txt"));
    lines[54] = "REV    1.0E+12 0.0 0.0"; // second line behind REACTIONS (line 53)
    EXPECT_FALSE(FindRevReactions(dir.write("blind.txt", joinCrLf(lines))).found);
    // The scan stops at END: a REV line behind it is not counted.
    lines = readLines(dataFile("toy_mechanism.txt"));
    lines.push_back("a");
    lines.push_back("b");
    lines.push_back("REV");
    EXPECT_FALSE(FindRevReactions(dir.write("behind.txt", joinCrLf(lines))).found);
}

TEST(HasOutputKeyword, OnlyTheMixedCaseSpellingCounts)
{
    ScratchDir dir("keyword");
    shell::Message message;
    EXPECT_FALSE(HasOutputKeyword(dataFile("toy_results.txt"), true, message));
    EXPECT_TRUE(message.empty());
    const auto path = dataFile("toy_mechanism.txt");
    EXPECT_TRUE(HasOutputKeyword(path, true, message));
    EXPECT_EQ(message.text, "In the file " + path.string() + ", the output data has not been found.");
    EXPECT_EQ(message.style, 48);
    EXPECT_TRUE(HasOutputKeyword(path, false, message));
    EXPECT_TRUE(message.empty());
    // Capitals are not found here, while CheckResultsPresent accepts them.
    const auto upper = editedCopy(dir, "toy_results.txt", 83, "!$RESULTS   $$");
    EXPECT_TRUE(HasOutputKeyword(upper, false, message));
    bool failed = true;
    CheckResultsPresent(upper, failed, message);
    EXPECT_FALSE(failed);
}

TEST(CheckResultsPresent, RecordsCountedBehindTheHead)
{
    bool failed = false;
    shell::Message message;
    CheckResultsPresent(dataFile("toy_results.txt"), failed, message);
    EXPECT_FALSE(failed);
    EXPECT_TRUE(message.empty());
    CheckResultsPresent(dataFile("toy_error.txt"), failed, message); // 4 records, then ERROR
    EXPECT_FALSE(failed);
    for (const char* name : {"toy_results_3rows.txt", "toy_results_2rows.txt", "toy_mechanism.txt"}) {
        const auto path = dataFile(name);
        CheckResultsPresent(path, failed, message);
        EXPECT_TRUE(failed) << name;
        EXPECT_EQ(message.text,
                  "In the file '" + path.string() + "', results of calculation are not found.");
    }
    ScratchDir dir("present");
    const auto broken = editedCopy(dir, "toy_results.txt", 10, " 4 Species");
    CheckResultsPresent(broken, failed, message);
    EXPECT_TRUE(failed);
    EXPECT_EQ(message.text, "In the file '" + broken.string() + "', unexpected error.");
    const auto missing = dir.path() / "missing.txt";
    CheckResultsPresent(missing, failed, message);
    EXPECT_EQ(message.text, "In the file '" + missing.string() + "', unexpected error.");
}

TEST(CheckResultsPresent, LinesPerRecordAndHalfToEvenRounding)
{
    // 50 species: LinesPerRecord = 50 div 50 + 1 = 2, so the head takes two lines and
    // n further non-empty lines count as n / 2 records, rounded half to even.
    ScratchDir dir("rounding");
    auto fileWith = [&](int dataLines, const std::string& head2) {
        std::vector<std::string> lines(9, " free");
        lines.push_back(" 50 !Species");
        lines.push_back("END");
        lines.push_back("");
        lines.push_back("  !$results $$");
        lines.push_back("   head line 1");
        lines.push_back(head2);
        for (int k = 0; k < dataLines; ++k) {
            lines.push_back(" row " + std::to_string(k));
            lines.push_back(""); // empty lines are not counted
        }
        lines.push_back("!$END");
        lines.push_back("Statistics line that is not counted");
        return dir.write("n" + std::to_string(dataLines) + ".txt", joinCrLf(lines));
    };
    auto fails = [](const std::filesystem::path& p) {
        bool failed = false;
        shell::Message message;
        CheckResultsPresent(p, failed, message);
        return failed;
    };
    EXPECT_TRUE(fails(fileWith(5, "   head line 2")));  // 2.5 -> 2
    EXPECT_TRUE(fails(fileWith(6, "   head line 2")));  // 3
    EXPECT_FALSE(fails(fileWith(7, "   head line 2"))); // 3.5 -> 4
    EXPECT_FALSE(fails(fileWith(9, "   head line 2"))); // 4.5 -> 4
    // An ERROR line inside the head fails at once, whatever follows.
    EXPECT_TRUE(fails(fileWith(20, "error in the head")));
}

TEST(SolverFileCallers, SelectShowAndAlreadyOpened)
{
    ScratchDir dir("callers");
    const auto plain = dir.write("plain.txt", "just text\r\n");
    EXPECT_EQ(SelectSolverFileCheck(plain).text,
              "You are attempting to open not solver file " + plain.string() + ".");
    EXPECT_TRUE(SelectSolverFileCheck(dataFile("toy_constant_volume_2.txt")).empty());
    const auto locked = dir.write("locked.txt", readBytes(dataFile("toy_mechanism.txt")));
    std::filesystem::permissions(locked, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::remove);
    EXPECT_EQ(SelectSolverFileCheck(locked).text,
              "File " + locked.string() + " is read-only, remove this attribute.");

    const auto noResults = dataFile("toy_mechanism.txt");
    EXPECT_EQ(ShowSolverResultsCheck(noResults).text,
              "In the file " + noResults.string() + ", the output data has not been found.");
    const auto threeRows = dataFile("toy_results_3rows.txt");
    EXPECT_EQ(ShowSolverResultsCheck(threeRows).text,
              "In the file '" + threeRows.string() + "', results of calculation are not found.");
    EXPECT_TRUE(ShowSolverResultsCheck(dataFile("toy_results.txt")).empty());

    const shell::Message opened = AlreadyOpenedMessage("/a/B.txt");
    EXPECT_EQ(opened.text, "The solver file is already opened.\r\n\r\n/a/B.txt");
    EXPECT_EQ(opened.style, 64);
}

TEST(DecideOpenDocument, EachKindOfWindow)
{
    ScratchDir dir("open");
    const auto refused = dir.write("manual.PDF", "%PDF");
    DocumentDecision d = DecideOpenDocument(refused);
    EXPECT_EQ(d.kind, DocumentKind::Refused);
    EXPECT_EQ(d.message.text,
              "The specified Path/File name " + refused.string() + " cannot be accessed or is invalid.");

    EXPECT_EQ(DecideOpenDocument(dir.write("chart.pg", "{}")).kind, DocumentKind::Chart);
    EXPECT_EQ(DecideOpenDocument(dataFile("toy_results.txt")).kind, DocumentKind::SolverDocument);

    d = DecideOpenDocument(dataFile("toy_constant_volume_3.txt"));
    EXPECT_EQ(d.kind, DocumentKind::SolverFileRefused);
    EXPECT_EQ(d.message.text,
              ConstantVolumeText + "\r\n\r\n" + dataFile("toy_constant_volume_3.txt").string());
    EXPECT_EQ(DecideOpenDocument(dataFile("toy_rev.txt")).kind, DocumentKind::SolverFileRefused);

    EXPECT_EQ(DecideOpenDocument(dir.write("empty.txt", "")).kind, DocumentKind::PlainText);
    // No point in the name: opened by content, here as a solver file.
    const auto noPoint = dir.write("solverfile", readBytes(dataFile("toy_mechanism.txt")));
    EXPECT_EQ(DecideOpenDocument(noPoint).kind, DocumentKind::SolverDocument);

    // Read-only: the notice, then the open goes on by content.
    const auto locked = dir.write("locked.dat", readBytes(dataFile("toy_mechanism.txt")));
    std::filesystem::permissions(locked, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::remove);
    d = DecideOpenDocument(locked);
    EXPECT_EQ(d.kind, DocumentKind::SolverDocument);
    EXPECT_EQ(d.readOnlyNotice.text, "The file " + locked.string() + " is read-only.");
    EXPECT_EQ(d.readOnlyNotice.style, 64);
}
