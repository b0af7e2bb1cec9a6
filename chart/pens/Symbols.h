#pragma once
// The symbols of points.

#include "platform/Surface.h"

#include <cstdint>

namespace Quillon {

// Symbols are numbered 0 to 17: 0 plus; diamond, square, circle, triangles up, down, left and right, each
// solid (odd number) and open (even number behind it); 15 diamond with a plus, 16 cross, 17 square with a
// cross.

// Takes pen and brush for the symbols of a set into force: a line of SymbolWidth in the set's colour; solid
// symbols are filled with it, open ones with the background of the frame, so that the line behind is hidden,
// and on a metafile with nothing.
void SelectSymbolPen(int set, std::int16_t code);

// The symbol of a set; among sets with looks it goes with the dash.
std::int16_t SymbolOf(int set);

// Draws a symbol about a point, with the pen and brush in force.
void DrawSymbol(int x, int y, std::int16_t code);

// Draws what SymbolMode asks for at a point: the symbol, a dot at its centre, or both; the symbol where it
// asks for none.
void DrawPoint(int x, int y, std::int16_t code);

} // namespace Quillon
