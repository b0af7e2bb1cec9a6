#include "workspace/records/Cancel.h"

namespace Quillon {

void AskToStop() {
    Work.AbortFit = FlagTrue;
}

void StopAsFailed() {
    Work.AbortFit = Work.FunctionFailed = FlagTrue;
}

bool IsCancelled() {
    return Work.AbortFit && !Work.FunctionFailed;
}

void ClearCancel() {
    Work.AbortFit = FlagFalse;
}

void ForgetStop() {
    Work.AbortFit = Work.FunctionFailed = FlagFalse;
}

void HandOnCancel(bool cancelled) {
    Work.AbortFit = Flag(cancelled);
}

StopKept::~StopKept() {
    Work.AbortFit = AbortFit;
    Work.FunctionFailed = FunctionFailed;
}

} // namespace Quillon
