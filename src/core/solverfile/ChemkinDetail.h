#pragma once
// Building blocks of the CHEMKIN importer, exposed for its tests: tolerant number fields,
// thermodynamic entries, and reaction equations tokenised against the species list.

#include "solverfile/ChemkinImport.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zarvion::solverfile::chemkin {

//! One line of an input file without its line end; `number` is 1-based.
struct SourceLine {
    std::string text;
    int number = 0;
};

//! Splits at LF, CR LF or a lone CR; TABs become blanks.
std::vector<SourceLine> SplitSourceLines(std::string_view text);

//! Blank or TAB (never a locale-dependent test: bytes above 127 are ordinary characters).
inline bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v';
}
std::string UpperAscii(std::string_view s);
std::string TrimBlanks(std::string_view s);
std::vector<std::string> SplitWords(std::string_view s);

//! A number as Fortran list or field input writes it: blanks inside the field are dropped
//! ("0.869E 01" is 8.69), "D" and "d" exponents are accepted, a bare mantissa such as "1."
//! too. Empty, non-finite or malformed text gives nullopt.
std::optional<double> ParseFortranNumber(std::string_view field);

//! One entry of a thermodynamic data block.
struct ThermoEntry {
    std::string name;
    std::vector<std::pair<std::string, double>> elements; //!< symbol upper-cased, count
    double lowT = 0, highT = 0, commonT = 0;              //!< [K]
    std::array<double, 14> coefficients{};                //!< high range 1-7, then low range
    int line = 0;                                         //!< line of the entry's first line
};

//! Parses a thermo block: optional "THERMO [ALL]" line, optional line of global temperatures
//! (low, common, high), entries, and an optional END / ENDOFDATA. A blank common temperature
//! takes the global one (1000 K without a global line). Faults go to `messages`.
std::vector<ThermoEntry> ParseThermoBlock(const std::vector<SourceLine>& lines,
                                          const std::string& file,
                                          std::vector<ImportMessage>& messages);

//! Species names of a mechanism with a prefix lookup for tokenising equations.
class SpeciesTable {
public:
    explicit SpeciesTable(const std::vector<std::string>& names);
    //! Indices (into the names) of every name that `text` starts with at `pos`, longest
    //! first. With `ignoreCase` the comparison is ASCII case-insensitive.
    void matchesAt(std::string_view text, std::size_t pos, bool ignoreCase,
                   std::vector<int>& out) const;
    const std::vector<std::string>& names() const { return m_names; }

private:
    std::vector<std::string> m_names;
    std::unordered_map<char, std::vector<int>> m_byFirst;      // exact first character
    std::unordered_map<char, std::vector<int>> m_byFirstUpper; // upper-cased first character
};

//! Third body of a reaction equation.
enum class ThirdBody { None, PlusM, FalloffM, FalloffSpecies };

//! A reaction equation tokenised against the species list.
struct ParsedEquation {
    std::vector<std::pair<int, double>> reactants; //!< species index, coefficient
    std::vector<std::pair<int, double>> products;
    bool reversible = true;
    ThirdBody thirdBody = ThirdBody::None;
    int collider = -1; //!< species of "(+X)"
    bool hvLeft = false;
    bool hvRight = false;
    bool productsWord = false; //!< "PRODUCTS" or "PROD" stands for unnamed products
    std::string error;         //!< non-empty when the equation could not be read
};

//! Reads an equation such as "2OH(+M)<=>H2O2(+M)" or "plus+ eq=uals = plus++(Parens)".
//! Species are matched longest first with backtracking, so names holding "+", "=", "(" or
//! ")" are found; a blank separates two terms as "+" does ("plus+ eq=uals").
ParsedEquation ParseEquation(std::string_view equation, const SpeciesTable& species);

} // namespace zarvion::solverfile::chemkin
