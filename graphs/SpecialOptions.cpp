#include "graphs/SpecialOptions.h"

#include "chart/CHART.h"
#include "graphs/GraphParts.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr float Margin = 0.075F; // of the span, around the fit range

bool GraphAtHand() {
    return Chart.GraphHeld && Chart.GraphDrawn;
}

float LogOf(float y) {
    if (y == MissingValue || !(y > 0.0F)) return MissingValue;
    return static_cast<float>(std::log(static_cast<double>(y)));
}

float HalfSquare(float x) {
    if (x == MissingValue) return x;
    return static_cast<float>(static_cast<double>(x) * static_cast<double>(x) / 2.0);
}

template <class Change> void ChangeValues(SetTable& table, Change&& change) {
    for (long s = 1; s <= table.Sets(); ++s)
        for (long i = 1; i <= table.Points(); ++i)
            table(i, s) = change(table(i, s));
}

void Retitle(GraphTitle& title) {
    title.Text = "Ln (" + title.Text.Str() + ")";
}

void DrawAfresh() {
    Replot();
    ShowGraph();
}

// Manual limits around lo..hi, rounded to nothing: the margin is what keeps points off the frame.
void CloseIn(GraphAxis& axis, float lo, float hi) {
    const float edge = Margin * (hi - lo);
    axis.ScaleMode = ScaleModes::Zoomed;
    axis.Min = lo - edge;
    axis.Max = hi + edge;
}

// The smallest and largest Y within the fit range; false when there is none.
bool RangeOfY(long row, float& lo, float& hi) {
    lo = hi = MissingValue;
    const long last = std::min<long>(Work.FitRange[1][row], Chart.DataY.Points());
    for (long p = std::max<long>(1, Work.FitRange[0][row]); p <= last; ++p) {
        const float y = Chart.DataY(p, 1);
        if (y == MissingValue) continue;
        lo = lo == MissingValue ? y : std::min(lo, y);
        hi = hi == MissingValue ? y : std::max(hi, y);
    }
    return lo != MissingValue && hi != MissingValue;
}

long RowInHand() {
    return 9L * Work.CurrentPage + Work.CurrentRow + 1;
}

bool RangeCoversScan(long row) {
    return Work.FitRange[0][row] <= 1 && Work.FitRange[1][row] >= Work.ScanPoints[row];
}

} // namespace

void ClearSpecialOptions() {
    Charts.SpecialOpts = {};
    Charts.SpecialActions = {};
    for (MenuItem& item : Charts.SpecialOpts)
        item.Visible = item.Enabled = false;
}

void OfferSpecialOption(std::size_t place, const std::string& caption, void (*action)()) {
    Charts.SpecialOpts[place] = MenuItem{caption, false, true, true};
    Charts.SpecialActions[place] = action;
}

void OfferLogOption(const std::string& caption) {
    ClearSpecialOptions();
    if (!caption.empty()) OfferSpecialOption(LogYOption, caption, ConvertYToLog);
}

void ConvertYToLog() {
    if (!GraphAtHand()) return;
    ChangeValues(Chart.DataY, LogOf);
    Retitle(Chart.Spec.AxisY1.Title);
    Chart.Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Charts.SpecialOpts[LogYOption].Enabled = false; // the logarithm of a logarithm is of no use
    ClearZoom();
    DrawAfresh();
}

void ConvertRangeGraphToLog() {
    if (!GraphAtHand()) return;
    ChangeValues(Chart.DataY, LogOf);
    ChangeValues(Chart.DataX, HalfSquare);
    GraphSpec& spec = Chart.Spec;
    spec.AxisX1.Min = HalfSquare(spec.AxisX1.Min);
    spec.AxisX1.Max = HalfSquare(spec.AxisX1.Max);
    Retitle(spec.AxisY1.Title);
    spec.AxisX1.Title.Text = "R squared / 2";
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Charts.SpecialOpts[RangeLogOption].Enabled = false;
    ClearZoom();
    Replot();
    const long row = RowInHand();
    float lo{};
    float hi{};
    if (!RangeCoversScan(row) && RangeOfY(row, lo, hi)) {
        CloseIn(spec.AxisY1, lo, hi);
        CloseIn(spec.AxisX1, Chart.DataX(Work.FitRange[0][row], 1), Chart.DataX(Work.FitRange[1][row], 1));
    }
    DrawAfresh();
}

void RescaleRangeGraph() {
    if (!GraphAtHand()) return;
    Chart.Spec.AxisX1.ScaleMode = ScaleModes::Autorange;
    DrawAfresh();
}

} // namespace Quillon
