#include "tests/support/ReferenceCheck.h"

#include <cmath>
#include <cstdio>

namespace Quillon {
namespace {

void Note(WorstDeviation& worst, const Workspace& w, long point, long slot, double got, Real expected,
          Real allowed) {
    const Real off = std::abs(got - expected);
    const double excess = std::isfinite(got) ? static_cast<double>(off / allowed) : HUGE_VAL;
    if (!(excess > worst.Excess)) return;
    worst.Excess = excess;
    char text[200];
    std::snprintf(text, sizeof text,
                  "point %ld of set %d, slot %ld: got %.17g, expected %.19Lg, allowed +-%.3Lg", point,
                  w.PtSet[point], slot, got, expected, allowed);
    worst.Where = text;
}

} // namespace

Real SizeOfPoint(const Workspace& w, const RealVector& parms, long point, Real value) {
    const bool pseudo = w.PtX[point] == PointMarker;
    const Real offset = pseudo ? 0 : parms[static_cast<std::size_t>(SlotOffset(w.PtSet[point]))];
    return std::abs(value) + 2 * std::abs(offset);
}

WorstDeviation CheckValues(const Workspace& w, const std::function<double(long point)>& function,
                           double accuracy) {
    const RealVector parms = ReferenceParms(w);
    const RealVector expected = ReferenceValues(w, parms);
    WorstDeviation worst;
    for (long point = 1; point <= w.NumPts; ++point) {
        const Real value = expected[static_cast<std::size_t>(point - 1)];
        Note(worst, w, point, -1, function(point), value,
             Real(accuracy) * SizeOfPoint(w, parms, point, value));
    }
    return worst;
}

WorstDeviation CheckDerivs(const Workspace& w, const std::function<const double*(long point)>& derivs,
                           double accuracy) {
    const RealVector parms = ReferenceParms(w);
    const RealVector values = ReferenceValues(w, parms);
    // A sum of parameter and step that lies between two singles may be rounded once or twice.
    const RealMatrix once = ReferenceForwardDifferences(w, parms, StepStorage::SingleSum);
    const RealMatrix twice = ReferenceForwardDifferences(w, parms, StepStorage::SingleAddition);
    WorstDeviation worst;
    for (long point = 1; point <= w.NumPts; ++point) {
        const double* got = derivs(point);
        const auto row = static_cast<std::size_t>(point - 1);
        const Real size = SizeOfPoint(w, parms, point, values[row]);
        for (long k = 0; k < w.NumFree; ++k) {
            const long slot = w.FreeIndex[k];
            const auto column = static_cast<std::size_t>(k);
            const Real h = ReferenceStep(w.Model, slot, parms[static_cast<std::size_t>(slot)]);
            const Real a = once(row, column), b = twice(row, column);
            const Real expected = std::abs(got[k] - a) <= std::abs(got[k] - b) ? a : b;
            const Real size2 = 2 * size + std::abs(expected * h);
            Note(worst, w, point, slot, got[k], expected, Real(accuracy) * size2 / std::abs(h));
        }
    }
    return worst;
}

} // namespace Quillon
