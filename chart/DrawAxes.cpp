#include "chart/AxisScale.h"
#include "chart/CHART.h"
#include "chart/DashLine.h"
#include "chart/Device.h"
#include "chart/Layout.h"
#include "chart/Painting.h"
#include "chart/Pens.h"
#include "chart/Tics.h"
#include "chart/Titles.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

// The grid stays behind the data: light grey, and where there is no grey, in short dashes.
constexpr int GridColor = 7;
constexpr std::int16_t GridStyle = 2;
constexpr double MinorPart = 0.6; // of the length of a major tic

// An axis on the device: it runs from Start to End along the frame at the height At; Inward is the direction
// from it into the frame, across it.
struct AxisLine {
    int Place{};
    int Start{}, End{}, At{}, Opposite{}, Inward{};
    bool Upright = false;
};

AxisLine LineOf(int place) {
    const GraphBox& f = Chart.Spec.Frame;
    switch (place) {
    case BottomAxis:
        return {place, f.X1, f.X2, f.Y2, f.Y1, -1, false};
    case TopAxis:
        return {place, f.X1, f.X2, f.Y1, f.Y2, 1, false};
    case LeftAxis:
        return {place, f.Y2, f.Y1, f.X1, f.X2, 1, true};
    default:
        return {place, f.Y2, f.Y1, f.X2, f.X1, -1, true};
    }
}

// Where a value stands along the axis. A tic that lies beyond an end by rounding stands at that end.
int PositionOf(const AxisLine& line, const GraphAxis& axis, double value) {
    const double part = (value - static_cast<double>(axis.Min)) /
                        (static_cast<double>(axis.Max) - static_cast<double>(axis.Min));
    if (!std::isfinite(part)) return line.Start;
    return static_cast<int>(
        std::nearbyint(line.Start + std::clamp(part, 0.0, 1.0) * (line.End - line.Start)));
}

// A line from (along, from) to (along, to), where along runs with the axis.
void DrawAcross(const AxisLine& line, int along, int from, int to) {
    if (line.Upright)
        DashLine(from, along, to, along);
    else
        DashLine(along, from, along, to);
}

void DrawGrid(const AxisLine& line, const GraphAxis& axis, const std::vector<Tic>& tics) {
    if (axis.Grid != 1) return;
    SelectPen(TargetColor(BasicColor(GridColor)), PenWidth(axis.TicWidth));
    for (const Tic& tic : tics) {
        const int along = PositionOf(line, axis, tic.Value);
        if (!tic.Major || along == line.Start || along == line.End) continue;
        BeginDash(Chart.ColorDevice != 0 ? std::int16_t{0} : GridStyle);
        DrawAcross(line, along, line.At, line.Opposite);
    }
    BeginDash(0);
}

void DrawTics(const AxisLine& line, const GraphAxis& axis, const std::vector<Tic>& tics) {
    if (axis.TicMode == TicModes::NoTics) return;
    SelectPen(CycleColor(axis.Color), PenWidth(axis.TicWidth));
    const int length = line.Upright ? Chart.State.TicLenX : Chart.State.TicLenY; // negative: outward
    const int minor = static_cast<int>(std::nearbyint(length * MinorPart));
    for (const Tic& tic : tics) {
        const int reach = line.Inward * (tic.Major ? length : minor);
        DrawAcross(line, PositionOf(line, axis, tic.Value), line.At, line.At + reach);
    }
}

// The near edge of the labels: a gap, and behind tics that point outward, from the axis line.
int LabelDistance(const AxisLine& line) {
    const GraphState& state = Chart.State;
    const int length = line.Upright ? state.TicLenX : state.TicLenY;
    const int outward = length < 0 ? -length + (line.Upright ? state.ClearX : state.ClearY) : 0;
    return outward + SpaceOf(Chart.Layout, line.Place).TicGap1;
}

// The stretch that labels have taken in a row; a label that would run into it is left out.
struct LabelRow {
    int Low = std::numeric_limits<int>::max(), High = std::numeric_limits<int>::min();
    bool Take(int low, int high, int gap) {
        const bool clear = Low > High || low - gap > High || high + gap < Low;
        if (!clear) return false;
        Low = std::min(Low, low);
        High = std::max(High, high);
        return true;
    }
};

// What stays free between two labels of a row. The tics of a linear axis were chosen for the length of its
// labels; decades and categories come as they are.
int LabelGap(const AxisLine& line, const GraphAxis& axis) {
    if (line.Upright) return 0;
    const bool chosen = KindOf(line.Place) == AxisKinds::Value && !IsLog10(axis);
    return chosen ? Chart.State.ClearX / 2 : TextWidth(" ");
}

void DrawLabels(const AxisLine& line, const GraphAxis& axis, const std::vector<Tic>& tics) {
    if (!HasLabels(axis)) return;
    const std::int16_t kind = KindOf(line.Place);
    const float size = Chart.Layout.Sizes.Label[static_cast<std::size_t>(line.Place)];
    const TextSize font = SelectFont(axis.LabelFont, size, 0);
    TargetSurface().SetTextColor(CycleColor(axis.Color));
    const int distance = LabelDistance(line);
    const bool stagger = Chart.State.Stagger != 0 && !line.Upright && kind == AxisKinds::Category;
    const int gap = LabelGap(line, axis);
    LabelRow rows[2];
    for (const Tic& tic : tics) {
        if (!tic.Major) continue;
        const std::string text = TicLabel(axis, kind, tic);
        const int along = PositionOf(line, axis, tic.Value);
        const int row = stagger ? (tic.Category - 1) % 2 : 0;
        const int extent = line.Upright ? font.Height : TextWidth(text);
        if (!rows[row].Take(along - extent / 2, along - extent / 2 + extent - 1, gap)) continue;
        const int out = line.At - line.Inward * (distance + row * font.Height);
        if (line.Place == BottomAxis)
            DrawTextLine(text, along - extent / 2, out, 0, font);
        else if (line.Place == TopAxis)
            DrawTextLine(text, along - extent / 2, out - font.Height, 0, font);
        else if (line.Place == LeftAxis)
            DrawTextLine(text, out - TextWidth(text), along - extent / 2, 0, font);
        else
            DrawTextLine(text, out, along - extent / 2, 0, font);
    }
}

} // namespace

void DrawAxis(int place) {
    const GraphAxis& axis = AxisOf(Chart.Spec, place);
    if (axis.Show != 1) return;
    const AxisLine line = LineOf(place);
    const std::vector<Tic> tics = TicPositions(axis, KindOf(place));
    DrawGrid(line, axis, tics);
    DrawTics(line, axis, tics);
    SelectPen(CycleColor(axis.Color), PenWidth(axis.AxisWidth));
    if (line.Upright)
        TargetSurface().Line(line.At, line.Start, line.At, line.End);
    else
        TargetSurface().Line(line.Start, line.At, line.End, line.At);
    DrawLabels(line, axis, tics);
    DrawAxisTitle(place);
}

} // namespace Quillon
