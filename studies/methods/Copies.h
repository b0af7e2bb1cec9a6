#pragma once
// Many fits of one analysis: pieces of work that each have a copy of it for themselves.
//
// A piece runs with Work a copy of the analysis that stood when the run began and with Host a filling that
// asks and tells nobody: questions get the answer that changes nothing, there are no files and no windows,
// and Uniform gives the numbers of the piece. It may do with them what it likes; what is worth keeping it
// hands over before it ends. Pieces may run side by side (Host.RunPieces), each on its thread, and nothing of
// a result may hang on how many do.

#include <cstdint>
#include <functional>
#include <string>

namespace Quillon {

// How a run of pieces ended.
struct CopiesEnd {
    bool Complete = true; // not cancelled
    long Broken = 0;      // pieces that a RuntimeError has ended
    std::string Reason;   // of the first of them by number; "" without one
};

// What stands behind a count of fits that came to nothing: ", 2 of them in arithmetic: Overflow". Empty where
// none broke off.
std::string BrokenText(const CopiesEnd& end);

// Runs piece(0) .. piece(count - 1). The uniform numbers of a piece follow from seed and its number. told(n)
// is called when n pieces have ended, and between, with the user's own analysis and filling in place; events
// are served behind it. Work.AbortFit, set there, cancels: a piece that has not begun is left out, one that
// runs finds its own Work.AbortFit set at the next point where a fit serves events. Work.AbortFit is left for
// the caller to clear. A RuntimeError of a piece ends that piece and nothing else: what it has not handed
// over is missing, and why is in the result.
CopiesEnd RunOnCopies(long count, std::uint64_t seed, const std::function<void(long number)>& piece,
                      const std::function<void(long done)>& told);

} // namespace Quillon
