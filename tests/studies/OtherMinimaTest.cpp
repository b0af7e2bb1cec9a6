// Other minima of an analysis: random starts, what they come to, and what is taken of it.
#include "studies/methods/OtherMinima.h"
#include "FittedCase.h"
#include "fit/GNLLSQ.h"
#include "platform/Platform.h"
#include "studies/methods/RestartStart.h"
#include "tests/support/ReferenceFit.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace Quillon {
namespace {

void ToldNothing(long) {}

bool SameTable(const MinimaMet& a, const MinimaMet& b) {
    if (a.Minima.size() != b.Minima.size() || a.Ended != b.Ended || a.Failed != b.Failed) return false;
    for (std::size_t i = 0; i < a.Minima.size(); ++i) {
        const Minimum& x = a.Minima[i];
        const Minimum& y = b.Minima[i];
        if (x.Count != y.Count || x.IsOwn != y.IsOwn || !(x.Fit == y.Fit)) return false;
    }
    return true;
}

// Two independent sites: which of the two constants is called the first makes no difference to the signal, so
// that there are two minima with the same sum, mirror images of each other.
TEST(OtherMinima, FindsTheTwinWithExchangedConstants) {
    Script script;
    FitCase("Model10");
    const double own = Work.SumSq;
    const float k1 = Work.Parms[6], k2 = Work.Parms[7];
    const MinimaMet met = SearchOtherMinima({12, 1}, ToldNothing);
    EXPECT_EQ(met.Ended, 13);
    ASSERT_GE(met.Minima.size(), 2U);
    const Minimum& a = met.Minima[0];
    const Minimum& b = met.Minima[1];
    EXPECT_NE(a.IsOwn, b.IsOwn);
    const Workspace& twin = a.IsOwn ? b.Fit : a.Fit;
    EXPECT_NEAR(twin.SumSq / own, 1.0, 1e-4);
    const double error =
        std::sqrt(twin.NormMatrix(twin.FreeMap[6], twin.FreeMap[6])) * static_cast<double>(twin.RmsResidual);
    EXPECT_NEAR(static_cast<double>(twin.Parms[6]), static_cast<double>(k2), 0.1 * error);
    EXPECT_NEAR(static_cast<double>(twin.Parms[7]), static_cast<double>(k1), 0.1 * error);
    EXPECT_EQ(a.Count + b.Count + met.Failed, 13);
}

// One minimum only: all that end at one are counted there, and the user's own fit stands for it, bit for bit.
TEST(OtherMinima, CountsEndsOfOneMinimumTogether) {
    Script script;
    FitCase("Model02");
    const Workspace own = Work;
    const MinimaMet met = SearchOtherMinima({8, 1}, ToldNothing);
    ASSERT_EQ(met.Minima.size(), 1U);
    EXPECT_EQ(met.Minima[0].Count + met.Failed, 9);
    EXPECT_TRUE(met.Minima[0].IsOwn);
    EXPECT_TRUE(met.Minima[0].Fit == own);
    EXPECT_TRUE(met.Complete);
}

TEST(OtherMinima, IsTheSameTableWhateverTheNumberOfThreads) {
    Script script;
    FitCase("Model10");
    const MinimaMet loop = SearchOtherMinima({5, 2}, ToldNothing);
    for (const int threads : {1, 2, 16}) {
        UseThreads(threads);
        EXPECT_TRUE(SameTable(SearchOtherMinima({5, 2}, ToldNothing), loop)) << threads;
    }
    Host.RunPieces = [](long count, const auto& piece, const auto& watch) {
        for (long i = count; i-- > 0;)
            piece(i);
        watch(count);
    };
    EXPECT_TRUE(SameTable(SearchOtherMinima({5, 2}, ToldNothing), loop));
}

TEST(OtherMinima, LeavesTheUsersFitAsItIsUntilOneIsTaken) {
    Script script;
    FitCase("Model10");
    const Workspace own = Work;
    const MinimaMet met = SearchOtherMinima({6, 1}, ToldNothing);
    EXPECT_TRUE(Work == own);
    for (const Minimum& minimum : met.Minima) {
        Work = own;
        TakeMinimum(minimum);
        EXPECT_EQ(Work == own, minimum.IsOwn);
        EXPECT_EQ(Work.SumSq, minimum.Fit.SumSq);
        EXPECT_NE(Work.FitDone, 0);
        EXPECT_EQ(Work.LimitsDone, 0);
    }
}

// A fit that has ended nowhere: restarts come to the minimum that a dense search finds from the truth.
TEST(OtherMinima, ComesToTheMinimumThatTheFitHasMissed) {
    Script script;
    LoadCase(ModelCaseNamed("Model04"));
    const double least = static_cast<double>(FitReference(Work).End.SumSq);
    Work.StartParms[2] += 6.0F;
    Work.StartParms[4] -= 6.0F;
    Work.Outcome = {FitEnd::Singular, "Singular Matrix - Fit Aborted"};
    const MinimaMet met = SearchOtherMinima({6, 1}, ToldNothing);
    ASSERT_FALSE(met.Minima.empty());
    EXPECT_LE(met.Minima[0].Fit.SumSq, least * (1.0 + 1e-3));
    EXPECT_GE(met.Failed, 1); // the user's own
    EXPECT_FALSE(met.Minima[0].IsOwn);
    EXPECT_TRUE(std::is_sorted(met.Minima.begin(), met.Minima.end(),
                               [](const Minimum& a, const Minimum& b) { return a.Fit.SumSq < b.Fit.SumSq; }));
}

TEST(OtherMinima, ACancelShowsWhatThereIs) {
    Script script;
    FitCase("Model02");
    const MinimaMet met = SearchOtherMinima({20, 1}, [](long done) {
        if (done == 4) Work.AbortFit = FlagTrue;
    });
    EXPECT_FALSE(met.Complete);
    EXPECT_EQ(met.Ended, 4);
    ASSERT_FALSE(met.Minima.empty());
    EXPECT_TRUE(met.Minima[0].IsOwn);
}

// Without noise the sums are what singles leave of them, and differ by more than a millionth of themselves.
TEST(OtherMinima, DataWithoutNoiseHaveOneMinimum) {
    Script script;
    ModelCase exact = ModelCaseNamed("Model02");
    exact.Noise = 0.0;
    LoadCase(exact);
    RunFit();
    const MinimaMet met = SearchOtherMinima({6, 1}, ToldNothing);
    EXPECT_EQ(met.Minima.size(), 1U);
}

TEST(OtherMinima, NeedAFitOfTheAnalysisAsItStands) {
    Script script;
    FitCase("Model02");
    EXPECT_TRUE(CanRestart());
    const Workspace fitted = Work;
    const auto without = [&](auto&& change) {
        Work = fitted;
        change();
        return CanRestart();
    };
    EXPECT_FALSE(without([] { Work.NewData = Changed::Constraints; }));
    EXPECT_FALSE(without([] { Work.Model = 3; }));
    EXPECT_FALSE(without([] { Work.NonIdeal = FlagTrue; }));
    EXPECT_FALSE(without([] { Work.DataChosen = FlagFalse; }));
    EXPECT_FALSE(without([] { Work.FreeMap[Work.FreeIndex[0]] = SlotHeld; }));
    EXPECT_FALSE(without([] { std::swap(Work.FreeIndex[0], Work.FreeIndex[1]); }));
    EXPECT_TRUE(without([] { Work.FitDone = FlagFalse; })); // a fit that has failed
}

TEST(RestartStart, MovesWhatIsFittedWithinItsReach) {
    Script script;
    LoadCase(ModelCaseNamed("Model05"));
    const PerSlot<float> start = Work.Parms;
    for (int run = 0; run < 200; ++run) {
        Work.Parms = start;
        script.UniformNumbers = {0.005F * static_cast<float>(run), 0.995F - 0.004F * static_cast<float>(run)};
        MoveStart();
        for (const SlotNo slot : EachSlot()) {
            const double by = static_cast<double>(Work.Parms[slot]) - static_cast<double>(start[slot]);
            const double factor = static_cast<double>(Work.Parms[slot]) / static_cast<double>(start[slot]);
            const Quantity holds = RuleOfSlot(slot).Holds;
            if (holds == Quantity::Constant && IsFitted(slot)) {
                EXPECT_LE(std::fabs(by), 4.0 + 1e-5);
            } else if ((holds == Quantity::Mass || holds == Quantity::Stoichiometry) && IsFitted(slot)) {
                EXPECT_TRUE(factor > 0.7 - 1e-5 && factor < 1.4 + 1e-5) << factor;
            } else if (holds != Quantity::LnSignal) {
                EXPECT_EQ(Work.Parms[slot], start[slot]) << slot.Number;
            }
        }
    }
}

// Held concentrations are known; the guesses are for the others.
TEST(RestartStart, KeepsHeldConcentrations) {
    Script script;
    LoadCase(ModelCaseNamed("Model02"));
    Work.FreeMap[SlotA(2)] = SlotHeld;
    Work.NumFree = 0;
    for (const SlotNo slot : EachSlot())
        if (IsFitted(slot)) {
            Work.FreeIndex[Work.NumFree] = ToInt16(slot.Number);
            Work.FreeMap[slot] = Work.NumFree++;
        }
    const PerSlot<float> start = Work.Parms;
    MoveStart();
    EXPECT_EQ(Work.Parms[SlotA(2)], start[SlotA(2)]);
    EXPECT_NE(Work.Parms[SlotA(1)], start[SlotA(1)]);
}

// Two substances of known mass: nothing but concentrations could be elsewhere.
TEST(RestartStart, MovesConcentrationsWhereNothingElseIsFitted) {
    Script script;
    LoadCase(ModelCaseNamed("Model07"));
    for (const long slot : {0L, 5L})
        Work.FreeMap[slot] = SlotHeld;
    Work.NumFree = 0;
    for (const SlotNo slot : EachSlot())
        if (IsFitted(slot)) {
            Work.FreeIndex[Work.NumFree] = ToInt16(slot.Number);
            Work.FreeMap[slot] = Work.NumFree++;
        }
    const PerSlot<float> start = Work.Parms;
    script.UniformNumbers = {0.5F};
    MoveStart();
    const PerSlot<float> middle = Work.Parms;
    Work.Parms = start;
    script.UniformNumbers = {1.0F - 0x1p-24F};
    MoveStart();
    for (const SetNo set : EachSet()) {
        EXPECT_NEAR(static_cast<double>(Work.Parms[SlotA(set)] - middle[SlotA(set)]), 1.0, 1e-5);
        EXPECT_NEAR(static_cast<double>(Work.Parms[SlotB(set)] - middle[SlotB(set)]), 1.0, 1e-5);
        EXPECT_EQ(Work.Parms[SlotOffset(set)], start[SlotOffset(set)]);
    }
}

TEST(RestartStart, ConstantsOfTheSetsMoveTogether) {
    Script script;
    LoadCase(ModelCaseNamed("Model08SeparateK"));
    const PerSlot<float> start = Work.Parms;
    script.UniformNumbers = {0.9F, 0.1F, 0.3F};
    MoveStart();
    const float shift = Work.Parms[SlotOffset(1)] - start[SlotOffset(1)];
    EXPECT_NEAR(static_cast<double>(shift), 3.2, 1e-5);
    for (const SetNo set : EachSet())
        EXPECT_NEAR(static_cast<double>(Work.Parms[SlotOffset(set)] - start[SlotOffset(set)]),
                    static_cast<double>(shift), 1e-5);
    EXPECT_EQ(Work.Parms[6], start[6]); // common to none
}

// A start that keeps the concentrations of the one before it said nothing of it.
TEST(RestartStart, SaysWhyConcentrationsWereNotGuessed) {
    Script script;
    LoadCase(ModelCaseNamed("Model02"));
    const PerSlot<float> start = Work.Parms;
    EXPECT_EQ(GuessSignals(), "");
    EXPECT_NE(Work.Parms[SlotA(1)], start[SlotA(1)]);
    Work.Parms = start;
    for (long p = 1; p <= Work.SetPts[1]; ++p)
        Work.PtY[p] = -0.5F;
    const std::string why = GuessSignals();
    EXPECT_TRUE(why.starts_with("set 1 (")) << why;
    EXPECT_NE(why.find("no value above 0"), std::string::npos) << why;
    EXPECT_TRUE(Work.Parms == start);
}

} // namespace
} // namespace Quillon
