#pragma once
// Readings that a scan would be better without: those that stand out from their neighbours, and the signal
// above which the light no longer suffices. Both are proposals; nothing is left out here.

#include "workspace/records/Counts.h"

#include <vector>

namespace Quillon {

// The points of first..last that lie more than 6 robust deviations from a local line, rising. The gradient
// goes first, as a polynomial of degree 8 over the stretch that leaves the least sum of absolute values. What
// is left of a point is held against a line through its eight nearest neighbours by the median of their
// slopes (Sen, J. Am. Stat. Assoc. 63 (1968) 1379), which a spike or two among them do not move, and divided
// by what that distance has more noise than a reading, as at the ends, where neighbours stand on one side.
// The deviation is 1.4826 times the median distance, of all points or of the twenty around it, whichever is
// more, since noise grows with the signal. At least a ten thousandth of the span of the values counts as
// noise. None with fewer than 30 points.
std::vector<long> FindSpikes(const OneBased<float>& radii, const OneBased<float>& values, long first,
                             long last);

// The signal above which the noise grows, in the points first..last; 0 where it does not. Noise comes from
// third differences of readings next to each other, which no gradient disturbs; of twelve differences by
// rising signal the median has to be more than two and a half times that of the lower half of all, from the
// signal on up to the highest. Rounded to two digits behind the point.
float ProposeCeiling(const OneBased<float>& signals, long first, long last);

// The same of the fitted signal of a row between two points.
float ProposeCeilingOf(RowNo row, long first, long last);

} // namespace Quillon
