#include "scandata/range/RangeOptions.h"

#include "chart/CHART.h"
#include "chart/Charts.h"
#include "chart/hand/ScaleType.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr float RoomBeside = 0.075F; // of the span, on either side of what an axis closes in on

bool Drawn() {
    return GraphMayChange() && Chart.GraphDrawn;
}

RowNo RowInHand() {
    return RowNo(9L * Work.CurrentPage + Work.CurrentRow + 1);
}

bool RangeCoversScan(RowNo row) {
    return Work.FitRange[0][row] <= 1 && Work.FitRange[1][row] >= Work.ScanPoints[row];
}

float Logarithm(float y) {
    if (y == MissingValue || !(y > 0.0F)) return MissingValue;
    return static_cast<float>(std::log(static_cast<double>(y)));
}

float HalfSquare(float x) {
    if (x == MissingValue) return x;
    return static_cast<float>(static_cast<double>(x) * static_cast<double>(x) / 2.0);
}

void ChangeValues(SetTable& table, float (*change)(float)) {
    for (long set = 1; set <= table.Sets(); ++set)
        for (long point = 1; point <= table.Points(); ++point)
            table(point, set) = change(table(point, set));
}

// The smallest and largest Y within the fit range; false where there is none.
bool RangeOfY(RowNo row, float& low, float& high) {
    low = high = MissingValue;
    const long last = std::min<long>(Work.FitRange[1][row], Chart.DataY.Points());
    for (long p = std::max<long>(1, Work.FitRange[0][row]); p <= last; ++p) {
        const float y = Chart.DataY(p, 1);
        if (y == MissingValue) continue;
        low = low == MissingValue ? y : std::min(low, y);
        high = high == MissingValue ? y : std::max(high, y);
    }
    return low != MissingValue;
}

// Limits about a stretch; one without length leaves them as they are.
void CloseIn(float low, float high, float& min, float& max) {
    if (!(low < high)) return;
    const float edge = RoomBeside * (high - low);
    min = low - edge;
    max = high + edge;
}

// X limits about a stretch of the axis.
void ShowStretch(float from, float to) {
    if (!Drawn() || !(from < to)) return;
    ChartScale scale = PresentScale();
    CloseIn(from, to, scale.XMin, scale.XMax);
    ZoomTo(scale);
}

// The scale of the converted graph: what a zoom or a range given had left of X stays, else all is shown.
ChartScale ConvertedScale(bool keepsX) {
    const ChartScale old = PresentScale();
    Chart.Spec.AxisX1.ScaleMode = Chart.Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Replot();
    ChartScale scale = PresentScale();
    if (keepsX) scale.XMin = HalfSquare(old.XMin), scale.XMax = HalfSquare(old.XMax);
    const RowNo row = RowInHand();
    float low{};
    float high{};
    if (RangeCoversScan(row) || !RangeOfY(row, low, high)) return scale;
    CloseIn(low, high, scale.YMin, scale.YMax);
    CloseIn(RangeAbscissa(Work.ScanRadius[row][Work.FitRange[0][row]]),
            RangeAbscissa(Work.ScanRadius[row][Work.FitRange[1][row]]), scale.XMin, scale.XMax);
    return scale;
}

} // namespace

float RangeAbscissa(float radius) {
    return RangeGraphIsLog ? HalfSquare(radius) : radius;
}

float RangeOrdinate(float signal) {
    return RangeGraphIsLog ? Logarithm(signal) : signal;
}

void OfferRangeOptions() {
    ClearSpecialOptions();
    if (!RangeGraphIsLog)
        OfferSpecialOption(RangeLogOption, "&Convert to ln(c) vs. r^2 / 2", ConvertRangeGraphToLog);
    OfferSpecialOption(WholeScanOption, "Show the &Whole Scan", ShowWholeScan);
    OfferSpecialOption(FitRangeOption, "Show the &Fitting Range", ShowFitRange);
    OfferSpecialOption(BetweenMarkersOption, "Show the Region Between the &Markers", ShowBetweenMarkers);
}

void StoredYToLog() {
    ChangeValues(Chart.DataY, Logarithm);
    GraphTitle& title = Chart.Spec.AxisY1.Title;
    title.Text = LnTitle(title.Text);
}

void ConvertRangeGraphToLog() {
    if (!Drawn() || RangeGraphIsLog) return;
    RecordMarkers();
    GraphAxis& x = Chart.Spec.AxisX1;
    const bool keepsX = x.ScaleMode == ScaleModes::Manual || x.ScaleMode == ScaleModes::Zoomed;
    RangeGraphIsLog = true;
    StoredYToLog();
    ChangeValues(Chart.DataX, HalfSquare);
    for (ChartMarker& marker : Charts.Markers)
        marker.X = HalfSquare(marker.X);
    x.Title.Text = "R squared / 2";
    Charts.SpecialOpts[RangeLogOption].Enabled = false;
    ClearZoom(); // its scales are those of the former values
    const ChartScale full = ConvertedScale(keepsX);
    if (!(full == PresentScale())) TakeScale(full, false);
    RedrawAsLaidOut();
}

void ShowWholeScan() {
    if (Drawn()) DoAutoX();
}

void ShowFitRange() {
    const RowNo row = RowInHand();
    ShowStretch(RangeAbscissa(Work.ScanRadius[row][Work.FitRange[0][row]]),
                RangeAbscissa(Work.ScanRadius[row][Work.FitRange[1][row]]));
}

void ShowBetweenMarkers() {
    if (Charts.Markers.size() < 2) return;
    const auto [from, to] = std::minmax(Charts.Markers[0].X, Charts.Markers[1].X);
    ShowStretch(from, to);
}

} // namespace Quillon
