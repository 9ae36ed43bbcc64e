// The input-side reader against the hand-written toy mechanism (4 species, 5 reactions with
// third-body partners, Troe with 4 and 3 parameters, SRI) and against broken copies of it.
// Expected values are the numbers typed into tests/data/toy_mechanism.txt.

#include <gtest/gtest.h>

#include "TestFiles.h"
#include "shell/Error.h"
#include "solverfile/SolverFileReader.h"

using namespace zarvion;
using namespace zarvion::solverfile;
using zarvion::testing::dataFile;
using zarvion::testing::ScratchDir;

TEST(ParseCommentedValue, TakesTrimmedTextAheadOfFirstBang)
{
    EXPECT_EQ(ParseCommentedValue(" 1.00E+00 !Pressure, atm"), "1.00E+00");
    EXPECT_EQ(ParseCommentedValue(" 100000 !R!Maximum Number of lines in output"), "100000");
    EXPECT_EQ(ParseCommentedValue("!only comment"), "");
    EXPECT_THROW(ParseCommentedValue(" 4 Species"), Error);
}

TEST(SplitComposition, BlankAtEveryDigitChangeAndAtTheEnd)
{
    EXPECT_EQ(SplitComposition("C1H4                  "), "C 1 H 4 ");
    EXPECT_EQ(SplitComposition("  AR1 "), "AR 1 ");
    EXPECT_EQ(SplitComposition("C12H26"), "C 12 H 26 ");
    EXPECT_EQ(SplitComposition(""), ""); // the lone trailing blank is never a finished run
}

TEST(BuildElementNames, FirstAppearanceOrderAtMostEleven)
{
    EXPECT_EQ(BuildElementNames({"H 2 O 1 ", "O 2 ", "AR 1 ", "H 1 "}),
              (std::vector<std::string>{"e", "H", "O", "AR"}));
    // Twelve distinct symbols: the eleventh entry is the last one kept.
    std::vector<std::string> many{"A 1 B 1 C 1 D 1 E 1 F 1 ", "G 1 H 1 I 1 J 1 K 1 L 1 "};
    const auto names = BuildElementNames(many);
    ASSERT_EQ(names.size(), 11u);
    EXPECT_EQ(names[10], "J");
}

TEST(ReadMechanism, HeaderValuesWithRaisingRules)
{
    const Mechanism m = ReadMechanism(dataFile("toy_mechanism.txt"));
    const ProblemHeader& h = m.header;
    EXPECT_EQ(h.SpeciesCount, 4);
    EXPECT_EQ(h.ReactionCount, 5);
    EXPECT_DOUBLE_EQ(h.pressureAtm, 1.0);
    EXPECT_EQ(h.TemperatureMode, 1);
    EXPECT_DOUBLE_EQ(h.initialTemperature, 1200.0);
    EXPECT_DOUBLE_EQ(h.minTemperature, 300.0);
    EXPECT_DOUBLE_EQ(h.maxTemperature, 3500.0);
    EXPECT_DOUBLE_EQ(h.initialTime, 0.0);
    EXPECT_DOUBLE_EQ(h.finalTime, 1.0e-3);
    EXPECT_EQ(h.finalTimeText, "1.0E-03");
    EXPECT_DOUBLE_EQ(h.initialStep, 1.0e-8);
    EXPECT_EQ(h.maxSteps, 3);   // file says 2, raised to 3
    EXPECT_DOUBLE_EQ(h.relativeTolerance, 1.0e-6);
    EXPECT_DOUBLE_EQ(h.absoluteTolerance, 1.0e-12);
    EXPECT_EQ(h.outputEvery, 1); // file says 0, raised to 1
    EXPECT_DOUBLE_EQ(h.GasConstantEnergy, 1.987204259);
    EXPECT_DOUBLE_EQ(h.GasConstantConc, 82.05736608);
    EXPECT_EQ(m.thermoKeywordLine, 34);
    // 34 + 16 thermo lines + END, free, REACTIONS + 5 records (6+5+8+5+3 lines) + END
    EXPECT_EQ(m.reactionsEndLine, 34 + 16 + 3 + 27 + 1);
}

TEST(ReadMechanism, ThermoRecordsByPosition)
{
    const Mechanism m = ReadMechanism(dataFile("toy_mechanism.txt"));
    ASSERT_EQ(m.speciesNames, (std::vector<std::string>{"H", "O2", "HO2", "AR"}));
    EXPECT_EQ(m.MolFormula, (std::vector<std::string>{"H1", "O2", "H1O2", "AR1"}));
    EXPECT_EQ(m.composition, (std::vector<std::string>{"H 1 ", "O 2 ", "H 1 O 2 ", "AR 1 "}));
    EXPECT_EQ(m.elementNames, (std::vector<std::string>{"e", "H", "O", "AR"}));
    EXPECT_EQ(m.initialMoleFractions, (std::vector<double>{0.0, 0.2, 0.0, 0.8}));
    EXPECT_EQ(m.initialMoleFractionTexts[1], "2.000E-01");
    EXPECT_EQ(m.initialMoleFractionTexts[2], "0");
    const ThermoRecord& o2 = m.thermo[1];
    EXPECT_DOUBLE_EQ(o2[1], 3.66096065);
    EXPECT_DOUBLE_EQ(o2[5], -1.29913436e-15);
    EXPECT_DOUBLE_EQ(o2[6], -1.21597718e3);
    EXPECT_DOUBLE_EQ(o2[10], 9.84730201e-6);
    EXPECT_DOUBLE_EQ(o2[11], -9.68129509e-9);
    EXPECT_DOUBLE_EQ(o2[14], 3.65767573);
    EXPECT_DOUBLE_EQ(o2[15], 31.9988);
    EXPECT_DOUBLE_EQ(m.thermo[2][16], 200.0);
    EXPECT_DOUBLE_EQ(m.thermo[2][17], 3500.0);
    EXPECT_DOUBLE_EQ(m.thermo[2][18], 1000.0);
}

TEST(ReadMechanism, ReactionRecordsWithOptionalLines)
{
    const Mechanism m = ReadMechanism(dataFile("toy_mechanism.txt"));
    ASSERT_EQ(m.reactions.size(), 5u);
    // Third body with one listed partner (AR, species 4, efficiency 0.7).
    const ReactionRecord& r1 = m.reactions[0];
    EXPECT_EQ(r1.text, "H+O2+M=HO2+M");
    EXPECT_EQ(r1.ints[1], 1);
    EXPECT_EQ(r1.ints[2], 2);
    EXPECT_EQ(r1.ints[4], 3);
    EXPECT_EQ(r1.ints[slot::ThirdBodyKind], 2);
    EXPECT_EQ(r1.ints[slot::PartnerCount], 1);
    EXPECT_EQ(r1.ints[slot::FirstPartner], 4);
    EXPECT_EQ(r1.ints[slot::FirstPartner + 1], 0);
    EXPECT_DOUBLE_EQ(r1.reals[1], 3.61e17);
    EXPECT_DOUBLE_EQ(r1.reals[2], -0.72);
    EXPECT_DOUBLE_EQ(r1.reals[12], 0.70);
    EXPECT_DOUBLE_EQ(r1.reals[13], 0.0);
    // Troe with four parameters behind a LOW line.
    const ReactionRecord& r2 = m.reactions[1];
    EXPECT_EQ(r2.ints[slot::HasLowLimit], 1);
    EXPECT_EQ(r2.ints[slot::FalloffKind], 1);
    EXPECT_DOUBLE_EQ(r2.reals[4], 1.05e19);
    EXPECT_DOUBLE_EQ(r2.reals[5], -1.257);
    EXPECT_DOUBLE_EQ(r2.reals[7], 0.5);
    EXPECT_DOUBLE_EQ(r2.reals[10], 1.0e10);
    // SRI with five parameters and a named bath partner.
    const ReactionRecord& r3 = m.reactions[2];
    EXPECT_EQ(r3.ints[slot::FalloffKind], 2);
    EXPECT_DOUBLE_EQ(r3.reals[8], 797.0);
    EXPECT_DOUBLE_EQ(r3.reals[11], 0.0);
    EXPECT_DOUBLE_EQ(r3.reals[10], 1.0);
    EXPECT_EQ(r3.ints[slot::FirstPartner], 4);
    EXPECT_DOUBLE_EQ(r3.reals[12], 1.0);
    // Troe with three parameters: slot 10 stays 0.
    const ReactionRecord& r4 = m.reactions[3];
    EXPECT_EQ(r4.ints[slot::FalloffKind], 3);
    EXPECT_DOUBLE_EQ(r4.reals[9], 2000.0);
    EXPECT_DOUBLE_EQ(r4.reals[10], 0.0);
    EXPECT_DOUBLE_EQ(r4.reals[3], 4.6e4);
    // Plain irreversible record of three lines, right before END.
    const ReactionRecord& r5 = m.reactions[4];
    EXPECT_EQ(r5.text, "HO2+H=>O2+H+H");
    EXPECT_EQ(r5.ints[slot::ProductCount], 3);
    EXPECT_EQ(r5.ints[slot::Reversible], 0);
}

TEST(ParseReactionRecord, AdvancesPositionAndReportsCutRecord)
{
    std::vector<std::string> lines{
        "    1 A=B",
        "      1   0   0   2   0   0   0   0   0   1   1   0   0   1   3   1   ",
        "       1.00000000E+10 0.00000000E+00 5.00000000E+03",
        "LOW    2.00000000E+12 0.00000000E+00 4.00000000E+03",
    };
    std::size_t position = 0;
    EXPECT_THROW(ParseReactionRecord(lines, position, "x.txt", 10), ParseError);
    EXPECT_EQ(position, 0u); // untouched on failure
    lines.push_back("TROE   5.00000000E-01 1.00000000E+02 2.00000000E+03");
    lines.push_back("END");
    const ReactionRecord r = ParseReactionRecord(lines, position);
    EXPECT_EQ(position, 5u);
    EXPECT_EQ(r.text, "A=B");
    EXPECT_DOUBLE_EQ(r.reals[6], 4000.0);
    EXPECT_DOUBLE_EQ(r.reals[8], 100.0);
}

namespace {

//! The toy file with one line replaced (1-based), written to a scratch folder.
std::filesystem::path brokenCopy(const ScratchDir& dir, int lineNo, const std::string& text)
{
    auto lines = zarvion::testing::readLines(dataFile("toy_mechanism.txt"));
    lines[lineNo - 1] = text;
    return dir.write("broken.txt", zarvion::testing::joinCrLf(lines));
}

int parseErrorLine(const std::filesystem::path& p)
{
    try {
        ReadMechanism(p);
    } catch (const ParseError& e) {
        return e.line();
    }
    return -1;
}

} // namespace

TEST(ReadMechanism, BrokenFilesThrowWithTheirLine)
{
    ScratchDir dir("mech");
    EXPECT_EQ(parseErrorLine(brokenCopy(dir, 10, " 4 Species")), 10);       // no "!"
    EXPECT_EQ(parseErrorLine(brokenCopy(dir, 11, " five !Reactions")), 11); // no number
    EXPECT_EQ(parseErrorLine(brokenCopy(dir, 32, " R cm^3")), 32);
    EXPECT_EQ(parseErrorLine(brokenCopy(dir, 40, "   2.5 x.y 3")), 39); // record's first line
    const int lineCount =
        static_cast<int>(zarvion::testing::readLines(dataFile("toy_mechanism.txt")).size());
    EXPECT_EQ(parseErrorLine(brokenCopy(dir, 34, "THERM")), lineCount); // no keyword at all
    // Reaction 1 names species 7 of a 4-species file.
    EXPECT_EQ(parseErrorLine(brokenCopy(
                  dir, 55, "      7   2   0   3   0   0   0   0   0   2   1   2   1   0   0   1")),
              54);
    // Fall-off kind 9 does not exist.
    EXPECT_EQ(parseErrorLine(brokenCopy(
                  dir, 61, "      1   2   0   3   0   0   0   0   0   2   1   1   0   1   9   1")),
              61);
    // Cut right after the thermo records.
    auto lines = zarvion::testing::readLines(dataFile("toy_mechanism.txt"));
    lines.resize(45);
    EXPECT_GT(parseErrorLine(dir.write("short.txt", zarvion::testing::joinCrLf(lines))), 0);
    EXPECT_THROW(ReadMechanism(dir.path() / "missing.txt"), Error);
}
