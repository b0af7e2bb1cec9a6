#include "fit/Bounds.h"

#include "models/ParmScale.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

std::int16_t PutBackOntoBound(long slot) {
    float& p = Work.Parms[slot];
    const float v = ToUserUnits(slot, p);
    if (v < Work.Bounds[0][slot]) {
        p = ToInternal(slot, Work.Bounds[0][slot]);
        return -1;
    }
    if (v > Work.Bounds[1][slot]) {
        p = ToInternal(slot, Work.Bounds[1][slot]);
        return 1;
    }
    return 0;
}

} // namespace

void EnforceBounds() {
    Work.BoundHit = 0;
    for (long a = 0; a < Work.NumFree; ++a) {
        Work.AtBound[a] = PutBackOntoBound(Work.FreeIndex[a]);
        if (Work.AtBound[a] != 0) Work.BoundHit = 1;
    }
}

} // namespace Quillon
