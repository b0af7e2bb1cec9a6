#include "chart/draw/Legend.h"

#include "chart/draw/Titles.h"
#include "chart/pens/DashLine.h"
#include "chart/pens/Fonts.h"
#include "chart/pens/Pens.h"
#include "chart/pens/Symbols.h"
#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"

#include <algorithm>

namespace Quillon {

namespace {

void DrawArea(int set, const DeviceRect& place) {
    const int index = SetIndex(set);
    const DrawingSurface& surface = TargetSurface();
    SelectNoPen();
    SelectPattern(Chart.Cycles.Pattern[CyclePlace(index)], SetColor(set));
    surface.Rectangle(place);
    SelectPen(SetColor(set), PenWidth(Chart.Spec.LineWidth));
    BeginDash(Chart.Cycles.Border[CyclePlace(index)]);
    DashRectangle(place);
}

Rgb TextColorOf(const LegendEntry& entry) {
    const std::int16_t color = Chart.Spec.Legend.TextColor;
    if (color >= 0) return CycleColor(color);
    return SetColor(std::max({entry.SymbolSet, entry.AreaSet, entry.SymbolSet > 0 ? 0 : entry.LineSet}));
}

void DrawEntry(const LegendEntry& entry, int left, int top) {
    const GraphLegend& legend = Chart.Spec.Legend;
    const LegendSpace& space = Chart.Layout.Legend;
    DrawLegendSample(entry, left, top);
    const TextSize font = SelectFont(legend.Font, Chart.Layout.Sizes.Legend, 0);
    TargetSurface().SetTextColor(TextColorOf(entry));
    DrawTextLine(entry.Name, left + space.SampleWidth + space.Gap,
                 top + (space.EntryHeight - font.Height) / 2, 0, font);
}

} // namespace

void DrawLegendSample(const LegendEntry& entry, int left, int top) {
    const LegendSpace& space = Chart.Layout.Legend;
    const int right = left + space.SampleWidth - 1;
    const int middle = top + space.EntryHeight / 2;
    if (entry.AreaSet > 0) {
        const int half = std::max(space.EntryHeight / 3, 1);
        DrawArea(entry.AreaSet, {left, middle - half, right, middle + half});
    }
    if (entry.LineSet > 0) {
        SelectSetPen(entry.LineSet);
        DashLine(left, middle, right, middle);
    }
    if (entry.SymbolSet > 0) {
        const std::int16_t code = SymbolOf(entry.SymbolSet);
        SelectSymbolPen(entry.SymbolSet, code);
        DrawPoint((left + right) / 2, middle, code);
    }
}

void DrawLegend() {
    if (!HasLegend()) return;
    const LegendSpace& space = Chart.Layout.Legend;
    const GraphBox& place = Chart.Spec.Legend.Box;
    const DeviceRect box{place.X1, place.Y1, place.X2, place.Y2};
    const DrawingSurface& surface = TargetSurface();
    surface.SetClip(box);
    SelectNoPen();
    surface.SetBrush({BrushKind::Solid, BoxColor(place)});
    surface.Rectangle(box);
    const std::vector<LegendEntry> entries = LegendEntries();
    const int shown = std::min(static_cast<int>(entries.size()), space.Columns * space.Rows);
    for (int i = 0; i < shown; ++i)
        DrawEntry(entries[static_cast<std::size_t>(i)],
                  box.Left + space.Gap + i % space.Columns * space.EntryWidth,
                  box.Top + space.Gap + i / space.Columns * space.EntryHeight);
    surface.ClearClip();
}

} // namespace Quillon
