#include "reduction/ReductionSetup.h"

#include <fstream>

#include "postprocessor/ResultsReader.h"
#include "shell/AtomicFile.h"
#include "shell/Error.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"
#include "solverfile/SolverFileChecks.h"

namespace zarvion::reduction {

using shell::LCase;
using shell::Trim;

namespace {

SetupRefusal Refuse(std::string text, int field, int row = 0)
{
    return {shell::Message{std::move(text), shell::StyleWarning, shell::DefaultTitle}, field, row};
}

bool InUnitInterval(const std::string& text)
{
    const auto v = shell::ToDouble(text);
    return v && *v >= 0 && *v <= 1;
}

constexpr const char* NonTargetMessage =
    "Non target parameter, please enter a number on the interval (0, 1).";

} // namespace

void PrepData(const postprocessor::ResultSet& results, const std::string& sourcePath,
              ReductionSetup& setup)
{
    setup.SourcePath = sourcePath;
    setup.TemperatureMode = results.TemperatureMode;
    setup.SpeciesTable.clear();
    for (int i = 1; i <= results.SpeciesCount; ++i) {
        SpeciesTableRow row;
        const std::size_t column = static_cast<std::size_t>(i) + 2;
        row.name = column < results.columnNames.size() ? results.columnNames[column] : "";
        row.hasInitial = static_cast<std::size_t>(i - 1) < results.initialMoleFractions.size() &&
                         results.initialMoleFractions[i - 1] > 0;
        row.parameter = row.hasInitial ? "0.1" : "";
        setup.SpeciesTable.push_back(std::move(row));
    }
    if (results.TemperatureMode != 0) {
        setup.temperatureText = "0.1";
        setup.temperatureVisible = true;
        setup.temperatureCaption = "Temperature";
    } else {
        // Temperature can be no target of a constant-temperature problem.
        setup.temperatureText.clear();
        setup.temperatureVisible = false;
        setup.temperatureCaption = "Constant Temperature";
    }
    setup.RowCount = std::max(0, results.rowCount - 1);
    setup.stepsText = std::to_string(setup.RowCount - 1);
    setup.intervalText = "1";
    setup.nonTargetText = shell::ShortestText(DefaultNonTargetParameter);
}

SetupRefusal CheckTabParam(const ReductionSetup& setup)
{
    for (std::size_t i = 0; i < setup.SpeciesTable.size(); ++i) {
        const std::string p = Trim(setup.SpeciesTable[i].parameter);
        if (p.empty()) {
            continue;
        }
        // The bounds are inclusive although the text names the open interval.
        if (!InUnitInterval(p)) {
            return Refuse("Bad value for the " + setup.SpeciesTable[i].name + " parameter. " +
                              "If the species is a target, enter a number on the interval (0, "
                              "1). If the species is not a target, clear the table field.",
                          -1, static_cast<int>(i) + 1);
        }
    }
    return {};
}

SetupRefusal RedTabGetF(const ReductionSetup& setup)
{
    if (setup.nonTargetText.empty()) {
        return Refuse(NonTargetMessage, 1);
    }
    const std::string t0 = Trim(setup.temperatureText);
    if (!t0.empty() && !InUnitInterval(t0)) {
        return Refuse("Bad value for the temperature parameter. If temperature is a target, "
                      "enter a number on the interval (0, 1). If temperature is not a target, "
                      "clear the textbox.",
                      0);
    }
    const std::string t1 = Trim(setup.nonTargetText);
    if (!t1.empty() && !InUnitInterval(t1)) {
        return Refuse(NonTargetMessage, 1);
    }
    int targets = setup.temperatureText.empty() ? 0 : 1;
    for (const auto& row : setup.SpeciesTable) {
        targets += row.parameter.empty() ? 0 : 1;
    }
    if (targets == 0) {
        return Refuse("Cannot start because no targets have been specified. For targets "
                      "(temperature and/or species), enter parameters on the interval (0,1).",
                      -1);
    }
    return {};
}

shell::Message TestRedFile(const std::filesystem::path& path)
{
    bool ok = false;
    if (!path.empty() && !std::filesystem::is_directory(path)) {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        if (out) {
            out << "Test\r\n";
            out.close();
            ok = !out.fail();
        }
        std::error_code ec;
        // The trial destroys a file of that name.
        if (!std::filesystem::remove(path, ec) || ec) {
            ok = false;
        }
    }
    if (ok) {
        return {};
    }
    return {"Reduced file, the specified Path/File name '" + path.string() +
                "' cannot be accessed or is invalid.",
            shell::StyleWarning, shell::DefaultTitle};
}

SetupRefusal CheckPreparePaths(const ReductionSetup& setup)
{
    if (LCase(setup.reducedPathText) == LCase(setup.SourcePath)) {
        return Refuse("The paths of the source and reduced files are identical; the files "
                      "should be different.",
                      5);
    }
    {
        std::ifstream in(setup.SourcePath, std::ios::binary);
        if (setup.SourcePath.empty() || !in || std::filesystem::is_directory(setup.SourcePath)) {
            return Refuse("The specified Path/File name " + setup.SourcePath +
                              " cannot be accessed or is invalid.",
                          10);
        }
    }
    const shell::Message m = TestRedFile(setup.reducedPathText);
    if (!m.empty()) {
        return {m, 5, 0};
    }
    return {};
}

PrepareRefusal Prepare(ReductionSetup& setup, postprocessor::ResultSet& results)
{
    results = postprocessor::ResultSet{};
    if (auto r = CheckPreparePaths(setup); !r.empty()) {
        return {r, false};
    }
    bool failed = false;
    shell::Message message;
    solverfile::CheckResultsPresent(setup.SourcePath, failed, message);
    if (failed) {
        message.style = shell::StyleWarning;
        message.title = shell::DefaultTitle;
        return {{message, -1, 0}, false};
    }
    postprocessor::ReadOutcome outcome;
    postprocessor::ResultSet read = postprocessor::OPEN_Rich(
        setup.SourcePath, postprocessor::ReaderForm::SOL_RESX, {}, outcome);
    if (outcome.failed) {
        return {{outcome.message, -1, 0}, outcome.viaReportError};
    }
    const std::string reduced = setup.reducedPathText;
    PrepData(read, setup.SourcePath, setup);
    setup.reducedPathText = reduced;
    results = std::move(read);
    return {};
}

SetupRefusal BuildRequest(ReductionSetup& setup, ReductionRequest& request)
{
    if (const shell::Message m = TestRedFile(setup.reducedPathText); !m.empty()) {
        return {m, 5, 0};
    }
    if (auto r = CheckTabParam(setup); !r.empty()) {
        return r;
    }
    if (auto r = RedTabGetF(setup); !r.empty()) {
        return r;
    }
    const std::string intervalText = Trim(setup.intervalText);
    const auto interval = shell::ToDouble(intervalText);
    std::int32_t step = 0;
    try {
        step = interval ? shell::ToInt32(*interval) : 0;
    } catch (const Error&) {
        step = 0;
    }
    if (step <= 0) {
        return Refuse("Interval of steps, please enter a positive integer. ", 2);
    }
    setup.intervalText = std::to_string(step);
    request = ReductionRequest{};
    request.interval = step;

    setup.temperatureText = Trim(setup.temperatureText);
    request.temperatureParameter =
        setup.temperatureText.empty() ? -1.0 : *shell::ToDouble(setup.temperatureText);
    setup.nonTargetText = Trim(setup.nonTargetText);
    const auto others = shell::ToDouble(setup.nonTargetText);
    if (!others) {
        return Refuse(NonTargetMessage, 1); // blanks only: no number to read
    }
    request.nonTargetParameter = *others;
    setup.nonTargetText = shell::ShortestText(request.nonTargetParameter);
    for (std::size_t i = 0; i < setup.SpeciesTable.size(); ++i) {
        const std::string p = Trim(setup.SpeciesTable[i].parameter);
        if (!p.empty()) {
            request.targetSpecies.push_back(static_cast<int>(i) + 1);
            request.speciesParameters.push_back(*shell::ToDouble(p));
        }
    }
    const std::string path = Trim(setup.reducedPathText);
    const std::string extension = LCase(std::filesystem::path(path).extension().string());
    const bool refusedExtension = extension == ".exe" || extension == ".pdb" ||
                                  extension == ".dll" || extension == ".pdf" || extension == ".pg";
    if (path.empty() || refusedExtension || !TestRedFile(path).empty()) {
        return Refuse("Reduced file, the specified Path/File name cannot be accessed or is invalid.",
                      5);
    }
    request.reducedPath = path;
    request.stepCount = setup.RowCount - 1;
    return {};
}

void SaveSettings(const std::filesystem::path& file, const ReductionSetup& setup)
{
    std::vector<std::string> species;
    for (const auto& row : setup.SpeciesTable) {
        if (!row.parameter.empty()) {
            species.push_back(row.name + " " + row.parameter);
        }
    }
    std::vector<std::string> lines;
    lines.push_back(" " + std::to_string(species.size() + 2) + " ");
    lines.push_back(setup.temperatureText);
    lines.push_back(setup.nonTargetText);
    lines.push_back(setup.intervalText);
    lines.insert(lines.end(), species.begin(), species.end());
    shell::WriteFileAtomically(file, shell::JoinCrLf(lines));
}

shell::Message EnterSettings(const std::filesystem::path& file, ReductionSetup& setup)
{
    bool failed = false;
    solverfile::TestFileReadable(file, failed);
    if (failed) {
        return {"Settings were not saved.", shell::StyleWarning, shell::DefaultTitle};
    }
    const std::vector<std::string> lines = shell::ReadLines(file);
    auto line = [&](std::size_t i) -> const std::string& {
        if (i >= lines.size()) {
            throw Error("'" + file.string() + "' ends at line " + std::to_string(lines.size()));
        }
        return lines[i];
    };
    const auto count = shell::ToDouble(line(0));
    if (!count) {
        throw Error("'" + file.string() + "': line 1 is no number");
    }
    const int m = shell::ToInt32(*count);
    setup.temperatureText = line(1);
    setup.nonTargetText = line(2);
    setup.intervalText = line(3);
    for (int k = 0; k < m - 2; ++k) {
        const std::string t = Trim(line(4 + static_cast<std::size_t>(k)));
        const auto blank = t.find(' ');
        if (blank == std::string::npos) {
            throw Error("'" + file.string() + "': line " + std::to_string(5 + k) +
                        " has no parameter");
        }
        const std::string name = t.substr(0, blank);
        const std::string value = Trim(t.substr(blank + 1));
        for (auto& row : setup.SpeciesTable) {
            if (row.name == name) {
                row.parameter = value;
                break;
            }
        }
    }
    return {};
}

void ClearAll(ReductionSetup& setup)
{
    setup.temperatureText.clear();
    setup.nonTargetText.clear();
    for (auto& row : setup.SpeciesTable) {
        row.parameter.clear();
    }
}

} // namespace zarvion::reduction
