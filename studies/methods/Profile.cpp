#include "studies/methods/Profile.h"

#include "fit/Confidence.h"
#include "fit/Undetermined.h"
#include "fit/equations/FDistribution.h"
#include "input/NUMINPUT.h"
#include "models/table/ParmScale.h"
#include "studies/methods/Copies.h"
#include "studies/methods/ProfileWay.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace Quillon {

namespace {

// --- the grid --------------------------------------------------------------------------------------------

struct Grid {
    double Spacing = 0.0;
    long Below = 0, Above = 0; // values on each side of the minimum
};

// So many values, evenly, the minimum among them, over what both sides reach. Where only one of them has a
// bound in its way, the other one gives way.
Grid GridOf(long steps, double below, double above, double boundBelow, double boundAbove) {
    Grid grid;
    const double all = below + above;
    const long others = steps - 1;
    grid.Below = std::clamp(std::lround(static_cast<double>(others) * below / all), below > 0.0 ? 1L : 0L,
                            above > 0.0 ? others - 1 : others);
    grid.Above = others - grid.Below;
    const auto of = [](double reach, long count) {
        return count > 0 ? reach / static_cast<double>(count) : 0.0;
    };
    grid.Spacing = std::max(of(below, grid.Below), of(above, grid.Above));
    if (grid.Below > 0) grid.Spacing = std::min(grid.Spacing, of(boundBelow, grid.Below));
    if (grid.Above > 0) grid.Spacing = std::min(grid.Spacing, of(boundAbove, grid.Above));
    return grid;
}

// The two sides of a slot: 0 below, 1 above.
std::array<WaySide, 2> SidesOf(const ProfileBase& base, long slot) {
    std::array<WaySide, 2> sides;
    WayPlace minimum;
    minimum.At = static_cast<double>(base.Fit.Parms[slot]);
    minimum.End = {true, true, base.SumSq};
    minimum.Parms = base.Fit.Parms;
    for (std::size_t i = 0; i < 2; ++i) {
        sides[i].Slot = slot;
        sides[i].Direction = i == 0 ? -1.0 : 1.0;
        sides[i].Way = {minimum};
        if (!base.Fit.BoundsActive) continue;
        const double bound = static_cast<double>(ToInternal(SlotNo(slot), base.Fit.Bounds[i][slot]));
        sides[i].Bound = std::max(0.0, sides[i].Direction * (bound - minimum.At));
    }
    return sides;
}

// The error of a fitted slot, or a step that is one for a parameter of its size where it has none.
double ErrorOf(SlotNo slot) {
    const FreePos place = FreePosOf(slot);
    const double error = HasNoError(place) ? 0.0 : StandardError(place);
    if (error > 0.0 && std::isfinite(error)) return error;
    return IsAdditiveSlot(slot) ? 1.0
                                : std::max(std::fabs(static_cast<double>(Work.Parms[slot])) / 10.0, 1e-3);
}

// Prepares Work on a copy for fits with slots held at values.
void TakeBase(const ProfileBase& base, std::vector<long> held, bool& others) {
    Work = base.Fit;
    ClearCancel();
    others = HoldSlots(held);
}

// Runs work(0), work(1), ... side by side on copies with the slots held, told of steps that it counts.
CopiesEnd OnHeldCopies(const ProfileBase& base, const std::vector<long>& held, long pieces,
                       std::atomic<long>& steps, const std::function<void(long done)>& told,
                       const std::function<void(long, bool)>& work) {
    return RunOnCopies(
        pieces, 1,
        [&](long number) {
            bool others = true;
            TakeBase(base, held, others);
            work(number, others);
        },
        [&](long) {
            if (told) told(steps);
        });
}

// The lowest place of the way of either side, from which a better minimum is sought.
const WayPlace& LowestOf(const std::array<WaySide, 2>& sides) {
    const WayPlace* lowest = &sides[0].Way.front();
    for (const WaySide& side : sides)
        for (const WayPlace& place : side.Way)
            if (place.End.SumSq < lowest->End.SumSq) lowest = &place;
    return *lowest;
}

// One profile from a base: false when stopped or when a better minimum was met, which is then in sides.
struct Profiled {
    std::array<WaySide, 2> Sides;
    std::array<std::vector<WayPlace>, 2> Grids; // outwards
    std::array<std::vector<std::optional<double>>, 2> Limits;
    std::string Broken; // why there are no sides
    bool Complete = false, Lower = false;
};

// The points that a side has come to stand, and it says why there are no more.
template <class Step> void KeepReason(WaySide& side, Step&& step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        side.Broken = error.Text;
    }
}

// A side that could not even begin leaves nothing to be shown of either.
void TakeEnd(Profiled& result, const CopiesEnd& end) {
    result.Broken = end.Reason;
    result.Complete = end.Complete && end.Broken == 0;
    result.Lower = result.Sides[0].Lower || result.Sides[1].Lower;
}

// Runs work(side, number) for both sides on copies, 0 below and 1 above, and takes their ends.
template <class Work>
void OnBothSides(const ProfileBase& base, Profiled& result, std::atomic<long>& steps,
                 const std::function<void(long)>& told, const Work& work) {
    const long slot = result.Sides[0].Slot;
    const CopiesEnd end = OnHeldCopies(base, {slot}, 2, steps, told, [&](long number, bool others) {
        const auto i = static_cast<std::size_t>(number);
        result.Sides[i].Others = others;
        KeepReason(result.Sides[i], [&] { work(result.Sides[i], i); });
    });
    TakeEnd(result, end);
}

Profiled ProfileFrom(const ProfileBase& base, long slot, const ProfileChoice& choice,
                     const std::vector<double>& ratios, const std::function<void(long)>& told) {
    Profiled result;
    result.Sides = SidesOf(base, slot);
    const Walk walk{base, *std::max_element(ratios.begin(), ratios.end()), ErrorOf(SlotNo(slot))};
    std::atomic<long> steps{0};
    std::array<double, 2> reach{};
    OnBothSides(base, result, steps, told, [&](WaySide& side, std::size_t i) {
        if (side.Bound > 0.0) reach[i] = Reach(walk, side);
    });
    if (!result.Complete || result.Lower || reach[0] + reach[1] <= 0.0) return result;
    const Grid grid = GridOf(choice.Steps, reach[0], reach[1], result.Sides[0].Bound, result.Sides[1].Bound);
    OnBothSides(base, result, steps, told, [&](WaySide& side, std::size_t i) {
        FitGrid(walk, side, grid.Spacing, i == 0 ? grid.Below : grid.Above, result.Grids[i],
                [&] { ++steps; });
        for (const double ratio : ratios)
            result.Limits[i].push_back(side.Lower ? std::nullopt : LimitOf(walk, side, ratio));
    });
    return result;
}

ProfilePoint PointOf(const ProfileBase& base, long slot, const WayPlace& place) {
    ProfilePoint point;
    point.Value = static_cast<double>(ToUserUnits(SlotNo(slot), static_cast<float>(place.At)));
    point.SumSq = place.End.SumSq;
    point.Ratio = place.End.SumSq / base.SumSq;
    point.Converged = place.End.Converged;
    point.Parms = place.Parms;
    return point;
}

// What a side has to show, outwards: its values, or where it has come to none what it has met on its way.
std::vector<WayPlace> ShownOf(const Profiled& found, std::size_t side) {
    if (found.Complete || !found.Grids[side].empty()) return found.Grids[side];
    return {found.Sides[side].Way.begin() + 1, found.Sides[side].Way.end()};
}

void AddPoints(Profile& profile, const ProfileBase& base, const Profiled& found) {
    const auto add = [&](const WayPlace& place) {
        profile.Points.push_back(PointOf(base, profile.Slot, place));
    };
    const std::vector<WayPlace> below = ShownOf(found, 0), above = ShownOf(found, 1);
    std::for_each(below.rbegin(), below.rend(), add);
    add(found.Sides[0].Way.front());
    std::for_each(above.begin(), above.end(), add);
}

void AddLimits(Profile& profile, const Profiled& found) {
    const auto shown = [&](std::size_t side, std::size_t i) -> std::optional<double> {
        const auto& limits = found.Limits[side];
        if (i >= limits.size() || !limits[i]) return std::nullopt;
        return static_cast<double>(ToUserUnits(SlotNo(profile.Slot), static_cast<float>(*limits[i])));
    };
    for (std::size_t i = 0; i < profile.Limits.size(); ++i) {
        profile.Limits[i].Lower = shown(0, i);
        profile.Limits[i].Upper = shown(1, i);
    }
}

void NoteWhatBroke(Profile& profile, const Profiled& found) {
    for (std::size_t side = 0; side < 2; ++side)
        if (const std::string& why = found.Sides[side].Broken; !why.empty())
            profile.Notes.push_back(std::string("Towards ") + (side == 0 ? "lower" : "higher") +
                                    " values the profile broke off: " + why + ".");
}

// True where the search found a limit clearly nearer to the minimum than the profile's own.
bool SearchIsNarrower(const Profile& profile, bool upper, const std::optional<double>& limit) {
    constexpr double Clearly = 0.02; // of the distance from the minimum
    const SlotNo slot(profile.Slot);
    const FreePos place = FreePosOf(slot);
    if (!LimitFound(place, upper)) return false;
    if (!limit) return true;
    const auto searched = static_cast<double>(ToUserUnits(slot, Work.ParmLimits[upper ? 1 : 0][place]));
    return std::fabs(searched - profile.MinimumValue) <
           (1.0 - Clearly) * std::fabs(*limit - profile.MinimumValue);
}

// The rigorous limits of the results, where they were searched at one of the levels.
void CompareWithSearch(Profile& profile) {
    if (!Work.LimitsDone) return;
    for (const ProfileLimits& limits : profile.Limits) {
        if (std::fabs(limits.Level - static_cast<double>(Work.LimitsLevel)) > 1e-4) continue;
        if (SearchIsNarrower(profile, false, limits.Lower) || SearchIsNarrower(profile, true, limits.Upper))
            profile.Notes.push_back("The searched limits of the results at " +
                                    FormatNumber(limits.Level, "#0.0%") +
                                    " are narrower than those of the profile: these are the ones to give.");
    }
}

// What is told of the way from the base that was the last one.
void FillProfile(Profile& profile, const ProfileBase& base, const Profiled& found) {
    const SlotNo slot(profile.Slot);
    profile.MinimumValue = static_cast<double>(ToUserUnits(slot, base.Fit.Parms[slot]));
    profile.MinimumSumSq = base.SumSq;
    profile.Complete = found.Complete;
    profile.Broken = found.Broken;
    AddPoints(profile, base, found);
    AddLimits(profile, found);
    NoteWhatBroke(profile, found);
    if (profile.Better)
        profile.Notes.push_back("A lower minimum was met on the way; the profile starts from it.");
    CompareWithSearch(profile);
}

std::vector<ProfileLimits> LevelsOf(const ProfileChoice& choice, long count, long freedom) {
    std::vector<ProfileLimits> levels;
    for (const double level : choice.Levels)
        levels.push_back({level, RatioOfLevel(level, count, freedom), {}, {}});
    return levels;
}

} // namespace

std::vector<double> RatiosOf(const std::vector<ProfileLimits>& levels) {
    std::vector<double> ratios;
    for (const ProfileLimits& level : levels)
        ratios.push_back(level.Ratio);
    return ratios;
}

double RatioOfLevel(double level, long count, long freedom) {
    const auto n1 = static_cast<float>(count), n2 = static_cast<float>(freedom);
    const auto f = static_cast<double>(FInverse(static_cast<float>(1.0 - level), n1, n2));
    return 1.0 + static_cast<double>(count) * f / static_cast<double>(freedom);
}

bool CanProfile(long slot) {
    return Work.FitDone != 0 && Work.NewData == Changed::Nothing && Work.NumPts > Work.NumFree && slot >= 0 &&
           slot < Work.NumParms && Work.FreeMap[slot] >= 0;
}

Profile ProfileParameter(long slot, const ProfileChoice& choice,
                         const std::function<void(long done, long all)>& told) {
    Profile profile;
    profile.Slot = slot;
    profile.Name = Work.ParmName[slot];
    profile.Limits = LevelsOf(choice, 1, Work.NumPts - Work.NumFree);
    Profiled found;
    const auto study = [&](const ProfileBase& from, bool last) -> std::optional<PerSlot<float>> {
        found = ProfileFrom(from, slot, choice, RatiosOf(profile.Limits), [&](long done) {
            if (told) told(done, choice.Steps - 1);
        });
        if (!found.Lower || last) return std::nullopt;
        return LowestOf(found.Sides).Parms;
    };
    const std::optional<ProfileBase> base = WithBestBase(profile.Better, profile.Broken, study);
    if (base) FillProfile(profile, *base, found);
    return profile;
}

} // namespace Quillon
