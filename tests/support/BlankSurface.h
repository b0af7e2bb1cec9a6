#pragma once
// A drawing surface on which nothing is seen, for tests that only ask whether painting comes to its end.

#include "platform/Surface.h"

#include <string>
#include <vector>

namespace Quillon {

// Of a size in device units, at 96 dots per inch. A character is 6 units wide and 12 high, 3 of them below
// the line. Whoever wants to know of a call replaces that entry.
inline DrawingSurface BlankSurface(int width, int height) {
    DrawingSurface s;
    s.Width = [width] { return width; };
    s.Height = [height] { return height; };
    s.DotsPerInchX = s.DotsPerInchY = [] { return 96.0; };
    s.HasColor = [] { return true; };
    s.SetPen = [](const SurfacePen&) {};
    s.SetBrush = [](const SurfaceBrush&) {};
    s.SetFont = [](const SurfaceFont&) {};
    s.SetTextColor = [](Rgb) {};
    s.SetClip = [](const DeviceRect&) {};
    s.ClearClip = [] {};
    s.Line = [](int, int, int, int) {};
    s.Polyline = [](const std::vector<DevicePoint>&) {};
    s.Polygon = [](const std::vector<DevicePoint>&) {};
    s.Rectangle = [](const DeviceRect&) {};
    s.Ellipse = [](const DeviceRect&) {};
    s.PieSlice = [](DevicePoint, int, int, double, double) {};
    s.Text = [](int, int, const std::string&) {};
    s.Measure = [](const std::string& text) { return TextSize{static_cast<int>(text.size()) * 6, 12, 3}; };
    s.Refresh = [] {};
    return s;
}

} // namespace Quillon
