#include "studies/methods/HeldFit.h"

#include "fit/GNLLSQ.h"
#include "fit/equations/FreeMap.h"
#include "models/function/FitFunction.h"
#include "studies/methods/ForgetFit.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <limits>

namespace Quillon {

namespace {

double SumHere() {
    ResetFitFunction();
    CalcSumSq();
    if (Work.FunctionFailed) return std::numeric_limits<double>::infinity();
    return Work.SumSq;
}

} // namespace

void FitFinely() {
    constexpr float Finer = 0.001F;
    constexpr std::int16_t Patient = 100;
    Work.ConvergenceLimit = std::min(Work.ConvergenceLimit, Finer);
    Work.MaxIterations = std::max(Work.MaxIterations, Patient);
    ForgetFit();
}

bool HoldSlots(const std::vector<long>& slots) {
    for (const long slot : slots)
        Work.FreeMap[slot] = SlotHeld;
    const std::vector<FitChoice> choices = FitChoices();
    const bool others = std::any_of(choices.begin(), choices.end(),
                                    [](const FitChoice& choice) { return choice.Check == FitCheckYes; });
    if (others) AssignFreePositions(choices);
    return others;
}

HeldEnd FitOthers(bool others) {
    ForgetFit();
    HeldEnd end;
    if (!others) {
        end.SumSq = SumHere();
        end.Ended = !IsCancelled();
        end.Converged = end.Ended && !Work.FunctionFailed;
        return end;
    }
    const PerSlot<float> start = Work.Parms;
    if ((!RunFit() || Work.Outcome.End != FitEnd::Converged) && !IsCancelled()) RescueFit(start);
    if (IsCancelled()) return end;
    end.Ended = true;
    end.Converged = Work.FitDone != 0 && Work.Outcome.End == FitEnd::Converged;
    end.SumSq = Work.FitDone ? Work.SumSq : std::numeric_limits<double>::infinity();
    if (!Work.FitDone) Work.Parms = start;
    return end;
}

} // namespace Quillon
