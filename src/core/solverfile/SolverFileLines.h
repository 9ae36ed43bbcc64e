#pragma once
// The input side of a solver file as lines, the way the start window keeps it so that it can
// patch the problem header and the initial mole fractions and write the file anew.
//
//   OpnFile(path)                                    lines 1 .. closing "END" of the reactions
//   RewriteSolverFile(path, lines, parameters, fractions)  patch and write atomically, CR LF
//   FindSolverResults(path, rule)                     whether a results keyword exists

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zarvion::solverfile {

//! Growth step of line arrays [entries].
inline constexpr std::size_t LineBlock = 1000;

//! The input side as read by OpnFile. Lines[n - 1] is line n of the file, without its line end.
struct SolverFileLines {
    std::vector<std::string> Lines;
    std::int32_t SpeciesCount = 0;
    std::int32_t ReactionCount = 0;
    int thermoLine = 0; //!< 1-based line of the THERMO keyword; records start behind it

    //! Line n (1-based).
    const std::string& line(int n) const { return Lines[static_cast<std::size_t>(n) - 1]; }
};

//! Reads lines 1-28, then up to the THERMO keyword, then 4 x SpeciesCount + 3 +
//! 3 x ReactionCount lines unconditionally, then on to the first line whose trimmed,
//! upper-cased text is "END". Nothing behind it is read. Throws zarvion::ParseError when the
//! file ends early or a count is broken, zarvion::Error when it cannot be read.
SolverFileLines OpnFile(const std::filesystem::path& path);

//! The values the start window puts into lines 14-28.
struct SolverParameters {
    double pressureAtm = 1;           //!< line 14 [atm]
    int TemperatureMode = 0;          //!< line 15: 0 constant temperature, 1 energy equation
    double initialTemperature = 0;    //!< line 16 [K]
    double minTemperature = 0;        //!< line 17 [K]
    double maxTemperature = 0;        //!< line 18 [K]
    double initialTime = 0;           //!< line 19 [s]
    double finalTime = 0;             //!< line 20 [s]
    double initialStep = 0;           //!< line 21 [s]
    double maxSteps = 0;              //!< line 22, written through "#"
    double relativeTolerance = 0;     //!< line 23
    double absoluteTolerance = 0;     //!< line 24
    double outputEvery = 1;           //!< line 28, written through "#"
};

//! The text that fills columns 75-84 of a species' first record line: "0" for a zero
//! fraction, "0.000E+00" otherwise, padded on the right to 10 characters.
std::string MoleFractionField(double fraction);

//! Sets lines 14-28 from the parameters (each with one leading blank), replaces columns
//! 75-84 of every species' first record line by its fraction, and writes lines 1 through the
//! reactions' "END" with CR LF through the atomic writer, so that any old results are gone.
//! `file` is changed in place. Throws zarvion::Error when fractions do not match the species
//! count or the file cannot be written; the old file then stays as it was.
void RewriteSolverFile(const std::filesystem::path& path, SolverFileLines& file,
                       const SolverParameters& parameters, const std::vector<double>& fractions);

//! How a caller recognises the results keyword.
enum class ResultsKeywordRule {
    ExactCase,  //!< first 9 characters of the trimmed line equal "!$Results", case counted
    IgnoreCase, //!< first 9 characters of the trimmed line, upper-cased, equal "!$RESULTS"
    TextSearch  //!< "!$Results" anywhere in the text, case ignored, but not at position 0
};

//! Whether the file holds a results keyword by the caller's rule. Throws zarvion::Error when
//! the file cannot be read.
bool FindSolverResults(const std::filesystem::path& path, ResultsKeywordRule rule);

//! The TextSearch rule over text in memory: the 0-based position of "!$Results" (case
//! ignored), or npos when it is absent or stands at position 0.
std::size_t FindResultsKeywordInText(const std::string& text);

} // namespace zarvion::solverfile
