// The CHEMKIN text conversion of a solver file's reaction list, on arbitrary file content.
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>

#include "ScratchFile.h"
#include "reduction/ChemkinConversion.h"
#include "shell/Error.h"

using namespace zarvion;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const fuzz::ScratchFile file("chemkin-text");
    file.write({reinterpret_cast<const char*>(data), size});
    std::tm stamp{};
    stamp.tm_year = 126;
    stamp.tm_mday = 1;
    try {
        const auto result = reduction::ConvertReactions(file.path(), stamp);
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
