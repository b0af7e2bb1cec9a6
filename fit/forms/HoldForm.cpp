#include "fit/forms/HoldForm.h"

#include "fit/Undetermined.h"
#include "fit/equations/FreeMap.h"
#include "fit/forms/GuessesDialog.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

HoldFormRecord HoldForm;

namespace {

// How many have to be held so that a point more is left than there are parameters; 0 or less for none.
long TooMany() {
    return static_cast<long>(Work.NumFree) - static_cast<long>(Work.NumPts) + 1;
}

std::string CountText() {
    return Counted(Work.NumPts, "point") + ", " + Counted(Work.NumFree, "fitted parameter") +
           ": hold at least " + std::to_string(std::min<long>(TooMany(), Work.NumFree)) + ".";
}

std::string NoteOf(const std::vector<FreePos>& places) {
    std::string note = TooMany() > 0 ? CountText() : "";
    if (!places.empty()) note += (note.empty() ? "" : "\n") + WithoutEffectText(places);
    return note;
}

void AddRow(SlotNo slot, bool marked) {
    HoldForm.Slots.push_back(slot);
    HoldForm.HoldCheck.push_back(
        Captioned(Work.ParmName[slot], "Marked: held at its value. Not marked: fitted"));
    HoldForm.HoldCheck.back().Value = marked ? 1 : 0;
}

void AddRows(const std::vector<FreePos>& places) {
    const auto listed = [&](FreePos a) { return std::find(places.begin(), places.end(), a) != places.end(); };
    for (const FreePos a : places)
        AddRow(SlotOf(a), true);
    for (const FreePos a : EachFree())
        if (TooMany() > 0 && !listed(a)) AddRow(SlotOf(a), false);
}

bool IsMarked(SlotNo slot) {
    for (std::size_t i = 0; i < HoldForm.Slots.size(); ++i)
        if (HoldForm.Slots[i] == slot) return HoldForm.HoldCheck[i].Value != 0;
    return false;
}

bool IsAnyMarked() {
    return std::any_of(HoldForm.HoldCheck.begin(), HoldForm.HoldCheck.end(),
                       [](const Control& check) { return check.Value != 0; });
}

void Leave(HoldAnswer answer) {
    HoldForm.Answer = answer;
    HoldForm.State.Shown = false;
}

} // namespace

bool LoadHoldForm() {
    const std::vector<FreePos> places = PlacesWithoutEffect();
    HoldForm = HoldFormRecord{};
    HoldForm.State.Caption = "Before the Fit";
    HoldForm.Note = Captioned(NoteOf(places));
    if (HoldForm.Note.Text.empty()) return false;
    AddRows(places);
    HoldForm.HoldButton =
        Captioned("&Hold and Fit", "Holds what is marked at its value, and fits the others");
    HoldForm.FitButton = Captioned("Fit as &Chosen", "Fits what was chosen, though it will hardly end well");
    HoldForm.CancelButton = Captioned("Cancel", "No fit");
    HoldFormCheck(0);
    HoldForm.State.Shown = true;
    return true;
}

HoldAnswer HoldDialog() {
    if (LoadHoldForm()) Host.ShowModal(HoldFormName);
    return HoldForm.Answer;
}

void HoldFormCheck(int) {
    HoldForm.HoldButton.Enabled = IsAnyMarked();
}

void HoldFormHoldButton() {
    if (!HoldForm.HoldButton.Enabled) return;
    std::vector<FitChoice> choices = FitChoices();
    for (FitChoice& choice : choices)
        if (choice.Check == FitCheckYes && IsMarked(choice.Slot)) choice.Check = FitCheckNo;
    if (TakeFitChoices(choices)) Leave(HoldAnswer::HoldAndFit);
}

void HoldFormFitButton() {
    Leave(HoldAnswer::FitAsChosen);
}

void HoldFormCancelButton() {
    Leave(HoldAnswer::Cancel);
}

} // namespace Quillon
