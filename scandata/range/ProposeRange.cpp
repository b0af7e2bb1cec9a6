#include "scandata/range/ProposeRange.h"

#include "scandata/table/DataSetTable.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Quillon {

namespace {

// How much a break stands out from the noise, measured by the quarter of the second differences that is
// smallest: with 8 in place of 18 columns with a noise of 0.006 were cut.
constexpr double TimesQuartile = 18.0;
constexpr double LeastBreak = 0.03; // signal units: quiet scans are not cut at what the eye does not see
constexpr long CutAtEnds = 2;       // points next to a break that it may still reach
constexpr long FewestProposed = 3;

// |second difference| of the points first + 1 .. last - 1, from subscript 0.
std::vector<double> SecondDifferences(const OneBased<float>& values, long first, long last) {
    std::vector<double> differences;
    for (long p = first + 1; p < last; ++p)
        differences.push_back(std::fabs(static_cast<double>(values[p - 1]) -
                                        2.0 * static_cast<double>(values[p]) +
                                        static_cast<double>(values[p + 1])));
    return differences;
}

double LowerQuartile(std::vector<double> numbers) {
    const auto quarter = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 4);
    std::nth_element(numbers.begin(), quarter, numbers.end());
    return *quarter;
}

// The first longest run of numbers below a limit, as subscripts from begin up to end.
struct Run {
    std::size_t Begin = 0, End = 0;
};
Run LongestRunBelow(const std::vector<double>& numbers, double limit) {
    Run longest;
    for (std::size_t i = 0; i < numbers.size();) {
        std::size_t end = i;
        while (end < numbers.size() && numbers[end] < limit)
            ++end;
        if (end - i > longest.End - longest.Begin) longest = {i, end};
        i = std::max(end, i + 1);
    }
    return longest;
}

double LimitOf(const std::vector<double>& differences) {
    return std::max(TimesQuartile * LowerQuartile(differences), LeastBreak);
}

// The last point on from p, a step at a time within reach, that does not bend by the limit.
long Continued(const OneBased<float>& values, long p, long step, const PointRange& reach, double limit) {
    for (long next = p + step; next > reach.First && next < reach.Last; next += step) {
        if (!IsUnbroken(values, next - 1, next + 1, limit)) break;
        p = next;
    }
    return p;
}

} // namespace

int LastChannelOf(RowNo row) {
    const int code = Work.CenterpieceType[row];
    if (code < Centerpiece::SixChannel) return 0;
    return code == Centerpiece::EightChannel ? Channel::D : Channel::C;
}

double LeastBreakOf(const OneBased<float>& values, long first, long last) {
    const std::vector<double> differences = SecondDifferences(values, first, last);
    return differences.empty() ? LeastBreak : LimitOf(differences);
}

bool IsUnbroken(const OneBased<float>& values, long first, long last, double limit) {
    const std::vector<double> differences = SecondDifferences(values, first, last);
    return std::all_of(differences.begin(), differences.end(), [limit](double d) { return d < limit; });
}

PointRange ProposeRange(const OneBased<float>& values, long first, long last) {
    return ProposeRangeAcross(values, {first, last}, {first, last});
}

PointRange ProposeRangeAcross(const OneBased<float>& values, const PointRange& within,
                              const PointRange& reach) {
    const std::vector<double> differences = SecondDifferences(values, within.First, within.Last);
    if (differences.empty()) return {};
    const double limit = LimitOf(differences);
    const Run run = LongestRunBelow(differences, limit);
    long begin = within.First + 1 + static_cast<long>(run.Begin);
    long end = within.First + static_cast<long>(run.End);
    if (end < begin) return {};
    if (run.Begin == 0) begin = Continued(values, begin, -1, reach, limit);
    if (run.End == differences.size()) end = Continued(values, end, 1, reach, limit);
    begin += CutAtEnds;
    end -= CutAtEnds;
    if (end - begin + 1 < FewestProposed) return {};
    return {begin, end};
}

PointRange ReachOfChannel(const ScanInCell& scan, int channel, const PointRange& within) {
    PointRange reach{1, scan.Radii.Hi()};
    float inner{};
    float outer{};
    if (channel > Channel::A && ChannelRadiiAt(scan.Samples, channel - 1, scan.Rpm, inner, outer))
        while (reach.First < within.First && scan.Radii[reach.First] < outer)
            ++reach.First;
    if (ChannelRadiiAt(scan.Samples, channel + 1, scan.Rpm, inner, outer))
        while (reach.Last > within.Last && scan.Radii[reach.Last] > inner)
            --reach.Last;
    return reach;
}

PointRange ProposeRangeOf(RowNo row) {
    const int channel = Work.DataChannel[row];
    if (channel > 0 && Work.CenterpieceType[row] >= Centerpiece::SixChannel)
        return ProposeRangeInChannel(row, channel);
    return ProposeRange(Work.ScanValue[row], 1, Work.ScanPoints[row]);
}

PointRange ProposeRangeInChannel(RowNo row, int channel) {
    PointRange within{1, Work.ScanPoints[row]};
    const ScanInCell scan{Work.ScanRadius[row], Work.CenterpieceType[row], Work.ScanRPM[row]};
    const PointRange reach = PointsOfChannel(row, channel, within.First, within.Last)
                                 ? ReachOfChannel(scan, channel, within)
                                 : within;
    return ProposeRangeAcross(Work.ScanValue[row], within, reach);
}

} // namespace Quillon
