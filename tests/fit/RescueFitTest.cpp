// Fits that do not end at the minimum by themselves: the check, the damped search, what becomes of it.
#include "Robustness.h"
#include "SyntheticFit.h"
#include "fit/BetterStarts.h"
#include "fit/GNLLSQ.h"
#include "fit/LongWaves.h"
#include "fit/Misfit.h"
#include "fit/SetBySet.h"
#include "fit/Undetermined.h"
#include "fit/equations/Bounds.h"
#include "fit/equations/NormalEquations.h"
#include "input/NUMINPUT.h"
#include "models/SEDEQ3.h"
#include "platform/Platform.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Roads.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

namespace Quillon {
namespace {

// The sum of squares at parameters; Work is as before.
double SumAt(const PerSlot<float>& parms) {
    Workspace kept = Work;
    Work.Parms = parms;
    Work.AbortFit = FlagFalse;
    ResetFitFunction();
    CalcSumSq();
    const double sum = Work.AbortFit ? std::numeric_limits<double>::infinity() : Work.SumSq;
    Work = std::move(kept);
    return sum;
}

// What a fit gets behind it where damped steps are always wanted.
void GoOn(const PerSlot<float>& start) {
    if (Work.Outcome.End != FitEnd::Converged) RescueFit(start);
    if (const auto lower = FindLowerMinimum(start)) Work = *lower;
}

class RescueFitTest : public testing::Test {
protected:
    // A case far off, fitted plainly; gives the start.
    PerSlot<float> Fail(const std::string& name, double reach, std::uint64_t seed) {
        LoadRobustnessCase(ModelCaseNamed(name), seed);
        Least = static_cast<double>(FitReference(Work).End.SumSq);
        StartFarOff(reach, seed * 1000 + static_cast<std::uint64_t>(reach));
        PerSlot<float> start = Work.Parms;
        RunFit();
        return start;
    }
    // Levels of two sets: a linear fit with two offsets, and a start at 0.
    static PerSlot<float> Levels() {
        Work = FreshWorkspace();
        MakeLevels({{1.0F, 2.0F, 3.0F}, {-1.0F, -1.5F, -2.0F}});
        return Work.Parms;
    }
    Script Outside;
    double Least = 0.0; // the lowest sum of squares there is
};

// --- the table of docs/robustness.md, one seed of it
// -----------------------------------------------------------------------------------------------------------

TEST_F(RescueFitTest, FromFarOffFitsReachTheMinimumAndNoneSaysSoElsewhere) {
    for (const double reach : {3.0, 6.0}) {
        int runs = 0, plain = 0, reached = 0;
        for (const std::string& name : RobustnessCases()) {
            const PerSlot<float> start = Fail(name, reach, 2);
            ++runs;
            const Stand first = StandOfFit(Least);
            EXPECT_NE(first, Stand::FalseStop) << name;
            if (first == Stand::Minimum) ++plain;
            GoOn(start);
            const Stand last = StandOfFit(Least);
            EXPECT_NE(last, Stand::FalseStop) << name;
            if (last == Stand::Minimum) ++reached;
        }
        EXPECT_GE(reached, 0.97 * runs) << "reach " << reach;
        EXPECT_LT(plain, 0.8 * runs) << "the starts are no longer hard";
    }
}

// --- starts that are better than the user's

// Where a mixture ends from default guesses.
Stand FitMixture(const Mixture& mixture, std::uint64_t seed) {
    LoadMixture(mixture, seed);
    const Workspace truth = Work;
    RunFit();
    const double least = Work.SumSq; // of the fit that starts at the truth
    Work = truth;
    StartFromDefaults();
    const PerSlot<float> start = Work.Parms;
    RunFit();
    GoOn(start);
    return StandOfFit(least);
}

// A constant of 1 L/mol, fourteen below the true one in its logarithm, shows in no point: its species is no
// part of the signal, and no slope leads there.
TEST_F(RescueFitTest, AConstantThatShowsNowhereIsFoundFromWhereItWouldShow) {
    for (const std::uint64_t seed : {1, 2})
        for (const std::int16_t model : {std::int16_t{8}, std::int16_t{9}, std::int16_t{11}})
            for (const int wavelengths : {1, 2})
                EXPECT_EQ(FitMixture({model, wavelengths}, seed), Stand::Minimum)
                    << "model " << model << ", wavelengths " << wavelengths << ", seed " << seed;
}

// A set's own two concentrations have two minima, more of one species or more of the other, and the iteration
// converged in the wrong one for half of the mixtures at one wavelength. Nothing told.
TEST_F(RescueFitTest, AFitThatConvergedInTheWrongProportionIsToldOfTheLowerMinimum) {
    int wrong = 0, reached = 0, fits = 0;
    for (std::uint64_t seed = 3; seed <= 8; ++seed) {
        LoadMixture({9, 1}, seed);
        const Workspace truth = Work;
        RunFit();
        const double least = Work.SumSq;
        Work = truth;
        StartFromDefaults();
        const PerSlot<float> start = Work.Parms;
        RunFit();
        if (Work.Outcome.End != FitEnd::Converged) continue;
        const Workspace own = Work;
        const auto lower = FindLowerMinimum(start);
        EXPECT_TRUE(Work == own) << "not a bit is changed";
        ++fits;
        if (lower) {
            ++wrong;
            EXPECT_LT(lower->SumSq, 0.999 * own.SumSq) << seed;
            EXPECT_TRUE(lower->Outcome.Rescued);
            Work = *lower;
        }
        reached += StandOfFit(least) == Stand::Minimum ? 1 : 0;
    }
    EXPECT_GE(wrong, 1);
    EXPECT_GE(reached, 0.8 * fits);
}

TEST_F(RescueFitTest, ACancelOfTheLookForALowerMinimumLeavesTheFitAsItWas) {
    LoadMixture({9, 1}, 1);
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtY[p] += p % 40 < 20 ? 0.01F : -0.01F; // more than the noise, so that there is a look
    const PerSlot<float> start = Work.Parms;
    RunFit();
    ASSERT_EQ(Work.Outcome.End, FitEnd::Converged);
    const Workspace own = Work;
    int events = 0;
    Outside.DuringEvents = [&] {
        if (++events == 30) Work.AbortFit = FlagTrue;
    };
    EXPECT_FALSE(FindLowerMinimum(start).has_value());
    ASSERT_EQ(events, 30);
    EXPECT_EQ(Work.AbortFit, FlagTrue) << "left for the caller";
    Work.AbortFit = FlagFalse;
    EXPECT_TRUE(Work == own);
}

TEST_F(RescueFitTest, FitsDownToTheNoiseAreNotLookedBehind) {
    int events = 0;
    Outside.DuringEvents = [&] { ++events; };
    for (const char* name : {"Model02", "Model08"}) {
        LoadRobustnessCase(ModelCaseNamed(name), 1);
        RunFit();
        ASSERT_EQ(Work.Outcome.End, FitEnd::Converged) << name;
        events = 0;
        EXPECT_FALSE(FindLowerMinimum(Work.Parms).has_value()) << name;
        EXPECT_EQ(events, 0) << name << ": no pass is made";
    }
}

// Behind a fit of one species, and behind one that damped steps had found, nothing was looked for, however
// far from the data it was.
TEST_F(RescueFitTest, FitsOfOneSpeciesAndRescuedOnesWereNotLookedBehind) {
    int events = 0;
    Outside.DuringEvents = [&] { ++events; };
    for (const bool rescued : {false, true}) {
        LoadRobustnessCase(ModelCaseNamed("Model02"), 1);
        for (long p = 1; p <= Work.NumPts; ++p)
            Work.PtY[p] += p % 40 < 20 ? 0.02F : -0.02F;
        const PerSlot<float> start = Work.Parms;
        RunFit();
        ASSERT_EQ(Work.Outcome.End, FitEnd::Converged) << rescued;
        Work.Outcome.Rescued = rescued;
        const Workspace own = Work;
        events = 0;
        const auto lower = FindLowerMinimum(start);
        EXPECT_GT(events, 0) << rescued;
        EXPECT_TRUE(Work == own) << rescued;
        EXPECT_TRUE(!lower || lower->SumSq < 0.999 * own.SumSq) << rescued;
    }
}

TEST_F(RescueFitTest, AMovedStartHasOtherConstantsOrOtherMasses) {
    LoadRobustnessCase(ModelCaseNamed("Model02"), 1);
    const PerSlot<float> start = Work.Parms;
    const Workspace before = Work;
    EXPECT_NEAR(static_cast<double>(MovedStart(start, 1)[2] - start[2]), 4.0, 1e-5);
    EXPECT_NEAR(static_cast<double>(MovedStart(start, 2)[2] - start[2]), -4.0, 1e-5);
    EXPECT_TRUE(MovedStart(start, 3) == start) << "no second constant";
    const PerSlot<float> lighter = MovedStart(start, 5);
    EXPECT_NEAR(static_cast<double>(lighter[0] / start[0]), 0.75, 1e-6);
    EXPECT_EQ(lighter[2], start[2]);
    EXPECT_TRUE(Work == before);
}

// --- what a minimum leaves

// Levels of readings that go up and down by a height of their own, with a trend in some sets: residuals of
// the height, and a noise of twice the height over sqrt(1.5 * 0.4549) as neighbouring readings show it.
struct Zigzag {
    double Height;
    double Trend = 0.0; // a point
};
void FitZigzags(const std::vector<Zigzag>& sets, int points) {
    std::vector<std::vector<float>> levels;
    for (const Zigzag& set : sets) {
        levels.emplace_back();
        for (int i = 0; i < points; ++i)
            levels.back().push_back(
                static_cast<float>(set.Trend * i + (i % 2 == 1 ? set.Height : -set.Height)));
    }
    Work = FreshWorkspace();
    MakeLevels(levels);
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtX[p] = 0.001F * static_cast<float>(p);
    RunFit();
    ASSERT_EQ(Work.Outcome.End, FitEnd::Converged);
}

// Variances: 0.004^2 (100^2 - 1) / 12 of the trend, 0.01^2 of the zigzag, and 4e-5 that they have in common;
// noise: 0.02 / sqrt(1.5 * 0.4549).
TEST_F(RescueFitTest, AMinimumThatLeavesMoreThanTheNoiseSaidNothing) {
    FitZigzags({{0.01, 0.004}}, 100);
    EXPECT_EQ(MisfitText(), "The fit leaves more than the noise of the data (rms 1.161E-1, noise 2.421E-2): "
                            "a wrong model, or another minimum. Search for Other Minima.");
    EXPECT_EQ(MisfitStateText(), ", more than the noise");
    Work.Outcome.End = FitEnd::StoppedShort;
    EXPECT_EQ(MisfitText(), "") << "is no minimum, which is told already";
    FitZigzags({{0.01}}, 100);
    EXPECT_EQ(MisfitText() + MisfitStateText(), "");
}

// What was found once serves whoever asks again, and nobody who asks about anything else.
TEST_F(RescueFitTest, WhatAMinimumLeavesIsThatOfThePointsThatStand) {
    FitZigzags({{0.01, 0.004}, {0.01, 0.004}}, 100);
    const std::string text = MisfitText();
    EXPECT_NE(text, "");
    const auto fit = Work.PtFit;
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtFit[p] = Work.PtY[p] - (p % 2 == 0 ? 0.01F : -0.01F);
    EXPECT_EQ(MisfitText(), "");
    Work.PtFit = fit;
    EXPECT_EQ(MisfitText(), text);
    Work.SetNoise[RowOf(SetNo(1))] = 0.01F;
    Work.SetNoise[RowOf(SetNo(2))] = 0.02F;
    EXPECT_NE(MisfitText(), text) << "the second set counts half as much";
}

TEST_F(RescueFitTest, OneSetThatLeavesMoreThanTheNoiseIsToldByItsNumber) {
    FitZigzags({{0.01}, {0.01, 0.003}, {0.01}, {0.01}, {0.01}, {0.01}}, 60);
    EXPECT_TRUE(MisfitText().starts_with("The fit leaves more than the noise of the data in set 2 (rms "))
        << MisfitText();
    EXPECT_EQ(MisfitStateText(), ", more than the noise in set 2");
}

TEST_F(RescueFitTest, ASetOfMoreNoiseThanOthersIsNoMisfit) {
    FitZigzags({{0.01}, {0.05}, {0.01}, {0.01}, {0.01}, {0.01}}, 60);
    EXPECT_TRUE(LeavesMoreThanNoise(Work)) << "which costs a look";
    EXPECT_EQ(MisfitText(), "");
}

// A trend of three tenths of the variance of the noise: with 360 points the sum of squares is 1.7 standard
// deviations too high, and the five long waves that its level leaves of each set are nearly four times too
// high.
TEST_F(RescueFitTest, AMisfitInLongWavesWasLostInTheSum) {
    const auto fit = [](double share) {
        const double trend = std::sqrt(share * 0.01 * 0.01 * 12.0 / (60.0 * 60.0 - 1.0));
        FitZigzags(std::vector<Zigzag>(6, {0.01, trend}), 60);
    };
    fit(0.3);
    EXPECT_TRUE(LeavesMoreThanNoise(Work));
    EXPECT_TRUE(MisfitText().starts_with(
        "The fit leaves more than the noise of the data (long waves in the residuals 1.9"))
        << MisfitText();
    EXPECT_NE(MisfitText().find(", noise 1.0"), std::string::npos) << MisfitText();
    fit(0.03);
    EXPECT_FALSE(LeavesMoreThanNoise(Work));
    EXPECT_EQ(MisfitText(), "");
}

// A cosine of the third wave over 40 points, of the height 0.5 on a level of 2: squares of 40 * 0.5^2 / 2 and
// 40 * 2^2, and nothing elsewhere.
TEST(LongWaves, ACosineIsItsOwnWave) {
    std::vector<double> residuals;
    for (int i = 0; i < 40; ++i)
        residuals.push_back(2.0 + 0.5 * std::cos(std::numbers::pi * 3.0 * (i + 0.5) / 40.0));
    const Waves waves = WavesOf(residuals);
    EXPECT_NEAR(waves.Long.Sum, 160.0 + 5.0, 1e-10);
    EXPECT_NEAR(waves.Middle.Sum, 0.0, 1e-10);
    EXPECT_NEAR(waves.Others.Sum, 0.0, 1e-10);
    EXPECT_EQ(waves.Long.Count, 6.0);
    EXPECT_EQ(waves.Middle.Count, 24.0);
    EXPECT_EQ(waves.Others.Count, 34.0);
    const Waves few = WavesOf({1.0, -1.0, 1.0});
    EXPECT_EQ(few.Long.Count + few.Others.Count, 3.0);
    EXPECT_NEAR(few.Long.Sum + few.Others.Sum, 3.0, 1e-12) << "all squares are somewhere";
}

// Points of the F distribution from tables: 5%, 1% and 0.1%.
TEST(LongWaves, DeviationsAreThoseOfTheFDistribution) {
    const auto deviations = [](double ratio, double above, double below) {
        return DeviationsAbove({ratio * above, above}, {below, below});
    };
    EXPECT_NEAR(deviations(2.348, 10.0, 20.0), 1.645, 0.02);
    EXPECT_NEAR(deviations(3.368, 10.0, 20.0), 2.326, 0.02);
    EXPECT_NEAR(deviations(5.075, 10.0, 20.0), 3.090, 0.03);
    EXPECT_NEAR(deviations(2.254, 6.0, 60.0), 1.645, 0.02);
    EXPECT_EQ(DeviationsAbove({0.0, 6.0}, {1.0, 10.0}), 0.0);
    EXPECT_TRUE(std::isinf(DeviationsAbove({1.0, 6.0}, {0.0, 10.0})));
}

// Readings that bend between neighbours by far more than their noise: the noise was read as their bend, and a
// fit many times above it said nothing.
TEST_F(RescueFitTest, ASteepSignalHidItsNoise) {
    FitZigzags({{0.01}}, 100);
    const double noise = NoiseVariance(Work);
    EXPECT_NEAR(noise, 0.02 * 0.02 / (1.5 * 0.4549), 1e-6);
    for (long p = 1; p <= Work.NumPts; ++p) {
        const float steep = std::exp(0.08F * static_cast<float>(p));
        Work.PtY[p] += steep;
        Work.PtFit[p] += steep;
    }
    EXPECT_NEAR(NoiseVariance(Work), noise, 0.1 * noise);
}

TEST_F(RescueFitTest, AHandfulOfPointsTellsNoNoise) {
    FitZigzags({{0.01, 1.0}}, 19);
    EXPECT_FALSE(LeavesMoreThanNoise(Work));
    EXPECT_EQ(MisfitText(), "");
}

TEST_F(RescueFitTest, AtTheMinimumNoCaseLeavesMoreThanTheNoise) {
    for (const std::string& name : RobustnessCases()) {
        LoadRobustnessCase(ModelCaseNamed(name), 1);
        RunFit();
        EXPECT_EQ(MisfitText(), "") << name;
    }
}

TEST_F(RescueFitTest, AVisibleStartPutsConstantsWhereTheirSpeciesShow) {
    LoadMixture({8, 1}, 1);
    StartFromDefaults();
    const Workspace before = Work;
    const PerSlot<float> start = VisibleStart(Work.Parms);
    EXPECT_TRUE(Work == before);
    EXPECT_NEAR(static_cast<double>(start[6]), 14.6, 4.0); // the truth
    Work.Parms = start;
    ResetFitFunction();
    AccumulateSums();
    double square = 0.0;
    for (long p = 1; p <= Work.NumPts; ++p)
        square += static_cast<double>(Work.PtY[p] * Work.PtY[p]);
    const double share = std::sqrt(Work.NormMatrix(Work.FreeMap[6], Work.FreeMap[6]) / square);
    EXPECT_GT(share, 0.15);
    EXPECT_LT(share, 1.5);
    for (long slot = 0; slot < Work.NumParms; ++slot)
        if (Work.FreeMap[slot] < 0) {
            EXPECT_EQ(start[slot], before.Parms[slot]) << "held " << slot;
        }
}

// One set in the wrong proportion, in a minimum of its own, holds the whole fit up.
TEST_F(RescueFitTest, EachSetKeepsTheBestConcentrationsThatItHasByItself) {
    LoadMixture({9, 1}, 7);
    RunFit();
    ASSERT_EQ(Work.Outcome.End, FitEnd::Converged);
    const double least = Work.SumSq;
    PerSlot<float> wrong = Work.Parms;
    wrong[SlotA(2)] -= 2.0F;
    wrong[SlotB(2)] += 3.0F;
    const Workspace before = Work;
    const PerSlot<float> better = BestOfEachSet(wrong);
    EXPECT_TRUE(Work == before);
    EXPECT_GT(SumAt(wrong), 10.0 * least);
    EXPECT_LT(SumAt(better), 1.05 * least);
    EXPECT_EQ(better[6], wrong[6]) << "constants stay";
}

// Behind a minimum only sets that stand a little above the noise are tried: one that is caught, and no other.
TEST_F(RescueFitTest, OfDoubtfulSetsTheOneThatIsCaughtIsFound) {
    LoadMixture({9, 1}, 7);
    RunFit();
    ASSERT_EQ(Work.Outcome.End, FitEnd::Converged);
    const PerSlot<float> least = Work.Parms;
    EXPECT_TRUE(BestOfEachSet(least, TriedSets::Doubtful) == least);
    PerSlot<float> wrong = least;
    wrong[SlotA(2)] -= 2.0F;
    wrong[SlotB(2)] += 3.0F;
    const PerSlot<float> better = BestOfEachSet(wrong, TriedSets::Doubtful);
    EXPECT_LT(SumAt(better), 1.05 * SumAt(least));
}

// Sets with one zero offset cannot be looked at apart: a better offset for one is a worse one for another.
TEST_F(RescueFitTest, SetsWithOneOffsetAreTriedTogether) {
    LoadRobustnessCase(ModelCaseNamed("Model07Linked"), 1);
    RunFit();
    ASSERT_EQ(Work.Outcome.End, FitEnd::Converged);
    const double least = Work.SumSq;
    PerSlot<float> wrong = Work.Parms;
    std::swap(wrong[SlotA(2)], wrong[SlotB(2)]);
    const PerSlot<float> better = BestOfEachSet(wrong);
    EXPECT_LT(SumAt(better), SumAt(wrong));
    EXPECT_LT(SumAt(better), 1.5 * least);
    Work.Parms = better;
    ApplyOffsetLinks();
    EXPECT_TRUE(Work.Parms == better) << "ties hold";
}

TEST_F(RescueFitTest, AConstantIsHiddenWhereItShowsNowhere) {
    LoadMixture({8, 1}, 1);
    const PerSlot<float> truth = Work.Parms;
    EXPECT_FALSE(HidesAConstant(truth, VisibleStart(truth)));
    StartFromDefaults();
    EXPECT_TRUE(HidesAConstant(Work.Parms, VisibleStart(Work.Parms)));
}

// The points that a fit passes over, in fifties: the host is served once for each.
long PointsPassed(const auto& fit) {
    long passed = 0;
    Host.ServeEvents = [&] { ++passed; };
    Work.YieldInterval = 50;
    fit();
    Host.ServeEvents = [] {};
    return passed;
}

TEST_F(RescueFitTest, AMixtureFromDefaultGuessesTookThirtyPlainFits) {
    for (const Mixture& mixture : {Mixture{9, 2}, Mixture{11, 1}, Mixture{11, 2}}) {
        LoadMixture(mixture, 2);
        const Workspace truth = Work;
        StartFarOff(1.0, 2);
        const long plain = PointsPassed([] { RunFit(); });
        ASSERT_EQ(Work.Outcome.End, FitEnd::Converged) << mixture.Model;
        const double least = Work.SumSq;
        Work = truth;
        StartFromDefaults();
        const PerSlot<float> start = Work.Parms;
        RunFit();
        ASSERT_NE(Work.Outcome.End, FitEnd::Converged) << mixture.Model;
        const long rescued = PointsPassed([&] { RescueFit(start); });
        EXPECT_LE(rescued, 6 * plain) << mixture.Model;
        EXPECT_LT(Work.SumSq, 1.001 * least) << mixture.Model;
    }
}

TEST_F(RescueFitTest, SharedConcentrationsTellTheConstantBetter) {
    const auto errorOf = [](bool shared) {
        LoadMixture({8, 2, shared}, 1);
        RunFit();
        EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
        const long place = Work.FreeMap[6];
        return std::sqrt(Work.NormMatrix(place, place)) * static_cast<double>(Work.RmsResidual);
    };
    EXPECT_LT(errorOf(true), 0.7 * errorOf(false));
}

// --- the check
// -----------------------------------------------------------------------------------------------------------

// The sum of squares of levels is a parabola: from p it falls by n (p - mean)^2 in each set.
TEST_F(RescueFitTest, ExpectedDecreaseOfALinearFitIsWhatIsLeft) {
    Levels();
    Level(1) = 2.5F;
    Level(2) = -1.25F;
    AccumulateSums();
    const double s2 = Work.SumSq / (6 - 2);
    EXPECT_NEAR(ExpectedDecrease(TakeNormalEquations()), (3 * 0.25 + 3 * 0.0625) / s2, 1e-9);
    EXPECT_NEAR(Work.SumSq, 2.0 + 0.5 + 3 * 0.25 + 3 * 0.0625, 1e-9);
}

TEST_F(RescueFitTest, WhatABoundBlocksIsNotExpected) {
    Levels();
    Level(1) = 1.5F;
    Level(2) = -1.25F;
    Work.Bounds[1][SlotOffset(1)] = 1.5F; // the mean of 2 lies beyond
    AccumulateSums();
    EXPECT_NEAR(ExpectedDecrease(TakeNormalEquations()), 3 * 0.0625 / (Work.SumSq / 4), 1e-9);
    Work.BoundsActive = 0;
    EXPECT_NEAR(ExpectedDecrease(TakeNormalEquations()), (3 * 0.25 + 3 * 0.0625) / (Work.SumSq / 4), 1e-9);
}

TEST_F(RescueFitTest, DataWithoutNoiseExpectNothingBelowWhatASingleKnows) {
    Work = FreshWorkspace();
    MakeLevels({{1.0F, 1.0F, 1.0F, 1.0F}});
    Level() = 1.0F + 2e-7F; // two steps of a single off
    AccumulateSums();
    EXPECT_LT(ExpectedDecrease(TakeNormalEquations()), LargestExpectedDecrease);
    Level() = 1.0F + 2e-6F;
    AccumulateSums();
    EXPECT_GT(ExpectedDecrease(TakeNormalEquations()), LargestExpectedDecrease);
}

TEST_F(RescueFitTest, EquationsWithoutNumbersPromiseEverything) {
    NormalEquations e{ZeroBasedMatrix<double>(0, 0, 1.0), PerFree<double>(0)};
    e.Vector[0] = std::numeric_limits<double>::quiet_NaN();
    Levels();
    Work.NumFree = 1;
    EXPECT_TRUE(std::isinf(ExpectedDecrease(e)));
}

// A stop that the rules of the iteration call converged: each iteration has one point of the random search
// left, and the change of the sum is small for once.
TEST_F(RescueFitTest, AStopOnTheWayIsItsOwnEndAndKeepsItsResults) {
    const PerSlot<float> start = Fail("Model13", 3.0, 6);
    ASSERT_EQ(Work.Outcome.End, FitEnd::StoppedShort);
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_GT(*Work.Outcome.ExpectedDecrease, 98.0);
    EXPECT_TRUE(Work.Outcome.Sentence.starts_with("Stopped short of a minimum: "));
    EXPECT_GT(Work.SumSq, 1.01 * Least);
    EXPECT_TRUE(RescueFit(start));
    EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
    EXPECT_TRUE(Work.Outcome.Rescued);
}

// --- what cannot be rescued ends in words
// -----------------------------------------------------------------------------------------------------------

struct Lost {
    const char* What;
    void (*Spoil)();
};
class WithoutMinimum : public testing::TestWithParam<Lost> {};

INSTANTIATE_TEST_SUITE_P(
    All, WithoutMinimum,
    testing::Values(
        Lost{"ASignalThatIsNoNumber", [] { Work.PtY[20] = std::numeric_limits<float>::quiet_NaN(); }},
        Lost{"AnInfiniteSignal", [] { Work.PtY[20] = std::numeric_limits<float>::infinity(); }},
        Lost{"AnInfiniteRadius", [] { Work.PtX[20] = std::numeric_limits<float>::infinity(); }},
        Lost{"AStartThatIsNoNumber", [] { Work.Parms[0] = std::numeric_limits<float>::quiet_NaN(); }},
        Lost{"AnInfiniteStart", [] { Work.Parms[2] = std::numeric_limits<float>::infinity(); }},
        Lost{"BoundsThatAreNoNumbers",
             [] { Work.Bounds[0][2] = Work.Bounds[1][2] = std::numeric_limits<float>::quiet_NaN(); }},
        Lost{"NoPoints", [] { Work.NumPts = 0; }}, Lost{"MoreParametersThanPoints", [] { Work.NumPts = 6; }},
        Lost{"AsManyParametersAsPoints", [] { Work.NumPts = Work.NumFree; }},
        Lost{"NoScale", [] { Work.ScanRPM.Recreate(Workspace::Rows); }}),
    [](const auto& each) { return each.param.What; });

TEST_P(WithoutMinimum, EndsInWords) {
    const Script outside;
    LoadRobustnessCase(ModelCaseNamed("Model02"), 1);
    GetParam().Spoil();
    const PerSlot<float> start = Work.Parms;
    RunFit();
    if (Work.Outcome.End != FitEnd::Converged) RescueFit(start);
    // No end without a word, and nothing called a fit that has no numbers.
    if (Work.Outcome.End == FitEnd::Converged) {
        EXPECT_TRUE(std::isfinite(Work.SumSq));
        EXPECT_TRUE(std::isfinite(Work.RmsResidual));
        EXPECT_LE(*Work.Outcome.ExpectedDecrease, LargestExpectedDecrease);
    } else
        EXPECT_FALSE(Work.Outcome.Sentence.empty());
}

TEST_F(RescueFitTest, BoundsThatLeaveNoRoomHoldTheParameterThere) {
    PerSlot<float> start = Levels();
    Work.Bounds[0][SlotOffset(1)] = Work.Bounds[1][SlotOffset(1)] = 0.5F;
    RunFit();
    EXPECT_EQ(Work.Outcome.End, FitEnd::TooManyIterations);
    EXPECT_EQ(Work.Outcome.Reason, Work.ParmName[SlotOffset(1)] + " presses against its upper bound.");
    RescueFit(start);
    EXPECT_EQ(Level(1), 0.5F);
    EXPECT_EQ(Level(2), -1.5F);
    EXPECT_NE(Work.Outcome.End, FitEnd::Converged) << "the iteration does not rest on a bound";
    EXPECT_FALSE(Work.Outcome.Sentence.empty());
    EXPECT_EQ(Work.Outcome.Reason, Work.ParmName[SlotOffset(1)] + " presses against its upper bound.");
}

// The marks of bounds were those of the last trial, and not of the place that had been kept.
TEST_F(RescueFitTest, WhatIsKeptOfAFailureIsMarkedAtItsBounds) {
    for (const std::uint64_t seed : {1, 2, 3, 4}) {
        LoadRobustnessCase(ModelCaseNamed("Model08"), seed);
        StartFarOff(3.0, seed);
        Work.Bounds[1][6] = ToUserUnits(SlotNo(6), Work.Parms[6]) - 1.0F; // below the start
        Work.MaxIterations = 3;
        const PerSlot<float> start = Work.Parms;
        RunFit();
        RescueFit(start);
        for (long a = 0; a < Work.NumFree; ++a) {
            if (Work.AtBound[a] == 0) continue;
            EXPECT_TRUE(StandsAtBound(SlotNo(Work.FreeIndex[a]), Work.AtBound[a] > 0 ? 1 : 0))
                << "seed " << seed << ", slot " << Work.FreeIndex[a];
        }
    }
}

TEST_F(RescueFitTest, APlaceIsMarkedByWhereItsParametersStand) {
    Levels();
    Work.Bounds[0][SlotOffset(1)] = 0.25F;
    Work.Bounds[1][SlotOffset(2)] = -0.5F;
    Level(1) = 0.25F;
    Level(2) = 1.0F; // beyond
    MarkBounds();
    EXPECT_EQ(Work.AtBound[0], -1);
    EXPECT_EQ(Work.AtBound[1], 1);
    EXPECT_EQ(Work.BoundHit, 1);
    Level(1) = 0.5F;
    Level(2) = -0.75F;
    MarkBounds();
    EXPECT_EQ(Work.AtBound[0], 0);
    EXPECT_EQ(Work.AtBound[1], 0);
    EXPECT_EQ(Work.BoundHit, 0);
}

TEST_F(RescueFitTest, ASetWithoutSignalIsNamed) {
    LoadRobustnessCase(ModelCaseNamed("Model01"), 1);
    for (long p = 1; p <= Work.NumPts; ++p)
        if (Work.PtSet[p] == 2) Work.PtY[p] = 0.0F;
    const PerSlot<float> start = Work.Parms;
    RunFit();
    if (Work.Outcome.End != FitEnd::Converged) RescueFit(start);
    const std::string text = Work.Outcome.Sentence + Work.Outcome.Reason;
    EXPECT_NE(text.find("Ln c(A,mon), set 2"), std::string::npos) << text;
}

TEST_F(RescueFitTest, AStartWithoutAValueLeavesEverythingAsItWas) {
    PerSlot<float> start = Levels();
    Work.Parms[SlotA(1)] = 1000.0F; // held; e^1000 has no double
    start = Work.Parms;
    EXPECT_FALSE(RunFit());
    const Workspace before = Work;
    EXPECT_FALSE(RescueFit(start));
    EXPECT_TRUE(Work == before);
    EXPECT_EQ(Work.Outcome.Sentence, "Math error during function evaluation, aborting fit");
}

// --- cancel
// -----------------------------------------------------------------------------------------------------------

TEST_F(RescueFitTest, CancelAtAnyServiceOfTheQueueEndsWithinAPassAndKeepsTheBestValues) {
    const PerSlot<float> start = Fail("Model10", 3.0, 3);
    ASSERT_NE(Work.Outcome.End, FitEnd::Converged);
    const Workspace failed = Work;
    const double first = std::min(SumAt(start), failed.FitValid ? failed.SumSq : 1e300);
    int events = 0;
    Outside.DuringEvents = [&] { ++events; };
    ASSERT_TRUE(RescueFit(start));
    const int all = events;
    ASSERT_GT(all, 100);
    double lowest = std::numeric_limits<double>::infinity();
    for (int at = 1; at <= all; at += at < 20 ? 1 : 17) {
        Work = failed;
        events = 0;
        Outside.DuringEvents = [&] {
            if (++events == at) Work.AbortFit = FlagTrue;
        };
        const bool fit = RescueFit(start);
        EXPECT_EQ(events, at) << "no service of the queue, and so no pass, after the cancel";
        EXPECT_EQ(Work.FitDone != 0, fit) << "that of an attempt before the one that was cancelled";
        if (!fit) {
            EXPECT_EQ(Work.Outcome.End, FitEnd::Cancelled);
            EXPECT_EQ(Work.Outcome.Sentence, "The fit was cancelled");
        }
        EXPECT_EQ(Work.AbortFit, FlagTrue) << "left for the caller";
        const double sum = SumAt(Work.Parms);
        EXPECT_LE(sum, first * (1 + 1e-9)) << at;
        lowest = std::min(lowest, sum);
    }
    EXPECT_LE(lowest, Least * 1.01) << "a late cancel keeps what has been found";
}

// The results of a fit that had stopped short were lost by Yes and then Cancel.
TEST_F(RescueFitTest, ACancelFallsBackToTheFitThatStoodUntilSomethingBetterIsMet) {
    const PerSlot<float> start = Fail("Model13", 3.0, 6);
    ASSERT_EQ(Work.Outcome.End, FitEnd::StoppedShort);
    const Workspace stopped = Work;
    int events = 0, kept = 0, better = 0;
    for (int at : {1, 2, 10, 40, 400, 4000}) {
        Work = stopped;
        events = 0;
        Outside.DuringEvents = [&] {
            if (++events == at) Work.AbortFit = FlagTrue;
        };
        RescueFit(start);
        if (events < at) break; // ended before
        EXPECT_EQ(Work.AbortFit, FlagTrue) << "left for the caller";
        Work.AbortFit = FlagFalse;
        if (Work == stopped)
            ++kept;
        else {
            ++better;
            EXPECT_LT(SumAt(Work.Parms), stopped.SumSq) << at;
        }
    }
    EXPECT_GE(kept, 2);
    EXPECT_GE(better, 1);
}

TEST_F(RescueFitTest, TheSearchTellsItsStepsAsIterations) {
    const PerSlot<float> start = Fail("Model10", 3.0, 3);
    ASSERT_NE(Work.Outcome.End, FitEnd::Converged);
    int damped = 0, steps = 0, iterations = 0;
    double before = std::numeric_limits<double>::infinity();
    bool searching = false;
    FitProgress progress;
    progress.Phase = [&](FitPhase phase) {
        if (phase == FitPhase::Damped) ++damped, searching = true, before = 1e300;
        if (phase == FitPhase::Started) searching = false;
        if (phase == FitPhase::DampedStep) ++steps;
    };
    progress.Iteration = [&] {
        ++iterations;
        if (!searching) return;
        EXPECT_LT(Work.SumSq, before) << "what is shown only falls";
        before = Work.SumSq;
    };
    EXPECT_TRUE(RescueFit(start, progress));
    EXPECT_GE(damped, 1);
    EXPECT_GT(steps, 3);
    EXPECT_GT(iterations, 3);
}

// --- what the data do not determine
// -----------------------------------------------------------------------------------------------------------

// Two parameters whose derivatives are the same at every point: only their sum is known.
TEST_F(RescueFitTest, ACombinationIsNamedByItsEigenvector) {
    Levels();
    Work.NumFree = 3;
    Work.FreeIndex[0] = SlotOffset(1);
    Work.FreeIndex[1] = SlotOffset(2);
    Work.FreeIndex[2] = 0;
    NormalEquations e{ZeroBasedMatrix<double>(2, 2, 1.0), PerFree<double>(2)};
    e.Matrix(2, 2) = 5.0;
    e.Matrix(0, 2) = e.Matrix(2, 0) = e.Matrix(1, 2) = e.Matrix(2, 1) = 0.1;
    EXPECT_EQ(UndeterminedText(e), "The data do not determine " + Work.ParmName[SlotOffset(1)] +
                                       " together with " + Work.ParmName[SlotOffset(2)] +
                                       ". Hold one of them.");
    e.Matrix(1, 1) = 0.0; // no point feels the second one
    EXPECT_EQ(UndeterminedText(e), "No point depends on " + Work.ParmName[SlotOffset(2)] + ". Hold it.");
}

// A concentration that vanishes once the iteration has ended, beside a level that is off by then.
TEST_F(RescueFitTest, AStopWithoutAnInverseNamesWhatIsUndetermined) {
    Levels();
    Work.Parms[SlotA(2)] = -1.0F;
    Work.FreeMap[SlotOffset(2)] = SlotHeld;
    Work.FreeMap[SlotA(2)] = 0;
    NumberFitted();
    FitProgress progress;
    progress.Phase = [](FitPhase phase) {
        if (phase != FitPhase::LastSums) return;
        Work.Parms[SlotA(2)] = -800.0F;
        Level(1) += 100.0F;
    };
    EXPECT_TRUE(RunFit(progress));
    EXPECT_EQ(Work.Outcome.End, FitEnd::StoppedShort);
    EXPECT_EQ(Work.Outcome.Reason, "No point depends on " + Work.ParmName[SlotA(2)] + ". Hold it.");
}

TEST_F(RescueFitTest, AMathErrorOfScansTellsTheRadius) {
    LoadRobustnessCase(ModelCaseNamed("Model02"), 1);
    const long point = Work.SetPts[1] + 1; // the first one of set 2
    Work.Parms[SlotA(2)] = 500.0F;
    EXPECT_FALSE(RunFit());
    const double half = static_cast<double>(Work.PtX[point]) + ReferenceX(RowNo(Work.SetRow[2]));
    EXPECT_TRUE(Work.Outcome.Reason.starts_with("The fitted value of data set 2 at " +
                                                FormatNumber(std::sqrt(2.0 * half), "0.0000") +
                                                " cm is beyond"))
        << Work.Outcome.Reason;
}

TEST_F(RescueFitTest, WithoutAnInverseOnlyWhatIsNotDeterminedLosesItsError) {
    Levels();
    NormalEquations e{ZeroBasedMatrix<double>(2, 2, 0.0), PerFree<double>(2)};
    e.Matrix(0, 0) = 4.0;
    e.Matrix(1, 1) = e.Matrix(1, 2) = e.Matrix(2, 1) = e.Matrix(2, 2) = 1.0;
    const ZeroBasedMatrix<double> inverse = DeterminedInverse(e);
    EXPECT_NEAR(inverse(0, 0), 0.25, 1e-9);
    EXPECT_EQ(inverse(1, 1), 0.0);
    EXPECT_EQ(inverse(2, 2), 0.0);
    EXPECT_EQ(inverse(1, 2), 0.0);
}

} // namespace
} // namespace Quillon
