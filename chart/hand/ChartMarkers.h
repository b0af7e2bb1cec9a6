#pragma once
// The vertical markers over the graph, which the user moves along X.

namespace Quillon {

// Two markers at X of the stored data, in use.
void PlaceMarkers(float first, float second);
void RemoveMarkers();
void RecordMarkers(); // keeps the X of each before a redraw

// Shows each marker at its X. One whose X lies outside the scale is shown at the scale's end and keeps its X:
// a look at a part of the graph moves no marker. Pale points go to their places as well.
void RepositionMarkers();

// The marker that a press at a place takes hold of: the nearest within reach along X, of several at one place
// the one that has the larger part of the frame to move in. -1 where there is none, and outside the frame.
int MarkerAt(int x, int y, int reach);
void MarkerMouseDown(int index);
// A press at a place: takes hold of the marker there, false without one. Where several stand within reach of
// the press, the direction of the first move decides which of them it is: the outermost on that side.
bool MarkerPressed(int x, int y, int reach);
void MarkerMouseMove(int x); // the captured marker follows, but not to or past a neighbour
void MarkerMouseUp();
void MarkerKey(int code, int shift); // the arrow keys

} // namespace Quillon
