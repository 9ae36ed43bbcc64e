// Feeds arbitrary bytes to the text conversions: the first part of the input is a pattern,
// the rest a field. Nothing may crash, and a number read back from its own general text must
// be the same number.
#include "shell/DelimitedRead.h"
#include "shell/Error.h"
#include "shell/FileGuards.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zarvion::shell;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t cut = input.find('\n');
    const std::string_view pattern = input.substr(0, std::min<std::size_t>(cut, 40));
    const std::string_view field = cut == std::string_view::npos ? input : input.substr(cut + 1);

    (void)ReadDelimited(input);
    (void)SplitLines(input);
    (void)LeadingValue(field);
    std::string name, extension;
    std::size_t position = 0;
    SplitPath(field, name, extension, position);

    double value = 0.0;
    if (size >= sizeof value) {
        std::memcpy(&value, data, sizeof value);
    }
    (void)Format(value, pattern);
    (void)FormatText(field, pattern);
    const std::string general = ShortestText(value);
    if (std::isfinite(value)) {
        const auto back = ToDouble(general);
        if (!back) {
            std::abort(); // the program's own text of a number must read back
        }
    }
    if (const auto v = ToDouble(field)) {
        try {
            (void)ToInt32(*v);
            (void)ToInt16(*v);
        } catch (const zarvion::Error&) {
        }
    }
    return 0;
}
