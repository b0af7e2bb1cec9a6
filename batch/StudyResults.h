#pragma once
// What the studies behind a fit have found, for the outputs of a run.

#include "studies/Comparison.h"

#include <optional>

namespace Quillon {

struct StudyResults {
    std::optional<Comparison> Compared; // of --compare
};

} // namespace Quillon
