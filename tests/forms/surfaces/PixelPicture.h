#pragma once
// Paints a PNG picture and looks at its pixels.

#include "forms/surfaces/PngPicture.h"

#include <QImage>
#include <QRect>

namespace Quillon {

// What a drawing leaves on a picture of 200 by 160 pixels at 96 dots per inch, or another one.
template <typename Draw>
QImage Painted(const Draw& draw, PictureRequest request = {"", 200, 160, 96.0, 96.0}) {
    const PictureFile picture = OpenPng(request);
    draw(picture.Surface);
    const std::string bytes = picture.Finish();
    return QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()),
                            "PNG");
}

inline unsigned ColorAt(const QImage& image, int x, int y) {
    return image.pixel(x, y) & 0xFFFFFFU;
}
constexpr unsigned White = 0xFFFFFF;

// The smallest rectangle that holds all pixels that are not white; empty when all are.
inline QRect Inked(const QImage& image) {
    QRect inked;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (ColorAt(image, x, y) != White) inked |= QRect(x, y, 1, 1);
    return inked;
}

inline int CountOf(const QImage& image, unsigned color) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += ColorAt(image, x, y) == color ? 1 : 0;
    return count;
}

} // namespace Quillon
