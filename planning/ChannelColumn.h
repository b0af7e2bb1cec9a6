#pragma once
// The column that fills a channel of a centerpiece with several samples.

#include "planning/approach/EquilibriumTime.h"

#include <string>

namespace Quillon {

// Meniscus and bottom of input as the ends of a channel at input.Rpm, by the radii of the settings
// (Work.ChannelRadii): "A", "B", "C" or "6A" to "6C" of a six-channel centerpiece, "8A" to "8D" of an
// eight-channel one, capitals or small. What is none of it, and a speed at which the cell has no place, is a
// RuntimeError in words.
void TakeChannel(const std::string& name, ApproachInput& input);

} // namespace Quillon
