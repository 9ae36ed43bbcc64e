#pragma once
// The input side of a solver file in memory: header values, thermodynamic records and
// reaction records. Slot layouts are those of the file (1-based); slot 0 is unused.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace zarvion::solverfile {

//! One species' polynomial data: slots 1-7 the range above the common temperature,
//! 8-14 the range at and below it, 15 molecular weight [g/mol], 16 low limit [K],
//! 17 high limit [K], 18 common temperature [K].
using ThermoRecord = std::array<double, 19>;

//! Integer row of a reaction: slots 1-16 the fields of the integer line, 17-26 the
//! species numbers of the listed third-body partners.
using ReactionInts = std::array<std::int32_t, 27>;

//! Double row of a reaction: 1-3 A, n, E; 4-6 low-pressure A, n, E; 7-11 fall-off
//! parameters; 12-21 partner efficiencies; 22-25 filled by the thermo module.
using ReactionReals = std::array<double, 26>;

// Named slots of ReactionInts.
namespace slot {
inline constexpr int ReactantCount = 10;
inline constexpr int ProductCount = 11;
inline constexpr int ThirdBodyKind = 12;
inline constexpr int PartnerCount = 13;
inline constexpr int HasLowLimit = 14;
inline constexpr int FalloffKind = 15;
inline constexpr int Reversible = 16;
inline constexpr int FirstPartner = 17;
} // namespace slot

//! One reaction as read from its record.
struct ReactionRecord {
    ReactionInts ints{};
    ReactionReals reals{};
    std::string text; //!< the title line less its first 6 characters
};

//! Problem header, lines 10-32 of the file.
struct ProblemHeader {
    std::int32_t SpeciesCount = 0;
    std::int32_t ReactionCount = 0;
    double pressureAtm = 0;            //!< line 14 [atm]
    std::int32_t TemperatureMode = 0;  //!< line 15: 0 constant T, 1 energy equation
    double initialTemperature = 0;     //!< line 16 [K]
    double minTemperature = 0;         //!< line 17 [K]
    double maxTemperature = 0;         //!< line 18 [K]
    double initialTime = 0;            //!< line 19 [s]
    double finalTime = 0;              //!< line 20 [s]
    std::string finalTimeText;         //!< line 20 as written
    double initialStep = 0;            //!< line 21 [s]
    std::int32_t maxSteps = 3;         //!< line 22, raised to 3
    double relativeTolerance = 0;      //!< line 23
    double absoluteTolerance = 0;      //!< line 24
    std::int32_t outputEvery = 1;      //!< line 28, raised to 1
    double GasConstantEnergy = 0;      //!< line 31, units of E
    double GasConstantConc = 0;        //!< line 32, turns P into total concentration
};

//! What a reader takes from one file's input side. Vectors are 0-based: species k of the
//! file is element k - 1.
struct Mechanism {
    ProblemHeader header;
    std::vector<std::string> speciesNames;       //!< trimmed
    std::vector<std::string> MolFormula;         //!< compact formula, e.g. "C1H4"
    std::vector<std::string> composition;        //!< "C 1 H 4 " (blank between runs, blank at end)
    std::vector<double> initialMoleFractions;
    std::vector<std::string> initialMoleFractionTexts; //!< as found, trimmed
    std::vector<ThermoRecord> thermo;
    std::vector<ReactionRecord> reactions;
    std::vector<std::string> elementNames;       //!< "e", then symbols; at most 11
    int thermoKeywordLine = 34;   //!< 1-based line of the THERMO keyword
    int reactionsEndLine = 0;     //!< 1-based line of the closing "END" of the reactions
};

} // namespace zarvion::solverfile
