#include "chart/draw/DrawAxes.h"

#include "chart/draw/Titles.h"
#include "chart/layout/Layout.h"
#include "chart/pens/DashLine.h"
#include "chart/pens/Fonts.h"
#include "chart/pens/Pens.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Colors.h"
#include "chart/records/Records.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Tics.h"

#include <algorithm>
#include <cmath>
#include <iterator>

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

// What stays free between two labels of a row. The tics of a linear axis were chosen for the length of its
// labels; decades and categories come as they are.
int LabelGap(const AxisLine& line, const GraphAxis& axis) {
    if (line.Upright) return 0;
    const bool chosen = KindOf(line.Place) == AxisKinds::Value && !IsLog10(axis);
    return chosen ? Chart.State.ClearX / 2 : TextWidth(" ");
}

// A label before it is known whether there is room for it.
struct Label {
    std::string Text;
    int Low{}, High{}; // the stretch along the axis that it takes
    long Number{};     // counts the major tics; 0 is at zero, on a log axis at 1, or the first category
};

// The major tics; on a log axis within a decade, which has none, the others, since no number at all would
// stand there.
std::vector<Tic> LabelledTics(const GraphAxis& axis, const std::vector<Tic>& tics) {
    std::vector<Tic> majors;
    std::copy_if(tics.begin(), tics.end(), std::back_inserter(majors),
                 [](const Tic& tic) { return tic.Major; });
    return majors.empty() && IsLog10(axis) ? tics : majors;
}

// The number of the first label, by the steps of the major tics; 0 where their values do not tell.
long FirstNumber(const std::vector<Tic>& majors) {
    if (majors.size() < 2 || majors[0].Category > 0) return 0;
    const double number = majors[0].Value / (majors[1].Value - majors[0].Value);
    return std::fabs(number) < 1e9 ? std::lround(number) : 0;
}

std::vector<Label> LabelsOf(const AxisLine& line, const GraphAxis& axis, const std::vector<Tic>& tics,
                            int lineHeight) {
    const std::vector<Tic> labelled = LabelledTics(axis, tics);
    std::vector<Label> labels;
    long number = FirstNumber(labelled);
    for (const Tic& tic : labelled) {
        Label label{TicLabel(axis, KindOf(line.Place), tic)};
        const int extent = line.Upright ? lineHeight : TextWidth(label.Text);
        label.Low = PositionOf(line, axis, tic.Value) - extent / 2;
        label.High = label.Low + extent - 1;
        label.Number = number++;
        labels.push_back(std::move(label));
    }
    return labels;
}

// Which labels are drawn: those whose number is a multiple of Every away from First, in one row or in turn in
// two.
struct LabelChoice {
    long Every = 1, First = 0;
    int Rows = 1;
    bool Takes(const Label& label) const { return (label.Number - First) % Every == 0; }
    std::size_t RowOf(const Label& label) const {
        return Rows == 1 ? 0 : static_cast<std::size_t>((label.Number - First) / Every % Rows);
    }
};

// True when the labels chosen are a gap apart.
bool StandApart(const std::vector<Label>& labels, const LabelChoice& choice, int gap) {
    const Label* before[2] = {};
    for (const Label& label : labels) {
        if (!choice.Takes(label)) continue;
        const Label*& last = before[choice.RowOf(label)];
        if (last != nullptr && label.Low - gap <= last->High && label.High + gap >= last->Low) return false;
        last = &label;
    }
    return true;
}

// As many labels as have room, at equal distances, with the one at zero where it is on the scale.
LabelChoice ChooseLabels(const std::vector<Label>& labels, int rows, int gap) {
    LabelChoice choice;
    choice.Rows = rows;
    const auto takes = [&](const Label& label) { return choice.Takes(label); };
    for (; choice.Every <= static_cast<long>(labels.size()); ++choice.Every) {
        choice.First = 0;
        if (rows == 1 && std::none_of(labels.begin(), labels.end(), takes)) choice.First = labels[0].Number;
        if (StandApart(labels, choice, gap)) break;
    }
    return choice;
}

void DrawLabels(const AxisLine& line, const GraphAxis& axis, const std::vector<Tic>& tics) {
    if (!HasLabels(axis)) return;
    const float size = Chart.Layout.Sizes.Label[static_cast<std::size_t>(line.Place)];
    const TextSize font = SelectFont(axis.LabelFont, size, 0);
    TargetSurface().SetTextColor(CycleColor(axis.Color));
    const int distance = LabelDistance(line);
    const bool category = KindOf(line.Place) == AxisKinds::Category;
    const int rows = Chart.State.Stagger != 0 && !line.Upright && category ? 2 : 1;
    const std::vector<Label> labels = LabelsOf(line, axis, tics, font.Height);
    const LabelChoice choice = ChooseLabels(labels, rows, LabelGap(line, axis));
    for (const Label& label : labels) {
        if (!choice.Takes(label)) continue;
        const int row = static_cast<int>(choice.RowOf(label));
        const int out = line.At - line.Inward * (distance + row * font.Height);
        if (line.Place == BottomAxis)
            DrawTextLine(label.Text, label.Low, out, 0, font);
        else if (line.Place == TopAxis)
            DrawTextLine(label.Text, label.Low, out - font.Height, 0, font);
        else if (line.Place == LeftAxis)
            DrawTextLine(label.Text, out - TextWidth(label.Text), label.Low, 0, font);
        else
            DrawTextLine(label.Text, out, label.Low, 0, font);
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
