// Bars over categories: side by side, or stacked from the base, positive and negative apart.
#include "chart/draw/DrawBars.h"

#include "chart/draw/Painting.h"
#include "chart/pens/DashLine.h"
#include "chart/pens/Pens.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/records/SetTable.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Mapping.h"

#include <algorithm>

namespace Quillon {

namespace {

struct BarGraph {
    bool Upright = true; // values upward; else to the right
    const SetTable* Values{};
    double Divisor = 1.0;
    double Base = 0.0; // where bars start, in axis units
};

// Zero where the scale spans it, else the end nearer to it.
double BaseOf(const GraphAxis& axis) {
    const double low = std::min(axis.Min, axis.Max);
    const double high = std::max(axis.Min, axis.Max);
    return std::clamp(0.0, low, high);
}

// One bar: across its category from first to last, along the values from a to b.
void DrawBar(const BarGraph& graph, int set, double first, double last, double a, double b) {
    const auto place = CyclePlace(SetIndex(set));
    DeviceRect bar;
    if (graph.Upright)
        bar = {DeviceX(first), DeviceY(b), DeviceX(last), DeviceY(a)};
    else
        bar = {DeviceX(a), DeviceY(last), DeviceX(b), DeviceY(first)};
    if (bar.Left > bar.Right) std::swap(bar.Left, bar.Right);
    if (bar.Top > bar.Bottom) std::swap(bar.Top, bar.Bottom);
    SelectNoPen();
    if (Chart.Cycles.Pattern[place] != 0) { // no grid line is seen through a hatch
        TargetSurface().SetBrush({BrushKind::Solid, BoxColor(Chart.Spec.Frame)});
        TargetSurface().Rectangle(bar);
    }
    SelectPattern(Chart.Cycles.Pattern[place], SetColor(set));
    TargetSurface().Rectangle(bar);
    SelectPen(SetColor(set), SetLineWidth(SetIndex(set)));
    BeginDash(Chart.Cycles.Border[place]);
    DashRectangle(bar);
}

// The part of a stack that the base cuts off is not drawn.
double FromBase(const BarGraph& graph, double value) {
    return graph.Base > 0.0   ? std::max(value, graph.Base)
           : graph.Base < 0.0 ? std::min(value, graph.Base)
                              : value;
}

// The bars of one category; false when the drawing is to stop.
bool DrawCategory(const BarGraph& graph, int point, long& count) {
    const int sets = Chart.State.Nsets;
    const double category = 1.0 / Chart.State.Npts;
    const double width = category * std::clamp(static_cast<double>(Chart.Style.BarWidth), 0.0, 1.0);
    const double start = (point - 0.5) * category - width / 2.0;
    const bool stacked = Chart.Spec.PlotStyle != 1;
    double up = 0.0;
    double down = 0.0;
    for (int set = 1; set <= sets; ++set) {
        const float stored = (*graph.Values)(point, set);
        if (stored != MissingValue) {
            const double value = static_cast<double>(stored) / graph.Divisor;
            if (stacked) {
                double& top = value >= 0.0 ? up : down;
                DrawBar(graph, set, start, start + width, FromBase(graph, top), FromBase(graph, top + value));
                top += value;
            } else {
                const double first = start + (set - 1) * width / sets;
                DrawBar(graph, set, first, first + width / sets, graph.Base, value);
            }
        }
        if (!CountPoint(count)) return false;
    }
    return true;
}

void DrawBars(const BarGraph& graph) {
    TargetSurface().SetClip(FrameClip());
    SetFrameMapping();
    long count = 0;
    for (int point = 1; point <= Chart.State.Npts; ++point)
        if (!DrawCategory(graph, point, count)) break;
    TargetSurface().ClearClip();
}

} // namespace

void DrawBarsH() {
    const GraphAxis& axis = Chart.Spec.AxisX1;
    DrawBars({false, &Chart.DataX, DrawDivisor(axis, Chart.LoadFactorX), BaseOf(axis)});
}

void DrawBarsV() {
    const GraphAxis& axis = Chart.Spec.AxisY1;
    DrawBars({true, &Chart.DataY, DrawDivisor(axis, Chart.LoadFactorY), BaseOf(axis)});
}

} // namespace Quillon
