#pragma once
// Scalable vector graphics, written as text and without a toolkit.
//
// One user unit is one device unit; the picture's size is in points. Text is text: its font is the one asked
// for with its usual stand-ins behind it, and its letters are Unicode, the Symbol family's too. Layout is by
// the tables of chart/BaseFonts.h. What lies outside the picture or the clip rectangle is clipped.

#include "platform/PictureFile.h"

namespace Quillon {

// Begins a picture; Finish gives its text, in UTF-8. The description becomes the title, up to its first zero
// byte.
PictureFile OpenSvg(const PictureRequest& request);

} // namespace Quillon
