#pragma once
// Readings that are left out of a fit: by hand, above a ceiling of the signal, or without an absorbance.
//
// A reading that is left out goes from the arrays of points to Work.LeftOut, with its place in the scan as it
// was read, and can come back. What is left is the scan: counts, ranges, channels and proposals go by it, and
// the fit is that of a file without those lines.

#include "workspace/records/Workspace.h"

#include <functional>
#include <vector>

namespace Quillon {

// Readings of the scan of a row as it was read, those left out included.
long ReadingsOf(RowNo row);

// The place in the scan as it was read, from 1, of each point of a row; subscripts as those of ScanRadius.
OneBased<long> PlacesOfPoints(RowNo row);

// Leaves out the points (1..ScanPoints, rising) of a row. A range keeps the points that it held; one that
// loses all of them goes over to the nearest that is left. False, and nothing changed, where no point of the
// scan would be left.
bool LeaveOut(RowNo row, const std::vector<long>& points, LeftOutBy::Code why);

// Takes back the readings of a row that comes says yes to, each to its place. A range takes in those that lie
// between its ends, and keeps to an end of the scan that it reached. Gives their count.
long TakeBack(RowNo row, const std::function<bool(const LeftOutReading&)>& comes);

// Radii whose readings are left out, both ends included; cm. Ends that are equal mean the one reading that is
// nearest and at most 0.0015 cm away.
struct Exclusion {
    float From = 0.0F, To = 0.0F;
    bool operator==(const Exclusion&) const = default;
};

// Leaves the readings of an exclusion out. Gives how many readings of the scan it meets, those included that
// are left out already; -1, and nothing changed, where no point would be left.
long Exclude(RowNo row, const Exclusion& exclusion);

// What is left out of a row by hand as exclusions that leave out the same once more.
std::vector<Exclusion> ExclusionsOf(RowNo row);

// Leaves out the points of which the fitted signal, behind the baseline, lies above the ceiling (0 for none),
// and takes back what another ceiling or baseline has left out. False, and the row as it was, where no point
// would be left.
bool SetCeiling(RowNo row, float ceiling);

// The same with the ceiling that each row in the fit has: its baseline may be another by now. A ceiling that
// would leave no point is dropped.
void RenewCeilings();

// How many readings of a row are left out for a reason.
long CountLeftOut(RowNo row, LeftOutBy::Code why);

} // namespace Quillon
