#include "postprocessor/Ranking.h"

namespace zarvion::postprocessor {

void SortRowsByMagnitude(std::vector<std::vector<double>>& table, std::size_t cell)
{
    SortRowsByMagnitude(table, [cell](const std::vector<double>& row) {
        return cell < row.size() ? row[cell] : 0.0;
    });
}

std::size_t CutoffCount(std::span<const double> values, double p)
{
    const std::size_t count = values.size();
    if (p >= 1.0) {
        return 0;
    }
    if (p <= 0.0) {
        return count;
    }
    double total = 0.0;
    for (double v : values) {
        total += std::fabs(v);
    }
    const double limit = total * p;
    if (limit == 0.0) {
        return 0;
    }
    // Walk up from the last row; n is the 1-based row at which the tail sum first exceeds
    // the allowance. Should the sum never exceed it (rounding), every row is droppable.
    std::size_t n = 0;
    double tail = 0.0;
    for (std::size_t i = count; i >= 1; --i) {
        tail += std::fabs(values[i - 1]);
        if (tail > limit) {
            n = i;
            break;
        }
    }
    if (n < count && std::fabs(values[n]) / limit > 0.3) {
        ++n;
    }
    return n;
}

} // namespace zarvion::postprocessor
