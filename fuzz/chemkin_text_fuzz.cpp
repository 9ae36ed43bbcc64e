// The CHEMKIN text conversion of a solver file's reaction list, on arbitrary file content.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "reduction/ChemkinConversion.h"
#include "shell/Error.h"

using namespace zarvion;

namespace {

const std::filesystem::path& scratchFile()
{
    static const std::filesystem::path path = std::filesystem::temp_directory_path() /
        ("zarvion-chemkin-text-fuzz-" + std::to_string(::getpid()) + ".txt");
    return path;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    {
        std::ofstream out(scratchFile(), std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    std::tm stamp{};
    stamp.tm_year = 126;
    stamp.tm_mday = 1;
    try {
        const auto result = reduction::ConvertReactions(scratchFile(), stamp);
        // A refusal carries no text; a conversion never claims more reactions than lines.
        if (!result.ok() && !result.lines.empty()) {
            __builtin_trap();
        }
        if (result.ok() && static_cast<std::size_t>(result.convertedCount) > result.lines.size()) {
            __builtin_trap();
        }
        (void)result.text();
    } catch (const Error&) {
    }
    const std::string line(reinterpret_cast<const char*>(data), size);
    for (int count = 0; count <= 4; ++count) {
        (void)reduction::SeparateRateFields(line, count);
    }
    return 0;
}
