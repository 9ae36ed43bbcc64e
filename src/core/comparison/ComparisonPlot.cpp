#include "comparison/ComparisonPlot.h"

#include <cmath>

#include "shell/TextFormat.h"

namespace zarvion::comparison {

namespace {

shell::Message Warning(std::string text)
{
    return shell::Message{std::move(text), shell::StyleWarning, shell::DefaultTitle};
}

bool IsNull(double v)
{
    return v == NullValue;
}

//! ProfileTable column of a merged row in one file: species number + 1, 1 for temperature.
std::optional<int> Column(const std::optional<int>& number)
{
    if (!number) {
        return std::nullopt;
    }
    return *number == 0 ? 1 : *number + 1;
}

Profile ColumnProfile(const ComparisonFile& file, int column, double divisor)
{
    Profile p;
    p.reserve(file.ProfileTable.size());
    for (const auto& row : file.ProfileTable) {
        p.push_back({row[0], row[column] / divisor});
    }
    return p;
}

} // namespace

Profile TrimProfile(const Profile& table)
{
    std::size_t first = 0;
    while (first < table.size() && !(table[first][1] > 0)) {
        ++first;
    }
    std::size_t last = table.size();
    while (last > 0 && !(table[last - 1][1] >= 0)) {
        --last;
    }
    if (first >= last) {
        return {};
    }
    return Profile(table.begin() + static_cast<std::ptrdiff_t>(first),
                   table.begin() + static_cast<std::ptrdiff_t>(last));
}

double InterpolateAt(double x, const Profile& table)
{
    const std::size_t n = table.size();
    for (std::size_t i = 0; i + 1 < n; ++i) {
        const double t0 = table[i][0];
        const double t1 = table[i + 1][0];
        if (t0 <= x && x < t1) {
            if (i + 2 == n) {
                return NullValue; // the last interval never yields a value
            }
            if ((t1 - t0) / (t1 + t0) < 1e-19) {
                return NullValue;
            }
            return (table[i + 1][1] - table[i][1]) * (x - t0) / (t1 - t0) + table[i][1];
        }
    }
    return NullValue;
}

Profile ErrorProfile(const Profile& table1, const Profile& table2, double b)
{
    const Profile one = TrimProfile(table1);
    const Profile two = TrimProfile(table2);
    Profile out;
    out.reserve(one.size());
    for (const auto& [t, v1] : one) {
        const double v2 = InterpolateAt(t, two);
        const double d = b * std::fabs(v1) + (1 - b) * std::fabs(v2);
        double e = NullValue;
        if (v1 != 0 && v2 != 0 && !IsNull(v1) && !IsNull(v2) && d != 0) {
            e = std::fabs(v1 - v2) / d;
            if (e < 1e-6) {
                e = NullValue; // noise, and it would spoil a logarithmic axis
            }
        }
        out.push_back({t, e});
    }
    return out;
}

double UnitFactor(bool molecules, const UnitConstants& c)
{
    return molecules ? c.BoltzmannConstant / c.AtmosphereDyn
                     : c.AvogadroNumber * c.BoltzmannConstant / c.AtmosphereDyn;
}

SettingsCheck CheckPlotSettings(const std::string& xScaleText, const std::string& yScaleText,
                                const std::string& bText, PlotSettings& settings)
{
    const auto x = shell::ToDouble(xScaleText);
    if (settings.logX ? (!x || *x <= 0) : (!x || *x == 0)) {
        return {Warning(settings.logX ? "Scaling factor for logarithmic X-axis, please enter a "
                                        "positive number."
                                      : "Scaling factor for X-axis, please enter a nonzero number."),
                3};
    }
    const auto y = shell::ToDouble(yScaleText);
    if (settings.logY ? (!y || *y <= 0) : (!y || *y == 0)) {
        return {Warning(settings.logY ? "Scaling factor for logarithmic Y-axis, please enter a "
                                        "positive number."
                                      : "Scaling factor for Y-axis, please enter a nonzero number."),
                4};
    }
    if (settings.relativeError) {
        const auto b = shell::ToDouble(bText);
        if (!b || *b < 0 || *b > 1) {
            return {Warning("Relative error parameter, please enter a number on the interval "
                            "[0, 1]."),
                    5};
        }
        settings.b = *b;
    }
    settings.XScale = *x;
    settings.YScale = *y;
    return {};
}

PlotCurve RedPlotFunction(const ComparisonSet& set, int mode, const MergedRow& row,
                          const PlotSettings& settings)
{
    PlotCurve curve;
    const bool temperature = row.number1 == 0 || row.number2 == 0;
    const auto column1 = Column(row.number1);
    const auto column2 = Column(row.number2);
    Profile profile;
    if (mode == 0 || mode == 1) {
        const auto column = mode == 0 ? column1 : column2;
        if (!column) {
            curve.skipped = true;
            return curve;
        }
        const ComparisonFile& file = mode == 0 ? set.file1 : set.file2;
        const double divisor =
            *column == 1 ? 1.0 : UnitFactor(settings.molecules, settings.constants);
        profile = ColumnProfile(file, *column, divisor);
    } else {
        if (!column2) {
            curve.message = Warning("File 2, the data for '" + row.name +
                                    "' is not available; the comparison cannot be performed.");
            return curve;
        }
        if (!column1) {
            curve.message = Warning("File 1, the data for '" + row.name +
                                    "' is not available; the comparison cannot be performed.");
            return curve;
        }
        // The unit factor would cancel in the ratio.
        profile = ErrorProfile(ColumnProfile(set.file1, *column1, 1.0),
                               ColumnProfile(set.file2, *column2, 1.0), settings.b);
    }

    bool anyPoint = false;
    curve.x.reserve(profile.size());
    curve.y.reserve(profile.size());
    for (const auto& [t, w] : profile) {
        double x = (t > 0 && std::isfinite(t)) ? t * settings.XScale : NullValue;
        double y = NullValue;
        if (std::isfinite(w) && w != 0 && !IsNull(w) && !IsNull(x)) {
            y = w * settings.YScale;
        } else {
            x = NullValue;
        }
        if (settings.logX) {
            if (x > 0 && !IsNull(x)) {
                x = std::log(x) / std::log(10.0);
            } else {
                x = y = NullValue;
            }
        }
        if (settings.logY) {
            if (y > 0 && !IsNull(y)) {
                y = std::log(y) / std::log(10.0);
            } else {
                x = y = NullValue;
            }
        }
        anyPoint = anyPoint || (!IsNull(x) && !IsNull(y));
        curve.x.push_back(x);
        curve.y.push_back(y);
    }
    if (!anyPoint) {
        curve.x.clear();
        curve.y.clear();
        curve.message = Warning(std::string("You are attempting to plot a function ") +
                                (settings.logY ? "where all values are zero or logarithms of "
                                                 "negative numbers. "
                                               : "where all values are zero."));
        return curve;
    }

    if (mode == 0 || mode == 1) {
        const std::string prefix = mode == 0 ? " F1," : " F2,";
        const std::string name = temperature ? "" : " " + row.name;
        const std::string unit = temperature ? " Temperature (K)"
                                             : (settings.molecules ? " (1/cm^3)" : " (mol/cm^3)");
        curve.label = prefix + name + (settings.logY ? " Log10" : "") + unit;
    } else {
        const std::string namePart = temperature ? "Temperature, " : row.name + ", ";
        curve.label = namePart + (settings.logY ? "Log10 " : "") + "Relative Error";
    }
    if (settings.YScale != 1) {
        curve.label += " x " + shell::Format(settings.YScale, "0.00E+00");
    }
    return curve;
}

bool SecondCurveAdds(bool addKeyHeld, const MergedRow& row)
{
    return addKeyHeld || row.number1.has_value();
}

} // namespace zarvion::comparison
