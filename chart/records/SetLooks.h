#pragma once
// Colour and dash of sets by what they show, where the number of a set does not say it: a graph of several
// quantities of several samples has the colour by the one and the dash by the other, and a legend that names
// each colour and each dash once.

#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

// Places in the cycles of colours and dashes, from 0. The colour -1 is that of texts and axes, black.
struct SetLook {
    std::int16_t Color = -1;
    std::int16_t Dash = 0;
    bool operator==(const SetLook&) const = default;
};

// A line of such a legend.
struct LookEntry {
    std::string Name;
    SetLook Look;
    bool operator==(const LookEntry&) const = default;
};

// How a number of a set stands in ChartModule::SetFlags, and with it in graph files: NumberMark and the
// number. What others wrote there is none.
inline constexpr std::int16_t NumberMark = 0x4D00;

// The looks of all sets in their order, and the legend in place of that of the sets. Without looks sets go by
// their numbers: their own, or those in Numbers, counted from 1, by which several sets (data and the curve
// through them) look alike, and a set looks alike in every graph. A number of 0, or beyond the cycles, stands
// for the set's own.
struct SetLooks {
    std::vector<SetLook> Sets;
    std::vector<LookEntry> Legend;
    std::vector<std::int16_t> Numbers;
    bool operator==(const SetLooks&) const = default;
};

// Every graph that is plotted takes these for its own (ChartModule::Looks), and they stand for one graph
// alone: a caller fills them right before PlotSets.
inline SetLooks NextLooks;

} // namespace Quillon
