#pragma once
// What the engine tells of its work while it works: a record of functions that whoever watches fills. The
// monitor's filling writes labels and waits for buttons (fit/forms/FitMon.h), that of quillon-fit writes a
// line for each iteration, a test counts. The engine itself shows nothing.
//
// All of them are called on the thread of the fit, between two passes over the points, with the state in the
// workspace: Iteration, Alpha, SumSq, Parms, AtBound. They may serve events and set Work.AbortFit, which the
// engine tests after each call; they must not change anything else that the fit works on. An empty function
// is not called.

#include <functional>
#include <string>

namespace Quillon {

enum class FitPhase {
    Started,   // a fit begins: Iteration 0, Alpha 1
    Sums,      // the normal equations are about to be summed up
    Inversion, // the matrix is about to be inverted
    Search,    // a step along the increment is about to be searched; SumSq is that before it
    LastSums,  // converged: sums and inverse are taken once more
    Ended,     // the last of them has been taken
    Damped,    // the damped search begins: Iteration counts its steps, from 0
    DampedStep // a damped step is about to be tried
};

struct FitProgress {
    std::function<void(FitPhase)> Phase;
    std::function<void()> Step;      // a trial stands in Parms, with bounds applied
    std::function<void()> Iteration; // an iteration has ended at SumSq
    std::function<void()> Wait;      // before the first iteration and behind each: may wait for the user
    std::function<void(const std::string& sentence)> Remark; // something went wrong and is recovered from
};

// The filling in use on this thread; an empty one outside of ProgressInUse.
const FitProgress& Progress();

// Puts a filling into use for as long as it lives. The filling has to outlive it.
class ProgressInUse {
public:
    explicit ProgressInUse(const FitProgress& filling);
    ~ProgressInUse();
    ProgressInUse(const ProgressInUse&) = delete;
    ProgressInUse& operator=(const ProgressInUse&) = delete;

private:
    const FitProgress* Former;
};

// Calls of the filling in use.
void ReportPhase(FitPhase phase);
void ReportStep();
void ReportIteration();
void ReportWait();
void ReportRemark(const std::string& sentence);

} // namespace Quillon
