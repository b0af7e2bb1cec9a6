#pragma once
// The form "Select Data Set for Graph": which set of the fit a graph shows.

#include "platform/Controls.h"
#include "workspace/records/Counts.h"

namespace Quillon {

inline constexpr const char* PickSetName = "PickSet"; // of the form, for the seam

struct PickSetForm {
    FormState State;
    Control SetList; // one row for each fit set
    Control OkButton, CancelButton;
    SetNo Choice = NoSet; // none when cancelled
};
extern PickSetForm PickSetWindow;

// Shows the form and gives the choice, NoSet when the user cancelled. With one set there is nothing to ask.
SetNo PickSet();

void LoadPickSet();
void PickSetRow(SetNo set); // its row was chosen; none of the fit: nothing happens
void PickSetOkButton();     // also a double click on a row
void PickSetCancelButton();

} // namespace Quillon
