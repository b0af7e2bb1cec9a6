// Rows, sets, slots and free positions: each knows its own arrays, and the slots of a set are found both
// ways.
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

template <class Array, class Index> constexpr bool Takes = requires(Array a, Index i) {
    a[i];
};

TEST(Counts, AnArrayIsAskedWithItsOwnKindOnly) {
    using Sets = decltype(Work.SetRow);
    using Rows = decltype(Work.CellPath);
    using Slots = decltype(Work.Parms);
    using Free = decltype(Work.FreeIndex);
    EXPECT_TRUE((Takes<Sets, SetNo>)&&(Takes<Rows, RowNo>)&&(Takes<Slots, SlotNo>)&&(Takes<Free, FreePos>));
    EXPECT_FALSE((Takes<Sets, RowNo>) || (Takes<Rows, SetNo>) || (Takes<Slots, RowNo>) ||
                 (Takes<Slots, SetNo>) || (Takes<Slots, FreePos>) || (Takes<Free, SlotNo>));
    // A plain number is taken as it stands; an ordinal never becomes one by itself.
    EXPECT_TRUE((Takes<Sets, long>)&&(Takes<Slots, int>));
    EXPECT_FALSE((std::is_convertible_v<RowNo, long>) || (std::is_convertible_v<long, RowNo>));
}

TEST(Counts, EachSlotBelongsToOneSetAndPart) {
    for (long slot = 0; slot < 8; ++slot) {
        EXPECT_EQ(SetOfSlot(slot), 0);
        EXPECT_EQ(PartOfSlot(slot), SlotPart::Global);
    }
    long slot = 8;
    for (long set = 1; set <= StandardMaxSets; ++set)
        for (const SlotPart part : {SlotPart::A, SlotPart::B, SlotPart::Offset}) {
            EXPECT_EQ(SetOfSlot(slot), set);
            EXPECT_EQ(PartOfSlot(slot), part);
            EXPECT_EQ(SetOfSlot(SlotNo(slot)), SetNo(set));
            const long back = part == SlotPart::A   ? SlotA(set)
                              : part == SlotPart::B ? SlotB(set)
                                                    : SlotOffset(set);
            EXPECT_EQ(back, slot++);
        }
    EXPECT_EQ(slot, StandardMaxParms);
    EXPECT_EQ(NumSlots(1), 11);
    EXPECT_EQ(SlotOffset(SetNo(2)), SlotNo(13));
}

TEST(Counts, WalksGoOverWhatTheAnalysisHas) {
    Work = FreshWorkspace();
    Work.NumSets = 2;
    Work.SetRow[1] = 3;
    Work.SetRow[2] = 7;
    Work.SetOfRow[7] = 2;
    long rows = 0;
    for (const SetNo set : EachSet())
        rows = 10 * rows + RowOf(set).Number;
    EXPECT_EQ(rows, 37);
    EXPECT_EQ(SetOf(RowNo(7)), SetNo(2));
    EXPECT_EQ(SetOf(RowNo(1)), SetNo(0)); // outside the fit
    long none = 0;
    for (const FreePos position : EachFree())
        none += position.Number + 1;
    EXPECT_EQ(none, 0); // nothing is fitted yet
    long count = 0;
    for (const RowNo row : EachRow())
        count += row.Number;
    EXPECT_EQ(count, 18 * 19 / 2);
}

} // namespace
} // namespace Quillon
