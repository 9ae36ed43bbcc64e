// CHEMKIN import from inline mechanisms: number fields, equations, thermo quirks, units,
// REV splitting, refusals and the record fields they produce.

#include "solverfile/ChemkinDetail.h"
#include "solverfile/ChemkinImport.h"

#include "TestFiles.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zarvion::solverfile {
namespace {

using chemkin::ParseEquation;
using chemkin::ParseFortranNumber;
using chemkin::SpeciesTable;
using chemkin::ThirdBody;
using zarvion::testing::expectSlots;
using zarvion::testing::readBytes;

//! Fixtures in tests/data/solverfile: thermo coefficient k (1-based) of an entry is k / 10 plus
//! a base of 0 unless noted, so a wrong column shows in the value.
std::string fixture(const std::string& name)
{
    return readBytes(zarvion::testing::dataFile("solverfile/" + name));
}

//! Seven species (H O OH H2 O2 H2O AR) with thermo; REACTIONS stands on line 38.
std::string mechanism(const std::string& reactions, const std::string& units = "")
{
    return "ELEMENTS\nH O AR\nEND\nSPECIES\nH O OH H2 O2 H2O AR\nEND\n" +
           fixture("simple_thermo.dat") + "REACTIONS " + units + "\n" + reactions + "END\n";
}

//! The mechanism with further species, each given H's thermo entry under its own name.
std::string withSpecies(std::string text, const std::vector<std::string>& extra)
{
    const std::string h = text.substr(text.find("\nH      ") + 1 + 24, 4 * 81 - 24);
    std::string names, entries;
    for (const auto& s : extra) {
        names += " " + s;
        entries += s + std::string(24 - s.size(), ' ') + h;
    }
    text.replace(text.find("H2O AR\nEND"), 10, "H2O AR" + names + "\nEND");
    text.replace(text.find("END\nREACTIONS"), 13, entries + "END\nREACTIONS");
    return text;
}

bool hasMessage(const ChemkinImport& r, ImportSeverity severity, const std::string& part,
                int line = -1)
{
    for (const auto& m : r.messages) {
        if (m.severity == severity && m.text.find(part) != std::string::npos &&
            (line < 0 || m.line == line)) {
            return true;
        }
    }
    return false;
}

std::string allMessages(const ChemkinImport& r)
{
    std::string out;
    for (const auto& m : r.messages) out += FormatImportMessage(m) + "\n";
    return out;
}

TEST(ChemkinNumbers, FortranFieldsAndGarbage)
{
    const std::pair<const char*, double> good[] = {
        {" 0.86900558E 01", 8.6900558}, {"-0.15420691E 05", -15420.691}, {"1.5D+03", 1500.0},
        {"11.26E+18", 1.126e19}, {".119445830E-07", 1.19445830e-8}, {"1.", 1.0},
        {"+4.650E+012", 4.65e12}, {"1.0-100", 1e-100}}; // exponent without "E"
    for (const auto& [text, value] : good) {
        ASSERT_TRUE(ParseFortranNumber(text).has_value()) << text;
        EXPECT_DOUBLE_EQ(*ParseFortranNumber(text), value) << text;
    }
    for (const char* bad : {"", "   ", "inf", "nan", "1.0E", "abc", "1e400", "--1", "1.2.3"}) {
        EXPECT_FALSE(ParseFortranNumber(bad).has_value()) << bad;
    }
}

TEST(ChemkinEquations, NamesWithOperatorsAreTokenisedAgainstTheSpeciesList)
{
    SpeciesTable names({"(Parens)", "@#$%^-2", "co:lons:", "[xy2]*{.}", "plus+", "eq=uals", "plus",
                        "trans_butene", "co", "amp&ersand"});
    using Terms = std::vector<std::pair<int, double>>;
    auto e = ParseEquation("plus+ eq=uals = plus++(Parens)", names);
    ASSERT_TRUE(e.error.empty()) << e.error;
    EXPECT_EQ(e.reactants, (Terms{{4, 1.0}, {5, 1.0}}));
    EXPECT_EQ(e.products, (Terms{{4, 1.0}, {0, 1.0}}));
    // Longest match "plus+" must be undone for "plus + plus+".
    e = ParseEquation("plus + plus+ = 2 (Parens)", names);
    ASSERT_TRUE(e.error.empty()) << e.error;
    EXPECT_EQ(e.reactants, (Terms{{6, 1.0}, {4, 1.0}}));
    EXPECT_EQ(e.products, (Terms{{0, 2.0}}));
    e = ParseEquation("plus+ (+(Parens)) = eq=uals  (+(Parens))", names);
    ASSERT_TRUE(e.error.empty()) << e.error;
    EXPECT_EQ(e.thirdBody, ThirdBody::FalloffSpecies);
    EXPECT_EQ(e.collider, 0);
    EXPECT_TRUE(ParseEquation("amp&ersand <=> plus+", names).reversible);
    EXPECT_FALSE(ParseEquation("co + nothere = plus", names).error.empty());
}

TEST(ChemkinEquations, ThirdBodiesCollidersPhotonsAndCoefficients)
{
    SpeciesTable names({"H", "R1A", "R1B", "P1", "R2", "SP)X", "OH", "H2O2", "AR", "BIN6", "H2"});
    EXPECT_EQ(ParseEquation("R1A+R1B+m = P1+H+M", names).thirdBody, ThirdBody::PlusM);
    EXPECT_EQ(ParseEquation("R1A+R1B(+ M ) = P1+H(+m)", names).thirdBody, ThirdBody::FalloffM);
    auto e = ParseEquation("R1A+R1B(+SP)X) = P1+H(+SP)X)", names);
    EXPECT_EQ(e.thirdBody, ThirdBody::FalloffSpecies);
    EXPECT_EQ(e.collider, 5);
    e = ParseEquation("2OH(+M)<=>H2O2(+AR)", names);
    EXPECT_NE(e.error.find("Third bodies do not match: 'M' and 'AR'"), std::string::npos)
        << e.error;
    EXPECT_FALSE(ParseEquation("R1A+R1B+M = P1+H", names).error.empty());
    e = ParseEquation("R1A => R1A + HV", names);
    EXPECT_TRUE(e.hvRight);
    EXPECT_FALSE(e.reversible);
    e = ParseEquation("R1A + R1B => P1 + PRODUCTS", names);
    ASSERT_TRUE(e.error.empty()) << e.error;
    EXPECT_TRUE(e.productsWord);
    EXPECT_EQ(e.products.size(), 1u);
    EXPECT_FALSE(ParseEquation("PROD = R1A", names).error.empty()); // only behind the arrow
    e = ParseEquation("1.53846154E-2BIN6+  1.0769H2 = H", names);
    ASSERT_TRUE(e.error.empty()) << e.error;
    EXPECT_DOUBLE_EQ(e.reactants[0].second, 1.53846154e-2);
    EXPECT_DOUBLE_EQ(e.reactants[1].second, 1.0769);
    EXPECT_EQ(ParseEquation("2OH = H2O2", names).reactants[0], (std::pair<int, double>(6, 2.0)));
}

TEST(ChemkinThermo, QuirksOfRealThermoFiles)
{
    // Global Tmid 1200, a blank Tmid (A), shifted temperature fields (B), a blank exponent
    // sign (C), a missing "4" in column 80 (D), an extended composition (BIN) and ENDOFDATA.
    const std::string text = fixture("thermo_quirks.dat");
    std::vector<ImportMessage> messages;
    auto entries = chemkin::ParseThermoBlock(chemkin::SplitSourceLines(text), "t", messages);
    ASSERT_TRUE(messages.empty()) << messages[0].text;
    ASSERT_EQ(entries.size(), 5u);
    EXPECT_DOUBLE_EQ(entries[0].commonT, 1200.0);
    EXPECT_DOUBLE_EQ(entries[1].lowT, 200.0);
    EXPECT_DOUBLE_EQ(entries[1].highT, 6000.0);
    EXPECT_DOUBLE_EQ(entries[1].commonT, 1500.0);
    EXPECT_DOUBLE_EQ(entries[2].coefficients[0], 8.6900558);
    EXPECT_DOUBLE_EQ(entries[3].coefficients[13], 1.4); // coefficient 14
    using Elements = std::vector<std::pair<std::string, double>>;
    EXPECT_EQ(entries[4].elements, (Elements{{"C", 778.0}, {"H", 264.0}}));
    EXPECT_DOUBLE_EQ(entries[4].commonT, 1401.0);
}

TEST(ChemkinImport, RecordsOfFalloffColliderAndIrreversibleReactions)
{
    // The layout of a third-body record with partners is checked on the written solver file.
    auto r = ImportChemkin(withSpecies(
        mechanism("2OH(+M)<=>H2O2(+M) 7.4E13 -0.37 0.0\n LOW / 2.3E18 -0.9 -1700.0/\n"
                  " TROE / 0.7346 94.0 1756.0 5182.0 /\n"
                  "H+O2(+AR)<=>HO2(+AR) 4.65E12 0.44 0.0\n"
                  " LOW/ 6.81E18 -1.2 0/ TROE/0.5 1E-30 1E30/\n"
                  "H+OH=>H2O 1.0E10 0 0\n"
                  "OH+OH<=>O+H2O  3.57E4 2.4 -2110.0 ! comment with = sign\n"
                  "H2O2+O=>OH+PRODUCTS 1.0 0 0\n"),
        {"HO2", "H2O2"}));
    ASSERT_TRUE(r.succeeded()) << allMessages(r);
    ASSERT_EQ(r.reactions.size(), 5u);
    EXPECT_EQ(r.reactions[0].text, "2OH (+M) <=> H2O2 (+M)");
    expectSlots(r.reactions[0].ints,
                {{slot::ThirdBodyKind, 1}, {slot::HasLowLimit, 1}, {slot::FalloffKind, 1}});
    expectSlots(r.reactions[0].reals, {{4, 2.3e18}, {6, -1700.0}, {10, 5182.0}});
    // AR as the only collider, Troe with three parameters.
    expectSlots(r.reactions[1].ints, {{slot::ThirdBodyKind, 0}, {slot::PartnerCount, 1},
                                      {slot::HasLowLimit, 1}, {slot::FirstPartner, 7},
                                      {slot::FalloffKind, 3}});
    expectSlots(r.reactions[1].reals, {{12, 1.0}});
    EXPECT_EQ(r.reactions[2].ints[slot::Reversible], 0);
    EXPECT_EQ(r.reactions[2].text, "H + OH => H2O");
    EXPECT_DOUBLE_EQ(r.reactions[3].reals[3], -2110.0);
    EXPECT_EQ(r.reactions[4].ints[slot::Reversible], -1);
    EXPECT_EQ(r.reactions[4].text, "H2O2 + O => OH + Products");
}

TEST(ChemkinImport, UnitKeywordsConvertToCalPerMolAndMoles)
{
    // Expected values by hand: 1 kcal = 1000 cal; 1 J = 1/4.184 cal; E/R [K] times
    // 1.987204259 cal/(mol K); 1 eV per particle = 96485.33212 / 4.184 cal/mol; a bimolecular
    // A in cm^3/(molecule s) times N_A = 6.02214076E23. Tolerance 1e-12 relative.
    struct Case {
        const char* units;
        double energy;
        double aFactor;
    };
    const Case cases[] = {{"", 1000.0, 1.0},
                          {"KCAL/MOLE", 1.0e6, 1.0},
                          {"JOULES/MOLE", 1000.0 / 4.184, 1.0},
                          {"KJOULES/MOLE", 1.0e6 / 4.184, 1.0},
                          {"KELVINS", 1987.204259, 1.0},
                          {"EVOLTS", 1000.0 * 96485.33212 / 4.184, 1.0},
                          {"CAL/MOLE MOLECULES", 1000.0, 6.02214076e23}};
    for (const Case& c : cases) {
        auto r = ImportChemkin(
            mechanism("H+O2=O+OH 2.0 0.5 1000.0\nH+O2+M=O+OH+M 2.0 0 1000\n", c.units));
        ASSERT_TRUE(r.succeeded()) << c.units;
        EXPECT_NEAR(r.reactions[0].reals[3], c.energy, 1e-12 * c.energy) << c.units;
        EXPECT_NEAR(r.reactions[0].reals[1], 2.0 * c.aFactor, 1e-12 * 2.0 * c.aFactor) << c.units;
        // Termolecular with +M: order 3, so A scales with N_A^2.
        const double a3 = 2.0 * c.aFactor * c.aFactor;
        EXPECT_NEAR(r.reactions[1].reals[1], a3, 1e-12 * a3) << c.units;
        EXPECT_DOUBLE_EQ(r.reactions[0].reals[2], 0.5);
    }
    EXPECT_FALSE(ImportChemkin(mechanism("H+O2=O+OH 2.0 0.5 1000.0\n", "FURLONGS")).succeeded());
}

TEST(ChemkinImport, RevIsSplitIntoForwardAndReverse)
{
    auto r = ImportChemkin(mechanism("H+O2<=>O+OH 1.0E14 0 16000\n REV / 2.0E13 0.5 -700 /\n"
                                     "H2+O=>H+OH 5.0E4 2.7 6290\n"
                                     "H+H2O<=>OH+H2 1.0E8 1.6 3300\n REV/0.0 0.0 0.0/\n"));
    ASSERT_TRUE(r.succeeded());
    EXPECT_EQ(r.sourceReactionCount, 3);
    EXPECT_EQ(r.revSplitCount, 1);
    EXPECT_EQ(r.revZeroCount, 1);
    ASSERT_EQ(r.reactions.size(), 4u);
    // The reverse record swaps the sides of the forward one; both are irreversible.
    const auto& fwd = r.reactions[0];
    const auto& rev = r.reactions[1];
    EXPECT_EQ(fwd.ints[slot::Reversible], 0);
    expectSlots(rev.ints, {{slot::Reversible, 0}, {1, fwd.ints[4]}, {2, fwd.ints[5]},
                           {4, fwd.ints[1]}});
    expectSlots(rev.reals, {{1, 2.0e13}, {3, -700.0}});
    EXPECT_EQ(rev.text, "O + OH => H + O2");
    EXPECT_EQ(r.reactions[3].ints[slot::Reversible], 0); // zero REV: forward only
    EXPECT_EQ(r.reactionSourceLines[1], r.reactionSourceLines[0]);
}

TEST(ChemkinImport, WhatTheFormatCannotHoldIsRefusedPerReactionOrDropped)
{
    std::string reactions =
        "H+O2<=>O+OH 1.0E14 0 16000\n"
        "H+OH<=>H2O 1.0E14 0 0\n PLOG / 1.0 1.0E14 0 0 /\n PLOG / 10.0 2.0E14 0 0 /\n"
        "H+H+H+H<=>H2+H2 1.0 0 0\n"
        "H2+O2<=>OH+OH 1.0 0 0\n FORD / H2 1.5 /\n"
        "H+O+M<=>OH+M 1.0 0 0\n H/2/ O/2/ OH/2/ H2/2/ O2/2/ H2O/2/ AR/2/\n"
        "1.5H2+O2<=>H2O+O 1.0 0 0\n";
    auto refused = ImportChemkin(mechanism(reactions));
    EXPECT_FALSE(refused.succeeded());
    EXPECT_EQ(refused.count(ImportSeverity::Refusal), 4);
    const std::pair<const char*, int> refusals[] = {
        {"PLOG", 40}, {"more than 3 reactant molecules", 43}, {"FORD", 44},
        {"non-integer coefficient of 'H2'", 48}};
    for (const auto& [part, line] : refusals) {
        EXPECT_TRUE(hasMessage(refused, ImportSeverity::Refusal, part, line)) << part;
    }
    EXPECT_FALSE(hasMessage(refused, ImportSeverity::Refusal, "H+O+M"));

    ChemkinOptions skip;
    skip.skipUnsupported = true;
    auto dropped = ImportChemkin(mechanism(reactions), std::nullopt, skip);
    EXPECT_TRUE(dropped.succeeded());
    EXPECT_EQ(dropped.count(ImportSeverity::Dropped), 4);
    EXPECT_EQ(dropped.droppedReactionCount, 4);
    ASSERT_EQ(dropped.reactions.size(), 2u);
    EXPECT_EQ(dropped.reactions[1].ints[slot::PartnerCount], 7);

    // Eleven efficiencies, and a species name of 17 characters.
    auto tooMany = ImportChemkin(withSpecies(
        mechanism("H+O+M<=>OH+M 1.0 0 0\n H/2/ O/2/ OH/2/ H2/2/ O2/2/ H2O/2/ AR/2/ "
                  "ABCDEFGHIJKLMNOPQ/2/ X1/2/ X2/2/ X3/2/\n"),
        {"ABCDEFGHIJKLMNOPQ", "X1", "X2", "X3"}));
    EXPECT_TRUE(
        hasMessage(tooMany, ImportSeverity::Refusal, "more than 10 third-body efficiencies"));
    EXPECT_TRUE(hasMessage(tooMany, ImportSeverity::Refusal,
                           "Species 'ABCDEFGHIJKLMNOPQ': its name is over 16 characters"));
}

TEST(ChemkinImport, BrokenMechanismsGiveErrorsWithLineNumbers)
{
    struct Case {
        const char* reactions;
        ImportSeverity severity;
        const char* part;
        int line; // -1: not checked
    };
    const Case cases[] = {
        {"H+OH(+M)<=>H2O(+M) 1.0 0 0\n TROE/0.5 100 1000/\n", ImportSeverity::Error,
         "implies pressure dependence", 39},
        {"H+O2<=>O+OH 1 0 0\nO+OH=>H+O2 1 0 0\n", ImportSeverity::Error, "not marked DUPLICATE",
         40},
        {"H+CH4<=>H2+CH3 1 0 0\n", ImportSeverity::Error, "cannot be read as species", 39},
        {"H+O2<=>O+OH 1 0 0\n H2/2/\n", ImportSeverity::Error, "no '+M'", -1},
        {"H+O2<=>O+OH 1 0\n", ImportSeverity::Error, "three numbers", -1},
        {"H+OH(+M)<=>H2O(+M) 1 0 0\n HIGH/1 0 0/\n", ImportSeverity::Refusal, "HIGH", -1},
    };
    for (const Case& c : cases) {
        auto r = ImportChemkin(mechanism(c.reactions));
        EXPECT_FALSE(r.succeeded()) << c.part;
        EXPECT_TRUE(hasMessage(r, c.severity, c.part, c.line)) << c.part << "\n" << allMessages(r);
    }
    EXPECT_TRUE(
        ImportChemkin(mechanism("H+O2<=>O+OH 1 0 0\nDUP\nO+OH=>H+O2 1 0 0\nDUPLICATE\n"))
            .succeeded());

    // Missing thermo: an error when a reaction needs the species, a note when none does.
    std::string noThermo = mechanism("H+O2<=>O+OH 1 0 0\n");
    noThermo.replace(noThermo.find("H2O AR\nEND"), 10, "H2O AR N2 HE\nEND");
    auto unused = ImportChemkin(noThermo);
    EXPECT_TRUE(unused.succeeded());
    EXPECT_EQ(unused.species.size(), 7u);
    EXPECT_TRUE(hasMessage(unused, ImportSeverity::Warning, "'N2' has no thermo data", 5));
    auto used = ImportChemkin(noThermo.replace(noThermo.find("H+O2<=>"), 7, "N2+O2<=>"));
    EXPECT_TRUE(hasMessage(used, ImportSeverity::Error, "No thermo data found for species 'N2'"));
}

TEST(ChemkinImport, MessyTextSectionsAndThermoPrecedence)
{
    // CRLF, TABs inside the equation, a byte that is not UTF-8 in a comment, unterminated
    // sections, repeated species, a repeated thermo entry for O (bases 5 and 9), and a
    // separate thermo file that the mechanism's own THERMO section overrides for O.
    auto r = ImportChemkin(fixture("messy_mechanism.inp"), fixture("simple_thermo.dat"));
    ASSERT_TRUE(r.succeeded()) << FormatImportMessage(r.messages.front());
    EXPECT_EQ(r.species.size(), 7u);
    EXPECT_TRUE(hasMessage(r, ImportSeverity::Warning, "'H' is declared more than once", 2));
    EXPECT_TRUE(hasMessage(r, ImportSeverity::Warning, "Further thermo entry for species 'O'"));
    EXPECT_TRUE(hasMessage(r, ImportSeverity::Warning, "implicitly ended"));
    EXPECT_DOUBLE_EQ(r.species[1].thermo[1], 5.1); // the mechanism's first O entry
    EXPECT_DOUBLE_EQ(r.species[0].thermo[1], 0.1); // H from the separate file
    // Molecular weight from standard atomic weights: H2O = 2 x 1.008 + 15.999.
    EXPECT_NEAR(r.species[5].thermo[15], 18.015, 1e-12);
    EXPECT_EQ(r.species[5].elements.size(), 2u);
}

} // namespace
} // namespace zarvion::solverfile
