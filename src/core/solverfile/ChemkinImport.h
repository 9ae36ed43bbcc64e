#pragma once
// Import of a CHEMKIN-II mechanism (ELEMENTS, SPECIES, THERMO, REACTIONS, optionally with a
// separate thermodynamic data file) into the records of a solver file.
//
// Mechanism faults are expected: the import never throws for them but returns every finding
// as a message with its file and line. Only I/O faults throw (zarvion::Error).

#include "solverfile/Mechanism.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zarvion::solverfile {

//! How bad one finding is.
enum class ImportSeverity {
    Warning, //!< noted, the import goes on unchanged
    Dropped, //!< a reaction or species the format cannot hold, left out on request
    Refusal, //!< a reaction or species the format cannot hold; the import fails
    Error,   //!< the mechanism is broken; the import fails
};

//! One finding of the import, with the 1-based line of the file it concerns (0: none).
struct ImportMessage {
    ImportSeverity severity = ImportSeverity::Warning;
    std::string file;
    int line = 0;
    std::string text;
};

//! Choices of the caller.
struct ChemkinOptions {
    //! Leave out what the solver file cannot hold (PLOG, CHEB, FORD, ...) and list it,
    //! instead of refusing the whole mechanism.
    bool skipUnsupported = false;
    std::string mechanismName = "mechanism"; //!< file name used in messages
    std::string thermoName = "thermo";       //!< file name used in messages
};

//! A species as the solver file writes it.
struct ImportedSpecies {
    std::string name;
    //! Element symbols (upper case) with their integer counts, in thermo-record order.
    std::vector<std::pair<std::string, int>> elements;
    //! Slots 1-14 the coefficients (1-7 above the common temperature), 15 molecular weight
    //! [g/mol], 16 low limit [K], 17 high limit [K], 18 common temperature [K].
    ThermoRecord thermo{};
};

//! Result of one import. Reactions are in solver-file form: E [cal/mol], A in mol, cm, s.
struct ChemkinImport {
    std::vector<ImportedSpecies> species;
    std::vector<ReactionRecord> reactions;
    std::vector<int> reactionSourceLines; //!< line of each written reaction's equation
    std::vector<ImportMessage> messages;

    int sourceReactionCount = 0; //!< reaction equations found in the input
    int revSplitCount = 0;       //!< REV reactions written as a forward and a reverse one
    int revZeroCount = 0;        //!< REV reactions with a zero reverse rate: forward only
    //! REV reactions whose reverse would need more than 3 reactant molecules: forward only
    int revForwardOnlyCount = 0;
    int droppedReactionCount = 0;
    int droppedSpeciesCount = 0;

    //! True when nothing refused the import: no error, no refusal left.
    bool succeeded() const;
    int count(ImportSeverity severity) const;
};

//! Imports mechanism text and, when given, the text of a separate thermo file. A THERMO
//! section inside the mechanism takes precedence over the separate file.
ChemkinImport ImportChemkin(std::string_view mechanismText,
                            std::optional<std::string_view> thermoText = std::nullopt,
                            const ChemkinOptions& options = {});

//! The same for files; throws zarvion::Error when a file cannot be read.
ChemkinImport ImportChemkinFiles(const std::filesystem::path& mechanism,
                                 const std::optional<std::filesystem::path>& thermo,
                                 ChemkinOptions options = {});

//! Standard atomic weight [g/mol] of an element symbol (any case); nullopt if unknown.
std::optional<double> AtomicWeight(std::string_view symbol);

//! One line of report per message, "file:line: severity: text".
std::string FormatImportMessage(const ImportMessage& message);

} // namespace zarvion::solverfile
