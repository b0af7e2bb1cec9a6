#pragma once
// The results window as data: statistics of the fit, fitted parameters with their errors or confidence
// limits, what was held, what was tied, a warning about high correlations. The graph in Picture1 is drawn by
// whoever shows the form.

#include "platform/Controls.h"
#include "reporting/values/ParmLines.h"

#include <string>

namespace Quillon {

inline constexpr const char* ResultsName = "Results"; // of the form, for the seam

struct ResultsForm {
    std::string Caption;
    Control Frame1; // around everything
    Control Frame2; // the statistics, each a label with its value
    Control SumSqLabel, SumSqValue;
    Control DegFreedomLabel, DegFreedom;
    Control RmsLabel, RmsValue;
    Control ZScoreLabel, ZScore;
    Control Label1, Label2; // heads of the fitted parameters and of the column of their values
    Control ParmsFit;       // text box, a line for each fitted parameter; below them Kd and its kin, where
                            // molar coefficients are given
    Control Label3;         // head of the held parameters
    Control ParmsConst;     // text box, a line for each held parameter
    Control ConstraintText; // ties of zero offsets and concentrations; shown when there are any
    Control Warning;        // that the fit is no minimum or not determined, in red; shown when it is so
    Control Message;        // the warning about correlations, in red; shown when there is one
    Control Picture1;       // residuals, or data and fit with OverlayPlot
    Control ComputeConfidence, ViewCorr, ShowConstraintButton;
    Control Command1, Command2; // print the report alone, or with a graph
    Control OkButton;
};

// The one results window of the process.
extern ResultsForm Results;

// Measures texts in the font that the window shows its lines in; fixed pitch unless whoever shows it says
// otherwise.
inline TextMeasure ResultsFont = CountCharacters;

// Fills the window from the fit that stands, in the font that it is shown in; runs the runs test and counts
// the correlations. 0 or 1 points are a RuntimeError.
void FillResults(const TextMeasure& measure = ResultsFont);

// Buttons. ComputeConfidence searches (form "WaitForm") unless limits of the level wanted stand, and fills
// the window again; ViewCorr shows the form "Correlation"; OK hides the window.
void ResultsComputeConfidence(const TextMeasure& measure = ResultsFont);
void ResultsViewCorr();
void ResultsOkButton();

} // namespace Quillon
