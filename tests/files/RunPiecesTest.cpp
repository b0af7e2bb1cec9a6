// Pieces of work on threads.
#include "files/RunPieces.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace Quillon {
namespace {

void Nothing(long) {}

TEST(RunPieces, RunsEachPieceOnceOnAnyNumberOfThreads) {
    for (const int threads : {0, 1, 2, 7, 40}) {
        std::vector<std::atomic<int>> runs(25);
        RunPieces(
            threads, 25, [&](long i) { ++runs[static_cast<std::size_t>(i)]; }, Nothing);
        for (const auto& count : runs)
            EXPECT_EQ(count, 1) << threads;
    }
}

TEST(RunPieces, RunsNothingOfNone) {
    RunPieces(
        2, 0, [](long) { FAIL(); }, Nothing);
}

// Two pieces that wait for each other end only side by side.
TEST(RunPieces, RunsPiecesSideBySide) {
    std::atomic<int> here{0};
    const auto meet = [&](long) {
        ++here;
        while (here < 2)
            std::this_thread::yield();
    };
    RunPieces(2, 2, meet, Nothing);
    EXPECT_EQ(here, 2);
}

TEST(RunPieces, TellsTheCountOnTheThreadOfItsCaller) {
    std::set<long> told;
    bool here = true;
    const std::thread::id caller = std::this_thread::get_id();
    RunPieces(
        1, 4, [](long) {},
        [&](long done) {
            here = here && std::this_thread::get_id() == caller;
            told.insert(done);
        });
    EXPECT_TRUE(here);
    for (const long done : told)
        EXPECT_TRUE(done >= 0 && done <= 4);
}

TEST(RunPieces, ThrowsWhatAPieceThrowsAndBeginsNoOther) {
    std::atomic<int> begun{0};
    const auto third = [&](long number) {
        ++begun;
        if (number == 2) throw std::runtime_error("third");
    };
    EXPECT_THROW(RunPieces(1, 100, third, Nothing), std::runtime_error);
    EXPECT_EQ(begun, 3);
}

TEST(RunPieces, ThrowsWhatTheWatchThrowsWhenAllHaveEnded) {
    std::atomic<bool> go{false}, ended{false};
    const auto wait = [&](long) {
        while (!go)
            std::this_thread::yield();
        ended = true;
    };
    const auto watch = [&](long) {
        go = true;
        throw std::runtime_error("watch");
    };
    EXPECT_THROW(RunPieces(1, 1, wait, watch), std::runtime_error);
    EXPECT_TRUE(ended);
}

} // namespace
} // namespace Quillon
