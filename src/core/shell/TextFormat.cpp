#include "shell/TextFormat.h"

#include "shell/Error.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace zarvion::shell {

namespace {

//! A finite, non-negative number as decimal digits: value = 0.d1d2d3... x 10^pointPos.
//! The digits carry 15 significant figures, the precision every conversion of the program
//! works with, so that 2.675 is seen as 2.675 and not as 2.67499999...
struct Decimal {
    std::string digits; // no leading zeros unless the value is zero ("" for zero)
    int pointPos = 0;   // number of digits before the decimal point
};

Decimal toDecimal(double magnitude)
{
    Decimal d;
    if (magnitude == 0.0) {
        return d;
    }
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific,
                                   14); // d.dddddddddddddde+XX
    std::string s(buf, res.ptr);
    const auto ePos = s.find('e');
    std::string mant = s.substr(0, ePos);
    const int exp10 = std::atoi(s.c_str() + ePos + 1);
    mant.erase(std::remove(mant.begin(), mant.end(), '.'), mant.end());
    while (!mant.empty() && mant.back() == '0') {
        mant.pop_back();
    }
    d.digits = mant;
    d.pointPos = exp10 + 1;
    return d;
}

//! Rounds to keep the digits up to (and excluding) index `keep` of d.digits, half away from
//! zero. A carry out of the first digit moves the point. keep <= 0 rounds on the first digit.
void roundDigits(Decimal& d, int keep)
{
    if (d.digits.empty() || keep >= static_cast<int>(d.digits.size())) {
        return;
    }
    if (keep < 0) {
        d.digits.clear(); // far below the last written digit
        return;
    }
    const bool up = d.digits[static_cast<std::size_t>(keep)] >= '5';
    d.digits.resize(static_cast<std::size_t>(keep));
    if (up) {
        int i = keep - 1;
        while (i >= 0 && d.digits[static_cast<std::size_t>(i)] == '9') {
            d.digits[static_cast<std::size_t>(i)] = '0';
            --i;
        }
        if (i >= 0) {
            ++d.digits[static_cast<std::size_t>(i)];
        } else {
            d.digits.insert(d.digits.begin(), '1');
            ++d.pointPos;
        }
    }
    while (!d.digits.empty() && d.digits.back() == '0') {
        d.digits.pop_back();
    }
    if (d.digits.empty()) {
        d.pointPos = 0;
    }
}

char digitAt(const Decimal& d, int index)
{
    return (index >= 0 && index < static_cast<int>(d.digits.size()))
               ? d.digits[static_cast<std::size_t>(index)]
               : '0';
}

//! A parsed number pattern.
struct NumberPattern {
    std::string prefix;
    std::string suffix;
    int intZeros = 0;  // "0" before the point: integer digits always written
    int intPlaces = 0; // "0" and "#" before the point
    bool grouping = false;
    bool point = false;
    int fracZeros = 0; // "0" after the point
    int fracPlaces = 0; // "0" and "#" after the point
    bool exponent = false;
    bool expAlwaysSign = false; // "E+" rather than "E-"
    char expLetter = 'E';
    int expZeros = 0;
};

NumberPattern parsePattern(std::string_view p)
{
    NumberPattern np;
    std::size_t i = 0;
    auto isPlace = [](char c) { return c == '0' || c == '#'; };
    // Literal text ahead of the number.
    while (i < p.size() && !isPlace(p[i]) && p[i] != '.') {
        if (p[i] == '\\' && i + 1 < p.size()) {
            ++i;
        }
        np.prefix += p[i++];
    }
    while (i < p.size() && (isPlace(p[i]) || p[i] == ',')) {
        if (p[i] == ',') {
            np.grouping = true;
        } else {
            ++np.intPlaces;
            if (p[i] == '0') {
                ++np.intZeros;
            }
        }
        ++i;
    }
    if (i < p.size() && p[i] == '.') {
        np.point = true;
        ++i;
        while (i < p.size() && isPlace(p[i])) {
            ++np.fracPlaces;
            if (p[i] == '0') {
                ++np.fracZeros;
            }
            ++i;
        }
    }
    if (i + 1 < p.size() && (p[i] == 'E' || p[i] == 'e') && (p[i + 1] == '+' || p[i + 1] == '-')) {
        np.exponent = true;
        np.expLetter = p[i];
        np.expAlwaysSign = p[i + 1] == '+';
        i += 2;
        while (i < p.size() && isPlace(p[i])) {
            if (p[i] == '0') {
                ++np.expZeros;
            }
            ++i;
        }
    }
    for (; i < p.size(); ++i) {
        if (p[i] == '\\' && i + 1 < p.size()) {
            ++i;
        }
        np.suffix += p[i];
    }
    return np;
}

std::string groupThousands(const std::string& digits)
{
    std::string out;
    const int n = static_cast<int>(digits.size());
    for (int i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0) {
            out += ',';
        }
        out += digits[static_cast<std::size_t>(i)];
    }
    return out;
}

std::string formatFixed(double magnitude, const NumberPattern& np, bool& nonZero)
{
    Decimal d = toDecimal(magnitude);
    roundDigits(d, d.pointPos + np.fracPlaces);
    nonZero = !d.digits.empty();
    std::string intPart;
    for (int k = 0; k < d.pointPos; ++k) {
        intPart += digitAt(d, k);
    }
    if (static_cast<int>(intPart.size()) < np.intZeros) {
        intPart.insert(0, static_cast<std::size_t>(np.intZeros) - intPart.size(), '0');
    }
    if (np.grouping) {
        intPart = groupThousands(intPart);
    }
    std::string frac;
    for (int k = 0; k < np.fracPlaces; ++k) {
        frac += digitAt(d, d.pointPos + k);
    }
    while (static_cast<int>(frac.size()) > np.fracZeros && frac.back() == '0') {
        frac.pop_back();
    }
    std::string out = intPart;
    if (np.point) {
        out += '.';
        out += frac;
    }
    return out;
}

std::string formatScientific(double magnitude, const NumberPattern& np, bool& nonZero)
{
    // Integer digits of the mantissa: as many as the pattern has places, at least one.
    const int intDigits = std::max(np.intPlaces, 1);
    Decimal d = toDecimal(magnitude);
    int exp10 = 0;
    if (!d.digits.empty()) {
        roundDigits(d, intDigits + np.fracPlaces);
        exp10 = d.pointPos - intDigits;
    }
    nonZero = !d.digits.empty();
    std::string out;
    for (int k = 0; k < intDigits; ++k) {
        out += digitAt(d, k);
    }
    if (np.intPlaces == 0 && out == "0") {
        out.clear();
    }
    std::string frac;
    for (int k = 0; k < np.fracPlaces; ++k) {
        frac += digitAt(d, intDigits + k);
    }
    while (static_cast<int>(frac.size()) > np.fracZeros && frac.back() == '0') {
        frac.pop_back();
    }
    if (np.point) {
        out += '.';
        out += frac;
    }
    out += np.expLetter;
    if (exp10 < 0) {
        out += '-';
    } else if (np.expAlwaysSign) {
        out += '+';
    }
    std::string expDigits = std::to_string(std::abs(exp10));
    if (static_cast<int>(expDigits.size()) < np.expZeros) {
        expDigits.insert(0, static_cast<std::size_t>(np.expZeros) - expDigits.size(), '0');
    }
    if (np.expZeros == 0 && exp10 == 0) {
        expDigits.clear();
    }
    return out + expDigits;
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

//! Length of the longest prefix of s that is a decimal number; 0 when there is none. An
//! exponent is taken only when digits follow its letter and sign.
std::size_t numericPrefix(std::string_view s)
{
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) {
        ++i;
    }
    std::size_t digits = 0;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9') {
        ++i;
        ++digits;
    }
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && s[i] >= '0' && s[i] <= '9') {
            ++i;
            ++digits;
        }
    }
    if (digits == 0) {
        return 0;
    }
    if (i < s.size() && (s[i] == 'E' || s[i] == 'e')) {
        std::size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) {
            ++j;
        }
        const std::size_t expStart = j;
        while (j < s.size() && s[j] >= '0' && s[j] <= '9') {
            ++j;
        }
        if (j > expStart) {
            i = j;
        }
    }
    return i;
}

//! Parses a complete numeric text (already checked by numericPrefix). Overflow gives nullopt;
//! underflow gives a signed zero.
std::optional<double> parseNumber(std::string_view s)
{
    bool negative = false;
    if (!s.empty() && (s[0] == '+' || s[0] == '-')) {
        negative = s[0] == '-';
        s.remove_prefix(1);
    }
    double value = 0.0;
    const auto res = std::from_chars(s.data(), s.data() + s.size(), value);
    if (res.ec == std::errc::result_out_of_range) {
        // Decide between underflow and overflow by the decimal magnitude of the text.
        long long mag = 0;
        bool seenNonZero = false;
        bool afterPoint = false;
        std::size_t k = 0;
        for (; k < s.size() && s[k] != 'e' && s[k] != 'E'; ++k) {
            if (s[k] == '.') {
                afterPoint = true;
            } else if (!seenNonZero && s[k] != '0') {
                seenNonZero = true;
                if (afterPoint) {
                    --mag;
                }
            } else if (seenNonZero && !afterPoint) {
                ++mag;
            } else if (!seenNonZero && afterPoint) {
                --mag;
            }
        }
        if (k < s.size()) {
            const auto expText = s.substr(k + 1);
            long long e = 0;
            const bool eNeg = !expText.empty() && expText[0] == '-';
            for (char c : expText) {
                if (c >= '0' && c <= '9') {
                    e = std::min<long long>(e * 10 + (c - '0'), 1000000000LL);
                }
            }
            mag += eNeg ? -e : e;
        }
        if (mag < 0) {
            return negative ? -0.0 : 0.0;
        }
        return std::nullopt;
    }
    if (res.ec != std::errc() || res.ptr != s.data() + s.size()) {
        return std::nullopt;
    }
    return negative ? -value : value;
}

double roundHalfEven(double value)
{
    const double floorValue = std::floor(value);
    const double diff = value - floorValue;
    if (diff > 0.5) {
        return floorValue + 1.0;
    }
    if (diff < 0.5) {
        return floorValue;
    }
    return std::fmod(floorValue, 2.0) == 0.0 ? floorValue : floorValue + 1.0;
}

template <typename Int>
Int toInteger(double value, const char* typeName)
{
    if (!std::isfinite(value)) {
        throw Error(std::string("Overflow converting a non-finite value to ") + typeName);
    }
    const double r = roundHalfEven(value);
    if (r < static_cast<double>(std::numeric_limits<Int>::min()) ||
        r > static_cast<double>(std::numeric_limits<Int>::max())) {
        throw Error("Overflow converting " + ShortestText(value) + " to " + typeName);
    }
    return static_cast<Int>(r);
}

constexpr std::array<const char*, 12> MonthShort = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                    "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<const char*, 12> MonthLong = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 7> DayShort = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<const char*, 7> DayLong = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                "Thursday", "Friday", "Saturday"};

std::string twoDigits(int v)
{
    char buf[16];
    std::snprintf(buf, sizeof buf, "%02d", v);
    return buf;
}

} // namespace

std::string Format(double value, std::string_view pattern)
{
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-Inf" : "Inf";
    }
    const NumberPattern np = parsePattern(pattern);
    if (np.intPlaces == 0 && np.fracPlaces == 0 && !np.point && !np.exponent) {
        // No number placeholders: a text field takes the number's general text; anything
        // else is literal text.
        if (pattern.find('@') != std::string_view::npos) {
            return FormatText(ShortestText(value), pattern);
        }
        return std::string(pattern);
    }
    bool nonZero = false;
    const double magnitude = std::fabs(value);
    std::string body = np.exponent ? formatScientific(magnitude, np, nonZero)
                                   : formatFixed(magnitude, np, nonZero);
    // A value that rounds to zero in the written digits carries no sign.
    const bool negative = value < 0 && nonZero;
    return np.prefix + (negative ? "-" : "") + body + np.suffix;
}

std::string FormatText(std::string_view text, std::string_view pattern)
{
    bool leftAlign = false;
    std::size_t width = 0;
    for (char c : pattern) {
        if (c == '!') {
            leftAlign = true;
        } else if (c == '@') {
            ++width;
        }
    }
    std::string out(text);
    if (out.size() >= width) {
        return out;
    }
    const std::string pad(width - out.size(), ' ');
    return leftAlign ? out + pad : pad + out;
}

std::string FormatDate(const std::tm& when, std::string_view pattern)
{
    std::string out;
    bool lastWasHour = false;
    std::size_t i = 0;
    auto run = [&](char c) {
        std::size_t n = 0;
        while (i + n < pattern.size() &&
               (pattern[i + n] == c || pattern[i + n] == static_cast<char>(c - 'a' + 'A'))) {
            ++n;
        }
        return n;
    };
    while (i < pattern.size()) {
        const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(pattern[i])));
        const int month = std::clamp(when.tm_mon, 0, 11);
        const int wday = std::clamp(when.tm_wday, 0, 6);
        if (c == 'y') {
            const std::size_t n = run('y');
            out += n >= 3 ? std::to_string(when.tm_year + 1900)
                          : twoDigits((when.tm_year + 1900) % 100);
            i += n;
            lastWasHour = false;
        } else if (c == 'm') {
            const std::size_t n = run('m');
            if (lastWasHour && n <= 2) { // "hh:mm" means minutes
                out += n == 2 ? twoDigits(when.tm_min) : std::to_string(when.tm_min);
            } else if (n >= 4) {
                out += MonthLong[static_cast<std::size_t>(month)];
            } else if (n == 3) {
                out += MonthShort[static_cast<std::size_t>(month)];
            } else {
                out += n == 2 ? twoDigits(month + 1) : std::to_string(month + 1);
            }
            i += n;
            lastWasHour = false;
        } else if (c == 'd') {
            const std::size_t n = run('d');
            if (n >= 4) {
                out += DayLong[static_cast<std::size_t>(wday)];
            } else if (n == 3) {
                out += DayShort[static_cast<std::size_t>(wday)];
            } else {
                out += n == 2 ? twoDigits(when.tm_mday) : std::to_string(when.tm_mday);
            }
            i += n;
            lastWasHour = false;
        } else if (c == 'h') {
            const std::size_t n = run('h');
            out += n >= 2 ? twoDigits(when.tm_hour) : std::to_string(when.tm_hour);
            i += n;
            lastWasHour = true;
        } else if (c == 'n') {
            const std::size_t n = run('n');
            out += n >= 2 ? twoDigits(when.tm_min) : std::to_string(when.tm_min);
            i += n;
            lastWasHour = false;
        } else if (c == 's') {
            const std::size_t n = run('s');
            out += n >= 2 ? twoDigits(when.tm_sec) : std::to_string(when.tm_sec);
            i += n;
            lastWasHour = false;
        } else {
            out += pattern[i++];
            // A separator keeps "hh:mm" recognised as hours then minutes.
        }
    }
    return out;
}

std::tm Now()
{
    const std::time_t t = std::time(nullptr);
    std::tm result{};
    localtime_r(&t, &result);
    return result;
}

std::string ShortestText(double value)
{
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-Inf" : "Inf";
    }
    if (value == 0.0) {
        return "0";
    }
    Decimal d = toDecimal(std::fabs(value));
    // At the top of the double range fifteen digits rounded up pass the largest double
    // (1.7976931348623157E+308 would be written 1.79769313486232E+308, which reads back as
    // an overflow): there the digits are cut toward zero, so that the text reads back.
    constexpr std::string_view topDigits = "179769313486231";
    if (d.pointPos == 309) {
        std::string padded = d.digits;
        padded.resize(topDigits.size(), '0');
        if (padded > topDigits) {
            d.digits = std::string(topDigits);
        }
    }
    const std::string sign = value < 0 ? "-" : "";
    const int exp10 = d.pointPos - 1; // value = d1.d2d3... x 10^exp10
    if (exp10 < -4 || exp10 >= 15) {
        std::string mant(1, d.digits[0]);
        if (d.digits.size() > 1) {
            mant += '.';
            mant += d.digits.substr(1);
        }
        const std::string e = std::to_string(std::abs(exp10));
        return sign + mant + "E" + (exp10 < 0 ? "-" : "+") + (e.size() < 2 ? "0" + e : e);
    }
    std::string out;
    if (d.pointPos <= 0) {
        out = "0." + std::string(static_cast<std::size_t>(-d.pointPos), '0') + d.digits;
    } else {
        for (int k = 0; k < d.pointPos; ++k) {
            out += digitAt(d, k);
        }
        if (static_cast<int>(d.digits.size()) > d.pointPos) {
            out += '.';
            out += d.digits.substr(static_cast<std::size_t>(d.pointPos));
        }
    }
    return sign + out;
}

bool IsNumeric(std::string_view text)
{
    return ToDouble(text).has_value();
}

std::optional<double> ToDouble(std::string_view text)
{
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    if (text.empty() || numericPrefix(text) != text.size()) {
        return std::nullopt;
    }
    return parseNumber(text);
}

std::int32_t ToInt32(double value)
{
    return toInteger<std::int32_t>(value, "a 32-bit integer");
}

std::int16_t ToInt16(double value)
{
    return toInteger<std::int16_t>(value, "a 16-bit integer");
}

double LeadingValue(std::string_view text)
{
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    const std::size_t n = numericPrefix(text);
    if (n == 0) {
        return 0.0;
    }
    const auto v = parseNumber(text.substr(0, n));
    if (!v) {
        // Too large for a double: the closest value of the right sign.
        return text[0] == '-' ? -std::numeric_limits<double>::max()
                              : std::numeric_limits<double>::max();
    }
    return *v;
}

std::string Left(std::string_view s, std::size_t n)
{
    return std::string(s.substr(0, std::min(n, s.size())));
}

std::string Right(std::string_view s, std::size_t n)
{
    const std::size_t k = std::min(n, s.size());
    return std::string(s.substr(s.size() - k));
}

std::string Mid(std::string_view s, std::size_t start, std::size_t n)
{
    const std::size_t from = start == 0 ? 0 : start - 1;
    if (from >= s.size()) {
        return {};
    }
    return std::string(s.substr(from, std::min(n, s.size() - from)));
}

std::string Mid(std::string_view s, std::size_t start)
{
    return Mid(s, start, std::string_view::npos);
}

std::string Trim(std::string_view s)
{
    return LTrim(RTrim(s));
}

std::string LTrim(std::string_view s)
{
    const auto p = s.find_first_not_of(' ');
    return p == std::string_view::npos ? std::string() : std::string(s.substr(p));
}

std::string RTrim(std::string_view s)
{
    const auto p = s.find_last_not_of(' ');
    return p == std::string_view::npos ? std::string() : std::string(s.substr(0, p + 1));
}

std::string UCase(std::string_view s)
{
    std::string out(s);
    for (char& c : out) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return out;
}

std::string LCase(std::string_view s)
{
    std::string out(s);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return out;
}

} // namespace zarvion::shell
