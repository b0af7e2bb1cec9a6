#pragma once
// The shift of a baseline adjusted by eye: data, baseline and their difference on a graph, moved by the
// cursor keys.

#include "workspace/records/Counts.h"

namespace Quillon {

// Shows the graph for a row and puts the shift in force that the user leaves with Enter or Escape. A run-time
// error is told and turns the shift off.
void AdjustBaselineShift(RowNo row);

// The title of the graph for a calculated shift and the present one; begins tells the first showing.
const char* ShiftInstruction(bool begins);

} // namespace Quillon
