#pragma once
// Enhanced metafiles, written record by record and without a toolkit, so that a batch run makes them where
// there is neither a display nor a printer.
//
// One device unit is one unit of the metafile; the window's corner is its origin. Text is text: its font is
// named (chart/BaseFonts.h), its letters stand where the tables of widths put them, whatever font a reader
// has. Hatches are lines (chart/HatchLines.h). What lies outside the window is clipped.

#include "platform/PictureFile.h"

namespace Quillon {

// Begins a metafile. Width and Height of the request are those of the reference device, and the picture
// unless SetWindow narrows it. The file's suggested size is the window's at the resolution asked for. Finish
// gives the bytes; more than 65534 different pens, brushes and fonts are the run-time error "Overflow".
PictureFile OpenMetafile(const PictureRequest& request);

} // namespace Quillon
