#include "models/forms/ModelForm.h"

#include "models/table/Catalogue.h"
#include "platform/FormControls.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

ModelFormRecord ModelForm;

namespace {

// A longer list stands closer.
int RowPitchOf(int rows) {
    return rows > 20 ? 300 : rows > 14 ? 330 : 360;
}

bool IsListed(int model) {
    return static_cast<std::size_t>(model - 1) < ModelForm.ModelRow.size(); // what is below 0 is far behind
}

bool CanBeChosen(int model) {
    return IsListed(model) && ModelForm.ModelRow[static_cast<std::size_t>(model - 1)].Enabled;
}

void ChooseRow(std::int16_t model) {
    ModelForm.ChosenModel = model;
    for (std::size_t i = 0; i < ModelForm.ModelRow.size(); ++i) {
        Control& row = ModelForm.ModelRow[i];
        const bool chosen = static_cast<int>(i) == model - 1;
        row.Value = Flag(chosen);
        row.ForeColor = chosen ? Work.EditBackColor : DefaultColor;
        if (chosen) ModelForm.State.FocusOn = &row;
    }
}

void ChooseNextRow(int direction) {
    int model = ModelForm.ChosenModel + direction;
    while (IsListed(model) && !CanBeChosen(model))
        model += direction;
    if (CanBeChosen(model)) ChooseRow(ToInt16(model));
}

void FillRows() {
    for (long i = 1; i <= Work.ModelName.Hi(); ++i) {
        Control row = Captioned(std::to_string(i) + ". " + Work.ModelName[i]);
        row.Enabled = row.Visible = !Work.ModelName[i].empty();
        ModelForm.ModelRow.push_back(row);
    }
    ModelForm.RowPitch = RowPitchOf(Work.ModelCount);
}

} // namespace

void LoadModelForm() {
    ModelForm = ModelFormRecord{};
    ModelForm.State.Caption = "Select Model";
    FillModelNames();
    FillRows();
    ModelForm.Ideal = Captioned("&Ideal");
    ModelForm.NonIdeal = Captioned("&Non-ideal");
    ModelForm.SameK = Captioned("&Same K(1>N) and K(AB) for all sets");
    ModelForm.UniqueK = Captioned("&Unique K(1>N) or K(AB) for each set");
    ModelForm.OkButton = Captioned("&OK");
    ModelForm.CancelButton = Captioned("&Cancel");
    ModelFormNonIdealClick(Work.NonIdeal != 0);
    ModelFormSeparateKClick(Work.SeparateK != 0);
    ChooseRow(CanBeChosen(Work.Model) ? Work.Model : std::int16_t{1});
    ModelForm.State.Shown = true;
}

void ModelFormRowClick(std::int16_t model) {
    if (CanBeChosen(model)) ChooseRow(model);
}

void ModelFormRowDoubleClick(std::int16_t model) {
    if (!CanBeChosen(model)) return;
    ChooseRow(model);
    ModelFormOkButton();
}

void ModelFormKeyUp() {
    ChooseNextRow(-1);
}

void ModelFormKeyDown() {
    ChooseNextRow(1);
}

void ModelFormNonIdealClick(bool nonIdeal) {
    ModelForm.Ideal.Value = Flag(!nonIdeal);
    ModelForm.NonIdeal.Value = Flag(nonIdeal);
}

void ModelFormSeparateKClick(bool separateK) {
    ModelForm.SameK.Value = Flag(!separateK);
    ModelForm.UniqueK.Value = Flag(separateK);
}

void ModelFormOkButton() {
    Work.Model = ModelForm.ChosenModel;
    Work.NonIdeal = ModelForm.NonIdeal.Value;
    Work.SeparateK = ModelForm.UniqueK.Value;
    ModelForm.State.Shown = false;
}

void ModelFormCancelButton() {
    ModelForm.Answer = DialogAnswer::Cancel;
    ModelForm.State.Shown = false;
}

} // namespace Quillon
