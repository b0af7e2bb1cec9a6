#pragma once
// Pictures that the toolkit makes: PNG and PDF.

#include "platform/PictureFile.h"

namespace Quillon {

// Pictures need the toolkit's application object. Where the program has none, one without a display is made
// and kept; the locale stays what it was. A missing platform plugin is a RuntimeError, and so is a system
// without any font.
void NeedApplication();

// A PNG of Width by Height pixels on white, which bears its resolution.
PictureFile OpenPng(const PictureRequest& request);

// A PDF of pages as large as the picture, with its fonts. Text is text and can be searched.
PictureFile OpenPdf(const PictureRequest& request);

} // namespace Quillon
