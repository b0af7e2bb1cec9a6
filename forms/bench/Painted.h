#pragma once
// What the benchmarks of painting share: an image that is painted on as a window is, and the clock.

#include "forms/surfaces/QtSurface.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <ctime>
#include <memory>

namespace Quillon {

// An image of a size in device units with a painter on it, which ends with its life.
struct PaintedImage {
    QImage Image;
    QPainter Painter;
    DrawingSurface Surface;

    PaintedImage(int width, int height, int dotsPerInch = 96)
        : Image(width, height, QImage::Format_RGB32), Painter(&Image) {
        const auto target = std::make_shared<PainterTarget>();
        target->Painter = &Painter;
        target->Width = width;
        target->Height = height;
        target->DotsPerInchX = target->DotsPerInchY = dotsPerInch;
        target->Stamps = true; // as a window does
        Surface = PainterSurface(target);
    }
};

// Processor time of a task in ms, since a window shares its machine; and the best of ten runs of it.
template <class Task> double Milliseconds(Task&& work) {
    const std::clock_t before = std::clock();
    work();
    return 1000.0 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
}
template <class Task> double Best(Task&& work) {
    double best = 1e300;
    for (int run = 0; run < 10; ++run)
        best = std::min(best, Milliseconds(work));
    return best;
}

} // namespace Quillon
