#include "models/CoefficientWavelength.h"

#include "workspace/records/Roads.h"

namespace Quillon {

float CoefficientWavelength() {
    const RowNo first = RowOf(SetNo(1));
    const bool empty = Work.ScanFile[RowNo(1)].empty();
    return Work.ScanWavelength[empty && first >= RowNo(1) ? first : RowNo(1)];
}

} // namespace Quillon
