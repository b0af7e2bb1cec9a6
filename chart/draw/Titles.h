#pragma once
// Painting of main titles and axis titles.

#include "platform/Surface.h"

#include <string>

namespace Quillon {

// Paints Title1 and Title2 above the frame.
void DrawTitles();

// Wipes the strip above the frame in which the titles stand and paints them there, at the sizes in force.
void RepaintTitles();

// Paints the title of one axis (AxisPlace) beside it.
void DrawAxisTitle(int place);

// Draws a line of text of which the left or upper edge is given. start: where the text begins along its
// direction; font: the measures of the font in force.
void DrawTextLine(const std::string& text, int start, int edge, int direction, const TextSize& font);

// Where a text of a width begins on a stretch from first to last, by Justify 0 to 2.
int JustifiedStart(int justify, int first, int last, int width);

} // namespace Quillon
