#pragma once
// Painting of bars, side by side or stacked.

namespace Quillon {

// Paints the data, clipped to the frame. Lets events run every 50 points; a raised cancel flag ends it.
void DrawBarsH();
void DrawBarsV();

} // namespace Quillon
