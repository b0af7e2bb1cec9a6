#include "models/ModelFlags.h"

#include "models/Catalogue.h"
#include "models/ModelTable.h"
#include "models/SharedConcentrations.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

void HideWithValue(long slot, float value) {
    Work.FreeMap[slot] = SlotUnused;
    Work.Parms[slot] = value;
}

void FlagSlot(long slot) {
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
    for (long s = 1; s <= Work.NumSets; ++s) {
        const long link = offsets ? Work.OffsetLink[Work.SetRow[s]] : 0;
        if (link != 0) {
            Work.FreeMap[SlotOffset(s)] = SlotTied;
            const long other = Work.SetOfRow[link];
            if (other > 0) Work.FreeMap[SlotOffset(other)] = 0;
        } else if (Work.FreeMap[SlotOffset(s)] == SlotTied) {
            Work.FreeMap[SlotOffset(s)] = SlotHeld;
        }
    }
}

// A set that follows another one has no concentrations to fit. One that does no longer has them fitted again.
void FlagShared(long slot, long lead) {
    std::int16_t& flag = Work.FreeMap[slot];
    if (flag == SlotUnused) return;
    if (lead != slot)
        flag = SlotTied;
    else if (flag == SlotTied)
        flag = 0;
}

void FlagConcentrationLinks() {
    for (long s = 1; s <= Work.NumSets; ++s) {
        FlagShared(SlotA(s), LeadSlotA(s));
        FlagShared(SlotB(s), LeadSlotB(s));
    }
}

} // namespace

void ApplyModelFlags() {
    for (long slot = 0; slot < NumSlots(Work.MaxSets); ++slot)
        FlagSlot(slot);
    FlagOffsetLinks();
    FlagConcentrationLinks();
}

void CopySharedConstants() {
    const ModelTraits& traits = TraitsOfModel();
    if (traits.SharedTo >= 0) Work.Parms[traits.SharedTo] = Work.Parms[traits.SharedFrom];
}

} // namespace Quillon
