#pragma once
// How the scans of a group come to the last one of it (runs/Approach.h), against time.

#include "runs/SortedRun.h"

#include <cstddef>

namespace Quillon {

// Builds the graph of a group (subscript of run.Groups) without showing its window: the rms of each scan's
// difference from the last one, in signal units, against the time since the first one of the group in hours,
// and as a line the value up to which a scan agrees. False when the chart refused it. A group that was not
// judged, or of which a single scan is known, is a RuntimeError that says so.
bool MakeApproachGraph(const SortedRun& run, std::size_t group);

} // namespace Quillon
