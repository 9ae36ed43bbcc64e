#pragma once
// Sorting a grid by a click on a column header.

#include <QSortFilterProxyModel>

namespace zarvion::gui {

//! A click on the column of the last click reverses its order; a click on another column
//! sorts by it ascending. lastColumn then holds the clicked column.
inline void SortByHeader(QSortFilterProxyModel* grid, int column, int& lastColumn)
{
    Qt::SortOrder order = Qt::AscendingOrder;
    if (column == lastColumn && grid->sortColumn() == column)
        order = grid->sortOrder() == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    grid->sort(column, order);
    lastColumn = column;
}

} // namespace zarvion::gui
