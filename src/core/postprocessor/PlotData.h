#pragma once
// `PloConcentration`: turns a computed column into the X/Y arrays of a chart curve, with
// the scales, the log options and the missing-point mark, or into the message that nothing
// can be plotted.

#include <string>
#include <vector>

#include "postprocessor/MeanParameters.h"
#include "postprocessor/PostprocessorState.h"
#include "postprocessor/RowFields.h"
#include "shell/Message.h"

namespace zarvion::postprocessor {

//! Arrays for the Temporary Chart; a point without a value has X = Y = NullValue.
struct PlotCurve {
    std::vector<double> x;
    std::vector<double> y;
    std::string name;
    std::string label;
    std::string windowTitle; //!< "Temporary Chart "
    shell::Message message;  //!< non-empty: nothing to plot, the chart does not change
    bool ok() const { return message.empty(); }
};

//! `PloConcentration` over the state's used slots, with ScaleX, ScaleY and LogX.
PlotCurve PloConcentration(const PostprocessorState& state, const CurveData& curve, bool wantLog);

} // namespace zarvion::postprocessor
