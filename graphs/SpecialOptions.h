#pragma once
// The special options of the chart window: what the analysis can do with the graph at hand.

#include <string>

namespace Quillon {

// The places of the options in the menu of the chart window.
inline constexpr std::size_t RangeLogOption = 0; // range selection: ln against r^2/2, closed in on the range
inline constexpr std::size_t LogYOption = 1;     // data, function, overlay, species: ln of Y
inline constexpr std::size_t RangeScaleOption = 2;

// ln of Y for every series; what is not above 0 is missing afterwards. The graph is drawn afresh with the
// title "Ln (" + title + ")". Works only while a graph is held and drawn.
void ConvertYToLog();

// The graph of radius against signal becomes ln against r^2/2, and its axes close in on the fit range of the
// row of the data set table that is being ranged.
void ConvertRangeGraphToLog();

// Brings the X limits of the range graph back to those of the whole scan, in radius or r^2/2.
void RescaleRangeGraph();

// Withdraws all options; the builder of the next graph offers its own.
void ClearSpecialOptions();
void OfferSpecialOption(std::size_t place, const std::string& caption, void (*action)());

} // namespace Quillon
