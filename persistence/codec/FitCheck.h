#pragma once
// Checks of an analysis that came from a file. After them no index, count or choice in it leads outside an
// array, so that whatever is done with the analysis later can rely on what a fit of this run would have left.

#include "workspace/records/Workspace.h"

namespace Quillon {

// The counts and limits from which all further sizes of the file follow: positive where they must be, no
// larger than the workspace's arrays, and consistent. RuntimeError "Subscript out of range (MaxSets)" and
// the like otherwise.
void CheckFitSizes(const Workspace& w);

// Everything else, when all fields are read. Flat points, their sets and the fit ranges must match wherever
// the flags say that they are in use; an analysis that was saved between a change of its data and the next
// acceptance of the table may hold leftovers there, which nobody reads.
void CheckFit(const Workspace& w);

} // namespace Quillon
