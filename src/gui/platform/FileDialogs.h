#pragma once
// The program's open and save dialogs over QFileDialog, with filters given as
// "Text|pattern|Text|pattern" and a hook through which tests pick a path.

#include <QString>
#include <QStringList>
#include <functional>

namespace zarvion::gui {

//! Translates "All Files (*.*)|*.*|Windows Text (*.txt)|*.txt" into Qt's filter list
//! ("All Files (*)", "Windows Text (*.txt)"); "*.*" matches every file, also one without a dot.
QStringList TranslateFilter(const QString& filter);

//! Replaces the dialogs: gets (save?, filter) and returns the path, or empty for a cancel.
using FileDialogHandler = std::function<QString(bool save, const QString& filter)>;
void SetFileDialogHandler(FileDialogHandler handler);

//! Shows the open dialog with the filter text; empty when cancelled. initialFolder is used
//! for this call only.
QString ShowOpenDialog(bool& cancelled, const QString& filter,
                       const QString& initialFolder = QString());

//! Shows the save dialog with the filter text; empty when cancelled.
QString ShowSaveDialog(bool& cancelled, const QString& filter,
                       const QString& initialFolder = QString());

} // namespace zarvion::gui
