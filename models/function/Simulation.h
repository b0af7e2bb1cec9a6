#pragma once
// What the model gives at the points of the fit, with or without noise.

#include "platform/Arrays.h"

namespace Quillon {

// The fitted function at all points of the fit at the current Work.Parms, pseudo-points of constraints
// included. False after an arithmetic fault, which the caller tells (ModelFaultText, fit/Fault.h);
// Work.AbortFit is set then.
bool SimulateSignals(OneBased<float>& values);

// Adds normal deviates of a standard deviation, in signal units, to the true points. Each call starts the
// generator afresh, as the seam seeds it. A level of 0 adds nothing and draws nothing.
void AddNoise(OneBased<float>& values, double level);

} // namespace Quillon
