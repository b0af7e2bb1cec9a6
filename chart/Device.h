#pragma once
// The target of a painting: its surface, its size and resolution, and the view in it.

#include "chart/ChartState.h"

#include <string>

namespace Quillon {

// A length or place in device units: rounded to nearest, ties to even, and kept within 16 bits. What is no
// number is 0.
std::int16_t DeviceUnits(double value);

// SelectTarget without clearing the status.
void ChooseTarget(const GraphSpec& spec);

// Reads size and resolution of the target's surface and puts the view right: an edge before 0 or beyond the
// device, or no width, gives the full width, and likewise in height. Sets the diagonal and the font limits.
void ReadView(const GraphBox& view);

// True when SelectTarget has found a surface.
bool HasSurface();

// True when the shared cancel flag is raised and the target heeds it.
bool DrawingCancelled();

// Lets pending events run, where the target is not a metafile.
void ServeDrawing();

// The title of the engine's messages, and the name under which its settings are kept.
std::string ProgramTitle();

} // namespace Quillon
