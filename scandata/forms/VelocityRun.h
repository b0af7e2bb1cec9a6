#pragma once
// Scans of a velocity run that were taken for an equilibrium.

#include "workspace/records/Counts.h"

#include <string>
#include <vector>

namespace Quillon {

// A sentence for each cell, speed and wavelength of which the rows hold ten or more scans that have not
// settled: over what would be proposed as the range of the last one, the three before it differ from it by
// more than 20 times its noise (root mean square against the standard deviation from second differences).
std::vector<std::string> VelocityRemarks(const std::vector<RowNo>& rows);

} // namespace Quillon
