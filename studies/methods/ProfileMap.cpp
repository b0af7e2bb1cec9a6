#include "studies/methods/ProfileMap.h"

#include "fit/equations/FDistribution.h"
#include "models/table/ParmScale.h"
#include "studies/methods/Copies.h"
#include "studies/methods/HeldFit.h"
#include "workspace/records/Cancel.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

// The level at which a profile reaches as far as the region of both.
double LevelOfOne(double ratio, long freedom) {
    const auto n = static_cast<float>(freedom);
    const auto f = static_cast<float>((ratio - 1.0) * static_cast<double>(freedom));
    return 1.0 - static_cast<double>(FProbability(f, 1.0F, n));
}

// The profiles of both, which say how far the map reaches and where its rows start.
struct Edges {
    std::array<Profile, 2> Of;
    bool Complete() const { return Of[0].Complete && Of[1].Complete; }
    const std::string& Broken() const { return Of[0].Broken.empty() ? Of[1].Broken : Of[0].Broken; }
};

Edges EdgesOf(const ProfileMap& map, const ProfileChoice& choice) {
    const long freedom = Work.NumPts - Work.NumFree;
    double ratio = 1.0;
    for (const ProfileLimits& level : map.Levels)
        ratio = std::max(ratio, level.Ratio);
    const ProfileChoice wide{{LevelOfOne(ratio, freedom)}, choice.Steps};
    Edges edges;
    for (std::size_t i = 0; i < 2 && !Work.AbortFit; ++i) {
        edges.Of[i] = ProfileParameter(map.Slots[i], wide, {});
        if (edges.Of[i].Better) Work = *edges.Of[i].Better; // the other one starts there, too
    }
    return edges;
}

// A pair that a cancel has left out.
ProfilePoint NotFitted(double value) {
    ProfilePoint point;
    point.Value = value;
    point.SumSq = point.Ratio = std::numeric_limits<double>::infinity();
    return point;
}

struct MapRow {
    std::vector<ProfilePoint> Points;
    bool Ended = false;
};

// Along a row, on a copy with both slots held: from the value nearest to the second one's best outwards.
MapRow FitRow(const std::array<long, 2>& slots, const ProfilePoint& start,
              const std::vector<ProfilePoint>& values, bool others, std::atomic<long>& steps) {
    MapRow row;
    for (const ProfilePoint& value : values)
        row.Points.push_back(NotFitted(value.Value));
    std::size_t nearest = 0;
    const auto from = [&](std::size_t i) {
        return std::fabs(values[i].Parms[slots[1]] - start.Parms[slots[1]]);
    };
    for (std::size_t i = 1; i < values.size(); ++i)
        if (from(i) < from(nearest)) nearest = i;
    const auto fit = [&](std::size_t i) {
        Work.Parms[slots[0]] = start.Parms[slots[0]];
        Work.Parms[slots[1]] = values[i].Parms[slots[1]];
        BuildParmScale();
        const HeldEnd end = FitOthers(others);
        if (!end.Ended) return false;
        row.Points[i] = {values[i].Value, end.SumSq, 0.0, end.Converged, Work.Parms};
        ++steps;
        return true;
    };
    Work.Parms = start.Parms;
    for (std::size_t i = nearest; i < values.size(); ++i)
        if (!fit(i)) return row;
    if (nearest < values.size()) Work.Parms = row.Points[nearest].Parms;
    for (std::size_t i = nearest; i-- > 0;)
        if (!fit(i)) return row;
    row.Ended = true;
    return row;
}

std::vector<MapRow> FitRows(ProfileMap& map, const Edges& edges,
                            const std::function<void(long, long)>& told) {
    const std::vector<ProfilePoint>& first = edges.Of[0].Points;
    const std::vector<ProfilePoint>& second = edges.Of[1].Points;
    std::vector<MapRow> rows(first.size());
    std::atomic<long> steps{0};
    const auto all = static_cast<long>(first.size() * second.size());
    const CopiesEnd end = RunOnCopies(
        static_cast<long>(first.size()), 1,
        [&](long number) {
            const auto i = static_cast<std::size_t>(number);
            ClearCancel();
            FitFinely();
            const bool others = HoldSlots({map.Slots[0], map.Slots[1]});
            rows[i] = FitRow(map.Slots, first[i], second, others, steps);
        },
        [&](long) {
            if (told) told(steps, all);
        });
    map.Broken = end.Reason;
    return rows;
}

// The lowest point of the map that lies clearly below its minimum; nullptr for none.
const ProfilePoint* LowerPoint(const std::vector<MapRow>& rows, double minimum, long freedom) {
    constexpr double Rest = 0.05; // of a degree of freedom's share
    const double limit = minimum * (1.0 - Rest / static_cast<double>(freedom));
    const ProfilePoint* lowest = nullptr;
    for (const MapRow& row : rows)
        for (const ProfilePoint& point : row.Points)
            if (point.SumSq < limit && (!lowest || point.SumSq < lowest->SumSq)) lowest = &point;
    return lowest;
}

void FillMap(ProfileMap& map, const Edges& edges, const std::vector<MapRow>& rows) {
    for (std::size_t i = 0; i < 2; ++i) {
        map.Minimum[i] = edges.Of[i].MinimumValue;
        for (const ProfilePoint& point : edges.Of[i].Points)
            map.Values[i].push_back(point.Value);
    }
    map.MinimumSumSq = std::min(edges.Of[0].MinimumSumSq, edges.Of[1].MinimumSumSq);
    map.Complete = std::all_of(rows.begin(), rows.end(), [](const MapRow& row) { return row.Ended; });
    for (const MapRow& row : rows)
        for (std::size_t j = 0; j < map.Values[1].size(); ++j) {
            ProfilePoint point = row.Points.empty() ? NotFitted(map.Values[1][j]) : row.Points[j];
            point.Ratio = point.SumSq / map.MinimumSumSq;
            map.Points.push_back(std::move(point));
        }
}

} // namespace

ProfileMap MapParameters(long slot1, long slot2, const ProfileChoice& choice,
                         const std::function<void(long done, long all)>& told) {
    ProfileMap map;
    map.Slots = {slot1, slot2};
    map.Names = {Work.ParmName[slot1], Work.ParmName[slot2]};
    const long freedom = Work.NumPts - Work.NumFree;
    for (const double level : choice.Levels)
        map.Levels.push_back({level, RatioOfLevel(level, 2, freedom), {}, {}});
    const Workspace own = Work;
    constexpr int MostBases = 3;
    for (int i = 0; i < MostBases; ++i) {
        const Edges edges = EdgesOf(map, choice);
        for (const Profile& edge : edges.Of)
            if (edge.Better) map.Better = edge.Better;
        if (!edges.Complete()) {
            map.Broken = edges.Broken();
            break;
        }
        const std::vector<MapRow> rows = FitRows(map, edges, told);
        const ProfilePoint* lower = LowerPoint(rows, edges.Of[1].MinimumSumSq, freedom);
        if (lower && i + 1 < MostBases && !Work.AbortFit) {
            Work.Parms = lower->Parms; // the profiles find the minimum below it
            continue;
        }
        FillMap(map, edges, rows);
        break;
    }
    const bool cancelled = Work.AbortFit != 0;
    Work = own;
    HandOnCancel(cancelled);
    return map;
}

} // namespace Quillon
