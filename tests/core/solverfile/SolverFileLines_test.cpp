// The start window's line reader and writer on copies of the toy fixtures.

#include <gtest/gtest.h>

#include "TestFiles.h"
#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "solverfile/SolverFileLines.h"
#include "solverfile/SolverFileReader.h"

using namespace zarvion;
using namespace zarvion::solverfile;
using zarvion::testing::dataFile;
using zarvion::testing::joinCrLf;
using zarvion::testing::readBytes;
using zarvion::testing::readLines;
using zarvion::testing::ScratchDir;

namespace {

// Line of the toy files that closes the reactions (34 + 16 + 3 + 27 + 1).
constexpr int ReactionsEnd = 81;

SolverParameters sampleParameters()
{
    SolverParameters p;
    p.pressureAtm = 1234.5;
    p.TemperatureMode = 1;
    p.initialTemperature = 1500;
    p.minTemperature = 250;
    p.maxTemperature = 3000;
    p.initialTime = 0;
    p.finalTime = 0.002;
    p.initialStep = 1e-9;
    p.maxSteps = 5000;
    p.relativeTolerance = 1e-6;
    p.absoluteTolerance = 1.25e-14;
    p.outputEvery = 10;
    return p;
}

} // namespace

TEST(OpnFile, StopsAtTheReactionsEndAndCutsTheArray)
{
    const SolverFileLines f = OpnFile(dataFile("toy_results.txt"));
    EXPECT_EQ(f.SpeciesCount, 4);
    EXPECT_EQ(f.ReactionCount, 5);
    EXPECT_EQ(f.thermoLine, 34);
    ASSERT_EQ(f.Lines.size(), static_cast<std::size_t>(ReactionsEnd));
    EXPECT_EQ(f.line(ReactionsEnd), "END");
    EXPECT_EQ(f.Lines.capacity(), f.Lines.size());
    EXPECT_EQ(f.line(1), readLines(dataFile("toy_results.txt"))[0]);
}

TEST(OpnFile, AnEndInsideTheGuaranteedSpanIsNotLookedAt)
{
    ScratchDir dir("opn");
    auto lines = readLines(dataFile("toy_mechanism.txt"));
    lines[56] = "END"; // partner-name line of reaction 1, inside 4 NS + 3 + 3 NR lines
    const auto p = dir.write("end-inside.txt", joinCrLf(lines));
    EXPECT_EQ(OpnFile(p).Lines.size(), static_cast<std::size_t>(ReactionsEnd));

    // Behind the span, the first line that is "END" ends the read.
    lines = readLines(dataFile("toy_mechanism.txt"));
    lines[74] = "  end  ";
    EXPECT_EQ(OpnFile(dir.write("end-early.txt", joinCrLf(lines))).Lines.size(), 75u);
}

TEST(OpnFile, BrokenFilesThrow)
{
    ScratchDir dir("opn-broken");
    auto lines = readLines(dataFile("toy_mechanism.txt"));
    lines.pop_back(); // no closing END
    EXPECT_THROW(OpnFile(dir.write("noend.txt", joinCrLf(lines))), ParseError);
    lines.resize(20);
    EXPECT_THROW(OpnFile(dir.write("header.txt", joinCrLf(lines))), ParseError);
    lines = readLines(dataFile("toy_mechanism.txt"));
    lines[9] = " 4 Species";
    EXPECT_THROW(OpnFile(dir.write("count.txt", joinCrLf(lines))), ParseError);
    EXPECT_THROW(OpnFile(dir.path() / "missing.txt"), Error);
}

TEST(RewriteSolverFile, WritesHeaderAndFractionsInTheirFormats)
{
    ScratchDir dir("rewrite");
    const auto p = dir.write("run.txt", readBytes(dataFile("toy_results.txt")));
    SolverFileLines f = OpnFile(p);
    RewriteSolverFile(p, f, sampleParameters(), {0.0, 0.21, 1.5e-3, 0.79});

    const std::string bytes = readBytes(p);
    const auto out = readLines(p);
    ASSERT_EQ(out.size(), static_cast<std::size_t>(ReactionsEnd));
    EXPECT_EQ(bytes.substr(bytes.size() - 5), "END\r\n");
    EXPECT_EQ(bytes.find("!$Results"), std::string::npos); // old results gone
    EXPECT_EQ(out[13], " 1.2345E+03 !Pressure, atm");
    EXPECT_EQ(out[14], " 1 !Temperature Equation");
    EXPECT_EQ(out[15], " 1.50E+03 !Initial Temperature");
    EXPECT_EQ(out[16], " 2.50E+02 !Minimal Allowable Temperature");
    EXPECT_EQ(out[17], " 3.00E+03 !Maximum Allowable Temperature");
    EXPECT_EQ(out[18], " 0.00E+00 !Initial Time");
    EXPECT_EQ(out[19], " 2.00E-03 !Final Time");
    EXPECT_EQ(out[20], " 1.00E-09 !Initial Step Size");
    EXPECT_EQ(out[21], " 5000 !Maximum Number of Steps");
    EXPECT_EQ(out[22], " 1.00E-06 !Relative Tolerance");
    EXPECT_EQ(out[23], " 1.25E-14 !Absolute Tolerance");
    EXPECT_EQ(out[24], " ");
    EXPECT_EQ(out[25], " !Output Parameters");
    EXPECT_EQ(out[26], " 100000 !R!Maximum Number of lines in output");
    EXPECT_EQ(out[27], " 10 !Delta N");
    EXPECT_EQ(out[34].substr(74), "0         ");
    EXPECT_EQ(out[38].substr(74), "2.100E-01 ");
    EXPECT_EQ(out[42].substr(74), "1.500E-03 ");
    EXPECT_EQ(out[46].size(), 84u);
    // Lines the start window does not own come back unchanged.
    const auto original = readLines(dataFile("toy_results.txt"));
    for (int n : {1, 9, 10, 11, 12, 29, 31, 32, 34, 36, 50, 54, 80}) {
        EXPECT_EQ(out[n - 1], original[n - 1]) << "line " << n;
    }
    EXPECT_EQ(out[34].substr(0, 74), original[34].substr(0, 74));
    // The readers see the new values.
    const Mechanism m = ReadMechanism(p);
    EXPECT_DOUBLE_EQ(m.header.pressureAtm, 1234.5);
    EXPECT_EQ(m.header.outputEvery, 10);
    EXPECT_EQ(m.initialMoleFractions, (std::vector<double>{0.0, 0.21, 1.5e-3, 0.79}));
}

TEST(RewriteSolverFile, TwiceGivesTheSameBytes)
{
    ScratchDir dir("rewrite-twice");
    const auto p = dir.write("run.txt", readBytes(dataFile("toy_results.txt")));
    SolverFileLines first = OpnFile(p);
    RewriteSolverFile(p, first, sampleParameters(), {0.0, 0.21, 1.5e-3, 0.79});
    const std::string once = readBytes(p);
    SolverFileLines second = OpnFile(p);
    RewriteSolverFile(p, second, sampleParameters(), {0.0, 0.21, 1.5e-3, 0.79});
    EXPECT_EQ(readBytes(p), once);
    // Rewriting the in-memory array again does not pile up leading blanks either.
    RewriteSolverFile(p, second, sampleParameters(), {0.0, 0.21, 1.5e-3, 0.79});
    EXPECT_EQ(readBytes(p), once);
}

TEST(RewriteSolverFile, ShortRecordLineGetsTheFractionRightBehindIt)
{
    ScratchDir dir("rewrite-short");
    auto lines = readLines(dataFile("toy_mechanism.txt"));
    lines[38] = lines[38].substr(0, 40); // species 2, composition cut
    const auto p = dir.write("short.txt", joinCrLf(lines));
    SolverFileLines f = OpnFile(p);
    RewriteSolverFile(p, f, sampleParameters(), {0.25, 0.25, 0.25, 0.25});
    const auto out = readLines(p);
    EXPECT_EQ(out[38], lines[38] + "2.500E-01 ");
    EXPECT_DOUBLE_EQ(ReadMechanism(p).initialMoleFractions[1], 0.25);
}

TEST(RewriteSolverFile, InterruptedWriteLeavesTheOriginal)
{
    ScratchDir dir("rewrite-fail");
    const std::string original = readBytes(dataFile("toy_results.txt"));
    const auto p = dir.write("run.txt", original);
    SolverFileLines f = OpnFile(p);
    shell::SetAtomicWriteHookForTesting([] { throw Error("disk full"); });
    EXPECT_THROW(RewriteSolverFile(p, f, sampleParameters(), {0.0, 0.21, 1.5e-3, 0.79}), Error);
    shell::SetAtomicWriteHookForTesting({});
    EXPECT_EQ(readBytes(p), original);
    int entries = 0;
    for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator(dir.path())) {
        ++entries;
    }
    EXPECT_EQ(entries, 1); // no temporary file left behind
    // Wrong number of fractions: refused before anything is written.
    EXPECT_THROW(RewriteSolverFile(p, f, sampleParameters(), {0.5, 0.5}), Error);
    EXPECT_EQ(readBytes(p), original);
}

TEST(FindSolverResults, EachCallerRule)
{
    ScratchDir dir("find");
    const auto mixed = dataFile("toy_results.txt"); // "!$Results   $$"
    EXPECT_TRUE(FindSolverResults(mixed, ResultsKeywordRule::ExactCase));
    EXPECT_TRUE(FindSolverResults(mixed, ResultsKeywordRule::IgnoreCase));
    EXPECT_TRUE(FindSolverResults(mixed, ResultsKeywordRule::TextSearch));
    EXPECT_FALSE(FindSolverResults(dataFile("toy_mechanism.txt"), ResultsKeywordRule::IgnoreCase));
    EXPECT_FALSE(FindSolverResults(dataFile("toy_mechanism.txt"), ResultsKeywordRule::TextSearch));

    const auto upper = dir.write("upper.txt", "first\r\n  !$RESULTS $$\r\n");
    EXPECT_FALSE(FindSolverResults(upper, ResultsKeywordRule::ExactCase));
    EXPECT_TRUE(FindSolverResults(upper, ResultsKeywordRule::IgnoreCase));
    EXPECT_TRUE(FindSolverResults(upper, ResultsKeywordRule::TextSearch));

    // Inside a line: only the text search sees it; at position 0 nobody but the line rules.
    const auto inside = dir.write("inside.txt", "first\r\nnote: !$results\r\n");
    EXPECT_FALSE(FindSolverResults(inside, ResultsKeywordRule::IgnoreCase));
    EXPECT_TRUE(FindSolverResults(inside, ResultsKeywordRule::TextSearch));
    const auto atStart = dir.write("start.txt", "!$Results $$\r\nmore\r\n");
    EXPECT_TRUE(FindSolverResults(atStart, ResultsKeywordRule::ExactCase));
    EXPECT_FALSE(FindSolverResults(atStart, ResultsKeywordRule::TextSearch));
}
