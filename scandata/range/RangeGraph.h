#pragma once
// Choosing the fitting range of a set by eye: the whole scan on a graph, with two green markers to drag.

#include "workspace/records/Counts.h"

namespace Quillon {

// Shows the scan of a row in the chart window, with the bar of scandata/range/RangeBar.h, and takes the range
// between the markers on Enter or Accept; a range of less than three points is refused, told, and the graph
// stays. With Work.RangeLogPlot the graph is ln of the signal against r^2/2. Readings can be left out on it
// (scandata/range/RangeReadings.h). False, and range and readings as they were, when the row holds no scan or
// the window was left otherwise.
bool SelectRange(RowNo row);

} // namespace Quillon
