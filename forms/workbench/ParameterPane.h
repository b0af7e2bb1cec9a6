#pragma once
// The pane with the parameters of the fit as a table that can be selected and copied.

#include "forms/shell/Binding.h"

namespace Quillon {

QWidget* MakeParameterPane(Binder& bind);

} // namespace Quillon
