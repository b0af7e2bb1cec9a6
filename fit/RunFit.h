#pragma once
// The loop of the fit: iterations until a rule says stop, and the outcome with its reason.

#include "fit/FitProgress.h"

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

// One pass: sums, inversion, step.
void OneIteration();

// The inverse of NormMatrix and the increment; Work.Singular tells success (0) or failure (1).
void InvertNormalMatrix();

// The convergence test on the relative change of the sum of squares.
bool FitConverged();

} // namespace Quillon
