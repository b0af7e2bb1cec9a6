#pragma once
// The points of a baseline as a function of the radius.

#include "workspace/records/Counts.h"

namespace Quillon {

// The baseline of a row at a radius in cm: linear between its points, constant outside them; 0 for a row
// without baseline points. Quick for rising radii, right for all.
float BaselineAt(float radius, RowNo row);

// Forgets where the latest call of BaselineAt ended; for whoever replaces the points of a baseline.
void ForgetBaselinePlace();

} // namespace Quillon
