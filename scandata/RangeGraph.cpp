#include "scandata/RangeGraph.h"

#include "chart/CHART.h"
#include "chart/Charts.h"
#include "chart/scale/Tics.h"
#include "platform/Platform.h"
#include "scandata/DataSetTable.h"
#include "scandata/RangeOptions.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr const char* Instruction =
    "Drag the green markers to designate the data region to be fitted; hit ENTER when done";

// Limits of the signal within the present range, with a little room: what lies outside, between the columns
// of a cell, may be ten times as large and would press the data flat.
void LimitToRange(GraphAxis& axis, const SetTable& y, long first, long last) {
    float lo = MissingValue;
    float hi = MissingValue;
    for (long p = first; p <= last; ++p) {
        const float v = y(p, 1);
        if (v == MissingValue) continue;
        lo = lo == MissingValue ? v : std::min(lo, v);
        hi = hi == MissingValue ? v : std::max(hi, v);
    }
    if (lo == MissingValue || lo == hi) {
        axis.ScaleMode = ScaleModes::Autorange;
        return;
    }
    const float room = 0.15F * (hi - lo);
    const double step = RoundStep(static_cast<double>(hi - lo) / 5.0);
    axis.ScaleMode = ScaleModes::Manual;
    axis.TicInterval = static_cast<float>(step);
    axis.Min = axis.FirstTic = static_cast<float>(step * std::floor(static_cast<double>(lo - room) / step));
    axis.Max = static_cast<float>(step * std::ceil(static_cast<double>(hi + room) / step));
    axis.Decimals = ToInt16(std::max(0.0, std::ceil(-std::log10(step) - 1e-9)));
}

void Draw(RowNo row) {
    const long n = Work.ScanPoints[row];
    Chart.GraphHeld = FlagFalse;
    GraphSpec spec;
    GraphInit(spec, GraphTypes::XYPlot, PlotStyles::SymbolsOnly);
    spec.SymbolMode = 1;
    spec.Title1.Text = RangeGraphIsLog ? "ln(c) vs. r^2 / 2 Plot" : Work.ScanFile[row];
    spec.AxisX1.Title.Text = RangeGraphIsLog ? "Radius Squared / 2" : "Radius";
    spec.AxisY1.Title.Text = RangeGraphIsLog ? "ln(Absorbance)" : "Absorbance";
    spec.AxisX1.ScaleMode = ScaleModes::Autorange;
    SetTable x(n, 1);
    SetTable y(n, 1);
    for (long p = 1; p <= n; ++p) {
        const float v = RangeOrdinate(Work.ScanValue[row][p]);
        y(p, 1) = v;
        x(p, 1) = v == MissingValue ? MissingValue : RangeAbscissa(Work.ScanRadius[row][p]);
    }
    LimitToRange(spec.AxisY1, y, Work.FitRange[0][row], Work.FitRange[1][row]);
    spec.AxisX2 = spec.AxisX1;
    spec.AxisY2 = spec.AxisY1;
    spec.AxisX2.TicMode = spec.AxisY2.TicMode = TicModes::MarksOnly;
    spec.AxisX2.Title.Text = spec.AxisY2.Title.Text = "";
    Chart.GraphHeld = FlagTrue;
    PlotSets(spec, x, y, static_cast<int>(n), 1, 1, {Work.ScanFile[row]}, {}, {});
    ChartMenuStatus(Charts);
}

// The points that the markers stand at; crossed markers are taken in order.
void TakeMarkers(RowNo row) {
    RecordMarkers();
    const float lo = std::min(Charts.Markers[0].X, Charts.Markers[1].X);
    const float hi = std::max(Charts.Markers[0].X, Charts.Markers[1].X);
    const long n = Work.ScanPoints[row];
    OneBased<float> axis(n);
    for (long p = 1; p <= n; ++p)
        axis[p] = RangeAbscissa(Work.ScanRadius[row][p]);
    long first{};
    long last{};
    SearchArray(axis, 1, n, lo, first, false, 1);
    SearchArray(axis, 1, n, hi, last, true, -1);
    if (first < 1 || last < first) return; // no point between them
    Work.FitRange[0][row] = ToInt16(first);
    Work.FitRange[1][row] = ToInt16(last);
}

} // namespace

bool SelectRange(RowNo row) {
    if (Work.ScanFile[row].empty() || Work.ScanPoints[row] < 1) return false;
    RangeGraphIsLog = Work.RangeLogPlot != 0;
    Draw(row);
    OfferRangeOptions();
    PlaceMarkers(RangeAbscissa(Work.ScanRadius[row][Work.FitRange[0][row]]),
                 RangeAbscissa(Work.ScanRadius[row][Work.FitRange[1][row]]));
    Charts.StatusLine.Text = Instruction;
    Charts.KeyCode = 0;
    Charts.Needed = true;
    Charts.Shown = true;
    Charts.EndsOnKey = [](int code, int) { return code == 13 || code == 27; };
    Host.ShowModal(ChartsName);
    const bool accepted = Charts.KeyCode == 13;
    if (accepted) TakeMarkers(row);
    Charts.EndsOnKey = nullptr;
    Charts.Needed = Charts.Shown = false;
    Charts.StatusLine.Text.clear();
    RemoveMarkers();
    ClearSpecialOptions();
    Chart.GraphHeld = FlagFalse; // a graph shown otherwise is made afresh
    ClearZoom();
    ChartMenuStatus(Charts);
    Work.AbortFit = FlagFalse;
    return accepted;
}

} // namespace Quillon
