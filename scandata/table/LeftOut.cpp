#include "scandata/table/LeftOut.h"

#include "scandata/table/BaselineAt.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double Nearest = 0.0015; // cm: half of the usual step of an absorbance scan
constexpr double Slack = 1e-6;     // cm: what a radius loses as a single

void PutRange(RowNo row, long first, long last) {
    const long points = Work.ScanPoints[row];
    first = std::clamp(first, 1L, points);
    Work.FitRange[0][row] = ToInt16(first);
    Work.FitRange[1][row] = ToInt16(std::clamp(last, first, points));
}

void CutPoints(RowNo row, const std::vector<long>& points) {
    OneBased<float>& radii = Work.ScanRadius[row];
    OneBased<float>& values = Work.ScanValue[row];
    auto next = points.begin();
    long kept = 0;
    for (long p = 1; p <= Work.ScanPoints[row]; ++p) {
        if (next != points.end() && *next == p) {
            ++next;
            continue;
        }
        ++kept;
        radii[kept] = radii[p];
        values[kept] = values[p];
    }
    radii.Resize(kept);
    values.Resize(kept);
    Work.ScanPoints[row] = ToInt16(kept);
}

bool RisesByPlace(const LeftOutReading& a, const LeftOutReading& b) {
    return a.Place < b.Place;
}

void NoteLeftOut(RowNo row, const std::vector<long>& points, LeftOutBy::Code why) {
    const OneBased<long> places = PlacesOfPoints(row);
    for (const long p : points)
        Work.LeftOut[row].push_back(
            {ToInt16(places[p]), why, Work.ScanRadius[row][p], Work.ScanValue[row][p]});
    std::sort(Work.LeftOut[row].begin(), Work.LeftOut[row].end(), RisesByPlace);
}

// How many of the points lie before p.
long CountBefore(const std::vector<long>& points, long p) {
    return std::lower_bound(points.begin(), points.end(), p) - points.begin();
}

struct Reading {
    long Place, Point; // Point 0: left out
    float Radius;
};

// The readings of a row, left-out ones too, by place.
std::vector<Reading> AllReadings(RowNo row) {
    std::vector<Reading> readings;
    const OneBased<long> places = PlacesOfPoints(row);
    for (long p = 1; p <= Work.ScanPoints[row]; ++p)
        readings.push_back({places[p], p, Work.ScanRadius[row][p]});
    for (const LeftOutReading& out : Work.LeftOut[row])
        readings.push_back({out.Place, 0, out.Radius});
    std::sort(readings.begin(), readings.end(),
              [](const Reading& a, const Reading& b) { return a.Place < b.Place; });
    return readings;
}

double Distance(const Reading& reading, const Exclusion& exclusion) {
    return std::fabs(static_cast<double>(reading.Radius) - static_cast<double>(exclusion.From));
}

std::vector<Reading> Met(const std::vector<Reading>& readings, const Exclusion& exclusion) {
    std::vector<Reading> met;
    if (exclusion.From != exclusion.To) {
        for (const Reading& reading : readings)
            if (reading.Radius >= exclusion.From && reading.Radius <= exclusion.To) met.push_back(reading);
        return met;
    }
    const auto nearest =
        std::min_element(readings.begin(), readings.end(), [&](const Reading& a, const Reading& b) {
            return Distance(a, exclusion) < Distance(b, exclusion);
        });
    if (nearest != readings.end() && Distance(*nearest, exclusion) <= Nearest + Slack)
        met.push_back(*nearest);
    return met;
}

// From the first to the last reading of a stretch by hand, if the radii between them meet just those.
bool IsExclusion(const std::vector<Reading>& readings, std::size_t first, std::size_t last) {
    const Exclusion exclusion{readings[first].Radius, readings[last].Radius};
    const std::vector<Reading> met = Met(readings, exclusion);
    return met.size() == last - first + 1 && met.front().Place == readings[first].Place;
}

std::vector<bool> MarksByHand(RowNo row, const std::vector<Reading>& readings) {
    std::vector<bool> marks(readings.size(), false);
    for (const LeftOutReading& out : Work.LeftOut[row])
        if (out.Why == LeftOutBy::Hand) marks[static_cast<std::size_t>(out.Place) - 1] = true;
    return marks;
}

std::vector<long> PointsAbove(RowNo row, float ceiling) {
    std::vector<long> points;
    BaselinePlace baseline;
    for (long p = 1; ceiling > 0.0F && p <= Work.ScanPoints[row]; ++p)
        if (SignalOf(row, Work.ScanRadius[row][p], Work.ScanValue[row][p], baseline) >
            static_cast<double>(ceiling))
            points.push_back(p);
    return points;
}

} // namespace

long ReadingsOf(RowNo row) {
    return Work.ScanPoints[row] + static_cast<long>(Work.LeftOut[row].size());
}

OneBased<long> PlacesOfPoints(RowNo row) {
    OneBased<long> places(Work.ScanPoints[row]);
    const std::vector<LeftOutReading>& out = Work.LeftOut[row];
    std::size_t before = 0;
    for (long p = 1; p <= Work.ScanPoints[row]; ++p) {
        while (before < out.size() && out[before].Place == p + static_cast<long>(before))
            ++before;
        places[p] = p + static_cast<long>(before);
    }
    return places;
}

bool LeaveOut(RowNo row, const std::vector<long>& points, LeftOutBy::Code why) {
    if (points.empty()) return true;
    if (static_cast<long>(points.size()) >= Work.ScanPoints[row]) return false;
    const long first = Work.FitRange[0][row];
    const long last = Work.FitRange[1][row];
    NoteLeftOut(row, points, why);
    CutPoints(row, points);
    PutRange(row, first - CountBefore(points, first), last - CountBefore(points, last + 1));
    return true;
}

long TakeBack(RowNo row, const std::function<bool(const LeftOutReading&)>& comes) {
    std::vector<LeftOutReading> stay, back;
    for (const LeftOutReading& out : Work.LeftOut[row])
        (comes(out) ? back : stay).push_back(out);
    if (back.empty()) return 0;
    const OneBased<long> places = PlacesOfPoints(row);
    const long points = Work.ScanPoints[row];
    const long first = Work.FitRange[0][row] <= 1 ? 0 : places[Work.FitRange[0][row]];
    const bool toEnd = Work.FitRange[1][row] >= points;
    const long last = toEnd ? ReadingsOf(row) + 1 : places[Work.FitRange[1][row]];
    std::vector<LeftOutReading> all = back;
    for (long p = 1; p <= points; ++p)
        all.push_back({ToInt16(places[p]), LeftOutBy::Hand, Work.ScanRadius[row][p], Work.ScanValue[row][p]});
    std::sort(all.begin(), all.end(), RisesByPlace);
    Work.ScanRadius[row].Recreate(static_cast<long>(all.size()));
    Work.ScanValue[row].Recreate(static_cast<long>(all.size()));
    long p = 0, before = 0, upTo = 0;
    for (const LeftOutReading& each : all) {
        ++p;
        Work.ScanRadius[row][p] = each.Radius;
        Work.ScanValue[row][p] = each.Value;
        if (each.Place < first) before = p;
        if (each.Place <= last) upTo = p;
    }
    Work.ScanPoints[row] = ToInt16(p);
    Work.LeftOut[row] = std::move(stay);
    PutRange(row, before + 1, upTo);
    return static_cast<long>(back.size());
}

long Exclude(RowNo row, const Exclusion& exclusion) {
    const std::vector<Reading> met = Met(AllReadings(row), exclusion);
    std::vector<long> points;
    for (const Reading& reading : met)
        if (reading.Point > 0) points.push_back(reading.Point);
    return LeaveOut(row, points, LeftOutBy::Hand) ? static_cast<long>(met.size()) : -1;
}

std::vector<Exclusion> ExclusionsOf(RowNo row) {
    if (CountLeftOut(row, LeftOutBy::Hand) == 0) return {};
    const std::vector<Reading> readings = AllReadings(row);
    const std::vector<bool> marks = MarksByHand(row, readings);
    std::vector<Exclusion> exclusions;
    for (std::size_t first = 0; first < readings.size(); ++first) {
        if (!marks[first]) continue;
        std::size_t last = first;
        while (last + 1 < readings.size() && marks[last + 1] && IsExclusion(readings, first, last + 1))
            ++last;
        exclusions.push_back({readings[first].Radius, readings[last].Radius});
        first = last;
    }
    return exclusions;
}

bool SetCeiling(RowNo row, float ceiling) {
    Workspace before = Work;
    TakeBack(row, [](const LeftOutReading& out) { return out.Why == LeftOutBy::Ceiling; });
    if (!LeaveOut(row, PointsAbove(row, ceiling), LeftOutBy::Ceiling)) {
        Work = std::move(before);
        return false;
    }
    Work.SignalCeiling[row] = ceiling;
    return true;
}

void RenewCeilings() {
    for (const RowNo row : EachRow()) {
        const float ceiling = Work.SignalCeiling[row];
        if (Work.IncludeSet[row] == 1 && ceiling > 0.0F && !SetCeiling(row, ceiling)) SetCeiling(row, 0.0F);
    }
}

long CountLeftOut(RowNo row, LeftOutBy::Code why) {
    const std::vector<LeftOutReading>& out = Work.LeftOut[row];
    return std::count_if(out.begin(), out.end(), [why](const auto& reading) { return reading.Why == why; });
}

} // namespace Quillon
