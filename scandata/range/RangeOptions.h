#pragma once
// What the chart window offers on the range graph: its conversion to ln of the signal against r^2/2, and
// views of its parts. Each works only while a graph is held and drawn.

#include <cstddef>

namespace Quillon {

// The places of the options in the menu of the chart window. The second one belongs to other graphs.
inline constexpr std::size_t RangeLogOption = 0, WholeScanOption = 2, FitRangeOption = 3,
                             BetweenMarkersOption = 4;

// The form of the range graph at hand: ln of the signal against r^2/2, else the signal against the radius. It
// begins as Work.RangeLogPlot, which a conversion of the graph leaves alone.
inline bool RangeGraphIsLog = false;

// A radius on the X axis of the range graph at hand, and a signal on its Y axis; MissingValue where there is
// no logarithm.
float RangeAbscissa(float radius);
float RangeOrdinate(float signal);

// Offers the options of the range graph, and none else.
void OfferRangeOptions();

// The graph of radius against signal becomes ln against r^2/2, markers and all. Where the fit range of the
// row in hand is a part of the scan, the axes close in on it.
void ConvertRangeGraphToLog();

// X limits of the whole scan, of the fit range of the row in hand, of what lies between the markers. LastZoom
// leads back.
void ShowWholeScan();
void ShowFitRange();
void ShowBetweenMarkers();

// ln of Y for every series of the graph at hand; what is not above 0 is missing afterwards. The title of the
// Y axis follows.
void StoredYToLog();

} // namespace Quillon
