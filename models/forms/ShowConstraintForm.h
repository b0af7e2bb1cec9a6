#pragma once
// The form "Match of Fit to Concentration Constraints" as data: the loadings, what the fit made of them, and
// how much of the sum of squares they are. Nothing is entered. All control arrays have one entry for each fit
// set, that of set 1 at place 0.

#include "platform/Controls.h"

#include <vector>

namespace Quillon {

inline constexpr const char* ShowConstraintFormName = "ShowConstraintForm"; // of the form, for the seam

struct ShowConstraintFormRecord {
    FormState State;
    Control ALabel, BLabel;                                   // heads of the loadings, with the unit in force
    Control VarALabel, VarBLabel;                             // heads of the tolerances
    Control FitALabel, FitBLabel, FitErrALabel, FitErrBLabel; // heads of what the fit gave
    Control FracALabel, FracBLabel;                           // heads of the shares of the sum of squares
    std::vector<Control> SetLabel;                            // "Set 1:"
    std::vector<Control> ConcA, ConcB;                        // loadings
    std::vector<Control> VarA, VarB;                          // tolerances in percent
    // Empty where the species of the set is not constrained.
    std::vector<Control> FitA, FitB;       // mean concentration of the fit, in units of the loadings
    std::vector<Control> FitErrA, FitErrB; // (fit - loading) / loading
    std::vector<Control> FracA, FracB;     // share of the sum of squares
    Control Label7;                        // the sum of all shares
    Control OkButton;
};

extern ShowConstraintFormRecord ShowConstraintForm;

// The command, and a button of the results: loads the form and shows it modally ("ShowConstraintForm"). A
// RuntimeError (a coefficient or a path of 0) comes before the form is shown.
void ShowConstraintMatch();

// Fills the form from the fit that stands.
void LoadShowConstraintForm();
void ShowConstraintFormOkButton();

} // namespace Quillon
