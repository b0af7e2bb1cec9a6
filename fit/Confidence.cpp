#include "fit/Confidence.h"

#include "fit/FDistribution.h"
#include "fit/GNLLSQ.h"
#include "models/Constraints.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

double BestSumSq = 0.0; // at the best fit

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

// One evaluation: how far the ratio of sums of squares still is from the target at a step length.
float Shortfall(float alpha, float target) {
    Work.Alpha = static_cast<double>(alpha);
    ApplyIncrement();
    CalcSumSq();
    if (Work.AbortFit) return 0.0F;
    const double q = Divide(Work.SumSq, BestSumSq);
    if (std::fabs(q) < 9e37) return static_cast<float>(static_cast<double>(target) - q);
    return q > 0.0 ? -9e37F : 9e37F; // beyond the range of a single, and so far beyond the target
}

// The increment of one standard deviation along an axis of the error ellipsoid.
void SetAxisIncrement(long axis, double sign, double eigenvalue) {
    const double length = std::sqrt(std::fabs(eigenvalue)) * static_cast<double>(Work.RmsResidual);
    for (long b = 0; b < Work.NumFree; ++b) {
        const double element = static_cast<double>(Work.CorrMatrix(b, axis));
        Work.Increment[b] = std::fabs(element) > 0.001 ? sign * element * length : 0.0;
    }
}

// All end points; false when cancelled.
bool WalkAxes(const ZeroBased<double>& eigenvalues, const std::function<void(double)>& progress) {
    const double p = static_cast<double>(Work.ConfidenceLevel);
    const auto guess = static_cast<float>(1.96 - 0.5 * std::log((1.0 - p) / 0.05));
    const long ends = 2L * Work.NumFree;
    for (long end = 0; end < ends; ++end) {
        if (Work.AbortFit) return false;
        const long axis = end / 2;
        SetAxisIncrement(axis, end % 2 == 0 ? 1.0 : -1.0, eigenvalues[axis]);
        FindRatioRoot(guess, Work.ConfidenceRatio);
        if (Work.AbortFit) return false;
        for (long k = 0; k < Work.NumParms; ++k)
            Work.ConfTrace(k, end) = Work.Parms[k];
        if (progress) progress(static_cast<double>(end + 1) / static_cast<double>(ends));
    }
    return true;
}

void TakeLimits() {
    for (auto& side : Work.ParmLimits)
        side.Recreate(Work.NumFree - 1);
    for (long a = 0; a < Work.NumFree; ++a) {
        const long k = Work.FreeIndex[a];
        float lowest = 1e38F;
        float highest = -1e38F;
        for (long end = 0; end <= Work.ConfTrace.ColumnHi(); ++end) {
            lowest = std::min(lowest, Work.ConfTrace(k, end));
            highest = std::max(highest, Work.ConfTrace(k, end));
        }
        Work.ParmLimits[0][a] = lowest;
        Work.ParmLimits[1][a] = highest;
    }
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

} // namespace

void ComputeConfidenceRatio() {
    const double n = static_cast<double>(Work.NumFree);
    const double df = static_cast<double>(ToInt16(Work.NumPts - Work.NumFree));
    const auto alpha = static_cast<float>(1.0 - static_cast<double>(Work.ConfidenceLevel));
    const double f = static_cast<double>(FInverse(alpha, static_cast<float>(n), static_cast<float>(df)));
    Work.ConfidenceRatio = ToSingle(1.0 + Divide(n, df) * f);
}

float FindRatioRoot(float guess, float target) {
    bool stop = false;
    float lastQ = 0.0F;
    // A direction in which every parameter stands at a bound has no root: its end is the bound.
    bool stuck = false;
    const auto g = [&](float alpha) {
        const float rest = Shortfall(alpha, target);
        stuck = Work.BoundHit && rest > 0.0F && rest == lastQ;
        lastQ = rest;
        stop = Work.AbortFit || stuck;
        return rest;
    };
    const float root = FindRoot(g, guess, stop);
    if (Work.AbortFit) return 0.0F;
    if (stuck) return static_cast<float>(Work.Alpha);
    Work.Alpha = static_cast<double>(root);
    ApplyIncrement();
    return root;
}

void ConfidenceSearch(const std::function<void(double fraction)>& progress) {
    Work.AbortFit = Work.LimitsDone = Work.FunctionFailed = FlagFalse;
    FitState kept = KeepFit();
    try {
        ComputeConfidenceRatio();
        BestSumSq = Work.SumSq;
        Work.AtBound.Resize(Work.NumFree); // a restored fit has not been stepped yet
        const ZeroBased<double> eigenvalues = DecomposeErrors();
        Work.ParmsSave = Work.Parms;
        Work.ConfTrace.Recreate(Work.NumParms - 1, 2L * Work.NumFree - 1);
        if (WalkAxes(eigenvalues, progress)) {
            TakeLimits();
            Work.LimitsDone = FlagTrue;
        }
    } catch (const RuntimeError& error) {
        Tell("Error '" + error.Text + "' occurred while searching for confidence limits", Work.ProgramName,
             BoxIcon::Warning);
    }
    if (Work.FunctionFailed) Tell(Work.Outcome.Sentence, Work.ProgramName, BoxIcon::Stop);
    BringBack(kept);
    Work.AbortFit = FlagFalse;
}

} // namespace Quillon
