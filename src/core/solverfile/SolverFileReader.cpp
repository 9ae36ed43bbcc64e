#include "solverfile/SolverFileReader.h"

#include <algorithm>
#include <cctype>
#include <cstdint>

#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"

namespace zarvion::solverfile {

using shell::Left;
using shell::Mid;
using shell::Trim;
using shell::UCase;

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

//! A fixed-width double field (1-based start); blank reads as 0.
double fieldDouble(std::string_view line, std::size_t start, std::size_t width, const char* what)
{
    const std::string text = Trim(Mid(line, start, width));
    if (text.empty()) {
        return 0.0;
    }
    const auto value = shell::ToDouble(text);
    if (!value) {
        throw Error(std::string(what) + " is not a number: \"" + text + "\"");
    }
    return *value;
}

std::int32_t fieldInt(std::string_view line, std::size_t start, std::size_t width, const char* what)
{
    return shell::ToInt32(fieldDouble(line, start, width, what));
}

//! The header value of a line as a double; the "!" rule applies.
double headerDouble(const std::vector<std::string>& lines, int lineNo, const std::string& file)
{
    try {
        const std::string text = ParseCommentedValue(lines[lineNo - 1]);
        const auto value = shell::ToDouble(text);
        if (!value) {
            throw Error("the value \"" + text + "\" is not a number");
        }
        return *value;
    } catch (const ParseError&) {
        throw;
    } catch (const Error& e) {
        throw ParseError(file, lineNo, 0, e.what());
    }
}

std::int32_t headerInt(const std::vector<std::string>& lines, int lineNo, const std::string& file)
{
    try {
        return shell::ToInt32(headerDouble(lines, lineNo, file));
    } catch (const ParseError&) {
        throw;
    } catch (const Error& e) {
        throw ParseError(file, lineNo, 0, e.what());
    }
}

//! Lines 31 and 32: the trimmed line up to its first blank.
double firstTokenDouble(const std::vector<std::string>& lines, int lineNo, const std::string& file)
{
    const std::string trimmed = Trim(lines[lineNo - 1]);
    const std::string token = trimmed.substr(0, trimmed.find(' '));
    const auto value = shell::ToDouble(token);
    if (!value) {
        throw ParseError(file, lineNo, 0, "the value \"" + token + "\" is not a number");
    }
    return *value;
}

bool startsWithUpper(std::string_view line, std::string_view keyword)
{
    return Left(UCase(Trim(line)), keyword.size()) == keyword;
}

} // namespace

std::string ParseCommentedValue(std::string_view line)
{
    const auto bang = line.find('!');
    if (bang == std::string_view::npos) {
        throw Error("the line has no \"!\" behind its value");
    }
    return Trim(line.substr(0, bang));
}

std::string SplitComposition(std::string_view field)
{
    const std::string text = Trim(field) + " ";
    std::string out;
    std::string run;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i > 0 && isDigit(text[i - 1]) != isDigit(text[i])) {
            out += run;
            out += ' ';
            run.clear();
        }
        run += text[i];
    }
    return out;
}

ParsedThermo ParseThermoRecord(std::string_view line1, std::string_view line2,
                               std::string_view line3, std::string_view line4)
{
    ParsedThermo t;
    t.name = Trim(Mid(line1, 7, 17));
    const std::string field = Mid(line1, 24, 22);
    const std::string compact = shell::LTrim(field);
    t.MolFormula = compact.substr(0, compact.find(' '));
    t.composition = SplitComposition(field);
    t.record[16] = fieldDouble(line1, 48, 8, "the low temperature limit");
    t.record[17] = fieldDouble(line1, 57, 8, "the high temperature limit");
    t.record[18] = fieldDouble(line1, 66, 8, "the common temperature");
    t.initialMoleFractionText = Trim(shell::Right(line1, 10));
    t.initialMoleFraction = t.initialMoleFractionText.empty()
                                ? 0.0
                                : fieldDouble(t.initialMoleFractionText, 1,
                                              t.initialMoleFractionText.size(),
                                              "the initial mole fraction");
    for (int k = 0; k < 5; ++k) {
        t.record[1 + k] = fieldDouble(line2, 1 + 15 * k, 15, "a thermo coefficient");
        t.record[6 + k] = fieldDouble(line3, 1 + 15 * k, 15, "a thermo coefficient");
    }
    for (int k = 0; k < 4; ++k) {
        t.record[11 + k] = fieldDouble(line4, 1 + 15 * k, 15, "a thermo coefficient");
    }
    t.record[15] = fieldDouble(line4, 61, 15, "the molecular weight");
    return t;
}

ReactionRecord ParseReactionRecord(const std::vector<std::string>& lines, std::size_t& position,
                                   const std::string& fileName, int lineOffset)
{
    ReactionRecord r;
    std::size_t at = position;
    auto next = [&](const char* what) -> const std::string& {
        if (at >= lines.size()) {
            throw ParseError(fileName, static_cast<int>(at) + 1 + lineOffset, 0,
                             std::string("the reaction record ends before its ") + what);
        }
        return lines[at++];
    };
    auto guarded = [&](auto&& body) {
        try {
            body();
        } catch (const ParseError&) {
            throw;
        } catch (const Error& e) {
            throw ParseError(fileName, static_cast<int>(at) + lineOffset, 0, e.what());
        }
    };

    r.text = Mid(next("title line"), 7);
    const std::string& intLine = next("integer line");
    guarded([&] {
        for (int k = 1; k <= 16; ++k) {
            r.ints[k] = fieldInt(intLine, 7 + 4 * (k - 1), 4, "an integer field");
        }
    });
    const int kind = r.ints[slot::FalloffKind];
    if (kind > 3) {
        throw ParseError(fileName, static_cast<int>(position) + 2 + lineOffset, 0,
                         "unknown fall-off kind " + std::to_string(kind));
    }
    const std::string& rateLine = next("rate line");
    guarded([&] {
        for (int k = 0; k < 3; ++k) {
            r.reals[1 + k] = fieldDouble(rateLine, 7 + 15 * k, 15, "a rate parameter");
        }
    });
    if (r.ints[slot::HasLowLimit] == 1) {
        const std::string& low = next("low-pressure line");
        guarded([&] {
            for (int k = 0; k < 3; ++k) {
                r.reals[4 + k] = fieldDouble(low, 7 + 15 * k, 15, "a low-pressure parameter");
            }
        });
    }
    if (kind > 0) {
        const int count = kind == 3 ? 3 : (kind == 1 ? 4 : 5);
        const std::string& falloff = next("fall-off line");
        guarded([&] {
            for (int k = 0; k < count; ++k) {
                r.reals[7 + k] = fieldDouble(falloff, 7 + 15 * k, 15, "a fall-off parameter");
            }
        });
    }
    if (r.ints[slot::PartnerCount] > 0) {
        next("partner names");
        const std::string& indices = next("partner indices");
        const std::string& efficiencies = next("partner efficiencies");
        guarded([&] {
            for (int k = 0; k < 10; ++k) {
                r.ints[slot::FirstPartner + k] =
                    fieldInt(indices, 7 + 8 * k, 8, "a partner index");
                r.reals[12 + k] = fieldDouble(efficiencies, 7 + 8 * k, 8, "an efficiency");
            }
        });
    }
    position = at;
    return r;
}

std::vector<std::string> BuildElementNames(const std::vector<std::string>& compositions)
{
    std::vector<std::string> names{"e"};
    for (const auto& composition : compositions) {
        std::size_t pos = 0;
        while (pos < composition.size()) {
            const auto start = composition.find_first_not_of(' ', pos);
            if (start == std::string::npos) {
                break;
            }
            auto end = composition.find(' ', start);
            if (end == std::string::npos) {
                end = composition.size();
            }
            const std::string token = composition.substr(start, end - start);
            pos = end;
            if (shell::IsNumeric(token) || names.size() >= 11) {
                continue;
            }
            if (std::find(names.begin(), names.end(), token) == names.end()) {
                names.push_back(token);
            }
        }
    }
    return names;
}

namespace {

//! Checks that a decoded reaction only names species of the file, so that later code may
//! index with its slots.
void validateReaction(const ReactionRecord& r, int speciesCount, const std::string& file,
                      int lineNo)
{
    auto bad = [&](const std::string& what) { throw ParseError(file, lineNo, 0, what); };
    for (int k = 1; k <= 9; ++k) {
        if (r.ints[k] < 0 || r.ints[k] > speciesCount) {
            bad("species number " + std::to_string(r.ints[k]) + " out of range");
        }
    }
    if (r.ints[slot::ReactantCount] < 0 || r.ints[slot::ReactantCount] > 3 ||
        r.ints[slot::ProductCount] < 0 || r.ints[slot::ProductCount] > 6) {
        bad("reactant or product count out of range");
    }
    if (r.ints[slot::PartnerCount] < 0 || r.ints[slot::PartnerCount] > 10) {
        bad("partner count out of range");
    }
    for (int k = slot::FirstPartner; k < slot::FirstPartner + 10; ++k) {
        if (r.ints[k] < 0 || r.ints[k] > speciesCount) {
            bad("partner species number " + std::to_string(r.ints[k]) + " out of range");
        }
    }
}

} // namespace

Mechanism ReadMechanismFromLines(const std::vector<std::string>& lines, const std::string& fileName,
                                 HeaderScope scope)
{
    Mechanism m;
    if (lines.size() < 33) {
        throw ParseError(fileName, static_cast<int>(lines.size()), 0,
                         "the file ends inside the problem header");
    }
    ProblemHeader& h = m.header;
    h.SpeciesCount = headerInt(lines, 10, fileName);
    h.ReactionCount = headerInt(lines, 11, fileName);
    if (h.SpeciesCount < 0 || h.ReactionCount < 0) {
        throw ParseError(fileName, h.SpeciesCount < 0 ? 10 : 11, 0, "a negative count");
    }
    h.pressureAtm = headerDouble(lines, 14, fileName);
    try {
        h.TemperatureMode = shell::ToInt16(headerDouble(lines, 15, fileName));
    } catch (const ParseError&) {
        throw;
    } catch (const Error& e) {
        throw ParseError(fileName, 15, 0, e.what());
    }
    h.initialTemperature = headerDouble(lines, 16, fileName);
    try {
        h.finalTimeText = ParseCommentedValue(lines[19]);
    } catch (const Error& e) {
        throw ParseError(fileName, 20, 0, e.what());
    }
    h.absoluteTolerance = headerDouble(lines, 24, fileName);
    if (scope == HeaderScope::Full) {
        h.minTemperature = headerDouble(lines, 17, fileName);
        h.maxTemperature = headerDouble(lines, 18, fileName);
        h.initialTime = headerDouble(lines, 19, fileName);
        h.finalTime = headerDouble(lines, 20, fileName);
        h.initialStep = headerDouble(lines, 21, fileName);
        h.maxSteps = std::max(headerInt(lines, 22, fileName), 3);
        h.relativeTolerance = headerDouble(lines, 23, fileName);
    }
    if (scope == HeaderScope::Full) {
        h.outputEvery = std::max(headerInt(lines, 28, fileName), 1);
    } else if (scope == HeaderScope::ResultsReaderWithLine28) {
        // Read from the first token and not used further.
        try {
            h.outputEvery = std::max(shell::ToInt32(firstTokenDouble(lines, 28, fileName)), 1);
        } catch (const ParseError&) {
            throw;
        } catch (const Error& e) {
            throw ParseError(fileName, 28, 0, e.what());
        }
    }
    h.GasConstantEnergy = firstTokenDouble(lines, 31, fileName);
    h.GasConstantConc = firstTokenDouble(lines, 32, fileName);

    // THERMO keyword, searched from line 33 on.
    std::size_t at = 32;
    while (at < lines.size() && !startsWithUpper(lines[at], "THERMO")) {
        ++at;
    }
    if (at >= lines.size()) {
        throw ParseError(fileName, static_cast<int>(lines.size()), 0, "no THERMO keyword");
    }
    m.thermoKeywordLine = static_cast<int>(at) + 1;
    const std::size_t ns = static_cast<std::size_t>(h.SpeciesCount);
    if ((lines.size() - at - 1) / 4 < ns) {
        throw ParseError(fileName, static_cast<int>(lines.size()), 0,
                         "the file ends inside the thermodynamic records");
    }
    m.speciesNames.reserve(ns);
    m.thermo.reserve(ns);
    for (std::size_t i = 0; i < ns; ++i) {
        const std::size_t first = at + 1 + 4 * i;
        ParsedThermo t;
        try {
            t = ParseThermoRecord(lines[first], lines[first + 1], lines[first + 2],
                                  lines[first + 3]);
        } catch (const Error& e) {
            throw ParseError(fileName, static_cast<int>(first) + 1, 0, e.what());
        }
        m.speciesNames.push_back(t.name);
        m.MolFormula.push_back(t.MolFormula);
        m.composition.push_back(t.composition);
        m.initialMoleFractions.push_back(t.initialMoleFraction);
        m.initialMoleFractionTexts.push_back(t.initialMoleFractionText);
        m.thermo.push_back(t.record);
    }
    m.elementNames = BuildElementNames(m.composition);

    // REACTIONS keyword, then the records, then the closing END.
    at = at + 1 + 4 * ns;
    while (at < lines.size() && !startsWithUpper(lines[at], "REACTIONS")) {
        ++at;
    }
    if (at >= lines.size()) {
        throw ParseError(fileName, static_cast<int>(lines.size()), 0, "no REACTIONS keyword");
    }
    ++at;
    const std::size_t nr = static_cast<std::size_t>(h.ReactionCount);
    if ((lines.size() - at) / 3 < nr) {
        throw ParseError(fileName, static_cast<int>(lines.size()), 0,
                         "the file ends inside the reaction records");
    }
    m.reactions.reserve(nr);
    for (std::size_t j = 0; j < nr; ++j) {
        const int titleLine = static_cast<int>(at) + 1;
        m.reactions.push_back(ParseReactionRecord(lines, at, fileName));
        validateReaction(m.reactions.back(), h.SpeciesCount, fileName, titleLine);
    }
    while (at < lines.size() && !startsWithUpper(lines[at], "END")) {
        ++at;
    }
    if (at >= lines.size()) {
        throw ParseError(fileName, static_cast<int>(lines.size()), 0,
                         "no END behind the reactions");
    }
    m.reactionsEndLine = static_cast<int>(at) + 1;
    return m;
}

Mechanism ReadMechanism(const std::filesystem::path& path)
{
    return ReadMechanismFromLines(shell::ReadLines(path), path.string());
}

} // namespace zarvion::solverfile
