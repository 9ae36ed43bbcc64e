#pragma once
// Sorting a grid by a click on a column header, with the sort keys of the core rule.

#include <QSortFilterProxyModel>
#include <vector>

#include "shell/GridSort.h"

namespace zarvion::gui {

//! Applies a header click to the grid: the keys follow shell::SortByHeader, and the view
//! sorts by the first key.
inline void SortByHeader(QSortFilterProxyModel* grid, std::vector<shell::SortKey>& keys,
                         int column, int& lastColumn)
{
    shell::SortByHeader(keys, column, lastColumn);
    if (!keys.empty())
        grid->sort(keys.front().column, keys.front().ascending ? Qt::AscendingOrder
                                                               : Qt::DescendingOrder);
}

} // namespace zarvion::gui
