#pragma once
// What follows a fit that ended at no minimum, or at one that may not be the lowest.

#include "fit/FitProgress.h"
#include "workspace/records/Workspace.h"

#include <optional>

namespace Quillon {

// A fit that did not end at a minimum, once more: the damped search from the starting values, then RunFit
// from where it ends, which has the last word. Where that is no minimum either, or one that leaves more than
// the noise of the data, the same again, at most three times: by the other way of the search, from constants
// that show (fit/BetterStarts.h), which come first where the start has one that shows nowhere, and from the
// best concentrations that each set has by itself (fit/SetBySet.h). Behind a minimum that is down to the
// noise only sets that stand a little above it are tried, for models of two species. True when the
// fit has results. Work.Outcome is that of the RunFit whose sum is the lower one, with Rescued set when it
// stands at a minimum; where the function has no value at the start, everything is as it was. A cancel leaves
// Work.AbortFit and the best parameters that were met on the way: those of a fit that had ended, which then
// stands, or a place between, which is none. A search takes a few dozen steps, each about as long as an
// iteration.
bool RescueFit(PerSlot<float> start, const FitProgress& progress = {});

// Behind a fit that has converged, by itself or rescued: whether a minimum with a lower sum (by more than a
// thousandth) is found along the roads of RescueFit, where it has not been along them, and from starts with
// other constants and masses (fit/BetterStarts.h). Looked for where the fit, or a set of it, leaves clearly
// more than the noise that the data show by themselves (fit/Misfit.h), and until it is reached; where there
// is some doubt, by about three plain fits, and by the glance of a search over single sets where there is a
// slight one. Next to nothing is spent on other fits, which are nine of ten when all is well. The analysis
// with the fit there, Rescued set, or nothing; Work stays as it is, but for Work.AbortFit after a cancel.
std::optional<Workspace> FindLowerMinimum(PerSlot<float> start, const FitProgress& progress = {});

} // namespace Quillon
