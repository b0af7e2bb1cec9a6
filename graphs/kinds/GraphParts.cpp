#include "graphs/kinds/GraphParts.h"

#include "graphs/kinds/AnalysisDigest.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Quillon {

GraphSpec StartGraph(int plotStyle) {
    Charts.FormerZoom = ZoomAtHand();
    Chart.GraphHeld = FlagFalse;
    GraphSpec spec;
    GraphInit(spec, GraphTypes::XYPlot, plotStyle);
    spec.Legend.Show = 1;
    return spec;
}

void ImposeScale(GraphAxis& axis, bool log, float low, float high, int decimals) {
    axis.ScaleMode = low == high ? ScaleModes::Autorange : ScaleModes::Manual;
    axis.Min = low;
    axis.Max = high;
    axis.FirstTic = low;
    axis.TicInterval = (high - low) / 10.0F;
    axis.Decimals = ToInt16(std::abs(decimals));
    const bool imposed = axis.ScaleMode == ScaleModes::Manual; // an autorange finds its own format
    axis.TicFormat = imposed && decimals < 0 ? TicFormats::Exponential : TicFormats::Decimal;
    if (!log) return;
    axis.ScaleType = ScaleTypes::Logarithmic;
    axis.TicInterval = 3.0F;
}

void CopyOppositeAxes(GraphSpec& spec) {
    const auto copy = [](GraphAxis& to, const GraphAxis& from) {
        to = from;
        to.Title.Text = "";
        to.TicMode = TicModes::MarksOnly;
        to.Grid = 0;
    };
    copy(spec.AxisX2, spec.AxisX1);
    copy(spec.AxisY2, spec.AxisY1);
}

SetRange SetsOf(SetNo set) {
    if (set != AllSets) return {set, set};
    return EachSet();
}

long LongestSet(const SetRange& sets) {
    long longest = 0;
    for (const SetNo set : sets)
        longest = std::max<long>(longest, Work.SetPts[set]);
    return longest;
}

SetLooks LooksOfSets(const SetRange& sets, int times) {
    SetLooks looks;
    for (const SetNo set : sets)
        looks.Numbers.insert(looks.Numbers.end(), static_cast<std::size_t>(times), ToInt16(set.Number));
    return looks;
}

double DiagonalOf(const GraphBox& box) {
    return std::max(std::trunc(std::hypot(box.X2 - box.X1, box.Y2 - box.Y1)), 1.0);
}

GraphMark LineAt(float y) {
    constexpr std::int16_t acrossTheScale = 4;
    GraphMark mark;
    mark.Kind = acrossTheScale;
    mark.Y1 = y;
    return mark;
}

bool HandOver(GraphSpec& spec, const SetTable& x, const SetTable& y, const std::vector<std::string>& names,
              SetLooks looks, const std::vector<GraphMark>& marks) {
    CopyOppositeAxes(spec);
    Chart.GraphHeld = FlagTrue;
    NextLooks = std::move(looks);
    PlotSets(spec, x, y, static_cast<int>(x.Points()), 1, static_cast<int>(x.Sets()), names, {}, marks);
    ChartMenuStatus(Charts);
    return Chart.GraphStatus < GraphStatuses::Stop;
}

GraphOrigin OriginOf(const std::string& name, SetNo set, bool (*stands)(),
                     const std::function<bool()>& make) {
    const std::string which = set != AllSets ? ", set " + std::to_string(set.Number) : "";
    return {name + which, [set, stands, make] { return stands() && set.Number <= Work.NumSets && make(); },
            0};
}

bool DataStand() {
    return Work.DataChosen != 0;
}
bool FitStands() {
    return Work.FitValid != 0;
}
bool FitOfTheseDataStands() {
    return Work.FitValid != 0 && Work.NewData == Changed::Nothing;
}

void ShowCharts(const GraphOrigin& origin) {
    ZoomAgain(std::exchange(Charts.FormerZoom, {}));
    Charts.Origin = origin;
    Charts.Origin.Contents = DigestOfAnalysis();
    Host.ShowForm(ChartsName);
}

} // namespace Quillon
