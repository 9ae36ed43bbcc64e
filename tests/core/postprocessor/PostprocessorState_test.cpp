#include "PostprocessorFixture.h"

#include "postprocessor/PostprocessorState.h"

#include <gtest/gtest.h>

namespace zarvion::postprocessor {
namespace {

using namespace testing;

//! Ten data rows at t = 0, 1, ..., 9 s.
ResultSet TenRows()
{
    std::vector<FixtureState> s;
    for (int k = 0; k < 10; ++k) s.push_back({k * 1.0, 1000.0, {0.3, 0.0, 0.7, 0.0}});
    return MakeResults(s);
}

TEST(UsedData, WholeTableOnLoad)
{
    PostprocessorState st(TenRows(), Codata());
    EXPECT_EQ((std::array{st.IntervalFirst, st.IntervalLast, st.pointCount, st.UsedCount}),
              (std::array{1, 10, 10, 10}));
    EXPECT_EQ(st.UsedTimes.front(), "0.000000000E+00");
    EXPECT_EQ(st.UsedTimes.back(), "9.000000000E+00");
    ASSERT_EQ(st.UsedDensity.size(), 10u);
    EXPECT_DOUBLE_EQ(st.UsedDensity[3], st.results().density[4]);
}

TEST(UsedData, IntervalBoundsWithToleranceAndLoweredStart)
{
    // Row k holds t = k - 1. The start is the first row at or above the begin less 1E-4 of a
    // step, lowered by one; the end is the first row at or above the end, else the last row;
    // both bounds then take the times of their rows.
    struct Case {
        double begin, end;
        std::vector<int> rows;
    };
    const std::vector<Case> cases = {
        {3.5, 6.5, {4, 5, 6, 7, 8}}, // inside steps: t = 4 lowered to t = 3, end at t = 7
        {3.0, 6.0, {4, 5, 6, 7}},    // on rows: past t = 3 by the tolerance, lowered back
        {4.2, 4.6, {5, 6}},          // both ends inside one step still give two rows
        {8.0, 100.0, {9, 10}},       // an end beyond the table runs to the last row
    };
    PostprocessorState st(TenRows(), Codata());
    for (const Case& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.begin << " - " << c.end);
        st.IntervalBegin = c.begin;
        st.IntervalEnd = c.end;
        st.UsedData();
        EXPECT_EQ(st.UsedRows, c.rows);
        EXPECT_EQ(st.IntervalFirst, c.rows.front());
        EXPECT_EQ(st.IntervalLast, c.rows.back());
        EXPECT_EQ(st.pointCount, static_cast<int>(c.rows.size()));
        EXPECT_DOUBLE_EQ(st.IntervalBegin, c.rows.front() - 1.0);
        EXPECT_DOUBLE_EQ(st.IntervalEnd, c.rows.back() - 1.0);
    }
}

TEST(UsedData, ThinningKeepsTheEndOnTheList)
{
    PostprocessorState st(TenRows(), Codata());
    st.ShowEvery = 3; // 10 rows: 1, 4, 7, 10 - the end is on the list once
    st.UsedData();
    EXPECT_EQ(st.UsedRows, (std::vector<int>{1, 4, 7, 10}));
    EXPECT_EQ(st.UsedCount, 4);
    st.ShowEvery = 4; // 1, 5, 9, then the end appended
    st.UsedData();
    EXPECT_EQ(st.UsedRows, (std::vector<int>{1, 5, 9, 10}));
    EXPECT_EQ(st.UsedTimes.back(), "9.000000000E+00");
    // 10 / 6 < 2: nothing is rebuilt, the lists of the last call stay.
    st.ShowEvery = 6;
    st.UsedData();
    EXPECT_EQ(st.UsedRows, (std::vector<int>{1, 5, 9, 10}));
    EXPECT_EQ(st.pointCount, 10);
}

TEST(PostprocessorFields, TabGetFChecksAndApplies)
{
    PostprocessorState st(TenRows(), Codata());
    GeneralFields f{"2", "5", "1", "0", false};
    EXPECT_EQ(st.TabGetF(f).text, "Scaling factor for X-axis, please enter a nonzero number.");
    f.scaleX = "abc";
    EXPECT_EQ(st.TabGetF(f).text, "Scaling factor for X-axis, please enter a nonzero number.");
    f.scaleX = "-2";
    f.LogX = true;
    const shell::Message m = st.TabGetF(f);
    EXPECT_EQ(m.text, "Scaling factor for logarithmic X-axis, please enter a positive number.");
    EXPECT_EQ(m.style, shell::StyleWarning);
    EXPECT_EQ(m.title, "ZARVION");
    EXPECT_EQ(st.IntervalFirst, 1); // a refusal leaves the state as it was
    f.showEvery = "0";
    f.scaleX = "2";
    EXPECT_FALSE(st.TabGetF(f).empty());
    f.showEvery = "1";
    f.intervalBegin = "x";
    EXPECT_FALSE(st.TabGetF(f).empty());
    f.intervalBegin = "2";
    EXPECT_TRUE(st.TabGetF(f).empty());
    EXPECT_DOUBLE_EQ(st.ScaleX, 2.0);
    EXPECT_TRUE(st.LogX);
    EXPECT_EQ(st.UsedRows, (std::vector<int>{3, 4, 5, 6}));
}

TEST(PostprocessorFields, ScaleChecks)
{
    for (const char* bad : {"", "  ", "x1", "0", "0.0"})
        EXPECT_EQ(CheckScaleY(bad, false).message.text,
                  "Scaling factor, please enter a nonzero number.") << bad;
    EXPECT_EQ(CheckScaleY("-1", true).message.text,
              "Scaling factor for logarithmic Y-axis, please enter a positive number.");
    const FieldCheck ok = CheckScaleY("-1", false);
    EXPECT_TRUE(ok.ok());
    EXPECT_DOUBLE_EQ(ok.value, -1.0);
    EXPECT_EQ(CheckScaleX("0", true).message.text,
              "Scaling factor for X-axis, please enter a nonzero number.");
}

TEST(PostprocessorFields, FindSpecAndReset)
{
    PostprocessorState st(TenRows(), Codata());
    shell::Message m;
    EXPECT_EQ(st.FindSpec("  N ", m), 3);
    EXPECT_TRUE(m.empty());
    EXPECT_FALSE(st.FindSpec("Q", m).has_value());
    EXPECT_EQ(m.text, "In the species list, the species 'Q' not found. ");
    EXPECT_FALSE(st.FindSpec("", m).has_value());
    EXPECT_EQ(m.text, "In the species list, the species '' not found. ");
    // The head's names T(K) and Ro are no species.
    EXPECT_FALSE(st.FindSpec("Ro", m).has_value());

    EXPECT_EQ(st.Reset(),
              (std::pair<std::string, std::string>{"0.000000E+00  ", "9.000000E+00  "}));
}

} // namespace
} // namespace zarvion::postprocessor
