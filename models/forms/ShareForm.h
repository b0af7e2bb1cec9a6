#pragma once
// The form "Share Concentrations" as data: which set shares the concentrations of which other
// (models/function/SharedConcentrations.h).
//
// Where no set shares any yet, the form opens with the ties that the scans suggest; nothing is tied before
// OK.

#include "models/forms/LinkBoxes.h"
#include "platform/Controls.h"
#include "workspace/records/Counts.h"

namespace Quillon {

inline constexpr const char* ShareFormName = "ShareForm"; // of the form, for the seam

struct ShareFormRecord {
    FormState State;
    Control Head, XLabel, YLabel;
    LinkBoxes Boxes; // whose concentrations each set shares
    Control Note;    // what is proposed, and why
    Control OkButton, ProposeButton, CancelButton, ResetButton;
};

extern ShareFormRecord ShareForm;

// The command: loads the form, shows it modally ("ShareForm") and writes the ties to Work.ConcLink. The
// caller then prepares the fit data afresh (BuildFitData) and sets Work.NewData to 1 where that has changed
// anything.
void ShareConcentrationsDialog();

void LoadShareForm(); // fills the form from the workspace

void ShareFormGotFocus(SetNo set);
int ShareFormKeyPress(SetNo set, int key); // digits; a blank empties the box, Enter goes to the next one
// Takes the tie; one that makes no sense is told (models/forms/LinkBoxes.h).
void ShareFormLostFocus(SetNo set);

void ShareFormProposeButton(); // fills the boxes with the ties that the scans suggest; the form stays
void ShareFormCancelButton();  // removes every tie; the form stays
void ShareFormResetButton();   // brings back the ties held when the form was loaded; the form stays
void ShareFormOkButton();      // takes the boxes as they stand and closes, unless one is refused
void ShareFormClose();         // the window's own way out: nothing is changed

} // namespace Quillon
