// Rigorous limits against closed forms: sums of squares that are parabolas of the levels of the sets.
#include "fit/Confidence.h"
#include "fit/forms/WaitForm.h"

#include "SyntheticFit.h"
#include "fit/GNLLSQ.h"
#include "fit/Undetermined.h"
#include "fit/equations/FDistribution.h"
#include "models/SEDEQ3.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ReferenceModel.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace Quillon {
namespace {

// What the root search leaves open, in standard deviations: half of the last interval and a step of it.
constexpr double RootTolerance = 2.0 * (5.0 * 6e-8 + 2.5e-5);

class ConfidenceTest : public testing::Test {
protected:
    void SetUp() override { Work = FreshWorkspace(); }

    static void Fit(const std::vector<std::vector<float>>& levels) {
        MakeLevels(levels);
        ASSERT_TRUE(RunFit());
    }
    // Points at mean +- away, in pairs; they give away^2 each to the sum of squares.
    static std::vector<float> Pairs(long pairs, float mean, float away) {
        std::vector<float> level;
        for (long i = 0; i < pairs; ++i) {
            level.push_back(mean + away);
            level.push_back(mean - away);
        }
        return level;
    }
    static double Limit(long side, long a) {
        return static_cast<double>(Work.ParmLimits[static_cast<std::size_t>(side)][a]);
    }
    static void Search() { SearchLimitsAndTell(nullptr); }
    static double Widen(float v) { return static_cast<double>(v); }

    Script Outside;
};

// --- the target ratio
// ----------------------------------------------------------------------------------------------

TEST_F(ConfidenceTest, RatioForTwoParametersByTheClosedForm) {
    // F(2, df) = df/2 (alpha^(-2/df) - 1), so that the ratio is alpha^(-2/df).
    Work.NumFree = 2;
    for (const int df : {1, 2, 10, 400, 20000})
        for (const float p : {0.5F, 0.683F, 0.95F, 0.999F}) {
            Work.NumPts = ToInt16(df + 2);
            Work.ConfidenceLevel = p;
            ComputeConfidenceRatio(p);
            const double expected = std::pow(1.0 - Widen(p), -2.0 / df);
            EXPECT_NEAR(Widen(Work.ConfidenceRatio) / expected, 1.0, 1.5e-6) << df << " " << p;
        }
}

TEST_F(ConfidenceTest, RatioForOneParameterByStudentsT) {
    Work.NumFree = 1;
    Work.NumPts = 3; // two degrees of freedom: t^2 = 2 p^2 / (1 - p^2)
    for (const float p : {0.5F, 0.683F, 0.95F}) {
        Work.ConfidenceLevel = p;
        ComputeConfidenceRatio(p);
        const double p2 = Widen(p) * Widen(p);
        EXPECT_NEAR(Widen(Work.ConfidenceRatio), 1.0 + p2 / (1.0 - p2), 1e-5) << p;
    }
}

// --- one parameter
// -----------------------------------------------------------------------------------------------

TEST_F(ConfidenceTest, MeanOfThreePoints) {
    // Limits m +- t s / sqrt(n) with Student's t for two degrees.
    for (const float p : {0.5F, 0.683F, 0.95F}) {
        Fit({{1.0F, 2.0F, 6.0F}});
        Work.ConfidenceLevel = p;
        Search();
        EXPECT_EQ(Work.LimitsDone, FlagTrue);
        const double error = std::sqrt(14.0 / 2 / 3);
        const double t = Widen(p) * std::sqrt(2.0 / (1.0 - Widen(p) * Widen(p)));
        EXPECT_NEAR(Limit(0, 0), 3.0 - t * error, RootTolerance * error) << p;
        EXPECT_NEAR(Limit(1, 0), 3.0 + t * error, RootTolerance * error) << p;
        EXPECT_EQ(Work.ConfTrace.ColumnHi(), 1) << "two end points";
        EXPECT_EQ(Work.ConfTrace.RowHi(), Work.NumParms - 1);
    }
}

TEST_F(ConfidenceTest, MeanOfTwoPoints) {
    // One degree: t = tan(pi p / 2), far out at 0.99.
    for (const float p : {0.683F, 0.95F, 0.99F}) {
        Fit({{1.0F, 5.0F}});
        Work.ConfidenceLevel = p;
        Search();
        const double error = std::sqrt(8.0 / 1 / 2);
        const double t = std::tan(std::numbers::pi * Widen(p) / 2.0);
        EXPECT_NEAR(Limit(0, 0), 3.0 - t * error, 1e-5 * t * error) << p;
        EXPECT_NEAR(Limit(1, 0), 3.0 + t * error, 1e-5 * t * error) << p;
    }
}

TEST_F(ConfidenceTest, TraceHoldsTheWholeVectorAtEachEnd) {
    Fit({{1.0F, 2.0F, 6.0F}});
    Search();
    for (long end = 0; end < 2; ++end) {
        EXPECT_EQ(Work.ConfTrace(0, end), Work.Parms[0]);
        EXPECT_EQ(Work.ConfTrace(SlotA(1), end), Work.Parms[SlotA(1)]);
    }
    const long slot = SlotOffset(1);
    EXPECT_GT(Work.ConfTrace(slot, 0), 3.0F) << "plus first";
    EXPECT_LT(Work.ConfTrace(slot, 1), 3.0F);
    EXPECT_EQ(Work.ParmLimits[0][0], Work.ConfTrace(slot, 1));
    EXPECT_EQ(Work.ParmLimits[1][0], Work.ConfTrace(slot, 0));
}

// --- two parameters
// ------------------------------------------------------------------------------------------------

// Two sets of 2 and 8 points. The sum grows as 2 d1^2 + 8 d2^2, and reaches the ratio alpha^(-2/df) on an
// ellipse of half-axes sqrt(S0 (ratio - 1) / n).
class TwoLevels : public ConfidenceTest {
protected:
    void SetUp() override {
        ConfidenceTest::SetUp();
        Fit({Pairs(1, 1.0F, 0.5F), Pairs(4, -2.0F, 0.25F)});
        Growth = S0 * (std::pow(1.0 - Widen(Work.ConfidenceLevel), -2.0 / 8.0) - 1.0);
    }
    // The limits that an axis along (v1, v2) gives: the end on the ellipse.
    double Reach(double v1, double v2) const { return std::sqrt(Growth / (2.0 * v1 * v1 + 8.0 * v2 * v2)); }

    // Puts an inverse with those eigenvectors in place of the fit's own.
    static void Tilt(double angle, double first, double second) {
        const double c = std::cos(angle), s = std::sin(angle);
        Work.NormMatrix(0, 0) = first * c * c + second * s * s;
        Work.NormMatrix(1, 1) = first * s * s + second * c * c;
        Work.NormMatrix(0, 1) = Work.NormMatrix(1, 0) = (first - second) * c * s;
    }
    static constexpr double S0 = 2 * 0.25 + 8 * 0.0625;
    static constexpr double Tolerance = RootTolerance * 0.4; // the larger standard deviation is 0.25
    double Growth = 0.0;
};

TEST_F(TwoLevels, ExtentsAlongTheAxes) {
    Search();
    EXPECT_NEAR(Limit(1, 0), 1.0 + Reach(1, 0), Tolerance);
    EXPECT_NEAR(Limit(0, 0), 1.0 - Reach(1, 0), Tolerance);
    EXPECT_NEAR(Limit(1, 1), -2.0 + Reach(0, 1), Tolerance);
    EXPECT_NEAR(Limit(0, 1), -2.0 - Reach(0, 1), Tolerance);
    EXPECT_EQ(Work.ConfTrace.ColumnHi(), 3);
    for (long end = 0; end < 4; ++end) {
        const bool first = end < 2;
        EXPECT_EQ(Work.ConfTrace(SlotOffset(first ? 2 : 1), end), first ? -2.0F : 1.0F)
            << "the other parameter stays";
    }
}

TEST_F(TwoLevels, EndsFollowTheEigenvectors) {
    const double angle = 0.5;
    Tilt(angle, 0.3, 0.05);
    Search();
    const double c = std::cos(angle), s = std::sin(angle);
    const double along = Reach(c, s), across = Reach(-s, c);
    EXPECT_NEAR(Limit(1, 0) - 1.0, std::max(along * c, across * s), Tolerance);
    EXPECT_NEAR(Limit(0, 0) - 1.0, -std::max(along * c, across * s), Tolerance);
    EXPECT_NEAR(Limit(1, 1) + 2.0, std::max(along * s, across * c), Tolerance);
    EXPECT_NEAR(Limit(0, 1) + 2.0, -std::max(along * s, across * c), Tolerance);
    // The eigenvectors stand in the matrix of correlations, a column for each axis.
    for (long axis = 0; axis < 2; ++axis) {
        const double v0 = Widen(Work.CorrMatrix(0, axis)), v1 = Widen(Work.CorrMatrix(1, axis));
        EXPECT_NEAR(v0 * v0 + v1 * v1, 1.0, 1e-6);
        const double share = v0 * c + v1 * s;
        EXPECT_TRUE(std::fabs(std::fabs(share) - 1.0) < 1e-6 || std::fabs(share) < 1e-6) << share;
        for (long end = 2 * axis; end < 2 * axis + 2; ++end) {
            const double d0 = Widen(Work.ConfTrace(SlotOffset(1), end)) - 1.0;
            const double d1 = Widen(Work.ConfTrace(SlotOffset(2), end)) + 2.0;
            EXPECT_NEAR(d0 * v1 - d1 * v0, 0.0, 1e-6) << "along the axis";
        }
    }
}

TEST_F(TwoLevels, ElementsOfAThousandthOrLessCountAsZero) {
    Tilt(0.0009, 0.3, 0.05);
    Search();
    EXPECT_EQ(Work.ConfTrace(SlotOffset(2), 0), -2.0F);
    Tilt(0.0012, 0.3, 0.05);
    Search();
    const double d = Widen(Work.ConfTrace(SlotOffset(2), 0)) + 2.0;
    EXPECT_NEAR(std::fabs(d), Reach(1, 0) * 0.0012, 1e-6);
}

TEST_F(TwoLevels, NegativeEigenvalueCountsByItsSize) {
    Tilt(0.0, -0.5, 0.125);
    Search();
    EXPECT_NEAR(Limit(1, 0), 1.0 + Reach(1, 0), RootTolerance);
}

// --- bounds
// --------------------------------------------------------------------------------------------------------

TEST_F(ConfidenceTest, EndOfAnAxisStopsAtABound) {
    Fit({{1.0F, 2.0F, 6.0F}});
    Work.Bounds[1][SlotOffset(1)] = 3.25F;
    Work.ConfidenceLevel = 0.95F;
    Search();
    EXPECT_EQ(Work.LimitsDone, FlagTrue);
    EXPECT_EQ(Work.ParmLimits[1][0], 3.25F);
    const double error = std::sqrt(14.0 / 2 / 3);
    const double t = 0.95 * std::sqrt(2.0 / (1.0 - 0.95 * 0.95));
    EXPECT_NEAR(Limit(0, 0), 3.0 - t * error, RootTolerance * error) << "the other side is as without it";
    EXPECT_EQ(Work.BoundHit, 0);
    EXPECT_EQ(Work.AtBound[0], 0);
}

TEST_F(ConfidenceTest, BestFitOnABound) {
    // Pressed against both sides: there is no way to go.
    Fit({{1.0F, 2.0F, 6.0F}});
    Work.Bounds[0][SlotOffset(1)] = Work.Bounds[1][SlotOffset(1)] = 3.0F;
    Search();
    EXPECT_EQ(Work.ParmLimits[0][0], 3.0F);
    EXPECT_EQ(Work.ParmLimits[1][0], 3.0F);
}

TEST_F(TwoLevels, OneParameterGoesOnWhenTheOtherIsStopped) {
    const double angle = 0.5, c = std::cos(angle), s = std::sin(angle);
    Tilt(angle, 0.3, 0.05);
    const float bound = 1.125F;
    Work.Bounds[1][SlotOffset(1)] = bound;
    Search();
    EXPECT_EQ(Work.LimitsDone, FlagTrue);
    EXPECT_EQ(Work.ParmLimits[1][0], bound);
    // Along the axis with its plus side upwards in both: 2 d1^2 is fixed, 8 d2^2 makes up the rest.
    const double d1 = Widen(bound) - 1.0;
    const double d2 = std::sqrt((Growth - 2.0 * d1 * d1) / 8.0);
    EXPECT_NEAR(Limit(1, 1) + 2.0, std::max(d2, Reach(-s, c) * c), 2 * Tolerance);
}

TEST_F(ConfidenceTest, ParameterThatTheDataDoNotHoldEndsAtItsBound) {
    // A concentration that may as well be none: the sum levels off below the target, down to the bound.
    MakeLevels({{0.02F, -0.01F, 0.03F, -0.02F, 0.015F, 0.0F, 0.01F, -0.005F}});
    Work.FreeMap[SlotOffset(1)] = SlotHeld;
    Work.FreeMap[SlotA(1)] = 0;
    Work.Parms[SlotA(1)] = -4.0F;
    Work.Bounds[0][SlotA(1)] = -70.0F;
    Work.Bounds[1][SlotA(1)] = 4.0F;
    NumberFitted();
    ASSERT_TRUE(RunFit());
    Search();
    EXPECT_EQ(Work.LimitsDone, FlagTrue);
    EXPECT_EQ(Work.ParmLimits[0][0], -70.0F);
    // The upper end by the equation: 8 (c - mean)^2 grows to the ratio of the sums.
    double mean = 0.0, square = 0.0;
    for (long p = 1; p <= 8; ++p) {
        mean += Widen(Work.PtY[p]) / 8;
        square += Widen(Work.PtY[p]) * Widen(Work.PtY[p]);
    }
    const double c0 = std::exp(Widen(Work.Parms[SlotA(1)]));
    const double growth = (Widen(Work.ConfidenceRatio) - 1.0) * Work.SumSq;
    const double c = mean + std::sqrt((c0 - mean) * (c0 - mean) + growth / 8);
    EXPECT_NEAR(std::exp(Limit(1, 0)), c, 1e-4 * c);
    EXPECT_LT(square - Work.SumSq, growth) << "no concentration at all is within the target";
}

// --- the fit stands as before
// ---------------------------------------------------------------------------------------

// The same workspace apart from what the search is there to fill.
void ExpectFitAsBefore(Workspace before) {
    before.ConfidenceRatio = Work.ConfidenceRatio;
    before.ParmLimits = Work.ParmLimits;
    before.ConfTrace = Work.ConfTrace;
    before.CorrMatrix = Work.CorrMatrix;
    before.ParmsSave = Work.ParmsSave;
    before.LimitsDone = Work.LimitsDone;
    before.LimitsLevel = Work.LimitsLevel;
    before.LimitReason = Work.LimitReason;
    EXPECT_TRUE(before == Work);
}

TEST_F(TwoLevels, FitStandsBitForBitAsBefore) {
    Work.Bounds[1][SlotOffset(1)] = 1.125F;
    const Workspace before = Work;
    Search();
    EXPECT_EQ(Work.LimitsDone, FlagTrue);
    ExpectFitAsBefore(before);
    CalcSumSq();
    EXPECT_EQ(Work.SumSq, before.SumSq);
}

TEST_F(ConfidenceTest, MeansOfConstraintsStandAsBefore) {
    Work = SimulatedWorkspace(ModelCaseNamed("Model08Constrained"));
    Work.MonitorMode = 0;
    BuildParmScale();
    SetDefaultBounds();
    ASSERT_TRUE(RunFit());
    const Workspace before = Work;
    EXPECT_GT(Work.ConstraintFit[0][1], 0.0F);
    Search();
    EXPECT_EQ(Work.LimitsDone, FlagTrue);
    ExpectFitAsBefore(before);
    CalcSumSq();
    EXPECT_EQ(Work.SumSq, before.SumSq);
}

TEST_F(TwoLevels, AnsweredFlagOfAnEarlierCancelDoesNotStopIt) {
    Work.AbortFit = FlagTrue;
    Work.LimitsDone = FlagTrue;
    Search();
    EXPECT_EQ(Work.AbortFit, 0);
    EXPECT_EQ(Work.LimitsDone, FlagTrue);
}

TEST_F(TwoLevels, ProgressRunsToOne) {
    std::vector<double> fractions;
    ConfidenceSearch([&](double fraction) { fractions.push_back(fraction); });
    EXPECT_EQ(fractions, (std::vector<double>{0.25, 0.5, 0.75, 1.0}));
}

TEST_F(TwoLevels, CancelAtAnyServiceOfTheQueueRestoresTheFit) {
    Work.YieldInterval = 5;
    int events = 0;
    Outside.DuringEvents = [&] { ++events; };
    Search();
    const int all = events;
    EXPECT_GT(all, 20);
    const Workspace before = [] {
        Workspace w = Work;
        w.LimitsDone = FlagFalse;
        return w;
    }();
    for (int at = 1; at <= all; ++at) {
        events = 0;
        Outside.DuringEvents = [&] {
            if (++events == at) Work.AbortFit = FlagTrue;
        };
        Search();
        EXPECT_EQ(events, at);
        EXPECT_EQ(Work.LimitsDone, 0);
        EXPECT_EQ(Work.AbortFit, 0);
        ExpectFitAsBefore(before);
    }
}

TEST_F(TwoLevels, WhereNoTrialHasASumItIsToldOnceAndTheFitStands) {
    Workspace before = Work;
    before.YieldInterval = 0;
    Work.YieldInterval = 0;
    Outside.ExpectMessage({"No confidence limit was found\n\nThe fitted values cannot be computed before the "
                           "sum has grown enough. The data do not determine Zero Offset, set 1. Hold it.",
                           "Quillon", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
                          BoxAnswer::Ok);
    Search();
    EXPECT_EQ(Work.LimitsDone, 0);
    EXPECT_EQ(Work.AbortFit, 0);
    ExpectFitAsBefore(before);
}

TEST_F(ConfidenceTest, AFunctionThatOverflowsOnTheWayIsFarBeyondAndTheLimitIsFound) {
    MakeLevels({{1.0F, 2.0F, 6.0F}});
    Work.FreeMap[SlotA(1)] = 0;
    Work.FreeMap[SlotOffset(1)] = SlotHeld;
    NumberFitted();
    Work.Parms[SlotA(1)] = 1.0F;
    ASSERT_TRUE(RunFit());
    Work.NormMatrix(0, 0) = 1e4; // an error of a hundred, in the logarithm: the first trials overflow
    const Workspace before = Work;
    Search();
    EXPECT_EQ(Work.LimitsDone, FlagTrue);
    ExpectFitAsBefore(before);
    // 3 (c - 3)^2 grows to the share of the ratio: c = 3 + sqrt((ratio - 1) S / 3).
    const double c = 3.0 + std::sqrt((Widen(Work.ConfidenceRatio) - 1.0) * Work.SumSq / 3.0);
    EXPECT_NEAR(std::exp(Limit(1, 0)), c, 0.03 * c) << "2.5e-5 of an error of some hundred";
}

// The limits of one set are open, since its level hangs in nothing; those of the other one are found all the
// same. One failing direction used to end the search.
TEST_F(TwoLevels, ADirectionWithoutAnEndLeavesTheOthersTheirLimits) {
    Work.NormMatrix(1, 1) = 0.0; // no step is taken along this one
    const Workspace before = Work;
    Search();
    ASSERT_EQ(Work.LimitsDone, FlagTrue);
    ExpectFitAsBefore(before);
    EXPECT_TRUE(LimitFound(FreePos(0), false));
    EXPECT_TRUE(LimitFound(FreePos(0), true));
    EXPECT_NEAR(Limit(1, 0) - Limit(0, 0), 2.0 * Reach(1.0, 0.0), 4.0 * Tolerance);
    EXPECT_FALSE(LimitFound(FreePos(1), false));
    EXPECT_FALSE(LimitFound(FreePos(1), true));
    EXPECT_EQ(Work.LimitReason[0], "");
    EXPECT_EQ(Work.LimitReason[1], "The data do not determine Zero Offset, set 2. Hold it.");
}

TEST_F(TwoLevels, LimitsKeepTheLevelThatTheyWereSearchedWith) {
    Work.ConfidenceLevel = 0.683F;
    Search();
    Work.ConfidenceLevel = 0.95F;
    EXPECT_EQ(Work.LimitsLevel, 0.683F);
    Search();
    EXPECT_EQ(Work.LimitsLevel, 0.95F);
}

TEST_F(TwoLevels, WithoutADirectionItIsToldOnce) {
    Work.RmsResidual = 0.0F;
    const Workspace before = Work;
    Outside.ExpectMessage(
        "No confidence limit was found\n\nThe data do not determine Zero Offset, set 1. Hold it.");
    Search();
    EXPECT_EQ(Work.LimitsDone, 0);
    ExpectFitAsBefore(before);
}

TEST_F(TwoLevels, LevelsWithoutAnFValueAreTold) {
    for (const float p : {0.0F, 1.0F}) {
        Work.ConfidenceLevel = p;
        Outside.ExpectMessage("Error 'Invalid procedure call or argument' occurred while searching for "
                              "confidence limits");
        Search();
        EXPECT_EQ(Work.LimitsDone, 0);
    }
}

TEST_F(TwoLevels, RestoredFitWithoutAnyTrialYet) {
    // What a saved fit does not hold: the marks of the last bounds check.
    Work.AtBound.Recreate(-1);
    Search();
    EXPECT_EQ(Work.LimitsDone, FlagTrue);
    EXPECT_EQ(Work.AtBound.Hi(), -1);
}

// --- a real model
// ----------------------------------------------------------------------------------------------------

// Two scans of one sample under the same optics, tied or not, offsets held.
void MakeTwoScansOfOneSample() {
    MakeSets(2, 60, 5);
    Work.MonitorMode = Monitor::None;
    for (const long row : {1L, 2L}) {
        Work.ScanRPM[row] = Work.ScanRPM[1];
        Work.CellPath[row] = 1.2F;
        Work.ExtinctionRatio[0][row] = Work.ExtinctionRatio[1][row] = 1.0F;
        Work.SetSigmaScale[row] = Work.SetSignalScale[row] = 1.0F;
        Work.ScanRadius[row].Recreate(60);
        for (long p = 1; p <= 60; ++p)
            Work.ScanRadius[row][p] = 6.8F + 0.004F * static_cast<float>(p);
    }
    Work.ConvergenceLimit = 1e-4F;
}

void FitMassAndConcentration() {
    ChooseModel(1, false, false);
    for (long set = 1; set <= Work.NumSets; ++set) {
        Work.FreeMap[SlotOffset(set)] = SlotHeld;
        Work.Parms[SlotOffset(set)] = 0.0F;
    }
    NumberFitted();
    BuildParmScale();
    SetDefaultBounds();
    ASSERT_TRUE(RunFit()) << Work.Outcome.Sentence;
    ASSERT_EQ(Work.NumFree, 2);
}

// A tie at the same radii makes one set of two: the same sum of squares, and the same limits.
TEST_F(ConfidenceTest, TiedSetsHaveTheLimitsOfOneSetWithThePointsOfBoth) {
    MakeTwoScansOfOneSample();
    Work.ConcLink[2] = 1;
    FitMassAndConcentration();
    Search();
    ASSERT_EQ(Work.LimitsDone, FlagTrue);
    const std::array<PerFree<float>, 2> tied = Work.ParmLimits;
    const double sum = Work.SumSq;
    for (long end = 0; end <= Work.ConfTrace.ColumnHi(); ++end) // the follower goes with its leader
        EXPECT_FLOAT_EQ(Work.ConfTrace(SlotA(2), end), Work.ConfTrace(SlotA(1), end)) << end;

    MakeTwoScansOfOneSample();
    Work.ConcLink[2] = 0;
    for (std::int16_t& set : Work.PtSet)
        set = 1;
    Work.NumSets = 1;
    Work.NumParms = ToInt16(NumSlots(1));
    Work.SetPts.Recreate(1, Work.NumPts);
    FitMassAndConcentration();
    EXPECT_NEAR(Work.SumSq / sum, 1.0, 1e-6);
    Search();
    for (long a = 0; a < 2; ++a)
        for (const std::size_t side : {0U, 1U}) {
            const double error = std::sqrt(Work.NormMatrix(a, a)) * Widen(Work.RmsResidual);
            EXPECT_NEAR(Widen(tied[side][a]), Limit(static_cast<long>(side), a), 2e-3 * error) << a << side;
        }
}

// Every end point stands where the sum of squares, summed up once more in long double, has grown to the
// ratio.
TEST_F(ConfidenceTest, EndPointsOfModelsReachTheRatio) {
    for (const char* name : {"Model01", "Model02", "Model03NonIdeal", "Model04SeparateK",
                             "Model07Constrained", "Model08Linked", "Model10", "Model20"}) {
        Work = SimulatedWorkspace(ModelCaseNamed(name));
        Work.MonitorMode = 0;
        Work.ConvergenceLimit = 1e-4F;
        BuildParmScale();
        SetDefaultBounds();
        ASSERT_TRUE(RunFit()) << name;
        Search();
        ASSERT_EQ(Work.LimitsDone, FlagTrue) << name;
        const Real best = EvaluateReference(Work, ReferenceParms(Work)).SumSq;
        for (long end = 0; end <= Work.ConfTrace.ColumnHi(); ++end) {
            RealVector there = ReferenceParms(Work);
            bool atBound = false;
            for (long k = 0; k < Work.NumParms; ++k) {
                there[static_cast<std::size_t>(k)] = Work.ConfTrace(k, end);
                const float user = ToUserUnits(SlotNo(k), Work.ConfTrace(k, end));
                if (Work.FreeMap[k] >= 0)
                    atBound = atBound || user == Work.Bounds[0][k] || user == Work.Bounds[1][k];
            }
            EXPECT_FALSE(atBound) << name << ", end " << end;
            const Real growth = EvaluateReference(Work, there).SumSq / best - 1;
            const double wanted = Widen(Work.ConfidenceRatio) - 1.0;
            // The step is found to 2.5e-5 of a standard deviation of some four to six, the growth goes with
            // its square; parameters are stored to 6e-8 of their size, which strongly correlated ones show.
            EXPECT_NEAR(static_cast<double>(growth) / wanted, 1.0, 2e-3) << name << ", end " << end;
        }
        for (long a = 0; a < Work.NumFree; ++a) {
            EXPECT_LT(Work.ParmLimits[0][a], Work.Parms[Work.FreeIndex[a]]) << name << " " << a;
            EXPECT_GT(Work.ParmLimits[1][a], Work.Parms[Work.FreeIndex[a]]) << name << " " << a;
        }
    }
}

// The matrix was read all the same, as if it stood.
TEST_F(ConfidenceTest, AFitWithoutAnInverseHasNoAxesAndSaysSo) {
    Fit({{1.0F, 2.0F, 3.0F}});
    Work.NormMatrix.Recreate(-1, -1);
    const Workspace before = Work;
    Outside.ExpectMessage("No confidence limit was found\n\nThe normal matrix of the fit has no inverse.");
    Search();
    EXPECT_EQ(Work.LimitsDone, 0);
    EXPECT_TRUE(Work.Parms == before.Parms);
    EXPECT_TRUE(HasNoError(FreePos(0)));
    EXPECT_TRUE(IsUndetermined(FreePos(0)));
}

} // namespace
} // namespace Quillon
