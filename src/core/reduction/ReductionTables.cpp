#include "reduction/ReductionTables.h"

#include "shell/Error.h"

namespace zarvion::reduction {

void LoadReductionTables(ReductionTables& t, int speciesCount,
                         const std::vector<std::string>& names, int reactionCount,
                         const std::vector<solverfile::ReactionInts>& ints,
                         const std::vector<solverfile::ReactionReals>& reals)
{
    if (speciesCount < 0 || reactionCount < 0 || names.size() < std::size_t(speciesCount) ||
        ints.size() < std::size_t(reactionCount) || reals.size() < std::size_t(reactionCount)) {
        throw Error("reduction tables: counts do not match the rows given");
    }
    t.NumSpecies = speciesCount;
    t.NumReactions = reactionCount;
    t.SpeciesNames.assign(names.begin(), names.begin() + speciesCount);
    t.ReactionInts.assign(ints.begin(), ints.begin() + reactionCount);
    t.ReactionReals.assign(reals.begin(), reals.begin() + reactionCount);
    t.KeptSpecies.assign(speciesCount, false);
    t.KeptReactions.assign(reactionCount, false);
    t.FirstRowConcentrations.assign(speciesCount, 0.0);
    t.RateTable.assign(reactionCount, {});
    t.HeatTable.assign(reactionCount, {});
    t.NetStoichiometry.assign(static_cast<std::size_t>(speciesCount) * reactionCount, 0);
    t.SpeciesReactionCount.assign(speciesCount, 0);
    t.ReactionTexts.assign(reactionCount, "");

    auto name = [&](int s) -> std::string {
        return s >= 1 && s <= speciesCount ? t.SpeciesNames[s - 1] : std::string();
    };
    for (int r = 1; r <= reactionCount; ++r) {
        const auto& row = t.ReactionInts[r - 1];
        std::string left;
        std::string right;
        for (int k = 1; k <= 9; ++k) {
            const int s = row[k];
            if (s <= 0) {
                continue;
            }
            if (s > speciesCount) {
                throw Error("reaction " + std::to_string(r) + ": species " + std::to_string(s) +
                            " out of range");
            }
            auto& entry = t.NetStoichiometry[static_cast<std::size_t>(r - 1) * speciesCount + s - 1];
            std::string& side = k <= 3 ? left : right;
            side += (side.empty() ? "" : " + ") + name(s);
            entry = static_cast<std::int16_t>(entry + (k <= 3 ? -1 : 1));
        }
        t.ReactionTexts[r - 1] = left + "= " + right;
        for (int s = 1; s <= speciesCount; ++s) {
            if (t.net(r, s) != 0) {
                ++t.SpeciesReactionCount[s - 1];
            }
        }
    }
}

} // namespace zarvion::reduction
