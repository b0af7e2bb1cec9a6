#pragma once
// The nonlinear least squares engine: a global, unweighted Gauss-Newton fit of all points of all sets.
//
// An iteration forms the normal equations of the linearised problem (AccumulateSums), inverts the normal
// matrix (InvertNormalMatrix, fit/MatInv.h) and searches along the increment for a step (AdjustIncrement):
// the full step, halvings, a parabola through the trials, a reversal, a random shortening. Parameters live
// in Work.Parms in single precision, so that every step loses digits when it is stored; sums, matrices and
// derivatives are double. Bounds are enforced at each step (fit/Bounds.h), limits by the rigorous search come
// from fit/Confidence.h.
//
// The method: H. O. Hartley, Technometrics 3 (1961) 269 (Gauss-Newton with a step along the increment by
// interpolation); P. R. Bevington, Data Reduction and Error Analysis for the Physical Sciences (1969),
// section 11-5 (normal equations of the linearised function).
//
// The workspace is what is worked on. The engine computes and tells nobody: what it does shows in a record of
// functions (fit/FitProgress.h), how it ended in Work.Outcome. A failure in arithmetic sets Work.AbortFit and
// Work.FunctionFailed beside that, a cancel (Work.AbortFit set by somebody else) ends the pass that runs.

#include "fit/FitProgress.h"

namespace Quillon {

// The whole loop from the present Parms. True when converged: FitDone is then set, NormMatrix holds the
// inverse at the solution, RmsResidual stands. False after a failure or a cancel, with the parameters at
// their latest trial values; Work.AbortFit is left for the caller to clear. Work.Outcome tells which and
// why; the caller tells the user, and shows the results.
bool RunFit(const FitProgress& progress = {});

// One pass: sums, inversion, step.
void OneIteration();

// The normal equations and the sum of squares at the current Parms. Leaves bit for bit what the plain loop
// over all points and all pairs of parameters gives.
void AccumulateSums();

// The same by the plain loop: FitFunction and CalcDerivs at every point, all pairs. The yardstick of tests.
void AccumulateSumsPlainly();

// The inverse of NormMatrix and the increment; Work.Singular tells success (0) or failure (1).
void InvertNormalMatrix();

// Chooses Alpha and leaves Parms at the new point.
void AdjustIncrement();

// Parms from ParmsSave, Increment and Alpha; bounds and offset links are then applied.
void ApplyIncrement();

// SumSq and PtFit at the current Parms, without derivatives.
void CalcSumSq();

// The convergence test on the relative change of the sum of squares.
bool FitConverged();

} // namespace Quillon
