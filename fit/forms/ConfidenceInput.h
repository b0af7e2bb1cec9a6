#pragma once
// The form "Probability for Confidence Intervals" as data.

#include "platform/Controls.h"

namespace Quillon {

inline constexpr const char* ConfidenceInputName = "ConfidenceInput"; // of the form, for the seam

struct ConfidenceInputForm {
    FormState State;
    Control LevelLabel, LevelInput;
    Control OkButton, CancelButton;
};
extern ConfidenceInputForm ConfidenceInput;

// The command. Limits at hand stay until the next search.
void ConfidenceDialog();

void LoadConfidenceInput();
void ConfidenceInputGotFocus();
int ConfidenceInputKeyPress(int key);
void ConfidenceInputLostFocus(); // refuses what is no probability
void ConfidenceInputOkButton();  // stores it, unless it is refused
void ConfidenceInputCancelButton();

} // namespace Quillon
