#pragma once
// Values of the axes as the status line shows them: with a few digits more than their labels.

#include "chart/records/Records.h"

#include <string>

namespace Quillon {

// A value of an axis, in axis units (a logarithm on a log axis).
std::string RoundedText(const GraphAxis& axis, float value);

// What the status line and exact readings show for a value of an axis: digits more than its labels have.
std::string AxisReading(bool ofX, double value);

} // namespace Quillon
