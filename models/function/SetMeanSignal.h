#pragma once
// What was measured in a set, on average.

#include "workspace/records/Counts.h"

namespace Quillon {

// The mean of PtY over the true points of a set less its zero offset, in the set's own signal units. The
// pseudo-points of constraints are left out; a model whose sets hold a constant in the slot of the offset has
// an offset of 0. A set without points is the run-time error "Division by zero".
double SetMeanSignal(SetNo set);

} // namespace Quillon
