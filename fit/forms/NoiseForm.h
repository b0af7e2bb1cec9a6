#pragma once
// The form "Noise of Data Sets" as data: the noise that each set is weighted by
// (fit/equations/NoiseWeights.h). What is typed is taken with OK; until then the analysis is as it was.
//
// All vectors have one entry for each set of the fit, that of set 1 at place 0.

#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <vector>

namespace Quillon {

inline constexpr const char* NoiseFormName = "NoiseForm"; // of the form, for the seam

struct NoiseFormRecord {
    FormState State;
    Control Note;                      // what the weights do
    Control NoiseHead, RmsHead;        // heads of the columns
    std::vector<Control> SetLabel;     // "Set 1: 00012.RA1 Ch B"
    std::vector<Control> NoiseInput;   // standard deviations, signal units; 0 for none
    std::vector<Control> RmsLabel;     // root mean square of the residuals of the set; empty without a fit
    Control FromFitButton, NoneButton; // fill the boxes
    Control OkButton, CancelButton;
    std::vector<float> Noise; // as the boxes were last left
    bool Changed = false;     // OK has taken other values than there were
};
extern NoiseFormRecord NoiseForm;

// The command: the form, shown modally. Other weights make another fit: the one that stands is done with.
void NoiseDialog();

void LoadNoiseForm();
Control& NoiseFormBox(SetNo set);
void NoiseFormGotFocus(SetNo set);
int NoiseFormKeyPress(SetNo set, int key); // Enter goes to the next box, at the end to OK
void NoiseFormLostFocus(SetNo set);        // a negative number is told and takes the focus back

void NoiseFormFromFitButton(); // each set's rms in the fit that stands, at most 10 to 1
void NoiseFormNoneButton();
void NoiseFormOkButton(); // closes, unless some sets have a noise and others have none, which is told
void NoiseFormCancelButton();

} // namespace Quillon
