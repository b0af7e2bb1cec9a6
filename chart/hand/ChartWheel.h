#pragma once
// Zoom by the wheel and moving of the graph by the middle button. Positions are device units of the picture
// box. In the frame both axes take part, below or above it the one along X alone, beside it the one along Y;
// an axis of categories takes no part. All of it needs a graph that is held; while one is being painted, or
// something else is being dragged, nothing of it does anything.

#include "chart/hand/ChartScale.h"

namespace Quillon {

// Towards the user is out, away from the user (notches above 0) is in: each notch is a quarter nearer. What
// is below the pointer stays there. Turns that follow each other are one zoom for LastZoom. Where singles
// could not tell the ends of the scale apart, or they would not be finite, the scale stays.
void ChartWheel(int x, int y, double notches);

// Takes hold of the graph; false where no axis takes part. It follows the pointer from a move of some units
// on: a press without one is a click.
bool BeginDrag(int x, int y);
void DragTo(int x, int y);
bool EndDrag();  // true when it was moved
void DropDrag(); // back to where it was taken hold of

} // namespace Quillon
