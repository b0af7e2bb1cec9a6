#pragma once
// What is counted in an analysis: rows of the data set table, sets of the fit, parameter slots, free
// positions. Each is a type of its own, so that one cannot stand where another is meant.
//
//   RowNo    line of the data set table, 1..MaxSets
//   SetNo    place of a row among those in the fit, 1..NumSets
//   SlotNo   place in the parameter vector, 0..MaxParms - 1: eight global slots, then three for each set
//   FreePos  place among the fitted parameters, 0..NumFree - 1, the order of the normal matrix
//
// The roads between rows, sets, slots and free positions of the open analysis are in
// workspace/records/Roads.h.

#include "platform/Arrays.h"

#include <cstdint>

namespace Quillon {

using RowNo = Ordinal<struct RowKind>;    // from 1
using SetNo = Ordinal<struct SetKind>;    // from 1
using SlotNo = Ordinal<struct SlotKind>;  // from 0
using FreePos = Ordinal<struct FreeKind>; // from 0

// Of what is none: no row, no set, no slot.
inline constexpr RowNo NoRow{0};
inline constexpr SetNo NoSet{0};
inline constexpr SlotNo NoSlot{-1};

// Arrays by each of them, from the lowest place that there is.
template <class T> using PerRow = BasedArray<T, 1, RowKind>;
template <class T> using PerSet = BasedArray<T, 1, SetKind>;
template <class T> using PerSlot = BasedArray<T, 0, SlotKind>;
template <class T> using PerFree = BasedArray<T, 0, FreeKind>;

inline constexpr long GlobalSlots = 8;              // slots 0..7 are common to all sets
inline constexpr long SlotsPerSet = 3;              // concentrations of A and B, zero offset
inline constexpr std::int16_t StandardMaxSets = 18; // two pages of nine rows

// The eight global slots by rising number, those that the model has no use for too.
inline constexpr OrdinalRange<struct SlotKind> EachGlobalSlot() {
    return {SlotNo(0), SlotNo(GlobalSlots - 1)};
}

// The slots in use with so many sets; the highest one is one less.
inline constexpr long NumSlots(long sets) {
    return GlobalSlots + SlotsPerSet * sets;
}
inline constexpr std::int16_t StandardMaxParms = NumSlots(StandardMaxSets); // 62, of a full table

// The parameter slots of a set: ln c of A, ln c of B, zero offset. Set s counts from one.
inline constexpr long SlotA(long set) {
    return NumSlots(set - 1);
}
inline constexpr long SlotB(long set) {
    return SlotA(set) + 1;
}
inline constexpr long SlotOffset(long set) {
    return SlotA(set) + 2;
}
inline constexpr SlotNo SlotA(SetNo set) {
    return SlotNo(SlotA(set.Number));
}
inline constexpr SlotNo SlotB(SetNo set) {
    return SlotNo(SlotB(set.Number));
}
inline constexpr SlotNo SlotOffset(SetNo set) {
    return SlotNo(SlotOffset(set.Number));
}

// Which of a set's three slots a slot is; Global for the eight that belong to no set.
// Its number is the distance from the set's first slot.
enum class SlotPart { Global = -1, A = 0, B = 1, Offset = 2 };
inline constexpr SlotPart PartOfSlot(long slot) {
    return slot < GlobalSlots ? SlotPart::Global : static_cast<SlotPart>((slot - GlobalSlots) % SlotsPerSet);
}
inline constexpr SlotPart PartOfSlot(SlotNo slot) {
    return PartOfSlot(slot.Number);
}

// The set that a slot belongs to; 0 for a global slot.
inline constexpr long SetOfSlot(long slot) {
    return slot < GlobalSlots ? 0 : (slot - GlobalSlots) / SlotsPerSet + 1;
}
inline constexpr SetNo SetOfSlot(SlotNo slot) {
    return SetNo(SetOfSlot(slot.Number));
}

} // namespace Quillon
