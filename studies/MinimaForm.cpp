#include "studies/MinimaForm.h"

#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "models/table/ParmScale.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "studies/methods/OtherMinima.h"
#include "workspace/records/Cancel.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

MinimaFormRecord MinimaForm;

namespace {

RestartChoice Choice; // as the boxes were last left
MinimaMet Met;        // behind the rows of the table

constexpr float LargestSeed = 1e6F; // whole numbers up to here are exact in singles

std::string StoredText(MinimaInput input) {
    return input == MinimaInput::Count ? std::to_string(Choice.Count) : std::to_string(Choice.Seed);
}

bool Refuse(Control& box, const std::string& message) {
    Host.Beep();
    Tell(message, Work.ProgramName, BoxIcon::Warning);
    MinimaForm.State.FocusOn = &box;
    return false;
}

// Leaves a box; false when its number is refused, which has then been told.
bool LeaveBox(MinimaInput input) {
    Control& box = MinimaFormBox(input);
    if (LeaveNumberBox(box, StoredText(input)) != BoxLeft::Altered) return true;
    const float number = std::nearbyint(NumValue(box.Text));
    const bool count = input == MinimaInput::Count;
    const float least = count ? 1.0F : 0.0F;
    const float most = count ? static_cast<float>(LargestRestarts) : LargestSeed;
    if (number < least || number > most)
        return Refuse(box, "Enter a number from " + SingleText(least) + " to " + SingleText(most) + ".");
    if (count)
        Choice.Count = std::lround(number);
    else
        Choice.Seed = static_cast<std::uint64_t>(number);
    box.Text = StoredText(input);
    return true;
}

void NameControls() {
    MinimaForm.State.Caption = "Search for Other Minima";
    MinimaForm.Head = Captioned("Fits from random starts around that of your fit, and the minima that they "
                                "come to. Your fit stays as it is "
                                "until you take another one.");
    MinimaForm.CountLabel = Captioned("&Starts:");
    MinimaForm.CountInput = Captioned(StoredText(MinimaInput::Count), "How many fits are run beside yours");
    MinimaForm.SeedLabel = Captioned("See&d:");
    MinimaForm.SeedInput = Captioned(StoredText(MinimaInput::Seed),
                                     "The same seed gives the same starts; another one gives others");
    MinimaForm.SearchButton = Captioned("&Search");
    MinimaForm.StopButton = Captioned("S&top");
    MinimaForm.TakeButton = Captioned("Ta&ke This Minimum");
    MinimaForm.CloseButton = Captioned("&Close");
}

void NameColumns() {
    MinimaForm.Columns = {"Sum of Squares", "RMS Residual", "Times Met", ""};
    for (const SlotNo slot : MinimumSlots())
        MinimaForm.Columns.push_back(ParmCaption(slot));
}

std::vector<std::string> RowOf(const Minimum& minimum) {
    std::vector<std::string> row = {FormatNumber(minimum.Fit.SumSq, "#.######E-##"),
                                    FormatNumber(static_cast<double>(minimum.Fit.RmsResidual), "#.####E-##"),
                                    std::to_string(minimum.Count), minimum.IsOwn ? "your fit" : ""};
    const std::vector<SlotNo> slots = MinimumSlots();
    for (std::size_t i = 0; i < slots.size(); ++i)
        row.push_back(ParmText(slots[i], minimum.Values[i]));
    return row;
}

// "7 fits: 2 minima, 1 fit ended at none."
std::string FoundText() {
    std::string text =
        Counted(Met.Ended, "fit") + ": " + Counted(static_cast<long>(Met.Minima.size()), "minimum", "minima");
    if (Met.Failed > 0) text += ", " + Counted(Met.Failed, "fit") + " ended at none" + Met.Broken;
    return text + (Met.Complete ? "." : ". Stopped before the end.");
}

void ShowMinima() {
    MinimaForm.Rows.clear();
    for (const Minimum& minimum : Met.Minima)
        MinimaForm.Rows.push_back(RowOf(minimum));
    MinimaForm.Progress.Text = FoundText();
    MinimaFormRow(Met.Minima.empty() ? -1 : 0);
}

void ShowSearching(bool searching) {
    MinimaForm.SearchButton.Enabled = !searching;
    MinimaForm.CountInput.Enabled = MinimaForm.SeedInput.Enabled = !searching;
    MinimaForm.StopButton.Enabled = searching;
    MinimaForm.State.FocusOn = searching ? &MinimaForm.StopButton : &MinimaForm.SearchButton;
}

void Leave() {
    Met = MinimaMet{}; // each minimum is a whole analysis
    MinimaForm.State.Shown = false;
}

void ShowProgress(long done) {
    const long all = Choice.Count + 1; // and the user's own
    MinimaForm.Fraction = static_cast<double>(done) / static_cast<double>(all);
    MinimaForm.Progress.Text = std::to_string(done) + " of " + std::to_string(all) + " fits";
}

} // namespace

Control& MinimaFormBox(MinimaInput input) {
    return input == MinimaInput::Count ? MinimaForm.CountInput : MinimaForm.SeedInput;
}

void LoadMinimaForm() {
    Choice = RestartChoice{};
    Met = MinimaMet{};
    MinimaForm = MinimaFormRecord{};
    NameControls();
    NameColumns();
    ShowSearching(false);
    MinimaForm.TakeButton.Enabled = false;
    MinimaForm.State.FocusOn = &MinimaForm.SearchButton;
    MinimaForm.State.Shown = true;
}

void MinimaFormGotFocus(MinimaInput input) {
    NumGotFocus(MinimaFormBox(input));
}

int MinimaFormKeyPress(MinimaInput input, int key) {
    if (key == KeyReturn)
        MinimaForm.State.FocusOn =
            input == MinimaInput::Count ? &MinimaForm.SeedInput : &MinimaForm.SearchButton;
    return WholeNumberBoxKey(MinimaFormBox(input), key);
}

void MinimaFormLostFocus(MinimaInput input) {
    LeaveBox(input);
}

void MinimaFormSearchButton() {
    if (!MinimaForm.SearchButton.Enabled || !LeaveBox(MinimaInput::Count) || !LeaveBox(MinimaInput::Seed))
        return;
    ClearCancel();
    ShowSearching(true);
    ShowProgress(0);
    Met = SearchOtherMinima(Choice, ShowProgress);
    ClearCancel();
    ShowSearching(false);
    ShowMinima();
}

void MinimaFormStopButton() {
    AskToStop();
}

void MinimaFormRow(int row) {
    MinimaForm.Chosen = row;
    const auto place = static_cast<std::size_t>(row);
    MinimaForm.TakeButton.Enabled = row >= 0 && place < Met.Minima.size() && !Met.Minima[place].IsOwn;
}

void MinimaFormTakeButton() {
    if (!MinimaForm.TakeButton.Enabled) return;
    TakeMinimum(Met.Minima[static_cast<std::size_t>(MinimaForm.Chosen)]);
    MinimaForm.Taken = true;
    Leave();
}

void MinimaFormCloseButton() {
    if (MinimaForm.StopButton.Enabled)
        MinimaFormStopButton();
    else
        Leave();
}

} // namespace Quillon
