#pragma once
// Parameter bounds: the hard limits of a step.

#include "workspace/records/Counts.h"

namespace Quillon {

// Puts each fitted parameter that stands outside its bounds back onto the bound, and tells so in BoundHit
// and AtBound. Held parameters are not looked at.
void EnforceBounds();

// True when a parameter stands at a bound (0 lower, 1 upper) or beyond it. A bound in internal terms loses
// digits, so that a parameter put onto it may differ from it in the last place.
bool StandsAtBound(SlotNo slot, int side);

// AtBound and BoundHit by where the fitted parameters stand, for a place that no step has just led to: those
// at a bound, the upper one where both are the same.
void MarkBounds();

} // namespace Quillon
