// Pointer and keys on the graph.
#include "chart/hand/ChartMouse.h"

#include "chart/hand/ChartMarkers.h"
#include "chart/hand/ChartScale.h"
#include "chart/hand/ChartWheel.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Reading.h"
#include "chart/hand/Redraw.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/records/SetTable.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Mapping.h"
#include "input/NUMINPUT.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace Quillon {

namespace {

constexpr int MiddleButton = 4;
constexpr int ClickSize = 8;        // a rubber band no larger than this in both directions was a click
constexpr double PointReach = 15.0; // points (1/72 inch) within which an exact reading takes a data point

bool InFrame(int x, int y) {
    const GraphBox& f = Chart.Spec.Frame;
    return x >= f.X1 && x <= f.X2 && y >= f.Y1 && y <= f.Y2;
}

// The value at a place of the frame, in axis units.
float ScaleX(int x) {
    return Chart.XScale == 0.0 ? MissingValue : FiniteSingle(AxisXAt(x));
}
float ScaleY(int y) {
    return Chart.YScale == 0.0 ? MissingValue : FiniteSingle(AxisYAt(y));
}

// What a reading has at a place: nothing along an axis of categories.
float ReadX(int x) {
    return Chart.State.KindX == AxisKinds::Value ? ScaleX(x) : MissingValue;
}
float ReadY(int y) {
    return Chart.State.KindY == AxisKinds::Value ? ScaleY(y) : MissingValue;
}

// "X = 1, Y = 2", without what is missing.
template <class Write> std::string Position(float x, float y, Write&& write) {
    std::string text;
    if (x != MissingValue) text = "X = " + write(Chart.Spec.AxisX1, x);
    if (y != MissingValue) text += (text.empty() ? "Y = " : ", Y = ") + write(Chart.Spec.AxisY1, y);
    return text;
}

// All digits that a single holds; on a log10 axis those of the number itself.
std::string FullText(const GraphAxis& axis, float value) {
    std::string text =
        SingleText(IsLog10(axis) ? FiniteSingle(std::pow(10.0, static_cast<double>(value))) : value);
    std::replace(text.begin(), text.end(), '.', Host.DecimalMark());
    return text;
}

// A point of the data that can be seen.
struct SeenPoint {
    long Point = 0, Set = 0; // 0 for none
    float X{}, Y{};          // axis units
};

// The point nearest to a place, of those within the frame and the reach.
SeenPoint NearestPoint(int x, int y) {
    const double divisorX = DrawDivisor(Chart.Spec.AxisX1, Chart.LoadFactorX);
    const double divisorY = DrawDivisor(Chart.Spec.AxisY1, Chart.LoadFactorY);
    double best = PointReach * 20.0 * static_cast<double>(Chart.PixY); // 20 twips are a point
    SeenPoint nearest;
    for (long set = 1; set <= Chart.DataY.Sets(); ++set)
        for (long point = 1; point <= Chart.DataY.Points(); ++point) {
            if (Chart.DataX(point, set) == MissingValue || Chart.DataY(point, set) == MissingValue) continue;
            const double valueX = static_cast<double>(Chart.DataX(point, set)) / divisorX;
            const double valueY = static_cast<double>(Chart.DataY(point, set)) / divisorY;
            const double distance = std::hypot(MapX(valueX) - x, MapY(valueY) - y);
            if (distance >= best || !InFrame(DeviceX(valueX), DeviceY(valueY))) continue;
            best = distance;
            nearest = {point, set, FiniteSingle(valueX), FiniteSingle(valueY)};
        }
    return nearest;
}

std::string NameOf(long set) {
    const bool named = set >= 1 && set <= Chart.SetNames.Hi() && !Chart.SetNames[set].empty();
    return named ? " (" + Chart.SetNames[set] + ")" : "";
}

void ReadExactly(int x, int y) {
    if (!Charts.ShowCursor.Checked) return;
    SetFrameMapping();
    SeenPoint at;
    if (Chart.State.KindX == AxisKinds::Value) at = NearestPoint(x, y);
    if (at.Point == 0) at = {0, 0, ReadX(x), ReadY(y)};
    Charts.StatusLine.Text = "Exactly at " + Position(at.X, at.Y, FullText) + NameOf(at.Set);
}

void ReadCursor(int x, int y) {
    if (!Charts.ShowCursor.Checked || !Chart.GraphDrawn) return;
    SetFrameMapping();
    ShowCursorText(ReadX(x), ReadY(y));
}

// The scale that a rubber band names. Along a direction in which it has no length the scale stays.
ChartScale ScaleOfBand() {
    SetFrameMapping();
    ChartScale scale = PresentScale();
    const auto [left, right] = std::minmax(Charts.ZoomX1, Charts.LastX);
    const auto [top, bottom] = std::minmax(Charts.ZoomY1, Charts.LastY);
    if (left < right) scale.XMin = ScaleX(left), scale.XMax = ScaleX(right);
    if (top < bottom) scale.YMin = ScaleY(bottom), scale.YMax = ScaleY(top);
    return scale;
}

void FollowPointer(int x, int y) {
    const GraphBox& f = Chart.Spec.Frame;
    Charts.LastX = std::clamp<int>(x, f.X1, std::max(f.X1, f.X2));
    Charts.LastY = std::clamp<int>(y, f.Y1, std::max(f.Y1, f.Y2));
}

// A point under the pointer lies within the box of a click.
void GiveShiftBox(bool click) {
    SetFrameMapping();
    const auto [left, right] = std::minmax(Charts.ZoomX1, Charts.LastX);
    const auto [top, bottom] = std::minmax(Charts.ZoomY1, Charts.LastY);
    const double x = DrawDivisor(Chart.Spec.AxisX1, Chart.LoadFactorX);
    const double y = DrawDivisor(Chart.Spec.AxisY1, Chart.LoadFactorY);
    const int reach = click ? ClickSize / 2 : 0;
    const auto stored = [](float value, double divisor) {
        return FiniteSingle(static_cast<double>(value) * divisor);
    };
    Charts.OnShiftBox({stored(ScaleX(left - reach), x), stored(ScaleX(right + reach), x),
                       stored(ScaleY(bottom + reach), y), stored(ScaleY(top - reach), y)});
}

} // namespace

void ShowCursorText(float x, float y) {
    Charts.StatusLine.Text =
        "Cursor at " + Position(x, y, RoundedText) + "; right mouse reads exact position";
}

void ChartMouseDown(int x, int y, int button, bool shift) {
    EndDrag(); // one whose end was lost
    if (button == MiddleButton && BeginDrag(x, y)) return;
    if (!GraphMayChange() || !InFrame(x, y)) return;
    if (button != 1) return ReadExactly(x, y);
    Charts.ZoomX1 = Charts.LastX = x;
    Charts.ZoomY1 = Charts.LastY = y;
    Charts.Zooming = true;
    Charts.ShiftBox = shift && Charts.OnShiftBox;
}

void ChartMouseMove(int x, int y, int) {
    if (!GraphMayChange()) return;
    if (Charts.CapturedMarker >= 0) return MarkerMouseMove(x);
    if (Charts.Drag.On) return DragTo(x, y);
    FollowPointer(x, y);
    if (!Charts.Zooming && InFrame(x, y)) ReadCursor(x, y);
}

void ChartMouseUp(int x, int y, int button) {
    if (button == MiddleButton && Charts.Drag.On) {
        const bool click = !EndDrag() && GraphMayChange() && InFrame(x, y);
        return click ? ReadExactly(x, y) : void();
    }
    if (button != 1 || !Charts.Zooming) return;
    Charts.Zooming = false;
    if (!GraphMayChange()) return;
    FollowPointer(x, y);
    const bool click = std::abs(Charts.LastX - Charts.ZoomX1) <= ClickSize &&
                       std::abs(Charts.LastY - Charts.ZoomY1) <= ClickSize;
    if (std::exchange(Charts.ShiftBox, false)) return GiveShiftBox(click);
    if (click) return;
    ZoomTo(ScaleOfBand());
}

void ChartKey(int code, int shift) {
    Charts.KeyCode = ToInt16(code);
    Charts.KeyShift = ToInt16(shift);
    if (code == KeyEscape && Charts.Zooming) {
        Charts.Zooming = false;
        return;
    }
    if (code == KeyEscape && Charts.Drag.On) return DropDrag();
    if (code == KeyEscape) SetChartCancelled(true);
    MarkerKey(code, shift);
    if (Charts.EndsOnKey && Charts.EndsOnKey(code, shift)) Charts.Shown = false;
}

} // namespace Quillon
