#pragma once
// Painting of marks and notes.

namespace Quillon {

// Each in its order, at its place in the units of the data; one that is off the scale is clipped.
void DrawMarks();
void DrawNotes();

} // namespace Quillon
