#include "fit/equations/FreeMap.h"

#include "workspace/records/Roads.h"

#include <algorithm>

namespace Quillon {

namespace {

std::int16_t CheckOf(std::int16_t map) {
    if (map >= 0) return FitCheckYes;
    return map == SlotHeld ? FitCheckNo : FitCheckGrey;
}

// Positions by rising slot; the last one, -1 where none is fitted.
std::int16_t WriteMap(const std::vector<FitChoice>& choices) {
    std::int16_t last = -1;
    for (const FitChoice& choice : choices) {
        if (choice.Check == FitCheckNo) {
            Work.FreeMap[choice.Slot] = SlotHeld;
            Work.FreeIndex[choice.Slot.Number] = -1;
        } else if (choice.Check == FitCheckYes) {
            Work.FreeMap[choice.Slot] = ++last;
            Work.FreeIndex[last] = ToInt16(choice.Slot.Number);
        }
    }
    return last;
}

void MakeRoomFor(std::int16_t last) {
    Work.NumFree = ToInt16(last + 1);
    Work.NormMatrix.Recreate(last, last);
    Work.NormVector.Recreate(last);
    Work.Increment.Recreate(last);
}

} // namespace

std::vector<FitChoice> FitChoices() {
    std::vector<FitChoice> choices;
    for (const SlotNo slot : EachSlot())
        if (IsInUse(slot)) choices.push_back({slot, CheckOf(Work.FreeMap[slot])});
    return choices;
}

bool AssignFreePositions(const std::vector<FitChoice>& choices) {
    const bool anyFree = std::any_of(choices.begin(), choices.end(),
                                     [](const FitChoice& c) { return c.Check < FitCheckGrey; });
    if (!anyFree) return true;
    // Refused before anything is written: a finished fit that stands keeps its free parameters when the user
    // then gives up.
    const bool anyFitted = std::any_of(choices.begin(), choices.end(),
                                       [](const FitChoice& c) { return c.Check == FitCheckYes; });
    if (!anyFitted) return false;
    MakeRoomFor(WriteMap(choices));
    return true;
}

} // namespace Quillon
