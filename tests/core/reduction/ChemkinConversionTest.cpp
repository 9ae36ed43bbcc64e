// Solver file reactions as CHEMKIN text: every record kind, long texts, duplicates, refusals.

#include <gtest/gtest.h>

#include <functional>

#include "core/reduction/TestFiles.h"
#include "reduction/ChemkinConversion.h"
#include "shell/Error.h"

namespace zarvion::reduction {
namespace {

using namespace zarvion::testing;

std::string Pad45(std::string s)
{
    return s.append(45 - s.size(), ' ');
}

class ChemkinConversionTest : public ::testing::Test {
protected:
    std::filesystem::path file = FreshFolder("chemkin") / "mech.txt";
    ChemkinConversion Convert(const Lines& lines)
    {
        return ConvertReactions(WriteLines(file, lines), ClockAt(2014, 3, 5, 9, 7, 3));
    }
};

TEST_F(ChemkinConversionTest, EveryRecordKindGivesItsChemkinLineAndResultsAreIgnored)
{
    const ChemkinConversion c = Convert(SmallSolved());
    ASSERT_TRUE(c.ok()) << c.message.text;
    EXPECT_EQ(c.convertedCount, 9);
    const Lines expected = {
        "! Zarvion,   Mar 5 2014, 09:07:03",
        "! Solver File:  " + file.string(),
        "! Species  9",
        "! Reactions  9",
        "! A-units (mol-cm-sec),  E-units (cal/mol)",
        "",
        " " + Pad45("H + O2 <=> O + OH") + "3.5470000E+15 -4.0600000E-01 1.6599000E+04",
        " " + Pad45("O + H2 => H + OH") + "5.0800000E+04 2.6700000E+00 6.2900000E+03",
        " " + Pad45("H + O + M <=> OH + M") + "4.7140000E+18 -1.0000000E+00 0.0000000E+00",
        "    H2/2.5/ H2O/1.234/ O2/2/ ",
        " " + Pad45("H + O2 (+M) <=> HO2 (+M)") + "4.6500000E+12 4.4000000E-01 0.0000000E+00",
        "    LOW  /6.3660000E+20 -1.7200000E+00 5.2480000E+02/",
        "    TROE  /5.0000000E-01 1.0000000E-30 1.0000000E+30 1.0000000E+30/",
        "    AR/0.67/ ",
        // the explicit partner replaces M on both sides, and three blanks lead the rate
        " " + Pad45("OH + OH (+H2O) <=> H2O2 (+H2O)") +
            "   7.4000000E+13 -3.7000000E-01 0.0000000E+00",
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

TEST_F(ChemkinConversionTest, LongTextIsNotPaddedAndEqualParticipantsAreDuplicates)
{
    // reaction 2 of this file is three times a 17-character name on each side
    ChemkinConversion c = Convert(DataLines("reduction/long_name.txt"));
    ASSERT_EQ(c.lines.size(), 8U) << c.message.text;
    const std::string name = "H2O2LONGSPECIESNM";
    EXPECT_EQ(c.lines[7], " " + name + " + " + name + " + " + name + " <=> " + name + " + " +
                              name + " + " + name + "5.0800000E+04 2.6700000E+00 6.2900000E+03");

    // r2 is the reverse of the reversible r1; r3 differs from r1 by its third body
    c = Convert(DataLines("reduction/duplicates.txt"));
    ASSERT_EQ(c.lines.size(), 6U + 5U) << c.message.text;
    EXPECT_EQ(c.lines[6].substr(0, 18), " H + O2 <=> O + OH");
    EXPECT_EQ(c.lines[7], "    DUPLICATE");
    EXPECT_EQ(c.lines[8].substr(0, 17), " OH + O => O2 + H");
    EXPECT_EQ(c.lines[9], "    DUPLICATE");
    EXPECT_EQ(c.lines[10].substr(0, 26), " H + O2 + M <=> O + OH + M");
}

TEST_F(ChemkinConversionTest, RefusalsCarryTheirExactTextsAndFaultsThrow)
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
