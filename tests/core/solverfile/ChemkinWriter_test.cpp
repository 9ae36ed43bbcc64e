// The solver-file layout written for an imported mechanism, and its round trip through the
// solver-file reader.

#include "solverfile/ChemkinImport.h"
#include "solverfile/ChemkinWriter.h"
#include "solverfile/SolverFileReader.h"

#include "TestFiles.h"
#include "shell/Error.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zarvion::solverfile {
namespace {

std::string pad(std::string s, std::size_t n)
{
    s.resize(std::max(s.size(), n), ' ');
    return s;
}

std::string entry(const std::string& name, const std::string& elements, double scale)
{
    std::string l1 =
        pad(pad(name, 24) + pad(elements, 20) + "G   200.000  3500.000  1000.000", 79) + "1\n";
    std::string l[3];
    for (int k = 1; k <= 14; ++k) {
        char buf[32];
        std::snprintf(buf, sizeof buf, "%15.8E", scale * (k % 2 ? 1 : -1) * std::pow(10.0, -k));
        l[(k - 1) / 5] += buf;
    }
    return l1 + pad(l[0], 79) + "2\n" + pad(l[1], 79) + "3\n" + pad(l[2], 79) + "4\n";
}

const char* const Reactions =
    "REACTIONS\n"
    "2O+M<=>O2+M  1.2E17 -1.0 0.0\nH2/2.4/ H2O/15.4/ AR/ .83/\n"
    "2OH(+M)<=>H2O2(+M) 7.4E13 -0.37 0.0\n LOW / 2.3E18 -0.9 -1700.0/\n"
    " TROE / 0.7346 94.0 1756.0 5182.0 /\n"
    "H+O2(+AR)<=>HO2(+AR) 4.65E12 0.44 0.0\n LOW/ 6.81E18 -1.2 0/ TROE/0.5 1E-30 1E30/\n"
    "H+OH(+M)=>H2O(+M) 1.0E10 0 0\n LOW/1.0E15 0 0/ SRI/0.45 797 979/\n"
    "H+O2<=>O+OH 1.0E14 0 16000\n REV / 2.0E13 0.5 -700 /\n"
    "R1=>R1+HV 1.0 0 0\n"
    "END\n";

ChemkinImport smallMechanism()
{
    std::string text =
        "ELEMENTS H O AR END\nSPECIES H O OH H2 O2 H2O AR HO2 H2O2 R1 END\nTHERMO\n" +
        entry("H", "H   1", 2.5) + entry("O", "O   1", 3.0) + entry("OH", "O   1H   1", 3.5) +
        entry("H2", "H   2", -4.0) + entry("O2", "O   2", 1.25) + entry("H2O", "H   2O   1", 7.0) +
        entry("AR", "AR  1", 2.0) + entry("HO2", "H   1O   2", 9.0) +
        entry("H2O2", "H   2O   2", 1.5) + entry("R1", "H   1O   1", 1.0) + "END\n" + Reactions;
    return ImportChemkin(text, std::nullopt);
}

ProblemSettings ignitionProblem()
{
    ProblemSettings p;
    p.pressureAtm = 1.0;
    p.TemperatureMode = 1;
    p.initialTemperature = 1400.0;
    p.finalTime = 0.05;
    p.moleFractions = {{"H2", 2.0}, {"O2", 1.0}, {"AR", 3.76}};
    return p;
}

TEST(ChemkinWriter, HeaderSpeciesAndReactionLinesHaveTheFixedLayout)
{
    auto mech = smallMechanism();
    ASSERT_TRUE(mech.succeeded()) << FormatImportMessage(mech.messages.front());
    auto lines = BuildSolverFileLines(mech, ignitionProblem(), {"m.inp", ""});
    ASSERT_GT(lines.size(), 34u);
    std::string magic = lines[0].substr(0, 16);
    for (char& c : magic)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_EQ(magic, "!$ZARVION SOLVER");
    EXPECT_EQ(lines[9], " 10 !Species");
    EXPECT_EQ(lines[10], " 7 !Reactions"); // 6 equations, one REV split in two
    EXPECT_EQ(lines[13], " 1.00E+00 !Pressure, atm");
    EXPECT_EQ(lines[14], " 1 !Temperature Equation");
    EXPECT_EQ(lines[15], " 1.40E+03 !Initial Temperature");
    EXPECT_EQ(lines[19], " 5.00E-02 !Final Time");
    EXPECT_EQ(lines[20], " 1.00E-10 !Initial Step Size");
    EXPECT_EQ(lines[21], " 100000 !Maximum Number of Steps");
    EXPECT_EQ(lines[23], " 1.00E-15 !Absolute Tolerance");
    EXPECT_EQ(lines[24], " ");
    EXPECT_EQ(lines[26], " 100000 !R!Maximum Number of lines in output");
    EXPECT_EQ(lines[27], " 1 !Delta N");
    EXPECT_EQ(lines[33], "THERMO");

    // Species 6 (H2O): number, name at 7-23, formula at 24-45, limits, fraction at 75-84.
    const std::string& h2o = lines[34 + 4 * 5];
    ASSERT_EQ(h2o.size(), 84u);
    EXPECT_EQ(h2o.substr(0, 6), " 6    ");
    EXPECT_EQ(h2o.substr(6, 17), pad("H2O", 17));
    EXPECT_EQ(h2o.substr(23, 22), pad("H2O1", 22));
    EXPECT_EQ(h2o.substr(47, 8), "  200.00");
    EXPECT_EQ(h2o.substr(56, 8), " 3500.00");
    EXPECT_EQ(h2o.substr(65, 8), " 1000.00");
    EXPECT_EQ(h2o.substr(74), pad("0", 10));
    const std::string& h2 = lines[34 + 4 * 3];
    EXPECT_EQ(h2.substr(74), pad("2.000E+00", 10));
    // Line 4: coefficients 11-14 and the molecular weight in columns 61-75.
    EXPECT_EQ(lines[34 + 4 * 5 + 3].substr(60, 15), " 1.80150000E+01"); // 2 x 1.008 + 15.999

    // First reaction record: title, integer line of 16 left-aligned fields, rate line,
    // then the three partner lines.
    std::size_t r = 34 + 4 * 10 + 3;
    EXPECT_EQ(lines[r - 1], "REACTIONS");
    EXPECT_EQ(lines[r], " 1    2O + M <=> O2 + M");
    EXPECT_EQ(lines[r + 1],
              "      2   2   0   5   0   0   0   0   0   2   1   2   3   0   0   1   ");
    EXPECT_EQ(lines[r + 2], "       1.20000000E+17-1.00000000E+00 0.00000000E+00");
    EXPECT_EQ(lines[r + 3].substr(0, 30), "      H2      H2O     AR      ");
    EXPECT_EQ(
        lines[r + 4],
        "             4       6       7       0       0       0       0       0       0       0");
    EXPECT_EQ(
        lines[r + 5],
        "        2.4000 15.4000  0.8300      0.      0.      0.      0.      0.      0.      0.");
    EXPECT_EQ(lines[r + 6].substr(0, 6), " 2    ");
    EXPECT_EQ(lines[r + 9], "LOW    2.30000000E+18-9.00000000E-01-1.70000000E+03");
    EXPECT_EQ(lines[r + 10].substr(0, 6), "TROE  ");
    EXPECT_EQ(lines[r + 10].size(), 6u + 4 * 15);
    EXPECT_EQ(lines.back(), "END");
}

TEST(ChemkinWriter, WrittenFileReadsBackWithTheSameNumbers)
{
    auto mech = smallMechanism();
    ASSERT_TRUE(mech.succeeded());
    auto lines = BuildSolverFileLines(mech, ignitionProblem(), {"m.inp", "t.dat"});
    Mechanism back = ReadMechanismFromLines(lines, "roundtrip");
    // Values are written with 9 significant digits: relative agreement to 5e-9.
    auto near = [](double a, double b) { return std::fabs(a - b) <= 5e-9 * std::fabs(b) + 1e-300; };
    EXPECT_EQ(back.header.SpeciesCount, 10);
    EXPECT_EQ(back.header.ReactionCount, 7);
    EXPECT_EQ(back.header.TemperatureMode, 1);
    EXPECT_DOUBLE_EQ(back.header.initialTemperature, 1400.0);
    EXPECT_DOUBLE_EQ(back.header.GasConstantEnergy, 1.987204259);
    EXPECT_DOUBLE_EQ(back.header.GasConstantConc, 82.05736608);
    ASSERT_EQ(back.speciesNames.size(), mech.species.size());
    for (std::size_t k = 0; k < mech.species.size(); ++k) {
        EXPECT_EQ(back.speciesNames[k], mech.species[k].name);
        for (int s = 1; s <= 18; ++s) {
            EXPECT_TRUE(near(back.thermo[k][s], mech.species[k].thermo[s]))
                << mech.species[k].name << " slot " << s;
        }
    }
    EXPECT_DOUBLE_EQ(back.initialMoleFractions[3], 2.0);
    EXPECT_EQ(back.MolFormula[7], "H1O2");
    ASSERT_EQ(back.reactions.size(), mech.reactions.size());
    for (std::size_t j = 0; j < mech.reactions.size(); ++j) {
        for (int s = 1; s <= 26; ++s) {
            EXPECT_EQ(back.reactions[j].ints[s], mech.reactions[j].ints[s]) << j << " int " << s;
        }
        for (int s = 1; s <= 21; ++s) {
            EXPECT_TRUE(near(back.reactions[j].reals[s], mech.reactions[j].reals[s]))
                << j << " real " << s;
        }
    }
    // The photon reaction is marked as naming a participant that is no species.
    EXPECT_EQ(back.reactions[6].ints[slot::Reversible], -1);
    std::string text = " " + back.reactions[6].text + " ";
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_NE(text.find(" hv "), std::string::npos) << text;
}

TEST(ChemkinWriter, MoleFractionListsAndFileOutput)
{
    auto list = ParseMoleFractionList("CH4:1, O2:2,N2:7.52");
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[1], (std::pair<std::string, double>("O2", 2.0)));
    EXPECT_DOUBLE_EQ(list[2].second, 7.52);
    list = ParseMoleFractionList("co:lons::1,C5H5O(1,3):0.5");
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0].first, "co:lons:");
    EXPECT_EQ(list[1].first, "C5H5O(1,3)");
    EXPECT_THROW(ParseMoleFractionList("CH4=1"), Error);

    auto mech = smallMechanism();
    ProblemSettings p = ignitionProblem();
    p.moleFractions = {{"CH4", 1.0}};
    EXPECT_THROW(BuildSolverFileLines(mech, p, {}), Error);

    EXPECT_EQ(FormatField15(-1.23456789123e-100).size(), 15u);
    EXPECT_EQ(FormatField15(-1.23456789123e-100)[0], '-');

    zarvion::testing::ScratchDir dir("chemkin-writer");
    auto path = dir.path() / "out.txt";
    WriteSolverFile(path, BuildSolverFileLines(mech, ignitionProblem(), {}));
    std::string bytes = zarvion::testing::readBytes(path);
    EXPECT_EQ(bytes.substr(0, 23), "!$Zarvion Solver file\r\n");
    EXPECT_EQ(bytes.substr(bytes.size() - 5), "END\r\n");
}

} // namespace
} // namespace zarvion::solverfile
