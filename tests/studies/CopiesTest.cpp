// Pieces of work on copies of the analysis.
#include "studies/methods/Copies.h"
#include "SimulatedCase.h"
#include "files/RunPieces.h"
#include "platform/Platform.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace Quillon {
namespace {

void Nothing(long) {}

TEST(Copies, ThePieceWorksOnACopyAndTheAnalysisStays) {
    Script script;
    LoadCase(ModelCaseNamed("Model01"));
    const Workspace before = Work;
    std::vector<float> seen(3);
    const auto spoil = [&](long i) {
        EXPECT_TRUE(Work == before);
        Work.Parms[0] = 100.0F + static_cast<float>(i);
        seen[static_cast<std::size_t>(i)] = Work.Parms[0];
        Work.PtY.Recreate(1);
    };
    EXPECT_TRUE(RunOnCopies(3, 1, spoil, [&](long) { EXPECT_TRUE(Work == before); }).Complete);
    EXPECT_TRUE(Work == before);
    EXPECT_EQ(seen, (std::vector<float>{100.0F, 101.0F, 102.0F}));
}

TEST(Copies, AskNobodyAndTouchNoFile) {
    Script script; // any question would fail the test
    LoadCase(ModelCaseNamed("Model01"));
    bool ran = false;
    const auto ask = [&](long) {
        Tell("anything", "", BoxIcon::Plain);
        EXPECT_FALSE(AskYesNo("anything?", ""));
        EXPECT_FALSE(Host.FileExists("/"));
        EXPECT_THROW(Host.ReadFile("/dev/null"), RuntimeError);
        EXPECT_THROW(Host.WriteFile("/dev/null", ""), RuntimeError);
        EXPECT_TRUE(Host.AskText({}).Cancelled);
        ran = true;
    };
    RunOnCopies(1, 1, ask, Nothing);
    EXPECT_TRUE(ran);
}

using Numbers = std::array<float, 8>;

Numbers NumbersOfPieces(std::uint64_t seed) {
    Numbers numbers{};
    RunOnCopies(
        8, seed, [&](long i) { numbers[static_cast<std::size_t>(i)] = Host.Uniform(); }, Nothing);
    return numbers;
}

TEST(Copies, RandomNumbersFollowFromSeedAndPieceWhateverTheOrder) {
    Script script;
    LoadCase(ModelCaseNamed("Model01"));
    const Numbers inOrder = NumbersOfPieces(3);
    Host.RunPieces = [](long count, const auto& piece, const auto& watch) {
        for (long i = count; i-- > 0;)
            piece(i);
        watch(count);
    };
    EXPECT_EQ(NumbersOfPieces(3), inOrder);
    Host.RunPieces = [](long count, const auto& piece, const auto& watch) {
        RunPieces(4, count, piece, watch);
    };
    EXPECT_EQ(NumbersOfPieces(3), inOrder);
    EXPECT_NE(NumbersOfPieces(4), inOrder);
    for (std::size_t i = 1; i < inOrder.size(); ++i)
        EXPECT_NE(inOrder[i], inOrder[0]);
}

TEST(Copies, ACancelLeavesOutWhatHasNotBegun) {
    Script script;
    LoadCase(ModelCaseNamed("Model01"));
    int ran = 0;
    const CopiesEnd end = RunOnCopies(
        5, 1, [&](long) { ++ran; },
        [&](long done) {
            if (done == 2) Work.AbortFit = FlagTrue;
        });
    EXPECT_FALSE(end.Complete);
    EXPECT_EQ(BrokenText(end), "") << "what was cancelled has not failed";
    EXPECT_EQ(ran, 2);
    EXPECT_EQ(Work.AbortFit, FlagTrue);
}

TEST(Copies, ACancelReachesAPieceThatRuns) {
    Script script;
    LoadCase(ModelCaseNamed("Model01"));
    Host.RunPieces = [](long count, const auto& piece, const auto& watch) {
        RunPieces(1, count, piece, watch);
    };
    const auto untilCancelled = [](long) {
        while (!Work.AbortFit)
            Host.ServeEvents();
    };
    EXPECT_FALSE(RunOnCopies(1, 1, untilCancelled, [](long) { Work.AbortFit = FlagTrue; }).Complete);
}

TEST(Copies, AnErrorEndsItsOwnPieceAlone) {
    Script script;
    LoadCase(ModelCaseNamed("Model01"));
    int ran = 0;
    const auto second = [&](long i) {
        if (i == 1) RaiseError("Overflow");
        ++ran;
    };
    EXPECT_TRUE(RunOnCopies(4, 1, second, Nothing).Complete);
    EXPECT_EQ(ran, 3);
}

// Fits that broke off in arithmetic were counted as failed, and nobody could learn why.
TEST(Copies, ThePiecesThatBrokeOffSayWhy) {
    Script script;
    LoadCase(ModelCaseNamed("Model01"));
    const auto lastTwo = [](long i) {
        if (i == 2) RaiseError("Overflow");
        if (i == 3) RaiseError("Division by zero");
    };
    const CopiesEnd end = RunOnCopies(4, 1, lastTwo, Nothing);
    EXPECT_TRUE(end.Complete);
    EXPECT_EQ(end.Broken, 2);
    EXPECT_EQ(end.Reason, "Overflow");
    EXPECT_EQ(BrokenText(end), ", 2 of them in arithmetic: Overflow");
    EXPECT_EQ(BrokenText(RunOnCopies(2, 1, Nothing, Nothing)), "");
}

} // namespace
} // namespace Quillon
