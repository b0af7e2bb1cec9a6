#pragma once
// The sigma calculator as data: which sigma a molar mass shows at a rotor speed, or which speed gives a
// sigma. It changes nothing in the workspace. With M in kDa, density rho, T in degrees Celsius,
//
//     sigma = M (1 - rho vbar) rpm^2 1.318924e-7 / (T + 273.15)
//
// where the constant is (pi/30)^2 1000 / R. All work is double precision.

#include "platform/Controls.h"

#include <string>

namespace Quillon {

enum class SigmaCalcInput { MW, VBar, Density, Temp, RPM, Sigma };

inline constexpr const char* SigmaCalcFormName = "SigmaCalcForm"; // of the form, for the seam

struct SigmaCalcFormRecord {
    FormState State;
    Control MWLabel, VBarLabel, DensityLabel, TempLabel;
    Control Label2; // of the rotor speed
    Control Label1; // of sigma
    Control MWInput, VBarInput, DensityInput, TempInput, RPMInput, SigmaInput;
    Control ExitButton;
    int Mode = 1;        // 1: sigma from the speed, 2: the speed from sigma
    std::string Failure; // of the latest calculation; empty when there was none
    std::string ToldFailure;
};

extern SigmaCalcFormRecord SigmaCalcForm;

// The command: loads the form and shows it modally ("SigmaCalcForm").
void SigmaCalculatorDialog();

// Fills the form from the solution and the first row of the data set table; nothing is calculated yet.
void LoadSigmaCalcForm();

Control& SigmaCalcFormBox(SigmaCalcInput input);
void SigmaCalcFormGotFocus(SigmaCalcInput input);
int SigmaCalcFormKeyPress(SigmaCalcInput input, int key); // Enter goes to the next box

// The user has altered the text of a box: typing in the speed or in sigma decides which of them is given, and
// the other is calculated. Without a positive molar mass or speed the result is "* * *". A run-time error
// (1 - rho vbar of 0 or below) leaves the same mark.
void SigmaCalcFormChange(SigmaCalcInput input);

// The text of the box is written in its format; a failure that the calculation has met is told, once for as
// long as it stands.
void SigmaCalcFormLostFocus(SigmaCalcInput input);

void SigmaCalcFormExitButton();

} // namespace Quillon
