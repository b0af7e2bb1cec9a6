#include "fit/forms/NoiseForm.h"

#include "fit/equations/NoiseWeights.h"
#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

NoiseFormRecord NoiseForm;

namespace {

std::size_t PlaceOf(SetNo set) {
    return static_cast<std::size_t>(set.Number - 1);
}

void ShowNoise() {
    for (const SetNo set : EachSet())
        NoiseFormBox(set).Text = SingleText(NoiseForm.Noise[PlaceOf(set)]);
}

std::string RmsText(const PerRow<float>& noises, SetNo set) {
    return FormatNumber(static_cast<double>(noises[RowOf(set)]), "0.000E-00");
}

void FillSets() {
    const PerRow<float> rms = Work.FitValid ? NoisesOfFit() : PerRow<float>(Work.MaxSets);
    for (const SetNo set : EachSet()) {
        NoiseForm.SetLabel.push_back(
            Captioned("Set " + std::to_string(set.Number) + ": " + Work.SetLabel[set]));
        NoiseForm.NoiseInput.push_back(Captioned("", "Standard deviation of a reading, in signal units"));
        NoiseForm.RmsLabel.push_back(Captioned(Work.FitValid ? RmsText(rms, set) : ""));
        NoiseForm.Noise.push_back(Work.SetNoise[RowOf(set)]);
    }
}

void NameControls() {
    NoiseForm.State.Caption = "Noise of Data Sets";
    NoiseForm.Note =
        Captioned("Sets are weighted by the inverse square of their noise. Without any, or with the same "
                  "for all, all points count alike. Fit again after a change.");
    NoiseForm.NoiseHead = Captioned("Noise (signal units)");
    NoiseForm.RmsHead = Captioned("RMS of the fit, at most 10 to 1");
    NoiseForm.FromFitButton =
        Captioned("&From the Fit", "Each set's root mean square in the fit that stands");
    NoiseForm.NoneButton = Captioned("&None", "All points count alike");
    NoiseForm.OkButton = Captioned("OK");
    NoiseForm.CancelButton = Captioned("&Cancel");
}

bool Refuse(SetNo set, const std::string& message) {
    Host.Beep();
    Tell(message, Work.ProgramName, BoxIcon::Warning);
    NoiseForm.State.FocusOn = &NoiseFormBox(set);
    return false;
}

// Leaves a box; false when its number is refused, which has then been told.
bool LeaveBox(SetNo set) {
    Control& box = NoiseFormBox(set);
    float& noise = NoiseForm.Noise[PlaceOf(set)];
    if (LeaveNumberBox(box, SingleText(noise)) != BoxLeft::Altered) return true;
    const float typed = NumValue(box.Text);
    if (typed < 0.0F) return Refuse(set, "A noise is above 0, or 0 for none.");
    noise = typed;
    box.Text = SingleText(noise);
    return true;
}

// For every set or for none.
bool AreComplete() {
    const auto& noise = NoiseForm.Noise;
    const auto given = std::count_if(noise.begin(), noise.end(), [](float n) { return n > 0.0F; });
    if (given == 0 || given == std::ssize(noise)) return true;
    const auto missing = std::find(noise.begin(), noise.end(), 0.0F) - noise.begin();
    return Refuse(SetNo(missing + 1), "Give a noise for every set, or for none.");
}

void TakeNoise() {
    const PerRow<float> before = Work.SetNoise;
    for (const SetNo set : EachSet())
        Work.SetNoise[RowOf(set)] = NoiseForm.Noise[PlaceOf(set)];
    NoiseForm.Changed = !(before == Work.SetNoise);
    if (!NoiseForm.Changed) return;
    Work.FitDone = Work.LimitsDone = FlagFalse;
    Work.Outcome = FitOutcome{};
}

} // namespace

Control& NoiseFormBox(SetNo set) {
    return NoiseForm.NoiseInput[PlaceOf(set)];
}

void LoadNoiseForm() {
    NoiseForm = NoiseFormRecord{};
    NameControls();
    FillSets();
    ShowNoise();
    NoiseForm.FromFitButton.Enabled = Work.FitValid != 0;
    if (!NoiseForm.NoiseInput.empty()) NoiseForm.State.FocusOn = &NoiseForm.NoiseInput.front();
    NoiseForm.State.Shown = true;
}

void NoiseDialog() {
    LoadNoiseForm();
    Host.ShowModal(NoiseFormName);
}

void NoiseFormGotFocus(SetNo set) {
    NumGotFocus(NoiseFormBox(set));
}

int NoiseFormKeyPress(SetNo set, int key) {
    if (key == KeyReturn)
        NoiseForm.State.FocusOn = set < SetNo(Work.NumSets) ? &NoiseFormBox(set + 1) : &NoiseForm.OkButton;
    return NumberBoxKey(NoiseFormBox(set), key);
}

void NoiseFormLostFocus(SetNo set) {
    LeaveBox(set);
}

void NoiseFormFromFitButton() {
    if (!Work.FitValid) return;
    const PerRow<float> noises = NoisesOfFit();
    for (const SetNo set : EachSet())
        NoiseForm.Noise[PlaceOf(set)] = noises[RowOf(set)];
    ShowNoise();
}

void NoiseFormNoneButton() {
    std::fill(NoiseForm.Noise.begin(), NoiseForm.Noise.end(), 0.0F);
    ShowNoise();
}

void NoiseFormOkButton() {
    for (const SetNo set : EachSet()) // the one that has the focus still holds what was typed
        if (!LeaveBox(set)) return;
    if (!AreComplete()) return;
    TakeNoise();
    NoiseForm.State.Shown = false;
}

void NoiseFormCancelButton() {
    NoiseForm.State.Shown = false;
}

} // namespace Quillon
