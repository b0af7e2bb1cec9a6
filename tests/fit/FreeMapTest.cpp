// From the marks "Fit this parameter?" to the order of the normal matrix; the way into the dialog and back.
#include "fit/equations/FreeMap.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/GuessesDialog.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

// One set: slots 0 to 10.
void Fresh() {
    Work = FreshWorkspace();
    Work.NumParms = 11;
    for (long slot = 0; slot < Work.NumParms; ++slot)
        Work.FreeMap[slot] = SlotUnused;
}

TEST(FreeMap, ChoicesFollowTheMap) {
    Script script;
    Fresh();
    Work.FreeMap[0] = 0;
    Work.FreeMap[2] = SlotHeld;
    Work.FreeMap[8] = 5;
    Work.FreeMap[10] = SlotTied;
    const std::vector<FitChoice> choices = FitChoices();
    ASSERT_EQ(choices.size(), 4U);
    EXPECT_EQ(choices[0].Slot, SlotNo(0));
    EXPECT_EQ(choices[0].Check, FitCheckYes);
    EXPECT_EQ(choices[1].Slot, SlotNo(2));
    EXPECT_EQ(choices[1].Check, FitCheckNo);
    EXPECT_EQ(choices[2].Slot, SlotNo(8));
    EXPECT_EQ(choices[2].Check, FitCheckYes);
    EXPECT_EQ(choices[3].Slot, SlotNo(10));
    EXPECT_EQ(choices[3].Check, FitCheckGrey);
}

TEST(FreeMap, FittedOnesAreNumberedInTheirOrder) {
    Script script;
    Fresh();
    Work.FreeMap[10] = SlotTied;
    const bool assigned = AssignFreePositions({{SlotNo(0), FitCheckNo},
                                               {SlotNo(2), FitCheckYes},
                                               {SlotNo(8), FitCheckYes},
                                               {SlotNo(9), FitCheckNo},
                                               {SlotNo(10), FitCheckGrey}});
    EXPECT_TRUE(assigned);
    EXPECT_EQ(Work.NumFree, 2);
    EXPECT_EQ(Work.FreeMap[0], SlotHeld);
    EXPECT_EQ(Work.FreeMap[2], 0);
    EXPECT_EQ(Work.FreeMap[8], 1);
    EXPECT_EQ(Work.FreeMap[9], SlotHeld);
    EXPECT_EQ(Work.FreeMap[10], SlotTied);
    EXPECT_EQ(Work.FreeIndex[0], 2);
    EXPECT_EQ(Work.FreeIndex[1], 8);
    EXPECT_EQ(Work.FreeIndex[9], -1);
    EXPECT_EQ(Work.NormMatrix.RowHi(), 1);
    EXPECT_EQ(Work.NormMatrix.ColumnHi(), 1);
    EXPECT_EQ(Work.NormVector.Hi(), 1);
    EXPECT_EQ(Work.Increment.Hi(), 1);
}

TEST(FreeMap, NothingToFitIsRefusedWithABeep) {
    Script script;
    Fresh();
    Work.NumFree = 3;
    Work.NormVector.Recreate(2, 7.0);
    Work.FreeIndex[0] = 0;
    const Workspace before = Work; // a fit that stands, and is still there when the dialog is cancelled now
    script.ExpectMessage(BoxRequest{"There is nothing to do!  You must fit at least one parameter", "Quillon",
                                    BoxIcon::Question, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    EXPECT_FALSE(TakeFitChoices({{SlotNo(0), FitCheckNo}, {SlotNo(10), FitCheckGrey}}));
    EXPECT_EQ(script.Beeps, 1);
    EXPECT_TRUE(Work == before);
}

TEST(FreeMap, ChoicesThatAreAllGreyChangeNothing) {
    Script script;
    Fresh();
    Work.FreeMap[10] = SlotTied;
    Work.NumFree = 3;
    const Workspace before = Work;
    EXPECT_TRUE(AssignFreePositions({{SlotNo(10), FitCheckGrey}}));
    EXPECT_TRUE(Work == before);
}

TEST(GuessesDialog, AnAcceptedOneKeepsWhatItChanged) {
    Script script;
    Fresh();
    Work.Parms[0] = 1.25F;
    script.ExpectModal(GetGuessName, [] {
        EXPECT_FALSE(GuessesValuesOnly());
        Work.Parms[0] = 2.5F;
        Work.ConvergenceLimit = 0.5F;
    });
    EXPECT_EQ(GuessesDialog(false), DialogAnswer::Ok);
    EXPECT_EQ(Work.Parms[0], 2.5F);
    EXPECT_EQ(Work.ParmsSave[0], 1.25F);
    EXPECT_EQ(Work.ParmsSave.Hi(), Work.NumParms - 1);
    EXPECT_EQ(Work.ConvergenceLimit, 0.5F);
}

TEST(GuessesDialog, ACancelledOneBringsValuesBackButNotThePrecision) {
    Script script;
    Fresh();
    Work.Parms[10] = 1.25F;
    script.ExpectModal(GetGuessName, [] {
        Work.Parms[10] = 2.5F;
        Work.ConvergenceLimit = 0.5F;
        Work.ParmsAccuracy = 0.05F;
        GetGuessCancelButton();
    });
    EXPECT_EQ(GuessesDialog(false), DialogAnswer::Cancel);
    EXPECT_EQ(Work.Parms[10], 1.25F);
    EXPECT_EQ(Work.ConvergenceLimit, 0.05F);
    EXPECT_EQ(Work.ParmsAccuracy, 0.05F);
}

TEST(GuessesDialog, ValuesOnlyIsKnownWhileItShows) {
    Script script;
    Fresh();
    script.ExpectModal(GetGuessName, [] { EXPECT_TRUE(GuessesValuesOnly()); });
    GuessesDialog(true);
    EXPECT_FALSE(GuessesValuesOnly());
}

} // namespace
} // namespace Quillon
