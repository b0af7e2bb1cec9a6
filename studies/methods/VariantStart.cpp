#include "studies/methods/VariantStart.h"

#include "fit/GNLLSQ.h"
#include "fit/equations/FreeMap.h"
#include "models/ModelChoice.h"
#include "models/function/FitFunction.h"
#include "models/function/SharedConcentrations.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "studies/methods/ForgetFit.h"
#include "studies/methods/RestartStart.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <limits>
#include <vector>

namespace Quillon {

namespace {

const SlotRule& RuleIn(const Workspace& w, SlotNo slot) {
    return RuleOfSlot(w.Model, w.SeparateK != 0, slot);
}

bool InUse(const Workspace& w, SlotNo slot) {
    return w.FreeMap[slot] != SlotUnused;
}

// True when a slot holds the same thing in the models of two analyses.
bool MeansTheSame(const Workspace& a, const Workspace& b, SlotNo slot) {
    if (!InUse(a, slot) || !InUse(b, slot)) return false;
    const SlotRule& x = RuleIn(a, slot);
    const SlotRule& y = RuleIn(b, slot);
    if (x.Holds != y.Holds) return false;
    if (x.Holds == Quantity::Stoichiometry) return x.Use != SlotUse::Fixed && y.Use != SlotUse::Fixed;
    if (x.Holds != Quantity::Constant) return true;
    return x.Scale == y.Scale && (slot.Number == 6 || std::string(x.Name) == y.Name);
}

// Held where it is held in own, fitted where it is fitted there; what is tied follows from the links.
void CarryMark(const Workspace& own, SlotNo slot) {
    if (own.FreeMap[slot] == SlotTied || Work.FreeMap[slot] == SlotTied) return;
    Work.FreeMap[slot] = own.FreeMap[slot] >= 0 ? std::int16_t{0} : SlotHeld;
}

bool HoldsOffset(const Workspace& w, SlotNo slot) {
    return RuleIn(w, slot).Holds == Quantity::Offset;
}

// An offset that own's model does not have is exactly 0 there.
void SettleOffset(const Workspace& own, SlotNo slot) {
    if (!HoldsOffset(Work, slot)) return;
    if (HoldsOffset(own, slot)) return CarryMark(own, slot);
    Work.Parms[slot] = 0.0F;
    if (Work.FreeMap[slot] >= 0) Work.FreeMap[slot] = SlotHeld;
}

void CarryMarks(const Workspace& own) {
    for (const SlotNo slot : EachSlot()) {
        if (PartOfSlot(slot) == SlotPart::Offset && HoldsOffset(Work, slot)) {
            SettleOffset(own, slot);
            continue;
        }
        const Quantity holds = RuleIn(Work, slot).Holds;
        if (holds != Quantity::LnSignal && MeansTheSame(own, Work, slot)) CarryMark(own, slot);
    }
}

// The constant that stood for all sets, where each has its own now, and the other way round.
void CarryConstants(const Workspace& own) {
    for (const SlotNo slot : EachSlot()) {
        const SlotRule& now = RuleIn(Work, slot);
        const SlotRule& then = RuleIn(own, slot);
        const bool ofSet = PartOfSlot(slot) != SlotPart::Global;
        if (ofSet && now.Holds == Quantity::Constant && then.Holds != Quantity::Constant &&
            now.Common != NoSlot)
            Work.Parms[slot] = own.Parms[now.Common];
        if (ofSet && SetOfSlot(slot) == SetNo(1) && then.Holds == Quantity::Constant && !Work.SeparateK &&
            then.Common != NoSlot)
            Work.Parms[then.Common] = own.Parms[slot];
    }
}

// A second monomer that own's model does not have. In model 6 its slot holds the stoichiometry.
std::string SettleMassOfB(const Workspace& own) {
    const SlotNo slot(5);
    if (!InUse(Work, slot) || InUse(own, slot)) return "";
    if (RuleIn(own, slot).Use == SlotUse::HiddenAsN) Work.Parms[slot] = 0.0F;
    const float standard = RuleIn(Work, slot).Standard;
    if (Work.Parms[slot] != 0.0F && Work.Parms[slot] != standard) return "";
    Work.Parms[slot] = standard;
    return "The mass of B is not known: it stands at the value for one that nobody has set.";
}

// Stoichiometries that own's model does not have, apart from each other.
void SettleStoichiometries(const Workspace& own) {
    const SlotNo n(1), m(3);
    const auto isNew = [&](SlotNo slot) {
        return InUse(Work, slot) && !InUse(own, slot) && RuleIn(Work, slot).Use != SlotUse::Fixed;
    };
    if (isNew(n)) Work.Parms[n] = RuleIn(Work, n).Standard;
    if (isNew(m)) Work.Parms[m] = Work.Parms[n] + RuleIn(Work, m).Standard;
}

// The variant as it stands is the one to be fitted; no fit of it is known.
void BeginVariant() {
    ForgetFit();
    Work.LastModel = Work.Model;
    Work.LastNonIdeal = Work.NonIdeal;
    Work.LastSeparateK = Work.SeparateK;
}

constexpr float Invisible = -40.0F; // ln K whose complex is far below any noise

// The root of the sum of squares of what the true points' fitted values are, or differ from others by. Beyond
// all numbers where the function has no value.
double SizeOfSignal(const OneBased<float>* others = nullptr) {
    ResetFitFunction();
    CalcSumSq();
    if (Work.FunctionFailed) {
        ForgetStop();
        return std::numeric_limits<double>::infinity();
    }
    double sum = 0.0;
    for (long p = 1; p <= Work.NumPts; ++p) {
        if (Work.PtX[p] == PointMarker) continue;
        const double other = others ? static_cast<double>((*others)[p]) : 0.0;
        const double off = static_cast<double>(Work.PtFit[p]) - other;
        sum += off * off;
    }
    return std::sqrt(sum);
}

// Sets ln K of some slots to where a tenth of the signal comes from them, within 1. The more of a complex,
// the more signal.
void ShowConstant(const std::vector<SlotNo>& slots) {
    constexpr double Shown = 0.1;
    const auto setAll = [&](float lnK) {
        for (const SlotNo slot : slots)
            Work.Parms[slot] = lnK;
    };
    setAll(Invisible);
    const double size = SizeOfSignal();
    const OneBased<float> without = Work.PtFit;
    float low = Invisible, high = 60.0F;
    while (high - low > 1.0F) {
        const float middle = (low + high) / 2.0F;
        setAll(middle);
        (SizeOfSignal(&without) > Shown * size ? high : low) = middle;
    }
    setAll(high);
}

// The new constants of the model, those of the sets that are of one kind together.
std::vector<std::vector<SlotNo>> NewConstants(const Workspace& contained) {
    std::vector<std::vector<SlotNo>> found;
    std::vector<SlotNo> ofB, ofOffset;
    for (const SlotNo slot : EachSlot()) {
        const SlotRule& rule = RuleIn(Work, slot);
        if (rule.Holds != Quantity::Constant || !IsFitted(slot) || MeansTheSame(contained, Work, slot))
            continue;
        const SlotPart part = PartOfSlot(slot);
        const bool common = rule.Common != NoSlot && InUse(contained, rule.Common);
        if (part == SlotPart::Global)
            found.push_back({slot});
        else if (!common) // else each set starts with the constant of all
            (part == SlotPart::B ? ofB : ofOffset).push_back(slot);
    }
    for (const auto& slots : {ofB, ofOffset})
        if (!slots.empty()) found.push_back(slots);
    return found;
}

void ShowNewConstants(const Workspace& contained) {
    const std::vector<std::vector<SlotNo>> constants = NewConstants(contained);
    const auto isCooperativity = [](const std::vector<SlotNo>& slots) {
        return RuleIn(Work, slots.front()).Scale == SlotScale::Zero;
    };
    for (const auto& slots : constants)
        for (const SlotNo slot : slots)
            Work.Parms[slot] = isCooperativity(slots) ? 0.0F : Invisible;
    for (const auto& slots : constants)
        if (!isCooperativity(slots)) ShowConstant(slots);
}

// Concentrations of B that the contained model does not have: a tenth of A.
void StartSignalOfB(SlotNo slot) {
    constexpr float LnTenth = -2.3F;
    Work.Parms[slot] = Work.Parms[SlotA(SetOfSlot(slot))] + LnTenth;
}

} // namespace

std::string TakeUpVariant(const ModelVariant& variant) {
    const Workspace own = Work;
    if (variant == ModelVariant{own.Model, own.NonIdeal != 0, own.SeparateK != 0}) {
        BeginVariant();
        return "";
    }
    Work.Model = variant.Model;
    Work.NonIdeal = Flag(variant.NonIdeal);
    Work.SeparateK = Flag(variant.SeparateK);
    if (!Work.NonIdeal)
        Work.Parms[7] = RuleIn(own, SlotNo(7)).Holds == Quantity::Virial ? 0.0F : own.Parms[7];
    CarryConstants(own);
    CarryBoundsToModel(own.Model, own.SeparateK);
    AnnounceHeteroModel(own.Model);
    AdoptModel(Work.SeparateK, true);
    CarryMarks(own);
    const std::string note = SettleMassOfB(own);
    FillStandardParms();
    SettleStoichiometries(own);
    BuildParmScale();
    if (!AssignFreePositions(FitChoices())) RaiseError("No parameter of this model is fitted.");
    ApplyConcentrationLinks();
    BeginVariant();
    return note;
}

void StartFromFit(const Workspace& contained) {
    for (const FreePos a : EachFree()) {
        const SlotNo slot = SlotOf(a);
        const SlotRule& rule = RuleIn(Work, slot);
        if (MeansTheSame(contained, Work, slot) ||
            (rule.Holds == Quantity::Stoichiometry && InUse(contained, slot)))
            Work.Parms[slot] = contained.Parms[slot];
        else if (rule.Holds == Quantity::LnSignal && PartOfSlot(slot) == SlotPart::B)
            StartSignalOfB(slot);
        else if (rule.Holds == Quantity::Constant && rule.Common != NoSlot &&
                 PartOfSlot(slot) != SlotPart::Global)
            Work.Parms[slot] = contained.Parms[rule.Common];
        else if (rule.Holds == Quantity::Virial)
            Work.Parms[slot] = 0.0F;
    }
    ShowNewConstants(contained);
    ApplyConcentrationLinks();
    BuildParmScale();
    BeginVariant();
}

std::string StartFromGuesses() {
    std::string unread = GuessSignals();
    BuildParmScale();
    BeginVariant();
    return unread;
}

} // namespace Quillon
