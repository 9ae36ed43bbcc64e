#pragma once
// Guards around every file the user opens: path splitting, refused extensions, the read-only
// state, and the filter lists of the file dialogs.

#include "shell/Message.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zarvion::shell {

//! Splits the trimmed path: `name` is what follows the last separator ("/" or "\"), keeping
//! its extension; `extension` what follows the last "." of the whole path, or the whole path
//! when it has no "."; `position` the 1-based position of the last separator, 0 when none.
void SplitPath(std::string_view path, std::string& name, std::string& extension,
               std::size_t& position);

//! The extensions the program never opens: exe pdb gif msi dll pdf mdb bmp wmf doc, compared
//! after lower-casing.
bool IsRefusedExtension(std::string_view extension);

//! The read-only state of a file.
//! state: 9999 for an empty path or a missing file; 0 writable; 1 read-only (with `message`
//! unless cleared); 32 when the read-only state has just been cleared.
struct ReadOnlyState {
    int state = 9999;
    std::string message;
};

//! Reads the state; read-only means the user lacks write permission by the file's mode bits.
//! With `clear`, a read-only file gets owner write permission and state 32.
ReadOnlyState GetReadOnlyState(const std::filesystem::path& path, bool clear);

//! The text of the read-only refusal for a path.
std::string ReadOnlyMessage(std::string_view path);

//! Deletes a file silently: a missing file or a failure is not reported.
void DeleteFile(const std::filesystem::path& path);

//! Filter strings "Text|pattern|Text|pattern" of the open dialog (numbers 1 and 6) and of the
//! save dialog (2, 4, 5 and 6); empty for any other number.
std::string OpenDialogFilter(int filterNumber);
std::string SaveDialogFilter(int filterNumber);

//! One entry of a filter string: description and pattern, e.g. {"Zarvion Charts (*.pg)", "*.pg"}.
using DialogFilterEntry = std::pair<std::string, std::string>;

//! Splits a filter string into its entries; a trailing description without pattern is dropped.
std::vector<DialogFilterEntry> SplitDialogFilter(std::string_view filter);

//! The first pattern of the entry at 1-based `filterIndex`, or "*.*" when out of range.
std::string FilterPattern(std::string_view filter, int filterIndex);

//! What the open rule decides before any window is made.
enum class OpenKind {
    Refused, //!< a refused extension: show `refusal`
    Chart,   //!< extension "pg": a chart window loads it
    ByContent //!< line 1 decides between a solver file and plain text
};

struct OpenDecision {
    OpenKind kind = OpenKind::ByContent;
    std::string extension; //!< lower-cased
    Message refusal;       //!< for Refused
    Message readOnlyNotice; //!< non-empty when the file is read-only; the open goes on
};

//! The checks of an open by type, in order: refused extension, then the read-only notice.
OpenDecision DecideOpen(const std::filesystem::path& path);

//! The message when a chart file cannot be loaded.
Message ChartOpenFailedMessage(std::string_view path);

} // namespace zarvion::shell
