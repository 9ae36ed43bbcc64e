// The set-up of a reduction on arbitrary file content: Prepare reads the input (up to its first
// NUL) as the source solver file, Enter reads the rest (or the whole input) as the saved
// settings, and the start sequence builds its request from what they left in the form.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "ScratchFile.h"
#include "postprocessor/ResultSet.h"
#include "reduction/ReductionSetup.h"
#include "shell/Error.h"

using namespace zarvion;
using namespace zarvion::reduction;

namespace {

//! A form as Prepare leaves it for a small hydrogen set, for settings read without a source.
ReductionSetup HydrogenForm()
{
    ReductionSetup setup;
    for (const char* name : {"H2", "O2", "H", "O", "OH", "HO2", "H2O2", "H2O", "AR"}) {
        setup.SpeciesTable.push_back({name, name[0] == 'H' && name[1] == '2', ""});
    }
    setup.TemperatureMode = 1;
    setup.RowCount = 10;
    return setup;
}

void Start(ReductionSetup& setup, const std::filesystem::path& reduced)
{
    setup.reducedPathText = reduced.string();
    ReductionRequest request;
    if (BuildRequest(setup, request).empty()) {
        // A request that passed the checks holds one parameter in [0, 1] per target.
        if (request.targetSpecies.size() != request.speciesParameters.size() ||
            request.interval <= 0 || request.nonTargetParameter < 0 ||
            request.nonTargetParameter > 1) {
            __builtin_trap();
        }
        for (const int s : request.targetSpecies) {
            if (s < 1 || static_cast<std::size_t>(s) > setup.SpeciesTable.size()) {
                __builtin_trap();
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t nul = input.find('\0');
    const std::string_view source = input.substr(0, nul);
    const std::string_view settings = nul == std::string_view::npos ? input : input.substr(nul + 1);
    static const fuzz::ScratchFile sourceFile("reduction-source");
    static const fuzz::ScratchFile settingsFile("reduction-settings");
    static const fuzz::ScratchFile reducedFile("reduction-reduced");
    const auto& sourcePath = sourceFile.write(source);
    const auto& settingsPath = settingsFile.write(settings);
    const auto& reducedPath = reducedFile.path();

    ReductionSetup prepared;
    prepared.SourcePath = sourcePath.string();
    prepared.reducedPathText = reducedPath.string();
    postprocessor::ResultSet results;
    try {
        if (Prepare(prepared, results).refusal.empty()) {
            if (prepared.SpeciesTable.size() != static_cast<std::size_t>(results.SpeciesCount)) {
                __builtin_trap();
            }
            Start(prepared, reducedPath);
        }
    } catch (const Error&) {
    }

    ReductionSetup entered = HydrogenForm();
    try {
        if (EnterSettings(settingsPath, entered).empty()) {
            Start(entered, reducedPath);
        }
    } catch (const Error&) {
    }
    return 0;
}
