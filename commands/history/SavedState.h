#pragma once
// Whether the analysis stands in a file as it is, and what the main window says about it.

#include "persistence/FitFile.h"

#include <string>

namespace Quillon {

// The analysis at hand is that of Work.FitFile, which it was just saved to or restored from.
void NoteSaved();

// The same where a restore has come to its end; hands the outcome on.
RestoreOutcome NoteRestored(RestoreOutcome outcome);

// Forgets what stands in files: the start of the program.
void ForgetSaved();

// True when there is something to lose: scans in the table, data in the fit or a fit, and not as they stand
// in the file Work.FitFile. Compared by the bytes of the file (BytesToCompare), so that a change that was
// taken back is none.
bool IsUnsaved();

// The same of the step of the history that the command at work began with.
bool StepIsUnsaved();

// The caption of the main window: the program and its version; with a file or something unsaved
// "fit1.quil - Quillon", "fit1.quil* - Quillon", "untitled* - Quillon".
std::string MainCaption();

// The commands behind the menu: save under a name that is asked for; save to the file of the analysis, or as
// before where it has none of its own kind; restore. Each notes what then stands in a file. The savers answer
// whether the analysis was written.
bool SaveFitAs();
bool SaveFitAgain();
void RestoreFitCommand();

} // namespace Quillon
