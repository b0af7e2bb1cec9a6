#pragma once
// The passes over all points of all sets: fitted values, residuals, and the sums over them.

namespace Quillon {

// The normal equations and the sum of squares at the current Parms. Leaves bit for bit what the plain loop
// over all points and all pairs of parameters gives.
void AccumulateSums();

// The same by the plain loop: FitFunction and CalcDerivs at every point, all pairs. The yardstick of tests.
void AccumulateSumsPlainly();

// SumSq and PtFit at the current Parms, without derivatives.
void CalcSumSq();

// Fills PtResid(1..NumPts) with PtY - PtFit, in single precision as both are.
void CalcResiduals();

} // namespace Quillon
