#pragma once
// The rules of the solver start window and of the solver run that can be stated without
// widgets: the ordered checks of "Run Solver", the species table as the window reads it,
// the missing-thermodynamic-data warning, the state of the last output record, the saved
// settings file, and the verdict on a finished run.

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zarvion::solverfile {

//! Input fields of the start window, named as on the window.
enum class StartField {
    Text1,   //!< pressure [atm]
    Text3,   //!< initial temperature [K]
    Text4_0, //!< initial time [s]
    Text4_1, //!< final time [s]
    Text4_2, //!< initial step size [s]
    Text4_3, //!< relative tolerance
    Text4_4, //!< absolute tolerance
    Text4_5, //!< maximum number of computed steps
    Text4_6, //!< output every n-th accepted step
    Text7,   //!< minimum allowable temperature [K]
    Text6,   //!< maximum allowable temperature [K]
    GridEX1, //!< the table of initial mole fractions
    None,
};

//! Tab (1 or 2) on which a field stands; the table stands on both and reports tab 1.
int TabOf(StartField field);

//! The texts of the start window as the user left them.
struct StartWindowFields {
    std::string Text1;
    std::string Text3;
    std::array<std::string, 7> Text4;
    std::string Text7;
    std::string Text6;
    std::vector<std::string> fractions; //!< one per species in file order; "" counts as 0
};

//! Outcome of the checks of "Run Solver".
struct StartWindowCheck {
    bool passed = false;
    std::string message;            //!< warning text of the first failure
    StartField field = StartField::None;
    int tab = 0;                    //!< tab to switch to on failure (1 or 2)
    int fractionRow = -1;           //!< 0-based species of a refused fraction
    //! The fields after the silent corrections made before the check ended (initial step
    //! capped, output step and step limit rounded and raised); copy them back to the window.
    StartWindowFields fields;
};

//! Runs the checks of "Run Solver" in their fixed order and stops at the first failure.
StartWindowCheck ValidateStartWindow(const StartWindowFields& input);

//! One species as the start window reads its record: the left-trimmed first line split at
//! blanks (number, name, formula), the fraction from the last 10 characters of the rest, the
//! weight from the last 15 characters of the left-trimmed fourth line.
struct StartWindowSpecies {
    std::string name;
    std::string MolFormula;
    std::string fraction; //!< as found, trimmed
    double weight = 0;    //!< [g/mol]
    std::array<std::string, 4> recordLines;
};

//! Reads the species table from the input side; firstRecordLine is 1-based.
std::vector<StartWindowSpecies> ReadStartWindowSpecies(const std::vector<std::string>& lines,
                                                       int firstRecordLine, int SpeciesCount);

//! 1-based number of the line behind the THERMO keyword, searched from line 29; 0 if none.
int FindFirstRecordLine(const std::vector<std::string>& lines);

//! The warning shown when the energy equation is solved and some species carries only zero
//! polynomial coefficients; empty when every species has data.
std::string PolinomCheckText(const std::vector<StartWindowSpecies>& species);

//! State of the last output record, offered as new initial conditions.
struct LastStepState {
    double LastTime = 0;                   //!< [s]
    std::vector<std::string> values;       //!< entry 0 temperature, entry k mole fraction k
};

//! Reads the last record ahead of the first "!$END" line. Empty when the file has no such
//! line; mole fractions not above absoluteTolerance become "0".
std::optional<LastStepState> LastVal(const std::filesystem::path& path,
                                     const std::vector<double>& weights,
                                     double absoluteTolerance);

//! What "Save" writes to SolverData.txt and "Enter" reads back.
struct SavedSettings {
    std::string SolverPath;
    std::string Text1, Text3, Text7, Text6;
    std::array<std::string, 7> Text4;
    bool adiabatic = false;
    std::vector<std::pair<std::string, std::string>> fractions; //!< name, fraction
};

//! The text of SolverData.txt (CR LF lines); fractions not above 0 are left out.
std::string ComposeSolverData(const SavedSettings& settings);

//! Parses SolverData.txt; throws zarvion::Error when the file is cut short.
SavedSettings ParseSolverData(const std::vector<std::string>& lines);

//! The species fractions after "Enter": "0" for all, then each saved name that the table
//! holds gets its value in "0.###E+00".
std::vector<std::string> ApplySavedFractions(const std::vector<std::string>& names,
                                             const SavedSettings& settings);

//! The values "Default Settings" puts into the fields it touches.
struct DefaultSettings {
    std::string Text7 = "200";
    std::string Text6 = "6000";
    std::string Text4_0 = "0";
    std::string Text4_1, Text4_2, Text4_3, Text4_4;
};
DefaultSettings DefoultVaues();

//! What a scan of the solver file says about a finished run.
struct SolverRunVerdict {
    bool EndFound = false;
    bool ErrorFound = false;
    bool ResultsFound = false;
    std::string ErrorText;  //!< the lines behind the "ERROR" line, each with CR LF
    std::string message;    //!< text of the closing message box
    int style = 0;          //!< box style: 64 or 48, plus 4 when "Show results?" is asked
};

//! Scans the solver file after a run and words the closing message. Throws zarvion::Error
//! when the file cannot be read.
SolverRunVerdict EvaluateSolverRun(const std::filesystem::path& path);

//! Reads SolverFilePath.txt back: the first line up to its end or first comma, trimmed of
//! quotes and blanks. Throws zarvion::Error when the file is missing.
std::string ReadSolverFilePath(const std::filesystem::path& file);

} // namespace zarvion::solverfile
