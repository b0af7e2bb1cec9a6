#include "batch/outputs/SetPoints.h"

#include "platform/Paths.h"
#include "workspace/records/Roads.h"

namespace Quillon {

std::vector<SetPoints> PointsBySet() {
    std::vector<SetPoints> sets;
    for (const SetNo set : EachSet())
        sets.push_back({set, RowOf(set), FirstPointOf(set), LastTruePointOf(set), LastPointOf(set)});
    return sets;
}

std::string SetName(SetNo set) {
    return Work.NumSets == 1 ? FileTitle(Work.SetLabel[set]) : Work.SetLabel[set];
}

} // namespace Quillon
