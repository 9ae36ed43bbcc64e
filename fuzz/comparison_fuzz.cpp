// The comparison loader on arbitrary file content: the whole route with its checks, and the
// steps one by one, as the loader's interface allows them to be called.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ScratchFile.h"
#include "comparison/ComparisonData.h"
#include "shell/Error.h"

using namespace zarvion;
using namespace zarvion::comparison;

namespace {

void checkProfiles(const ComparisonFile& f)
{
    if (f.ProfileTable.size() != static_cast<std::size_t>(f.RecordCount)) {
        __builtin_trap();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // File 2 is the input cut at its first NUL, when there is one, so that the merge sees
    // two different species lists.
    const char* text = reinterpret_cast<const char*>(data);
    std::size_t cut = 0;
    while (cut < size && text[cut] != '\0') {
        ++cut;
    }
    static const fuzz::ScratchFile file1("comparison-1");
    static const fuzz::ScratchFile file2("comparison-2");
    const auto& path1 = file1.write({text, size});
    const auto& path2 = file2.write({text, cut});

    try {
        ComparisonSet set;
        const auto m = PrepGrid(path1, path2, set);
        if (m.empty()) {
            checkProfiles(set.file1);
            checkProfiles(set.file2);
            if (set.MergedTable.empty()) {
                __builtin_trap(); // row 0 is always the temperature
            }
        }
    } catch (const Error&) {
    }

    try {
        ComparisonFile f1;
        ComparisonFile f2;
        if (OpenFile(path1, 1, f1).empty() && OpenFile(path2, 2, f2).empty()) {
            ReadSpecies(f1);
            ReadSpecies(f2);
            (void)MergeSpecies(f1, f2);
            ConvertToMoleFractions(f1);
            checkProfiles(f1);
        }
    } catch (const Error&) {
    }
    (void)ExtractVal(std::string(text, size), "!");
    return 0;
}
