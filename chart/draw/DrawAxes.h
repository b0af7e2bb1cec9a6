#pragma once
// Painting of the axes.

namespace Quillon {

// Axis line, grid, tics, labels and title of one axis (AxisPlace of chart/layout/Layout.h).
void DrawAxis(int place);

} // namespace Quillon
