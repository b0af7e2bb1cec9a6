#include "fit/SetBySet.h"

#include "fit/DampedSearch.h"
#include "fit/FitProgress.h"
#include "fit/Misfit.h"
#include "fit/Sums.h"
#include "fit/TriedStarts.h"
#include "fit/equations/NoiseWeights.h"
#include "models/Guesses.h"
#include "models/function/SharedConcentrations.h"
#include "models/table/Catalogue.h"
#include "models/table/ModelTable.h"
#include "workspace/records/Codes.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace Quillon {

namespace {

// --- the sets that go together

// Every set by the first one of those that it cannot be parted from.
using Heads = PerSet<SetNo>;

void Join(Heads& heads, SetNo a, SetNo b) {
    const SetNo from = std::max(heads[a], heads[b]), to = std::min(heads[a], heads[b]);
    std::replace(heads.begin(), heads.end(), from, to);
}

// The set whose fitted zero offset this one has; NoSet for its own or none.
SetNo OffsetLeaderOf(SetNo set) {
    const bool linked = (Work.ConstraintFlags & OffsetBit) != 0 &&
                        !OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0) &&
                        RowNo(Work.OffsetLink[RowOf(set)]) > NoRow;
    if (!linked) return NoSet;
    const SetNo leader = SetOf(RowNo(Work.OffsetLink[RowOf(set)]));
    return leader > NoSet && IsFitted(SlotOffset(leader)) ? leader : NoSet;
}

Heads FindHeads() {
    Heads heads(Work.NumSets, NoSet);
    for (const SetNo set : EachSet())
        heads[set] = set;
    for (const SetNo set : EachSet())
        for (const SetNo leader : {LeaderOf(set), OffsetLeaderOf(set)})
            if (leader > NoSet) Join(heads, set, leader);
    return heads;
}

// Sums of squared residuals by head at the present parameters; infinite where the function has no value.
PerSet<double> SumsAt(const Heads& heads) {
    CalcSumSq();
    if (Work.FunctionFailed) {
        ForgetStop();
        return PerSet<double>(Work.NumSets, std::numeric_limits<double>::infinity());
    }
    PerSet<double> sums(Work.NumSets);
    if (Work.AbortFit) return sums;
    for (long p = 1; p <= Work.NumPts; ++p) {
        const double r = NoiseWeight(SetOfPoint(p)) *
                         (static_cast<double>(Work.PtY[p]) - static_cast<double>(Work.PtFit[p]));
        sums[heads[SetOfPoint(p)]] += r * r;
    }
    return sums;
}

double TotalOf(const Heads& heads, const PerSet<double>& sums) {
    double total = 0.0;
    for (const SetNo set : EachSet())
        if (heads[set] == set) total += sums[set];
    return total;
}

// --- a part of the fit alone

// Leaves the points of a head's sets in Work, and of the fitted parameters their concentrations and offsets.
// False when none is fitted.
bool Reduce(const Heads& heads, SetNo head) {
    long kept = 0;
    for (long p = 1; p <= Work.NumPts; ++p) {
        if (heads[SetOfPoint(p)] != head) continue;
        ++kept;
        Work.PtX[kept] = Work.PtX[p];
        Work.PtY[kept] = Work.PtY[p];
        Work.PtSet[kept] = Work.PtSet[p];
    }
    Work.NumPts = ToInt16(kept);
    std::vector<SlotNo> fitted;
    for (const FreePos a : EachFree())
        fitted.push_back(SlotOf(a));
    Work.NumFree = 0;
    for (const SlotNo slot : fitted) {
        const bool stays = PartOfSlot(slot) != SlotPart::Global && heads[SetOfSlot(slot)] == head;
        Work.FreeMap[slot] = stays && FollowsASet(RuleOfSlot(slot).Holds) ? Work.NumFree : SlotHeld;
        if (!IsFitted(slot)) continue;
        Work.FreeIndex[Work.NumFree] = ToInt16(slot.Number);
        Work.NumFree = ToInt16(Work.NumFree + 1);
    }
    Work.AtBound.Recreate(Work.NumFree);
    return Work.NumFree > 0;
}

void TakeConcentrations(PerSlot<float>& to, const PerSlot<float>& from, const Heads& heads, SetNo head) {
    for (const SetNo set : EachSet()) {
        if (heads[set] != head) continue;
        for (const SlotNo slot : {SlotA(set), SlotB(set), SlotOffset(set)})
            to[slot] = from[slot];
    }
}

struct BestSets {
    PerSlot<float> Parms;
    PerSet<double> Sums; // by head
};

// The search of a head's concentrations from a guess, in a Work that is reduced to it.
void TryGuess(const PerSlot<float>& from, const PerSlot<float>& guess, const Heads& heads, SetNo head,
              BestSets& best) {
    try {
        ResetFitFunction();
        Work.Parms = from;
        TakeConcentrations(Work.Parms, guess, heads, head);
        StoreSignals(true);
        const DampedEnd end = SearchConcentrations();
        if (end != DampedEnd::Cancelled && end != DampedEnd::NoStart && Work.SumSq < best.Sums[head]) {
            best.Sums[head] = Work.SumSq;
            TakeConcentrations(best.Parms, Work.Parms, heads, head);
        }
    } catch (const RuntimeError&) {
        // Concentrations beyond the range of a single are no start.
    }
    StoreSignals(false);
    if (Work.FunctionFailed) ForgetStop();
}

// What watches the fit is told of the whole, and not of its parts, whose parameters have other places.
void TryHead(const PerSlot<float>& from, const std::vector<PerSlot<float>>& guesses, const Heads& heads,
             SetNo head, BestSets& best) {
    Workspace whole = Work;
    const FitProgress silent;
    const ProgressInUse inUse(silent);
    if (Reduce(heads, head))
        for (const PerSlot<float>& guess : guesses)
            if (!Work.AbortFit) TryGuess(from, guess, heads, head, best);
    const bool cancelled = IsCancelled();
    Work = std::move(whole);
    HandOnCancel(cancelled);
}

// --- the guesses

// The proportions of B to A that are tried; 0 stands for the program's own guess.
constexpr double Proportions[] = {0.0, 0.1, 10.0};

std::vector<PerSlot<float>> GuessesFrom(const PerSlot<float>& from) {
    std::vector<PerSlot<float>> guesses;
    for (const double proportion : Proportions) {
        if (proportion != 0.0 && !TraitsOfModel().TwoSpecies) continue;
        try {
            Work.Parms = from;
            proportion > 0.0 ? GuessAmounts(proportion) : InitialGuesses(false);
            KeepHeld(from);
            guesses.push_back(Work.Parms);
        } catch (const RuntimeError&) {
            // Data without a logarithm have no such guess.
        }
    }
    Work.Parms = from;
    return guesses;
}

// Of the standard deviation of what chance leaves: one set of five is above it when all is well.
constexpr double ALittle = 1.0;

using Marks = PerSet<std::int16_t>;

// By head, whether one of its sets stands above the noise.
Marks FindDoubtful(const Heads& heads) {
    const std::vector<double> above = DeviationsOfSets(Work);
    Marks doubtful(Work.NumSets, FlagFalse);
    for (const SetNo set : EachSet())
        if (above[static_cast<std::size_t>(set.Number)] > ALittle) doubtful[heads[set]] = FlagTrue;
    return doubtful;
}

PerSlot<float> FindBest(const PerSlot<float>& from, TriedSets sets) {
    const Heads heads = FindHeads();
    BestSets best{from, SumsAt(heads)};
    if (Work.AbortFit) return from;
    const double before = TotalOf(heads, best.Sums);
    const Marks tried = sets == TriedSets::All ? Marks(Work.NumSets, FlagTrue) : FindDoubtful(heads);
    const std::vector<PerSlot<float>> guesses = GuessesFrom(from);
    for (const SetNo head : EachSet())
        if (heads[head] == head && tried[head] && !Work.AbortFit) TryHead(from, guesses, heads, head, best);
    return TotalOf(heads, best.Sums) < MuchLower * before ? best.Parms : from;
}

} // namespace

PerSlot<float> BestOfEachSet(const PerSlot<float>& from, TriedSets sets) {
    return Aside(from, [&] { return FindBest(from, sets); });
}

} // namespace Quillon
