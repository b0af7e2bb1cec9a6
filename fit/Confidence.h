#pragma once
// Rigorous confidence limits: a walk from the best fit along the principal axes of the error ellipsoid until
// the sum of squares has grown by the ratio that the F statistic allows. The limits bound the joint region
// of all fitted parameters along its axes.

#include "platform/Arrays.h"

#include <functional>

namespace Quillon {

// 1 + (NumFree / df) * F(NumFree, df, 1 - p), df = NumPts - NumFree, p = ConfidenceLevel, into
// Work.ConfidenceRatio.
void ComputeConfidenceRatio();

// The whole search. Fills ParmLimits and sets LimitsDone; a cancel (AbortFit) or a math error leaves
// LimitsDone at 0. The fit is as before afterwards. progress is told the fraction of end points done.
void ConfidenceSearch(const std::function<void(double fraction)>& progress);

// One root search on the step length along the present Increment: where SumSq reaches target times its value
// at the best fit. Leaves Parms at the end point; 0 when cancelled.
float FindRatioRoot(float guess, float target);

// Eigenvalues and eigenvectors of a symmetric matrix by Jacobi rotations. Column k of vectors belongs to
// values(k). A is used up.
void JacobiEigen(ZeroBasedMatrix<double>& A, ZeroBased<double>& values, ZeroBasedMatrix<double>& vectors);

} // namespace Quillon
