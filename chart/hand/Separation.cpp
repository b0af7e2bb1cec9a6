// Separation of data sets: each set is shifted by its own amount.
#include "chart/hand/Separation.h"

#include "chart/draw/DrawGraph.h"
#include "chart/hand/ChartMarkers.h"
#include "chart/hand/ChartScale.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/layout/Layout.h"
#include "chart/records/ChartState.h"
#include "chart/records/SetTable.h"
#include "chart/scale/AxisScale.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// What leaves the range of a single is missing.
void ShiftSet(const SetTable& from, long set, double shift, SetTable& to) {
    for (long point = 1; point <= from.Points(); ++point) {
        const float value = from(point, set);
        const auto moved = static_cast<float>(static_cast<double>(value) + shift);
        to(point, set) = value == MissingValue || !std::isfinite(moved) ? MissingValue : moved;
    }
}

bool IsNothing(const OneBased<double>& shift) {
    return std::all_of(shift.begin(), shift.end(), [](double amount) { return amount == 0.0; });
}

void TakeBack(SetTable& data, ColumnsBefore& before) {
    data = std::move(before.Unshifted);
    before.Unshifted = {};
    before.Shift.Recreate(0);
}

// Along one axis, whose units are `unit` stored ones.
void ShiftColumns(SetTable& data, ColumnsBefore& before, const OneBased<float>& amounts, double unit) {
    if (!IsShifted(before)) {
        before.Unshifted = data;
        before.Shift.Recreate(data.Sets());
    }
    for (long set = 1; set <= data.Sets(); ++set) {
        const long place = SeparatesPairs() ? (set + 1) / 2 : set;
        if (place > amounts.Hi()) break;
        before.Shift[set] += static_cast<double>(amounts[place]) * unit;
        ShiftSet(before.Unshifted, set, before.Shift[set], data);
    }
    if (IsNothing(before.Shift)) TakeBack(data, before);
}

void ScaleAfresh(GraphAxis& axis) {
    if (axis.ScaleMode != ScaleModes::Prescaled) axis.ScaleMode = ScaleModes::Autorange;
}

// The kept zooms lead back to all of the shifted sets, and along the other axis to where they led before.
void WidenZooms(bool x, bool y) {
    const ChartScale full = PresentScale();
    ZoomStack& zooms = Charts.Zooms;
    for (int i = 1; i <= ZoomStack::Deepest; ++i) {
        if (x) {
            zooms.XMin[i] = full.XMin;
            zooms.XMax[i] = full.XMax;
        }
        if (y) {
            zooms.YMin[i] = full.YMin;
            zooms.YMax[i] = full.YMax;
        }
    }
}

// x, y: the axes along which sets have moved.
void ShowSeparated(bool x, bool y) {
    SuitSpecialOptions();
    RecordMarkers();
    Replot();
    WidenZooms(x, y);
    ShowGraph();
    RepositionMarkers();
}

} // namespace

bool SeparatesPairs() {
    return Chart.Spec.GraphType == GraphTypes::XYPlot && Chart.Spec.PlotStyle == PlotStyles::Alternating;
}

int SeparationCount() {
    return SeparatesPairs() ? Chart.State.Nsets / 2 : Chart.State.Nsets;
}

void SeparateBy(const OneBased<float>& alongX, const OneBased<float>& alongY) {
    GraphSpec& spec = Chart.Spec;
    if (!alongX.Empty()) {
        ShiftColumns(Chart.DataX, Chart.Columns.X, alongX, DrawDivisor(spec.AxisX1, Chart.LoadFactorX));
        ScaleAfresh(spec.AxisX1);
    }
    if (!alongY.Empty()) {
        ShiftColumns(Chart.DataY, Chart.Columns.Y, alongY, DrawDivisor(spec.AxisY1, Chart.LoadFactorY));
        ScaleAfresh(spec.AxisY1);
    }
    ShowSeparated(!alongX.Empty(), !alongY.Empty());
}

void ApplySeparation() {
    static const OneBased<float> none;
    SeparateBy(Chart.SeparateMode != SeparateModes::AlongY ? Chart.SetShift : none,
               Chart.SeparateMode != SeparateModes::AlongX ? Chart.SetShift : none);
}

bool IsSeparated(std::int16_t mode) {
    return (mode != SeparateModes::AlongY && IsShifted(Chart.Columns.X)) ||
           (mode != SeparateModes::AlongX && IsShifted(Chart.Columns.Y));
}

void TakeBackSeparation(std::int16_t mode) {
    const bool x = mode != SeparateModes::AlongY && IsShifted(Chart.Columns.X);
    const bool y = mode != SeparateModes::AlongX && IsShifted(Chart.Columns.Y);
    if (x) {
        TakeBack(Chart.DataX, Chart.Columns.X);
        ScaleAfresh(Chart.Spec.AxisX1);
    }
    if (y) {
        TakeBack(Chart.DataY, Chart.Columns.Y);
        ScaleAfresh(Chart.Spec.AxisY1);
    }
    ShowSeparated(x, y);
}

} // namespace Quillon
