// The damped search for a minimum.
//
// Levenberg's method (K. Levenberg, Quarterly of Applied Mathematics 2 (1944) 164): the step p solves
// (D^T D + lambda I) p = D^T r, with lambda lowered after a success and raised after a failure, so that it
// turns from the steepest descent to the step of Gauss and Newton as the minimum comes near. All parameters
// are logarithms or of the order of 1, so that plain length is the right measure of a step; damping in
// proportion to the diagonal (D. W. Marquardt, J. SIAM 11 (1963) 431) was tried and finds fewer minima, since
// it leaves a parameter free that the data do not hold.
//
// Two things stand beside the plain method, since the parameters of these models fall into those that all
// sets share and the concentrations of each set, which answer to them at once. Where the guesses are far
// above the data, the concentrations alone are brought down first: otherwise the constants are dragged along
// with them. And a step that fails because the concentrations have not followed a bent valley is given to
// them again before it counts as failed, as constrained methods correct a step back onto a bent constraint
// (R. Fletcher, Practical Methods of Optimization, 2nd ed. 1987, section 14.4). docs/robustness.md has what
// each brings.
#include "fit/DampedSearch.h"
#include "fit/FitProgress.h"
#include "fit/LineSearch.h"
#include "fit/Sums.h"
#include "fit/equations/Bounds.h"
#include "fit/equations/NoiseWeights.h"
#include "fit/equations/NormalEquations.h"
#include "models/function/Constraints.h"
#include "models/function/SharedConcentrations.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace Quillon {

namespace {

// In shares of the largest element of the diagonal: the first damping, well inside the range where the
// equations hold; one at which no step shows in singles any more; one that is as good as none.
constexpr double FirstDamping = 0.01;
constexpr double LargestDamping = 1e9;
constexpr double SmallestDamping = 1e-15;
constexpr double AfterSuccess = 1.0 / 5.0;
constexpr double AfterFailure = 4.0;
constexpr std::int16_t MostSteps = 150;
// The stated iteration calls a change of 0.05 of a degree's share converged; the search ends below it.
constexpr double SmallDecrease = 0.02;
constexpr int MostCorrections = 2;
// A trial whose sum is that much above the best one is lost, and not corrected.
constexpr double WorthCorrecting = 1e4;

// A place that has been reached, and the equations there.
struct Place {
    PerSlot<float> Parms;
    double SumSq = 0.0;
    NormalEquations Equations;
};

// Runs a pass; false when it was cancelled (Work.AbortFit) or when the function failed in arithmetic, which
// is forgotten again: such a place is worse than any.
template <class Pass> bool Computes(Pass&& pass) {
    bool computed = true;
    try {
        pass();
    } catch (const RuntimeError&) {
        computed = false; // a step beyond the range of a single
    }
    if (!Work.FunctionFailed) return computed && !Work.AbortFit;
    ForgetStop();
    Work.Outcome = FitOutcome{};
    return false;
}

// The sums at the present parameters as a place.
bool Reach(Place& place) {
    if (!Computes(AccumulateSums)) return false;
    place = {Work.Parms, Work.SumSq, TakeNormalEquations()};
    return std::isfinite(place.SumSq);
}

void GoTo(const Place& place) {
    Work.Parms = place.Parms;
    Work.SumSq = place.SumSq;
}

// A step from a place, clipped to the bounds, and the sum there.
bool TakeStep(const Place& from, double damping, MovedParms parms) {
    return Computes([&] {
        Work.ParmsSave = from.Parms;
        Work.Increment = DampedStep(from.Equations, damping, parms);
        Work.Alpha = 1.0;
        ApplyIncrement();
        CalcSumSq();
    });
}

// A trial that is not lower yet: its concentrations are moved to follow. True when the sum then is lower.
bool Correct(double lowest, double damping) {
    for (int i = 0; i < MostCorrections && Work.SumSq < WorthCorrecting * lowest; ++i) {
        Place trial;
        if (!Reach(trial) || !TakeStep(trial, damping, MovedParms::Concentrations)) return false;
        if (Work.SumSq < lowest) return true;
        if (!(Work.SumSq < trial.SumSq)) return false;
    }
    return false;
}

// One search from a place to the best one that its steps lead to.
struct Descent {
    Place& Best;
    DampedWay Way;
    MovedParms Parms = MovedParms::All;
    double Damping = 0.0;
    bool Lost = false; // the latest step did not show in singles

    Descent(Place& best, DampedWay way, MovedParms parms)
        : Best(best), Way(way), Parms(parms), Damping(FirstDamping * LargestDiagonal(best.Equations)) {}

    // True when the step leads to a lower sum; Best is then there. A place whose derivatives do not exist is
    // no good. The parameters stand at Best afterwards.
    bool Improves() {
        ReportPhase(FitPhase::DampedStep);
        bool lower = TakeStep(Best, Damping, Parms);
        Lost = lower && Work.Parms == Best.Parms;
        if (lower && !(Work.SumSq < Best.SumSq))
            lower =
                Way == DampedWay::Guided && Parms == MovedParms::All && !Lost && Correct(Best.SumSq, Damping);
        Place there;
        const bool improved = lower && Reach(there);
        if (improved) Best = std::move(there);
        GoTo(Best);
        return improved;
    }

    // Steps until settled says so.
    template <class Settled> DampedEnd Run(Settled&& settled) {
        while (!settled()) {
            if (Work.Iteration >= MostSteps) return DampedEnd::TooManySteps;
            ++Work.Iteration;
            const double scale = LargestDiagonal(Best.Equations);
            if (Improves()) {
                Damping = std::max(Damping * AfterSuccess, SmallestDamping * LargestDiagonal(Best.Equations));
                ReportIteration();
                ReportWait();
            } else {
                if (!Work.AbortFit && (Lost || Damping > LargestDamping * scale)) return DampedEnd::NoStep;
                Damping *= AfterFailure;
            }
            if (Work.AbortFit) return DampedEnd::Cancelled;
        }
        return DampedEnd::Minimum;
    }
};

double SumOfSquaredData() {
    double sum = 0.0;
    for (long p = 1; p <= Work.NumPts; ++p) {
        const double y = NoiseWeight(SetNo(Work.PtSet[p])) * static_cast<double>(Work.PtY[p]);
        sum += y * y;
    }
    return sum;
}

// Concentrations alone, until the model is no further from the data than zero would be.
void BringConcentrationsDown(Place& best) {
    const double level = SumOfSquaredData();
    const auto settled = [&] {
        return best.SumSq < level || ExpectedDecrease(best.Equations, MovedParms::Concentrations) < 1.0;
    };
    Descent(best, DampedWay::Guided, MovedParms::Concentrations).Run(settled);
}

DampedEnd SearchFrom(Place& best, DampedWay way) {
    if (way == DampedWay::Guided) BringConcentrationsDown(best);
    if (Work.AbortFit) return DampedEnd::Cancelled;
    return Descent(best, way, MovedParms::All).Run([&] {
        return ExpectedDecrease(best.Equations) < SmallDecrease;
    });
}

// The start put back into its bounds and its ties; false where the function has no value there.
bool Begin(Place& best) {
    Work.Iteration = 0;
    Work.Alpha = 1.0;
    ReportPhase(FitPhase::Damped);
    const bool started = Computes([] {
        EnforceBounds();
        ApplyOffsetLinks();
        ApplyConcentrationLinks();
    });
    return started && Reach(best);
}

// Runs a search from the present parameters and leaves the best place.
template <class Search> DampedEnd SearchBy(Search&& search) {
    Place best{Work.Parms, std::numeric_limits<double>::infinity(), {}};
    DampedEnd end = DampedEnd::NoStart;
    if (Begin(best))
        end = search(best);
    else if (Work.AbortFit)
        end = DampedEnd::Cancelled;
    GoTo(best);
    return end;
}

} // namespace

DampedEnd SearchDamped(DampedWay way) {
    return SearchBy([way](Place& best) { return SearchFrom(best, way); });
}

DampedEnd SearchConcentrations() {
    return SearchBy([](Place& best) {
        const auto settled = [&] {
            return ExpectedDecrease(best.Equations, MovedParms::Concentrations) < SmallDecrease;
        };
        return Descent(best, DampedWay::Plain, MovedParms::Concentrations).Run(settled);
    });
}

} // namespace Quillon
