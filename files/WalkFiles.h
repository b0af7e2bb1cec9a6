#pragma once
// Walks over many files at once: those of a folder and all below it, or those of an archive.
//
// What lies there may have been made by anybody. Nothing is written, no link of a folder is followed, no
// device is opened for reading, and what a small archive can grow to is limited (files/WalkLimits.h).

#include "files/WalkArchive.h"
#include "files/WalkFolder.h"
#include "files/WalkLimits.h"

#include <string>
#include <vector>

namespace Quillon {

// The seam's WalkFiles. A place that is no folder is taken for an archive.
std::vector<PassedFile> WalkFiles(const std::string& place, const MeetFile& meet);

// True for a name that stays below the folder that it is put into: no root, no drive, no "..", no byte 0.
bool StaysBelow(const std::string& name);

// The seam's MakeFolder.
void MakeFolder(const std::string& path);

} // namespace Quillon
