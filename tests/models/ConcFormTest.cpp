// The form for concentration constraints, the form that shows how the fit met them, and the mean signal.
#include "models/forms/ConcForm.h"
#include "models/SEDEQ3.h"
#include "models/forms/NumberBox.h"
#include "models/forms/ShowConstraintForm.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

const std::string BelowZero = "Value must be greater than or equal to zero!";
const std::string NotAboveZero = "Value must be greater than zero!";

// Set 1 in row 3 with 0.5, 0.6, 0.9 and set 2 in row 1 with 0.2, 0.4; path 0.5 and 1, ratio of A 1.25 in
// row 3.
void StartTwoLoadings(int model) {
    Work = UnitWorkspace(model);
    Work.NumSets = 2;
    Work.NumParms = 14;
    Work.NumPts = 5;
    Work.SetRow[1] = 3;
    Work.SetRow[2] = 1;
    Work.SetOfRow[3] = 1;
    Work.SetOfRow[1] = 2;
    Work.SetPts.Recreate(2);
    Work.SetPts[1] = 3;
    Work.SetPts[2] = 2;
    Work.PtX.Recreate(5);
    Work.PtY.Recreate(5);
    Work.PtFit.Recreate(5);
    const float y[] = {0.5F, 0.6F, 0.9F, 0.2F, 0.4F};
    for (long p = 1; p <= 5; ++p)
        Work.PtY[p] = y[p - 1];
    Work.CellPath[3] = 0.5F;
    Work.ExtinctionRatio[0][3] = 1.25F;
    Work.AbsorpA = 2.0F;
    Work.AbsorpB = 4.0F;
    Work.ExtA = 40000.0F;
    Work.ExtB = 8000.0F;
}

void Enter(ConcInput input, long set, const std::string& keys) {
    ConcFormGotFocus(input, SetNo(set));
    TypeInto(ConcFormBox(input, SetNo(set)), keys,
             [&](int key) { return ConcFormKeyPress(input, SetNo(set), key); });
    ConcFormLostFocus(input, SetNo(set));
}

TEST(SetMeanSignal, LeavesOutOffsetAndPseudoPoints) {
    StartTwoLoadings(1);
    Work.Parms[SlotOffset(1)] = 0.25F;
    EXPECT_NEAR(SetMeanSignal(SetNo(1)), 2.0 / 3 - 0.25, 1e-7);
    EXPECT_NEAR(SetMeanSignal(SetNo(2)), 0.3, 1e-7);
    // A pseudo-point behind set 1.
    Work.SetPts[1] = 4;
    Work.PtX.Recreate(6);
    Work.PtX[4] = PointMarker;
    Work.PtY.Recreate(6, 1.0F);
    Work.PtY[4] = 1000.0F;
    EXPECT_NEAR(SetMeanSignal(SetNo(1)), 0.75, 1e-7);
    EXPECT_NEAR(SetMeanSignal(SetNo(2)), 1.0, 1e-7);
}

TEST(SetMeanSignal, AConstantInTheSlotOfTheOffsetIsNoOffset) {
    StartTwoLoadings(9);
    Work.Parms[SlotOffset(1)] = 3.5F;
    Work.SeparateK = FlagTrue;
    EXPECT_NEAR(SetMeanSignal(SetNo(1)), 2.0 / 3, 1e-7);
    Work.SeparateK = FlagFalse;
    EXPECT_NEAR(SetMeanSignal(SetNo(1)), 2.0 / 3 - 3.5, 1e-6);
}

TEST(SetMeanSignal, OfNoPointsIsAnError) {
    StartTwoLoadings(1);
    Work.SetPts[2] = 0;
    EXPECT_THROW(SetMeanSignal(SetNo(2)), RuntimeError);
}

TEST(ConcForm, ReadsAsDesigned) {
    StartTwoLoadings(8);
    Work.ConcConstraintA[3] = 0.5F;
    Work.ConcConstraintB[3] = 0.125F;
    Work.ConcToleranceA[3] = 0.033F;
    LoadConcForm();
    const auto& f = ConcForm;
    EXPECT_EQ(f.State.Caption, "Concentration Constraints");
    ASSERT_EQ(f.SetLabel.size(), 2U);
    EXPECT_EQ(f.SetLabel[1].Text, "Set 2:");
    EXPECT_EQ(f.ALabel.Text, "Species A Loading Concentration (AU)");
    EXPECT_EQ(f.BLabel.Text, "Species B Loading Concentration (AU)");
    EXPECT_EQ(f.VarALabel.Text, "Tolerance in A (%)");
    EXPECT_EQ(f.VarBLabel.Text, "Tolerance in B (%)");
    EXPECT_EQ(f.AvgLabel.Text, "Absorbance Averaged Over Fitting Range");
    EXPECT_EQ(f.TotalLabel.Text, "Total Absorbance for Specified Concentrations");
    EXPECT_EQ(f.Note.Text,
              "Note: Setting the loading concentration to zero removes the constraint on that "
              "species for that data set.  Also, the values entered should not include the baseline "
              "offset (if any).");
    EXPECT_EQ(f.ConcA[0].Text, "0.5000");
    EXPECT_EQ(f.ConcB[0].Text, "0.1250");
    EXPECT_EQ(f.ConcA[1].Text, "0.0000");
    EXPECT_EQ(f.VarA[0].Text, "3.3");
    EXPECT_EQ(f.VarB[0].Text, "10");
    EXPECT_EQ(f.AvgC[0].Text, "0.6667");
    EXPECT_EQ(f.AvgC[1].Text, "0.3000");
    EXPECT_EQ(f.Text1[0].Text, "0.6250");
    EXPECT_EQ(f.ClearAllButton.Text, "Clear &All Constraints");
    EXPECT_EQ(f.CancelButton.Text, "&Cancel Changes");
    EXPECT_EQ(f.State.FocusOn, &f.ConcA[0]);
}

TEST(ConcForm, ToolTips) {
    StartTwoLoadings(8);
    LoadConcForm();
    EXPECT_EQ(ConcForm.ConcA[1].ToolTip, "Enter the actual loading concentration");
    EXPECT_EQ(ConcForm.ConcB[0].ToolTip, "Enter the actual loading concentration");
    const char* tolerance =
        "Percentage difference between the loading concentration and the model that should be "
        "considered significant";
    EXPECT_EQ(ConcForm.VarA[0].ToolTip, tolerance);
    EXPECT_EQ(ConcForm.VarB[1].ToolTip, tolerance);
    EXPECT_EQ(ConcForm.AvgC[0].ToolTip, "This is the observed average across the radial range being fitted");
    EXPECT_EQ(ConcForm.Text1[0].ToolTip,
              "Calculated total absorbance for the specified loading concentrations");
    EXPECT_EQ(ConcForm.ClearAllButton.ToolTip, "Clear all concentration constraints");
    EXPECT_EQ(ConcForm.CancelButton.ToolTip, "Cancel any changes made since this form was loaded");
    EXPECT_EQ(ConcForm.OkButton.ToolTip, "Accept the current values and exit");
}

TEST(ConcForm, SpeciesBIsShownForTwoKindsOfMonomer) {
    for (int model = 1; model <= 22; ++model) {
        StartTwoLoadings(model);
        LoadConcForm();
        const bool shown = model > 6;
        EXPECT_EQ(ConcForm.BLabel.Visible, shown) << model;
        EXPECT_EQ(ConcForm.VarBLabel.Visible, shown) << model;
        EXPECT_EQ(ConcForm.ConcB[1].Visible, shown) << model;
        EXPECT_EQ(ConcForm.VarB[0].Visible, shown) << model;
        EXPECT_TRUE(ConcForm.ConcA[0].Visible && ConcForm.VarA[0].Visible) << model;
    }
}

TEST(ConcForm, EnterGoesAlongTheShownBoxesToOk) {
    Script script;
    StartTwoLoadings(6);
    LoadConcForm();
    auto& f = ConcForm;
    const auto behind = [&](ConcInput input, long set) {
        ConcFormKeyPress(input, SetNo(set), '\r');
        return f.State.FocusOn;
    };
    EXPECT_EQ(behind(ConcInput::ConcA, 1), &f.VarA[0]);
    EXPECT_EQ(behind(ConcInput::VarA, 1), &f.ConcA[1]);
    EXPECT_EQ(behind(ConcInput::VarA, 2), &f.OkButton);
    StartTwoLoadings(7);
    LoadConcForm();
    EXPECT_EQ(behind(ConcInput::VarA, 1), &f.ConcB[0]);
    EXPECT_EQ(behind(ConcInput::ConcB, 1), &f.VarB[0]);
    EXPECT_EQ(behind(ConcInput::VarB, 1), &f.ConcA[1]);
    EXPECT_EQ(behind(ConcInput::VarB, 2), &f.OkButton);
    EXPECT_TRUE(f.State.Shown);
}

TEST(ConcForm, UnitsOfTheLoadings) {
    // 0.5 AU: over AbsorpA 2, path 0.5 and ratio 1.25; over ExtA 40000 likewise.
    const char* shown[] = {"0.5000", "0.4000", "2.000E-05", "0.5000", "0.5000", "0.5000"};
    const char* head[] = {"AU)", "mg/mL)", "molar)", "fringes)", "mg/mL)", "AU)"};
    for (int units = 0; units <= 5; ++units) {
        StartTwoLoadings(7);
        Work.ConcUnits = ToInt16(units);
        Work.ConcConstraintA[3] = 0.5F;
        LoadConcForm();
        EXPECT_EQ(ConcForm.ConcA[0].Text, shown[units]) << units;
        EXPECT_EQ(ConcForm.ALabel.Text, std::string("Species A Loading Concentration (") + head[units]);
        EXPECT_EQ(ConcForm.BLabel.Text, std::string("Species B Loading Concentration (") + head[units]);
        EXPECT_EQ(ConcForm.Text1[0].Text, "0.5000"); // a signal in every unit
    }
}

TEST(ConcForm, StoresSignals) {
    Script script;
    StartTwoLoadings(7);
    Work.ConcUnits = 1;
    LoadConcForm();
    Enter(ConcInput::ConcA, 1, "0.8"); // times 2, 0.5 and 1.25
    Enter(ConcInput::ConcB, 1, "0.1"); // times 4 and 0.5
    Enter(ConcInput::VarA, 1, "5");
    Enter(ConcInput::VarB, 2, "0.5");
    EXPECT_FLOAT_EQ(Work.ConcConstraintA[3], 1.0F);
    EXPECT_FLOAT_EQ(Work.ConcConstraintB[3], 0.2F);
    EXPECT_FLOAT_EQ(Work.ConcToleranceA[3], 0.05F);
    EXPECT_FLOAT_EQ(Work.ConcToleranceB[1], 0.005F);
    EXPECT_EQ(ConcForm.ConcA[0].Text, "0.8000");
    EXPECT_EQ(ConcForm.Text1[0].Text, "1.2000");
    EXPECT_EQ(ConcForm.Text1[1].Text, "0.0000");
    EXPECT_EQ(ConcForm.VarA[0].Text, "5");
}

TEST(ConcForm, RefusesLoadingsBelowZero) {
    Script script;
    StartTwoLoadings(7);
    Work.ConcConstraintB[1] = 0.25F;
    LoadConcForm();
    script.ExpectMessage({BelowZero, "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    Enter(ConcInput::ConcB, 2, "-1");
    EXPECT_EQ(Work.ConcConstraintB[1], 0.25F);
    EXPECT_EQ(ConcForm.State.FocusOn, &ConcForm.ConcB[1]);
    Enter(ConcInput::ConcB, 2, "0"); // removes the constraint
    EXPECT_EQ(Work.ConcConstraintB[1], 0.0F);
}

TEST(ConcForm, RefusesTolerancesThatAreNotAboveZero) {
    for (const char* keys : {"0", "-3", "-"}) {
        Script script;
        StartTwoLoadings(7);
        LoadConcForm();
        script.ExpectMessage({NotAboveZero, "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                             BoxAnswer::Ok);
        Enter(ConcInput::VarA, 1, keys);
        EXPECT_EQ(Work.ConcToleranceA[3], 0.1F);
        EXPECT_EQ(ConcForm.State.FocusOn, &ConcForm.VarA[0]);
    }
}

TEST(ConcForm, TextThatIsNoNumberRemovesTheConstraint) {
    Script script;
    StartTwoLoadings(1);
    Work.ConcConstraintA[3] = 0.25F;
    LoadConcForm();
    ConcForm.ConcA[0].Text = "some";
    ConcFormLostFocus(ConcInput::ConcA, SetNo(1));
    EXPECT_EQ(Work.ConcConstraintA[3], 0.0F);
    EXPECT_EQ(ConcForm.ConcA[0].Text, "0.0000");
}

TEST(ConcForm, AVisitKeepsTheDigitsThatAreNotShown) {
    Script script;
    StartTwoLoadings(1);
    Work.ConcConstraintA[3] = 0.123456F;
    LoadConcForm();
    ConcFormGotFocus(ConcInput::ConcA, SetNo(1));
    ConcFormLostFocus(ConcInput::ConcA, SetNo(1));
    EXPECT_EQ(Work.ConcConstraintA[3], 0.123456F);
}

TEST(ConcForm, AValueBeyondSinglesIsTheLargest) {
    Script script;
    StartTwoLoadings(1);
    Work.ConcUnits = 2;
    LoadConcForm();
    Enter(ConcInput::ConcA, 1, "1E38"); // times 25000
    EXPECT_EQ(Work.ConcConstraintA[3], 3.4028235e38F);
    Enter(ConcInput::VarA, 1, "3.4E38");
    EXPECT_FLOAT_EQ(Work.ConcToleranceA[3], 3.4e36F);
}

TEST(ConcForm, EscapeUndoesABox) {
    Script script;
    StartTwoLoadings(1);
    LoadConcForm();
    Enter(ConcInput::ConcA, 1, "0.7\x1b");
    EXPECT_EQ(Work.ConcConstraintA[3], 0.0F);
    EXPECT_EQ(ConcForm.ConcA[0].Text, "0.0000");
    EXPECT_FALSE(EntryIsTakenBack());
}

TEST(ConcForm, ClearAllAndCancelChanges) {
    Script script;
    StartTwoLoadings(7);
    Work.ConcConstraintA[3] = 0.25F;
    Work.ConcConstraintB[7] = 0.5F; // a row outside the fit
    LoadConcForm();
    Enter(ConcInput::VarA, 2, "4");
    ConcFormClearAllButton();
    EXPECT_EQ(ConcForm.ConcA[0].Text, "");
    EXPECT_EQ(ConcForm.ConcB[1].Text, "");
    EXPECT_EQ(ConcForm.Text1[0].Text, "0.0000");
    for (long row = 1; row <= Work.MaxSets; ++row) {
        EXPECT_EQ(Work.ConcConstraintA[row], 0.0F);
        EXPECT_EQ(Work.ConcConstraintB[row], 0.0F);
    }
    EXPECT_EQ(Work.ConcToleranceA[1], 0.04F);
    ConcFormCancelButton();
    EXPECT_TRUE(ConcForm.State.Shown);
    EXPECT_EQ(Work.ConcConstraintA[3], 0.25F);
    EXPECT_EQ(Work.ConcConstraintB[7], 0.5F);
    EXPECT_EQ(Work.ConcToleranceA[1], 0.1F);
    EXPECT_EQ(ConcForm.ConcA[0].Text, "0.2500");
    EXPECT_EQ(ConcForm.VarA[1].Text, "10");
    EXPECT_EQ(ConcForm.Text1[0].Text, "0.2500");
}

TEST(ConcForm, OkTakesTheBoxThatIsBeingEditedOrStays) {
    Script script;
    StartTwoLoadings(1);
    LoadConcForm();
    ConcForm.ConcA[1].Text = "-1";
    script.ExpectMessage(BelowZero);
    ConcFormOkButton();
    EXPECT_TRUE(ConcForm.State.Shown);
    ConcForm.ConcA[1].Text = "0.75";
    ConcFormOkButton();
    EXPECT_FALSE(ConcForm.State.Shown);
    EXPECT_EQ(Work.ConcConstraintA[1], 0.75F);
    ConcFormClearAllButton(); // boxes cleared are no entry that waits
    ConcFormOkButton();
    EXPECT_FALSE(ConcForm.State.Shown);
}

TEST(ConcConstraintDialog, SetsAndClearsItsBit) {
    Script script;
    StartTwoLoadings(1);
    Work.ConstraintFlags = OffsetBit;
    script.ExpectModal(ConcFormName, [] {
        Enter(ConcInput::ConcA, 2, "0.3");
        ConcFormOkButton();
    });
    ConcConstraintDialog();
    EXPECT_EQ(Work.ConstraintFlags, 3);
    script.ExpectModal(ConcFormName, [] {
        ConcFormClearAllButton();
        ConcFormOkButton();
    });
    ConcConstraintDialog();
    EXPECT_EQ(Work.ConstraintFlags, 2);
}

TEST(ConcConstraintDialog, WarnsForModels7And9) {
    const std::string warning = "For this model, for constraints to work properly you MUST set correct "
                                "values for the molar extinction "
                                "coefficients of species A and B on the Units form.  You may use either "
                                "Absorbance or Molar units, however.";
    for (int model = 1; model <= 22; ++model)
        for (const bool constrained : {false, true}) {
            Script script;
            StartTwoLoadings(model);
            script.ExpectModal(ConcFormName, [&] {
                if (constrained) Enter(ConcInput::ConcA, 1, "0.3");
                ConcFormOkButton();
            });
            if (constrained && (model == 7 || model == 9))
                script.ExpectMessage({warning, "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                                     BoxAnswer::Ok);
            ConcConstraintDialog();
        }
}

TEST(ConcConstraintDialog, EighteenSets) {
    Script script;
    StartTwoLoadings(8);
    Work.NumSets = 18;
    Work.SetPts.Recreate(18, 1);
    Work.PtX.Recreate(18);
    Work.PtY.Recreate(18, 0.5F);
    for (long s = 1; s <= 18; ++s)
        Work.SetRow[s] = ToInt16(19 - s);
    script.ExpectModal(ConcFormName, [] {
        ASSERT_EQ(ConcForm.ConcB.size(), 18U);
        Enter(ConcInput::ConcB, 18, "0.5");
        ConcFormOkButton();
    });
    ConcConstraintDialog();
    EXPECT_EQ(Work.ConcConstraintB[1], 0.5F);
}

TEST(ConcConstraintDialog, ACoefficientOfZeroIsAnErrorBeforeTheForm) {
    Script script;
    StartTwoLoadings(1);
    Work.ConcUnits = 1;
    Work.AbsorpA = 0.0F;
    EXPECT_THROW(ConcConstraintDialog(), RuntimeError);
}

// --- the match of the fit

// Set 1 with pseudo-points of A and B, set 2 with one of B.
void StartMatch(int model) {
    StartTwoLoadings(model);
    Work.ConstraintFlags = ConcentrationBit;
    Work.NumPts = 8;
    Work.SetPts[1] = 5;
    Work.SetPts[2] = 3;
    Work.PtX.Recreate(8);
    Work.PtY.Recreate(8, 9.0F);
    Work.PtFit.Recreate(8);
    for (const long p : {4L, 5L, 8L})
        Work.PtX[p] = PointMarker;
    Work.PtY[4] = 5.0F;
    Work.PtFit[4] = 4.5F; // 0.25 of 2
    Work.PtY[5] = 2.0F;
    Work.PtFit[5] = 3.0F; // 1 of 2
    Work.PtY[8] = 4.0F;
    Work.PtFit[8] = 3.75F; // 0.0625 of 2
    Work.SumSq = 2.0;
    Work.ConcConstraintA[3] = 0.5F;
    Work.ConcConstraintB[3] = 0.25F;
    Work.ConcConstraintB[1] = 0.5F;
    Work.ConstraintFit[0][3] = 0.4F;
    Work.ConstraintFit[1][3] = 0.3F;
    Work.ConstraintFit[0][1] = 7.0F; // of a former fit
    Work.ConstraintFit[1][1] = 0.5F;
    Work.ConcToleranceB[1] = 0.025F;
}

TEST(ShowConstraintForm, ReadsAsDesigned) {
    StartMatch(8);
    LoadShowConstraintForm();
    const auto& f = ShowConstraintForm;
    EXPECT_EQ(f.State.Caption, "Match of Fit to Concentration Constraints");
    EXPECT_EQ(f.ALabel.Text, "Specified Species A Integrated Concentration (AU)");
    EXPECT_EQ(f.BLabel.Text, "Specified Species B Integrated Concentration (AU)");
    EXPECT_EQ(f.VarALabel.Text, "Specified Tolerance in A (%)");
    EXPECT_EQ(f.VarBLabel.Text, "Specified Tolerance in B (%)");
    EXPECT_EQ(f.FitALabel.Text, "Concentration Calculated from Fit");
    EXPECT_EQ(f.FitErrALabel.Text, "Difference Between Fit and Specified Value ");
    EXPECT_EQ(f.FracBLabel.Text, "Fraction of total fit variance");
    EXPECT_EQ(f.SetLabel[0].Text, "Set 1:");
}

TEST(ShowConstraintForm, TellsHowTheFitMetTheLoadings) {
    StartMatch(8);
    LoadShowConstraintForm();
    const auto& f = ShowConstraintForm;
    EXPECT_EQ(f.ConcA[0].Text, "0.5000");
    EXPECT_EQ(f.VarA[0].Text, "10");
    EXPECT_EQ(f.VarB[1].Text, "2.5");
    EXPECT_EQ(f.FitA[0].Text, "0.4000");
    EXPECT_EQ(f.FitErrA[0].Text, "-20.0%");
    EXPECT_EQ(f.FracA[0].Text, "12.50%");
    EXPECT_EQ(f.FitErrB[0].Text, "+20.0%");
    EXPECT_EQ(f.FracB[0].Text, "50.00%");
    EXPECT_EQ(f.FitErrB[1].Text, "+0.0%");
    EXPECT_EQ(f.FracB[1].Text, "3.13%"); // 3.125
    EXPECT_EQ(f.Label7.Text, "Fraction of total fit variance from all concentration constraints = 65.63%");
    // Species A of set 2 is not constrained.
    EXPECT_EQ(f.ConcA[1].Text, "0.0000");
    EXPECT_EQ(f.FitA[1].Text, "");
    EXPECT_EQ(f.FitErrA[1].Text, "");
    EXPECT_EQ(f.FracA[1].Text, "");
}

TEST(ShowConstraintForm, UnitsAndSpecies) {
    StartMatch(2);
    Work.ConcUnits = 1;
    LoadShowConstraintForm();
    EXPECT_EQ(ShowConstraintForm.ALabel.Text, "Specified Species A Integrated Concentration (mg/mL)");
    EXPECT_EQ(ShowConstraintForm.ConcA[0].Text, "0.4000"); // 0.5 over 2, 0.5 and 1.25
    EXPECT_EQ(ShowConstraintForm.FitA[0].Text, "0.3200");
    EXPECT_EQ(ShowConstraintForm.FitErrA[0].Text, "-20.0%");
    for (const Control* head :
         {&ShowConstraintForm.BLabel, &ShowConstraintForm.VarBLabel, &ShowConstraintForm.FitBLabel,
          &ShowConstraintForm.FitErrBLabel, &ShowConstraintForm.FracBLabel})
        EXPECT_FALSE(head->Visible);
    EXPECT_FALSE(ShowConstraintForm.FracB[0].Visible);
    EXPECT_TRUE(ShowConstraintForm.FracA[0].Visible);
}

TEST(ShowConstraintForm, ZeroOffsetConstraintsAloneHaveNoPseudoPoints) {
    StartMatch(8);
    Work.ConstraintFlags = OffsetBit;
    LoadShowConstraintForm();
    EXPECT_EQ(ShowConstraintForm.FracB[0].Text, "");
    EXPECT_EQ(ShowConstraintForm.Label7.Text,
              "Fraction of total fit variance from all concentration constraints = 0.00%");
}

TEST(ShowConstraintForm, APerfectFitHasNoShares) {
    StartMatch(8);
    Work.PtFit = Work.PtY;
    Work.SumSq = 0.0;
    LoadShowConstraintForm();
    EXPECT_EQ(ShowConstraintForm.FracA[0].Text, "0.00%");
}

TEST(ShowConstraintMatch, ShowsTheForm) {
    Script script;
    StartMatch(8);
    script.ExpectModal(ShowConstraintFormName, [] {
        EXPECT_TRUE(ShowConstraintForm.State.Shown);
        ShowConstraintFormOkButton();
        EXPECT_FALSE(ShowConstraintForm.State.Shown);
    });
    ShowConstraintMatch();
}

} // namespace
} // namespace Quillon
