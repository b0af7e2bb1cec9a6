#include "models/forms/BaseForm.h"

#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "models/table/Catalogue.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

namespace Quillon {

BaseFormRecord BaseForm;

namespace {

constexpr LinkWords Words{"Enter the data set # to which this set's zero offset will be linked",
                          "BaseLine Constraints"};

bool LeaveBox(SetNo set) {
    return LeaveLinkBox(BaseForm.Boxes, set, BaseForm.State, Words);
}

void NameControls() {
    BaseForm.State.Caption = "Set Zero Offset Constraints";
    BaseForm.Head =
        Captioned("Constrain the baseline zero offset for data set number X to be the same as that of set Y: "
                  "(enter 0 or space to remove a constraint)");
    BaseForm.XLabel = Captioned("Set X:");
    BaseForm.YLabel = Captioned("Set Y:");
    BaseForm.OkButton = Captioned("&OK");
    BaseForm.CancelButton = Captioned("&Cancel All Constraints");
    BaseForm.ResetButton = Captioned("&Return to Previous Constraints");
}

void TakeLinks() {
    const bool any = StoreLinks(BaseForm.Boxes, Work.OffsetLink);
    Work.ConstraintFlags =
        ToInt16((Work.ConstraintFlags & ConcentrationBit) | (any ? OffsetBit : std::int16_t{0}));
}

} // namespace

std::string OffsetConstraintRefusal() {
    if (!OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0)) return "";
    return "You cannot have baseline constraints with a model with unique association constants for each "
           "data set, since such a model doesn't use zero offsets!";
}

void LoadBaseForm() {
    BaseForm = BaseFormRecord{};
    NameControls();
    BaseForm.Boxes = LoadLinkBoxes(Work.OffsetLink, Words);
    BaseForm.State.FocusOn = &FirstLinkBox(BaseForm.Boxes, BaseForm.OkButton);
    BaseForm.State.Shown = true;
}

void BaseFormGotFocus(SetNo set) {
    NumGotFocus(LinkBoxOf(BaseForm.Boxes, set));
}

int BaseFormKeyPress(SetNo set, int key) {
    return LinkBoxKey(BaseForm.Boxes, set, key, BaseForm.State, BaseForm.OkButton);
}

void BaseFormLostFocus(SetNo set) {
    LeaveBox(set);
}

void BaseFormCancelButton() {
    ClearLinks(BaseForm.Boxes);
}

void BaseFormResetButton() {
    ResetLinks(BaseForm.Boxes);
}

void BaseFormOkButton() {
    AcceptLinkBoxes(BaseForm.Boxes, BaseForm.State, Words);
}

void BaseConstraintDialog() {
    LoadBaseForm();
    Host.ShowModal(BaseFormName);
    ForgetTakenBack();
    TakeLinks();
}

} // namespace Quillon
