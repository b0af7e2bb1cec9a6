#include "chart/pens/DashLine.h"

#include "chart/records/ChartSeams.h"
#include "chart/records/ChartState.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace Quillon {

namespace {

// A pattern is a list of (on, off) lengths, taken round and round.
struct DashPair {
    double On, Off;
};

constexpr std::array<DashPair, 1> Long = {{{15, 5}}};
constexpr std::array<DashPair, 1> Short = {{{4, 3}}};
constexpr std::array<DashPair, 2> LongShort = {{{13, 3}, {4, 3}}};
constexpr std::array<DashPair, 3> LongShortShort = {{{13, 3}, {4, 3}, {4, 3}}};

std::span<const DashPair> PatternOf(std::int16_t style) {
    switch (style) {
    case 1:
        return Long;
    case 2:
        return Short;
    case 3:
        return LongShort;
    default:
        return LongShortShort;
    }
}

void TakeNextPiece(DashState& dash, std::span<const DashPair> pattern) {
    if (dash.InGap) dash.Pair = (dash.Pair + 1) % pattern.size();
    dash.InGap = !dash.InGap;
    dash.Used = 0.0;
}

// The lengths are units of a usual display. On a device whose units are finer the patterns grow with them, so
// that dashes are as long to the eye on paper and in a picture. A display takes whole units: its lines are
// drawn dot by dot.
double PatternUnit() {
    constexpr double usual = 96.0; // dots per inch
    const double finer = static_cast<double>(Chart.PixY) * 1440.0 / usual;
    return std::max(1.0, Chart.Target == Targets::Screen ? std::nearbyint(finer) : finer);
}

int Rounded(double value) {
    return static_cast<int>(std::nearbyint(value));
}

} // namespace

void BeginDash(std::int16_t style) {
    Chart.Dash = {};
    Chart.Dash.Style = style;
    Chart.Dash.Unit = PatternUnit();
}

void DashLine(int x1, int y1, int x2, int y2) {
    const DrawingSurface& surface = TargetSurface();
    DashState& dash = Chart.Dash;
    if (dash.Style == 0) {
        surface.Line(x1, y1, x2, y2);
        return;
    }
    const std::span<const DashPair> pattern = PatternOf(dash.Style);
    const double dx = x2 - x1;
    const double dy = y2 - y1;
    const double length = std::hypot(dx, dy);
    double done = 0.0;
    while (done < length) {
        const DashPair& pair = pattern[dash.Pair];
        const double left = dash.Unit * (dash.InGap ? pair.Off : pair.On) - dash.Used;
        const bool ends = left <= length - done; // the piece ends within the line
        const double to = ends ? done + left : length;
        if (!dash.InGap && to > done)
            surface.Line(Rounded(x1 + dx * done / length), Rounded(y1 + dy * done / length),
                         Rounded(x1 + dx * to / length), Rounded(y1 + dy * to / length));
        dash.Used += to - done;
        done = to;
        if (ends) TakeNextPiece(dash, pattern);
    }
}

void DashPolyline(const std::vector<DevicePoint>& points) {
    if (points.size() < 2) return;
    const DevicePoint first = points[0];
    const bool dot = points.size() == 2 && first.X == points[1].X && first.Y == points[1].Y;
    if (Chart.Dash.Style == 0 || dot) { // a dot is no longer than the shortest piece
        TargetSurface().Polyline(points);
        return;
    }
    for (std::size_t i = 1; i < points.size(); ++i)
        DashLine(points[i - 1].X, points[i - 1].Y, points[i].X, points[i].Y);
}

void DashRectangle(const DeviceRect& rect) {
    DashLine(rect.Left, rect.Top, rect.Right, rect.Top);
    DashLine(rect.Right, rect.Top, rect.Right, rect.Bottom);
    DashLine(rect.Right, rect.Bottom, rect.Left, rect.Bottom);
    DashLine(rect.Left, rect.Bottom, rect.Left, rect.Top);
}

} // namespace Quillon
