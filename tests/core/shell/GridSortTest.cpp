#include "shell/GridSort.h"

#include <gtest/gtest.h>

using namespace zarvion::shell;

TEST(SortByHeader, SameColumnReversesOtherColumnRestarts)
{
    std::vector<SortKey> keys = {{7, false}, {2, true}}; // keys set elsewhere
    int last = -1;
    // Clicks: 3 starts ascending, 3 again reverses twice, 1 restarts, and after someone else
    // cleared the keys a click on the last column starts ascending again.
    const std::pair<int, bool> clicks[] = {{3, true}, {3, false}, {3, true}, {1, true}, {1, true}};
    for (std::size_t k = 0; k < std::size(clicks); ++k) {
        if (k == 4) keys.clear();
        SortByHeader(keys, clicks[k].first, last);
        ASSERT_EQ(keys.size(), 1u) << k;
        EXPECT_EQ(keys[0].column, clicks[k].first) << k;
        EXPECT_EQ(keys[0].ascending, clicks[k].second) << k;
        EXPECT_EQ(last, clicks[k].first) << k;
    }
}
