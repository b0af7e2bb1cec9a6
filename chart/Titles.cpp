#include "chart/Titles.h"

#include "chart/AxisScale.h"
#include "chart/CHART.h"
#include "chart/ChartMouse.h"
#include "chart/Device.h"
#include "chart/Layout.h"
#include "chart/Pens.h"

#include <algorithm>
#include <cstdlib>

namespace Quillon {

namespace {

constexpr std::int16_t CommentColor = 7, CommentJustify = 1, CommentFont = 3 + BoldFont;

// Downward along the right axis, upward along the left one.
int DirectionOf(int place) {
    return place == LeftAxis ? 1 : place == RightAxis ? 3 : 0;
}

// A start that leaves a text within the view as far as it has room there; beginning first.
int KeptInView(int start, int width, int first, int last) {
    return std::max(std::min(start, last - width), first);
}

void DrawTitle(const GraphTitle& title, float size, int top) {
    if (!HasText(title.Text)) return;
    const GraphBox& frame = Chart.Spec.Frame;
    const GraphState& state = Chart.State;
    const TextSize font = SelectFont(title.Font, size, 0);
    const int width = TextWidth(title.Text);
    const int start = title.Justify < 3
                          ? JustifiedStart(title.Justify, frame.X1, frame.X2, width)
                          : JustifiedStart(title.Justify - 3, state.ViewLeft, state.ViewRight, width);
    TargetSurface().SetTextColor(CycleColor(title.Color));
    DrawTextLine(title.Text, KeptInView(start, width, state.ViewLeft, state.ViewRight), top, 0, font);
}

// The outer edge of the labels of an axis, as a distance from the frame.
int LabelDepth(int place) {
    const AxisSpace& space = SpaceOf(Chart.Layout, place);
    const GraphState& state = Chart.State;
    int depth = space.TicGap1 + space.TicHeight + space.TicGap2;
    if (Chart.Style.TicSize < 0.0F)
        depth += place == LeftAxis || place == RightAxis ? std::abs(state.TicLenX) + state.ClearX
                                                         : std::abs(state.TicLenY) + state.ClearY;
    return depth;
}

// Top of the first title's line.
int TopOfTitles() {
    int top = Chart.Spec.Frame.Y1 - Chart.Layout.Titles.Total;
    if (Chart.Spec.AxisX2.Show == 1) {
        const AxisSpace& space = Chart.Layout.Top;
        top -= LabelDepth(TopAxis) + space.TitleGap1 + space.TitleHeight + space.TitleGap2;
    }
    return top + Chart.Layout.Titles.Gap1;
}

// Wipes the strip above the frame in which the titles stand.
void WipeTitles() {
    const GraphState& state = Chart.State;
    const TitleSpace& titles = Chart.Layout.Titles;
    const int top = std::max<int>(TopOfTitles() - titles.Gap1, state.ViewTop);
    SelectNoPen();
    TargetSurface().SetBrush({BrushKind::Solid, BoxColor(Chart.Spec.View)});
    TargetSurface().Rectangle({state.ViewLeft, top, state.ViewRight, top + titles.Total - 1});
}

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
    WipeTitles();
    DrawTitles();
    if (Seams.KeepsPicture != 0) TargetSurface().Refresh();
}

} // namespace

bool HasText(const std::string& text) {
    return text.find_first_not_of(" \t") != std::string::npos;
}

int JustifiedStart(int justify, int first, int last, int width) {
    if (justify <= 0) return first;
    return justify == 1 ? (first + last - width) / 2 : last - width;
}

void DrawTextLine(const std::string& text, int start, int edge, int direction, const TextSize& font) {
    const int rise = font.Height - font.Descent; // from the baseline to the top of a line
    const DrawingSurface& surface = TargetSurface();
    switch (direction) {
    case 1:
        return surface.Text(edge + rise, start, text);
    case 2:
        return surface.Text(start, edge + font.Descent, text);
    case 3:
        return surface.Text(edge + font.Descent, start, text);
    default:
        return surface.Text(start, edge + rise, text);
    }
}

std::string AxisTitleText(const GraphAxis& axis) {
    const std::string& name = axis.FactorName.Str();
    const bool says = HasText(axis.Title.Text) || HasLabels(axis); // else there is nothing that it explains
    if (name.empty() || !says) return axis.Title.Text;
    if (name.front() == ' ') return axis.Title.Text.Str() + name;
    return axis.Title.Text.Str() + (axis.Title.Text.Empty() ? "(" : " (") + name + ")";
}

float FitTitle(const GraphTitle& title, const std::string& text, float size, int length, int direction) {
    for (;;) {
        SelectFont(title.Font, size, direction);
        if (TextWidth(text) <= 0.95 * length || !ShrinkSize(size)) return size;
    }
}

void FitTitles() {
    TextSizes& sizes = Chart.Layout.Sizes;
    GraphSpec& spec = Chart.Spec;
    const int width = spec.Frame.X2 - spec.Frame.X1;
    const int height = spec.Frame.Y2 - spec.Frame.Y1;
    sizes.Title1 = FitTitle(spec.Title1, spec.Title1.Text, sizes.Title1, width, 0);
    sizes.Title2 = FitTitle(spec.Title2, spec.Title2.Text, sizes.Title2, width, 0);
    for (int place = BottomAxis; place <= RightAxis; ++place) {
        const GraphAxis& axis = AxisOf(spec, place);
        float& size = sizes.AxisTitle[static_cast<std::size_t>(place)];
        const int direction = DirectionOf(place);
        size = FitTitle(axis.Title, AxisTitleText(axis), size, direction == 0 ? width : height, direction);
    }
}

void DrawTitles() {
    const TitleSpace& titles = Chart.Layout.Titles;
    const TextSizes& sizes = Chart.Layout.Sizes;
    const int top = TopOfTitles();
    DrawTitle(Chart.Spec.Title1, sizes.Title1, top);
    DrawTitle(Chart.Spec.Title2, sizes.Title2, top + titles.Height1 + titles.Gap2);
}

void DrawAxisTitle(int place) {
    const GraphAxis& axis = AxisOf(Chart.Spec, place);
    const std::string text = AxisTitleText(axis);
    if (!HasText(text)) return;
    const int direction = DirectionOf(place);
    const TextSize font =
        SelectFont(axis.Title.Font, Chart.Layout.Sizes.AxisTitle[static_cast<std::size_t>(place)], direction);
    const int width = TextWidth(text);
    const GraphBox& frame = Chart.Spec.Frame;
    const GraphState& state = Chart.State;
    const bool page = axis.Title.Justify >= 3;
    const int justify = page ? axis.Title.Justify - 3 : axis.Title.Justify;
    const int depth = LabelDepth(place) + SpaceOf(Chart.Layout, place).TitleGap1;
    const int left = page ? state.ViewLeft : frame.X1;
    const int right = page ? state.ViewRight : frame.X2;
    const int top = page ? state.ViewTop : frame.Y1;
    const int bottom = page ? state.ViewBottom : frame.Y2;
    TargetSurface().SetTextColor(CycleColor(axis.Title.Color));
    const int across =
        KeptInView(JustifiedStart(justify, left, right, width), width, state.ViewLeft, state.ViewRight);
    const int along = JustifiedStart(justify, top, bottom, width);
    switch (place) {
    case BottomAxis:
        return DrawTextLine(text, across, frame.Y2 + depth, 0, font);
    case TopAxis:
        return DrawTextLine(text, across, frame.Y1 - depth - font.Height, 0, font);
    case LeftAxis: { // upward: the text begins at the bottom
        const int start =
            std::min<int>(std::max(top + bottom - along, state.ViewTop + width), state.ViewBottom);
        return DrawTextLine(text, start, frame.X1 - depth - font.Height, direction, font);
    }
    default:
        return DrawTextLine(text, KeptInView(along, width, state.ViewTop, state.ViewBottom), frame.X2 + depth,
                            direction, font);
    }
}

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

} // namespace Quillon
