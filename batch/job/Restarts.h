#pragma once
// Restarts of a job: other minima, the lowest of which is its result.

#include "studies/methods/OtherMinima.h"

#include <optional>

namespace Quillon {

// Behind the fit of a job, whatever its end was: searches from choice.Count random starts, with lines of
// progress, and leaves the lowest minimum as the fit in Work. The first fit stays, bit for bit, where it is
// the lowest. Nothing for a count of 0, after a cancel, and where the fit did not come as far as its first
// pass. A search that Ctrl-C has cancelled is told and changes nothing.
inline constexpr const char* RestartsCancelledText = "The restarts were cancelled";
std::optional<MinimaMet> RunRestarts(const RestartChoice& choice);

} // namespace Quillon
