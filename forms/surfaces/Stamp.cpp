#include "forms/surfaces/Stamp.h"

#include <QPainter>

#include <algorithm>

namespace Quillon {

namespace {

DevicePoint Less(DevicePoint point, DevicePoint first) {
    return {point.X - first.X, point.Y - first.Y};
}

QRect Around(std::span<const DevicePoint> corners) {
    DeviceRect around{corners[0].X, corners[0].Y, corners[0].X, corners[0].Y};
    for (const DevicePoint corner : corners) {
        around.Left = std::min(around.Left, corner.X);
        around.Right = std::max(around.Right, corner.X);
        around.Top = std::min(around.Top, corner.Y);
        around.Bottom = std::max(around.Bottom, corner.Y);
    }
    return QRect(QPoint(around.Left, around.Top), QPoint(around.Right, around.Bottom));
}

} // namespace

bool IsSmall(std::span<const DevicePoint> corners) {
    if (corners.empty()) return false;
    const QRect around = Around(corners);
    return around.width() <= LargestStamp && around.height() <= LargestStamp;
}

bool IsStampOf(const Stamp& stamp, std::span<const DevicePoint> corners, bool round) {
    if (stamp.Round != round) return false;
    return std::equal(corners.begin(), corners.end(), stamp.Shape.begin(), stamp.Shape.end(),
                      [first = corners[0]](DevicePoint corner, DevicePoint kept) {
                          const DevicePoint place = Less(corner, first);
                          return place.X == kept.X && place.Y == kept.Y;
                      });
}

Stamp MakeStamp(std::span<const DevicePoint> corners, bool round, int reach,
                const std::function<void(QPainter&)>& paint) {
    Stamp stamp;
    stamp.Round = round;
    for (const DevicePoint corner : corners)
        stamp.Shape.push_back(Less(corner, corners[0]));
    const QRect picture = Around(stamp.Shape).adjusted(-reach, -reach, reach, reach);
    stamp.Corner = picture.topLeft();
    stamp.Picture = QImage(picture.size(), QImage::Format_ARGB32_Premultiplied);
    stamp.Picture.fill(Qt::transparent);
    QPainter painter(&stamp.Picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-stamp.Corner);
    paint(painter);
    return stamp;
}

void SetDown(QPainter& painter, const Stamp& stamp, DevicePoint first) {
    painter.drawImage(QPoint(first.X, first.Y) + stamp.Corner, stamp.Picture);
}

} // namespace Quillon
