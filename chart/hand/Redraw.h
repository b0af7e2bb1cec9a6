#pragma once
// The graph on the window brought up to date.

namespace Quillon {

// True when a graph is held and none is being painted: commands that change it may run.
bool GraphMayChange();

// The graph was given a new size or was changed: lays it out again, draws it, puts the markers back.
void RedrawChart();

// Draws the graph as it is laid out, and puts the markers back.
void RedrawAsLaidOut();

} // namespace Quillon
