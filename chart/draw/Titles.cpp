#include "chart/draw/Titles.h"

#include "chart/layout/Layout.h"
#include "chart/layout/TitleLayout.h"
#include "chart/pens/Fonts.h"
#include "chart/pens/Pens.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"

#include <algorithm>
#include <cstdlib>

namespace Quillon {

namespace {

// A start that leaves a text within the view as far as it has room there; beginning first.
int KeptInView(int start, int width, int first, int last) {
    return std::max(std::min(start, last - width), first);
}

void DrawTitle(const GraphTitle& title, float size, int top) {
    if (!HasText(title.Text)) return;
    const GraphBox& frame = Chart.Spec.Frame;
    const GraphState& state = Chart.State;
    const TextSize font = SelectFont(title.Font, size, 0);
    const std::string& text = title.Text.Str();
    const int width = TextWidth(text);
    const int start = title.Justify < 3
                          ? JustifiedStart(title.Justify, frame.X1, frame.X2, width)
                          : JustifiedStart(title.Justify - 3, state.ViewLeft, state.ViewRight, width);
    TargetSurface().SetTextColor(CycleColor(title.Color));
    DrawTextLine(text, KeptInView(start, width, state.ViewLeft, state.ViewRight), top, 0, font);
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

// Where the title of an axis starts along it, as its text is read.
int StartAlong(const GraphTitle& title, int place, int width) {
    const GraphBox& frame = Chart.Spec.Frame;
    const GraphState& state = Chart.State;
    const bool page = title.Justify >= 3;
    const int justify = page ? title.Justify - 3 : title.Justify;
    if (place == BottomAxis || place == TopAxis) {
        const int start = JustifiedStart(justify, page ? state.ViewLeft : frame.X1,
                                         page ? state.ViewRight : frame.X2, width);
        return KeptInView(start, width, state.ViewLeft, state.ViewRight);
    }
    const int top = page ? state.ViewTop : frame.Y1, bottom = page ? state.ViewBottom : frame.Y2;
    const int start = JustifiedStart(justify, top, bottom, width);
    if (place == RightAxis) return KeptInView(start, width, state.ViewTop, state.ViewBottom);
    return std::min<int>(std::max(top + bottom - start, state.ViewTop + width), // upward: it begins below
                         state.ViewBottom);
}

// The edge across it that its line is drawn from: the upper one, on the left and right the left one.
int EdgeOfTitle(int place, int height) {
    const GraphBox& frame = Chart.Spec.Frame;
    const int depth = LabelDepth(place) + SpaceOf(Chart.Layout, place).TitleGap1;
    if (place == BottomAxis) return frame.Y2 + depth;
    if (place == TopAxis) return frame.Y1 - depth - height;
    return place == LeftAxis ? frame.X1 - depth - height : frame.X2 + depth;
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

} // namespace

int JustifiedStart(int justify, int first, int last, int width) {
    if (justify <= 0) return first;
    return justify == 1 ? (first + last - width) / 2 : last - width;
}

void DrawTextLine(const std::string& text, int start, int edge, int direction, const TextSize& font) {
    const int rise = font.Height - font.Descent; // from the baseline to the top of a line
    switch (direction) {
    case 1:
        return PaintText(edge + rise, start, text);
    case 2:
        return PaintText(start, edge + font.Descent, text);
    case 3:
        return PaintText(edge + font.Descent, start, text);
    default:
        return PaintText(start, edge + rise, text);
    }
}

void DrawTitles() {
    const TitleSpace& titles = Chart.Layout.Titles;
    const TextSizes& sizes = Chart.Layout.Sizes;
    const int top = TopOfTitles();
    DrawTitle(Chart.Spec.Title1, sizes.Title1, top);
    DrawTitle(Chart.Spec.Title2, sizes.Title2, top + titles.Height1 + titles.Gap2);
}

void RepaintTitles() {
    WipeTitles();
    DrawTitles();
}

void DrawAxisTitle(int place) {
    const GraphAxis& axis = AxisOf(Chart.Spec, place);
    const std::string text = AxisTitleText(axis);
    if (!HasText(text)) return;
    const int direction = TitleDirection(place);
    const float size = Chart.Layout.Sizes.AxisTitle[static_cast<std::size_t>(place)];
    const TextSize font = SelectFont(axis.Title.Font, size, direction);
    TargetSurface().SetTextColor(CycleColor(axis.Title.Color));
    DrawTextLine(text, StartAlong(axis.Title, place, TextWidth(text)), EdgeOfTitle(place, font.Height),
                 direction, font);
}

} // namespace Quillon
