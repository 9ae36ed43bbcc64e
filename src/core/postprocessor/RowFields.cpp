#include "postprocessor/RowFields.h"

#include "shell/TextFormat.h"

#include <charconv>
#include <cmath>

namespace zarvion::postprocessor {

namespace {
bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
} // namespace

std::string_view FieldText(std::string_view row, int column)
{
    const std::size_t start = 17u * static_cast<std::size_t>(column);
    if (column < 0 || start >= row.size()) {
        return {};
    }
    std::string_view f = row.substr(start, 16);
    while (!f.empty() && isBlank(f.front())) {
        f.remove_prefix(1);
    }
    while (!f.empty() && isBlank(f.back())) {
        f.remove_suffix(1);
    }
    return f;
}

double ParseNumber(std::string_view text, bool& numeric)
{
    numeric = false;
    if (text.empty()) {
        return 0.0;
    }
    std::string_view t = text;
    if (t.front() == '+') {
        t.remove_prefix(1);
    }
    double v = 0.0;
    const auto [end, ec] = std::from_chars(t.data(), t.data() + t.size(), v);
    if (ec != std::errc() || end != t.data() + t.size() || !std::isfinite(v)) {
        // "300." and similar forms from_chars accepts; anything else is not a number here,
        // except what the shared numeric test accepts (such as "1.e+3").
        if (auto parsed = shell::ToDouble(text)) {
            numeric = std::isfinite(*parsed);
            return numeric ? *parsed : 0.0;
        }
        return 0.0;
    }
    numeric = true;
    return v;
}

double FieldValue(std::string_view row, int column)
{
    bool numeric = false;
    return ParseNumber(FieldText(row, column), numeric);
}

double FieldValue(std::string_view row, int column, bool& numeric)
{
    return ParseNumber(FieldText(row, column), numeric);
}

double RoundSeven(double value)
{
    if (value == 0.0 || !std::isfinite(value)) {
        return value;
    }
    bool numeric = false;
    const double r = ParseNumber(shell::Format(value, "0.000000E+00"), numeric);
    return numeric ? r : value;
}

std::string IntervalText(double value)
{
    return shell::Format(value, "0.000000E+00");
}

} // namespace zarvion::postprocessor
