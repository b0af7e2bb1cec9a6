#include "chart/pens/HatchLines.h"

#include <cmath>
#include <numbers>

namespace Quillon {

namespace {

// The directions of a hatch's lines, as steps in x and y.
std::vector<PlanePoint> Directions(BrushKind kind) {
    switch (kind) {
    case BrushKind::Horizontal:
        return {{1.0, 0.0}};
    case BrushKind::Vertical:
        return {{0.0, 1.0}};
    case BrushKind::ForwardDiagonal:
        return {{1.0, 1.0}};
    case BrushKind::BackwardDiagonal:
        return {{1.0, -1.0}};
    case BrushKind::Cross:
        return {{1.0, 0.0}, {0.0, 1.0}};
    case BrushKind::DiagonalCross:
        return {{1.0, 1.0}, {1.0, -1.0}};
    default:
        return {};
    }
}

double Along(PlanePoint direction, PlanePoint point) {
    return direction.X * point.X + direction.Y * point.Y;
}
double Across(PlanePoint direction, PlanePoint point) {
    return direction.X * point.Y - direction.Y * point.X;
}

struct Range {
    double Low, High;
};

Range RangeAcross(PlanePoint direction, const std::vector<PlanePoint>& points) {
    Range range = {Across(direction, points[0]), Across(direction, points[0])};
    for (const PlanePoint point : points) {
        range.Low = std::min(range.Low, Across(direction, point));
        range.High = std::max(range.High, Across(direction, point));
    }
    return range;
}

// Where a line at a distance across the direction meets the outline: places along it, in order. The half-open
// comparison counts a corner once.
std::vector<double> Crossings(PlanePoint direction, double across, const std::vector<PlanePoint>& outline) {
    std::vector<double> places;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const PlanePoint from = outline[i], to = outline[(i + 1) % outline.size()];
        const double one = Across(direction, from), other = Across(direction, to);
        if ((one <= across) == (other <= across)) continue;
        const double part = (across - one) / (other - one);
        places.push_back(Along(direction, from) + part * (Along(direction, to) - Along(direction, from)));
    }
    std::sort(places.begin(), places.end());
    return places;
}

PlanePoint PointAt(PlanePoint direction, double along, double across) {
    const double square = Along(direction, direction);
    return {(direction.X * along - direction.Y * across) / square,
            (direction.Y * along + direction.X * across) / square};
}

} // namespace

bool IsHatch(BrushKind kind) {
    return kind != BrushKind::Hollow && kind != BrushKind::Solid;
}

std::vector<PlaneSegment> HatchLines(BrushKind kind, const std::vector<PlanePoint>& outline, double spacing,
                                     const DeviceRect& surface) {
    std::vector<PlaneSegment> lines;
    if (outline.size() < 3) return lines;
    for (const PlanePoint direction : Directions(kind)) {
        const Range shape = RangeAcross(direction, outline);
        const Range seen = RangeAcross(direction, OutlineOf(surface));
        const double high = std::min(shape.High, seen.High);
        for (double n = std::ceil(std::max(shape.Low, seen.Low) / spacing); n * spacing <= high; n += 1.0) {
            const std::vector<double> places = Crossings(direction, n * spacing, outline);
            for (std::size_t i = 1; i < places.size(); i += 2) {
                if (places[i] <= places[i - 1]) continue; // a corner that is only touched
                lines.push_back({PointAt(direction, places[i - 1], n * spacing),
                                 PointAt(direction, places[i], n * spacing)});
            }
        }
    }
    return lines;
}

std::vector<PlanePoint> OutlineOf(const std::vector<DevicePoint>& polygon) {
    std::vector<PlanePoint> outline;
    for (const DevicePoint point : polygon)
        outline.push_back({static_cast<double>(point.X), static_cast<double>(point.Y)});
    return outline;
}

std::vector<PlanePoint> OutlineOf(const DeviceRect& rect) {
    return OutlineOf(std::vector<DevicePoint>{
        {rect.Left, rect.Top}, {rect.Right, rect.Top}, {rect.Right, rect.Bottom}, {rect.Left, rect.Bottom}});
}

// Chords of two degrees stay within a unit of the arc up to radii of 6000 units.
std::vector<PlanePoint> ArcOutline(PlanePoint centre, double radiusX, double radiusY, double start,
                                   double sweep) {
    const int steps = std::max(static_cast<int>(std::ceil(std::min(std::fabs(sweep), 360.0) / 2.0)), 1);
    const bool whole = std::fabs(sweep) >= 360.0;
    std::vector<PlanePoint> outline;
    if (!whole) outline.push_back(centre);
    for (int i = 0; i <= steps; ++i) {
        const double angle = (start + (whole ? 360.0 : sweep) * i / steps) * std::numbers::pi / 180.0;
        outline.push_back({centre.X + radiusX * std::cos(angle), centre.Y - radiusY * std::sin(angle)});
    }
    return outline;
}

} // namespace Quillon
