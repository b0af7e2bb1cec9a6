#pragma once
// The minimum that a study of some parameters starts from, and what becomes of the study where a lower one is
// met on the way.
//
// Sums of squares of places beside a minimum are compared with that of the minimum. So it is gone down to
// once more, more finely than a fit that only has to end; and a place below it makes the study begin anew
// from there.

#include "workspace/records/Workspace.h"

#include <functional>
#include <optional>
#include <string>

namespace Quillon {

// The minimum, in an analysis that fits finely.
struct ProfileBase {
    Workspace Fit;
    double SumSq = 0.0;
    long Freedom = 0; // points less fitted parameters
};

// The sum below which a place lies lower than a minimum by more than iterations may rest above one.
double SumClearlyBelow(double minimumSumSq, long freedom);

// True where a sum is clearly below that of the base.
bool IsLower(const ProfileBase& base, double sumSq);

// A study from a base. It hands back the parameters of a place that is lower, for another one from there,
// internal scale; nothing where it has ended. last says that there will be no other one.
using StudyFromBase = std::function<std::optional<PerSlot<float>>(const ProfileBase& base, bool last)>;

// Runs a study from the minimum of the fit that stands in Work, and anew from each lower one that it meets.
// Hands back the base of the last one; nothing after a cancel and where the sums cannot be computed, and
// broken is then why, "" after a cancel. better becomes a lower minimum as a fit that the user may take, and
// stays otherwise as it is. Work stays as it is.
std::optional<ProfileBase> WithBestBase(std::optional<Workspace>& better, std::string& broken,
                                        const StudyFromBase& study);

} // namespace Quillon
