#include "scandata/table/BaselineAt.h"

#include "platform/Narrow.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

// Where the latest call ended: the calls come in rising radius, so that the next one goes on from there.
struct BaselinePlace {
    RowNo Row;
    long Point = 1; // the first point at or above Radius, or one behind the last
    float Radius = 0.0F;
};
BaselinePlace Latest;

// The points before the remembered one all lie below radius.
bool PlaceHolds(float radius, RowNo row, const float* radii, long points) {
    return Latest.Row == row && radius >= Latest.Radius && Latest.Point <= points + 1 &&
           (Latest.Point == 1 || radii[Latest.Point - 2] < radius);
}

} // namespace

float BaselineAt(float radius, RowNo row) {
    const long points = std::min<long>(
        {Work.BaselinePoints[row], Work.BaselineRadius[row].Hi(), Work.BaselineValue[row].Hi()});
    if (points < 1) return 0.0F;
    const float* x = Work.BaselineRadius[row].Data();
    const float* y = Work.BaselineValue[row].Data();
    long i = PlaceHolds(radius, row, x, points) ? Latest.Point : 1;
    while (i <= points && x[i - 1] < radius)
        ++i;
    Latest = {row, i, radius};
    if (i == 1) return y[0];
    if (i > points) return y[points - 1];
    const double x1 = x[i - 2];
    const double x2 = x[i - 1];
    const double y1 = y[i - 2];
    const double y2 = y[i - 1];
    return ToSingle(((radius - x1) * y2 + (x2 - radius) * y1) / (x2 - x1));
}

double SignalOf(RowNo row, float radius, float value) {
    if (!HasBaseline(row)) return value;
    const float shift = Work.BaselineShifted[row] ? Work.BaselineShift[row] : 0.0F;
    return static_cast<double>(value) - BaselineAt(radius - shift, row);
}

void ForgetBaselinePlace() {
    Latest = {};
}

} // namespace Quillon
