// The search for a step along the increment.
#include "fit/LineSearch.h"
#include "fit/FitProgress.h"
#include "fit/Sums.h"
#include "fit/equations/Bounds.h"
#include "models/function/Constraints.h"
#include "models/function/SharedConcentrations.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

#include <cmath>

namespace Quillon {

namespace {

// A thousandth of the increment: ten halvings. What does not fall within that will not fall in singles.
constexpr double SmallestAlpha = 0.001;

// What the last stage has to do: the sum of squares at its step may be known already.
enum class Tail { Evaluate, SumKnown };

// The step recovers from iteration to iteration: a good one returns to the full step at once, one that had to
// be halved three times and more (below a quarter) in steps of two halvings, and one at the smallest steps
// begins where a full step is three iterations away.
void RecoverAlpha() {
    if (Work.Alpha >= 0.25)
        Work.Alpha = 1.0;
    else if (Work.Alpha <= 0.005)
        Work.Alpha = 0.02;
    else
        Work.Alpha = 4.0 * Work.Alpha;
}

// Halves the step until no parameter is put back onto a bound. False when the smallest step still is.
bool StepInsideBounds() {
    do {
        ApplyIncrement();
        if (!Work.BoundHit) break;
        Work.Alpha *= 0.5;
    } while (Work.Alpha > SmallestAlpha);
    return Work.Alpha > SmallestAlpha;
}

struct TrialStep {
    double Alpha, SumSq;
};

// Halves the step until the sum of squares falls below S0 or the smallest step is reached. Gives the trial
// before the last one.
TrialStep Halve(double S0) {
    TrialStep before{};
    do {
        before = {Work.Alpha, Work.SumSq};
        Work.Alpha *= 0.5;
        ApplyIncrement();
        CalcSumSq();
        if (Work.AbortFit || Work.SumSq < S0) break;
    } while (Work.Alpha > SmallestAlpha);
    return before;
}

void CheckFinite(double value) {
    if (!std::isfinite(value)) RaiseError(ErrorText::Overflow);
}

// The parabola S0 + B a + A a^2 through (0, S0), the last trial and the one before, whose minimum lies at
// -B / 2A and is S0 - B^2 / 4A (Hartley's step). True when its step has been taken; the sum of squares then
// still is that of the last trial. Otherwise tail tells how the last stage goes on.
bool TakeInterpolatedStep(double S0, const TrialStep& before, Tail& tail) {
    const double a1 = before.Alpha;
    const double s1 = before.SumSq;
    const double a2 = Work.Alpha;
    const double s2 = Work.SumSq;
    const double A = Divide((s2 - S0) * a1 - (s1 - S0) * a2, (a2 - a1) * (a1 * a2));
    const double B = Divide(s2 - S0, a2) - A * a2;
    CheckFinite(B); // and with it A
    if (A == 0.0) return false;
    const double am = B / (A * -2.0);
    const double smallest = S0 - (B * 0.25 * B) / A;
    CheckFinite(am);
    CheckFinite(smallest);
    // Beyond the last trial the parabola is a guess, and a step a tenth of the smallest one is none.
    if (std::fabs(am) > a2 || !(smallest < s2) || std::fabs(am) <= 0.0001) {
        Work.Alpha = a2;
        tail = Tail::SumKnown;
        return false;
    }
    // [decision: stale-sum]
    Work.Alpha = am; // may be negative
    if (Work.Alpha <= SmallestAlpha) return false;
    ApplyIncrement();
    return true;
}

void TryAlpha(double alpha) {
    Work.Alpha = alpha;
    ApplyIncrement();
    CalcSumSq();
}

// The last resorts: the step as it stands, the reversed direction, a random part of that.
void FinalStage(double S0, Tail tail) {
    ApplyIncrement();
    if (tail == Tail::Evaluate) CalcSumSq();
    if (Work.AbortFit || Work.SumSq < S0) return;
    const double s3 = Work.SumSq;
    TryAlpha(-Work.Alpha);
    if (Work.AbortFit || Work.SumSq < S0) return;
    if (Work.SumSq < s3)
        // [decision: random-shortening]
        TryAlpha((static_cast<double>(Host.Uniform()) + 1.0) * 0.5 * Work.Alpha);
    else
        // [decision: step-stands]
        TryAlpha(-Work.Alpha); // the step stands even if it made the sum worse
}

// The road of a step that keeps inside the bounds. True when the search is over.
bool SearchInside(double S0, Tail& tail) {
    CalcSumSq();
    if (Work.AbortFit) return true;
    if (Work.SumSq < S0) {
        ApplyIncrement();
        return true;
    }
    const TrialStep before = Halve(S0);
    if (Work.AbortFit) return true;
    try {
        return TakeInterpolatedStep(S0, before, tail);
    } catch (const RuntimeError& error) {
        ReportRemark("Error '" + error.Text +
                     "' occurred during parameter increment adjustment, recovery will be attempted.");
        return false;
    }
}

// From the parameters that ParmsSave holds, where the sum of squares is S0.
void TakeStep(double S0) {
    RecoverAlpha();
    EnforceBounds();
    Tail tail = Tail::Evaluate;
    const bool inside = !Work.BoundHit && StepInsideBounds();
    if (inside && SearchInside(S0, tail)) return;
    FinalStage(S0, tail);
}

} // namespace

void ApplyIncrement() {
    Workspace& w = Work; // the thread's own is looked up once
    for (const FreePos a : EachFree()) {
        const SlotNo k(w.FreeIndex[a]);
        const float step = ToSingle(w.Alpha * w.Increment[a]);
        w.Parms[k] = ToSingle(static_cast<double>(w.ParmsSave[k] + step));
    }
    if (Work.BoundsActive) EnforceBounds();
    if (Work.ConstraintFlags) ApplyOffsetLinks();
    ApplyConcentrationLinks();
    ReportStep();
}

void AdjustIncrement() {
    if (Work.AbortFit) return;
    ReportPhase(FitPhase::Search);
    const double S0 = Work.SumSq;
    Work.LastSumSq = S0;
    Work.ParmsSave.Recreate(Work.NumParms - 1);
    for (const SlotNo k : EachSlot())
        Work.ParmsSave[k] = Work.Parms[k];
    try {
        TakeStep(S0);
    } catch (const RuntimeError&) {
        // A trial that broke off may stand anywhere, beyond its bounds and beyond what the scales can follow.
        for (const SlotNo k : EachSlot())
            Work.Parms[k] = Work.ParmsSave[k];
        throw;
    }
}

} // namespace Quillon
