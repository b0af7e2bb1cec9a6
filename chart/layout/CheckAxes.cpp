#include "chart/layout/CheckAxes.h"

#include "chart/layout/Layout.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"

#include <cmath>

namespace Quillon {

namespace {

void CheckAxis(GraphAxis& axis) {
    const bool usable = std::isfinite(axis.LogBase) && axis.LogBase > 0.0F && axis.LogBase != 1.0F;
    if (axis.ScaleType == ScaleTypes::Logarithmic && !usable) {
        axis.LogBase = 10.0F;
        WarnInStatus(GraphStatuses::BadLogBase);
    }
    if (axis.Min == axis.Max || !std::isfinite(axis.Min) || !std::isfinite(axis.Max))
        axis.ScaleMode = ScaleModes::Autorange;
    if (axis.ScaleMode == ScaleModes::Manual && (axis.Factor == 0.0F || !std::isfinite(axis.Factor))) {
        axis.Factor = 1.0F;
        WarnInStatus(GraphStatuses::ZeroFactor);
    }
}

// A pie has values but no scale.
void CheckPie(GraphSpec& spec) {
    spec.AxisY1.ScaleMode = ScaleModes::Manual;
    spec.AxisY1.ScaleType = ScaleTypes::Linear;
}

} // namespace

void WarnInStatus(std::int16_t code) {
    if (Chart.GraphStatus < GraphStatuses::Stop) Chart.GraphStatus = code;
}

void CheckAxes(GraphSpec& spec) {
    if (spec.GraphType == GraphTypes::Pie) return CheckPie(spec);
    for (int place = BottomAxis; place <= RightAxis; ++place)
        CheckAxis(AxisOf(spec, place));
}

} // namespace Quillon
