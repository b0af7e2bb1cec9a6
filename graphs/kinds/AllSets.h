#pragma once
// Which data sets a graph shows.

#include "workspace/records/Counts.h"

namespace Quillon {

// In place of one set: all sets of the fit.
inline constexpr SetNo AllSets{0};

} // namespace Quillon
