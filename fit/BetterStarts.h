#pragma once
// Starts for a search that has not come to the minimum from where the user began.

#include "workspace/records/Counts.h"

namespace Quillon {

// The parameters of a start for models of two species that associate: A and B free in equal molar amounts,
// half of the measured signal in A, and each fitted ln K where a change by 1 moves the signal by about half
// of its root mean square. A constant that is ten or more off has no species that shows, so that no slope
// leads to where it belongs; this one starts where it could be seen if it were there. Held parameters stay,
// and so does everything in other models or where the function has no value.
PerSlot<float> VisibleStart(const PerSlot<float>& start);

// True when visible, a VisibleStart of start, has a constant that much above that of start that its species
// are hidden in the noise there: the search from start has no slope to follow.
bool HidesAConstant(const PerSlot<float>& start, const PerSlot<float>& visible);

// start with its shape moved: fitted constants by 4 up or down, alike or one against the other, or masses by
// a quarter down or a third up, and the best concentrations of each set that go with it (fit/SetBySet.h).
// Constants that each set has for itself move together; cooperativity, held and tied parameters stay. number
// from 1 to MovedStarts. start itself where the model has nothing that this number moves, or nothing can be
// read off the data.
inline constexpr int MovedStarts = 6;
inline constexpr int StrongerConstants = 1; // all up
PerSlot<float> MovedStart(const PerSlot<float>& start, int number);

// All leave Work as it was, but for Work.AbortFit after a cancel.

} // namespace Quillon
