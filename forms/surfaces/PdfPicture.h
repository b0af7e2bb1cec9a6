#pragma once
// PDF pictures, drawn by the toolkit.

#include "platform/PictureFile.h"

namespace Quillon {

// A PDF of pages as large as the picture, with its fonts. Text is text and can be searched.
PictureFile OpenPdf(const PictureRequest& request);

} // namespace Quillon
