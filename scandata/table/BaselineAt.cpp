#include "scandata/table/BaselineAt.h"

#include "platform/Narrow.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

// The points before the remembered one all lie below radius.
bool Holds(const BaselinePlace& place, float radius, RowNo row, const float* radii, long points) {
    return place.Row == row && radius >= place.Radius && place.Point <= points + 1 &&
           (place.Point == 1 || radii[place.Point - 2] < radius);
}

// The straight line between two neighbouring points, of which `at` counts the outer one from 0.
float Between(const float* x, const float* y, long at, float radius) {
    const double x1 = x[at - 1], x2 = x[at];
    const double y1 = y[at - 1], y2 = y[at];
    return ToSingle(((radius - x1) * y2 + (x2 - radius) * y1) / (x2 - x1));
}

} // namespace

float BaselineAt(float radius, RowNo row, BaselinePlace& latest) {
    const long points = std::min<long>(
        {Work.BaselinePoints[row], Work.BaselineRadius[row].Hi(), Work.BaselineValue[row].Hi()});
    if (points < 1) return 0.0F;
    const float* x = Work.BaselineRadius[row].Data();
    const float* y = Work.BaselineValue[row].Data();
    long i = Holds(latest, radius, row, x, points) ? latest.Point : 1;
    while (i <= points && x[i - 1] < radius)
        ++i;
    latest = {row, i, radius};
    if (i == 1) return y[0];
    if (i > points) return y[points - 1];
    return Between(x, y, i - 1, radius);
}

double SignalOf(RowNo row, float radius, float value, BaselinePlace& latest) {
    if (!HasBaseline(row)) return value;
    const float shift = Work.BaselineShifted[row] ? Work.BaselineShift[row] : 0.0F;
    return static_cast<double>(value) - BaselineAt(radius - shift, row, latest);
}

} // namespace Quillon
