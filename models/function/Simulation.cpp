#include "models/function/Simulation.h"

#include "models/function/FitFunction.h"
#include "models/function/Random.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <limits>
#include <utility>

namespace Quillon {

namespace {

// The fitted function at a point; what no single can hold is a fault like any other.
float SignalAt(long point) {
    const double signal = FitFunction(point);
    if (std::fabs(signal) <= static_cast<double>(std::numeric_limits<float>::max()))
        return static_cast<float>(signal);
    NoteFunctionError(ErrorText::Overflow);
    return 0.0F;
}

} // namespace

bool SimulateSignals(OneBased<float>& values) {
    FitOutcome former = Work.Outcome;
    ForgetStop();
    ResetFitFunction();
    values.Recreate(Work.NumPts);
    for (long p = 1; p <= Work.NumPts && !Work.AbortFit; ++p)
        values[p] = SignalAt(p);
    ResetFitFunction(); // what it keeps belongs to these points and parameters
    if (!Work.AbortFit) return true;
    Work.FunctionFailed = FlagFalse; // what the fitted function says of a fault is said of no fit
    Work.Outcome = std::move(former);
    return false;
}

void AddNoise(OneBased<float>& values, double level) {
    if (level == 0.0) return;
    RestartRandom();
    std::int16_t seed = 1;
    for (long p = 1; p <= values.Hi(); ++p)
        if (!IsPseudoPoint(p))
            values[p] = ToSingle(static_cast<double>(values[p]) + GaussianNoise(seed) * level);
}

} // namespace Quillon
