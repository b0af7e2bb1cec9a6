#include "studies/methods/OtherMinima.h"

#include "fit/GNLLSQ.h"
#include "fit/Undetermined.h"
#include "fit/equations/NormalEquations.h"
#include "models/ModelFlags.h"
#include "models/table/ParmScale.h"
#include "studies/methods/Copies.h"
#include "studies/methods/ForgetFit.h"
#include "studies/methods/RestartStart.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>

namespace Quillon {

namespace {

// The bottom of the minimum that a fit has ended in, by which it is compared.
struct Bottom {
    double SumSq = 0.0;
    std::vector<double> Values; // of MinimumSlots
    std::vector<double> Errors; // infinite where the data do not determine the parameter
};

struct FitEnding {
    bool Minimum = false;
    bool Own = false; // of the user's own fit
    Bottom Place;
    Workspace Fit;
    std::vector<float> Values; // of MinimumSlots, user units
    std::string Unread;        // why the concentrations of its start were not guessed, or ""
};

double Freedom() {
    return std::max(1.0, static_cast<double>(Work.NumPts - Work.NumFree));
}

// The standard errors of the fit that stands, from the inverse at its end.
std::vector<double> ErrorsOfMinimum() {
    const double variance = std::max(Work.SumSq / Freedom(), LeastVariance());
    std::vector<double> errors;
    for (const SlotNo slot : MinimumSlots()) {
        const FreePos a = FreePosOf(slot);
        const bool none = HasNoError(a);
        errors.push_back(none ? std::numeric_limits<double>::infinity()
                              : std::sqrt(std::fabs(Work.NormMatrix(a, a)) * variance));
    }
    return errors;
}

// The step that stands in Work; false where the function has no value behind it, or no single holds it, which
// is one of the ways in which a step leads away.
bool StepHasSum() {
    try {
        ApplyIncrement();
        CalcSumSq();
    } catch (const RuntimeError&) { // one place of many, given up
        return false;
    }
    return !Work.AbortFit;
}

// One step of Gauss and Newton, whether or not the sum falls: derivatives by forward differences let the
// iteration rest a little beside the lowest sum, and it is that place which all ends of one minimum have in
// common. False when there is nothing left to be gained, and where a step leads away, which is not taken.
bool StepToRest() {
    constexpr double NothingLeft = 1e-9; // of a share of a degree of freedom
    const PerSlot<float> here = Work.Parms;
    const double known = Work.SumSq;
    AccumulateSums();
    if (Work.AbortFit) {
        Work.SumSq = known; // the pass was broken off
        return false;
    }
    const double sum = Work.SumSq;
    const NormalEquations equations = TakeNormalEquations();
    if (!(ExpectedDecrease(equations) > NothingLeft)) return false;
    Work.ParmsSave = here;
    Work.Increment = DampedStep(equations, 0.0);
    Work.Alpha = 1.0;
    const bool there = StepHasSum();
    const double share = std::max(sum / Freedom(), LeastVariance());
    if (there && Work.SumSq < sum + share) return !(Work.Parms == here);
    Work.Parms = here;
    Work.SumSq = sum;
    return false;
}

// From the end of a fit in Work, which is used up, to where the iteration would rest.
Bottom FindBottom() {
    Bottom bottom;
    bottom.Errors = ErrorsOfMinimum();
    constexpr int MostSteps = 20;
    for (int i = 0; i < MostSteps && StepToRest(); ++i) {
    }
    bottom.SumSq = Work.SumSq;
    for (const SlotNo slot : MinimumSlots())
        bottom.Values.push_back(static_cast<double>(Work.Parms[slot]));
    return bottom;
}

// The end of the fit that stands in Work, which is used up; nothing when it was cancelled.
std::optional<FitEnding> TakeEnding(bool minimum) {
    FitEnding ending;
    ending.Minimum = minimum;
    if (!minimum) return ending;
    ending.Fit = Work;
    for (const SlotNo slot : MinimumSlots())
        ending.Values.push_back(ToUserUnits(slot, Work.Parms[slot]));
    ending.Place = FindBottom();
    if (IsCancelled()) return std::nullopt;
    return ending;
}

// The user's own fit, which a file may have brought without its end: then the equations tell.
std::optional<FitEnding> OwnEnding() {
    ClearCancel();
    bool minimum = Work.FitDone != 0;
    if (minimum && Work.Outcome.End == FitEnd::NotRun) {
        const Workspace fit = Work;
        AccumulateSums();
        minimum = !Work.AbortFit && ExpectedDecrease(TakeNormalEquations()) <= LargestExpectedDecrease;
        Work = fit;
    } else {
        minimum = minimum && Work.Outcome.End == FitEnd::Converged;
    }
    std::optional<FitEnding> ending = TakeEnding(minimum);
    if (ending) ending->Own = true;
    return ending;
}

std::optional<FitEnding> RestartedEnding() {
    ForgetFit();
    if (Work.StartParms.Size() == Work.Parms.Size()) Work.Parms = Work.StartParms;
    const std::string unread = MoveStart();
    ForgetFit();
    Work.StartParms = Work.Parms;
    const PerSlot<float> start = Work.Parms;
    RescueFit(start);
    if (Work.Outcome.End == FitEnd::Cancelled) return std::nullopt;
    ClearCancel();
    CopySharedConstants();
    std::optional<FitEnding> ending = TakeEnding(Work.FitDone != 0 && Work.Outcome.End == FitEnd::Converged);
    if (ending) ending->Unread = unread;
    return ending;
}

bool SameSum(double a, double b) {
    constexpr double Near = 1e-6;
    return std::fabs(a - b) <= Near * std::max(a, b);
}

// floor: the least sum that counts as noise. Below it singles end where their rounding leaves them.
bool IsSameMinimum(const Bottom& a, const Bottom& b, double floor) {
    const bool exact = std::max(a.SumSq, b.SumSq) <= floor;
    const double ofError = exact ? 1.0 : 0.01;
    if (!exact && !SameSum(a.SumSq, b.SumSq)) return false;
    for (std::size_t i = 0; i < a.Values.size(); ++i) {
        const double error = std::max(a.Errors[i], b.Errors[i]);
        if (std::fabs(a.Values[i] - b.Values[i]) > ofError * error) return false;
    }
    return true;
}

// The ends by rising sum, each joined to the first minimum that it belongs to.
std::vector<Minimum> MinimaOf(std::vector<FitEnding>& endings, double floor) {
    std::vector<Minimum> minima;
    std::vector<Bottom> places;
    std::stable_sort(endings.begin(), endings.end(),
                     [](const FitEnding& a, const FitEnding& b) { return a.Place.SumSq < b.Place.SumSq; });
    for (FitEnding& ending : endings) {
        std::size_t i = 0;
        while (i < places.size() && !IsSameMinimum(places[i], ending.Place, floor))
            ++i;
        const bool first = i == places.size();
        if (first) {
            places.push_back(ending.Place);
            minima.emplace_back();
        }
        ++minima[i].Count;
        if (!first && !ending.Own) continue; // the lowest one stands for all, but for the user's own
        minima[i].IsOwn = ending.Own;
        minima[i].Fit = std::move(ending.Fit);
        minima[i].Values = ending.Values;
    }
    std::stable_sort(minima.begin(), minima.end(),
                     [](const Minimum& a, const Minimum& b) { return a.Fit.SumSq < b.Fit.SumSq; });
    return minima;
}

// Both kinds of ends told apart: minima by their sums, others by their number. An end that is missing was
// cancelled.
MinimaMet Gather(std::vector<std::optional<FitEnding>>& ends) {
    MinimaMet met;
    std::vector<FitEnding> minima;
    for (std::optional<FitEnding>& end : ends) {
        if (!end) continue;
        ++met.Ended;
        if (met.Broken.empty() && !end->Unread.empty()) met.Broken = ", without new guesses: " + end->Unread;
        if (end->Minimum)
            minima.push_back(std::move(*end));
        else
            ++met.Failed;
    }
    met.Minima = MinimaOf(minima, Freedom() * LeastVariance());
    return met;
}

// The slots that are marked as fitted are those that the latest fit has numbered.
bool MarksAreThoseOfTheFit() {
    long marked = 0;
    for (const SlotNo slot : EachSlot()) {
        if (!IsFitted(slot)) continue;
        ++marked;
        const std::int16_t a = Work.FreeMap[slot];
        if (a >= Work.NumFree || Work.FreeIndex[a] != slot.Number) return false;
    }
    return marked > 0 && marked == Work.NumFree;
}

} // namespace

bool CanRestart() {
    return Work.DataChosen && Work.ModelChosen && Work.NewData == Changed::Nothing &&
           Work.Model == Work.LastModel && Work.NonIdeal == Work.LastNonIdeal &&
           Work.SeparateK == Work.LastSeparateK && MarksAreThoseOfTheFit();
}

std::vector<SlotNo> MinimumSlots() {
    std::vector<SlotNo> slots;
    for (const SlotNo slot : EachGlobalSlot())
        if (IsFitted(slot)) slots.push_back(slot);
    return slots;
}

MinimaMet SearchOtherMinima(const RestartChoice& choice, const std::function<void(long done)>& told) {
    std::vector<std::optional<FitEnding>> ends(static_cast<std::size_t>(choice.Count) + 1);
    const CopiesEnd run = RunOnCopies(
        choice.Count + 1, choice.Seed,
        [&](long number) {
            std::optional<FitEnding>& end = ends[static_cast<std::size_t>(number)];
            end = FitEnding{}; // what breaks off in arithmetic is no minimum
            end = number == 0 ? OwnEnding() : RestartedEnding();
        },
        told);
    MinimaMet met = Gather(ends);
    met.Complete = run.Complete;
    met.Broken = BrokenText(run) + met.Broken;
    return met;
}

const Minimum& BestMinimum(const MinimaMet& met) {
    const Minimum& lowest = met.Minima.front();
    for (const Minimum& minimum : met.Minima)
        if (minimum.IsOwn && SameSum(minimum.Fit.SumSq, lowest.Fit.SumSq)) return minimum;
    return lowest;
}

void TakeMinimum(const Minimum& minimum) {
    if (!minimum.IsOwn) Work = minimum.Fit;
}

} // namespace Quillon
