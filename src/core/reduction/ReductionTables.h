#pragma once
// The tables of one reduction run: the source mechanism in ranking form, the per-row ranking
// tables, and the union of what the sampled rows kept.

#include <cstdint>
#include <string>
#include <vector>

#include "solverfile/Mechanism.h"

namespace zarvion::reduction {

//! One row of a ranking list: an identifying number (reaction or species, 1-based) and the
//! value ranked by magnitude.
struct RankingRow {
    int id = 0;
    double value = 0;
};

//! `ReductionTables`. Species and reactions are numbered from 1 as in the source file; the
//! vectors are 0-based (species s at s - 1) unless noted.
struct ReductionTables {
    int NumSpecies = 0;
    int NumReactions = 0;
    std::vector<std::string> SpeciesNames;
    std::vector<solverfile::ReactionInts> ReactionInts;   //!< slots 1..26 as in the file
    std::vector<solverfile::ReactionReals> ReactionReals; //!< slots 1..25 as in the file
    std::vector<std::string> ReactionTexts;
    //! NetStoichiometry[(r - 1) * NumSpecies + (s - 1)]: net coefficient of s in r.
    std::vector<std::int16_t> NetStoichiometry;
    std::vector<int> SpeciesReactionCount;
    //! Per reaction r (at r - 1): the reactions' net rate over density, halved.
    std::vector<RankingRow> RateTable;
    //! Per reaction: the share of the temperature derivative, halved; sorted when used.
    std::vector<RankingRow> HeatTable;
    std::vector<double> FirstRowConcentrations; //!< [mol/cm^3]
    std::vector<bool> KeptSpecies;
    std::vector<bool> KeptReactions;
    int TargetCount = 0;
    std::vector<int> TargetSpecies; //!< species numbers, in table order
    bool TemperatureIsTarget = false;
    int ReducedSpeciesCount = 0;
    int ReducedReactionCount = 0;
    std::string SourcePath;
    std::string ReducedPath;

    std::int16_t net(int reaction, int species) const
    {
        return NetStoichiometry[static_cast<std::size_t>(reaction - 1) * NumSpecies + species - 1];
    }
};

//! `LoadReductionTables`: fills the mechanism part, clears the kept sets, builds
//! `ReactionTexts`, `NetStoichiometry` and `SpeciesReactionCount`.
void LoadReductionTables(ReductionTables& tables, int speciesCount,
                         const std::vector<std::string>& names, int reactionCount,
                         const std::vector<solverfile::ReactionInts>& ints,
                         const std::vector<solverfile::ReactionReals>& reals);

} // namespace zarvion::reduction
