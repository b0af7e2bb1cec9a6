#pragma once
// What mouse and keys do on a graph: the rubber band that zooms, the way back, reading of positions, vertical
// markers. Positions are device units of the picture box; buttons are 1 left, 2 right.

#include <cstdint>
#include <string>

namespace Quillon {

// --- pointer on the graph ------------------------------------------------------------------------------
void ChartMouseDown(int x, int y, int button);
void ChartMouseMove(int x, int y, int buttons);
void ChartMouseUp(int x, int y, int button); // zooms when a rubber band of more than 8 units was drawn

// A key on the graph: 13 Return, 27 Escape, 37 and 39 the arrows; shift is 2 with Ctrl.
void ChartKey(int code, int shift);

// --- scale commands --------------------------------------------------------------------------------------
void DoLastZoom();  // back to the scale before the latest zoom
void DoAutoScale(); // both axes to the full range
void DoAutoX();
void DoAutoY();
void ToggleShowCursor();
void ToggleShowGrids();
void ToggleRainbow();
void SetPlotKind(int style, int symbolMode); // the items LinePlot, BothPlot, SymbolPlot, AltPlot
void ToggleDotCenter();

// The graph was given a new size or was changed: lays it out again, draws it, puts the markers back.
void RedrawChart();

// --- markers -----------------------------------------------------------------------------------------------
void PlaceMarkers(float first, float second); // two markers at axis X, in use
void RemoveMarkers();
void RecordMarkers();     // keeps the X of each before a redraw
void RepositionMarkers(); // puts each back to its X; outside the scale it stands at the scale's end
void MarkerMouseDown(int index);
void MarkerMouseMove(int x); // the captured marker follows, but not to or past a neighbour
void MarkerMouseUp();

} // namespace Quillon
