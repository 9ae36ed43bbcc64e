#pragma once
// One run of the solver program over one solver file: read the input side, integrate the
// problem of its header, append the results section (or an ERROR line with its reasons).

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "solver/CvodeIntegrator.h"

namespace zarvion::solver {

//! Maximum number of data rows written to the results table.
inline constexpr long MaximumOutputRows = 100000;

struct SolverRunOptions {
    LinearSolverKind linearSolver = LinearSolverKind::Automatic;
    std::ostream* progress = nullptr;  //!< progress lines (time, T, steps); none when null
    double progressInterval = 0.2;     //!< least wall time between progress lines [s]
};

struct SolverRunResult {
    bool success = false;
    std::string errorReason;                //!< text behind "ERROR " when !success
    std::vector<std::string> explanation;   //!< lines behind the ERROR line
    long rowsWritten = 0;
    IntegratorStatistics statistics;
    bool sparse = false;
    double wallSeconds = 0;
    double finalTime = 0;
    double finalTemperature = 0;
    double steepestRiseTime = 0;            //!< time of the largest dT/dt (energy equation) [s]
    double steepestRiseRate = 0;            //!< that dT/dt [K/s]
};

//! Runs the solver on file and appends the results. Throws zarvion::Error only when the input
//! side cannot be read or the file cannot be written; integration failures end in an ERROR
//! line and a result with success = false.
SolverRunResult RunSolverFile(const std::filesystem::path& file, const SolverRunOptions& options);

//! The solver file's path as written in a path file: its first line up to the first comma,
//! trimmed. Throws zarvion::Error when the file cannot be read or names no path.
std::filesystem::path ReadSolverFilePath(const std::filesystem::path& pathFile);

} // namespace zarvion::solver
