#include "files/RunPieces.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace Quillon {

namespace {

// What the threads share; Lock guards all of it.
struct Pieces {
    long Count;
    const std::function<void(long)>& Piece;
    std::mutex Lock{};
    std::condition_variable Changed{};
    long Next = 0;  // the first piece that nobody has begun
    long Ended = 0; // pieces that have ended
    long Begun = 0; // of them and those that run
    std::exception_ptr Failure{};

    // The next piece to do; Count when none is left.
    long Take() {
        const std::lock_guard guard(Lock);
        if (Failure || Next >= Count) return Count;
        ++Begun;
        return Next++;
    }

    void Fail(const std::exception_ptr& failure) {
        const std::lock_guard guard(Lock);
        if (!Failure) Failure = failure;
    }

    void End() {
        const std::lock_guard guard(Lock);
        ++Ended;
        Changed.notify_one();
    }

    // The work of one thread.
    void Work() {
        for (long number = Take(); number < Count; number = Take()) {
            try {
                Piece(number);
            } catch (...) {
                Fail(std::current_exception());
            }
            End();
        }
    }

    bool AllEnded() const { return Ended == Begun && (Failure || Next >= Count); }
};

// Waits on the calling thread until all have ended.
void WaitAndTell(Pieces& pieces, const std::function<void(long)>& watch) {
    constexpr std::chrono::milliseconds Interval{50};
    std::unique_lock lock(pieces.Lock);
    while (!pieces.AllEnded()) {
        pieces.Changed.wait_for(lock, Interval);
        const long ended = pieces.Ended;
        lock.unlock(); // watch may take its time
        try {
            watch(ended);
        } catch (...) {
            pieces.Fail(std::current_exception());
        }
        lock.lock();
    }
}

} // namespace

int CoresOfMachine() {
    return static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
}

void RunPieces(int threads, long count, const std::function<void(long number)>& piece,
               const std::function<void(long done)>& watch) {
    Pieces pieces{count, piece};
    std::vector<std::thread> running;
    try {
        for (long i = 0; i < std::min<long>(std::max(threads, 1), count); ++i)
            running.emplace_back([&pieces] { pieces.Work(); });
    } catch (const std::system_error&) { // no more threads: those there are do all pieces, or this one does
        if (running.empty()) pieces.Work();
    }
    WaitAndTell(pieces, watch);
    for (std::thread& thread : running)
        thread.join();
    if (pieces.Failure) std::rethrow_exception(pieces.Failure);
}

} // namespace Quillon
