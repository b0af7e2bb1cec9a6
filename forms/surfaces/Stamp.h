#pragma once
// A small shape that is painted once and set down at many places. A window of scans shows tens of thousands
// of symbols, those of a set all alike and all at whole device units: the picture of one is the picture of
// each.

#include "platform/Surface.h"

#include <QImage>
#include <QPoint>

#include <functional>
#include <span>
#include <vector>

class QPainter;

namespace Quillon {

struct Stamp {
    std::vector<DevicePoint> Shape; // its corners, counted from the first one; none: there is no stamp
    bool Round = false;             // an ellipse within two corners, else a polygon
    QImage Picture;                 // with what lies below shining through
    QPoint Corner;                  // of the picture, counted from the shape's first corner
};

// The longest side of a shape that is worth a stamp, in device units.
inline constexpr int LargestStamp = 48;

bool IsSmall(std::span<const DevicePoint> corners);

// True when the stamp is that of the shape, wherever the shape stands.
bool IsStampOf(const Stamp& stamp, std::span<const DevicePoint> corners, bool round);

// Makes the stamp of a shape. reach: by what its outline goes beyond the corners. paint: paints the shape,
// whose corners are those given less the first one, on a painter in device units.
Stamp MakeStamp(std::span<const DevicePoint> corners, bool round, int reach,
                const std::function<void(QPainter&)>& paint);

// Sets it down with the first corner at a place of the painter, whose units are those of its device.
void SetDown(QPainter& painter, const Stamp& stamp, DevicePoint first);

} // namespace Quillon
