#pragma once
// Comparison of models: each of a list fitted to the same points, with the statistics by which they are
// told apart. All of them assume that the residuals are independent and of one size; the runs test beside
// them says how far that holds.
//
// With n points, sum of squares S, m fitted parameters, n - m degrees of freedom and k = m + 1 (the noise is
// estimated, too):
//
//     F     = ((S1 - S2) / (m2 - m1)) / (S2 / (n - m2))      model 1 nested in model 2
//     AICc  = n ln(S / n) + 2 k + 2 k (k + 1) / (n - k - 1)
//     BIC   = n ln(S / n) + k ln n
//     w     = exp(-delta AICc / 2), over the sum of all of them
//
// F: N. R. Draper and H. Smith, Applied Regression Analysis (1966), section 2.7. AICc: C. M. Hurvich and
// C.-L. Tsai, Biometrika 76 (1989) 297. BIC: G. Schwarz, Annals of Statistics 6 (1978) 461. Weights: K. P.
// Burnham and D. R. Anderson, Model Selection and Multimodel Inference (2002), section 2.9.

#include "studies/methods/ModelVariant.h"
#include "workspace/records/Workspace.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// A model of the list and its fit. What does not exist is unset.
struct ComparedModel {
    ModelVariant Variant;
    bool HasFit = false;  // a fit with results, of a minimum or not: then Fit is the analysis with it
    bool Minimum = false; // it converged, at a minimum
    bool IsOwn = false;   // it is the user's own fit, as it stood
    Workspace Fit;
    long Free = 0; // fitted parameters
    long Freedom = 0;
    double SumSq = 0.0;
    double Rms = 0.0;
    std::optional<double> RunsZ;
    std::string Reference; // the model that F compares with, as VariantText; "" none
    std::optional<double> F, P;
    std::optional<double> DeltaAicc, DeltaBic, Weight; // over the rows with a minimum
    std::string Notes; // sentences: why there is no fit, what is to be known before it is believed
};

struct Comparison {
    std::vector<ComparedModel> Rows; // in the order of the list; a row that was not reached says so
    bool Complete = false;           // not cancelled
};

// The model of the analysis that stands.
ModelVariant VariantOfWork();

// Fits each model of the list on copies of the analysis. told(n) after n of them. Work stays as it is, but
// for Work.AbortFit, which cancels and is left for the caller to clear; what has ended is in the result.
//
// In each model masses, stoichiometries, zero offsets and the constants that it shares with the user's model
// are held where they are held there, at the same values. A mass of B that the user's model does not have is
// held at the value that stands for it. Starts are the guesses, and the fit of the largest model of the list
// that is contained in it with its new constants where they just show; the user's own fit is one of the ends
// of its model. Behind the best end of a model a lower minimum is looked for (FindLowerMinimum,
// fit/GNLLSQ.h), behind the user's own fit as well. The lowest minimum counts.
Comparison CompareModels(const std::vector<ModelVariant>& list, const std::function<void(long done)>& told);

// F by the formula above of a model in a larger one, from their sums of squares and degrees of freedom (the
// larger one has fewer, at least one, and a sum above 0), and how often chance gains as much.
struct NestedTest {
    double F, P;
};
NestedTest TestNested(double smallSum, long smallFreedom, double largeSum, long largeFreedom);

// AICc and BIC by the formulas above, free without the noise; nothing where they do not exist.
std::optional<double> CorrectedAic(double sumSq, long points, long free);
std::optional<double> BayesianCriterion(double sumSq, long points, long free);

// The fit of a row that has one becomes the analysis; the user's own is left as it is.
void TakeCompared(const ComparedModel& row);

} // namespace Quillon
