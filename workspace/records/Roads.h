#pragma once
// The roads between rows, sets, slots, free positions and points of the open analysis, and walks over them.
//
// Each of them reads Work: rows and sets know of each other once the table has been accepted (BuildFitData),
// slots and free positions once the fit's map has been made (fit/equations/FreeMap.h). None checks what it is
// given but by the arrays that it reads.

#include "workspace/records/Workspace.h"

namespace Quillon {

// The row of a set; NoRow behind NumSets. The set of a row; NoSet outside the fit.
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
// Whether the fit moves a slot; false for those that are held, tied or of no use.
inline bool IsFitted(SlotNo slot) {
    return Work.FreeMap[slot] >= 0;
}
// Of a slot that is fitted; of another one what comes back is below 0 and no position.
inline FreePos FreePosOf(SlotNo fitted) {
    return FreePos(Work.FreeMap[fitted]);
}

// Whether the model has a use for a slot, be it fitted, held or tied to another one.
inline bool IsInUse(SlotNo slot) {
    return Work.FreeMap[slot] != SlotUnused;
}

// Whether a row of the table holds a scan, and one to be subtracted from it.
inline bool HasScan(RowNo row) {
    return !Work.ScanFile[row].empty();
}
inline bool HasBaseline(RowNo row) {
    return Work.BaselineFile[row] != NoBaseline;
}

// The readings in the fitting range of a row, both ends included; below 1 without a range.
inline long PointsInRange(RowNo row) {
    return Work.FitRange[1][row] - Work.FitRange[0][row] + 1;
}

// Points of the fit lie set by set, in each set the readings first, then the pseudo-points of its loadings.
// The set of a point; the first and last point of a set, the last reading among them (below the first one
// in a set without any), and how many readings there are.
inline SetNo SetOfPoint(long point) {
    return SetNo(Work.PtSet[point]);
}
// Whether a point is a loading that the fit weighs, and no reading of a scan. Points count from 1.
inline bool IsPseudoPoint(long point) {
    return Work.PtX[point] == PointMarker;
}
long FirstPointOf(SetNo set);
long LastPointOf(SetNo set);
long LastTruePointOf(SetNo set);
long TruePointsOf(SetNo set);

// All rows of the table, all sets of the fit, all slots in use, all that a table full of sets would use, all
// free positions, each in rising order.
// A loop that changes NumSets, NumParms or NumFree goes on to the end that stood when it began.
inline OrdinalRange<RowKind> EachRow() {
    return {RowNo(1), RowNo(Work.MaxSets)};
}
inline OrdinalRange<SetKind> EachSet() {
    return {SetNo(1), SetNo(Work.NumSets)};
}
inline OrdinalRange<SlotKind> EachSlot() {
    return {SlotNo(0), SlotNo(Work.NumParms - 1)};
}
inline OrdinalRange<SlotKind> AllSlots() {
    return {SlotNo(0), SlotNo(NumSlots(Work.MaxSets) - 1)};
}
inline OrdinalRange<FreeKind> EachFree() {
    return {FreePos(0), FreePos(Work.NumFree - 1)};
}

} // namespace Quillon
