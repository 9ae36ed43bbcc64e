#include "solverfile/StartWindowLogic.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"

namespace zarvion::solverfile {

using shell::Format;
using shell::IsNumeric;
using shell::LTrim;
using shell::Mid;
using shell::Right;
using shell::ToDouble;
using shell::Trim;
using shell::UCase;

namespace {

const char* const Text4Messages[7] = {
    "Initial time, please enter a number.",
    "Final time, please enter a number.",
    "Initial step size, please enter a positive number.",
    "Relative tolerance, please enter a number on the interval (1.E-14, 1).",
    "Absolute tolerance, please enter a positive number.",
    "Maximum number of computed steps, please enter a positive integer less than 100000.",
    "Step of data output, please entera a positive integer.",
};

StartField text4Field(int index)
{
    return static_cast<StartField>(static_cast<int>(StartField::Text4_0) + index);
}

double valueOf(const std::string& text)
{
    return ToDouble(text).value_or(0.0);
}

//! A field value the checks can work with: numeric text of a finite number ("1E400" is not).
bool numeric(const std::string& text)
{
    const auto v = ToDouble(text);
    return IsNumeric(text) && v && std::isfinite(*v);
}

//! The integer conversion of the window: half to even; an overflow gives no value.
std::optional<std::int64_t> toInteger(const std::string& text)
{
    try {
        return shell::ToInt32(valueOf(text));
    } catch (const Error&) {
        return std::nullopt;
    }
}

StartWindowCheck fail(StartWindowCheck check, StartField field, std::string message)
{
    check.passed = false;
    check.field = field;
    check.tab = TabOf(field);
    check.message = std::move(message);
    return check;
}

std::vector<std::string> splitBlanks(const std::string& text)
{
    std::vector<std::string> tokens;
    std::string current;
    for (char c : text) {
        if (c == ' ' || c == '\t') {
            if (!current.empty())
                tokens.push_back(std::move(current));
            current.clear();
        } else {
            current += c;
        }
    }
    if (!current.empty())
        tokens.push_back(std::move(current));
    return tokens;
}

std::string lineAt(const std::vector<std::string>& lines, int number)
{
    if (number < 1 || number > static_cast<int>(lines.size()))
        throw Error("line " + std::to_string(number) + " is missing");
    return lines[number - 1];
}

} // namespace

int TabOf(StartField field)
{
    switch (field) {
    case StartField::Text4_5:
    case StartField::Text4_6:
    case StartField::Text7:
    case StartField::Text6:
        return 2;
    case StartField::None:
        return 0;
    default:
        return 1;
    }
}

StartWindowCheck ValidateStartWindow(const StartWindowFields& input)
{
    StartWindowCheck check;
    check.fields = input;
    StartWindowFields& f = check.fields;

    if (!numeric(f.Text1))
        return fail(check, StartField::Text1, "Pressure, please enter a positive number.");
    if (!numeric(f.Text3))
        return fail(check, StartField::Text3,
                    "Initial temperature, please enter a positive number.");
    for (int i = 0; i < 7; ++i) {
        if (!numeric(f.Text4[i]))
            return fail(check, text4Field(i), Text4Messages[i]);
    }
    // 100000 itself passes although the message says "less than".
    if (valueOf(f.Text4[5]) > 100000)
        return fail(check, StartField::Text4_5, Text4Messages[5]);
    const char* intervalMessage = "Allowable temperature interval, please enter a positive number.";
    if (!numeric(f.Text7))
        return fail(check, StartField::Text7, intervalMessage);
    if (!numeric(f.Text6))
        return fail(check, StartField::Text6, intervalMessage);
    if (!(valueOf(f.Text1) > 0))
        return fail(check, StartField::Text1, "Pressure, please enter a positive number.");
    const double rtol = valueOf(f.Text4[3]);
    if (rtol > 1 || rtol < 1E-14)
        return fail(check, StartField::Text4_3, Text4Messages[3]);

    for (std::size_t row = 0; row < f.fractions.size(); ++row) {
        const std::string text = Trim(f.fractions[row]);
        if (text.empty())
            continue;
        if (!numeric(text) || valueOf(text) < 0) {
            check = fail(check, StartField::GridEX1,
                         "Initial mole fractions, please enter positive numbers.");
            check.fractionRow = static_cast<int>(row);
            return check;
        }
    }

    const auto maxSteps = toInteger(f.Text4[5]);
    if (!maxSteps || *maxSteps <= 0)
        return fail(check, StartField::Text4_5, Text4Messages[5]);
    const double tMin = valueOf(f.Text7);
    const double tMax = valueOf(f.Text6);
    if (tMin < 0)
        return fail(check, StartField::Text7,
                    "Minimum value of the allowable temperature interval, please enter a "
                    "positive number.");
    if (!(tMin < tMax))
        return fail(check, StartField::Text7,
                    "Allowable temperature interval, the minimum value is equal to or greater "
                    "than the maximum value. Enter a correct values.");
    const double t0 = valueOf(f.Text3);
    if (t0 < tMin || t0 > tMax)
        return fail(check, StartField::Text3,
                    "The initial temperature is outside of the interval (" +
                        shell::ShortestText(tMin) + ", " + shell::ShortestText(tMax) +
                        "). Enter a correct value.");
    const double timeBegin = valueOf(f.Text4[0]);
    const double timeEnd = valueOf(f.Text4[1]);
    if (!(timeBegin < timeEnd))
        return fail(check, StartField::Text4_0,
                    "The initial time is equal to or greater than the final time. Enter correct "
                    "values.");
    if (valueOf(f.Text4[2]) < 0)
        return fail(check, StartField::Text4_2, Text4Messages[2]);
    // The first step never exceeds a hundredth of the span; corrected without a word.
    const double stepLimit = (timeEnd - timeBegin) / 100;
    if (valueOf(f.Text4[2]) > stepLimit)
        f.Text4[2] = Format(stepLimit, "0.0E+00");
    if (!(valueOf(f.Text4[4]) > 0))
        return fail(check, StartField::Text4_4, Text4Messages[4]);

    const auto outputEvery = toInteger(f.Text4[6]);
    if (!outputEvery)
        return fail(check, StartField::Text4_6, Text4Messages[6]);
    f.Text4[6] = std::to_string(*outputEvery);
    if (*outputEvery <= 0)
        return fail(check, StartField::Text4_6, Text4Messages[6]);
    // At least three steps, and at least three output records.
    std::int64_t steps = *maxSteps;
    if (steps < 3)
        steps = 3;
    if (steps < 3 * *outputEvery)
        steps = 3 * *outputEvery;
    f.Text4[5] = std::to_string(steps);

    double sum = 0;
    for (const auto& text : f.fractions) {
        if (auto v = ToDouble(text))
            sum += *v;
    }
    if (sum == 0)
        return fail(check, StartField::GridEX1,
                    "The solver cannot start because initial mole fractions have not been "
                    "specified.");
    check.passed = true;
    return check;
}

int FindFirstRecordLine(const std::vector<std::string>& lines)
{
    for (std::size_t i = 28; i < lines.size(); ++i) {
        if (UCase(shell::Left(Trim(lines[i]), 6)) == "THERMO")
            return static_cast<int>(i) + 2;
    }
    return 0;
}

std::vector<StartWindowSpecies> ReadStartWindowSpecies(const std::vector<std::string>& lines,
                                                       int firstRecordLine, int SpeciesCount)
{
    std::vector<StartWindowSpecies> species;
    species.reserve(SpeciesCount > 0 ? SpeciesCount : 0);
    for (int k = 0; k < SpeciesCount; ++k) {
        StartWindowSpecies s;
        for (int j = 0; j < 4; ++j)
            s.recordLines[j] = lineAt(lines, firstRecordLine + 4 * k + j);
        const std::string first = LTrim(s.recordLines[0]);
        // Number, name and formula are the first three blank-separated tokens; the
        // fraction is the last 10 characters of what follows them.
        std::size_t pos = 0;
        std::vector<std::string> tokens;
        while (tokens.size() < 3 && pos < first.size()) {
            while (pos < first.size() && first[pos] == ' ')
                ++pos;
            std::size_t end = first.find(' ', pos);
            if (end == std::string::npos)
                end = first.size();
            if (end > pos)
                tokens.push_back(first.substr(pos, end - pos));
            pos = end;
        }
        if (tokens.size() > 1)
            s.name = tokens[1];
        if (tokens.size() > 2)
            s.MolFormula = tokens[2];
        const std::string rest = pos < first.size() ? first.substr(pos) : std::string();
        s.fraction = Trim(Right(rest, 10));
        s.weight = shell::LeadingValue(Right(LTrim(s.recordLines[3]), 15));
        species.push_back(std::move(s));
    }
    return species;
}

std::string PolinomCheckText(const std::vector<StartWindowSpecies>& species)
{
    std::vector<std::string> missing;
    for (const auto& s : species) {
        double sum = 0;
        bool hasData = false;
        const int fieldsPerLine[3] = {5, 5, 4};
        for (int line = 0; line < 3 && !hasData; ++line) {
            for (int field = 0; field < fieldsPerLine[line]; ++field)
                sum += shell::LeadingValue(Mid(s.recordLines[line + 1], 1 + 15 * field, 15));
            hasData = sum != 0;
        }
        if (!hasData) {
            const auto tokens = splitBlanks(s.recordLines[0]);
            missing.push_back(tokens.size() > 1 ? tokens[1] : std::string());
        }
    }
    if (missing.empty())
        return {};
    std::string text = "Temperature can be calculated erroneously because thermodynamic data "
                       "aren't specified for the species: '";
    for (std::size_t i = 0; i < missing.size() && i < 5; ++i) {
        if (i > 0)
            text += ", ";
        text += missing[i];
    }
    text += missing.size() > 5 ? "'..." : "'.";
    if (text.size() > 142)
        text = text.substr(0, 142) + "...";
    return text;
}

std::optional<LastStepState> LastVal(const std::filesystem::path& path,
                                     const std::vector<double>& weights, double absoluteTolerance)
{
    const auto lines = shell::ReadLines(path);
    int endLine = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (UCase(shell::Left(Trim(lines[i]), 5)) == "!$END") {
            endLine = static_cast<int>(i) + 1;
            break;
        }
    }
    if (endLine == 0)
        return std::nullopt;
    const int speciesCount = static_cast<int>(weights.size());
    const int linesPerRecord = speciesCount / 50 + 1;
    const int first = endLine - linesPerRecord;
    if (first < 1)
        return std::nullopt;

    LastStepState state;
    const std::string head = lines[first - 1];
    state.LastTime = shell::LeadingValue(Mid(head, 8, 16));
    state.values.push_back(Format(shell::LeadingValue(Mid(head, 25, 17)), "0.0"));

    std::vector<double> mass(speciesCount, 0.0);
    for (int k = 0; k < speciesCount; ++k) {
        const std::string& line = lines[first - 1 + k / 50];
        const double raw = shell::LeadingValue(Mid(line, 41 + 17 * (k % 50), 17));
        mass[k] = ToDouble(Format(raw, "0.000E+00")).value_or(0.0);
    }
    // Mass fractions to mole fractions: x_k = (w_k / M_k) / sum_j (w_j / M_j).
    double total = 0;
    for (int k = 0; k < speciesCount; ++k) {
        if (weights[k] > 0)
            total += mass[k] / weights[k];
    }
    for (int k = 0; k < speciesCount; ++k) {
        const double x = (weights[k] > 0 && total > 0) ? mass[k] / weights[k] / total : 0.0;
        state.values.push_back(x > absoluteTolerance ? Format(x, "0.000E+00") : "0");
    }
    return state;
}

std::string ComposeSolverData(const SavedSettings& s)
{
    std::vector<std::string> entries = {s.SolverPath, s.Text1, s.Text3, s.Text7, s.Text6};
    for (const auto& t : s.Text4)
        entries.push_back(t);
    entries.push_back(s.adiabatic ? "True" : "False");
    entries.push_back("");
    for (const auto& [name, fraction] : s.fractions) {
        const auto value = ToDouble(fraction);
        if (value && *value > 0)
            entries.push_back(Trim(name) + " " + Trim(fraction));
    }
    std::vector<std::string> lines;
    lines.push_back(std::to_string(entries.size() - 1));
    lines.insert(lines.end(), entries.begin(), entries.end());
    return shell::JoinCrLf(lines);
}

SavedSettings ParseSolverData(const std::vector<std::string>& lines)
{
    if (lines.empty() || !IsNumeric(lines[0]))
        throw Error("the settings file has no entry count");
    const double count = valueOf(lines[0]);
    if (count < 13 || count > 1e7 || static_cast<double>(lines.size()) < count + 2)
        throw Error("the settings file is cut short");
    std::vector<std::string> e;
    for (std::size_t i = 1; i < lines.size() && e.size() <= static_cast<std::size_t>(count); ++i)
        e.push_back(Trim(lines[i]));
    SavedSettings s;
    s.SolverPath = e[0];
    s.Text1 = e[1];
    s.Text3 = e[2];
    s.Text7 = e[3];
    s.Text6 = e[4];
    for (int i = 0; i < 7; ++i)
        s.Text4[i] = e[5 + i];
    const std::string flag = UCase(e[12]);
    s.adiabatic = flag == "TRUE" || flag == "#TRUE#" || flag == "-1" || flag == "1";
    for (std::size_t i = 14; i < e.size(); ++i) {
        const auto blank = e[i].find(' ');
        if (blank == std::string::npos)
            continue;
        s.fractions.emplace_back(Trim(e[i].substr(0, blank)), Trim(e[i].substr(blank + 1)));
    }
    return s;
}

std::vector<std::string> ApplySavedFractions(const std::vector<std::string>& names,
                                             const SavedSettings& settings)
{
    std::vector<std::string> fractions(names.size(), "0");
    for (const auto& [name, value] : settings.fractions) {
        for (std::size_t k = 0; k < names.size(); ++k) {
            if (Trim(names[k]) == name) {
                fractions[k] = Format(valueOf(value), "0.###E+00");
                break;
            }
        }
    }
    return fractions;
}

DefaultSettings DefoultVaues()
{
    DefaultSettings d;
    d.Text4_1 = Format(1, "0.E+00");
    d.Text4_2 = Format(1E-10, "0.E+00");
    d.Text4_3 = Format(1E-6, "0.E+00");
    d.Text4_4 = Format(1E-15, "0.E+00");
    return d;
}

SolverRunVerdict EvaluateSolverRun(const std::filesystem::path& path)
{
    const auto lines = shell::ReadLines(path);
    SolverRunVerdict v;
    std::size_t i = 0;
    for (; i < lines.size(); ++i) {
        const std::string line = UCase(Trim(lines[i]));
        if (line == "!$END") {
            v.EndFound = true;
            break;
        }
        if (shell::Left(line, 5) == "ERROR") {
            v.ErrorFound = true;
            break;
        }
        if (!v.ResultsFound && shell::Left(line, 9) == "!$RESULTS")
            v.ResultsFound = true;
    }
    if (v.ErrorFound) {
        for (std::size_t j = i + 1; j < lines.size(); ++j)
            v.ErrorText += lines[j] + "\r\n";
    }
    if (!v.ErrorFound && v.EndFound) {
        v.message = "The chemical kinetic problem has been successfully solved.";
        v.style = 64;
    } else {
        v.message = " The solver has been terminated abnormally.\r\n" + v.ErrorText;
        v.style = 48;
    }
    if (v.ResultsFound) {
        if (v.message.size() < 2 || v.message.compare(v.message.size() - 2, 2, "\r\n") != 0)
            v.message += "\r\n";
        v.message += "\r\nShow results?";
        v.style += 4;
    }
    return v;
}

std::string ReadSolverFilePath(const std::filesystem::path& file)
{
    const auto lines = shell::ReadLines(file);
    if (lines.empty())
        throw Error("the solver path file is empty");
    std::string line = LTrim(lines[0]);
    if (!line.empty() && line[0] == '"') {
        const auto close = line.find('"', 1);
        return line.substr(1, close == std::string::npos ? std::string::npos : close - 1);
    }
    const auto comma = line.find(',');
    if (comma != std::string::npos)
        line = line.substr(0, comma);
    return Trim(line);
}

} // namespace zarvion::solverfile
