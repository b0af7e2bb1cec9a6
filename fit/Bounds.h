#pragma once
// Parameter bounds: the hard limits of a step.

namespace Quillon {

// Puts each fitted parameter that stands outside its bounds back onto the bound, and tells so in BoundHit
// and AtBound. Held parameters are not looked at.
void EnforceBounds();

} // namespace Quillon
