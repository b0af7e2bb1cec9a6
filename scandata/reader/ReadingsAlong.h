#pragma once
// The readings of a scan between its points: a straight line from one to the next.

#include "platform/Arrays.h"

#include <optional>

namespace Quillon {

// Readings at rising radii. Asked for one rising radius after the other it goes along the scan once; a radius
// below the one before begins anew. None outside the reach of the scan.
template <class Number> struct ReadingsAlong {
    const OneBased<float>& Radii; // cm, rising
    const OneBased<Number>& Values;
    long At = 1; // the first point at or beyond the latest radius

    std::optional<double> operator()(float radius) {
        if (At > Radii.Hi() || (At > 1 && Radii[At - 1] >= radius)) At = 1;
        while (At <= Radii.Hi() && Radii[At] < radius)
            ++At;
        if (At > Radii.Hi()) return {};
        if (Radii[At] == radius) return Value(At);
        if (At == 1) return {};
        const double from = static_cast<double>(Radii[At - 1]);
        const double share = (static_cast<double>(radius) - from) / (static_cast<double>(Radii[At]) - from);
        return Value(At - 1) + share * (Value(At) - Value(At - 1));
    }

    double Value(long p) const { return static_cast<double>(Values[p]); }
};

} // namespace Quillon
