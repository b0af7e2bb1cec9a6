#include "persistence/settings/SettingsForm.h"

#include "input/IniFile.h"
#include "input/NUMINPUT.h"
#include "models/forms/NumberBox.h"
#include "persistence/settings/IniAccess.h"
#include "persistence/settings/ReadDefaults.h"
#include "platform/FormControls.h"
#include "platform/Letters.h"

namespace Quillon {

SettingsFormRecord SettingsForm;

namespace {

// --- texts of the file and of the form
// -----------------------------------------------------------------------

std::string FlagText(bool value) {
    return value ? "True" : "False";
}

// A text of the file as this form would write it: nothing counts as changed that means the same.
std::string Normal(const SettingRow& row, const std::string& text) {
    switch (row.Kind) {
    case SettingKind::Flag: // one that is on by itself is off by its word alone
        return FlagText(row.Standard == "True" ? text != "False" : SameLetters(text, "TRUE"));
    case SettingKind::Choice:
        for (const SettingRow::Choice& choice : row.Choices)
            if (SameLetters(choice.Value, text)) return choice.Value;
        return row.Standard;
    default:
        return SingleText(ToSingle(NumericPrefix(text)));
    }
}

std::string TextOf(const SettingRow& row, const Control& box) {
    if (row.Kind == SettingKind::Flag) return FlagText(box.Value != 0);
    if (row.Kind == SettingKind::Choice) return row.Choices[static_cast<std::size_t>(box.Value)].Value;
    return SingleText(NumValue(box.Text));
}

void Show(const SettingRow& row, const std::string& text, Control& box) {
    if (row.Kind == SettingKind::Flag) {
        box.Value = text == "True" ? 1 : 0;
    } else if (row.Kind == SettingKind::Choice) {
        for (std::size_t i = 0; i < row.Choices.size(); ++i)
            if (row.Choices[i].Value == text) box.Value = ToInt16(static_cast<double>(i));
    } else {
        box.Text = text;
    }
}

double NumberOf(const SettingRow& row, const Control& box) {
    if (row.Kind == SettingKind::Flag) return box.Value;
    if (row.Kind == SettingKind::Choice) return NumericPrefix(TextOf(row, box));
    return static_cast<double>(NumValue(box.Text));
}

Control BoxFor(const SettingRow& row) {
    Control box;
    if (row.Kind == SettingKind::Flag) box.Text = row.Caption;
    for (const SettingRow::Choice& choice : row.Choices)
        box.Items.emplace_back(choice.Caption);
    box.ToolTip = "[" + std::string(row.Section) + "] " + row.Key;
    return box;
}

// --- numbers that are no such setting
// ------------------------------------------------------------------------

bool IsNumberRow(const SettingRow& row) {
    return row.Kind == SettingKind::Number || row.Kind == SettingKind::Whole;
}

std::string RangeText(const SettingRow& row) {
    const std::string high = DoubleText(row.High);
    if (row.Low == 0.0) return row.High < 1e6 ? "above 0, at most " + high : "above 0";
    return "from " + DoubleText(row.Low) + " to " + high;
}

bool IsInRange(const SettingRow& row, double value) {
    return value <= row.High && (row.Low == 0.0 ? value > 0.0 : value >= row.Low);
}

bool Refuse(std::size_t place) {
    const SettingRow& row = SettingRows()[place];
    Host.Beep();
    Tell(std::string(row.Caption) + ": " +
             (row.Kind == SettingKind::Whole ? "a whole number " : "a number ") + RangeText(row) + ".",
         Work.ProgramName, BoxIcon::Warning);
    SettingsForm.State.FocusOn = &SettingsForm.Box[place];
    return false;
}

// True when what stands in a box can be taken; what cannot has been told.
bool IsTaken(std::size_t place) {
    const SettingRow& row = SettingRows()[place];
    const std::string& text = SettingsForm.Box[place].Text;
    if (!IsNumberRow(row) || text == SettingsForm.Stored[place]) return true;
    return (IsNumeric(text) && IsInRange(row, static_cast<double>(NumValue(text)))) || Refuse(place);
}

// --- writing
// -------------------------------------------------------------------------------------------------

std::vector<IniSetting> ChangedIn(const char* section) {
    std::vector<IniSetting> changed;
    for (std::size_t i = 0; i < SettingRows().size(); ++i) {
        const SettingRow& row = SettingRows()[i];
        const std::string text = TextOf(row, SettingsForm.Box[i]);
        if (row.Section == std::string(section) && text != SettingsForm.Stored[i])
            changed.push_back({row.Key, text});
    }
    return changed;
}

void WriteChanged() {
    for (const char* section : {IniSection::FitSettings, IniSection::Program})
        if (const std::vector<IniSetting> changed = ChangedIn(section); !changed.empty())
            WriteIniValues(IniFilePath(), section, changed);
}

void ApplyChanged() {
    for (std::size_t i = 0; i < SettingRows().size(); ++i) {
        const SettingRow& row = SettingRows()[i];
        if (row.Apply != nullptr && TextOf(row, SettingsForm.Box[i]) != SettingsForm.Stored[i])
            row.Apply(NumberOf(row, SettingsForm.Box[i]));
    }
}

void Fill(const std::string& ini) {
    for (const SettingRow& row : SettingRows()) {
        SettingsForm.Label.push_back(Captioned(row.Kind == SettingKind::Flag ? "" : row.Caption));
        SettingsForm.Box.push_back(BoxFor(row));
        SettingsForm.Stored.push_back(Normal(row, IniValue(ini, row.Section, row.Key, row.Standard)));
        Show(row, SettingsForm.Stored.back(), SettingsForm.Box.back());
    }
}

} // namespace

void LoadSettingsForm() {
    SettingsForm = SettingsFormRecord{};
    Fill(ReadIniFile(IniFilePath()));
    SettingsForm.State.Caption = Work.ProgramName + " - All Settings";
    SettingsForm.Note = Captioned(
        "What the program starts with. Settings of scans, reports and the course of a fit hold at once, "
        "those of an analysis (model, units, coefficients, limits) for the next one.");
    SettingsForm.StandardButton = Captioned("&Standard", "All as without any settings; OK writes it");
    SettingsForm.OkButton = Captioned("OK");
    SettingsForm.CancelButton = Captioned("&Cancel");
    SettingsForm.State.FocusOn = &SettingsForm.Box.front();
    SettingsForm.State.Shown = true;
}

void SettingsDialog() {
    try {
        LoadSettingsForm();
    } catch (const RuntimeError& error) {
        return TellReadFailure(error.Text);
    }
    Host.ShowModal(SettingsFormName);
}

void SettingsFormGotFocus(std::size_t row) {
    NumGotFocus(SettingsForm.Box[row]);
}

int SettingsFormKeyPress(std::size_t row, int key) {
    if (key == KeyReturn) SettingsForm.State.FocusOn = &SettingsForm.OkButton;
    const bool whole = SettingRows()[row].Kind == SettingKind::Whole;
    return whole ? WholeNumberBoxKey(SettingsForm.Box[row], key) : NumberBoxKey(SettingsForm.Box[row], key);
}

void SettingsFormLostFocus(std::size_t row) {
    if (LeaveNumberBox(SettingsForm.Box[row], SettingsForm.Stored[row]) == BoxLeft::Altered) IsTaken(row);
}

void SettingsFormChoice(std::size_t row, int place) {
    SettingsForm.Box[row].Value = ToInt16(place);
}

void SettingsFormStandardButton() {
    for (std::size_t i = 0; i < SettingRows().size(); ++i)
        Show(SettingRows()[i], Normal(SettingRows()[i], SettingRows()[i].Standard), SettingsForm.Box[i]);
}

void SettingsFormOkButton() {
    for (std::size_t i = 0; i < SettingRows().size(); ++i)
        if (!IsTaken(i)) return;
    try {
        WriteChanged();
    } catch (const RuntimeError& error) {
        return TellWriteFailure(error.Text);
    }
    ApplyChanged();
    SettingsForm.State.Shown = false;
}

void SettingsFormCancelButton() {
    SettingsForm.State.Shown = false;
}

} // namespace Quillon
