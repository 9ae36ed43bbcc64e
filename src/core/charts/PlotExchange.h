#pragma once
// The staging area through which curves reach a chart, and the operations that build a chart
// from it.

#include "charts/ChartDocument.h"

#include <array>
#include <string>
#include <vector>

namespace zarvion::charts {

//! Data of a chart being built or edited. Row 2k of a data buffer holds X of subset k,
//! row 2k + 1 its Y.
struct PlotExchange {
    int SubsetCount = 0;
    int PointCount = 0;
    std::vector<std::vector<double>> ChartDataBuffer;
    std::vector<std::string> SubsetLabelBuffer;
    std::array<std::string, 6> PlotTitles{}; //!< 1 main title, 2 subtitle, 3 X axis label
    std::string DefaultSubtitle;

    std::vector<std::string> AddLabelBuffer;
    std::vector<std::vector<double>> AddDataBuffer;
    int AddSubsetCount = 0;
    int AddPointCount = 0;

    bool histogramLayout = false; //!< true while a histogram is being laid out

    //! Sizes ChartDataBuffer and SubsetLabelBuffer for SubsetCount x PointCount, NullValue-filled.
    void sizeChartBuffers();
};

//! The process-wide instance the windows share.
PlotExchange& SharedPlotExchange();

//! Initialises a chart from the exchange: points, labels, titles unless skipTitles, cleared
//! annotation slots 1-300, random styles and the flat-axis guard unless histogram.
void Intit(ChartDocument& chart, const PlotExchange& exchange, bool skipTitles, bool histogram,
           const RandomSource& random);

//! Guards an axis whose values are flat to the eye against an empty scale by setting manual
//! bounds around them. The first three points of each subset don't count.
void CheckDiv(ChartDocument& chart);

//! One bar of a histogram chart.
struct HistogramBar {
    std::string label; //!< tick label under the bar
    double value = NullValue;
};

//! Lays out bars on a chart as a histogram: one subset of one point a bar at X = 1, 2, ...,
//! the labels in the point-label table, the "Histogram" mark in slot 300, the histogram
//! plotting method, and standard colour 9 for a bar above 0, else 12.
void LayoutHistogram(ChartDocument& chart, PlotExchange& exchange, const std::string& title,
                     const std::vector<HistogramBar>& bars);

} // namespace zarvion::charts
