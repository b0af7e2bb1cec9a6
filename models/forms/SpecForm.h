#pragma once
// The form "Integrated Species Concentrations" as data: how much of each species the model puts into a cell
// between two radii, on average, beside what was measured. The units of the form are its own: those of the
// analysis stay.

#include "platform/Controls.h"
#include "workspace/records/Counts.h"

#include <string>
#include <vector>

namespace Quillon {

inline constexpr const char* SpecFormName = "SpecForm"; // of the form, for the seam

struct SpecFormRecord {
    FormState State;
    Control SetLabel, SetList; // one row for each fit set
    Control InnerLabel, Inner, OuterLabel, Outer;
    Control UseAU, UseMg, UseMolar;
    Control RangeButton; // takes the fitting range of the set as radii
    Control Head;        // of the table below
    std::vector<Control> SpecName, SpecConc;
    Control MonomerTotal;                 // the total counted in monomers, where species are counted as such
    Control MeanNote;                     // that the mean is not weighted
    Control Failure;                      // why there are no numbers; empty where there are
    Control ExpHead, ExpAverage, ExpNote; // what was measured
    Control CopyButton, ExitButton;
};
extern SpecFormRecord SpecForm;

enum class SpecRadius { Inner, Outer };

// The command: loads the form and shows it modally ("SpecForm").
void IntegrateDialog();

// Fills the form for the first set, with the design's radii. Numbers that cannot be had are told in the form
// alone.
void LoadSpecForm();

// Fills SpecConc and ExpAverage for the chosen set, radii and unit. A failure is told, and its numbers read
// "* * *".
void IntegrateSpecies();

void SpecFormSetList(SetNo set); // a row was chosen
void SpecFormUnit(Control& option);
void SpecFormRangeButton();
Control& SpecFormBox(SpecRadius radius);
void SpecFormGotFocus(SpecRadius radius);
int SpecFormKeyPress(SpecRadius radius, int key);
// Refuses radii that are equal or crossed: the former one stands again, with the focus in its box.
void SpecFormLostFocus(SpecRadius radius);

// The table of all sets at the radii of the form, between tabs, in the columns that the batch program writes.
// A set that cannot be integrated is a RuntimeError.
std::string SpecFormTable();
void SpecFormCopyButton();
void SpecFormExitButton();

} // namespace Quillon
