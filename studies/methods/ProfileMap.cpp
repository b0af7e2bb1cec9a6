#include "studies/methods/ProfileMap.h"

#include "fit/equations/FDistribution.h"
#include "models/table/ParmScale.h"
#include "studies/methods/Copies.h"
#include "studies/methods/HeldFit.h"
#include "studies/methods/ProfileBase.h"
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

// A row of the map, on a copy with both slots held: Start is the first one's, Values those of the second.
struct RowFit {
    const std::array<long, 2>& Slots;
    const ProfilePoint& Start;
    const std::vector<ProfilePoint>& Values;
    bool Others = true; // something else is fitted
    std::atomic<long>& Steps;
};

// The place of the value nearest to what the second one has at the row's start.
std::size_t NearestOf(const RowFit& fit) {
    const long slot = fit.Slots[1];
    const auto nearest = std::min_element(fit.Values.begin(), fit.Values.end(),
                                          [&](const ProfilePoint& a, const ProfilePoint& b) {
                                              return std::fabs(a.Parms[slot] - fit.Start.Parms[slot]) <
                                                     std::fabs(b.Parms[slot] - fit.Start.Parms[slot]);
                                          });
    return static_cast<std::size_t>(nearest - fit.Values.begin());
}

// From the parameters that stand in Work; false after a cancel.
bool FitPair(const RowFit& fit, MapRow& row, std::size_t i) {
    Work.Parms[fit.Slots[0]] = fit.Start.Parms[fit.Slots[0]];
    Work.Parms[fit.Slots[1]] = fit.Values[i].Parms[fit.Slots[1]];
    BuildParmScale();
    const HeldEnd end = FitOthers(fit.Others);
    if (!end.Ended) return false;
    row.Points[i] = {fit.Values[i].Value, end.SumSq, 0.0, end.Converged, Work.Parms};
    ++fit.Steps;
    return true;
}

// Along the row from the value nearest to the second one's best outwards, first up, then down.
MapRow FitRow(const RowFit& fit) {
    MapRow row;
    for (const ProfilePoint& value : fit.Values)
        row.Points.push_back(NotFitted(value.Value));
    const std::size_t nearest = NearestOf(fit);
    Work.Parms = fit.Start.Parms;
    for (std::size_t i = nearest; i < fit.Values.size(); ++i)
        if (!FitPair(fit, row, i)) return row;
    if (nearest < fit.Values.size()) Work.Parms = row.Points[nearest].Parms;
    for (std::size_t i = nearest; i-- > 0;)
        if (!FitPair(fit, row, i)) return row;
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
            rows[i] = FitRow({map.Slots, first[i], second, others, steps});
        },
        [&](long) {
            if (told) told(steps, all);
        });
    map.Broken = end.Reason;
    return rows;
}

// The lowest point of the map that lies clearly below its minimum; nullptr for none.
const ProfilePoint* LowerPoint(const std::vector<MapRow>& rows, double minimum, long freedom) {
    const double limit = SumClearlyBelow(minimum, freedom);
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

ProfileMap EmptyMap(long slot1, long slot2, const std::vector<double>& levels) {
    ProfileMap map;
    map.Slots = {slot1, slot2};
    map.Names = {Work.ParmName[slot1], Work.ParmName[slot2]};
    for (const double level : levels)
        map.Levels.push_back({level, RatioOfLevel(level, 2, Work.NumPts - Work.NumFree), {}, {}});
    return map;
}

// The map from the fit in Work. False where a lower minimum was met, whose parameters then stand there: the
// profiles find the minimum below it. last takes the map as it comes.
bool MapFromHere(ProfileMap& map, const ProfileChoice& choice, bool last,
                 const std::function<void(long, long)>& told) {
    const long freedom = Work.NumPts - Work.NumFree;
    const Edges edges = EdgesOf(map, choice);
    for (const Profile& edge : edges.Of)
        if (edge.Better) map.Better = edge.Better;
    if (!edges.Complete()) {
        map.Broken = edges.Broken();
        return true;
    }
    const std::vector<MapRow> rows = FitRows(map, edges, told);
    const ProfilePoint* lower = LowerPoint(rows, edges.Of[1].MinimumSumSq, freedom);
    if (lower && !last && !Work.AbortFit) {
        Work.Parms = lower->Parms;
        return false;
    }
    FillMap(map, edges, rows);
    return true;
}

} // namespace

ProfileMap MapParameters(long slot1, long slot2, const ProfileChoice& choice,
                         const std::function<void(long done, long all)>& told) {
    ProfileMap map = EmptyMap(slot1, slot2, choice.Levels);
    const Workspace own = Work;
    constexpr int MostBases = 3;
    for (int i = 0; i < MostBases; ++i)
        if (MapFromHere(map, choice, i + 1 == MostBases, told)) break;
    const bool cancelled = Work.AbortFit != 0;
    Work = own;
    HandOnCancel(cancelled);
    return map;
}

} // namespace Quillon
