#pragma once
// The reduction engine: at every sampled result row, a flux-share cut-off over the reactions
// of each target, closed over the species those reactions need; the union over the rows is
// the reduced mechanism.

#include <cstdint>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "postprocessor/ResultSet.h"
#include "postprocessor/ThermoModule.h"
#include "reduction/ReductionTables.h"
#include "shell/Message.h"

namespace zarvion::reduction {

//! Per-row flags of species or reactions: kept, and kept but not yet examined (pending).
struct RowFlags {
    std::vector<std::uint8_t> kept;
    std::vector<std::uint8_t> pending;

    void reset(std::size_t count)
    {
        kept.assign(count, 0);
        pending.assign(count, 0);
    }
    void keep(int number) // 1-based
    {
        kept[number - 1] = 1;
        pending[number - 1] = 1;
    }
};

//! What a run is asked to do.
struct ReductionRequest {
    std::string reducedPath;
    int stepCount = 0;                     //!< rows 1..stepCount may be analysed
    double temperatureParameter = -1.0;    //!< -1 when temperature is no target
    std::vector<double> speciesParameters; //!< parallel to targetSpecies
    double nonTargetParameter = 0.3;
    std::vector<int> targetSpecies;        //!< species numbers, in table order
    int interval = 1;                      //!< rows 1, 1 + interval, ...
};

//! Progress from 0 to 10 after each analysed row; returning false cancels the run there.
using ReductionProgress = std::function<bool(float value)>;

//! What a run ends with.
struct ReductionOutcome {
    std::vector<shell::Message> messages; //!< in the order the user sees them
    bool fileWritten = false;
    bool cancelled = false;
    bool failed = false; //!< the concentrations could not be computed: nothing written, no word
    int rowsAnalysed = 0;
    //! Faults of the rate evaluation at some row, for the common reporter; the run went on
    //! with the tables as they stood.
    std::vector<std::string> reported;
};

//! `ShowReac` for kinds -2 (halved net rates over density into RateTable) and -3 (halved
//! shares of the temperature derivative into HeatTable) at result row `row` (1-based).
//! A fault of the rate evaluation leaves the table as it stood and is reported in the
//! returned text (empty on success).
std::string ShowReac(int kind, int row, ReductionTables& tables,
                     const postprocessor::ResultSet& results, postprocessor::RateWorkspace& ws);

//! `MoleFractRed` for all species: concentrations of the first result row [mol/cm^3] into
//! FirstRowConcentrations. False when the results have no data row.
bool FirstRowConcentrations(ReductionTables& tables, const postprocessor::ResultSet& results);

//! `CloseOverReactions`: adds the species of every pending reaction (and the third bodies
//! that carry the non-target share of its collision rate), then clears the reaction's pending.
void CloseOverReactions(const ReductionTables& tables, RowFlags& rowReactions,
                        RowFlags& rowSpecies, double nonTargetParameter);

//! The selection of one sampled row, with RateTable and HeatTable filled for that row.
void SelectRow(ReductionTables& tables, const ReductionRequest& request, RowFlags& rowSpecies,
               RowFlags& rowReactions);

//! `ReduceMechanism`: loads the tables from results (sourcePath is the solved file), analyses
//! the sampled rows, writes the reduced file and returns the messages of the run.
ReductionOutcome ReduceMechanism(ReductionTables& tables, const postprocessor::ResultSet& results,
                                 const std::string& sourcePath, const ReductionRequest& request,
                                 const ReductionProgress& progress, const std::tm& stamp);

} // namespace zarvion::reduction
