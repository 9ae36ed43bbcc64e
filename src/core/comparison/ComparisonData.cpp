#include "comparison/ComparisonData.h"

#include <fstream>
#include <sstream>

#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"
#include "solverfile/SolverFileChecks.h"

namespace zarvion::comparison {

using shell::LCase;
using shell::Left;
using shell::LTrim;
using shell::Mid;
using shell::Right;
using shell::Trim;

namespace {

shell::Message Warning(std::string text)
{
    return shell::Message{std::move(text), shell::StyleWarning, shell::DefaultTitle};
}

std::string NotFoundText(int n, const std::string& path)
{
    // The second text lacks a word and has a doubled blank; both texts stand as the program
    // has always shown them.
    return n == 1 ? "In the file 1 '" + path + "', results of calculation are not found."
                  : "In the file 2 '" + path + "', results of  are not found.";
}

const std::string& LineAt(const ComparisonFile& file, std::size_t number)
{
    if (number == 0 || number > file.lines.size()) {
        throw Error("'" + file.path + "' ends before line " + std::to_string(number));
    }
    return file.lines[number - 1];
}

std::vector<std::string> Tokens(const std::string& text)
{
    std::vector<std::string> out;
    std::istringstream in(text);
    std::string t;
    while (in >> t) {
        out.push_back(t);
    }
    return out;
}

} // namespace

std::string ExtractVal(const std::string& text, const std::string& delimiter)
{
    const auto at = text.find(delimiter);
    return at == std::string::npos ? std::string() : text.substr(0, at);
}

shell::Message OpenFile(const std::filesystem::path& path, int n, ComparisonFile& file)
{
    file = ComparisonFile{};
    file.path = path.string();
    {
        std::ifstream probe(path, std::ios::binary);
        if (!probe || std::filesystem::is_directory(path)) {
            return Warning("File " + std::to_string(n) +
                           ", the specified Path/File name cannot be accessed or is invalid.");
        }
    }
    file.lines = shell::ReadLines(path);
    std::size_t keyword = file.lines.size();
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        const std::string t = LCase(Trim(file.lines[i]));
        const auto at = t.find("!pressure");
        if (at != std::string::npos) {
            file.Pressure = shell::LeadingValue(t.substr(0, at));
        }
        if (Left(t, 9) == "!$results") {
            file.HasStepMark = Right(file.lines[i], 2) == "$$";
            keyword = i;
            break;
        }
    }
    if (keyword == file.lines.size()) {
        return Warning(NotFoundText(n, file.path));
    }
    for (std::size_t i = keyword + 1; i < file.lines.size(); ++i) {
        if (LCase(Left(Trim(file.lines[i]), 5)) == "!$end") {
            break;
        }
        file.resultLines.push_back(file.lines[i]);
    }
    if (file.resultLines.size() < 4) {
        return Warning(n == 1 ? NotFoundText(1, file.path)
                              : "In the file 2 '" + file.path +
                                    "', results of calculation are incomplete.");
    }
    return {};
}

void ReadSpecies(ComparisonFile& file)
{
    file.Tolerance = shell::LeadingValue(ExtractVal(LineAt(file, 24), "!"));
    const double count = shell::LeadingValue(ExtractVal(LineAt(file, 10), "!"));
    // The species records must fit in the file before anything is sized by the count.
    if (!(count >= 0) || 35 + 4 * count > static_cast<double>(file.lines.size()) + 1) {
        throw Error("'" + file.path + "': the species count of line 10 does not fit the file");
    }
    file.speciesCount = static_cast<int>(count);
    file.SpeciesList.assign(file.speciesCount + 1, {"", ""});
    file.MolecularWeight.assign(file.speciesCount + 1, 0.0);
    file.SpeciesList[0] = {"Temperature", "*"};
    for (int k = 1; k <= file.speciesCount; ++k) {
        const std::size_t i = 35 + 4 * static_cast<std::size_t>(k - 1);
        file.SpeciesList[k] = {Trim(Mid(LineAt(file, i), 7, 16)), "*"};
        file.MolecularWeight[k] = shell::LeadingValue(Trim(Right(LineAt(file, i + 3), 14)));
    }
    // Line 12: the target count, then the target numbers, ahead of its "!". The part may hold
    // no number at all, also when it is not empty (a lone carriage return, a tab).
    const std::vector<std::string> tokens = Tokens(ExtractVal(LineAt(file, 12), "!"));
    if (tokens.empty()) {
        return;
    }
    const double targetCount = shell::LeadingValue(tokens.front());
    for (int t = 1; t <= targetCount && t < static_cast<int>(tokens.size()); ++t) {
        const double number = shell::LeadingValue(tokens[t]);
        if (number == -1) {
            file.SpeciesList[0][1] = "v";
        } else if (number >= 1 && number <= file.speciesCount) {
            file.SpeciesList[static_cast<std::size_t>(number)][1] = "v";
        }
    }
}

std::vector<MergedRow> MergeSpecies(const ComparisonFile& file1, const ComparisonFile& file2)
{
    std::vector<MergedRow> table;
    table.push_back({"Temperature", file1.SpeciesList.empty() ? "" : file1.SpeciesList[0][1],
                     file2.SpeciesList.empty() ? "" : file2.SpeciesList[0][1], 0, 0});
    for (int k = 1; k <= file1.speciesCount; ++k) {
        table.push_back({file1.SpeciesList[k][0], file1.SpeciesList[k][1], "", k, std::nullopt});
    }
    const std::size_t ownRows = table.size();
    for (int j = 1; j <= file2.speciesCount; ++j) {
        const auto& [name, mark] = file2.SpeciesList[j];
        bool found = false;
        for (std::size_t r = 1; r < ownRows; ++r) {
            if (table[r].name == name) {
                table[r].mark2 = mark;
                table[r].number2 = j;
                found = true;
                break;
            }
        }
        if (!found) {
            table.push_back({name, "", mark, std::nullopt, j});
        }
    }
    return table;
}

void ConvertToMoleFractions(ComparisonFile& file)
{
    file.ProfileTable.clear();
    file.RecordCount = 0;
    const int ns = file.speciesCount;
    const std::size_t linesPerRecord = ns <= 50 ? 1 : static_cast<std::size_t>((ns + 49) / 50);
    auto firstLine = [&](const std::string& line) {
        return file.HasStepMark && line.size() >= 17 ? line.substr(0, line.size() - 17) : line;
    };
    if (file.resultLines.empty()) {
        return;
    }
    const std::size_t length = firstLine(file.resultLines[0]).size();
    std::size_t at = linesPerRecord; // the head record stands first
    while (at + linesPerRecord <= file.resultLines.size()) {
        const std::string& head = file.resultLines[at];
        if (Trim(head).empty()) {
            break;
        }
        std::string record = firstLine(head);
        if (record.size() != length) {
            break;
        }
        for (std::size_t extra = 1; extra < linesPerRecord; ++extra) {
            const std::string more = LTrim(file.resultLines[at + extra]);
            record += (!more.empty() && more[0] == '-' ? " " : "  ") + more;
        }
        at += linesPerRecord;

        std::vector<double> row(ns + 2, 0.0);
        row[0] = shell::LeadingValue(Mid(record, 8, 16));
        row[1] = shell::LeadingValue(Mid(record, 25, 16));
        double sum = 0;
        for (int k = 1; k <= ns; ++k) {
            const double y = shell::LeadingValue(Mid(record, 41 + 17 * (k - 1) + 1, 16));
            const double w = file.MolecularWeight[k];
            const double q = (y < file.Tolerance || w == 0) ? 0.0 : y / w;
            row[k + 1] = q;
            sum += q;
        }
        const double f = row[1] != 0 ? file.Pressure / row[1] : 0.0;
        for (int k = 1; k <= ns; ++k) {
            row[k + 1] = sum != 0 ? f * row[k + 1] / sum : 0.0;
        }
        file.ProfileTable.push_back(std::move(row));
        ++file.RecordCount;
    }
}

} // namespace zarvion::comparison

namespace zarvion::comparison {

shell::Message PrepGrid(const std::filesystem::path& path1, const std::filesystem::path& path2,
                        ComparisonSet& set, int* failedFile)
{
    set = ComparisonSet{};
    int unused = 0;
    int& refused = failedFile ? *failedFile : unused;
    refused = 0;
    const std::filesystem::path second = Trim(path2.string());
    const std::filesystem::path* paths[2] = {&path1, &second};
    for (int n = 1; n <= 2; ++n) {
        const auto& p = *paths[n - 1];
        std::ifstream probe(p, std::ios::binary);
        if (p.empty() || !probe || std::filesystem::is_directory(p)) {
            refused = n;
            return Warning("File" + std::to_string(n) + ", the specified Path/File name '" +
                           p.string() + "' cannot be accessed or is invalid.");
        }
    }
    for (int n = 1; n <= 2; ++n) {
        bool failed = false;
        shell::Message m;
        solverfile::CheckResultsPresent(*paths[n - 1], failed, m);
        if (failed) {
            m.style = shell::StyleWarning;
            m.title = shell::DefaultTitle;
            refused = n;
            return m;
        }
    }
    ComparisonSet loaded;
    if (auto m = OpenFile(path1, 1, loaded.file1); !m.empty()) {
        refused = 1;
        return m;
    }
    if (auto m = OpenFile(second, 2, loaded.file2); !m.empty()) {
        refused = 2;
        return m;
    }
    ReadSpecies(loaded.file1);
    ReadSpecies(loaded.file2);
    loaded.MergedTable = MergeSpecies(loaded.file1, loaded.file2);
    ConvertToMoleFractions(loaded.file1);
    ConvertToMoleFractions(loaded.file2);
    set = std::move(loaded);
    return {};
}

} // namespace zarvion::comparison
