#include "commands/fitting/FitCommand.h"

#include "fit/GNLLSQ.h"
#include "fit/Undetermined.h"
#include "fit/forms/FitMon.h"
#include "fit/forms/GuessesDialog.h"
#include "fit/forms/HoldForm.h"
#include "input/NUMINPUT.h"
#include "models/SEDEQ3.h"
#include "persistence/Defaults.h"
#include "platform/Platform.h"
#include "reporting/Results.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <optional>

namespace Quillon {

namespace {

// A baseline just subtracted leaves no offset to be fitted.
void HoldOffsetsOfNewBaselines() {
    for (const SetNo set : EachSet())
        if (HasBaseline(RowOf(set)) && Work.SetChanged[RowOf(set)]) Work.FreeMap[SlotOffset(set)] = SlotHeld;
}

void OfferNewGuesses() {
    if (Work.NewData != Changed::Constraints && Work.Model == Work.LastModel) return;
    if (AskYesNo("Do you want new guesses for the concentrations?", Work.ProgramName)) InitialGuesses(true);
    HoldOffsetsOfNewBaselines();
}

// Slots of the sets that change hands with the option take the common constants, or nothing.
void FollowSeparateK() {
    if (Work.SeparateK == Work.LastSeparateK) return;
    Work.FitDone = Work.FitValid = 0;
    for (const SetNo set : EachSet())
        for (const SlotNo slot : {SlotB(set), SlotOffset(set)}) {
            const SlotNo common = RuleOfSlot(Work.Model, true, slot).Common;
            if (common != NoSlot) Work.Parms[slot] = Work.SeparateK ? Work.Parms[common] : 0.0F;
        }
}

void FollowNonIdeal() {
    if (Work.NonIdeal == Work.LastNonIdeal) return;
    Work.FitDone = Work.FitValid = 0;
    if (!Work.NonIdeal) Work.Parms[7] = 0.0F;
}

void TellOfCooperativity() {
    if (!TraitsOfModel().CooperativityNote || Work.LastModel == Work.Model ||
        Work.ConcUnits != ConcUnit::Weight)
        return;
    Tell("Please be aware that in absorbance units the intrinsic binding constant for the second B molecule "
         "will be different than that of the first even if the binding energies are the same, due to the "
         "difference in extinction coefficients.  (In molar units equal binding constants imply equal "
         "energies.)",
         Work.ProgramName, BoxIcon::Information);
}

// The association constants of two species, which the guesses depend on.
void OfferGuessesForNewConstants() {
    bool changed = false;
    for (const SlotNo slot : {SlotNo(6), SlotNo(7), SlotNo(2), SlotNo(4)})
        if (RuleOfSlot(Work.Model, false, slot).Use == SlotUse::Shown) ParmChanged(slot, changed);
    if (!changed) return;
    if (AskYesNo(
            "You have altered the values of association constants.  This will affect the guesses for the "
            "concentrations.  Do you want new guesses?",
            Work.ProgramName))
        InitialGuesses(false);
}

std::string SumText(double sum) {
    return FormatNumber(sum, "#.######E-##");
}

// Everything up to the point where the iteration can start; false when the user cancelled.
bool PrepareFit() {
    Work.NumParms = ToInt16(NumSlots(Work.NumSets));
    FillStandardParms();
    OfferNewGuesses();
    Work.NewData = Changed::Nothing;
    FollowSeparateK();
    FollowNonIdeal();
    ApplyModelFlags();
    ApplyConcentrationLinks(); // the guesses show what a follower has
    TellOfCooperativity();
    const DialogAnswer answer = GuessesDialog(false);
    OfferGuessesForNewConstants();
    RefineModel();
    if (Work.ConstraintFlags & OffsetBit) ApplyOffsetLinks();
    ApplyConcentrationLinks();
    return answer == DialogAnswer::Ok;
}

// Nothing was asked and nothing followed from an option: a cancel leaves the fit as it stood.
bool IsStandingFit(const Workspace& w) {
    return w.FitDone != 0 && w.NewData == Changed::Nothing && w.Model == w.LastModel &&
           w.NonIdeal == w.LastNonIdeal && w.SeparateK == w.LastSeparateK;
}

void RememberOptions() {
    Work.LastNonIdeal = Work.NonIdeal;
    Work.LastModel = Work.Model;
    Work.LastSeparateK = Work.SeparateK;
}

// The monitor stands for as long as the fit and the message about its end take.
struct OpenMonitor {
    OpenMonitor() { OpenFitMonitor(); }
    ~OpenMonitor() { CloseFitMonitor(); }
    OpenMonitor(const OpenMonitor&) = delete;
    OpenMonitor& operator=(const OpenMonitor&) = delete;
};

bool IsNoMinimum(const FitOutcome& outcome) {
    return outcome.End != FitEnd::Converged && outcome.End != FitEnd::Cancelled;
}

// A stated sentence, and what it comes from as a paragraph of its own.
std::string TextOf(const FitOutcome& outcome) {
    return outcome.Reason.empty() ? outcome.Sentence : outcome.Sentence + "\n\n" + outcome.Reason;
}

// The one place where the end of a fit is told. A cancelled one has nothing to say.
void TellEnd(const FitOutcome& outcome) {
    if (!IsNoMinimum(outcome)) return;
    const bool stands = outcome.End == FitEnd::TooManyIterations || outcome.End == FitEnd::StoppedShort;
    Tell(TextOf(outcome), Work.ProgramName, stands ? BoxIcon::Warning : BoxIcon::Stop);
}

// A question whose answer Yes may be the last one.
bool AgreesToDampedSteps(const std::string& question) {
    bool always = false;
    const BoxRequest request{question, Work.ProgramName, BoxIcon::Question, BoxButtons::YesNo,
                             BoxAnswer::Yes};
    const bool yes = Host.AskChecked(request, AlwaysCaption, always) == BoxAnswer::Yes;
    if (yes && always) {
        Work.RescueMode = Rescue::Always;
        SaveAlwaysRescue();
    }
    return yes;
}

// The question behind an end that is no minimum. A stop on the way has no box of its own: it stands in front
// of the question.
bool AgreesToRescue(const FitOutcome& outcome) {
    if (outcome.End == FitEnd::StoppedShort)
        return AgreesToDampedSteps(TextOf(outcome) + "\n\n" + RescueQuestion);
    TellEnd(outcome);
    return AgreesToDampedSteps(RescueQuestion);
}

bool WantsRescue(const FitOutcome& outcome) {
    if (Work.RescueMode == Rescue::Ask) return AgreesToRescue(outcome);
    if (Work.RescueMode == Rescue::Never) TellEnd(outcome);
    return Work.RescueMode == Rescue::Always;
}

// Behind a search that was wanted nothing is asked again.
void TakeLowerMinimum(const PerSlot<float>& start, const FitProgress& progress) {
    if (Work.AbortFit) return;
    if (const std::optional<Workspace> lower = FindLowerMinimum(start, progress)) Work = *lower;
}

void RescueAndTell(const PerSlot<float>& start, const FitProgress& progress) {
    if (!WantsRescue(Work.Outcome)) return;
    const bool told = Work.RescueMode == Rescue::Ask;
    RescueFit(start, progress);
    TakeLowerMinimum(start, progress);
    // A cancel may have led back to the fit that was told in the question.
    const bool cancelled = IsCancelled();
    if (!(told && cancelled)) TellEnd(Work.Outcome);
}

// [decision: converged-stands]
void OfferLowerMinimum(const PerSlot<float>& start, const FitProgress& progress) {
    if (Work.RescueMode == Rescue::Never) return;
    std::optional<Workspace> lower = FindLowerMinimum(start, progress);
    if (!lower) return;
    const bool taken = Work.RescueMode == Rescue::Always ||
                       AgreesToDampedSteps(LowerMinimumQuestion(Work.SumSq, lower->SumSq));
    lower->RescueMode = Work.RescueMode; // which the answer may have changed
    if (taken) {
        Work = *lower;
        return;
    }
    std::string& reason = Work.Outcome.Reason;
    reason += (reason.empty() ? "" : " ") + LowerMinimumText(lower->SumSq);
}

void RunAndTell(const FitProgress& progress) {
    const PerSlot<float> start = Work.Parms;
    Work.StartParms = start;
    RunFit(progress);
    if (IsNoMinimum(Work.Outcome))
        RescueAndTell(start, progress);
    else if (Work.Outcome.End == FitEnd::Converged)
        OfferLowerMinimum(start, progress);
}

void RunUnderMonitor() {
    const OpenMonitor monitor;
    RunAndTell(MonitorProgress());
}

void FitPrepared(const FitProgress* progress) {
    RememberOptions();
    Work.FitValid = Work.FitDone = 0;
    ResetFitFunction();
    try {
        progress ? RunAndTell(*progress) : RunUnderMonitor();
        if (Work.FitDone) ShowResults();
    } catch (const RuntimeError&) {
        CopySharedConstants(); // the fit stands though its results could not be shown
        throw;
    }
    CopySharedConstants();
}

// Everything before the iteration; after a cancel false, with what stood put back. The analysis that it keeps
// for that is gone when the iteration starts.
bool PrepareOrPutBack() {
    const Workspace before = Work;
    if (!PrepareFit()) {
        if (IsStandingFit(before)) Work = before;
        return false;
    }
    BuildParmScale();
    if (HoldDialog() == HoldAnswer::Cancel) { // a fit that stood still has its own values
        Work = before;
        ResetFitFunction();
        return false;
    }
    return true;
}

} // namespace

void RefineModel() {
    const auto altered = [](SlotNo slot) {
        const SlotRule& rule = RuleOfSlot(slot);
        return rule.Use == SlotUse::Fixed && Work.Parms[slot] != rule.Value;
    };
    if (TraitsOfModel().General != 0 && (altered(SlotNo(1)) || altered(SlotNo(3))))
        Work.Model = TraitsOfModel().General;
    Work.FitTitle = ModelDialogName(Work.Model) + " fit";
}

std::string LowerMinimumQuestion(double sum, double lowerSum) {
    return "The fit has converged, with a sum of squares of " + SumText(sum) +
           ". Damped steps have found a lower minimum, with " + SumText(lowerSum) +
           ".\n\nTake the lower one?";
}

std::string LowerMinimumText(double lowerSum) {
    return "A lower minimum is known, with a sum of squares of " + SumText(lowerSum) +
           ": fit again and take it, or search for other minima.";
}

void ParmChanged(SlotNo slot, bool& changed) {
    const float saved = Work.ParmsSave[slot];
    const float now = Work.Parms[slot];
    const float change = saved == 0.0F ? std::fabs(now) : std::fabs((now - saved) / saved);
    if (change > 0.1F) changed = true;
}

void ShowResults() {
    FillResults();
    Host.ShowModal(ResultsName);
}

void FitDataCommand(const FitProgress* progress) {
    try {
        if (PrepareOrPutBack()) FitPrepared(progress);
    } catch (const RuntimeError& error) {
        if (!Work.FitDone) Work.Outcome = {FitEnd::MathError, error.Text}; // else only showing it failed
        Tell("Error '" + error.Text + "' occurred in the fit command.", Work.ProgramName, BoxIcon::Stop);
    }
}

} // namespace Quillon
