#include "commands/FitCommand.h"

#include "fit/FitMon.h"
#include "fit/GNLLSQ.h"
#include "fit/GuessesDialog.h"
#include "models/SEDEQ3.h"
#include "platform/Platform.h"
#include "reporting/Results.h"
#include "workspace/records/Workspace.h"

#include <cmath>
#include <vector>

namespace Quillon {

namespace {

void FillZero(long slot, float standard) {
    if (Work.Parms[slot] == 0.0F) Work.Parms[slot] = standard;
}

// Masses and stoichiometries that nobody has set yet.
void FillStandardParms() {
    FillZero(0, 1.5F);
    FillZero(1, 2.0F);
    FillZero(3, 2.0F);
    FillZero(5, 3.0F);
}

// A baseline just subtracted leaves no offset to be fitted.
void HoldOffsetsOfNewBaselines() {
    for (long s = 1; s <= Work.NumSets; ++s) {
        const std::int16_t row = Work.SetRow[s];
        if (Work.BaselineFile[row] != NoBaseline && Work.SetChanged[row])
            Work.FreeMap[SlotOffset(s)] = SlotHeld;
    }
}

void OfferNewGuesses() {
    if (Work.NewData != 1 && Work.Model == Work.LastModel) return;
    if (AskYesNo("Do you want new guesses for the concentrations?", Work.ProgramName)) InitialGuesses(true);
    HoldOffsetsOfNewBaselines();
}

// Slots of the sets that change hands with the option take the common constants, or nothing.
void FollowSeparateK() {
    if (Work.SeparateK == Work.LastSeparateK) return;
    Work.FitDone = Work.FitValid = 0;
    const auto constant = [](long slot) { return Work.SeparateK ? Work.Parms[slot] : 0.0F; };
    for (long s = 1; s <= Work.NumSets; ++s) {
        if (Work.Model <= 6) Work.Parms[SlotB(s)] = constant(2);
        if (Work.Model == 4 || Work.Model == 5) Work.Parms[SlotOffset(s)] = constant(4);
        if (Work.Model > 6) Work.Parms[SlotOffset(s)] = constant(6);
    }
}

void FollowNonIdeal() {
    if (Work.NonIdeal == Work.LastNonIdeal) return;
    Work.FitDone = Work.FitValid = 0;
    if (!Work.NonIdeal) Work.Parms[7] = 0.0F;
}

void TellOfCooperativity() {
    if (Work.Model != 11 || Work.LastModel == 11 || Work.ConcUnits != 1) return;
    Tell("Please be aware that in absorbance units the intrinsic binding constant for the second B molecule "
         "will be different than that of the first even if the binding energies are the same, due to the "
         "difference in extinction coefficients.  (In molar units equal binding constants imply equal "
         "energies.)",
         Work.ProgramName, BoxIcon::Information);
}

// The association constants that the guesses of a model with two species depend on.
const std::vector<long>& ConstantsOfModel(int model) {
    static const std::vector<long> none, one{6}, two{6, 7}, dimer{6, 2}, twoDimer{6, 7, 2}, complex{6, 4},
        twoComplex{6, 7, 4}, dimerComplex{6, 2, 4}, all{6, 7, 2, 4};
    switch (model) {
    case 8:
    case 9:
        return one;
    case 10:
    case 11:
        return two;
    case 12:
    case 21:
        return dimer;
    case 13:
    case 14:
    case 22:
        return twoDimer;
    case 15:
    case 16:
        return complex;
    case 17:
    case 18:
        return twoComplex;
    case 19:
        return dimerComplex;
    case 20:
        return all;
    default:
        return none;
    }
}

void OfferGuessesForNewConstants() {
    bool changed = false;
    for (const long slot : ConstantsOfModel(Work.Model))
        ParmChanged(slot, changed);
    if (!changed) return;
    if (AskYesNo(
            "You have altered the values of association constants.  This will affect the guesses for the "
            "concentrations.  Do you want new guesses?",
            Work.ProgramName))
        InitialGuesses(false);
}

// Stoichiometries other than those of the name make it the general model, for good.
void RefineModel() {
    if (Work.Model == 2 && Work.Parms[1] != 2.0F) Work.Model = 3;
    if (Work.Model == 4 && !(Work.Parms[1] == 2.0F && Work.Parms[3] == 4.0F)) Work.Model = 5;
    Work.FitTitle = ModelDialogName(Work.Model) + " fit";
}

// Everything up to the point where the iteration can start; false when the user cancelled.
bool PrepareFit() {
    Work.NumParms = ToInt16(NumSlots(Work.NumSets));
    FillStandardParms();
    OfferNewGuesses();
    Work.NewData = 0;
    FollowSeparateK();
    FollowNonIdeal();
    ApplyModelFlags();
    TellOfCooperativity();
    GuessesDialog(false);
    OfferGuessesForNewConstants();
    RefineModel();
    if (Work.ConstraintFlags & OffsetBit) ApplyOffsetLinks();
    if (!Work.AbortFit) return true;
    Work.AbortFit = 0;
    return false;
}

void RememberOptions() {
    Work.LastNonIdeal = Work.NonIdeal;
    Work.LastModel = Work.Model;
    Work.LastSeparateK = Work.SeparateK;
}

// Models with one constant for two bonds show it in both of its slots.
void CopySharedConstants() {
    if (Work.Model == 18) Work.Parms[2] = Work.Parms[4];
    if (Work.Model == 21) Work.Parms[7] = Work.Parms[6];
}

// The monitor stands for as long as the fit and the message about its end take.
struct OpenMonitor {
    OpenMonitor() { OpenFitMonitor(); }
    ~OpenMonitor() { CloseFitMonitor(); }
    OpenMonitor(const OpenMonitor&) = delete;
    OpenMonitor& operator=(const OpenMonitor&) = delete;
};

// The one place where the end of a fit is told. A cancelled one has nothing to say.
void TellEnd(const FitOutcome& outcome) {
    if (outcome.End == FitEnd::Converged || outcome.End == FitEnd::Cancelled) return;
    const bool mayGoOn = outcome.End == FitEnd::TooManyIterations; // from where it stands
    Tell(outcome.Sentence, Work.ProgramName, mayGoOn ? BoxIcon::Warning : BoxIcon::Stop);
}

bool RunAndTell(const FitProgress* progress) {
    if (progress) {
        RunFit(*progress);
        TellEnd(Work.Outcome);
    } else {
        const OpenMonitor monitor;
        RunFit(MonitorProgress());
        TellEnd(Work.Outcome);
    }
    return Work.FitDone != 0;
}

void FitPrepared(const FitProgress* progress) {
    BuildParmScale();
    RememberOptions();
    Work.FitValid = Work.FitDone = 0;
    ResetFitFunction();
    try {
        if (RunAndTell(progress)) ShowResults();
    } catch (const RuntimeError&) {
        CopySharedConstants(); // the fit stands though its results could not be shown
        throw;
    }
    CopySharedConstants();
}

} // namespace

void ParmChanged(long slot, bool& changed) {
    const float saved = Work.ParmsSave[slot];
    const float now = Work.Parms[slot];
    const float change = saved == 0.0F ? std::fabs(now) : std::fabs((now - saved) / saved);
    if (change > 0.1F) changed = true;
}

void ShowResults() {
    FillResults();
    Host.ShowModal("Results");
}

void FitDataCommand(const FitProgress* progress) {
    try {
        if (PrepareFit()) FitPrepared(progress);
    } catch (const RuntimeError& error) {
        if (!Work.FitDone) Work.Outcome = {FitEnd::MathError, error.Text}; // else only showing it failed
        Tell("Error '" + error.Text + "' occurred in the fit command.", Work.ProgramName, BoxIcon::Stop);
    }
}

} // namespace Quillon
