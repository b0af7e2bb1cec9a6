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

#include "fit/DampedSearch.h" // where steps along the increment find no minimum
#include "fit/FitProgress.h"  // what is told while the engine works
#include "fit/LineSearch.h"   // the step of an iteration
#include "fit/RescueFit.h"    // behind the fit: a minimum where there was none, or a lower one
#include "fit/RunFit.h"       // the fit
#include "fit/Sums.h"         // its passes over the points
#include "workspace/records/Workspace.h"
