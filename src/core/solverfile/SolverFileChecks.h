#pragma once
// The checks made before a solver file is opened or its results are used. They read a few
// lines, or scan the file, and keep nothing. Messages come back with their exact text, box
// style and title; nothing is shown here. Unexpected faults (a file that ends inside the
// header, a mode line that holds no number) throw zarvion::Error for the caller's reporter.
//
//   TestFileReadable      one line can be read
//   IsSolverFile          magic of line 1, then constant-volume and REV refusals
//   FindRevReactions      title lines of reactions with an explicit reverse rate
//   HasOutputKeyword      "!$Results" as spelled, at the start of a trimmed line
//   CheckResultsPresent   enough result records behind the head
//   SelectSolverFileCheck, ShowSolverResultsCheck, DecideOpenDocument: the decisions of the
//   callers that combine them.

#include <filesystem>
#include <string>

#include "shell/Message.h"

namespace zarvion::solverfile {

//! Opens the file and reads one line; a missing, unreadable or empty file sets failed.
void TestFileReadable(const std::filesystem::path& path, bool& failed);

//! The answer of IsSolverFile.
struct SolverFileCheck {
    bool isSolverFile = false; //!< line 1 carries the magic "!$ZARVION SOLVER"
    bool Accepted = false;     //!< no constant-volume problem and no REV reaction
    shell::Message message;    //!< why a solver file was not accepted (warning, "ZARVION")
};

//! Magic of line 1 (trimmed, first 16 characters, case ignored); then line 15 (first two
//! characters of the trimmed line as an integer: 2 or 3 is a constant-volume problem); then
//! the REV scan.
SolverFileCheck IsSolverFile(const std::filesystem::path& path);

//! The result of FindRevReactions.
struct RevReactions {
    bool found = false;
    int count = 0;        //!< REV lines seen, at most 4
    std::string RevList;  //!< up to three title lines joined by CR LF, then "..." if more
};

//! Walks the lines behind "reactions" with a window of four lines; a line beginning with
//! "rev" (case ignored) names the title line three lines above it.
RevReactions FindRevReactions(const std::filesystem::path& path);

//! True when no line begins (trimmed, case counted) with "!$Results". With report set, the
//! refusal text is put into message.
bool HasOutputKeyword(const std::filesystem::path& path, bool report, shell::Message& message);

//! Result records present: the count of non-empty lines behind the head, divided by
//! LinesPerRecord = SpeciesCount div 50 + 1 and rounded half to even, must be at least 4.
//! On failure sets failed and gives the message; never throws.
void CheckResultsPresent(const std::filesystem::path& path, bool& failed,
                         shell::Message& message);

//! What SelectSolverFile answers for a picked path: the read-only refusal, or the refusal of
//! a file without the magic. A solver file that is not accepted still passes here.
shell::Message SelectSolverFileCheck(const std::filesystem::path& path);

//! The notice when a solver file is already open in a window (information style).
shell::Message AlreadyOpenedMessage(const std::string& path);

//! The two checks ahead of the post-processor: the keyword, then the records. An empty
//! message means the results may be read.
shell::Message ShowSolverResultsCheck(const std::filesystem::path& path);

//! In which kind of window a path opens.
enum class DocumentKind {
    Refused,           //!< refused extension; show `message`
    Chart,             //!< "pg": a chart window loads it
    SolverDocument,    //!< accepted solver file
    SolverFileRefused, //!< solver file that is not accepted; show `message`
    PlainText          //!< anything else, as plain text
};

struct DocumentDecision {
    DocumentKind kind = DocumentKind::PlainText;
    shell::Message message;        //!< for Refused and SolverFileRefused
    shell::Message readOnlyNotice; //!< shown first when the file is read-only; the open goes on
};

//! The open-by-type rule: refused extension, read-only notice, "pg" chart, then the content.
DocumentDecision DecideOpenDocument(const std::filesystem::path& path);

} // namespace zarvion::solverfile
