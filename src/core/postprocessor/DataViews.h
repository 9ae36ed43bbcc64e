#pragma once
// Numeric data views: the selected species, or the whole mean-parameter table, over the used
// rows, as the text that goes into a data view window.

#include <ctime>
#include <string>
#include <vector>

#include "postprocessor/PostprocessorState.h"
#include "shell/Message.h"

namespace zarvion::postprocessor {

//! At most this many species go into one species data view.
inline constexpr std::size_t MaxDataViewSpecies = 10;

//! A data view's text and the caption of its window.
struct DataView {
    std::string title;      //!< "Species" or "Mean Parameters"
    std::string text;
    shell::Message message; //!< a refusal; text is then empty
    bool ok() const { return message.empty(); }
};

//! Header values of a data view.
struct DataViewContext {
    std::string fileName;
    std::tm now{};
    std::string lineEnd = "\r\n";
};

//! `AllData`: a value through "0.000E+00", or "0" when it is exactly 0, in a field of the
//! given width (right-aligned). A value that is not there gives a blank field.
std::string AllData(double value, std::size_t width);

//! The selection check of the species view ("View" of "Data Only"): none selected, or more
//! than ten.
shell::Message CheckSpeciesSelection(std::size_t selectedCount);

//! `SpeciesData`: the species of `species` (1-based, in selection order) in the quantity
//! `kind` (see MoleFract) whose combo text is `quantityText`; names in 12 or 16 symbols.
DataView SpeciesData(const PostprocessorState& state, const std::vector<int>& species, int kind,
                     const std::string& quantityText, int nameSymbols, const DataViewContext& ctx);

//! `MEANVALFTAB`: the six mean parameters of every used row as text.
DataView MEANVALFTAB(const PostprocessorState& state, const DataViewContext& ctx);

} // namespace zarvion::postprocessor
