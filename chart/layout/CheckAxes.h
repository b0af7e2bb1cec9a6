#pragma once
// The check of the axes of a spec before it is scaled.

#include "chart/records/Records.h"

#include <cstdint>

namespace Quillon {

// Sets GraphStatus to a code of what was put right, unless something has stopped.
void WarnInStatus(std::int16_t code);

// Checks the axes of a spec and repairs them, with a warning: a log base that is not usable, a prescale of 0.
// A scale with Min equal to Max, or without limits, becomes an autorange. A pie has no scale.
void CheckAxes(GraphSpec& spec);

} // namespace Quillon
