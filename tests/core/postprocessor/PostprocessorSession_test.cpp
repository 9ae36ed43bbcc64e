// Loading solved files, and physics checks over the solved samples: conservation between the
// production integrals and the species change, and the temperature derivative against the
// stored temperatures. The solved files come from ZARVION_SOLVED_DIR when set, else Samples/.

#include "PostprocessorFixture.h"

#include "postprocessor/PostprocessorSession.h"
#include "postprocessor/ProductionAnalysis.h"
#include "postprocessor/ReactionRateViews.h"
#include "postprocessor/RowFields.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace zarvion::postprocessor {
namespace {

namespace fs = std::filesystem;
using testing::Codata;

fs::path Solved(const std::string& name)
{
    const char* dir = std::getenv("ZARVION_SOLVED_DIR");
    return fs::path(dir ? dir : ZARVION_SOURCE_DIR "/Samples") / name;
}

TEST(PostprocessorSession, ConstantsFromOptionsOrCodata)
{
    const fs::path dir = fs::temp_directory_path() / "zarvion_pp_session_test";
    fs::remove_all(dir);
    fs::create_directories(dir / "AssistFiles");
    // No OPTIONS.txt: CODATA 2018; Boltzmann kept in erg/K, the atmosphere in dyn/cm^2.
    SessionConstants c = LoadSessionConstants(dir);
    EXPECT_DOUBLE_EQ(c.BoltzmannConstant, 1.380649E-16);
    EXPECT_DOUBLE_EQ(c.AtmosphereDyn, 1013250.0);
    // gas constant of densities = N_A k / atm = 82.05736608 cm^3 atm/(mol K) (CODATA value).
    EXPECT_NEAR(c.gasConstantDensity(), 82.05736608, 1e-8);
    {
        std::ofstream o(dir / "AssistFiles" / "OPTIONS.txt");
        for (int i = 1; i <= 11; ++i) o << "\"placeholder\"\n";
        o << "8.5\n2.0\n6.0E+23\n1.4E-23\n100\n0\n";
    }
    c = LoadSessionConstants(dir);
    EXPECT_DOUBLE_EQ(c.GasConstantJ, 8.5);
    EXPECT_DOUBLE_EQ(c.GasConstantCal, 2.0);
    EXPECT_DOUBLE_EQ(c.AtmosphereDyn, 1.0e6);
    fs::remove_all(dir);
}

TEST(PostprocessorSession, LoadAndInterval)
{
    const SessionConstants c = LoadSessionConstants(fs::temp_directory_path() / "no such folder");
    const fs::path unsolved = fs::path(ZARVION_SOURCE_DIR) / "Samples" / "h2o2.txt";
    const LoadedResults missing = LoadForViews(unsolved, c);
    EXPECT_FALSE(missing.ok());
    EXPECT_EQ(missing.message.text,
              "In the file " + unsolved.string() + " there is no output data.");

    LoadedResults loaded = LoadForViews(Solved("h2o2_solved.txt"), c);
    ASSERT_TRUE(loaded.ok()) << loaded.message.text;
    EXPECT_EQ(loaded.fileName, "h2o2_solved.txt");
    PostprocessorState& st = *loaded.state;
    const int rows = st.results().rowCount - 1;
    EXPECT_EQ(st.UsedCount, rows);
    EXPECT_TRUE(ApplyInterval(st, "", "", "").empty());
    EXPECT_EQ(st.IntervalLast, rows);
    EXPECT_TRUE(ApplyInterval(st, "2E-4", "5E-4", "2").empty());
    EXPECT_GT(st.IntervalFirst, 1);
    EXPECT_LT(st.IntervalLast, rows);
    EXPECT_EQ(st.UsedRows.back(), st.IntervalLast);
    EXPECT_FALSE(ApplyInterval(st, "x", "", "").empty());
}

//! Conservation: the sum of all reactions' integrals of a species over the whole table equals
//! its change (y_end - y_start) / W within 1 %, unless the sum is a small difference of large
//! contributions (then it cannot be compared).
void CheckProductionBalance(PostprocessorState& st, const std::vector<std::string>& species)
{
    int compared = 0;
    for (const std::string& name : species) {
        shell::Message m;
        const auto s = st.FindSpec(name, m);
        ASSERT_TRUE(s.has_value()) << m.text;
        const ProductionTable table = ShowReacDeRe(st, *s, true);
        const SumDisplay sum = TemperSum(table, table.rows.size(), true);
        if (sum.smallDifference) continue;
        ++compared;
        EXPECT_NEAR(sum.sum, table.difference, 0.01 * std::fabs(table.difference))
            << name << ": sum of reactions against the change of the species";
    }
    EXPECT_GE(compared, 2);
}

//! dT/dt of the rate routine against central differences of the stored temperature, at rows
//! where the temperature moves by 0.01 to 2 K across the two steps (a step small enough for
//! the difference quotient to stand for the derivative); tolerance 2 %.
void CheckTemperatureDerivative(PostprocessorState& st)
{
    const ResultSet& r = st.results();
    ASSERT_EQ(r.TemperatureMode, 1);
    const CurveData d = DerivativeCurve(st, r.SpeciesCount + 1, "T", false);
    ASSERT_EQ(d.values.size(), st.UsedRows.size());
    double maxRate = 0.0;
    for (double v : d.values) maxRate = std::max(maxRate, std::fabs(v));
    int compared = 0;
    for (std::size_t k = 1; k + 1 < st.UsedRows.size(); ++k) {
        const int row = st.UsedRows[k];
        const double t0 = FieldValue(r.rows[row - 1], 0), t2 = FieldValue(r.rows[row + 1], 0);
        const double T0 = FieldValue(r.rows[row - 1], 1), T2 = FieldValue(r.rows[row + 1], 1);
        const double change = std::fabs(T2 - T0);
        if (change < 0.01 || change > 2.0 || std::fabs(d.values[k]) < 0.01 * maxRate) continue;
        const double fd = (T2 - T0) / (t2 - t0);
        ++compared;
        EXPECT_NEAR(d.values[k], fd, 0.02 * std::fabs(fd)) << "row " << row;
    }
    EXPECT_GE(compared, 5);
}

TEST(SampleAcceptance, ProductionBalanceAndTemperatureDerivative)
{
    const struct {
        const char* file;
        std::vector<std::string> species;
    } samples[] = {{"h2o2_solved.txt", {"H2O", "OH", "H2", "O2", "H"}},
                   {"gri30_solved.txt", {"CO2", "H2O", "CO", "OH", "CH4"}}};
    for (const auto& sample : samples) {
        SCOPED_TRACE(sample.file);
        LoadedResults loaded = LoadForViews(Solved(sample.file), Codata());
        ASSERT_TRUE(loaded.ok()) << loaded.message.text;
        CheckProductionBalance(*loaded.state, sample.species);
        CheckTemperatureDerivative(*loaded.state);
    }
}

} // namespace
} // namespace zarvion::postprocessor
