#pragma once
// The form "All Settings" as data: every setting of the ini file on one form. What is shown is what the
// program starts with; OK writes what was changed and leaves the rest of the file as it is. Settings of the
// program hold at once, those of an analysis for the next one.
//
// All vectors have one entry for each of SettingRows, in their order.

#include "persistence/settings/SettingRows.h"
#include "platform/Controls.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* SettingsFormName = "SettingsForm"; // of the form, for the seam

struct SettingsFormRecord {
    FormState State;
    Control Note;
    std::vector<Control> Label;
    // A number as its text; a flag by Value 0 or 1, with its caption as text; a choice by Value, a row of
    // Items.
    std::vector<Control> Box;
    std::vector<std::string> Stored; // as they stand in the file, or without it
    Control StandardButton, OkButton, CancelButton;
};
extern SettingsFormRecord SettingsForm;

// The command: the form, shown modally. A file that cannot be read is told, and nothing is shown.
void SettingsDialog();

void LoadSettingsForm();
void SettingsFormGotFocus(std::size_t row);
int SettingsFormKeyPress(std::size_t row, int key); // Enter goes to OK
void SettingsFormLostFocus(std::size_t row);        // a number out of its range is told and takes the focus
void SettingsFormChoice(std::size_t row, int place);

void SettingsFormStandardButton(); // as without any file
void SettingsFormOkButton();       // writes and closes; a failure is told, and the form stays
void SettingsFormCancelButton();

} // namespace Quillon
