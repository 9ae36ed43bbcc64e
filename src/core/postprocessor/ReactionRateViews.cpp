#include "postprocessor/ReactionRateViews.h"

#include "postprocessor/RowFields.h"
#include "postprocessor/ThermoModule.h"

#include <cmath>

namespace zarvion::postprocessor {

int StoichiometricChange(const solverfile::ReactionInts& ints, int species)
{
    int nu = 0;
    for (int s = 4; s <= 9; ++s) {
        nu += ints[s] == species ? 1 : 0;
    }
    for (int s = 1; s <= 3; ++s) {
        nu -= ints[s] == species ? 1 : 0;
    }
    return nu;
}

double RowConcentrations(const ResultSet& results, std::string_view row, double density,
                         std::vector<double>& concentrations)
{
    const int ns = results.SpeciesCount;
    concentrations.resize(static_cast<std::size_t>(ns + (results.TemperatureMode == 1 ? 1 : 0)));
    const double threshold = results.zeroThreshold;
    for (int i = 1; i <= ns; ++i) {
        double v = FieldValue(row, SpeciesColumn(i));
        if (!(v > threshold)) {
            v = 0.0;
        }
        concentrations[i - 1] = v * density / results.thermo[i - 1][15];
    }
    const double T = FieldValue(row, 1);
    if (results.TemperatureMode == 1) {
        concentrations[ns] = T;
    }
    return T;
}

std::string RateLabel(const PostprocessorState& state, int kind, int reaction,
                      const std::string& speciesName, bool wantLog)
{
    std::string part;
    std::string unit;
    const std::string concUnit =
        state.ConcentrationUnit == 0 ? " (mol/cm^3 sec)" : " (1/cm^3 sec)";
    switch (kind) {
    case RateTemperatureShare: part = "to T Deriv"; unit = " (K/sec)"; break;
    case RateHeatKcal: part = " Heat "; unit = " (kcal/cm^3 sec)"; break;
    case RateHeatKJ: part = " Heat "; unit = " (kJ/cm^3 sec)"; break;
    case RateForward: part = " Forward"; unit = concUnit; break;
    case RateReverse: part = " Reverse"; unit = concUnit; break;
    case RateNet: part = " Net"; unit = concUnit; break;
    case RateSpeciesShare: part = "to {" + speciesName + "} Deriv"; unit = " (mol/g sec)"; break;
    default: break;
    }
    std::string label = "R" + std::to_string(reaction) + "," + part + unit;
    return wantLog ? " Log10(" + label + ")" : label;
}

CurveData PlotReac(PostprocessorState& state, int kind, int reaction,
                   const std::string& reactionName, int species, const std::string& speciesName,
                   bool wantLog)
{
    const ResultSet& r = state.results();
    CurveData out;
    out.name = reactionName;
    out.label = RateLabel(state, kind, reaction, speciesName, wantLog);
    if (reaction < 1 || reaction > r.ReactionCount || kind < -3 || kind > 3) {
        return out;
    }
    const bool wantHeat = kind < 0;
    const bool wantTemperatureDerivative = kind == RateTemperatureShare;
    const double u = state.concentrationFactor();
    int nu = 0;
    if (kind == RateSpeciesShare) {
        nu = StoichiometricChange(r.ReactionInts[reaction - 1], species);
        state.ScaleY = std::fabs(state.ScaleY);
    }
    const SessionConstants& c = state.constants();
    RateWorkspace& ws = state.workspace();
    const int ns = r.SpeciesCount;
    std::vector<std::uint8_t> active(static_cast<std::size_t>(r.ReactionCount), 0);
    active[reaction - 1] = 1;
    std::vector<double> conc;
    std::vector<RatePair> production(static_cast<std::size_t>(ns + 1));
    std::vector<RatePair> rates(static_cast<std::size_t>(r.ReactionCount), RatePair{0.0, 0.0});

    out.values.assign(state.UsedRows.size(), NoValue);
    for (std::size_t k = 0; k < state.UsedRows.size(); ++k) {
        const double rho = state.UsedDensity[k];
        const double T = RowConcentrations(r, state.usedRow(k), rho, conc);
        ComputeReactionRates(conc, production, ws, r.pressureAtm, r.TemperatureMode, T, active,
                             rates, wantHeat, wantTemperatureDerivative);
        const double q = rates[reaction - 1][0];
        const double f = rates[reaction - 1][1];
        double v = 0.0;
        switch (kind) {
        case RateHeatKJ: v = -q * c.GasConstantJ * 0.001; break;
        case RateHeatKcal: v = -q * c.GasConstantCal * 0.001; break;
        case RateTemperatureShare: v = q; break;
        case RateForward: v = u * f; break;
        case RateReverse: v = u * (q - f); break;
        case RateNet: v = u * q; break;
        case RateSpeciesShare: v = nu * q / rho; break;
        default: break;
        }
        out.values[k] = v;
    }
    return out;
}

CurveData DerivativeCurve(PostprocessorState& state, int species, const std::string& name,
                          bool wantLog)
{
    const ResultSet& r = state.results();
    CurveData out;
    out.name = name;
    out.label = "d{" + name + "}/dt" + " (mol/g sec)";
    if (wantLog) {
        out.label = " Log10(" + out.label + ")";
    }
    const int ns = r.SpeciesCount;
    const bool temperature = species == ns + 1;
    if (species < 1 || species > ns + 1 || (temperature && r.TemperatureMode != 1)) {
        return out;
    }
    RateWorkspace& ws = state.workspace();
    std::vector<double> conc;
    std::vector<RatePair> production(static_cast<std::size_t>(ns + 1));
    std::vector<RatePair> rates(static_cast<std::size_t>(r.ReactionCount), RatePair{0.0, 0.0});
    out.values.assign(state.UsedRows.size(), NoValue);
    for (std::size_t k = 0; k < state.UsedRows.size(); ++k) {
        const double rho = state.UsedDensity[k];
        const double T = RowConcentrations(r, state.usedRow(k), rho, conc);
        ComputeReactionRates(conc, production, ws, r.pressureAtm, r.TemperatureMode, T, {},
                             rates, false, false);
        // Species: mol/(cm^3 s) over the density gives mol/(g s); dT/dt is already in K/s.
        out.values[k] = temperature ? production[ns][0] : production[species - 1][0] / rho;
    }
    return out;
}

} // namespace zarvion::postprocessor
