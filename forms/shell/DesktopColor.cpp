#include "forms/shell/DesktopColor.h"

namespace Quillon {

QColor DesktopColor(std::uint32_t color, const QPalette& palette) {
    QColor c(static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
             static_cast<int>((color >> 16) & 0xFF));
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    if (dark && c.lightness() < 150) c = QColor::fromHsl(c.hslHue(), c.hslSaturation(), 208);
    return c;
}

} // namespace Quillon
