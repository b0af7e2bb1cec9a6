#pragma once
// What the makers of starts have in common (fit/BetterStarts.h, fit/SetBySet.h).

#include "models/function/BlockFunction.h"
#include "models/function/FitFunction.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

// Fills ln c of all sets of Work with half of the measured signal in A, and so many free molecules of B for
// each one of A. A RuntimeError for data without a logarithm.
void GuessAmounts(double proportion);

// Puts what is not fitted back to start, and the rest into its bounds and ties.
void KeepHeld(const PerSlot<float>& start);

// Runs find on Work with a start, and puts everything back, but for Work.AbortFit after a cancel; what find
// gives, or the start where it fails.
template <class Find> PerSlot<float> Aside(const PerSlot<float>& start, Find&& find) {
    const Workspace kept = Work;
    Work.Parms = start;
    ForgetStop();
    PerSlot<float> found = start;
    try {
        Work.AtBound.Recreate(Work.NumFree);
        ResetFitFunction();
        found = find();
    } catch (const RuntimeError&) {
        // Data without a logarithm, or constants beyond the range of a single: the start as it was.
    }
    const bool cancelled = IsCancelled();
    Work = kept;
    if (cancelled) {
        ForgetStop(); // a failure from before has been overtaken
        AskToStop();
    }
    return found;
}

} // namespace Quillon
