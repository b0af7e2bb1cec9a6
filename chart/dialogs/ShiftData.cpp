// The form that separates data sets.
#include "chart/dialogs/ShiftData.h"

#include "chart/dialogs/OptionLists.h"
#include "chart/hand/Charts.h"
#include "chart/hand/Redraw.h"
#include "chart/hand/Separation.h"
#include "chart/records/ChartState.h"
#include "chart/scale/FormatTic.h"
#include "input/NUMINPUT.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"

#include <algorithm>

namespace Quillon {

ShiftDataRecord ShiftData;

namespace {

constexpr const char* NoAmount = "0.00";

const GraphAxis& ShownAxis() {
    return Chart.SeparateMode == SeparateModes::AlongX ? Chart.Spec.AxisX1 : Chart.Spec.AxisY1;
}

// Offsets are no values of the axis: on a logarithmic one, too, they are shown as they are added.
std::string AmountText(float amount) {
    if (amount == 0.0F) return NoAmount;
    const std::int16_t former = Chart.Log10Axis;
    Chart.Log10Axis = FlagFalse;
    const std::string text =
        FormatTic(static_cast<double>(amount), std::max(2, ShownAxis().Decimals + 1), ShownAxis().TicFormat);
    Chart.Log10Axis = former;
    return text;
}

int FirstMember(long place) {
    const long first = SeparatesPairs() ? 2 * place - 1 : place;
    return static_cast<int>(Chart.State.FirstSet + first - 1);
}

std::string ShiftText(long place) {
    return std::to_string(FirstMember(place)) + " - " + AmountText(ShiftData.Amounts[place]);
}

long ChosenPlace() {
    return ShiftData.SetNum.Value + 1;
}

void ShowChosen() {
    const long set = SeparatesPairs() ? 2 * ChosenPlace() - 1 : ChosenPlace();
    ShiftData.SetName.Text = set <= Chart.SetNames.Hi() ? Chart.SetNames[set] : "";
    ShiftData.ValueBox.Text = AmountText(ShiftData.Amounts[ChosenPlace()]);
}

// A text that was not touched keeps the amount to the last bit.
void TakeValue() {
    float& amount = ShiftData.Amounts[ChosenPlace()];
    if (ShiftData.ValueBox.Text != AmountText(amount)) amount = NumValue(ShiftData.ValueBox.Text);
    ShiftData.SetNum.Items[static_cast<std::size_t>(ShiftData.SetNum.Value)] = ShiftText(ChosenPlace());
}

void ChooseShift(ShiftBy by) {
    ShiftDataRecord& form = ShiftData;
    form.ByVariable.Value = Flag(by == ShiftBy::Variable);
    form.ByConstant.Value = Flag(by == ShiftBy::Constant);
    form.ByPercent.Value = Flag(by == ShiftBy::Percent);
    form.SetNum.Enabled = form.ValueBox.Enabled = by == ShiftBy::Variable;
    form.SetLabel.Enabled = form.SetName.Enabled = form.ValueLabel.Enabled = by == ShiftBy::Variable;
    form.ValueInput.Enabled = by == ShiftBy::Constant;
    form.PercentInput.Enabled = by == ShiftBy::Percent;
}

ShiftBy ChosenShift() {
    if (ShiftData.ByVariable.Value != 0) return ShiftBy::Variable;
    return ShiftData.ByConstant.Value != 0 ? ShiftBy::Constant : ShiftBy::Percent;
}

std::string CaptionOfMode() {
    if (Chart.SeparateMode == SeparateModes::AlongX) return "Separate Data Sets Along X Axis";
    if (Chart.SeparateMode == SeparateModes::AlongY) return "Separate Data Sets Along Y Axis";
    return "Separate Data Sets Along Both X & Y Axes";
}

bool AnyLogarithm() {
    const auto logs = [](const GraphAxis& axis) { return axis.ScaleType == ScaleTypes::Logarithmic; };
    return (Chart.SeparateMode != SeparateModes::AlongY && logs(Chart.Spec.AxisX1)) ||
           (Chart.SeparateMode != SeparateModes::AlongX && logs(Chart.Spec.AxisY1));
}

std::string NoteText() {
    std::string note = "Values are in the units of the scale and add to what stands already.";
    if (AnyLogarithm()) note += " On a logarithmic scale they are logarithms: 1 is a factor of its base.";
    return note;
}

void FillShiftCaptions() {
    ShiftDataRecord& form = ShiftData;
    const std::string pair = SeparatesPairs() ? " Pair" : "";
    form.State.Caption = CaptionOfMode();
    form.ByVariable = Captioned("By &Different Values for Each Data Set");
    form.ByConstant = Captioned("By a Constant Specific &Value =");
    form.ByPercent = Captioned("By a Constant &Percentage of Present Full Scale =");
    form.SetFrame = Captioned("Data Set" + pair);
    form.SetLabel = Captioned(pair.empty() ? "Data &Set =" : "First Member of &Set Pair =");
    form.ValueLabel = Captioned("Value to &Add =");
    form.Note = Captioned(NoteText());
    form.TakeBackButton = Captioned("&Take Back", "Puts all sets back to where they were");
    form.OkButton = Captioned("OK");
    form.CancelButton = Captioned("Cancel");
}

void FillSets() {
    if (Chart.SetShift.Hi() < SeparationCount()) Chart.SetShift.Resize(SeparationCount());
    ShiftData.Amounts = Chart.SetShift;
    std::vector<std::string> rows;
    for (long place = 1; place <= SeparationCount(); ++place)
        rows.push_back(ShiftText(place));
    FillList(ShiftData.SetNum, rows, 0);
    ShowChosen();
}

// The step times the count of sets before.
OneBased<float> Steps(float step) {
    OneBased<float> amounts(SeparationCount());
    for (long place = 1; place <= amounts.Hi(); ++place)
        amounts[place] = static_cast<float>(place - 1) * step;
    return amounts;
}

OneBased<float> PartsOf(const GraphAxis& axis) {
    const double part = static_cast<double>(NumValue(ShiftData.PercentInput.Text)) / 100.0;
    const double length = static_cast<double>(axis.Max) - static_cast<double>(axis.Min);
    return Steps(static_cast<float>(part * length));
}

// What the form asks for along an axis.
OneBased<float> AmountsFor(const GraphAxis& axis) {
    if (ChosenShift() == ShiftBy::Percent) return PartsOf(axis);
    if (ChosenShift() == ShiftBy::Constant) return Steps(NumValue(ShiftData.ValueInput.Text));
    return ShiftData.Amounts;
}

void Shift() {
    const bool x = Chart.SeparateMode != SeparateModes::AlongY;
    const bool y = Chart.SeparateMode != SeparateModes::AlongX;
    const OneBased<float> alongX = x ? AmountsFor(Chart.Spec.AxisX1) : OneBased<float>{};
    const OneBased<float> alongY = y ? AmountsFor(Chart.Spec.AxisY1) : OneBased<float>{};
    const OneBased<float>& kept = y ? alongY : alongX;
    std::copy(kept.begin(), kept.end(), Chart.SetShift.begin());
    SeparateBy(alongX, alongY);
}

void Open(std::int16_t mode) {
    if (!GraphMayChange() || SeparationCount() < 1) return;
    Chart.SeparateMode = mode;
    LoadShiftData();
    Host.ShowModal(ShiftDataName);
}

} // namespace

void SeparateX() {
    Open(SeparateModes::AlongX);
}
void SeparateY() {
    Open(SeparateModes::AlongY);
}
void SeparateBoth() {
    Open(SeparateModes::Both);
}

void LoadShiftData() {
    ShiftData = ShiftDataRecord{};
    FillShiftCaptions();
    FillSets();
    ShiftData.ValueInput.Text = FormerShift.Value;
    ShiftData.PercentInput.Text = FormerShift.Percent;
    ShiftData.TakeBackButton.Enabled = IsSeparated(Chart.SeparateMode);
    ChooseShift(FormerShift.By);
    ShiftData.State.FocusOn = FormerShift.By == ShiftBy::Percent    ? &ShiftData.PercentInput
                              : FormerShift.By == ShiftBy::Constant ? &ShiftData.ValueInput
                                                                    : &ShiftData.SetNum;
    ShiftData.State.Shown = true;
}

void ShiftDataClick(ShiftBy by) {
    ChooseShift(by);
}

void ShiftDataSetClick(int row) {
    TakeValue();
    FillList(ShiftData.SetNum, ShiftData.SetNum.Items, row);
    ShowChosen();
}

void ShiftDataGotFocus(Control& field) {
    NumGotFocus(field);
}

int ShiftDataKeyPress(Control& field, int key) {
    if (key == KeyReturn) ShiftDataOkButton();
    if (key == KeyEscape) ShiftDataCancelButton();
    return NumKeyPress(field, key);
}

void ShiftDataValueLostFocus() {
    NumLostFocus(ShiftData.ValueBox);
    if (!ShiftData.State.Shown) return;
    TakeValue();
    ShowChosen();
}

void ShiftDataOkButton() {
    TakeValue();
    FormerShift = {ChosenShift(), ShiftData.ValueInput.Text, ShiftData.PercentInput.Text};
    ShiftData.State.Shown = false;
    Shift();
}

void ShiftDataCancelButton() {
    ShiftData.State.Shown = false;
}

void ShiftDataTakeBackButton() {
    ShiftData.State.Shown = false;
    TakeBackSeparation(Chart.SeparateMode);
}

} // namespace Quillon
