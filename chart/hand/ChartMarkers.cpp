// The vertical markers over the graph.
#include "chart/hand/ChartMarkers.h"

#include "chart/hand/Charts.h"
#include "chart/hand/Reading.h"
#include "chart/hand/Redraw.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Mapping.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cstdlib>

namespace Quillon {

namespace {

constexpr int LeftArrow = 37, UpArrow = 38, RightArrow = 39, DownArrow = 40;
constexpr int CtrlDown = 2;
constexpr int LargeMove = 10; // units

double Divisor() {
    return DrawDivisor(Chart.Spec.AxisX1, Chart.LoadFactorX);
}

int Within(int x) {
    return std::clamp<int>(x, Chart.Spec.Frame.X1, std::max(Chart.Spec.Frame.X1, Chart.Spec.Frame.X2));
}

// Where a marker stands by its X.
int PlaceOf(const ChartMarker& m) {
    return Within(DeviceX(static_cast<double>(m.X) / Divisor()));
}

int PlaceOf(int index) {
    return Charts.Markers[static_cast<std::size_t>(index)].Device;
}

int Count() {
    return static_cast<int>(Charts.Markers.size());
}

void TellPlace(const ChartMarker& m) {
    Charts.StatusLine.Text = "Marker at X = " + AxisReading(true, static_cast<double>(m.X) / Divisor());
}

// Moves a marker; one that would come to or past a neighbour stands a unit from it, but within the frame.
void MoveMarker(int i, int x) {
    int place = Within(x);
    bool stopped = false;
    if (i > 0 && place <= PlaceOf(i - 1)) {
        place = PlaceOf(i - 1) + 1;
        stopped = true;
    }
    if (i + 1 < Count() && place >= PlaceOf(i + 1)) {
        place = PlaceOf(i + 1) - 1;
        stopped = true;
    }
    if (stopped) Host.Beep();
    place = Within(place);
    SetFrameMapping();
    const double x1 = AxisXAt(place);
    ChartMarker& m = Charts.Markers[static_cast<std::size_t>(i)];
    if (place != m.Device) { // else it keeps its X, which may lie outside the scale
        m.Device = place;
        m.X = FiniteSingle(x1 * Divisor());
    }
    TellPlace(m);
    if (Charts.OnMarkers) Charts.OnMarkers();
}

void PlacePoint(PalePoint& point) {
    const GraphBox& frame = Chart.Spec.Frame;
    const int x = DeviceX(static_cast<double>(point.X) / Divisor());
    const int y = DeviceY(static_cast<double>(point.Y) / DrawDivisor(Chart.Spec.AxisY1, Chart.LoadFactorY));
    const bool inside = x >= frame.X1 && x <= frame.X2 && y >= frame.Y1 && y <= frame.Y2;
    point.DeviceX = inside ? x : -1;
    point.DeviceY = inside ? y : -1;
}

} // namespace

void PlaceMarkers(float first, float second) {
    Charts.Markers.assign(2, ChartMarker{});
    Charts.Markers[0].X = first;
    Charts.Markers[1].X = second;
    Charts.ZoomState = 2;
    Charts.ActiveMarker = 0;
    RepositionMarkers();
}

void RemoveMarkers() {
    Charts.Markers.clear();
    Charts.ZoomState = 0;
    Charts.CapturedMarker = -1;
    Charts.ActiveMarker = 0;
}

// A marker that was not moved keeps its X to the last digit.
void RecordMarkers() {
    SetFrameMapping();
    for (ChartMarker& m : Charts.Markers)
        if (m.Device != PlaceOf(m)) m.X = FiniteSingle(AxisXAt(m.Device) * Divisor());
}

void RepositionMarkers() {
    SetFrameMapping();
    for (PalePoint& point : Charts.PalePoints)
        PlacePoint(point);
    for (ChartMarker& m : Charts.Markers)
        m.Device = PlaceOf(m);
    if (Charts.OnMarkers) Charts.OnMarkers();
}

int MarkerAt(int x, int y, int reach) {
    const GraphBox& frame = Chart.Spec.Frame;
    if (y < frame.Y1 || y > frame.Y2) return -1;
    const bool lastHasRoom = 2 * x < frame.X1 + frame.X2;
    int found = -1;
    int nearest = reach;
    for (int i = 0; i < Count(); ++i) {
        const int distance = std::abs(PlaceOf(i) - x);
        if (distance > nearest || (found >= 0 && distance == nearest && !lastHasRoom)) continue;
        found = i;
        nearest = distance;
    }
    return found;
}

void MarkerMouseDown(int index) {
    if (index < 0 || index >= Count() || !GraphMayChange()) return;
    Charts.CapturedMarker = Charts.ActiveMarker = index;
    Charts.MarkerGroup = {};
}

bool MarkerPressed(int x, int y, int reach) {
    const int index = MarkerAt(x, y, reach);
    if (index < 0) return false;
    MarkerMouseDown(index);
    int first = index;
    int last = index;
    while (first > 0 && std::abs(PlaceOf(first - 1) - x) <= reach)
        --first;
    while (last + 1 < Count() && std::abs(PlaceOf(last + 1) - x) <= reach)
        ++last;
    if (first < last) Charts.MarkerGroup = {first, last, x};
    return true;
}

void MarkerMouseMove(int x) {
    auto& group = Charts.MarkerGroup;
    if (Charts.CapturedMarker >= 0 && group.First < group.Last) {
        if (x == group.PressX) return;
        MarkerMouseDown(x < group.PressX ? group.First : group.Last);
    }
    const int i = Charts.CapturedMarker;
    if (i >= 0 && i < Count() && GraphMayChange()) MoveMarker(i, x);
}

void MarkerMouseUp() {
    Charts.CapturedMarker = -1;
    Charts.MarkerGroup = {};
}

void MarkerKey(int code, int shift) {
    if (Charts.ActiveMarker < 0 || Charts.ActiveMarker >= Count() || !GraphMayChange()) return;
    const int step = shift & CtrlDown ? LargeMove : 1;
    switch (code) {
    case LeftArrow:
        return MoveMarker(Charts.ActiveMarker, PlaceOf(Charts.ActiveMarker) - step);
    case RightArrow:
        return MoveMarker(Charts.ActiveMarker, PlaceOf(Charts.ActiveMarker) + step);
    case UpArrow:
        Charts.ActiveMarker = (Charts.ActiveMarker + Count() - 1) % Count();
        break;
    case DownArrow:
        Charts.ActiveMarker = (Charts.ActiveMarker + 1) % Count();
        break;
    default:
        return;
    }
    TellPlace(Charts.Markers[static_cast<std::size_t>(Charts.ActiveMarker)]);
}

} // namespace Quillon
