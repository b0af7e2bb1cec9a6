#pragma once
// From raw data and a GraphAxis to a scale: the transform on loading, the range, the prescale, the format of
// the labels. Scale values are singles; on a logarithmic axis data and limits are logarithms throughout, so
// that everything behind is linear.

#include "chart/records/Records.h"
#include "chart/records/SetTable.h"

namespace Quillon {

// log10 as the labels use it: ln x times 1 / ln 10, rounded to single; -6 for an argument of zero or less.
float LogBase10(double x);

// True for a logarithmic axis to the base 10. Natural logarithms are scaled and labelled like linear values.
bool IsLog10(const GraphAxis& axis);

// Sets the flag Chart.Log10Axis, which FormatTic reads, from the axis in hand.
void SetLog10Axis(const GraphAxis& axis);

// The nearest single that is finite.
float FiniteSingle(double value);

// The divisor that the axis applies to values as they are loaded: Factor on a manual scale, else 1.
float LoadDivisor(const GraphAxis& axis);

// What stored values are divided by to come to the units of the axis, given what they were divided by when
// they were loaded.
double DrawDivisor(const GraphAxis& axis, float loadFactor);

// Brings count values, in place, from the caller's form to the stored one: divides them, takes logarithms. A
// value that is infinite or no number, and on a log axis one that is not positive, becomes MissingValue.
void TransformSet(const GraphAxis& axis, float* values, long count);

// Finds the range of the stored data for an axis of a kind (AxisKinds) and, on a prescaled axis, its
// prescale. loadFactor: what the data were divided by when loaded. A manual or zoomed range stands.
void AutoRange(GraphAxis& axis, std::int16_t kind, const SetTable& data, float loadFactor);

// Takes a power of 1000 out of Min and Max, and names it.
void ChoosePrescale(GraphAxis& axis);

// Chooses TicFormat and Decimals after the range. Manual and zoomed scales keep theirs.
void AutoFormat(GraphAxis& axis);

} // namespace Quillon
