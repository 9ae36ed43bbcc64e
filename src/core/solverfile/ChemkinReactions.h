#pragma once
// The REACTIONS part of the CHEMKIN importer: reaction lines with their auxiliary keywords,
// unit conversion, the checks of what a solver file can hold, and the final records.

#include "solverfile/ChemkinDetail.h"

#include <map>
#include <memory>
#include <array>
#include <set>

namespace zarvion::solverfile::chemkin {

//! Energy units of CHEMKIN and their factor to cal/mol; nullopt for an unknown word.
std::optional<double> EnergyUnitFactor(std::string_view word);

//! One reaction as read, before the checks.
struct PendingReaction {
    int line = 0;
    std::string equation; // as written, for messages
    ParsedEquation eq;
    std::array<double, 3> rate{};
    double energyFactor = 1.0;
    bool molecules = false;
    std::optional<std::array<double, 3>> low, rev;
    std::vector<double> troe, sri;
    bool hasTroe = false, hasSri = false, hasHigh = false;
    std::vector<std::pair<int, double>> efficiencies;
    bool duplicate = false;
    std::vector<std::string> unsupported; // reasons the format cannot hold it
    std::vector<std::string> errors;      // reasons it is broken
    bool keep = true;
};

//! Collects reaction lines as they come and turns them into solver-file records at the end.
class ReactionBuilder {
public:
    ReactionBuilder(const ChemkinOptions& options, ChemkinImport& out);
    ~ReactionBuilder();

    //! Unit words of the REACTIONS line ("CAL/MOLE", "KELVINS", "MOLECULES", ...).
    void setUnits(const std::vector<std::string>& words, int line);
    //! One line of the REACTIONS section, comment removed and trimmed.
    void readLine(const std::string& text, int line, const std::vector<std::string>& species);
    void endOfSection();

    //! Checks every reaction, drops species without thermo that no reaction needs, and
    //! writes species and reactions into the result.
    void finish(const std::vector<std::string>& species, const std::vector<int>& speciesLines,
                const std::map<std::string, ThermoEntry>& thermo,
                const std::map<std::string, double>& elementWeights,
                const std::set<std::string>& elements);

private:
    using Pending = PendingReaction;
    void auxiliary(Pending& r, const std::string& keyword, const std::string& values, int line);
    void message(ImportSeverity severity, int line, std::string text);
    void checkDuplicates();
    void checkReaction(Pending& r, const std::vector<std::string>& names);
    std::vector<int> keepSpecies(const std::vector<std::string>& names,
                                 const std::vector<int>& speciesLines,
                                 const std::map<std::string, ThermoEntry>& thermo,
                                 const std::map<std::string, double>& elementWeights,
                                 const std::set<std::string>& elements);
    void writeReaction(const Pending& r, const std::vector<std::string>& names,
                       const std::vector<int>& newIndex);

    const ChemkinOptions& m_options;
    ChemkinImport& m_out;
    double m_energyFactor = 1.0; // to cal/mol
    bool m_molecules = false;
    std::unique_ptr<SpeciesTable> m_table;
    std::vector<Pending> m_pending;
};

} // namespace zarvion::solverfile::chemkin
