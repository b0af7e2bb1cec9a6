// The room that the legend takes, and where it stands.
#include "chart/layout/LegendLayout.h"

#include "chart/layout/Layout.h"
#include "chart/pens/Device.h"
#include "chart/pens/Fonts.h"
#include "chart/pens/Pens.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/records/SetLooks.h"
#include "platform/Narrow.h"

#include <algorithm>

namespace Quillon {

namespace {

// The part of the view that a legend may take before its text shrinks, and at most.
constexpr double MostAcross = 0.4, MostUp = 0.4;
constexpr double SampleLength = 0.035; // of the diagonal

bool ToTheRight() {
    return Chart.Spec.Legend.Where == LegendPlaces::Right;
}

// What one entry takes, in the size in force.
LegendSpace MeasureEntry(const std::vector<LegendEntry>& entries) {
    const GraphState& state = Chart.State;
    const TextSize font = SelectFont(Chart.Spec.Legend.Font, Chart.Layout.Sizes.Legend, 0);
    int widest = 0;
    for (const LegendEntry& entry : entries)
        widest = std::max(widest, TextWidth(entry.Name));
    const int symbol = DeviceUnits(static_cast<double>(Chart.Style.SymbolSize) * state.Diagonal) + 2;
    LegendSpace space;
    space.Gap = std::max<std::int16_t>(state.ClearX, 1);
    space.SampleWidth = DeviceUnits(std::max(SampleLength * state.Diagonal, 2.0 * symbol));
    space.EntryWidth = DeviceUnits(space.SampleWidth + widest + 3.0 * space.Gap);
    space.EntryHeight = DeviceUnits(std::max(font.Height, symbol) + state.ClearY / 2);
    return space;
}

// Arranges n entries in a place of a size; the room taken is that of the rows and columns that are there.
void Arrange(LegendSpace& space, int n, int width, int height) {
    if (ToTheRight()) {
        const int most = std::max(height / std::max<int>(space.EntryHeight, 1), 1);
        const int columns = (n + most - 1) / most;
        space.Columns = ToInt16(columns);
        space.Rows = ToInt16((n + columns - 1) / columns);
    } else {
        const int most = std::max(width / std::max<int>(space.EntryWidth, 1), 1);
        const int columns = std::min(most, n);
        space.Columns = ToInt16(columns);
        space.Rows = ToInt16((n + columns - 1) / columns);
    }
    space.Width = DeviceUnits(static_cast<double>(space.Columns) * space.EntryWidth + space.Gap);
    space.Height = DeviceUnits(static_cast<double>(space.Rows) * space.EntryHeight + 2.0 * space.Gap);
}

// What does not fit at the smallest size is left out: columns first, then the length of texts, then rows.
void Crop(LegendSpace& space, int width, int height) {
    while (space.Columns > 1 && space.Width > width) {
        --space.Columns;
        space.Width = DeviceUnits(static_cast<double>(space.Columns) * space.EntryWidth + space.Gap);
    }
    if (space.Width > width) {
        space.Width = DeviceUnits(width);
        space.EntryWidth = DeviceUnits(width - space.Gap);
    }
    while (space.Rows > 1 && space.Height > height) {
        --space.Rows;
        space.Height = DeviceUnits(static_cast<double>(space.Rows) * space.EntryHeight + 2.0 * space.Gap);
    }
}

// A legend of looks: their lines follow those of the sets. An entry without a colour names a dash, and the
// symbol that goes with it.
std::vector<LegendEntry> EntriesOfLooks() {
    std::vector<LegendEntry> entries;
    const bool symbols = DashesRunOut() || Chart.Spec.SymbolMode != 3;
    int line = static_cast<int>(Chart.Looks.Sets.size());
    for (const LookEntry& entry : Chart.Looks.Legend) {
        ++line;
        entries.push_back({line, symbols && entry.Look.Color < 0 ? line : 0, 0, entry.Name});
    }
    return entries;
}

// The entry that begins with a set.
LegendEntry EntryOf(int set, bool area) {
    LegendEntry entry;
    if (set <= Chart.SetNames.Hi()) entry.Name = Chart.SetNames[set];
    if (area) {
        entry.AreaSet = set;
    } else if (Alternating()) {
        entry.SymbolSet = set;
        if (set < Chart.State.Nsets) entry.LineSet = set + 1;
    } else {
        if (Chart.Spec.PlotStyle == PlotStyles::Lines) entry.LineSet = set;
        if (Chart.Spec.SymbolMode != 3) entry.SymbolSet = set;
    }
    return entry;
}

// The legend has a box of its own that it keeps to.
bool StandsFree() {
    const GraphLegend& legend = Chart.Spec.Legend;
    return legend.AutoPlace != 1 && legend.Box.X2 > legend.Box.X1 && legend.Box.Y2 > legend.Box.Y1;
}

// The room that it may take: its own box, or a part of the view beside or below the frame.
struct LegendRoom {
    int Width, Height;
};
LegendRoom RoomOfLegend() {
    const GraphBox& box = Chart.Spec.Legend.Box;
    const GraphState& state = Chart.State;
    if (StandsFree()) return {box.X2 - box.X1, box.Y2 - box.Y1};
    if (ToTheRight()) return {DeviceUnits(MostAcross * state.ViewW), state.ViewH};
    return {state.ViewW, DeviceUnits(MostUp * state.ViewH)};
}

// Where something of a size begins whose middle is that of the frame's side, within the view.
std::int16_t BeginOfCentred(int side1, int side2, int size, int view1, int view2) {
    const int centre = (side1 + side2) / 2;
    return DeviceUnits(std::clamp<int>(centre - size / 2, view1, std::max<int>(view2 - size + 1, view1)));
}

} // namespace

bool HasLegend() {
    return Chart.Spec.Legend.Show != 0 && Chart.State.MultiSet == 1 && Chart.State.Nsets > 1;
}

std::vector<LegendEntry> LegendEntries() {
    std::vector<LegendEntry> entries;
    if (!Chart.Looks.Legend.empty()) return EntriesOfLooks();
    const GraphSpec& spec = Chart.Spec;
    const int sets = Chart.State.Nsets;
    const bool areas = spec.GraphType == GraphTypes::HorizontalBars ||
                       spec.GraphType == GraphTypes::VerticalBars || spec.GraphType == GraphTypes::Pie;
    for (int set = 1; set <= sets; ++set) {
        entries.push_back(EntryOf(set, areas));
        if (Alternating() && !areas) ++set; // its line goes with the symbols
    }
    return entries;
}

void LayoutLegend() {
    LegendSpace& space = Chart.Layout.Legend;
    space = {};
    if (!HasLegend()) return;
    const std::vector<LegendEntry> entries = LegendEntries();
    const auto [width, height] = RoomOfLegend();
    for (;;) {
        space = MeasureEntry(entries);
        Arrange(space, static_cast<int>(entries.size()), width, height);
        const bool fits = space.Width <= width && space.Height <= height;
        if (fits || Chart.Spec.Legend.AutoPlace != 1 || !ShrinkSize(Chart.Layout.Sizes.Legend)) break;
    }
    Crop(space, width, height);
    if (StandsFree()) space.Width = space.Height = 0; // it takes nothing from the frame
}

void CarryLegend(const GraphState& from) {
    const GraphState& to = Chart.State;
    GraphLegend& legend = Chart.Spec.Legend;
    if (legend.AutoPlace == 1 || from.ViewW <= 0 || from.ViewH <= 0) return;
    const auto x = [&](std::int16_t place) {
        return DeviceUnits(to.ViewLeft +
                           (place - from.ViewLeft) * static_cast<double>(to.ViewW) / from.ViewW);
    };
    const auto y = [&](std::int16_t place) {
        return DeviceUnits(to.ViewTop + (place - from.ViewTop) * static_cast<double>(to.ViewH) / from.ViewH);
    };
    legend.Box.X1 = x(legend.Box.X1);
    legend.Box.X2 = x(legend.Box.X2);
    legend.Box.Y1 = y(legend.Box.Y1);
    legend.Box.Y2 = y(legend.Box.Y2);
}

void PlaceLegend() {
    const LegendSpace& space = Chart.Layout.Legend;
    const GraphState& state = Chart.State;
    const GraphBox& frame = Chart.Spec.Frame;
    GraphBox& box = Chart.Spec.Legend.Box;
    if (space.Width == 0 || space.Height == 0) return;
    if (ToTheRight()) {
        box.X1 = DeviceUnits(state.ViewRight - space.Width + 1);
        box.Y1 = BeginOfCentred(frame.Y1, frame.Y2, space.Height, state.ViewTop, state.ViewBottom);
    } else {
        box.X1 = BeginOfCentred(frame.X1, frame.X2, space.Width, state.ViewLeft, state.ViewRight);
        box.Y1 = DeviceUnits(state.ViewBottom - space.Height + 1);
    }
    box.X2 = DeviceUnits(box.X1 + space.Width - 1.0);
    box.Y2 = DeviceUnits(box.Y1 + space.Height - 1.0);
}

} // namespace Quillon
