#include "postprocessor/PostprocessorSession.h"

#include "postprocessor/ResultsReader.h"
#include "postprocessor/RowFields.h"
#include "shell/SessionState.h"

namespace zarvion::postprocessor {

SessionConstants LoadSessionConstants(const std::filesystem::path& appPath)
{
    shell::SessionState session;
    if (shell::OptionOpen(session, appPath).empty() && session.GasConstantJ > 0 &&
        session.GasConstantCal > 0 && session.AvogadroNumber > 0 &&
        session.BoltzmannConstant > 0 && session.AtmosphereDyn > 0) {
        SessionConstants c;
        c.GasConstantJ = session.GasConstantJ;
        c.GasConstantCal = session.GasConstantCal;
        c.AvogadroNumber = session.AvogadroNumber;
        c.BoltzmannConstant = session.BoltzmannConstant;
        c.AtmosphereDyn = session.AtmosphereDyn;
        c.LowestThermoTemperature = session.LowestThermoTemperature;
        return c;
    }
    return SessionConstants::FromStored(8.314462618, 1.987204259, 6.02214076E+23, 1.380649E-23,
                                        101.325);
}

LoadedResults LoadForViews(const std::filesystem::path& file, const SessionConstants& constants)
{
    LoadedResults out;
    out.fileName = file.filename().string();
    PhysicalConstants physical;
    physical.AvogadroNumber = constants.AvogadroNumber;
    physical.BoltzmannConstant = constants.BoltzmannConstant;
    physical.AtmosphereDyn = constants.AtmosphereDyn;
    ReadOutcome outcome;
    ResultSet results = OPEN_Rich(file, ReaderForm::MenuForm, physical, outcome);
    if (outcome.failed) {
        out.message = outcome.message;
        return out;
    }
    out.state = std::make_unique<PostprocessorState>(std::move(results), constants);
    return out;
}

shell::Message ApplyInterval(PostprocessorState& state, const std::string& from,
                             const std::string& to, const std::string& every)
{
    GeneralFields fields;
    fields.intervalBegin = from.empty() ? IntervalText(state.results().timeBegin) : from;
    fields.intervalEnd = to.empty() ? IntervalText(state.results().timeEnd) : to;
    fields.showEvery = every.empty() ? std::string("1") : every;
    fields.scaleX = "1";
    fields.LogX = false;
    return state.TabGetF(fields);
}

} // namespace zarvion::postprocessor
