#pragma once
// The sort keys a click on a grid's column header leaves behind.

#include <vector>

namespace zarvion::shell {

//! One sort key of a grid.
struct SortKey {
    int column = 0;
    bool ascending = true;
};

//! A click on a column header: the column of the last click reverses its sort order; another
//! column clears the keys and sorts by itself, ascending. `lastColumn` then holds the column.
void SortByHeader(std::vector<SortKey>& keys, int column, int& lastColumn);

} // namespace zarvion::shell
