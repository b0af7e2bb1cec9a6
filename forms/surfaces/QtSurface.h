#pragma once
// The drawing surface on a toolkit painter: for windows, printers and pictures.

#include "platform/Surface.h"

#include <functional>
#include <memory>

class QPainter;

namespace Quillon {

// What is painted on. On a display of high resolution a device unit is one of its physical pixels: Width,
// Height and dots per inch are the logical ones times the device pixel ratio, and Scale is 1 / ratio.
struct PainterTarget {
    QPainter* Painter = nullptr; // active while the surface draws
    int Width{}, Height{};       // device units
    double DotsPerInchX = 96.0, DotsPerInchY = 96.0;
    double Scale = 1.0;       // painter units per device unit
    DevicePoint Origin;       // the device unit at the painter's corner
    double ThinnestPen = 1.0; // device units; paper and files hold finer lines than an eye sees
    bool HasColor = true;
    // Files: text takes the widths of the base fonts (chart/pens/BaseFonts.h), as it does in the files that
    // are made without the toolkit, so that all show one layout; an installed font of other widths is
    // stretched.
    bool BaseWidths = false;
    // Windows: small shapes are painted once and set down where they stand (forms/surfaces/Stamp.h). What is
    // mixed from that differs by a shade or two from what is painted, so that files do without. Needs a Scale
    // of 1 and a painter whose units are those of its device.
    bool Stamps = false;
    std::function<void()> Refresh; // optional
};

// A surface on that target, whose members may change between paintings. It sets the painter's transformation,
// clip, pen, brush and font as it needs them, and leaves them so.
DrawingSurface PainterSurface(std::shared_ptr<PainterTarget> target);

} // namespace Quillon
