#include "reduction/ReducedFileWriter.h"

#include <array>

#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"

namespace zarvion::reduction {

using shell::FormatText;
using shell::Left;
using shell::LTrim;
using shell::Mid;
using shell::Trim;
using shell::UCase;

namespace {

std::string Number4(int n)
{
    return FormatText(std::to_string(n), "!@@@@");
}

std::string Number8(const std::string& text)
{
    return FormatText(text, "!@@@@@@@@");
}

//! The second blank-delimited token of a trimmed line, found only when a blank follows it.
std::string SecondToken(const std::string& line)
{
    const std::string t = Trim(line);
    auto blank = t.find(' ');
    if (blank == std::string::npos) {
        return "";
    }
    const auto start = t.find_first_not_of(' ', blank);
    const auto end = t.find(' ', start);
    return end == std::string::npos ? std::string() : t.substr(start, end - start);
}

int IntField(const std::string& text)
{
    const std::string t = Trim(text);
    if (t.empty()) {
        return 0;
    }
    const auto v = shell::ToDouble(t);
    if (!v) {
        throw Error("integer field '" + t + "' is not a number");
    }
    return shell::ToInt32(*v);
}

} // namespace

std::string TargetLine(bool temperatureIsTarget, double temperatureParameter,
                       const std::vector<int>& newNumbers, const std::vector<std::string>& names,
                       const std::vector<double>& parameters, double nonTargetParameter)
{
    int count = 0;
    std::string indices;
    std::string text = "!Targets ";
    if (temperatureIsTarget) {
        count = 1;
        indices += "-1 ";
        text += "T " + shell::Format(temperatureParameter, "0.000E+00") + ", ";
    }
    for (std::size_t i = 0; i < newNumbers.size(); ++i) {
        ++count;
        indices += std::to_string(newNumbers[i]) + " ";
        text += names[i] + " " + shell::Format(parameters[i], "0.000E+00") + ", ";
    }
    text += "Others " + shell::Format(nonTargetParameter, "0.000E+00");
    return " " + std::to_string(count) + " " + indices + text;
}

shell::Message WriteReducedFile(ReductionTables& tables, double temperatureParameter,
                                const std::vector<double>& speciesParameters,
                                double nonTargetParameter, const std::tm& stamp)
{
    // Source lines 1-based: src[0] is unused.
    std::vector<std::string> src{""};
    for (auto& line : shell::ReadLines(tables.SourcePath)) {
        const bool keyword = UCase(Left(Trim(line), 9)) == "!$RESULTS";
        src.push_back(std::move(line));
        if (keyword) {
            break;
        }
    }
    const std::size_t c = src.size() - 1;
    const std::size_t n = c >= 2 ? c - 2 : 0;
    if (n < 1 || UCase(Trim(src[n])) != "END") {
        return shell::Message{"The reaction list of the source file does not contain the key "
                              "word End. The file is changed or corrupted; the reduced file "
                              "cannot be created.",
                              shell::StyleWarning, shell::DefaultTitle};
    }
    auto at = [&](std::size_t i) -> const std::string& {
        if (i == 0 || i > n) {
            throw Error("'" + tables.SourcePath + "' has no line " + std::to_string(i) +
                        " in its input side");
        }
        return src[i];
    };
    const int ns = tables.NumSpecies;
    const int nr = tables.NumReactions;

    std::vector<int> newNumber(ns + 1, 0);
    std::vector<std::string> newName{""};
    int keptSpecies = 0;
    for (int s = 1; s <= ns; ++s) {
        if (tables.KeptSpecies[s - 1]) {
            newNumber[s] = ++keptSpecies;
        }
    }
    int keptReactions = 0;
    for (int r = 1; r <= nr; ++r) {
        keptReactions += tables.KeptReactions[r - 1] ? 1 : 0;
    }
    tables.ReducedSpeciesCount = keptSpecies;
    tables.ReducedReactionCount = keptReactions;

    std::tm when = stamp;
    std::vector<std::string> out{""}; // 1-based
    out.push_back(" !$Zarvion Solver,  " + shell::FormatDate(when, "mmm d yyyy") + ", " +
                  shell::FormatDate(when, "hh:mm:ss"));
    out.push_back(" ");
    out.push_back(" Don't modify this file, the file has a fixed format and is intended for use "
                  "in the Zarvion solver.");
    out.push_back(" ");
    out.push_back(" Source solver file: " + tables.SourcePath);
    for (std::size_t i = 6; i <= 34; ++i) {
        out.push_back(at(i));
    }
    out[10] = " " + std::to_string(keptSpecies) + " !Species";
    out[11] = " " + std::to_string(keptReactions) + " !Reactions";

    // Species records, the kept ones renumbered.
    for (int s = 1; s <= ns; ++s) {
        if (!newNumber[s]) {
            continue;
        }
        const std::size_t first = 31 + 4 * static_cast<std::size_t>(s);
        newName.push_back(SecondToken(at(first)));
        out.push_back(" " + Number4(newNumber[s]) + Mid(at(first), 6));
        for (std::size_t k = 1; k <= 3; ++k) {
            out.push_back(at(first + k));
        }
    }
    const std::size_t separator = 34 + 4 * static_cast<std::size_t>(ns) + 1;
    for (std::size_t k = 0; k < 3; ++k) {
        out.push_back(at(separator + k));
    }

    // Title lines: a line whose first 5 characters are a number starts that reaction.
    std::vector<std::size_t> start(static_cast<std::size_t>(nr) + 2, 0);
    for (std::size_t i = separator + 3; i <= n; ++i) {
        const std::string head = Left(src[i], 5);
        if (shell::IsNumeric(head)) {
            const auto v = shell::ToDouble(head);
            const double number = v ? *v : 0;
            if (number >= 1 && number <= nr && number == static_cast<int>(number)) {
                start[static_cast<std::size_t>(number)] = i;
            }
        }
    }
    start[static_cast<std::size_t>(nr) + 1] = n;

    int j = 0;
    for (int r = 1; r <= nr; ++r) {
        if (!tables.KeptReactions[r - 1]) {
            continue;
        }
        ++j;
        const std::size_t p = start[static_cast<std::size_t>(r)];
        if (p == 0) {
            throw Error("'" + tables.SourcePath + "': no title line for reaction " +
                        std::to_string(r));
        }
        const std::string title = " " + Number4(j) + Mid(at(p), 6);
        const std::string ints = LTrim(at(p + 1));
        std::array<int, 17> old{};
        std::array<int, 17> neu{};
        for (int k = 1; k <= 16; ++k) {
            old[k] = IntField(Mid(ints, 4 * (k - 1) + 1, 4));
            neu[k] = old[k];
        }
        for (int k = 1; k <= 9; ++k) {
            neu[k] = old[k] > 0 && old[k] <= ns ? newNumber[old[k]] : 0;
        }
        const std::string rate = at(p + 2);
        std::vector<std::string> optional;
        if (old[13] != 0 || old[14] != 0) {
            std::size_t cursor = p + 2;
            if (old[14] > 0) {
                optional.push_back(at(++cursor));
            }
            if (old[15] > 0) {
                optional.push_back(at(++cursor));
            }
            if (old[13] > 0) {
                // Partner fields stand at fixed columns from 7 on, whichever way aligned.
                const std::string names = at(++cursor);
                const std::string indices = at(++cursor);
                const std::string efficiencies = at(++cursor);
                std::string namesLine(6, ' ');
                std::string indicesLine(6, ' ');
                std::string efficienciesLine(6, ' ');
                int m = 0;
                for (int col = 0; col < 10; ++col) {
                    const int index = IntField(Mid(indices, 7 + 8 * col, 8));
                    if (index <= 0 || index > ns || newNumber[index] <= 0) {
                        continue;
                    }
                    ++m;
                    namesLine += Number8(Trim(Mid(names, 7 + 8 * col, 8)));
                    indicesLine += Number8(std::to_string(newNumber[index]));
                    const double e = shell::LeadingValue(Mid(efficiencies, 7 + 8 * col, 8));
                    const std::string rounded = shell::Format(e, "#0.##");
                    efficienciesLine +=
                        Number8(shell::Format(shell::LeadingValue(rounded), "0.##"));
                }
                if (m == 0 && old[12] == 2) {
                    // No partner left: a plain third body with all efficiencies 1.
                    neu[12] = 1;
                    neu[13] = 0;
                } else if (m > 0) {
                    for (int col = m; col < 10; ++col) {
                        indicesLine += Number8("0");
                        efficienciesLine += Number8("0.");
                    }
                    neu[13] = m;
                    optional.push_back(namesLine);
                    optional.push_back(indicesLine);
                    optional.push_back(efficienciesLine);
                }
            }
        }
        std::string intLine(6, ' ');
        for (int k = 1; k <= 16; ++k) {
            intLine += Number4(neu[k]);
        }
        out.push_back(title);
        out.push_back(intLine);
        out.push_back(rate);
        for (auto& o : optional) {
            out.push_back(std::move(o));
        }
    }

    std::vector<int> targetNumbers;
    std::vector<std::string> targetNames;
    for (int s : tables.TargetSpecies) {
        const int k = s >= 1 && s <= ns ? newNumber[s] : 0;
        targetNumbers.push_back(k);
        targetNames.push_back(k > 0 ? newName[k] : std::string());
    }
    out[12] = TargetLine(tables.TemperatureIsTarget, temperatureParameter, targetNumbers,
                         targetNames, speciesParameters, nonTargetParameter);
    out.push_back(" End");
    out.erase(out.begin());
    shell::WriteFileAtomically(tables.ReducedPath, shell::JoinCrLf(out));
    return {};
}

} // namespace zarvion::reduction
