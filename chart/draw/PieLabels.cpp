#include "chart/draw/PieLabels.h"

#include "chart/pens/Device.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Quillon {

namespace {

double CosOf(const PieLabel& label) {
    return std::cos(label.Angle * std::numbers::pi / 180.0);
}
double SinOf(const PieLabel& label) {
    return std::sin(label.Angle * std::numbers::pi / 180.0);
}

bool OnTheRight(const PieLabel& label) {
    return CosOf(label) >= 0.0;
}

// The upper edge of a label beside its slice.
double OwnTop(const PieLabel& label, const PieRing& ring) {
    const double y = ring.Centre.Y - (ring.RadiusY + ring.GapY) * SinOf(label);
    return y - (1.0 + SinOf(label)) * ring.LineHeight / 2.0;
}

using Side = std::vector<PieLabel*>;

// The labels of one side from the top down.
Side SideOf(std::vector<PieLabel>& labels, bool right) {
    Side side;
    for (PieLabel& label : labels)
        if (OnTheRight(label) == right) side.push_back(&label);
    std::stable_sort(side.begin(), side.end(),
                     [](const PieLabel* a, const PieLabel* b) { return SinOf(*a) > SinOf(*b); });
    return side;
}

double Shift(const PieLabel& label, const PieRing& ring) {
    return std::fabs(label.Top - OwnTop(label, ring));
}

// Of slices alike the one goes without whose label stands farthest away.
void DropSmallest(Side& side, const PieRing& ring) {
    const auto least = std::min_element(side.begin(), side.end(), [&](const PieLabel* a, const PieLabel* b) {
        return a->Share != b->Share ? a->Share < b->Share : Shift(*a, ring) > Shift(*b, ring);
    });
    (*least)->Shown = false;
    side.erase(least);
}

// Moves the labels of a side down until none covers the one above it, and up again from the lower end.
void Spread(const Side& side, const PieRing& ring) {
    const int height = ring.LineHeight;
    int least = ring.Top;
    for (PieLabel* label : side) {
        label->Top = std::max<int>(DeviceUnits(OwnTop(*label, ring)), least);
        least = label->Top + height;
    }
    int most = ring.Bottom - height + 1;
    for (auto label = side.rbegin(); label != side.rend(); ++label) {
        (*label)->Top = std::min((*label)->Top, most);
        most = (*label)->Top - height;
    }
}

// How far the pie with half a gap reaches to a side at the heights that a label takes.
double ReachBeside(const PieLabel& label, const PieRing& ring) {
    const int nearest = std::clamp(ring.Centre.Y, label.Top, label.Top + ring.LineHeight);
    const double part = (nearest - ring.Centre.Y) / (ring.RadiusY + ring.GapY / 2.0);
    return std::fabs(part) < 1.0 ? (ring.RadiusX + ring.GapX / 2.0) * std::sqrt(1.0 - part * part) : 0.0;
}

void SetAcross(PieLabel& label, const PieRing& ring) {
    const bool right = OnTheRight(label);
    const int side = right ? 1 : -1;
    const double own = (ring.RadiusX + ring.GapX) * std::fabs(CosOf(label));
    label.Moved = Shift(label, ring) > ring.LineHeight / 2.0;
    const double reach = std::max(own, ReachBeside(label, ring)) + (label.Moved ? ring.GapX : 0);
    const int edge = DeviceUnits(ring.Centre.X + side * reach);
    label.Left = right ? edge : edge - label.Width;
    label.From = {DeviceUnits(ring.Centre.X + ring.RadiusX * CosOf(label)),
                  DeviceUnits(ring.Centre.Y - ring.RadiusY * SinOf(label))};
    label.To = {edge - side * ((ring.GapX + 1) / 2), label.Top + ring.LineHeight / 2};
}

// True when the line to a moved label does not run across the pie: the label's end lies beyond the tangent at
// the slice.
bool Reachable(const PieLabel& label, const PieRing& ring) {
    if (!label.Moved) return true;
    const double x = static_cast<double>(label.To.X - ring.Centre.X) / ring.RadiusX;
    const double y = static_cast<double>(ring.Centre.Y - label.To.Y) / ring.RadiusY;
    return x * CosOf(label) + y * SinOf(label) >= 1.0;
}

bool Place(const Side& side, const PieRing& ring) {
    Spread(side, ring);
    if (static_cast<int>(side.size()) * ring.LineHeight > ring.Bottom - ring.Top + 1) return false;
    for (PieLabel* label : side)
        SetAcross(*label, ring);
    return std::all_of(side.begin(), side.end(),
                       [&](const PieLabel* label) { return Reachable(*label, ring); });
}

} // namespace

void PlacePieLabels(std::vector<PieLabel>& labels, const PieRing& ring) {
    for (const bool right : {true, false}) {
        Side side = SideOf(labels, right);
        while (!side.empty() && !Place(side, ring))
            DropSmallest(side, ring);
    }
}

} // namespace Quillon
