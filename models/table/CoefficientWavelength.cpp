#include "models/table/CoefficientWavelength.h"

#include "workspace/records/Roads.h"

namespace Quillon {

float CoefficientWavelength() {
    const RowNo first = RowOf(SetNo(1));
    return Work.ScanWavelength[!HasScan(RowNo(1)) && first > NoRow ? first : RowNo(1)];
}

} // namespace Quillon
