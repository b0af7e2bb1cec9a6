// The damped search by itself: when it is wanted, what it ends in, and how a cancel leaves it.
#include "RescueCase.h"
#include "fit/Undetermined.h"
#include "fit/equations/Bounds.h"
#include "fit/equations/NormalEquations.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace Quillon {
namespace {

class RescueSearch : public RescueCase {};

// --- the check

// The sum of squares of levels is a parabola: from p it falls by n (p - mean)^2 in each set.
TEST_F(RescueSearch, ExpectedDecreaseOfALinearFitIsWhatIsLeft) {
    Levels();
    Level(1) = 2.5F;
    Level(2) = -1.25F;
    AccumulateSums();
    const double s2 = Work.SumSq / (6 - 2);
    EXPECT_NEAR(ExpectedDecrease(TakeNormalEquations()), (3 * 0.25 + 3 * 0.0625) / s2, 1e-9);
    EXPECT_NEAR(Work.SumSq, 2.0 + 0.5 + 3 * 0.25 + 3 * 0.0625, 1e-9);
}

TEST_F(RescueSearch, WhatABoundBlocksIsNotExpected) {
    Levels();
    Level(1) = 1.5F;
    Level(2) = -1.25F;
    Work.Bounds[1][SlotOffset(1)] = 1.5F; // the mean of 2 lies beyond
    AccumulateSums();
    EXPECT_NEAR(ExpectedDecrease(TakeNormalEquations()), 3 * 0.0625 / (Work.SumSq / 4), 1e-9);
    Work.BoundsActive = 0;
    EXPECT_NEAR(ExpectedDecrease(TakeNormalEquations()), (3 * 0.25 + 3 * 0.0625) / (Work.SumSq / 4), 1e-9);
}

TEST_F(RescueSearch, DataWithoutNoiseExpectNothingBelowWhatASingleKnows) {
    Work = FreshWorkspace();
    MakeLevels({{1.0F, 1.0F, 1.0F, 1.0F}});
    Level() = 1.0F + 2e-7F; // two steps of a single off
    AccumulateSums();
    EXPECT_LT(ExpectedDecrease(TakeNormalEquations()), LargestExpectedDecrease);
    Level() = 1.0F + 2e-6F;
    AccumulateSums();
    EXPECT_GT(ExpectedDecrease(TakeNormalEquations()), LargestExpectedDecrease);
}

TEST_F(RescueSearch, EquationsWithoutNumbersPromiseEverything) {
    NormalEquations e{ZeroBasedMatrix<double>(0, 0, 1.0), PerFree<double>(0)};
    e.Vector[0] = std::numeric_limits<double>::quiet_NaN();
    Levels();
    Work.NumFree = 1;
    EXPECT_TRUE(std::isinf(ExpectedDecrease(e)));
}

// A stop that the rules of the iteration call converged: each iteration has one point of the random search
// left, and the change of the sum is small for once.
TEST_F(RescueSearch, AStopOnTheWayIsItsOwnEndAndKeepsItsResults) {
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

TEST_F(RescueSearch, BoundsThatLeaveNoRoomHoldTheParameterThere) {
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
TEST_F(RescueSearch, WhatIsKeptOfAFailureIsMarkedAtItsBounds) {
    for (const std::uint64_t seed : {1UL, 2UL, 3UL, 4UL}) {
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

TEST_F(RescueSearch, APlaceIsMarkedByWhereItsParametersStand) {
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

TEST_F(RescueSearch, ASetWithoutSignalIsNamed) {
    LoadRobustnessCase(ModelCaseNamed("Model01"), 1);
    for (long p = 1; p <= Work.NumPts; ++p)
        if (Work.PtSet[p] == 2) Work.PtY[p] = 0.0F;
    const PerSlot<float> start = Work.Parms;
    RunFit();
    if (Work.Outcome.End != FitEnd::Converged) RescueFit(start);
    const std::string text = Work.Outcome.Sentence + Work.Outcome.Reason;
    EXPECT_NE(text.find("Ln c(A,mon), set 2"), std::string::npos) << text;
}

TEST_F(RescueSearch, AStartWithoutAValueLeavesEverythingAsItWas) {
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

TEST_F(RescueSearch, CancelAtAnyServiceOfTheQueueEndsWithinAPassAndKeepsTheBestValues) {
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
TEST_F(RescueSearch, ACancelFallsBackToTheFitThatStoodUntilSomethingBetterIsMet) {
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

TEST_F(RescueSearch, TheSearchTellsItsStepsAsIterations) {
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

} // namespace
} // namespace Quillon
