#include "chart/CHART.h"

#include "chart/layout/CheckAxes.h"
#include "chart/records/Kept.h"
#include "chart/records/SetLooks.h"
#include "chart/scale/AxisScale.h"
#include "platform/Narrow.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace Quillon {

namespace {

// What a caller hands over, apart from the GraphSpec.
struct PlotData {
    const SetTable& X;
    const SetTable& Y;
    std::int16_t Npts, FirstSet, LastSet, MultiSet;
    const std::vector<std::string>& SetNames;
};

void SetKinds(GraphSpec& spec) {
    GraphState& state = Chart.State;
    std::tie(state.KindX, state.KindY) = KindsOfType(spec.GraphType);
    if (spec.GraphType != GraphTypes::Pie) return;
    for (int place = BottomAxis; place <= RightAxis; ++place)
        AxisOf(spec, place).Show = 0;
}

// Copies columns FirstSet to LastSet of a caller's table and brings them into stored form.
void TakeValues(const PlotData& data, const SetTable& from, const GraphAxis& axis, bool values,
                SetTable& to) {
    const int sets = data.LastSet - data.FirstSet + 1;
    to.Recreate(data.Npts, sets);
    if (!values) return;
    const long points = std::min<long>(data.Npts, from.Points());
    for (int set = 1; set <= sets; ++set) {
        const long column = data.FirstSet + set - 1;
        if (column < 1 || column > from.Sets()) continue;
        std::copy_n(from.Set(column), points, to.Set(set));
        TransformSet(axis, to.Set(set), points);
    }
}

// What the transform does not give back is kept beside its result.
void KeepRaw(const PlotData& data, const SetTable& from, const GraphAxis& axis, bool values, SetTable& raw) {
    const bool changed = axis.ScaleType == ScaleTypes::Logarithmic || LoadDivisor(axis) != 1.0F;
    if (changed && values) TakeValues(data, from, GraphAxis{}, true, raw);
}

void TakeNames(const PlotData& data) {
    const int sets = data.LastSet - data.FirstSet + 1;
    Chart.SetNames.Recreate(sets);
    for (int set = 1; set <= sets && set <= static_cast<int>(data.SetNames.size()); ++set)
        Chart.SetNames[set] = data.SetNames[static_cast<std::size_t>(set - 1)];
}

void TakeNumbers() {
    Chart.SetFlags.Recreate(Chart.State.Nsets);
    const long known = std::min<long>(Chart.SetFlags.Hi(), static_cast<long>(Chart.Looks.Numbers.size()));
    for (long set = 1; set <= known; ++set)
        Chart.SetFlags[set] = ToInt16(NumberMark + Chart.Looks.Numbers[static_cast<std::size_t>(set - 1)]);
}

// The columns, after the kinds of the axes.
void TakeColumns(const GraphSpec& spec, const PlotData& data) {
    const GraphState& state = Chart.State;
    const bool pie = spec.GraphType == GraphTypes::Pie; // its slices are the Y values
    const bool valuesX = state.KindX == AxisKinds::Value;
    const bool valuesY = pie || state.KindY == AxisKinds::Value;
    TakeValues(data, data.X, Chart.Spec.AxisX1, valuesX, Chart.DataX);
    TakeValues(data, data.Y, Chart.Spec.AxisY1, valuesY, Chart.DataY);
    Chart.Columns = {};
    KeepRaw(data, data.X, Chart.Spec.AxisX1, valuesX, Chart.Columns.X.Raw);
    KeepRaw(data, data.Y, Chart.Spec.AxisY1, valuesY, Chart.Columns.Y.Raw);
    Chart.LoadFactorX = LoadDivisor(Chart.Spec.AxisX1);
    Chart.LoadFactorY = LoadDivisor(Chart.Spec.AxisY1);
}

void TakeCounts(const PlotData& data) {
    GraphState& state = Chart.State;
    state.Npts = data.Npts;
    state.Nsets = ToInt16(data.LastSet - data.FirstSet + 1);
    state.FirstSet = data.FirstSet;
    state.LastSet = data.LastSet;
}

void TakeData(const GraphSpec& spec, const PlotData& data) {
    Chart.Spec = spec;
    Chart.State.MultiSet = data.MultiSet;
    SetKinds(Chart.Spec);
    Chart.CatLabels.Recreate(1);
    TakeColumns(spec, data);
    TakeNames(data);
    Chart.Looks = std::exchange(NextLooks, {});
    TakeCounts(data);
    TakeNumbers();
    Kept.BoxTable.Recreate(0, 0);
    Kept.ZoomState = 0;
}

// False when it stopped before the data were in, and the former graph is what it was.
bool Load(GraphSpec& spec, const PlotData& data) {
    Chart.GraphStatus = GraphStatuses::Fine;
    if (Chart.State.IniRead == 0) ReadChartDefaults();
    CheckSpec(spec, data.Npts, data.FirstSet, data.LastSet);
    if (Chart.GraphStatus >= GraphStatuses::Stop) return false;
    if (!HasSurface()) {
        Chart.GraphStatus = GraphStatuses::NoSurface;
        return false;
    }
    TakeData(spec, data);
    LayoutGraph();
    spec = Chart.Spec;
    return true;
}

// The flag comes down on every way out, since nothing is drawn while it is up.
bool LoadWhileBusy(GraphSpec& spec, const PlotData& data) {
    struct BusyScope {
        BusyScope() { Chart.State.Busy = 1; }
        ~BusyScope() { Chart.State.Busy = 0; }
        BusyScope(const BusyScope&) = delete;
        BusyScope& operator=(const BusyScope&) = delete;
    };
    const BusyScope scope;
    return Load(spec, data);
}

// A graph that is not held is gone once it has been drawn.
void LetGo() {
    if (Chart.GraphHeld != 0) return;
    Chart.DataX.Recreate(0, 0);
    Chart.DataY.Recreate(0, 0);
    Chart.Columns = {};
}

void PlotLoaded(GraphSpec& spec, const PlotData& data, const std::vector<GraphNote>& notes,
                const std::vector<GraphMark>& marks) {
    ClearDrawing();
    SelectTarget(spec);
    if (Chart.GraphStatus >= GraphStatuses::Stop) return;
    if (LoadWhileBusy(spec, data)) {
        Chart.Notes = notes;
        Chart.Marks = marks;
        if (Chart.GraphStatus < GraphStatuses::Stop) ShowTarget();
        LetGo();
    }
    if (Seams.NewGraph) Seams.NewGraph();
    Charts.StatusLine.Text.clear(); // it told of the graph before
    ClearZoom();
    ClearSpecialOptions();
}

// A graph of a kind as the settings have it, for the screen. The axes above and on the right are marks alone.
GraphSpec DefaultSpec(int graphType, int plotStyle) {
    GraphSpec spec;
    spec.GraphType = ToInt16(graphType);
    spec.PlotStyle = ToInt16(plotStyle);
    spec.SymbolMode = graphType == GraphTypes::XYPlot && plotStyle == PlotStyles::Lines ? 3 : 1;
    spec.View = spec.Frame = DefaultBox();
    spec.Title1 = spec.Title2 = DefaultTitle();
    spec.AxisX1 = spec.AxisX2 = spec.AxisY1 = spec.AxisY2 = DefaultAxis();
    spec.AxisX2.TicMode = spec.AxisY2.TicMode = TicModes::MarksOnly;
    spec.AxisX2.Grid = spec.AxisY2.Grid = 0;
    spec.Legend = DefaultLegend();
    spec.LineWidth = ToInt16(Chart.Style.LineWidth);
    spec.Device = "0";
    return spec;
}

SetTable AsTable(const OneBased<float>& values) {
    SetTable table(values.Hi(), 1);
    std::copy(values.begin(), values.end(), table.Set(1));
    return table;
}

} // namespace

void CheckSpec(GraphSpec& spec, int nPts, int firstSet, int lastSet) {
    Chart.GraphStatus = GraphStatuses::Fine;
    if (spec.GraphType < GraphTypes::HorizontalBars || spec.GraphType > GraphTypes::Pie)
        Chart.GraphStatus = GraphStatuses::BadGraphType;
    else if (firstSet > lastSet)
        Chart.GraphStatus = GraphStatuses::BadSetRange;
    else if (nPts < 1)
        Chart.GraphStatus = GraphStatuses::NoPoints;
    if (Chart.GraphStatus >= GraphStatuses::Stop) return;
    if (spec.PlotStyle < 1 || spec.PlotStyle > 3) {
        spec.PlotStyle = 1;
        WarnInStatus(GraphStatuses::BadPlotStyle);
    }
    CheckAxes(spec);
}

void GraphInit(GraphSpec& spec, int graphType, int plotStyle) {
    Chart.GraphStatus = GraphStatuses::Fine;
    if (Chart.State.IniRead == 0 || Kept.StyleOfFile != 0) ReadChartDefaults();
    Chart.Style.UseRainbowColors = Kept.RainbowDefault;
    if (graphType < GraphTypes::HorizontalBars || graphType > GraphTypes::Pie) {
        Chart.GraphStatus = GraphStatuses::BadGraphType;
        return;
    }
    if (plotStyle < 1 || plotStyle > 3) {
        Chart.GraphStatus = GraphStatuses::BadPlotStyle;
        plotStyle = 1;
    }
    spec = DefaultSpec(graphType, plotStyle);
    ChooseTarget(spec);
}

void LoadSets(GraphSpec& spec, const SetTable& x, const SetTable& y, int nPts, int firstSet, int lastSet,
              const std::vector<std::string>& setNames) {
    Load(spec, {x, y, ToInt16(nPts), ToInt16(firstSet), ToInt16(lastSet), 1, setNames});
}

void PlotSets(GraphSpec& spec, const SetTable& x, const SetTable& y, int nPts, int firstSet, int lastSet,
              const std::vector<std::string>& setNames, const std::vector<GraphNote>& notes,
              const std::vector<GraphMark>& marks) {
    PlotLoaded(spec, {x, y, ToInt16(nPts), ToInt16(firstSet), ToInt16(lastSet), 1, setNames}, notes, marks);
}

void PlotSingle(GraphSpec& spec, const OneBased<float>& x, const OneBased<float>& y, int nPts,
                const std::vector<GraphNote>& notes, const std::vector<GraphMark>& marks) {
    PlotLoaded(spec, {AsTable(x), AsTable(y), ToInt16(nPts), 1, 1, 0, {}}, notes, marks);
}

} // namespace Quillon
