#include "shell/SessionState.h"

#include "shell/DelimitedRead.h"
#include "shell/Error.h"
#include "shell/FileGuards.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"

#include <cmath>
#include <fstream>
#include <optional>

namespace zarvion::shell {

namespace {

constexpr double ElectronMassValue = 0.00054858; // [g/mol]
constexpr int OptionsValueCount = 17;

std::filesystem::path assist(const SessionState& state, const char* name)
{
    return std::filesystem::path(state.AssistPath) / name;
}

} // namespace

SessionState& Session()
{
    static SessionState state;
    return state;
}

void MDILoadConstants(SessionState& state)
{
    state.LineBlock = 1000;
    state.Ln10 = std::log(10.0);
    state.LowestThermoTemperature = 100.0;
    state.TextSize = 11;
    state.ReductionDefaults = {0.1, 0.3, 0.1};
    state.SelectionColour = 14;
    state.HighlightColour = 9;
    state.PageParameters = {0.5f, 0.5f, 1.0f, 1.0f, 1.0f, 1.0f};
    state.PageNumberAlignment = 0;
}

std::filesystem::path ProgramFolder()
{
    std::error_code ec;
    const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (!ec && exe.has_parent_path()) {
        return exe.parent_path();
    }
    return std::filesystem::current_path(ec);
}

void SetPaths(SessionState& state, const std::filesystem::path& appPath)
{
    std::string app = appPath.string();
    while (app.size() > 1 && (app.back() == '/' || app.back() == '\\')) {
        app.pop_back();
    }
    state.AppPath = app;
    state.AssistPath = app + "/AssistFiles/";
}

Message OptionOpen(SessionState& state, const std::filesystem::path& appPath)
{
    SetPaths(state, appPath);
    const Message failure{OptionsErrorText, StyleCritical, DefaultTitle};
    std::string text;
    try {
        text = ReadFile(OptionsFilePath(state));
    } catch (const Error&) {
        return failure;
    }
    const auto fields = ReadDelimited(text);
    if (static_cast<int>(fields.size()) < OptionsValueCount) {
        return failure;
    }
    // Positions 12 to 17 must be numbers; 1 to 11 are read and thrown away.
    std::array<double, 6> values{};
    for (int k = 0; k < 6; ++k) {
        const auto& field = fields[static_cast<std::size_t>(11 + k)];
        const std::optional<double> v = ToDouble(field.text);
        if (!v || !std::isfinite(*v)) {
            return failure;
        }
        values[static_cast<std::size_t>(k)] = *v;
    }
    std::int32_t option = 0;
    try {
        option = ToInt32(values[5]);
    } catch (const Error&) {
        return failure;
    }
    state.GasConstantJ = values[0];
    state.GasConstantCal = values[1];
    state.AvogadroNumber = values[2];
    state.BoltzmannConstant = values[3] * 1e7;
    state.AtmosphereDyn = values[4] * 10000.0;
    state.FrameOption = option;
    state.ElectronMass = ElectronMassValue;
    state.SelectionColour = 14;
    state.HighlightColour = 9;
    return {};
}

std::string CheckNumberFormat(const NumberFormatter& formatter)
{
    const double probe = 1234567890.0 / 7.0 - 1234567890.0;
    const std::string text = Trim(formatter ? formatter(probe) : ShortestText(probe));
    std::string message;
    if (text.find(',') != std::string::npos) {
        message = "Decimal symbol of the number format isn't recognized; Zarvion requires the "
                  "point as the decimal symbol. ";
    } else if (text.empty() || text[0] != '-') {
        message = "Negative sign of the number format isn't recognized; set the ' - ' symbol as "
                  "negative sign.";
    } else {
        std::size_t points = 0;
        for (char c : text) {
            points += c == '.' ? 1 : 0;
        }
        if (points >= 2) {
            message = "In the number format, the digit grouping is used; delete this format "
                      "feature.";
        }
    }
    if (!message.empty()) {
        message += " The next message contains an information about setting the number format.";
    }
    return message;
}

Message ShowWarning(std::string_view text)
{
    return {std::string(text), StyleWarning, ""};
}

Message ReportError(SessionState& state, std::string_view tag, std::string_view description)
{
    state.LastError = std::string(tag) + std::string(description);
    return ShowWarning(state.LastError);
}

std::string DialogErrorText(long number, std::string_view description)
{
    return "The following error has occurred:\r\nErr # " + std::to_string(number) + " - " +
           std::string(description);
}

Message TotOpnErr(const std::filesystem::path& path)
{
    const std::string p = path.string();
    std::error_code ec;
    bool opened = false;
    if (!std::filesystem::is_directory(path, ec)) {
        std::ifstream in(path, std::ios::binary);
        opened = static_cast<bool>(in);
    }
    if (!opened) {
        return {"The auxiliary file " + p + " not found or cannot be processed. " +
                    "The program has been terminated.",
                StyleCritical, DefaultTitle};
    }
    const ReadOnlyState ro = GetReadOnlyState(path, false);
    if (ro.state == 1) {
        return {ro.message, StyleCritical, DefaultTitle};
    }
    return {};
}

Message CursorFiles_Check(const std::string& assistPath, const AuxiliaryLoader& loader)
{
    for (const char* name : {"Dragcopy.cur", "MISC05.ICO"}) {
        const std::filesystem::path file = std::filesystem::path(assistPath) / name;
        bool ok = false;
        if (loader) {
            ok = loader(file);
        } else {
            std::error_code ec;
            std::ifstream in(file, std::ios::binary);
            ok = in && std::filesystem::is_regular_file(file, ec);
        }
        if (!ok) {
            return {"The auxiliary file " + file.string() + " not found. \r\n" +
                        "The program has been terminated.",
                    StyleCritical, DefaultTitle};
        }
    }
    return {};
}

std::vector<std::filesystem::path> TemporaryFilesRemovedAtExit(const SessionState& state)
{
    return {assist(state, "ZARA03.TMP"), assist(state, "ZARA02.TMP"),
            assist(state, "ZARM01.TMP"), std::filesystem::path(state.AppPath) / "SOLTMP.txt"};
}

void RemoveTemporaryFiles(const SessionState& state)
{
    for (const auto& file : TemporaryFilesRemovedAtExit(state)) {
        DeleteFile(file);
    }
}

std::filesystem::path OptionsFilePath(const SessionState& state)
{
    return assist(state, "OPTIONS.txt");
}

std::filesystem::path TmpPlotPath(const SessionState& state)
{
    return assist(state, "TmpPlot.txt");
}

std::filesystem::path SolverDataPath(const SessionState& state)
{
    return assist(state, "SolverData.txt");
}

std::filesystem::path RedMechDataPath(const SessionState& state)
{
    return assist(state, "RedMechData.txt");
}

std::filesystem::path SolverPathFilePath(const SessionState& state)
{
    return std::filesystem::path(state.AppPath) / "SolverFilePath.txt";
}

std::filesystem::path SamplesPath(const SessionState& state)
{
    return std::filesystem::path(state.AppPath) / "Samples";
}

std::uint32_t QBColorRgb(int index)
{
    static constexpr std::array<std::uint32_t, 16> Colours = {
        0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000, 0xC0C0C0,
        0x808080, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF};
    return Colours[static_cast<std::size_t>(((index % 16) + 16) % 16)];
}

} // namespace zarvion::shell
