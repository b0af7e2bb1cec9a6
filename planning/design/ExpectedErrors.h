#pragma once
// The errors to be expected of an experiment before it is made: the analysis that stands, with the values of
// its parameters as the truth, at other speeds and loadings.
//
// At the truth the fit is that of the linearised function. With D the derivatives of all points by the fitted
// parameters and s the noise of a reading, the covariance of the parameters is s^2 (D^T D)^-1 (P. R.
// Bevington, Data Reduction and Error Analysis, 1969, section 11-5; the design of experiments by it: G. E. P.
// Box and H. L. Lucas, Biometrika 46 (1959) 77). Where sets are weighted by their noise, s is that of the
// first set.
//
// Another design is made so: all speeds times a factor, so that each sigma goes with its square; and
// concentrations for which each set holds, over its range, as much of A and of B as before times the loading
// factor.

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

struct Design {
    double SpeedFactor = 1.0;
    double LoadingFactor = 1.0;
};

// The limits of both factors.
inline constexpr double LeastFactorOfDesign = 0.01;
inline constexpr double MostFactorOfDesign = 100.0;
inline constexpr std::size_t MostDesigns = 400;

// Which designs: all pairs of the two lists.
struct PlanChoice {
    std::vector<double> SpeedFactors{1.0};
    std::vector<double> LoadingFactors{1.0};
};
std::vector<Design> DesignsOf(const PlanChoice& choice);

// What a factor outside its limits, or too many designs, are refused with; "" where the choice is good.
std::string WhyNoPlan(const PlanChoice& choice);

struct ExpectedError {
    long Slot = 0;
    std::string Name;            // with the unit of display: ParmName
    double Value = 0.0;          // in units of display, of the design
    std::optional<double> Error; // the same; nothing where the design does not determine the parameter
};

struct PlannedDesign {
    Design Of;
    std::vector<ExpectedError> Parms; // the fitted ones, in the order of the free positions
    std::string Failure;              // why there is none; "" where there is
};

struct Plan {
    std::vector<PlannedDesign> Designs; // in the order of DesignsOf
    bool Complete = false;              // not cancelled
};

// True when there are data and a model.
bool CanPlan();

// True when the parameters have values that a design can take as the truth: those of a fit or a simulation,
// or that a fit has started with. What stands before is nobody's.
bool HasTruth();

// The designs one by one on copies of the analysis. noise: standard deviation of a reading, signal units,
// above 0. told(n) after n of them. Work stays as it is, but for Work.AbortFit, which cancels and is left for
// the caller to clear.
Plan PlanExperiment(const PlanChoice& choice, double noise, const std::function<void(long done)>& told);

// --- its pieces
// ------------------------------------------------------------------------------------------------

// Makes Work that design: speeds, masses in sigma, concentrations, constrained loadings, and signals without
// noise in place of the measured ones. A RuntimeError where no concentrations give the amounts.
void TakeUpDesign(const Design& design);

// The errors of Work as it stands, at its values.
std::vector<ExpectedError> ErrorsOfWork(double noise);

} // namespace Quillon
