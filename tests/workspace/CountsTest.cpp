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

// Two readings and a loading, one reading, a loading alone, three readings.
TEST(Counts, PointsOfASetEndWithItsPseudoPoints) {
    Work = FreshWorkspace();
    Work.NumSets = 4;
    Work.SetPts.Recreate(4);
    Work.PtX.Recreate(8, 0.5F);
    Work.PtSet.Recreate(8);
    const std::int16_t points[] = {3, 1, 1, 3};
    long point = 0;
    for (const SetNo set : EachSet()) {
        Work.SetPts[set] = points[set.Number - 1];
        for (int i = 0; i < points[set.Number - 1]; ++i)
            Work.PtSet[++point] = static_cast<std::int16_t>(set.Number);
    }
    Work.PtX[3] = Work.PtX[5] = PointMarker;
    const long first[] = {1, 4, 5, 6}, lastTrue[] = {2, 4, 4, 8}, last[] = {3, 4, 5, 8};
    for (const SetNo set : EachSet()) {
        const auto i = static_cast<std::size_t>(set.Number - 1);
        EXPECT_EQ(FirstPointOf(set), first[i]);
        EXPECT_EQ(LastTruePointOf(set), lastTrue[i]);
        EXPECT_EQ(LastPointOf(set), last[i]);
        EXPECT_EQ(TruePointsOf(set), lastTrue[i] - first[i] + 1);
        EXPECT_EQ(SetOfPoint(first[i]), set);
        EXPECT_TRUE(IsPseudoPoint(last[i]) == (set == SetNo(1) || set == SetNo(3)));
    }
}

TEST(Counts, ARowWithoutARangeHasNoPoints) {
    Work = FreshWorkspace();
    Work.FitRange[0][2] = 5;
    Work.FitRange[1][2] = 9;
    EXPECT_EQ(PointsInRange(RowNo(2)), 5);
    Work.FitRange[1][2] = 4;
    EXPECT_EQ(PointsInRange(RowNo(2)), 0);
    EXPECT_FALSE(HasScan(RowNo(2)));
    Work.ScanFile[2] = "00001.RA1";
    EXPECT_TRUE(HasScan(RowNo(2)));
}

} // namespace
} // namespace Quillon
