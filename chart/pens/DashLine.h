#pragma once
// Lines with the dash pattern of the pen in force.

#include "platform/Surface.h"

#include <cstdint>
#include <vector>

namespace Quillon {

// Takes a dash style into force and begins its pattern anew. 0 is solid.
void BeginDash(std::int16_t style);

// Draws a line in the style in force. The pattern goes on from where the last line left it.
void DashLine(int x1, int y1, int x2, int y2);

// Draws a line through points; with a solid pen at one stroke.
void DashPolyline(const std::vector<DevicePoint>& points);

// Draws the outline of a rectangle, the pattern running round it.
void DashRectangle(const DeviceRect& rect);

} // namespace Quillon
