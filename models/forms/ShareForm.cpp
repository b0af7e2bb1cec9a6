#include "models/forms/ShareForm.h"

#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "models/function/SharedConcentrations.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

ShareFormRecord ShareForm;

namespace {

constexpr LinkWords ShareWords{"Enter the data set # whose concentrations this set shares",
                               "Share Concentrations", "A set has its own concentrations anyway."};

bool LeaveShare(SetNo set) {
    return LeaveLinkBox(ShareForm.Boxes, set, ShareForm.State, ShareWords);
}

void NameShareControls() {
    ShareForm.State.Caption = "Share Concentrations";
    ShareForm.Head = Captioned(
        "Data set number X sees the same molecules as set Y, so that its concentrations are those of "
        "set Y at the same radius: (enter 0 or space to remove a tie)");
    ShareForm.XLabel = Captioned("Set X:");
    ShareForm.YLabel = Captioned("Set Y:");
    ShareForm.OkButton = Captioned("&OK");
    ShareForm.ProposeButton = Captioned(
        "&Propose", "Ties sets of one cell, channel and speed whose wavelengths are 5 nm or more apart");
    ShareForm.CancelButton = Captioned("&Cancel All Ties");
    ShareForm.ResetButton = Captioned("&Return to Previous Ties");
}

void TakeProposal() {
    const std::vector<ConcentrationTie> ties = ProposedTies();
    ShareForm.Boxes.Links.Recreate(Work.NumSets);
    for (const ConcentrationTie& tie : ties)
        ShareForm.Boxes.Links[tie.Follower] = ToInt16(tie.Leader.Number);
    ShareForm.Note.Text =
        ties.empty()
            ? "There is nothing to propose: no two sets are of one cell, channel and speed and of "
              "wavelengths 5 nm or more apart."
            : "Proposed: sets of one cell, channel and speed whose wavelengths are 5 nm or more apart. "
              "OK ties them.";
    ShowLinks(ShareForm.Boxes);
}

bool AnyLink() {
    const auto& links = ShareForm.Boxes.Links;
    return std::any_of(links.begin(), links.end(), [](std::int16_t link) { return link != 0; });
}

void ShowFormerLinks() {
    ShareForm.Note.Text.clear();
    ResetLinks(ShareForm.Boxes);
}

} // namespace

void LoadShareForm() {
    ShareForm = ShareFormRecord{};
    NameShareControls();
    ShareForm.Boxes = LoadLinkBoxes(Work.ConcLink, ShareWords);
    if (!AnyLink()) TakeProposal();
    ShareForm.State.FocusOn = &FirstLinkBox(ShareForm.Boxes, ShareForm.OkButton);
    ShareForm.State.Shown = true;
}

void ShareFormGotFocus(SetNo set) {
    NumGotFocus(LinkBoxOf(ShareForm.Boxes, set));
}

int ShareFormKeyPress(SetNo set, int key) {
    return LinkBoxKey(ShareForm.Boxes, set, key, ShareForm.State, ShareForm.OkButton);
}

void ShareFormLostFocus(SetNo set) {
    LeaveShare(set);
}

void ShareFormProposeButton() {
    ForgetTakenBack();
    TakeProposal();
}

void ShareFormCancelButton() {
    ShareForm.Note.Text.clear();
    ClearLinks(ShareForm.Boxes);
}

void ShareFormResetButton() {
    ShowFormerLinks();
}

void ShareFormOkButton() {
    AcceptLinkBoxes(ShareForm.Boxes, ShareForm.State, ShareWords);
}

void ShareFormClose() {
    ShowFormerLinks();
    ShareForm.State.Shown = false;
}

void ShareConcentrationsDialog() {
    LoadShareForm();
    Host.ShowModal(ShareFormName);
    ForgetTakenBack();
    StoreLinks(ShareForm.Boxes, Work.ConcLink);
}

} // namespace Quillon
