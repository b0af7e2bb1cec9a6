// The rescue of a fit that did not end at a minimum.
#include "fit/BetterStarts.h"
#include "fit/FitProgress.h"
#include "fit/GNLLSQ.h"
#include "fit/Misfit.h"
#include "fit/equations/Bounds.h"
#include "fit/equations/NormalEquations.h"
#include "models/function/BlockFunction.h"
#include "models/function/FitFunction.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace Quillon {

namespace {

struct Reached {
    PerSlot<float> Parms;
    double SumSq = 0.0;
};

// What was put aside before a trial has the slots in use alone: those behind them stay.
void GoTo(const Reached& place) {
    std::copy(place.Parms.begin(), place.Parms.end(), Work.Parms.begin());
    Work.SumSq = place.SumSq;
}

void StartFrom(const PerSlot<float>& start) {
    Work.Parms = start;
    Work.FitDone = Work.LimitsDone = FlagFalse;
    ForgetStop();
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

// A minimum that leaves more than the noise may be one of several.
bool IsDownToNoise(const Workspace& fit) {
    constexpr double Allowed = 1.5; // of a few hundred points the ratio scatters by a tenth
    const double freedom = static_cast<double>(fit.NumPts - fit.NumFree);
    return fit.SumSq < Allowed * NoiseVariance(fit) * freedom && !LeavesMoreThanNoise(fit);
}

// True when a is the better end: a minimum before anything else, then the lower sum.
bool IsBetter(const Workspace& a, const Workspace& b) {
    const bool minimumA = a.Outcome.End == FitEnd::Converged;
    const bool minimumB = b.Outcome.End == FitEnd::Converged;
    if (minimumA != minimumB) return minimumA;
    return a.FitValid && (!b.FitValid || a.SumSq < b.SumSq);
}

// After a cancel: the parameters of the lowest sum so far, with the fit that ended there if one did, that of
// before the search among them. A pass that was broken off has left no sum.
void KeepBestOnCancel(const Workspace& best) {
    const bool lower = best.FitValid && !(Work.SumSq < best.SumSq);
    if (lower && best.FitDone) {
        Work = best;
        AskToStop();
        return;
    }
    Work.Outcome = FitOutcome{FitEnd::Cancelled, CancelledText};
    if (lower) GoTo({best.Parms, best.SumSq});
    MarkBounds();
    Work.FitValid = Work.FitDone = FlagFalse;
}

// Where an attempt starts. What the user gave comes first; what may be better known comes behind it, and
// behind the last attempt of a rescue the starts that are moved away.
constexpr int LastAttempt = 4;
PerSlot<float> StartOf(int attempt, const PerSlot<float>& start, const Workspace& best) {
    if (attempt <= 2) return start;
    if (attempt > LastAttempt) return MovedStart(start, attempt - LastAttempt);
    return attempt == 3 ? VisibleStart(start) : BestOfEachSet(best.Parms);
}

// What comes behind an attempt. A minimum that is down to the noise leaves nothing to be looked for but a set
// that is caught in the wrong proportion of its species.
int NextAttempt(int attempt, const Workspace& best) {
    const bool good = best.Outcome.End == FitEnd::Converged && IsDownToNoise(best);
    if (!good) return attempt + 1;
    return TraitsOfModel().TwoSpecies && attempt < LastAttempt ? LastAttempt : LastAttempt + 1;
}

// True where there is no better start, or no other one.
bool IsNothingNew(int attempt, const PerSlot<float>& from, const PerSlot<float>& start,
                  const Workspace& best) {
    if (attempt == LastAttempt) return from == best.Parms && best.FitDone;
    return attempt > LastAttempt && from == start;
}

// One attempt, its end in best where that is better. False when nothing more is to be tried: after a cancel,
// and where there is no value or no better start.
bool TryAttempt(int attempt, const PerSlot<float>& start, Workspace& best, const FitProgress& progress) {
    const PerSlot<float> from = StartOf(attempt, start, best);
    if (IsCancelled()) return false;
    if (IsNothingNew(attempt, from, start, best) ||
        !Attempt(attempt == 2 ? DampedWay::Plain : DampedWay::Guided, from, progress))
        return false;
    if (!IsCancelled() && IsBetter(Work, best)) best = Work;
    return !IsCancelled();
}

// The roads to other minima from one that has been reached, the shortest ones first. A rescued fit has been
// along the first ones. For each one moved start, and at last the best of each set once more from where the
// others have led.
std::vector<int> RoadsFrom(const Workspace& own) {
    std::vector<int> roads{LastAttempt};
    const bool twoSpecies = TraitsOfModel().TwoSpecies;
    if (!own.Outcome.Rescued) roads.push_back(1);
    if (!own.Outcome.Rescued && twoSpecies) roads.insert(roads.end(), {3, LastAttempt});
    for (int move = 1; move <= MovedStarts; ++move)
        roads.push_back(LastAttempt + move);
    if (twoSpecies) roads.push_back(LastAttempt);
    return roads;
}

// Of the sum of squares; what is found below that is another minimum.
constexpr double MuchLower = 0.999;

// So many roads that lead back to the lowest minimum so far tell that the model, and no place, is the reason.
constexpr int EnoughBack = 4;

bool LeadsBack(double lowest) {
    return Work.Outcome.End == FitEnd::Converged && Work.SumSq >= MuchLower * lowest &&
           MuchLower * Work.SumSq <= lowest;
}

bool IsLowerMinimum(const Workspace& found, const Workspace& own) {
    return found.Outcome.End == FitEnd::Converged && found.SumSq < MuchLower * own.SumSq;
}

} // namespace

std::optional<Workspace> FindLowerMinimum(const PerSlot<float>& start, const FitProgress& progress) {
    if (Work.Outcome.End != FitEnd::Converged || !LeavesMoreThanNoise(Work)) return std::nullopt;
    const ProgressInUse inUse(progress);
    const Workspace own = Work;
    Workspace best = own;
    int back = 0;
    for (const int attempt : RoadsFrom(own)) {
        const double before = best.SumSq;
        if (TryAttempt(attempt, start, best, progress) && LeadsBack(before)) ++back;
        if (back == EnoughBack || IsCancelled() || !LeavesMoreThanNoise(best)) break;
    }
    const bool cancelled = IsCancelled();
    Work = own;
    HandOnCancel(cancelled);
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
