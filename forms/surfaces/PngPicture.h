#pragma once
// PNG pictures, drawn by the toolkit.

#include "platform/PictureFile.h"

namespace Quillon {

// A PNG of Width by Height pixels on white, which bears its resolution.
PictureFile OpenPng(const PictureRequest& request);

} // namespace Quillon
