// Chart file reader: any bytes either load or are refused; a loaded chart writes back to
// the same properties, and its text forms can be made and read again.

#include "charts/ChartFile.h"
#include "charts/ChartText.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace zarvion::charts;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    ChartDocument chart;
    if (!LoadChartText(chart, text)) {
        return 0;
    }
    const auto again = ChartFromJson(ChartToJson(chart));
    if (!again || *again != static_cast<const ChartProperties&>(chart)) {
        std::abort(); // a chart that loads must store and load to itself
    }
    (void)WriteChartDataTable(chart);
    std::tm now{};
    for (int k = 0; k < chart.subsetCount() && k < 3; ++k) {
        (void)ReadSubsetText(ToClipFile(chart, k, "fuzz", now));
    }
    chart.Monochr();
    chart.PlotCol();
    return 0;
}
