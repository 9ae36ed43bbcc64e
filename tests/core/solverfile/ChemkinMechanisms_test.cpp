// Import of the third-party CHEMKIN mechanisms beside the checkout: the good ones import
// (whole, or with what the format cannot hold listed), the deliberately broken ones give a
// clear message. Counts are those published with each mechanism.

#include "solverfile/ChemkinImport.h"
#include "solverfile/ChemkinWriter.h"
#include "solverfile/SolverFileReader.h"

#include "TestFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace zarvion::solverfile {
namespace {

using zarvion::testing::expectSlots;
namespace fs = std::filesystem;

fs::path shared(const std::string& folder, const std::string& file)
{
    return fs::path(ZARVION_SHARED_DIR) / "mechanisms" / folder / file;
}

ChemkinImport import(const std::string& folder, const std::string& chem,
                     const std::string& therm = "", bool skip = false)
{
    ChemkinOptions options;
    options.skipUnsupported = skip;
    std::optional<fs::path> thermo;
    if (!therm.empty()) thermo = shared(folder, therm);
    return ImportChemkinFiles(shared(folder, chem), thermo, options);
}

std::string firstProblem(const ChemkinImport& r)
{
    for (const auto& m : r.messages) {
        if (m.severity == ImportSeverity::Error || m.severity == ImportSeverity::Refusal) {
            return FormatImportMessage(m);
        }
    }
    return {};
}

int countWith(const ChemkinImport& r, ImportSeverity severity, const std::string& part)
{
    int n = 0;
    for (const auto& m : r.messages) {
        n += m.severity == severity && m.text.find(part) != std::string::npos;
    }
    return n;
}

class SharedMechanisms : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!fs::exists(shared("gri30", "gri30.inp"))) {
            GTEST_SKIP() << "third-party mechanisms not found beside the checkout";
        }
    }
};

TEST_F(SharedMechanisms, GoodMechanismsImportWhole)
{
    // Species and reaction records (a REV with a non-zero reverse rate gives two), as
    // published or counted in the files.
    struct Case {
        const char *folder, *chem, *therm;
        std::size_t species, reactions;
    };
    const char* const dummy = "dummy-thermo.dat";
    const Case cases[] = {
        {"gri30", "gri30.inp", "gri30_thermo.dat", 53, 325},
        {"h2o2", "h2o2.inp", "", 9, 28},
        {"usc-mech-ii", "USC_Mech_ver_II.txt", "thermdat.txt", 111, 784},
        {"cantera-species-names", "species-names.inp", "", 10, 13},
        {"cantera-unterminated-sections", "unterminated-sections.inp", "", 3, 2},
        {"cantera-unterminated-sections2", "unterminated-sections2.inp", "", 3, 2},
        {"cantera-explicit-third-bodies", "explicit-third-bodies.inp", dummy, 6, 5},
        {"cantera-explicit-reverse-rate", "explicit-reverse-rate.inp", dummy, 7, 5},
        {"cantera-sri-falloff", "sri-falloff.inp", dummy, 8, 2},
        {"cantera-photo-reaction", "photo-reaction.inp", dummy, 1, 1},
        {"cantera-third-body-plus-falloff", "third_body_plus_falloff_reaction.inp", "", 3, 2},
    };
    for (const Case& c : cases) {
        auto r = import(c.folder, c.chem, c.therm);
        EXPECT_TRUE(r.succeeded()) << c.folder << ": " << firstProblem(r);
        EXPECT_EQ(r.species.size(), c.species) << c.folder;
        EXPECT_EQ(r.reactions.size(), c.reactions) << c.folder;
        EXPECT_EQ(r.count(ImportSeverity::Dropped), 0) << c.folder;
    }
}

TEST_F(SharedMechanisms, GriMechRecordsAndRoundTrip)
{
    auto r = import("gri30", "gri30.inp", "gri30_thermo.dat");
    ASSERT_TRUE(r.succeeded()) << firstProblem(r);
    // Reaction 1 of GRI-Mech 3.0: 2O+M<=>O2+M, A 1.2E17, n -1, partners H2 2.4, H2O 15.4,
    // CH4 2, CO 1.75, CO2 3.6, C2H6 3, AR 0.83.
    expectSlots(r.reactions[0].ints, {{slot::ThirdBodyKind, 2}, {slot::PartnerCount, 7}});
    expectSlots(r.reactions[0].reals, {{1, 1.2e17}, {13, 15.4}, {18, 0.83}});
    // The most partners: O+CO(+M)<=>CO2(+M) with 8, Lindemann (no TROE).
    int mostPartners = 0;
    for (const auto& rec : r.reactions)
        mostPartners = std::max(mostPartners, rec.ints[slot::PartnerCount]);
    EXPECT_EQ(mostPartners, 8);
    // Molecular weight of CH4 from standard atomic weights: 12.011 + 4 x 1.008 = 16.043.
    auto ch4 =
        std::find_if(r.species.begin(), r.species.end(), [](auto& s) { return s.name == "CH4"; });
    ASSERT_NE(ch4, r.species.end());
    EXPECT_NEAR(ch4->thermo[15], 16.043, 1e-12);

    ProblemSettings p;
    p.TemperatureMode = 1;
    p.initialTemperature = 1400;
    p.finalTime = 0.05;
    p.moleFractions = ParseMoleFractionList("CH4:1,O2:2,N2:7.52");
    auto lines = BuildSolverFileLines(r, p, {"gri30.inp", "gri30_thermo.dat"});
    Mechanism back = ReadMechanismFromLines(lines, "gri30");
    ASSERT_EQ(back.reactions.size(), 325u);
    for (std::size_t j = 0; j < back.reactions.size(); ++j) {
        EXPECT_EQ(back.reactions[j].ints, r.reactions[j].ints) << j + 1;
        for (int s = 1; s <= 21; ++s) {
            double a = back.reactions[j].reals[s];
            double b = r.reactions[j].reals[s];
            EXPECT_LE(std::fabs(a - b), 5e-9 * std::fabs(b)) << j + 1 << " slot " << s;
        }
    }
}

TEST_F(SharedMechanisms, LlnlHeptaneSplitsItsRevReactions)
{
    auto r = import("llnl-nheptane-v3.1", "nc7_ver3.1_mech.txt", "n_heptane_v3.1_therm.dat.txt");
    ASSERT_TRUE(r.succeeded()) << firstProblem(r);
    EXPECT_EQ(r.sourceReactionCount, 2827);
    EXPECT_EQ(r.revSplitCount + r.revZeroCount + r.revForwardOnlyCount, 2431);
    // C6H12OOH3-1<=>OH+CH3CHO+C2H4+C2H4 has a REV whose reverse would need 4 molecules.
    EXPECT_EQ(r.revForwardOnlyCount, 1);
    EXPECT_EQ(r.reactions.size(), 2827u + static_cast<std::size_t>(r.revSplitCount));
    // 654 unique species; seven of them have no thermo and are in no reaction.
    EXPECT_EQ(r.species.size(), 647u);
    EXPECT_EQ(countWith(r, ImportSeverity::Warning, "has no thermo data and is in no reaction"), 7);
    EXPECT_EQ(countWith(r, ImportSeverity::Warning, "declared more than once"), 4);
}

TEST_F(SharedMechanisms, AramcoImportsWithItsPlogReactionsListed)
{
    auto refused =
        import("aramcomech-1.3", "AramcoMech_1.3_C4_chem.dat", "AramcoMech_1.3_therm.dat");
    EXPECT_FALSE(refused.succeeded());
    EXPECT_EQ(refused.count(ImportSeverity::Refusal), 79);
    auto r =
        import("aramcomech-1.3", "AramcoMech_1.3_C4_chem.dat", "AramcoMech_1.3_therm.dat", true);
    ASSERT_TRUE(r.succeeded()) << firstProblem(r);
    EXPECT_EQ(r.species.size(), 253u);
    EXPECT_EQ(r.count(ImportSeverity::Dropped), 79);
    EXPECT_EQ(countWith(r, ImportSeverity::Dropped, "PLOG"), 79);
    EXPECT_EQ(r.reactions.size(), 1542u - 79u);
}

TEST_F(SharedMechanisms, SyntheticInputsImportAsExpected)
{
    // Record counts and success are checked above.
    auto third =
        import("cantera-explicit-third-bodies", "explicit-third-bodies.inp", "dummy-thermo.dat");
    ASSERT_EQ(third.reactions.size(), 5u);
    expectSlots(third.reactions[4].ints, {{slot::PartnerCount, 1}, {slot::ThirdBodyKind, 0}});
    EXPECT_EQ(
        import("cantera-explicit-reverse-rate", "explicit-reverse-rate.inp", "dummy-thermo.dat")
            .revZeroCount,
        1);
    auto sri = import("cantera-sri-falloff", "sri-falloff.inp", "dummy-thermo.dat");
    ASSERT_EQ(sri.reactions.size(), 2u);
    EXPECT_EQ(sri.reactions[0].ints[slot::FalloffKind], 2);
    auto photo = import("cantera-photo-reaction", "photo-reaction.inp", "dummy-thermo.dat");
    ASSERT_EQ(photo.reactions.size(), 1u);
    EXPECT_EQ(photo.reactions[0].ints[slot::Reversible], -1);

    for (const char* name : {"unterminated-sections", "unterminated-sections2"}) {
        auto r = import(std::string("cantera-") + name, std::string(name) + ".inp");
        EXPECT_GT(countWith(r, ImportSeverity::Warning, "implicitly ended"), 0) << name;
    }

    auto tbf = import("cantera-third-body-plus-falloff", "third_body_plus_falloff_reaction.inp");
    ASSERT_EQ(tbf.species.size(), 3u);
    EXPECT_DOUBLE_EQ(tbf.species[0].thermo[18], 1000.0); // CH3 with shifted fields

    // The same kinetics in other units. The custom file was converted with an older Avogadro
    // constant (6.02214179E23, 1.7e-7 relative from CODATA 2018, up to twice that for k0 of
    // a termolecular fall-off), so A-factors agree to 1e-6 relative and the rest to 1e-7.
    auto def = import("cantera-units-default", "units-default.inp", "dummy-thermo.dat");
    auto cus = import("cantera-units-custom", "units-custom.inp", "dummy-thermo.dat");
    ASSERT_TRUE(def.succeeded() && cus.succeeded()) << firstProblem(def) << firstProblem(cus);
    ASSERT_EQ(def.reactions.size(), cus.reactions.size());
    for (std::size_t j = 0; j < def.reactions.size(); ++j) {
        for (int s : {1, 2, 3, 4, 5, 6}) {
            double a = def.reactions[j].reals[s];
            double b = cus.reactions[j].reals[s];
            double tolerance = (s == 1 || s == 4) ? 1e-6 : 1e-7;
            EXPECT_LE(std::fabs(a - b), tolerance * std::fabs(a) + 1e-9) << j + 1 << " slot " << s;
        }
    }
}

TEST_F(SharedMechanisms, BrokenOrUnsupportedInputsGiveClearMessages)
{
    auto missing = import("cantera-h2o2-missing-thermo", "h2o2_missingThermo.inp");
    EXPECT_EQ(countWith(missing, ImportSeverity::Error, "No thermo data found for species 'H2'"),
              1);

    auto falloff = import("cantera-falloff-error", "falloff-error.inp", "dummy-thermo.dat");
    EXPECT_EQ(countWith(falloff, ImportSeverity::Error, "implies pressure dependence"), 1);

    auto mismatch =
        import("cantera-mismatched-third-body", "mismatched-third-body.inp", "gri30_thermo.dat");
    EXPECT_EQ(countWith(mismatch, ImportSeverity::Error, "Third bodies do not match: 'M' and 'AR'"),
              1);

    auto dup = import("cantera-undeclared-duplicate-reactions",
                      "undeclared-duplicate-reactions.inp", "dummy-thermo.dat");
    ASSERT_EQ(countWith(dup, ImportSeverity::Error, "not marked DUPLICATE"), 1);
    for (const auto& m : dup.messages) {
        if (m.severity == ImportSeverity::Error) {
            EXPECT_EQ(m.line, 14);
            EXPECT_NE(m.text.find("line 12"), std::string::npos);
        }
    }

    auto species = import("cantera-duplicate-species", "duplicate-species.inp");
    EXPECT_TRUE(species.succeeded()) << firstProblem(species);
    EXPECT_EQ(species.species.size(), 3u);
    EXPECT_EQ(countWith(species, ImportSeverity::Warning, "declared more than once"), 7);

    auto thermo = import("cantera-duplicate-thermo", "duplicate-thermo.inp");
    EXPECT_TRUE(thermo.succeeded()) << firstProblem(thermo);
    EXPECT_EQ(thermo.species.size(), 4u);
    EXPECT_EQ(countWith(thermo, ImportSeverity::Warning, "Further thermo entry for species 'bar'"),
              1);

    auto high =
        import("cantera-chemically-activated-reaction", "chemically-activated-reaction.inp");
    EXPECT_EQ(countWith(high, ImportSeverity::Refusal, "HIGH"), 1);
    auto stoich = import("cantera-float-stoich", "float-stoich.inp", "dummy-thermo.dat");
    EXPECT_EQ(countWith(stoich, ImportSeverity::Refusal, "non-integer coefficient"), 2);
    auto ford =
        import("cantera-explicit-forward-order", "explicit-forward-order.inp", "dummy-thermo.dat");
    EXPECT_EQ(countWith(ford, ImportSeverity::Refusal, "FORD"), 3);
    auto pdep = import("cantera-pdep-test", "pdep-test.inp");
    EXPECT_EQ(countWith(pdep, ImportSeverity::Refusal, "PLOG"), 4);
    EXPECT_EQ(countWith(pdep, ImportSeverity::Refusal, "CHEB"), 3);
    auto soot = import("cantera-soot", "soot.inp", "soot-therm.dat");
    EXPECT_EQ(countWith(soot, ImportSeverity::Refusal, "non-integer coefficient"), 6);
}

} // namespace
} // namespace zarvion::solverfile
