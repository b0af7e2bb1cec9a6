#pragma once
// The module that makes pictures with the toolkit's help, loaded when the first one is asked for.

#include "platform/PictureFile.h"

#include <string>
#include <vector>

namespace Quillon {

// Where the module may lie for a program in that directory: beside it, and where an installation has its
// libraries. No directory known, no place: the module is code, and what lies where the user works may be
// anybody's.
std::vector<std::string> PictureModulePlaces(const std::string& programDirectory);

// Begins a picture of a kind, "png" or "pdf". Without the module, or with one of another build, a
// RuntimeError that says what is missing.
PictureFile LoadedPicture(const std::string& kind, const PictureRequest& request);

} // namespace Quillon
