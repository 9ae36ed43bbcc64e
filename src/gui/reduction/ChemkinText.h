#pragma once
// "Reactions in CHEMKIN Format": the reaction list of a solver file, as CHEMKIN text, in a new
// text window.

#include <QString>

namespace zarvion::gui {

class RES_ShowFile;

//! `ConvertReactions`: converts the reactions of the solver file on disk and shows the text
//! in a new unsaved text window, which is returned. A refusal of the conversion is shown and
//! nullptr returned; the file itself is never changed.
RES_ShowFile* ConvertReactions(const QString& path);

} // namespace zarvion::gui
