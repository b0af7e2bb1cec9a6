#pragma once
// Starting concentrations read off the data.

namespace Quillon {

// For each set the measured signal at the reference point is shared out among the species of the model,
// given the current association constants; fills ln cA and ln cB of each set and clears FitValid and
// FitDone. With newSituation the user is asked whether the zero offsets are to return to 0. A logarithm
// that does not exist is a RuntimeError.
void InitialGuesses(bool newSituation);

// First index in first..last at which values is at or above target; last + 1 when there is none.
template <class Values> long FindFirstAtLeast(const Values& values, long first, long last, float target) {
    long i = first;
    while (i <= last && values[i] < target)
        ++i;
    return i;
}

} // namespace Quillon
