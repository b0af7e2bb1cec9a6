#pragma once
// The noise of a scan, and how far one has moved from another.
//
// The second differences d(p) = y(p-1) - 2 y(p) + y(p+1) of independent readings with the standard deviation
// s have the mean square 6 s^2, and a smooth signal adds next to nothing to them:
//
//     s^2 = sum d(p)^2 / (6 (n - 2))
//
// (J. von Neumann, R. Kent, H. Bellinson and B. Hart, Ann. Math. Stat. 12, 153 (1941), for first differences;
// T. Gasser, L. Sroka and C. Jennen-Steinmetz, Biometrika 73, 625 (1986), for second ones.)

#include "platform/Arrays.h"

#include <cstddef>
#include <optional>

namespace Quillon {

// Readings of a scan at their radii, cm, rising.
struct ScanReadings {
    const OneBased<float>& Radii;
    const OneBased<float>& Values;
};

// The noise of the readings between two radii, ends included; none for fewer than three of them.
std::optional<double> NoiseBetween(const ScanReadings& scan, float inner, float outer);

// The rms of scan - last at the radii of last from inner to outer, the readings of scan interpolated
// linearly; none where fewer than three radii of last lie within the reach of scan.
std::optional<double> RmsFrom(const ScanReadings& last, const ScanReadings& scan, float inner, float outer);

// Scans of one speed are those of a velocity run where there are so many of them, and the rms of each of so
// many before the last one from it is above so many times the noise: nothing near its equilibrium moves so.
inline constexpr std::size_t FewestOfVelocity = 10;
inline constexpr std::size_t TailOfVelocity = 3;
inline constexpr double VelocityStep = 20.0;

} // namespace Quillon
