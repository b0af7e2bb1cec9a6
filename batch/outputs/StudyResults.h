#pragma once
// What the studies behind a fit have found, for the outputs of a run.

#include "studies/methods/Comparison.h"
#include "studies/methods/ProfileMap.h"
#include "studies/methods/Resampling.h"

#include <optional>
#include <variant>
#include <vector>

namespace Quillon {

struct StudyResults {
    std::optional<Comparison> Compared;  // of --compare
    std::optional<Resampling> Resampled; // of --resample
    // Of --profile, in the order of the options: one of each kind.
    std::vector<std::variant<Profile, ProfileMap>> Profiles;
};

} // namespace Quillon
