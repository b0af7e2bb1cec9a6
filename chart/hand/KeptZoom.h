#pragma once
// A zoom that stays when a graph of another kind takes the place of the one at hand and has the same axis.

#include <cstdint>
#include <string>

namespace Quillon {

// The part of an axis that was looked at.
struct ZoomedAxis {
    bool Zoomed = false;
    std::string Title; // by which it is known again, together with the kind of its scale
    std::int16_t ScaleType{};
    float LogBase{};
    double Low{}, High{}; // units of the stored data
};
struct KeptZoom {
    ZoomedAxis X, Y;
};

// That of the graph at hand, along the axes that do not show all that they showed at first.
KeptZoom ZoomAtHand();

// Brings a graph that has just been made to the part that was looked at before, along each axis that it has
// in common with the former graph and on which some of its data lie there. LastZoom leads to all of it.
void ZoomAgain(const KeptZoom& former);

} // namespace Quillon
