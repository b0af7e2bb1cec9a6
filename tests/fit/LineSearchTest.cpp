// The search for a step, branch by branch, on a sum of squares that is a parabola: four points about a mean
// of 1/2, each 1/4 away from it, so that the sum at the level p is 1/4 + 4 (p - 1/2)^2. All numbers are
// chosen so that singles and doubles hold them exactly.
#include "SyntheticFit.h"
#include "fit/GNLLSQ.h"
#include "fit/equations/Bounds.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

constexpr double Smallest = 1.0 / 1024; // the first of the halved steps that is not above 0.001

double SumAt(double p) {
    return 0.25 + 4.0 * (p - 0.5) * (p - 0.5);
}

class LineSearch : public testing::Test {
protected:
    void SetUp() override {
        Work = FreshWorkspace();
        MakeLevels({{0.25F, 0.75F, 0.25F, 0.75F}});
        Work.YieldInterval = 1;
        Outside.DuringEvents = [this] {
            ++Events;
            if (Events == CancelAt) Work.AbortFit = FlagTrue;
        };
    }

    // Searches from the level start along the increment. The sum there stands, as a pass leaves it.
    void Search(float start, double increment, double alphaBefore = 1.0) {
        Work.Alpha = alphaBefore;
        Level() = start;
        Work.Increment[0] = increment;
        Work.SumSq = SumAt(static_cast<double>(start));
        AdjustIncrement();
    }

    // Each pass serves the events at each of the four points.
    int Passes() const { return Events / 4; }

    double LevelNow() const { return static_cast<double>(Level()); }

    Script Outside;
    int Events = 0;
    int CancelAt = 0; // at that event
};

// --- the step
// ------------------------------------------------------------------------------------------------

TEST_F(LineSearch, FullStepThatLowersTheSumIsTaken) {
    Search(-0.5F, 1.0);
    EXPECT_EQ(Work.Alpha, 1.0);
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.SumSq, 0.25);
    EXPECT_EQ(Work.LastSumSq, SumAt(-0.5));
    EXPECT_EQ(Work.ParmsSave[SlotOffset(1)], -0.5F);
    EXPECT_EQ(Work.ParmsSave.Hi(), Work.NumParms - 1);
    EXPECT_EQ(Passes(), 1);
    EXPECT_EQ(Work.FitValid, FlagTrue);
}

TEST_F(LineSearch, ATrialThatBreaksOffLeavesTheParametersOfBefore) {
    Work.ParmScale[SlotOffset(1)] = 1e30F; // the trial at 1e10 has no value in the units of its bounds
    Work.BoundsActive = 1;
    Work.AtBound.Recreate(0);
    try {
        Search(-0.5F, 1e10);
        ADD_FAILURE() << "a value beyond a single passed";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Overflow");
    }
    EXPECT_EQ(Level(), -0.5F);
}

TEST_F(LineSearch, StepRecoversFromTheOneBefore) {
    const double table[][2] = {{1.0, 1.0},       {0.25, 1.0},     {0.249, 0.996},  {0.1, 0.4},
                               {0.0051, 0.0204}, {0.005, 0.02},   {0.001, 0.02},   {0.0, 0.02},
                               {2.0, 1.0},       {-0.0003, 0.02}, {-1.0 / 2, 0.02}};
    for (const auto& [before, after] : table) {
        Search(-0.5F, 1.0, before);
        EXPECT_DOUBLE_EQ(Work.Alpha, after) << before;
        EXPECT_EQ(Level(), static_cast<float>(-0.5F + static_cast<float>(after))) << before;
    }
}

TEST_F(LineSearch, ProductIsRoundedBeforeTheSum) {
    // 2^-24 and a little more: the sum with 1 would round up at once, but the product rounds to 2^-24 first
    // and then lies halfway, which goes to the even neighbour.
    Work.ParmsSave = Work.Parms;
    Work.ParmsSave[SlotOffset(1)] = 1.0F;
    Work.Alpha = 0.5;
    Work.Increment[0] = std::ldexp(1.0, -23) + std::ldexp(1.0, -49);
    ApplyIncrement();
    EXPECT_EQ(Level(), 1.0F);
    Work.Increment[0] = std::ldexp(3.0, -24);
    ApplyIncrement();
    EXPECT_EQ(Level(), 1.0F + std::ldexp(1.0F, -23));
}

TEST_F(LineSearch, ParameterBeyondASingleIsAnError) {
    Work.ParmsSave = Work.Parms;
    Work.Alpha = 1.0;
    Work.Increment[0] = 1e39;
    EXPECT_THROW(ApplyIncrement(), RuntimeError);
}

TEST_F(LineSearch, TiedOffsetsFollowEachStep) {
    MakeLevels({{1.0F, 2.0F}, {3.0F, 4.0F}});
    Work.OffsetLink[2] = 1;
    Work.FreeMap[SlotOffset(2)] = SlotTied;
    NumberFitted();
    Work.ParmsSave = Work.Parms;
    Work.Alpha = 0.5;
    Work.Increment[0] = 3.0;
    ApplyIncrement();
    EXPECT_EQ(Level(1), 1.5F);
    EXPECT_EQ(Level(2), 0.0F) << "the bit of the constraints is not set";
    Work.ConstraintFlags = ConcentrationBit;
    ApplyIncrement();
    EXPECT_EQ(Level(2), 0.0F) << "nor is it by a concentration constraint";
    Work.ConstraintFlags = OffsetBit;
    ApplyIncrement();
    EXPECT_EQ(Level(2), 1.5F);
}

// --- halving and interpolation
// -------------------------------------------------------------------------------

TEST_F(LineSearch, InterpolatedStepLeavesTheSumOfTheTrialBefore) {
    // The minimum lies at 5/16 of the increment. The whole step overshoots, half of it is better.
    Search(0.1875F, 1.0);
    EXPECT_EQ(Work.Alpha, 0.3125);
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.SumSq, SumAt(0.1875 + 0.5)) << "the sum at half the step, not at the one taken";
    EXPECT_EQ(Work.LastSumSq, SumAt(0.1875));
    EXPECT_EQ(Passes(), 2);
}

TEST_F(LineSearch, InterpolationUsesTheLastTwoTrials) {
    // The minimum lies at 3/32: 1, 1/2 and 1/4 overshoot, 1/8 is better.
    Search(0.40625F, 1.0);
    EXPECT_EQ(Work.Alpha, 0.09375);
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.SumSq, SumAt(0.40625 + 0.125));
    EXPECT_EQ(Passes(), 4);
}

TEST_F(LineSearch, NoGainByInterpolationKeepsTheTrial) {
    // The minimum is at half the step, where the trial already is: the parabola promises no less.
    Search(0.0F, 1.0);
    EXPECT_EQ(Work.Alpha, 0.5);
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.SumSq, 0.25);
    EXPECT_EQ(Passes(), 2) << "the sum at that step is known";
}

TEST_F(LineSearch, SmallInterpolatedStepIsEvaluated) {
    // The minimum lies at 2^-11 of the increment: no trial lowers the sum, the parabola finds the way.
    Search(static_cast<float>(0.5 - Smallest / 2), 1.0);
    EXPECT_EQ(Work.Alpha, Smallest / 2);
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.SumSq, 0.25);
    EXPECT_EQ(Passes(), 1 + 10 + 1);
}

TEST_F(LineSearch, InterpolatedStepMayGoBackwards) {
    Search(static_cast<float>(0.5 + Smallest / 4), 1.0);
    EXPECT_EQ(Work.Alpha, -Smallest / 4);
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.SumSq, 0.25);
    EXPECT_EQ(Passes(), 1 + 10 + 1);
    // What is left behind counts as a small step.
    Search(-0.5F, 1.0, Work.Alpha);
    EXPECT_EQ(Work.Alpha, 0.02);
}

TEST_F(LineSearch, StraightLineHasNoInterpolatedStep) {
    // Without an increment all sums are equal: the smallest step stands, evaluated to and fro.
    Search(0.75F, 0.0);
    EXPECT_EQ(Work.Alpha, Smallest);
    EXPECT_EQ(Level(), 0.75F);
    EXPECT_EQ(Work.SumSq, SumAt(0.75));
    EXPECT_EQ(Passes(), 1 + 10 + 1 + 2);
}

// --- the last resorts
// ----------------------------------------------------------------------------------------

TEST_F(LineSearch, WrongDirectionIsReversed) {
    // The parabola's minimum is half an increment behind: too far for the step, which turns round instead.
    Search(1.0F, 1.0);
    EXPECT_EQ(Work.Alpha, -Smallest);
    EXPECT_EQ(LevelNow(), 1.0 - Smallest);
    EXPECT_EQ(Work.SumSq, SumAt(1.0 - Smallest));
    EXPECT_EQ(Passes(), 1 + 10 + 1) << "the sum at the smallest step is known";
}

TEST_F(LineSearch, StepThatNothingImprovesStandsAllTheSame) {
    Search(0.5F, 1.0);
    EXPECT_EQ(Work.Alpha, Smallest);
    EXPECT_EQ(LevelNow(), 0.5 + Smallest);
    EXPECT_EQ(Work.SumSq, SumAt(0.5 + Smallest));
    EXPECT_GT(Work.SumSq, Work.LastSumSq);
    EXPECT_EQ(Passes(), 1 + 10 + 2);
}

TEST_F(LineSearch, BetterButNoImprovementIsShortenedAtRandom) {
    // The minimum lies 2^-14 behind: too near for the parabola's step, and the smallest step reaches past it
    // on either side, less far when reversed.
    for (const float r : {0.0F, 0.25F, 0.5F, 0.9990234375F}) {
        Events = 0;
        Outside.UniformNumbers = {r};
        Search(static_cast<float>(0.5 + std::ldexp(1.0, -14)), 1.0);
        const double alpha = -(static_cast<double>(r) + 1.0) * 0.5 * Smallest;
        EXPECT_EQ(Work.Alpha, alpha);
        EXPECT_EQ(Level(), static_cast<float>(0.5 + std::ldexp(1.0, -14)) + static_cast<float>(alpha));
        EXPECT_EQ(Work.SumSq, SumAt(LevelNow()));
        EXPECT_EQ(Passes(), 1 + 10 + 2);
    }
}

TEST_F(LineSearch, RandomNumberIsDrawnOnlyForTheShortening) {
    Outside.UniformNumbers = {0.0F, 0.5F};
    const auto shorten = [this] { Search(static_cast<float>(0.5 + std::ldexp(1.0, -14)), 1.0); };
    Search(-0.5F, 1.0);
    Search(1.0F, 1.0);
    Search(0.5F, 1.0);
    shorten();
    EXPECT_EQ(Work.Alpha, -0.5 * Smallest);
    shorten();
    EXPECT_EQ(Work.Alpha, -0.75 * Smallest);
}

// --- bounds
// ----------------------------------------------------------------------------------------------------

TEST_F(LineSearch, StepIsHalvedUntilNoParameterIsClipped) {
    Work.Bounds[1][SlotOffset(1)] = 0.375F;
    Search(0.0F, 1.0);
    EXPECT_EQ(Work.Alpha, 0.25);
    EXPECT_EQ(Level(), 0.25F);
    EXPECT_EQ(Work.BoundHit, 0);
    EXPECT_EQ(Work.AtBound[0], 0);
    EXPECT_EQ(Passes(), 1) << "clipped trials are not evaluated";
}

TEST_F(LineSearch, StepOntoTheBoundItselfIsFree) {
    Work.Bounds[1][SlotOffset(1)] = 0.25F;
    Search(0.0F, 0.25);
    EXPECT_EQ(Work.Alpha, 1.0);
    EXPECT_EQ(Level(), 0.25F);
    EXPECT_EQ(Work.BoundHit, 0);
}

TEST_F(LineSearch, StepThatCannotBeShortenedEnoughEndsOnTheBound) {
    Work.Bounds[1][SlotOffset(1)] = 0.25F;
    Search(0.125F, 1000.0);
    EXPECT_EQ(Work.Alpha, Smallest);
    EXPECT_EQ(Level(), 0.25F);
    EXPECT_EQ(Work.BoundHit, 1);
    EXPECT_EQ(Work.AtBound[0], 1);
    EXPECT_EQ(Work.SumSq, SumAt(0.25));
    EXPECT_EQ(Passes(), 1);
}

TEST_F(LineSearch, StartOutsideTheBoundsSkipsTheSearch) {
    // The whole step is taken from where the parameter stood, not from the bound.
    Work.Bounds[1][SlotOffset(1)] = 0.75F;
    Search(1.0F, -0.375);
    EXPECT_EQ(Work.Alpha, 1.0);
    EXPECT_EQ(Work.ParmsSave[SlotOffset(1)], 1.0F);
    EXPECT_EQ(Level(), 0.625F);
    EXPECT_EQ(Work.BoundHit, 0);
    EXPECT_EQ(Work.SumSq, SumAt(0.625));
    EXPECT_EQ(Passes(), 1);
}

TEST_F(LineSearch, StartOutsideTheBoundsMayEndOnTheBound) {
    // To and fro, both clipped, against a sum that the bound does not beat.
    Work.Bounds[1][SlotOffset(1)] = 0.75F;
    Level() = 1.0F;
    Work.Increment[0] = 0.25;
    Work.SumSq = SumAt(0.75);
    AdjustIncrement();
    EXPECT_EQ(Work.Alpha, 1.0);
    EXPECT_EQ(Level(), 0.75F);
    EXPECT_EQ(Work.BoundHit, 1);
    EXPECT_EQ(Passes(), 3);
}

TEST_F(LineSearch, BoundsThatAreSwitchedOffClipNoStep) {
    Work.Bounds[1][SlotOffset(1)] = 0.375F;
    Work.BoundsActive = 0;
    Search(0.0F, 0.5);
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.BoundHit, 0);
}

// --- errors and cancel
// -------------------------------------------------------------------------------------------

TEST_F(LineSearch, ErrorInTheInterpolationIsToldAndRecovered) {
    std::vector<std::string> remarks;
    FitProgress progress;
    progress.Remark = [&](const std::string& sentence) { remarks.push_back(sentence); };
    const ProgressInUse inUse(progress);
    // A sum before that is so far below any other that the parabola's curvature has no room in a double.
    Level() = 0.75F;
    Work.Increment[0] = 1.0;
    Work.SumSq = -1e308;
    AdjustIncrement();
    EXPECT_EQ(remarks, std::vector<std::string>{"Error 'Overflow' occurred during parameter increment "
                                                "adjustment, recovery will be attempted."});
    // The last stage: the smallest step evaluated, then reversed, which is better and so shortened at random.
    EXPECT_EQ(Work.Alpha, -0.75 * Smallest);
    EXPECT_EQ(Passes(), 1 + 10 + 1 + 2);
    EXPECT_EQ(Work.AbortFit, 0);
}

TEST_F(LineSearch, CancelBeforehandChangesNothing) {
    Work.AbortFit = FlagTrue;
    Work.LastSumSq = 123.0;
    Search(-0.5F, 1.0, 0.1);
    EXPECT_EQ(Work.LastSumSq, 123.0);
    EXPECT_EQ(Work.Alpha, 0.1);
    EXPECT_EQ(Level(), -0.5F);
    EXPECT_EQ(Passes(), 0);
}

TEST_F(LineSearch, CancelInAnyPassLeavesAtOnce) {
    // The road with the most passes: straight line, to and fro.
    for (int pass = 1; pass <= 14; ++pass) {
        Events = 0;
        CancelAt = 4 * (pass - 1) + 2;
        Work.AbortFit = 0;
        Search(0.75F, 0.0);
        EXPECT_EQ(Work.AbortFit, FlagTrue);
        EXPECT_EQ(Events, CancelAt);
        EXPECT_EQ(Work.FitValid, 0);
        // The step tried in that pass: whole, halved ten times, that once more, reversed, back.
        const double tried = pass <= 11 ? std::ldexp(1.0, 1 - pass) : pass == 13 ? -Smallest : Smallest;
        EXPECT_EQ(Work.Alpha, tried) << pass;
    }
}

TEST_F(LineSearch, CancelDuringAHalvingTriesNoShorterStep) {
    // What has been summed up by then is above the sum to beat already.
    CancelAt = 4 + 4;
    Search(1.0F, 1.0);
    EXPECT_EQ(Events, CancelAt);
    EXPECT_GT(Work.SumSq, Work.LastSumSq);
    EXPECT_EQ(Work.Alpha, 0.5);
    EXPECT_EQ(Level(), 1.5F);
}

// --- the pass without derivatives
// ----------------------------------------------------------------------------------

TEST_F(LineSearch, SumAndFittedValuesOfAPass) {
    Level() = 0.625F;
    Work.SumSq = 99.0;
    CalcSumSq();
    EXPECT_EQ(Work.SumSq, SumAt(0.625));
    for (long p = 1; p <= 4; ++p)
        EXPECT_EQ(Work.PtFit[p], 0.625F);
    EXPECT_EQ(Work.FitValid, FlagTrue);
}

TEST_F(LineSearch, EventsAreServedAtTheStatedPoints) {
    const std::vector<float> many(1000, 0.5F);
    for (const int interval : {1, 7, 200, 999, 1000, 1001}) {
        MakeLevels({many});
        Work.YieldInterval = ToInt16(interval);
        Events = 0;
        CalcSumSq(); // at multiples of the interval, counted from 1
        EXPECT_EQ(Events, 1000 / interval) << interval;
        Events = 0;
        AccumulateSums(); // before point 1, and so on
        EXPECT_EQ(Events, (1000 + interval - 1) / interval) << interval;
    }
}

TEST_F(LineSearch, CancelInsideAPassLeavesTheRestUndone) {
    MakeLevels({std::vector<float>(1000, 0.5F)});
    Work.YieldInterval = 100;
    CancelAt = 3;
    CalcSumSq();
    EXPECT_EQ(Events, 3);
    EXPECT_EQ(Work.FitValid, 0);
    EXPECT_LT(Work.SumSq, 0.25 * 300);
    Events = 0;
    AccumulateSums();
    EXPECT_EQ(Events, 0) << "a flag that is set already stops the first point";
    EXPECT_EQ(Work.FitValid, 0);
}

} // namespace
} // namespace Quillon
