// The start window's line reader and writer on copies of the toy fixtures.

#include <gtest/gtest.h>

#include "TestFiles.h"
#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "solverfile/SolverFileLines.h"
#include "solverfile/SolverFileReader.h"

using namespace zarvion;
using namespace zarvion::solverfile;
using namespace zarvion::testing;

namespace {

// Line of the toy files that closes the reactions (34 + 16 + 3 + 27 + 1).
constexpr std::size_t ReactionsEnd = 81;

const SolverParameters Sample{1234.5, 1, 1500, 250, 3000, 0, 0.002, 1e-9, 5000, 1e-6, 1.25e-14, 10};
const std::vector<double> SampleFractions{0.0, 0.21, 1.5e-3, 0.79};

} // namespace

TEST(OpnFile, StopsAtTheReactionsEndAndCutsTheArray)
{
    const SolverFileLines f = OpnFile(dataFile("toy_results.txt"));
    EXPECT_EQ(f.SpeciesCount, 4);
    EXPECT_EQ(f.ReactionCount, 5);
    EXPECT_EQ(f.thermoLine, 34);
    ASSERT_EQ(f.Lines.size(), ReactionsEnd);
    EXPECT_EQ(f.line(ReactionsEnd), "END");
    EXPECT_EQ(f.Lines.capacity(), f.Lines.size());
    EXPECT_EQ(f.line(1), readLines(dataFile("toy_results.txt"))[0]);

    ScratchDir dir("opn");
    // An END inside the guaranteed span (line 57, partner names of reaction 1, within
    // 4 NS + 3 + 3 NR lines) is not looked at; behind it the first "END" line ends the read.
    EXPECT_EQ(OpnFile(dir.edited("toy_mechanism.txt", 57, "END")).Lines.size(), ReactionsEnd);
    EXPECT_EQ(OpnFile(dir.edited("toy_mechanism.txt", 75, "  end  ")).Lines.size(), 75u);
    // Broken files: no closing END, cut inside the header, a count without "!", no file.
    auto lines = readLines(dataFile("toy_mechanism.txt"));
    lines.pop_back();
    EXPECT_THROW(OpnFile(dir.write("noend.txt", joinCrLf(lines))), ParseError);
    lines.resize(20);
    EXPECT_THROW(OpnFile(dir.write("header.txt", joinCrLf(lines))), ParseError);
    EXPECT_THROW(OpnFile(dir.edited("toy_mechanism.txt", 10, " 4 Species")), ParseError);
    EXPECT_THROW(OpnFile(dir.path() / "missing.txt"), Error);
}

TEST(RewriteSolverFile, WritesHeaderAndFractionsInTheirFormats)
{
    ScratchDir dir("rewrite");
    const auto p = dir.write("run.txt", readBytes(dataFile("toy_results.txt")));
    SolverFileLines f = OpnFile(p);
    RewriteSolverFile(p, f, Sample, SampleFractions);

    const std::string bytes = readBytes(p);
    const auto out = readLines(p);
    ASSERT_EQ(out.size(), ReactionsEnd);
    EXPECT_EQ(bytes.substr(bytes.size() - 5), "END\r\n");
    EXPECT_EQ(bytes.find("!$Results"), std::string::npos); // old results gone
    EXPECT_EQ(std::vector<std::string>(out.begin() + 13, out.begin() + 28),
              (std::vector<std::string>{
                  " 1.2345E+03 !Pressure, atm", " 1 !Temperature Equation",
                  " 1.50E+03 !Initial Temperature", " 2.50E+02 !Minimal Allowable Temperature",
                  " 3.00E+03 !Maximum Allowable Temperature", " 0.00E+00 !Initial Time",
                  " 2.00E-03 !Final Time", " 1.00E-09 !Initial Step Size",
                  " 5000 !Maximum Number of Steps", " 1.00E-06 !Relative Tolerance",
                  " 1.25E-14 !Absolute Tolerance", " ", " !Output Parameters",
                  " 100000 !R!Maximum Number of lines in output", " 10 !Delta N"}));
    // Species lines get the fraction in columns 75-84; the lines the start window does not own
    // come back unchanged.
    const auto original = readLines(dataFile("toy_results.txt"));
    const std::pair<int, const char*> fractions[] = {
        {35, "0         "}, {39, "2.100E-01 "}, {43, "1.500E-03 "}, {47, "7.900E-01 "}};
    for (const auto& [n, text] : fractions) {
        EXPECT_EQ(out[n - 1], original[n - 1].substr(0, 74) + text) << "line " << n;
    }
    for (int n : {1, 9, 10, 11, 12, 29, 31, 32, 34, 36, 50, 54, 80}) {
        EXPECT_EQ(out[n - 1], original[n - 1]) << "line " << n;
    }
    // The readers see the new values.
    const Mechanism m = ReadMechanism(p);
    EXPECT_DOUBLE_EQ(m.header.pressureAtm, 1234.5);
    EXPECT_EQ(m.header.outputEvery, 10);
    EXPECT_EQ(m.initialMoleFractions, SampleFractions);

    // Twice gives the same bytes, and rewriting the in-memory array again does not pile up
    // leading blanks either.
    SolverFileLines again = OpnFile(p);
    RewriteSolverFile(p, again, Sample, SampleFractions);
    EXPECT_EQ(readBytes(p), bytes);
    RewriteSolverFile(p, again, Sample, SampleFractions);
    EXPECT_EQ(readBytes(p), bytes);
}

TEST(RewriteSolverFile, ShortRecordLineGetsTheFractionRightBehindIt)
{
    ScratchDir dir("rewrite-short");
    auto lines = readLines(dataFile("toy_mechanism.txt"));
    lines[38] = lines[38].substr(0, 40); // species 2, composition cut
    const auto p = dir.write("short.txt", joinCrLf(lines));
    SolverFileLines f = OpnFile(p);
    RewriteSolverFile(p, f, Sample, {0.25, 0.25, 0.25, 0.25});
    EXPECT_EQ(readLines(p)[38], lines[38] + "2.500E-01 ");
    EXPECT_DOUBLE_EQ(ReadMechanism(p).initialMoleFractions[1], 0.25);
}

TEST(RewriteSolverFile, InterruptedWriteLeavesTheOriginal)
{
    ScratchDir dir("rewrite-fail");
    const std::string original = readBytes(dataFile("toy_results.txt"));
    const auto p = dir.write("run.txt", original);
    SolverFileLines f = OpnFile(p);
    shell::SetAtomicWriteHookForTesting([] { throw Error("disk full"); });
    EXPECT_THROW(RewriteSolverFile(p, f, Sample, SampleFractions), Error);
    shell::SetAtomicWriteHookForTesting({});
    EXPECT_EQ(readBytes(p), original);
    auto entries = std::distance(std::filesystem::directory_iterator(dir.path()), {});
    EXPECT_EQ(entries, 1); // no temporary file left behind
    // Wrong number of fractions: refused before anything is written.
    EXPECT_THROW(RewriteSolverFile(p, f, Sample, {0.5, 0.5}), Error);
    EXPECT_EQ(readBytes(p), original);
}
