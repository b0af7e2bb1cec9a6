#include "fit/Confidence.h"

#include "fit/LineSearch.h"
#include "fit/Sums.h"
#include "fit/Undetermined.h"
#include "fit/equations/FDistribution.h"
#include "fit/equations/JacobiEigen.h"
#include "models/function/Constraints.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace Quillon {

namespace {

double BestSumSq = 0.0; // at the best fit
bool Failed = false;    // a trial of the present direction had no sum

constexpr float FarBeyond = -9e37F; // what is left to the target where the sum leaves the range of a single
// A root where that much of the growth is missing is a jump of the function and no end.
constexpr float LargestJump = 0.1F;
// A direction that fails leaves the limit of a parameter open when it reaches at least half as far as the one
// that reaches furthest.
constexpr double TellingShare = 0.5;

// What the trials of a search overwrite, so that the fit stands as before when it is over.
struct FitState {
    PerSlot<float> Parms;
    OneBased<float> PtFit;
    std::array<PerRow<float>, 2> ConstraintFit;
    PerFree<std::int16_t> AtBound;
    PerFree<double> Increment;
    double SumSq, Alpha;
    std::int16_t FitValid, BoundHit;
    FitOutcome Outcome;
};

FitState KeepFit() {
    return {Work.Parms, Work.PtFit, Work.ConstraintFit, Work.AtBound,  Work.Increment,
            Work.SumSq, Work.Alpha, Work.FitValid,      Work.BoundHit, Work.Outcome};
}

void BringBack(FitState& kept) {
    Work.Parms = kept.Parms;
    Work.PtFit = kept.PtFit;
    Work.ConstraintFit = kept.ConstraintFit;
    Work.AtBound = kept.AtBound;
    Work.Increment = kept.Increment;
    Work.SumSq = kept.SumSq;
    Work.Alpha = kept.Alpha;
    Work.FitValid = kept.FitValid;
    Work.BoundHit = kept.BoundHit;
    Work.Outcome = kept.Outcome;
    Work.FunctionFailed = FlagFalse;
    ResetConstraintSums();
}

// A trial; false where the function has no value, which is far beyond any target and nothing worse.
bool HasSum(float alpha) {
    Work.Alpha = static_cast<double>(alpha);
    try {
        ApplyIncrement();
        CalcSumSq();
    } catch (const RuntimeError&) {
        return false; // a step beyond the range of a single
    }
    if (!Work.FunctionFailed) return true;
    Failed = true;
    ForgetStop();
    return false;
}

// One evaluation: how far the ratio of sums of squares still is from the target at a step length.
float Shortfall(float alpha, float target) {
    if (!HasSum(alpha)) return FarBeyond;
    if (Work.AbortFit) return 0.0F;
    const double q = Divide(Work.SumSq, BestSumSq);
    if (std::fabs(q) < 9e37) return static_cast<float>(static_cast<double>(target) - q);
    return q > 0.0 ? FarBeyond : -FarBeyond;
}

// The increment of one standard deviation along an axis of the error ellipsoid: the eigenvector times
// s sqrt(eigenvalue) of the inverse normal matrix, s the root mean square residual. Elements below a
// thousandth of the axis count as none.
void SetAxisIncrement(long axis, double sign, double eigenvalue) {
    const double length = std::sqrt(std::fabs(eigenvalue)) * static_cast<double>(Work.RmsResidual);
    for (const FreePos b : EachFree()) {
        const double element = static_cast<double>(Work.CorrMatrix(b.Number, axis));
        Work.Increment[b] = std::fabs(element) > 0.001 ? sign * element * length : 0.0;
    }
}

// What the search along the axes has left: the end points, and of each the reason why it is none.
struct Walk {
    ZeroBased<double> Eigenvalues;
    std::vector<std::string> Reasons; // by end point; empty where it was found
};

// How far an end point lies from the best fit in a free position, by the linear problem.
double Extent(const Walk& walk, long end, FreePos place) {
    const long axis = end / 2;
    const double element = static_cast<double>(Work.CorrMatrix(place.Number, axis));
    return (end % 2 == 0 ? 1.0 : -1.0) * element * std::sqrt(std::fabs(walk.Eigenvalues[axis]));
}

// The fitted parameters that an axis moves together, in words.
std::string AxisText(long axis) {
    PerFree<double> elements(Work.NumFree - 1);
    for (const FreePos b : EachFree())
        elements[b] = static_cast<double>(Work.CorrMatrix(b.Number, axis));
    return CombinationText(elements);
}

bool StandsStill() {
    return std::all_of(Work.Increment.begin(), Work.Increment.end(), [](double step) { return step == 0.0; });
}

void StayAtTheFit(long end) {
    for (const SlotNo k : EachSlot())
        Work.ConfTrace(k.Number, end) = Work.ParmsSave[k];
}

// The end along one axis into a column of ConfTrace; the reason where there is none. Nothing counts after a
// cancel.
std::string WalkTo(long end, float guess, const Walk& walk) {
    const long axis = end / 2;
    Failed = false;
    SetAxisIncrement(axis, end % 2 == 0 ? 1.0 : -1.0, walk.Eigenvalues[axis]);
    StayAtTheFit(end); // a column without an end bounds nothing
    if (StandsStill()) return AxisText(axis);
    try {
        FindRatioRoot(guess, Work.ConfidenceRatio);
    } catch (const RuntimeError&) { // no root: what that means is told by whether the function had values
        const std::string noValue = "The fitted values cannot be computed before the sum has grown enough. ";
        return (Failed ? noValue : "") + AxisText(axis);
    }
    for (const SlotNo k : EachSlot())
        Work.ConfTrace(k.Number, end) = Work.Parms[k];
    return "";
}

// All end points; false when cancelled.
bool WalkAxes(Walk& walk, const std::function<void(double)>& progress) {
    const double p = static_cast<double>(Work.ConfidenceLevel);
    // In standard deviations: 1.96 of a normal distribution at 95%, and half a unit for each factor e in 1 -
    // p.
    const auto guess = static_cast<float>(1.96 - 0.5 * std::log((1.0 - p) / 0.05));
    const long ends = 2L * Work.NumFree;
    for (long end = 0; end < ends; ++end) {
        if (Work.AbortFit) return false;
        walk.Reasons.push_back(WalkTo(end, guess, walk));
        if (Work.AbortFit) return false;
        if (progress) progress(static_cast<double>(end + 1) / static_cast<double>(ends));
    }
    return true;
}

// The end point that reaches furthest to a side among those that were not found; -1 when those that were
// found reach further.
long MissingEnd(const Walk& walk, FreePos place, bool upper) {
    double found = 0.0, missing = 0.0;
    long end = -1;
    for (std::size_t e = 0; e < walk.Reasons.size(); ++e) {
        const double extent = Extent(walk, static_cast<long>(e), place);
        if ((extent > 0.0) != upper) continue;
        const double reach = std::fabs(extent);
        if (walk.Reasons[e].empty())
            found = std::max(found, reach);
        else if (reach > missing) {
            missing = reach;
            end = static_cast<long>(e);
        }
    }
    return missing > 0.0 && missing >= TellingShare * found ? end : -1;
}

void TakeLimitsOf(FreePos place) {
    const SlotNo k = SlotOf(place);
    float lowest = 1e38F;
    float highest = -1e38F;
    for (long end = 0; end <= Work.ConfTrace.ColumnHi(); ++end) {
        lowest = std::min(lowest, Work.ConfTrace(k.Number, end));
        highest = std::max(highest, Work.ConfTrace(k.Number, end));
    }
    Work.ParmLimits[0][place] = lowest;
    Work.ParmLimits[1][place] = highest;
}

void DropLimit(FreePos place, bool upper, const std::string& reason) {
    Work.ParmLimits[upper ? 1 : 0][place] = upper ? NoLimit : -NoLimit;
    Work.LimitReason[place] = reason;
}

std::string AloneText(FreePos place) {
    PerFree<double> elements(Work.NumFree - 1);
    elements[place] = 1.0;
    return CombinationText(elements);
}

// Takes back a limit that rests on a direction without an end. A parameter without an error has no direction.
void DropMissing(const Walk& walk, FreePos place, bool upper) {
    if (HasNoError(place)) return DropLimit(place, upper, AloneText(place));
    const long end = MissingEnd(walk, place, upper);
    if (end >= 0) DropLimit(place, upper, walk.Reasons[static_cast<std::size_t>(end)]);
}

void TakeLimits(const Walk& walk) {
    for (auto& side : Work.ParmLimits)
        side.Recreate(Work.NumFree - 1);
    Work.LimitReason.Recreate(Work.NumFree - 1);
    for (const FreePos a : EachFree()) {
        TakeLimitsOf(a);
        DropMissing(walk, a, false);
        DropMissing(walk, a, true);
    }
    Work.LimitsLevel = Work.ConfidenceLevel;
    Work.LimitsDone = FlagTrue;
}

// True when no direction has an end: the search as a whole has failed.
bool FoundNothing(const Walk& walk) {
    return std::none_of(walk.Reasons.begin(), walk.Reasons.end(),
                        [](const std::string& reason) { return reason.empty(); });
}

ZeroBased<double> DecomposeErrors() {
    ZeroBasedMatrix<double> inverse = Work.NormMatrix;
    ZeroBased<double> eigenvalues;
    ZeroBasedMatrix<double> vectors;
    JacobiEigen(inverse, eigenvalues, vectors);
    const long last = Work.NumFree - 1;
    Work.CorrMatrix.Recreate(last, last);
    for (long a = 0; a <= last; ++a)
        for (long b = 0; b <= last; ++b)
            Work.CorrMatrix(a, b) = static_cast<float>(vectors(a, b));
    return eigenvalues;
}

// All directions, and what stands behind them; the failure in words.
std::string SearchAlongAxes(const std::function<void(double)>& progress) {
    const std::string nothing = "No confidence limit was found\n\n";
    if (!HasInverse()) return nothing + "The normal matrix of the fit has no inverse.";
    try {
        ComputeConfidenceRatio(Work.ConfidenceLevel);
        BestSumSq = Work.SumSq;
        Work.AtBound.Resize(Work.NumFree); // a restored fit has not been stepped yet
        Walk walk;
        walk.Eigenvalues = DecomposeErrors();
        Work.ParmsSave = Work.Parms;
        Work.ConfTrace.Recreate(Work.NumParms - 1, 2L * Work.NumFree - 1);
        if (!WalkAxes(walk, progress)) return ""; // cancelled
        if (FoundNothing(walk)) return nothing + walk.Reasons.front();
        TakeLimits(walk);
    } catch (const RuntimeError& error) {
        return "Error '" + error.Text + "' occurred while searching for confidence limits";
    }
    return "";
}

} // namespace

bool LimitFound(FreePos place, bool upper) {
    return std::fabs(Work.ParmLimits[upper ? 1 : 0][place]) < NoLimit;
}

void ComputeConfidenceRatio(float level) {
    const double n = static_cast<double>(Work.NumFree);
    const double df = static_cast<double>(ToInt16(Work.NumPts - Work.NumFree));
    const auto alpha = static_cast<float>(1.0 - static_cast<double>(level));
    const double f = static_cast<double>(FInverse(alpha, static_cast<float>(n), static_cast<float>(df)));
    Work.ConfidenceRatio = ToSingle(1.0 + Divide(n, df) * f);
}

float FindRatioRoot(float guess, float target) {
    bool stop = false;
    float lastQ = 0.0F, rootQ = 0.0F;
    // A direction in which every parameter stands at a bound has no root: its end is the bound.
    bool stuck = false;
    std::vector<std::pair<float, float>> tried;
    const auto g = [&](float alpha) {
        const float rest = Shortfall(alpha, target);
        stuck = Work.BoundHit && rest > 0.0F && rest == lastQ;
        lastQ = rest;
        tried.emplace_back(alpha, rest);
        stop = Work.AbortFit || stuck;
        return rest;
    };
    const float root = FindRoot(g, guess, stop);
    if (Work.AbortFit) return 0.0F;
    if (stuck) return static_cast<float>(Work.Alpha);
    for (const auto& [alpha, rest] : tried)
        if (alpha == root) rootQ = rest;
    if (std::fabs(rootQ) > LargestJump * (target - 1.0F)) RaiseError(ErrorText::BadArgument);
    Work.Alpha = static_cast<double>(root);
    ApplyIncrement();
    return root;
}

LimitsOutcome ConfidenceSearch(const std::function<void(double fraction)>& progress) {
    ForgetStop();
    Work.LimitsDone = FlagFalse;
    FitState kept = KeepFit();
    LimitsOutcome outcome{SearchAlongAxes(progress)};
    BringBack(kept);
    ClearCancel();
    return outcome;
}

} // namespace Quillon
