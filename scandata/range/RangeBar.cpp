#include "scandata/range/RangeBar.h"

#include "chart/Charts.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "scandata/range/RangeOptions.h"
#include "scandata/range/RangeReadings.h"
#include "scandata/table/DataSetTable.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr const char* Picture = "0.0000"; // of a radius, as in the table

// The radius of an X of the graph at hand.
float RadiusOf(float x) {
    if (!RangeGraphIsLog) return x;
    return static_cast<float>(std::sqrt(2.0 * std::max(0.0, static_cast<double>(x))));
}

std::string RadiusText(std::size_t side) {
    return FormatNumber(static_cast<double>(RadiusOf(Charts.Markers[side].X)), Picture);
}

// Those above a ceiling too, wherever they lie in the scan.
std::string LeftOutText() {
    const long out = static_cast<long>(Work.LeftOut[RangeBar.Row].size());
    return out == 0 ? "" : ", " + std::to_string(out) + " left out";
}

long CountMarked() {
    const PointRange range = MarkedPoints();
    return range.First == 0 ? 0 : range.Last - range.First + 1;
}

// What the bar shows of the markers. A radius that was not moved keeps what is typed there.
void FollowMarkers() {
    if (!RangeBar.Shown || Charts.Markers.size() != 2) return;
    for (std::size_t side = 0; side < 2; ++side) {
        const std::string text = RadiusText(side);
        if (RangeBar.Radius[side].Tag == text) continue;
        RangeBar.Radius[side].Text = RangeBar.Radius[side].Tag = text;
    }
    RangeBar.Count.Text = Counted(CountMarked(), "point") + LeftOutText();
}

void PutMarker(std::size_t side, float radius) {
    Charts.Markers[side].X = RangeAbscissa(radius);
    if (Charts.Markers[0].X > Charts.Markers[1].X) std::swap(Charts.Markers[0].X, Charts.Markers[1].X);
    RepositionMarkers();
}

void Caption(Control& control, const char* text, const char* toolTip) {
    control.Text = text;
    control.ToolTip = toolTip;
}

void CaptionRadii() {
    Caption(RangeBar.Label[0], "Inner (cm)", "");
    Caption(RangeBar.Label[1], "Outer (cm)", "");
    RangeBar.Radius[0].ToolTip = "The first radius of the range; the marker follows what is typed";
    RangeBar.Radius[1].ToolTip = "The last radius of the range; the marker follows what is typed";
    RangeBar.Count.ToolTip = "How many points of the scan lie in the range";
}

void CaptionCeiling(RowNo row) {
    Caption(RangeBar.CeilingLabel, "Ceiling", "");
    RangeBar.Ceiling.ToolTip =
        "Readings with a higher signal, behind the baseline, are left out; nothing typed: none";
    RangeBar.Ceiling.Text = RangeBar.Ceiling.Tag =
        Work.SignalCeiling[row] > 0.0F ? SingleText(Work.SignalCeiling[row]) : "";
}

void CaptionButtons() {
    Caption(RangeBar.SpikesButton, "Sp&ikes...",
            "Look for readings between the markers that stand out from their neighbours, to leave them out");
    Caption(
        RangeBar.AutoButton, "A&uto",
        "Propose a range: the longest stretch of the channel without a break in the signal; and a ceiling, "
        "where the noise grows with the signal");
    Caption(RangeBar.AcceptButton, "&Accept", "Take this range (Enter)");
    Caption(RangeBar.CancelButton, "&Cancel", "Leave the range as it was (Esc)");
}

} // namespace

void OpenRangeBar(RowNo row) {
    RangeBar = RangeBarRecord{};
    RangeBar.Row = row;
    CaptionRadii();
    CaptionCeiling(row);
    CaptionButtons();
    RangeBar.Shown = true;
    Charts.OnMarkers = FollowMarkers;
    FollowMarkers();
}

void CloseRangeBar() {
    RangeBar.Shown = false;
    Charts.OnMarkers = nullptr;
}

PointRange MarkedPoints() {
    if (Charts.Markers.size() != 2) return {};
    const auto [low, high] = std::minmax(Charts.Markers[0].X, Charts.Markers[1].X);
    const long points = Work.ScanPoints[RangeBar.Row];
    OneBased<float> axis(points);
    for (long p = 1; p <= points; ++p)
        axis[p] = RangeAbscissa(Work.ScanRadius[RangeBar.Row][p]);
    PointRange range;
    SearchArray(axis, 1, points, low, range.First, false, 1);
    SearchArray(axis, 1, points, high, range.Last, true, -1);
    return range.First < 1 || range.Last < range.First ? PointRange{} : range;
}

bool RangeMayBeTaken() {
    const long points = CountMarked();
    if (points >= FewestRangePoints) return true;
    Host.Beep();
    Tell("There " + std::string(points == 1 ? "is " : "are ") +
             (points == 0 ? "no points" : Counted(points, "point")) +
             " between the markers. A range takes at least " + std::to_string(FewestRangePoints) + ".",
         Work.ProgramName, BoxIcon::Warning);
    return false;
}

void RangeBarGotFocus(std::size_t side) {
    NumGotFocus(RangeBar.Radius[side]);
}

int RangeBarKeyPress(std::size_t side, int key) {
    if (key == KeyReturn) {
        RangeBarLostFocus(side);
        RangeBar.FocusOnGraph = true;
        return 0;
    }
    return NumKeyPress(RangeBar.Radius[side], key);
}

void RangeBarLostFocus(std::size_t side) {
    Control& field = RangeBar.Radius[side];
    NumLostFocus(field);
    if (!RangeBar.Shown || field.Text == field.Tag) return;
    const float radius = NumValue(field.Text);
    if (radius > 0.0F)
        PutMarker(side, radius);
    else
        field.Text = field.Tag; // no radius
    field.Tag.clear();
    FollowMarkers();
}

void RangeBarAutoButton() {
    const PointRange range = ProposeRangeOf(RangeBar.Row);
    RangeBar.FocusOnGraph = true;
    if (range.First == 0) {
        Host.Beep();
        Charts.StatusLine.Text = "There is no stretch without a break that could be proposed";
        return;
    }
    const OneBased<float>& radii = Work.ScanRadius[RangeBar.Row];
    Charts.Markers[0].X = RangeAbscissa(radii[range.First]);
    Charts.Markers[1].X = RangeAbscissa(radii[range.Last]);
    RepositionMarkers();
    Charts.StatusLine.Text = "Proposed: " + RadiusText(0) + " to " + RadiusText(1) +
                             " cm, the longest stretch without a break; drag the markers to alter it";
    if (const float ceiling = ProposeRangeCeiling(range.First, range.Last); ceiling > 0.0F)
        Charts.StatusLine.Text +=
            ". Above " + SingleText(ceiling) + " the noise grows: proposed as the ceiling";
}

void RangeBarAcceptButton() {
    ChartKey(KeyReturn, 0);
}

void RangeBarCancelButton() {
    ChartKey(KeyEscape, 0);
}

} // namespace Quillon
