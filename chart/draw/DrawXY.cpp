// X-Y plots, and lines over categories, which differ from them in where X comes from alone.
#include "chart/draw/DrawXY.h"

#include "chart/draw/ClipLine.h"
#include "chart/draw/Painting.h"
#include "chart/pens/DashLine.h"
#include "chart/pens/Device.h"
#include "chart/pens/Pens.h"
#include "chart/pens/Symbols.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/records/SetTable.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Mapping.h"

#include <algorithm>
#include <limits>

namespace Quillon {

namespace {

constexpr std::int16_t NoPoint = std::numeric_limits<std::int16_t>::min();

// Where the values of a set come from, in axis units.
struct PointSource {
    bool Categories = false; // X is the middle of the point's category
    double DivisorX = 1.0, DivisorY = 1.0;

    bool At(int set, int point, double& x, double& y) const {
        const float fromX = Categories ? 0.0F : Chart.DataX(point, set);
        const float fromY = Chart.DataY(point, set);
        if (fromX == MissingValue || fromY == MissingValue) return false;
        x = Categories ? (point - 0.5) / Chart.State.Npts : static_cast<double>(fromX) / DivisorX;
        y = static_cast<double>(fromY) / DivisorY;
        return true;
    }
};

// The points of a set in device units, from place 1; NoPoint where there is none. A point beyond the device
// stands at its edge.
struct MappedSet {
    int Set{};
    OneBased<std::int16_t> X, Y;
};

MappedSet MapSet(const PointSource& source, int set) {
    const GraphState& state = Chart.State;
    MappedSet mapped{set, OneBased<std::int16_t>(state.Npts, NoPoint),
                     OneBased<std::int16_t>(state.Npts, NoPoint)};
    double x = 0.0;
    double y = 0.0;
    for (int point = 1; point <= state.Npts; ++point) {
        if (!source.At(set, point, x, y)) continue;
        mapped.X[point] = std::clamp(DeviceX(x), std::int16_t{0}, state.DeviceW);
        mapped.Y[point] = std::clamp(DeviceY(y), std::int16_t{0}, state.DeviceH);
    }
    return mapped;
}

bool AtEdge(const MappedSet& mapped, int point) {
    const GraphState& state = Chart.State;
    return mapped.X[point] <= 0 || mapped.X[point] >= state.DeviceW || mapped.Y[point] <= 0 ||
           mapped.Y[point] >= state.DeviceH;
}

// The part within the device of a line to a point beyond it: it enters and leaves where the true line does.
void DrawClipped(const PointSource& source, int set, int from, int to) {
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
    if (!source.At(set, from, x1, y1) || !source.At(set, to, x2, y2)) return;
    LineEnds line{MapX(x1), MapY(y1), MapX(x2), MapY(y2)};
    if (!ClipLine(line, Chart.State.DeviceW, Chart.State.DeviceH)) return;
    DashLine(DeviceUnits(line.X1), DeviceUnits(line.Y1), DeviceUnits(line.X2), DeviceUnits(line.Y2));
}

// Points collected to be drawn at one stroke. A point on the one before it adds nothing, but a line whose
// points all fall on one place is seen there.
struct Stroke {
    std::vector<DevicePoint> Points;
    bool Line = false; // two points at least, be it on one place
    void Add(int x, int y) {
        Line = !Points.empty();
        if (Points.empty() || Points.back().X != x || Points.back().Y != y) Points.push_back({x, y});
    }
    void Draw() {
        if (Points.size() == 1 && Line) Points.push_back(Points.front());
        DashPolyline(Points);
        Points.clear();
        Line = false;
    }
    void DrawAndGoOn() {
        if (Points.size() < 2) return;
        const DevicePoint last = Points.back();
        Draw();
        Points.push_back(last);
    }
};

// The line of a set; false when the drawing is to stop.
bool DrawSetLine(const PointSource& source, const MappedSet& mapped, long& count) {
    SelectSetPen(mapped.Set);
    const bool file = Chart.Target == Targets::Metafile; // nobody watches it grow: a curve is one line there
    Stroke stroke;
    int before = 0; // the point that the pen stands on, 0 while it is lifted
    for (int point = 1; point <= Chart.State.Npts; ++point) {
        if (mapped.X[point] == NoPoint) {
            stroke.Draw();
            before = 0;
        } else {
            if (before > 0 && (AtEdge(mapped, before) || AtEdge(mapped, point))) {
                stroke.Draw();
                DrawClipped(source, mapped.Set, before, point);
            }
            stroke.Add(mapped.X[point], mapped.Y[point]);
            before = point;
        }
        if (!file && (count + 1) % 50 == 0) stroke.DrawAndGoOn();
        if (!CountPoint(count)) return false;
    }
    stroke.Draw();
    return true;
}

// Which points of a set have symbols: each Step-th one from First on, of those that are there.
struct SymbolChoice {
    int First = 0, Step = 1;
    bool Takes(int place) const { return place >= First && (place - First) % Step == 0; }
};

// A few along the line, each set's at points of their own.
SymbolChoice FewAlong(const MappedSet& mapped) {
    constexpr int few = 6;
    constexpr int places = 18; // in a step: neighbours among the sets stand five of them apart
    const auto count = mapped.X.Hi() - std::count(mapped.X.begin(), mapped.X.end(), NoPoint);
    const int step = std::max(static_cast<int>(count) / few, 1);
    const SetLook* look = LookOf(mapped.Set);
    const int dash = look != nullptr ? look->Dash : 0;
    return {dash * 5 % places * step / places, step};
}

bool SymbolIsSeen(int x, int y, const DeviceRect& clip, int reach) {
    return x >= clip.Left - reach && x <= clip.Right + reach && y >= clip.Top - reach &&
           y <= clip.Bottom + reach;
}

// The symbols of a set; those that the clip hides are passed over.
bool DrawSetSymbols(const MappedSet& mapped, const SymbolChoice& choice, long& count) {
    const std::int16_t code = SymbolOf(mapped.Set);
    SelectSymbolPen(mapped.Set, code);
    const DeviceRect clip = FrameClip();
    const int reach =
        std::max(Chart.State.SymbolHalfX, Chart.State.SymbolHalfY) + PenWidth(Chart.Style.SymbolWidth) + 2;
    int place = 0; // among those that are there
    for (int point = 1; point <= Chart.State.Npts; ++point) {
        const int x = mapped.X[point];
        const int y = mapped.Y[point];
        if (x != NoPoint && choice.Takes(place++) && SymbolIsSeen(x, y, clip, reach)) DrawPoint(x, y, code);
        if (!CountPoint(count)) return false;
    }
    return true;
}

bool HasLine(int set) {
    return Alternating() ? set % 2 == 0 : Chart.Spec.PlotStyle == PlotStyles::Lines;
}

bool HasSymbols(int set) {
    return Alternating() ? set % 2 == 1 : Chart.Spec.SymbolMode != 3;
}

void DrawSets(const PointSource& source) {
    const int sets = Chart.State.Nsets;
    const int group = sets < 26 ? 5 : sets / 5;
    TargetSurface().SetClip(FrameClip());
    SetFrameMapping();
    const bool few = DashesRunOut();
    long count = 0;
    for (int set = 1; set <= sets; ++set) {
        const MappedSet mapped = MapSet(source, set);
        if (HasLine(set) && !DrawSetLine(source, mapped, count)) break;
        if (HasSymbols(set) && !DrawSetSymbols(mapped, {}, count)) break;
        if (few && !HasSymbols(set) && !DrawSetSymbols(mapped, FewAlong(mapped), count)) break;
        if (Chart.Target == Targets::Screen && Seams.KeepsPicture != 0 && set % group == 0)
            TargetSurface().Refresh();
    }
    TargetSurface().ClearClip();
}

} // namespace

void DrawXY() {
    PointSource source;
    source.DivisorX = DrawDivisor(Chart.Spec.AxisX1, Chart.LoadFactorX);
    source.DivisorY = DrawDivisor(Chart.Spec.AxisY1, Chart.LoadFactorY);
    DrawSets(source);
}

void DrawLinesOverCategories() {
    PointSource source;
    source.Categories = true;
    source.DivisorY = DrawDivisor(Chart.Spec.AxisY1, Chart.LoadFactorY);
    DrawSets(source);
}

} // namespace Quillon
