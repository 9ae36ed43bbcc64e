#pragma once
// Every file the program writes goes through here: the content is written to a temporary
// file in the target's folder, flushed, and renamed over the target, so a crash or a full
// disk never leaves a half-written file in place of a good one.

#include <filesystem>
#include <functional>
#include <string_view>

namespace zarvion::shell {

//! Writes content to target atomically; throws zarvion::Error (with the path) on failure,
//! leaving any existing target untouched. A read-only target is refused, as a plain write
//! would be.
void WriteFileAtomically(const std::filesystem::path& target, std::string_view content);

//! Test hook run after the temporary file is complete and before the rename; a hook that
//! throws simulates an interrupted write. Pass an empty function to clear it.
void SetAtomicWriteHookForTesting(std::function<void()> hook);

} // namespace zarvion::shell
