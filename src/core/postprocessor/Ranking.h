#pragma once
// Ranking of rows by the magnitude of one value, and the flux-share cut-off over such a
// ranking. Shared by the production analysis and by the mechanism reduction.

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <span>
#include <vector>

namespace zarvion::postprocessor {

//! The magnitude used for ranking: |v|, with a NaN ranked below every number so that the
//! order stays a strict weak one.
inline double RankingMagnitude(double v)
{
    return std::isnan(v) ? -1.0 : std::fabs(v);
}

//! `SortRowsByMagnitude`: orders rows by descending magnitude of valueOf(row). Rows of equal
//! magnitude keep their earlier order (stable), as a pass-until-no-swap exchange of
//! neighbours with a strict "less than" test would leave them.
template <class Row, std::invocable<const Row&> ValueOf>
void SortRowsByMagnitude(std::vector<Row>& rows, ValueOf valueOf)
{
    std::stable_sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) {
        return RankingMagnitude(valueOf(a)) > RankingMagnitude(valueOf(b));
    });
}

//! `SortRowsByMagnitude` on a table of numeric rows, ranked on column `cell`.
void SortRowsByMagnitude(std::vector<std::vector<double>>& table, std::size_t cell);

//! `CutoffCount`: how many leading rows of a table already sorted by descending magnitude are
//! kept when the share p of the total absolute flux may be dropped from its tail.
//! p >= 1 gives 0; p <= 0 gives values.size(); a zero total gives 0. A row is dropped only
//! when it belongs to a tail whose total does not exceed p x total; the largest dropped row
//! comes back when it alone is more than 0.3 of that allowance.
std::size_t CutoffCount(std::span<const double> values, double p);

//! `CutoffCount` over rows, reading each row's value through valueOf.
template <class Row, std::invocable<const Row&> ValueOf>
std::size_t CutoffCount(const std::vector<Row>& rows, ValueOf valueOf, double p)
{
    std::vector<double> values;
    values.reserve(rows.size());
    for (const Row& r : rows) {
        values.push_back(valueOf(r));
    }
    return CutoffCount(std::span<const double>(values), p);
}

} // namespace zarvion::postprocessor
