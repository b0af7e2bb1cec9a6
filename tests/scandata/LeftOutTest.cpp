// Readings that are left out, and come back to the bit.
#include "scandata/table/LeftOut.h"
#include "ScanFixture.h"
#include "scandata/table/DataSetTable.h"
#include "scandata/table/TableRows.h"

#include <random>

namespace Quillon {
namespace {

const RowNo LeftOutRow(1);

struct LeftOutTest : ScanTest {
    LeftOutTest() { Read(ScanText(ManyPoints(50))); } // 6.000, 6.001, ... with 0.001, 0.002, ...

    static std::vector<float> Radii() { return {Work.ScanRadius[1].begin(), Work.ScanRadius[1].end()}; }
    static float InnerRadius() { return Work.ScanRadius[1][Work.FitRange[0][1]]; }
    static float OuterRadius() { return Work.ScanRadius[1][Work.FitRange[1][1]]; }
};

TEST_F(LeftOutTest, AnExclusionTakesBothItsEnds) {
    EXPECT_EQ(Exclude(LeftOutRow, {6.010F, 6.012F}), 3);
    EXPECT_EQ(Work.ScanPoints[1], 47);
    EXPECT_EQ(Work.ScanRadius[1][10], 6.009F);
    EXPECT_EQ(Work.ScanRadius[1][11], 6.013F);
    EXPECT_EQ(Work.ScanValue[1][11], 0.014F);
    EXPECT_EQ(Work.LeftOut[1].size(), 3U);
    EXPECT_EQ(ReadingsOf(LeftOutRow), 50);
}

TEST_F(LeftOutTest, ASingleRadiusIsTheNearestReading) {
    EXPECT_EQ(Exclude(LeftOutRow, {6.0203F, 6.0203F}), 1);
    EXPECT_EQ(Work.LeftOut[1][0].Radius, 6.020F);
    EXPECT_EQ(Work.LeftOut[1][0].Place, 21);
}

TEST_F(LeftOutTest, ASingleRadiusFurtherAwayMeetsNothing) {
    EXPECT_EQ(Exclude(LeftOutRow, {5.9985F, 5.9985F}), 1) << "0.0015 cm from the first reading";
    EXPECT_EQ(Exclude(LeftOutRow, {5.9980F, 5.9980F}), 0);
    EXPECT_EQ(Exclude(LeftOutRow, {7.0F, 7.1F}), 0);
    EXPECT_EQ(Work.ScanPoints[1], 49);
}

TEST_F(LeftOutTest, TheWholeScanCannotBeLeftOut) {
    const Workspace before = Work;
    EXPECT_EQ(Exclude(LeftOutRow, {5.0F, 8.0F}), -1);
    EXPECT_FALSE(SetCeiling(LeftOutRow, 0.0005F));
    EXPECT_TRUE(Work == before);
}

TEST_F(LeftOutTest, TheRangeKeepsThePointsThatItHeld) {
    ASSERT_TRUE(SetRadialRange(LeftOutRow, 6.0095F, 6.0305F));
    Exclude(LeftOutRow, {6.000F, 6.012F}); // before the range and into it
    EXPECT_EQ(InnerRadius(), 6.013F);
    EXPECT_EQ(OuterRadius(), 6.030F);
    Exclude(LeftOutRow, {6.029F, 6.040F});
    EXPECT_EQ(OuterRadius(), 6.028F);
}

TEST_F(LeftOutTest, ARangeThatLosesAllItsPointsIsStillOne) {
    ASSERT_TRUE(SetRadialRange(LeftOutRow, 6.010F, 6.012F));
    Exclude(LeftOutRow, {6.005F, 6.020F});
    EXPECT_GE(Work.FitRange[0][1], 1);
    EXPECT_EQ(Work.FitRange[0][1], Work.FitRange[1][1]);
}

TEST_F(LeftOutTest, WhatComesBackStandsWhereItStood) {
    const Workspace before = Work;
    Exclude(LeftOutRow, {6.000F, 6.004F});
    Exclude(LeftOutRow, {6.040F, 6.049F});
    Exclude(LeftOutRow, {6.020F, 6.020F});
    EXPECT_EQ(TakeBack(LeftOutRow, [](const LeftOutReading&) { return true; }), 16);
    EXPECT_TRUE(Work == before) << "a range that reached an end of the scan reaches it again";
}

// Any order of leaving out and taking back keeps every reading, once, in its place.
TEST_F(LeftOutTest, NoReadingIsLostOrDoubled) {
    const std::vector<float> all = Radii();
    std::mt19937 random(5);
    for (int i = 0; i < 300; ++i) {
        if (random() % 3 == 0) {
            const std::int16_t place = ToInt16(1 + static_cast<long>(random() % 50));
            TakeBack(LeftOutRow, [place](const LeftOutReading& out) { return out.Place >= place; });
        } else {
            const float from = 6.0F + 0.001F * static_cast<float>(random() % 50);
            Exclude(LeftOutRow, {from, from + 0.0012F});
        }
        const OneBased<long> places = PlacesOfPoints(LeftOutRow);
        std::vector<float> joined(50, 0.0F);
        for (long p = 1; p <= Work.ScanPoints[1]; ++p)
            joined[static_cast<std::size_t>(places[p]) - 1] += Work.ScanRadius[1][p];
        for (const LeftOutReading& out : Work.LeftOut[1])
            joined[static_cast<std::size_t>(out.Place) - 1] += out.Radius;
        ASSERT_EQ(joined, all) << "after step " << i;
        ASSERT_GE(Work.FitRange[0][1], 1);
        ASSERT_LE(Work.FitRange[0][1], Work.FitRange[1][1]);
        ASSERT_LE(Work.FitRange[1][1], Work.ScanPoints[1]);
    }
}

TEST_F(LeftOutTest, ExclusionsLeaveTheSameOutOnceMore) {
    Exclude(LeftOutRow, {6.005F, 6.009F});
    Exclude(LeftOutRow, {6.020F, 6.020F});
    Exclude(LeftOutRow, {6.022F, 6.022F});
    const Workspace before = Work;
    const std::vector<Exclusion> exclusions = ExclusionsOf(LeftOutRow);
    EXPECT_EQ(exclusions.size(), 3U);
    Read(ScanText(ManyPoints(50)));
    for (const Exclusion& exclusion : exclusions)
        Exclude(LeftOutRow, exclusion);
    EXPECT_TRUE(Work.LeftOut == before.LeftOut);
    EXPECT_TRUE(Work.ScanRadius == before.ScanRadius);
}

TEST_F(LeftOutTest, ACeilingLooksAtTheSignalBehindTheBaseline) {
    ASSERT_TRUE(SetCeiling(LeftOutRow, 0.0405F));
    EXPECT_EQ(Work.ScanPoints[1], 40);
    EXPECT_EQ(CountLeftOut(LeftOutRow, LeftOutBy::Ceiling), 10);
    ReadAsBaseline(ScanText({"6.0 0.0055", "6.1 0.0055"}));
    Work.BaselineFile[1] = "baseline.RA1";
    Work.IncludeSet[1] = 1;
    RenewCeilings();
    EXPECT_EQ(Work.ScanPoints[1], 46) << "0.046 less 0.0055 is not above";
    ASSERT_TRUE(SetCeiling(LeftOutRow, 0.0F));
    EXPECT_EQ(Work.ScanPoints[1], 50);
}

TEST_F(LeftOutTest, AnotherCeilingBringsNothingBackThatWasLeftOutByHand) {
    Exclude(LeftOutRow, {6.048F, 6.049F});
    ASSERT_TRUE(SetCeiling(LeftOutRow, 0.0405F));
    ASSERT_TRUE(SetCeiling(LeftOutRow, 0.0F));
    EXPECT_EQ(Work.ScanPoints[1], 48);
    EXPECT_EQ(CountLeftOut(LeftOutRow, LeftOutBy::Hand), 2);
}

TEST_F(LeftOutTest, AnotherScanHasAllItsReadings) {
    Exclude(LeftOutRow, {6.048F, 6.049F});
    SetCeiling(LeftOutRow, 0.03F);
    Read(ScanText(ManyPoints(20)));
    EXPECT_TRUE(Work.LeftOut[1].empty());
    EXPECT_EQ(Work.SignalCeiling[1], 0.0F);
    EXPECT_EQ(Work.ScanPoints[1], 20);
}

TEST_F(LeftOutTest, ACopiedRowHasTheSame) {
    Work.ScanFile[1] = "00001.RA1";
    Exclude(LeftOutRow, {6.048F, 6.049F});
    CopyRow(LeftOutRow, RowNo(2));
    EXPECT_TRUE(Work.LeftOut[2] == Work.LeftOut[1]);
    EXPECT_EQ(TakeBack(RowNo(2), [](const LeftOutReading&) { return true; }), 2);
    EXPECT_EQ(Work.ScanPoints[1], 48);
}

} // namespace
} // namespace Quillon
