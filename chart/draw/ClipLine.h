#pragma once
// The part of a line within a rectangle.

namespace Quillon {

struct LineEnds {
    double X1{}, Y1{}, X2{}, Y2{};
};

// Cuts a line to the rectangle from (0, 0) to (width, height). False when no part of it lies within.
bool ClipLine(LineEnds& line, double width, double height);

} // namespace Quillon
