#pragma once
// Readings left out on the range graph: by a rectangle drawn with Shift, above a ceiling that is typed, as
// spikes that are proposed. What is left out stays on the graph, pale, and comes back by the same rectangle.

#include "chart/hand/ChartScale.h"
#include "scandata/table/LeftOut.h"

namespace Quillon {

// The readings of a row, to be put back where the graph is left without accepting.
struct KeptReadings {
    RowNo Row;
    std::int16_t Points = 0;
    std::array<std::int16_t, 2> Range{};
    OneBased<float> Radius, Value;
    std::vector<LeftOutReading> LeftOut;
    float Ceiling = 0.0F;
    bool operator==(const KeptReadings&) const = default;
};
KeptReadings KeepReadings(RowNo row);
void PutBack(const KeptReadings& kept);

// Brings the graph at hand up to the readings of the row of the range bar, in the view that it has.
void ShowReadings();

// A rectangle drawn with Shift, in units of the graph's data: the points in it are left out; where it holds
// none but pale ones that were left out by hand, these come back. The last point of a scan stays.
void ToggleReadings(const ChartScale& box);

// --- what the user does in the bar -----------------------------------------------------------------------
void RangeCeilingGotFocus();
int RangeCeilingKeyPress(int key); // Return takes the ceiling and leads back to the graph
void RangeCeilingLostFocus();      // takes it when it has been changed; nothing or 0 is none
void RangeSpikesButton();          // proposes the spikes between the markers, and leaves them out after a Yes

// Puts the signal above which the noise grows between two points of the row into the field, as a proposal
// that the graph shows; gives it, 0 where it does not grow.
float ProposeRangeCeiling(long first, long last);

} // namespace Quillon
