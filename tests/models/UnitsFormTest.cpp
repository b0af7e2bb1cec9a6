// The units dialog, and the way of the bounds through a change of units.
#include "models/forms/UnitsForm.h"
#include "input/NUMINPUT.h"
#include "models/SEDEQ3.h"
#include "models/forms/NumberBox.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Quillon {
namespace {

void StartUnits(int model) {
    Work = UnitWorkspace(model);
    Work.ScanWavelength[1] = 280.4F;
    Work.ExtA = 40000.0F;
    Work.ExtB = 9000.0F;
    Work.RefrA = Work.RefrB = 20000.0F;
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    SetDefaultBounds();
}

// Enters a box, types over its text and leaves it.
void Enter(UnitsInput input, std::size_t species, const std::string& keys) {
    UnitsFormGotFocus(input, species);
    TypeInto(UnitsFormBox(input, species), keys,
             [&](int key) { return UnitsFormKeyPress(input, species, key); });
    UnitsFormLostFocus(input, species);
}

TEST(UnitsForm, ReadsAsDesigned) {
    StartUnits(1);
    LoadUnitsForm();
    const auto& f = UnitsForm;
    EXPECT_EQ(f.State.Caption, "Set Input/Output Units");
    EXPECT_EQ(f.MassFrame.Text, "Molar Mass Units");
    EXPECT_EQ(f.ConcFrame.Text, "Concentration Units");
    EXPECT_EQ(f.AbsorbanceFrame.Text, "Absorbance Data");
    EXPECT_EQ(f.InterferenceFrame.Text, "Interference Data");
    EXPECT_EQ(f.SigmaUnits.Text, "&sigma, reduced");
    EXPECT_EQ(f.Buoyant.Text, "&buoyant molar mass");
    EXPECT_EQ(f.TrueMass.Text, "&true molar mass");
    EXPECT_EQ(f.TrueMassNote.Text, "(density and solute partial specific volume known)");
    EXPECT_EQ(f.Per_AU.Text, "per &Absorbance Unit");
    EXPECT_EQ(f.Per_mg_per_ml.Text, "&mg/mL (absorptivity known)");
    EXPECT_EQ(f.Molar.Text, "m&olar (extinction coefficient known)");
    EXPECT_EQ(f.Per_Fringe.Text, "per &fringe");
    EXPECT_EQ(f.Refr_per_mg_per_ml.Text, "&mg/mL (refractivity known, equals");
    EXPECT_EQ(f.Ref_Molar.Text, "m&olar (molar refractivity known)");
    EXPECT_EQ(f.VBarLabel[1].Text, "partial specific volume of B (mL/g)");
    EXPECT_EQ(f.DensityLabel[0].Text, "solvent &density (g/mL)");
    EXPECT_EQ(f.AbsorptivityLabel[0].Text, "absorptivity of A at 280 nm (ml/(mg cm))");
    EXPECT_EQ(f.AbsorptivityLabel[1].Text, "absorptivity of B at 280 nm (ml/(mg cm))");
    EXPECT_EQ(f.ExtinctionLabel[0].Text, "molar extinction of A at 280 nm (liter/(mole cm))");
    EXPECT_EQ(f.RefractivityLabel[0].Text, "refractivity of A (fringes per mg/mL per cm)");
    EXPECT_EQ(f.RefractivityNote.Text, ".001 X (dn/dc in ml/g)/(lambda in cm)");
    EXPECT_EQ(f.RefExtLabel[1].Text, "molar refractivity of B ((fringes liter)/(mol cm))");
}

TEST(UnitsForm, CoefficientsWereLabelledWithTheWavelengthOfTheFirstSetInTheFit) {
    StartUnits(1);
    Work.ScanFile[1] = "00001.RA1";
    Work.ScanFile[2] = "00002.RA1";
    Work.ScanWavelength[2] = 250.0F;
    Work.SetRow[1] = 2; // row 1 is not ticked
    LoadUnitsForm();
    EXPECT_EQ(UnitsForm.AbsorptivityLabel[0].Text, "absorptivity of A at 280 nm (ml/(mg cm))");
    EXPECT_EQ(UnitsForm.ExtinctionLabel[1].Text, "molar extinction of B at 280 nm (liter/(mole cm))");
    Work.ScanFile[1].clear();
    LoadUnitsForm();
    EXPECT_EQ(UnitsForm.AbsorptivityLabel[0].Text, "absorptivity of A at 250 nm (ml/(mg cm))");
}

TEST(UnitsForm, OptionsTellTheirMeaning) {
    StartUnits(1);
    LoadUnitsForm();
    const auto& f = UnitsForm;
    EXPECT_EQ(f.SigmaUnits.ToolTip, "Use sigma");
    EXPECT_EQ(f.Buoyant.ToolTip, "Use buoyant molar mass");
    EXPECT_EQ(f.TrueMass.ToolTip, "Use true molar mass");
    EXPECT_EQ(f.Per_AU.ToolTip, "Use signal units");
    EXPECT_EQ(f.Per_Fringe.ToolTip, "Use signal units");
    EXPECT_EQ(f.Per_mg_per_ml.ToolTip, "Use weight concentration units");
    EXPECT_EQ(f.Refr_per_mg_per_ml.ToolTip, "Use weight concentration units");
    EXPECT_EQ(f.Molar.ToolTip, "Use molar concentration");
    EXPECT_EQ(f.Ref_Molar.ToolTip, "Use molar concentration");
}

TEST(UnitsForm, ShowsCoefficientsInTheirFormats) {
    StartUnits(1);
    Work.VbarA = 0.7351F;
    Work.SolventDensity = 1.003994F;
    Work.AbsorpB = 1.25F;
    Work.FringeMassA = 2.756F;
    LoadUnitsForm();
    EXPECT_EQ(UnitsForm.VBarInput[0].Text, "0.73510");
    EXPECT_EQ(UnitsForm.VBarInput[1].Text, "0.73000");
    ASSERT_EQ(UnitsForm.DensityInput.size(), 1U);
    EXPECT_EQ(UnitsForm.DensityInput[0].Text, "1.003994");
    EXPECT_EQ(UnitsForm.AbsorptivityInput[0].Text, "1.000");
    EXPECT_EQ(UnitsForm.AbsorptivityInput[1].Text, "1.250");
    EXPECT_EQ(UnitsForm.ExtinctionInput[0].Text, "4.000E+4");
    EXPECT_EQ(UnitsForm.ExtinctionInput[1].Text, "9.000E+3");
    EXPECT_EQ(UnitsForm.RefractivityInput[0].Text, "2.756");
    EXPECT_EQ(UnitsForm.RefExtInput[1].Text, "20000.0000");
}

TEST(UnitsForm, ShowsTheUnitsInForce) {
    StartUnits(1);
    Work.MassUnits = 1;
    Work.ConcUnits = 5;
    LoadUnitsForm();
    EXPECT_EQ(UnitsForm.Buoyant.Value, -1);
    EXPECT_EQ(UnitsForm.SigmaUnits.Value, 0);
    EXPECT_EQ(UnitsForm.Ref_Molar.Value, -1);
    EXPECT_EQ(UnitsForm.Molar.Value, 0);
}

TEST(UnitsForm, WeightUnitsAreOpenForOneKindOfMonomerAndTheDataAtHand) {
    for (int model = 1; model <= 22; ++model)
        for (const bool interference : {false, true}) {
            StartUnits(model);
            Work.InterferenceData = Flag(interference);
            LoadUnitsForm();
            EXPECT_EQ(UnitsForm.Per_mg_per_ml.Enabled, model <= 6 && !interference) << model;
            EXPECT_EQ(UnitsForm.Refr_per_mg_per_ml.Enabled, model <= 6 && interference) << model;
            EXPECT_TRUE(UnitsForm.Per_AU.Enabled && UnitsForm.Molar.Enabled);
            EXPECT_TRUE(UnitsForm.Per_Fringe.Enabled && UnitsForm.Ref_Molar.Enabled);
        }
    UnitsFormConcClick(1); // model 22
    EXPECT_EQ(Work.ConcUnits, 0);
    EXPECT_EQ(UnitsForm.Per_AU.Value, -1);
    UnitsFormConcClick(2);
    EXPECT_EQ(Work.ConcUnits, 2);
    EXPECT_EQ(UnitsForm.Molar.Value, -1);
    EXPECT_EQ(UnitsForm.Per_AU.Value, 0);
}

TEST(UnitsForm, StoresEachBoxBySpecies) {
    Script script;
    StartUnits(1);
    LoadUnitsForm();
    Enter(UnitsInput::VBar, 1, "0.71");
    Enter(UnitsInput::Density, 0, "1.01");
    Enter(UnitsInput::Absorptivity, 0, "1.5");
    Enter(UnitsInput::Extinction, 1, "1.23E4");
    Enter(UnitsInput::Refractivity, 1, "2.9");
    Enter(UnitsInput::RefExt, 0, "12345.678");
    EXPECT_EQ(Work.VbarA, 0.730F);
    EXPECT_EQ(Work.VbarB, 0.71F);
    EXPECT_EQ(Work.SolventDensity, 1.01F);
    EXPECT_EQ(Work.AbsorpA, 1.5F);
    EXPECT_EQ(Work.ExtB, 12300.0F);
    EXPECT_EQ(Work.FringeMassB, 2.9F);
    EXPECT_EQ(Work.RefrA, 12345.678F);
    EXPECT_EQ(UnitsForm.VBarInput[1].Text, "0.71000");
    EXPECT_EQ(UnitsForm.ExtinctionInput[1].Text, "1.230E+4");
}

TEST(UnitsForm, AVisitKeepsTheDigitsThatAreNotShown) {
    Script script;
    StartUnits(1);
    Work.ExtA = 12345.6F;
    LoadUnitsForm();
    EXPECT_EQ(UnitsForm.ExtinctionInput[0].Text, "1.235E+4");
    UnitsFormGotFocus(UnitsInput::Extinction, 0);
    UnitsFormLostFocus(UnitsInput::Extinction, 0);
    UnitsFormOkButton();
    EXPECT_EQ(Work.ExtA, 12345.6F);
}

TEST(UnitsForm, RefusesWhatIsNotPositive) {
    const std::pair<UnitsInput, const char*> inputs[] = {
        {UnitsInput::Absorptivity, "You must enter a positive, non-zero value for Absorptivity"},
        {UnitsInput::Density, "You must enter a positive, non-zero value for solvent density"},
        {UnitsInput::Extinction, "You must enter a positive, non-zero value for extinction"},
        {UnitsInput::RefExt, "You must enter a positive, non-zero value."},
        {UnitsInput::Refractivity, "You must enter a positive, non-zero value for solute dn/dc"},
        {UnitsInput::VBar, "You must enter a positive, non-zero value for v-bar"},
    };
    for (const auto& [input, message] : inputs)
        for (const char* keys : {"0", "-2", "."}) {
            Script script;
            StartUnits(1);
            LoadUnitsForm();
            UnitsForm.State.FocusOn = nullptr;
            script.ExpectMessage({message, "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                                 BoxAnswer::Ok);
            Enter(input, 0, keys);
            EXPECT_EQ(script.Beeps, 1) << message;
            EXPECT_EQ(UnitsForm.State.FocusOn, &UnitsFormBox(input, 0)) << message;
        }
}

TEST(UnitsForm, ARefusedValueIsStoredAllTheSame) {
    Script script;
    StartUnits(1);
    LoadUnitsForm();
    script.AnswerAllMessages(BoxAnswer::Ok);
    Enter(UnitsInput::Absorptivity, 1, "-2");
    EXPECT_EQ(Work.AbsorpB, -2.0F);
    EXPECT_EQ(UnitsForm.AbsorptivityInput[1].Text, "-2.000");
    // And the form cannot be accepted with it, but cancelled.
    UnitsFormOkButton();
    EXPECT_TRUE(UnitsForm.State.Shown);
    EXPECT_EQ(script.Asked.size(), 2U);
    UnitsFormCancelButton();
    EXPECT_FALSE(UnitsForm.State.Shown);
}

TEST(UnitsForm, EscapeUndoesABox) {
    Script script;
    StartUnits(1);
    LoadUnitsForm();
    UnitsFormGotFocus(UnitsInput::VBar, 0);
    EXPECT_EQ(UnitsForm.VBarInput[0].ForeColor, StandardEditColor);
    TypeInto(UnitsForm.VBarInput[0], "-9\x1b",
             [](int key) { return UnitsFormKeyPress(UnitsInput::VBar, 0, key); });
    EXPECT_TRUE(EntryIsTakenBack());
    UnitsFormLostFocus(UnitsInput::VBar, 0);
    EXPECT_FALSE(EntryIsTakenBack());
    EXPECT_EQ(UnitsForm.VBarInput[0].Text, "0.73000");
    EXPECT_EQ(UnitsForm.VBarInput[0].ForeColor, DefaultColor);
    EXPECT_EQ(Work.VbarA, 0.730F);
}

TEST(UnitsForm, OkTakesTheBoxThatIsBeingEdited) {
    Script script;
    StartUnits(1);
    LoadUnitsForm();
    UnitsForm.VBarInput[0].Text = "0.7";
    UnitsFormOkButton();
    EXPECT_EQ(Work.VbarA, 0.7F);
    EXPECT_FALSE(UnitsForm.State.Shown);
    LoadUnitsForm();
    UnitsForm.VBarInput[0].Text = "0.6";
    UnitsFormKeyPress(UnitsInput::VBar, 0, KeyEscape);
    UnitsFormOkButton();
    EXPECT_EQ(Work.VbarA, 0.7F);
    EXPECT_FALSE(EntryIsTakenBack());
}

TEST(UnitsForm, EnterInABoxIsOk) {
    Script script;
    StartUnits(1);
    LoadUnitsForm();
    UnitsFormGotFocus(UnitsInput::VBar, 0);
    TypeInto(UnitsForm.VBarInput[0], "0.7\r",
             [](int key) { return UnitsFormKeyPress(UnitsInput::VBar, 0, key); });
    EXPECT_FALSE(UnitsForm.State.Shown);
    EXPECT_EQ(Work.VbarA, 0.7F);
    LoadUnitsForm();
    script.ExpectMessage("You must enter a positive, non-zero value for v-bar");
    UnitsFormGotFocus(UnitsInput::VBar, 0);
    TypeInto(UnitsForm.VBarInput[0], "0\r",
             [](int key) { return UnitsFormKeyPress(UnitsInput::VBar, 0, key); });
    EXPECT_TRUE(UnitsForm.State.Shown);
    EXPECT_EQ(UnitsForm.State.FocusOn, &UnitsForm.VBarInput[0]);
}

// Two keys of the same letter would open a box and press a button in turn.
TEST(UnitsForm, ButtonsShareNoAccessKeyWithTheOptions) {
    StartUnits(1);
    LoadUnitsForm();
    EXPECT_EQ(UnitsForm.OkButton.Text, "OK");
    EXPECT_EQ(UnitsForm.CancelButton.Text, "&Cancel");
    EXPECT_EQ(UnitsForm.State.FocusOn, &UnitsForm.OkButton);
}

TEST(DefineUnitsDialog, FromSigmaToTrueMass) {
    Script script;
    StartUnits(1);
    const float sigma = Work.Parms[0];
    script.ExpectModal(UnitsFormName, [] {
        EXPECT_TRUE(UnitsForm.State.Shown);
        UnitsFormMassClick(2);
        Enter(UnitsInput::Density, 0, "1");
        UnitsFormOkButton();
    });
    DefineUnitsDialog();
    EXPECT_EQ(Work.Parms[0], sigma);
    EXPECT_EQ(Work.ParmName[0], "MW A mon");
    EXPECT_EQ(Work.ParmTitle[0], "kDa");
    // sigma = M (1 - vbar rho) w^2 / (R T) at 20,000 rpm and 20 degrees
    const double omega = 20000 * 3.14159265358979 / 30;
    const double mass = 1.5 * 83144710.0 * 293.15 / ((1 - 0.73) * omega * omega) / 1000;
    EXPECT_NEAR(ToUserUnits(SlotNo(0), Work.Parms[0]), mass, 1e-5 * mass);
    // The bounds of sigma, 0.02 to 30, as masses.
    EXPECT_NEAR(Work.Bounds[0][0], mass * 0.02 / 1.5, 1e-5 * mass);
    EXPECT_NEAR(Work.Bounds[1][0], mass * 30 / 1.5, 1e-5 * mass * 20);
}

TEST(DefineUnitsDialog, CancelRestoresEverything) {
    Script script;
    StartUnits(1);
    FillModelNames();
    const Workspace before = Work;
    script.ExpectModal(UnitsFormName, [] {
        UnitsFormMassClick(2);
        UnitsFormConcClick(2);
        Enter(UnitsInput::Absorptivity, 0, "3");
        Enter(UnitsInput::VBar, 1, "0.6");
        UnitsFormCancelButton();
    });
    DefineUnitsDialog();
    EXPECT_EQ(Work.AbortFit, 0);
    EXPECT_TRUE(Work == before);
}

TEST(DefineUnitsDialog, AFailureRestoresEverything) {
    Script script;
    StartUnits(1);
    const Workspace before = Work;
    script.ExpectModal(UnitsFormName, [] {
        UnitsFormMassClick(2);
        Enter(UnitsInput::Density, 0, "2");
        Enter(UnitsInput::VBar, 0, "0.5"); // floats: no mass has a sigma
        UnitsFormOkButton();
    });
    try {
        DefineUnitsDialog();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Division by zero");
    }
    EXPECT_TRUE(Work == before);
}

TEST(DefineUnitsDialog, AcceptedWithoutAChangeLeavesTheBoundsBitForBit) {
    Script script;
    StartUnits(5);
    Work.ConcUnits = 2;
    Work.MassUnits = 2;
    BuildParmScale();
    SetDefaultBounds();
    Work.Bounds[0][0] = 17.3F;
    Work.Bounds[1][SlotA(1)] = -5.123457F;
    const auto before = Work.Bounds;
    script.ExpectModal(UnitsFormName, [] { UnitsFormOkButton(); });
    DefineUnitsDialog();
    EXPECT_EQ(Work.Bounds[0], before[0]);
    EXPECT_EQ(Work.Bounds[1], before[1]);
}

// Also a bound that the user set to the very number that a fresh start has in the former units.
TEST(DefineUnitsDialog, EveryBoundIsCarriedOver) {
    Script script;
    StartUnits(1);
    Work.InterferenceData = FlagTrue;
    Work.Bounds[0][SlotA(1)] = -10.0F;
    Work.Bounds[1][SlotA(1)] = 4.0F;
    script.ExpectModal(UnitsFormName, [] {
        UnitsFormConcClick(5);
        UnitsFormOkButton();
    });
    DefineUnitsDialog();
    EXPECT_NEAR(Work.Bounds[0][SlotA(1)], -10.0 - std::log(20000.0), 1e-4);
    EXPECT_NEAR(Work.Bounds[1][SlotA(1)], 4.0 - std::log(20000.0), 1e-4);
    EXPECT_NEAR(Work.Bounds[0][SlotB(18)], -70.0 - std::log(20000.0), 1e-4);
    EXPECT_EQ(Work.Bounds[1][SlotOffset(1)], 4.0F); // a signal in every unit
    script.ExpectModal(UnitsFormName, [] {
        UnitsFormConcClick(3);
        UnitsFormOkButton();
    });
    DefineUnitsDialog();
    EXPECT_NEAR(Work.Bounds[0][SlotA(1)], -10.0, 1e-4);
    EXPECT_NEAR(Work.Bounds[1][SlotA(1)], 4.0, 1e-4);
    EXPECT_EQ(Work.Bounds[1][SlotOffset(1)], 4.0F);
}

TEST(RefreshUnits, ABoundThatIsNoneStaysOne) {
    Script script;
    StartUnits(1);
    Work.Bounds[0][0] = -1E38F;
    Work.Bounds[1][0] = 1E38F;
    Work.MassUnits = 2; // some 20 kDa for a sigma of 1
    RefreshUnits();
    EXPECT_EQ(Work.Bounds[1][0], std::numeric_limits<float>::max());
    EXPECT_EQ(Work.Bounds[0][0], -std::numeric_limits<float>::max());
}

} // namespace
} // namespace Quillon
