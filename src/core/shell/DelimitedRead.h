#pragma once
// The delimited read of the small settings files: fields separated by commas or line ends,
// a field in double quotes taken as it stands (commas included).

#include <string>
#include <string_view>
#include <vector>

namespace zarvion::shell {

//! One field of a delimited read.
struct DelimitedField {
    std::string text; //!< unquoted fields lose their surrounding blanks
    bool quoted = false;
};

//! Splits text into fields: a comma or a line end (LF or CR LF) ends a field; blanks and tabs
//! ahead of a field are skipped; a field opening with a double quote runs to the next double
//! quote, and anything behind it up to the delimiter is dropped. Empty lines are skipped;
//! "a,,b" gives an empty middle field.
std::vector<DelimitedField> ReadDelimited(std::string_view text);

//! Writes fields in the same syntax: quoted fields in double quotes, separated by commas.
std::string WriteDelimited(const std::vector<DelimitedField>& fields);

} // namespace zarvion::shell
