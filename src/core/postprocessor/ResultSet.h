#pragma once
// The output table of one solved file, as the results readers build it. Rows stay text;
// a view converts the fields it needs.

#include <cstdint>
#include <string>
#include <vector>

#include "solverfile/Mechanism.h"

namespace zarvion::postprocessor {

//! Everything a results reader takes from one solver file. Indexing follows the file:
//! rows[0] is the head, data rows are 1 .. rowCount - 1; per-species arrays are 0-based
//! vectors (species i of the file is element i - 1) unless noted.
struct ResultSet {
    std::int32_t SpeciesCount = 0;
    std::int32_t columnCount = 0;     //!< SpeciesCount + 3
    std::int32_t ReactionCount = 0;
    double pressureAtm = 0;
    std::int32_t TemperatureMode = 0;
    double initialTemperature = 0;
    std::string finalTimeText;
    double absoluteTolerance = 0;
    double zeroThreshold = 0;         //!< 0.01 x absoluteTolerance
    double GasConstantEnergy = 0;
    double GasConstantConc = 0;
    double gasConstantDensity = 0;    //!< Avogadro x Boltzmann / AtmosphereDyn [cm^3 atm/(mol K)]

    std::vector<solverfile::ThermoRecord> thermo;         //!< slot 15 = molecularWeight
    std::vector<double> initialMoleFractions;            //!< species i at i - 1
    std::vector<std::string> speciesComposition;         //!< "C 1 H 4 "
    std::vector<std::string> elementNames;               //!< [0] = "e", at most 11
    std::vector<std::string> ReactionTexts;              //!< reaction j at j - 1
    std::vector<solverfile::ReactionInts> ReactionInts;  //!< reaction j at j - 1
    std::vector<solverfile::ReactionReals> ReactionReals;

    std::vector<std::string> columnNames;  //!< "Time(s)", "T(K)", "Ro", species names
    std::vector<std::string> rows;         //!< rebuilt rows; rows[0] is the head
    std::int32_t rowCount = 0;             //!< rows.size(), head included
    std::vector<double> density;           //!< [k] for data row k; [0] unused [g/cm^3]
    std::vector<double> stepSize;          //!< [k] for data row k; [0] unused [s]
    double timeBegin = 0;
    double timeEnd = 0;

    std::string fileText;      //!< the file's text as the window shows it (table cut, note added)
    bool terminatedEarly = false;

    double molecularWeight(int species) const { return thermo[species - 1][15]; }
};

} // namespace zarvion::postprocessor
