#pragma once
// Writes an imported CHEMKIN mechanism as a solver file: the 34 header lines with the
// problem, one 4-line record per species, and one record per reaction with its optional
// lines. Energies are written in cal/mol (line 31: R = 1.987204259 cal/(mol K)), rate
// constants in mol, cm, s with concentrations from P in atm (line 32: R = 82.05736608
// cm^3 atm/(mol K)).

#include "solverfile/ChemkinImport.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace zarvion::solverfile {

//! The constant-pressure problem written into the header.
struct ProblemSettings {
    double pressureAtm = 1.0;           //!< [atm]
    int TemperatureMode = 0;            //!< 0 constant temperature, 1 energy equation
    double initialTemperature = 1000.0; //!< [K]
    double minTemperature = 200.0;      //!< [K]
    double maxTemperature = 6000.0;     //!< [K]
    double initialTime = 0.0;           //!< [s]
    double finalTime = 1e-3;            //!< [s]
    double initialStep = 1e-10;         //!< [s]
    int maxSteps = 100000;
    double relativeTolerance = 1e-6;
    double absoluteTolerance = 1e-15;
    int outputEvery = 1;
    //! Initial amounts by species name, written as given (the solver normalises them).
    std::vector<std::pair<std::string, double>> moleFractions;
};

//! Where the mechanism came from, for the free header lines.
struct SolverFileSource {
    std::string mechanism;
    std::string thermo; //!< empty when the thermo data were in the mechanism
};

//! Reads "CH4:1,O2:2,N2:7.52"; a name may itself hold ':' or ','. Throws zarvion::Error
//! with a message naming the item that is not "name:number".
std::vector<std::pair<std::string, double>> ParseMoleFractionList(std::string_view text);

//! The lines of the solver file, without line ends. Throws zarvion::Error when a mole
//! fraction names an unknown species or is negative.
std::vector<std::string> BuildSolverFileLines(const ChemkinImport& mechanism,
                                              const ProblemSettings& problem,
                                              const SolverFileSource& source);

//! Writes the lines with CR LF, atomically.
void WriteSolverFile(const std::filesystem::path& target, const std::vector<std::string>& lines);

//! A number in a 15-column field: 9 significant digits with a sign column, fewer digits
//! when the exponent needs three places.
std::string FormatField15(double value);

} // namespace zarvion::solverfile
