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
constexpr long FewestPoints = 3;

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

} // namespace

double LeastBreakOf(const OneBased<float>& values, long first, long last) {
    const std::vector<double> differences = SecondDifferences(values, first, last);
    return differences.empty() ? LeastBreak : LimitOf(differences);
}

bool IsUnbroken(const OneBased<float>& values, long first, long last, double limit) {
    const std::vector<double> differences = SecondDifferences(values, first, last);
    return std::all_of(differences.begin(), differences.end(), [limit](double d) { return d < limit; });
}

PointRange ProposeRange(const OneBased<float>& values, long first, long last) {
    const std::vector<double> differences = SecondDifferences(values, first, last);
    if (differences.empty()) return {};
    const double limit = LimitOf(differences);
    const Run run = LongestRunBelow(differences, limit);
    const long begin = first + 1 + static_cast<long>(run.Begin) + CutAtEnds;
    const long end = first + static_cast<long>(run.End) - CutAtEnds;
    if (end - begin + 1 < FewestPoints) return {};
    return {begin, end};
}

PointRange ProposeRangeOf(RowNo row) {
    long first = 1;
    long last = Work.ScanPoints[row];
    const int channel = Work.DataChannel[row];
    if (channel > 0 && Work.CenterpieceType[row] >= Centerpiece::SixChannel)
        PointsOfChannel(row, channel, first, last);
    return ProposeRange(Work.ScanValue[row], first, last);
}

} // namespace Quillon
