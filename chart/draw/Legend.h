#pragma once
// Painting of the legend.

#include "chart/layout/LegendLayout.h"

namespace Quillon {

// Paints the legend inside its box.
void DrawLegend();

// Paints what stands before the text of an entry, line, symbol or filled area: SampleWidth by EntryHeight of
// Chart.Layout.Legend, from its upper left corner.
void DrawLegendSample(const LegendEntry& entry, int left, int top);

} // namespace Quillon
