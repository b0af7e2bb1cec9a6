#pragma once
// The way along one parameter, from its minimum to one side: how far it has to go, the values on it, and
// where a ratio of sums is passed.
//
// At each place the other parameters are fitted from those of its neighbour further in. All of it works on a
// copy of the analysis in which the parameter is held (HoldSlots), changes its Work and is a RuntimeError
// where that fails in arithmetic; the places met by then stay in Way.

#include "studies/methods/HeldFit.h"
#include "studies/methods/ProfileBase.h"

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// A place on the way.
struct WayPlace {
    double At = 0.0; // value of the parameter, internal units
    HeldEnd End;
    PerSlot<float> Parms; // all of them there, internal scale
};

// One side of the minimum.
struct WaySide {
    long Slot = 0;
    double Direction = 1.0; // 1 or -1
    double Bound =
        std::numeric_limits<double>::infinity(); // distance of the bound from the minimum, internal
    bool Others = true;                          // something else is fitted
    bool Lower = false;                          // a better minimum was met, where the side stops
    std::string Broken;                          // why the side broke off in arithmetic; "" where it did not
    std::vector<WayPlace> Way;                   // met so far, outwards; the minimum first
};

// What the walks of both sides share.
struct Walk {
    const ProfileBase& From;
    double Target = 0.0; // ratio of sums that has to be passed
    double Error = 0.0;  // of the parameter, internal units
};

// How far a side has to reach, internal units: three errors, then further by half until the target is passed,
// a bound is met or the function has no value. 0 when cancelled and where a better minimum was met.
double Reach(const Walk& walk, WaySide& side);

// Fits count places spacing apart and hands them to grid, outwards. Fewer when cancelled and where a better
// minimum was met. fitted is called after each of them.
void FitGrid(const Walk& walk, WaySide& side, double spacing, long count, std::vector<WayPlace>& grid,
             const std::function<void()>& fitted);

// The value at which a ratio is passed, between the two places on the way where it is, internal units;
// nothing where none of them has passed it, and when cancelled. To 0.1% of its distance from the minimum.
std::optional<double> LimitOf(const Walk& walk, WaySide& side, double ratio);

} // namespace Quillon
