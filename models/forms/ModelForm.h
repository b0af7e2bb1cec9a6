#pragma once
// The model dialog as data: the list of models, the two options that change them, OK and Cancel.
//
// The choice stays in the form until OK writes it to the workspace; whether it stands is for SelectModel to
// say, which shows the form again when it does not.

#include "models/forms/DialogAnswer.h"
#include "platform/Controls.h"

#include <cstdint>
#include <vector>

namespace Quillon {

inline constexpr const char* ModelFormName = "ModelForm"; // of the form, for the seam

struct ModelFormRecord {
    FormState State;
    // One row for each of Work.ModelCount models, the first at place 0: number, ". " and name. Value is -1 in
    // the chosen row, which has the colour of an entry; a row without a name is hidden.
    std::vector<Control> ModelRow;
    int RowPitch = 0; // twips from row to row
    Control Ideal, NonIdeal;
    Control SameK, UniqueK;
    Control OkButton, CancelButton;
    DialogAnswer Answer = DialogAnswer::Ok;
    std::int16_t ChosenModel = 0; // number of the chosen row
};

extern ModelFormRecord ModelForm;

// Fills the form from the workspace, with its focus on the row of the current model.
void LoadModelForm();

void ModelFormRowClick(std::int16_t model);       // chooses a row; one without a name cannot be chosen
void ModelFormRowDoubleClick(std::int16_t model); // chooses it and presses OK
void ModelFormKeyUp();                            // the next row above that can be chosen
void ModelFormKeyDown();                          // the next row below

void ModelFormNonIdealClick(bool nonIdeal);   // "Ideal" or "Non-ideal"
void ModelFormSeparateKClick(bool separateK); // the same constants for all sets, or each set its own

void ModelFormOkButton();     // writes Work.Model, Work.NonIdeal and Work.SeparateK and closes
void ModelFormCancelButton(); // closes; closing the window is the same

} // namespace Quillon
