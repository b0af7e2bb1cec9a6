#pragma once
// Which options go with which: what would be computed for nothing, shape nothing or write over something is a
// slip of the hand and told before anything is done.

#include "batch/options/Options.h"

#include <string>

namespace Quillon {

// Ends the reading of options: a RuntimeError with the program's name, the reason and the way to the help.
[[noreturn]] void FailOptions(const std::string& reason);

// Fails where the options of a run contradict each other. Not asked behind --help and --version.
void CheckOptions(const Options& options);

} // namespace Quillon
