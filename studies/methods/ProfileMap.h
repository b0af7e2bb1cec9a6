#pragma once
// A map of two parameters: the lowest sum of squares that the others leave at each pair of values, and the
// regions in which both lie together.
//
// A pair belongs to the region of a level as long as S / S0 <= 1 + 2 F(2, n - m, 1 - level) / (n - m)
// (D. M. Bates and D. G. Watts, Nonlinear Regression Analysis and Its Applications, 1988, section 6.1).

#include "studies/methods/Profile.h"

#include <array>

namespace Quillon {

struct ProfileMap {
    std::array<long, 2> Slots{};
    std::array<std::string, 2> Names;
    std::array<double, 2> Minimum{}; // values at the lowest sum, units of display
    double MinimumSumSq = 0.0;
    std::array<std::vector<double>, 2> Values; // of each of the two, rising, the minimum among them
    // For each value of the first all of the second; Value is the second's. Of a map that is not complete
    // those that were not fitted have an infinite sum; none at all where it was stopped before the first one.
    std::vector<ProfilePoint> Points;
    std::vector<ProfileLimits> Levels; // level and ratio of each region
    std::optional<Workspace> Better;   // a lower minimum that was met on the way, from which this starts
    std::string Broken{};              // why it broke off in arithmetic; "" where it did not
    bool Complete = false;             // neither cancelled nor broken off

    const ProfilePoint& At(std::size_t first, std::size_t second) const {
        return Points[first * Values[1].size() + second];
    }
};

// choice.Steps values of each, over what the region of the highest level reaches. told(n, all) of the pairs
// that have been fitted. Otherwise as ProfileParameter. The slots are two different ones.
ProfileMap MapParameters(long slot1, long slot2, const ProfileChoice& choice,
                         const std::function<void(long done, long all)>& told);

} // namespace Quillon
