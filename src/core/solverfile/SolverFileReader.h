#pragma once
// Reading the input side of a solver file into a Mechanism.
//
//   ParseCommentedValue(line)            text ahead of the first "!", trimmed; throws without "!"
//   ParseThermoRecord(l1, l2, l3, l4)    one species' four lines -> ParsedThermo
//   ParseReactionRecord(lines, position) one reaction record; advances position past it
//   ReadMechanism(path)                  the whole input side; ParseError with file and line
//   ReadMechanismFromLines(lines, name)  the same over lines already in memory
//
// Line numbers in errors are 1-based file lines. Empty fixed-width numeric fields read as 0;
// a field that holds text that is no number is a ParseError.

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "solverfile/Mechanism.h"

namespace zarvion::solverfile {

//! The text ahead of the first "!" of a header line, trimmed. Throws zarvion::Error when the
//! line holds no "!".
std::string ParseCommentedValue(std::string_view line);

//! What one THERMO record yields besides its 18 doubles.
struct ParsedThermo {
    ThermoRecord record{};
    std::string name;                  //!< columns 7-23, trimmed
    std::string MolFormula;            //!< compact formula up to the first blank
    std::string composition;           //!< "C 1 H 4 "
    double initialMoleFraction = 0;    //!< the last 10 characters of line 1
    std::string initialMoleFractionText;
};

//! Parses one species' four record lines. Throws zarvion::Error on a non-numeric field.
ParsedThermo ParseThermoRecord(std::string_view line1, std::string_view line2,
                               std::string_view line3, std::string_view line4);

//! The composition field walked into alternating tokens: "C1H4" -> "C 1 H 4 ".
std::string SplitComposition(std::string_view field);

//! Reads one reaction record starting at lines[position] (0-based) and sets position to the
//! line behind it. Throws zarvion::ParseError (fileName, 1-based line = position + 1 +
//! lineOffset) when the record is cut short or a field is not numeric.
ReactionRecord ParseReactionRecord(const std::vector<std::string>& lines, std::size_t& position,
                                   const std::string& fileName = {}, int lineOffset = 0);

//! "e" and then the element symbols in order of first appearance among the non-numeric
//! tokens of the compositions; at most 11 entries, further ones are dropped.
std::vector<std::string> BuildElementNames(const std::vector<std::string>& compositions);

//! Which header lines a reader interprets. The results readers read only lines 10, 11, 14-16,
//! 20, 24, 31, 32 (MenuForm also 28); the full form reads every value line.
enum class HeaderScope { Full, ResultsReader, ResultsReaderWithLine28 };

//! Reads the input side held in lines (without line ends). The THERMO keyword is searched from
//! line 33 on; reactions are decoded behind the "REACTIONS" line up to the closing "END".
Mechanism ReadMechanismFromLines(const std::vector<std::string>& lines, const std::string& fileName,
                                 HeaderScope scope = HeaderScope::Full);

//! Reads a solver file's input side. Throws zarvion::Error when the file cannot be read and
//! zarvion::ParseError when its layout is broken.
Mechanism ReadMechanism(const std::filesystem::path& path);

} // namespace zarvion::solverfile
