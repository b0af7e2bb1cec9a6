#include "scandata/range/BaselineShift.h"

#include "input/NUMINPUT.h"
#include "scandata/table/DataSetTable.h"
#include "workspace/records/Workspace.h"

#include <cmath>

namespace Quillon {

float CalculatedShift(RowNo row) {
    const double scan = Work.ScanRPM[row];
    const double baseline = Work.BaselineRPM[row];
    const auto stretch = static_cast<float>((scan * scan - baseline * baseline) * Work.RotorExpansion);
    if (!std::isfinite(stretch))
        RaiseError(RowName(row) + ": between rotor speeds of " + SingleText(Work.BaselineRPM[row]) + " and " +
                   SingleText(Work.ScanRPM[row]) + " rpm no shift can be calculated");
    // Single precision from here on: 0.003 cm times 1000 is 3 and not a trifle below it.
    return std::floor(stretch * 1000.0F) / 1000.0F;
}

float StartingShift(RowNo row) {
    if (Work.ScanRPM[row] != Work.BaselineRPM[row] && Work.BaselineShift[row] == 0.0F)
        Work.BaselineShift[row] = CalculatedShift(row);
    return Work.BaselineShift[row];
}

void SetBaselineShift(RowNo row, float shift) {
    Work.BaselineShift[row] = shift;
    Work.BaselineShifted[row] = FlagTrue;
}

} // namespace Quillon
