#pragma once
// The target of a painting: its surface, its size and resolution, and the view in it.

#include "chart/records/Records.h"

#include <string>

namespace Quillon {

// A length or place in device units: rounded to nearest, ties to even, and kept within 16 bits. What is no
// number is 0.
std::int16_t DeviceUnits(double value);

// Chooses the target by Device of the GraphSpec ("0" the picture box, "1" the printer, else a metafile of
// that name, which is begun), reads its size, resolution and view, and builds the cycles. Without a surface
// the status is NoSurface, and a message says so.
void SelectTarget(const GraphSpec& spec);

// SelectTarget without clearing the status.
void ChooseTarget(const GraphSpec& spec);

// Finishes the metafile that SelectTarget has begun; nothing on other targets.
void CloseMetafile();

// Reads size and resolution of the target's surface and puts the view right: an edge before 0 or beyond the
// device, or no width, gives the full width, and likewise in height. Sets the diagonal and the font limits.
void ReadView(const GraphBox& view);

// True when the shared cancel flag is raised and the target heeds it.
bool DrawingCancelled();

// Lets pending events run, where the target is not a metafile.
void ServeDrawing();

} // namespace Quillon
