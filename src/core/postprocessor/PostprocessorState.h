#pragma once
// The state of one post-processor window without its widgets: the loaded results, the
// session constants and units, the time interval with its thinning, and the scales.
// Every view of the post-processor reads the rows through UsedData's lists.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "postprocessor/ResultSet.h"
#include "shell/Message.h"

namespace zarvion::postprocessor {

class RateWorkspace;

//! Physical constants of the session, in the units the post-processor uses.
struct SessionConstants {
    double GasConstantJ = 0;       //!< [J/(K mol)]
    double GasConstantCal = 0;     //!< [cal/(K mol)]
    double AvogadroNumber = 0;     //!< [1/mol]
    double BoltzmannConstant = 0;  //!< [erg/K] (the stored J/K value x 1E7)
    double AtmosphereDyn = 0;      //!< one atmosphere [dyn/cm^2] (the stored kPa value x 10000)
    double LowestThermoTemperature = 100.0; //!< [K] below it H, Cp, S are reported as 0

    //! Avogadro x Boltzmann / atmosphere [cm^3 atm/(mol K)].
    double gasConstantDensity() const { return AvogadroNumber * BoltzmannConstant / AtmosphereDyn; }

    //! From the values as stored (J/K mol, cal/K mol, 1/mol, J/K, kPa).
    static SessionConstants FromStored(double gasJ, double gasCal, double avogadro,
                                       double boltzmannJ, double atmosphereKPa);
};

//! Result of a field check: an empty message means the value was accepted.
struct FieldCheck {
    shell::Message message;
    double value = 0;
    bool ok() const { return message.empty(); }
};

//! The texts of the "General" tab that TabGetF reads.
struct GeneralFields {
    std::string intervalBegin; //!< `Text2`
    std::string intervalEnd;   //!< `Text3`
    std::string showEvery;     //!< `Text5`
    std::string scaleX;        //!< `Text1`
    bool LogX = false;         //!< `Option4`
};

//! One post-processor window's data state. Holds the ResultSet it was opened on.
class PostprocessorState {
public:
    PostprocessorState(ResultSet results, SessionConstants constants);
    ~PostprocessorState();
    PostprocessorState(const PostprocessorState&) = delete;
    PostprocessorState& operator=(const PostprocessorState&) = delete;

    const ResultSet& results() const { return m_results; }
    const SessionConstants& constants() const { return m_constants; }
    //! cm^3 atm/(mol K): the reader's value when it computed one, else from the constants.
    double gasConstantDensity() const;
    //! The rate workspace of the mechanism, built on first use.
    RateWorkspace& workspace();

    // Units. ConcentrationUnit 0: mol/cm^3, 1: 1/cm^3. EnergyUnit true: kJ/mol and J/K mol.
    int ConcentrationUnit = 0;
    bool EnergyUnit = true;
    //! Factor u of concentrations and rates: 1 or Avogadro's number.
    double concentrationFactor() const;

    // Interval and thinning.
    double IntervalBegin = 0;  //!< [s], rounded through "0.000000E+00"
    double IntervalEnd = 0;    //!< [s], rounded through "0.000000E+00"
    int IntervalFirst = 1;     //!< index into rows
    int IntervalLast = 1;      //!< index into rows
    int ShowEvery = 1;
    int pointCount = 0;        //!< `Text6`, "The number of points"
    int UsedCount = 0;
    std::vector<int> UsedRows;             //!< indexes into results().rows, slot k at k - 1
    std::vector<std::string> UsedTimes;    //!< time field text of each used row
    std::vector<double> UsedDensity;       //!< [g/cm^3]

    // Scales.
    double ScaleX = 1.0;
    double ScaleY = 1.0;
    bool LogX = false;

    //! The row of slot k (0-based).
    std::string_view usedRow(std::size_t slot) const { return m_results.rows[UsedRows[slot]]; }

    //! `UsedData`: finds IntervalFirst/IntervalLast for IntervalBegin/IntervalEnd and
    //! rebuilds the used lists with the thinning ShowEvery.
    void UsedData();

    //! `TabGetF`: checks and takes the interval, the thinning and the X scale; on success
    //! runs UsedData. A refusal carries the exact message and leaves the state untouched.
    shell::Message TabGetF(const GeneralFields& fields);

    //! "Reset": the interval texts for `Text2` and `Text3` that bring back the whole table.
    //! They take effect with the next TabGetF.
    std::pair<std::string, std::string> Reset() const;

    //! `FindSpec`: species number (1-based) of a trimmed name, or the warning.
    std::optional<int> FindSpec(std::string_view name, shell::Message& message) const;

    //! Species name i (1-based) as the table head gives it.
    const std::string& speciesName(int species) const;

    double zeroThreshold() const { return m_results.zeroThreshold; }

private:
    ResultSet m_results;
    SessionConstants m_constants;
    std::unique_ptr<RateWorkspace> m_workspace;
};

//! The check of a Y scale (`TestTxErr`, `MeanFF`): nonzero number, positive for a log axis.
FieldCheck CheckScaleY(std::string_view text, bool logY);

//! The check of the X scale in `TabGetF`.
FieldCheck CheckScaleX(std::string_view text, bool logX);

} // namespace zarvion::postprocessor
