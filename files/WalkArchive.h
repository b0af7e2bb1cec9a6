#pragma once
// The walk over an archive: its entries in their order, none unpacked to the disk.

#include "files/WalkLimits.h"

#include <string>
#include <vector>

namespace Quillon {

// Meets the files of an archive. Everything that is no file is left alone, and so is an entry whose name
// leads out of the folder that it would be unpacked into. One that ends too early is a RuntimeError, and so
// is one that is packed several times over, that holds too many entries or unpacks to too much. Holes of
// sparse entries count as the zeros that they unpack to.
std::vector<PassedFile> WalkArchive(const std::string& archive, const MeetFile& meet,
                                    const WalkLimits& limits = {});

} // namespace Quillon
