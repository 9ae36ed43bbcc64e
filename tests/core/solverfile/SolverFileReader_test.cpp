// The input-side reader against the hand-written toy mechanism (4 species, 5 reactions with
// third-body partners, Troe with 4 and 3 parameters, SRI) and against broken copies of it.
// Expected values are the numbers typed into tests/data/toy_mechanism.txt.

#include <gtest/gtest.h>

#include "TestFiles.h"
#include "shell/Error.h"
#include "solverfile/SolverFileReader.h"

using namespace zarvion;
using namespace zarvion::solverfile;
using namespace zarvion::testing;

TEST(SolverFileText, CommentedValuesCompositionsAndElements)
{
    EXPECT_EQ(ParseCommentedValue(" 1.00E+00 !Pressure, atm"), "1.00E+00");
    EXPECT_EQ(ParseCommentedValue(" 100000 !R!Maximum Number of lines in output"), "100000");
    EXPECT_EQ(ParseCommentedValue("!only comment"), "");
    EXPECT_THROW(ParseCommentedValue(" 4 Species"), Error);
    // A blank at every digit change and at the end.
    EXPECT_EQ(SplitComposition("C1H4                  "), "C 1 H 4 ");
    EXPECT_EQ(SplitComposition("  AR1 "), "AR 1 ");
    EXPECT_EQ(SplitComposition("C12H26"), "C 12 H 26 ");
    EXPECT_EQ(SplitComposition(""), ""); // the lone trailing blank is never a finished run
    // Elements in order of first appearance, at most eleven entries.
    EXPECT_EQ(BuildElementNames({"H 2 O 1 ", "O 2 ", "AR 1 ", "H 1 "}),
              (std::vector<std::string>{"e", "H", "O", "AR"}));
    const auto names = BuildElementNames({"A 1 B 1 C 1 D 1 E 1 F 1 ", "G 1 H 1 I 1 J 1 K 1 L 1 "});
    ASSERT_EQ(names.size(), 11u);
    EXPECT_EQ(names[10], "J");
}

TEST(ReadMechanism, HeaderAndThermoRecords)
{
    const Mechanism m = ReadMechanism(dataFile("toy_mechanism.txt"));
    const ProblemHeader& h = m.header;
    EXPECT_EQ(h.SpeciesCount, 4);
    EXPECT_EQ(h.ReactionCount, 5);
    EXPECT_EQ(h.TemperatureMode, 1);
    EXPECT_EQ(h.maxSteps, 3);    // file says 2, raised to 3
    EXPECT_EQ(h.outputEvery, 1); // file says 0, raised to 1
    EXPECT_EQ(h.finalTimeText, "1.0E-03");
    const std::pair<double, double> reals[] = {
        {h.pressureAtm, 1.0}, {h.initialTemperature, 1200.0}, {h.minTemperature, 300.0},
        {h.maxTemperature, 3500.0}, {h.initialTime, 0.0}, {h.finalTime, 1.0e-3},
        {h.initialStep, 1.0e-8}, {h.relativeTolerance, 1.0e-6}, {h.absoluteTolerance, 1.0e-12},
        {h.GasConstantEnergy, 1.987204259}, {h.GasConstantConc, 82.05736608}};
    for (std::size_t k = 0; k < std::size(reals); ++k) {
        EXPECT_DOUBLE_EQ(reals[k].first, reals[k].second) << "header value " << k;
    }
    expectSlots(m.thermo[1], {{1, 3.66096065}, {5, -1.29913436e-15}, {6, -1.21597718e3},
                              {10, 9.84730201e-6}, {11, -9.68129509e-9}, {14, 3.65767573},
                              {15, 31.9988}}); // O2
    expectSlots(m.thermo[2], {{16, 200.0}, {17, 3500.0}, {18, 1000.0}}); // HO2's temperatures
    EXPECT_EQ(m.thermoKeywordLine, 34);
    // 34 + 16 thermo lines + END, free, REACTIONS + 5 records (6+5+8+5+3 lines) + END
    EXPECT_EQ(m.reactionsEndLine, 34 + 16 + 3 + 27 + 1);

    ASSERT_EQ(m.speciesNames, (std::vector<std::string>{"H", "O2", "HO2", "AR"}));
    EXPECT_EQ(m.MolFormula, (std::vector<std::string>{"H1", "O2", "H1O2", "AR1"}));
    EXPECT_EQ(m.composition, (std::vector<std::string>{"H 1 ", "O 2 ", "H 1 O 2 ", "AR 1 "}));
    EXPECT_EQ(m.elementNames, (std::vector<std::string>{"e", "H", "O", "AR"}));
    EXPECT_EQ(m.initialMoleFractions, (std::vector<double>{0.0, 0.2, 0.0, 0.8}));
    EXPECT_EQ(m.initialMoleFractionTexts[1], "2.000E-01");
    EXPECT_EQ(m.initialMoleFractionTexts[2], "0");
}

TEST(ReadMechanism, ReactionRecordsWithOptionalLines)
{
    const Mechanism m = ReadMechanism(dataFile("toy_mechanism.txt"));
    ASSERT_EQ(m.reactions.size(), 5u);
    EXPECT_EQ(m.reactions[0].text, "H+O2+M=HO2+M");
    EXPECT_EQ(m.reactions[4].text, "HO2+H=>O2+H+H");
    // 1: third body with one listed partner (AR, species 4, efficiency 0.7).
    const auto& r = m.reactions;
    expectSlots(r[0].ints, {{1, 1}, {2, 2}, {4, 3}, {slot::ThirdBodyKind, 2},
                            {slot::PartnerCount, 1}, {slot::FirstPartner, 4},
                            {slot::FirstPartner + 1, 0}});
    expectSlots(r[0].reals, {{1, 3.61e17}, {2, -0.72}, {12, 0.70}, {13, 0.0}});
    // 2: Troe with four parameters behind a LOW line; 3: SRI with a named bath partner.
    expectSlots(r[1].ints, {{slot::HasLowLimit, 1}, {slot::FalloffKind, 1}});
    expectSlots(r[1].reals, {{4, 1.05e19}, {5, -1.257}, {7, 0.5}, {10, 1.0e10}});
    expectSlots(r[2].ints, {{slot::FalloffKind, 2}, {slot::FirstPartner, 4}});
    expectSlots(r[2].reals, {{8, 797.0}, {11, 0.0}, {10, 1.0}, {12, 1.0}});
    // 4: Troe with three parameters, slot 10 stays 0; 5: plain irreversible, before END.
    expectSlots(r[3].ints, {{slot::FalloffKind, 3}});
    expectSlots(r[3].reals, {{9, 2000.0}, {10, 0.0}, {3, 4.6e4}});
    expectSlots(r[4].ints, {{slot::ProductCount, 3}, {slot::Reversible, 0}});
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

TEST(ReadMechanism, BrokenFilesThrowWithTheirLine)
{
    ScratchDir dir("mech");
    auto errorLine = [](const std::filesystem::path& p) {
        try {
            ReadMechanism(p);
        } catch (const ParseError& e) {
            return e.line();
        }
        return -1;
    };
    const int lineCount = static_cast<int>(readLines(dataFile("toy_mechanism.txt")).size());
    struct Case {
        int line;
        const char* text;
        int errorLine;
    };
    const Case cases[] = {
        {10, " 4 Species", 10}, // no "!"
        {11, " five !Reactions", 11}, // no number
        {32, " R cm^3", 32},
        {40, "   2.5 x.y 3", 39}, // reported at the record's first line
        {34, "THERM", lineCount}, // no keyword at all
        // Reaction 1 names species 7 of a 4-species file.
        {55, "      7   2   0   3   0   0   0   0   0   2   1   2   1   0   0   1", 54},
        // Fall-off kind 9 does not exist.
        {61, "      1   2   0   3   0   0   0   0   0   2   1   1   0   1   9   1", 61},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(errorLine(dir.edited("toy_mechanism.txt", c.line, c.text)), c.errorLine)
            << "line " << c.line;
    }
    // Cut right after the thermo records.
    auto lines = readLines(dataFile("toy_mechanism.txt"));
    lines.resize(45);
    EXPECT_GT(errorLine(dir.write("short.txt", joinCrLf(lines))), 0);
    EXPECT_THROW(ReadMechanism(dir.path() / "missing.txt"), Error);
}
