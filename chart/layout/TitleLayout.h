#pragma once
// Main titles and axis titles: their texts and the sizes at which they fit.

#include "chart/records/Records.h"

#include <string>

namespace Quillon {

// True when a text has anything but blanks.
bool HasText(const std::string& text);

// What stands beside an axis: its title, and behind it the name of its prescale.
std::string AxisTitleText(const GraphAxis& axis);

// The direction of the title of an axis (AxisPlace), as SelectFont takes it: upward along the left axis,
// downward along the right one, else horizontal.
int TitleDirection(int place);

// The size at which a title is no longer than 0.95 of length: the size given times 0.9 as often as it takes,
// down to the least that may be read.
float FitTitle(const GraphTitle& title, const std::string& text, float size, int length, int direction);

// Fits all titles to the frame, in Chart.Layout.Sizes.
void FitTitles();

} // namespace Quillon
