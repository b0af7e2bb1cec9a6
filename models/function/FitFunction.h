#pragma once
// The fitted function and its derivatives, point by point: the definition that every faster road has to
// meet bit for bit.

#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

// The model's signal at a point of the fit (1..NumPts) at the current Work.Parms, in signal units of the
// point's own set. An arithmetic fault is noted (NoteFunctionError) and gives 0.
double FitFunction(long point);

// Fills Work.Deriv for a point, given the value at the current parameters: forward differences with the
// step of each slot, exactly 1 for a zero offset, 0 for the slots of other sets but those that it follows.
void CalcDerivs(long point, double fittedValue);

// The slot being stepped during a derivative, NoSlot when the function runs at the unstepped parameters. The
// sums of concentration constraints are kept by it; FitFunction puts it back.
SlotNo DerivParm();
void SetDerivParm(SlotNo slot);

// How the derivative by a fitted slot comes about at the points of a set.
enum class SlotDeriv { Numeric, One, Zero };

// What decides it, found once for a set and asked for each of its slots: the slots that stand for its
// concentrations (its own, or those of the set that it follows), the set whose offset is its own too (NoSet:
// none), and whether its third slot holds a constant of its own.
struct SetLeads {
    SetNo Set;
    SlotNo A, B;
    SetNo OffsetOf;
    bool SeparateK;
};
SetLeads LeadsOf(SetNo set);
SetLeads LeadsOf(SetNo set, SlotNo leadA, SlotNo leadB); // where these are known

inline SlotDeriv DerivKind(SlotNo slot, const SetLeads& leads, bool pseudoPoint) {
    const SlotPart part = PartOfSlot(slot);
    if (part == SlotPart::Global) return SlotDeriv::Numeric;
    if (part == SlotPart::A) return slot == leads.A ? SlotDeriv::Numeric : SlotDeriv::Zero;
    if (part == SlotPart::B) return slot == leads.B ? SlotDeriv::Numeric : SlotDeriv::Zero;
    const SetNo owner = SetOfSlot(slot);
    if (owner == leads.Set && leads.SeparateK) return SlotDeriv::Numeric;
    if (pseudoPoint) return SlotDeriv::Zero; // a constraint excludes offsets, its own and tied ones
    return owner == leads.Set || owner == leads.OffsetOf ? SlotDeriv::One : SlotDeriv::Zero;
}

// The sentence of a fault.
inline constexpr const char* FunctionFaultSentence = "Math error during function evaluation, aborting fit";

// Notes an arithmetic fault inside the function: sets Work.AbortFit and Work.FunctionFailed, and the sentence
// for the user in Work.Outcome, with the reason (as a RuntimeError has it) where none with a place is found.
void NoteFunctionError(const std::string& reason);

// The step of the forward difference of a slot, before the addition in single precision.
double DerivStep(SlotNo slot);

// Forgets everything that is kept between calls; run at the start of each fit.
void ResetFitFunction();

} // namespace Quillon
