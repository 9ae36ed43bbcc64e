#include "postprocessor/PostprocessorState.h"

#include "postprocessor/RowFields.h"
#include "postprocessor/ThermoModule.h"
#include "shell/TextFormat.h"

#include <cmath>

namespace zarvion::postprocessor {

namespace {

shell::Message fieldError(std::string text)
{
    return shell::Message{std::move(text), shell::StyleWarning, shell::DefaultTitle};
}

//! The time of data row k, rounded; the head row (k = 0) and non-numbers read as 0.
double roundedTime(const ResultSet& r, int k)
{
    return RoundSeven(FieldValue(r.rows[k], 0));
}

} // namespace

SessionConstants SessionConstants::FromStored(double gasJ, double gasCal, double avogadro,
                                              double boltzmannJ, double atmosphereKPa)
{
    SessionConstants c;
    c.GasConstantJ = gasJ;
    c.GasConstantCal = gasCal;
    c.AvogadroNumber = avogadro;
    c.BoltzmannConstant = boltzmannJ * 1e7;
    c.AtmosphereDyn = atmosphereKPa * 10000.0;
    return c;
}

PostprocessorState::PostprocessorState(ResultSet results, SessionConstants constants)
    : m_results(std::move(results)), m_constants(constants)
{
    IntervalBegin = m_results.timeBegin;
    IntervalEnd = m_results.timeEnd;
    if (m_results.rowCount >= 2) {
        UsedData();
    }
}

PostprocessorState::~PostprocessorState() = default;

double PostprocessorState::gasConstantDensity() const
{
    return m_results.gasConstantDensity > 0 ? m_results.gasConstantDensity
                                            : m_constants.gasConstantDensity();
}

RateWorkspace& PostprocessorState::workspace()
{
    if (!m_workspace) {
        m_workspace = std::make_unique<RateWorkspace>(m_results);
    }
    return *m_workspace;
}

double PostprocessorState::concentrationFactor() const
{
    return ConcentrationUnit == 0 ? 1.0 : m_constants.AvogadroNumber;
}

const std::string& PostprocessorState::speciesName(int species) const
{
    return m_results.columnNames.at(static_cast<std::size_t>(species) + 2);
}

void PostprocessorState::UsedData()
{
    const ResultSet& r = m_results;
    const int last = r.rowCount - 1;
    if (last < 1) {
        return;
    }
    // First walk: rough bounds, for the tolerances.
    int first = 1;
    int stop = last;
    bool firstFound = false;
    for (int k = 1; k <= last; ++k) {
        const double t = roundedTime(r, k);
        if (!firstFound && t >= IntervalBegin) {
            first = k;
            firstFound = true;
        }
        if (t >= IntervalEnd) {
            stop = k;
            break;
        }
    }
    const double d1 = (FieldValue(r.rows[first], 0) - FieldValue(r.rows[first - 1], 0)) / 10000.0;
    const double d2 = (FieldValue(r.rows[stop], 0) - FieldValue(r.rows[stop - 1], 0)) / 10000.0;

    // Second walk with the tolerances.
    first = 1;
    stop = last;
    firstFound = false;
    for (int k = 1; k <= last; ++k) {
        const double t = roundedTime(r, k);
        if (!firstFound && t >= IntervalBegin + d1) {
            first = k;
            firstFound = true;
        }
        if (t >= IntervalEnd - d2) {
            stop = k;
            break;
        }
    }
    if (first > 1) {
        --first; // one row before the entered start is always included
    }
    IntervalFirst = first;
    IntervalLast = stop;
    const int n = IntervalLast - IntervalFirst + 1;
    pointCount = n;
    IntervalBegin = roundedTime(r, IntervalFirst);
    IntervalEnd = roundedTime(r, IntervalLast);

    const int every = ShowEvery < 1 ? 1 : ShowEvery;
    if (static_cast<double>(n) / every < 2.0) {
        return; // too few points for this thinning: the old lists stay
    }
    UsedRows.clear();
    UsedTimes.clear();
    UsedDensity.clear();
    const int capacity = every == 1 ? n : n / every + 1;
    UsedRows.reserve(capacity + 1);
    for (int k = IntervalFirst; k <= IntervalLast; k += every) {
        UsedRows.push_back(k);
    }
    // The end of the interval is always on the list.
    if (IntervalEnd > roundedTime(r, UsedRows.back())) {
        UsedRows.push_back(IntervalLast);
    }
    UsedCount = static_cast<int>(UsedRows.size());
    UsedTimes.reserve(UsedRows.size());
    UsedDensity.reserve(UsedRows.size());
    for (int k : UsedRows) {
        UsedTimes.emplace_back(FieldText(r.rows[k], 0));
        UsedDensity.push_back(k < static_cast<int>(r.density.size()) ? r.density[k] : 0.0);
    }
}

shell::Message PostprocessorState::TabGetF(const GeneralFields& fields)
{
    // The interval and the thinning carry no message of their own in the window; a text that
    // is not a number is refused with the house pattern of field messages.
    const auto begin = shell::ToDouble(fields.intervalBegin);
    if (!begin || !std::isfinite(*begin)) {
        return fieldError("Time interval, please enter a number.");
    }
    const auto end = shell::ToDouble(fields.intervalEnd);
    if (!end || !std::isfinite(*end)) {
        return fieldError("Time interval, please enter a number.");
    }
    const auto every = shell::ToDouble(fields.showEvery);
    if (!every || !(*every >= 1.0) || *every > 2.0e9) {
        return fieldError("Show every, please enter a positive integer.");
    }
    const FieldCheck x = CheckScaleX(fields.scaleX, fields.LogX);
    if (!x.ok()) {
        return x.message;
    }
    IntervalBegin = RoundSeven(*begin);
    IntervalEnd = RoundSeven(*end);
    ShowEvery = shell::ToInt32(*every);
    ScaleX = x.value;
    LogX = fields.LogX;
    UsedData();
    return {};
}

std::pair<std::string, std::string> PostprocessorState::Reset() const
{
    return {shell::FormatText(IntervalText(m_results.timeBegin), "!@@@@@@@@@@@@@@"),
            shell::FormatText(IntervalText(m_results.timeEnd), "!@@@@@@@@@@@@@@")};
}

std::optional<int> PostprocessorState::FindSpec(std::string_view name,
                                                shell::Message& message) const
{
    const std::string wanted = shell::Trim(name);
    const int speciesCount = m_results.columnCount - 3;
    if (!wanted.empty()) {
        for (int i = 1; i <= speciesCount; ++i) {
            if (shell::Trim(speciesName(i)) == wanted) {
                message = {};
                return i;
            }
        }
    }
    message = fieldError("In the species list, the species '" + wanted + "' not found. ");
    return std::nullopt;
}

FieldCheck CheckScaleY(std::string_view text, bool logY)
{
    FieldCheck c;
    const auto v = shell::ToDouble(text);
    if (!v || *v == 0.0 || !std::isfinite(*v)) {
        c.message = fieldError("Scaling factor, please enter a nonzero number.");
        return c;
    }
    if (logY && *v < 0.0) {
        c.message = fieldError("Scaling factor for logarithmic Y-axis, please enter a positive number.");
        return c;
    }
    c.value = *v;
    return c;
}

FieldCheck CheckScaleX(std::string_view text, bool logX)
{
    FieldCheck c;
    const auto v = shell::ToDouble(text);
    if (!v || *v == 0.0 || !std::isfinite(*v)) {
        c.message = fieldError("Scaling factor for X-axis, please enter a nonzero number.");
        return c;
    }
    if (logX && *v < 0.0) {
        c.message = fieldError("Scaling factor for logarithmic X-axis, please enter a positive number.");
        return c;
    }
    c.value = *v;
    return c;
}

} // namespace zarvion::postprocessor
