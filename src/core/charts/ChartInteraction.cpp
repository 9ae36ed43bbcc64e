#include "charts/ChartInteraction.h"

#include "shell/TextFormat.h"

#include <cfloat>
#include <cmath>

namespace zarvion::charts {

namespace {

bool validSubset(const ChartProperties& chart, int subset)
{
    return subset >= 0 && subset < static_cast<int>(chart.subsets.size());
}

// The value as the read-out holds it: single precision where it fits.
double single(double v)
{
    if (std::isfinite(v) && std::fabs(v) <= FLT_MAX) {
        return static_cast<double>(static_cast<float>(v));
    }
    return v;
}

std::string powerEntry(const char* head, double v, const char* pattern)
{
    const double p = std::pow(10.0, v);
    if (!std::isfinite(p)) {
        return std::string(head) + "Overflow";
    }
    return head + shell::Format(p, pattern);
}

bool isEmptyText(const std::string& text)
{
    return shell::Trim(text).empty();
}

} // namespace

const char* EditHint(EditKind kind)
{
    switch (kind) {
    case EditKind::MainTitle: return "Main Title";
    case EditKind::SubTitle: return "SubTitle";
    case EditKind::XLabel: return "XAxis Label";
    case EditKind::YLabel: return "YAxis Label";
    case EditKind::SubsetLabel: return "SubSet Label";
    case EditKind::NewAnnotation: return "New Annotation";
    case EditKind::Annotation: return "Annotation";
    case EditKind::None: break;
    }
    return "";
}

Color& SelectionColor()
{
    static Color color = 0xFF00FF;
    return color;
}

void SubSetSelect(ChartDocument& chart, ChartWindowState& state, int subset)
{
    if (!validSubset(chart, subset)) {
        return;
    }
    chart.cancelSelection();
    chart.selected = {true, subset, chart.subsets[subset].color};
    chart.subsets[subset].color = SelectionColor();
    state.editItemsEnabled = true;
    state.textBox.visible = true;
    state.textBox.okButtonVisible = false;
    state.textBox.text = chart.subsets[subset].label;
    state.textBox.kind = EditKind::SubsetLabel;
    state.textBox.hint = EditHint(EditKind::SubsetLabel);
    state.textBox.slot = subset;
}

void SubSetSelCancel(ChartDocument& chart, ChartWindowState& state)
{
    if (!chart.selected.active) {
        return;
    }
    chart.cancelSelection();
    state.editItemsEnabled = false;
}

void DataPointClicked(ChartWindowState& state, int subset, int point)
{
    if (state.cursorMode != CursorSquare && state.cursorMode != CursorCross) {
        state.cursorMode = CursorSquare;
    }
    state.cursorSubset = subset;
    state.cursorPoint = point;
    state.clickedSubset = subset;
    state.clickPending = true;
}

void ClickWindowElapsed(ChartWindowState& state)
{
    state.clickPending = false;
    state.clickedSubset = -1;
}

bool DataPointDoubleClicked(ChartDocument& chart, ChartWindowState& state, int subset)
{
    if (!state.clickPending || subset != state.clickedSubset || !validSubset(chart, subset)) {
        return false;
    }
    SubSetSelect(chart, state, subset);
    ClickWindowElapsed(state);
    return true;
}

std::array<std::string, 2> XVAL(double x)
{
    const double v = single(x);
    return {"X = " + shell::Format(v, "0.00####E+00"), powerEntry("10^X = ", v, "0.000##E+00")};
}

std::array<std::string, 2> YVAL(double y)
{
    const double v = single(y);
    return {"Y = " + shell::Format(v, "0.000E+00"), powerEntry("10^Y = ", v, "0.000E+00")};
}

void XYShowSub(ChartDocument& chart, ChartWindowState& state)
{
    state.readout.enabled = true;
    state.readout.visible = true;
    if (state.cursorMode != CursorSquare && state.cursorMode != CursorCross) {
        state.cursorMode = CursorSquare;
    }
    if (state.cursorSubset < 0) {
        state.cursorSubset = 0;
        state.cursorPoint = 1;
    }
    CursorMoved(chart, state, state.cursorSubset, state.cursorPoint);
}

void XYHIDESub(ChartWindowState& state)
{
    state.readout.visible = false;
    state.cursorMode = CursorNone;
}

void TxtBoxEn(ChartWindowState& state, bool enable)
{
    state.readout.xEntries = {};
    state.readout.yEntries = {};
    state.readout.xText.clear();
    state.readout.yText.clear();
    state.readout.enabled = enable;
}

void CursorMoved(const ChartDocument& chart, ChartWindowState& state, int subset, int point)
{
    state.cursorSubset = subset;
    state.cursorPoint = point;
    if (subset != state.lastCursorSubset) {
        state.lastCursorSubset = subset;
    }
    if (!validSubset(chart, subset) || point < 0 || point >= chart.points) {
        return;
    }
    const auto& s = chart.subsets[subset];
    const double x = point < static_cast<int>(s.x.size()) ? s.x[point] : NullValue;
    const double y = point < static_cast<int>(s.y.size()) ? s.y[point] : NullValue;
    auto& r = state.readout;
    r.xEntries = XVAL(x);
    r.yEntries = YVAL(y);
    r.xText = r.xEntries[static_cast<std::size_t>(r.xFormatIndex == 1 ? 1 : 0)];
    r.yText = r.yEntries[static_cast<std::size_t>(r.yFormatIndex == 1 ? 1 : 0)];
}

void ChooseXFormat(ChartWindowState& state, int index)
{
    state.readout.xFormatIndex = index == 1 ? 1 : 0;
    state.readout.xText = state.readout.xEntries[static_cast<std::size_t>(state.readout.xFormatIndex)];
}

void ChooseYFormat(ChartWindowState& state, int index)
{
    state.readout.yFormatIndex = index == 1 ? 1 : 0;
    state.readout.yText = state.readout.yEntries[static_cast<std::size_t>(state.readout.yFormatIndex)];
}

int FindFreeAnnotationSlot(const ChartProperties& chart)
{
    for (int slot = 0; slot <= LastUserAnnotationSlot; ++slot) {
        const auto& a = chart.annotations[slot];
        if (a.x == NullValue && a.y == NullValue &&
            (isEmptyText(a.text) || a.text == EmptySlotText)) {
            return slot;
        }
    }
    return -1;
}

double AxisMiddle(const ChartProperties& chart, bool xAxis)
{
    const AxisSettings& axis = xAxis ? chart.xAxis : chart.yAxis;
    if (axis.manualScale != 0) {
        return (axis.manualMin + axis.manualMax) / 2.0;
    }
    double lo = 0.0;
    double hi = 0.0;
    bool any = false;
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
    return (lo + hi) / 2.0;
}

shell::Message TextAnnotationsNew(ChartDocument& chart, const std::string& text,
                                  std::optional<std::pair<double, double>> position, int type)
{
    const std::string t = shell::Trim(text);
    if (t.empty()) {
        return {};
    }
    const auto [x, y] = position ? *position
                                 : std::make_pair(AxisMiddle(chart, true), AxisMiddle(chart, false));
    const int slot = FindFreeAnnotationSlot(chart);
    if (slot < 0) {
        return shell::Message{TooManyAnnotationsMessage};
    }
    chart.annotations[slot] = Annotation{t, x, y, type, chart.annotations[0].color};
    chart.MustSave();
    return {};
}

void TextAnnotationsOld(ChartDocument& chart, int slot, const std::string& text)
{
    if (slot < 0 || slot >= AnnotationSlotCount) {
        return;
    }
    auto& a = chart.annotations[slot];
    if (isEmptyText(text)) {
        a.text = EmptySlotText;
        a.x = NullValue;
        a.y = NullValue;
    } else {
        a.text = text;
    }
    chart.MustSave();
}

void SubsetLab(ChartDocument& chart, int subset, const std::string& text)
{
    if (!validSubset(chart, subset)) {
        return;
    }
    chart.subsets[subset].label = text;
    chart.MustSave();
}

shell::Message CommitEdit(ChartDocument& chart, ChartWindowState& state, int newAnnotationType,
                          std::optional<std::pair<double, double>> position)
{
    TextBoxState box = state.textBox;
    state.textBox = TextBoxState{};
    shell::Message message;
    switch (box.kind) {
    case EditKind::MainTitle: chart.mainTitle = box.text; break;
    case EditKind::SubTitle: chart.subTitle = box.text; break;
    case EditKind::XLabel: chart.xAxisLabel = box.text; break;
    case EditKind::YLabel: chart.yAxisLabel = box.text; break;
    case EditKind::SubsetLabel: SubsetLab(chart, box.slot, box.text); return message;
    case EditKind::NewAnnotation:
        return TextAnnotationsNew(chart, box.text, position, newAnnotationType);
    case EditKind::Annotation: TextAnnotationsOld(chart, box.slot, box.text); return message;
    case EditKind::None: return message;
    }
    if (isEmptyText(box.text)) {
        SHOWALLTEXT(chart);
    }
    chart.MustSave();
    return message;
}

void DeleteClickedText(ChartDocument& chart, EditKind kind, int slot,
                       const std::string& defaultSubtitle)
{
    switch (kind) {
    case EditKind::Annotation:
        if (slot >= 0 && slot < AnnotationSlotCount) {
            chart.annotations[slot].x = NullValue;
            chart.annotations[slot].y = NullValue;
            chart.annotations[slot].text = EmptySlotText;
        }
        break;
    case EditKind::MainTitle: chart.mainTitle.clear(); break;
    case EditKind::SubTitle: chart.subTitle = defaultSubtitle; break;
    case EditKind::XLabel: chart.xAxisLabel.clear(); break;
    case EditKind::YLabel: chart.yAxisLabel.clear(); break;
    default: return;
    }
    chart.MustSave();
}

void SHOWALLTEXT(ChartDocument& chart)
{
    auto fill = [](std::string& text, const char* fallback) {
        if (isEmptyText(text)) {
            text = fallback;
        }
    };
    fill(chart.mainTitle, DefaultMainTitle);
    fill(chart.subTitle, DefaultSubTitle);
    fill(chart.xAxisLabel, DefaultXAxisLabel);
    fill(chart.yAxisLabel, DefaultYAxisLabel);
    for (int k = 0; k < chart.subsetCount(); ++k) {
        fill(chart.subsets[k].label, ("Subset " + std::to_string(k + 1)).c_str());
        chart.subsets[k].legend = true;
    }
    for (int slot = 1; slot < AnnotationSlotCount; ++slot) {
        auto& a = chart.annotations[slot];
        if (isEmptyText(a.text)) {
            a.text = EmptySlotText;
            a.x = NullValue;
            a.y = NullValue;
        }
    }
}

void SubsetLinePoints(ChartDocument& chart, int subset, const std::string& label, bool drawLine,
                      bool drawPoints, int lineCode, int pointCode)
{
    if (!validSubset(chart, subset)) {
        return;
    }
    auto& s = chart.subsets[subset];
    s.label = label;
    if (!drawLine) {
        s.lineType = NoLine;
    } else if (s.lineType == NoLine) {
        s.lineType = lineCode;
    }
    if (!drawPoints) {
        s.pointType = NoSymbols;
    } else if (s.pointType == NoSymbols) {
        s.pointType = pointCode;
    }
}

void SetTextSize(ChartDocument& chart, int size)
{
    chart.textSize = size;
    chart.MustSave();
}

void SetPointSize(ChartDocument& chart, int size)
{
    chart.pointSize = size;
    chart.MustSave();
}

void SetLegend(ChartDocument& chart, bool show)
{
    for (auto& s : chart.subsets) {
        s.legend = show;
    }
}

void LineaXY(ChartDocument& chart)
{
    chart.xAxis.manualScale = 1;
    chart.yAxis.manualScale = 1;
}

void AUTOXY(ChartDocument& chart)
{
    chart.xAxis.manualScale = 0;
    chart.yAxis.manualScale = 0;
}

bool ZoomPermitted(const ChartProperties& chart)
{
    auto tiny = [](const AxisSettings& a) {
        return std::fabs(a.manualMin) < 1E-05 || std::fabs(a.manualMax) < 1E-05;
    };
    return !(tiny(chart.xAxis) && tiny(chart.yAxis));
}

} // namespace zarvion::charts
