#pragma once
// The outputs of a run, made from the fit in the workspace and written.

#include "batch/job/RunJob.h"
#include "batch/options/Options.h"

#include <string>

namespace Quillon {

// Writes a whole file, or to standard output for "-". What goes wrong is a RuntimeError in one line that
// names the file.
void WriteOutput(const std::string& path, const std::string& bytes);

// Writes what the options name: everything of a fit that has results, which say so when it is no minimum; of
// another one the results alone. An output that cannot be made or written takes no other one with it, and
// standard output comes last, whose reader may have gone. When all others stand, a RuntimeError in one line
// tells what is missing and why, a study that could not be made among it.
void WriteOutputs(const Options& options, const RunEnd& end);

} // namespace Quillon
