#include "scandata/reader/ExtinctionForm.h"

#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "scandata/reader/ExtinctionRatios.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

ExtinctionFormRecord ExtinctionForm;

namespace {

RowNo RowInHand() {
    return RowNo(Work.CurrentRow + 1);
}

std::string RatioText(std::size_t species) {
    return FormatNumber(static_cast<double>(Work.ExtinctionRatio[species][RowInHand()]), "##0.0000");
}
void ShowRatio(std::size_t species) {
    ExtinctionForm.ExtinctionInput[species].Text = RatioText(species);
}

} // namespace

void LoadExtinctionForm() {
    ExtinctionForm = ExtinctionFormRecord{};
    ExtinctionForm.State.Caption = "Input Relative Extinction Coefficients";
    ExtinctionForm.Label2.Text = "Relative extinction at " + SingleText(Work.ScanWavelength[RowInHand()]) +
                                 " nm to that at " + SingleText(Work.ScanWavelength[1]) + " nm";
    ExtinctionForm.Head[0].Text = "Species A";
    ExtinctionForm.Head[1].Text = "Species B (if present)";
    ExtinctionForm.OkButton.Text = "OK";
    AdoptKnownRatios(RowInHand());
    ShowRatio(0);
    ShowRatio(1);
    ExtinctionForm.State.FocusOn = &ExtinctionForm.ExtinctionInput[0];
    ExtinctionForm.State.Shown = true;
}

void ShowExtinctionForm() {
    LoadExtinctionForm();
    Host.ShowModal(ExtinctionFormName);
}

void ExtinctionGotFocus(std::size_t species) {
    NumGotFocus(ExtinctionForm.ExtinctionInput[species]);
}

int ExtinctionKeyPress(std::size_t species, int key) {
    const bool leads = key == KeyTab || key == KeyReturn || key == KeyEscape;
    if (leads && species == 0) ExtinctionForm.State.FocusOn = &ExtinctionForm.ExtinctionInput[1];
    if (leads && species == 1) ExtinctionOkButton();
    return NumKeyPress(ExtinctionForm.ExtinctionInput[species], key);
}

void ExtinctionLostFocus(std::size_t species) {
    Control& field = ExtinctionForm.ExtinctionInput[species];
    NumLostFocus(field);
    float& ratio = Work.ExtinctionRatio[species][RowInHand()];
    if (field.Text != RatioText(species)) { // else it keeps the digits that the picture does not show
        ratio = NumValue(field.Text);
        Work.SetChanged[RowInHand()] = FlagTrue;
    }
    ShowRatio(species);
    if (ratio > 0.0F) return;
    Host.Beep();
    Tell("You must enter a positive, non-zero value for the extinction ratio", Work.ProgramName,
         BoxIcon::Warning);
    ExtinctionForm.State.FocusOn = &field;
}

void ExtinctionOkButton() {
    for (const std::size_t species : {std::size_t{0}, std::size_t{1}}) {
        Control& field = ExtinctionForm.ExtinctionInput[species];
        if (field.Text != RatioText(species)) ExtinctionLostFocus(species); // it still has the focus
        if (Work.ExtinctionRatio[species][RowInHand()] > 0.0F) continue;
        ExtinctionForm.State.FocusOn = &field; // told when the field was left
        return;
    }
    ExtinctionForm.State.Shown = false;
}

} // namespace Quillon
