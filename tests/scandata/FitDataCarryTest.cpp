// What becomes of the fitted parameters when the table is rearranged.
#include "scandata/table/DataSetTable.h"
#include "scandata/table/FitData.h"

#include "ScanFixture.h"

#include <cmath>

namespace Quillon {
namespace {

// Four rows of two points, of the same cell and speed; the first fit holds rows 1, 2 and 3 with the slots
// 8, 9, 10; 11, 12, 13; 14, 15, 16 as the values of their parameters.
struct CarriedParms : ScanTest {
    CarriedParms() {
        for (long row = 1; row <= 4; ++row) {
            Work.ScanRadius[row] = OneBased<float>(2, 6.0F);
            Work.ScanValue[row] = OneBased<float>(2, 0.5F);
            Work.ScanPoints[row] = 2;
            Work.FitRange[0][row] = 1;
            Work.FitRange[1][row] = 2;
            Work.ScanRPM[row] = 20000.0F;
            Work.ScanTemperature[row] = 20.0F;
            Work.ScanFile[row] = "x";
        }
        Include({1, 2, 3});
        BuildFitData();
        for (long slot = 0; slot < Work.MaxParms; ++slot) {
            Work.Parms[slot] = static_cast<float>(slot);
            Work.FreeMap[slot] = ToInt16(slot);
        }
    }
    static void Include(const std::vector<long>& rows) {
        for (long row = 1; row <= Work.MaxSets; ++row)
            Work.IncludeSet[row] = 0;
        for (long row : rows)
            Work.IncludeSet[row] = 1;
    }
    static std::vector<float> SetParms(long set) {
        return {Work.Parms[3 * set + 5], Work.Parms[3 * set + 6], Work.Parms[3 * set + 7]};
    }
    static std::vector<int> SetFree(long set) {
        return {Work.FreeMap[3 * set + 5], Work.FreeMap[3 * set + 6], Work.FreeMap[3 * set + 7]};
    }
    // Those of all sets; the set-up of the model works on the global ones.
    static std::vector<float> AllSetParms() { return {Work.Parms.begin() + 8, Work.Parms.end()}; }
    using Three = std::vector<float>;
};

TEST_F(CarriedParms, AnUnchangedTableKeepsThem) {
    const std::vector<float> before = AllSetParms();
    BuildFitData();
    EXPECT_EQ(AllSetParms(), before);
    Work.SetChanged[2] = FlagTrue; // the set stays in its place: its parameters do too
    BuildFitData();
    EXPECT_EQ(AllSetParms(), before);
}

TEST_F(CarriedParms, TheyFollowTheirRow) {
    Include({2, 3});
    BuildFitData();
    EXPECT_EQ(SetParms(1), (Three{11, 12, 13}));
    EXPECT_EQ(SetParms(2), (Three{14, 15, 16}));
}

TEST_F(CarriedParms, TheFitFlagsFollowToo) {
    Work.Model = 7; // all three slots of a set are in use
    Work.FreeMap[11] = SlotHeld;
    Work.FreeMap[12] = 4;
    Include({2, 3});
    BuildFitData();
    EXPECT_EQ(SetFree(1)[0], SlotHeld);
    EXPECT_EQ(SetFree(1)[1], 4);
}

TEST_F(CarriedParms, InPlaceAValueAlreadyReplacedIsCopiedOn) {
    // The first fit holds rows 2 and 3; then row 1 comes in front: set 1 takes what row 1 last had, set 2
    // takes the slots of the former set 1, which have just been overwritten.
    Include({2, 3});
    BuildFitData();
    Work.Parms[8] = 80.0F;
    Work.Parms[11] = 110.0F;
    Include({1, 2, 3});
    BuildFitData();
    EXPECT_EQ(SetParms(1), (Three{8, 9, 10}));
    EXPECT_EQ(SetParms(2), (Three{8, 9, 10}));
    EXPECT_EQ(SetParms(3), (Three{8, 9, 10}));
}

TEST_F(CarriedParms, ARowTakenOutAndPutBackAtTheEndResumesItsValues) {
    Include({1, 2});
    BuildFitData();
    Work.Parms[14] = -1.0F; // whatever happens to the free slots meanwhile
    Include({1, 2, 3});
    BuildFitData();
    EXPECT_EQ(SetParms(3), (Three{14, 15, 16}));
}

TEST_F(CarriedParms, ANewChannelStartsFromZero) {
    Include({1, 2});
    BuildFitData();
    SetChannel(RowNo(3), 0);
    Include({1, 2, 3});
    BuildFitData();
    EXPECT_EQ(SetParms(3), (Three{0, 0, 0}));
}

TEST_F(CarriedParms, AChangedRowInAnotherPlaceTakesItsMemoryWithoutItsFlags) {
    Work.Model = 7;
    Work.SetChanged[3] = FlagTrue;
    Work.FreeMap[12] = 5;
    Work.FreeMap[15] = 7;
    Include({1, 3});
    BuildFitData();
    EXPECT_EQ(SetParms(2), (Three{14, 15, 16}));
    EXPECT_EQ(SetFree(2)[1], 5);
}

TEST_F(CarriedParms, ARowThatWasNeverInTheFitStartsFromZero) {
    Include({1, 2, 3, 4});
    BuildFitData();
    EXPECT_EQ(SetParms(3), (Three{14, 15, 16}));
    EXPECT_EQ(SetParms(4), (Three{0, 0, 0}));
}

TEST_F(CarriedParms, WithoutChosenDataNothingIsCarried) {
    Work.DataChosen = 0;
    Work.ScanRPM[2] = 40000.0F;
    Work.CellPath[2] = 0.3F;
    const std::vector<float> before = AllSetParms();
    Include({2, 3});
    BuildFitData();
    EXPECT_EQ(AllSetParms(), before);
    EXPECT_EQ(Work.SetParmMemory(1, 1), 0.0F);
}

TEST_F(CarriedParms, ConcentrationsMoveToTheSignalOfTheNewFirstSet) {
    Work.ExtinctionRatio[0][2] = 2.0F;
    Work.ExtinctionRatio[1][2] = 0.5F;
    Work.CellPath[1] = 1.2F;
    Work.CellPath[2] = 0.3F;
    Include({2, 3});
    BuildFitData();
    EXPECT_NEAR(Work.Parms[8], 11.0 + std::log(2.0 * 0.3 / 1.2), 1e-6);
    EXPECT_NEAR(Work.Parms[9], 12.0 + std::log(0.5 * 0.3 / 1.2), 1e-6);
    EXPECT_EQ(Work.Parms[10], 13.0F);
    EXPECT_NEAR(Work.Parms[11], 14.0 + std::log(2.0 * 0.3 / 1.2), 1e-6);
    EXPECT_NEAR(Work.Parms[12], 15.0 + std::log(0.5 * 0.3 / 1.2), 1e-6);
}

TEST_F(CarriedParms, MassesMoveToTheSpeedOfTheNewFirstSet) {
    Work.ScanRPM[2] = 30000.0F;
    Work.Parms[0] = 2.0F;
    Work.Parms[5] = 4.0F;
    Include({2, 3});
    BuildFitData();
    EXPECT_FLOAT_EQ(Work.Parms[0], 4.5F); // (3/2)^2
    EXPECT_FLOAT_EQ(Work.Parms[5], 9.0F);
    EXPECT_EQ(Work.Parms[6], 6.0F);
}

TEST_F(CarriedParms, APathOfZeroIsAnErrorAndLeavesThem) {
    Include({2, 3});
    Work.CellPath[1] = 0.0F;
    const PerSlot<float> before = Work.Parms;
    EXPECT_THROW(BuildFitData(), RuntimeError);
    Work.CellPath[1] = 1.2F;
    Work.CellPath[2] = -1.2F;
    Work.DataChosen = FlagTrue;
    EXPECT_THROW(BuildFitData(), RuntimeError);
    EXPECT_TRUE(Work.Parms == before);
}

TEST_F(CarriedParms, TheMemoryHoldsTheLastFittedValues) {
    BuildFitData();
    for (long row = 1; row <= 3; ++row)
        for (long j = 1; j <= 3; ++j)
            EXPECT_EQ(Work.SetParmMemory(j, row), static_cast<float>(3 * row + 4 + j));
    EXPECT_EQ(Work.SetParmMemory(1, 4), 0.0F);
}

} // namespace
} // namespace Quillon
