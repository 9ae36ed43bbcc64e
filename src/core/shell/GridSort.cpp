#include "shell/GridSort.h"

namespace zarvion::shell {

void SortByHeader(std::vector<SortKey>& keys, int column, int& lastColumn)
{
    SortKey* existing = nullptr;
    for (auto& key : keys) {
        if (key.column == column) {
            existing = &key;
        }
    }
    if (column == lastColumn && existing != nullptr) {
        existing->ascending = !existing->ascending;
    } else {
        keys.clear();
        keys.push_back({column, true});
    }
    lastColumn = column;
}

} // namespace zarvion::shell
