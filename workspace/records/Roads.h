#pragma once
// The roads between rows, sets, slots and free positions of the open analysis, and walks over them.

#include "workspace/records/Workspace.h"

namespace Quillon {

// The row of a set; row 0 behind NumSets. The set of a row; set 0 outside the fit.
inline RowNo RowOf(SetNo set) {
    return RowNo(Work.SetRow[set]);
}
inline SetNo SetOf(RowNo row) {
    return SetNo(Work.SetOfRow[row]);
}

// The slot of a free position; what FreeMap says of a slot is a free position when it is 0 or more.
inline SlotNo SlotOf(FreePos position) {
    return SlotNo(Work.FreeIndex[position]);
}
inline bool IsFitted(SlotNo slot) {
    return Work.FreeMap[slot] >= 0;
}
inline FreePos FreePosOf(SlotNo fitted) {
    return FreePos(Work.FreeMap[fitted]);
}

inline bool HasBaseline(RowNo row) {
    return Work.BaselineFile[row] != NoBaseline;
}

// All rows of the table, all sets of the fit, all slots in use, all free positions, each in rising order.
inline OrdinalRange<RowKind> EachRow() {
    return {RowNo(1), RowNo(Work.MaxSets)};
}
inline OrdinalRange<SetKind> EachSet() {
    return {SetNo(1), SetNo(Work.NumSets)};
}
inline OrdinalRange<SlotKind> EachSlot() {
    return {SlotNo(0), SlotNo(Work.NumParms - 1)};
}
inline OrdinalRange<FreeKind> EachFree() {
    return {FreePos(0), FreePos(Work.NumFree - 1)};
}

} // namespace Quillon
