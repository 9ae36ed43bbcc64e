// The reduced solver file and the CHEMKIN text of a solver file: kept records renumbered,
// partners cut, targets on line 12, every record kind as CHEMKIN text, refusals.

#include <gtest/gtest.h>

#include <functional>

#include "core/reduction/TestFiles.h"
#include "reduction/ChemkinConversion.h"
#include "reduction/ReducedFileWriter.h"
#include "shell/Error.h"
#include "solverfile/SolverFileReader.h"

namespace zarvion::reduction {
namespace {

using namespace zarvion::testing;

//! The reduced file of the small set (the tables as a run leaves them) and CHEMKIN texts.
class ReducedFileTest : public ::testing::Test {
protected:
    std::filesystem::path dir = FreshFolder("reduced_file");
    std::filesystem::path file = dir / "mech.txt";
    std::tm stamp = ClockAt(2014, 3, 5, 9, 7, 3);
    ReductionTables t;
    Lines source = SmallSolved();

    void SetUp() override
    {
        t.NumSpecies = 9;
        t.NumReactions = 9;
        // drop H2 (1) and AR (7); keep reactions 1, 3, 4, 5, 9
        t.KeptSpecies = {false, true, true, true, true, true, false, true, true};
        t.KeptReactions = {true, false, true, true, true, false, false, false, true};
        t.SourcePath = WriteLines(dir / "source.txt", source).string();
        t.ReducedPath = (dir / "reduced.txt").string();
        t.TemperatureIsTarget = true;
        t.TargetSpecies = {5};
        t.TargetCount = 1;
    }
    shell::Message Write()
    {
        return WriteReducedFile(t, 0.1, {0.05}, 0.3, stamp);
    }
    ChemkinConversion Convert(const Lines& lines)
    {
        return ConvertReactions(WriteLines(file, lines), stamp);
    }
};

TEST_F(ReducedFileTest, KeptRecordsRenumberedAndTargetsOnLine12)
{
    const auto m = Write();
    ASSERT_TRUE(m.empty()) << m.text;
    EXPECT_EQ(t.ReducedSpeciesCount, 7);
    EXPECT_EQ(t.ReducedReactionCount, 5);
    const Lines out = shell::ReadLines(t.ReducedPath);
    EXPECT_EQ(out[0], " !$Zarvion Solver,  Mar 5 2014, 09:07:03");
    EXPECT_EQ(out[1], " ");
    EXPECT_EQ(out[2], " Don't modify this file, the file has a fixed format and is intended for "
                      "use in the Zarvion solver.");
    EXPECT_EQ(out[4], " Source solver file: " + t.SourcePath);
    EXPECT_EQ(out[5], source[5]);
    EXPECT_EQ(out[9], " 7 !Species");
    EXPECT_EQ(out[10], " 5 !Reactions");
    // OH is species 5 of the source and 4 of the reduced file
    EXPECT_EQ(out[11], " 2 -1 4 !Targets T 1.000E-01, OH 5.000E-02, Others 3.000E-01");
    for (int i = 12; i < 34; ++i) {
        EXPECT_EQ(out[i], source[i]) << "line " << i + 1;
    }
    // species record of O2, now number 1: the old number goes, the rest stays
    EXPECT_EQ(out[34], " 1   " + source[38].substr(5));
    EXPECT_EQ(out[35], source[39]);
    EXPECT_EQ(out.back(), " End"); // the results section is not carried over

    const solverfile::Mechanism mech = solverfile::ReadMechanism(t.ReducedPath);
    ASSERT_EQ(mech.speciesNames, (Lines{"O2", "H", "O", "OH", "H2O", "HO2", "H2O2"}));
    ASSERT_EQ(mech.reactions.size(), 5U);
    const auto& r1 = mech.reactions[0].ints;
    EXPECT_EQ((std::array{r1[1], r1[2], r1[3], r1[4], r1[5]}), (std::array{2, 1, 0, 3, 4}));
    // reaction 3: H2 dropped from the partners, the others renumbered, efficiencies cut
    const auto& r2 = mech.reactions[1];
    EXPECT_EQ((std::array{r2.ints[13], r2.ints[17], r2.ints[18]}), (std::array{2, 5, 1}));
    EXPECT_DOUBLE_EQ(r2.reals[12], 1.23);
    EXPECT_DOUBLE_EQ(r2.reals[13], 2.0);
    // reaction 4: its only partner AR dropped -> plain third body, no partner lines
    const auto& r3 = mech.reactions[2].ints;
    EXPECT_EQ((std::array{r3[12], r3[13], r3[14], r3[15]}), (std::array{1, 0, 1, 1}));
    EXPECT_EQ(mech.reactions[3].ints[17], 5); // explicit partner H2O, renumbered
    EXPECT_DOUBLE_EQ(mech.reactions[4].reals[1], 7.4e5);
    // reaction 3's title keeps its text behind the new number
    EXPECT_LT(LineOf(out, " 2    H+O+M=OH+M"), static_cast<std::ptrdiff_t>(out.size()));
}

TEST_F(ReducedFileTest, MissingEndRefusesToWriteTheReducedFile)
{
    Lines lines = source;
    lines[LineOf(lines, "!$Results   $$") - 2] = "ENDE";
    WriteLines(t.SourcePath, lines);
    const auto m = Write();
    EXPECT_EQ(m.text, "The reaction list of the source file does not contain the key word End. "
                      "The file is changed or corrupted; the reduced file cannot be created.");
    EXPECT_EQ(m.style, 48);
    EXPECT_FALSE(std::filesystem::exists(t.ReducedPath));

    // without a results section the closing keyword must stand two lines from the end
    lines = SmallBare();
    WriteLines(t.SourcePath, lines);
    EXPECT_FALSE(Write().empty());
    lines.insert(lines.end(), {"", "trailing"});
    WriteLines(t.SourcePath, lines);
    EXPECT_TRUE(Write().empty());
}

TEST(TargetLine, SpeciesOnlyWithoutTemperature)
{
    EXPECT_EQ(TargetLine(false, -1, {1, 4}, {"CH4", "O2"}, {0.1, 0.25}, 0.3),
              " 2 1 4 !Targets CH4 1.000E-01, O2 2.500E-01, Others 3.000E-01");
}

TEST_F(ReducedFileTest, ChemkinTextOfEveryRecordKindLongTextsAndDuplicates)
{
    // The expected texts are written by hand from the records of each file. small_solved: one
    // record of every kind behind which the results are ignored; an explicit partner replaces
    // M on both sides and three blanks lead its rate; the three-parameter Troe form keeps three
    // numbers of the four its line holds. long_name: reaction 2 is three times a 17-character
    // name on each side, a text longer than its field that is not padded. duplicates: r2 is
    // the reverse of the reversible r1, r3 differs from r1 by its third body.
    for (const std::string name : {"small_solved", "long_name", "duplicates"}) {
        const ChemkinConversion c = Convert(DataLines("reduction/" + name + ".txt"));
        ASSERT_TRUE(c.ok()) << name << ": " << c.message.text;
        Lines expected = DataLines("reduction/" + name + "_chemkin.txt");
        expected[1] += file.string();
        ASSERT_EQ(c.lines.size(), expected.size()) << name;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(c.lines[i], expected[i]) << name << ", line " << i + 1;
        }
    }
    EXPECT_EQ(Convert(SmallSolved()).convertedCount, 9);
}

TEST_F(ReducedFileTest, ChemkinRefusalsCarryTheirExactTextsAndFaultsThrow)
{
    const Lines good = SmallBare();
    const std::ptrdiff_t reactionsAt = LineOf(good, "REACTIONS");
    using Edit = std::function<void(Lines&)>;
    const std::vector<std::pair<Edit, std::string>> cases = {
        {[&](Lines& l) { l[LineOf(l, "THERMO")] = "THERMO ALL"; },
         "', thermodynamic data are not found."},
        {[&](Lines& l) { l.erase(l.begin() + reactionsAt - 2); }, // the THERMO block's "END"
         "', thermodynamic data do not contain the trailing keyword 'End'. The text conversion "
         "cannot be performed."},
        {[&](Lines& l) { l[reactionsAt] = "REACTION"; }, "', reactions are not found."},
        {[&](Lines& l) { l.pop_back(); },
         "', reaction list does not contain the trailing keyword 'End'. The text conversion "
         "cannot be performed."},
    };
    for (const auto& [edit, tail] : cases) {
        Lines lines = good;
        edit(lines);
        const auto c = Convert(lines);
        SCOPED_TRACE(tail);
        EXPECT_EQ(c.message.text, "In the file '" + file.string() + tail);
        EXPECT_EQ(c.message.style, 48);
        EXPECT_EQ(c.message.title, "ZARVION");
    }
    // the title of reaction 3 is broken: two reactions have been converted before it
    Lines lines = good;
    lines[LineOf(good, " 3    H+O+M=OH+M")] = " 3    H+O+M>OH+M";
    const auto c = Convert(lines);
    EXPECT_EQ(c.message.text, "Reaction '2', error in the text format.");
    EXPECT_TRUE(c.lines.empty());

    lines = good;
    lines.erase(lines.end() - 2); // last line of the last record
    EXPECT_THROW(Convert(lines), zarvion::Error);
    lines = good;
    lines[reactionsAt + 2].replace(6, 2, "42"); // species 42 of 9
    EXPECT_THROW(Convert(lines), zarvion::Error);
}

TEST(SeparateRateFields, TouchingFieldsGetOneBlank)
{
    EXPECT_EQ(SeparateRateFields("      1.000000000E+14-1.50000000E+00 1.23456780E+04"),
              "1.000000000E+14 -1.50000000E+00 1.23456780E+04");
    EXPECT_EQ(SeparateRateFields("TROE   7.00000000E-01 1.00000000E+02 2.00000000E+03", 2),
              "7.00000000E-01 1.00000000E+02");
}

} // namespace
} // namespace zarvion::reduction
