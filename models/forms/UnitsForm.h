#pragma once
// The units dialog as data: how masses and concentrations are shown, and the coefficients that lead there.
//
// Options and coefficients go into the workspace at once, each coefficient when its box is left;
// DefineUnitsDialog takes them all back when the form was cancelled. Scale, names and bounds follow when the
// form was accepted.

#include "models/forms/DialogAnswer.h"
#include "platform/Controls.h"

#include <cstdint>
#include <vector>

namespace Quillon {

// The kinds of boxes. Index 0 is species A, 1 is B; the density has one box.
enum class UnitsInput { VBar, Density, Absorptivity, Extinction, Refractivity, RefExt };

inline constexpr const char* UnitsFormName = "UnitsForm"; // of the form, for the seam

struct UnitsFormRecord {
    FormState State;
    Control MassFrame, ConcFrame, AbsorbanceFrame, InterferenceFrame;
    Control SigmaUnits, Buoyant, TrueMass; // options: Work.MassUnits 0, 1, 2
    Control TrueMassNote;
    Control Per_AU, Per_mg_per_ml, Molar;                      // options: Work.ConcUnits 0, 1, 2
    Control Per_Fringe, Refr_per_mg_per_ml, Ref_Molar;         // options: Work.ConcUnits 3, 4, 5
    std::vector<Control> VBarInput, VBarLabel;                 // mL/g
    std::vector<Control> DensityInput, DensityLabel;           // g/mL
    std::vector<Control> AbsorptivityInput, AbsorptivityLabel; // mL/(mg cm)
    std::vector<Control> ExtinctionInput, ExtinctionLabel;     // L/(mol cm)
    std::vector<Control> RefractivityInput, RefractivityLabel; // fringes per mg/mL per cm
    std::vector<Control> RefExtInput, RefExtLabel;             // fringes L/(mol cm)
    Control RefractivityNote;
    Control OkButton, CancelButton;
    DialogAnswer Answer = DialogAnswer::Ok;
};

extern UnitsFormRecord UnitsForm;

// The command: loads the form, shows it modally ("UnitsForm"), then refreshes the units. A cancelled form
// leaves the workspace as it was. A RuntimeError (a coefficient that makes no scale,
// as a density times v-bar of exactly 1 with true molar masses) leaves the workspace as it was, too, and is
// for the caller to tell.
void DefineUnitsDialog();

// Fills the form from the workspace. The options for mg/mL are open for models 1 to 6, the one for the kind
// of data that was read last.
void LoadUnitsForm();

void UnitsFormMassClick(std::int16_t massUnits);
void UnitsFormConcClick(std::int16_t concUnits); // an option that is disabled stays as it is

// The box of that kind and species.
Control& UnitsFormBox(UnitsInput input, std::size_t species);

void UnitsFormGotFocus(UnitsInput input, std::size_t species);
int UnitsFormKeyPress(UnitsInput input, std::size_t species, int key); // Enter presses OK

// Stores the value and writes it in the format of the box; a value of 0 or below is told with a beep and
// takes the focus back.
void UnitsFormLostFocus(UnitsInput input, std::size_t species);

// Takes the boxes as they stand and closes, unless one of them holds a value of 0 or below.
void UnitsFormOkButton();
void UnitsFormCancelButton(); // closes; closing the window is the same

} // namespace Quillon
