#pragma once
// Rates of one reaction in seven forms, and the derivative of one species or of the
// temperature, over the used rows.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "postprocessor/MeanParameters.h"
#include "postprocessor/PostprocessorState.h"

namespace zarvion::postprocessor {

//! `RateKind` of `PlotReac`.
enum RateKind : int {
    RateTemperatureShare = -3, //!< contribution to dT/dt [K/s]
    RateHeatKcal = -2,         //!< heat release [kcal/(cm^3 s)]
    RateHeatKJ = -1,           //!< heat release [kJ/(cm^3 s)]
    RateForward = 0,
    RateReverse = 1,           //!< as a negative number
    RateNet = 2,
    RateSpeciesShare = 3,      //!< contribution to d{s}/dt [mol/(g s)]
};

//! Number of times species s stands in the product slots minus in the reactant slots.
int StoichiometricChange(const solverfile::ReactionInts& ints, int species);

//! Concentrations of a row for the rate routine [mol/cm^3]: species values at or below the
//! zero threshold (or not numeric) enter as 0; with TemperatureMode 1 the row's temperature
//! goes to concentrations[NS]. Returns the row's temperature [K].
double RowConcentrations(const ResultSet& results, std::string_view row, double density,
                         std::vector<double>& concentrations);

//! The label of `PlotReac`.
std::string RateLabel(const PostprocessorState& state, int kind, int reaction,
                      const std::string& speciesName, bool wantLog);

//! `PlotReac`: reaction j's rate in form `kind`; `species` only for RateSpeciesShare, whose
//! request also turns the view's Y scale into its absolute value.
CurveData PlotReac(PostprocessorState& state, int kind, int reaction,
                   const std::string& reactionName, int species, const std::string& speciesName,
                   bool wantLog);

//! `DerivativeCurve`: d{s}/dt [mol/(g s)] of species s, or with s = NS + 1 (temperature
//! mode 1 only) the temperature derivative [K/s].
CurveData DerivativeCurve(PostprocessorState& state, int species, const std::string& name,
                          bool wantLog);

} // namespace zarvion::postprocessor
