#include "postprocessor/DataViews.h"

#include "postprocessor/MeanParameters.h"
#include "postprocessor/PostprocessorTexts.h"
#include "postprocessor/RowFields.h"
#include "shell/TextFormat.h"

#include <cmath>

namespace zarvion::postprocessor {

namespace {

std::string field(std::size_t width) { return std::string(width, '@'); }

std::string slotAndTime(std::size_t slot, const std::string& timeText)
{
    bool numeric = false;
    const double t = ParseNumber(timeText, numeric);
    const std::string time = numeric ? shell::Format(t, "0.00000000E+00") : timeText;
    return shell::FormatText(std::to_string(slot), "@@@@@@") +
           shell::FormatText(time, "@@@@@@@@@@@@@@@@@@");
}

std::string fixedValue(double value, const char* pattern, std::size_t width)
{
    if (std::isnan(value)) {
        return std::string(width, ' ');
    }
    return shell::FormatText(shell::Format(value, pattern), field(width));
}

} // namespace

std::string AllData(double value, std::size_t width)
{
    if (std::isnan(value)) {
        return std::string(width, ' ');
    }
    const std::string text = value == 0.0 ? std::string("0") : shell::Format(value, "0.000E+00");
    return shell::FormatText(text, field(width));
}

shell::Message CheckSpeciesSelection(std::size_t selectedCount)
{
    if (selectedCount == 0) {
        return {"In the table there are no selected rows.", shell::StyleWarning, shell::DefaultTitle};
    }
    if (selectedCount > MaxDataViewSpecies) {
        return {"You can view the numeric data for no more than 10 species; \nyou are attempting to view " +
                    std::to_string(selectedCount) + ".",
                shell::StyleWarning, shell::DefaultTitle};
    }
    return {};
}

DataView SpeciesData(const PostprocessorState& state, const std::vector<int>& species, int kind,
                     const std::string& quantityText, int nameSymbols, const DataViewContext& ctx)
{
    DataView view;
    view.title = texts::SpeciesView;
    view.message = CheckSpeciesSelection(species.size());
    if (!view.ok()) {
        return view;
    }
    const std::size_t width = nameSymbols == 16 ? 17 : 13;
    std::vector<CurveData> columns;
    columns.reserve(species.size());
    for (int s : species) {
        columns.push_back(MoleFract(state, kind, SpeciesColumn(s), shell::Trim(state.speciesName(s)),
                                    CurveOptions{false, true}));
    }
    const std::string& nl = ctx.lineEnd;
    std::string& out = view.text;
    out += "  Zarvion, " + shell::FormatDate(ctx.now, "mmm d yyyy") + ", " +
           shell::FormatDate(ctx.now, "hh:mm:ss") + nl;
    out += "  Solver file:  " + ctx.fileName + nl;
    out += " " + nl;
    out += "  " + quantityText + nl;
    out += "    No          Time sec";
    for (int s : species) {
        out += shell::FormatText(shell::Trim(state.speciesName(s)), field(width));
    }
    out += nl;
    for (std::size_t k = 0; k < state.UsedRows.size(); ++k) {
        out += slotAndTime(k + 1, state.UsedTimes[k]);
        for (const CurveData& c : columns) {
            out += AllData(c.values[k], width);
        }
        out += nl;
    }
    return view;
}

DataView MEANVALFTAB(const PostprocessorState& state, const DataViewContext& ctx)
{
    DataView view;
    view.title = texts::MeanParametersView;
    const MeanTable table = MeanParameterTable(state);
    if (!table.error.empty()) {
        view.message = table.error;
        return view;
    }
    const std::string& nl = ctx.lineEnd;
    const std::string col = field(15);
    std::string& out = view.text;
    out += "  Zarvion,  " + shell::FormatDate(ctx.now, "mmm d yyyy") + ",  " +
           shell::FormatDate(ctx.now, "hh:mm:ss") + nl;
    out += "  Solver file:  " + ctx.fileName + nl;
    out += " " + nl;
    out += "Mean Parameters" + nl;
    out += shell::FormatText("No", "@@@@@@") + shell::FormatText("Time (sec)", field(18)) +
           shell::FormatText("T (K)", col) + shell::FormatText("Ro (g/cm^3)", col) +
           shell::FormatText("M (g/mol)", col) +
           shell::FormatText(state.ConcentrationUnit == 0 ? "C (mol/cm^3)" : "C (1/cm^3)", col) +
           shell::FormatText(state.EnergyUnit ? "H (kJ/mol)" : "H (kcal/mol)", col) +
           shell::FormatText(state.EnergyUnit ? "Cp (J/K mol)" : "Cp (cal/K mol)", col) + nl;
    for (std::size_t k = 0; k < table.rows.size(); ++k) {
        const auto& v = table.rows[k]; // items 1 T, 2 Ctot, 3 Ro, 4 M, 5 H, 6 Cp
        out += slotAndTime(k + 1, state.UsedTimes[k]);
        out += fixedValue(v[0], "0.00", 15) + fixedValue(v[2], "0.00E+00", 15) +
               fixedValue(v[3], "0.00", 15) + fixedValue(v[1], "0.00E+00", 15) +
               fixedValue(v[4], "0.000", 15) + fixedValue(v[5], "0.000", 15) + nl;
    }
    return view;
}

} // namespace zarvion::postprocessor
