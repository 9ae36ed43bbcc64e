#pragma once
// Reading the fixed 17-character grid of a rebuilt result row: column c (0 time,
// 1 temperature, 2 density, i + 2 species i) is the 16 characters from offset 17c.

#include <string>
#include <string_view>

namespace zarvion::postprocessor {

inline constexpr double NullValue = -99999.0; //!< mark of a point without a value

//! Trimmed text of column c of a row; empty when the row is shorter.
std::string_view FieldText(std::string_view row, int column);

//! Numeric value of a trimmed text; numeric is false (and 0 returned) for an empty or
//! non-numeric text. Accepts the forms the results writer produces ("-1.5E-03", "300.").
double ParseNumber(std::string_view text, bool& numeric);

//! Column c as a number; a non-numeric field reads as 0.
double FieldValue(std::string_view row, int column);

//! Column c as a number; numeric tells whether the field held one.
double FieldValue(std::string_view row, int column, bool& numeric);

//! Column of species i (1-based) in a rebuilt row.
inline int SpeciesColumn(int species) { return species + 2; }

//! A value rounded as the pattern "0.000000E+00" writes it (seven significant digits).
double RoundSeven(double value);

//! A text rounded through "0.000000E+00": the form in which times are compared and shown.
std::string IntervalText(double value);

} // namespace zarvion::postprocessor
