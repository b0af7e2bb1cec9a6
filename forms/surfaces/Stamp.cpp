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

// Each of the four bytes of a colour times a / 255, rounded to nearest, two bytes at a time.
QRgb Times(QRgb color, unsigned a) {
    const auto rounded = [](unsigned products) {
        return (products + ((products >> 8U) & 0xFF00FFU) + 0x800080U) >> 8U & 0xFF00FFU;
    };
    return rounded((color & 0xFF00FFU) * a) | rounded((color >> 8U & 0xFF00FFU) * a) << 8U;
}

// The part of a stamp that is to be seen, on an image without transparency.
void Blend(QImage& image, const QImage& stamp, QPoint corner, const QRect& seen) {
    for (int y = seen.top(); y <= seen.bottom(); ++y) {
        auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
        const auto* from = reinterpret_cast<const QRgb*>(stamp.constScanLine(y - corner.y()));
        for (int x = seen.left(); x <= seen.right(); ++x) {
            const QRgb color = from[x - corner.x()];
            const auto alpha = static_cast<unsigned>(qAlpha(color));
            if (alpha == 255U)
                to[x] = color;
            else if (alpha != 0U)
                to[x] = (color + Times(to[x], 255U - alpha)) | 0xFF000000U;
        }
    }
}

// The image that a painter paints on, where its dots can be reached without it: of 32 bits without
// transparency. Null otherwise.
QImage* PlainImage(const QPainter& painter) {
    auto* device = painter.device();
    if (device->devType() != QInternal::Image) return nullptr;
    auto* image = static_cast<QImage*>(device);
    return image->format() == QImage::Format_RGB32 && image->devicePixelRatio() == 1.0 ? image : nullptr;
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
    const QPoint corner = QPoint(first.X, first.Y) + stamp.Corner;
    QImage* image = PlainImage(painter);
    if (image == nullptr) return painter.drawImage(corner, stamp.Picture);
    // What a painter looks after for each picture takes many times as long as the few dots of a symbol.
    QRect seen = QRect(corner, stamp.Picture.size()) & image->rect();
    if (painter.hasClipping()) seen &= painter.clipBoundingRect().toRect();
    if (!seen.isEmpty()) Blend(*image, stamp.Picture, corner, seen);
}

} // namespace Quillon
