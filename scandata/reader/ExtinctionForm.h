#pragma once
// The form "Input Relative Extinction Coefficients" as data: the signal of a set relative to that of set 1,
// for species A and B. The set is Work.CurrentRow + 1, over both pages.

#include "platform/Controls.h"

#include <array>

namespace Quillon {

inline constexpr const char* ExtinctionFormName = "ExtinctionForm"; // of the form, for the seam

struct ExtinctionFormRecord {
    FormState State;
    Control Label2;                               // both wavelengths
    std::array<Control, 2> Head, ExtinctionInput; // species A, B
    Control OkButton;
};
extern ExtinctionFormRecord ExtinctionForm;

// Loads the form and shows it modally.
void ShowExtinctionForm();

void LoadExtinctionForm();
void ExtinctionGotFocus(std::size_t species);
int ExtinctionKeyPress(std::size_t species, int key); // Tab, Enter and Escape lead on
void ExtinctionLostFocus(std::size_t species);        // stores the ratio; refuses what is not above 0
void ExtinctionOkButton();

} // namespace Quillon
