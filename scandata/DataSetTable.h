#pragma once
// The rules of the data set table that need no window: channels, radii, ranges.

#include "platform/Arrays.h"

namespace Quillon {

// Linear search in values(first..last). Reverse runs from last to first. Mode 1 stops at an element at or
// above target, -1 at or below it, 0 at an equal one. result is the subscript; a miss gives -1 in the modes
// 1 and -1, and 0 in mode 0.
void SearchArray(const OneBased<float>& values, long first, long last, float target, long& result,
                 bool reverse, int mode);

// The radii of a channel (1..4) of a row with a multi-sample centerpiece, at the row's rotor speed; cm.
void ChannelRadiiOf(long row, int channel, float& inner, float& outer);

// Narrows the fit range of a row to the points between two radii, which come back as those of the points
// chosen. With channel above 0 the range starts one point inside the inner radius; with channel 0 FitRange
// is left and only the radii are read.
void SetChannelRange(long row, float& inner, float& outer, int channel);

// Gives a row a channel (0 for none, which takes the whole scan) and the range that goes with it.
void SetChannel(long row, int channel);

// Chooses the points from the first at or above inner to the last at or below outer. False, and nothing
// changed, when no point lies between them.
bool SetRadialRange(long row, float inner, float outer);

} // namespace Quillon
