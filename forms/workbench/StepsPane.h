#pragma once
// The pane with the four steps of an analysis.

#include "forms/shell/Binding.h"

namespace Quillon {

// A button for each step with its state in words below it, and before it a mark: a tick when it is done, its
// number in the colour of a selection when it is the next one.
QWidget* MakeStepsPane(Binder& bind);

} // namespace Quillon
