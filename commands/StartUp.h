#pragma once
// The start of the program, and fits that are opened by their name.

#include <string>

namespace Quillon {

// Start of the program: workspace, ini files, bounds, recent files, menu. argument is the command line's one
// argument, a data directory or a saved fit, or "".
void StartQuillon(const std::string& argument);

// The files of the recent list: restores item 1 to 6.
void RunRecentFile(long item);

} // namespace Quillon
