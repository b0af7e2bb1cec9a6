#include "models/forms/ConcForm.h"

#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "models/function/SetMeanSignal.h"
#include "models/table/LoadingUnits.h"
#include "models/table/ModelTable.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

namespace Quillon {

ConcFormRecord ConcForm;

namespace {

constexpr std::array AllConcInputs{ConcInput::ConcA, ConcInput::VarA, ConcInput::ConcB, ConcInput::VarB};
constexpr const char* SignalPicture = "0.0000";

struct Constraints {
    PerRow<float> ConcA, ConcB, ToleranceA, ToleranceB;
};
Constraints Former; // as they were when the form was loaded

bool IsLoading(ConcInput input) {
    return input == ConcInput::ConcA || input == ConcInput::ConcB;
}

std::size_t SpeciesOf(ConcInput input) {
    return input == ConcInput::ConcA || input == ConcInput::VarA ? 0 : 1;
}

float& StoredConc(ConcInput input, SetNo set) {
    const RowNo row = RowOf(set);
    switch (input) {
    case ConcInput::ConcA:
        return Work.ConcConstraintA[row];
    case ConcInput::ConcB:
        return Work.ConcConstraintB[row];
    case ConcInput::VarA:
        return Work.ConcToleranceA[row];
    default:
        return Work.ConcToleranceB[row];
    }
}

// Shown value over stored one.
double FactorOf(ConcInput input, SetNo set) {
    return IsLoading(input) ? LoadingFactor(SpeciesOf(input), RowOf(set)) : 100.0;
}

std::string StoredConcText(ConcInput input, SetNo set) {
    const float stored = StoredConc(input, set);
    if (!IsLoading(input)) return ToleranceText(stored);
    return FormatNumber(FactorOf(input, set) * static_cast<double>(stored), LoadingPicture());
}

std::string TotalText(SetNo set) {
    const double total = static_cast<double>(StoredConc(ConcInput::ConcA, set)) +
                         static_cast<double>(StoredConc(ConcInput::ConcB, set));
    return FormatNumber(total, SignalPicture);
}

Control& TotalOf(SetNo set) {
    return ConcForm.Text1.at(static_cast<std::size_t>(set.Number - 1));
}

void ShowStored() {
    for (const SetNo set : EachSet()) {
        for (const ConcInput input : AllConcInputs)
            ConcFormBox(input, set).Text = StoredConcText(input, set);
        TotalOf(set).Text = TotalText(set);
    }
}

bool Refuse(Control& box, const char* message) {
    Tell(message, Work.ProgramName, BoxIcon::Warning);
    ConcForm.State.FocusOn = &box;
    return false;
}

// A value that was typed, in stored terms; one beyond the range of singles is the largest of them.
float InStoredTerms(ConcInput input, SetNo set, float typed) {
    constexpr double Largest = std::numeric_limits<float>::max();
    const double value = Divide(static_cast<double>(typed), FactorOf(input, set));
    return static_cast<float>(std::clamp(value, -Largest, Largest));
}

// Leaves a box; false when its value is refused, which has then been told.
bool LeaveConc(ConcInput input, SetNo set) {
    Control& box = ConcFormBox(input, set);
    const BoxLeft left = LeaveNumberBox(box, StoredConcText(input, set));
    if (left == BoxLeft::Undone) return true;
    float value = StoredConc(input, set);
    if (left == BoxLeft::Altered) value = InStoredTerms(input, set, NumValue(box.Text));
    if (IsLoading(input) && value < 0.0F) return Refuse(box, "Value must be greater than or equal to zero!");
    if (!IsLoading(input) && !(value > 0.0F)) return Refuse(box, "Value must be greater than zero!");
    StoredConc(input, set) = value;
    box.Text = StoredConcText(input, set);
    TotalOf(set).Text = TotalText(set);
    return true;
}

// True when nothing was typed into the box that has not been taken.
bool IsTaken(ConcInput input, SetNo set) {
    return ConcFormBox(input, set).Text == StoredConcText(input, set);
}

void NameConcControls() {
    ConcForm.State.Caption = "Concentration Constraints";
    ConcForm.ALabel = Captioned(LoadingHead("Species A Loading Concentration (AU)"));
    ConcForm.BLabel = Captioned(LoadingHead("Species B Loading Concentration (AU)"));
    ConcForm.VarALabel = Captioned("Tolerance in A (%)");
    ConcForm.VarBLabel = Captioned("Tolerance in B (%)");
    ConcForm.AvgLabel = Captioned("Absorbance Averaged Over Fitting Range");
    ConcForm.TotalLabel = Captioned("Total Absorbance for Specified Concentrations");
    ConcForm.Note = Captioned(
        "Note: Setting the loading concentration to zero removes the constraint on that species for that "
        "data set.  Also, the values entered should not include the baseline offset (if any).");
    ConcForm.ClearAllButton = Captioned("Clear &All Constraints", "Clear all concentration constraints");
    ConcForm.CancelButton =
        Captioned("&Cancel Changes", "Cancel any changes made since this form was loaded");
    ConcForm.OkButton = Captioned("&OK", "Accept the current values and exit");
}

void MakeRows() {
    const auto rows = static_cast<std::size_t>(Work.NumSets);
    const Control loading = Captioned("", "Enter the actual loading concentration");
    const Control tolerance =
        Captioned("", "Percentage difference between the loading concentration and the model that should be "
                      "considered significant");
    ConcForm.ConcA.assign(rows, loading);
    ConcForm.ConcB.assign(rows, loading);
    ConcForm.VarA.assign(rows, tolerance);
    ConcForm.VarB.assign(rows, tolerance);
    ConcForm.Text1.assign(
        rows, Captioned("", "Calculated total absorbance for the specified loading concentrations"));
    for (const SetNo set : EachSet()) {
        ConcForm.SetLabel.push_back(Captioned("Set " + std::to_string(set.Number) + ":"));
        ConcForm.AvgC.push_back(
            Captioned(FormatNumber(SetMeanSignal(set), SignalPicture),
                      "This is the observed average across the radial range being fitted"));
    }
}

void ShowConcOfB() {
    const bool shown = ShowsLoadingB();
    ConcForm.BLabel.Visible = ConcForm.VarBLabel.Visible = shown;
    ShowColumn(ConcForm.ConcB, shown);
    ShowColumn(ConcForm.VarB, shown);
}

// Enter goes along the shown boxes of a row, then to the next row, and to OK at the end.
void GoBehindConc(ConcInput input, SetNo set) {
    auto place = std::find(AllConcInputs.begin(), AllConcInputs.end(), input) + 1;
    if (place == AllConcInputs.end() || !ConcFormBox(*place, set).Visible) {
        place = AllConcInputs.begin();
        ++set;
    }
    ConcForm.State.FocusOn = set.Number > Work.NumSets ? &ConcForm.OkButton : &ConcFormBox(*place, set);
}

bool AnyConstraint() {
    for (const SetNo set : EachSet())
        if (StoredConc(ConcInput::ConcA, set) > 0.0F || StoredConc(ConcInput::ConcB, set) > 0.0F) return true;
    return false;
}

} // namespace

Control& ConcFormBox(ConcInput input, SetNo set) {
    const auto i = static_cast<std::size_t>(set.Number - 1);
    switch (input) {
    case ConcInput::ConcA:
        return ConcForm.ConcA.at(i);
    case ConcInput::ConcB:
        return ConcForm.ConcB.at(i);
    case ConcInput::VarA:
        return ConcForm.VarA.at(i);
    default:
        return ConcForm.VarB.at(i);
    }
}

void LoadConcForm() {
    Former = {Work.ConcConstraintA, Work.ConcConstraintB, Work.ConcToleranceA, Work.ConcToleranceB};
    ConcForm = ConcFormRecord{};
    NameConcControls();
    MakeRows();
    ShowConcOfB();
    ShowStored();
    ConcForm.State.FocusOn = ConcForm.ConcA.empty() ? &ConcForm.OkButton : &ConcForm.ConcA.front();
    ConcForm.State.Shown = true;
}

void ConcFormGotFocus(ConcInput input, SetNo set) {
    NumGotFocus(ConcFormBox(input, set));
}

int ConcFormKeyPress(ConcInput input, SetNo set, int key) {
    if (key == KeyReturn) GoBehindConc(input, set);
    return NumberBoxKey(ConcFormBox(input, set), key);
}

void ConcFormLostFocus(ConcInput input, SetNo set) {
    LeaveConc(input, set);
}

void ConcFormClearAllButton() {
    ForgetTakenBack();
    for (float& value : Work.ConcConstraintA)
        value = 0.0F;
    for (float& value : Work.ConcConstraintB)
        value = 0.0F;
    ShowStored();
    for (Control& box : ConcForm.ConcA)
        box.Text.clear();
    for (Control& box : ConcForm.ConcB)
        box.Text.clear();
}

void ConcFormCancelButton() {
    ForgetTakenBack();
    Work.ConcConstraintA = Former.ConcA;
    Work.ConcConstraintB = Former.ConcB;
    Work.ConcToleranceA = Former.ToleranceA;
    Work.ConcToleranceB = Former.ToleranceB;
    ShowStored();
}

void ConcFormOkButton() {
    if (ForgetTakenBack()) ShowStored(); // Esc in the box that Enter then left
    for (const SetNo set : EachSet())
        for (const ConcInput input : AllConcInputs)
            if (!IsTaken(input, set) && !LeaveConc(input, set)) return;
    ConcForm.State.Shown = false;
}

void WarnOfConstraintCoefficients() {
    // [decision: loading-warning]
    if (!TraitsOfModel().LoadingsNeedMolar || !(Work.ConstraintFlags & ConcentrationBit)) return;
    Tell("For this model, for constraints to work properly you MUST set correct values for the molar "
         "extinction coefficients of species A and B on the Units form.  You may use either Absorbance or "
         "Molar units, however.",
         Work.ProgramName, BoxIcon::Warning);
}

void ConcConstraintDialog() {
    LoadConcForm();
    Host.ShowModal(ConcFormName);
    ForgetTakenBack();
    const int others = Work.ConstraintFlags & ~ConcentrationBit;
    Work.ConstraintFlags = ToInt16(others | (AnyConstraint() ? ConcentrationBit : 0));
    WarnOfConstraintCoefficients();
}

} // namespace Quillon
