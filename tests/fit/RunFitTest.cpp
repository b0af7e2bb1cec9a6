// The loop of the fit: when it ends, what it says, what it leaves behind.
#include "SyntheticFit.h"
#include "fit/GNLLSQ.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Quillon {
namespace {

// What a fit has to have concluded; nothing of it is told by the engine.
void ExpectOutcome(FitEnd end, const std::string& sentence) {
    EXPECT_EQ(Work.Outcome.End, end);
    EXPECT_EQ(Work.Outcome.Sentence, sentence);
}

const std::string SumsFailed = "Math Error during sums over data points, aborting fit";
const std::string FunctionFault = "Math error during function evaluation, aborting fit";
const std::string NoInverse = "Singular Matrix - Fit Aborted";

class RunFitTest : public testing::Test {
protected:
    void SetUp() override {
        Work = FreshWorkspace();
        MakeLevels({{0.25F, 0.75F, 0.25F, 0.75F}});
    }
    static void ExpectFailure(FitEnd end, const std::string& sentence) {
        EXPECT_FALSE(RunFit());
        ExpectOutcome(end, sentence);
        EXPECT_EQ(Work.FitDone, 0);
    }
    static void ExpectFailedConvergence(int iterations) {
        ExpectFailure(FitEnd::TooManyIterations,
                      "Convergence failed after " + std::to_string(iterations) + " iterations");
    }
    Script Outside;
};

// --- the convergence test
// ------------------------------------------------------------------------------------

class Convergence : public RunFitTest {
protected:
    void SetUp() override {
        RunFitTest::SetUp();
        Work.NumPts = 12;
        Work.NumFree = 2;
        Work.ConvergenceLimit = 0.05F; // 0.005 for each of ten degrees of freedom
        Work.Iteration = 2;
        Work.SumSq = 1.0;
        Work.LastSumSq = 1.0;
    }
};

TEST_F(Convergence, ComparesTheRelativeChangeWithTheLimitPerDegreeOfFreedom) {
    EXPECT_TRUE(FitConverged());
    Work.LastSumSq = 1.0049;
    EXPECT_TRUE(FitConverged());
    Work.LastSumSq = 1.0051;
    EXPECT_FALSE(FitConverged());
    Work.LastSumSq = 1.0 - 0.0049; // a rise counts like a fall
    EXPECT_TRUE(FitConverged());
    Work.LastSumSq = 1.0 - 0.0051;
    EXPECT_FALSE(FitConverged());
    Work.SumSq = 1e-6;
    Work.LastSumSq = 1.0051e-6;
    EXPECT_FALSE(FitConverged());
}

TEST_F(Convergence, LimitHasToBeGreaterInSinglePrecision) {
    Work.NumPts = 4;
    Work.ConvergenceLimit = 0.5F; // 1/4 for each of two degrees
    Work.LastSumSq = 1.25;
    EXPECT_FALSE(FitConverged());
    Work.LastSumSq = 1.25 - 1e-10; // rounds to 1/4
    EXPECT_FALSE(FitConverged());
    Work.LastSumSq = 1.25 - 1e-7;
    EXPECT_TRUE(FitConverged());
}

TEST_F(Convergence, NeedsTwoIterations) {
    Work.Iteration = 1;
    EXPECT_FALSE(FitConverged());
}

TEST_F(Convergence, RefusesWhileAParameterIsClipped) {
    Work.BoundHit = 1;
    EXPECT_FALSE(FitConverged());
}

TEST_F(Convergence, RefusesASumOfZero) {
    Work.SumSq = Work.LastSumSq = 0.0;
    EXPECT_FALSE(FitConverged());
    Work.NumPts = Work.NumFree; // the sum is looked at first
    EXPECT_FALSE(FitConverged());
}

TEST_F(Convergence, HugeChangeIsNoConvergence) {
    Work.SumSq = 1e-200;
    EXPECT_FALSE(FitConverged());
}

TEST_F(Convergence, WithoutADegreeOfFreedomIsAnError) {
    Work.NumPts = Work.NumFree;
    EXPECT_THROW(FitConverged(), RuntimeError);
}

TEST_F(Convergence, FewerPointsThanParametersNeverConverge) {
    Work.NumPts = 1;
    EXPECT_FALSE(FitConverged());
}

// --- a fit that succeeds
// ---------------------------------------------------------------------------------------

TEST_F(RunFitTest, LinearFitEndsAtTheMean) {
    Level() = -3.0F;
    EXPECT_TRUE(RunFit());
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.SumSq, 0.25);
    EXPECT_EQ(Work.Iteration, 2) << "the first step does it all, and still a second one is taken";
    EXPECT_EQ(Work.RmsResidual, static_cast<float>(std::sqrt(0.25 / 3)));
    EXPECT_EQ(Work.NormMatrix(0, 0), 0.25) << "the inverse of the number of points";
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.FitValid, FlagTrue);
    EXPECT_EQ(Work.LimitsDone, 0);
    EXPECT_EQ(Work.Outcome, (FitOutcome{FitEnd::Converged, "", "", 0.0})) << "nothing is left to be gained";
    EXPECT_EQ(Work.AtBound.Hi(), Work.NumFree);
    for (long p = 1; p <= 4; ++p)
        EXPECT_EQ(Work.PtFit[p], 0.5F);
}

TEST_F(RunFitTest, SetsAreFittedEachByItself) {
    MakeLevels({{1.0F, 2.0F, 3.0F}, {-1.0F, -1.5F}, {8.0F}});
    EXPECT_TRUE(RunFit());
    EXPECT_EQ(Level(1), 2.0F);
    EXPECT_EQ(Level(2), -1.25F);
    EXPECT_EQ(Level(3), 8.0F);
    EXPECT_DOUBLE_EQ(Work.SumSq, 2.0 + 0.125);
    EXPECT_EQ(Work.RmsResidual, static_cast<float>(std::sqrt(2.125 / 3)));
    const double inverse[] = {1.0 / 3, 1.0 / 2, 1.0};
    for (long a = 0; a < 3; ++a)
        for (long b = 0; b < 3; ++b)
            EXPECT_DOUBLE_EQ(Work.NormMatrix(a, b), a == b ? inverse[a] : 0.0);
}

TEST_F(RunFitTest, TiedOffsetIsFittedAgainstBothSets) {
    MakeLevels({{1.0F, 2.0F, 3.0F}, {10.0F}});
    Work.ConstraintFlags = OffsetBit;
    Work.OffsetLink[2] = 1;
    ApplyModelFlags();
    NumberFitted();
    Work.FreeMap[0] = SlotHeld;
    EXPECT_EQ(Work.FreeMap[SlotOffset(2)], SlotTied);
    for (const long k : {0L, SlotA(1), SlotA(2)})
        Work.FreeMap[k] = SlotHeld;
    NumberFitted();
    EXPECT_TRUE(RunFit());
    EXPECT_EQ(Level(1), 4.0F);
    EXPECT_EQ(Level(2), 4.0F);
    EXPECT_EQ(Work.NormMatrix(0, 0), 0.25);
}

TEST_F(RunFitTest, StartsAfreshWhateverTheLastFitLeft) {
    Work.Alpha = -0.3;
    Work.Iteration = 39;
    Work.LastSumSq = 1.0;
    Work.LimitsDone = Work.FitDone = FlagTrue;
    Work.Singular = 1;
    Work.BoundHit = 1;
    Work.Outcome = {FitEnd::Singular, "old"};
    Work.AtBound.Recreate(0);
    EXPECT_TRUE(RunFit());
    EXPECT_EQ(Work.Iteration, 2);
    EXPECT_EQ(Work.LimitsDone, 0);
    EXPECT_EQ(Work.Singular, 0);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
}

TEST_F(RunFitTest, ScaleFollowsTheFittedStoichiometry) {
    // The addend of ln K in molar units holds (N - 1) ln U - ln N.
    Work.ConcUnits = 2;
    Work.ParmScale.Recreate(Work.MaxParms - 1, 77.0F);
    Work.Parms[1] = 3.0F;
    EXPECT_TRUE(RunFit());
    const double u = static_cast<double>(Work.ExtA) * static_cast<double>(Work.CellPath[1]);
    EXPECT_NEAR(static_cast<double>(Work.ParmScale[2]), 2.0 * std::log(u) - std::log(3.0), 1e-5);
}

// --- ends without success
// ----------------------------------------------------------------------------------------

TEST_F(RunFitTest, LastPermittedIterationFailsEvenIfItWouldConverge) {
    Work.MaxIterations = 2;
    ExpectFailedConvergence(2);
    EXPECT_EQ(Level(), 0.5F) << "the parameters stay at the last step";
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_TRUE(FitConverged());
    EXPECT_EQ(Work.Outcome, (FitOutcome{FitEnd::TooManyIterations, "Convergence failed after 2 iterations"}));
    EXPECT_EQ(Work.AbortFit, 0);
    Work.MaxIterations = 3;
    Level() = -3.0F;
    EXPECT_TRUE(RunFit());
}

TEST_F(RunFitTest, OneIterationIsNeverEnough) {
    Work.MaxIterations = 1;
    ExpectFailedConvergence(1);
    EXPECT_EQ(Work.Iteration, 1);
}

TEST_F(RunFitTest, ExactFitNeverConverges) {
    MakeLevels({{0.5F, 0.5F, 0.5F, 0.5F}});
    ExpectFailedConvergence(40);
    EXPECT_EQ(Work.SumSq, 0.0);
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.Iteration, 40);
}

TEST_F(RunFitTest, PressingAgainstABoundNeverConverges) {
    Work.Bounds[1][SlotOffset(1)] = 0.375F;
    Work.MaxIterations = 7;
    ExpectFailedConvergence(7);
    EXPECT_EQ(Level(), 0.375F);
    EXPECT_EQ(Work.BoundHit, 1);
    EXPECT_EQ(Work.AtBound[0], 1);
}

TEST_F(RunFitTest, AsManyPointsAsParametersDivideByZero) {
    // The bound keeps the one parameter from the one point, so that the sum is not zero.
    MakeLevels({{1.0F}});
    Work.Bounds[1][SlotOffset(1)] = 0.5F;
    ExpectFailure(FitEnd::MathError, "Error 'Division by zero' occurred during the fit, aborting fit");
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Work.Outcome.End, FitEnd::MathError);
}

TEST_F(RunFitTest, ExactFitOfAsManyPointsAsParametersRunsOut) {
    MakeLevels({{1.0F}, {-2.5F}});
    Work.MaxIterations = 5;
    ExpectFailedConvergence(5);
    EXPECT_EQ(Level(1), 1.0F);
    EXPECT_EQ(Level(2), -2.5F);
}

TEST_F(RunFitTest, ParameterWithoutInfluenceIsSingular) {
    Work.FreeMap[SlotA(1)] = 0; // of a concentration of 0
    NumberFitted();
    Level() = -3.0F;
    ExpectFailure(FitEnd::Singular, NoInverse);
    EXPECT_EQ(Level(), -3.0F) << "no step is taken";
    EXPECT_EQ(Work.Singular, 1);
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.AbortFit, 0);
    EXPECT_EQ(Work.Outcome.Reason, "No point depends on " + Work.ParmName[SlotA(1)] + ". Hold it.");
    EXPECT_EQ(Work.FitValid, FlagTrue) << "the pass itself was complete";
}

TEST_F(RunFitTest, WithoutPointsIsSingular) {
    MakeLevels({{}});
    ExpectFailure(FitEnd::Singular, NoInverse);
}

// --- arithmetic
// --------------------------------------------------------------------------------------------------

TEST_F(RunFitTest, YieldIntervalOfZeroIsAMathError) {
    Work.YieldInterval = 0;
    ExpectFailure(FitEnd::MathError, SumsFailed);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Work.FitValid, 0);
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.Outcome.End, FitEnd::MathError);
    EXPECT_EQ(Work.Outcome.Reason, "Division by zero.") << "no place is to blame; the pass says what it was";
}

TEST_F(RunFitTest, YieldIntervalOfZeroStopsAPassWithoutDerivativesToo) {
    Work.YieldInterval = 0;
    CalcSumSq();
    ExpectOutcome(FitEnd::MathError, SumsFailed);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Work.FitValid, 0);
}

TEST_F(RunFitTest, FittedValueBeyondASingleIsAMathError) {
    Work.Parms[SlotA(1)] = 100.0F; // e^100 = 2.7e43
    ExpectFailure(FitEnd::MathError, SumsFailed);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
}

TEST_F(RunFitTest, FunctionBeyondADoubleIsToldByTheFunction) {
    Work.Parms[SlotA(1)] = 1000.0F;
    ExpectFailure(FitEnd::MathError, FunctionFault);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Work.FunctionFailed, FlagTrue);
    EXPECT_EQ(Work.FitValid, 0);
    EXPECT_EQ(Work.Outcome.End, FitEnd::MathError);
}

// A value of 1 at x = 30000 whose sigma is stepped by 0.02: e^600 over the step, squared, has no double.
TEST_F(RunFitTest, DerivativesThatOverflowTheSumsAreAMathError) {
    Work.Parms[0] = 2.0F;
    Work.Parms[SlotA(1)] = -60000.0F;
    for (long p = 1; p <= 4; ++p)
        Work.PtX[p] = 30000.0F;
    Work.FreeMap[0] = 0;
    NumberFitted();
    ExpectFailure(FitEnd::MathError, SumsFailed);
    EXPECT_NE(Work.Outcome.Reason.find(" with " + Work.ParmName[0] + " is beyond any number."),
              std::string::npos)
        << Work.Outcome.Reason;
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Work.FitValid, 0);
    Work.AbortFit = 0;
    AccumulateSumsPlainly();
    ExpectOutcome(FitEnd::MathError, SumsFailed);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
}

// The two math errors told neither the set nor the point nor the parameter.
TEST_F(RunFitTest, AMathErrorToldNeitherWhereNorByWhat) {
    const std::string conc = Work.ParmName[SlotA(1)];
    Work.Parms[SlotA(1)] = 1000.0F;
    ExpectFailure(FitEnd::MathError, FunctionFault);
    const std::string place = "The fitted value of data set 1 at ";
    EXPECT_TRUE(Work.Outcome.Reason.starts_with(place)) << Work.Outcome.Reason;
    EXPECT_NE(Work.Outcome.Reason.find(" is beyond any number, most likely by " + conc + " = 1000"),
              std::string::npos)
        << Work.Outcome.Reason;
    Work.AbortFit = FlagFalse;
    Work.Parms[SlotA(1)] = 100.0F; // a number in doubles, none in singles
    ExpectFailure(FitEnd::MathError, SumsFailed);
    EXPECT_NE(Work.Outcome.Reason.find("by " + conc + " = 100"), std::string::npos) << Work.Outcome.Reason;
}

TEST_F(RunFitTest, AMathErrorOfTheDataNamesThePoint) {
    MakeLevels({{1.0F, 2.0F}, {3.0F, std::numeric_limits<float>::infinity(), 3.0F}});
    ExpectFailure(FitEnd::MathError, SumsFailed);
    EXPECT_TRUE(Work.Outcome.Reason.starts_with("The measured value of data set 2 at "))
        << Work.Outcome.Reason;
}

TEST_F(RunFitTest, AMathErrorWithoutAStepOrWithoutFreedomSaysSo) {
    Work.FreeMap[0] = 0;
    NumberFitted();
    Work.Parms[0] = 0.0F; // a step of a hundredth of nothing
    ExpectFailure(FitEnd::MathError, SumsFailed);
    EXPECT_TRUE(Work.Outcome.Reason.ends_with(" leaves no step for its derivative.")) << Work.Outcome.Reason;
    EXPECT_TRUE(Work.Outcome.Reason.starts_with(Work.ParmName[0] + " = ")) << Work.Outcome.Reason;
    Work.AbortFit = FlagFalse;
    MakeLevels({{1.0F}});
    Work.Bounds[1][SlotOffset(1)] = 0.5F;
    ExpectFailure(FitEnd::MathError, "Error 'Division by zero' occurred during the fit, aborting fit");
    EXPECT_EQ(Work.Outcome.Reason, "There are no more points (1) than fitted parameters (1).");
}

// The parameter that the step has carried away, and not one that was large before.
TEST_F(RunFitTest, AMathErrorNamesTheParameterThatTheStepHasMoved) {
    Work.FreeMap[SlotA(1)] = 0;
    NumberFitted();
    Work.Parms[SlotA(1)] =
        -8.0F; // the data ask for e^8 times as much, the slope for thousands of steps of one
    Work.Parms[0] = 1.0F;
    Work.FreeMap[SlotOffset(1)] = SlotHeld;
    NumberFitted();
    EXPECT_FALSE(RunFit());
    ASSERT_EQ(Work.Outcome.End, FitEnd::MathError) << Work.Outcome.Sentence;
    EXPECT_NE(Work.Outcome.Reason.find("by " + Work.ParmName[SlotA(1)] + " = "), std::string::npos)
        << Work.Outcome.Reason;
}

TEST_F(RunFitTest, SecondFitAfterAMathErrorIsAsGoodAsNew) {
    Work.Parms[SlotA(1)] = 1000.0F;
    ExpectFailure(FitEnd::MathError, FunctionFault);
    Work.AbortFit = 0;
    Work.Parms[SlotA(1)] = -800.0F;
    EXPECT_TRUE(RunFit());
    EXPECT_EQ(Work.FunctionFailed, 0);
    EXPECT_EQ(Level(), 0.5F);
}

// --- cancel
// --------------------------------------------------------------------------------------------------------

TEST_F(RunFitTest, FlagThatIsSetAlreadyRunsNothing) {
    Work.AbortFit = FlagTrue;
    Level() = -3.0F;
    EXPECT_FALSE(RunFit());
    EXPECT_EQ(Work.Iteration, 0);
    EXPECT_EQ(Level(), -3.0F);
    EXPECT_EQ(Work.AbortFit, FlagTrue) << "left for the caller";
    EXPECT_EQ(Work.Outcome, (FitOutcome{FitEnd::Cancelled, "The fit was cancelled"}));
}

TEST_F(RunFitTest, CancelAtAnyServiceOfTheQueueEndsSilently) {
    Work.YieldInterval = 1;
    int events = 0;
    Outside.DuringEvents = [&] { ++events; };
    EXPECT_TRUE(RunFit());
    const int all = events;
    for (int at = 1; at <= all; ++at) {
        events = 0;
        Outside.DuringEvents = [&] {
            if (++events == at) Work.AbortFit = FlagTrue;
        };
        Work.AbortFit = 0;
        Level() = -3.0F;
        EXPECT_FALSE(RunFit()) << at;
        EXPECT_EQ(events, at) << "nothing is done any more";
        EXPECT_EQ(Work.AbortFit, FlagTrue);
        EXPECT_EQ(Work.FitDone, 0);
        EXPECT_EQ(Work.Outcome.End, FitEnd::Cancelled);
    }
}

TEST_F(RunFitTest, InversionTellsASingularMatrix) {
    Work.NormMatrix.Recreate(1, 1, 1.0);
    Work.NormVector.Recreate(1, 1.0);
    Work.NumFree = 2;
    InvertNormalMatrix();
    EXPECT_EQ(Work.Singular, 1);
    Work.NormMatrix(1, 1) = 2.0;
    Work.NormMatrix(0, 1) = Work.NormMatrix(1, 0) = 0.0;
    Work.NormVector[1] = 6.0;
    InvertNormalMatrix();
    EXPECT_EQ(Work.Singular, 0);
    EXPECT_EQ(Work.Increment[0], 1.0);
    EXPECT_EQ(Work.Increment[1], 3.0);
    EXPECT_EQ(Work.Increment.Hi(), 1);
}

} // namespace
} // namespace Quillon
