#pragma once
// The form "Protein, Buffer, Time to Equilibrium" as data: the calculators (planning/Calculations.h) at a
// window. Use puts v-bar, density and extinction into the units.

#include "planning/Calculations.h"
#include "platform/Controls.h"

#include <array>
#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* CalculatorFormName = "CalculatorForm"; // of the form, for the seam

// The text boxes, in the order of the form.
enum class CalculatorBox {
    Chain,      // letters of a sequence, or the name of a file
    Buffer,     // NaCl=0.15, ...; empty: none
    Disulfides, // bonds; empty: all cysteines are paired
    Celsius,
    Mass,    // kDa; empty: that of the protein
    Ratio,   // f/f0
    Rpm,     // empty: no time is wanted
    Former,  // rpm of the speed before; empty: evenly filled
    Channel, // "C", "8B": fills in the next two
    Inner,   // cm
    Outer
};
inline constexpr std::size_t CalculatorBoxes = 11;

struct CalculatorFormRecord {
    FormState State;
    Control Head;
    std::array<Control, CalculatorBoxes> Label, Box;
    Control FileButton; // a file for the sequence
    Control CalculateButton;
    std::array<std::string, 4> Columns;         // quantity, value, unit, source
    std::vector<std::vector<std::string>> Rows; // of the table
    Control Note;                               // what Use has put where
    Control UseAButton, UseBButton, CopyButton, CloseButton;
};

// The one form of the process.
extern CalculatorFormRecord CalculatorForm;

// The command: loads the form and shows it modally.
void CalculatorDialog();

// Temperature, speed and radii from the first row of the table of data sets where it has some; nothing is
// calculated.
void LoadCalculatorForm();

void CalculatorFormGotFocus(CalculatorBox box);
int CalculatorFormKeyPress(CalculatorBox box,
                           int key); // Enter goes to the next box, from the last one calculates

// A channel that has been typed fills in its ends, at the speed of its box; what is none is told.
void CalculatorFormLostFocus(CalculatorBox box);

// Calculates what the boxes ask for and fills the table; what cannot be read is told, and the table is empty
// then.
void CalculatorFormCalculateButton();

void CalculatorFormFileButton(); // asks for a file and names it in the box of the sequence

// Puts v-bar of the protein, density of the buffer, and where the coefficients are those of 280 nm molar
// extinction and absorptivity, into the coefficients of species A (0) or B (1); what was not calculated
// stays. Units of display follow. A failure is told and leaves the workspace as it was.
void CalculatorFormUseButton(std::size_t species);

void CalculatorFormCopyButton();  // the table as text on the clipboard
void CalculatorFormCloseButton(); // closes

} // namespace Quillon
