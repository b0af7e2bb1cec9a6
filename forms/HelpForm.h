#pragma once
// The key of the manual.

namespace Quillon {

// From now on F1 opens the manual at the page of the window that has the focus.
void ListenForHelp();

} // namespace Quillon
