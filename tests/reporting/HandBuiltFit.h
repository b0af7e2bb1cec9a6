#pragma once
// A finished fit of two data sets set down number by number, for tests of what is reported about it.

#include "workspace/records/Workspace.h"

namespace Quillon {

// Monomer - dimer in kDa and absorbance units. Fitted: molar mass (slot 0, factor 30), ln K (slot 2,
// addend 2), ln c of set 1 (slot 8), zero offset of set 1 (slot 10, its picture without a leading zero).
// Held: N = 2, ln c of set 2. The errors in internal scale are 0.125, 0.25, 0.5, 0.0625.
Workspace HandBuiltFit();

// The same with constraints: set 1 on both species in mean signal, set 2 tied to the zero offset of set 1.
// The pseudo-points take a hundredth (A) and a quarter (B) of the sum of squares.
Workspace HandBuiltFitWithConstraints();

} // namespace Quillon
