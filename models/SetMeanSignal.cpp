#include "models/SetMeanSignal.h"

#include "models/Catalogue.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

double SetMeanSignal(long set) {
    long first = 1;
    for (long s = 1; s < set; ++s)
        first += Work.SetPts[s];
    double sum = 0.0;
    long count = 0;
    for (long p = first; p < first + Work.SetPts[set]; ++p)
        if (Work.PtX[p] != PointMarker) {
            sum += static_cast<double>(Work.PtY[p]);
            ++count;
        }
    const bool noOffset = OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0);
    const double offset = noOffset ? 0.0 : static_cast<double>(Work.Parms[SlotOffset(set)]);
    return Divide(sum, static_cast<double>(count)) - offset;
}

} // namespace Quillon
