#pragma once
// Pictures that stand for the pages of a printer.

#include "platform/PictureFile.h"

#include <utility>

namespace Quillon {

// The picture as a printer with colours, or without, would print it: what is drawn asks the surface. Nothing
// else of it changes; picture is handed over before anything is drawn on it.
inline PictureFile InColor(PictureFile picture, bool color) {
    picture.Surface.HasColor = [color] { return color; };
    return picture;
}

} // namespace Quillon
