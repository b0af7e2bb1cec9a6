#pragma once
// Which columns a scan holds.

#include "runs/SortedRun.h"

#include <vector>

namespace Quillon {

// The columns of a scan. With a chosen range those radii alone, one column. Else several channels, where
// within the radii of a centerpiece's channels (Work.ChannelRadii) two or more steady stretches are parted by
// breaks of the signal; those that hold no sample are left out: signal within 3 times the noise of nothing,
// and no more spread than twice the noise. Else one column, over the stretch that is proposed as a fitting
// range (scandata/range/ProposeRange.h), or where there is none over the whole scan.
std::vector<RunChannel> ChannelsOf(const RunScan& scan, const ApproachRange& range);

} // namespace Quillon
