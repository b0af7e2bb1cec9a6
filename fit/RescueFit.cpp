// The rescue of a fit that did not end at a minimum.
#include "fit/BetterStarts.h"
#include "fit/Bounds.h"
#include "fit/FitProgress.h"
#include "fit/GNLLSQ.h"
#include "fit/NoiseWeights.h"
#include "fit/NormalEquations.h"
#include "models/BlockFunction.h"
#include "models/FitFunction.h"
#include "models/ModelTable.h"
#include "models/ParmScale.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace Quillon {

namespace {

struct Reached {
    PerSlot<float> Parms;
    double SumSq = 0.0;
};

void GoTo(const Reached& place) {
    Work.Parms = place.Parms;
    Work.SumSq = place.SumSq;
}

void StartFrom(const PerSlot<float>& start) {
    Work.Parms = start;
    Work.FitDone = Work.LimitsDone = Work.AbortFit = Work.FunctionFailed = FlagFalse;
    Work.AtBound.Recreate(Work.NumFree);
    ResetFitFunction();
    BuildParmScale();
}

DampedEnd SearchBy(DampedWay way, const PerSlot<float>& start) {
    DampedEnd end = DampedEnd::NoStart;
    try {
        StartFrom(start);
        StoreSignals(true);
        end = SearchDamped(way);
    } catch (const RuntimeError&) {
        // A start without a scale has no minimum.
    }
    StoreSignals(false);
    return end;
}

// After an end that left no fit: the better of the place that the search had found and the last one that the
// iteration had come to in full.
void KeepBetter(const Reached& found) {
    const bool broken = Work.AbortFit != 0;
    const Reached last = broken ? Reached{Work.ParmsSave, Work.LastSumSq} : Reached{Work.Parms, Work.SumSq};
    GoTo(last.SumSq < found.SumSq ? last : found);
    MarkBounds();       // those of the latest trial are of another place
    if (broken) return; // no pass is run any more
    const FitOutcome outcome = Work.Outcome;
    ResetFitFunction();
    CalcSumSq();
    Work.Outcome = outcome;
}

// One search and the iteration behind it. False when the function has no value at the start, and nothing has
// been done.
bool Attempt(DampedWay way, const PerSlot<float>& start, const FitProgress& progress) {
    const DampedEnd end = SearchBy(way, start);
    if (end == DampedEnd::NoStart) return false;
    if (end == DampedEnd::Cancelled) return true;
    const Reached found{Work.Parms, Work.SumSq};
    RunFit(progress);
    if (Work.Outcome.End == FitEnd::Converged)
        Work.Outcome.Rescued = true;
    else if (!Work.FitDone)
        KeepBetter(found);
    return true;
}

// The square of how far point p lies from the line between its neighbours, in variances of a point; below 0
// where it has no two.
double ShareOfNoise(long p) {
    if (Work.PtSet[p - 1] != Work.PtSet[p + 1] || Work.PtX[p + 1] == PointMarker) return -1.0;
    const double before = static_cast<double>(Work.PtX[p] - Work.PtX[p - 1]);
    const double both = static_cast<double>(Work.PtX[p + 1] - Work.PtX[p - 1]);
    if (!(before >= 0.0 && both > before)) return -1.0;
    const double w = before / both;
    const double line =
        (1.0 - w) * static_cast<double>(Work.PtY[p - 1]) + w * static_cast<double>(Work.PtY[p + 1]);
    const double off = NoiseWeight(SetNo(Work.PtSet[p])) * (static_cast<double>(Work.PtY[p]) - line);
    return off * off / (1.0 + w * w + (1.0 - w) * (1.0 - w));
}

// The variance of the noise, from the median of what stands out between two neighbours: where the signal
// bends, few points do.
double NoiseVariance() {
    std::vector<double> shares;
    for (long p = 2; p < Work.NumPts; ++p)
        if (const double share = ShareOfNoise(p); share >= 0.0) shares.push_back(share);
    if (shares.empty()) return 0.0;
    const auto middle = shares.begin() + static_cast<std::ptrdiff_t>(shares.size() / 2);
    std::nth_element(shares.begin(), middle, shares.end());
    constexpr double MedianOfChiSquare = 0.4549; // of one degree of freedom
    return *middle / MedianOfChiSquare;
}

// A minimum that leaves more than the noise may be one of several.
bool IsDownToNoise(const Workspace& fit) {
    constexpr double Allowed = 1.5; // of a few hundred points the ratio scatters by a tenth
    const double freedom = static_cast<double>(fit.NumPts - fit.NumFree);
    return fit.SumSq < Allowed * std::max(NoiseVariance(), LeastVariance()) * freedom;
}

// True when a is the better end: a minimum before anything else, then the lower sum.
bool IsBetter(const Workspace& a, const Workspace& b) {
    const bool minimumA = a.Outcome.End == FitEnd::Converged;
    const bool minimumB = b.Outcome.End == FitEnd::Converged;
    if (minimumA != minimumB) return minimumA;
    return a.FitValid && (!b.FitValid || a.SumSq < b.SumSq);
}

// True when the user wants no more; a failure in arithmetic raises the flag as well.
bool IsCancelled() {
    return Work.AbortFit && !Work.FunctionFailed;
}

// After a cancel: the parameters of the lowest sum so far, with the fit that ended there if one did, that of
// before the search among them. A pass that was broken off has left no sum.
void KeepBestOnCancel(const Workspace& best) {
    const bool lower = best.FitValid && !(Work.SumSq < best.SumSq);
    if (lower && best.FitDone) {
        Work = best;
        Work.AbortFit = FlagTrue;
        return;
    }
    Work.Outcome = FitOutcome{FitEnd::Cancelled, CancelledText};
    if (lower) GoTo({best.Parms, best.SumSq});
    MarkBounds();
    Work.FitValid = Work.FitDone = FlagFalse;
}

// Where an attempt starts. What the user gave comes first; what may be better known comes behind it.
constexpr int LastAttempt = 4;
PerSlot<float> StartOf(int attempt, const PerSlot<float>& start, const Workspace& best) {
    if (attempt <= 2) return start;
    return attempt == 3 ? VisibleStart(start) : BestOfEachSet(best.Parms);
}

// What comes behind an attempt. A minimum that is down to the noise leaves nothing to be looked for but a set
// that is caught in the wrong proportion of its species.
int NextAttempt(int attempt, const Workspace& best) {
    const bool good = best.Outcome.End == FitEnd::Converged && IsDownToNoise(best);
    if (!good) return attempt + 1;
    return TraitsOfModel().TwoSpecies && attempt < LastAttempt ? LastAttempt : LastAttempt + 1;
}

// One attempt, its end in best where that is better. False when nothing more is to be tried: after a cancel,
// and where there is no value or no better start.
bool TryAttempt(int attempt, const PerSlot<float>& start, Workspace& best, const FitProgress& progress) {
    const PerSlot<float> from = StartOf(attempt, start, best);
    if (IsCancelled()) return false;
    const bool nothingNew = attempt == LastAttempt && from == best.Parms && best.FitDone;
    if (nothingNew || !Attempt(attempt == 2 ? DampedWay::Plain : DampedWay::Guided, from, progress))
        return false;
    if (!IsCancelled() && IsBetter(Work, best)) best = Work;
    return !IsCancelled();
}

// The roads to other minima from one that has been reached, the shortest one first, and that one once more
// from where the others have led.
constexpr int LookedAlong[] = {LastAttempt, 1, 3, LastAttempt};

// Of the sum of squares; what is found below that is another minimum.
constexpr double MuchLower = 0.999;

// Sums of squared residuals and their number, of a set or of all.
struct Residuals {
    double SumSq = 0.0;
    double Count = 0.0;

    void Add(double residual) {
        SumSq += residual * residual;
        Count += 1.0;
    }
    // Four standard deviations beyond the noise: of the mean of so many squares, 2 / n, and of the noise as
    // the data show it, in which the median of N squares counts for 9 / N.
    bool StandOut(double noise, double points) const {
        constexpr double Deviations = 4.0;
        const double spread = std::sqrt(2.0 / Count + 9.0 / points);
        return Count > 0.0 && SumSq > (1.0 + Deviations * spread) * noise * Count;
    }
};

// True when all points together, or those of one set, lie further from the fit than their noise: a set that
// is caught hardly shows in the sum of many.
bool LeavesMoreThanNoise(const Workspace& fit) {
    Residuals all;
    std::vector<Residuals> sets(static_cast<std::size_t>(fit.NumSets) + 1);
    for (long p = 1; p <= fit.NumPts; ++p) {
        if (fit.PtX[p] == PointMarker) continue;
        const double residual = NoiseWeight(SetNo(fit.PtSet[p])) *
                                (static_cast<double>(fit.PtY[p]) - static_cast<double>(fit.PtFit[p]));
        all.Add(residual);
        sets[static_cast<std::size_t>(fit.PtSet[p])].Add(residual);
    }
    const double noise = std::max(NoiseVariance(), LeastVariance());
    return all.StandOut(noise, all.Count) || std::any_of(sets.begin(), sets.end(), [&](const Residuals& set) {
               return set.StandOut(noise, all.Count);
           });
}

bool IsLowerMinimum(const Workspace& found, const Workspace& own) {
    return found.Outcome.End == FitEnd::Converged && found.SumSq < MuchLower * own.SumSq;
}

} // namespace

std::optional<Workspace> FindLowerMinimum(const PerSlot<float>& start, const FitProgress& progress) {
    const bool single = !TraitsOfModel().TwoSpecies;
    if (single || Work.Outcome.End != FitEnd::Converged || !LeavesMoreThanNoise(Work)) return std::nullopt;
    const ProgressInUse inUse(progress);
    const Workspace own = Work;
    Workspace best = own;
    for (const int attempt : LookedAlong) {
        TryAttempt(attempt, start, best, progress);
        if (IsCancelled() || !LeavesMoreThanNoise(best)) break;
    }
    const bool cancelled = IsCancelled();
    Work = own;
    Work.AbortFit = Flag(cancelled);
    if (cancelled || !IsLowerMinimum(best, own)) return std::nullopt;
    return best;
}

bool RescueFit(const PerSlot<float>& start, const FitProgress& progress) {
    const ProgressInUse inUse(progress);
    Workspace best = Work;
    int attempt = 1;
    while (attempt <= LastAttempt && TryAttempt(attempt, start, best, progress))
        attempt = NextAttempt(attempt, best);
    if (IsCancelled())
        KeepBestOnCancel(best);
    else
        Work = best;
    return Work.FitDone != 0;
}

} // namespace Quillon
