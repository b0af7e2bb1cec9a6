#pragma once
// The fit command: from a chosen model and chosen data to a finished fit.
//
// The parameter vector is repaired for the model and its options, what has to be asked is asked, the form
// "GetGuess" says what is fitted, and the iteration runs. Everything that a new fit resets is reset here.

#include "fit/FitProgress.h"
#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

// Asked once behind a fit that did not end at a minimum, unless Work.RescueMode has the answer, with a check
// box that makes the answer Yes the last one.
inline constexpr const char* RescueQuestion = "Search for the minimum with damped steps?";
inline constexpr const char* AlwaysCaption = "&Always";

// Asked behind a fit that converged at a minimum where a lower one is known (FindLowerMinimum), with the same
// check box; and what the results and the report say when the fit is kept as it is.
std::string LowerMinimumQuestion(double sum, double lowerSum);
std::string LowerMinimumText(double lowerSum);

// The whole command. How a fit failed is told here, once, and so is any other run-time error, which leaves no
// fit behind; with damped steps wanted without a question, only what is left of the failure behind them is.
// Work.AbortFit is left for the caller to clear when the fit itself was cancelled. The fit's progress shows
// in the monitor, or where the caller says.
void FitDataCommand(const FitProgress* progress = nullptr);

// Sets changed when the value of a slot differs from that before the guesses dialog (Work.ParmsSave) by more
// than a tenth: of the value, or by 0.1 where it was 0. The divisor keeps its sign. Never clears changed.
void ParmChanged(SlotNo slot, bool& changed);

// Makes the model the general one of its kind where stoichiometries other than those of its name stand, for
// good; the title of the fit follows.
void RefineModel();

// Fills the results form from the fit that stands and shows it.
void ShowResults();

} // namespace Quillon
