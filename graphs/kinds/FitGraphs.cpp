#include "graphs/kinds/FitGraphs.h"

#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/PickSet.h"
#include "graphs/kinds/SeriesNames.h"
#include "graphs/kinds/SpecialOptions.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

constexpr const char* LogOption = "Convert Y Scale to Natural Log";

// A series of the graph from the points of a set; pseudo-points and the place behind the set stay missing.
void FillSeries(SetTable& x, SetTable& y, long series, SetNo set, const OneBased<float>& values) {
    const long first = FirstPointOf(set);
    const long n = TruePointsOf(set);
    for (long i = 1; i <= n; ++i) {
        x(i, series) = Work.PtX[first + i - 1];
        y(i, series) = values[first + i - 1];
    }
}

GraphSpec StartFitGraph(FitGraph kind, const GraphLimits& limits) {
    const int style = kind == FitGraph::Overlay ? PlotStyles::Alternating
                      : kind == FitGraph::Data  ? PlotStyles::SymbolsOnly
                                                : PlotStyles::Lines;
    GraphSpec spec = StartGraph(style);
    Chart.Style.UseRainbowColors = FlagFalse; // data and fit of a set have one colour
    spec.SymbolMode = kind == FitGraph::Function ? 3 : 1;
    spec.Title1.Text = Work.FitTitle;
    spec.Title2.Text = DataFrom();
    spec.AxisX1.Title.Text = Work.XAxisTitle;
    spec.AxisY1.Title.Text = Work.DataTypeName;
    ImposeScale(spec.AxisX1, limits.XLog, limits.XMin, limits.XMax, limits.XDecimals);
    ImposeScale(spec.AxisY1, limits.YLog, limits.YMin, limits.YMax, limits.YDecimals);
    return spec;
}

GraphOrigin Origin(FitGraph kind, SetNo set, const GraphLimits& limits) {
    const char* const name = kind == FitGraph::Data       ? "Data"
                             : kind == FitGraph::Function ? "Fitted Function"
                                                          : "Overlay";
    return OriginOf(name, set, kind == FitGraph::Data ? DataStand : FitStands,
                    [kind, set, limits] { return MakeFitGraph(kind, set, limits); });
}

void Show(FitGraph kind, SetNo set, const GraphLimits& limits = {}) {
    if (MakeFitGraph(kind, set, limits)) ShowCharts(Origin(kind, set, limits));
}

void ShowPicked(FitGraph kind) {
    const SetNo set = PickSet();
    if (set != NoSet) Show(kind, set);
}

} // namespace

bool MakeFitGraph(FitGraph kind, SetNo set, const GraphLimits& limits) {
    GraphSpec spec = StartFitGraph(kind, limits);
    const SetRange sets = SetsOf(set);
    const bool overlay = kind == FitGraph::Overlay;
    const long series = CountOf(sets) * (overlay ? 2 : 1);
    SetTable x(LongestSet(sets), series);
    SetTable y(LongestSet(sets), series);
    std::vector<std::string> names;
    for (const SetNo k : sets) {
        const long i = PlaceIn(sets, k);
        if (overlay) {
            FillSeries(x, y, 2 * i - 1, k, Work.PtY);
            FillSeries(x, y, 2 * i, k, Work.PtFit);
            names.push_back(SeriesName(k));
            names.push_back(SeriesName(k) + " (fit)");
        } else if (kind == FitGraph::Data) {
            FillSeries(x, y, i, k, Work.PtY);
            names.push_back(SeriesName(k));
        } else {
            FillSeries(x, y, i, k, Work.PtFit);
            names.push_back("Set " + std::to_string(k.Number));
        }
    }
    const bool made = HandOver(spec, x, y, names, LooksOfSets(sets, overlay ? 2 : 1));
    OfferLogOption(limits.YLog ? "" : LogOption); // the values on a log axis are logarithms already
    return made;
}

void BuildFitGraph(int mode, bool xLog, bool yLog, float xMin, float xMax, float yMin, float yMax,
                   int xDecimals, int yDecimals) {
    const GraphLimits limits{xLog, yLog, xMin, xMax, yMin, yMax, xDecimals, yDecimals};
    Show(mode == 1 ? FitGraph::Overlay : FitGraph::Function, AllSets, limits);
}

void GraphData() {
    Show(FitGraph::Data, AllSets);
}
void GraphFunc() {
    Show(FitGraph::Function, AllSets);
}
void GraphOverlay() {
    Show(FitGraph::Overlay, AllSets);
}
void GraphFuncSet() {
    ShowPicked(FitGraph::Function);
}
void GraphOverlaySet() {
    ShowPicked(FitGraph::Overlay);
}

} // namespace Quillon
