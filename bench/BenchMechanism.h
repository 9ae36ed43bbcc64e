#pragma once
// A third-party CHEMKIN mechanism from the shared folder as an in-memory mechanism with the
// gas constants of the shipped options file, for the benchmarks.

#include <filesystem>
#include <optional>
#include <string>

#include "solverfile/ChemkinImport.h"

namespace zarvion::bench {

//! `chem` and `thermo` are paths below the shared mechanisms folder; an empty `thermo` means the
//! thermodynamic data stand in the mechanism file.
inline solverfile::Mechanism ImportSharedMechanism(const std::string& chem,
                                                   const std::string& thermo = {})
{
    const std::string base = ZARVION_SHARED_DIR "/mechanisms/";
    std::optional<std::filesystem::path> th;
    if (!thermo.empty()) th = base + thermo;
    const auto imp = solverfile::ImportChemkinFiles(base + chem, th, solverfile::ChemkinOptions{});
    solverfile::Mechanism m;
    for (const auto& s : imp.species) {
        m.speciesNames.push_back(s.name);
        m.thermo.push_back(s.thermo);
    }
    m.reactions = imp.reactions;
    m.header.GasConstantEnergy = 1.987204259;
    m.header.GasConstantConc = 82.05736608;
    return m;
}

} // namespace zarvion::bench
