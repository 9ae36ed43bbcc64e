#include "reduction/ReductionEngine.h"

#include "postprocessor/Ranking.h"
#include "postprocessor/RowFields.h"
#include "reduction/ReducedFileWriter.h"
#include "shell/Error.h"

namespace zarvion::reduction {

namespace {

using postprocessor::CutoffCount;
using postprocessor::SortRowsByMagnitude;

double ValueOf(const RankingRow& r)
{
    return r.value;
}

//! Ranks the reactions in which species s has a non-zero net coefficient by coefficient x rate
//! and marks the leading ones kept and pending; returns how many were selected.
std::size_t SelectSpeciesReactions(const ReductionTables& t, int s, double p,
                                   RowFlags& rowReactions, bool skipKept,
                                   std::vector<RankingRow>& list)
{
    list.clear();
    for (int r = 1; r <= t.NumReactions; ++r) {
        const int nu = t.net(r, s);
        if (nu != 0) {
            list.push_back({r, nu * t.RateTable[r - 1].value});
        }
    }
    SortRowsByMagnitude(list, ValueOf);
    const std::size_t n = CutoffCount(list, ValueOf, p);
    for (std::size_t i = 0; i < n; ++i) {
        const int r = list[i].id;
        if (skipKept && rowReactions.kept[r - 1]) {
            continue;
        }
        rowReactions.keep(r);
    }
    return n;
}

} // namespace

std::string ShowReac(int kind, int row, ReductionTables& t, const postprocessor::ResultSet& results,
                     postprocessor::RateWorkspace& ws)
{
    try {
        const std::string& text = results.rows.at(static_cast<std::size_t>(row));
        const double density = results.density.at(static_cast<std::size_t>(row));
        const int ns = t.NumSpecies;
        const int mode = results.TemperatureMode;
        std::vector<double> conc(static_cast<std::size_t>(ns) + 1, 0.0);
        for (int k = 1; k <= ns; ++k) {
            const double y = postprocessor::FieldValue(text, postprocessor::SpeciesColumn(k));
            conc[k - 1] = y <= results.zeroThreshold ? 0.0 : y * density / results.molecularWeight(k);
        }
        const double T = mode == 1 ? postprocessor::FieldValue(text, 1) : results.initialTemperature;
        conc[ns] = T;
        std::vector<postprocessor::RatePair> production(static_cast<std::size_t>(ns) + 1);
        std::vector<postprocessor::RatePair> rates(static_cast<std::size_t>(t.NumReactions));
        const bool heat = kind == -3;
        postprocessor::ComputeReactionRates(
            std::span<const double>(conc.data(), static_cast<std::size_t>(ns) + (mode == 1 ? 1 : 0)),
            std::span<postprocessor::RatePair>(production.data(), static_cast<std::size_t>(ns) + (mode == 1 ? 1 : 0)),
            ws, results.pressureAtm, mode, T, {}, rates, heat, heat);
        auto& table = heat ? t.HeatTable : t.RateTable;
        table.resize(static_cast<std::size_t>(t.NumReactions));
        for (int r = 1; r <= t.NumReactions; ++r) {
            const double v = heat ? rates[r - 1][0] : rates[r - 1][0] / density;
            table[r - 1] = {r, v / 2.0};
        }
    } catch (const std::exception& e) {
        return e.what();
    }
    return {};
}

bool FirstRowConcentrations(ReductionTables& t, const postprocessor::ResultSet& results)
{
    if (results.rowCount < 2 || results.rows.size() < 2 || results.density.size() < 2) {
        return false;
    }
    t.FirstRowConcentrations.assign(static_cast<std::size_t>(t.NumSpecies), 0.0);
    for (int k = 1; k <= t.NumSpecies; ++k) {
        const double y = postprocessor::FieldValue(results.rows[1], postprocessor::SpeciesColumn(k));
        t.FirstRowConcentrations[k - 1] = y * results.density[1] / results.molecularWeight(k);
    }
    return true;
}

void CloseOverReactions(const ReductionTables& t, RowFlags& rowReactions, RowFlags& rowSpecies,
                        double nonTargetParameter)
{
    std::vector<RankingRow> list;
    for (int r = 1; r <= t.NumReactions; ++r) {
        if (!rowReactions.pending[r - 1]) {
            continue;
        }
        const auto& ints = t.ReactionInts[r - 1];
        for (int k = 1; k <= 9; ++k) {
            const int s = ints[k];
            if (s > 0 && s <= t.NumSpecies && !rowSpecies.kept[s - 1]) {
                rowSpecies.keep(s);
            }
        }
        const int kind = ints[solverfile::slot::ThirdBodyKind];
        const int partners = std::min(ints[solverfile::slot::PartnerCount], 10);
        if (kind == 2) {
            // Third bodies ranked by efficiency x first-row concentration; unlisted ones
            // count with efficiency 1.
            list.resize(static_cast<std::size_t>(t.NumSpecies));
            for (int s = 1; s <= t.NumSpecies; ++s) {
                list[s - 1] = {s, t.FirstRowConcentrations[s - 1]};
            }
            for (int k = 1; k <= partners; ++k) {
                const int p = ints[16 + k];
                if (p >= 1 && p <= t.NumSpecies) {
                    list[p - 1].value =
                        t.ReactionReals[r - 1][11 + k] * t.FirstRowConcentrations[p - 1];
                }
            }
            SortRowsByMagnitude(list, ValueOf);
            const std::size_t n = CutoffCount(list, ValueOf, nonTargetParameter);
            for (std::size_t i = 0; i < n; ++i) {
                const int s = list[i].id;
                if (!rowSpecies.kept[s - 1]) {
                    rowSpecies.keep(s);
                }
            }
        } else if (kind == 0 && partners > 0) {
            const int p = ints[solverfile::slot::FirstPartner];
            if (p >= 1 && p <= t.NumSpecies && !rowSpecies.kept[p - 1]) {
                rowSpecies.keep(p);
            }
        }
        rowReactions.pending[r - 1] = 0;
    }
}

void SelectRow(ReductionTables& t, const ReductionRequest& request, RowFlags& rowSpecies,
               RowFlags& rowReactions)
{
    std::vector<RankingRow> list;
    if (t.TemperatureIsTarget && request.temperatureParameter < 1) {
        list = t.HeatTable;
        SortRowsByMagnitude(list, ValueOf);
        const std::size_t n = CutoffCount(list, ValueOf, request.temperatureParameter);
        for (std::size_t i = 0; i < n; ++i) {
            rowReactions.keep(list[i].id);
        }
    }
    t.TargetSpecies = request.targetSpecies;
    t.TargetCount = static_cast<int>(request.targetSpecies.size());
    for (std::size_t i = 0; i < request.targetSpecies.size(); ++i) {
        const int s = request.targetSpecies[i];
        const double p = request.speciesParameters[i];
        if (p < 1 && t.SpeciesReactionCount[s - 1] > 0 && p >= 0) {
            SelectSpeciesReactions(t, s, p, rowReactions, false, list);
        }
        rowSpecies.kept[s - 1] = 1;
        rowSpecies.pending[s - 1] = 0;
    }
    const double others = request.nonTargetParameter;
    while (true) {
        CloseOverReactions(t, rowReactions, rowSpecies, others);
        bool anyPending = false;
        for (auto f : rowSpecies.pending) {
            anyPending = anyPending || f;
        }
        if (!anyPending) {
            break;
        }
        bool anySelected = false;
        for (int s = 1; s <= t.NumSpecies; ++s) {
            if (!rowSpecies.pending[s - 1]) {
                continue;
            }
            if (others < 1 && t.SpeciesReactionCount[s - 1] > 0 && others >= 0) {
                if (SelectSpeciesReactions(t, s, others, rowReactions, true, list) > 0) {
                    anySelected = true;
                }
            }
            rowSpecies.pending[s - 1] = 0;
        }
        if (!anySelected) {
            break;
        }
    }
}

ReductionOutcome ReduceMechanism(ReductionTables& t, const postprocessor::ResultSet& results,
                                 const std::string& sourcePath, const ReductionRequest& request,
                                 const ReductionProgress& progress, const std::tm& stamp)
{
    ReductionOutcome outcome;
    if (request.speciesParameters.size() != request.targetSpecies.size()) {
        throw Error("reduction: one parameter per target species is required");
    }
    t.ReducedPath = request.reducedPath;
    std::vector<std::string> names(results.columnNames.begin() +
                                       std::min<std::size_t>(3, results.columnNames.size()),
                                   results.columnNames.end());
    LoadReductionTables(t, results.SpeciesCount, names, results.ReactionCount, results.ReactionInts,
                        results.ReactionReals);
    for (int s : request.targetSpecies) {
        if (s < 1 || s > t.NumSpecies) {
            throw Error("reduction: target species " + std::to_string(s) + " out of range");
        }
    }
    t.SourcePath = sourcePath;
    t.TemperatureIsTarget = false;
    t.TargetSpecies = request.targetSpecies;
    t.TargetCount = static_cast<int>(request.targetSpecies.size());

    postprocessor::RateWorkspace ws(results);
    const int interval = std::max(1, request.interval);
    RowFlags rowSpecies;
    RowFlags rowReactions;
    const int lastRow = std::min(request.stepCount, results.rowCount - 1);
    for (int row = 1; row <= request.stepCount; row += interval) {
        rowSpecies.reset(static_cast<std::size_t>(t.NumSpecies));
        rowReactions.reset(static_cast<std::size_t>(t.NumReactions));
        if (row > lastRow) {
            throw Error("reduction: result row " + std::to_string(row) + " does not exist");
        }
        if (auto fault = ShowReac(-2, row, t, results, ws); !fault.empty()) {
            outcome.reported.push_back(std::move(fault));
        }
        if (request.temperatureParameter >= 0) {
            t.TemperatureIsTarget = true;
            if (auto fault = ShowReac(-3, row, t, results, ws); !fault.empty()) {
                outcome.reported.push_back(std::move(fault));
            }
        }
        // The third bodies are ranked at the first result row, whichever row is analysed.
        if (!FirstRowConcentrations(t, results)) {
            outcome.failed = true;
            return outcome;
        }
        SelectRow(t, request, rowSpecies, rowReactions);
        for (int s = 0; s < t.NumSpecies; ++s) {
            if (rowSpecies.kept[s]) {
                t.KeptSpecies[s] = true;
            }
        }
        for (int r = 0; r < t.NumReactions; ++r) {
            if (rowReactions.kept[r]) {
                t.KeptReactions[r] = true;
            }
        }
        ++outcome.rowsAnalysed;
        if (progress && !progress(10.0f * static_cast<float>(row) / static_cast<float>(request.stepCount))) {
            outcome.cancelled = true;
            return outcome;
        }
    }
    t.ReducedSpeciesCount = 0;
    t.ReducedReactionCount = 0;
    for (bool k : t.KeptSpecies) {
        t.ReducedSpeciesCount += k ? 1 : 0;
    }
    for (bool k : t.KeptReactions) {
        t.ReducedReactionCount += k ? 1 : 0;
    }
    if (t.ReducedSpeciesCount == 0 && t.ReducedReactionCount == 0) {
        outcome.messages.push_back(
            {"The reaction mechanism consists of \r\n" + std::to_string(t.ReducedSpeciesCount) +
                 " species, \r\n" + std::to_string(t.ReducedReactionCount) +
                 " reactions. \r\nThe file has not been created.",
             shell::StyleWarning, shell::DefaultTitle});
        return outcome;
    }
    const shell::Message failure = WriteReducedFile(t, request.temperatureParameter,
                                                    request.speciesParameters,
                                                    request.nonTargetParameter, stamp);
    if (!failure.empty()) {
        outcome.messages.push_back(failure);
    } else {
        outcome.fileWritten = true;
    }
    // The success text follows in every case, as the writer passes no failure back.
    outcome.messages.push_back({"Reduced reaction mechanism has been created successfully. \r\n"
                                "The mechanism consists of\r\n" +
                                    std::to_string(t.ReducedSpeciesCount) + " species, \r\n" +
                                    std::to_string(t.ReducedReactionCount) + " reactions.",
                                shell::StyleInformation, shell::DefaultTitle});
    return outcome;
}

} // namespace zarvion::reduction
