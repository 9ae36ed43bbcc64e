#include "shell/GridSort.h"

#include <gtest/gtest.h>

using namespace zarvion::shell;

TEST(SortByHeader, SameColumnReversesOtherColumnRestarts)
{
    std::vector<SortKey> keys = {{7, false}, {2, true}}; // keys set elsewhere
    int last = -1;
    SortByHeader(keys, 3, last);
    ASSERT_EQ(keys.size(), 1u);
    EXPECT_EQ(keys[0].column, 3);
    EXPECT_TRUE(keys[0].ascending);
    EXPECT_EQ(last, 3);
    SortByHeader(keys, 3, last);
    EXPECT_FALSE(keys[0].ascending);
    SortByHeader(keys, 3, last);
    EXPECT_TRUE(keys[0].ascending);
    SortByHeader(keys, 1, last);
    ASSERT_EQ(keys.size(), 1u);
    EXPECT_EQ(keys[0].column, 1);
    EXPECT_TRUE(keys[0].ascending);
    // Keys cleared by someone else: a click on the last column starts ascending again.
    keys.clear();
    SortByHeader(keys, 1, last);
    ASSERT_EQ(keys.size(), 1u);
    EXPECT_TRUE(keys[0].ascending);
}
