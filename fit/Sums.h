#pragma once
// The passes over all points of all sets.

namespace Quillon {

// The normal equations and the sum of squares at the current Parms. Leaves bit for bit what the plain loop
// over all points and all pairs of parameters gives.
void AccumulateSums();

// The same by the plain loop: FitFunction and CalcDerivs at every point, all pairs. The yardstick of tests.
void AccumulateSumsPlainly();

// SumSq and PtFit at the current Parms, without derivatives.
void CalcSumSq();

} // namespace Quillon
