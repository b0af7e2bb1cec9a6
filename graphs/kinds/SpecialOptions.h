#pragma once
// The special options of the chart window: what the analysis can do with the graph at hand.

#include "scandata/range/RangeOptions.h"

#include <cstddef>
#include <string>

namespace Quillon {

// The place of the option in the menu of the chart window; the others are those of the range graph.
inline constexpr std::size_t LogYOption = 1;

// Offers the conversion of the Y scale to natural logarithms under a caption, once; "" offers nothing.
void OfferLogOption(const std::string& caption);

// ln of Y for every series; what is not above 0 is missing afterwards. The graph is drawn afresh with the
// title "Ln (" + title + ")". Works only while a graph is held and drawn.
void ConvertYToLog();

} // namespace Quillon
