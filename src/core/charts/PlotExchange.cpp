#include "charts/PlotExchange.h"

#include <cmath>

namespace zarvion::charts {

void PlotExchange::sizeChartBuffers()
{
    const auto rows = static_cast<std::size_t>(2 * std::max(SubsetCount, 0));
    const auto cols = static_cast<std::size_t>(std::max(PointCount, 0));
    ChartDataBuffer.assign(rows, std::vector<double>(cols, NullValue));
    SubsetLabelBuffer.assign(static_cast<std::size_t>(std::max(SubsetCount, 0)), std::string());
}

PlotExchange& SharedPlotExchange()
{
    static PlotExchange exchange;
    return exchange;
}

namespace {

double bufferValue(const std::vector<std::vector<double>>& buffer, std::size_t row, std::size_t col)
{
    if (row >= buffer.size() || col >= buffer[row].size()) {
        return NullValue;
    }
    const double v = buffer[row][col];
    return IsValue(v) ? v : NullValue;
}

// The flat-axis test of one axis; returns true when the axis was set to manual bounds.
void guardAxis(const std::vector<Subset>& subsets, bool useX, AxisSettings& axis)
{
    double lo = 9.999999E+300;
    double hi = -9.999999E+300;
    bool any = false;
    for (const auto& s : subsets) {
        const auto& values = useX ? s.x : s.y;
        for (std::size_t p = 3; p < values.size(); ++p) {
            const double v = values[p];
            if (!IsValue(v)) {
                continue;
            }
            any = true;
            lo = std::min(lo, v);
            hi = std::max(hi, v);
            if (lo != 0.0 && hi != 0.0 &&
                std::fabs(hi - lo) / (std::fabs(hi) + std::fabs(lo)) > 0.001) {
                return; // the axis spreads: leave it alone
            }
        }
    }
    if (!any) {
        return; // nothing to scale around
    }
    const double d = (std::fabs(hi) + std::fabs(lo)) / 1000.0;
    axis.manualScale = 1;
    axis.manualMax = hi + d;
    axis.manualMin = lo - d;
    axis.majorTick = d / 2.0;
    axis.minorTick = d / 4.0;
}

} // namespace

void Intit(ChartDocument& chart, const PlotExchange& exchange, bool skipTitles, bool histogram,
           const RandomSource& random)
{
    chart.xAxis.manualScale = 0;
    chart.yAxis.manualScale = 0;
    chart.xAxis.nullData = NullValue;
    chart.yAxis.nullData = NullValue;

    const int count = std::max(exchange.SubsetCount, 0);
    chart.subsets.resize(static_cast<std::size_t>(count));
    chart.points = std::max(exchange.PointCount, 0);
    for (int k = 0; k < count; ++k) {
        auto& s = chart.subsets[k];
        s.x.assign(static_cast<std::size_t>(chart.points), NullValue);
        s.y.assign(static_cast<std::size_t>(chart.points), NullValue);
        s.label = k < static_cast<int>(exchange.SubsetLabelBuffer.size())
                      ? exchange.SubsetLabelBuffer[k]
                      : std::string();
        for (int p = 0; p < chart.points; ++p) {
            s.x[p] = bufferValue(exchange.ChartDataBuffer, 2 * k, p);
            s.y[p] = bufferValue(exchange.ChartDataBuffer, 2 * k + 1, p);
        }
    }

    if (!skipTitles) {
        chart.mainTitle = exchange.PlotTitles[1];
        chart.subTitle = exchange.PlotTitles[2].empty() ? exchange.DefaultSubtitle
                                                        : exchange.PlotTitles[2];
        chart.xAxisLabel = exchange.PlotTitles[3];
        chart.yAxisLabel = DefaultYAxisLabel;
    }

    for (int slot = 1; slot < AnnotationSlotCount; ++slot) {
        chart.annotations[slot] = Annotation{};
    }

    if (chart.monochrome) {
        chart.ColorBackup.resize(static_cast<std::size_t>(count + 6), 0);
    }
    if (!histogram) {
        for (int k = 0; k < count; ++k) {
            const Color c = StandardColor(RandomColorIndex(random()));
            chart.subsets[k].pointType = RandomPointCode(random());
            if (chart.monochrome) {
                chart.subsets[k].color = 0;
                chart.colorBackupSlot(7 + k) = c;
            } else {
                chart.subsets[k].color = c;
            }
        }
        CheckDiv(chart);
    }
}

void CheckDiv(ChartDocument& chart)
{
    guardAxis(chart.subsets, true, chart.xAxis);
    guardAxis(chart.subsets, false, chart.yAxis);
}

void LayoutHistogram(ChartDocument& chart, PlotExchange& exchange, const std::string& title,
                     const std::vector<HistogramBar>& bars)
{
    exchange.histogramLayout = true;
    exchange.SubsetCount = static_cast<int>(bars.size());
    exchange.PointCount = 1;
    exchange.sizeChartBuffers();
    for (std::size_t k = 0; k < bars.size(); ++k) {
        exchange.ChartDataBuffer[2 * k][0] = static_cast<double>(k + 1);
        exchange.ChartDataBuffer[2 * k + 1][0] = bars[k].value;
        exchange.SubsetLabelBuffer[k] = bars[k].label;
    }
    for (std::size_t i = 2; i < exchange.PlotTitles.size(); ++i) {
        exchange.PlotTitles[i].clear();
    }
    exchange.PlotTitles[1] = title;
    Intit(chart, exchange, false, true, [] { return 0.0; });
    chart.plottingMethod = HistogramMethod;
    chart.annotations[HistogramSlot].text = HistogramText;
    chart.pointLabels.assign(1, std::vector<std::string>());
    for (std::size_t k = 0; k < bars.size(); ++k) {
        chart.pointLabels[0].push_back(bars[k].label);
        const Color c = StandardColor(IsValue(bars[k].value) && bars[k].value > 0.0 ? 9 : 12);
        if (chart.monochrome) {
            chart.colorBackupSlot(7 + static_cast<int>(k)) = c;
        } else {
            chart.subsets[k].color = c;
        }
    }
    exchange.histogramLayout = false;
}

} // namespace zarvion::charts
