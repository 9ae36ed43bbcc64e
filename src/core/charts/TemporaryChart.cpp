#include "charts/TemporaryChart.h"

#include "charts/ChartText.h"
#include "shell/TextFormat.h"

#include <algorithm>

namespace zarvion::charts {

namespace {

double cell(const std::vector<std::vector<double>>& rows, std::size_t row, std::size_t col)
{
    if (row >= rows.size() || col >= rows[row].size()) {
        return NullValue;
    }
    return IsValue(rows[row][col]) ? rows[row][col] : NullValue;
}

} // namespace

bool TemporaryChartExists(const std::vector<std::string>& captions)
{
    return std::find(captions.begin(), captions.end(), TemporaryChartCaption) != captions.end();
}

bool IsLeftoverTemporaryChart(const std::string& caption)
{
    return caption == LeftoverTemporaryCaption;
}

shell::Message SaveQuestion(const ChartDocument& chart, const std::string& caption)
{
    if (!chart.mustSave || shell::UCase(shell::Trim(caption)) == "TEMPORARY CHART") {
        return {};
    }
    const std::string& name = chart.ChartPath.empty() ? caption : chart.ChartPath;
    return shell::Message{"Do you want to save changes to " + name + "?",
                          shell::StyleYesNoCancel + shell::StyleQuestion};
}

bool HasPlottableValues(const std::vector<std::vector<double>>& xy)
{
    if (xy.size() < 2) {
        return false;
    }
    const auto n = std::min(xy[0].size(), xy[1].size());
    for (std::size_t p = 0; p < n; ++p) {
        if (IsValue(xy[0][p]) && IsValue(xy[1][p])) {
            return true;
        }
    }
    return false;
}

std::string EmptyProfileMessage(const std::string& function, bool logarithmic)
{
    return "You are attempting to plot the function '" + function +
           (logarithmic ? "' where all values are zero or logarithms of negative numbers. "
                        : "' where all values are zero.");
}

std::string TimeAxisLabel(double timeScale, bool logTime)
{
    const std::string suffix = timeScale != 1.0 ? " x " + shell::Format(timeScale, "0.0##E+00")
                                                : std::string();
    return logTime ? "Log10 Time" + suffix + " (sec)" : "Time (sec)" + suffix;
}

PlotProfileResult PlotProfile(ChartDocument& chart, ChartWindowState& state,
                              PlotExchange& exchange, ProfileRequest& request,
                              const RandomSource& random)
{
    PlotProfileResult result;
    std::string piece1 = EmptySlotText;
    std::string piece2 = EmptySlotText;
    if (!request.label.empty() && request.label.front() == 'R') {
        std::tie(piece1, piece2) = SplitReactionTail(request.title);
    }
    state.textBox = TextBoxState{};
    for (std::size_t i = 2; i <= 5; ++i) {
        exchange.PlotTitles[i].clear();
    }
    exchange.PlotTitles[1] = request.title;
    chart.pointSize = PointMedium;
    exchange.PointCount = std::max(request.pointCount - 1, 0);
    const auto points = static_cast<std::size_t>(exchange.PointCount);

    if (request.exists && request.addRequested) {
        exchange.AddLabelBuffer = {request.label};
        exchange.AddDataBuffer.assign(2, std::vector<double>(points, NullValue));
        for (std::size_t p = 0; p < points; ++p) {
            exchange.AddDataBuffer[0][p] = cell(request.xy, 0, p);
            exchange.AddDataBuffer[1][p] = cell(request.xy, 1, p);
        }
        exchange.AddSubsetCount = 1;
        exchange.AddPointCount = exchange.PointCount;
        SubSetAdd(chart, exchange, piece1, piece2, random);
        chart.subTitle = exchange.DefaultSubtitle;
        if (request.title == SteadyStateTitle) {
            chart.subsets.back().lineType = ThickLine;
            chart.subsets.back().pointType = NoSymbols;
        }
        result.added = true;
    } else {
        exchange.SubsetCount = 1;
        exchange.sizeChartBuffers();
        for (std::size_t p = 0; p < points; ++p) {
            exchange.ChartDataBuffer[0][p] = cell(request.xy, 0, p);
            exchange.ChartDataBuffer[1][p] = cell(request.xy, 1, p);
        }
        exchange.SubsetLabelBuffer[0] = request.label;
        Intit(chart, exchange, false, false, random);
        chart.subTitle = request.label;
        SetOverflow(chart, 0, piece1, piece2);
        if (request.label.find(SteadyStateTitle) != std::string::npos) {
            chart.subsets[0].lineType = ThickLine;
            chart.subsets[0].pointType = NoSymbols;
        }
    }
    TxtBoxEn(state, false);
    state.textBox = TextBoxState{};
    chart.yAxisLabel = DefaultYAxisLabel;
    chart.xAxisLabel = TimeAxisLabel(request.timeScale, request.logTime);
    request.addRequested = false;
    return result;
}

void SubSetAdd(ChartDocument& chart, const PlotExchange& exchange, const std::string& piece1,
               const std::string& piece2, const RandomSource& random)
{
    int oldCount = chart.subsetCount();
    int oldPoints = chart.points;
    if (oldCount == 1 && oldPoints == 1) {
        oldCount = 0; // a blank window takes its first subset
        oldPoints = 0;
        chart.subsets.clear();
    }
    const int addCount = std::max(exchange.AddSubsetCount, 0);
    const int points = std::max(oldPoints, std::max(exchange.AddPointCount, 0));
    for (int j = 0; j < addCount; ++j) {
        Subset s;
        s.label = j < static_cast<int>(exchange.AddLabelBuffer.size()) ? exchange.AddLabelBuffer[j]
                                                                         : std::string();
        const auto n = static_cast<std::size_t>(std::max(exchange.AddPointCount, 0));
        for (std::size_t p = 0; p < n; ++p) {
            s.x.push_back(cell(exchange.AddDataBuffer, 2 * j, p));
            s.y.push_back(cell(exchange.AddDataBuffer, 2 * j + 1, p));
        }
        chart.subsets.push_back(std::move(s));
        SetOverflow(chart, oldCount + j, piece1, piece2);
    }
    chart.setPoints(points);
    if (chart.monochrome) {
        chart.ColorBackup.resize(static_cast<std::size_t>(chart.subsetCount() + 6), 0);
    }
    for (int k = oldCount; k < chart.subsetCount(); ++k) {
        chart.subsets[k].pointType = RandomPointCode(random());
        const Color c = StandardColor(RandomColorIndex(random()));
        if (chart.monochrome) {
            chart.subsets[k].color = 0;
            chart.colorBackupSlot(7 + k) = c;
        } else {
            chart.subsets[k].color = c;
        }
    }
}

shell::Message SubsetDel(ChartDocument& chart, ChartWindowState& state, int subset)
{
    state.editItemsEnabled = false;
    const int count = chart.subsetCount();
    if (subset < 0 || subset > count - 1) {
        return {};
    }
    if (count == 1) {
        return shell::Message{LastProfileMessage};
    }
    std::vector<std::pair<std::string, std::string>> overflow;
    for (int i = 0; i < count; ++i) {
        const int slot = FirstOverflowSlot + 2 * i;
        if (slot + 1 < HistogramSlot) {
            overflow.emplace_back(chart.annotations[slot].text, chart.annotations[slot + 1].text);
        } else {
            overflow.emplace_back(EmptySlotText, EmptySlotText);
        }
    }
    overflow.erase(overflow.begin() + subset);
    chart.subsets.erase(chart.subsets.begin() + subset);
    for (int d = 0; d < count - 1; ++d) {
        SetOverflow(chart, d, overflow[d].first, overflow[d].second);
    }
    SetOverflow(chart, count - 1, EmptySlotText, EmptySlotText);
    if (chart.monochrome && static_cast<int>(chart.ColorBackup.size()) >= 7 + subset) {
        chart.ColorBackup.erase(chart.ColorBackup.begin() + 6 + subset);
    }
    if (chart.selected.active) {
        if (chart.selected.index == subset) {
            chart.selected = ChartDocument::Selection{};
        } else if (chart.selected.index > subset) {
            --chart.selected.index;
        }
    }
    chart.MustSave();
    return {};
}

ClipboardAction CUTSS(ChartDocument& chart, ChartWindowState& state, const std::string& caption,
                      const std::tm& now)
{
    ClipboardAction action;
    if (!chart.selected.active) {
        return action;
    }
    const int k = chart.selected.index;
    SubSetSelCancel(chart, state);
    action.done = true;
    action.clipboardText = ToClipFile(chart, k, caption, now);
    action.message = SubsetDel(chart, state, k);
    return action;
}

ClipboardAction SAVESS(ChartDocument& chart, ChartWindowState& state, const std::string& caption,
                       const std::tm& now)
{
    ClipboardAction action;
    if (!chart.selected.active) {
        return action;
    }
    const int k = chart.selected.index;
    SubSetSelCancel(chart, state); // the block carries no colour, so the order is free
    action.done = true;
    action.clipboardText = ToClipFile(chart, k, caption, now);
    return action;
}

shell::Message DeleteSelectedSubset(ChartDocument& chart, ChartWindowState& state)
{
    if (!chart.selected.active) {
        return {};
    }
    const int k = chart.selected.index;
    SubSetSelCancel(chart, state);
    return SubsetDel(chart, state, k);
}

shell::Message PASTESS(ChartDocument& chart, PlotExchange& exchange,
                       const std::string& clipboardText, const RandomSource& random)
{
    const ClipboardReadResult read = ReadSubsetText(clipboardText);
    if (!read.ok()) {
        return read.message;
    }
    const auto& s = read.subset;
    exchange.AddLabelBuffer = {s.label};
    exchange.AddDataBuffer = {s.x, s.y};
    exchange.AddSubsetCount = 1;
    exchange.AddPointCount = static_cast<int>(s.x.size());
    SubSetAdd(chart, exchange, s.piece1, s.piece2, random);
    chart.MustSave();
    return {};
}

} // namespace zarvion::charts
