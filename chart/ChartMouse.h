#pragma once
// What mouse and keys do on a graph: the rubber band that zooms, the way back, reading of positions, vertical
// markers. Positions are device units of the picture box; buttons are 1 left, 2 right. All of it needs a
// graph that is held; while one is being painted nothing of it does anything.

#include <cstdint>
#include <string>

namespace Quillon {

// --- pointer and keys on the graph -----------------------------------------------------------------------

// The left button begins a rubber band, a higher one reads an exact position: the nearest point of the data
// that stands within a few millimetres, or else the place itself.
void ChartMouseDown(int x, int y, int button);
void ChartMouseMove(int x, int y, int buttons);
void ChartMouseUp(int x, int y, int button); // zooms when a rubber band of more than 8 units was drawn

// What the status line reads at a position in axis units; a value that is MissingValue is left out.
void ShowCursorText(float x, float y);

// A key on the graph: 13 Return, 27 Escape, 37 to 40 the arrows left, up, right and down; shift: the sum of 1
// Shift, 2 Ctrl, 4 Alt. Escape drops a rubber band; without one it raises the shared cancel flag. With
// markers the left and right arrows move the active one by a unit, with Ctrl by ten, and up and down change
// to the next.
void ChartKey(int code, int shift);

// --- scale commands --------------------------------------------------------------------------------------

// Limits of AxisX1 and AxisY1, in axis units.
struct ChartScale {
    float XMin, XMax, YMin, YMax;
    bool operator==(const ChartScale&) const = default;
};
ChartScale PresentScale();

// Lays the graph out with that scale. Its tics are those of before as long as two of them are left on an
// axis; RoundOnZoom asks for new ones, and rounds the scale outward to them. Not drawn, and no zoom to step
// back from.
void TakeScale(const ChartScale& scale, bool round);

// Zooms to a scale and draws; LastZoom leads back. A scale without length is none.
void ZoomTo(const ChartScale& scale);

void DoLastZoom();  // back to the scale before the latest zoom
void DoAutoScale(); // both axes to the full range
void DoAutoX();
void DoAutoY();

// --- options of the window -------------------------------------------------------------------------------
void ToggleRoundOnZoom();
void ToggleShowCursor();
void ToggleShowGrids();
void ToggleRainbow();
void SetPlotKind(int style, int symbolMode); // the items LinePlot, BothPlot, SymbolPlot, AltPlot
void ToggleDotCenter();

// True when a graph is held and none is being painted: commands that change it may run.
bool GraphMayChange();

// The graph was given a new size or was changed: lays it out again, draws it, puts the markers back.
void RedrawChart();

// Draws the graph as it is laid out, and puts the markers back.
void RedrawAsLaidOut();

// --- markers -----------------------------------------------------------------------------------------------

// Two markers at X of the stored data, in use.
void PlaceMarkers(float first, float second);
void RemoveMarkers();
void RecordMarkers();     // keeps the X of each before a redraw
void RepositionMarkers(); // puts each back to its X; outside the scale it stands at the scale's end
// The marker that a press at a place takes hold of: the nearest within reach along X, of several at one place
// the one that has the larger part of the frame to move in. -1 where there is none, and outside the frame.
int MarkerAt(int x, int y, int reach);
void MarkerMouseDown(int index);
void MarkerMouseMove(int x); // the captured marker follows, but not to or past a neighbour
void MarkerMouseUp();
void MarkerKey(int code, int shift); // the arrow keys

// What the status line and exact readings show for a value of an axis: digits more than its labels have.
std::string AxisReading(bool ofX, double value);

} // namespace Quillon
