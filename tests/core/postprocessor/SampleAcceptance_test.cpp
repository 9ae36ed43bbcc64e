// Physics checks over the solved sample files: conservation between the production integrals
// and the species change, and the temperature derivative against the stored temperatures.
// The solved files come from ZARVION_SOLVED_DIR when set, else from Samples/.

#include "PostprocessorFixture.h"

#include "postprocessor/PostprocessorSession.h"
#include "postprocessor/ProductionAnalysis.h"
#include "postprocessor/ReactionRateViews.h"
#include "postprocessor/RowFields.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace zarvion::postprocessor {
namespace {

using testing::Codata;

std::filesystem::path SolvedSample(const std::string& name)
{
    if (const char* dir = std::getenv("ZARVION_SOLVED_DIR")) {
        return std::filesystem::path(dir) / name;
    }
    return std::filesystem::path(ZARVION_SOURCE_DIR) / "Samples" / name;
}

std::unique_ptr<PostprocessorState> Open(const std::string& name)
{
    const auto path = SolvedSample(name);
    if (!std::filesystem::exists(path)) {
        return nullptr;
    }
    LoadedResults loaded = LoadForViews(path, Codata());
    EXPECT_TRUE(loaded.ok()) << loaded.message.text;
    return std::move(loaded.state);
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
        if (sum.smallDifference) {
            continue;
        }
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
    for (double v : d.values) {
        maxRate = std::max(maxRate, std::fabs(v));
    }
    int compared = 0;
    for (std::size_t k = 1; k + 1 < st.UsedRows.size(); ++k) {
        const int row = st.UsedRows[k];
        const double t0 = FieldValue(r.rows[row - 1], 0), t2 = FieldValue(r.rows[row + 1], 0);
        const double T0 = FieldValue(r.rows[row - 1], 1), T2 = FieldValue(r.rows[row + 1], 1);
        const double change = std::fabs(T2 - T0);
        if (change < 0.01 || change > 2.0 || std::fabs(d.values[k]) < 0.01 * maxRate) {
            continue;
        }
        const double fd = (T2 - T0) / (t2 - t0);
        ++compared;
        EXPECT_NEAR(d.values[k], fd, 0.02 * std::fabs(fd)) << "row " << row;
    }
    EXPECT_GE(compared, 5);
}

TEST(SampleAcceptance, HydrogenOxygen)
{
    auto st = Open("h2o2_solved.txt");
    if (!st) {
        FAIL() << "the solved H2/O2 sample is missing";
    }
    CheckProductionBalance(*st, {"H2O", "OH", "H2", "O2", "H"});
    CheckTemperatureDerivative(*st);
}

TEST(SampleAcceptance, GriMech)
{
    auto st = Open("gri30_solved.txt");
    if (!st) {
        FAIL() << "the solved GRI-Mech 3.0 sample is missing";
    }
    CheckProductionBalance(*st, {"CO2", "H2O", "CO", "OH", "CH4"});
    CheckTemperatureDerivative(*st);
}

} // namespace
} // namespace zarvion::postprocessor
