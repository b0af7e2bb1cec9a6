#include "batch/SetPoints.h"

#include "platform/Paths.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

std::vector<SetPoints> PointsBySet() {
    std::vector<SetPoints> sets;
    long next = 1;
    for (long set = 1; set <= Work.NumSets; ++set) {
        SetPoints points{set, Work.SetRow[set], next, next - 1, next + Work.SetPts[set] - 1};
        while (points.LastTrue < points.Last && Work.PtX[points.LastTrue + 1] != PointMarker)
            ++points.LastTrue;
        next = points.Last + 1;
        sets.push_back(points);
    }
    return sets;
}

std::string SetName(long set) {
    return Work.NumSets == 1 ? FileTitle(Work.SetLabel[set]) : Work.SetLabel[set];
}

} // namespace Quillon
