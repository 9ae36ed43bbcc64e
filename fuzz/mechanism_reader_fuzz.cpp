// Input-side reader on arbitrary text: every header scope, then the single-record parsers.
#include <cstddef>
#include <cstdint>
#include <string>

#include "shell/Error.h"
#include "shell/TextFile.h"
#include "solverfile/SolverFileReader.h"

using namespace zarvion;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto lines = shell::SplitLines(text);
    for (auto scope : {solverfile::HeaderScope::Full, solverfile::HeaderScope::ResultsReader}) {
        try {
            const solverfile::Mechanism m = solverfile::ReadMechanismFromLines(lines, "fuzz", scope);
            // The reader promises species numbers within the file.
            for (const auto& r : m.reactions) {
                for (int k = 1; k <= 26; ++k) {
                    if (k >= 10 && k <= 16) {
                        continue;
                    }
                    if (r.ints[k] < 0 || r.ints[k] > m.header.SpeciesCount) {
                        __builtin_trap();
                    }
                }
            }
        } catch (const Error&) {
        }
    }
    if (lines.size() >= 4) {
        try {
            solverfile::ParseThermoRecord(lines[0], lines[1], lines[2], lines[3]);
        } catch (const Error&) {
        }
    }
    std::size_t position = 0;
    try {
        solverfile::ParseReactionRecord(lines, position);
    } catch (const Error&) {
    }
    return 0;
}
