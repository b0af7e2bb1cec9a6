#pragma once
// When two scans were made with the same settings of the instrument, although their headers differ a little:
// its monochromator wanders, its drive swings.

#include <algorithm>
#include <cmath>

namespace Quillon {

// To within 3 nm: what a monochromator that was told the same sets from scan to scan. nm.
inline bool IsSameWavelength(float a, float b) {
    constexpr float Gap = 3.0F;
    return std::fabs(a - b) <= Gap;
}

// To within 1% of the higher one, rpm; a drive at rest is like another one at rest alone.
inline bool IsSameSpeed(float a, float b) {
    constexpr double Gap = 0.01;
    const double higher = static_cast<double>(std::max(std::fabs(a), std::fabs(b)));
    return std::fabs(static_cast<double>(a) - static_cast<double>(b)) <= Gap * higher;
}

} // namespace Quillon
