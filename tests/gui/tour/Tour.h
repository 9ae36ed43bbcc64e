#pragma once
// The window tour: each part opens the windows of one subsystem on a real display and saves a
// picture of the screen for review, named after the window it shows.

#include <QString>
#include <QStringList>

namespace zarvion::gui {
class MDIForm1;
}

namespace zarvion::gui::tour {

//! What every part of the tour shares.
struct TourContext {
    MDIForm1* frame = nullptr;
    QString outDir;       //!< where the pictures go
    QString solverFile;   //!< the solver file named on the command line
    QString givenFile;    //!< that file itself, which the tour never changes
    QStringList messages; //!< every message box shown, answered without a user
};

//! Waits for the screen to settle and saves it as OUTDIR/name.png.
void shoot(const TourContext& context, const QString& name);

//! The frame, the splash, the solver document, the start window, the console, find and help.
void tourShell(TourContext& context);

//! The reduction before and after Prepare and after a run, the comparison with its grid and
//! its curves on the temporary chart, the CHEMKIN text, text printing and the about box.
void tourReductionComparison(TourContext& context);

} // namespace zarvion::gui::tour
