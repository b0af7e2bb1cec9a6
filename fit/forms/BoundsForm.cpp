#include "fit/forms/BoundsForm.h"

#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "models/table/ParmScale.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

BoundsFormRecord BoundsForm;

namespace {

std::size_t Place(int row) {
    return static_cast<std::size_t>(row);
}
std::size_t Side(BoundSide side) {
    return side == BoundSide::Lower ? 0 : 1;
}

Control& Field(BoundSide side, int row) {
    return side == BoundSide::Lower ? BoundsForm.LowerB[Place(row)] : BoundsForm.UpperB[Place(row)];
}

std::string BoundText(BoundSide side, int row) {
    return ParmText(SlotNo(row), Work.Bounds[Side(side)][SlotNo(row)]);
}

void ShowPage() {
    for (int row = 0; row < BoundsForm.Layout.Rows; ++row) {
        const bool shown = BoundsForm.Layout.PageOf(row) == BoundsForm.Page;
        for (auto* controls : {&BoundsForm.ParameterName, &BoundsForm.LowerB, &BoundsForm.UpperB})
            (*controls)[Place(row)].Visible = shown;
    }
    BoundsForm.Page2.Visible = BoundsForm.Layout.Paged();
    BoundsForm.Page2.Text = BoundsForm.Page == 0 ? "Page &2" : "Page &1";
}

void FillRow(int row) {
    BoundsForm.ParameterName[Place(row)].Text = ParmCaption(SlotNo(row));
    for (const BoundSide side : {BoundSide::Lower, BoundSide::Upper})
        Field(side, row).Text = BoundText(side, row);
}

// From the lower bound to the upper one, then to the next row; behind the last to OK.
void GoBehind(BoundSide side, int row) {
    if (side == BoundSide::Lower)
        BoundsForm.State.FocusOn = &Field(BoundSide::Upper, row);
    else if (row + 1 < BoundsForm.Layout.Last(BoundsForm.Page))
        BoundsForm.State.FocusOn = &Field(BoundSide::Lower, row + 1);
    else
        BoundsForm.State.FocusOn = &BoundsForm.OkButton;
}

} // namespace

void LoadBoundsForm() {
    const RowLayout layout = BoundsForm.Layout; // the room on the screen outlasts a showing
    BoundsForm = BoundsFormRecord{};
    BoundsForm.State.Caption = Work.ProgramName + " - Parameter Bounds";
    BoundsForm.ParameterHead.Text = "Parameter:";
    BoundsForm.LowerHead.Text = "Lower Bound:";
    BoundsForm.UpperHead.Text = "Upper Bound:";
    BoundsForm.OkButton.Text = "OK";
    BoundsForm.CancelButton.Text = "&Cancel";
    BoundsForm.Layout = layout;
    BoundsForm.Layout.Rows = Work.NumParms;
    const auto n = static_cast<std::size_t>(Work.NumParms);
    BoundsForm.ParameterName.resize(n);
    BoundsForm.LowerB.resize(n);
    BoundsForm.UpperB.resize(n);
    for (int row = 0; row < Work.NumParms; ++row)
        FillRow(row);
    ShowPage();
    BoundsForm.State.FocusOn = &BoundsForm.LowerB[0];
    BoundsForm.State.Shown = true;
}

void BoundsFormGotFocus(BoundSide side, int row) {
    NumGotFocus(Field(side, row));
}

int BoundsFormKeyPress(BoundSide side, int row, int key) {
    if (key == KeyReturn || key == KeyTab) GoBehind(side, row);
    return NumberBoxKey(Field(side, row), key);
}

void BoundsFormLostFocus(BoundSide side, int row) {
    Control& field = Field(side, row);
    if (!BoundsForm.State.Shown) return NumLostFocus(field); // the form goes
    // An unaltered field keeps the digits that its picture does not show.
    if (LeaveNumberBox(field, BoundText(side, row)) != BoxLeft::Altered) return;
    // [decision: crossed-bounds]
    Work.Bounds[Side(side)][SlotNo(row)] = NumValue(field.Text);
    field.Text = BoundText(side, row);
}

void BoundsFormOkButton() {
    BoundsForm.State.Shown = false;
}

void BoundsFormCancelButton() {
    BoundsForm.Answer = DialogAnswer::Cancel;
    BoundsForm.State.Shown = false;
}

void BoundsFormPage2() {
    BoundsForm.Page = 1 - BoundsForm.Page;
    ShowPage();
    BoundsForm.State.FocusOn = &BoundsForm.LowerB[Place(BoundsForm.Layout.First(BoundsForm.Page))];
}

void BoundsDialog() {
    const auto kept = Work.Bounds;
    LoadBoundsForm();
    Host.ShowModal(BoundsFormName);
    ForgetTakenBack();
    if (BoundsForm.Answer == DialogAnswer::Cancel) Work.Bounds = kept;
}

} // namespace Quillon
