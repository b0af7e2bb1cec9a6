#pragma once
// The start of the desktop program.

#include <string>

namespace Quillon {

// On an installed platform: starts the analysis and shows the main window. argument as of StartQuillon.
void StartDesktop(const std::string& argument);

} // namespace Quillon
