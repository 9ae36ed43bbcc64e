// Both results readers on arbitrary text held in memory.
#include <cstddef>
#include <cstdint>
#include <string>

#include "postprocessor/ResultsReader.h"
#include "shell/Error.h"

using namespace zarvion;
using namespace zarvion::postprocessor;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (ReaderForm form : {ReaderForm::MenuForm, ReaderForm::SOL_RESX}) {
        ReadOutcome outcome;
        try {
            const ResultSet set = ReadResultsText(text, "fuzz.txt", form, PhysicalConstants{}, outcome);
            if (!outcome.failed &&
                (set.rowCount < 4 || set.rows.size() != static_cast<std::size_t>(set.rowCount) ||
                 set.density.size() != set.rows.size() ||
                 set.columnNames.size() != static_cast<std::size_t>(set.columnCount))) {
                __builtin_trap();
            }
        } catch (const Error&) {
        }
    }
    return 0;
}
