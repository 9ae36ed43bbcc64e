// Fuzz target of the CHEMKIN importer. The input is a mechanism, optionally followed by a NUL
// byte and a separate thermo file. Whatever the importer accepts must be writable as a solver
// file that the solver-file reader reads back with the same counts.

#include "solverfile/ChemkinImport.h"
#include "solverfile/ChemkinWriter.h"
#include "solverfile/SolverFileReader.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zarvion::solverfile;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    std::optional<std::string_view> thermo;
    std::size_t nul = input.find('\0');
    if (nul != std::string_view::npos) {
        thermo = input.substr(nul + 1);
        input = input.substr(0, nul);
    }
    for (bool skip : {false, true}) {
        ChemkinOptions options;
        options.skipUnsupported = skip;
        ChemkinImport result = ImportChemkin(input, thermo, options);
        for (const auto& m : result.messages) {
            (void)FormatImportMessage(m);
        }
        if (!result.succeeded()) {
            continue;
        }
        auto lines = BuildSolverFileLines(result, ProblemSettings{}, SolverFileSource{"f", ""});
        Mechanism back = ReadMechanismFromLines(lines, "fuzz");
        if (back.speciesNames.size() != result.species.size() ||
            back.reactions.size() != result.reactions.size()) {
            std::abort();
        }
    }
    return 0;
}
