#pragma once
// The mapping of axis units to device units and back:  px = XScale * x - XOffset,  py = YScale * y - YOffset.

#include <cstdint>

namespace Quillon {

// Maps xmin to px1, xmax to px2, ymin to py1 and ymax to py2. A scale without length maps to its first end.
void SetMapping(double xmin, double ymin, double xmax, double ymax, int px1, int py1, int px2, int py2);

// The mapping of the current graph: the scales of AxisX1 and AxisY1 onto the frame, Y upward.
void SetFrameMapping();

// Unrounded device units, and those rounded into 16 bits.
double MapX(double x);
double MapY(double y);
std::int16_t DeviceX(double x);
std::int16_t DeviceY(double y);

// Axis units at a device position.
double AxisXAt(double px);
double AxisYAt(double py);

} // namespace Quillon
