#pragma once
// Species columns in their four units and the six mean parameters of the mixture, over the
// used rows of a post-processor state.

#include <array>
#include <limits>
#include <string>
#include <vector>

#include "postprocessor/PostprocessorState.h"
#include "shell/Message.h"

namespace zarvion::postprocessor {

//! "No value" in a computed column.
inline constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

//! One computed column over the used rows, ready for PloConcentration or a text view.
struct CurveData {
    std::vector<double> values; //!< one per used slot; NaN where the row has no value
    std::string name;           //!< the function's name, for messages
    std::string label;          //!< the curve label
    int column = 0;             //!< species column whose zero points PloConcentration drops
    shell::Message error;       //!< an error met on the way (the curve is then not drawn)
};

//! Species quantities of `MoleFract`.
enum SpeciesKind : int {
    KindTemperatureText = -1,
    KindMoleFraction = 0,
    KindMassFraction = 1,
    KindConcentration = 2,
    KindMolesPerGram = 3,
};

//! Options of a curve request.
struct CurveOptions {
    bool wantLog = false;  //!< the "Log10(Y)" option
    bool wantText = false; //!< values for a text view: no filtering, y under the threshold -> 0
};

//! `MoleFract`: species column `column` (species i at i + 2) in the unit of `kind`.
CurveData MoleFract(const PostprocessorState& state, int kind, int column, const std::string& name,
                    CurveOptions options = {});

//! The label of a species quantity, with the scale and log parts of the view.
std::string SpeciesLabel(const PostprocessorState& state, int kind, const std::string& name,
                         bool wantLog);

//! Name, symbol and unit text of a mean parameter `item` (1 to 6) in the state's units.
struct MeanItemText {
    std::string name;
    std::string symbol;
    std::string unit;
};
MeanItemText MeanParameterText(const PostprocessorState& state, int item);

//! `HabdCpUnits`: {"kJ/mol", "J/K mol"} or {"kcal/mol", "cal/K mol"}.
std::array<std::string, 2> HabdCpUnits(bool energyInJoule);

//! `MEANVALF`: one mean parameter over the used rows.
CurveData MEANVALF(const PostprocessorState& state, int item, bool wantLog);

//! The six mean parameters of every used slot (item i at index i - 1); NaN where a row is
//! passed over (S = 0). The numbers behind `MEANVALFTAB`.
struct MeanTable {
    std::vector<std::array<double, 6>> rows;
    shell::Message error;
};
MeanTable MeanParameterTable(const PostprocessorState& state);

//! Result of `EvaluateSpeciesThermo`.
struct SpeciesThermo {
    bool ok = false;
    double hOverRT = 0;
    double cpOverR = 0;
    double sOverR = 0;
    shell::Message error; //!< "Mod1#006. ..." when the evaluation failed
};

//! `EvaluateSpeciesThermo`: the guarded polynomial evaluation of one species.
//! coefficients[1..14] as in a ThermoRecord. Below lowestTemperature all results are 0 and
//! ok is false; ok is true when one of the two ranges was used.
SpeciesThermo EvaluateSpeciesThermo(const double* coefficients, double T, double Tcommon,
                                    const std::string& speciesName, double lowestTemperature);

} // namespace zarvion::postprocessor
