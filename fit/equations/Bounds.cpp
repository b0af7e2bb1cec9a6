#include "fit/equations/Bounds.h"

#include "models/table/ParmScale.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

std::int16_t PutBackOntoBound(Workspace& w, SlotNo slot) {
    float& p = w.Parms[slot];
    const float v = ToUserUnits(slot, p);
    if (v < w.Bounds[0][slot]) {
        p = ToInternal(slot, w.Bounds[0][slot]);
        return -1;
    }
    if (v > w.Bounds[1][slot]) {
        p = ToInternal(slot, w.Bounds[1][slot]);
        return 1;
    }
    return 0;
}

} // namespace

void EnforceBounds() {
    Workspace& w = Work; // the thread's own is looked up once
    w.BoundHit = 0;
    for (const FreePos a : EachFree()) {
        w.AtBound[a] = PutBackOntoBound(w, SlotNo(w.FreeIndex[a]));
        if (w.AtBound[a] != 0) w.BoundHit = 1;
    }
}

bool StandsAtBound(SlotNo slot, int side) {
    const float bound = Work.Bounds[static_cast<std::size_t>(side)][slot];
    const float parm = Work.Parms[slot];
    const float shown = ToUserUnits(slot, parm);
    const bool beyond = side == 0 ? shown < bound : shown > bound;
    return beyond || shown == bound || parm == ToInternal(slot, bound);
}

void MarkBounds() {
    Work.AtBound.Recreate(Work.NumFree);
    Work.BoundHit = 0;
    if (!Work.BoundsActive) return;
    for (const FreePos a : EachFree()) {
        const SlotNo slot = SlotOf(a);
        Work.AtBound[a] = ToInt16(StandsAtBound(slot, 1) ? 1 : StandsAtBound(slot, 0) ? -1 : 0);
        if (Work.AtBound[a] != 0) Work.BoundHit = 1;
    }
}

} // namespace Quillon
