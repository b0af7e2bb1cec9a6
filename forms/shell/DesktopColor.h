#pragma once
// The colours of the logic on the desktop's palette.

#include <QColor>
#include <QPalette>

#include <cstdint>

namespace Quillon {

// A colour of the logic (0x00BBGGRR) as it is read on the palette: on a dark background dark colours are
// lifted.
QColor DesktopColor(std::uint32_t color, const QPalette& palette);

} // namespace Quillon
