#include "chart/hand/ChartWheel.h"

#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/pens/HatchLines.h"
#include "chart/records/ChartState.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Mapping.h"
#include "platform/Narrow.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace Quillon {

namespace {

constexpr double Nearer = 1.25;      // what a notch does
constexpr double MostNotches = 10.0; // in one turn
constexpr int MiddleClickSize = 4;   // moves no farther than this are none

struct Axes {
    bool X = false, Y = false;
};

Axes AxesAt(int x, int y) {
    const GraphBox& f = Chart.Spec.Frame;
    const bool across = x >= f.X1 && x <= f.X2, upright = y >= f.Y1 && y <= f.Y2;
    return {across && Chart.State.KindX == AxisKinds::Value && Chart.XScale != 0.0,
            upright && Chart.State.KindY == AxisKinds::Value && Chart.YScale != 0.0};
}

bool IsFree() {
    return GraphMayChange() && !Charts.Zooming && Charts.CapturedMarker < 0;
}

// Ends that a single tells apart, with room for the tics between them; those of a logarithmic scale stand for
// numbers that are singles.
bool IsScale(const GraphAxis& axis, double low, double high) {
    const double largest = std::max(std::fabs(low), std::fabs(high));
    const double most = axis.ScaleType == ScaleTypes::Logarithmic
                            ? 37.0 / std::log10(static_cast<double>(axis.LogBase))
                            : 1e30;
    return std::fabs(high - low) > 1e-5 * largest && largest < most;
}

// The scale about a place that stays where it is; unchanged where it cannot be.
void Stretch(const GraphAxis& axis, double place, double factor, float& low, float& high) {
    const double newLow = place + (static_cast<double>(low) - place) * factor;
    const double newHigh = place + (static_cast<double>(high) - place) * factor;
    if (!IsScale(axis, newLow, newHigh)) return;
    low = ToSingle(newLow);
    high = ToSingle(newHigh);
}

void Shift(const GraphAxis& axis, double by, float& low, float& high) {
    const double newLow = static_cast<double>(low) + by, newHigh = static_cast<double>(high) + by;
    if (!IsScale(axis, newLow, newHigh)) return;
    low = ToSingle(newLow);
    high = ToSingle(newHigh);
}

// Labels of another width have moved the frame: the graph goes after it.
void BringBack(const Axes& axes, DevicePoint pointer, PlanePoint place) {
    SetFrameMapping();
    ChartScale scale = PresentScale();
    if (axes.X) Shift(Chart.Spec.AxisX1, place.X - AxisXAt(pointer.X), scale.XMin, scale.XMax);
    if (axes.Y) Shift(Chart.Spec.AxisY1, place.Y - AxisYAt(pointer.Y), scale.YMin, scale.YMax);
    MoveScale(scale, true);
}

} // namespace

void ChartWheel(int x, int y, double notches) {
    if (!IsFree() || Charts.Drag.On) return;
    SetFrameMapping();
    const Axes axes = AxesAt(x, y);
    const double factor = std::pow(Nearer, -std::clamp(notches, -MostNotches, MostNotches));
    const double placeX = AxisXAt(x), placeY = AxisYAt(y);
    const GraphBox frame = Chart.Spec.Frame;
    const ChartScale before = PresentScale();
    ChartScale scale = before;
    if (axes.X) Stretch(Chart.Spec.AxisX1, placeX, factor, scale.XMin, scale.XMax);
    if (axes.Y) Stretch(Chart.Spec.AxisY1, placeY, factor, scale.YMin, scale.YMax);
    if (scale == before) return;
    MoveScale(scale, Charts.LeftByWheel == before);
    if (!(Chart.Spec.Frame == frame)) BringBack(axes, {x, y}, {placeX, placeY});
    Charts.LeftByWheel = PresentScale();
}

bool BeginDrag(int x, int y) {
    if (!IsFree()) return false;
    SetFrameMapping();
    const Axes axes = AxesAt(x, y);
    if (!axes.X && !axes.Y) return false;
    Charts.Drag = {
        true,          false, x, y, axes.X ? 1.0 / Chart.XScale : 0.0, axes.Y ? 1.0 / Chart.YScale : 0.0,
        PresentScale()};
    return true;
}

// The scale goes against the pointer. All moves are reckoned from the press, so that nothing adds up.
void DragTo(int x, int y) {
    GraphDrag& drag = Charts.Drag;
    if (!drag.On || !IsFree()) return;
    if (!drag.Moved && std::abs(x - drag.X) <= MiddleClickSize && std::abs(y - drag.Y) <= MiddleClickSize)
        return;
    ChartScale scale = drag.Begin;
    Shift(Chart.Spec.AxisX1, (drag.X - x) * drag.UnitX, scale.XMin, scale.XMax);
    Shift(Chart.Spec.AxisY1, (drag.Y - y) * drag.UnitY, scale.YMin, scale.YMax);
    MoveScale(scale, std::exchange(drag.Moved, true));
}

bool EndDrag() {
    return std::exchange(Charts.Drag, {}).Moved;
}

void DropDrag() {
    if (EndDrag()) DoLastZoom();
}

} // namespace Quillon
