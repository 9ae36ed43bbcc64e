// The opening checks against real files: the hand-written fixtures and edited copies.

#include <gtest/gtest.h>

#include "TestFiles.h"
#include "shell/Error.h"
#include "solverfile/SolverFileChecks.h"
#include "solverfile/SolverFileLines.h"

using namespace zarvion;
using namespace zarvion::solverfile;
using namespace zarvion::testing;
namespace fs = std::filesystem;

namespace {

const std::string ConstantVolumeText =
    "Zarvion-II is intended for simulating constant pressure processes only. The solver file "
    "you are attempting to open contains input data for a constant volume process; the file "
    "cannot be opened.";

std::string notFound(const fs::path& p)
{
    return "In the file '" + p.string() + "', results of calculation are not found.";
}

std::string noOutput(const fs::path& p)
{
    return "In the file " + p.string() + ", the output data has not been found.";
}

//! A copy of the toy mechanism without write permission.
fs::path lockedCopy(const ScratchDir& dir, const std::string& name)
{
    const auto p = dir.write(name, readBytes(dataFile("toy_mechanism.txt")));
    fs::permissions(p, fs::perms::owner_write, fs::perm_options::remove);
    return p;
}

} // namespace

TEST(IsSolverFile, ReadableAndMagicOfLineOne)
{
    ScratchDir dir("magic");
    const std::pair<fs::path, bool> readable[] = {
        {dataFile("toy_mechanism.txt"), false}, {dir.write("empty.txt", ""), true},
        {dir.write("blank-line.txt", "\r\n"), false}, // one (empty) line can be read
        {dir.path() / "missing.txt", true}, {dir.path(), true}};
    for (const auto& [path, fails] : readable) {
        bool failed = !fails;
        TestFileReadable(path, failed);
        EXPECT_EQ(failed, fails) << path;
    }
    const SolverFileCheck toy = IsSolverFile(dataFile("toy_mechanism.txt"));
    EXPECT_TRUE(toy.isSolverFile && toy.Accepted);
    EXPECT_TRUE(toy.message.empty());
    const std::pair<const char*, bool> lineOne[] = {
        {" !$Zarvion Solver,  Mar 5 2014, 10:11:12", true}, // as the reduced-file writer puts it
        {"", false}, {"x !$Zarvion Solver", false}, {"!$Zarvion Solve", false}};
    for (const auto& [text, magic] : lineOne) {
        const SolverFileCheck check = IsSolverFile(dir.edited("toy_mechanism.txt", 1, text));
        EXPECT_EQ(check.isSolverFile, magic) << text;
        EXPECT_EQ(check.Accepted, magic) << text;
    }
    const SolverFileCheck empty = IsSolverFile(dir.write("empty.txt", ""));
    EXPECT_FALSE(empty.isSolverFile || empty.Accepted);
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
        EXPECT_TRUE(IsSolverFile(dir.edited("toy_mechanism.txt", 15, mode)).Accepted) << mode;
    }
    EXPECT_FALSE(IsSolverFile(dir.edited("toy_mechanism.txt", 15, "  3")).Accepted);
}

TEST(FindRevReactions, ListsThreeTitlesThenEllipsisAndTheBlindSpots)
{
    const auto revFile = dataFile("toy_rev.txt");
    const RevReactions rev = FindRevReactions(revFile);
    EXPECT_TRUE(rev.found);
    EXPECT_EQ(rev.count, 4);
    EXPECT_EQ(rev.RevList, "    1 HO2+H=O2+H+H\r\n    2 HO2+H=O2+H+H\r\n    4 HO2+H=O2+H+H...");
    const SolverFileCheck check = IsSolverFile(revFile);
    EXPECT_TRUE(check.isSolverFile);
    EXPECT_FALSE(check.Accepted);
    EXPECT_EQ(check.message.text,
              "The reaction mechanism contains reactions where the reverse rate constants are "
              "specified explicitly (the REV type).  \r\n" + rev.RevList +
                  "\r\nZarvion-II does not support this reaction type; the file cannot be "
                  "opened.\r\n\r\n" + revFile.string());
    EXPECT_FALSE(FindRevReactions(dataFile("toy_mechanism.txt")).found);

    ScratchDir dir("rev");
    // Only the fifth reaction keeps its REV line (lines 57, 61 and 68 become plain text).
    auto lines = readLines(revFile);
    for (int n : {57, 61, 68}) lines[n - 1] = " note";
    const RevReactions one = FindRevReactions(dir.write("one.txt", joinCrLf(lines)));
    EXPECT_EQ(one.count, 1);
    EXPECT_EQ(one.RevList, "    5 HO2+H=O2+H+H"); // no CR LF, no "..."
    // A REV line among the three lines read unconditionally is not seen (line 55, the
    // second behind REACTIONS on line 53).
    EXPECT_FALSE(
        FindRevReactions(dir.edited("toy_mechanism.txt", 55, "REV    1.0E+12 0.0 0.0")).found);
    // The scan stops at END: a REV line behind it is not counted.
    lines = readLines(dataFile("toy_mechanism.txt"));
    lines.insert(lines.end(), {"a", "b", "REV"});
    EXPECT_FALSE(FindRevReactions(dir.write("behind.txt", joinCrLf(lines))).found);
}

TEST(ResultsKeyword, EachCallerRule)
{
    ScratchDir dir("keyword");
    shell::Message message;
    EXPECT_FALSE(HasOutputKeyword(dataFile("toy_results.txt"), true, message));
    EXPECT_TRUE(message.empty());
    const auto mechanism = dataFile("toy_mechanism.txt");
    EXPECT_TRUE(HasOutputKeyword(mechanism, true, message));
    EXPECT_EQ(message.text, noOutput(mechanism));
    EXPECT_EQ(message.style, 48);
    EXPECT_TRUE(HasOutputKeyword(mechanism, false, message));
    EXPECT_TRUE(message.empty());
    // Capitals are not found by the output-keyword check, while CheckResultsPresent accepts them.
    const auto upper = dir.edited("toy_results.txt", 83, "!$RESULTS   $$");
    EXPECT_TRUE(HasOutputKeyword(upper, false, message));
    bool failed = true;
    CheckResultsPresent(upper, failed, message);
    EXPECT_FALSE(failed);

    // FindSolverResults: found by the exact-case rule, ignoring case, in the text anywhere.
    // Inside a line only the text search sees it; at offset 0 only the line rules do.
    struct Case {
        fs::path file;
        bool exact, ignoreCase, text;
    };
    const Case cases[] = {
        {dataFile("toy_results.txt"), true, true, true}, // "!$Results   $$"
        {mechanism, false, false, false},
        {dir.write("upper.txt", "first\r\n  !$RESULTS $$\r\n"), false, true, true},
        {dir.write("inside.txt", "first\r\nnote: !$results\r\n"), false, false, true},
        {dir.write("start.txt", "!$Results $$\r\nmore\r\n"), true, true, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(FindSolverResults(c.file, ResultsKeywordRule::ExactCase), c.exact) << c.file;
        EXPECT_EQ(FindSolverResults(c.file, ResultsKeywordRule::IgnoreCase), c.ignoreCase)
            << c.file;
        EXPECT_EQ(FindSolverResults(c.file, ResultsKeywordRule::TextSearch), c.text) << c.file;
    }
}

TEST(CheckResultsPresent, RecordsCountedBehindTheHead)
{
    bool failed = true;
    shell::Message message;
    CheckResultsPresent(dataFile("toy_results.txt"), failed, message);
    EXPECT_FALSE(failed);
    EXPECT_TRUE(message.empty());
    CheckResultsPresent(dataFile("toy_error.txt"), failed, message); // 4 records, then ERROR
    EXPECT_FALSE(failed);
    for (const char* name :
         {"toy_results_3rows.txt", "toy_results_2rows.txt", "toy_mechanism.txt"}) {
        CheckResultsPresent(dataFile(name), failed, message);
        EXPECT_TRUE(failed) << name;
        EXPECT_EQ(message.text, notFound(dataFile(name)));
    }
    ScratchDir dir("present");
    for (const fs::path& p : {dir.edited("toy_results.txt", 10, " 4 Species"),
                              dir.path() / "missing.txt"}) {
        CheckResultsPresent(p, failed, message);
        EXPECT_TRUE(failed);
        EXPECT_EQ(message.text, "In the file '" + p.string() + "', unexpected error.");
    }

    // 50 species: LinesPerRecord = 50 div 50 + 1 = 2, so the head takes two lines and
    // n further non-empty lines count as n / 2 records, rounded half to even; 4 are needed.
    auto fails = [&](int dataLines, const std::string& head2) {
        std::vector<std::string> lines(9, " free");
        lines.insert(lines.end(), {" 50 !Species", "END", "", "  !$results $$", "   head line 1",
                                   head2});
        for (int k = 0; k < dataLines; ++k) {
            lines.insert(lines.end(), {" row " + std::to_string(k), ""}); // empty: not counted
        }
        lines.insert(lines.end(), {"!$END", "Statistics line that is not counted"});
        CheckResultsPresent(dir.write("n.txt", joinCrLf(lines)), failed, message);
        return failed;
    };
    EXPECT_TRUE(fails(5, "   head line 2"));  // 2.5 -> 2
    EXPECT_TRUE(fails(6, "   head line 2"));  // 3
    EXPECT_FALSE(fails(7, "   head line 2")); // 3.5 -> 4
    EXPECT_FALSE(fails(9, "   head line 2")); // 4.5 -> 4
    // An ERROR line inside the head fails at once, whatever follows.
    EXPECT_TRUE(fails(20, "error in the head"));
}

TEST(SolverFileCallers, SelectShowAndAlreadyOpened)
{
    ScratchDir dir("callers");
    const auto plain = dir.write("plain.txt", "just text\r\n");
    EXPECT_EQ(SelectSolverFileCheck(plain).text,
              "You are attempting to open not solver file " + plain.string() + ".");
    EXPECT_TRUE(SelectSolverFileCheck(dataFile("toy_constant_volume_2.txt")).empty());
    const auto locked = lockedCopy(dir, "locked.txt");
    EXPECT_EQ(SelectSolverFileCheck(locked).text,
              "File " + locked.string() + " is read-only, remove this attribute.");

    EXPECT_EQ(ShowSolverResultsCheck(dataFile("toy_mechanism.txt")).text,
              noOutput(dataFile("toy_mechanism.txt")));
    EXPECT_EQ(ShowSolverResultsCheck(dataFile("toy_results_3rows.txt")).text,
              notFound(dataFile("toy_results_3rows.txt")));
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
    EXPECT_EQ(d.message.text, "The specified Path/File name " + refused.string() +
                                  " cannot be accessed or is invalid.");
    const auto volume = dataFile("toy_constant_volume_3.txt");
    d = DecideOpenDocument(volume);
    EXPECT_EQ(d.kind, DocumentKind::SolverFileRefused);
    EXPECT_EQ(d.message.text, ConstantVolumeText + "\r\n\r\n" + volume.string());

    const std::pair<fs::path, DocumentKind> kinds[] = {
        {dir.write("chart.pg", "{}"), DocumentKind::Chart},
        {dataFile("toy_results.txt"), DocumentKind::SolverDocument},
        {dataFile("toy_rev.txt"), DocumentKind::SolverFileRefused},
        {dir.write("empty.txt", ""), DocumentKind::PlainText},
        // No point in the name: opened by content, here as a solver file.
        {dir.write("solverfile", readBytes(dataFile("toy_mechanism.txt"))),
         DocumentKind::SolverDocument},
    };
    for (const auto& [path, kind] : kinds) {
        EXPECT_EQ(DecideOpenDocument(path).kind, kind) << path;
    }
    // Read-only: the notice, then the open goes on by content.
    const auto locked = lockedCopy(dir, "locked.dat");
    d = DecideOpenDocument(locked);
    EXPECT_EQ(d.kind, DocumentKind::SolverDocument);
    EXPECT_EQ(d.readOnlyNotice.text, "The file " + locked.string() + " is read-only.");
    EXPECT_EQ(d.readOnlyNotice.style, 64);
}
