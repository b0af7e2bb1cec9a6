#pragma once
// The form "Parameter Bounds" as data: lower and upper bound of every parameter in user units. A crossed pair
// is taken as entered. Rows count from 0 and are the parameter slots.

#include "fit/forms/RowLayout.h"
#include "models/forms/DialogAnswer.h"
#include "platform/Controls.h"

#include <vector>

namespace Quillon {

inline constexpr const char* BoundsFormName = "BoundsForm"; // of the form, for the seam

struct BoundsFormRecord {
    FormState State;
    std::vector<Control> ParameterName, LowerB, UpperB;
    Control ParameterHead, LowerHead, UpperHead;
    Control OkButton, CancelButton, Page2;
    DialogAnswer Answer = DialogAnswer::Ok;
    RowLayout Layout;
    int Page = 0;
};
extern BoundsFormRecord BoundsForm;

enum class BoundSide { Lower, Upper };

// The command: shows the form; a cancel brings all bounds back.
void BoundsDialog();

void LoadBoundsForm();
void BoundsFormGotFocus(BoundSide side, int row);
int BoundsFormKeyPress(BoundSide side, int row, int key);
void BoundsFormLostFocus(BoundSide side, int row); // stores the bound
void BoundsFormOkButton();
void BoundsFormCancelButton();
void BoundsFormPage2();

} // namespace Quillon
