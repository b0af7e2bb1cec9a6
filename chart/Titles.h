#pragma once
// Main titles and axis titles: fitting and painting.

#include "chart/ChartState.h"

#include <string>

namespace Quillon {

// True when a text has anything but blanks.
bool HasText(const std::string& text);

// The size at which a title is no longer than 0.95 of length: the size given times 0.9 as often as it takes,
// down to the least that may be read.
float FitTitle(const GraphTitle& title, const std::string& text, float size, int length, int direction);

// Fits all titles to the frame, in Chart.Layout.Sizes.
void FitTitles();

// Paints Title1 and Title2 above the frame.
void DrawTitles();

// Paints the title of one axis (AxisPlace) beside it.
void DrawAxisTitle(int place);

// Draws a line of text of which the left or upper edge is given. start: where the text begins along its
// direction; font: the measures of the font in force.
void DrawTextLine(const std::string& text, int start, int edge, int direction, const TextSize& font);

// Where a text of a width begins on a stretch from first to last, by Justify 0 to 2.
int JustifiedStart(int justify, int first, int last, int width);

} // namespace Quillon
