#include "fit/Fault.h"

#include "fit/RunFit.h"
#include "fit/Sums.h"
#include "fit/Undetermined.h"
#include "fit/equations/NormalEquations.h"
#include "input/NUMINPUT.h"
#include "models/function/FitFunction.h"
#include "models/function/SharedConcentrations.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace Quillon {

namespace {

bool FitsASingle(double value) {
    return std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

// The sums hold squares of derivatives.
constexpr double LargestDerivative = 1e150;

// The radius of a true point; negative where there is none to be told.
double RadiusOf(long point) {
    try {
        const RowNo row = RowOf(SetNo(Work.PtSet[point]));
        const double half = static_cast<double>(Work.PtX[point]) + ReferenceX(row);
        return half >= 0.0 && FitsASingle(half) ? std::sqrt(2.0 * half) : -1.0;
    } catch (const RuntimeError&) {
        return -1.0; // points without a scan
    }
}

// "data set 2 at 6.9120 cm"
std::string PlaceOf(long point) {
    const std::string set = "data set " + std::to_string(Work.PtSet[point]);
    if (Work.PtX[point] == PointMarker) return set + " under its concentration constraint";
    const double radius = RadiusOf(point);
    if (radius < 0.0) return set + " at point " + std::to_string(point);
    return set + " at " + FormatNumber(radius, "0.0000") + " cm";
}

std::string Valued(SlotNo slot) {
    return Work.ParmName[slot] + " = " + ParmText(slot);
}

bool HasValue(long point) {
    const double value = FitFunction(point);
    const bool failed = Work.FunctionFailed != 0;
    ForgetStop();
    return !failed && FitsASingle(value);
}

// --- the parameter behind a value

// The slots that the function reads at the points of a set.
std::vector<SlotNo> SlotsOfSet(SetNo set) {
    std::vector<SlotNo> slots;
    for (const SlotNo slot : EachGlobalSlot())
        slots.push_back(slot);
    slots.insert(slots.end(), {LeadSlotA(set), LeadSlotB(set), SlotOffset(set)});
    return slots;
}

// Where a parameter is taken back to.
float Harmless(SlotNo slot, bool stepped) {
    if (stepped) return Work.ParmsSave[slot];
    return RuleOfSlot(slot).Holds == Quantity::Stoichiometry ? 1.0F : 0.0F;
}

bool Cures(long point, SlotNo slot, float target, double share) {
    float& parm = Work.Parms[slot];
    const float saved = parm;
    if (target == saved) return false;
    const double now = static_cast<double>(saved);
    parm = static_cast<float>(now + share * (static_cast<double>(target) - now));
    ResetFitFunction();
    const bool cured = HasValue(point);
    parm = saved;
    return cured;
}

// The slot whose way back is the shortest; NoSlot where none helps by itself.
SlotNo CauseAt(long point, bool stepped) {
    if (IsPseudoPoint(point)) return NoSlot; // hangs on all points of its set
    for (const double share : {0.1, 0.25, 0.5, 0.75, 1.0})
        for (const SlotNo slot : SlotsOfSet(SetOfPoint(point)))
            if (Cures(point, slot, Harmless(slot, stepped), share)) return slot;
    return NoSlot;
}

std::string ValueFault(long point, bool stepped) {
    const std::string text = "The fitted value of " + PlaceOf(point) + " is beyond any number";
    const SlotNo slot = CauseAt(point, stepped);
    return slot == NoSlot ? text + "." : text + ", most likely by " + Valued(slot) + ".";
}

// --- the kinds of faults; each gives an empty text where it is not the one

std::string FaultOfData() {
    for (long p = 1; p <= Work.NumPts; ++p)
        if (!std::isfinite(Work.PtY[p])) return "The measured value of " + PlaceOf(p) + " is no number.";
    return "";
}

std::string FaultOfSteps() {
    for (const FreePos a : EachFree())
        if (DerivStep(SlotOf(a)) == 0.0) return Valued(SlotOf(a)) + " leaves no step for its derivative.";
    return "";
}

std::string FaultOfValues(bool stepped) {
    ResetFitFunction();
    for (long p = 1; p <= Work.NumPts; ++p)
        if (!HasValue(p)) return ValueFault(p, stepped);
    return "";
}

// The free position whose derivative at a point is none; -1 without such a one. They come in rising order,
// and a stepped value that is none leaves those behind it as they were.
long FaultyDerivative(long point) {
    for (long a = 0; a < Work.NumFree; ++a)
        Work.Deriv[a] = std::numeric_limits<double>::quiet_NaN();
    CalcDerivs(point, FitFunction(point));
    const bool failed = Work.FunctionFailed != 0;
    ForgetStop();
    long first = 0;
    while (first < Work.NumFree && std::fabs(Work.Deriv[first]) < LargestDerivative)
        ++first;
    if (failed) return std::max(first - 1, 0L);
    return first < Work.NumFree ? first : -1;
}

std::string FaultOfDerivatives() {
    ResetFitFunction();
    for (long p = 1; p <= Work.NumPts; ++p)
        if (const long place = FaultyDerivative(p); place >= 0)
            return "The change of the fitted value of " + PlaceOf(p) + " with " +
                   Work.ParmName[Work.FreeIndex[place]] + " is beyond any number.";
    return "";
}

std::string FaultOfFreedom() {
    if (Work.NumPts > Work.NumFree) return "";
    return "There are no more points (" + std::to_string(Work.NumPts) + ") than fitted parameters (" +
           std::to_string(Work.NumFree) + ").";
}

// A trial that no single can hold has been taken back.
std::string FaultOfTrial(bool stepped) {
    if (!stepped || Work.Increment.Hi() != Work.NumFree - 1) return "";
    for (long a = 0; a < Work.NumFree; ++a) {
        const double step = Work.Alpha * Work.Increment[a];
        const double from = static_cast<double>(Work.ParmsSave[Work.FreeIndex[a]]);
        if (!FitsASingle(step) || !FitsASingle(from + step))
            return "The step of " + Work.ParmName[Work.FreeIndex[a]] + " is beyond any number.";
    }
    return "";
}

// A matrix that has an inverse, but not in numbers.
std::string FaultOfInverse() {
    ResetFitFunction();
    AccumulateSums();
    if (Work.AbortFit) return "";
    const NormalEquations equations = TakeNormalEquations();
    try {
        InvertNormalMatrix();
    } catch (const RuntimeError&) {
        return UndeterminedText(equations);
    }
    return "";
}

std::string FirstFault() {
    constexpr double NoStepYet = 1e308; // of LastSumSq
    const bool stepped = Work.LastSumSq < NoStepYet && Work.ParmsSave.Hi() == Work.NumParms - 1;
    for (const auto& kind : {FaultOfData, FaultOfSteps})
        if (std::string text = kind(); !text.empty()) return text;
    if (std::string text = FaultOfValues(stepped); !text.empty()) return text;
    if (std::string text = FaultOfTrial(stepped); !text.empty()) return text;
    for (const auto& kind : {FaultOfDerivatives, FaultOfFreedom, FaultOfInverse})
        if (std::string text = kind(); !text.empty()) return text;
    return "";
}

} // namespace

std::string FaultText() {
    const Workspace kept = Work;
    ForgetStop();
    std::string text;
    try {
        text = FirstFault();
    } catch (const RuntimeError&) {
        // What cannot even be looked at has no words of its own.
    }
    Work = kept;
    ResetFitFunction();
    return text;
}

std::string ModelFaultText() {
    const std::string place = FaultText();
    return place.empty() ? FunctionFaultSentence : FunctionFaultSentence + ("\n\n" + place);
}

} // namespace Quillon
