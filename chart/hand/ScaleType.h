#pragma once
// From a linear scale to a logarithmic one and back: the limits of the axis, and the stored data with them.
// On a logarithmic axis data and limits are logarithms (chart/scale/AxisScale.h); what the caller handed over
// is kept beside them, so that the way there and back loses nothing.

#include "chart/records/Columns.h"
#include "chart/records/Records.h"

#include <cstdint>
#include <string>

namespace Quillon {

// True when two axes have the same kind of scale: linear, or logarithms to the same base.
bool SameScaleType(const GraphAxis& one, const GraphAxis& other);

// A place on the scale of an axis as the number that it stands for, in units of the axis: base^place on a
// logarithmic scale, the place itself on a linear one; and the place of a number, which is no finite value
// where the number has no logarithm.
double NumberAt(const GraphAxis& axis, double place);
double PlaceOf(const GraphAxis& axis, double number);

// "Ln (" and ")" around the title of an axis. A title that is too long for both gives way at its end, so that
// the bracket is closed.
std::string LnTitle(const std::string& title);

// Brings the scale of an axis into another kind: the limits stay at the same places of the data. Where the
// limits have no logarithm, or the range no length, the axis gets an autorange. Tics and format of the labels
// are chosen afresh, a prescale goes, and the title gains or loses "Ln (...)".
// to: type and base of the new scale. titles: of this axis; a title that was not edited since its last change
// goes back to what it was, to the last character.
void ConvertAxis(GraphAxis& axis, const GraphAxis& to, LnTitles& titles);

// The values along X (alongX) or Y that have no place on a logarithmic scale: those of zero and below.
long ValuesWithoutLogarithm(bool alongX);

// Brings the stored data along X or Y, and the notes and marks with them, from the scale of one axis to that
// of another. Markers, zooms and shifts must be gone. The divisor on loading is 1 from then on.
void ConvertColumns(bool alongX, const GraphAxis& from, const GraphAxis& to);

} // namespace Quillon
