#include "workspace/records/Roads.h"

namespace Quillon {

long FirstPointOf(SetNo set) {
    long first = 1;
    for (SetNo before(1); before < set; ++before)
        first += Work.SetPts[before];
    return first;
}

long LastPointOf(SetNo set) {
    return FirstPointOf(set) + Work.SetPts[set] - 1;
}

long LastTruePointOf(SetNo set) {
    const long first = FirstPointOf(set);
    long last = first + Work.SetPts[set] - 1;
    while (last >= first && IsPseudoPoint(last))
        --last;
    return last;
}

long TruePointsOf(SetNo set) {
    return LastTruePointOf(set) - FirstPointOf(set) + 1;
}

} // namespace Quillon
