#pragma once
// What the painting of data shares: the clip of the frame, and the pace at which events are served.

#include "platform/Surface.h"

namespace Quillon {

// Clips to the frame, widened by half the clearance and one unit on each side, so that the symbols of points
// on the frame are whole.
DeviceRect FrameClip();

// Counts points drawn: after every 50 lets events run. False when the drawing is to stop.
bool CountPoint(long& count);

} // namespace Quillon
