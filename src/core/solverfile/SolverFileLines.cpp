#include "solverfile/SolverFileLines.h"

#include <algorithm>
#include <fstream>

#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"
#include "solverfile/SolverFileReader.h"

namespace zarvion::solverfile {

using shell::Format;
using shell::Left;
using shell::Trim;
using shell::UCase;

namespace {

//! Reads one line without its line end; false at the end of the file.
bool nextLine(std::istream& in, std::string& line)
{
    if (!std::getline(in, line)) {
        return false;
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

//! Appends a line, growing the array in steps of LineBlock.
void append(std::vector<std::string>& lines, std::string line)
{
    if (lines.size() == lines.capacity()) {
        lines.reserve(lines.capacity() + LineBlock);
    }
    lines.push_back(std::move(line));
}

std::int32_t countFrom(const std::vector<std::string>& lines, int lineNo, const std::string& file)
{
    try {
        const std::string text = ParseCommentedValue(lines[lineNo - 1]);
        const auto value = shell::ToDouble(text);
        if (!value) {
            throw Error("the count \"" + text + "\" is not a number");
        }
        const std::int32_t count = shell::ToInt32(*value);
        if (count < 0) {
            throw Error("a negative count");
        }
        return count;
    } catch (const ParseError&) {
        throw;
    } catch (const Error& e) {
        throw ParseError(file, lineNo, 0, e.what());
    }
}

} // namespace

SolverFileLines OpnFile(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw Error("cannot open " + path.string());
    }
    const std::string file = path.string();
    SolverFileLines result;
    auto& lines = result.Lines;
    lines.reserve(LineBlock);
    std::string line;
    auto ended = [&](const char* where) {
        return ParseError(file, static_cast<int>(lines.size()), 0,
                          std::string("the file ends ") + where);
    };

    while (lines.size() < 28) {
        if (!nextLine(in, line)) {
            throw ended("inside the problem header");
        }
        append(lines, line);
    }
    result.SpeciesCount = countFrom(lines, 10, file);
    result.ReactionCount = countFrom(lines, 11, file);

    for (;;) {
        if (!nextLine(in, line)) {
            throw ended("before the THERMO keyword");
        }
        append(lines, line);
        if (Left(UCase(Trim(line)), 6) == "THERMO") {
            break;
        }
    }
    result.thermoLine = static_cast<int>(lines.size());

    const std::int64_t fixedSpan = 4 * std::int64_t{result.SpeciesCount} + 3 +
                                   3 * std::int64_t{result.ReactionCount};
    for (std::int64_t i = 0; i < fixedSpan; ++i) {
        if (!nextLine(in, line)) {
            throw ended("inside the records");
        }
        append(lines, line);
    }
    for (;;) {
        if (!nextLine(in, line)) {
            throw ended("before the END of the reactions");
        }
        append(lines, line);
        if (UCase(Trim(line)) == "END") {
            break;
        }
    }
    lines.shrink_to_fit();
    return result;
}

std::string MoleFractionField(double fraction)
{
    const std::string text = fraction == 0 ? Format(fraction, "0") : Format(fraction, "0.000E+00");
    return shell::FormatText(text, "!@@@@@@@@@@");
}

void RewriteSolverFile(const std::filesystem::path& path, SolverFileLines& file,
                       const SolverParameters& p, const std::vector<double>& fractions)
{
    auto& lines = file.Lines;
    const std::size_t ns = static_cast<std::size_t>(file.SpeciesCount);
    if (fractions.size() != ns) {
        throw Error("RewriteSolverFile: " + std::to_string(fractions.size()) +
                    " mole fractions for " + std::to_string(ns) + " species");
    }
    if (lines.size() < 28 || file.thermoLine < 28 ||
        static_cast<std::size_t>(file.thermoLine) + 4 * ns > lines.size()) {
        throw Error("RewriteSolverFile: the lines do not hold a whole input side");
    }
    const char* real = "0.00####E+00";
    auto set = [&](int n, std::string text) { lines[static_cast<std::size_t>(n) - 1] = std::move(text); };
    set(14, Format(p.pressureAtm, real) + " !Pressure, atm");
    set(15, p.TemperatureMode == 1 ? "1 !Temperature Equation" : "0 !Constant Temperature");
    set(16, Format(p.initialTemperature, real) + " !Initial Temperature");
    set(17, Format(p.minTemperature, real) + " !Minimal Allowable Temperature");
    set(18, Format(p.maxTemperature, real) + " !Maximum Allowable Temperature");
    set(19, Format(p.initialTime, real) + " !Initial Time");
    set(20, Format(p.finalTime, real) + " !Final Time");
    set(21, Format(p.initialStep, real) + " !Initial Step Size");
    set(22, Format(p.maxSteps, "#") + " !Maximum Number of Steps");
    set(23, Format(p.relativeTolerance, real) + " !Relative Tolerance");
    set(24, Format(p.absoluteTolerance, real) + " !Absolute Tolerance");
    set(25, "");
    set(26, "!Output Parameters");
    set(27, "100000 !R!Maximum Number of lines in output");
    set(28, Format(p.outputEvery, "#") + " !Delta N");
    for (int n = 14; n <= 28; ++n) {
        set(n, " " + lines[static_cast<std::size_t>(n) - 1]);
    }
    for (std::size_t k = 0; k < ns; ++k) {
        std::string& first = lines[static_cast<std::size_t>(file.thermoLine) + 4 * k];
        first = Left(first, 74) + MoleFractionField(fractions[k]);
    }
    shell::WriteFileAtomically(path, shell::JoinCrLf(lines));
}

std::size_t FindResultsKeywordInText(const std::string& text)
{
    const std::string upper = UCase(text);
    const std::size_t at = upper.find("!$RESULTS");
    return at == 0 ? std::string::npos : at;
}

bool FindSolverResults(const std::filesystem::path& path, ResultsKeywordRule rule)
{
    if (rule == ResultsKeywordRule::TextSearch) {
        return FindResultsKeywordInText(shell::ReadFile(path)) != std::string::npos;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw Error("cannot open " + path.string());
    }
    std::string line;
    while (nextLine(in, line)) {
        const std::string head = Left(Trim(line), 9);
        if (rule == ResultsKeywordRule::ExactCase ? head == "!$Results"
                                                  : UCase(head) == "!$RESULTS") {
            return true;
        }
    }
    return false;
}

} // namespace zarvion::solverfile
