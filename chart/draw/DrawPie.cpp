// Pies: of a single set each point is a slice, of several sets each set is one, the sum of its points. Slices
// run clockwise from the top. What is not positive has no slice.
#include "chart/draw/DrawPie.h"

#include "chart/draw/Painting.h"
#include "chart/draw/PieLabels.h"
#include "chart/draw/Titles.h"
#include "chart/layout/Layout.h"
#include "chart/layout/LegendLayout.h"
#include "chart/pens/DashLine.h"
#include "chart/pens/Device.h"
#include "chart/pens/Fonts.h"
#include "chart/pens/Pens.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/records/SetTable.h"
#include "chart/scale/Tics.h"
#include "input/NUMINPUT.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// Labels that would leave the pie less than this part of its size without them are left out.
constexpr double LeastPart = 0.3;

struct Slice {
    int Index{}; // set or point, from 1
    double Value{};
    std::string Name;
};

std::vector<Slice> SlicesOfPoints() {
    std::vector<Slice> slices;
    for (int point = 1; point <= Chart.State.Npts; ++point) {
        const float value = Chart.DataY(point, 1);
        const Tic tic{0.0, true, point};
        if (value > 0.0F)
            slices.push_back({point, value, TicLabel(Chart.Spec.AxisX1, AxisKinds::Category, tic)});
    }
    return slices;
}

std::vector<Slice> SlicesOfSets() {
    std::vector<Slice> slices;
    for (int set = 1; set <= Chart.State.Nsets; ++set) {
        double sum = 0.0;
        for (int point = 1; point <= Chart.State.Npts; ++point)
            if (Chart.DataY(point, set) != MissingValue) sum += static_cast<double>(Chart.DataY(point, set));
        const bool legend = HasLegend(); // which then tells the names
        const std::string name = !legend && set <= Chart.SetNames.Hi() ? Chart.SetNames[set] : "";
        if (sum > 0.0) slices.push_back({set, sum, name});
    }
    return slices;
}

// Where the pie stands: as large as its labels and the legend permit.
struct PiePlace {
    DevicePoint Centre;
    int RadiusX{}, RadiusY{};
    int Bottom{}; // the last unit down that pie and labels may take
};

PiePlace PlaceOf(int labelWidth, int lineHeight) {
    const GraphBox& frame = Chart.Spec.Frame;
    int bottom = frame.Y2;
    if (Chart.Layout.Legend.Height > 0 && Chart.Spec.Legend.Where != LegendPlaces::Right)
        bottom = std::min<int>(bottom, Chart.Spec.Legend.Box.Y1 - 1);
    const double aspect = Chart.State.Aspect;
    const double across = ((frame.X2 - frame.X1) / 2.0 - labelWidth) / aspect;
    const double up = (bottom - frame.Y1) / 2.0 - 2.0 * lineHeight;
    const int radius = std::max<int>(DeviceUnits(std::floor(std::min(across, up))), 1);
    return {{(frame.X1 + frame.X2) / 2, (frame.Y1 + bottom) / 2},
            std::max<int>(DeviceUnits(radius * aspect), 1),
            radius,
            bottom};
}

void DrawSlice(const PiePlace& place, const Slice& slice, double start, double sweep) {
    const int index = slice.Index - 1;
    const DrawingSurface& surface = TargetSurface();
    SelectPattern(Chart.Cycles.Pattern[CyclePlace(index)], CycleColor(index));
    SelectPen(CycleColor(0), PenWidth(Chart.Spec.LineWidth));
    if (sweep < 360.0) return surface.PieSlice(place.Centre, place.RadiusX, place.RadiusY, start, sweep);
    surface.Ellipse({place.Centre.X - place.RadiusX, place.Centre.Y - place.RadiusY,
                     place.Centre.X + place.RadiusX, place.Centre.Y + place.RadiusY});
}

// Draws the labels about the pie, and to those that stand away from their slices a line.
void DrawSliceLabels(const PiePlace& place, const std::vector<std::string>& texts,
                     std::vector<PieLabel>& labels, const TextSize& font) {
    const GraphState& state = Chart.State;
    const GraphBox& frame = Chart.Spec.Frame;
    PlacePieLabels(labels, {place.Centre, place.RadiusX, place.RadiusY, 2 * state.ClearX, 2 * state.ClearY,
                            font.Height, frame.Y1, place.Bottom});
    TargetSurface().SetTextColor(CycleColor(0));
    SelectPen(CycleColor(0), PenWidth(Chart.Style.TicWidth));
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const PieLabel& label = labels[i];
        if (!label.Shown) continue;
        if (label.Moved) DashLine(label.From.X, label.From.Y, label.To.X, label.To.Y);
        DrawTextLine(texts[i], label.Left, label.Top, 0, font);
    }
}

// The labels of the slices, clockwise from the top, and their texts.
struct SliceLabels {
    std::vector<std::string> Texts;
    std::vector<PieLabel> Labels;
    int Widest = 0;
};

SliceLabels LabelsOf(const std::vector<Slice>& slices, double sum) {
    SliceLabels all;
    double end = 90.0;
    for (const Slice& slice : slices) {
        const double share = slice.Value / sum;
        all.Texts.push_back(slice.Name + FormatNumber(share, slice.Name.empty() ? "0.0%" : " (0.0%)"));
        all.Labels.push_back({end - 180.0 * share, share, TextWidth(all.Texts.back())});
        all.Widest = std::max(all.Widest, all.Labels.back().Width);
        end -= 360.0 * share;
    }
    return all;
}

// Within its labels; where these would leave too little of it, without them.
PiePlace PlaceWithin(SliceLabels& all, int lineHeight) {
    const PiePlace place = PlaceOf(all.Widest + 4 * Chart.State.ClearX, lineHeight);
    const PiePlace bare = PlaceOf(0, 0);
    if (place.RadiusY >= LeastPart * bare.RadiusY) return place;
    all.Labels.clear(); // the pie itself is what is to be seen
    return bare;
}

// False when the drawing is to stop.
bool DrawSlices(const PiePlace& place, const std::vector<Slice>& slices, double sum) {
    long count = 0;
    double end = 90.0;
    for (const Slice& slice : slices) {
        const double sweep = 360.0 * slice.Value / sum;
        DrawSlice(place, slice, end - sweep, sweep);
        end -= sweep;
        if (!CountPoint(count)) return false;
    }
    return true;
}

} // namespace

void DrawPie() {
    const bool ofSets = Chart.State.MultiSet == 1 && Chart.State.Nsets > 1;
    const std::vector<Slice> slices = ofSets ? SlicesOfSets() : SlicesOfPoints();
    double sum = 0.0;
    for (const Slice& slice : slices)
        sum += slice.Value;
    const float size = Chart.Layout.Sizes.Label[BottomAxis];
    const TextSize font = SelectFont(Chart.Spec.AxisX1.LabelFont, size, 0);
    SliceLabels all = LabelsOf(slices, sum);
    const PiePlace place = PlaceWithin(all, font.Height);
    if (!DrawSlices(place, slices, sum)) return;
    SelectFont(Chart.Spec.AxisX1.LabelFont, size, 0);
    DrawSliceLabels(place, all.Texts, all.Labels, font);
}

} // namespace Quillon
