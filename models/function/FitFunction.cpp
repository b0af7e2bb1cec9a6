#include "models/function/FitFunction.h"

#include "models/function/Constraints.h"
#include "models/function/Exponential.h"
#include "models/function/FitFrame.h"
#include "models/function/NonIdeal.h"
#include "models/function/SharedConcentrations.h"
#include "models/function/Species.h"
#include "models/table/Catalogue.h"
#include "models/table/ModelTable.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <cmath>

namespace Quillon {

namespace {

thread_local FitFrame Base;    // at the unstepped parameters, of the set of the last point
thread_local FitFrame Stepped; // at the parameters with one slot stepped
thread_local SlotNo SteppedSlot = NoSlot;

// The frame for the point's set at the present Work.Parms; newSet tells that the set has just begun.
FitFrame& FrameFor(SetNo set, bool newSet) {
    if (newSet) {
        LoadFrame(Base, set);
        return Base;
    }
    if (SteppedSlot == NoSlot) {
        if (!FrameIsCurrent(Base)) LoadConstants(Base);
        return Base;
    }
    StepFrame(Stepped, Base, SteppedSlot);
    if (!FrameIsCurrent(Stepped)) LoadConstants(Stepped); // more has changed than the one slot
    return Stepped;
}

// y = sum of the species' signals + offset, from a = exp(x sigma_A + ln c_A) and b = exp(x sigma_B + ln c_B)
// (Haschemeyer and Bowers, Biochemistry 9 (1970) 435); the sum is that of Species.h.
template <ModelFamily F> double IdealSignal(const FitFrame& f, double x, double a) {
    const double b = HasB(F) ? Exponential(x * f.SigmaB + f.LnB) : 0.0;
    const double an = HasPowerN(F) ? MonomerPower(a, f.PowerN) : 0.0;
    const double am = HasPowerM(F) ? MonomerPower(a, f.PowerM) : 0.0;
    const SpeciesFactors s = FactorsOf<F>(f);
    if (f.ConstraintsOn) {
        const UnitSignals u = UnitsAt<F>(s, a, b, an, am);
        ConstraintSumA(SteppedSlot) += u.A;
        ConstraintSumB(SteppedSlot) += u.B;
    }
    return SignalAt<F>(s, a, b, an, am);
}

// The same with the monomer of the non-ideal solution in the place of a.
double NonIdealSignal(FitFrame& f, double a, double measured, bool newSet) {
    // A stepped frame starts from the unstepped solution at the same point and leaves nothing behind: a pass
    // with derivatives and one without go through the same solutions.
    const NonIdealPoint c = SolveNonIdeal(f, a, measured, newSet);
    const double units = c.SignalN + c.SignalM + f.ScaleA * c.Monomer;
    if (f.ConstraintsOn) ConstraintSumA(SteppedSlot) += units;
    return units + f.Offset;
}

double ValueAt(long point) {
    const SetNo set = SetOfPoint(point);
    // The frame is refreshed before a pseudo-point answers as well, so that the next set begins afresh.
    const bool newSet = set != Base.CurSet || (point == 1 && SteppedSlot == NoSlot);
    if (IsPseudoPoint(point)) {
        if (newSet) LoadFrame(Base, set);
        return ConstraintValue(set, point);
    }
    FitFrame& f = FrameFor(set, newSet);
    if (newSet && f.ConstraintsOn) ClearConstraintSums();
    const double x = static_cast<double>(Work.PtX[point]);
    const double a = Exponential(x * f.SigmaA + f.LnA);
    if (Work.NonIdeal && ModelAllowsNonIdeal(Work.Model))
        return NonIdealSignal(f, a, static_cast<double>(Work.PtY[point]), newSet);
    double y = 0.0;
    WithFamily(FamilyOf(Work.Model), [&](auto family) { y = IdealSignal<family.Value>(f, x, a); });
    return y;
}

// The function with one slot stepped by h, and the parameter put back.
double SteppedValue(long point, SlotNo slot, double h) {
    float& parm = Work.Parms[slot];
    const float saved = parm;
    parm = ToSingle(static_cast<double>(saved) + h);
    SteppedSlot = slot;
    const double value = FitFunction(point);
    parm = saved;
    return value;
}

// dy/dp = (y(p + h) - y(p)) / h. The stepped value is that of a single, the divisor the step that was asked
// for, so that the quotient errs by the rounding of p over h, below 1e-5 with the steps of DerivStep.
void NumericDeriv(long point, SlotNo slot, double fittedValue) {
    const double h = DerivStep(slot);
    Work.Deriv[FreePosOf(slot)] = Divide(SteppedValue(point, slot, h) - fittedValue, h);
}

} // namespace

SlotNo DerivParm() {
    return SteppedSlot;
}
void SetDerivParm(SlotNo slot) {
    SteppedSlot = slot;
}

double FitFunction(long point) {
    double y = 0.0;
    try {
        y = ValueAt(point);
        if (!std::isfinite(y)) RaiseError(ErrorText::Overflow);
    } catch (const RuntimeError& error) {
        NoteFunctionError(error.Text);
        y = 0.0;
    }
    SteppedSlot = NoSlot;
    return y;
}

void NoteFunctionError(const std::string& reason) {
    StopAsFailed();
    Work.Outcome = {FitEnd::MathError, FunctionFaultSentence, reason + "."};
}

double DerivStep(SlotNo slot) {
    const double p = static_cast<double>(Work.Parms[slot]);
    switch (RuleOfSlot(slot).Holds) {
    case Quantity::Mass:
        return p * 0.01;
    case Quantity::Stoichiometry:
        return p * 0.02;
    case Quantity::Virial:
        return p == 0.0 ? 0.0004 : p * 0.02; // away from an ideal start
    case Quantity::Constant:
        return slot == SlotNo(2) || slot == SlotNo(4) || slot == SlotNo(6) ? 0.06 : 0.02;
    default:
        return 0.02;
    }
}

SetLeads LeadsOf(SetNo set, SlotNo leadA, SlotNo leadB) {
    const Workspace& w = Work; // the thread's own is looked up once
    const bool separate = w.SeparateK != 0;
    // The offset of another set is this one's as well when it is tied to it.
    const RowNo link(w.OffsetLink[RowOf(set)]);
    const bool tied = link > NoRow && !OffsetSlotHoldsConstant(w.Model, separate);
    return {set, leadA, leadB, tied ? SetOf(link) : NoSet, separate};
}

SetLeads LeadsOf(SetNo set) {
    return LeadsOf(set, LeadSlotA(set), LeadSlotB(set));
}

void CalcDerivs(long point, double fittedValue) {
    const SetLeads leads = LeadsOf(SetOfPoint(point));
    const bool pseudoPoint = IsPseudoPoint(point);
    for (const SlotNo slot : EachSlot()) {
        if (!IsFitted(slot)) continue;
        const FreePos place = FreePosOf(slot);
        switch (DerivKind(slot, leads, pseudoPoint)) {
        case SlotDeriv::Numeric:
            NumericDeriv(point, slot, fittedValue);
            break;
        case SlotDeriv::One:
            Work.Deriv[place] = 1.0;
            break;
        case SlotDeriv::Zero:
            Work.Deriv[place] = 0.0;
            break;
        }
        if (Work.AbortFit) return;
    }
}

void ResetFitFunction() {
    Base = FitFrame{};
    Stepped = FitFrame{};
    SteppedSlot = NoSlot;
    ResetConstraintSums();
}

} // namespace Quillon
