#pragma once
// The form "Set Zero Offset Constraints" as data: which set shares the zero offset of which other.
//
// The form works on links by set; the rows of the data set table get them when it closes. All control arrays
// have one entry for each fit set, that of set 1 at place 0; functions take the number of the set, from 1.

#include "platform/Arrays.h"
#include "platform/Controls.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* BaseFormName = "BaseForm"; // of the form, for the seam

struct BaseFormRecord {
    FormState State;
    Control Head, XLabel, YLabel;
    std::vector<Control> SetNumber;         // "1", "2", ...
    std::vector<Control> SetName;           // labels of the sets
    std::vector<Control> LinkNum;           // number of the set whose offset is shared; empty for none
    OneBased<std::int16_t> Links, OldLinks; // by set, now and when the form was loaded; 0 for none
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

void BaseFormGotFocus(long set);
int BaseFormKeyPress(long set, int key); // digits; a blank empties the box, Enter goes to the next one

// Takes the link, 0 or nothing for none. The number of no set, and a chain (a link to a set that has one
// itself, or of a set that another one follows), are told; the former link then stands.
void BaseFormLostFocus(long set);

void BaseFormCancelButton(); // removes every link; the form stays
void BaseFormResetButton();  // brings back the links held when the form was loaded; the form stays
void BaseFormOkButton();     // takes the boxes as they stand and closes, unless one is refused

} // namespace Quillon
