#include "postprocessor/PlotData.h"

#include "postprocessor/RowFields.h"

#include <cmath>

namespace zarvion::postprocessor {

PlotCurve PloConcentration(const PostprocessorState& state, const CurveData& curve, bool wantLog)
{
    PlotCurve out;
    out.name = curve.name;
    out.label = curve.label;
    out.windowTitle = "Temporary Chart ";
    const std::size_t n = std::min(curve.values.size(), state.UsedRows.size());
    out.x.assign(n, NullValue);
    out.y.assign(n, NullValue);
    bool anyPoint = false;
    bool anyNonZero = false;
    for (std::size_t k = 0; k < n; ++k) {
        double x = NullValue;
        bool keep = true;
        if (curve.column > 0) {
            keep = FieldValue(state.usedRow(k), curve.column) > state.zeroThreshold();
        }
        if (keep) {
            bool numeric = false;
            const double t = ParseNumber(state.UsedTimes[k], numeric);
            x = numeric ? t * state.ScaleX : NullValue;
        }
        const double value = curve.values[k];
        double y = NullValue;
        if (!std::isnan(value) && value != NullValue && x != NullValue) {
            y = value * state.ScaleY;
        } else {
            x = NullValue;
        }
        if (state.LogX && x != NullValue) {
            if (x > 0) {
                x = std::log10(x);
            } else {
                x = y = NullValue;
            }
        }
        if (wantLog && y != NullValue) {
            if (y > 0) {
                y = std::log10(y);
            } else {
                x = y = NullValue;
            }
        }
        out.x[k] = x;
        out.y[k] = y;
        if (y != NullValue) {
            anyPoint = true;
            anyNonZero = anyNonZero || y != 0.0;
        }
    }
    if (!anyPoint || !anyNonZero) {
        std::string text = "You are attempting to plot the function '" + curve.name;
        text += wantLog ? "' where all values are zero or logarithms of negative numbers. "
                        : "' where all values are zero.";
        out.message = shell::Message{std::move(text), shell::StyleWarning, shell::DefaultTitle};
        out.x.clear();
        out.y.clear();
    }
    return out;
}

} // namespace zarvion::postprocessor
