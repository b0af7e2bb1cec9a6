#pragma once
// A fitting range proposed from the scan itself: between meniscus, optical edges and bottom the signal bends
// little from point to point, at them it breaks.

#include "workspace/records/Counts.h"

namespace Quillon {

// Points first..last, none when First is 0.
struct PointRange {
    long First = 0;
    long Last = 0;
    bool operator==(const PointRange&) const = default;
};

// The longest run of points within first..last of which every second difference |y(p-1) - 2 y(p) + y(p+1)|
// stays below the larger of 18 times the lower quartile of all of them and 0.03 signal units, two points cut
// at each end. Of runs of the same length the innermost. None when fewer than three points are left.
PointRange ProposeRange(const OneBased<float>& values, long first, long last);

// The same of within; a run that goes up to an end of within, where nothing breaks, is carried on beyond it,
// within reach (which holds within), as long as the second differences stay below the limit of within.
PointRange ProposeRangeAcross(const OneBased<float>& values, const PointRange& within,
                              const PointRange& reach);

// The radii of a scan, with the code of the centerpiece and the speed that say where its channels lie.
struct ScanInCell {
    const OneBased<float>& Radii;
    int Samples = 0;
    float Rpm = 0.0F;
};

// A channel's points (within) and those beside them up to the radii of the channels next to it; those of an
// innermost or outermost channel up to the end of the scan. The reach of a proposal in a channel: its radii
// are those of an average cell.
PointRange ReachOfChannel(const ScanInCell& scan, int channel, const PointRange& within);

// Second differences of first..last from this on are a break: the larger of those two.
double LeastBreakOf(const OneBased<float>& values, long first, long last);

// True when no second difference within first..last reaches a limit.
bool IsUnbroken(const OneBased<float>& values, long first, long last, double limit);

// The outermost channel that a row's centerpiece has (1 = A); 0 for one without channels.
int LastChannelOf(RowNo row);

// The range proposed in a channel (1 = A) of a row whose centerpiece has it; in the whole scan where that
// does not reach the channel. A channel's radii are those of an average cell, a cell that sits a little off
// has its columns cut by them: a column goes on beyond, up to the radii of the channels next to it.
PointRange ProposeRangeInChannel(RowNo row, int channel);

// The same for a row of the data set table: in its channel, without one in the whole scan.
PointRange ProposeRangeOf(RowNo row);

} // namespace Quillon
