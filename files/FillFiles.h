#pragma once
// What both programs fill the seam's entries of files with.

#include "platform/Platform.h"

namespace Quillon {

// Fills reading and writing of whole files, what stands under a path, walks over folders and archives, new
// folders, locks between programs and checksums with those of the machine. Entries of directories' contents,
// times and places are those of whoever has a toolkit for them and stay as they are.
void FillFiles(Platform& filling);

} // namespace Quillon
