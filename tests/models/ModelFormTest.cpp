// The model dialog, and what a choice brings with it.
#include "models/forms/ModelForm.h"
#include "models/SEDEQ3.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

const std::string CoefficientsNote =
    "Please note that for this model you MUST enter the correct molar extinction or refractivity "
    "coefficients "
    "for species A and B on the Units form.  Once this is done, you may use Molar or Absorbance/Fringe units "
    "(but Molar are recommended since in Absorbance units equal intrinsic binding constants do not imply "
    "equal "
    "binding energies.";
const std::string NoWeightUnits = "Please note that for this model you CANNOT use mg/mL units";
const std::string NoNonIdeal =
    "Sorry, non-ideality is not allowed for models involving two types of monomers";
const std::string NoSeparateK = "Separate binding constants are not allowed for your model choice";

// A workspace as it stands between two commands.
void StartModel(int model) {
    Work = UnitWorkspace(model);
    Work.FitTitle = "former fit";
    FillModelNames();
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    SetDefaultBounds();
}

// Chooses a model with options and presses OK.
void Choose(std::int16_t model, bool nonIdeal = false, bool separateK = false) {
    ModelFormRowClick(model);
    ModelFormNonIdealClick(nonIdeal);
    ModelFormSeparateKClick(separateK);
    ModelFormOkButton();
}

TEST(ModelForm, ListsTheModels) {
    StartModel(5);
    LoadModelForm();
    ASSERT_EQ(ModelForm.ModelRow.size(), 22U);
    EXPECT_EQ(ModelForm.ModelRow[0].Text, "1. single species");
    EXPECT_EQ(ModelForm.ModelRow[21].Text, "22. 2A+2B<->...<->ABBA, two B binding sites K1<>K2, 2B<->B2");
    EXPECT_EQ(ModelForm.RowPitch, 300);
    EXPECT_EQ(ModelForm.Ideal.Text, "&Ideal");
    EXPECT_EQ(ModelForm.NonIdeal.Text, "&Non-ideal");
    EXPECT_EQ(ModelForm.SameK.Text, "&Same K(1>N) and K(AB) for all sets");
    EXPECT_EQ(ModelForm.UniqueK.Text, "&Unique K(1>N) or K(AB) for each set");
    EXPECT_TRUE(ModelForm.State.Shown);
}

TEST(ModelForm, ShorterListsStandFurtherApart) {
    for (const auto& [rows, pitch] : {std::pair{21, 300}, {20, 330}, {15, 330}}) {
        StartModel(1);
        Work.ModelCount = ToInt16(rows);
        LoadModelForm();
        EXPECT_EQ(ModelForm.RowPitch, pitch) << rows;
    }
    StartModel(1);
    Work.ModelCount = 14;
    LoadModelForm();
    EXPECT_GT(ModelForm.RowPitch, 330);
}

TEST(ModelForm, MarksTheCurrentModelAndItsOptions) {
    StartModel(4);
    Work.SeparateK = FlagTrue;
    LoadModelForm();
    for (std::size_t i = 0; i < 22; ++i) {
        EXPECT_EQ(ModelForm.ModelRow[i].ForeColor, i == 3 ? Work.EditBackColor : DefaultColor) << i;
        EXPECT_EQ(ModelForm.ModelRow[i].Value, i == 3 ? -1 : 0) << i;
    }
    EXPECT_EQ(ModelForm.State.FocusOn, &ModelForm.ModelRow[3]);
    EXPECT_EQ(ModelForm.Ideal.Value, -1);
    EXPECT_EQ(ModelForm.NonIdeal.Value, 0);
    EXPECT_EQ(ModelForm.SameK.Value, 0);
    EXPECT_EQ(ModelForm.UniqueK.Value, -1);
}

TEST(ModelForm, NothingIsChosenBeforeOk) {
    StartModel(1);
    LoadModelForm();
    ModelFormRowClick(3);
    ModelFormNonIdealClick(true);
    ModelFormSeparateKClick(true);
    EXPECT_EQ(ModelForm.ModelRow[2].ForeColor, Work.EditBackColor);
    EXPECT_EQ(ModelForm.ModelRow[0].ForeColor, DefaultColor);
    EXPECT_EQ(Work.Model, 1);
    EXPECT_EQ(Work.NonIdeal, 0);
    EXPECT_EQ(Work.SeparateK, 0);
    ModelFormOkButton();
    EXPECT_EQ(Work.Model, 3);
    EXPECT_EQ(Work.NonIdeal, -1);
    EXPECT_EQ(Work.SeparateK, -1);
    EXPECT_FALSE(ModelForm.State.Shown);
}

TEST(ModelForm, OptionsExcludeEachOther) {
    StartModel(1);
    LoadModelForm();
    ModelFormNonIdealClick(true);
    ModelFormNonIdealClick(false);
    ModelFormSeparateKClick(true);
    ModelFormSeparateKClick(false);
    EXPECT_EQ(ModelForm.Ideal.Value, -1);
    EXPECT_EQ(ModelForm.NonIdeal.Value, 0);
    EXPECT_EQ(ModelForm.SameK.Value, -1);
    EXPECT_EQ(ModelForm.UniqueK.Value, 0);
}

TEST(ModelForm, RowsWithoutANameAfterARestoreCannotBeChosen) {
    StartModel(22);
    Work.ModelCount = 24;
    LoadModelForm();
    ASSERT_EQ(ModelForm.ModelRow.size(), 24U);
    EXPECT_EQ(ModelForm.ModelRow[22].Text, "23. ");
    EXPECT_FALSE(ModelForm.ModelRow[22].Enabled);
    EXPECT_FALSE(ModelForm.ModelRow[23].Enabled);
    EXPECT_FALSE(ModelForm.ModelRow[23].Visible);
    EXPECT_TRUE(ModelForm.ModelRow[21].Enabled);
    EXPECT_TRUE(ModelForm.ModelRow[21].Visible);
    ModelFormRowClick(23);
    EXPECT_EQ(ModelForm.ChosenModel, 22);
    ModelFormRowDoubleClick(24);
    EXPECT_TRUE(ModelForm.State.Shown);
    ModelFormKeyDown();
    EXPECT_EQ(ModelForm.ChosenModel, 22);
    for (const int outside : {0, -1, 25})
        ModelFormRowClick(ToInt16(outside));
    EXPECT_EQ(ModelForm.ChosenModel, 22);
}

TEST(ModelForm, KeysWalkTheList) {
    StartModel(1);
    LoadModelForm();
    ModelFormKeyUp();
    EXPECT_EQ(ModelForm.ChosenModel, 1);
    ModelFormKeyDown();
    ModelFormKeyDown();
    EXPECT_EQ(ModelForm.ChosenModel, 3);
    EXPECT_EQ(ModelForm.State.FocusOn, &ModelForm.ModelRow[2]);
    ModelFormKeyUp();
    EXPECT_EQ(ModelForm.ChosenModel, 2);
}

TEST(ModelForm, DoubleClickIsOk) {
    StartModel(1);
    LoadModelForm();
    ModelFormRowDoubleClick(7);
    EXPECT_EQ(Work.Model, 7);
    EXPECT_FALSE(ModelForm.State.Shown);
}

TEST(SelectModel, LoadsTheFormBeforeItIsShown) {
    Script script;
    StartModel(2);
    ModelForm = ModelFormRecord{};
    script.ExpectModal(ModelFormName, [] {
        EXPECT_EQ(Work.ModelChosen, 0); // until the choice stands
        EXPECT_EQ(ModelForm.ChosenModel, 2);
        Choose(3, true);
    });
    SelectModel(true);
    EXPECT_EQ(Work.Model, 3);
    EXPECT_EQ(Work.ModelChosen, -1);
    EXPECT_EQ(Work.FitTitle, "monomer <-> N-mer fit, non-ideal");
    EXPECT_EQ(Work.FreeMap[7], 0); // the virial coefficient
    EXPECT_EQ(Work.FreeMap[SlotOffset(1)], -1);
    EXPECT_EQ(Work.ParmFormat[7], "0.0000E+00");
}

TEST(SelectModel, CancelRestoresEverything) {
    for (const std::int16_t chosenBefore : {FlagFalse, FlagTrue}) {
        Script script;
        StartModel(2);
        Work.ModelChosen = chosenBefore;
        Work.NonIdeal = FlagTrue;
        Work.FitDone = Work.FitValid = FlagTrue;
        const Workspace before = Work;
        script.ExpectModal(ModelFormName, [] {
            ModelFormRowClick(9);
            ModelFormNonIdealClick(false);
            ModelFormCancelButton();
            EXPECT_FALSE(ModelForm.State.Shown);
        });
        EXPECT_EQ(SelectModel(true), DialogAnswer::Cancel);
        EXPECT_TRUE(Work == before);
    }
}

TEST(SelectModel, CancelAfterARefusalRestoresTheOptionsToo) {
    Script script;
    StartModel(3);
    Work.NonIdeal = FlagTrue;
    const Workspace before = Work;
    script.ExpectModal(ModelFormName, [] { Choose(8, true); });
    script.ExpectMessage({NoNonIdeal, "Select Model", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    script.ExpectModal(ModelFormName, [] {
        EXPECT_EQ(ModelForm.ChosenModel, 8);
        EXPECT_EQ(ModelForm.Ideal.Value, -1); // the option went off
        ModelFormCancelButton();
    });
    EXPECT_EQ(SelectModel(true), DialogAnswer::Cancel);
    EXPECT_EQ(script.Beeps, 1);
    EXPECT_TRUE(Work == before);
}

TEST(SelectModel, StaysUntilTheChoiceIsValid) {
    Script script;
    StartModel(1);
    script.ExpectModal(ModelFormName, [] { Choose(10, true, true); });
    script.ExpectMessage(NoNonIdeal);
    script.ExpectModal(ModelFormName, [] { ModelFormOkButton(); });
    script.ExpectMessage({NoSeparateK, "Select Model", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                         BoxAnswer::Ok);
    script.ExpectModal(ModelFormName, [] {
        EXPECT_EQ(ModelForm.SameK.Value, -1);
        ModelFormOkButton();
    });
    script.ExpectMessage(
        {CoefficientsNote, "Select Model", BoxIcon::Information, BoxButtons::Ok, BoxAnswer::Ok},
        BoxAnswer::Ok);
    SelectModel(true);
    EXPECT_EQ(Work.Model, 10);
    EXPECT_EQ(Work.NonIdeal, 0);
    EXPECT_EQ(Work.SeparateK, 0);
    EXPECT_EQ(script.Beeps, 2);
}

// A link left in force would tie the constants of two sets, which stand in the slots of the offsets.
TEST(SelectModel, NoModelThatGivesUpItsOffsetsKeepsTheirLinks) {
    for (const int model : {4, 5, 8, 9}) {
        Script script;
        StartModel(1);
        Work.NumSets = 2;
        Work.SetRow[2] = 2;
        Work.SetOfRow[2] = 2;
        Work.OffsetLink[2] = 1;
        Work.OffsetLink[7] = 6; // rows outside the fit, which model 8 cleared as well
        Work.ConstraintFlags = ConcentrationBit | OffsetBit;
        script.ExpectModal(ModelFormName, [&] { Choose(ToInt16(model), false, true); });
        script.ExpectMessage({"You cannot have baseline constraints with a model that doesn't use zero "
                              "offsets!  Do you want "
                              "me to remove the baseline constraints (YES) or return to a common "
                              "association constant for all "
                              "data sets (NO)?",
                              "Quillon", BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::Yes},
                             BoxAnswer::Yes);
        if (model >= 8) script.ExpectMessage(CoefficientsNote);
        SelectModel(true);
        EXPECT_NE(Work.SeparateK, 0) << model;
        EXPECT_EQ(Work.ConstraintFlags, ConcentrationBit) << model;
        EXPECT_EQ(Work.OffsetLink[2], 0) << model;
        EXPECT_EQ(Work.OffsetLink[7], 6) << model;
        EXPECT_GE(Work.FreeMap[SlotOffset(2)], 0) << model; // a constant of its own, fitted
    }
}

TEST(SelectModel, MixturesLeaveWeightUnitsAtOnce) {
    for (const int units : {1, 4}) {
        Script script;
        StartModel(3);
        Work.ConcUnits = ToInt16(units);
        StartModel(3);
        Work.ConcUnits = ToInt16(units);
        BuildParmNames();
        BuildParmScale();
        SetDefaultBounds();
        script.ExpectModal(ModelFormName, [] { Choose(13); });
        script.ExpectMessage(
            {NoWeightUnits, "Select Model", BoxIcon::Information, BoxButtons::Ok, BoxAnswer::Ok},
            BoxAnswer::Ok);
        SelectModel(true);
        EXPECT_EQ(Work.ConcUnits, units - 1);
        EXPECT_EQ(Work.ParmTitle[6], units == 1 ? "per AU" : "per fringe");
        EXPECT_EQ(Work.ParmScale[SlotA(1)], 0.0F);
    }
}

// The bounds of the new model, carried over to the units that it allows.
TEST(SelectModel, BoundsFollowTheModelWhenItChangesTheUnitsToo) {
    Script script;
    StartModel(3);
    Work.ConcUnits = 1;
    Work.AbsorpA = 3.0F;
    Work.AbsorpB = 5.0F;
    Work.ExtA = 100.0F;
    Work.ExtB = 200.0F;
    BuildParmScale();
    SetDefaultBounds();
    Work.Bounds[0][SlotA(1)] = -7.0F; // by the user, in mg/mL
    script.ExpectModal(ModelFormName, [] { Choose(13); });
    script.ExpectMessage(NoWeightUnits);
    SelectModel(true);
    EXPECT_NEAR(Work.Bounds[0][2], -10.0 - std::log(3.0), 1e-5); // N is 2
    EXPECT_NEAR(Work.Bounds[1][2], 30.0 - std::log(3.0), 1e-5);
    EXPECT_NEAR(Work.Bounds[0][6], -20.0 - std::log(100.0 * 200.0), 1e-5);
    EXPECT_NEAR(Work.Bounds[1][7], 120.0 - std::log(100.0 * 200.0), 1e-5); // a constant now
    EXPECT_NEAR(Work.Bounds[0][SlotB(1)], -90.0 + std::log(5.0), 1e-5);
    EXPECT_NEAR(Work.Bounds[0][SlotA(1)], -7.0 + std::log(3.0), 1e-5);
}

// After a change of units no bound stands at a default, yet those of a concentration are none for a constant.
TEST(SelectModel, SlotsThatChangeOverToAConstantTakeItsBounds) {
    Script script;
    StartModel(5);
    Work.ExtA = Work.ExtB = 10000.0F;
    Work.ConcUnits = 2;
    RefreshUnits();
    Work.Bounds[0][2] = 5.5F; // by the user
    ASSERT_LT(Work.Bounds[1][SlotB(1)], 0.0F);
    script.ExpectModal(ModelFormName, [] { Choose(5, false, true); });
    SelectModel(true);
    for (const long slot : {SlotB(1), SlotOffset(1), SlotB(18), SlotOffset(18)}) {
        EXPECT_EQ(Work.Bounds[0][slot], -3.0F) << slot;
        EXPECT_EQ(Work.Bounds[1][slot], 150.0F) << slot;
    }
    EXPECT_EQ(Work.Bounds[0][2], 5.5F);
    // And back.
    script.ExpectModal(ModelFormName, [] { Choose(5); });
    SelectModel(true);
    EXPECT_EQ(Work.Bounds[1][SlotB(1)], -3.0F);
    EXPECT_EQ(Work.Bounds[1][SlotOffset(1)], 4.0F);
    EXPECT_EQ(Work.Bounds[0][2], 5.5F);
}

TEST(SelectModel, AFailureLeavesTheFormerModel) {
    Script script;
    StartModel(2);
    Work.ExtB = 0.0F; // no logarithm in the scale of ln K(A+B)
    const Workspace before = Work;
    script.ExpectModal(ModelFormName, [] { Choose(8); });
    script.ExpectMessage(CoefficientsNote);
    EXPECT_THROW(SelectModel(true), RuntimeError);
    EXPECT_TRUE(Work == before);
}

TEST(SelectModel, WithoutTheDialogOnlyReDerives) {
    Script script;
    StartModel(2);
    Work.NumSets = 3;
    Work.FreeMap[0] = SlotHeld;
    SelectModel(false);
    EXPECT_EQ(Work.NumParms, 17);
    EXPECT_EQ(Work.FreeMap[0], SlotHeld);
    EXPECT_EQ(Work.FitTitle, "monomer <-> dimer fit, ideal");
    EXPECT_TRUE(script.Asked.empty());
}

TEST(ParmNames, OnlySpeciesAIsAMonomer) {
    StartModel(7);
    Work.MassUnits = 2;
    BuildParmNames();
    EXPECT_EQ(Work.ParmName[0], "MW A mon");
    EXPECT_EQ(Work.ParmName[5], "MW B");
}

} // namespace
} // namespace Quillon
