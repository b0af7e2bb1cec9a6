// Forms that ask for something, on their windows: opened by their command, filled through widgets, closed in
// each of the ways that a user has, and what the workspace holds afterwards.
#include "fit/forms/BoundsForm.h"
#include "fit/forms/ConfidenceInput.h"
#include "fit/forms/GetGuess.h"
#include "forms/shell/Binding.h"
#include "models/forms/BaseForm.h"
#include "models/forms/ConcForm.h"
#include "models/forms/ModelForm.h"
#include "models/forms/UnitsForm.h"
#include "models/table/ParmScale.h"
#include "tests/forms/FormWays.h"

#include <QLineEdit>
#include <QScreen>

#include <gtest/gtest.h>

namespace Quillon {
namespace {

// --- probability for confidence intervals ----------------------------------------------------------------

TEST_F(FormsAtTheWindows, TheConfidenceLevelIsTakenByOkAlone) {
    for (const Way way : AllWays) {
        Work.ConfidenceLevel = 0.5F;
        player.Expect(ConfidenceInputName, [&] {
            EXPECT_TRUE(HasFocus(ConfidenceInput.LevelInput));
            Enter(ConfidenceInput.LevelInput, "0.95");
            Leave(ConfidenceInputName, way, ConfidenceInput.OkButton, ConfidenceInput.CancelButton);
        });
        player.ClickMenu("SetConfidence");
        EXPECT_FLOAT_EQ(Work.ConfidenceLevel, way == Way::Ok ? 0.95F : 0.5F);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
    }
}

TEST_F(FormsAtTheWindows, AProbabilityOutsideIsToldOnceAndCancelAsksNothing) {
    Work.ConfidenceLevel = 0.5F;
    player.Expect(ConfidenceInputName, [&] {
        Enter(ConfidenceInput.LevelInput, "2");
        player.ExpectMessage("Input must be between 0 and 1");
        Player::Click(ConfidenceInput.OkButton);
        EXPECT_TRUE(ConfidenceInput.State.Shown);
        EXPECT_TRUE(HasFocus(ConfidenceInput.LevelInput));
        Player::Click(ConfidenceInput.CancelButton); // no second message
        EXPECT_FALSE(ConfidenceInput.State.Shown);
    });
    player.ClickMenu("SetConfidence");
    EXPECT_FLOAT_EQ(Work.ConfidenceLevel, 0.5F);
}

TEST_F(FormsAtTheWindows, CancelLetGoElsewhereLeavesTheCheckOfTheFieldToBeMade) {
    player.Expect(ConfidenceInputName, [&] {
        Enter(ConfidenceInput.LevelInput, "2");
        QWidget* cancel = Player::Widget(ConfidenceInput.CancelButton);
        player.ExpectMessage("Input must be between 0 and 1");
        Player::Drag(cancel, {5, 5}, {-50, -50});
        EXPECT_EQ(player.Messages.size(), 1U);
        EXPECT_TRUE(HasFocus(ConfidenceInput.LevelInput));
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("SetConfidence");
}

TEST_F(FormsAtTheWindows, EnterInTheFieldIsOk) {
    player.Expect(ConfidenceInputName, [] {
        Enter(ConfidenceInput.LevelInput, "0.9");
        Player::Press(Qt::Key_Return);
    });
    player.ClickMenu("SetConfidence");
    EXPECT_FLOAT_EQ(Work.ConfidenceLevel, 0.9F);
}

// --- model -------------------------------------------------------------------------------------------------

TEST_F(FormsAtTheWindows, TheModelIsTakenByOkAlone) {
    for (const Way way : AllWays) {
        Work.Model = 2;
        Work.NonIdeal = Work.SeparateK = FlagFalse;
        player.Expect(ModelFormName, [way] {
            Player::Click(ModelForm.ModelRow[0]);
            Player::Click(ModelForm.NonIdeal);
            EXPECT_EQ(ModelForm.ModelRow[0].Value, FlagTrue);
            EXPECT_EQ(ModelForm.ModelRow[1].Value, FlagFalse);
            Leave(ModelFormName, way, ModelForm.OkButton, ModelForm.CancelButton);
        });
        player.ClickMenu("DoModelSet");
        EXPECT_EQ(Work.Model, way == Way::Ok ? 1 : 2);
        EXPECT_EQ(Work.NonIdeal, way == Way::Ok ? FlagTrue : FlagFalse);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
    }
}

TEST_F(FormsAtTheWindows, ADoubleClickTakesTheModel) {
    player.Expect(ModelFormName, [] {
        QTest::mouseDClick(Player::Widget(ModelForm.ModelRow[6]), Qt::LeftButton, {}, {8, 8});
        Player::Serve();
    });
    player.ClickMenu("DoModelSet");
    EXPECT_EQ(Work.Model, 7);
}

// --- units -------------------------------------------------------------------------------------------------

TEST_F(FormsAtTheWindows, UnitsAreTakenByOkAlone) {
    for (const Way way : AllWays) {
        UseSimulatedData();
        Work.MassUnits = 0;
        Work.SolventDensity = 1.0F;
        player.Expect(UnitsFormName, [way] {
            Player::Click(UnitsForm.TrueMass);
            Player::Click(UnitsForm.Molar);
            Enter(UnitsForm.DensityInput[0], "1.01");
            Leave(UnitsFormName, way, UnitsForm.OkButton, UnitsForm.CancelButton);
        });
        player.ClickMenu("DefineUnits");
        EXPECT_EQ(Work.MassUnits, way == Way::Ok ? 2 : 0);
        EXPECT_EQ(Work.ConcUnits, way == Way::Ok ? 2 : 0);
        EXPECT_FLOAT_EQ(Work.SolventDensity, way == Way::Ok ? 1.01F : 1.0F);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
    }
}

TEST_F(FormsAtTheWindows, ACoefficientOfZeroIsToldOnceAndCancelBringsTheFormerBack) {
    Work.SolventDensity = 1.0F;
    player.Expect(UnitsFormName, [&] {
        Enter(UnitsForm.DensityInput[0], "0");
        player.ExpectMessage("You must enter a positive, non-zero value for solvent density");
        Player::Click(UnitsForm.VBarInput[0]);
        EXPECT_TRUE(HasFocus(UnitsForm.DensityInput[0]));
        Player::Click(UnitsForm.CancelButton);
    });
    player.ClickMenu("DefineUnits");
    EXPECT_FLOAT_EQ(Work.SolventDensity, 1.0F);
}

// --- guesses -----------------------------------------------------------------------------------------------

struct GuessesAtTheWindow : FormsAtTheWindows {
    GuessesAtTheWindow() {
        Work.LastModel = Work.Model; // no question about new guesses
        Work.NewData = 0;
        Work.MassUnits = 0;
        SetMenuStatus();
        RefreshForms();
    }
};

TEST_F(GuessesAtTheWindow, CancelEscAndTheCloseButtonBringTheParametersBack) {
    const float before = Work.Parms[0];
    for (const Way way : {Way::Cancel, Way::Esc, Way::CloseButton}) {
        player.Expect(GetGuessName, [&] {
            Enter(GetGuess.Guess[0], "1.5");
            Player::Press(Qt::Key_Tab);
            EXPECT_FLOAT_EQ(Work.Parms[0], 1.5F);
            Leave(GetGuessName, way, GetGuess.OkButton, GetGuess.CancelButton);
        });
        player.ClickMenu("FitData");
        EXPECT_EQ(Work.Parms[0], before);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
        EXPECT_EQ(Work.FitDone, FlagFalse);
    }
}

TEST_F(GuessesAtTheWindow, EscInAFieldBringsItsValueBackAtOnce) {
    player.Expect(GetGuessName, [&] {
        const std::string before = GetGuess.Guess[0].Text;
        Enter(GetGuess.Guess[0], "1.5");
        Player::Press(Qt::Key_Escape);
        EXPECT_EQ(GetGuess.Guess[0].Text, before);
        EXPECT_EQ(qobject_cast<QLineEdit*>(Player::Widget(GetGuess.Guess[0]))->text().toStdString(), before);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
        EXPECT_TRUE(HasFocus(GetGuess.Guess[0]));
        Player::Type("2.5"); // the value is selected again
        EXPECT_EQ(GetGuess.Guess[0].Text, "2.5");
        Player::Click(GetGuess.CancelButton);
    });
    player.ClickMenu("FitData");
}

TEST_F(GuessesAtTheWindow, AValueBeyondItsBoundIsAskedAboutAndThenGoesBack) {
    player.Expect(GetGuessName, [&] {
        const std::string before = GetGuess.Guess[0].Text;
        Enter(GetGuess.Guess[0], "31");
        player.ExpectMessage("The value of " + Work.ParmName[0] + " is above the current upper bound of " +
                                 ParmText(SlotNo(0), Work.Bounds[1][0]) +
                                 ".  Do you want to use the new value anyway?",
                             "No");
        Player::Click(GetGuess.OkButton); // which is not pressed by this click
        EXPECT_TRUE(GetGuess.State.Shown);
        EXPECT_EQ(GetGuess.Guess[0].Text, before);
        EXPECT_TRUE(HasFocus(GetGuess.Guess[0]));
        Player::Click(GetGuess.CancelButton);
    });
    player.ClickMenu("FitData");
}

TEST_F(GuessesAtTheWindow, OkWithNothingToFitStays) {
    player.Expect(GetGuessName, [&] {
        for (Control& mark : GetGuess.FitCheck)
            if (mark.Enabled && mark.Value == 1) Player::Click(mark);
        player.ExpectMessage("There is nothing to do!  You must fit at least one parameter");
        Player::Click(GetGuess.OkButton);
        EXPECT_TRUE(GetGuess.State.Shown);
        Player::Click(GetGuess.CancelButton);
    });
    player.ClickMenu("FitData");
}

TEST_F(GuessesAtTheWindow, TabAndEnterGoThroughTheFieldsToOk) {
    player.Expect(GetGuessName, [&] {
        EXPECT_TRUE(HasFocus(GetGuess.Guess[0]));
        const std::size_t rows = GetGuess.Guess.size();
        for (std::size_t row = 1; row < rows; ++row) {
            Player::Press(row % 2 ? Qt::Key_Tab : Qt::Key_Return);
            EXPECT_TRUE(HasFocus(GetGuess.Guess[row])) << row;
        }
        Player::Press(Qt::Key_Return);
        EXPECT_TRUE(HasFocus(GetGuess.OkButton));
        Player::Click(GetGuess.CancelButton);
    });
    player.ClickMenu("FitData");
}

// --- bounds ------------------------------------------------------------------------------------------------

TEST_F(FormsAtTheWindows, BoundsAreTakenByOkAlone) {
    Work.MassUnits = 0;
    for (const Way way : AllWays) {
        Work.Bounds[0][1] = 0.5F;
        player.Expect(BoundsFormName, [way] {
            Enter(BoundsForm.LowerB[1], "0.75");
            Leave(BoundsFormName, way, BoundsForm.OkButton, BoundsForm.CancelButton);
        });
        player.ClickMenu("AlterBounds");
        EXPECT_FLOAT_EQ(Work.Bounds[0][1], way == Way::Ok ? 0.75F : 0.5F);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
    }
}

// --- constraints -------------------------------------------------------------------------------------------

TEST_F(FormsAtTheWindows, ConcentrationConstraintsAreTakenByOkAndByTheCloseButton) {
    for (const Way way : {Way::Ok, Way::CloseButton}) {
        UseSimulatedData();
        player.Expect(ConcFormName, [way] {
            Enter(ConcFormBox(ConcInput::ConcA, SetNo(1)), "0.3");
            Leave(ConcFormName, way, ConcForm.OkButton, ConcForm.CancelButton);
        });
        player.ClickMenu("SetConcConstraint");
        EXPECT_FLOAT_EQ(Work.ConcConstraintA[1], 0.3F);
        EXPECT_NE(Work.ConstraintFlags & ConcentrationBit, 0);
        EXPECT_EQ(Work.NewData, 1);
    }
}

TEST_F(FormsAtTheWindows, CancelTakesConcentrationConstraintsBackAndTheFormStays) {
    player.Expect(ConcFormName, [] {
        Enter(ConcFormBox(ConcInput::ConcA, SetNo(1)), "0.3");
        Player::Click(ConcForm.CancelButton);
        EXPECT_TRUE(ConcForm.State.Shown);
        EXPECT_EQ(Work.ConcConstraintA[1], 0.0F);
        Player::Click(ConcForm.OkButton);
    });
    player.ClickMenu("SetConcConstraint");
    EXPECT_EQ(Work.ConstraintFlags & ConcentrationBit, 0);
}

TEST_F(FormsAtTheWindows, OffsetsAreTiedByOkAndFreedByCancel) {
    player.Expect(BaseFormName, [] {
        Enter(BaseForm.Boxes.LinkNum[1], "1");
        Player::Click(BaseForm.OkButton);
    });
    player.ClickMenu("SetBaseConstraint");
    EXPECT_EQ(Work.OffsetLink[Work.SetRow[2]], 1);
    EXPECT_NE(Work.ConstraintFlags & OffsetBit, 0);
    player.Expect(BaseFormName, [] {
        Player::Click(BaseForm.CancelButton);
        EXPECT_TRUE(BaseForm.State.Shown);
        Player::Window(BaseFormName)->close();
        Player::Serve();
    });
    player.ClickMenu("SetBaseConstraint");
    EXPECT_EQ(Work.OffsetLink[Work.SetRow[2]], 0);
}

// --- as many parameters as there can be ---

// No row is out of reach below the screen's end: two columns, a second page where they do not do, and guesses
// that scroll beside their curve.
void ExpectAllRowsWithin(QWidget* window, const RowLayout& layout, const std::vector<Control>& names,
                         const Control& page2) {
    EXPECT_LE(window->height(), window->screen()->availableGeometry().height());
    const int firstPage = layout.Last(0);
    for (int row = 0; row < layout.Rows; ++row)
        EXPECT_EQ(Player::Widget(names[static_cast<std::size_t>(row)])->isVisible(), row < firstPage) << row;
    EXPECT_EQ(Player::Widget(page2)->isVisible(), layout.Paged());
    if (!layout.Paged()) return;
    Player::Click(page2);
    for (int row = 0; row < layout.Rows; ++row)
        EXPECT_EQ(Player::Widget(names[static_cast<std::size_t>(row)])->isVisible(), row >= firstPage) << row;
}

TEST_F(FormsAtTheWindows, RowsOfEighteenSetsStandOnTheScreen) {
    UseAllSets();
    player.Expect(BoundsFormName, [] {
        EXPECT_EQ(BoundsForm.Layout.Rows, 62);
        ExpectAllRowsWithin(Player::Window(BoundsFormName), BoundsForm.Layout, BoundsForm.ParameterName,
                            BoundsForm.Page2);
        Player::Click(BoundsForm.CancelButton);
    });
    player.ClickMenu("AlterBounds");
    Work.LastModel = Work.Model;
    Work.NewData = 0;
    player.Expect(GetGuessName, [] {
        ExpectAllRowsWithin(Player::Window(GetGuessName), GetGuess.Layout, GetGuess.ParameterName,
                            GetGuess.Page2);
        Player::Click(GetGuess.CancelButton);
    });
    player.ClickMenu("FitData");
}

} // namespace
} // namespace Quillon
