#pragma once
// The cancel flag and the mark of a failure beside it: the one place that writes Work.AbortFit.
//
// Every loop of the engine tests Work.AbortFit and leaves at once when it is set. The user sets it (a button
// of a window that shows progress, Esc, Ctrl-C, a restore that was given up), and so does a failure in
// arithmetic, which sets Work.FunctionFailed beside it and has written Work.Outcome. RunCommand clears it
// behind a command; whoever makes several tries clears it before each of them and hands a cancel on. The
// chart, which knows nothing of the analysis, is handed HandOnCancel by StartDesktop.

#include "workspace/records/Workspace.h"

namespace Quillon {

// The user wants no more: the work under way ends at its next test of the flag.
void AskToStop();

// A pass has failed in arithmetic, and Work.Outcome says how: it ends as behind a cancel, but is none.
void StopAsFailed();

// True behind AskToStop, false while nobody has asked and where a failure in arithmetic has set the flag.
bool IsCancelled();

// The flag is down: what was asked for has ended. The mark of a failure stays for whoever tells it.
void ClearCancel();

// The flag is down, and no failure is known: before a try, and behind one whose failure counts as a bad
// place.
void ForgetStop();

// The flag as given, where an analysis that was put aside comes back without what happened meanwhile: a
// cancel goes on to the caller's caller.
void HandOnCancel(bool cancelled);

// Both marks as they stand, put back at the end of its life: for work that is not part of the fit.
class StopKept {
public:
    StopKept() = default;
    ~StopKept();
    StopKept(const StopKept&) = delete;
    StopKept& operator=(const StopKept&) = delete;

private:
    std::int16_t AbortFit = Work.AbortFit, FunctionFailed = Work.FunctionFailed;
};

} // namespace Quillon
