#include "scandata/range/RangeGraph.h"

#include "chart/CHART.h"
#include "chart/Charts.h"
#include "chart/scale/Tics.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "scandata/range/RangeBar.h"
#include "scandata/range/RangeOptions.h"
#include "scandata/range/RangeReadings.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr const char* Instruction =
    "Drag the green markers to designate the data region to be fitted; hit ENTER when done";

struct SignalSpan {
    float Low = MissingValue, High = MissingValue; // missing where there is no signal
};

SignalSpan SpanOf(const SetTable& y, long first, long last) {
    SignalSpan span;
    for (long p = first; p <= last; ++p) {
        const float v = y(p, 1);
        if (v == MissingValue) continue;
        span.Low = span.Low == MissingValue ? v : std::min(span.Low, v);
        span.High = span.High == MissingValue ? v : std::max(span.High, v);
    }
    return span;
}

// Limits of the signal within the present range, with a little room: what lies outside, between the columns
// of a cell, may be ten times as large and would press the data flat.
void LimitTo(const SignalSpan& span, GraphAxis& axis) {
    const float lo = span.Low, hi = span.High;
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

// The axes above and to the right repeat the marks of those opposite, without titles.
void RepeatAxes(GraphSpec& spec) {
    spec.AxisX2 = spec.AxisX1;
    spec.AxisY2 = spec.AxisY1;
    spec.AxisX2.TicMode = spec.AxisY2.TicMode = TicModes::MarksOnly;
    spec.AxisX2.Title.Text = spec.AxisY2.Title.Text = "";
}

GraphSpec SpecOf(RowNo row) {
    GraphSpec spec;
    GraphInit(spec, GraphTypes::XYPlot, PlotStyles::SymbolsOnly);
    spec.SymbolMode = 1;
    spec.Title1.Text = RangeGraphIsLog ? "ln(c) vs. r^2 / 2 Plot" : Work.ScanFile[row];
    spec.AxisX1.Title.Text = RangeGraphIsLog ? "Radius Squared / 2" : "Radius";
    spec.AxisY1.Title.Text = RangeGraphIsLog ? "ln(" + Work.DataTypeName + ")" : Work.DataTypeName;
    spec.AxisX1.ScaleMode = ScaleModes::Autorange;
    return spec;
}

void DrawRange(RowNo row) {
    const long n = ReadingsOf(row); // as many as may come back
    Chart.GraphHeld = FlagFalse;
    GraphSpec spec = SpecOf(row);
    SetTable x(n, 1), y(n, 1);
    for (long p = 1; p <= Work.ScanPoints[row]; ++p) {
        const float v = RangeOrdinate(Work.ScanValue[row][p]);
        y(p, 1) = v;
        x(p, 1) = v == MissingValue ? MissingValue : RangeAbscissa(Work.ScanRadius[row][p]);
    }
    LimitTo(SpanOf(y, Work.FitRange[0][row], Work.FitRange[1][row]), spec.AxisY1);
    RepeatAxes(spec);
    Chart.GraphHeld = FlagTrue;
    PlotSets(spec, x, y, static_cast<int>(n), 1, 1, {Work.ScanFile[row]}, {}, {});
    ChartMenuStatus(Charts);
}

// Return is refused, and the graph stays, where the markers leave no range.
bool RangeEndsOnKey(int code, int) {
    return code == KeyEscape || (code == KeyReturn && RangeMayBeTaken());
}

void Open(RowNo row) {
    RangeGraphIsLog = Work.RangeLogPlot != 0;
    DrawRange(row);
    OfferRangeOptions();
    PlaceMarkers(RangeAbscissa(Work.ScanRadius[row][Work.FitRange[0][row]]),
                 RangeAbscissa(Work.ScanRadius[row][Work.FitRange[1][row]]));
    OpenRangeBar(row);
    if (!Work.LeftOut[row].empty()) ShowReadings();
    Charts.OnShiftBox = ToggleReadings;
    Charts.StatusLine.Text = Instruction;
    Charts.KeyCode = 0;
    Charts.Needed = Charts.ClosesAsEscape = Charts.WashOutside = true;
    Charts.Shown = true;
    Charts.EndsOnKey = RangeEndsOnKey;
}

void Close() {
    Charts.EndsOnKey = nullptr;
    Charts.Needed = Charts.Shown = Charts.ClosesAsEscape = Charts.WashOutside = false;
    Charts.StatusLine.Text.clear();
    CloseRangeBar();
    RemoveMarkers();
    Charts.OnShiftBox = nullptr;
    Charts.PalePoints.clear();
    ClearSpecialOptions();
    Chart.GraphHeld = FlagFalse; // a graph shown otherwise is made afresh
    ClearZoom();
    ChartMenuStatus(Charts);
    ClearCancel();
}

} // namespace

bool SelectRange(RowNo row) {
    if (Work.ScanFile[row].empty() || Work.ScanPoints[row] < 1) return false;
    const KeptReadings kept = KeepReadings(row);
    Open(row);
    Host.ShowModal(ChartsName);
    RecordMarkers();
    const PointRange range = MarkedPoints();
    const bool accepted = Charts.KeyCode == KeyReturn && range.First > 0;
    if (accepted) {
        Work.FitRange[0][row] = ToInt16(range.First);
        Work.FitRange[1][row] = ToInt16(range.Last);
    } else {
        PutBack(kept);
    }
    Close();
    return accepted;
}

} // namespace Quillon
