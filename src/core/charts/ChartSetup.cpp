#include "charts/ChartSetup.h"

#include "charts/ChartFile.h"
#include "charts/ChartInteraction.h"
#include "shell/TextFormat.h"

#include <algorithm>
#include <cmath>

namespace zarvion::charts {

namespace {

std::string boundText(double v)
{
    return shell::Format(v, "0.######E+00");
}

std::string tickText(double v)
{
    return shell::ShortestText(v);
}

void dataRange(const ChartProperties& chart, bool xAxis, double& lo, double& hi)
{
    bool any = false;
    lo = hi = 0.0;
    for (const auto& s : chart.subsets) {
        for (double v : xAxis ? s.x : s.y) {
            if (!IsValue(v)) {
                continue;
            }
            lo = any ? std::min(lo, v) : v;
            hi = any ? std::max(hi, v) : v;
            any = true;
        }
    }
}

AxisFields axisFields(const ChartProperties& chart, bool xAxis)
{
    const AxisSettings& a = xAxis ? chart.xAxis : chart.yAxis;
    AxisFields f;
    f.mode = a.manualScale == 0 ? AxisAuto
                                : (a.logScale || a.manualScale == 2 ? AxisLog : AxisLinear);
    double lo = a.manualMin;
    double hi = a.manualMax;
    if (a.manualScale == 0 && lo == 0.0 && hi == 0.0) {
        dataRange(chart, xAxis, lo, hi); // no bounds of its own: show the data's
    }
    f.maximum = boundText(hi);
    f.minimum = boundText(lo);
    f.majorTicks = tickText(a.majorTick);
    f.minorTicks = tickText(a.minorTick);
    f.digits = DigitsOfPattern(a.numberPattern);
    return f;
}

bool integerIn(const std::string& text, int lo, int hi)
{
    const auto v = shell::ToDouble(text);
    return v && std::floor(*v) == *v && *v >= lo && *v <= hi;
}

std::optional<SetupFault> validateAxis(const AxisFields& f, const std::string& axis,
                                       const std::array<const char*, 4>& boxes)
{
    auto fault = [&](const char* box, std::string text) {
        return SetupFault{AxesTab, box, shell::Message{std::move(text)}};
    };
    if (f.mode == AxisAuto) {
        return std::nullopt;
    }
    const auto hi = shell::ToDouble(f.maximum);
    if (!hi) {
        return fault(boxes[0], "Maximum " + axis + " value, please enter a number.");
    }
    const auto lo = shell::ToDouble(f.minimum);
    if (!lo) {
        return fault(boxes[1], "Minimum " + axis + " value, please enter a number.");
    }
    if (*hi < *lo) {
        return fault(boxes[0], "The maximum " + axis + " value is less than the minimum " + axis +
                                   " value. Enter correct values.");
    }
    if (f.mode == AxisLinear) {
        if (!integerIn(f.majorTicks, 1, 20)) {
            return fault(boxes[2], "The major tick number of the " + axis +
                                       ", please enter an integer on the interval [1, 20].");
        }
        if (!integerIn(f.minorTicks, 1, 10)) {
            return fault(boxes[3], "The minor tick number of the " + axis +
                                       ", please enter an integer on the interval [1, 10].");
        }
    }
    if (f.mode == AxisLog && !(*lo > 0.0)) {
        return fault(boxes[1], "The " + axis +
                                   " contains negative values or 0, the logarithmic scale cannot "
                                   "be created.");
    }
    return std::nullopt;
}

void applyAxis(AxisSettings& a, const AxisFields& f)
{
    if (!f.show) {
        return;
    }
    a.manualScale = f.mode;
    a.logScale = f.mode == AxisLog;
    if (f.mode != AxisAuto) {
        a.manualMax = *shell::ToDouble(f.maximum);
        a.manualMin = *shell::ToDouble(f.minimum);
    }
    if (f.mode == AxisLinear) {
        a.majorTick = *shell::ToDouble(f.majorTicks);
        a.minorTick = *shell::ToDouble(f.minorTicks);
    }
    a.numberPattern = OutputFormat(f.digits);
}

} // namespace

std::string SetupCaption(const std::string& chartCaption)
{
    return "Plot Setup " + chartCaption;
}

std::string OutputFormat(int digits)
{
    return "0." + std::string(static_cast<std::size_t>(std::max(digits - 1, 0)), '0') + "E+00";
}

int DigitsOfPattern(const std::string& pattern, int fallback)
{
    if (pattern.size() < 6 || pattern.compare(0, 2, "0.") != 0 ||
        pattern.compare(pattern.size() - 4, 4, "E+00") != 0) {
        return fallback;
    }
    const std::string zeros = pattern.substr(2, pattern.size() - 6);
    if (zeros.find_first_not_of('0') != std::string::npos) {
        return fallback;
    }
    return static_cast<int>(zeros.size()) + 1;
}

SetupFields FillSetupFields(const ChartDocument& chart)
{
    const ChartProperties c = chart.trueColorProperties();
    SetupFields f;
    f.x = axisFields(c, true);
    f.y = axisFields(c, false);
    f.textSize = c.textSize;
    f.fonts = c.fonts;
    f.colors = c.colors;
    f.annotationColor = c.annotations[0].color;
    f.selectionColor = SelectionColor();
    for (const auto& s : c.subsets) {
        f.subsets.push_back(SubsetRow{s.show, s.label, s.pointType, s.lineType, s.color});
    }
    f.pointSize = c.pointSize;
    f.monochrome = chart.monochrome;
    return f;
}

std::optional<SetupFault> ValidateSetup(const SetupFields& fields)
{
    if (fields.x.show) {
        if (auto fault = validateAxis(fields.x, "X-axis", {"Text2", "Text3", "Text4", "Text5"})) {
            return fault;
        }
    }
    if (fields.y.show) {
        if (auto fault = validateAxis(fields.y, "Y-axis", {"Text9", "Text8", "Text7", "Text6"})) {
            return fault;
        }
    }
    return std::nullopt;
}

void ApplySetup(ChartDocument& chart, const SetupFields& f)
{
    applyAxis(chart.xAxis, f.x);
    applyAxis(chart.yAxis, f.y);
    chart.fonts = f.fonts;
    chart.textSize = f.textSize;
    chart.pointSize = f.pointSize;
    const int rows = std::min(static_cast<int>(f.subsets.size()), chart.subsetCount());
    for (int k = 0; k < rows; ++k) {
        const SubsetRow& row = f.subsets[k];
        Subset& s = chart.subsets[k];
        s.show = row.show;
        s.label = row.label;
        s.lineType = row.lineType;
        s.pointType = row.pointType;
    }
    if (chart.monochrome) {
        chart.ColorBackup.resize(static_cast<std::size_t>(chart.subsetCount() + 6), 0);
        chart.colorBackupSlot(1) = f.colors.deskForeground;
        chart.colorBackupSlot(2) = f.colors.deskBackground;
        chart.colorBackupSlot(3) = f.colors.graphForeground;
        chart.colorBackupSlot(4) = f.colors.graphBackground;
        chart.colorBackupSlot(5) = f.colors.shadow;
        chart.colorBackupSlot(6) = f.annotationColor;
        for (int k = 0; k < rows; ++k) {
            chart.colorBackupSlot(7 + k) = f.subsets[k].color;
        }
    } else {
        chart.colors = f.colors;
        for (int slot = 0; slot <= LastUserAnnotationSlot; ++slot) {
            chart.annotations[slot].color = f.annotationColor;
        }
        for (int k = 0; k < rows; ++k) {
            if (chart.selected.active && chart.selected.index == k) {
                chart.selected.color = f.subsets[k].color;
            } else {
                chart.subsets[k].color = f.subsets[k].color;
            }
        }
    }
    SelectionColor() = f.selectionColor;
    chart.MustSave();
}

ChartSetupSession::ChartSetupSession(ChartDocument& chart)
    : m_chart(chart), m_wasMonochrome(chart.monochrome), m_mustSave(chart.mustSave)
{
    m_stored = ChartToJson(chart.trueColorProperties());
    fields = FillSetupFields(chart);
}

ChartSetupSession::Outcome ChartSetupSession::ToPlotOk()
{
    Outcome outcome;
    outcome.fault = ValidateSetup(fields);
    if (outcome.fault) {
        return outcome;
    }
    ApplySetup(m_chart, fields);
    outcome.ok = true;
    return outcome;
}

void ChartSetupSession::Cancel()
{
    LoadChartText(m_chart, m_stored);
    if (m_wasMonochrome) {
        m_chart.Monochr();
    }
    m_chart.mustSave = m_mustSave;
}

} // namespace zarvion::charts
