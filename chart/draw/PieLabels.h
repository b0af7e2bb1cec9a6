#pragma once
// Where the labels of a pie stand: outside at the middle of their slices, and moved apart along the pie where
// slices are too thin for that. Where a line could not lead to a label without crossing the pie, or there is
// no room, the smallest slices of that side go without.

#include "platform/Surface.h"

#include <vector>

namespace Quillon {

struct PieLabel {
    double Angle{}; // middle of the slice, degrees counterclockwise from three o'clock
    double Share{}; // of the whole
    int Width{};    // of the text, device units
    bool Shown = true;
    int Left{}, Top{};        // of the text's line
    bool Moved = false;       // away from its slice, so that a line has to lead there
    DevicePoint From{}, To{}; // that line: from the edge of the pie to the text
};

// What the labels stand around, and between which heights: device units.
struct PieRing {
    DevicePoint Centre;
    int RadiusX{}, RadiusY{};
    int GapX{}, GapY{};  // between pie and text
    int LineHeight{};    // of the text
    int Top{}, Bottom{}; // the first and the last unit that the labels may take
};

// Places the labels. They come in the order of their slices, clockwise from the top.
void PlacePieLabels(std::vector<PieLabel>& labels, const PieRing& ring);

} // namespace Quillon
