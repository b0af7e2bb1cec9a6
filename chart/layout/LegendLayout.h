#pragma once
// The legend: which entries it has, the room it takes and where it stands.

#include "chart/records/ChartState.h"

#include <string>
#include <vector>

namespace Quillon {

// One entry: the sets, counted from 1, whose line, symbol or filled area stands before the text; 0 for none.
struct LegendEntry {
    int LineSet{}, SymbolSet{}, AreaSet{};
    std::string Name;
};

// True when the graph has a legend: it is asked for and there are several sets.
bool HasLegend();

// The entries, in order: one per set; where sets alternate as symbols and lines, one per pair.
std::vector<LegendEntry> LegendEntries();

// Arranges the entries to the right of the graph or below it, and with AutoPlace shrinks their text where
// they would take more than their part of the view. Sets Chart.Layout.Legend; its Width and Height are 0
// without a legend, or where it stands at a place of its own.
void LayoutLegend();

// Carries the box of a legend that stands at a place of its own (AutoPlace is not 1) from the view of another
// target to the one in force, of which it takes the same part; its text is as large a part of either.
void CarryLegend(const GraphState& from);

// Sets Legend.Box of the GraphSpec once the frame is known.
void PlaceLegend();

} // namespace Quillon
