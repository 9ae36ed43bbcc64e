#pragma once
// Opening a solved file for the post-processor views without a window: the session
// constants, the reader, the interval and the thinning.

#include <filesystem>
#include <memory>
#include <string>

#include "postprocessor/PostprocessorState.h"
#include "shell/Message.h"

namespace zarvion::postprocessor {

//! The constants of OPTIONS.txt in the AssistFiles folder of appPath; CODATA 2018 values
//! when that file is missing or unusable.
SessionConstants LoadSessionConstants(const std::filesystem::path& appPath);

//! A loaded file: the state, or the refusal of the reader.
struct LoadedResults {
    std::unique_ptr<PostprocessorState> state;
    shell::Message message;
    std::string fileName; //!< the file's name without its folder
    bool ok() const { return state != nullptr; }
};

//! Reads a solved file as the post-processor window does and applies the whole interval.
LoadedResults LoadForViews(const std::filesystem::path& file, const SessionConstants& constants);

//! The interval and the thinning as typed into the window ("" keeps the loaded bounds),
//! through the window's own checks.
shell::Message ApplyInterval(PostprocessorState& state, const std::string& from,
                             const std::string& to, const std::string& every);

} // namespace zarvion::postprocessor
