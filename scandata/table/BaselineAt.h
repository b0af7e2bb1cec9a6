#pragma once
// The points of a baseline as a function of the radius.

#include "workspace/records/Counts.h"

namespace Quillon {

// Where the latest look at a baseline ended: radii mostly come in rising order, and the next look goes on
// from there. It belongs to whoever looks; a fresh one begins at the start, and is needed once the points of
// the row's baseline are others.
struct BaselinePlace {
    RowNo Row;
    long Point = 1;      // the first point at or above Radius, or one behind the last
    float Radius = 0.0F; // cm
};

// The baseline of a row at a radius in cm: linear between its points, constant outside them; 0 for a row
// without baseline points. Quick for rising radii, right for all; a value that no single holds is the
// run-time error "Overflow".
float BaselineAt(float radius, RowNo row, BaselinePlace& latest);

// What is fitted of a reading of a row, in double precision: its value less the baseline, shifted where the
// shift is in force, at its radius.
double SignalOf(RowNo row, float radius, float value, BaselinePlace& latest);

} // namespace Quillon
