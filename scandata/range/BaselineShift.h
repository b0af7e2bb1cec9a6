#pragma once
// The shift of a baseline for rotor stretch: a baseline taken at another speed than its scan stands at
// slightly other radii. A positive shift moves the baseline outward, so that it is read at radius - shift.

#include "workspace/records/Counts.h"

namespace Quillon {

// The shift in cm that the rotor's expansion between the speeds of baseline and scan would give, rounded
// down to three decimals (away from zero for a baseline of the higher speed).
float CalculatedShift(RowNo row);

// The shift that an adjustment starts from: the row's own, and the calculated one (which the row then takes)
// where the row has none and the speeds differ.
float StartingShift(RowNo row);

// Puts a given shift in force for a row.
void SetBaselineShift(RowNo row, float shift);

} // namespace Quillon
