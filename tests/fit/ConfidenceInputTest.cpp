// The form "Probability for Confidence Intervals", and what the window of the search shows.
#include "fit/forms/ConfidenceInput.h"

#include "fit/forms/WaitForm.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

struct LevelForm : testing::Test {
    LevelForm() { Work = FreshWorkspace(); }
    Script script;

    void Refuses() {
        script.ExpectMessage(
            {"Input must be between 0 and 1", "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
            BoxAnswer::Ok);
    }
};

TEST_F(LevelForm, ShowsAndStoresTheLevel) {
    Work.LimitsDone = FlagTrue;
    script.ExpectModal(ConfidenceInputName, [] {
        EXPECT_EQ(ConfidenceInput.State.Caption, "Probability for Confidence Intervals");
        EXPECT_EQ(ConfidenceInput.LevelInput.Text, "0.6830");
        ConfidenceInputGotFocus();
        TypeInto(ConfidenceInput.LevelInput, "0.95", ConfidenceInputKeyPress);
        ConfidenceInputLostFocus();
        EXPECT_EQ(Work.ConfidenceLevel, 0.683F); // OK stores it
        ConfidenceInputOkButton();
        EXPECT_FALSE(ConfidenceInput.State.Shown);
    });
    ConfidenceDialog();
    EXPECT_EQ(Work.ConfidenceLevel, 0.95F);
    EXPECT_EQ(Work.LimitsDone, FlagTrue); // until the next search
}

TEST_F(LevelForm, RefusesWhatIsNoProbability) {
    LoadConfidenceInput();
    for (const char* text : {"0", "1", "1.5", "-0.2", ""}) {
        ConfidenceInput.LevelInput.Text = text;
        ConfidenceInput.State.FocusOn = nullptr;
        Refuses();
        ConfidenceInputLostFocus();
        EXPECT_EQ(ConfidenceInput.State.FocusOn, &ConfidenceInput.LevelInput);
    }
    Refuses();
    ConfidenceInputOkButton();
    EXPECT_TRUE(ConfidenceInput.State.Shown);
    EXPECT_EQ(Work.ConfidenceLevel, 0.683F);
}

TEST_F(LevelForm, UnalteredTextKeepsTheDigitsBehindIt) {
    Work.ConfidenceLevel = 0.68268949F;
    LoadConfidenceInput();
    ConfidenceInputOkButton();
    EXPECT_EQ(Work.ConfidenceLevel, 0.68268949F);
}

TEST_F(LevelForm, CancelStoresNothing) {
    LoadConfidenceInput();
    ConfidenceInput.LevelInput.Text = "0.9";
    ConfidenceInputKeyPress(27);
    EXPECT_FALSE(ConfidenceInput.State.Shown);
    EXPECT_EQ(Work.ConfidenceLevel, 0.683F);
}

// With two free parameters and two degrees of freedom left F(2, 2, a) is (1 - a) / a: at p = 0.5 it is 1, and
// the ratio 1 + (2 / 2) 1 = 2.
TEST_F(LevelForm, WaitWindowTellsWhatIsSearched) {
    Work.NumFree = 2;
    Work.NumPts = 4;
    Work.ConfidenceLevel = 0.5F;
    LoadWaitForm();
    EXPECT_EQ(WaitForm.Label1.Text, "This may take a while...");
    EXPECT_EQ(WaitForm.Label2.Text, "Searching for a 2.00000 sum of squared errors ratio.");
    EXPECT_TRUE(WaitForm.State.Shown);
    WaitFormCancelButton();
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    WaitFormTimer1(); // the cancel has come before the search: there is none
    EXPECT_FALSE(WaitForm.State.Shown);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
    EXPECT_EQ(Work.LimitsDone, FlagFalse);
}

} // namespace
} // namespace Quillon
