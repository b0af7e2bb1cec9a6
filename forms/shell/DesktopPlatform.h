#pragma once
// The seam's filling on the desktop.

namespace Quillon {

// Takes the desktop's filling into use. Needs a QApplication.
void InstallDesktopPlatform();

} // namespace Quillon
