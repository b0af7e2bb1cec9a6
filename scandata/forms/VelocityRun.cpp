#include "scandata/forms/VelocityRun.h"

#include "input/NUMINPUT.h"
#include "scandata/range/ProposeRange.h"
#include "scandata/reader/IntensityScan.h"
#include "scandata/reader/ScanDifference.h"
#include "scandata/reader/ScanWriter.h"
#include "workspace/records/Workspace.h"

#include <algorithm>

namespace Quillon {

namespace {

ScanReadings ScanReadingsOf(RowNo row) {
    return {Work.ScanRadius[row], Work.ScanValue[row]};
}

bool HasNotSettled(const std::vector<RowNo>& scans) {
    if (scans.size() < FewestOfVelocity) return false;
    const ScanReadings last = ScanReadingsOf(scans.back());
    const PointRange range = ProposeRangeOf(scans.back());
    if (range.First == 0) return false;
    const float inner = last.Radii[range.First], outer = last.Radii[range.Last];
    const double noise = NoiseBetween(last, inner, outer).value_or(0.0);
    for (std::size_t i = scans.size() - 1 - TailOfVelocity; i + 1 < scans.size(); ++i) {
        const auto rms = RmsFrom(last, ScanReadingsOf(scans[i]), inner, outer);
        if (!rms || !(*rms > VelocityStep * noise)) return false;
    }
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
