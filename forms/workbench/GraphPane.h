#pragma once
// The pane with data and curves above the residuals, and beside them a legend that hides and shows sets.

#include "forms/shell/Binding.h"

namespace Quillon {

QWidget* MakeGraphPane(Binder& bind);

} // namespace Quillon
