#include "studies/methods/ForgetFit.h"

#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

void ForgetFit() {
    ForgetStop();
    Work.FitDone = Work.FitValid = Work.LimitsDone = FlagFalse;
    Work.Outcome = FitOutcome{};
}

} // namespace Quillon
