// The opening checks and the start window's line reader, which read files: the input goes to
// a temporary file first.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "shell/Error.h"
#include "solverfile/SolverFileChecks.h"
#include "solverfile/SolverFileLines.h"

using namespace zarvion;
using namespace zarvion::solverfile;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::filesystem::path path =
        std::filesystem::temp_directory_path() /
        ("zarvion-fuzz-checks-" + std::to_string(::getpid()) + ".txt");
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    try {
        const SolverFileCheck check = IsSolverFile(path);
        if (check.Accepted && !check.isSolverFile) {
            __builtin_trap();
        }
    } catch (const Error&) {
    }
    try {
        FindRevReactions(path);
        shell::Message message;
        HasOutputKeyword(path, true, message);
        bool failed = false;
        CheckResultsPresent(path, failed, message);
        if (failed == message.empty()) {
            __builtin_trap();
        }
        FindSolverResults(path, ResultsKeywordRule::ExactCase);
        FindSolverResults(path, ResultsKeywordRule::TextSearch);
    } catch (const Error&) {
    }
    try {
        const SolverFileLines lines = OpnFile(path);
        if (lines.Lines.size() < 28) {
            __builtin_trap();
        }
    } catch (const Error&) {
    }
    return 0;
}
