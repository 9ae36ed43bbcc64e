#pragma once
// Locale-independent text and number patterns shared by every module.
// Positions are 1-based like the fixed-format files they serve.

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace zarvion::shell {

//! Writes a number through a pattern of "0", "#", ".", "E+00"/"E-00" parts, as in
//! "0.00####E+00" (1234.5 -> "1.2345E+03"), "0.000E+00", "0.###E+00", "0.##", "#", "0.0",
//! "0.E+00", "#0.##". Rounding is half away from zero on the decimal digits written, of the
//! value seen with 15 significant digits (2.675 -> "2.68" by "0.##"). The point is written
//! whenever the pattern has one (2 -> "2." by "0.##"); "#" alone writes 0 as "". A value that
//! rounds to zero has no sign. "E-00" writes the exponent's sign only when negative; an
//! exponent has at least as many digits as the pattern's zeros. A pattern of "@" only puts the
//! number's ShortestText into that field. Non-finite values give "Inf", "-Inf", "NaN".
std::string Format(double value, std::string_view pattern);

//! Puts a text into an "@" field: "@@@@@" right-aligns in 5 columns, "!@@@@" left-aligns.
//! A text longer than the field is kept whole.
std::string FormatText(std::string_view text, std::string_view pattern);

//! Dates and times: "mmm d yyyy" gives "Mar 5 2014"; "hh:mm:ss" the time of day.
std::string FormatDate(const std::tm& when, std::string_view pattern);
std::tm Now();

//! The shortest general text of a double, as the program writes numbers into messages:
//! up to 15 significant digits, "1E-10", "0.0001", "123456789", "1.5E+20".
std::string ShortestText(double value);

//! True when the trimmed text is a decimal number ("1", "-2.5", ".5", "1E-10", "1.e+3", "1D5"
//! is not). Blanks around it are allowed; an empty text is not numeric.
bool IsNumeric(std::string_view text);

//! The number of a numeric text; std::nullopt when IsNumeric is false.
std::optional<double> ToDouble(std::string_view text);

//! Converts like the program's integer conversions: rounds half to even, and throws
//! zarvion::Error on overflow of the target type.
std::int32_t ToInt32(double value);
std::int16_t ToInt16(double value);

//! Reads the leading number of a text, as a permissive field reader: blanks skipped,
//! the longest numeric prefix taken, 0 when there is none.
double LeadingValue(std::string_view text);

// Text operations on 1-based positions; out-of-range requests are clipped, never thrown.
std::string Left(std::string_view s, std::size_t n);
std::string Right(std::string_view s, std::size_t n);
std::string Mid(std::string_view s, std::size_t start, std::size_t n);
std::string Mid(std::string_view s, std::size_t start);
std::string Trim(std::string_view s);
std::string LTrim(std::string_view s);
std::string RTrim(std::string_view s);
std::string UCase(std::string_view s);
std::string LCase(std::string_view s);

} // namespace zarvion::shell
