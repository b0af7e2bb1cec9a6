#include "chart/ChartMouse.h"

#include "chart/CHART.h"
#include "chart/FormatTic.h"
#include "chart/Layout.h"
#include "chart/Mapping.h"
#include "chart/Tics.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Quillon {

namespace {

constexpr int ClickSize = 8;    // a rubber band no larger than this in both directions was a click
constexpr int CursorDigits = 3; // digits that a reading has beyond the tic labels

bool InFrame(int x, int y) {
    const GraphBox& f = Chart.Spec.Frame;
    return x >= f.X1 && x <= f.X2 && y >= f.Y1 && y <= f.Y2;
}

std::string Reading(const GraphAxis& axis, double value) {
    Chart.Log10Axis = axis.ScaleType == ScaleTypes::Logarithmic && axis.LogBase == 10.0F ? -1 : 0;
    return FormatTic(value, axis.Decimals + CursorDigits, axis.TicFormat);
}

void ReadCursor(int x, int y, bool exact) {
    if (!Charts.ShowCursor.Checked || !Chart.GraphDrawn) return;
    SetFrameMapping();
    const std::string at =
        "X = " + Reading(Chart.Spec.AxisX1, AxisXAt(x)) + ", Y = " + Reading(Chart.Spec.AxisY1, AxisYAt(y));
    Charts.StatusLine.Text =
        exact ? "Exactly at " + at : "Cursor at " + at + "; right mouse reads exact position";
}

// The data point nearest to a device position, for the exact reading; false when there is none.
bool NearestPoint(int x, int y, long& point, long& set) {
    double best = 1e300;
    for (long s = 1; s <= Chart.State.Nsets; ++s)
        for (long i = 1; i <= Chart.State.Npts; ++i) {
            const float px = Chart.DataX(i, s);
            const float py = Chart.DataY(i, s);
            if (px == MissingValue || py == MissingValue) continue;
            const double dx = MapX(static_cast<double>(px)) - x;
            const double dy = MapY(static_cast<double>(py)) - y;
            if (dx * dx + dy * dy < best) {
                best = dx * dx + dy * dy;
                point = i;
                set = s;
            }
        }
    return best < 1e300;
}

void ReadExactly(int x, int y) {
    SetFrameMapping();
    long point = 0;
    long set = 0;
    if (!NearestPoint(x, y, point, set)) return;
    ReadCursor(DeviceX(static_cast<double>(Chart.DataX(point, set))),
               DeviceY(static_cast<double>(Chart.DataY(point, set))), true);
}

struct Scale {
    float XMin, XMax, YMin, YMax;
};
Scale PresentScale() {
    const GraphSpec& s = Chart.Spec;
    return {s.AxisX1.Min, s.AxisX1.Max, s.AxisY1.Min, s.AxisY1.Max};
}

void PushPresent() {
    const Scale s = PresentScale();
    PushZoom(s.XMin, s.XMax, s.YMin, s.YMax);
    Charts.LastZoom.Enabled = true;
}

void SetScale(const Scale& s) {
    GraphSpec& spec = Chart.Spec;
    spec.AxisX1.Min = spec.AxisX2.Min = s.XMin;
    spec.AxisX1.Max = spec.AxisX2.Max = s.XMax;
    spec.AxisY1.Min = spec.AxisY2.Min = s.YMin;
    spec.AxisY1.Max = spec.AxisY2.Max = s.YMax;
}

void SetModes(std::int16_t first, std::int16_t second) {
    Chart.Spec.AxisX1.ScaleMode = Chart.Spec.AxisY1.ScaleMode = first;
    Chart.Spec.AxisX2.ScaleMode = Chart.Spec.AxisY2.ScaleMode = second;
}

// A zoomed scale stands; tics that suit it are chosen without letting its limits be rounded.
void ChooseTicsWithin(const Scale& s) {
    SetModes(ScaleModes::Autorange, ScaleModes::Manual);
    ChooseTics();
    SetScale(s);
    for (GraphAxis* axis : {&Chart.Spec.AxisX1, &Chart.Spec.AxisY1}) {
        if (axis->TicInterval <= 0.0F || axis->ScaleType == ScaleTypes::Logarithmic) continue;
        axis->FirstTic = axis->TicInterval * std::ceil(axis->Min / axis->TicInterval);
    }
    SetModes(ScaleModes::Zoomed, ScaleModes::Manual);
}

void Show() {
    ShowGraph();
    RepositionMarkers();
}

void ApplyZoom(const Scale& s) {
    SetScale(s);
    SetModes(ScaleModes::Zoomed, ScaleModes::Manual);
    Replot();
    if (Charts.RoundOnZoom.Checked) {
        SetModes(ScaleModes::Autorange, ScaleModes::Manual);
        ChooseTics();
        SetModes(ScaleModes::Manual, ScaleModes::Manual);
        SetScale(PresentScale());
    } else {
        ChooseTicsWithin(s);
    }
    Show();
}

Scale ScaleOfBand(int x1, int y1, int x2, int y2) {
    SetFrameMapping();
    const int left = std::min(x1, x2);
    const int right = std::max(x1, x2);
    const int top = std::min(y1, y2);
    const int bottom = std::max(y1, y2);
    return {ToSingle(AxisXAt(left)), ToSingle(AxisXAt(right)), ToSingle(AxisYAt(bottom)),
            ToSingle(AxisYAt(top))};
}

void AutoScale(bool x, bool y) {
    if (!Chart.GraphHeld) return;
    RecordMarkers();
    PushPresent();
    const Scale before = PresentScale();
    if (x) Chart.Spec.AxisX1.ScaleMode = ScaleModes::Autorange;
    if (y) Chart.Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    if (!x) Chart.Spec.AxisX1.Min = before.XMin, Chart.Spec.AxisX1.Max = before.XMax;
    if (!y) Chart.Spec.AxisY1.Min = before.YMin, Chart.Spec.AxisY1.Max = before.YMax;
    Replot();
    Show();
}

int Clamp(int x) {
    return std::clamp<int>(x, Chart.Spec.Frame.X1, std::max(Chart.Spec.Frame.X1, Chart.Spec.Frame.X2));
}

} // namespace

void ChartMouseDown(int x, int y, int button) {
    if (!Chart.GraphHeld || !InFrame(x, y)) return;
    if (button != 1) return ReadExactly(x, y);
    Charts.ZoomX1 = Charts.LastX = x;
    Charts.ZoomY1 = Charts.LastY = y;
    Charts.Zooming = true;
}

void ChartMouseMove(int x, int y, int) {
    if (!Chart.GraphHeld) return;
    if (Charts.CapturedMarker >= 0) return MarkerMouseMove(x);
    const GraphBox& f = Chart.Spec.Frame;
    Charts.LastX = std::clamp<int>(x, f.X1, std::max(f.X1, f.X2));
    Charts.LastY = std::clamp<int>(y, f.Y1, std::max(f.Y1, f.Y2));
    if (!Charts.Zooming && InFrame(x, y)) ReadCursor(x, y, false);
}

void ChartMouseUp(int x, int y, int button) {
    if (button != 1 || !Charts.Zooming) return;
    ChartMouseMove(x, y, 0);
    Charts.Zooming = false;
    const bool click = std::abs(Charts.LastX - Charts.ZoomX1) <= ClickSize &&
                       std::abs(Charts.LastY - Charts.ZoomY1) <= ClickSize;
    if (click) return;
    const Scale s = ScaleOfBand(Charts.ZoomX1, Charts.ZoomY1, Charts.LastX, Charts.LastY);
    if (!(s.XMin < s.XMax) || !(s.YMin < s.YMax)) return; // a band without height or width names no scale
    RecordMarkers();
    PushPresent();
    ApplyZoom(s);
}

void ChartKey(int code, int shift) {
    Charts.KeyCode = ToInt16(code);
    Charts.KeyShift = ToInt16(shift);
    if (code == 27 && Seams.CancelFlag) *Seams.CancelFlag = FlagTrue;
    if (Charts.EndsOnKey && Charts.EndsOnKey(code, shift)) Charts.Shown = false;
}

void DoLastZoom() {
    if (!Chart.GraphHeld || Charts.Zooms.ZoomDepth == 0) return;
    RecordMarkers();
    Scale s{};
    std::int16_t depth{};
    PopZoom(s.XMin, s.XMax, s.YMin, s.YMax, depth);
    SetScale(s);
    SetModes(ScaleModes::Zoomed, ScaleModes::Manual);
    Replot();
    ChooseTicsWithin(s);
    SetModes(ScaleModes::Manual, ScaleModes::Manual);
    Show();
}

void DoAutoScale() {
    AutoScale(true, true);
}
void DoAutoX() {
    AutoScale(true, false);
}
void DoAutoY() {
    AutoScale(false, true);
}

void ToggleShowCursor() {
    Charts.ShowCursor.Checked = !Charts.ShowCursor.Checked;
    Charts.StatusLine.Text.clear();
}

void ToggleShowGrids() {
    const std::int16_t grid = Chart.Spec.AxisX1.Grid || Chart.Spec.AxisY1.Grid ? 0 : 1;
    Chart.Spec.AxisX1.Grid = Chart.Spec.AxisY1.Grid = grid;
    RedrawChart();
}

void ToggleRainbow() {
    Chart.Style.UseRainbowColors = Flag(!Chart.Style.UseRainbowColors);
    Charts.UseRainbow.Checked = Chart.Style.UseRainbowColors != 0;
    RedrawChart();
}

void SetPlotKind(int style, int symbolMode) {
    Chart.Spec.PlotStyle = ToInt16(style);
    Chart.Spec.SymbolMode = ToInt16(symbolMode);
    RedrawChart();
}

void ToggleDotCenter() {
    SetPlotKind(Chart.Spec.PlotStyle, Chart.Spec.SymbolMode == 0 ? 1 : 0);
}

void RedrawChart() {
    if (!Chart.GraphHeld) return;
    RecordMarkers();
    Replot();
    Show();
    ChartMenuStatus(Charts);
}

// --- markers -----------------------------------------------------------------------------------------------

void PlaceMarkers(float first, float second) {
    Charts.Markers.assign(2, ChartMarker{});
    Charts.Markers[0].X = first;
    Charts.Markers[1].X = second;
    Charts.ZoomState = 2;
    RepositionMarkers();
}

void RemoveMarkers() {
    Charts.Markers.clear();
    Charts.ZoomState = 0;
    Charts.CapturedMarker = -1;
}

void RecordMarkers() {
    SetFrameMapping();
    for (ChartMarker& m : Charts.Markers)
        if (m.Device != Clamp(DeviceX(static_cast<double>(m.X)))) m.X = static_cast<float>(AxisXAt(m.Device));
}

void RepositionMarkers() {
    SetFrameMapping();
    const GraphAxis& axis = Chart.Spec.AxisX1;
    for (ChartMarker& m : Charts.Markers) {
        m.X = std::clamp(m.X, std::min(axis.Min, axis.Max), std::max(axis.Min, axis.Max));
        m.Device = Clamp(DeviceX(static_cast<double>(m.X)));
    }
}

void MarkerMouseDown(int index) {
    if (index >= 0 && index < static_cast<int>(Charts.Markers.size())) Charts.CapturedMarker = index;
}

void MarkerMouseMove(int x) {
    const int i = Charts.CapturedMarker;
    if (i < 0) return;
    int place = Clamp(x);
    const auto at = [](int k) { return Charts.Markers[static_cast<std::size_t>(k)].Device; };
    if (i > 0 && place <= at(i - 1)) {
        Host.Beep();
        place = at(i - 1) + 1;
    }
    if (i + 1 < static_cast<int>(Charts.Markers.size()) && place >= at(i + 1)) {
        Host.Beep();
        place = at(i + 1) - 1;
    }
    ChartMarker& m = Charts.Markers[static_cast<std::size_t>(i)];
    SetFrameMapping();
    m.Device = place;
    m.X = static_cast<float>(AxisXAt(place));
    Charts.StatusLine.Text = "Marker at X = " + Reading(Chart.Spec.AxisX1, static_cast<double>(m.X));
}

void MarkerMouseUp() {
    Charts.CapturedMarker = -1;
}

} // namespace Quillon
