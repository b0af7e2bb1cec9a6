#include "fit/BetterStarts.h"

#include "fit/SetBySet.h"
#include "fit/Sums.h"
#include "fit/TriedStarts.h"
#include "fit/equations/Bounds.h"
#include "models/Guesses.h"
#include "models/table/ModelTable.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
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

// An association constant. A cooperativity starts at none, which is a good guess.
bool IsAssociation(SlotNo slot) {
    const SlotRule& rule = RuleOfSlot(slot);
    return rule.Holds == Quantity::Constant && rule.Scale != SlotScale::Zero;
}

// How far a constant is from where it shows; 0 for other parameters.
double ShiftOf(FreePos place, double meanSquare) {
    if (!IsAssociation(SlotOf(place))) return 0.0;
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
        if (IsAssociation(slot))
            value += kinds.Of(slot) % 2 == 0 ? move.Even : move.Odd;
        else if (rule.Holds == Quantity::Mass)
            value *= move.Factor;
        const float single = ToSingle(value);
        moved = moved || single != Work.Parms[slot];
        Work.Parms[slot] = single;
    }
    return moved && (move.Even == move.Odd || kinds.Count() > 1);
}

} // namespace

PerSlot<float> VisibleStart(const PerSlot<float>& start) {
    if (!TraitsOfModel().Hetero || TraitsOfModel().Guess == FirstGuess::Kept) return start;
    return Aside(start, [&] { return FindVisible(start) ? Work.Parms : start; });
}

bool HidesAConstant(const PerSlot<float>& start, const PerSlot<float>& visible) {
    constexpr float Hidden = 4.0F; // e^4 below half of the signal, one hundredth of it
    for (const FreePos a : EachFree()) {
        const SlotNo slot = SlotOf(a);
        if (IsAssociation(slot) && visible[slot] - start[slot] > Hidden) return true;
    }
    return false;
}

PerSlot<float> MovedStart(const PerSlot<float>& start, int number) {
    const Move& move = Moves.at(static_cast<std::size_t>(number - 1));
    const PerSlot<float> moved = Aside(start, [&] {
        if (!MoveShape(move)) return start;
        TakeFittedSignals(GuessedParms());
        KeepHeld(start);
        return Work.Parms;
    });
    return moved == start || IsCancelled() ? moved : BestOfEachSet(moved);
}

} // namespace Quillon
