#include "models/forms/SigmaCalcForm.h"

#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

SigmaCalcFormRecord SigmaCalcForm;

namespace {

constexpr double SigmaConstant = 1.318924e-7; // (pi/30)^2 1000 / R, for masses in kDa
constexpr const char* NoResult = "* * *";

const char* PictureOf(SigmaCalcInput input) {
    switch (input) {
    case SigmaCalcInput::MW:
        return "####0.000";
    case SigmaCalcInput::VBar:
        return "0.000##";
    case SigmaCalcInput::Density:
        return "0.0000##";
    case SigmaCalcInput::Temp:
        return "#0.0";
    case SigmaCalcInput::RPM:
        return "##,###";
    default:
        return "#0.000";
    }
}

double ValueOf(SigmaCalcInput input) {
    const std::string& text = SigmaCalcFormBox(input).Text;
    // Only the speed is shown in groups of three; elsewhere a comma may be the decimal mark.
    const float value = input == SigmaCalcInput::RPM ? NumValue(StripSeparators(text)) : NumValue(text);
    return static_cast<double>(value);
}

double Buoyancy() {
    return 1.0 - ValueOf(SigmaCalcInput::Density) * ValueOf(SigmaCalcInput::VBar);
}

double Kelvin() {
    return ValueOf(SigmaCalcInput::Temp) + 273.15;
}

std::string SigmaFromSpeed() {
    const double rpm = ValueOf(SigmaCalcInput::RPM);
    if (!(rpm > 0.0)) return NoResult;
    const double mass = ValueOf(SigmaCalcInput::MW);
    return FormatNumber(Divide(mass * Buoyancy() * rpm * rpm * SigmaConstant, Kelvin()), "#0.000");
}

std::string SpeedFromSigma() {
    const double mass = ValueOf(SigmaCalcInput::MW);
    if (!(mass > 0.0)) return NoResult;
    const double sigma = ValueOf(SigmaCalcInput::Sigma);
    return FormatNumber(Sqrt(Divide(sigma * Kelvin(), Buoyancy() * mass * SigmaConstant)), "##0,000");
}

// Told when a box is left, so that no message comes between two keys, and once for as long as it stands.
void TellFailure() {
    auto& f = SigmaCalcForm;
    if (f.Failure.empty() || f.Failure == f.ToldFailure) return;
    f.ToldFailure = f.Failure;
    Tell(f.Failure, Work.ProgramName, BoxIcon::Warning);
}

void Calculate() {
    auto& f = SigmaCalcForm;
    const bool fromSpeed = f.Mode == 1;
    f.Label1.Text = fromSpeed ? "Calculated &Sigma:" : "&Sigma:";
    f.Label2.Text = fromSpeed ? "&Rotor speed [rpm]:" : "Calculated &Rotor Speed [rpm]:";
    Control& result = fromSpeed ? f.SigmaInput : f.RPMInput;
    try {
        result.Text = fromSpeed ? SigmaFromSpeed() : SpeedFromSigma();
        f.Failure.clear();
        f.ToldFailure.clear();
    } catch (const RuntimeError& error) {
        result.Text = NoResult;
        f.Failure = error.Text;
    }
}

void GoBehind(SigmaCalcInput input) {
    auto& f = SigmaCalcForm;
    if (input == SigmaCalcInput::Sigma)
        f.State.FocusOn = &f.ExitButton;
    else
        f.State.FocusOn = &SigmaCalcFormBox(static_cast<SigmaCalcInput>(static_cast<int>(input) + 1));
}

void NameSigmaControls() {
    auto& f = SigmaCalcForm;
    f.State.Caption = "Calculate Sigma or Rotor Speed";
    f.MWLabel = Captioned("True &Molar Mass [kDa]:");
    f.VBarLabel = Captioned("&vbar [mL/g]:");
    f.DensityLabel = Captioned("So&lvent density [g/mL]:");
    f.TempLabel = Captioned("&Temperature [\xB0"
                            "C]:"); // the degree sign of Latin-1
    f.Label2 = Captioned("&Rotor speed [rpm]:");
    f.Label1 = Captioned("&Sigma:");
    f.ExitButton = Captioned("&Exit");
}

std::string OrElse(float value, const char* picture, const char* standard) {
    return value == 0.0F ? standard : FormatNumber(static_cast<double>(value), picture);
}

void FillBoxes() {
    auto& f = SigmaCalcForm;
    const bool hasSigma = Work.Parms[0] != 0.0F;
    f.MWInput =
        Captioned(hasSigma ? "10.0" : "20.000", "Enter the molar mass to be used in these calculations");
    f.VBarInput = Captioned(FormatNumber(static_cast<double>(Work.VbarA), "0.000##"),
                            "Enter the vbar value to be used in these calculations");
    f.DensityInput = Captioned(FormatNumber(static_cast<double>(Work.SolventDensity), "0.0000##"),
                               "Enter the solvent density to be used in these calculations");
    f.TempInput = Captioned(OrElse(Work.ScanTemperature[1], "00.0#", "20.0"),
                            "Enter the sample temperature to be used in these calculations");
    f.RPMInput = Captioned(OrElse(Work.ScanRPM[1], "#0,000", "10,000"),
                           "If you change the rotor speed  the MW will be calculated");
    f.SigmaInput = Captioned(OrElse(Work.Parms[0], "#0.000", "1.000"),
                             "If you change sigma then the corresponding rotor speed will be calculated");
}

} // namespace

Control& SigmaCalcFormBox(SigmaCalcInput input) {
    switch (input) {
    case SigmaCalcInput::MW:
        return SigmaCalcForm.MWInput;
    case SigmaCalcInput::VBar:
        return SigmaCalcForm.VBarInput;
    case SigmaCalcInput::Density:
        return SigmaCalcForm.DensityInput;
    case SigmaCalcInput::Temp:
        return SigmaCalcForm.TempInput;
    case SigmaCalcInput::RPM:
        return SigmaCalcForm.RPMInput;
    default:
        return SigmaCalcForm.SigmaInput;
    }
}

void LoadSigmaCalcForm() {
    SigmaCalcForm = SigmaCalcFormRecord{};
    NameSigmaControls();
    FillBoxes();
    SigmaCalcForm.State.FocusOn = &SigmaCalcForm.MWInput;
    SigmaCalcForm.State.Shown = true;
}

void SigmaCalcFormGotFocus(SigmaCalcInput input) {
    Control& box = SigmaCalcFormBox(input);
    NumGotFocus(box);
    box.Tag = box.Text; // what Esc brings back
}

int SigmaCalcFormKeyPress(SigmaCalcInput input, int key) {
    if (key == KeyReturn) GoBehind(input);
    return NumberBoxKey(SigmaCalcFormBox(input), key);
}

void SigmaCalcFormChange(SigmaCalcInput input) {
    if (input == SigmaCalcInput::RPM) SigmaCalcForm.Mode = 1;
    if (input == SigmaCalcInput::Sigma) SigmaCalcForm.Mode = 2;
    Calculate();
}

void SigmaCalcFormLostFocus(SigmaCalcInput input) {
    Control& box = SigmaCalcFormBox(input);
    const double before = ValueOf(input);
    const std::string former = box.Tag;
    const BoxLeft left = LeaveNumberBox(box, former);
    if (left != BoxLeft::Undone && box.Text != NoResult)
        box.Text = FormatNumber(ValueOf(input), PictureOf(input));
    if (ValueOf(input) != before) Calculate();
    if (SigmaCalcForm.State.Shown) TellFailure();
}

void SigmaCalcFormExitButton() {
    SigmaCalcForm.State.Shown = false;
}

void SigmaCalculatorDialog() {
    LoadSigmaCalcForm();
    Host.ShowModal(SigmaCalcFormName);
    ForgetTakenBack();
}

} // namespace Quillon
