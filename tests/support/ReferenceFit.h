#pragma once
// The fit of a workspace done once more in long double: where the true minimum is, and where an iteration
// with the program's forward differences comes to rest instead.

#include "tests/support/DenseLeastSquares.h"
#include "tests/support/ReferenceModel.h"

namespace Quillon {

struct ReferenceFit {
    RealVector Parms;    // all slots, tied offsets included
    LeastSquaresEnd End; // by free position
};

// The minimum of the sum of squares over the fitted slots (FreeIndex), from w.Parms. Bounds are not looked
// at.
ReferenceFit FitReference(const Workspace& w);

// The point where forward differences with the stated steps let Gauss-Newton rest, from a start by slot. Its
// sum of squares is that of the true residuals there, and so never below that of FitReference.
ReferenceFit FitWithForwardDifferences(const Workspace& w, const RealVector& start);

// The fitted slots of a vector by slot, in the order of FreeIndex.
RealVector FreeParms(const Workspace& w, const RealVector& parms);

} // namespace Quillon
