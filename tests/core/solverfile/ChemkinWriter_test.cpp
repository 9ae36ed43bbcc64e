// The solver-file layout written for an imported mechanism, and its round trip through the
// solver-file reader. The mechanism: tests/data/solverfile/small_mechanism.inp (10 species;
// third-body partners, Troe with 4 and 3 parameters, SRI, one REV and a photon reaction).

#include "solverfile/ChemkinImport.h"
#include "solverfile/ChemkinWriter.h"
#include "solverfile/SolverFileReader.h"

#include "TestFiles.h"
#include "shell/Error.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zarvion::solverfile {
namespace {

ChemkinImport smallMechanism()
{
    return ImportChemkinFiles(zarvion::testing::dataFile("solverfile/small_mechanism.inp"),
                              std::nullopt);
}

ProblemSettings ignitionProblem()
{
    ProblemSettings p;
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
    for (char& c : magic) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_EQ(magic, "!$ZARVION SOLVER");
    const std::pair<int, const char*> header[] = {
        {10, " 10 !Species"}, {11, " 7 !Reactions"}, // 6 equations, one REV split in two
        {14, " 1.00E+00 !Pressure, atm"}, {15, " 1 !Temperature Equation"},
        {16, " 1.40E+03 !Initial Temperature"}, {20, " 5.00E-02 !Final Time"},
        {21, " 1.00E-10 !Initial Step Size"}, {22, " 100000 !Maximum Number of Steps"},
        {24, " 1.00E-15 !Absolute Tolerance"}, {25, " "},
        {27, " 100000 !R!Maximum Number of lines in output"}, {28, " 1 !Delta N"},
        {34, "THERMO"}};
    for (const auto& [line, text] : header) {
        EXPECT_EQ(lines[line - 1], text) << "line " << line;
    }

    // Species 6 (H2O): number, name at 7-23, formula at 24-45, limits, fraction at 75-84.
    const std::string& h2o = lines[34 + 4 * 5];
    ASSERT_EQ(h2o.size(), 84u);
    EXPECT_EQ(h2o.substr(0, 6), " 6    ");
    EXPECT_EQ(h2o.substr(6, 17), "H2O              ");
    EXPECT_EQ(h2o.substr(23, 22), "H2O1                  ");
    EXPECT_EQ(h2o.substr(47, 8) + h2o.substr(56, 8) + h2o.substr(65, 8),
              "  200.00 3500.00 1000.00");
    EXPECT_EQ(h2o.substr(74), "0         ");
    EXPECT_EQ(lines[34 + 4 * 3].substr(74), "2.000E+00 "); // H2
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
    EXPECT_EQ(lines[r + 4], "             4       6       7       0       0       0       0"
                            "       0       0       0");
    EXPECT_EQ(lines[r + 5], "        2.4000 15.4000  0.8300      0.      0.      0.      0."
                            "      0.      0.      0.");
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
    Mechanism back =
        ReadMechanismFromLines(BuildSolverFileLines(mech, ignitionProblem(), {"m.inp", "t.dat"}),
                               "roundtrip");
    // Header texts and their reading are checked on their own; here the gas constants the
    // writer adds and every number of the records. Values are written with 9 significant
    // digits: relative agreement to 5e-9.
    auto near = [](double a, double b) { return std::fabs(a - b) <= 5e-9 * std::fabs(b) + 1e-300; };
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
    ASSERT_EQ(back.reactions.size(), mech.reactions.size());
    for (std::size_t j = 0; j < mech.reactions.size(); ++j) {
        EXPECT_EQ(back.reactions[j].ints, mech.reactions[j].ints) << j;
        for (int s = 1; s <= 21; ++s) {
            EXPECT_TRUE(near(back.reactions[j].reals[s], mech.reactions[j].reals[s]))
                << j << " real " << s;
        }
    }
    // The photon reaction is marked as naming a participant that is no species.
    EXPECT_EQ(back.reactions[6].ints[slot::Reversible], -1);
    std::string text = " " + back.reactions[6].text + " ";
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
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
