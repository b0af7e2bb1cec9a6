// Which columns a scan holds is nowhere written: instruments scan a cell from end to end.
#include "runs/Channels.h"

#include "scandata/range/ProposeRange.h"
#include "scandata/reader/ScanDifference.h"
#include "scandata/table/DataSetTable.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr float ShortestColumn = 0.05F; // cm; a stretch between ribs that is shorter is none
constexpr double LeastSignal = 3.0;     // times the noise
constexpr double LeastSpread = 2.0;     // times the noise

// The readings of a channel's radii, and the steady stretch among them.
struct Stretch {
    RunChannel Column;
    PointRange Steady; // none: no stretch that is long enough
    bool HasPoints = false;
};

PointRange PointsBetween(const RunScan& scan, float inner, float outer) {
    PointRange range;
    for (long p = 1; p <= scan.Radii.Hi(); ++p) {
        if (scan.Radii[p] < inner || scan.Radii[p] > outer) continue;
        if (range.First == 0) range.First = p;
        range.Last = p;
    }
    return range;
}

// The steady part of a channel's points as its stretch, where it is long enough.
void TakeSteady(const RunScan& scan, const PointRange& steady, Stretch& stretch) {
    if (steady.First == 0 || scan.Radii[steady.Last] - scan.Radii[steady.First] < ShortestColumn) return;
    stretch.Steady = steady;
    stretch.Column.Inner = scan.Radii[steady.First];
    stretch.Column.Outer = scan.Radii[steady.Last];
}

Stretch StretchOf(const RunScan& scan, std::int16_t samples, std::int16_t channel) {
    Stretch stretch;
    stretch.Column.Samples = samples;
    stretch.Column.Channel = channel;
    float inner{};
    float outer{};
    if (!ChannelRadiiAt(samples, channel, scan.Head.Rpm, inner, outer)) return stretch;
    const PointRange within = PointsBetween(scan, inner, outer);
    stretch.HasPoints = within.First > 0;
    if (!stretch.HasPoints) return stretch;
    const PointRange reach = ReachOfChannel({scan.Radii, samples, scan.Head.Rpm}, channel, within);
    TakeSteady(scan, ProposeRangeAcross(scan.Readings, within, reach), stretch);
    return stretch;
}

// No proposal runs from the one stretch into the other: between them the signal breaks.
bool IsParted(const RunScan& scan, const PointRange& a, const PointRange& b) {
    const PointRange both = ProposeRange(scan.Readings, a.First, b.Last);
    return !(both.First <= a.Last && both.Last >= b.First);
}

bool HoldsSample(const RunScan& scan, const Stretch& stretch) {
    const double noise =
        NoiseBetween(ReadingsOf(scan), stretch.Column.Inner, stretch.Column.Outer).value_or(0.0);
    double sum = 0.0, squares = 0.0;
    for (long p = stretch.Steady.First; p <= stretch.Steady.Last; ++p)
        sum += static_cast<double>(scan.Readings[p]);
    const double count = static_cast<double>(stretch.Steady.Last - stretch.Steady.First + 1);
    const double mean = sum / count;
    for (long p = stretch.Steady.First; p <= stretch.Steady.Last; ++p)
        squares += std::pow(static_cast<double>(scan.Readings[p]) - mean, 2);
    return std::fabs(mean) > LeastSignal * noise || std::sqrt(squares / count) > LeastSpread * noise;
}

// The columns of a centerpiece with several samples; none where the scan does not look like that.
std::vector<RunChannel> ColumnsOf(const RunScan& scan, std::int16_t samples) {
    std::vector<RunChannel> columns;
    PointRange before;
    long stretches = 0;
    for (std::int16_t channel = 1; channel <= samples; ++channel) {
        const Stretch stretch = StretchOf(scan, samples, channel);
        if (!stretch.HasPoints) return {};
        if (stretch.Steady.First == 0) continue;
        if (before.First > 0 && !IsParted(scan, before, stretch.Steady)) return {};
        before = stretch.Steady;
        ++stretches;
        if (HoldsSample(scan, stretch)) columns.push_back(stretch.Column);
    }
    return stretches > 1 ? columns : std::vector<RunChannel>{};
}

// The radii of the settings part the channels of a centerpiece from each other.
bool HasRadiiOfItsOwn(std::int16_t samples) {
    float before = 0.0F;
    for (std::int16_t channel = 1; channel <= samples; ++channel) {
        float inner{};
        float outer{};
        if (!ChannelRadiiAt(samples, channel, 0.0F, inner, outer) || inner < before) return false;
        before = outer;
    }
    return true;
}

RunChannel OneColumn(const RunScan& scan, const ApproachRange& range) {
    const long points = scan.Radii.Hi();
    RunChannel column{Centerpiece::TwoChannel, 0, scan.Radii[1], scan.Radii[points]};
    if (range.Inner || range.Outer) {
        column.Inner = range.Inner.value_or(column.Inner);
        column.Outer = range.Outer.value_or(column.Outer);
        return column;
    }
    const PointRange proposed = ProposeRange(scan.Readings, 1, points);
    if (proposed.First == 0) return column;
    column.Inner = scan.Radii[proposed.First];
    column.Outer = scan.Radii[proposed.Last];
    return column;
}

} // namespace

std::vector<RunChannel> ChannelsOf(const RunScan& scan, const ApproachRange& range) {
    if (!range.Inner && !range.Outer)
        for (const std::int16_t samples : {std::int16_t{4}, std::int16_t{3}}) {
            if (!HasRadiiOfItsOwn(samples)) continue;
            std::vector<RunChannel> columns = ColumnsOf(scan, samples);
            if (!columns.empty()) return columns;
        }
    return {OneColumn(scan, range)};
}

} // namespace Quillon
