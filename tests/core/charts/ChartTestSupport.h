#pragma once
// Builders and helpers shared by the chart tests.

#include "charts/ChartDocument.h"

#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace zarvion::charts::testing {

//! A random source that replays the given numbers in turn, then repeats the last.
inline RandomSource Sequence(std::vector<double> values)
{
    auto state = std::make_shared<std::pair<std::vector<double>, std::size_t>>(std::move(values), 0);
    return [state]() {
        auto& [v, i] = *state;
        const double r = v[std::min(i, v.size() - 1)];
        ++i;
        return r;
    };
}

//! A chart of `count` subsets with `points` points each, every property set away from its
//! default so that a lost property shows in a comparison.
inline ChartDocument RichChart(int count, int points, unsigned seed = 7)
{
    std::mt19937 gen(seed);
    std::uniform_real_distribution<double> u(-1e3, 1e3);
    ChartDocument c;
    c.points = points;
    for (int k = 0; k < count; ++k) {
        Subset s;
        s.label = "Subset label " + std::to_string(k) + " \"q\" \xC3\xA9";
        s.color = StandardColor(k % 16) ^ 0x010203u;
        s.pointType = k;
        s.lineType = k % 3 == 0 ? NoLine : k;
        s.show = k % 4 != 1;
        s.legend = k % 5 != 2;
        for (int p = 0; p < points; ++p) {
            const bool gap = (p + k) % 7 == 3;
            s.x.push_back(gap ? NullValue : u(gen) * 1e-7);
            s.y.push_back(u(gen) / 3.0);
        }
        c.subsets.push_back(s);
    }
    c.mainTitle = "Ignition of H2/O2";
    c.subTitle = "Mole fraction";
    c.xAxisLabel = "Time (sec)";
    c.yAxisLabel = "X(OH)";
    c.annotations[0] = Annotation{"first note", 1.5e-3, 0.25, 2, 0x112233};
    c.annotations[100] = Annotation{"last user slot", -2.0, 1e300, 1, 0x445566};
    c.annotations[101] = Annotation{"H+O2=OH+O piece", NullValue, NullValue, 0, 0};
    c.xAxis = AxisSettings{1, 1e-6, 2.5e-3, 0.1, 0.05, true, "0.00E+00", NullValue};
    c.yAxis = AxisSettings{0, -3.0, 7.0, 2.0, 1.0, false, "0.0000E+00", NullValue};
    c.textSize = TextSmall;
    c.pointSize = PointLarge;
    c.fonts[MainTitleFont] = FontSpec{"DejaVu Sans", true, false, true};
    c.fonts[LabelFont] = FontSpec{"Courier New", false, true, false};
    c.colors = ChartColors{0x0A0B0C, 0xF0F1F2, 0x123456, 0xABCDEF, 0x333333};
    c.markDataPoints = false;
    c.gridLines = true;
    return c;
}

inline std::filesystem::path TempDir(const std::string& name)
{
    auto dir = std::filesystem::temp_directory_path() / ("zarvion_charts_" + name);
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir;
}

} // namespace zarvion::charts::testing
