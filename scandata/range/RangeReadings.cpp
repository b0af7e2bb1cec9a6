#include "scandata/range/RangeReadings.h"

#include "chart/CHART.h"
#include "chart/Charts.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "scandata/range/RangeBar.h"
#include "scandata/range/RangeOptions.h"
#include "scandata/range/Spikes.h"

namespace Quillon {

namespace {

constexpr std::size_t MostNamed = 12; // spikes that a question names

bool Inside(const ChartScale& box, float radius, float value) {
    const float x = RangeAbscissa(radius);
    const float y = RangeOrdinate(value);
    return y != MissingValue && x >= box.XMin && x <= box.XMax && y >= box.YMin && y <= box.YMax;
}

std::vector<long> PointsInside(RowNo row, const ChartScale& box) {
    std::vector<long> points;
    for (long p = 1; p <= Work.ScanPoints[row]; ++p)
        if (Inside(box, Work.ScanRadius[row][p], Work.ScanValue[row][p])) points.push_back(p);
    return points;
}

// On a logarithmic axis the data of the graph are no signals.
bool GraphTakesReadings() {
    return GraphMayChange() && Chart.Spec.AxisX1.ScaleType != ScaleTypes::Logarithmic &&
           Chart.Spec.AxisY1.ScaleType != ScaleTypes::Logarithmic;
}

// What there is no room for is told once, and stays.
void TellNoneLeft() {
    Host.Beep();
    Charts.StatusLine.Text = "That would leave no reading of the scan";
}

std::string CeilingText(RowNo row) {
    return Work.SignalCeiling[row] > 0.0F ? SingleText(Work.SignalCeiling[row]) : "";
}

void ShowCeiling() {
    RangeBar.Ceiling.Text = RangeBar.Ceiling.Tag = CeilingText(RangeBar.Row);
}

bool TakeCeiling(float ceiling) {
    const bool taken = SetCeiling(RangeBar.Row, ceiling);
    if (!taken) TellNoneLeft();
    ShowCeiling();
    ShowReadings();
    return taken;
}

std::string RadiiOf(RowNo row, const std::vector<long>& points) {
    std::string text;
    for (std::size_t i = 0; i < points.size() && i < MostNamed; ++i)
        text += (i > 0 ? ", " : "") +
                FormatNumber(static_cast<double>(Work.ScanRadius[row][points[i]]), "0.0000");
    return text + (points.size() > MostNamed ? ", ... cm" : " cm");
}

// Those that the user has left out himself; how many.
long TakeBackInside(RowNo row, const ChartScale& box) {
    return TakeBack(row, [&box](const LeftOutReading& out) {
        return out.Why == LeftOutBy::Hand && Inside(box, out.Radius, out.Value);
    });
}

std::vector<long> SpikesIn(RowNo row, const PointRange& range) {
    if (range.First == 0) return {};
    return FindSpikes(Work.ScanRadius[row], Work.ScanValue[row], range.First, range.Last);
}

bool AskAboutSpikes(RowNo row, const std::vector<long>& spikes) {
    const bool one = spikes.size() == 1;
    return AskYesNo(Counted(std::ssize(spikes), "reading") + (one ? " stands" : " stand") + " out from " +
                        (one ? "its" : "their") + " neighbours by more than 6 times the scatter:\n\n" +
                        RadiiOf(row, spikes) + "\n\nDo you want to leave " + (one ? "it" : "them") + " out?",
                    Work.ProgramName, BoxAnswer::No);
}

} // namespace

KeptReadings KeepReadings(RowNo row) {
    return {row,
            Work.ScanPoints[row],
            {Work.FitRange[0][row], Work.FitRange[1][row]},
            Work.ScanRadius[row],
            Work.ScanValue[row],
            Work.LeftOut[row],
            Work.SignalCeiling[row]};
}

void PutBack(const KeptReadings& kept) {
    Work.ScanPoints[kept.Row] = kept.Points;
    Work.FitRange[0][kept.Row] = kept.Range[0];
    Work.FitRange[1][kept.Row] = kept.Range[1];
    Work.ScanRadius[kept.Row] = kept.Radius;
    Work.ScanValue[kept.Row] = kept.Value;
    Work.LeftOut[kept.Row] = kept.LeftOut;
    Work.SignalCeiling[kept.Row] = kept.Ceiling;
}

void ShowReadings() {
    const RowNo row = RangeBar.Row;
    const long points = Work.ScanPoints[row];
    for (long p = 1; p <= Chart.DataY.Points(); ++p) {
        const float y = p <= points ? RangeOrdinate(Work.ScanValue[row][p]) : MissingValue;
        Chart.DataY(p, 1) = y;
        Chart.DataX(p, 1) = y == MissingValue ? MissingValue : RangeAbscissa(Work.ScanRadius[row][p]);
    }
    Charts.PalePoints.clear();
    for (const LeftOutReading& out : Work.LeftOut[row])
        if (const float y = RangeOrdinate(out.Value); y != MissingValue && out.Why != LeftOutBy::Intensity)
            Charts.PalePoints.push_back({RangeAbscissa(out.Radius), y});
    RedrawAsLaidOut();
}

void ToggleReadings(const ChartScale& box) {
    if (!GraphTakesReadings()) return Host.Beep();
    const RowNo row = RangeBar.Row;
    const std::vector<long> points = PointsInside(row, box);
    if (!LeaveOut(row, points, LeftOutBy::Hand)) return TellNoneLeft();
    const long back = points.empty() ? TakeBackInside(row, box) : 0;
    ShowReadings();
    if (!points.empty())
        Charts.StatusLine.Text =
            Counted(std::ssize(points), "reading") + " left out; the same rectangle brings back what is pale";
    else
        Charts.StatusLine.Text =
            back > 0 ? Counted(back, "reading") + " taken back" : "There is no reading in the rectangle";
}

void RangeCeilingGotFocus() {
    NumGotFocus(RangeBar.Ceiling);
}

int RangeCeilingKeyPress(int key) {
    if (key != KeyReturn) return NumKeyPress(RangeBar.Ceiling, key);
    RangeCeilingLostFocus();
    RangeBar.FocusOnGraph = true;
    return 0;
}

void RangeCeilingLostFocus() {
    Control& field = RangeBar.Ceiling;
    NumLostFocus(field);
    if (!RangeBar.Shown || field.Text == field.Tag) return;
    const float ceiling = field.Text.empty() ? 0.0F : NumValue(field.Text);
    if (ceiling < 0.0F) return ShowCeiling(); // none
    TakeCeiling(ceiling);
}

void RangeSpikesButton() {
    const RowNo row = RangeBar.Row;
    RangeBar.FocusOnGraph = true;
    const std::vector<long> spikes = SpikesIn(row, MarkedPoints());
    if (spikes.empty()) {
        Charts.StatusLine.Text = "No reading between the markers stands out from its neighbours";
        return;
    }
    if (!AskAboutSpikes(row, spikes)) return;
    if (!LeaveOut(row, spikes, LeftOutBy::Hand)) return TellNoneLeft();
    ShowReadings();
    Charts.StatusLine.Text = Counted(std::ssize(spikes), "reading") + " left out";
}

float ProposeRangeCeiling(long first, long last) {
    const float ceiling = ProposeCeilingOf(RangeBar.Row, first, last);
    return ceiling > 0.0F && TakeCeiling(ceiling) ? ceiling : 0.0F;
}

} // namespace Quillon
