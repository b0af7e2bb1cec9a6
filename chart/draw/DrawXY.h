#pragma once
// Painting of curves: X-Y plots, and lines over categories.

namespace Quillon {

// Paints the data, clipped to the frame. Lets events run every 50 points; a raised cancel flag ends it.
void DrawXY();
void DrawLinesOverCategories();

} // namespace Quillon
