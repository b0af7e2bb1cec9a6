#pragma once
// Painting of a pie, whose slices are the Y values of the first point.

namespace Quillon {

// Paints the data and their labels. Lets events run every 50 points; a raised cancel flag ends it.
void DrawPie();

} // namespace Quillon
