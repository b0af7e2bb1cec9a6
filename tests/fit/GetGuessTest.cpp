// The form "Parameter Guesses and Fit Control": its rows, what it refuses, what OK makes of its marks.
#include "fit/forms/GetGuess.h"

#include "fit/equations/FreeMap.h"
#include "fit/forms/GuessesDialog.h"
#include "models/forms/NumberBox.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

constexpr int Tab = 9, Enter = 13, Esc = 27;

// Slots 0 (sigma, fitted), 1 (held), 2 to 6 not used, 7 tied, 8 to 10 fitted; all shown as they are held.
struct GuessForm : testing::Test {
    GuessForm() {
        Work = FreshWorkspace();
        GetGuess = GetGuessForm{};
        Work.NumSets = 1;
        Work.NumParms = 11;
        const std::int16_t map[] = {0, -1, -2, -2, -2, -2, -2, -3, 1, 2, 3};
        for (long k = 0; k < 11; ++k) {
            Work.FreeMap[k] = map[k];
            Work.ParmName[k] = "P" + std::to_string(k);
            Work.ParmFormat[k] = "0.000";
            Work.ParmScale[k] = k <= 1 || k == 10 ? 1.0F : 0.0F;
            Work.Parms[k] = 1.5F;
            Work.Bounds[0][k] = -4.0F;
            Work.Bounds[1][k] = 30.0F;
        }
        Work.ParmTitle[0] = "sigma";
    }
    Script script;

    void Warn(const std::string& text) {
        script.ExpectMessage({text, "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                             BoxAnswer::Ok);
    }
    void AskBounds(const std::string& text, BoxAnswer answer) {
        script.ExpectMessage(
            {text, "Quillon - Parameter Out of Bounds", BoxIcon::Warning, BoxButtons::YesNo, BoxAnswer::No},
            answer);
    }
    static void Enters(int row, const std::string& text) {
        GetGuess.State.FocusOn = nullptr;
        GetGuessGotFocus(row);
        TypeInto(GetGuess.Guess[static_cast<std::size_t>(row)], text,
                 [row](int key) { return GetGuessKeyPress(row, key); });
        GetGuessLostFocus(row);
    }
};

TEST_F(GuessForm, ListsWhatTheModelUses) {
    LoadGetGuess();
    EXPECT_EQ(GetGuess.State.Caption, "Quillon - Parameter Guesses and Fit Control");
    EXPECT_EQ(GetGuess.GuessRows,
              (std::vector<SlotNo>{SlotNo(0), SlotNo(1), SlotNo(7), SlotNo(8), SlotNo(9), SlotNo(10)}));
    EXPECT_EQ(GetGuess.ParameterName[0].Text, "P0  (sigma)");
    EXPECT_EQ(GetGuess.ParameterName[1].Text, "P1");
    EXPECT_EQ(GetGuess.Guess[0].Text, "1.500");
    const std::vector<std::string> marks{"Yes", "No", "constrained", "Yes"};
    const std::vector<std::int16_t> values{1, 0, 2, 1};
    for (std::size_t i = 0; i < marks.size(); ++i) {
        EXPECT_EQ(GetGuess.FitCheck[i].Text, marks[i]);
        EXPECT_EQ(GetGuess.FitCheck[i].Value, values[i]);
        EXPECT_EQ(GetGuess.FitCheck[i].Enabled, i != 2);
    }
    EXPECT_EQ(GetGuess.frmConvControl.Text, "Convergence Control");
    EXPECT_EQ(GetGuess.ConvergenceLabel.Text, "Convergence Factor");
    EXPECT_EQ(GetGuess.AccuracyLabel.Text, "Parameter Precision (%)");
    EXPECT_EQ(GetGuess.ConvergenceInput.Text, "0.05");
    EXPECT_EQ(GetGuess.AccuracyInput.Text, "0.1");
    EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.Guess[0]);
    EXPECT_EQ(GetGuess.Guess[0].ForeColor, Work.EditBackColor);
    EXPECT_FALSE(GetGuess.Page2.Visible);
}

TEST_F(GuessForm, ReducedFormEditsValuesOnly) {
    script.ExpectModal(GetGuessName, [] {
        EXPECT_FALSE(GetGuess.FitCheck[0].Enabled);
        EXPECT_FALSE(GetGuess.ConvergenceInput.Visible || GetGuess.AccuracyInput.Visible ||
                     GetGuess.ConvergenceLabel.Visible || GetGuess.AccuracyLabel.Visible);
        GetGuessOkButton();
    });
    EXPECT_EQ(GuessesDialog(true), DialogAnswer::Ok);
    EXPECT_FALSE(GuessesValuesOnly());
    EXPECT_EQ(Work.AbortFit, 0);
}

TEST_F(GuessForm, StoresAnAlteredValueAndKeepsAnUnalteredOne) {
    Work.Parms[0] = 1.23456F;
    LoadGetGuess();
    Enters(0, "");
    EXPECT_EQ(Work.Parms[0], 1.23456F);
    Enters(0, "2.25");
    EXPECT_EQ(Work.Parms[0], 2.25F);
    EXPECT_EQ(GetGuess.Guess[0].Text, "2.250");
}

TEST_F(GuessForm, RefusesWhatNoSingleHolds) {
    LoadGetGuess();
    for (const char* text : {"1E38", "-1E38"}) {
        Warn("The value you input for P0 is outside the range for single precision values.  Try again.");
        Enters(0, text);
        EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.Guess[0]);
        EXPECT_EQ(Work.Parms[0], 1.5F);
    }
}

TEST_F(GuessForm, AsksBeyondTheBounds) {
    LoadGetGuess();
    AskBounds("The value of P0 is below the current lower bound of -4.000.  Do you want to use the new value "
              "anyway?",
              BoxAnswer::No);
    Enters(0, "-5");
    EXPECT_EQ(GetGuess.Guess[0].Text, "1.500");
    EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.Guess[0]);
    AskBounds("The value of P0 is above the current upper bound of 30.000.  Do you want to use the new value "
              "anyway?",
              BoxAnswer::Yes);
    Enters(0, "31");
    EXPECT_EQ(Work.Parms[0], 31.0F);
}

TEST_F(GuessForm, EscapeTakesAnEntryBack) {
    LoadGetGuess();
    Enters(0, std::string("9") + static_cast<char>(Esc));
    EXPECT_EQ(GetGuess.Guess[0].Text, "1.500");
    EXPECT_EQ(Work.Parms[0], 1.5F);
    EXPECT_FALSE(EntryIsTakenBack());
}

TEST_F(GuessForm, TabAndEnterLeadOn) {
    LoadGetGuess();
    GetGuessKeyPress(0, Tab);
    EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.Guess[1]);
    GetGuessKeyPress(5, Enter);
    EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.OkButton);
    GetGuessConvergenceKeyPress(Enter);
    EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.AccuracyInput);
    GetGuessAccuracyKeyPress(Tab);
    EXPECT_FALSE(GetGuess.State.Shown);
    EXPECT_EQ(Work.NumFree, 4);
}

TEST_F(GuessForm, MarksFollowTheirClicks) {
    LoadGetGuess();
    GetGuess.FitCheck[0].Value = 0;
    GetGuessFitCheck(0);
    EXPECT_EQ(GetGuess.FitCheck[0].Text, "No");
    EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.Guess[1]);
    GetGuess.State.FocusOn = nullptr;
    GetGuessFitCheck(2); // tied: nothing happens
    EXPECT_EQ(GetGuess.FitCheck[2].Text, "constrained");
    EXPECT_EQ(GetGuess.State.FocusOn, nullptr);
}

TEST_F(GuessForm, ConvergenceFactorLimits) {
    LoadGetGuess();
    for (const char* text : {"0.01", "10.001"}) {
        GetGuess.State.FocusOn = nullptr;
        GetGuess.ConvergenceInput.Text = text;
        GetGuessConvergenceLostFocus();
        EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.ConvergenceInput);
        EXPECT_EQ(Work.ConvergenceLimit, 0.05F);
    }
    GetGuess.ConvergenceInput.Text = "10";
    GetGuessConvergenceLostFocus();
    EXPECT_EQ(Work.ConvergenceLimit, 10.0F);
}

TEST_F(GuessForm, PrecisionLimits) {
    LoadGetGuess();
    for (const char* text : {"0.0009", "10.001"}) {
        GetGuess.State.FocusOn = nullptr;
        GetGuess.AccuracyInput.Text = text;
        GetGuessAccuracyLostFocus();
        EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.AccuracyInput);
        EXPECT_EQ(Work.ParmsAccuracy, 0.001F);
    }
    GetGuess.AccuracyInput.Text = "0.001";
    GetGuessAccuracyLostFocus();
    EXPECT_FLOAT_EQ(Work.ParmsAccuracy, 0.00001F);
}

TEST_F(GuessForm, OkNumbersWhatIsFitted) {
    LoadGetGuess();
    GetGuess.FitCheck[1].Value = 1;
    GetGuess.FitCheck[3].Value = 0;
    GetGuessOkButton();
    EXPECT_FALSE(GetGuess.State.Shown);
    EXPECT_EQ(Work.NumFree, 4);
    EXPECT_EQ(Work.FreeMap[1], 1);
    EXPECT_EQ(Work.FreeMap[8], -1);
    EXPECT_EQ(Work.FreeMap[7], -3);
    EXPECT_EQ(Work.FreeIndex[3], 10);
}

TEST_F(GuessForm, OkRefusesAFitOfNothing) {
    LoadGetGuess();
    for (Control& mark : GetGuess.FitCheck)
        if (mark.Value == 1) mark.Value = 0;
    script.ExpectMessage({"There is nothing to do!  You must fit at least one parameter", "Quillon",
                          BoxIcon::Question, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    GetGuessOkButton();
    EXPECT_TRUE(GetGuess.State.Shown);
    EXPECT_EQ(script.Beeps, 1);
}

TEST_F(GuessForm, CancelBringsValuesAndLimitBackButNotThePrecision) {
    script.ExpectModal(GetGuessName, [] {
        Enters(0, "7");
        GetGuess.ConvergenceInput.Text = "0.5";
        GetGuessConvergenceLostFocus();
        GetGuess.AccuracyInput.Text = "1";
        GetGuessAccuracyLostFocus();
        GetGuessCancelButton();
    });
    EXPECT_EQ(GuessesDialog(false), DialogAnswer::Cancel);
    EXPECT_EQ(Work.Parms[0], 1.5F);
    EXPECT_EQ(Work.ConvergenceLimit, 0.05F);
    EXPECT_FLOAT_EQ(Work.ParmsAccuracy, 0.01F);
}

TEST_F(GuessForm, AFieldLeftByTheCancelledFormIsNoUndo) {
    script.ExpectModal(GetGuessName, [] {
        GetGuessGotFocus(0);
        GetGuess.Guess[0].Text = "7";
        GetGuess.ConvergenceInput.Text = "0.5";
        GetGuess.AccuracyInput.Text = "1";
        GetGuessCancelButton();
        GetGuessLostFocus(0); // the window goes, and the focus with it
        GetGuessConvergenceLostFocus();
        GetGuessAccuracyLostFocus();
    });
    EXPECT_EQ(GuessesDialog(false), DialogAnswer::Cancel);
    EXPECT_EQ(Work.Parms[0], 1.5F);
    EXPECT_EQ(Work.ConvergenceLimit, 0.05F);
    EXPECT_EQ(Work.ParmsAccuracy, 0.001F);
}

TEST_F(GuessForm, ManyRowsTakeTwoColumnsAndThenPages) {
    GetGuess.Layout.RowsPerColumn = 2;
    LoadGetGuess();
    EXPECT_EQ(GetGuess.Layout.Columns(), 2);
    EXPECT_TRUE(GetGuess.Page2.Visible);
    EXPECT_EQ(GetGuess.Page2.Text, "Page &2");
    EXPECT_TRUE(GetGuess.Guess[3].Visible);
    EXPECT_FALSE(GetGuess.Guess[4].Visible);
    GetGuessKeyPress(3, Tab); // behind the last row of the page
    EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.OkButton);
    GetGuess.FitCheck[0].Value = 0;
    GetGuessPage2();
    EXPECT_EQ(GetGuess.Page2.Text, "Page &1");
    EXPECT_FALSE(GetGuess.Guess[3].Visible);
    EXPECT_TRUE(GetGuess.Guess[4].Visible);
    GetGuessPage2();
    EXPECT_EQ(GetGuess.FitCheck[0].Value, 0); // a choice outlasts the change of page
}

// Eighteen sets of a model that uses every slot.
TEST_F(GuessForm, SixtyTwoRowsTakeTwoPages) {
    Work.NumParms = 62;
    Work.NumSets = 18;
    for (long k = 0; k < 62; ++k) {
        Work.FreeMap[k] = ToInt16(k);
        Work.ParmFormat[k] = "0.000";
        Work.Bounds[1][k] = 30.0F;
    }
    LoadGetGuess();
    ASSERT_EQ(GetGuess.GuessRows.size(), 62U);
    EXPECT_EQ(GetGuess.Layout.First(1), 32);
    EXPECT_EQ(GetGuess.Layout.Last(1), 62);
    EXPECT_TRUE(GetGuess.Guess[31].Visible);
    EXPECT_FALSE(GetGuess.Guess[32].Visible || GetGuess.FitCheck[61].Visible);
    GetGuessPage2();
    EXPECT_TRUE(GetGuess.Guess[32].Visible && GetGuess.ParameterName[61].Visible);
    EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.Guess[32]);
    GetGuessKeyPress(61, Enter);
    EXPECT_EQ(GetGuess.State.FocusOn, &GetGuess.OkButton);
    Enters(61, "2");
    EXPECT_EQ(Work.Parms[61], 2.0F);
    GetGuessOkButton();
    EXPECT_EQ(Work.NumFree, 62);
    EXPECT_EQ(Work.FreeIndex[61], 61);
}

} // namespace
} // namespace Quillon
