// zarvion-cli check: the opening checks of a solver file.
//   zarvion-cli check FILE
// Output, one "key<TAB>value" line each, in this order:
//   solver file      yes|no       line 1 carries the solver-file magic
//   accepted         yes|no       no constant-volume problem, no REV reaction
//   refusal          text|-       why a solver file is not accepted
//   results keyword  yes|no       a line begins with "!$Results", spelled so
//   results present  yes|no       enough result records behind the head
//   results message  text|-       why the results cannot be used
// Messages are printed with their line breaks written as the two characters "\n".
// Exit code 0 for an accepted solver file whose results are usable, 1 otherwise, 2 on error.

#include "CliCommand.h"

#include "shell/Error.h"
#include "solverfile/SolverFileChecks.h"

#include <filesystem>
#include <iostream>
#include <memory>

namespace zarvion::cli {
namespace {

std::string oneLine(const std::string& text)
{
    if (text.empty()) {
        return "-";
    }
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            out += "\\n";
            ++i;
        } else if (text[i] == '\n' || text[i] == '\r') {
            out += "\\n";
        } else {
            out += text[i];
        }
    }
    return out;
}

const char* yesNo(bool b) { return b ? "yes" : "no"; }

int runCheck(const std::string& file)
{
    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec)) {
        throw CommandFailure{"cannot read " + file};
    }
    using namespace zarvion::solverfile;
    const SolverFileCheck check = IsSolverFile(file);
    shell::Message keywordMessage;
    const bool keywordAbsent = HasOutputKeyword(file, true, keywordMessage);
    bool failed = false;
    shell::Message resultsMessage;
    CheckResultsPresent(file, failed, resultsMessage);
    std::cout << "solver file\t" << yesNo(check.isSolverFile) << "\n"
              << "accepted\t" << yesNo(check.Accepted) << "\n"
              << "refusal\t" << oneLine(check.message.text) << "\n"
              << "results keyword\t" << yesNo(!keywordAbsent) << "\n"
              << "results present\t" << yesNo(!failed) << "\n"
              << "results message\t"
              << oneLine(keywordAbsent ? keywordMessage.text : resultsMessage.text) << "\n";
    return check.Accepted && !keywordAbsent && !failed ? 0 : 1;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto file = std::make_shared<std::string>();
    CLI::App* cmd = app.add_subcommand(
        "check",
        "Run the opening checks on a solver file. Prints key<TAB>value lines: 'solver file', "
        "'accepted', 'refusal', 'results keyword', 'results present', 'results message' "
        "(yes/no, or the message with line breaks as \\n, '-' for none). Exit 0 when the "
        "file is accepted and its results usable, 1 otherwise");
    cmd->add_option("file", *file, "solver file")->required();
    cmd->callback([file, &exitCode] {
        try {
            exitCode = runCheck(*file);
        } catch (const zarvion::Error& e) {
            throw CommandFailure{e.what()};
        }
    });
});

} // namespace
} // namespace zarvion::cli
