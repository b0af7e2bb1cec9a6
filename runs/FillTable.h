#pragma once
// The sets of a sorted run as rows of the table of data sets.

#include "runs/RunSets.h"

#include <string>
#include <vector>

namespace Quillon {

// Empties the table and reads the sets into it, from row 1 on: scan or mean, centerpiece and channel, the
// radii of the column as range, extinction ratios (1 where none is known), shared concentrations. The
// columns of intensities are decided for all of them together. Gives what is to be told, a sentence each. A
// file is where pathOf says; one that cannot be read is a RuntimeError that names it, and the workspace is
// then as it was.
std::vector<std::string> FillTable(const SortedRun& run, const std::vector<RunSet>& sets,
                                   const ScanPath& pathOf);

} // namespace Quillon
