#pragma once
// The form "Concentration Constraints" as data: what was loaded into each set, and how well it is known.
//
// Values go into the workspace when their box is left. All control arrays have one entry for each fit set,
// that of set 1 at place 0.

#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <vector>

namespace Quillon {

enum class ConcInput { ConcA, ConcB, VarA, VarB };

inline constexpr const char* ConcFormName = "ConcForm"; // of the form, for the seam

struct ConcFormRecord {
    FormState State;
    Control ALabel, BLabel;       // heads of the loadings, with the unit in force
    Control VarALabel, VarBLabel; // heads of the tolerances
    Control AvgLabel, TotalLabel;
    Control Note;
    std::vector<Control> SetLabel;     // "Set 1:"
    std::vector<Control> ConcA, ConcB; // loadings
    std::vector<Control> VarA, VarB;   // tolerances in percent
    std::vector<Control> AvgC;         // measured mean signal without offset
    std::vector<Control> Text1;        // signal that both loadings come to
    Control ClearAllButton, CancelButton, OkButton;
};

extern ConcFormRecord ConcForm;

// The command: loads the form, shows it modally ("ConcForm") and sets bit 1 of Work.ConstraintFlags by what
// the sets of the fit then hold, with the warning that models 7 and 9 get. The caller then prepares the fit
// data afresh (BuildFitData) and sets Work.NewData to 1: constraints are points of the fit. A RuntimeError (a
// coefficient or a path of 0) comes before the form is shown.
void ConcConstraintDialog();

// Fills the form from the workspace and keeps the constraints for CancelButton.
void LoadConcForm();

Control& ConcFormBox(ConcInput input, SetNo set);
void ConcFormGotFocus(ConcInput input, SetNo set);
int ConcFormKeyPress(ConcInput input, SetNo set, int key); // Enter goes to the next box, at the end to OK

// Stores a loading of 0 or above, a tolerance above 0; anything else is told and takes the focus back.
void ConcFormLostFocus(ConcInput input, SetNo set);

void ConcFormClearAllButton(); // removes the constraints of all rows; the form stays
void ConcFormCancelButton();   // takes back every change since the form was loaded; the form stays
void ConcFormOkButton();       // takes the boxes as they stand and closes, unless one is refused

// What has to be known of models 7 and 9 with concentration constraints in force.
void WarnOfConstraintCoefficients();

} // namespace Quillon
