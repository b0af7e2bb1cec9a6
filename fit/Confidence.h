#pragma once
// Rigorous confidence limits: a walk from the best fit along the principal axes of the error ellipsoid until
// the sum of squares has grown by the ratio that the F statistic allows. The limits bound the joint region
// of all fitted parameters along its axes.

#include "workspace/records/Counts.h"

#include <functional>
#include <string>

namespace Quillon {

// 1 + (NumFree / df) * F(NumFree, df, 1 - p), df = NumPts - NumFree, p = level (0..1, ends excluded), into
// Work.ConfidenceRatio.
void ComputeConfidenceRatio(float level);

// What stands in Work.ParmLimits for a limit that was not found, above any parameter; with a minus for a
// lower one.
inline constexpr float NoLimit = 1e38F;

// True when the limit of a free position on that side was found.
bool LimitFound(FreePos freePosition, bool upper);

// How a search has ended.
struct LimitsOutcome {
    std::string Failure; // in words; empty with limits, and after a cancel
};

// The whole search, at Work.ConfidenceLevel. Fills ParmLimits and LimitsLevel and sets LimitsDone. A
// direction without an end (the sum of squares never grows enough, or the function has no value before it
// does) leaves NoLimit for the parameters whose limit rests on it, with the reason in LimitReason, and the
// search goes on; when no direction has an end, the search has failed. Then, and after a cancel (AbortFit),
// LimitsDone is 0. The fit is as before afterwards. progress is told the fraction of end points done. The
// caller tells the failure.
LimitsOutcome ConfidenceSearch(const std::function<void(double fraction)>& progress);

// One root search on the step length along the present Increment: where SumSq reaches target times its value
// at the best fit, a step without a sum counting as far beyond. Leaves Parms at the end point; 0 when
// cancelled; a RuntimeError without a root.
float FindRatioRoot(float guess, float target);

} // namespace Quillon
