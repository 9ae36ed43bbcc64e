#pragma once
// Turns the reaction list of a solver file into CHEMKIN reaction syntax. The file on disk is
// read with a walker of its own; a results section behind the reactions is ignored.

#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "shell/Message.h"

namespace zarvion::reduction {

//! The outcome of a conversion: the text of the new document, or a refusal message.
struct ChemkinConversion {
    std::vector<std::string> lines; //!< header and reactions, each reaction line led by a blank
    shell::Message message;         //!< non-empty on refusal; lines are then empty
    int convertedCount = 0;         //!< reactions converted

    bool ok() const { return message.empty(); }
    std::string text() const; //!< the lines joined with CR LF
};

//! Converts the reactions of the solver file at path. stamp is the moment written into the
//! header ("mmm d yyyy, hh:mm:ss"). Throws zarvion::Error on unexpected faults (a record
//! that ends early, an integer field that is not a number, a species index out of range).
ChemkinConversion ConvertReactions(const std::filesystem::path& path, const std::tm& stamp);
ChemkinConversion ConvertReactions(const std::filesystem::path& path);

//! The numbers of a rate, low-limit or fall-off line (15-column fields from column 7, which
//! may touch), trimmed and separated by one blank; count fields at most.
std::string SeparateRateFields(const std::string& line, int count = 3);

} // namespace zarvion::reduction
