#include "chart/PieLabels.h"

#include "chart/Device.h"

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

// The labels of one side from the top down, as many as there is room for.
std::vector<PieLabel*> SideOf(std::vector<PieLabel>& labels, bool right, const PieRing& ring) {
    std::vector<PieLabel*> side;
    for (PieLabel& label : labels)
        if (OnTheRight(label) == right) side.push_back(&label);
    const auto rows =
        static_cast<std::size_t>(std::max((ring.Bottom - ring.Top + 1) / std::max(ring.LineHeight, 1), 1));
    if (side.size() > rows) {
        std::stable_sort(side.begin(), side.end(),
                         [](const PieLabel* a, const PieLabel* b) { return a->Share > b->Share; });
        for (std::size_t i = rows; i < side.size(); ++i)
            side[i]->Shown = false;
        side.resize(rows);
    }
    std::stable_sort(side.begin(), side.end(),
                     [](const PieLabel* a, const PieLabel* b) { return SinOf(*a) > SinOf(*b); });
    return side;
}

// Moves the labels of a side down until none covers the one above it, and up again from the lower end.
void Spread(const std::vector<PieLabel*>& side, const PieRing& ring) {
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
    label.Moved = std::fabs(label.Top - OwnTop(label, ring)) > ring.LineHeight / 2.0;
    const double reach = std::max(own, ReachBeside(label, ring)) + (label.Moved ? ring.GapX : 0);
    const int edge = DeviceUnits(ring.Centre.X + side * reach);
    label.Left = right ? edge : edge - label.Width;
    label.From = {DeviceUnits(ring.Centre.X + ring.RadiusX * CosOf(label)),
                  DeviceUnits(ring.Centre.Y - ring.RadiusY * SinOf(label))};
    label.To = {edge - side * ((ring.GapX + 1) / 2), label.Top + ring.LineHeight / 2};
}

} // namespace

void PlacePieLabels(std::vector<PieLabel>& labels, const PieRing& ring) {
    for (const bool right : {true, false}) {
        const std::vector<PieLabel*> side = SideOf(labels, right, ring);
        Spread(side, ring);
        for (PieLabel* label : side)
            SetAcross(*label, ring);
    }
}

} // namespace Quillon
