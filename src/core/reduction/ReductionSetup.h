#pragma once
// The set-up of a reduction: the species table with target parameters, the default
// settings after Prepare, the checks of the parameters and paths, the saved settings file.

#include <filesystem>
#include <string>
#include <vector>

#include "postprocessor/ResultSet.h"
#include "reduction/ReductionEngine.h"
#include "shell/Message.h"

namespace zarvion::reduction {

//! One row of `SpeciesTable`.
struct SpeciesTableRow {
    std::string name;          //!< cell 2
    bool hasInitial = false;   //!< cell 3: the initial mole fraction is above 0
    std::string parameter;     //!< cell 4: empty when the species is no target
};

//! The state of the set-up form that the checks and the run read.
struct ReductionSetup {
    std::string SourcePath;
    int TemperatureMode = 0;
    std::vector<SpeciesTableRow> SpeciesTable;
    std::string temperatureText;                  //!< `Text1(0)`
    bool temperatureVisible = true;
    std::string temperatureCaption = "Temperature"; //!< `Label4`
    std::string nonTargetText;                    //!< `Text1(1)`
    std::string intervalText;                     //!< `Text2`
    int RowCount = 0;                             //!< stored result rows
    std::string stepsText;                        //!< `Text6`: RowCount - 1
    std::string reducedPathText;                  //!< `Text5`
};

//! The default non-target parameter.
inline constexpr double DefaultNonTargetParameter = 0.3;

//! A refusal and where it points: the field that gets the focus (0 `Text1(0)`, 1 `Text1(1)`,
//! 2 `Text2`, 5 `Text5`, 10 `Text10`, -1 none) and the table row (1-based, 0 none).
struct SetupRefusal {
    shell::Message message;
    int field = -1;
    int row = 0;

    bool empty() const { return message.empty(); }
};

//! `PrepData` with the rest of Prepare's defaults: species table (every species present at
//! the start a target at 0.1), temperature text, non-target parameter, rows and interval.
void PrepData(const postprocessor::ResultSet& results, const std::string& sourcePath,
              ReductionSetup& setup);

//! `CheckTabParam`: every non-empty parameter must be a number from 0 to 1.
SetupRefusal CheckTabParam(const ReductionSetup& setup);

//! `RedTabGetF`: the temperature and non-target texts, and that a target exists.
SetupRefusal RedTabGetF(const ReductionSetup& setup);

//! `TestRedFile`: a trial write of path (the file is created and deleted).
shell::Message TestRedFile(const std::filesystem::path& path);

//! Prepare's path checks, steps 1 to 3: different paths, a readable source, a writable
//! reduced path.
SetupRefusal CheckPreparePaths(const ReductionSetup& setup);

//! Prepare, steps 1 to 6: the path checks, the check for results, the results read as the
//! solver results window reads them, then `PrepData`. On refusal results is left empty and
//! the refusal names the field to select (a refusal of the results reader has field -1 and,
//! when viaReportError is set, goes through the common reporter).
struct PrepareRefusal {
    SetupRefusal refusal;
    bool viaReportError = false;
};
PrepareRefusal Prepare(ReductionSetup& setup, postprocessor::ResultSet& results);

//! The start sequence's reading of the settings (interval, temperature, non-target
//! parameter, targets, reduced path) into a request; the texts are written back as Start does.
//! The table checks come first. stepCount is RowCount - 1.
SetupRefusal BuildRequest(ReductionSetup& setup, ReductionRequest& request);

//! Save: writes the settings file (`RedMechData.txt`) atomically.
void SaveSettings(const std::filesystem::path& file, const ReductionSetup& setup);

//! Enter: reads the settings file into the texts and the table (`RedSettigs`). Returns
//! "Settings were not saved." when the file cannot be read; throws zarvion::Error on a file
//! whose count line is no number or whose lines run out.
shell::Message EnterSettings(const std::filesystem::path& file, ReductionSetup& setup);

//! Clear All: empties the two parameter texts and every table parameter.
void ClearAll(ReductionSetup& setup);

} // namespace zarvion::reduction
