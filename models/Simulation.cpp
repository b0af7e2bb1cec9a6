#include "models/Simulation.h"

#include "models/FitFunction.h"
#include "models/Random.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

bool SimulateSignals(OneBased<float>& values) {
    ResetFitFunction();
    values.Recreate(Work.NumPts);
    for (long p = 1; p <= Work.NumPts && !Work.AbortFit; ++p)
        values[p] = ToSingle(FitFunction(p));
    ResetFitFunction(); // what it keeps belongs to these points and parameters
    return !Work.AbortFit;
}

void AddNoise(OneBased<float>& values, double level) {
    if (level == 0.0) return;
    RestartRandom();
    std::int16_t seed = 1;
    for (long p = 1; p <= values.Hi(); ++p)
        if (Work.PtX[p] != PointMarker)
            values[p] = ToSingle(static_cast<double>(values[p]) + GaussianNoise(seed) * level);
}

} // namespace Quillon
