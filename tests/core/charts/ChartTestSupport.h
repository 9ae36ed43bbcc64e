#pragma once
// Builders and helpers shared by the chart tests.

#include "charts/ChartDocument.h"

#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace zarvion::charts::testing {

using Strings = std::vector<std::string>;
using Values = std::vector<double>;

//! A random source that replays the given numbers in turn, then repeats the last.
inline RandomSource Sequence(std::vector<double> v)
{
    return [v, i = std::size_t{0}]() mutable { return v[std::min(i++, v.size() - 1)]; };
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
        Subset s{"Subset label " + std::to_string(k) + " \"q\" \xC3\xA9",
                 StandardColor(k % 16) ^ 0x010203u, k, k % 3 == 0 ? NoLine : k, k % 4 != 1,
                 k % 5 != 2, {}, {}};
        for (int p = 0; p < points; ++p) {
            s.x.push_back((p + k) % 7 == 3 ? NullValue : u(gen) * 1e-7);
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

//! A subset of the given points and every other field at its default.
inline Subset Curve(Values x, Values y)
{
    Subset s;
    s.x = std::move(x);
    s.y = std::move(y);
    return s;
}

//! What a chart file keeps of a chart.
inline ChartProperties Props(const ChartDocument& c)
{
    return c;
}

//! The chart as it shows after going back to colour: all user annotation slots take the one
//! annotation colour, that of slot 0.
inline ChartProperties InOneAnnotationColour(ChartProperties c)
{
    for (int slot = 0; slot <= LastUserAnnotationSlot; ++slot) {
        c.annotations[slot].color = c.annotations[0].color;
    }
    return c;
}

//! Main title, subtitle, X and Y axis labels.
inline Strings Titles(const ChartProperties& c)
{
    return {c.mainTitle, c.subTitle, c.xAxisLabel, c.yAxisLabel};
}

//! The texts of annotation slots first to last.
inline Strings SlotTexts(const ChartProperties& c, int first, int last)
{
    Strings texts;
    for (int slot = first; slot <= last; ++slot) {
        texts.push_back(c.annotations[slot].text);
    }
    return texts;
}

//! A subset's colour and symbol code.
inline std::pair<Color, int> ColourAndSymbol(const Subset& s)
{
    return {s.color, s.pointType};
}

inline std::filesystem::path TempDir(const std::string& name)
{
    auto dir = std::filesystem::temp_directory_path() / ("zarvion_charts_" + name);
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir;
}

} // namespace zarvion::charts::testing
