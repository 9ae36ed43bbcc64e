#include "postprocessor/PostprocessorSession.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace zarvion::postprocessor {
namespace {

namespace fs = std::filesystem;

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
    const fs::path sample = fs::path(ZARVION_SOURCE_DIR) / "Samples" / "h2o2_solved.txt";
    if (!fs::exists(sample)) {
        GTEST_SKIP() << "no solved H2/O2 sample";
    }
    const SessionConstants c = LoadSessionConstants(fs::temp_directory_path() / "no such folder");
    const fs::path unsolved = fs::path(ZARVION_SOURCE_DIR) / "Samples" / "h2o2.txt";
    LoadedResults missing = LoadForViews(unsolved, c);
    EXPECT_FALSE(missing.ok());
    EXPECT_EQ(missing.message.text, "In the file " + unsolved.string() + " there is no output data.");

    LoadedResults loaded = LoadForViews(sample, c);
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

} // namespace
} // namespace zarvion::postprocessor
