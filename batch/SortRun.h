#pragma once
// --sort: what lies in the folder or archive of a run, and the job of its last scans.

#include "batch/options/Options.h"

#include <string>
#include <vector>

namespace Quillon {

// Sorts the run that the options name and writes what they want of it: the job with the scans of an archive
// beside it, graphs of the approach; hands back the CSV. What the user is to be told goes to the console. A
// failure is a RuntimeError with one line; nothing has been written then but complete files.
std::string RunSorting(const Options& options);

} // namespace Quillon
