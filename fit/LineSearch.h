#pragma once
// The search for a step along the increment (H. O. Hartley, Technometrics 3 (1961) 269).

namespace Quillon {

// Chooses Alpha and leaves Parms at the new point.
void AdjustIncrement();

// Parms from ParmsSave, Increment and Alpha; bounds and offset links are then applied.
void ApplyIncrement();

} // namespace Quillon
