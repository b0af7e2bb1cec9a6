#include "scandata/forms/VelocityRun.h"

#include "input/NUMINPUT.h"
#include "scandata/range/ProposeRange.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/reader/ScanWriter.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr std::size_t FewestScans = 10;
constexpr std::size_t Tail = 3; // scans before the last one that are looked at
constexpr double Unsettled = 20.0;

// The median of |y(p-1) - 2 y(p) + y(p+1)| over that of a normal deviate with the variance of 6 readings.
double NoiseOf(RowNo row, const PointRange& range) {
    std::vector<double> sizes;
    const OneBased<float>& y = Work.ScanValue[row];
    for (long p = range.First + 1; p < range.Last; ++p)
        sizes.push_back(std::fabs(static_cast<double>(y[p - 1]) - 2.0 * static_cast<double>(y[p]) +
                                  static_cast<double>(y[p + 1])));
    if (sizes.empty()) return 0.0;
    const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2);
    std::nth_element(sizes.begin(), middle, sizes.end());
    return *middle / (0.6745 * std::sqrt(6.0));
}

// The value of a scan at a radius between two of its points, by the straight line between them.
bool ValueAt(RowNo row, float radius, double& value) {
    const OneBased<float>& r = Work.ScanRadius[row];
    const auto above = std::lower_bound(r.begin(), r.end(), radius);
    if (above == r.begin() || above == r.end()) return false;
    const long p = above - r.begin() + 1;
    const double part = (static_cast<double>(radius) - static_cast<double>(r[p - 1])) /
                        (static_cast<double>(r[p]) - static_cast<double>(r[p - 1]));
    value = (1.0 - part) * static_cast<double>(Work.ScanValue[row][p - 1]) +
            part * static_cast<double>(Work.ScanValue[row][p]);
    return std::isfinite(value);
}

double RmsBetween(RowNo scan, RowNo last, const PointRange& range) {
    double squares = 0.0;
    long count = 0;
    for (long p = range.First; p <= range.Last; ++p) {
        double value = 0.0;
        if (!ValueAt(scan, Work.ScanRadius[last][p], value)) continue;
        squares += std::pow(value - static_cast<double>(Work.ScanValue[last][p]), 2);
        ++count;
    }
    return count > 0 ? std::sqrt(squares / static_cast<double>(count)) : 0.0;
}

bool HasNotSettled(const std::vector<RowNo>& scans) {
    if (scans.size() < FewestScans) return false;
    const RowNo last = scans.back();
    const PointRange range = ProposeRangeOf(last);
    if (range.First == 0) return false;
    const double noise = NoiseOf(last, range);
    for (std::size_t i = scans.size() - 1 - Tail; i + 1 < scans.size(); ++i)
        if (!(RmsBetween(scans[i], last, range) > Unsettled * noise)) return false;
    return true;
}

// A row for each scan like that of a row, by time; a scan that stands in several rows counts once.
std::vector<RowNo> MeasurementOf(RowNo row, const std::vector<RowNo>& rows) {
    std::vector<RowNo> scans;
    for (const RowNo other : rows)
        if (SameMeasurement(row, other) && std::none_of(scans.begin(), scans.end(), [other](RowNo one) {
                return Work.ScanFile[one] == Work.ScanFile[other];
            }))
            scans.push_back(other);
    std::stable_sort(scans.begin(), scans.end(),
                     [](RowNo a, RowNo b) { return Work.ScanTime[a] < Work.ScanTime[b]; });
    return scans;
}

std::string Words(const std::vector<RowNo>& scans) {
    const RowNo last = scans.back();
    const int cell = CellNumberOf(Work.ScanFile[last]);
    return std::to_string(scans.size()) + " scans" + (cell > 0 ? " of cell " + std::to_string(cell) : "") +
           " at " + SingleText(Work.ScanRPM[last]) +
           " rpm have not settled: this is a velocity run, and none of them is at equilibrium";
}

} // namespace

std::vector<std::string> VelocityRemarks(const std::vector<RowNo>& rows) {
    std::vector<std::string> remarks;
    for (const RowNo row : rows) {
        const std::vector<RowNo> scans = MeasurementOf(row, rows);
        if (scans.empty() || *std::min_element(scans.begin(), scans.end()) != row) continue; // once
        if (HasNotSettled(scans)) remarks.push_back(Words(scans));
    }
    return remarks;
}

} // namespace Quillon
