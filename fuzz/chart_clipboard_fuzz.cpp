// Clipboard subset reader: any text either pastes as a subset or gives the no-data message;
// a pasted subset can be copied out again and read back with the same number of points.

#include "charts/ChartText.h"
#include "charts/TemporaryChart.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

using namespace zarvion::charts;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto read = ReadSubsetText(text);
    if (!read.ok()) {
        if (read.message.text != NoClipboardDataMessage) {
            std::abort();
        }
        return 0;
    }
    ChartDocument chart;
    PlotExchange exchange;
    const RandomSource fixed = [] { return 0.5; };
    if (!PASTESS(chart, exchange, text, fixed).empty() || chart.subsetCount() != 1) {
        std::abort();
    }
    std::tm now{};
    const auto back = ReadSubsetText(ToClipFile(chart, 0, "fuzz", now));
    // Values whose nine-digit text overflows the double range, and the mark -99999 itself,
    // drop out on the way back.
    bool allModerate = true;
    for (double v : read.subset.x) {
        allModerate = allModerate && std::fabs(v) < 1e300 && v != NullValue;
    }
    for (double v : read.subset.y) {
        allModerate = allModerate && std::fabs(v) < 1e300 && v != NullValue;
    }
    if (allModerate && back.subset.x.size() != read.subset.x.size()) {
        std::abort();
    }
    (void)WriteChartDataTable(chart);
    return 0;
}
