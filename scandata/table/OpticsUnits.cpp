#include "scandata/table/OpticsUnits.h"

#include "models/table/DefaultBounds.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

int UnitsOfOptics(int concUnits) {
    const int kind = concUnits % ConcUnit::Fringes;
    return Work.InterferenceData ? kind + ConcUnit::Fringes : kind;
}

void UnitsFollowOptics() {
    const int units = UnitsOfOptics(Work.ConcUnits);
    if (units == Work.ConcUnits) return;
    Work.ConcUnits = ToInt16(units);
    RefreshUnits();
    SetDefaultBounds();
}

} // namespace Quillon
