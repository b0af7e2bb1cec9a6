// The order of scaling and layout, and the lengths that layout works with.
#include "chart/layout/Layout.h"

#include "chart/layout/CheckAxes.h"
#include "chart/layout/FrameLayout.h"
#include "chart/pens/Device.h"
#include "chart/pens/Fonts.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/ChartStyle.h"
#include "chart/records/Records.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/FormatTic.h"
#include "chart/scale/Tics.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// Before tics are chosen, what an axis hands on to the second of its pair: where it has an autorange, or the
// second one has no scale of its own.
void HandOnRange(const GraphAxis& from, GraphAxis& to, bool withFormat) {
    if (from.ScaleMode == ScaleModes::Manual && to.Min != to.Max) return;
    to.LabelFont = from.LabelFont;
    to.ScaleType = from.ScaleType;
    to.LogBase = from.LogBase;
    to.Min = from.Min;
    to.Max = from.Max;
    to.FirstTic = from.FirstTic;
    to.TicInterval = from.TicInterval;
    if (withFormat) HandOnFormat(from, to);
    to.Grid = 0;
}

void FormatAxes(GraphSpec& spec) {
    AutoFormat(spec.AxisX1);
    HandOnFormat(spec.AxisX1, spec.AxisX2);
    AutoFormat(spec.AxisY1);
    HandOnFormat(spec.AxisY1, spec.AxisY2);
    AutoFormat(spec.AxisX2);
    AutoFormat(spec.AxisY2);
}

int WidestLabel(const GraphAxis& axis, std::int16_t kind, float size) {
    SelectFont(axis.LabelFont, size, 0);
    if (kind != AxisKinds::Category) {
        SetLog10Axis(axis);
        return std::max(TextWidth(FormatTic(axis.Min, axis.Decimals, axis.TicFormat)),
                        TextWidth(FormatTic(axis.Max, axis.Decimals, axis.TicFormat)));
    }
    int widest = 0;
    for (const Tic& tic : TicPositions(axis, kind))
        widest = std::max(widest, TextWidth(TicLabel(axis, kind, tic)));
    return widest;
}

std::int16_t LabelWidth(int place) {
    const GraphAxis& axis = AxisOf(Chart.Spec, place);
    if (!HasLabels(axis)) return 0;
    return DeviceUnits(
        WidestLabel(axis, KindOf(place), Chart.Layout.Sizes.Label[static_cast<std::size_t>(place)]));
}

// Frame and tics; once more for the frame where the labels of the chosen tics need another room.
void FitAndChoose() {
    FitFrame();
    if (!FrameStands()) return;
    ChooseTics();
    const GraphState before = Chart.State;
    MeasureLabels();
    const GraphState& now = Chart.State;
    if (now.LabelWidthX1 != before.LabelWidthX1 || now.LabelWidthY1 != before.LabelWidthY1 ||
        now.LabelWidthX2 != before.LabelWidthX2 || now.LabelWidthY2 != before.LabelWidthY2)
        FitFrame();
}

void LayoutScaled(bool formatAtOnce) {
    GraphSpec& spec = Chart.Spec;
    AutoRange(spec.AxisX1, Chart.State.KindX, Chart.DataX, Chart.LoadFactorX);
    AutoRange(spec.AxisY1, Chart.State.KindY, Chart.DataY, Chart.LoadFactorY);
    HandOnRange(spec.AxisX1, spec.AxisX2, formatAtOnce);
    HandOnRange(spec.AxisY1, spec.AxisY2, formatAtOnce);
    FormatAxes(spec);
    FitAndChoose();
}

} // namespace

GraphAxis& AxisOf(GraphSpec& spec, int place) {
    switch (place) {
    case BottomAxis:
        return spec.AxisX1;
    case TopAxis:
        return spec.AxisX2;
    case LeftAxis:
        return spec.AxisY1;
    default:
        return spec.AxisY2;
    }
}

AxisSpace& SpaceOf(ChartLayout& layout, int place) {
    switch (place) {
    case BottomAxis:
        return layout.Bottom;
    case TopAxis:
        return layout.Top;
    case LeftAxis:
        return layout.Left;
    default:
        return layout.Right;
    }
}

std::int16_t KindOf(int place) {
    return place == BottomAxis || place == TopAxis ? Chart.State.KindX : Chart.State.KindY;
}

void LayoutXY() {
    LayoutScaled(false);
}

void LayoutBars() {
    LayoutScaled(true);
}

void LayoutPie() {
    FitFrame();
}

void LayoutGraph() {
    switch (Chart.Spec.GraphType) {
    case GraphTypes::XYPlot:
        return LayoutXY();
    case GraphTypes::Pie:
        return LayoutPie();
    default:
        return LayoutBars();
    }
}

void TakeTextSizes() {
    TextSizes& sizes = Chart.Layout.Sizes;
    GraphSpec& spec = Chart.Spec;
    sizes.Title1 = ClampFontSize(spec.Title1.Size);
    sizes.Title2 = ClampFontSize(spec.Title2.Size);
    sizes.Legend = ClampFontSize(spec.Legend.Size);
    for (int place = BottomAxis; place <= RightAxis; ++place) {
        const auto at = static_cast<std::size_t>(place);
        sizes.AxisTitle[at] = ClampFontSize(AxisOf(spec, place).Title.Size);
        sizes.Label[at] = ClampFontSize(AxisOf(spec, place).LabelSize);
    }
}

void MeasureAxes() {
    GraphState& state = Chart.State;
    const ChartStyle& style = Chart.Style;
    state.ClearY = DeviceUnits(state.Diagonal * static_cast<double>(style.Clearance));
    state.ClearX = DeviceUnits(state.ClearY * static_cast<double>(state.Aspect));
    state.TicLenY = DeviceUnits(state.Diagonal * static_cast<double>(style.TicSize));
    state.TicLenX = DeviceUnits(state.TicLenY * static_cast<double>(state.Aspect));
    MeasureLabels();
}

void MeasureLabels() {
    GraphState& state = Chart.State;
    state.LabelWidthX1 = LabelWidth(BottomAxis);
    state.LabelWidthX2 = LabelWidth(TopAxis);
    state.LabelWidthY1 = LabelWidth(LeftAxis);
    state.LabelWidthY2 = LabelWidth(RightAxis);
    // Category labels that are wider than a category alternate between two rows.
    const int category = state.ViewW * 8 / 10 / std::max<int>(state.Npts, 1);
    state.Stagger =
        state.KindX == AxisKinds::Category && state.LabelWidthX1 + state.ClearX > category ? 1 : 0;
}

bool FrameStands() {
    const GraphBox& frame = Chart.Spec.Frame;
    return frame.X2 > frame.X1 && frame.Y2 > frame.Y1;
}

bool ShrinkSize(float& size) {
    if (size <= Chart.State.FontMin) return false;
    size = std::max(size * 0.9F, Chart.State.FontMin);
    return true;
}

void Replot() {
    Chart.GraphStatus = GraphStatuses::Fine;
    if (!HasSurface()) {
        Chart.GraphStatus = GraphStatuses::NoSurface;
        return;
    }
    ReadView(Chart.Spec.View);
    if (Chart.DataY.Empty()) return; // nothing to scale
    CheckAxes(Chart.Spec);
    LayoutGraph();
}

} // namespace Quillon
