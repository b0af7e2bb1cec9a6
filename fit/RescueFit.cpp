// The rescue of a fit that did not end at a minimum.
#include "fit/RescueFit.h"
#include "fit/BetterStarts.h"
#include "fit/DampedSearch.h"
#include "fit/FitProgress.h"
#include "fit/Misfit.h"
#include "fit/RunFit.h"
#include "fit/SetBySet.h"
#include "fit/Sums.h"
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

// A minimum that is down to the noise leaves nothing to be looked for but a set that is caught in the wrong
// proportion of its species.
bool IsGood(const Workspace& fit) {
    return fit.Outcome.End == FitEnd::Converged && IsDownToNoise(fit);
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

// A way to a minimum: where the search starts, and by which way it goes.
enum class Road {
    Guided, // from the user's start
    Plain,
    Visible,      // from constants that show
    EachSet,      // from the best place so far, with the best concentrations that each set has by itself
    DoubtfulSets, // the same for sets that stand a little above the noise
    Moved         // from other constants or masses; so many numbers follow
};
Road MovedRoad(int number) {
    return static_cast<Road>(static_cast<int>(Road::Moved) + number);
}

PerSlot<float> StartOf(Road road, const PerSlot<float>& start, const Workspace& best) {
    switch (road) {
    case Road::Guided:
    case Road::Plain:
        return start;
    case Road::Visible:
        return VisibleStart(start);
    case Road::EachSet:
        return BestOfEachSet(best.Parms);
    case Road::DoubtfulSets:
        return BestOfEachSet(best.Parms, TriedSets::Doubtful);
    default:
        return MovedStart(start, static_cast<int>(road) - static_cast<int>(Road::Moved));
    }
}

// True where there is no better start, or no other one.
bool IsNothingNew(Road road, const PerSlot<float>& from, const PerSlot<float>& start, const Workspace& best) {
    if (road == Road::Guided || road == Road::Plain) return false;
    if (road == Road::EachSet || road == Road::DoubtfulSets) return from == best.Parms && best.FitDone;
    return from == start;
}

enum class Tried {
    Gone,    // to an end
    Nothing, // no new start
    Stopped  // cancelled, or the function has no value at the start
};

// One road, its end in best where that is better.
Tried TryRoad(Road road, const PerSlot<float>& start, Workspace& best, const FitProgress& progress) {
    const PerSlot<float> from = StartOf(road, start, best);
    if (IsCancelled()) return Tried::Stopped;
    if (IsNothingNew(road, from, start, best)) return Tried::Nothing;
    if (!Attempt(road == Road::Plain ? DampedWay::Plain : DampedWay::Guided, from, progress))
        return Tried::Stopped;
    if (IsCancelled()) return Tried::Stopped;
    if (IsBetter(Work, best)) best = Work;
    return Tried::Gone;
}

// What the user gave comes first, unless it has a constant that shows nowhere: no slope leads from there, and
// the searches would end far from the data at the price of the one that arrives.
std::vector<Road> RoadsFromStart(const PerSlot<float>& start) {
    if (HidesAConstant(start, VisibleStart(start)))
        return {Road::Visible, Road::Guided, Road::Plain, Road::EachSet};
    return {Road::Guided, Road::Plain, Road::Visible, Road::EachSet};
}

// The roads to other minima from one that has been reached, the shortest ones first. A rescued fit has been
// along the first ones. For each one moved start, and at last the best of each set once more from where the
// others have led.
std::vector<Road> RoadsFrom(const Workspace& own) {
    std::vector<Road> roads{Road::EachSet};
    const bool twoSpecies = TraitsOfModel().TwoSpecies;
    if (!own.Outcome.Rescued) roads.push_back(Road::Guided);
    if (!own.Outcome.Rescued && twoSpecies) roads.insert(roads.end(), {Road::Visible, Road::EachSet});
    for (int move = 1; move <= MovedStarts; ++move)
        roads.push_back(MovedRoad(move));
    if (twoSpecies) roads.push_back(Road::EachSet);
    return roads;
}

// For a fit that is in some doubt. Of 23 mixtures in another minimum within the noise these found the lowest
// one behind all, at the price of two or three plain fits; a rescued fit has been along one of them,
// whichever it was. One species is caught where it is too heavy and associates too weakly: stronger constants
// lead out of that, which the start did in 6 of 16 and they in all.
// Where the start hides a constant, the rescue has begun with the one that shows, and nothing leads from
// there.
std::vector<Road> ShortRoads(const PerSlot<float>& start, bool rescued) {
    if (!TraitsOfModel().TwoSpecies) return {MovedRoad(StrongerConstants), Road::Guided};
    if (!HidesAConstant(start, VisibleStart(start)))
        return {Road::EachSet, Road::Visible, Road::Guided, Road::EachSet};
    if (rescued) return {Road::EachSet};
    return {Road::EachSet, Road::Visible, Road::EachSet};
}

// So many roads that lead back to the lowest minimum so far tell that the model, and no place, is the reason.
constexpr int EnoughBack = 4;

bool LeadsBack(double lowest) {
    return Work.Outcome.End == FitEnd::Converged && Work.SumSq >= MuchLower * lowest &&
           MuchLower * Work.SumSq <= lowest;
}

bool IsLowerMinimum(const Workspace& found, const Workspace& own) {
    return found.Outcome.End == FitEnd::Converged && found.SumSq < MuchLower * own.SumSq;
}

// One set after the other, since one that is caught may hide another one.
void FreeCaughtSets(Road road, const PerSlot<float>& start, Workspace& best, const FitProgress& progress) {
    constexpr int MostTimes = 3;
    for (int i = 0; i < MostTimes; ++i) {
        const double before = best.SumSq;
        if (TryRoad(road, start, best, progress) != Tried::Gone) return;
        if (!(best.SumSq < MuchLower * before)) return;
    }
}

// A fit that only the search has found, or that leaves something undetermined, ends in another minimum more
// often than others do.
Doubt DoubtBehind(const Workspace& fit) {
    const Doubt doubt = DoubtAbout(fit);
    const bool hard = fit.Outcome.Rescued || !fit.Outcome.Reason.empty();
    return doubt == Doubt::Slight && hard ? Doubt::Some : doubt;
}

// Until there is less doubt, or so many roads have led back.
void GoAlongRoads(const std::vector<Road>& roads, Doubt doubt, const PerSlot<float>& start, Workspace& best,
                  const FitProgress& progress) {
    int back = 0;
    for (const Road road : roads) {
        const double before = best.SumSq;
        if (TryRoad(road, start, best, progress) == Tried::Gone && LeadsBack(before)) ++back;
        if (back == EnoughBack || IsCancelled() || DoubtBehind(best) < doubt) return;
    }
}

// What a set may leave by chance is worth no more than its own proportions.
bool IsWorthAGlance(Doubt doubt) {
    return doubt >= Doubt::Slight && doubt < Doubt::Clear && TraitsOfModel().TwoSpecies;
}

// One look of those that the doubt is worth; what is found is in best.
void LookBehind(Doubt doubt, const PerSlot<float>& start, Workspace& best, const FitProgress& progress) {
    if (doubt == Doubt::Clear) GoAlongRoads(RoadsFrom(best), doubt, start, best, progress);
    if (!IsCancelled() && DoubtBehind(best) == Doubt::Some)
        GoAlongRoads(ShortRoads(start, best.Outcome.Rescued), Doubt::Some, start, best, progress);
    if (!IsCancelled() && IsWorthAGlance(DoubtAbout(best)))
        FreeCaughtSets(Road::EachSet, start, best, progress);
}

} // namespace

std::optional<Workspace> FindLowerMinimum(PerSlot<float> start, const FitProgress& progress) {
    if (Work.Outcome.End != FitEnd::Converged) return std::nullopt;
    const Doubt doubt = DoubtBehind(Work);
    if (doubt < Doubt::Some && !IsWorthAGlance(doubt)) return std::nullopt;
    const ProgressInUse inUse(progress);
    const Workspace own = Work;
    Workspace best = own;
    LookBehind(doubt, start, best, progress);
    const bool cancelled = IsCancelled();
    Work = own;
    HandOnCancel(cancelled);
    if (cancelled || !IsLowerMinimum(best, own)) return std::nullopt;
    return best;
}

bool RescueFit(PerSlot<float> start, const FitProgress& progress) {
    const ProgressInUse inUse(progress);
    Workspace best = Work;
    for (const Road road : RoadsFromStart(start))
        if (TryRoad(road, start, best, progress) == Tried::Stopped || IsGood(best)) break;
    if (!IsCancelled() && IsGood(best) && TraitsOfModel().TwoSpecies)
        FreeCaughtSets(Road::DoubtfulSets, start, best, progress);
    if (IsCancelled())
        KeepBestOnCancel(best);
    else
        Work = best;
    return Work.FitDone != 0;
}

} // namespace Quillon
