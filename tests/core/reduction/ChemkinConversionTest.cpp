#include <gtest/gtest.h>

#include <functional>

#include "core/reduction/SmallMechanism.h"
#include "reduction/ChemkinConversion.h"
#include "shell/Error.h"

namespace zarvion::reduction {
namespace {

using namespace zarvion::testing;

std::tm Stamp()
{
    return ClockAt(2014, 3, 5, 9, 7, 3);
}

std::string Pad45(std::string s)
{
    return Fixed(s, 45);
}

class ChemkinConversionTest : public ::testing::Test {
protected:
    std::filesystem::path dir = FreshFolder("chemkin");
    std::filesystem::path Write(const std::vector<std::string>& lines)
    {
        const auto p = dir / "mech.txt";
        WriteLines(p, lines);
        return p;
    }
};

TEST_F(ChemkinConversionTest, EveryRecordKindGivesItsChemkinLine)
{
    const auto path = Write(SolverFileLines({}, SmallSpecies(), SmallReactions()));
    const ChemkinConversion c = ConvertReactions(path, Stamp());
    ASSERT_TRUE(c.ok()) << c.message.text;
    EXPECT_EQ(c.convertedCount, 9);
    const std::vector<std::string> expected = {
        "! Zarvion,   Mar 5 2014, 09:07:03",
        "! Solver File:  " + path.string(),
        "! Species  9",
        "! Reactions  9",
        "! A-units (mol-cm-sec),  E-units (cal/mol)",
        "",
        " " + Pad45("H + O2 <=> O + OH") + "3.5470000E+15 -4.0600000E-01 1.6599000E+04",
        " " + Pad45("O + H2 => H + OH") + "5.0800000E+04 2.6700000E+00 6.2900000E+03",
        " " + Pad45("H + O + M <=> OH + M") + "4.7140000E+18 -1.0000000E+00 0.0000000E+00",
        "    H2/2.5/ H2O/12./ ",
        " " + Pad45("H + O2 (+M) <=> HO2 (+M)") + "4.6500000E+12 4.4000000E-01 0.0000000E+00",
        "    LOW  /6.3660000E+20 -1.7200000E+00 5.2480000E+02/",
        "    TROE  /5.0000000E-01 1.0000000E-30 1.0000000E+30 1.0000000E+30/",
        "    AR/0.67/ ",
        // the explicit partner replaces M on both sides, and three blanks lead the rate
        " " + Pad45("OH + OH (+H2O) <=> H2O2 (+H2O)") + "   7.4000000E+13 -3.7000000E-01 0.0000000E+00",
        "    LOW  /2.3000000E+18 -9.0000000E-01 -1.7000000E+03/",
        " " + Pad45("H2O + hv => H + OH") + "1.0000000E-05 0.0000000E+00 0.0000000E+00",
        " " + Pad45("H2O2 => Products") + "2.0000000E-06 0.0000000E+00 0.0000000E+00",
        " " + Pad45("H + HO2 (+M) <=> H2O2 (+M)") + "1.0000000E+13 0.0000000E+00 0.0000000E+00",
        "    LOW  /1.0000000E+17 0.0000000E+00 0.0000000E+00/",
        "    SRI  /4.5000000E-01 7.9700000E+02 9.7900000E+02 1.0000000E+00 0.0000000E+00/",
        " " + Pad45("H2 + O2 (+M) <=> HO2 + H (+M)") + "7.4000000E+05 2.4300000E+00 5.3502000E+04",
        "    LOW  /1.0000000E+14 0.0000000E+00 4.0000000E+04/",
        // the three-parameter form keeps three numbers: the unused fourth goes
        "    TROE  /5.0000000E-01 1.0000000E+02 2.0000000E+03/",
    };
    ASSERT_EQ(c.lines.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(c.lines[i], expected[i]) << "line " << i + 1;
    }
}

TEST_F(ChemkinConversionTest, LongTextIsNotPaddedAndResultsAreIgnored)
{
    auto species = SmallSpecies();
    species[8].name = "H2O2LONGSPECIESNM"; // fills the 17-column name field
    auto reactions = SmallReactions();
    reactions.resize(2);
    reactions[1].fields = {9, 9, 9, 9, 9, 9, 0, 0, 0, 3, 3, 0, 0, 0, 0, 1};
    std::vector<FixtureRow> rows(4, FixtureRow{0, 1400, std::vector<double>(9, 0.1)});
    const auto path = Write(SolverFileLines({}, species, reactions, rows));
    const ChemkinConversion c = ConvertReactions(path, Stamp());
    ASSERT_TRUE(c.ok()) << c.message.text;
    ASSERT_EQ(c.lines.size(), 8U);
    const std::string text = "H2O2LONGSPECIESNM + H2O2LONGSPECIESNM + H2O2LONGSPECIESNM <=> "
                             "H2O2LONGSPECIESNM + H2O2LONGSPECIESNM + H2O2LONGSPECIESNM";
    EXPECT_EQ(c.lines[7], " " + text + "5.0800000E+04 2.6700000E+00 6.2900000E+03");
}

TEST_F(ChemkinConversionTest, ReactionsWithTheSameParticipantsAreMarkedDuplicate)
{
    auto reactions = SmallReactions();
    reactions.resize(3);
    // r2 is the reverse of the reversible r1; r3 differs by its third body
    reactions[1] = {"O+OH=>H+O2", {5, 4, 0, 2, 3, 0, 0, 0, 0, 2, 2, 0, 0, 0, 0, 0}, 1, 0, 0, {}};
    reactions[2] = {"H+O2+M=O+OH+M", {3, 2, 0, 4, 5, 0, 0, 0, 0, 2, 2, 1, 0, 0, 0, 1}, 1, 0, 0, {}};
    const ChemkinConversion c =
        ConvertReactions(Write(SolverFileLines({}, SmallSpecies(), reactions)), Stamp());
    ASSERT_TRUE(c.ok()) << c.message.text;
    ASSERT_EQ(c.lines.size(), 6U + 5U);
    EXPECT_EQ(c.lines[6].substr(0, 18), " H + O2 <=> O + OH");
    EXPECT_EQ(c.lines[7], "    DUPLICATE");
    EXPECT_EQ(c.lines[8].substr(0, 17), " OH + O => O2 + H");
    EXPECT_EQ(c.lines[9], "    DUPLICATE");
    EXPECT_EQ(c.lines[10].substr(0, 26), " H + O2 + M <=> O + OH + M");
}

TEST_F(ChemkinConversionTest, RefusalsCarryTheirExactTexts)
{
    const auto good = SolverFileLines({}, SmallSpecies(), SmallReactions());
    const auto findLine = [&](const std::string& s) {
        return static_cast<std::ptrdiff_t>(std::find(good.begin(), good.end(), s) - good.begin());
    };
    const std::ptrdiff_t thermoAt = findLine("THERMO");
    const std::ptrdiff_t reactionsAt = findLine("REACTIONS");

    using Edit = std::function<void(std::vector<std::string>&)>;
    const std::vector<std::pair<Edit, std::string>> cases = {
        {[&](auto& l) { l[thermoAt] = "THERMO ALL"; }, "', thermodynamic data are not found."},
        {[&](auto& l) { l.erase(l.begin() + reactionsAt - 2); }, // the THERMO block's "END"
         "', thermodynamic data do not contain the trailing keyword 'End'. The text conversion "
         "cannot be performed."},
        {[&](auto& l) { l[reactionsAt] = "REACTION"; }, "', reactions are not found."},
        {[&](auto& l) { l.pop_back(); },
         "', reaction list does not contain the trailing keyword 'End'. The text conversion "
         "cannot be performed."},
    };
    for (const auto& [edit, tail] : cases) {
        auto lines = good;
        edit(lines);
        const auto p = Write(lines);
        const auto c = ConvertReactions(p, Stamp());
        SCOPED_TRACE(tail);
        EXPECT_EQ(c.message.text, "In the file '" + p.string() + tail);
        EXPECT_EQ(c.message.style, 48);
        EXPECT_EQ(c.message.title, "ZARVION");
    }
    // the title of reaction 3 is broken: two reactions have been converted before it
    auto lines = good;
    const std::ptrdiff_t third = findLine(" 3    H+O+M=OH+M");
    ASSERT_LT(third, static_cast<std::ptrdiff_t>(lines.size()));
    lines[third] = " 3    H+O+M>OH+M";
    const auto c = ConvertReactions(Write(lines), Stamp());
    EXPECT_EQ(c.message.text, "Reaction '2', error in the text format.");
    EXPECT_TRUE(c.lines.empty());
}

TEST_F(ChemkinConversionTest, CutRecordAndBadIndexAreFaultsNotCrashes)
{
    auto lines = SolverFileLines({}, SmallSpecies(), SmallReactions());
    lines.erase(lines.end() - 2); // last line of the last record
    EXPECT_THROW(ConvertReactions(Write(lines), Stamp()), zarvion::Error);

    auto reactions = SmallReactions();
    reactions[0].fields[0] = 42;
    EXPECT_THROW(ConvertReactions(Write(SolverFileLines({}, SmallSpecies(), reactions)), Stamp()),
                 zarvion::Error);
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
