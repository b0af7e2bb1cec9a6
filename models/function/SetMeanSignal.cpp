#include "models/function/SetMeanSignal.h"

#include "models/table/Catalogue.h"
#include "workspace/records/Roads.h"

namespace Quillon {

double SetMeanSignal(SetNo set) {
    double sum = 0.0;
    const long last = LastTruePointOf(set);
    for (long p = FirstPointOf(set); p <= last; ++p)
        sum += static_cast<double>(Work.PtY[p]);
    const bool noOffset = OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0);
    const double offset = noOffset ? 0.0 : static_cast<double>(Work.Parms[SlotOffset(set)]);
    return Divide(sum, static_cast<double>(TruePointsOf(set))) - offset;
}

} // namespace Quillon
