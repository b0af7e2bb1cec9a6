#pragma once
// What the studies behind a fit have found, for the outputs of a run.

#include "studies/Comparison.h"
#include "studies/Resampling.h"

#include <optional>

namespace Quillon {

struct StudyResults {
    std::optional<Comparison> Compared;  // of --compare
    std::optional<Resampling> Resampled; // of --resample
};

} // namespace Quillon
