// The scale commands and options of the chart window.
#include "chart/hand/ChartScale.h"

#include "chart/hand/ChartMarkers.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/layout/Layout.h"
#include "chart/records/ChartDefaults.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Cycles.h"
#include "chart/records/Kept.h"
#include "chart/records/Palettes.h"
#include "chart/records/Records.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Tics.h"
#include "input/IniFile.h"
#include "platform/Narrow.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

AxisFormat FormatOf(const GraphAxis& axis) {
    return {axis.TicFormat, axis.Decimals};
}

void TakeFormat(GraphAxis& axis, const AxisFormat& format) {
    axis.TicFormat = format.TicFormat;
    axis.Decimals = format.Decimals;
}

void PushFormat() {
    OneBased<ZoomFormat>& formats = Charts.Zooms.Formats;
    std::copy_backward(formats.begin(), formats.end() - 1, formats.end());
    formats[1] = {FormatOf(Chart.Spec.AxisX1), FormatOf(Chart.Spec.AxisY1)};
}

void PopFormat() {
    OneBased<ZoomFormat>& formats = Charts.Zooms.Formats;
    TakeFormat(Chart.Spec.AxisX1, formats[1].X);
    TakeFormat(Chart.Spec.AxisY1, formats[1].Y);
    std::copy(formats.begin() + 1, formats.end(), formats.begin());
}

constexpr int FewestTics = 2; // what an axis must show for its scale to be read

void SetScale(const ChartScale& s) {
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

int TicsShown(const GraphAxis& axis, std::int16_t kind) {
    const std::vector<Tic> tics = TicPositions(axis, kind);
    return static_cast<int>(std::count_if(tics.begin(), tics.end(), [](const Tic& t) { return t.Major; }));
}

// Tics as fine as a short stretch far from zero needs them: the choice for a whole scale goes by its limits,
// and none of its steps may fit in.
void TakeFineTics(GraphAxis& axis) {
    const double span = std::fabs(static_cast<double>(axis.Max) - static_cast<double>(axis.Min));
    const double m = std::max(std::fabs(axis.Max), std::fabs(axis.Min));
    const double step = RoundStep(span / 5.0);
    const bool plain = axis.TicFormat == TicFormats::Decimal;
    const double digits = std::ceil((plain ? 0.0 : std::floor(std::log10(m))) - std::log10(step) - 1e-9);
    axis.TicInterval = FiniteSingle(step);
    axis.FirstTic = FiniteSingle(step * std::ceil(std::min(axis.Min, axis.Max) / step));
    axis.Decimals = ToInt16(std::max(0.0, digits));
}

// New tics for one axis, whose limits are not rounded to them.
void ChooseTicsWithin(GraphAxis& axis, GraphAxis& second, std::int16_t kind) {
    const std::int16_t mode = axis.ScaleMode;
    const float low = axis.Min;
    const float high = axis.Max;
    axis.ScaleMode = ScaleModes::Autorange;
    ChooseTics();
    axis.ScaleMode = mode;
    axis.Min = low;
    axis.Max = high;
    if (kind == AxisKinds::Category) return;
    if (axis.TicInterval > 0.0F && !IsLog10(axis))
        axis.FirstTic = axis.TicInterval * std::ceil(std::min(low, high) / axis.TicInterval);
    if (!IsLog10(axis) && TicsShown(axis, kind) < FewestTics) TakeFineTics(axis);
    HandOnScale(axis, second);
}

// A scale deep within the former one may lie between its tics: then it gets tics of its own.
void ChooseWhereTooFew() {
    GraphSpec& spec = Chart.Spec;
    const GraphState& state = Chart.State;
    if (TicsShown(spec.AxisX1, state.KindX) < FewestTics)
        ChooseTicsWithin(spec.AxisX1, spec.AxisX2, state.KindX);
    if (TicsShown(spec.AxisY1, state.KindY) < FewestTics)
        ChooseTicsWithin(spec.AxisY1, spec.AxisY2, state.KindY);
}

void RoundScale() {
    SetModes(ScaleModes::Autorange, ScaleModes::Manual);
    ChooseTics();
    SetModes(ScaleModes::Manual, ScaleModes::Manual);
    SetScale(PresentScale());
}

void TakeWithTics(const ChartScale& scale) {
    SetScale(scale);
    SetModes(ScaleModes::Zoomed, ScaleModes::Manual);
    Replot();
    ChooseTicsWithin(Chart.Spec.AxisX1, Chart.Spec.AxisX2, Chart.State.KindX);
    ChooseTicsWithin(Chart.Spec.AxisY1, Chart.Spec.AxisY2, Chart.State.KindY);
    SetModes(ScaleModes::Manual, ScaleModes::Manual);
    Replot();
}

// An axis that gives up its prescale has its kept zooms in the units of before.
void Convert(OneBased<float>& low, OneBased<float>& high, float before, float now) {
    if (before == now || now == 0.0F) return;
    for (int i = 1; i <= ZoomStack::Deepest; ++i) {
        low[i] = FiniteSingle(static_cast<double>(low[i]) * static_cast<double>(before / now));
        high[i] = FiniteSingle(static_cast<double>(high[i]) * static_cast<double>(before / now));
    }
}

// What every change of scale begins with.
void KeepPresent() {
    RecordMarkers();
    const ChartScale old = PresentScale();
    PushZoom(old.XMin, old.XMax, old.YMin, old.YMax);
    PushFormat();
    Charts.LastZoom.Enabled = true;
}

void AutoScale(bool x, bool y) {
    if (!GraphMayChange()) return;
    GraphSpec& spec = Chart.Spec;
    KeepPresent();
    const float factorX = spec.AxisX1.Factor;
    const float factorY = spec.AxisY1.Factor;
    if (x) spec.AxisX1.ScaleMode = ScaleModes::Autorange;
    if (y) spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Replot();
    Convert(Charts.Zooms.XMin, Charts.Zooms.XMax, factorX, spec.AxisX1.Factor);
    Convert(Charts.Zooms.YMin, Charts.Zooms.YMax, factorY, spec.AxisY1.Factor);
    RedrawAsLaidOut();
}

// Turns an option of the window round and writes it to chart.ini.
void Remember(const char* key, std::int16_t& option) {
    option = Flag(!option);
    try {
        WriteIniValue(ChartIniPath(), ChartIniSection(), key, option != 0 ? "True" : "False");
    } catch (const RuntimeError& error) {
        Tell("Error occurred while writing defaults to " + ChartIniPath() + "\n\n" + error.Text,
             ProgramTitle(), BoxIcon::Warning);
    }
    ChartMenuStatus(Charts);
}

} // namespace

ChartScale PresentScale() {
    const GraphSpec& s = Chart.Spec;
    return {s.AxisX1.Min, s.AxisX1.Max, s.AxisY1.Min, s.AxisY1.Max};
}

void TakeScale(const ChartScale& scale, bool round) {
    SetScale(scale);
    SetModes(ScaleModes::Zoomed, ScaleModes::Manual);
    Replot();
    if (round)
        RoundScale();
    else
        ChooseWhereTooFew();
    Replot(); // the labels of new tics may need another room
}

void ZoomTo(const ChartScale& scale) {
    if (!GraphMayChange()) return;
    if (scale.XMin == scale.XMax || scale.YMin == scale.YMax) return; // narrower than singles tell apart
    KeepPresent();
    Charts.Zooms.GaveScale = true;
    TakeScale(scale, Charts.RoundOnZoom.Checked);
    RedrawAsLaidOut();
}

void MoveScale(const ChartScale& scale, bool goesOn) {
    if (!GraphMayChange()) return;
    if (goesOn)
        RecordMarkers();
    else
        KeepPresent();
    Charts.Zooms.GaveScale = true;
    TakeWithTics(scale);
    RedrawAsLaidOut();
}

void DoLastZoom() {
    if (!GraphMayChange() || Charts.Zooms.ZoomDepth == 0) return;
    RecordMarkers();
    ChartScale scale{};
    std::int16_t depth{};
    PopZoom(scale.XMin, scale.XMax, scale.YMin, scale.YMax, depth);
    PopFormat();
    Charts.Zooms.GaveScale = true;
    TakeWithTics(scale);
    RedrawAsLaidOut();
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

void ToggleRoundOnZoom() {
    Charts.RoundOnZoom.Checked = !Charts.RoundOnZoom.Checked;
}

void ToggleShowCursor() {
    Charts.ShowCursor.Checked = !Charts.ShowCursor.Checked;
    if (!Charts.ShowCursor.Checked) Charts.StatusLine.Text.clear();
}

void ToggleShowGrids() {
    if (!GraphMayChange()) return;
    const std::int16_t grid = Chart.Spec.AxisX1.Grid || Chart.Spec.AxisY1.Grid ? 0 : 1;
    Chart.Spec.AxisX1.Grid = Chart.Spec.AxisY1.Grid = grid;
    RedrawChart();
}

void ToggleRainbow() {
    if (!GraphMayChange()) return;
    Chart.Style.UseRainbowColors = Flag(!Chart.Style.UseRainbowColors);
    RedrawChart();
}

void ToggleClassicColors() {
    if (Chart.Painting != 0) return;
    Remember("ClassicColors", Kept.ClassicColors);
    TakeStandardColors();
    RedrawChart();
}

void ToggleDarkCanvas() {
    if (Chart.Painting != 0) return;
    Remember("DarkCanvas", Kept.DarkCanvas);
    RedrawChart();
}

void SetPlotKind(int style, int symbolMode) {
    if (!GraphMayChange()) return;
    Chart.Spec.PlotStyle = ToInt16(style);
    Chart.Spec.SymbolMode = ToInt16(symbolMode);
    RedrawChart();
}

void ToggleDotCenter() {
    SetPlotKind(Chart.Spec.PlotStyle, Chart.Spec.SymbolMode == 0 ? 1 : 0);
}

} // namespace Quillon
