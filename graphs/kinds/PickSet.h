#pragma once
// The form "Select Data Set for Graph": which set of the fit a graph shows.

#include "platform/Controls.h"

namespace Quillon {

inline constexpr const char* PickSetName = "PickSet"; // of the form, for the seam

struct PickSetForm {
    FormState State;
    Control SetList; // one row for each fit set
    Control OkButton, CancelButton;
    long Choice = 0; // the set chosen, 0 when cancelled
};
extern PickSetForm PickSetWindow;

// Shows the form and gives the choice, 0 when the user cancelled. With one set there is nothing to ask.
long PickSet();

void LoadPickSet();
void PickSetRow(long set); // a row was chosen
void PickSetOkButton();    // also a double click on a row
void PickSetCancelButton();

} // namespace Quillon
