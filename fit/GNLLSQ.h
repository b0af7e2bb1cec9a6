#pragma once
// The nonlinear least squares engine: a global Gauss-Newton fit of all points of all sets, which
// are weighted alike, or set by set by their noise (fit/equations/NoiseWeights.h).
//
// An iteration forms the normal equations of the linearised problem (AccumulateSums), inverts the normal
// matrix (InvertNormalMatrix, fit/equations/MatInv.h) and searches along the increment for a step
// (AdjustIncrement): the full step, halvings, a parabola through the trials, a reversal, a random shortening.
// Parameters live in Work.Parms in single precision, so that every step loses digits when it is stored; sums,
// matrices and derivatives are double. Bounds are enforced at each step (fit/equations/Bounds.h), limits by
// the rigorous search come from fit/Confidence.h.
//
// The method: H. O. Hartley, Technometrics 3 (1961) 269 (Gauss-Newton with a step along the increment by
// interpolation); P. R. Bevington, Data Reduction and Error Analysis for the Physical Sciences (1969),
// section 11-5 (normal equations of the linearised function).
//
// The workspace is what is worked on. The engine computes and tells nobody: what it does shows in a record of
// functions (fit/FitProgress.h), how it ended in Work.Outcome. A failure in arithmetic sets Work.AbortFit and
// Work.FunctionFailed beside that, a cancel (Work.AbortFit set by somebody else) ends the pass that runs.

#include "fit/FitProgress.h"
#include "workspace/records/Workspace.h"

#include <optional>

namespace Quillon {

// The whole loop from the present Parms. True when converged: FitDone is then set, NormMatrix holds the
// inverse at the solution (with zeros for what the data do not determine), RmsResidual stands. False after a
// failure or a cancel, with the parameters at their latest trial values; Work.AbortFit is left for the caller
// to clear. Work.Outcome tells which and why; the caller tells the user, and shows the results.
//
// A fit that has converged is checked: where the normal equations still promise a decrease of more than
// LargestExpectedDecrease (fit/equations/NormalEquations.h) its outcome is FitEnd::StoppedShort. It has
// results all the same.
bool RunFit(const FitProgress& progress = {});

inline constexpr double LargestExpectedDecrease = 1.0;

inline constexpr const char* CancelledText = "The fit was cancelled"; // the sentence of FitEnd::Cancelled

// A fit that did not end at a minimum, once more: the damped search from the starting values, then RunFit
// from where it ends, which has the last word. Where that is no minimum either, or one that leaves more than
// the noise of the data, the same again, at most three times: by the other way of the search, from constants
// that show (fit/BetterStarts.h), which come first where the start has one that shows nowhere, and from the
// best concentrations that each set has by itself (fit/SetBySet.h). Behind a minimum that is down to the
// noise only sets that stand a little above it are tried, for models of two species. True when the
// fit has results. Work.Outcome is that of the RunFit whose sum is the lower one, with Rescued set when it
// stands at a minimum; where the function has no value at the start, everything is as it was. A cancel leaves
// Work.AbortFit and the best parameters that were met on the way: those of a fit that had ended, which then
// stands, or a place between, which is none. A search takes a few dozen steps, each about as long as an
// iteration.
bool RescueFit(const PerSlot<float>& start, const FitProgress& progress = {});

// Behind a fit that has converged, by itself or rescued: whether a minimum with a lower sum (by more than a
// thousandth) is found along the roads of RescueFit, where it has not been along them, and from starts with
// other constants and masses (fit/BetterStarts.h). Looked for where the fit, or a set of it, leaves clearly
// more than the noise that the data show by themselves (fit/Misfit.h), and until it is reached; next to
// nothing is spent otherwise. The analysis with the fit there, Rescued set, or nothing; Work stays as it is,
// but for Work.AbortFit after a cancel.
std::optional<Workspace> FindLowerMinimum(const PerSlot<float>& start, const FitProgress& progress = {});

// The damped search by itself, from the present Parms, put back into their bounds. It leaves the best place
// that it has met in Parms and SumSq, never a worse one than the start; a sum that is not finite or a fitted
// value beyond the range of a single is a worse one. Work.Outcome is not touched.
enum class DampedWay {
    Guided, // concentrations first where the guesses are far above the data, and steps that are corrected
    Plain   // Levenberg's method and nothing else
};
enum class DampedEnd {
    Minimum,      // hardly any decrease is promised any more
    NoStep,       // no step helps, however short
    TooManySteps, // 150 were not enough
    NoStart,      // the function has no value at the start
    Cancelled     // Work.AbortFit
};
DampedEnd SearchDamped(DampedWay way);

// The same by Levenberg's method with concentrations and zero offsets alone: what all sets share stays.
DampedEnd SearchConcentrations();

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
