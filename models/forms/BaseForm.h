#pragma once
// The form "Set Zero Offset Constraints" as data: which set shares the zero offset of which other.
//
// The form works on links by set; the rows of the data set table get them when it closes.

#include "models/forms/LinkBoxes.h"
#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

inline constexpr const char* BaseFormName = "BaseForm"; // of the form, for the seam

struct BaseFormRecord {
    FormState State;
    Control Head, XLabel, YLabel;
    LinkBoxes Boxes; // whose offset each set shares
    Control OkButton, CancelButton, ResetButton;
};

extern BaseFormRecord BaseForm;

// Why the zero offsets cannot be constrained at all, in words; empty when they can. A model whose sets hold a
// constant in the slot of the offset has no offsets. The command that opens the form tells it instead.
std::string OffsetConstraintRefusal();

// The command: loads the form, shows it modally ("BaseForm") and writes the links to Work.OffsetLink and bit
// 2 of Work.ConstraintFlags. The caller then prepares the fit data afresh (BuildFitData) and sets
// Work.NewData to 1.
void BaseConstraintDialog();

void LoadBaseForm(); // fills the form from the workspace

void BaseFormGotFocus(SetNo set);
int BaseFormKeyPress(SetNo set, int key); // digits; a blank empties the box, Enter goes to the next one

// Takes the link, 0 or nothing for none. The number of no set, and a chain (a link to a set that has one
// itself, or of a set that another one follows), are told; the former link then stands.
void BaseFormLostFocus(SetNo set);

void BaseFormCancelButton(); // removes every link; the form stays
void BaseFormResetButton();  // brings back the links held when the form was loaded; the form stays
void BaseFormOkButton();     // takes the boxes as they stand and closes, unless one is refused

} // namespace Quillon
