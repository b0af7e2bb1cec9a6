// Pies: of a single set each point is a slice, of several sets each set is one, the sum of its points. Slices
// run clockwise from the top. What is not positive has no slice.
#include "chart/CHART.h"
#include "chart/DashLine.h"
#include "chart/Device.h"
#include "chart/Layout.h"
#include "chart/Legend.h"
#include "chart/Painting.h"
#include "chart/Pens.h"
#include "chart/Tics.h"
#include "chart/Titles.h"
#include "input/NUMINPUT.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Quillon {

namespace {

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
            radius};
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

// The label of a slice, outside at its middle.
void DrawSliceLabel(const PiePlace& place, const std::string& text, double middle, const TextSize& font) {
    const double angle = middle * std::numbers::pi / 180.0;
    const double x = place.Centre.X + (place.RadiusX + 2.0 * Chart.State.ClearX) * std::cos(angle);
    const double y = place.Centre.Y - (place.RadiusY + 2.0 * Chart.State.ClearY) * std::sin(angle);
    const int width = TextWidth(text);
    const double left = std::cos(angle) < 0.0 ? x - width : x;
    const double top = y - font.Height / 2.0 - std::sin(angle) * font.Height / 2.0;
    DrawTextLine(text, DeviceUnits(left), DeviceUnits(top), 0, font);
}

} // namespace

void DrawPie() {
    const std::vector<Slice> slices =
        Chart.State.MultiSet == 1 && Chart.State.Nsets > 1 ? SlicesOfSets() : SlicesOfPoints();
    double sum = 0.0;
    for (const Slice& slice : slices)
        sum += slice.Value;
    const float size = Chart.Layout.Sizes.Label[BottomAxis];
    TextSize font = SelectFont(Chart.Spec.AxisX1.LabelFont, size, 0);
    std::vector<std::string> labels;
    int widest = 0;
    for (const Slice& slice : slices) {
        labels.push_back(slice.Name +
                         FormatNumber(slice.Value / sum, slice.Name.empty() ? "0.0%" : " (0.0%)"));
        widest = std::max(widest, TextWidth(labels.back()));
    }
    const PiePlace place = PlaceOf(widest + 2 * Chart.State.ClearX, font.Height);
    TargetSurface().SetTextColor(CycleColor(0));
    double end = 90.0;
    long count = 0;
    for (std::size_t i = 0; i < slices.size(); ++i) {
        const double sweep = 360.0 * slices[i].Value / sum;
        DrawSlice(place, slices[i], end - sweep, sweep);
        font = SelectFont(Chart.Spec.AxisX1.LabelFont, size, 0);
        DrawSliceLabel(place, labels[i], end - sweep / 2.0, font);
        end -= sweep;
        if (!CountPoint(count)) break;
    }
}

} // namespace Quillon
