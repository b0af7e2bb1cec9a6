#pragma once
// The columns of solution in a scan that nobody has looked at yet: a scan of a cell with several samples
// holds one for each, a scan of another cell one alone.

#include "scandata/range/ProposeRange.h"

#include <vector>

namespace Quillon {

// A column: its channel (0 for a cell without channels) and the range proposed in it.
struct ScanColumn {
    int Channel = 0;
    PointRange Range;
    bool operator==(const ScanColumn&) const = default;
};

// The columns of a row's scan from inside outward, for its centerpiece. Where the longest stretch without a
// break lies within one channel, those channels count that the stretch without a break inside them fills by
// a third or more, with none by the measure of the whole scan either; where it reaches across channels, or
// the centerpiece has none, it is the one column. None in a scan without any break: nothing tells where its
// solution ends.
std::vector<ScanColumn> FindColumns(RowNo row);

// Gives a row its columns: the first to the row itself, a row behind it for each further one, which is a copy
// of it. Gives how many of them found no free row.
long TakeColumns(RowNo row, const std::vector<ScanColumn>& columns);

} // namespace Quillon
