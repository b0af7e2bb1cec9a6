#pragma once
// Starting concentrations read off the data.

#include "workspace/records/Workspace.h"

namespace Quillon {

// For each set the measured signal at the reference point is shared out among the species of the model,
// given the current association constants; fills ln cA and ln cB of each set and clears FitValid and
// FitDone. With newSituation the user is asked whether the zero offsets are to return to 0. A logarithm
// that does not exist is a RuntimeError.
void InitialGuesses(bool newSituation);

// Work.Parms as InitialGuesses leaves them for the model at hand, or for the one whose guess it takes where
// it has none of its own. Parameters and model stay as they are, the fit is forgotten. RuntimeError as there.
PerSlot<float> GuessedParms();

// Fitted concentrations of guessed become those of Work; nothing else does.
void TakeFittedSignals(const PerSlot<float>& guessed);

// First index in first..last at which values is at or above target; last + 1 when there is none.
template <class Values> long FindFirstAtLeast(const Values& values, long first, long last, float target) {
    long i = first;
    while (i <= last && values[i] < target)
        ++i;
    return i;
}

} // namespace Quillon
