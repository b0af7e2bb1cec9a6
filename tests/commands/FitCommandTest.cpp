// The fit command: what it repairs, asks and resets between model, options, parameters and the iteration.
#include "commands/fitting/FitCommand.h"
#include "fit/forms/GetGuess.h"
#include "reporting/Results.h"

#include "fit/equations/FreeMap.h"
#include "models/table/Catalogue.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ParmScale.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace Quillon {
namespace {

const std::string NewGuesses = "Do you want new guesses for the concentrations?";
const std::string ResetOffsets = "Do you also want the baseline offsets reset to zero?";
const std::string Altered =
    "You have altered the values of association constants.  This will affect the guesses for "
    "the concentrations.  Do you want new guesses?";

// An experiment with the truth in Parms, as after a fit of it: the next fit of the same model asks nothing.
void Load(const std::string& name) {
    Work = SimulatedWorkspace(ModelCaseNamed(name));
    Work.DataChosen = Work.ModelChosen = FlagTrue;
    Work.MonitorMode = 0;
    Work.NewData = 0;
    Work.LastModel = Work.Model;
    Work.LastNonIdeal = Work.NonIdeal;
    Work.LastSeparateK = Work.SeparateK;
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    SetDefaultBounds();
}

// The guesses dialog, accepted as it opens.
void Accept() {
    EXPECT_TRUE(AssignFreePositions(FitChoices()));
}
void CancelDialog() {
    GetGuessCancelButton();
}

// Only the masses' and stoichiometries' marks that the experiment fits.
void AcceptWithCommonHeld() {
    std::vector<FitChoice> choices = FitChoices();
    for (FitChoice& choice : choices)
        if (choice.Slot == SlotNo(1) || choice.Slot == SlotNo(3)) choice.Check = FitCheckNo;
    EXPECT_TRUE(AssignFreePositions(choices));
}

// Runs the command up to a cancelled guesses dialog and gives what the dialog found.
Workspace RunToDialog(Script& script) {
    Workspace seen;
    script.ExpectModal(GetGuessName, [&] {
        seen = Work;
        CancelDialog();
    });
    FitDataCommand();
    EXPECT_EQ(Work.AbortFit, 0);
    return seen;
}

TEST(FitCommand, SecondFitOfTheSameAsksNothing) {
    Script script;
    Load("Model02");
    script.ExpectModal(GetGuessName, Accept);
    script.ExpectModal(ResultsName, [] { EXPECT_EQ(Work.FitDone, FlagTrue); });
    FitDataCommand();
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.NewData, 0);
    EXPECT_EQ(Work.FitTitle, "monomer <-> dimer fit");
    EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
}

TEST(FitCommand, AnotherModelAsksForGuesses) {
    Script script;
    Load("Model02");
    Work.LastModel = 1;
    Work.Parms[SlotA(1)] = 9.0F;
    script.ExpectMessage(
        BoxRequest{NewGuesses, "Quillon", BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::Yes},
        BoxAnswer::Yes);
    script.ExpectMessage(ResetOffsets, BoxAnswer::No);
    const Workspace seen = RunToDialog(script);
    EXPECT_NE(seen.Parms[SlotA(1)], 9.0F);
    EXPECT_EQ(Work.LastModel, 1); // nothing was fitted
}

TEST(FitCommand, RefusedGuessesKeepTheConcentrations) {
    Script script;
    Load("Model02");
    Work.LastModel = 1;
    Work.Parms[SlotA(1)] = 9.0F;
    script.ExpectMessage(NewGuesses, BoxAnswer::No);
    EXPECT_EQ(RunToDialog(script).Parms[SlotA(1)], 9.0F);
}

TEST(FitCommand, ChangedConstraintsAskButChangedDataDoNot) {
    Script script;
    Load("Model02");
    Work.NewData = 1;
    script.ExpectMessage(NewGuesses, BoxAnswer::No);
    RunToDialog(script);
    EXPECT_EQ(Work.NewData, 0);
    Work.NewData = FlagTrue;
    RunToDialog(script);
    EXPECT_EQ(Work.NewData, 0);
}

TEST(FitCommand, BaselineOfChangedDataHoldsTheOffset) {
    Script script;
    Load("Model02");
    for (long set = 1; set <= 3; ++set)
        Work.FreeMap[SlotOffset(set)] = 0;
    Work.BaselineFile[Work.SetRow[1]] = "base.RA1";
    Work.SetChanged[Work.SetRow[1]] = FlagTrue;
    Work.BaselineFile[Work.SetRow[2]] = "base.RA1"; // not changed
    Work.SetChanged[Work.SetRow[3]] = FlagTrue;     // no baseline
    Work.NewData = 1;
    script.ExpectMessage(NewGuesses, BoxAnswer::No);
    const Workspace seen = RunToDialog(script);
    EXPECT_EQ(seen.FreeMap[SlotOffset(1)], SlotHeld);
    EXPECT_EQ(seen.FreeMap[SlotOffset(2)], 0);
    EXPECT_EQ(seen.FreeMap[SlotOffset(3)], 0);
}

TEST(FitCommand, EmptyCommonSlotsAreFilled) {
    Script script;
    Load("Model05");
    for (const long slot : {0, 1, 3, 5})
        Work.Parms[slot] = 0.0F;
    const Workspace seen = RunToDialog(script);
    EXPECT_EQ(seen.Parms[0], 1.5F);
    EXPECT_EQ(seen.Parms[1], 2.0F);
    EXPECT_EQ(seen.Parms[3], 2.0F);
    EXPECT_EQ(seen.Parms[5], 3.0F);
    EXPECT_EQ(seen.NumParms, 3 * seen.NumSets + 8);
}

TEST(FitCommand, ACancelledDialogLeavesEverything) {
    Script script;
    Load("Model02");
    const auto before = Work.Parms;
    script.ExpectModal(GetGuessName, [] {
        Work.Parms[0] = 7.0F;
        Work.ConvergenceLimit = 1.0F;
        CancelDialog();
    });
    FitDataCommand();
    EXPECT_EQ(Work.Parms, before);
    EXPECT_EQ(Work.ConvergenceLimit, 0.05F);
    EXPECT_EQ(Work.AbortFit, 0);
    EXPECT_EQ(Work.Outcome.End, FitEnd::NotRun);
}

TEST(FitCommand, SeparateConstantsStartFromTheCommonOne) {
    Script script;
    Load("Model04");
    Work.SeparateK = FlagTrue;
    Work.FitDone = Work.FitValid = FlagTrue;
    Work.Parms[2] = 1.25F;
    Work.Parms[4] = 2.5F;
    Workspace seen = RunToDialog(script);
    for (long set = 1; set <= seen.NumSets; ++set) {
        EXPECT_EQ(seen.Parms[SlotB(set)], 1.25F);
        EXPECT_EQ(seen.Parms[SlotOffset(set)], 2.5F);
    }
    EXPECT_EQ(seen.FitDone, 0);
    EXPECT_EQ(seen.FitValid, 0);

    Work.SeparateK = FlagFalse;
    Work.LastSeparateK = FlagTrue;
    seen = RunToDialog(script);
    EXPECT_EQ(seen.Parms[SlotB(1)], 0.0F);
    EXPECT_EQ(seen.Parms[SlotOffset(1)], 0.0F);
}

TEST(FitCommand, SeparateConstantsOfModelTwoLeaveTheOffset) {
    Script script;
    Load("Model02");
    Work.SeparateK = FlagTrue;
    Work.Parms[2] = 1.25F;
    Work.Parms[SlotOffset(1)] = 0.5F;
    const Workspace seen = RunToDialog(script);
    EXPECT_EQ(seen.Parms[SlotB(1)], 1.25F);
    EXPECT_EQ(seen.Parms[SlotOffset(1)], 0.5F);
}

TEST(FitCommand, SeparateConstantsAboveModelSixTakeTheLastSlotOnly) {
    Script script;
    Load("Model08");
    Work.SeparateK = FlagTrue;
    Work.Parms[6] = 3.75F;
    Work.Parms[SlotB(1)] = -0.5F;
    const Workspace seen = RunToDialog(script);
    EXPECT_EQ(seen.Parms[SlotB(1)], -0.5F);
    EXPECT_EQ(seen.Parms[SlotOffset(1)], 3.75F);
}

TEST(FitCommand, NonIdealitySwitchedOffIsForgotten) {
    Script script;
    Load("Model02NonIdeal");
    Work.NonIdeal = FlagFalse;
    Work.FitDone = Work.FitValid = FlagTrue;
    const Workspace seen = RunToDialog(script);
    EXPECT_EQ(seen.Parms[7], 0.0F);
    EXPECT_EQ(seen.FitDone, 0);
    EXPECT_EQ(seen.FitValid, 0);
    EXPECT_EQ(seen.FreeMap[7], SlotUnused);
}

TEST(FitCommand, CooperativeSitesAreExplainedOnce) {
    const std::string note =
        "Please be aware that in absorbance units the intrinsic binding constant for the second "
        "B molecule will be different than that of the first even if the binding energies are "
        "the same, due to the difference in extinction coefficients.  (In molar units equal "
        "binding constants imply equal energies.)";
    Script script;
    Load("Model11");
    Work.ConcUnits = 1;
    RunToDialog(script); // model 11 was fitted before
    Work.LastModel = 10;
    script.ExpectMessage(NewGuesses, BoxAnswer::No);
    script.ExpectMessage(BoxRequest{note, "Quillon", BoxIcon::Information, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    RunToDialog(script);
    Work.ConcUnits = 0;
    script.ExpectMessage(NewGuesses, BoxAnswer::No);
    RunToDialog(script);
}

// The constants whose change brings the question, by model.
std::set<long> TestedConstants(int model) {
    if (model == 8 || model == 9) return {6};
    if (model == 10 || model == 11) return {6, 7};
    if (model == 12 || model == 21) return {2, 6};
    if (model == 13 || model == 14 || model == 22) return {2, 6, 7};
    if (model == 15 || model == 16) return {4, 6};
    if (model == 17 || model == 18) return {4, 6, 7};
    if (model == 19) return {2, 4, 6};
    if (model == 20) return {2, 4, 6, 7};
    return {};
}

TEST(FitCommand, AlteredConstantsAskForGuesses) {
    for (int model = 1; model <= LastModelNumber; ++model)
        for (long slot = 0; slot < 8; ++slot) {
            SCOPED_TRACE("model " + std::to_string(model) + ", slot " + std::to_string(slot));
            Script script;
            Load((model < 10 ? "Model0" : "Model") + std::to_string(model));
            Work.MaxIterations = 1;
            script.ExpectModal(GetGuessName, [slot] {
                AcceptWithCommonHeld();
                Work.Parms[slot] = Work.Parms[slot] * 1.2F + 0.2F;
            });
            if (TestedConstants(model).count(slot) > 0) script.ExpectMessage(Altered, BoxAnswer::No);
            script.AnswerAllMessages(BoxAnswer::Ok); // whatever the one iteration says
            FitDataCommand();
            EXPECT_EQ(Work.Iteration, 1);
        }
}

TEST(FitCommand, GuessesForAlteredConstantsLeaveTheOffsets) {
    Script script;
    Load("Model08");
    Work.MaxIterations = 1;
    float guessed = 0.0F;
    script.ExpectModal(GetGuessName, [&] {
        Accept();
        Work.Parms[6] += 5.0F;
        guessed = Work.Parms[SlotA(1)];
    });
    script.ExpectMessage(Altered, BoxAnswer::Yes); // and no question about offsets
    script.AnswerAllMessages(BoxAnswer::Ok);
    FitDataCommand();
    EXPECT_NE(Work.ParmsSave[SlotA(1)], guessed); // where the iteration started
}

TEST(ParmChanged, ATenthIsTheLimit) {
    Script script;
    Work = FreshWorkspace();
    Work.ParmsSave.Recreate(Work.MaxParms - 1);
    const auto changed = [](float saved, float now) {
        Work.ParmsSave[2] = saved;
        Work.Parms[2] = now;
        bool answer = false;
        ParmChanged(SlotNo(2), answer);
        return answer;
    };
    EXPECT_FALSE(changed(0.0F, 0.1F));
    EXPECT_FALSE(changed(0.0F, -0.1F));
    EXPECT_TRUE(changed(0.0F, 0.1001F));
    EXPECT_TRUE(changed(0.0F, -0.1001F));
    EXPECT_FALSE(changed(10.0F, 11.0F)); // exactly a tenth
    EXPECT_TRUE(changed(10.0F, 11.01F));
    EXPECT_FALSE(changed(-10.0F, -9.0F));
    EXPECT_TRUE(changed(-10.0F, -8.9F));
    EXPECT_TRUE(changed(-10.0F, 10.0F));
    bool stays = true;
    Work.Parms[2] = Work.ParmsSave[2];
    ParmChanged(SlotNo(2), stays);
    EXPECT_TRUE(stays);
}

// Runs one iteration of a model with stoichiometries entered in the dialog.
void FitWithStoichiometries(const std::string& name, float n, float m) {
    Script script;
    Load(name);
    Work.MaxIterations = 1;
    script.ExpectModal(GetGuessName, [&] {
        Accept();
        Work.Parms[1] = n;
        Work.Parms[3] = m;
    });
    script.AnswerAllMessages(BoxAnswer::Ok);
    FitDataCommand();
}

TEST(FitCommand, OtherStoichiometriesMakeTheGeneralModel) {
    FitWithStoichiometries("Model02", 3.0F, 4.0F);
    EXPECT_EQ(Work.Model, 3);
    EXPECT_EQ(Work.LastModel, 3);
    EXPECT_EQ(Work.FitTitle, "monomer <-> N-mer fit");
    FitWithStoichiometries("Model02", 2.0F, 3.0F); // the second one is not in use
    EXPECT_EQ(Work.Model, 2);
    FitWithStoichiometries("Model04", 2.0F, 4.0F);
    EXPECT_EQ(Work.Model, 4);
    FitWithStoichiometries("Model04", 2.0F, 6.0F);
    EXPECT_EQ(Work.Model, 5);
    FitWithStoichiometries("Model04", 3.0F, 4.0F);
    EXPECT_EQ(Work.Model, 5);
    EXPECT_EQ(Work.FitTitle, "monomer <-> N-mer <-> M-mer fit");
}

TEST(FitCommand, ACancelledDialogLostTheRoadsToTheParametersOfTheFitThatStood) {
    Script script;
    Load("Model02");
    Work.FitDone = Work.FitValid = FlagTrue;
    Work.FreeMap[SlotNo(2)] = SlotHeld; // as that fit was made
    const Workspace before = Work;
    script.ExpectModal(GetGuessName, CancelDialog);
    FitDataCommand();
    EXPECT_TRUE(Work == before);
}

TEST(FitCommand, TiedOffsetsFollowBeforeTheFitAndAfterACancel) {
    Script script;
    Load("Model05Linked");
    long tied = 0;
    for (long set = 1; set <= Work.NumSets; ++set)
        if (Work.OffsetLink[Work.SetRow[set]] != 0) tied = set;
    ASSERT_GT(tied, 0);
    const long source = Work.SetOfRow[Work.OffsetLink[Work.SetRow[tied]]];
    Work.Parms[SlotOffset(tied)] = 0.75F;
    RunToDialog(script);
    EXPECT_EQ(Work.Parms[SlotOffset(tied)], Work.Parms[SlotOffset(source)]);
}

TEST(FitCommand, SharedConstantsAreCopiedAfterEveryFit) {
    for (const int iterations : {1, 40}) { // a failed one and a finished one
        Script script;
        Load("Model18");
        Work.MaxIterations = ToInt16(iterations);
        Work.Parms[2] = -5.0F;
        script.ExpectModal(GetGuessName, Accept);
        if (iterations == 1) {
            script.ExpectMessage("Convergence failed after 1 iterations");
            script.ExpectMessage(RescueQuestion, BoxAnswer::No);
        } else
            script.ExpectModal(ResultsName, [] {});
        FitDataCommand();
        EXPECT_EQ(Work.FitDone, iterations == 1 ? 0 : FlagTrue);
        EXPECT_EQ(Work.Parms[2], Work.Parms[4]);
    }
    Script script;
    Load("Model21");
    Work.MaxIterations = 1;
    script.ExpectModal(GetGuessName, Accept);
    script.AnswerAllMessages(BoxAnswer::Ok);
    FitDataCommand();
    EXPECT_EQ(Work.Parms[7], Work.Parms[6]);
}

TEST(FitCommand, SharedConstantsAreCopiedThoughTheResultsCannotBeShown) {
    Script script;
    Load("Model18");
    Work.Parms[2] = -5.0F;
    script.ExpectModal(GetGuessName, Accept);
    script.ExpectModal(ResultsName, [] { RaiseError(ErrorText::Overflow); });
    script.ExpectMessage("Error 'Overflow' occurred in the fit command.");
    FitDataCommand();
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_NE(Work.Parms[4], -5.0F);
    EXPECT_EQ(Work.Parms[2], Work.Parms[4]);
}

TEST(FitCommand, AFailedFitLeavesNoFitBehind) {
    Script script;
    Load("Model02");
    Work.FitDone = Work.FitValid = FlagTrue;
    Work.MaxIterations = 1;
    Work.NonIdeal = FlagFalse;
    script.ExpectModal(GetGuessName, Accept);
    script.ExpectMessage("Convergence failed after 1 iterations");
    script.ExpectMessage(RescueQuestion, BoxAnswer::No);
    FitDataCommand();
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.NewData, 0);
    EXPECT_EQ(Work.Outcome.End, FitEnd::TooManyIterations);
}

TEST(FitCommand, ACancelledFitLeavesTheFlagToTheCaller) {
    Script script;
    Load("Model02");
    script.ExpectModal(GetGuessName, Accept);
    script.DuringEvents = [] { Work.AbortFit = FlagTrue; };
    FitDataCommand();
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Cancelled);
}

TEST(FitCommand, GuessesThatDoNotExistAreToldOnce) {
    Script script;
    Load("Model01");
    Work.LastModel = 2;
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtY[p] = 0.0F; // no signal, no gradient: a logarithm of 0
    script.ExpectMessage(NewGuesses, BoxAnswer::Yes);
    const std::string why =
        "set 1 (set1.RA1): no value above 0, so that there is nothing to guess its concentrations from";
    script.ExpectMessage(BoxRequest{"Error '" + why + "' occurred in the fit command.", "Quillon",
                                    BoxIcon::Stop, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    FitDataCommand();
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.Outcome.End, FitEnd::MathError);
    EXPECT_EQ(Work.Outcome.Sentence, why);
}

} // namespace
} // namespace Quillon
