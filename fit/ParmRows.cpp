#include "fit/ParmRows.h"

#include "input/NUMINPUT.h"
#include "models/table/ParmScale.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

std::string ParmCaption(SlotNo slot) {
    const std::string& title = Work.ParmTitle[slot];
    return title.empty() ? Work.ParmName[slot] : Work.ParmName[slot] + "  (" + title + ")";
}

std::string ParmText(SlotNo slot, float displayed) {
    return FormatNumber(static_cast<double>(displayed), Work.ParmFormat[slot]);
}

std::string ParmText(SlotNo slot) {
    return ParmText(slot, ToUserUnits(slot, Work.Parms[slot]));
}

} // namespace Quillon
