#pragma once
// The page of the main window before there are data.

#include "forms/shell/Binding.h"

namespace Quillon {

// What can be opened: scans, a saved fit, the latest fits.
QWidget* MakeStartPage(Binder& bind);

} // namespace Quillon
