#pragma once
// Independent pieces of work on the cores of the machine.

#include <functional>

namespace Quillon {

// Threads that the machine runs at a time; at least 1.
int CoresOfMachine();

// Runs piece(0) .. piece(count - 1), each once, on so many threads at a time (at least one), which take them
// in rising order; returns when all have ended. watch(n) is called on the calling thread, when the number n
// of pieces that have ended rises and twenty times a second meanwhile. What a piece or watch throws is thrown
// here, the first of it, when all threads have ended; no further piece is begun then. Where the system gives
// no thread, the calling thread does the work.
void RunPieces(int threads, long count, const std::function<void(long number)>& piece,
               const std::function<void(long done)>& watch);

} // namespace Quillon
