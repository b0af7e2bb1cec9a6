#include "fit/forms/GetGuess.h"

#include "fit/equations/FreeMap.h"
#include "fit/forms/GuessesDialog.h"
#include "fit/forms/MassEstimate.h"
#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/FormControls.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <optional>

namespace Quillon {

GetGuessForm GetGuess;

namespace {

std::size_t GuessPlace(int row) {
    return static_cast<std::size_t>(row);
}
SlotNo SlotOfRow(int row) {
    return GetGuess.GuessRows[GuessPlace(row)];
}
int RowCount() {
    return static_cast<int>(GetGuess.GuessRows.size());
}

// Caption and state of the mark, by what FreeMap says of the slot.
Control MarkFor(std::int16_t map) {
    Control mark;
    mark.Value = map >= 0 ? FitCheckYes : map == SlotHeld ? FitCheckNo : FitCheckGrey;
    mark.Text = map >= 0 ? "Yes" : map == SlotHeld ? "No" : map == SlotTied ? "constrained" : "not in use";
    mark.Enabled = mark.Value != FitCheckGrey && !GuessesValuesOnly();
    return mark;
}

bool IsMass(SlotNo slot) {
    return RuleOfSlot(slot).Holds == Quantity::Mass;
}

void ShowGuesses() {
    const RowLayout& layout = GetGuess.Layout;
    for (int row = 0; row < RowCount(); ++row) {
        const bool shown = layout.PageOf(row) == GetGuess.Page;
        GetGuess.Estimate[GuessPlace(row)].Visible = shown && IsMass(SlotOfRow(row));
        for (auto* controls : {&GetGuess.ParameterName, &GetGuess.Guess, &GetGuess.FitCheck})
            (*controls)[GuessPlace(row)].Visible = shown;
    }
    GetGuess.Page2.Visible = layout.Paged();
    GetGuess.Page2.Text = GetGuess.Page == 0 ? "Page &2" : "Page &1";
}

void FillGuess(int row) {
    const SlotNo slot = SlotOfRow(row);
    GetGuess.ParameterName[GuessPlace(row)].Text = ParmCaption(slot);
    GetGuess.Guess[GuessPlace(row)].Text = ParmText(slot);
}

void FillRows() {
    for (const SlotNo slot : EachSlot())
        if (IsInUse(slot)) GetGuess.GuessRows.push_back(slot);
    const std::size_t n = GetGuess.GuessRows.size();
    GetGuess.ParameterName.resize(n);
    GetGuess.Guess.resize(n);
    GetGuess.Estimate.resize(n, Captioned("Estimate"));
    for (Control& estimate : GetGuess.Estimate)
        estimate.ToolTip =
            "Take the apparent mass that the data show: the slope of ln of the signal, less the "
            "zero offset, over r^2/2 of each set";
    for (int row = 0; row < RowCount(); ++row) {
        GetGuess.FitCheck.push_back(MarkFor(Work.FreeMap[SlotOfRow(row)]));
        FillGuess(row);
    }
    GetGuess.Layout.Rows = RowCount();
}

void FillConvergence() {
    GetGuess.frmConvControl = Captioned("Convergence Control");
    GetGuess.ConvergenceLabel = Captioned("Convergence Factor");
    GetGuess.AccuracyLabel = Captioned("Parameter Precision (%)");
    GetGuess.ConvergenceInput.Text = FormatNumber(static_cast<double>(Work.ConvergenceLimit), "#0.###");
    GetGuess.AccuracyInput.Text = FormatNumber(static_cast<double>(Work.ParmsAccuracy * 100.0F), "#0.###");
    if (!GuessesValuesOnly()) return;
    for (Control* c : {&GetGuess.frmConvControl, &GetGuess.ConvergenceLabel, &GetGuess.ConvergenceInput,
                       &GetGuess.AccuracyLabel, &GetGuess.AccuracyInput})
        c->Visible = false;
}

// To the field of the next row of the page, or to OK behind the last.
void GoBehindGuess(int row) {
    if (row + 1 < GetGuess.Layout.Last(GetGuess.Page))
        GetGuess.State.FocusOn = &GetGuess.Guess[GuessPlace(row + 1)];
    else
        GetGuess.State.FocusOn = &GetGuess.OkButton;
}

// The check that every numeric field makes when it is left: true when the user took the entry back with Esc.
// A field that is left because the form goes stores nothing.
bool TakenBack(Control& field, const std::string& current) {
    if (GetGuess.State.Shown) return LeaveNumberBox(field, current) == BoxLeft::Undone;
    NumLostFocus(field);
    return true;
}

bool AcceptBeyond(SlotNo slot, const char* which, float bound) {
    return AskYesNo("The value of " + Work.ParmName[slot] + which + ParmText(slot, bound) +
                        ".  Do you want to use the new value anyway?",
                    Work.ProgramName + " - Parameter Out of Bounds", BoxAnswer::No, BoxIcon::Warning);
}

// "Apparent masses (kDa): set 1 34.2, set 2 35.0"
std::string EstimateNote(SlotNo slot, const MassEstimate& estimate) {
    std::string text =
        "Apparent " + std::string(MassInKiloDalton() ? "masses (kDa)" : "sigma (1/cm^2)") + ": ";
    bool first = true;
    for (const SigmaOfSet& of : estimate.Sets) {
        text += (first ? "set " : ", set ") + std::to_string(of.Set.Number) + " " +
                ParmText(slot, ToUserUnits(slot, static_cast<float>(of.Sigma)));
        first = false;
    }
    return text;
}

} // namespace

bool AcceptAgainstBounds(SlotNo slot, float v) {
    if (v < Work.Bounds[0][slot])
        return AcceptBeyond(slot, " is below the current lower bound of ", Work.Bounds[0][slot]);
    if (v > Work.Bounds[1][slot])
        return AcceptBeyond(slot, " is above the current upper bound of ", Work.Bounds[1][slot]);
    return true;
}

void LoadGetGuess() {
    const RowLayout layout = GetGuess.Layout; // the height of the window outlasts a showing
    GetGuess = GetGuessForm{};
    GetGuess.Layout.RowsPerColumn = layout.RowsPerColumn;
    GetGuess.Layout.MostColumns = layout.MostColumns;
    GetGuess.State.Caption = Work.ProgramName + " - Parameter Guesses and Fit Control";
    GetGuess.ParameterHead = Captioned("Parameter:");
    GetGuess.ValueHead = Captioned("Value:");
    GetGuess.FitHead = Captioned("Fit this parameter?");
    GetGuess.OkButton = Captioned("OK");
    GetGuess.CancelButton = Captioned("&Cancel");
    FillRows();
    FillConvergence();
    ShowGuesses();
    if (RowCount() > 0) {
        GetGuess.State.FocusOn = &GetGuess.Guess[0];
        GetGuess.Guess[0].ForeColor = Work.EditBackColor;
    }
    GetGuess.State.Shown = true;
}

void GetGuessFitCheck(int row) {
    Control& mark = GetGuess.FitCheck[GuessPlace(row)];
    if (mark.Value == FitCheckGrey || !mark.Enabled) return;
    mark.Text = mark.Value == FitCheckYes ? "Yes" : "No";
    GoBehindGuess(row);
}

void GetGuessEstimate(int row) {
    const SlotNo slot = SlotOfRow(row);
    const std::optional<MassEstimate> estimate = EstimateMass();
    if (!estimate) {
        Host.Beep();
        GetGuess.Note.Text =
            "There is no estimate: no set has a signal above its zero offset that rises outward";
        return;
    }
    GetGuess.Note.Text = EstimateNote(slot, *estimate);
    const float v = ToUserUnits(slot, static_cast<float>(estimate->Sigma));
    GetGuess.State.FocusOn = &GetGuess.Guess[GuessPlace(row)];
    if (!AcceptAgainstBounds(slot, v)) return;
    Work.Parms[slot] = static_cast<float>(estimate->Sigma);
    FillGuess(row);
}

void GetGuessGotFocus(int row) {
    NumGotFocus(GetGuess.Guess[GuessPlace(row)]);
}

int GetGuessKeyPress(int row, int key) {
    if (key == KeyReturn || key == KeyTab) GoBehindGuess(row);
    return NumberBoxKey(GetGuess.Guess[GuessPlace(row)], key);
}

void GetGuessLostFocus(int row) {
    Control& field = GetGuess.Guess[GuessPlace(row)];
    const SlotNo slot = SlotOfRow(row);
    const std::string current = ParmText(slot);
    if (TakenBack(field, current)) return;
    const float v = NumValue(field.Text);
    if (!(v > -1e38F && v < 1e38F)) {
        Tell("The value you input for " + Work.ParmName[slot] +
                 " is outside the range for single precision values.  Try again.",
             Work.ProgramName, BoxIcon::Warning);
        GetGuess.State.FocusOn = &field;
        return;
    }
    if (!AcceptAgainstBounds(slot, v)) {
        field.Text = current;
        GetGuess.State.FocusOn = &field;
        return;
    }
    // Compared as text, so that a field left as it was keeps the digits that its picture does not show.
    if (field.Text != current) {
        Work.Parms[slot] = ToInternal(slot, v);
        field.Text = ParmText(slot);
    }
}

void GetGuessConvergenceGotFocus() {
    NumGotFocus(GetGuess.ConvergenceInput);
}

int GetGuessConvergenceKeyPress(int key) {
    if (key == KeyReturn || key == KeyTab) GetGuess.State.FocusOn = &GetGuess.AccuracyInput;
    return NumberBoxKey(GetGuess.ConvergenceInput, key);
}

void GetGuessConvergenceLostFocus() {
    Control& field = GetGuess.ConvergenceInput;
    if (TakenBack(field, FormatNumber(static_cast<double>(Work.ConvergenceLimit), "#0.###"))) return;
    const float v = NumValue(field.Text);
    if (v <= 0.01F || v > 10.0F)
        GetGuess.State.FocusOn = &field;
    else
        Work.ConvergenceLimit = v;
}

void GetGuessAccuracyGotFocus() {
    NumGotFocus(GetGuess.AccuracyInput);
}

int GetGuessAccuracyKeyPress(int key) {
    const int taken = NumberBoxKey(GetGuess.AccuracyInput, key);
    if (key == KeyReturn || key == KeyTab) {
        GetGuess.State.FocusOn = nullptr;
        GetGuessAccuracyLostFocus();
        if (!GetGuess.State.FocusOn) GetGuessOkButton();
    }
    return taken;
}

void GetGuessAccuracyLostFocus() {
    Control& field = GetGuess.AccuracyInput;
    if (TakenBack(field, FormatNumber(static_cast<double>(Work.ParmsAccuracy * 100.0F), "#0.###"))) return;
    const float v = NumValue(field.Text);
    if (v < 0.001F || v > 10.0F)
        GetGuess.State.FocusOn = &field;
    else
        Work.ParmsAccuracy = v * 0.01F;
}

void GetGuessOkButton() {
    Host.ServeEvents(); // a field that is being left finishes first
    std::vector<FitChoice> choices;
    for (int row = 0; row < RowCount(); ++row)
        choices.push_back({GetGuess.GuessRows[GuessPlace(row)], GetGuess.FitCheck[GuessPlace(row)].Value});
    if (TakeFitChoices(choices)) GetGuess.State.Shown = false;
}

void GetGuessCancelButton() {
    GetGuess.Answer = DialogAnswer::Cancel;
    GetGuess.State.Shown = false;
}

void GetGuessPage2() {
    GetGuess.Page = 1 - GetGuess.Page;
    for (int row = GetGuess.Layout.First(GetGuess.Page); row < GetGuess.Layout.Last(GetGuess.Page); ++row)
        FillGuess(row);
    ShowGuesses();
    GetGuess.State.FocusOn = &GetGuess.Guess[GuessPlace(GetGuess.Layout.First(GetGuess.Page))];
}

} // namespace Quillon
