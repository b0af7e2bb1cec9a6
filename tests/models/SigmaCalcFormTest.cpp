// The sigma calculator.
#include "models/forms/SigmaCalcForm.h"
#include "models/SEDEQ3.h"
#include "models/forms/NumberBox.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

using In = SigmaCalcInput;

void StartCalculator() {
    Work = FreshWorkspace();
    Work.SolventDensity = 1.0F;
    Work.VbarA = 0.73F;
    LoadSigmaCalcForm();
}

// Enters a box and types over its text; each key that is taken is a change.
void Type(In input, const std::string& keys) {
    SigmaCalcFormGotFocus(input);
    for (const char key : keys) {
        TypeInto(SigmaCalcFormBox(input), std::string(1, key),
                 [&](int k) { return SigmaCalcFormKeyPress(input, k); });
        if (key >= ' ') SigmaCalcFormChange(input);
    }
}

void Enter(In input, const std::string& keys) {
    Type(input, keys);
    SigmaCalcFormLostFocus(input);
}

std::string TextOf(In input) {
    return SigmaCalcFormBox(input).Text;
}

TEST(SigmaCalcForm, ReadsAsDesigned) {
    Script script;
    StartCalculator();
    EXPECT_EQ(SigmaCalcForm.State.Caption, "Calculate Sigma or Rotor Speed");
    EXPECT_EQ(SigmaCalcForm.MWLabel.Text, "True &Molar Mass [kDa]:");
    EXPECT_EQ(SigmaCalcForm.DensityLabel.Text, "So&lvent density [g/mL]:");
    EXPECT_EQ(SigmaCalcForm.TempLabel.Text.substr(0, 15), "&Temperature [\xB0");
    EXPECT_EQ(SigmaCalcForm.MWInput.ToolTip, "Enter the molar mass to be used in these calculations");
    EXPECT_EQ(SigmaCalcForm.VBarInput.ToolTip, "Enter the vbar value to be used in these calculations");
    EXPECT_EQ(SigmaCalcForm.DensityInput.ToolTip,
              "Enter the solvent density to be used in these calculations");
    EXPECT_EQ(SigmaCalcForm.TempInput.ToolTip,
              "Enter the sample temperature to be used in these calculations");
    EXPECT_EQ(SigmaCalcForm.RPMInput.ToolTip, "If you change the rotor speed  the MW will be calculated");
    EXPECT_EQ(SigmaCalcForm.SigmaInput.ToolTip,
              "If you change sigma then the corresponding rotor speed will be calculated");
}

TEST(SigmaCalcForm, StartsWithStandardsWithoutData) {
    Script script;
    StartCalculator();
    EXPECT_EQ(TextOf(In::MW), "20.000");
    EXPECT_EQ(TextOf(In::VBar), "0.730");
    EXPECT_EQ(TextOf(In::Density), "1.0000");
    EXPECT_EQ(TextOf(In::Temp), "20.0");
    EXPECT_EQ(TextOf(In::RPM), "10,000");
    EXPECT_EQ(TextOf(In::Sigma), "1.000");
}

TEST(SigmaCalcForm, StartsFromTheFirstRow) {
    Script script;
    Work = FreshWorkspace();
    Work.VbarA = 0.73456F;
    Work.SolventDensity = 1.003994F;
    Work.ScanTemperature[1] = 4.06F;
    Work.ScanRPM[1] = 24000.0F;
    Work.Parms[0] = 2.5984F;
    LoadSigmaCalcForm();
    EXPECT_EQ(TextOf(In::MW), "10.0");
    EXPECT_EQ(TextOf(In::VBar), "0.73456");
    EXPECT_EQ(TextOf(In::Density), "1.003994");
    EXPECT_EQ(TextOf(In::Temp), "04.06");
    EXPECT_EQ(TextOf(In::RPM), "24,000");
    EXPECT_EQ(TextOf(In::Sigma), "2.598");
}

TEST(SigmaCalcForm, SigmaFromSpeed) {
    Script script;
    StartCalculator();
    Type(In::RPM, "10000");
    // 20 (1 - 0.73) 1e8 1.318924e-7 / 293.15 = 71.2219 / 293.15
    EXPECT_EQ(TextOf(In::Sigma), "0.243");
    EXPECT_EQ(SigmaCalcForm.Label1.Text, "Calculated &Sigma:");
    EXPECT_EQ(SigmaCalcForm.Label2.Text, "&Rotor speed [rpm]:");
    SigmaCalcFormLostFocus(In::RPM);
    EXPECT_EQ(TextOf(In::RPM), "10,000");
    EXPECT_EQ(TextOf(In::Sigma), "0.243");
}

TEST(SigmaCalcForm, SpeedFromSigma) {
    Script script;
    StartCalculator();
    Type(In::Sigma, "1");
    // sqrt(293.15 / (0.27 * 20 * 1.318924e-7)) = sqrt(4.116010e8)
    EXPECT_EQ(TextOf(In::RPM), "20,288");
    EXPECT_EQ(SigmaCalcForm.Label1.Text, "&Sigma:");
    EXPECT_EQ(SigmaCalcForm.Label2.Text, "Calculated &Rotor Speed [rpm]:");
    SigmaCalcFormLostFocus(In::Sigma);
    EXPECT_EQ(TextOf(In::Sigma), "1.000");
}

TEST(SigmaCalcForm, IsTheSigmaOfTheFit) {
    // M (1 - vbar rho) w^2 / (R T), which the constant holds to six digits
    Script script;
    StartCalculator();
    Enter(In::MW, "66500");
    Enter(In::RPM, "45000");
    const double omega = 45000 * 3.14159265358979 / 30;
    const double sigma = 66500e3 * 0.27 * omega * omega / (83144710.0 * 293.15);
    EXPECT_NEAR(std::stod(TextOf(In::Sigma)), sigma, 2e-5 * sigma);
}

TEST(SigmaCalcForm, EveryInputUpdatesInTheModeThatStands) {
    Script script;
    StartCalculator();
    Enter(In::Sigma, "1");
    Enter(In::MW, "80"); // four times the mass, half the speed
    EXPECT_EQ(TextOf(In::RPM), "10,144");
    Enter(In::RPM, "20288");
    EXPECT_EQ(TextOf(In::Sigma), "4.000");
    Enter(In::Density, "0");
    Enter(In::MW, "21.6"); // 0.27 of it gone with the density: 21.6 / 0.27 = 80
    EXPECT_EQ(TextOf(In::Sigma), "4.000");
    Enter(In::Temp, "-126.575"); // half the absolute temperature
    EXPECT_EQ(TextOf(In::Sigma).substr(0, 2), "8.");
    EXPECT_EQ(TextOf(In::Temp), "-126.6");
}

TEST(SigmaCalcForm, NothingToCalculateFrom) {
    Script script;
    StartCalculator();
    Type(In::RPM, "0");
    EXPECT_EQ(TextOf(In::Sigma), "* * *");
    SigmaCalcFormLostFocus(In::RPM);
    // A visit to the result leaves it.
    SigmaCalcFormGotFocus(In::Sigma);
    SigmaCalcFormLostFocus(In::Sigma);
    EXPECT_EQ(TextOf(In::Sigma), "* * *");
    Type(In::Sigma, "2");
    SigmaCalcFormLostFocus(In::Sigma);
    Enter(In::MW, "0");
    EXPECT_EQ(TextOf(In::RPM), "* * *");
}

TEST(SigmaCalcForm, AFailureIsToldWhenTheBoxIsLeft) {
    Script script;
    StartCalculator();
    Enter(In::Sigma, "1");
    Type(In::VBar, "1.25"); // "1" divides by zero, "1.2" has no square root, and nothing is said meanwhile
    EXPECT_EQ(TextOf(In::RPM), "* * *");
    script.ExpectMessage(
        {"Invalid procedure call or argument", "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
        BoxAnswer::Ok);
    SigmaCalcFormLostFocus(In::VBar);
    Enter(In::MW, "30"); // it stands, and has been told
    EXPECT_EQ(TextOf(In::RPM), "* * *");
}

TEST(SigmaCalcForm, DivisionByZeroIsTold) {
    Script script;
    StartCalculator();
    Enter(In::Sigma, "1");
    script.ExpectMessage("Division by zero");
    Enter(In::VBar, "1");
    EXPECT_EQ(TextOf(In::RPM), "* * *");
    Enter(In::VBar, "0.73");
    EXPECT_EQ(TextOf(In::RPM), "20,288");
    script.ExpectMessage("Division by zero"); // another failure after a success is another one
    Enter(In::VBar, "1");
}

TEST(SigmaCalcForm, FormatsOnLeaving) {
    Script script;
    StartCalculator();
    Enter(In::MW, "12.34567");
    Enter(In::VBar, "0.7");
    Enter(In::Density, "1.00399412");
    Enter(In::Temp, "4");
    Enter(In::Sigma, "2.34567");
    EXPECT_EQ(TextOf(In::MW), "12.346");
    EXPECT_EQ(TextOf(In::VBar), "0.700");
    EXPECT_EQ(TextOf(In::Density), "1.003994");
    EXPECT_EQ(TextOf(In::Temp), "4.0");
    EXPECT_EQ(TextOf(In::Sigma), "2.346");
    Enter(In::RPM, "60000");
    EXPECT_EQ(TextOf(In::RPM), "60,000");
}

TEST(SigmaCalcForm, EscapeUndoesABox) {
    Script script;
    StartCalculator();
    Enter(In::RPM, "10000");
    Type(In::MW, "40");
    EXPECT_EQ(TextOf(In::Sigma), "0.486");
    Type(In::MW, "\x1b");
    ForgetTakenBack();
    Enter(In::MW, "20");
    SigmaCalcFormGotFocus(In::MW);
    SigmaCalcFormBox(In::MW).Text = "40";
    SigmaCalcFormChange(In::MW);
    SigmaCalcFormKeyPress(In::MW, 27);
    EXPECT_TRUE(EntryIsTakenBack());
    SigmaCalcFormLostFocus(In::MW);
    EXPECT_EQ(TextOf(In::MW), "20.000");
    EXPECT_EQ(TextOf(In::Sigma), "0.243");
    EXPECT_FALSE(EntryIsTakenBack());
}

TEST(SigmaCalcForm, EnterGoesDownTheBoxes) {
    Script script;
    StartCalculator();
    const In order[] = {In::MW, In::VBar, In::Density, In::Temp, In::RPM, In::Sigma};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(SigmaCalcFormKeyPress(order[i], '\r'), '\r');
        EXPECT_EQ(SigmaCalcForm.State.FocusOn, &SigmaCalcFormBox(order[i + 1]));
    }
    SigmaCalcFormKeyPress(In::Sigma, '\r');
    EXPECT_EQ(SigmaCalcForm.State.FocusOn, &SigmaCalcForm.ExitButton);
}

// The box loses its focus when the window goes away: nobody wants to be told of it then.
TEST(SigmaCalcForm, AFailureIsNotToldOnTheWayOut) {
    Script script;
    StartCalculator();
    Type(In::Sigma, "-1"); // no speed has a negative square
    EXPECT_FALSE(SigmaCalcForm.Failure.empty());
    SigmaCalcFormExitButton();
    SigmaCalcFormLostFocus(In::Sigma);
    EXPECT_TRUE(script.Asked.empty());
}

TEST(SigmaCalcForm, AVisitCalculatesNothing) {
    Script script;
    Work = FreshWorkspace();
    Work.Parms[0] = 2.5984F;
    LoadSigmaCalcForm();
    for (const In input : {In::MW, In::VBar, In::Density, In::Temp, In::RPM}) {
        SigmaCalcFormGotFocus(input);
        SigmaCalcFormLostFocus(input);
    }
    EXPECT_EQ(TextOf(In::Sigma), "2.598");
}

TEST(SigmaCalculatorDialog, ChangesNothingInTheWorkspace) {
    Script script;
    Work = FreshWorkspace();
    const Workspace before = Work;
    script.ExpectModal(SigmaCalcFormName, [] {
        Enter(In::RPM, "30000");
        SigmaCalcFormKeyPress(In::MW, 27);
        SigmaCalcFormExitButton();
        EXPECT_FALSE(SigmaCalcForm.State.Shown);
    });
    SigmaCalculatorDialog();
    EXPECT_TRUE(Work == before);
}

} // namespace
} // namespace Quillon
