#pragma once
// The bar below the range graph: the two radii that the markers stand at, typed or read off, how many points
// lie between them, a range proposed from the scan, and the ways out. It follows the markers, and they follow
// what is typed.

#include "platform/Controls.h"
#include "scandata/range/ProposeRange.h"

#include <array>
#include <cstddef>

namespace Quillon {

struct RangeBarRecord {
    bool Shown = false; // while the range graph is shown
    RowNo Row;
    std::array<Control, 2> Label, Radius; // inner, outer; cm
    Control Count, AutoButton, AcceptButton, CancelButton;
    Control CeilingLabel, Ceiling, SpikesButton; // readings left out (scandata/range/RangeReadings.h)
    bool FocusOnGraph = false; // a handler wants the keys to go to the graph; whoever shows the bar obeys
};
inline RangeBarRecord RangeBar;

inline constexpr long FewestRangePoints = 3; // a range with fewer is none

// Opens and closes the bar of a row whose two markers are on the graph.
void OpenRangeBar(RowNo row);
void CloseRangeBar();

// The points between the markers, whichever of them stands further in; First is 0 where there are none.
PointRange MarkedPoints();

// True when the points between the markers make a range; otherwise how many there are is told.
bool RangeMayBeTaken();

// --- what the user does ----------------------------------------------------------------------------------
void RangeBarGotFocus(std::size_t side);
int RangeBarKeyPress(std::size_t side, int key); // Return takes the radius and leads back to the graph
void RangeBarLostFocus(std::size_t side);        // takes the radius when it has been changed
void RangeBarAutoButton();   // puts the markers where ProposeRange would have them, and proposes a ceiling
void RangeBarAcceptButton(); // as Return on the graph
void RangeBarCancelButton(); // as Escape on the graph

} // namespace Quillon
