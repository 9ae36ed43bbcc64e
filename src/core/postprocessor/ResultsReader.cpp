#include "postprocessor/ResultsReader.h"

#include <algorithm>

#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"
#include "solverfile/SolverFileLines.h"
#include "solverfile/SolverFileReader.h"

namespace zarvion::postprocessor {

using shell::Left;
using shell::LTrim;
using shell::Mid;
using shell::Trim;
using shell::UCase;

namespace {

constexpr const char* CrLf = "\r\n";
constexpr std::size_t StepWidth = 17;

bool beginsUpper(const std::string& line, std::string_view keyword)
{
    return Left(UCase(Trim(line)), keyword.size()) == keyword;
}

bool endsTable(const std::string& line)
{
    return beginsUpper(line, "ERROR") || beginsUpper(line, "!$END");
}

shell::Message warning(std::string text)
{
    return {std::move(text), shell::StyleWarning, shell::DefaultTitle};
}

//! The head and data records as joined strings, with the step fields cut off.
struct Table {
    std::vector<std::string> rows;
    std::vector<double> steps; //!< [k] for row k; [0] unused
};

//! Reads head and records from lines[start] on, by the geometry fixed by the head.
Table readTable(const std::vector<std::string>& lines, std::size_t start, int speciesCount,
                bool hasStep)
{
    Table table;
    const int further = PhysicalLinesPerRecord(speciesCount) - 1;
    std::size_t at = start;

    auto cutStep = [&](const std::string& line, std::string& step) {
        if (!hasStep) {
            return line;
        }
        if (line.size() < StepWidth) {
            step.clear();
            return std::string();
        }
        step = line.substr(line.size() - StepWidth);
        return line.substr(0, line.size() - StepWidth);
    };

    // Head.
    if (at >= lines.size() || endsTable(lines[at])) {
        return table;
    }
    std::string step;
    std::string head = cutStep(lines[at], step);
    const std::size_t headLength = hasStep && lines[at].size() < StepWidth ? std::string::npos
                                                                           : head.size();
    ++at;
    std::vector<std::size_t> furtherLengths;
    for (int j = 0; j < further; ++j) {
        if (at >= lines.size() || endsTable(lines[at])) {
            return table;
        }
        furtherLengths.push_back(lines[at].size());
        head += "  " + LTrim(lines[at]);
        ++at;
    }
    table.rows.push_back(std::move(head));
    table.steps.push_back(0.0);

    // Data records until a line ends the table or breaks the head's geometry.
    for (;;) {
        while (at < lines.size() && Trim(lines[at]).empty()) {
            ++at;
        }
        if (at >= lines.size() || endsTable(lines[at])) {
            break;
        }
        const std::string& first = lines[at];
        if (hasStep && first.size() < StepWidth) {
            break;
        }
        std::string row = cutStep(first, step);
        if (row.size() != headLength) {
            break;
        }
        ++at;
        bool complete = true;
        for (int j = 0; j < further; ++j) {
            if (at >= lines.size() || endsTable(lines[at]) ||
                lines[at].size() != furtherLengths[j]) {
                complete = false;
                break;
            }
            const std::string piece = LTrim(lines[at]);
            row += (!piece.empty() && piece[0] == '-') ? " " : "  ";
            row += piece;
            ++at;
        }
        if (!complete) {
            break;
        }
        table.rows.push_back(std::move(row));
        const auto value = hasStep ? shell::ToDouble(Trim(step)) : std::nullopt;
        table.steps.push_back(value ? *value : 0.0);
    }
    return table;
}

double fieldNumber(const std::string& row, std::size_t start, const char* what)
{
    const std::string text = Trim(Mid(row, start, 16));
    const auto value = shell::ToDouble(text);
    if (!value) {
        throw Error(std::string(what) + " \"" + text + "\" is not a number");
    }
    return *value;
}

} // namespace

double GasConstantDensity(const PhysicalConstants& c)
{
    return c.AvogadroNumber * c.BoltzmannConstant / c.AtmosphereDyn;
}

int PhysicalLinesPerRecord(int speciesCount)
{
    const int q = speciesCount / 50;
    const int r = speciesCount % 50;
    if (q < 1) {
        return 1;
    }
    return 1 + (q - 1) + (r >= 1 ? 1 : 0);
}

ResultSet ReadResultsText(const std::string& text, const std::string& fileName, ReaderForm form,
                          const PhysicalConstants& constants, ReadOutcome& outcome)
{
    const bool menu = form == ReaderForm::MenuForm;
    outcome = {};
    // A leading "$" marks a temporary run: the rest is the name for the caption.
    const std::string name = !fileName.empty() && fileName[0] == '$'
                                 ? fileName.substr(1)
                                 : std::filesystem::path(fileName).filename().string();
    outcome.caption = (menu ? "Solver File  " : "Solver ") + name;
    auto refuse = [&](std::string message) {
        outcome.failed = true;
        outcome.message = warning(std::move(message));
        return ResultSet{};
    };

    // The window's text, the table cut out of it.
    const std::size_t resultsAt = solverfile::FindResultsKeywordInText(text);
    if (resultsAt == std::string::npos) {
        return refuse(menu ? "In the file " + fileName + " there is no output data."
                           : "In the file " + fileName + ", the results of calculation are not found.");
    }
    const std::string upper = UCase(text);
    std::size_t statisticsAt = upper.find("STATISTICS");
    if (statisticsAt != std::string::npos && statisticsAt < resultsAt) {
        statisticsAt = upper.find("STATISTICS", resultsAt);
        if (statisticsAt == std::string::npos) {
            statisticsAt = resultsAt; // found, but nothing of the table to cut
        }
    }
    outcome.statisticsFound = statisticsAt != std::string::npos;
    outcome.errorFound = upper.find("ERROR") != std::string::npos;

    const std::vector<std::string> lines = shell::SplitLines(text);
    const solverfile::Mechanism m = solverfile::ReadMechanismFromLines(
        lines, fileName,
        menu ? solverfile::HeaderScope::ResultsReaderWithLine28
             : solverfile::HeaderScope::ResultsReader);

    // Behind the reactions' END: the results keyword line, then the table.
    bool hasStep = false;
    bool tableStarts = false;
    std::size_t at = static_cast<std::size_t>(m.reactionsEndLine);
    for (; at < lines.size(); ++at) {
        if (beginsUpper(lines[at], "ERROR")) {
            break;
        }
        if (beginsUpper(lines[at], "!$RESULTS")) {
            const std::string trimmed = Trim(lines[at]);
            hasStep = trimmed.size() >= 2 && trimmed.substr(trimmed.size() - 2) == "$$";
            if (!hasStep && menu) {
                outcome.failed = true;
                outcome.viaReportError = true;
                outcome.message = warning("Please run the Zarvion-II solver with the examined "
                                          "file to create output in the required format.");
                return ResultSet{};
            }
            tableStarts = true;
            ++at;
            break;
        }
    }
    Table table;
    if (tableStarts) {
        table = readTable(lines, at, m.header.SpeciesCount, hasStep);
    }
    if (table.rows.size() < 4) {
        return refuse(menu ? "In the file " + fileName + ", the output data is incomplete."
                           : "In the file " + fileName + ", the results of calculation are incomplete.");
    }

    ResultSet set;
    const auto& h = m.header;
    const int ns = h.SpeciesCount;
    set.SpeciesCount = ns;
    set.columnCount = ns + 3;
    set.ReactionCount = h.ReactionCount;
    set.pressureAtm = h.pressureAtm;
    set.TemperatureMode = h.TemperatureMode;
    set.initialTemperature = h.initialTemperature;
    set.finalTimeText = h.finalTimeText;
    set.absoluteTolerance = h.absoluteTolerance;
    set.zeroThreshold = 0.01 * h.absoluteTolerance;
    set.GasConstantEnergy = h.GasConstantEnergy;
    set.GasConstantConc = h.GasConstantConc;
    set.gasConstantDensity = GasConstantDensity(constants);
    set.thermo = m.thermo;
    set.initialMoleFractions = m.initialMoleFractions;
    set.speciesComposition = m.composition;
    set.elementNames = m.elementNames;
    for (const auto& r : m.reactions) {
        set.ReactionTexts.push_back(r.text);
        set.ReactionInts.push_back(r.ints);
        set.ReactionReals.push_back(r.reals);
    }

    std::vector<std::string>& rows = table.rows;
    set.rowCount = static_cast<std::int32_t>(rows.size());

    // Column names from the head: by blank-separated tokens when they match the species
    // count, by the 17-character grid otherwise.
    set.columnNames = {"Time(s)", "T(K)", "Ro"};
    std::vector<std::string> tokens;
    {
        const std::string names = Mid(rows[0], 42);
        std::size_t pos = 0;
        while ((pos = names.find_first_not_of(' ', pos)) != std::string::npos) {
            const std::size_t end = std::min(names.find(' ', pos), names.size());
            tokens.push_back(names.substr(pos, end - pos));
            pos = end;
        }
    }
    for (int i = 1; i <= ns; ++i) {
        set.columnNames.push_back(static_cast<int>(tokens.size()) == ns
                                      ? tokens[i - 1]
                                      : Trim(Mid(rows[0], 42 + 17 * static_cast<std::size_t>(i - 1), 16)));
    }

    // Time span; MenuForm holds it rounded as the interval shows it.
    auto spanTime = [&](const std::string& row) {
        const double t = fieldNumber(row, 8, "the time");
        if (!menu) {
            return t;
        }
        return shell::ToDouble(shell::Format(t, "0.000000E+00")).value_or(t);
    };
    set.timeBegin = spanTime(rows[1]);
    set.timeEnd = spanTime(rows[rows.size() - 1]);

    // The window text: the table cut out, or the note of a run that did not end by itself.
    if (outcome.statisticsFound) {
        set.fileText = text.substr(0, resultsAt) + text.substr(statisticsAt);
    } else if (!outcome.errorFound) {
        set.terminatedEarly = true;
        set.fileText = text.substr(0, resultsAt) + "The solver was terminated at the time point " +
                       shell::ShortestText(set.timeEnd) + CrLf + "; the endpoint " +
                       set.finalTimeText + " was not achieved." + CrLf;
    } else {
        set.fileText = text;
    }

    // Density: rho = P / (R T) / sum(y_i / W_i), the sign of each y seen.
    const double pressure = h.pressureAtm;
    set.density.assign(rows.size(), 0.0);
    for (std::size_t k = 1; k < rows.size(); ++k) {
        const std::string& row = rows[k];
        double sum = 0;
        for (int i = 1; i <= ns; ++i) {
            const auto y = shell::ToDouble(
                Trim(Mid(row, 42 + 17 * static_cast<std::size_t>(i - 1), 16)));
            const double weight = set.thermo[static_cast<std::size_t>(i) - 1][15];
            if (weight == 0) {
                throw Error("division by zero: species " + std::to_string(i) +
                            " has no molecular weight");
            }
            sum += y.value_or(0.0) / weight;
        }
        const double temperature = fieldNumber(row, 25, "the temperature");
        const double denominator = set.gasConstantDensity * temperature;
        if (denominator == 0 || sum == 0) {
            throw Error("division by zero in the density of row " + std::to_string(k));
        }
        set.density[k] = pressure / denominator / sum;
    }

    // Rebuilt rows: time and temperature, the density column, then the species.
    set.rows.reserve(rows.size());
    set.rows.push_back(Mid(rows[0], 8, 34) + shell::FormatText("Ro mass", "!@@@@@@@@@@@@@@@@@") +
                       Mid(rows[0], 42));
    for (std::size_t k = 1; k < rows.size(); ++k) {
        set.rows.push_back(Mid(rows[k], 8, 33) +
                           shell::FormatText(shell::Format(set.density[k], "0.0000000E+00"),
                                             "@@@@@@@@@@@@@@@@@") +
                           Mid(rows[k], 42));
    }
    if (menu) {
        set.stepSize = std::move(table.steps);
    }
    return set;
}

ResultSet OPEN_Rich(const std::filesystem::path& fileName, ReaderForm form,
                    const PhysicalConstants& constants, ReadOutcome& outcome)
{
    return ReadResultsText(shell::ReadFile(fileName), fileName.string(), form, constants,
                           outcome);
}

} // namespace zarvion::postprocessor
