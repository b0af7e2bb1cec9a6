#pragma once
// Holds a fitted function and its derivatives against the reference model, all points of a workspace.

#include "tests/support/ReferenceModel.h"

#include <functional>
#include <string>

namespace Quillon {

// The largest deviation found, in units of what may be: below 1 all is well.
struct WorstDeviation {
    double Excess = 0;
    std::string Where; // point, slot and both numbers
};

// The value at every point. accuracy is relative to the signal and the offset of the point.
WorstDeviation CheckValues(const Workspace& w, const std::function<double(long point)>& function,
                           double accuracy);

// The derivatives at every point, against the forward differences that the stated steps give from exact
// values. accuracy is that of one value; it enters divided by the step. derivs gives the derivatives of a
// point by free position.
WorstDeviation CheckDerivs(const Workspace& w, const std::function<const double*(long point)>& derivs,
                           double accuracy);

// What a value may be off by: accuracy of the sizes that were added up for it.
Real SizeOfPoint(const Workspace& w, const RealVector& parms, long point, Real value);

} // namespace Quillon
