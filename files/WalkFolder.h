#pragma once
// The walk over a folder and all below it.

#include "files/WalkLimits.h"

#include <string>
#include <vector>

namespace Quillon {

// Meets the files with their names from the folder on, sorted by their bytes. Links to folders and what is
// neither file nor folder are left alone; a file that cannot be opened is handed back as such. A folder that
// cannot be listed is a RuntimeError, and so are more than MostMet files.
std::vector<PassedFile> WalkFolder(const std::string& folder, const MeetFile& meet);

} // namespace Quillon
