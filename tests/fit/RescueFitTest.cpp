// Fits that do not end at the minimum by themselves: better starts, and the look behind a minimum.
#include "RescueCase.h"
#include "fit/BetterStarts.h"
#include "fit/Misfit.h"
#include "fit/SetBySet.h"
#include "fit/equations/Bounds.h"
#include "fit/equations/NormalEquations.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

namespace Quillon {
namespace {

class RescueFitTest : public RescueCase {};

// What a fit gets behind it where damped steps are always wanted.
void GoOn(const PerSlot<float>& start) {
    if (Work.Outcome.End != FitEnd::Converged) RescueFit(start);
    if (const auto lower = FindLowerMinimum(start)) Work = *lower;
}

// --- the table of docs/robustness.md, one seed of it

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
    for (const std::uint64_t seed : {1UL, 2UL})
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

// One set of fifteen in the wrong proportion: the sum was a hundredth above the lowest one.
TEST_F(RescueFitTest, ASetThatIsCaughtWithinTheNoiseIsFreedBehindARescue) {
    for (const std::uint64_t draw : {57UL, 97UL}) {
        LoadMixture({8, 1}, draw);
        RunFit();
        const double least = Work.SumSq;
        StartFromDefaults();
        const PerSlot<float> start = Work.Parms;
        RunFit();
        ASSERT_NE(Work.Outcome.End, FitEnd::Converged) << draw;
        EXPECT_TRUE(RescueFit(start)) << draw;
        EXPECT_LT(Work.SumSq, 1.001 * least) << draw;
    }
}

// A wave of so many times the noise in the residuals of one set of a hundred points.
Doubt DoubtWithAWave(double amplitude) {
    Workspace fit = Work;
    const auto noise = static_cast<double>(fit.RmsResidual);
    for (long p = 1; p <= 100; ++p)
        fit.PtFit[p] += static_cast<float>(amplitude * noise *
                                           std::cos(std::numbers::pi * static_cast<double>(p) / 50.0));
    return DoubtAbout(fit);
}

TEST_F(RescueFitTest, DoubtGrowsWithWhatASetLeaves) {
    LoadMixture({8, 1}, 7);
    RunFit();
    ASSERT_EQ(Work.Outcome.End, FitEnd::Converged);
    ASSERT_EQ(Work.PtSet[100], 1);
    std::vector<Doubt> met{DoubtWithAWave(0.0)};
    for (int i = 1; i <= 50; ++i)
        if (const Doubt doubt = DoubtWithAWave(0.02 * i); doubt != met.back()) met.push_back(doubt);
    EXPECT_EQ(met, (std::vector<Doubt>{Doubt::None, Doubt::Slight, Doubt::Some, Doubt::Clear}));
}

// --- minima that lie no further from the data than the noise lets them

struct CaughtFit {
    const char* Case;
    double Noise;
    std::uint64_t Seed;
    double Reach;
};

// The case with short sets, which tell less. Gives the start; the sum of the fit from the truth in least.
PerSlot<float> StartCaught(const CaughtFit& fit, double& least) {
    ModelCase shortSets = ModelCaseNamed(fit.Case);
    shortSets.Noise = fit.Noise;
    for (SimulatedSet& set : shortSets.Sets)
        set.Points = std::min(set.Points, 40);
    LoadRobustnessCase(shortSets, fit.Seed);
    const Workspace truth = Work;
    RunFit();
    least = Work.SumSq;
    Work = truth;
    StartFarOff(fit.Reach, fit.Seed);
    return Work.Parms;
}

// How much lower the minimum is that is found behind a fit that stands so much above the lowest one, in some
// doubt that no sentence tells.
void ExpectToBeFreed(const CaughtFit& fit) {
    double least = 0.0;
    const PerSlot<float> start = StartCaught(fit, least);
    RunFit();
    if (Work.Outcome.End != FitEnd::Converged) RescueFit(start);
    ASSERT_EQ(Work.Outcome.End, FitEnd::Converged) << fit.Case;
    EXPECT_GT(Work.SumSq, 1.05 * least) << fit.Case << " is no longer caught";
    EXPECT_EQ(MisfitText(), "") << fit.Case;
    const auto lower = FindLowerMinimum(start);
    ASSERT_TRUE(lower.has_value()) << fit.Case << ", seed " << fit.Seed;
    EXPECT_LT(lower->SumSq, 1.002 * least) << fit.Case << ", seed " << fit.Seed;
}

TEST_F(RescueFitTest, ASpeciesTooHeavyThatAssociatesTooWeaklyWasNotLookedBehind) {
    ExpectToBeFreed({"Model02", 0.003, 77, 6.0});
    ExpectToBeFreed({"Model02Linked", 0.003, 229, 3.0});
}

TEST_F(RescueFitTest, MixturesInAnotherMinimumWithinTheNoiseWereNotLookedBehind) {
    ExpectToBeFreed({"Model14", 0.006, 5, 3.0});
    ExpectToBeFreed({"Model14", 0.006, 79, 6.0});
    ExpectToBeFreed({"Model13", 0.003, 9, 3.0});
    ExpectToBeFreed({"Model13", 0.003, 49, 3.0});
}

// The start was taken where it stood: given as the parameters of the fit, it became each search's own end.
TEST_F(RescueFitTest, AStartGivenAsTheFitsOwnParametersWentAlongWithThem) {
    Fail("Model12", 6.0, 2);
    ASSERT_NE(Work.Outcome.End, FitEnd::Converged);
    const Workspace failed = Work;
    const PerSlot<float> start = Work.Parms;
    RescueFit(start);
    const Workspace apart = Work;
    Work = failed;
    RescueFit(Work.Parms);
    EXPECT_TRUE(Work == apart);
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

} // namespace
} // namespace Quillon
