#pragma once
// What mouse and keys do on a graph: the rubber band that zooms, reading of positions, the drag of a marker.
// Positions are device units of the picture box; buttons are 1 left, 2 right, 4 middle. All of it needs a
// graph that is held; while one is being painted nothing of it does anything.

namespace Quillon {

// The left button begins a rubber band, a higher one reads an exact position: the nearest point of the data
// that stands within a few millimetres, or else the place itself. With Shift the rubber band is for whoever
// made the graph, where that has a use for it (Charts.OnShiftBox). The middle button moves the graph
// (chart/hand/ChartWheel.h), and reads an exact position when it is let go where it was pressed.
void ChartMouseDown(int x, int y, int button, bool shift = false);
void ChartMouseMove(int x, int y, int buttons);
void ChartMouseUp(int x, int y, int button); // zooms when a rubber band of more than 8 units was drawn

// What the status line reads at a position in axis units; a value that is MissingValue is left out.
void ShowCursorText(float x, float y);

// A key on the graph: 13 Return, 27 Escape, 37 to 40 the arrows left, up, right and down; shift: the sum of 1
// Shift, 2 Ctrl, 4 Alt. Escape drops a rubber band or puts
// a graph that is being moved back; without one it raises the shared cancel flag. With
// markers the left and right arrows move the active one by a unit, with Ctrl by ten, and up and down change
// to the next.
void ChartKey(int code, int shift);

} // namespace Quillon
