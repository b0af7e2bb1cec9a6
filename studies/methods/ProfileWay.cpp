#include "studies/methods/ProfileWay.h"

#include "models/table/ParmScale.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Quillon {

namespace {

// Refits the others at a place, from the parameters of a neighbour.
WayPlace FitAt(const WaySide& side, double at, const PerSlot<float>& neighbour) {
    WayPlace place;
    Work.Parms = neighbour;
    Work.Parms[side.Slot] = static_cast<float>(at);
    place.At = static_cast<double>(Work.Parms[side.Slot]);
    BuildParmScale();
    place.End = FitOthers(side.Others);
    place.Parms = Work.Parms;
    return place;
}

double MinimumAt(const WaySide& side) {
    return side.Way.front().At;
}

// The nearest place on the way that lies further in.
const WayPlace& Inward(const WaySide& side, double at) {
    const WayPlace* nearest = &side.Way.front();
    const double distance = std::fabs(at - nearest->At);
    for (const WayPlace& place : side.Way) {
        const double from = std::fabs(place.At - MinimumAt(side));
        if (from <= distance && from > std::fabs(nearest->At - MinimumAt(side))) nearest = &place;
    }
    return *nearest;
}

void KeepInOrder(WaySide& side, WayPlace place) {
    const auto behind = std::find_if(side.Way.begin(), side.Way.end(), [&](const WayPlace& other) {
        return side.Direction * other.At > side.Direction * place.At;
    });
    side.Way.insert(behind, std::move(place));
}

double RatioAt(const Walk& walk, const WayPlace& place) {
    return place.End.SumSq / walk.From.SumSq;
}

// Puts a place on the way; false when cancelled and where it is a better minimum's.
bool Look(const Walk& walk, WaySide& side, double at) {
    WayPlace place = FitAt(side, at, Inward(side, at).Parms);
    if (!place.End.Ended) return false;
    if (IsLower(walk.From, place.End.SumSq)) side.Lower = true;
    KeepInOrder(side, std::move(place));
    return !side.Lower;
}

// --- where a ratio is passed -------------------------------------------------------------------------------

// In the root of ratio - 1 a profile is nearly straight.
double RootOf(double ratio) {
    return std::sqrt(std::max(ratio - 1.0, 0.0));
}

double ExcessAt(const Walk& walk, const WayPlace& place, double target) {
    return RootOf(RatioAt(walk, place)) - target;
}

// Two values with the limit between them, and how far the root is beyond its target at each: below at A,
// above at B.
struct Bracket {
    double A, B, ExcessA, ExcessB;

    // Where the straight line between both meets the target.
    double Crossing() const { return B - ExcessB * (B - A) / (ExcessB - ExcessA); }

    // Puts a value in the place of the end on its side of the target. From the second one on the other end
    // counts half, so that neither stands still (the Illinois rule).
    void Take(double at, double excess, bool first) {
        (excess > 0.0 ? B : A) = at;
        (excess > 0.0 ? ExcessB : ExcessA) = excess;
        if (!first) (excess > 0.0 ? ExcessA : ExcessB) /= 2.0;
    }
};

bool HasSettled(const WaySide& side, double at, double former) {
    constexpr double Fine = 0.001; // of the distance from the minimum
    return std::fabs(at - former) < Fine / 2.0 * std::fabs(at - MinimumAt(side));
}

// False position, from the place at the bracket's A.
std::optional<double> CloseIn(const Walk& walk, WaySide& side, Bracket bracket, WayPlace inner,
                              double target) {
    constexpr int Most = 40;
    double at = bracket.B;
    for (int i = 0; i < Most; ++i) {
        const double former = std::exchange(at, bracket.Crossing());
        WayPlace place = FitAt(side, at, inner.Parms);
        if (!place.End.Ended) return std::nullopt;
        if (IsLower(walk.From, place.End.SumSq)) side.Lower = true;
        const double excess = ExcessAt(walk, place, target);
        if (excess == 0.0 || (i > 0 && HasSettled(side, at, former))) break;
        bracket.Take(at, excess, i == 0);
        if (!(excess > 0.0)) inner = std::move(place);
    }
    return at;
}

} // namespace

double Reach(const Walk& walk, WaySide& side) {
    constexpr int Most = 24; // 1.5^24 is 17,000 times
    double reach = std::min(3.0 * walk.Error, side.Bound);
    for (int i = 0; i < Most; ++i) {
        if (!Look(walk, side, MinimumAt(side) + side.Direction * reach)) return 0.0;
        const WayPlace& last = side.Way.back();
        if (RatioAt(walk, last) > walk.Target || reach >= side.Bound || !std::isfinite(last.End.SumSq)) break;
        reach = std::min(1.5 * reach, side.Bound);
    }
    return reach;
}

void FitGrid(const Walk& walk, WaySide& side, double spacing, long count, std::vector<WayPlace>& grid,
             const std::function<void()>& fitted) {
    for (long i = 1; i <= count; ++i) {
        const double at = MinimumAt(side) + side.Direction * spacing * static_cast<double>(i);
        if (!Look(walk, side, at)) return;
        const auto here = static_cast<double>(static_cast<float>(at));
        const auto found = std::find_if(side.Way.begin(), side.Way.end(),
                                        [&](const WayPlace& place) { return place.At == here; });
        grid.push_back(*found);
        fitted();
    }
}

std::optional<double> LimitOf(const Walk& walk, WaySide& side, double ratio) {
    const auto outer = std::find_if(side.Way.begin(), side.Way.end(),
                                    [&](const WayPlace& place) { return RatioAt(walk, place) > ratio; });
    if (outer == side.Way.begin() || outer == side.Way.end() || !std::isfinite(outer->End.SumSq))
        return std::nullopt;
    const WayPlace inner = *(outer - 1);
    const double target = RootOf(ratio);
    const Bracket between{inner.At, outer->At, ExcessAt(walk, inner, target), ExcessAt(walk, *outer, target)};
    return CloseIn(walk, side, between, inner, target);
}

} // namespace Quillon
