#pragma once
// What speaks against a fitting range: it takes more of the scan than the solution.

#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

// The first point p of first..last - 1 behind which the values jump: the step to the next point, or up to
// three steps in one direction, are each more than ten times the median of all steps that are not 0, and
// stand out from the step on either side by as much and by more than that step, as no gradient does however
// steep it ends. 0 without one.
long FirstJump(const OneBased<float>& values, long first, long last);

// The doubts about a row's range in words, "" where there are none: it holds jumps, or no range was chosen,
// by channel or by hand, so that the whole scan is fitted. chosen tells of a range that someone has named
// though it is the whole scan.
std::string RangeDoubts(RowNo row, bool chosen = false);

} // namespace Quillon
