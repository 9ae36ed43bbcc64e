#include "solverfile/SolverFileChecks.h"

#include <fstream>

#include "shell/Error.h"
#include "shell/FileGuards.h"
#include "shell/TextFormat.h"
#include "solverfile/SolverFileReader.h"

namespace zarvion::solverfile {

using shell::LCase;
using shell::Left;
using shell::Message;
using shell::Trim;
using shell::UCase;

namespace {

constexpr const char* CrLf = "\r\n";

bool nextLine(std::istream& in, std::string& line)
{
    if (!std::getline(in, line)) {
        return false;
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

std::ifstream openOrThrow(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw Error("cannot open " + path.string());
    }
    return in;
}

Message warning(std::string text) { return {std::move(text), shell::StyleWarning, shell::DefaultTitle}; }

//! Trimmed, upper-cased line begins with "ERROR" or "!$END".
bool endsResults(const std::string& line)
{
    const std::string head = UCase(Trim(line));
    return Left(head, 5) == "ERROR" || Left(head, 5) == "!$END";
}

} // namespace

void TestFileReadable(const std::filesystem::path& path, bool& failed)
{
    failed = false;
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) {
        failed = true;
        return;
    }
    std::ifstream in(path, std::ios::binary);
    std::string line;
    if (!in || !std::getline(in, line)) {
        failed = true;
    }
}

SolverFileCheck IsSolverFile(const std::filesystem::path& path)
{
    SolverFileCheck check;
    bool failed = false;
    TestFileReadable(path, failed);
    if (failed) {
        return check;
    }
    int mode = 0;
    {
        std::ifstream in = openOrThrow(path);
        std::string line;
        nextLine(in, line);
        const std::string first = Trim(line);
        if (first.empty() || UCase(Left(first, 16)) != "!$ZARVION SOLVER") {
            return check;
        }
        for (int n = 2; n <= 15; ++n) {
            if (!nextLine(in, line)) {
                throw Error(path.string() + ": the file ends at line " + std::to_string(n - 1) +
                            ", ahead of the temperature mode on line 15");
            }
        }
        const std::string modeText = Left(Trim(line), 2);
        // "1!" still begins with its mode digit.
        auto value = shell::ToDouble(modeText);
        if (!value && !modeText.empty() && modeText[0] >= '0' && modeText[0] <= '9') {
            value = shell::LeadingValue(modeText);
        }
        if (!value) {
            throw Error(path.string() + ":15: the temperature mode \"" + modeText +
                        "\" is not a number");
        }
        mode = shell::ToInt32(*value);
    }
    check.isSolverFile = true;
    if (mode == 2 || mode == 3) {
        check.message = warning(
            std::string("Zarvion-II is intended for simulating constant pressure processes only. "
                        "The solver file you are attempting to open contains input data for a "
                        "constant volume process; the file cannot be opened.") +
            CrLf + CrLf + path.string());
        return check;
    }
    const RevReactions rev = FindRevReactions(path);
    check.Accepted = !rev.found;
    if (rev.found) {
        check.message = warning(
            std::string("The reaction mechanism contains reactions where the reverse rate "
                        "constants are specified explicitly (the REV type).  ") +
            CrLf + rev.RevList + CrLf +
            "Zarvion-II does not support this reaction type; the file cannot be opened." + CrLf +
            CrLf + path.string());
    }
    return check;
}

RevReactions FindRevReactions(const std::filesystem::path& path)
{
    RevReactions result;
    std::ifstream in = openOrThrow(path);
    std::string line;
    bool inBlock = false;
    while (nextLine(in, line)) {
        if (LCase(Left(Trim(line), 9)) == "reactions") {
            inBlock = true;
            break;
        }
    }
    std::string slots[4];
    if (inBlock) {
        bool filled = true;
        for (int k = 0; k < 3 && filled; ++k) {
            filled = nextLine(in, slots[k]);
        }
        while (filled && nextLine(in, slots[3])) {
            const std::string head = LCase(Left(Trim(slots[3]), 3));
            if (head == "end") {
                break;
            }
            if (head == "rev") {
                ++result.count;
                if (result.count >= 4) {
                    break;
                }
                result.RevList += slots[0] + CrLf;
            }
            slots[0] = std::move(slots[1]);
            slots[1] = std::move(slots[2]);
            slots[2] = std::move(slots[3]);
        }
    }
    result.found = result.count > 0;
    if (result.RevList.size() >= 3) {
        result.RevList.resize(result.RevList.size() - 2);
        if (result.count >= 4) {
            result.RevList += "...";
        }
    }
    return result;
}

bool HasOutputKeyword(const std::filesystem::path& path, bool report, Message& message)
{
    message = {};
    std::ifstream in = openOrThrow(path);
    std::string line;
    while (nextLine(in, line)) {
        if (Left(Trim(line), 9) == "!$Results") {
            return false;
        }
    }
    if (report) {
        message = warning("In the file " + path.string() + ", the output data has not been found.");
    }
    return true;
}

void CheckResultsPresent(const std::filesystem::path& path, bool& failed, Message& message)
{
    failed = false;
    message = {};
    const std::string notFound =
        "In the file '" + path.string() + "', results of calculation are not found.";
    try {
        std::ifstream in = openOrThrow(path);
        std::string line;
        for (int n = 1; n <= 10; ++n) {
            if (!nextLine(in, line)) {
                throw Error("the file ends ahead of line 10");
            }
        }
        const auto count = shell::ToDouble(ParseCommentedValue(line));
        if (!count) {
            throw Error("line 10 holds no species count");
        }
        const std::int32_t speciesCount = shell::ToInt32(*count);
        const std::int32_t LinesPerRecord = speciesCount / 50 + 1;
        if (LinesPerRecord < 1) {
            throw Error("a negative species count");
        }
        bool found = false;
        while (nextLine(in, line)) {
            if (UCase(Left(Trim(line), 9)) == "!$RESULTS") {
                found = true;
                break;
            }
        }
        bool fail = !found;
        for (std::int32_t k = 0; k < LinesPerRecord && !fail; ++k) {
            if (!nextLine(in, line) || (!Trim(line).empty() && endsResults(line))) {
                fail = true;
            }
        }
        if (!fail) {
            std::int64_t lines = 0;
            while (nextLine(in, line) && !endsResults(line)) {
                if (!Trim(line).empty()) {
                    ++lines;
                }
            }
            const double records = static_cast<double>(lines) / LinesPerRecord;
            fail = shell::ToInt32(records) < 4;
        }
        if (fail) {
            failed = true;
            message = warning(notFound);
        }
    } catch (const std::exception&) {
        failed = true;
        message = warning("In the file '" + path.string() + "', unexpected error.");
    }
}

Message SelectSolverFileCheck(const std::filesystem::path& path)
{
    if (shell::GetReadOnlyState(path, false).state == 1) {
        return warning("File " + path.string() + " is read-only, remove this attribute.");
    }
    if (!IsSolverFile(path).isSolverFile) {
        return warning("You are attempting to open not solver file " + path.string() + ".");
    }
    return {};
}

Message AlreadyOpenedMessage(const std::string& path)
{
    return {std::string("The solver file is already opened.") + CrLf + CrLf + path,
            shell::StyleInformation, shell::DefaultTitle};
}

Message ShowSolverResultsCheck(const std::filesystem::path& path)
{
    Message message;
    if (HasOutputKeyword(path, true, message)) {
        return message;
    }
    bool failed = false;
    CheckResultsPresent(path, failed, message);
    return failed ? message : Message{};
}

DocumentDecision DecideOpenDocument(const std::filesystem::path& path)
{
    DocumentDecision decision;
    const shell::OpenDecision open = shell::DecideOpen(path);
    decision.readOnlyNotice = open.readOnlyNotice;
    if (open.kind == shell::OpenKind::Refused) {
        decision.kind = DocumentKind::Refused;
        decision.message = open.refusal;
        return decision;
    }
    if (open.kind == shell::OpenKind::Chart) {
        decision.kind = DocumentKind::Chart;
        return decision;
    }
    const SolverFileCheck check = IsSolverFile(path);
    if (!check.isSolverFile) {
        decision.kind = DocumentKind::PlainText;
    } else if (check.Accepted) {
        decision.kind = DocumentKind::SolverDocument;
    } else {
        decision.kind = DocumentKind::SolverFileRefused;
        decision.message = check.message;
    }
    return decision;
}

} // namespace zarvion::solverfile
