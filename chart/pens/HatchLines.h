#pragma once
// Hatches as lines, for surfaces: alike on every one, and at a width that does not depend on the resolution.
// The hatches that devices and file formats have of their own are tiles of a few pixels, too fine on paper,
// and some readers of metafiles fill them solid.

#include "platform/Surface.h"

#include <algorithm>
#include <vector>

namespace Quillon {

struct PlanePoint {
    double X{}, Y{};
};

struct PlaneSegment {
    PlanePoint From, To;
};

// Distance between the lines of a hatch along each axis, and their width, in device units.
inline double HatchSpacing(double dotsPerInch) {
    return std::max(dotsPerInch / 12.0, 4.0);
}
inline double HatchWidth(double dotsPerInch) {
    return std::max(dotsPerInch / 96.0, 1.0);
}

// True for the kinds that are drawn with lines: all but Hollow and Solid.
bool IsHatch(BrushKind kind);

// The lines of a hatch inside a closed outline (even-odd where it crosses itself), as far as they touch the
// rectangle of the surface. They run through multiples of the spacing from the surface's origin, so that
// neighbouring areas match.
std::vector<PlaneSegment> HatchLines(BrushKind kind, const std::vector<PlanePoint>& outline, double spacing,
                                     const DeviceRect& surface);

// Outlines for it. Angles are in degrees counterclockwise from three o'clock.
std::vector<PlanePoint> OutlineOf(const std::vector<DevicePoint>& polygon);
std::vector<PlanePoint> OutlineOf(const DeviceRect& rect);
std::vector<PlanePoint> ArcOutline(PlanePoint centre, double radiusX, double radiusY, double start,
                                   double sweep);

} // namespace Quillon
