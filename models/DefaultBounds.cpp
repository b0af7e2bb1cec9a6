// The default bounds of the parameters in user units, and their way through a change of units or model.
#include "models/Catalogue.h"
#include "models/ParmScale.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Quillon {

namespace {

struct Range {
    float Lower, Upper;
};

void Put(long slot, Range r) {
    Work.Bounds[0][slot] = r.Lower;
    Work.Bounds[1][slot] = r.Upper;
}

// Association constants: natural logarithms, in signal, weight or molar terms.
Range ConstantRange() {
    switch (Work.ConcUnits) {
    case 0:
        return {-30.0F, 100.0F};
    case 2:
    case 5:
        return {-3.0F, 150.0F};
    default:
        return {-20.0F, 120.0F};
    }
}

Range ConcentrationRange() {
    switch (Work.ConcUnits) {
    case 0:
        return {-70.0F, 4.0F};
    case 2:
    case 5:
        return {-120.0F, -3.0F};
    case 3:
        return {-60.0F, 10.0F};
    default:
        return {-90.0F, 4.0F};
    }
}

// The bound in the units of the present scale that has the internal value of displayed in a former one. A
// user may have set a bound that is none, at the end of the range of singles.
float CarriedBound(long slot, float displayed, float formerScale) {
    constexpr double Largest = std::numeric_limits<float>::max();
    const double v = static_cast<double>(displayed);
    const double from = static_cast<double>(formerScale);
    const double to = static_cast<double>(Work.ParmScale[slot]);
    const double carried = IsAdditiveSlot(slot) ? v - from + to : Divide(v, from) * to;
    return ToSingle(std::clamp(carried, -Largest, Largest));
}

// True when the slot holds an association constant; the slots of a set may change over to one, and that of
// the virial coefficient.
bool HoldsConstant(long slot) {
    const int model = Work.Model;
    if (slot == 2 || slot == 4 || slot == 6) return true;
    if (slot == 7) return model >= 10;
    if (slot < 7 || !Work.SeparateK) return false;
    if (slot % 3 == 0) return model >= 2 && model <= 6; // that of species B
    return slot % 3 == 1 && (model == 4 || model == 5 || model == 8 || model == 9);
}

Range VirialRange() {
    const int units = Work.ConcUnits;
    const double w = units == 3 ? 30.0 : units == 2 || units == 5 ? 0.0001 : 10.0;
    return {static_cast<float>(-1.0 / w), static_cast<float>(1.0 / w)};
}

} // namespace

void SetDefaultBounds() {
    const int model = Work.Model;
    const Range constant = ConstantRange();
    const Range mass = MassInKiloDalton() ? Range{0.1F, 1e9F} : Range{0.02F, 30.0F};
    for (auto& row : Work.Bounds)
        row.Recreate(Work.MaxParms - 1);
    Put(0, mass);
    Put(5, mass);
    Put(1, {0.5F, 100.0F});
    Put(3, {0.5F, 100.0F});
    for (const long slot : {2, 4, 6})
        Put(slot, constant);
    Put(7, HoldsConstant(7) ? constant : VirialRange());

    const Range offset = Work.ConcUnits == 3 ? Range{-20.0F, 20.0F} : Range{-4.0F, 4.0F};
    for (long s = 1; s <= Work.MaxSets; ++s) {
        Put(SlotA(s), ConcentrationRange());
        Put(SlotB(s), HoldsConstant(SlotB(s)) ? constant : ConcentrationRange());
        Put(SlotOffset(s), HoldsConstant(SlotOffset(s)) ? constant : offset);
    }
    if (model == 7) Work.Bounds[0][7] = -constant.Upper;
    if (model == 13 || model == 14) Put(2, {-10.0F, 30.0F});
    if (model == 21)
        for (const long slot : {2, 4})
            Put(slot, {-4.0F, 28.0F});
}

void RefreshUnits() {
    BuildParmNames();
    BuildParmFormats();
    const auto former = Work.ParmScale;
    BuildParmScale();
    for (auto& row : Work.Bounds)
        for (long i = 0; i <= row.Hi(); ++i)
            row[i] = CarriedBound(i, row[i], former[i]);
}

void CarryBoundsToModel(std::int16_t oldModel, std::int16_t oldSeparateK) {
    const std::int16_t model = std::exchange(Work.Model, oldModel);
    const std::int16_t separateK = std::exchange(Work.SeparateK, oldSeparateK);
    const auto present = Work.Bounds;
    const long last = present[0].Hi();
    SetDefaultBounds();
    const auto former = Work.Bounds;
    PerSlot<std::int16_t> heldConstant(last);
    for (long i = 0; i <= last; ++i)
        heldConstant[i] = Flag(HoldsConstant(i));
    Work.Model = model;
    Work.SeparateK = separateK;
    SetDefaultBounds();
    // A bound that the user set stands as long as the slot still holds the same kind of quantity.
    for (long i = 0; i <= last; ++i) {
        if (Flag(HoldsConstant(i)) != heldConstant[i]) continue;
        for (std::size_t side = 0; side < 2; ++side)
            if (present[side][i] != former[side][i]) Work.Bounds[side][i] = present[side][i];
    }
}

} // namespace Quillon
