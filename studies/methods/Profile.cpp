#include "studies/methods/Profile.h"

#include "fit/Confidence.h"
#include "fit/GNLLSQ.h"
#include "fit/Undetermined.h"
#include "fit/equations/FDistribution.h"
#include "input/NUMINPUT.h"
#include "models/function/FitFunction.h"
#include "models/table/ParmScale.h"
#include "studies/methods/Copies.h"
#include "studies/methods/HeldFit.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();

// A place on the way along one parameter; internal units.
struct Place {
    double At = 0.0;
    HeldEnd End;
    PerSlot<float> Parms;
};

// What a study of some slots starts from: the minimum, in a workspace that fits finely.
struct Base {
    Workspace Fit;
    double SumSq = 0.0;
    long Freedom = 0;
};

// A sum that lies below that of the base by more than iterations may rest above a minimum.
bool IsLower(const Base& base, double sumSq) {
    constexpr double Rest = 0.05; // of a degree of freedom's share
    return sumSq < base.SumSq * (1.0 - Rest / static_cast<double>(base.Freedom));
}

// Down from Work.Parms with everything fitted that the user has fitted.
std::optional<Base> BaseFromHere() {
    FitFinely();
    const PerSlot<float> start = Work.Parms;
    const HeldEnd end = FitOthers(true);
    if (!end.Ended) return std::nullopt;
    Base base;
    base.Freedom = Work.NumPts - Work.NumFree;
    if (!end.Converged) { // the fit that stands is as good as it gets
        Work.Parms = start;
        ResetFitFunction();
        CalcSumSq();
    }
    base.Fit = Work;
    base.SumSq = Work.SumSq;
    return base;
}

// The base of the user's own fit, or of a better place. Runs on a copy. Where there is none broken is why, ""
// after a cancel.
std::optional<Base> FindBase(const PerSlot<float>* place, std::string& broken) {
    std::optional<Base> base;
    const CopiesEnd end = RunOnCopies(1, 1,
                                      [&](long) {
                                          if (place) Work.Parms = *place;
                                          base = BaseFromHere();
                                      },
                                      {});
    broken = end.Reason;
    return base;
}

// --- the way along a parameter ---------------------------------------------------------------------------

// Beside the minimum to one side, on a copy of the analysis.
struct Side {
    long Slot = 0;
    double Direction = 1.0;
    double Bound = Infinite; // distance of the bound from the minimum, internal units
    bool Others = true;      // something else is fitted
    bool Lower = false;      // a better minimum was met, where the side stops
    std::string Broken;      // why the side broke off in arithmetic; "" where it did not
    std::vector<Place> Way;  // met so far, outwards; the minimum first
};

// Refits the others at a place, from the parameters of a neighbour.
Place FitAt(const Side& side, double at, const PerSlot<float>& neighbour) {
    Place place;
    Work.Parms = neighbour;
    Work.Parms[side.Slot] = static_cast<float>(at);
    place.At = static_cast<double>(Work.Parms[side.Slot]);
    BuildParmScale();
    place.End = FitOthers(side.Others);
    place.Parms = Work.Parms;
    return place;
}

// The nearest place on the way that lies further in.
const Place& Inward(const Side& side, double at) {
    const Place* nearest = &side.Way.front();
    const double distance = std::fabs(at - nearest->At);
    for (const Place& place : side.Way) {
        const double from = std::fabs(place.At - side.Way.front().At);
        if (from <= distance && from > std::fabs(nearest->At - side.Way.front().At)) nearest = &place;
    }
    return *nearest;
}

void KeepInOrder(Side& side, Place place) {
    const auto behind = std::find_if(side.Way.begin(), side.Way.end(), [&](const Place& other) {
        return side.Direction * other.At > side.Direction * place.At;
    });
    side.Way.insert(behind, std::move(place));
}

double MinimumAt(const Side& side) {
    return side.Way.front().At;
}

// What the walks of both sides share.
struct Walk {
    const Base& From;
    double Target = 0.0; // ratio of sums that has to be passed
    double Error = 0.0;  // of the parameter, internal units
};

double RatioAt(const Walk& walk, const Place& place) {
    return place.End.SumSq / walk.From.SumSq;
}

bool Look(const Walk& walk, Side& side, double at) {
    Place place = FitAt(side, at, Inward(side, at).Parms);
    if (!place.End.Ended) return false;
    if (IsLower(walk.From, place.End.SumSq)) side.Lower = true;
    KeepInOrder(side, std::move(place));
    return !side.Lower;
}

// How far a side has to reach: three errors, then further by half until the ratio is passed, a bound is met
// or the function has no value. 0 when stopped.
double Reach(const Walk& walk, Side& side) {
    constexpr int Most = 24; // 1.5^24 is 17,000 times
    double reach = std::min(3.0 * walk.Error, side.Bound);
    for (int i = 0; i < Most; ++i) {
        if (!Look(walk, side, MinimumAt(side) + side.Direction * reach)) return 0.0;
        const Place& last = side.Way.back();
        if (RatioAt(walk, last) > walk.Target || reach >= side.Bound || !std::isfinite(last.End.SumSq)) break;
        reach = std::min(1.5 * reach, side.Bound);
    }
    return reach;
}

// --- limits ----------------------------------------------------------------------------------------------

// In the root of ratio - 1 a profile is nearly straight.
double RootOf(double ratio) {
    return std::sqrt(std::max(ratio - 1.0, 0.0));
}

// Between the two places on the way where the ratio is passed, by false position with the Illinois rule.
std::optional<double> LimitOf(const Walk& walk, Side& side, double ratio) {
    const double target = RootOf(ratio);
    const auto passed = [&](const Place& place) { return RatioAt(walk, place) > ratio; };
    const auto outer = std::find_if(side.Way.begin(), side.Way.end(), passed);
    if (outer == side.Way.begin() || outer == side.Way.end() || !std::isfinite(outer->End.SumSq))
        return std::nullopt;
    Place inner = *(outer - 1);
    double a = inner.At, b = outer->At;
    double fa = RootOf(RatioAt(walk, inner)) - target, fb = RootOf(RatioAt(walk, *outer)) - target;
    double at = b;
    constexpr int Most = 40;
    constexpr double Fine = 0.001; // of the distance from the minimum
    for (int i = 0; i < Most; ++i) {
        const double former = at;
        at = b - fb * (b - a) / (fb - fa);
        Place place = FitAt(side, at, inner.Parms);
        if (!place.End.Ended) return std::nullopt;
        if (IsLower(walk.From, place.End.SumSq)) side.Lower = true;
        const double f = RootOf(RatioAt(walk, place)) - target;
        const bool settled = std::fabs(at - former) < Fine / 2.0 * std::fabs(at - MinimumAt(side));
        if (f == 0.0 || (i > 0 && settled)) break;
        if (f > 0.0) {
            b = at;
            fb = f;
            if (i > 0) fa /= 2.0;
        } else {
            a = at;
            fa = f;
            inner = std::move(place);
            if (i > 0) fb /= 2.0;
        }
    }
    return at;
}

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
std::array<Side, 2> SidesOf(const Base& base, long slot) {
    std::array<Side, 2> sides;
    Place minimum;
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
void TakeBase(const Base& base, std::vector<long> held, bool& others) {
    Work = base.Fit;
    ClearCancel();
    others = HoldSlots(held);
}

// Runs work(0), work(1), ... side by side on copies with the slots held, told of steps that it counts.
CopiesEnd OnHeldCopies(const Base& base, const std::vector<long>& held, long pieces, std::atomic<long>& steps,
                       const std::function<void(long done)>& told,
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
const Place& LowestOf(const std::array<Side, 2>& sides) {
    const Place* lowest = &sides[0].Way.front();
    for (const Side& side : sides)
        for (const Place& place : side.Way)
            if (place.End.SumSq < lowest->End.SumSq) lowest = &place;
    return *lowest;
}

// One profile from a base: false when stopped or when a better minimum was met, which is then in sides.
struct Profiled {
    std::array<Side, 2> Sides;
    std::array<std::vector<Place>, 2> Grids; // outwards
    std::array<std::vector<std::optional<double>>, 2> Limits;
    std::string Broken; // why there are no sides
    bool Complete = false, Lower = false;
};

void FitGrid(const Walk& walk, Side& side, double spacing, long count, std::vector<Place>& grid,
             std::atomic<long>& steps) {
    for (long i = 1; i <= count; ++i) {
        const double at = MinimumAt(side) + side.Direction * spacing * static_cast<double>(i);
        if (!Look(walk, side, at)) return;
        const auto here = static_cast<double>(static_cast<float>(at));
        const auto found = std::find_if(side.Way.begin(), side.Way.end(),
                                        [&](const Place& place) { return place.At == here; });
        grid.push_back(*found);
        ++steps;
    }
}

// The points that a side has come to stand, and it says why there are no more.
template <class Step> void KeepReason(Side& side, Step&& step) {
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

Profiled ProfileFrom(const Base& base, long slot, const ProfileChoice& choice,
                     const std::vector<double>& ratios, const std::function<void(long)>& told) {
    Profiled result;
    result.Sides = SidesOf(base, slot);
    const Walk walk{base, *std::max_element(ratios.begin(), ratios.end()), ErrorOf(SlotNo(slot))};
    std::atomic<long> steps{0};
    std::array<double, 2> reach{};
    const auto sideOf = [&](long number) -> Side& { return result.Sides[static_cast<std::size_t>(number)]; };
    CopiesEnd end = OnHeldCopies(base, {slot}, 2, steps, told, [&](long number, bool others) {
        Side& side = sideOf(number);
        side.Others = others;
        KeepReason(side, [&] {
            if (side.Bound > 0.0) reach[static_cast<std::size_t>(number)] = Reach(walk, side);
        });
    });
    TakeEnd(result, end);
    if (!result.Complete || result.Lower || reach[0] + reach[1] <= 0.0) return result;
    const Grid grid = GridOf(choice.Steps, reach[0], reach[1], result.Sides[0].Bound, result.Sides[1].Bound);
    end = OnHeldCopies(base, {slot}, 2, steps, told, [&](long number, bool) {
        const auto i = static_cast<std::size_t>(number);
        Side& side = sideOf(number);
        KeepReason(side, [&] {
            FitGrid(walk, side, grid.Spacing, number == 0 ? grid.Below : grid.Above, result.Grids[i], steps);
            for (const double ratio : ratios)
                result.Limits[i].push_back(side.Lower ? std::nullopt : LimitOf(walk, side, ratio));
        });
    });
    TakeEnd(result, end);
    return result;
}

ProfilePoint PointOf(const Base& base, long slot, const Place& place) {
    ProfilePoint point;
    point.Value = static_cast<double>(ToUserUnits(SlotNo(slot), static_cast<float>(place.At)));
    point.SumSq = place.End.SumSq;
    point.Ratio = place.End.SumSq / base.SumSq;
    point.Converged = place.End.Converged;
    point.Parms = place.Parms;
    return point;
}

// What a side has to show, outwards: its values, or where it has come to none what it has met on its way.
std::vector<Place> ShownOf(const Profiled& found, std::size_t side) {
    if (found.Complete || !found.Grids[side].empty()) return found.Grids[side];
    return {found.Sides[side].Way.begin() + 1, found.Sides[side].Way.end()};
}

void FillProfile(Profile& profile, const Base& base, const Profiled& found) {
    const long slot = profile.Slot;
    const std::vector<Place> below = ShownOf(found, 0);
    for (auto place = below.rbegin(); place != below.rend(); ++place)
        profile.Points.push_back(PointOf(base, slot, *place));
    profile.Points.push_back(PointOf(base, slot, found.Sides[0].Way.front()));
    for (const Place& place : ShownOf(found, 1))
        profile.Points.push_back(PointOf(base, slot, place));
    const auto shown = [&](std::size_t side, std::size_t i) -> std::optional<double> {
        if (i >= found.Limits[side].size() || !found.Limits[side][i]) return std::nullopt;
        return static_cast<double>(ToUserUnits(SlotNo(slot), static_cast<float>(*found.Limits[side][i])));
    };
    for (std::size_t i = 0; i < profile.Limits.size(); ++i) {
        profile.Limits[i].Lower = shown(0, i);
        profile.Limits[i].Upper = shown(1, i);
    }
    for (std::size_t side = 0; side < 2; ++side)
        if (const std::string& why = found.Sides[side].Broken; !why.empty())
            profile.Notes.push_back(std::string("Towards ") + (side == 0 ? "lower" : "higher") +
                                    " values the profile broke off: " + why + ".");
}

// The rigorous limits of the results, where they were searched at one of the levels.
void CompareWithSearch(Profile& profile) {
    const FreePos place = FreePosOf(SlotNo(profile.Slot));
    if (!Work.LimitsDone) return;
    for (const ProfileLimits& limits : profile.Limits) {
        if (std::fabs(limits.Level - static_cast<double>(Work.LimitsLevel)) > 1e-4) continue;
        const auto searched = [&](bool upper) {
            return static_cast<double>(
                ToUserUnits(SlotNo(profile.Slot), Work.ParmLimits[upper ? 1 : 0][place]));
        };
        constexpr double Clearly = 0.02; // of the distance from the minimum
        const auto narrower = [&](bool upper, const std::optional<double>& limit) {
            if (!LimitFound(place, upper)) return false;
            if (!limit) return true;
            const double mine = std::fabs(*limit - profile.MinimumValue);
            return std::fabs(searched(upper) - profile.MinimumValue) < (1.0 - Clearly) * mine;
        };
        if (narrower(false, limits.Lower) || narrower(true, limits.Upper))
            profile.Notes.push_back("The searched limits of the results at " +
                                    FormatNumber(limits.Level, "#0.0%") +
                                    " are narrower than those of the profile: these are the ones to give.");
    }
}

constexpr int MostBases = 5; // a minimum below a minimum below a minimum

// The fit of a base as one that the user may take.
Workspace BetterFit(const Base& base) {
    Workspace fit = base.Fit;
    fit.ConvergenceLimit = Work.ConvergenceLimit;
    fit.MaxIterations = Work.MaxIterations;
    return fit;
}

// Where a better minimum was met, from there; what is told of the rest is told by the caller.
// Without a base broken is why.
template <class Study>
std::optional<Base> WithBestBase(std::optional<Workspace>& better, std::string& broken, Study&& study) {
    std::optional<Base> base = FindBase(nullptr, broken);
    if (base && base->SumSq < Work.SumSq * (1.0 - 1.0 / static_cast<double>(base->Freedom)))
        better = BetterFit(*base);
    std::string unreached; // a place that leads nowhere leaves the base that there is
    for (int i = 0; base && i < MostBases; ++i) {
        const std::optional<PerSlot<float>> lower = study(*base, i + 1 == MostBases);
        if (!lower) return base;
        const std::optional<Base> next = FindBase(&*lower, unreached);
        if (!next || !IsLower(*base, next->SumSq)) return base;
        base = next;
        better = BetterFit(*base);
    }
    return base;
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
    const std::optional<Base> base = WithBestBase(
        profile.Better, profile.Broken, [&](const Base& from, bool last) -> std::optional<PerSlot<float>> {
            found = ProfileFrom(from, slot, choice, RatiosOf(profile.Limits), [&](long done) {
                if (told) told(done, choice.Steps - 1);
            });
            if (!found.Lower || last) return std::nullopt;
            return LowestOf(found.Sides).Parms;
        });
    if (!base) return profile;
    profile.MinimumValue = static_cast<double>(ToUserUnits(SlotNo(slot), base->Fit.Parms[slot]));
    profile.MinimumSumSq = base->SumSq;
    profile.Complete = found.Complete;
    profile.Broken = found.Broken;
    FillProfile(profile, *base, found);
    if (profile.Better)
        profile.Notes.push_back("A lower minimum was met on the way; the profile starts from it.");
    CompareWithSearch(profile);
    return profile;
}

} // namespace Quillon
