#include "chart/draw/ClipLine.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// Keeps the part [from, to] of a line on which start + t * step is at least 0; false when none is left.
bool CutAt(double start, double step, double& from, double& to) {
    if (step == 0.0) return start >= 0.0;
    const double t = -start / step;
    if (step > 0.0)
        from = std::max(from, t);
    else
        to = std::min(to, t);
    return from <= to;
}

} // namespace

bool ClipLine(LineEnds& line, double width, double height) {
    const double dx = line.X2 - line.X1;
    const double dy = line.Y2 - line.Y1;
    if (!std::isfinite(dx) || !std::isfinite(dy)) return false;
    double from = 0.0;
    double to = 1.0;
    if (!CutAt(line.X1, dx, from, to) || !CutAt(width - line.X1, -dx, from, to) ||
        !CutAt(line.Y1, dy, from, to) || !CutAt(height - line.Y1, -dy, from, to))
        return false;
    const LineEnds whole = line;
    if (from > 0.0) {
        line.X1 = std::clamp(whole.X1 + from * dx, 0.0, width);
        line.Y1 = std::clamp(whole.Y1 + from * dy, 0.0, height);
    }
    if (to < 1.0) {
        line.X2 = std::clamp(whole.X1 + to * dx, 0.0, width);
        line.Y2 = std::clamp(whole.Y1 + to * dy, 0.0, height);
    }
    return true;
}

} // namespace Quillon
