#include "postprocessor/Ranking.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zarvion::postprocessor {
namespace {

struct Row {
    int number;
    double value;
};

std::vector<int> numbers(const std::vector<Row>& rows)
{
    std::vector<int> out;
    for (const Row& r : rows) {
        out.push_back(r.number);
    }
    return out;
}

TEST(Ranking, SortsByDescendingMagnitudeAndKeepsTiesInOrder)
{
    // Ties (|-2| = |2|, three zeros) must keep ascending numbers, as a neighbour exchange
    // with a strict test leaves them.
    std::vector<Row> rows{{1, 0.0}, {2, -2.0}, {3, 5.0}, {4, 2.0}, {5, 0.0}, {6, -7.5}, {7, 0.0}};
    SortRowsByMagnitude(rows, [](const Row& r) { return r.value; });
    EXPECT_EQ(numbers(rows), (std::vector<int>{6, 3, 2, 4, 1, 5, 7}));

    std::vector<std::vector<double>> table{{1, 0, 1e-3}, {2, 0, -1e-2}, {3, 0, 1e-2}, {4, 0, 1}};
    SortRowsByMagnitude(table, 2);
    ASSERT_EQ(table.size(), 4u);
    EXPECT_EQ(table[0][0], 4);
    EXPECT_EQ(table[1][0], 2); // tie with 3, earlier number first
    EXPECT_EQ(table[2][0], 3);
    EXPECT_EQ(table[3][0], 1);
    EXPECT_EQ(table[1][2], -1e-2); // whole rows move together
}

TEST(Ranking, NanNeverBreaksTheSort)
{
    std::vector<Row> rows{{1, std::nan("")}, {2, 1.0}, {3, std::nan("")}, {4, -3.0}};
    SortRowsByMagnitude(rows, [](const Row& r) { return r.value; });
    EXPECT_EQ(numbers(rows), (std::vector<int>{4, 2, 1, 3}));
}

TEST(Ranking, CutoffCountLimitsAndTail)
{
    // Hand calculations of the cut-off: t = p x total; rows are dropped from the end while
    // their sum does not exceed t, and the last dropped row comes back when above 0.3 t.
    struct Case {
        std::vector<double> values;
        double p;
        std::size_t count;
    };
    const std::vector<double> v{5.0, -3.0, 1.0, 1.0}; // total 10
    const std::vector<Case> cases = {
        {v, 1.0, 0}, {v, 1.5, 0}, {v, 0.0, 4}, {v, -0.1, 4}, {{}, 0.5, 0},
        {{0.0, 0.0, 0.0}, 0.5, 0}, // zero allowance
        {{0.0, 0.0, 0.0}, 0.0, 3}, // p = 0 keeps even zero rows
        // t = 2.5: tail 1, 2, 5 > 2.5 at row 2, n = 2; row 3: 1 / 2.5 = 0.4 > 0.3, n = 3
        {v, 0.25, 3},
        // t = 4.5: tail 1, 2, 5 > 4.5 at row 2; row 3: 1 / 4.5 = 0.222 <= 0.3, n = 2
        {v, 0.45, 2},
        // t = 0.5: the last row alone exceeds it, n = count
        {v, 0.05, 4},
        // total 10, t = 3 equal to the tail sum 1 + 2 is not exceeded; row 2: 2/3 > 0.3
        {{7.0, 2.0, 1.0}, 0.3, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(::testing::Message() << "p = " << c.p << ", " << c.values.size() << " rows");
        EXPECT_EQ(CutoffCount(c.values, c.p), c.count);
    }
}

TEST(Ranking, CutoffCountOverRows)
{
    std::vector<Row> rows{{1, 8.0}, {2, -1.0}, {3, 0.5}, {4, 0.5}};
    // total 10, p = 0.2, t = 2: tail 0.5, 1, 2 (not > 2), 10 > 2 at row 1; row 2: 1/2 > 0.3.
    EXPECT_EQ(CutoffCount(rows, [](const Row& r) { return r.value; }, 0.2), 2u);
}

} // namespace
} // namespace zarvion::postprocessor
