#include "fit/forms/WaitForm.h"

#include "fit/Confidence.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

WaitFormRecord WaitForm;

namespace {

void ShowProgress(double fraction) {
    WaitForm.Fraction = fraction;
    WaitForm.Picture2.Text = FormatNumber(fraction, "#0%");
    Host.ServeEvents();
}

} // namespace

void LoadWaitForm() {
    WaitForm = WaitFormRecord{};
    WaitForm.State.Caption = Work.ProgramName;
    WaitForm.Label1.Text = "This may take a while...";
    ClearCancel();
    ComputeConfidenceRatio(Work.ConfidenceLevel);
    WaitForm.Label2.Text = "Searching for a " +
                           FormatNumber(static_cast<double>(Work.ConfidenceRatio), "0.00000") +
                           " sum of squared errors ratio.";
    WaitForm.Picture2.Text = "0%";
    WaitForm.CancelButton.Text = "&Cancel";
    WaitForm.State.FocusOn = &WaitForm.CancelButton;
    WaitForm.State.Shown = true;
}

void SearchLimitsAndTell(const std::function<void(double fraction)>& progress) {
    const LimitsOutcome outcome = ConfidenceSearch(progress);
    if (!outcome.Failure.empty()) Tell(outcome.Failure, Work.ProgramName, BoxIcon::Warning);
}

void WaitFormTimer1() {
    if (!Work.AbortFit)
        SearchLimitsAndTell(ShowProgress);
    else if (Work.LimitsDone)
        ComputeConfidenceRatio(Work.LimitsLevel); // Cancel came first: the limits at hand stay
    ClearCancel();
    WaitForm.State.Shown = false;
}

void WaitFormCancelButton() {
    AskToStop();
}

} // namespace Quillon
