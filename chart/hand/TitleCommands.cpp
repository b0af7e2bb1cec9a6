#include "chart/hand/TitleCommands.h"

#include "chart/draw/DrawGraph.h"
#include "chart/draw/Titles.h"
#include "chart/hand/ChartMarkers.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/layout/FrameLayout.h"
#include "chart/layout/Layout.h"
#include "chart/layout/TitleLayout.h"
#include "chart/pens/Fonts.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"

namespace Quillon {

namespace {

constexpr std::int16_t CommentColor = 7, CommentJustify = 1, CommentFont = 3 + BoldFont;

void Restyle(GraphTitle& title) {
    title.Color = CommentColor;
    title.Justify = CommentJustify;
    title.Font = CommentFont;
}

// A headline that takes the room of the former one is painted over it; else the whole graph is laid out anew.
void ShowComment() {
    if (Chart.GraphDrawn == 0 || !HasSurface() || !FrameStands()) return;
    const TitleSpace before = Chart.Layout.Titles;
    TextSizes& sizes = Chart.Layout.Sizes;
    sizes.Title1 = ClampFontSize(Chart.Spec.Title1.Size);
    sizes.Title2 = ClampFontSize(Chart.Spec.Title2.Size);
    MeasureTitles();
    const bool sameRoom =
        before.Height1 == Chart.Layout.Titles.Height1 && before.Height2 == Chart.Layout.Titles.Height2;
    if (Chart.Target != Targets::Screen) {
        Replot();
        return ShowGraph();
    }
    if (!sameRoom) {
        RecordMarkers();
        Replot();
        return RedrawAsLaidOut();
    }
    Chart.Layout.Titles = before;
    FitTitles();
    RepaintTitles();
    if (Seams.KeepsPicture != 0) TargetSurface().Refresh();
}

} // namespace

void SetGraphComment(const std::string& text) {
    GraphSpec& spec = Chart.Spec;
    const std::size_t split = text.find('\\');
    const bool second = !spec.Title2.Text.Empty();
    spec.Title1.Text = text.substr(0, split);
    if (text.empty())
        spec.Title2.Text = "";
    else if (split != std::string::npos)
        spec.Title2.Text = text.substr(split + 1);
    else if (second)
        spec.Title2.Text = "\t"; // its line stays reserved
    Restyle(spec.Title1);
    Restyle(spec.Title2);
    ShowComment();
}

void DeleteTitles() {
    if (Chart.Painting != 0) return;
    Chart.Spec.Title1.Text = "";
    Chart.Spec.Title2.Text = "";
    RedrawChart();
    ChartMenuStatus(Charts); // that of a graph that is not held, too
}

void ShowLegend() {
    if (Chart.Painting != 0) return;
    Chart.Spec.Legend.Show = Chart.Spec.Legend.Show == 0 ? 1 : 0;
    RedrawChart();
    ChartMenuStatus(Charts); // that of a graph that is not held, too
}

} // namespace Quillon
