#include "chart/hand/KeptZoom.h"

#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/records/ChartState.h"
#include "chart/scale/AxisScale.h"
#include "platform/Narrow.h"

#include <algorithm>

namespace Quillon {

namespace {

// firstLow, firstHigh: the limits before the first zoom.
ZoomedAxis PartOf(const GraphAxis& axis, float loadFactor, float firstLow, float firstHigh) {
    const double divisor = DrawDivisor(axis, loadFactor);
    return {axis.Min != firstLow || axis.Max != firstHigh,
            axis.Title.Text.Str(),
            axis.ScaleType,
            axis.LogBase,
            static_cast<double>(axis.Min) * divisor,
            static_cast<double>(axis.Max) * divisor};
}

bool IsSameAxis(const ZoomedAxis& former, const GraphAxis& axis) {
    const bool log = axis.ScaleType == ScaleTypes::Logarithmic;
    return former.Title == axis.Title.Text.Str() && former.ScaleType == axis.ScaleType &&
           (!log || former.LogBase == axis.LogBase);
}

// False where the former part is none of this axis, or shows nothing of the graph.
bool Take(const ZoomedAxis& former, const GraphAxis& axis, float loadFactor, float& low, float& high) {
    if (!former.Zoomed || !IsSameAxis(former, axis)) return false;
    const double divisor = DrawDivisor(axis, loadFactor);
    const double first = former.Low / divisor, second = former.High / divisor;
    const double one = low, other = high;
    const double begin = std::max(std::min(first, second), std::min(one, other));
    const double end = std::min(std::max(first, second), std::max(one, other));
    if (begin >= end) return false;
    low = FiniteSingle(first);
    high = FiniteSingle(second);
    return true;
}

} // namespace

KeptZoom ZoomAtHand() {
    const ZoomStack& zooms = Charts.Zooms;
    const long first = zooms.ZoomDepth;
    if (first < 1 || Chart.GraphHeld == 0) return {};
    const GraphSpec& spec = Chart.Spec;
    return {PartOf(spec.AxisX1, Chart.LoadFactorX, zooms.XMin[first], zooms.XMax[first]),
            PartOf(spec.AxisY1, Chart.LoadFactorY, zooms.YMin[first], zooms.YMax[first])};
}

void ZoomAgain(const KeptZoom& former) {
    if (!GraphMayChange()) return;
    const GraphSpec& spec = Chart.Spec;
    ChartScale scale = PresentScale();
    const bool x = Chart.State.KindX == AxisKinds::Value &&
                   Take(former.X, spec.AxisX1, Chart.LoadFactorX, scale.XMin, scale.XMax);
    const bool y = Chart.State.KindY == AxisKinds::Value &&
                   Take(former.Y, spec.AxisY1, Chart.LoadFactorY, scale.YMin, scale.YMax);
    if (x || y) MoveScale(scale, false);
}

} // namespace Quillon
