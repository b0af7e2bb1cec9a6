#pragma once
// The start of the desktop program.

#include <string>
#include <vector>

namespace Quillon {

// On an installed platform: starts the analysis and shows the main window. argument as of StartQuillon; what
// it and the others lead to beside a fit is opened once the window stands (OpenArguments).
void StartDesktop(const std::string& argument, const std::vector<std::string>& others = {});

// The end of the program: a page that is held for another graph is printed, and the windows go.
void EndDesktop();

} // namespace Quillon
