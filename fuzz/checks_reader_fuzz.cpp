// The opening checks and the start window's readers (its line reader, the species records,
// the last step of earlier results, the saved settings, the verdict on a solver run), which
// read files: the input goes to a temporary file first.
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "ScratchFile.h"
#include "shell/Error.h"
#include "shell/TextFile.h"
#include "solverfile/SolverFileChecks.h"
#include "solverfile/SolverFileLines.h"
#include "solverfile/StartWindowLogic.h"

using namespace zarvion;
using namespace zarvion::solverfile;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const fuzz::ScratchFile file("checks");
    const auto& path = file.write({reinterpret_cast<const char*>(data), size});
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
        // As the start window fills its table: the records behind THERMO, then the last step.
        const auto species =
            ReadStartWindowSpecies(lines.Lines, lines.thermoLine + 1, lines.SpeciesCount);
        (void)PolinomCheckText(species);
        std::vector<double> weights;
        for (const auto& s : species) {
            weights.push_back(s.weight);
        }
        if (const auto last = LastVal(path, weights, 1e-20)) {
            if (last->values.size() != weights.size() + 1) {
                __builtin_trap(); // the temperature, then one value per species
            }
        }
    } catch (const Error&) {
    }
    try {
        (void)EvaluateSolverRun(path);
        (void)ReadSolverFilePath(path);
        (void)ParseSolverData(shell::ReadLines(path));
    } catch (const Error&) {
    }
    return 0;
}
