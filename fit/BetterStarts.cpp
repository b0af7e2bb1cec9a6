#include "fit/BetterStarts.h"

#include "fit/GNLLSQ.h"
#include "fit/equations/Bounds.h"
#include "fit/equations/NoiseWeights.h"
#include "models/Guesses.h"
#include "models/function/BlockFunction.h"
#include "models/function/Constraints.h"
#include "models/function/FitFunction.h"
#include "models/function/SharedConcentrations.h"
#include "models/table/ModelTable.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

namespace Quillon {

namespace {

constexpr double Visible = 0.5; // of the root mean square of the data
constexpr double NearEnough = 1.0;
constexpr double LargestShift =
    15.0; // at a time: the derivative of a sum of species is no single exponential
constexpr int MostShifts = 8;

double MeanSquareOfData() {
    double sum = 0.0;
    for (long p = 1; p <= Work.NumPts; ++p)
        sum += static_cast<double>(Work.PtY[p]) * static_cast<double>(Work.PtY[p]);
    return sum / static_cast<double>(std::max<long>(Work.NumPts, 1));
}

// How far a constant is from where it shows; 0 for other parameters.
double ShiftOf(FreePos place, double meanSquare) {
    const SlotRule& rule = RuleOfSlot(SlotOf(place));
    const bool cooperativity = rule.Scale == SlotScale::Zero; // starts at none, which is a good guess
    if (rule.Holds != Quantity::Constant || cooperativity) return 0.0;
    const double square = Work.NormMatrix(place, place) / static_cast<double>(Work.NumPts);
    if (!(square > 0.0)) return LargestShift;
    const double shift = 0.5 * std::log(Visible * Visible * meanSquare / square);
    return std::clamp(shift, -LargestShift, LargestShift);
}

// Moves the constant that is furthest off; false when none is.
bool ShiftFurthest(double meanSquare) {
    std::optional<FreePos> furthest;
    double most = NearEnough;
    for (const FreePos a : EachFree())
        if (const double shift = std::fabs(ShiftOf(a, meanSquare)); shift > most) {
            most = shift;
            furthest = a;
        }
    if (!furthest) return false;
    const double shift = ShiftOf(*furthest, meanSquare);
    float& lnK = Work.Parms[SlotOf(*furthest)];
    lnK = ToSingle(static_cast<double>(lnK) + shift);
    EnforceBounds();
    return true;
}

// Half of the signal in A, and so many B for each A.
void GuessAmounts(double proportion) {
    const std::int16_t model = Work.Model;
    Work.Model = 7; // whose guesses are half of the signal each
    InitialGuesses(false);
    Work.Model = model;
    const double ratio = proportion * static_cast<double>(Work.ExtB / Work.ExtA);
    for (const SetNo set : EachSet())
        Work.Parms[SlotB(set)] += static_cast<float>(std::log(ratio));
}

// What is not fitted stays as it was.
void KeepHeld(const PerSlot<float>& start) {
    for (const SlotNo slot : EachSlot())
        if (!IsFitted(slot)) Work.Parms[slot] = start[slot];
    EnforceBounds();
    ApplyOffsetLinks();
    ApplyConcentrationLinks();
}

bool FindVisible(const PerSlot<float>& start) {
    GuessAmounts(1.0);
    KeepHeld(start);
    const double meanSquare = MeanSquareOfData();
    for (int i = 0; i < MostShifts; ++i) {
        AccumulateSums();
        if (Work.AbortFit) return false;
        if (!ShiftFurthest(meanSquare)) break;
        ResetFitFunction();
    }
    return true;
}

// --- each set by itself

// The sets that share their concentrations with a set, under the one that leads them.
SetNo GroupOf(SetNo set) {
    const SetNo leader = LeaderOf(set);
    return leader > NoSet ? leader : set;
}

// Sums of squared residuals by group, at the fitted values of the latest pass.
PerSet<double> SumsOfGroups() {
    PerSet<double> sums(Work.NumSets);
    for (long p = 1; p <= Work.NumPts; ++p) {
        const double r = NoiseWeight(SetOfPoint(p)) *
                         (static_cast<double>(Work.PtY[p]) - static_cast<double>(Work.PtFit[p]));
        sums[GroupOf(SetOfPoint(p))] += r * r;
    }
    return sums;
}

struct BestSets {
    PerSlot<float> Parms;
    PerSet<double> Sums;
};

// Takes over what the present parameters do better.
void Improve(BestSets& best) {
    CalcSumSq();
    if (Work.AbortFit) return;
    const PerSet<double> sums = SumsOfGroups();
    for (const SetNo set : EachSet()) {
        const SetNo group = GroupOf(set);
        if (!(sums[group] < best.Sums[group])) continue;
        for (const SlotNo slot : {SlotA(set), SlotB(set), SlotOffset(set)})
            best.Parms[slot] = Work.Parms[slot];
    }
    for (const SetNo group : EachSet())
        best.Sums[group] = std::min(best.Sums[group], sums[group]);
}

double TotalOf(const BestSets& best) {
    double total = 0.0;
    for (const double sum : best.Sums)
        total += std::isfinite(sum) ? sum : 0.0;
    return total;
}
// Of the sum of squares; what is found below that is the same minimum.
constexpr double WorthTrying = 0.999;

// The proportions of B to A that are tried; 0 stands for the program's own guess.
constexpr double Proportions[] = {0.0, 0.1, 10.0};

void TryProportion(double proportion, const PerSlot<float>& from, BestSets& best) {
    try {
        ResetFitFunction();
        Work.Parms = from;
        proportion > 0.0 ? GuessAmounts(proportion) : InitialGuesses(false);
        KeepHeld(from);
        StoreSignals(true);
        const DampedEnd end = SearchConcentrations();
        if (end != DampedEnd::Cancelled && end != DampedEnd::NoStart) Improve(best);
    } catch (const RuntimeError&) {
        // Data without a logarithm have no such guess.
    }
    StoreSignals(false);
    if (!Work.FunctionFailed) return;
    ForgetStop();
}

void TryProportions(const PerSlot<float>& from, BestSets& best) {
    for (const double proportion : Proportions) {
        if (Work.AbortFit) return;
        if (proportion == 0.0 || TraitsOfModel().TwoSpecies) TryProportion(proportion, from, best);
    }
}

// Runs find on Work with a start, and puts everything back; what find gives, or the start where it fails.
template <class Find> PerSlot<float> Aside(const PerSlot<float>& start, Find&& find) {
    const Workspace kept = Work;
    Work.Parms = start;
    ForgetStop();
    PerSlot<float> found = start;
    try {
        Work.AtBound.Recreate(Work.NumFree);
        ResetFitFunction();
        found = find();
    } catch (const RuntimeError&) {
        // Data without a logarithm, or constants beyond the range of a single: the start as it was.
    }
    const bool cancelled = IsCancelled();
    Work = kept;
    if (cancelled) {
        ForgetStop(); // a failure from before has been overtaken
        AskToStop();
    }
    return found;
}

// --- starts somewhere else

// By how much the constants are moved, in turn, and the factor of the masses.
struct Move {
    double Even, Odd, Factor;
};
constexpr std::array<Move, MovedStarts> Moves{{{4.0, 4.0, 1.0},
                                               {-4.0, -4.0, 1.0},
                                               {4.0, -4.0, 1.0},
                                               {-4.0, 4.0, 1.0},
                                               {0.0, 0.0, 0.75},
                                               {0.0, 0.0, 1.33}}};

// Numbers the kinds of constants as they are met: a global one is a kind, and so are those of the sets.
class KindsOfConstants {
public:
    std::size_t Of(SlotNo slot) {
        const SlotPart part = PartOfSlot(slot);
        const long key = part == SlotPart::Global ? slot.Number : -1 - static_cast<long>(part);
        const auto known = std::find(Met.begin(), Met.end(), key);
        const auto number = static_cast<std::size_t>(known - Met.begin());
        if (known == Met.end()) Met.push_back(key);
        return number;
    }
    std::size_t Count() const { return Met.size(); }

private:
    std::vector<long> Met;
};

// Moves Work.Parms; false when nothing is moved, or no other way than by a move that both constants share.
bool MoveShape(const Move& move) {
    KindsOfConstants kinds;
    bool moved = false;
    for (const FreePos a : EachFree()) {
        const SlotNo slot = SlotOf(a);
        const SlotRule& rule = RuleOfSlot(slot);
        double value = static_cast<double>(Work.Parms[slot]);
        if (rule.Holds == Quantity::Constant && rule.Scale != SlotScale::Zero)
            value += kinds.Of(slot) % 2 == 0 ? move.Even : move.Odd;
        else if (rule.Holds == Quantity::Mass)
            value *= move.Factor;
        const float single = ToSingle(value);
        moved = moved || single != Work.Parms[slot];
        Work.Parms[slot] = single;
    }
    return moved && (move.Even == move.Odd || kinds.Count() > 1);
}

// Fitted concentrations as they are read off the data at the constants of Work.
void GuessConcentrations() {
    const PerSlot<float> moved = Work.Parms;
    const std::int16_t model = Work.Model;
    Work.Model = ToInt16(ModelForGuess(model));
    InitialGuesses(false);
    Work.Model = model;
    const PerSlot<float> guessed = Work.Parms;
    Work.Parms = moved;
    for (const FreePos a : EachFree())
        if (RuleOfSlot(SlotOf(a)).Holds == Quantity::LnSignal) Work.Parms[SlotOf(a)] = guessed[SlotOf(a)];
}

} // namespace

PerSlot<float> VisibleStart(const PerSlot<float>& start) {
    if (!TraitsOfModel().Hetero || TraitsOfModel().Guess == FirstGuess::Kept) return start;
    return Aside(start, [&] { return FindVisible(start) ? Work.Parms : start; });
}

PerSlot<float> BestOfEachSet(const PerSlot<float>& from) {
    return Aside(from, [&] {
        BestSets best{from, PerSet<double>(Work.NumSets, std::numeric_limits<double>::infinity())};
        Improve(best);
        const double before = TotalOf(best);
        TryProportions(from, best);
        return TotalOf(best) < WorthTrying * before ? best.Parms : from;
    });
}

PerSlot<float> MovedStart(const PerSlot<float>& start, int number) {
    const Move& move = Moves.at(static_cast<std::size_t>(number - 1));
    const PerSlot<float> moved = Aside(start, [&] {
        if (!MoveShape(move)) return start;
        GuessConcentrations();
        KeepHeld(start);
        return Work.Parms;
    });
    return moved == start || IsCancelled() ? moved : BestOfEachSet(moved);
}

} // namespace Quillon
