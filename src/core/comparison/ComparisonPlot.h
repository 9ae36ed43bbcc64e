#pragma once
// Profiles and relative errors of two loaded result sets, filtered into the points a chart
// receives: Error = |C1 - C2| / (b |C1| + (1 - b) |C2|) on file 1's time grid.

#include <array>
#include <string>
#include <vector>

#include "comparison/ComparisonData.h"
#include "shell/Message.h"

namespace zarvion::comparison {

inline constexpr double NullValue = -99999.0; //!< a point without a value

//! Rows of {time [s], value}.
using Profile = std::vector<std::array<double, 2>>;

//! `TrimProfile`: drops leading rows up to the first value above 0 and trailing rows behind
//! the last value of 0 or more.
Profile TrimProfile(const Profile& table);

//! `InterpolateAt`: linear interpolation at x; NullValue outside the grid, in its last
//! interval, and where two neighbouring times are too close.
double InterpolateAt(double x, const Profile& table);

//! `ErrorProfile`: the relative error of table 2 against table 1 on table 1's trimmed grid;
//! NullValue where either value is 0 or missing, the divisor is 0, or the error is below 1e-6.
Profile ErrorProfile(const Profile& table1, const Profile& table2, double b);

//! Physical constants in the units the profiles use.
struct UnitConstants {
    double AvogadroNumber = 6.02214076e23;   //!< [1/mol]
    double BoltzmannConstant = 1.380649e-16; //!< [erg/K]
    double AtmosphereDyn = 1013250.0;        //!< one atmosphere [dyn/cm^2]
};

//! `UnitFactor`: divides P/T x mole fraction [atm/K] into mol/cm^3 (molecules false) or
//! 1/cm^3 (molecules true).
double UnitFactor(bool molecules, const UnitConstants& constants = {});

//! The settings a plot request reads.
struct PlotSettings {
    bool relativeError = false; //!< "Relative Error" instead of "Concentration/Temperature"
    bool molecules = false;     //!< "1/cm^3" instead of "mol/cm^3"
    bool logX = false;
    bool logY = false;
    double XScale = 1;
    double YScale = 1;
    double b = 0.5;
    UnitConstants constants;
};

//! Which text field a settings refusal selects: 3 X scaling, 4 Y scaling, 5 parameter b.
struct SettingsCheck {
    shell::Message message;
    int field = 0;
};

//! The checks on the scaling texts and on b (b only with relativeError) ahead of a plot;
//! fills XScale, YScale and b of settings when they pass.
SettingsCheck CheckPlotSettings(const std::string& xScaleText, const std::string& yScaleText,
                                const std::string& bText, PlotSettings& settings);

//! One curve for the chart: points with NullValue gaps and the label.
struct PlotCurve {
    std::vector<double> x;
    std::vector<double> y;
    std::string label;
    shell::Message message; //!< a refusal; no curve then
    bool skipped = false;   //!< the species is absent from that file: nothing to draw, no word
};

//! `RedPlotFunction`: mode 0 file 1, 1 file 2, 2 relative error, for entry row of the merged
//! table.
PlotCurve RedPlotFunction(const ComparisonSet& set, int mode, const MergedRow& row,
                          const PlotSettings& settings);

//! Whether the second curve of a concentration plot is added to the chart rather than
//! replacing it: always when the add key was held, else only when file 1 had drawn a curve.
bool SecondCurveAdds(bool addKeyHeld, const MergedRow& row);

} // namespace zarvion::comparison
