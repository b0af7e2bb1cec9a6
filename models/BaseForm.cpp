#include "models/BaseForm.h"

#include "input/NUMINPUT.h"
#include "models/Catalogue.h"
#include "models/FormControls.h"
#include "models/NumberBox.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <cmath>

namespace Quillon {

BaseFormRecord BaseForm;

namespace {

Control& LinkBox(long set) {
    return BaseForm.LinkNum.at(static_cast<std::size_t>(set - 1));
}

std::string LinkText(long set) {
    return BaseForm.Links[set] == 0 ? "" : std::to_string(BaseForm.Links[set]);
}

void ShowLinks() {
    for (long set = 1; set <= Work.NumSets; ++set)
        LinkBox(set).Text = LinkText(set);
}

// A set that copies its offset has none of its own to give.
bool MakesChain(long set, long other) {
    if (BaseForm.Links[other] != 0) return true;
    for (long s = 1; s <= Work.NumSets; ++s)
        if (s != set && BaseForm.Links[s] == set) return true;
    return false;
}

// Leaves a box; false when its link is refused, which has then been told.
bool LeaveBox(long set) {
    Control& box = LinkBox(set);
    if (LeaveNumberBox(box, LinkText(set)) != BoxLeft::Altered) return true;
    const float number = std::nearbyint(NumValue(box.Text));
    if (number < 0.0F || number > static_cast<float>(Work.NumSets)) {
        Host.Beep();
        Tell("Invalid data set number entered!", Work.ProgramName, BoxIcon::Warning);
        BaseForm.State.FocusOn = &box;
        return false;
    }
    const std::int16_t former = BaseForm.Links[set];
    const std::int16_t other = ToInt16(static_cast<double>(number));
    BaseForm.Links[set] = 0;
    const bool chain = other != 0 && MakesChain(set, other);
    BaseForm.Links[set] = chain ? former : other;
    if (chain)
        Tell("You cannot link this set to a set already linked!", "BaseLine Constraints", BoxIcon::Warning);
    box.Text = LinkText(set);
    return !chain;
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

void MakeRows() {
    BaseForm.Links.Recreate(Work.NumSets);
    for (long set = 1; set <= Work.NumSets; ++set) {
        BaseForm.SetNumber.push_back(Captioned(std::to_string(set)));
        BaseForm.SetName.push_back(Captioned(Work.SetLabel[set]));
        BaseForm.LinkNum.push_back(
            Captioned("", "Enter the data set # to which this set's zero offset will be linked"));
        const long link = Work.OffsetLink[Work.SetRow[set]];
        if (link > 0) BaseForm.Links[set] = Work.SetOfRow[link];
    }
    BaseForm.OldLinks = BaseForm.Links;
}

void StoreLinks() {
    bool any = false;
    for (long set = 1; set <= Work.NumSets; ++set) {
        const long other = BaseForm.Links[set];
        Work.OffsetLink[Work.SetRow[set]] = other == 0 ? std::int16_t{0} : Work.SetRow[other];
        any |= other != 0;
    }
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
    MakeRows();
    ShowLinks();
    BaseForm.State.FocusOn = BaseForm.LinkNum.empty() ? &BaseForm.OkButton : &BaseForm.LinkNum.front();
    BaseForm.State.Shown = true;
}

void BaseFormGotFocus(long set) {
    NumGotFocus(LinkBox(set));
}

int BaseFormKeyPress(long set, int key) {
    Control& box = LinkBox(set);
    if (key == KeyReturn)
        BaseForm.State.FocusOn = set < Work.NumSets ? &LinkBox(set + 1) : &BaseForm.OkButton;
    if (key != ' ') return WholeNumberBoxKey(box, key);
    box.Text.clear();
    box.SelStart = box.SelLength = 0;
    FreshField = FlagTrue;
    return 0;
}

void BaseFormLostFocus(long set) {
    LeaveBox(set);
}

void BaseFormCancelButton() {
    Work.AbortFit = FlagFalse;
    BaseForm.Links.Recreate(Work.NumSets);
    ShowLinks();
}

void BaseFormResetButton() {
    Work.AbortFit = FlagFalse;
    BaseForm.Links = BaseForm.OldLinks;
    ShowLinks();
}

void BaseFormOkButton() {
    if (Work.AbortFit) { // Esc in the box that Enter then left
        Work.AbortFit = FlagFalse;
        ShowLinks();
    }
    for (long set = 1; set <= Work.NumSets; ++set)
        if (!LeaveBox(set)) return;
    BaseForm.State.Shown = false;
}

void BaseConstraintDialog() {
    LoadBaseForm();
    Host.ShowModal(BaseFormName);
    Work.AbortFit = FlagFalse;
    StoreLinks();
}

} // namespace Quillon
