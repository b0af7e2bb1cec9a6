#pragma once
// The cycles by which sets are told apart.

#include "chart/records/Colors.h"

#include <array>
#include <cstdint>

namespace Quillon {

inline constexpr int CycleLen = 69; // the upper index of the cycles

// What tells sets apart, by index 0 to CycleLen.
struct StyleCycles {
    std::array<std::int16_t, CycleLen + 1> Symbol{};
    std::array<ChartColor, CycleLen + 1> Color{};
    std::array<std::int16_t, CycleLen + 1> Pattern{}; // fill: 0 solid, 1 to 6 the hatches
    std::array<std::int16_t, CycleLen + 1> Line{};    // dash style; a new one begins when the colours run out
    std::array<std::int16_t, CycleLen + 1> Line2{};   // dash style on a target without colour
    std::array<std::int16_t, CycleLen + 1> Border{};  // dash style of the outline of bars
    bool operator==(const StyleCycles&) const = default;
};

// Fills Chart.Cycles for the target and Chart.State.NColors, and marks them as valid.
void BuildCycles();

// The same after the tables of colours were changed: cycles that came with a file take the new colours and
// keep all else.
void BuildCyclesOfNewColors();

} // namespace Quillon
