#include "PostprocessorFixture.h"

#include "postprocessor/DataViews.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace zarvion::postprocessor {
namespace {

using testing::Codata;
using testing::FourRows;
using testing::MakeResults;

std::string ReadGolden(const std::string& name)
{
    std::ifstream in(std::string(ZARVION_SOURCE_DIR) + "/tests/data/postprocessor/" + name,
                     std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

DataViewContext Context()
{
    DataViewContext ctx;
    ctx.fileName = "fixture.txt";
    ctx.now.tm_year = 126;
    ctx.now.tm_mon = 2;
    ctx.now.tm_mday = 5;
    ctx.now.tm_hour = 14;
    ctx.now.tm_min = 7;
    ctx.now.tm_sec = 9;
    return ctx;
}

// The golden files are written by hand from the layout: slot "@@@@@@", time through
// "0.00000000E+00" in 18, values in 13 (names of 12 symbols) or 15 (mean parameters).
TEST(DataViews, SpeciesLayoutByteForByte)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    const DataView v = SpeciesData(st, {1, 2, 4}, 0, "Mole fraction", 12, Context());
    ASSERT_TRUE(v.ok());
    EXPECT_EQ(v.title, "Species");
    EXPECT_EQ(v.text, ReadGolden("mole_fraction_view.txt"));
}

TEST(DataViews, MeanParameterLayoutByteForByte)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    const DataView v = MEANVALFTAB(st, Context());
    ASSERT_TRUE(v.ok());
    EXPECT_EQ(v.title, "Mean Parameters");
    EXPECT_EQ(v.text, ReadGolden("mean_parameters_view.txt"));
}

TEST(DataViews, SixteenSymbolsThinningAndUnits)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    st.ShowEvery = 2; // slots: rows 1 and 3, then the end row 4
    st.UsedData();
    DataViewContext ctx = Context();
    ctx.lineEnd = "\n";
    const DataView v = SpeciesData(st, {3}, 1, "Mass fraction", 16, ctx);
    const std::string expectedTail = "    No          Time sec                N\n"
                                     "     1    0.00000000E+00        7.000E-01\n"
                                     "     2    1.00000000E+00        7.000E-01\n"
                                     "     3    1.50000000E+00        7.000E-01\n";
    ASSERT_GE(v.text.size(), expectedTail.size());
    EXPECT_EQ(v.text.substr(v.text.size() - expectedTail.size()), expectedTail);

    st.ConcentrationUnit = 1;
    st.EnergyUnit = false;
    const DataView m = MEANVALFTAB(st, ctx);
    EXPECT_NE(m.text.find("     C (1/cm^3)   H (kcal/mol) Cp (cal/K mol)\n"), std::string::npos)
        << m.text;
}

TEST(DataViews, SelectionLimitOfTen)
{
    PostprocessorState st(MakeResults(FourRows()), Codata());
    EXPECT_EQ(CheckSpeciesSelection(0).text, "In the table there are no selected rows.");
    EXPECT_TRUE(CheckSpeciesSelection(10).empty());
    const shell::Message m = CheckSpeciesSelection(11);
    EXPECT_EQ(m.text, "You can view the numeric data for no more than 10 species; \n"
                      "you are attempting to view 11.");
    EXPECT_EQ(m.style, shell::StyleWarning);
    const DataView v = SpeciesData(st, std::vector<int>(11, 1), 0, "Mole fraction", 12, Context());
    EXPECT_FALSE(v.ok());
    EXPECT_TRUE(v.text.empty());
}

TEST(DataViews, AllDataFormat)
{
    EXPECT_EQ(AllData(0.0, 13), "            0");
    EXPECT_EQ(AllData(1.23456e-7, 13), "    1.235E-07");
    EXPECT_EQ(AllData(-2.5, 17), "       -2.500E+00");
}

} // namespace
} // namespace zarvion::postprocessor
