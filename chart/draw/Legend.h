#pragma once
// Painting of the legend.

namespace Quillon {

// Paints the legend inside its box.
void DrawLegend();

} // namespace Quillon
