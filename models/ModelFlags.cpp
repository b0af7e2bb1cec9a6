#include "models/ModelFlags.h"

#include "models/function/SharedConcentrations.h"
#include "models/table/Catalogue.h"
#include "models/table/ModelTable.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

void HideWithValue(SlotNo slot, float value) {
    Work.FreeMap[slot] = SlotUnused;
    Work.Parms[slot] = value;
}

void FlagSlot(SlotNo slot) {
    const SlotRule& rule = RuleOfSlot(slot);
    std::int16_t& flag = Work.FreeMap[slot];
    switch (rule.Use) {
    case SlotUse::AsIs:
        return;
    case SlotUse::Shown:
        if (flag == SlotUnused) flag = 0; // fitted; the free positions are numbered later
        return;
    case SlotUse::Held:
        flag = SlotHeld;
        return;
    case SlotUse::Fixed:
        flag = SlotHeld;
        Work.Parms[slot] = rule.Value;
        return;
    case SlotUse::Hidden:
        flag = SlotUnused;
        return;
    case SlotUse::HiddenZero:
        return HideWithValue(slot, 0.0F);
    case SlotUse::HiddenAsN:
        return HideWithValue(slot, Work.Parms[1]);
    case SlotUse::WhenNonIdeal:
        if (!Work.NonIdeal) HideWithValue(slot, 0.0F);
        return;
    }
}

// Without zero offsets there is nothing to tie: a link waits for another model.
void FlagOffsetLinks() {
    const bool offsets = !OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0);
    for (const SetNo set : EachSet()) {
        const RowNo link = offsets ? RowNo(Work.OffsetLink[RowOf(set)]) : NoRow;
        std::int16_t& flag = Work.FreeMap[SlotOffset(set)];
        if (link != NoRow) {
            flag = SlotTied;
            if (SetOf(link) > NoSet) Work.FreeMap[SlotOffset(SetOf(link))] = 0;
        } else if (flag == SlotTied) {
            flag = SlotHeld;
        }
    }
}

// A set that follows another one has no concentrations to fit. One that does no longer has them fitted again.
void FlagShared(SlotNo slot, SlotNo lead) {
    std::int16_t& flag = Work.FreeMap[slot];
    if (flag == SlotUnused) return;
    if (lead != slot)
        flag = SlotTied;
    else if (flag == SlotTied)
        flag = 0;
}

void FlagConcentrationLinks() {
    for (const SetNo set : EachSet()) {
        FlagShared(SlotA(set), LeadSlotA(set));
        FlagShared(SlotB(set), LeadSlotB(set));
    }
}

} // namespace

void ApplyModelFlags() {
    for (const SlotNo slot : AllSlots())
        FlagSlot(slot);
    FlagOffsetLinks();
    FlagConcentrationLinks();
}

void CopySharedConstants() {
    const ModelTraits& traits = TraitsOfModel();
    if (traits.SharedTo != NoSlot) Work.Parms[traits.SharedTo] = Work.Parms[traits.SharedFrom];
}

} // namespace Quillon
