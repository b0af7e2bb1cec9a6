#include "fit/forms/ConfidenceInput.h"

#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

ConfidenceInputForm ConfidenceInput;

namespace {

std::string LevelText() {
    return FormatNumber(static_cast<double>(Work.ConfidenceLevel), "0.0000");
}

// Neither certainty nor impossibility bounds a region.
bool IsProbability(float p) {
    return p > 0.0F && p < 1.0F;
}

bool Refused() {
    if (IsProbability(NumValue(ConfidenceInput.LevelInput.Text))) return false;
    Tell("Input must be between 0 and 1", Work.ProgramName, BoxIcon::Warning);
    ConfidenceInput.State.FocusOn = &ConfidenceInput.LevelInput;
    return true;
}

} // namespace

void LoadConfidenceInput() {
    ConfidenceInput = ConfidenceInputForm{};
    ConfidenceInput.State.Caption = "Probability for Confidence Intervals";
    ConfidenceInput.LevelLabel.Text = "&Probability (0-1):";
    ConfidenceInput.LevelInput.Text = LevelText();
    ConfidenceInput.OkButton.Text = "OK";
    ConfidenceInput.CancelButton.Text = "&Cancel";
    ConfidenceInput.State.FocusOn = &ConfidenceInput.LevelInput;
    ConfidenceInput.State.Shown = true;
}

void ConfidenceInputGotFocus() {
    NumGotFocus(ConfidenceInput.LevelInput);
}

int ConfidenceInputKeyPress(int key) {
    if (key == KeyEscape) ConfidenceInputCancelButton();
    if (key == KeyReturn) ConfidenceInputOkButton();
    if (key == KeyTab) ConfidenceInput.State.FocusOn = &ConfidenceInput.OkButton;
    return NumKeyPress(ConfidenceInput.LevelInput, key);
}

void ConfidenceInputLostFocus() {
    NumLostFocus(ConfidenceInput.LevelInput);
    if (ConfidenceInput.State.Shown) Refused();
}

void ConfidenceInputOkButton() {
    if (ConfidenceInput.LevelInput.Text != LevelText()) {
        if (Refused()) return;
        Work.ConfidenceLevel = NumValue(ConfidenceInput.LevelInput.Text);
    }
    ConfidenceInput.State.Shown = false;
}

void ConfidenceInputCancelButton() {
    ConfidenceInput.State.Shown = false;
}

void ConfidenceDialog() {
    LoadConfidenceInput();
    Host.ShowModal(ConfidenceInputName);
}

} // namespace Quillon
