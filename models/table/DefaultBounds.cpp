#include "models/table/DefaultBounds.h"

#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Quillon {

namespace {

struct Range {
    float Lower, Upper;
};

// Association constants: natural logarithms, in signal, weight or molar terms.
Range ConstantRange() {
    switch (Work.ConcUnits) {
    case ConcUnit::Absorbance:
        return {-30.0F, 100.0F};
    case ConcUnit::Mole:
    case ConcUnit::FringeMole:
        return {-3.0F, 150.0F};
    default:
        return {-20.0F, 120.0F};
    }
}

Range ConcentrationRange() {
    switch (Work.ConcUnits) {
    case ConcUnit::Absorbance:
        return {-70.0F, 4.0F};
    case ConcUnit::Mole:
    case ConcUnit::FringeMole:
        return {-120.0F, -3.0F};
    case ConcUnit::Fringes:
        return {-60.0F, 10.0F};
    default:
        return {-90.0F, 4.0F};
    }
}

Range VirialRange() {
    const double w = Work.ConcUnits == ConcUnit::Fringes ? 30.0 : ConcInMoles() ? 0.0001 : 10.0;
    return {static_cast<float>(-1.0 / w), static_cast<float>(1.0 / w)};
}

Range UsualRange(Quantity holds) {
    switch (holds) {
    case Quantity::Mass:
        return MassInKiloDalton() ? Range{0.1F, 1e9F} : Range{0.02F, 30.0F};
    case Quantity::Stoichiometry:
        return {0.5F, 100.0F};
    case Quantity::Constant:
        return ConstantRange();
    case Quantity::Virial:
        return VirialRange();
    case Quantity::LnSignal:
        return ConcentrationRange();
    case Quantity::Offset:
    case Quantity::Unread:
        break;
    }
    return Work.ConcUnits == ConcUnit::Fringes ? Range{-20.0F, 20.0F} : Range{-4.0F, 4.0F};
}

Range RangeOf(const SlotRule& rule) {
    switch (rule.Bounds) {
    case SlotBounds::Own:
        return {rule.Lower, rule.Upper};
    case SlotBounds::WideBelow:
        return {-ConstantRange().Upper, UsualRange(rule.Holds).Upper};
    case SlotBounds::Usual:
        break;
    }
    return UsualRange(rule.Holds);
}

// The bound in the units of the present scale that has the internal value of displayed in a former one. A
// user may have set a bound that is none, at the end of the range of singles.
float CarriedBound(SlotNo slot, float displayed, float formerScale) {
    constexpr double Largest = std::numeric_limits<float>::max();
    const double v = static_cast<double>(displayed);
    const double from = static_cast<double>(formerScale);
    const double to = static_cast<double>(Work.ParmScale[slot]);
    const double carried = IsAdditiveSlot(slot) ? v - from + to : Divide(v, from) * to;
    return ToSingle(std::clamp(carried, -Largest, Largest));
}

// A factor with another sign turns a pair of bounds round. Molar masses are positive: of a sample that has
// begun to float (1 - vbar rho below 0) sigma is negative, and bounds of a positive one leave it no place.
void TurnBounds(SlotNo slot, float formerScale) {
    if (IsAdditiveSlot(slot) || !(formerScale < 0.0F) == !(Work.ParmScale[slot] < 0.0F)) return;
    float& lower = Work.Bounds[0][slot];
    float& upper = Work.Bounds[1][slot];
    std::swap(lower, upper);
    const SlotRule& rule = RuleOfSlot(slot);
    if (rule.Holds != Quantity::Mass || Work.MassUnits != MassUnit::Molar || upper > 0.0F) return;
    const Range range = RangeOf(rule);
    lower = range.Lower;
    upper = range.Upper;
}

bool HoldsConstant(std::int16_t model, std::int16_t separateK, SlotNo slot) {
    return RuleOfSlot(model, separateK != 0, slot).Holds == Quantity::Constant;
}

// The default bounds of another model in the units in force.
std::array<PerSlot<float>, 2> DefaultBoundsOf(std::int16_t model, std::int16_t separateK) {
    const auto present = Work.Bounds;
    std::swap(Work.Model, model);
    std::swap(Work.SeparateK, separateK);
    SetDefaultBounds();
    std::swap(Work.Model, model);
    std::swap(Work.SeparateK, separateK);
    return std::exchange(Work.Bounds, present);
}

} // namespace

void SetDefaultBounds() {
    for (auto& side : Work.Bounds)
        side.Recreate(Work.MaxParms - 1);
    for (const SlotNo slot : AllSlots()) {
        const Range range = RangeOf(RuleOfSlot(slot));
        Work.Bounds[0][slot] = range.Lower;
        Work.Bounds[1][slot] = range.Upper;
    }
}

void RefreshUnits() {
    BuildParmNames();
    BuildParmFormats();
    const auto former = Work.ParmScale;
    BuildParmScale();
    for (auto& side : Work.Bounds)
        for (SlotNo slot(0); slot <= SlotNo(side.Hi()); ++slot)
            side[slot] = CarriedBound(slot, side[slot], former[slot]);
    for (const SlotNo slot : AllSlots())
        TurnBounds(slot, former[slot]);
}

void CarryBoundsToModel(std::int16_t oldModel, std::int16_t oldSeparateK) {
    const auto present = Work.Bounds;
    const auto former = DefaultBoundsOf(oldModel, oldSeparateK);
    SetDefaultBounds();
    // A bound that the user set stands as long as the slot still holds the same kind of quantity.
    for (SlotNo slot(0); slot <= SlotNo(present[0].Hi()); ++slot) {
        if (HoldsConstant(Work.Model, Work.SeparateK, slot) != HoldsConstant(oldModel, oldSeparateK, slot))
            continue;
        for (std::size_t side = 0; side < 2; ++side)
            if (present[side][slot] != former[side][slot]) Work.Bounds[side][slot] = present[side][slot];
    }
}

} // namespace Quillon
