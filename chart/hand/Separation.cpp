// Separation of data sets: each set is shifted by its own amount.
#include "chart/hand/Separation.h"

#include "chart/draw/DrawGraph.h"
#include "chart/layout/Layout.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/records/SetTable.h"

#include <cmath>

namespace Quillon {

namespace {

// Shifts the values of a set. What leaves the range of a single is missing.
void ShiftSet(SetTable& data, long set, float shift) {
    for (long point = 1; point <= data.Points(); ++point) {
        float& value = data(point, set);
        if (value == MissingValue) continue;
        value += shift;
        if (!std::isfinite(value)) value = MissingValue;
    }
}

} // namespace

int SeparationCount() {
    const bool pairs =
        Chart.Spec.GraphType == GraphTypes::XYPlot && Chart.Spec.PlotStyle == PlotStyles::Alternating;
    return pairs ? Chart.State.Nsets / 2 : Chart.State.Nsets;
}

void ApplySeparation() {
    const bool pairs =
        Chart.Spec.GraphType == GraphTypes::XYPlot && Chart.Spec.PlotStyle == PlotStyles::Alternating;
    for (long set = 1; set <= Chart.DataX.Sets(); ++set) {
        const long place = pairs ? (set + 1) / 2 : set;
        if (place > Chart.SetShift.Hi()) break;
        const float shift = Chart.SetShift[place];
        if (Chart.SeparateMode != 2) ShiftSet(Chart.DataX, set, shift);
        if (Chart.SeparateMode != 1) ShiftSet(Chart.DataY, set, shift);
    }
    Replot();
    ShowGraph();
}

} // namespace Quillon
