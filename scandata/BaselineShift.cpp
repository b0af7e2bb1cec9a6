#include "scandata/BaselineShift.h"

#include "workspace/records/Workspace.h"

#include <cmath>

namespace Quillon {

float CalculatedShift(long row) {
    const double scan = Work.ScanRPM[row];
    const double baseline = Work.BaselineRPM[row];
    const float stretch = ToSingle((scan * scan - baseline * baseline) * Work.RotorExpansion);
    // Single precision from here on: 0.003 cm times 1000 is 3 and not a trifle below it.
    return std::floor(stretch * 1000.0F) / 1000.0F;
}

float StartingShift(long row) {
    if (Work.ScanRPM[row] != Work.BaselineRPM[row] && Work.BaselineShift[row] == 0.0F)
        Work.BaselineShift[row] = CalculatedShift(row);
    return Work.BaselineShift[row];
}

void SetBaselineShift(long row, float shift) {
    Work.BaselineShift[row] = shift;
    Work.BaselineShifted[row] = FlagTrue;
}

} // namespace Quillon
