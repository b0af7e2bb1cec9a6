// Profiles: a parabola in closed form, exact limits, coverage of the truth, and what is said beside them.
#include "FittedCase.h"
#include "fit/Confidence.h"
#include "fit/GNLLSQ.h"
#include "fit/Undetermined.h"
#include "fit/equations/FreeMap.h"
#include "models/table/ParmScale.h"
#include "platform/Platform.h"
#include "studies/methods/ProfileMap.h"
#include "tests/support/ReferenceFit.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>

namespace Quillon {
namespace {

// S(b) = S0 + n (b - b0)^2 with n points in the set; the interval of a level reaches
// sqrt(S0 F / (ndf n)) to both sides.
TEST(Profile, OfALinearParameterIsTheParabolaInClosedForm) {
    Script script;
    LoadOffsetsAlone();
    FitLoaded();
    const long slot = SlotOffset(2L);
    const Profile profile = ProfileParameter(slot, {{0.683, 0.95}, 25}, {});
    ASSERT_TRUE(profile.Complete);
    ASSERT_EQ(profile.Points.size(), 25U);
    const auto n = static_cast<double>(Work.SetPts[2]);
    for (const ProfilePoint& point : profile.Points) {
        const double off = point.Value - profile.MinimumValue;
        EXPECT_NEAR(point.SumSq, profile.MinimumSumSq + n * off * off, 1e-5 * profile.MinimumSumSq);
        EXPECT_NEAR(point.Ratio, point.SumSq / profile.MinimumSumSq, 1e-12);
        EXPECT_TRUE(point.Converged);
    }
    const auto freedom = static_cast<double>(Work.NumPts - Work.NumFree);
    // F(1, infinity) of 68.3% and 95% are 1.0012 and 3.8415, squares of the normal deviate; of ndf degrees
    // t^2 with t = z + (z^3 + z) / (4 ndf) (Abramowitz and Stegun, 26.7.5).
    const double deviates[] = {1.000642, 1.959964};
    for (std::size_t i = 0; i < 2; ++i) {
        const double z = deviates[i];
        const double t = z + (z * z * z + z) / (4.0 * freedom);
        const double reach = t * std::sqrt(profile.MinimumSumSq / freedom / n);
        EXPECT_NEAR(profile.Limits[i].Ratio, 1.0 + t * t / freedom, 2e-6);
        ASSERT_TRUE(profile.Limits[i].Lower && profile.Limits[i].Upper);
        EXPECT_NEAR(*profile.Limits[i].Upper - profile.MinimumValue, reach, 2e-3 * reach);
        EXPECT_NEAR(profile.MinimumValue - *profile.Limits[i].Lower, reach, 2e-3 * reach);
    }
}

TEST(Profile, ValuesAreEvenAndTheMinimumIsAmongThem) {
    Script script;
    FitCase("Model02");
    const Profile profile = ProfileParameter(2, {{0.95}, 12}, {});
    ASSERT_EQ(profile.Points.size(), 12U);
    const double spacing = profile.Points[1].Value - profile.Points[0].Value;
    bool minimum = false;
    for (std::size_t i = 0; i < 12; ++i) {
        minimum = minimum || profile.Points[i].Value == profile.MinimumValue;
        if (i == 0) continue;
        EXPECT_NEAR(profile.Points[i].Value - profile.Points[i - 1].Value, spacing, 1e-4 * spacing);
    }
    EXPECT_TRUE(minimum);
    EXPECT_GT(profile.Points.front().Ratio, profile.Limits[0].Ratio);
    EXPECT_GT(profile.Points.back().Ratio, profile.Limits[0].Ratio);
}

// At a limit the other parameters' least sum, found by a dense search in long double, is the level's.
TEST(Profile, LimitsOfACurvedParameterStandWhereALeastSumSaysSo) {
    Script script;
    FitCase("Model02");
    const Profile profile = ProfileParameter(2, {{0.95}, 25}, {});
    ASSERT_TRUE(profile.Limits[0].Lower && profile.Limits[0].Upper);
    const double least = static_cast<double>(FitReference(Work).End.SumSq);
    for (const double limit : {*profile.Limits[0].Lower, *profile.Limits[0].Upper}) {
        Workspace held = Work;
        held.Parms[2] = ToInternal(SlotNo(2), static_cast<float>(limit));
        held.FreeMap[2] = SlotHeld;
        held.NumFree = 0;
        for (long slot = 0; slot < held.NumParms; ++slot) {
            if (held.FreeMap[slot] < 0) continue;
            held.FreeMap[slot] = held.NumFree;
            held.FreeIndex[held.NumFree] = ToInt16(slot);
            held.NumFree = ToInt16(held.NumFree + 1);
        }
        const double sum = static_cast<double>(FitReference(held).End.SumSq);
        EXPECT_NEAR((sum / least - 1.0) / (profile.Limits[0].Ratio - 1.0), 1.0, 0.01);
    }
}

TEST(Profile, IsTheSameForAnyNumberOfThreadsAndLeavesTheFit) {
    Script script;
    FitCase("Model04");
    const Workspace own = Work;
    const Profile loop = ProfileParameter(4, {{0.683}, 9}, {});
    EXPECT_TRUE(Work == own);
    for (const int threads : {1, 2, 16}) {
        UseThreads(threads);
        const Profile other = ProfileParameter(4, {{0.683}, 9}, {});
        ASSERT_EQ(other.Points.size(), loop.Points.size());
        for (std::size_t i = 0; i < loop.Points.size(); ++i) {
            EXPECT_EQ(other.Points[i].Value, loop.Points[i].Value);
            EXPECT_EQ(other.Points[i].SumSq, loop.Points[i].SumSq);
        }
        EXPECT_EQ(other.Limits[0].Lower, loop.Limits[0].Lower);
        EXPECT_EQ(other.Limits[0].Upper, loop.Limits[0].Upper);
    }
}

// S = S0 + n1 (b1 - m1)^2 + n2 (b2 - m2)^2 for the zero offsets of two sets; the region of a level has the
// ratio 1 + 2 F(2, n) / n = level dependent alone: (1 - level)^(-2 / n) in closed form.
TEST(ProfileMaps, OfTwoLinearParametersAreAParaboloid) {
    Script script;
    LoadOffsetsAlone();
    FitLoaded();
    const ProfileMap map = MapParameters(SlotOffset(1L), SlotOffset(2L), {{0.95}, 7}, {});
    ASSERT_TRUE(map.Complete);
    ASSERT_EQ(map.Points.size(), 49U);
    for (std::size_t i = 0; i < 7; ++i)
        for (std::size_t j = 0; j < 7; ++j) {
            const double x = map.Values[0][i] - map.Minimum[0], y = map.Values[1][j] - map.Minimum[1];
            EXPECT_NEAR(map.At(i, j).SumSq,
                        map.MinimumSumSq + Work.SetPts[1] * x * x + Work.SetPts[2] * y * y,
                        1e-5 * map.MinimumSumSq);
        }
    const double freedom = Work.NumPts - Work.NumFree;
    EXPECT_NEAR(map.Levels[0].Ratio, std::pow(0.05, -2.0 / freedom), 1e-6);
    EXPECT_GT(map.At(0, 3).Ratio, map.Levels[0].Ratio); // the edges lie outside of the region
}

TEST(ProfileMaps, AreTheSameForAnyNumberOfThreadsAndCanBeCancelled) {
    Script script;
    FitCase("Model02");
    const Workspace own = Work;
    const ProfileMap loop = MapParameters(0, 2, {{0.683}, 5}, {});
    ASSERT_TRUE(loop.Complete);
    EXPECT_TRUE(Work == own);
    UseThreads(3);
    const ProfileMap other = MapParameters(0, 2, {{0.683}, 5}, {});
    ASSERT_EQ(other.Points.size(), loop.Points.size());
    for (std::size_t i = 0; i < loop.Points.size(); ++i)
        EXPECT_EQ(other.Points[i].SumSq, loop.Points[i].SumSq);
    Host.RunPieces = [](long count, const auto& piece, const auto& watch) {
        for (long i = 0; i < count; ++i) {
            piece(i);
            watch(i + 1);
        }
    };
    const ProfileMap stopped =
        MapParameters(0, 2, {{0.683}, 5}, [](long, long) { Work.AbortFit = FlagTrue; });
    EXPECT_FALSE(stopped.Complete);
    ASSERT_EQ(stopped.Points.size(), loop.Points.size()) << "what there is was thrown away";
    for (std::size_t j = 0; j < 5; ++j)
        EXPECT_EQ(stopped.At(0, j).SumSq, loop.At(0, j).SumSq) << "the row that had ended";
    EXPECT_FALSE(std::isfinite(stopped.At(4, 4).SumSq));
}

// A bound that stands before the limit: the profile ends there, and there is no limit.
TEST(Profile, EndsAtABound) {
    Script script;
    FitCase("Model02");
    const float error = static_cast<float>(StandardError(FreePosOf(SlotNo(2))));
    Work.Bounds[1][2] = ToUserUnits(SlotNo(2), Work.Parms[2] + 0.5F * error);
    const Profile profile = ProfileParameter(2, {{0.95}, 11}, {});
    ASSERT_FALSE(profile.Points.empty());
    EXPECT_LE(profile.Points.back().Value, static_cast<double>(Work.Bounds[1][2]) * (1 + 1e-6));
    EXPECT_FALSE(profile.Limits[0].Upper.has_value());
    EXPECT_TRUE(profile.Limits[0].Lower.has_value());
}

// A fit that stands away from the minimum: the profile starts from the minimum and says so.
TEST(Profile, StartsAnewFromABetterMinimum) {
    Script script;
    FitCase("Model02");
    const double least = Work.SumSq;
    Work.Parms[0] *= 1.05F;
    CalcSumSq();
    ASSERT_GT(Work.SumSq, 1.1 * least);
    const Profile profile = ProfileParameter(0, {{0.683}, 7}, {});
    EXPECT_NEAR(profile.MinimumSumSq / least, 1.0, 1e-3);
    ASSERT_TRUE(profile.Better.has_value());
    EXPECT_NE(profile.Better->FitDone, 0);
    ASSERT_FALSE(profile.Notes.empty());
}

// Limits that a search has given, half as far from the minimum as the profile's, are told; wider ones are
// not.
TEST(Profile, SaysWhereSearchedLimitsAreNarrower) {
    Script script;
    FitCase("Model02");
    const Profile plain = ProfileParameter(2, {{0.95}, 9}, {});
    ASSERT_TRUE(plain.Limits[0].Lower && plain.Limits[0].Upper);
    EXPECT_TRUE(plain.Notes.empty());
    Work.LimitsDone = FlagTrue;
    Work.LimitsLevel = 0.95F;
    const FreePos place = FreePosOf(SlotNo(2));
    for (const double times : {0.5, 1.5}) {
        for (std::size_t side = 0; side < 2; ++side) {
            const double limit = side == 0 ? *plain.Limits[0].Lower : *plain.Limits[0].Upper;
            const double off = static_cast<double>(Work.Parms[2]) -
                               static_cast<double>(ToUserUnits(SlotNo(2), Work.Parms[2]));
            Work.ParmLimits[side].Recreate(Work.NumFree - 1, NoLimit);
            Work.ParmLimits[side][place] = static_cast<float>(
                plain.MinimumValue + times * (limit - plain.MinimumValue) + off); // ln K, shifted by its unit
        }
        const Profile profile = ProfileParameter(2, {{0.95}, 9}, {});
        const std::string text = "The searched limits of the results at 95.0% are narrower than those of the "
                                 "profile: these are the ones to give.";
        EXPECT_EQ(profile.Notes, times < 1.0 ? std::vector<std::string>{text} : std::vector<std::string>{});
    }
}

TEST(Profile, ACancelShowsWhatThereIs) {
    Script script;
    FitCase("Model02");
    int passes = 0;
    script.DuringEvents = [&] { passes += 1; };
    const Profile profile = ProfileParameter(2, {{0.683}, 9}, [&](long done, long) {
        if (done > 0) Work.AbortFit = FlagTrue;
    });
    EXPECT_FALSE(profile.Complete);
    EXPECT_LT(profile.Points.size(), 9U);
    EXPECT_GE(profile.Points.size(), 1U);
}

// Two hundred experiments: the intervals hold the true constant as often as they say. A binomial of 200 is
// outside of 116 to 156 (of 68.3%) and of 179 to 198 (of 95%) once in five hundred times each.
TEST(Profile, LimitsCoverTheTruth) {
    Script script;
    const Workspace truth = SimulatedWorkspace(ModelCaseNamed("Model02"));
    FitCase("Model02"); // the units are those of the analysis
    const auto shown = static_cast<double>(ToUserUnits(SlotNo(2), truth.Parms[2]));
    std::array<int, 2> covered{};
    constexpr int Experiments = 200;
    for (int i = 0; i < Experiments; ++i) {
        FitCase("Model02");
        Workspace& work = Work;
        DrawNoise(work, ReferenceParms(truth), 0.002, static_cast<std::uint64_t>(100 + i));
        Work.Parms = truth.Parms;
        RunFit();
        const Profile profile = ProfileParameter(2, {{0.683, 0.95}, 5}, {});
        for (std::size_t level = 0; level < covered.size(); ++level) {
            const ProfileLimits& limits = profile.Limits[level];
            covered[level] += limits.Lower && limits.Upper && *limits.Lower < shown && shown < *limits.Upper;
        }
    }
    std::printf("profiles of 200 hold the truth: %d at 68.3%%, %d at 95%%\n", covered[0], covered[1]);
    EXPECT_GE(covered[0], 116);
    EXPECT_LE(covered[0], 156);
    EXPECT_GE(covered[1], 179);
    EXPECT_LE(covered[1], 198);
}

} // namespace
} // namespace Quillon
