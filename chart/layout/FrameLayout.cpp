// Where the frame stands within the view.
#include "chart/layout/FrameLayout.h"

#include "chart/layout/Layout.h"
#include "chart/layout/LegendLayout.h"
#include "chart/layout/TitleLayout.h"
#include "chart/pens/Device.h"
#include "chart/pens/Fonts.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/scale/Tics.h"
#include "platform/Narrow.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Quillon {

namespace {

// The least margins, so that a graph without text does not touch the edge of its view.
constexpr double LeastAcross = 0.05, LeastUp = 0.04;

// What stands outside the frame on each side, in device units.
struct Margins {
    int Left{}, Right{}, Top{}, Bottom{};
};

std::int16_t Sum(int a, int b) {
    return DeviceUnits(static_cast<double>(a) + b);
}

std::size_t At(int place) {
    return static_cast<std::size_t>(place);
}

// Tics that point outward push labels and titles away.
int OutwardTics(int place) {
    if (Chart.Style.TicSize >= 0.0F || AxisOf(Chart.Spec, place).Show != 1) return 0;
    const bool across = place == LeftAxis || place == RightAxis;
    const GraphState& state = Chart.State;
    return across ? std::abs(state.TicLenX) + state.ClearX : std::abs(state.TicLenY) + state.ClearY;
}

// The length of a label at one end of a category axis that stands over its category on either side, when the
// categories share a width.
int CategoryExcess(int place, int category, int width) {
    const GraphAxis& axis = AxisOf(Chart.Spec, place);
    SelectFont(axis.LabelFont, Chart.Layout.Sizes.Label[At(place)], 0);
    const int label = TextWidth(TicLabel(axis, AxisKinds::Category, {0.0, true, category}));
    return std::max(label - width / std::max<int>(Chart.State.Npts, 1), 0);
}

// The label of the last tic of a value axis reaches beyond the frame by half its size, that of the last
// category by half of what it is longer than its category. width: of the frame, as far as it is known.
int HalfLabelAcross(int category, int width) {
    int most = 0;
    for (const int place : {BottomAxis, TopAxis}) {
        if (!HasLabels(AxisOf(Chart.Spec, place))) continue;
        const int label = place == BottomAxis ? Chart.State.LabelWidthX1 : Chart.State.LabelWidthX2;
        const bool value = KindOf(place) == AxisKinds::Value;
        most = std::max(most, value ? label : CategoryExcess(place, category, width));
    }
    return most > 0 ? (most + 1) / 2 + Chart.State.ClearX : 0;
}

int HalfLabelUp() {
    int half = 0;
    for (const int place : {LeftAxis, RightAxis}) {
        const GraphAxis& axis = AxisOf(Chart.Spec, place);
        if (HasLabels(axis))
            half = std::max(half, SelectFont(axis.LabelFont, Chart.Layout.Sizes.Label[At(place)], 0).Height);
    }
    return half > 0 ? half / 2 + Chart.State.ClearY : 0;
}

void MeasureSpaces() {
    MeasureTitles();
    for (int place = BottomAxis; place <= RightAxis; ++place)
        MeasureAxisSpace(SpaceOf(Chart.Layout, place), AxisOf(Chart.Spec, place), place);
    LayoutLegend();
}

// The gaps about the titles take what is over, half above them and half below.
void GiveToTitles(int over) {
    TitleSpace& titles = Chart.Layout.Titles;
    titles.Gap1 = Sum(titles.Gap1, over - over / 2);
    titles.Gap3 = Sum(titles.Gap3, over / 2);
    titles.Total = Sum(titles.Total, over);
}

// The room that text takes on each side.
Margins NeededMargins() {
    const ChartLayout& layout = Chart.Layout;
    const GraphLegend& legend = Chart.Spec.Legend;
    Margins need;
    need.Top = std::max(layout.Titles.Total + layout.Top.Total() + OutwardTics(TopAxis), HalfLabelUp());
    need.Left = layout.Left.Total() + OutwardTics(LeftAxis);
    need.Right = layout.Right.Total() + OutwardTics(RightAxis);
    const int legendWidth = legend.Where == LegendPlaces::Right ? layout.Legend.Width : 0;
    const int width = Chart.State.ViewW - need.Left - need.Right - legendWidth;
    need.Left = std::max(need.Left, HalfLabelAcross(1, width));
    need.Right = std::max(need.Right, HalfLabelAcross(Chart.State.Npts, width));
    need.Bottom = std::max(layout.Bottom.Total() + OutwardTics(BottomAxis), HalfLabelUp());
    need.Right += legendWidth;
    if (legend.Where != LegendPlaces::Right)
        need.Bottom +=
            Chart.Spec.GraphType == GraphTypes::Pie ? layout.Legend.Height / 2 : layout.Legend.Height;
    return need;
}

// The same with the least margins.
Margins ChosenMargins() {
    const GraphState& state = Chart.State;
    Margins margins = NeededMargins();
    const int across = DeviceUnits(LeastAcross * state.ViewW);
    const int up = DeviceUnits(LeastUp * state.ViewH);
    if (margins.Top < up) {
        GiveToTitles(up - margins.Top);
        margins.Top = up;
    }
    margins.Left = std::max(margins.Left, across);
    if (Chart.Spec.AxisY2.Show != 1) {
        const int legend = Chart.Spec.Legend.Where == LegendPlaces::Right ? Chart.Layout.Legend.Width : 0;
        margins.Right = std::max(margins.Right, across + legend);
    }
    margins.Bottom = std::max(margins.Bottom, up);
    return margins;
}

bool ShrinkAll() {
    TextSizes& sizes = Chart.Layout.Sizes;
    bool any = ShrinkSize(sizes.Title1);
    any |= ShrinkSize(sizes.Title2);
    for (float& size : sizes.AxisTitle)
        any |= ShrinkSize(size);
    for (float& size : sizes.Label)
        any |= ShrinkSize(size);
    if (Chart.Spec.Legend.AutoPlace == 1) any |= ShrinkSize(sizes.Legend);
    return any;
}

// The frame that these margins leave of the view; false where they leave nothing.
bool FrameWithin(const Margins& margins) {
    const GraphState& state = Chart.State;
    if (margins.Left + margins.Right >= state.ViewW || margins.Top + margins.Bottom >= state.ViewH)
        return false;
    GraphBox& frame = Chart.Spec.Frame;
    frame.X1 = ToInt16(state.ViewLeft + margins.Left);
    frame.X2 = ToInt16(state.ViewRight - margins.Right);
    frame.Y1 = ToInt16(state.ViewTop + margins.Top);
    frame.Y2 = ToInt16(state.ViewBottom - margins.Bottom);
    return true;
}

// A frame from the text sizes; text shrinks before it leaves no room at all.
void ChooseFrame() {
    do {
        MeasureAxes();
        MeasureSpaces();
        if (FrameWithin(ChosenMargins())) return;
    } while (ShrinkAll());
    GraphBox& frame = Chart.Spec.Frame;
    frame.X1 = frame.X2 = frame.Y1 = frame.Y2 = 0;
    Chart.GraphStatus = GraphStatuses::NoRoom;
}

// Shrinks the text of one side around the frame that stands.
bool ShrinkSide(int place) {
    TextSizes& sizes = Chart.Layout.Sizes;
    bool any = ShrinkSize(sizes.AxisTitle[At(place)]);
    any |= ShrinkSize(sizes.Label[At(place)]);
    if (place == TopAxis) {
        any |= ShrinkSize(sizes.Title1);
        any |= ShrinkSize(sizes.Title2);
    }
    const bool legend = (place == RightAxis && Chart.Spec.Legend.Where == LegendPlaces::Right) ||
                        (place == BottomAxis && Chart.Spec.Legend.Where != LegendPlaces::Right);
    if (legend && Chart.Spec.Legend.AutoPlace == 1) any |= ShrinkSize(sizes.Legend);
    return any;
}

// Shares a rest of space above the frame out, half above the titles and half below. Not on a page where the
// place of the frame is what the user has set, nor in a picture of that page.
void ShareOutTop(int over) {
    const bool placed =
        Chart.Target != Targets::Screen && Chart.Style.AxisFrame != 0 && Chart.Style.PageCustom != 0;
    if (over > 0 && !placed) GiveToTitles(over);
}

// Shrinks the text of the sides that need more than the space there is; false where none does or can.
bool ShrinkWhatNeedsMore(const Margins& need, const Margins& space) {
    bool shrunk = false;
    if (need.Top > space.Top) shrunk |= ShrinkSide(TopAxis);
    if (need.Left > space.Left) shrunk |= ShrinkSide(LeftAxis);
    if (need.Right > space.Right) shrunk |= ShrinkSide(RightAxis);
    if (need.Bottom > space.Bottom) shrunk |= ShrinkSide(BottomAxis);
    return shrunk;
}

// Keeps the frame of the GraphSpec; the text around it shrinks where there is too little space for it.
void KeepFrame() {
    const GraphState& state = Chart.State;
    const GraphBox& frame = Chart.Spec.Frame;
    const Margins space{frame.X1 - state.ViewLeft, state.ViewRight - frame.X2, frame.Y1 - state.ViewTop,
                        state.ViewBottom - frame.Y2};
    for (;;) {
        MeasureAxes();
        MeasureSpaces();
        const Margins need = NeededMargins();
        if (ShrinkWhatNeedsMore(need, space)) continue;
        return ShareOutTop(space.Top - need.Top);
    }
}

// Tic lengths and symbols follow the frame's diagonal.
void MeasureInFrame() {
    GraphState& state = Chart.State;
    const GraphBox& frame = Chart.Spec.Frame;
    const double diagonal = std::hypot(frame.X2 - frame.X1, frame.Y2 - frame.Y1);
    state.TicLenY = DeviceUnits(static_cast<double>(Chart.Style.TicSize) * diagonal);
    state.TicLenX = DeviceUnits(state.TicLenY * static_cast<double>(state.Aspect));
    state.SymbolHalfX = DeviceUnits(static_cast<double>(Chart.Style.SymbolSize) * diagonal / 2.0);
    state.SymbolHalfY = DeviceUnits(state.SymbolHalfX * static_cast<double>(state.Aspect));
}

} // namespace

void MeasureTitles() {
    TitleSpace& titles = Chart.Layout.Titles;
    const GraphSpec& spec = Chart.Spec;
    const std::int16_t gap = Chart.State.ClearY;
    titles = {};
    if (!spec.Title1.Text.Empty()) {
        titles.Gap1 = gap;
        titles.Height1 = DeviceUnits(SelectFont(spec.Title1.Font, Chart.Layout.Sizes.Title1, 0).Height);
        titles.Gap2 = gap;
    }
    if (!spec.Title2.Text.Empty()) {
        if (titles.Gap1 == 0) titles.Gap1 = gap;
        titles.Height2 = DeviceUnits(SelectFont(spec.Title2.Font, Chart.Layout.Sizes.Title2, 0).Height);
        titles.Gap3 = gap;
    }
    titles.Total = DeviceUnits(titles.Gap1 + titles.Height1 + titles.Gap2 + titles.Height2 + titles.Gap3);
}

void MeasureAxisSpace(AxisSpace& record, const GraphAxis& axis, int place) {
    record = {};
    if (axis.Show != 1) return;
    const GraphState& state = Chart.State;
    const bool upright = place == LeftAxis || place == RightAxis;
    const std::int16_t gap = upright ? state.ClearX : state.ClearY;
    const TextSizes& sizes = Chart.Layout.Sizes;
    if (HasLabels(axis)) {
        record.TicGap1 = gap;
        const int line = SelectFont(axis.LabelFont, sizes.Label[At(place)], 0).Height;
        const int rows = state.Stagger != 0 && KindOf(place) == AxisKinds::Category ? 2 : 1;
        const int width = place == LeftAxis ? state.LabelWidthY1 : state.LabelWidthY2;
        record.TicHeight = DeviceUnits(upright ? width : rows * line);
        record.TicGap2 = gap;
    }
    record.TitleGap1 = gap;
    if (!HasText(AxisTitleText(axis))) return;
    const int direction = upright ? 1 : 0;
    record.TitleHeight =
        DeviceUnits(SelectFont(axis.Title.Font, sizes.AxisTitle[At(place)], direction).Height);
    record.TitleGap2 = gap;
}

void FitFrame() {
    TakeTextSizes();
    if (!FrameStands()) Chart.Spec.Relayout = 1;
    if (Chart.Spec.Relayout == 1)
        ChooseFrame();
    else
        KeepFrame();
    if (!FrameStands()) return;
    MeasureInFrame();
    FitTitles();
    PlaceLegend();
}

} // namespace Quillon
