#pragma once
// The points of a baseline as a function of the radius.

#include "workspace/records/Counts.h"

namespace Quillon {

// The baseline of a row at a radius in cm: linear between its points, constant outside them; 0 for a row
// without baseline points. Quick for rising radii, right for all.
float BaselineAt(float radius, RowNo row);

// What is fitted of a reading of a row, in double precision: its value less the baseline, shifted where the
// shift is in force, at its radius.
double SignalOf(RowNo row, float radius, float value);

// Forgets where the latest call of BaselineAt ended; for whoever replaces the points of a baseline.
void ForgetBaselinePlace();

} // namespace Quillon
