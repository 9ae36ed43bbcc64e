#pragma once
// Process-wide paths, physical constants and flags of one session, the start-up checks on the
// options file, the number format and the auxiliary files, and the common error texts.

#include "shell/Message.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zarvion::shell {

//! The session's state. One instance (`Session()`), used from the one thread only.
struct SessionState {
    std::string AppPath;    //!< the program's folder, no trailing separator
    std::string AssistPath; //!< AppPath + "/AssistFiles/", with the trailing separator
    std::int32_t LineBlock = 1000; //!< growth step of line arrays
    double Ln10 = 0.0;
    double ElectronMass = 0.0; //!< [g/mol], set once the options are read
    double GasConstantJ = 0.0;      //!< [J/(K mol)]
    double GasConstantCal = 0.0;    //!< [cal/(K mol)]
    double AvogadroNumber = 0.0;    //!< [1/mol]
    double BoltzmannConstant = 0.0; //!< [erg/K], the file's J/K times 1E7
    double AtmosphereDyn = 0.0;     //!< [dyn/cm^2], the file's kPa times 10000
    double LowestThermoTemperature = 100.0; //!< [K]
    std::int32_t TextSize = 11; //!< point size of new text windows
    std::array<double, 3> ReductionDefaults{0.1, 0.3, 0.1};
    int SelectionColour = 14; //!< standard colour index (QBColor), see QBColorRgb
    int HighlightColour = 9;
    int ConcentrationUnit = 0; //!< 0 mol/cm^3, 1 1/cm^3
    bool EnergyUnit = false;   //!< true kJ/mol and J/K mol, false kcal/mol and cal/K mol
    //! Margins Left, Right, Top, Bottom [inch], paper (1 Letter, 9 A4), orientation
    //! (1 portrait, 2 landscape).
    std::array<float, 6> PageParameters{0.5f, 0.5f, 1.0f, 1.0f, 1.0f, 1.0f};
    std::int32_t PageNumberAlignment = 0; //!< 0 left, 1 right
    bool CancelClose = false;
    bool KeepConsole = false;
    bool FrameWasMaximised = false;
    std::string ResultsFilePath;
    std::string LastError;
    std::int32_t FrameOption = 0; //!< the integer option at position 17 of OPTIONS.txt
};

//! The process's one session state.
SessionState& Session();

//! Fills the constants every part reads before anything else runs; paths and the options
//! file are left to OptionOpen.
void MDILoadConstants(SessionState& state);

//! The folder of the running executable (its /proc/self/exe), or the current folder.
std::filesystem::path ProgramFolder();

//! Sets AppPath and AssistPath from a program folder.
void SetPaths(SessionState& state, const std::filesystem::path& appPath);

//! The text shown when OPTIONS.txt cannot be used.
inline constexpr const char* OptionsErrorText =
    "Error in the OPTIONS.txt file. In the file group of Zarvion-I, use the OPTIONS.txt file  to "
    "set correct values.";

//! Sets the paths, reads AssistFiles/OPTIONS.txt (17 delimited values, positions 12-16 the
//! constants, 17 an integer option) and sets ElectronMass and the colours. Returns an empty
//! message on success; otherwise the critical OptionsErrorText, with the constants unchanged.
Message OptionOpen(SessionState& state, const std::filesystem::path& appPath);

//! The number-to-text conversion the program uses; CheckNumberFormat looks at its result.
using NumberFormatter = std::function<std::string(double)>;

//! Formats 1234567890 / 7 - 1234567890 and returns an empty text when it has a period, a
//! leading "-" and no grouping, else the message that tells what is wrong. The default
//! formatter is the program's own conversion (ShortestText).
std::string CheckNumberFormat(const NumberFormatter& formatter = {});

//! A warning box without title text.
Message ShowWarning(std::string_view text);

//! The common reporter: LastError = tag + description, shown as a warning without title.
Message ReportError(SessionState& state, std::string_view tag, std::string_view description);

//! The text file-dialog procedures report instead of the tag form.
std::string DialogErrorText(long number, std::string_view description);

//! Opens the file and checks it is writable: an empty message when fine, else the critical
//! message that ends the program.
Message TotOpnErr(const std::filesystem::path& path);

//! Whether an auxiliary image could be loaded; the GUI passes its image loader.
using AuxiliaryLoader = std::function<bool(const std::filesystem::path&)>;

//! Loads "Dragcopy.cur" then "MISC05.ICO" from the assist folder; the message for the first
//! that fails, or an empty one. The default loader only checks that the file can be read.
Message CursorFiles_Check(const std::string& assistPath, const AuxiliaryLoader& loader = {});

//! The files removed at exit: ZARA03.TMP, ZARA02.TMP, ZARM01.TMP of AssistFiles and
//! SOLTMP.txt of the program's folder.
std::vector<std::filesystem::path> TemporaryFilesRemovedAtExit(const SessionState& state);

//! Deletes those of them that exist, silently.
void RemoveTemporaryFiles(const SessionState& state);

//! Files of the session folders.
std::filesystem::path OptionsFilePath(const SessionState& state);
std::filesystem::path TmpPlotPath(const SessionState& state);       //!< AssistFiles/TmpPlot.txt
std::filesystem::path SolverDataPath(const SessionState& state);    //!< AssistFiles/SolverData.txt
std::filesystem::path RedMechDataPath(const SessionState& state);   //!< AssistFiles/RedMechData.txt
std::filesystem::path SolverPathFilePath(const SessionState& state); //!< SolverFilePath.txt
std::filesystem::path SamplesPath(const SessionState& state);       //!< the Samples folder

//! The RGB value (0xRRGGBB) of one of the 16 standard colours, e.g. 14 light yellow
//! 0xFFFF00, 9 light blue 0x0000FF; indexes are taken modulo 16.
std::uint32_t QBColorRgb(int index);

} // namespace zarvion::shell
