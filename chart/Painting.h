#pragma once
// The steps of DrawGraph, and what they share. Each works on the target's surface with the current layout.

#include "platform/Surface.h"

#include <cstdint>

namespace Quillon {

// Axis line, grid, tics, labels and title of one axis (AxisPlace of chart/Layout.h).
void DrawAxis(int place);

// The data, by graph type. Each clips to the frame and lets events run every 50 points; a raised cancel flag
// ends it.
void DrawXY();
void DrawLinesOverCategories();
void DrawBarsH();
void DrawBarsV();
void DrawPie();

// Marks and notes, in their order.
void DrawMarks();
void DrawNotes();

// Clips to the frame, widened by half the clearance and one unit on each side, so that the symbols of points
// on the frame are whole.
DeviceRect FrameClip();

// Counts points drawn: after every 50 lets events run. False when the drawing is to stop.
bool CountPoint(long& count);

} // namespace Quillon
