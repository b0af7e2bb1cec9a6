#pragma once
// The shift of a baseline for rotor stretch.

namespace Quillon {

// The shift in cm that the rotor's expansion between the speeds of baseline and scan would give, rounded
// down to three decimals.
float CalculatedShift(long row);

// Puts a given shift in force for a row.
void SetBaselineShift(long row, float shift);

} // namespace Quillon
