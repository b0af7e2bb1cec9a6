// The baseline at a radius, and its shift.
#include "scandata/range/BaselineShift.h"
#include "scandata/table/BaselineAt.h"
#include "scandata/table/FitData.h"

#include "ScanFixture.h"

#include <random>

namespace Quillon {
namespace {

void LoadBaseline(long row, const std::vector<std::pair<float, float>>& points) {
    Work.BaselineRadius[row].Recreate(static_cast<long>(points.size()));
    Work.BaselineValue[row].Recreate(static_cast<long>(points.size()));
    long i = 0;
    for (const auto& [radius, value] : points) {
        ++i;
        Work.BaselineRadius[row][i] = radius;
        Work.BaselineValue[row][i] = value;
    }
    Work.BaselinePoints[row] = ToInt16(i);
}

struct Baselines : ScanTest {
    float At(float radius, long row) { return BaselineAt(radius, RowNo(row), Latest); }
    BaselinePlace Latest;
};

TEST_F(Baselines, LinearBetweenItsPoints) {
    LoadBaseline(2, {{6.0F, 1.0F}, {6.5F, 3.0F}, {7.0F, -1.0F}});
    EXPECT_EQ(At(6.0F, 2), 1.0F);
    EXPECT_EQ(At(6.125F, 2), 1.5F);
    EXPECT_EQ(At(6.5F, 2), 3.0F);
    EXPECT_EQ(At(6.75F, 2), 1.0F);
    EXPECT_EQ(At(7.0F, 2), -1.0F);
}

TEST_F(Baselines, ConstantOutsideItsPoints) {
    LoadBaseline(2, {{6.0F, 1.0F}, {6.5F, 3.0F}});
    EXPECT_EQ(At(5.0F, 2), 1.0F);
    EXPECT_EQ(At(6.75F, 2), 3.0F);
    EXPECT_EQ(At(9.0F, 2), 3.0F);
    LoadBaseline(3, {{6.0F, 4.0F}});
    EXPECT_EQ(At(5.0F, 3), 4.0F);
    EXPECT_EQ(At(7.0F, 3), 4.0F);
}

TEST_F(Baselines, WithoutPointsItIsZero) {
    EXPECT_EQ(At(6.0F, 1), 0.0F);
    Work.BaselinePoints[1] = 5; // a damaged record: points without arrays
    EXPECT_EQ(At(6.0F, 1), 0.0F);
}

TEST_F(Baselines, RightInAnyOrderOfCalls) {
    LoadBaseline(1, {{6.0F, 0.0F}, {6.5F, 0.5F}, {7.0F, 1.0F}});
    LoadBaseline(2, {{6.0F, 10.0F}, {6.25F, 11.0F}, {6.75F, 13.0F}, {7.0F, 14.0F}});
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        const long row = static_cast<long>(random() % 2) + 1;
        const float radius = 5.75F + static_cast<float>(random() % 1537) / 1024.0F;
        // Both baselines lie on a line of their own between 6 and 7 cm.
        const float inside = std::min(std::max(radius, 6.0F), 7.0F) - 6.0F;
        EXPECT_EQ(At(radius, row), row == 1 ? inside : 10.0F + 4.0F * inside) << radius;
    }
}

TEST_F(Baselines, ABaselineReplacedBetweenCallsIsReadAnew) {
    LoadBaseline(1, {{6.0F, 0.0F}, {6.1F, 0.0F}, {6.2F, 0.0F}, {6.3F, 0.0F}, {6.4F, 0.0F}});
    EXPECT_EQ(At(6.4F, 1), 0.0F);
    LoadBaseline(1, {{6.0F, 0.0F}, {7.0F, 8.0F}});
    EXPECT_EQ(At(6.5F, 1), 4.0F);
    LoadBaseline(1, {{6.0F, 0.0F}, {6.25F, 1.0F}, {6.75F, 5.0F}, {7.0F, 8.0F}, {8.0F, 9.0F}});
    EXPECT_EQ(At(6.5F, 1), 3.0F);
}

TEST_F(Baselines, ThousandsOfRisingRadiiCostOnePass) {
    std::vector<std::pair<float, float>> points(30000);
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = {6.0F + static_cast<float>(i) / 32768.0F, static_cast<float>(i)};
    LoadBaseline(1, points);
    // A search from the start for each of a million calls would look at 15,000 points on the average.
    for (int i = 0; i < 1000000; ++i) {
        const int p = i * 3 / 100;
        ASSERT_EQ(At(6.0F + static_cast<float>(p) / 32768.0F, 1), static_cast<float>(p));
    }
}

struct Shifts : ScanTest {
    static float ShiftOf(float scan, float baseline, float expansion = 1e-11F) {
        Work.ScanRPM[1] = scan;
        Work.BaselineRPM[1] = baseline;
        Work.RotorExpansion = expansion;
        return CalculatedShift(RowNo(1));
    }
};

TEST_F(Shifts, TheRotorsStretchInWholeThousandths) {
    EXPECT_EQ(ShiftOf(20000, 10000), 0.003F); // 3e8 rpm^2 at 1e-11
    EXPECT_EQ(ShiftOf(30000, 3000), 0.008F);  // 0.00891
    EXPECT_EQ(ShiftOf(10000, 10000), 0.0F);
    EXPECT_EQ(ShiftOf(9000, 3000), 0.0F); // 0.00072
}

TEST_F(Shifts, ABaselineOfTheHigherSpeedIsRoundedAwayFromZero) {
    EXPECT_EQ(ShiftOf(3000, 9000), -0.001F);  // -0.00072
    EXPECT_EQ(ShiftOf(3000, 30000), -0.009F); // -0.00891
    EXPECT_EQ(ShiftOf(10000, 20000), -0.003F);
}

TEST_F(Shifts, AnAdjustmentStartsFromTheCalculatedShiftWhereTheRowHasNone) {
    ShiftOf(20000, 10000);
    EXPECT_EQ(StartingShift(RowNo(1)), 0.003F);
    EXPECT_EQ(Work.BaselineShift[1], 0.003F);
    EXPECT_EQ(Work.BaselineShifted[1], 0);
    Work.BaselineShift[1] = -0.002F;
    EXPECT_EQ(StartingShift(RowNo(1)), -0.002F);
    Work.BaselineShift[1] = 0.0F;
    Work.BaselineRPM[1] = 20000.0F;
    EXPECT_EQ(StartingShift(RowNo(1)), 0.0F);
}

TEST_F(Shifts, AGivenShiftIsInForce) {
    SetBaselineShift(RowNo(4), 0.0125F);
    EXPECT_EQ(Work.BaselineShift[4], 0.0125F);
    EXPECT_EQ(Work.BaselineShifted[4], FlagTrue);
}

} // namespace
} // namespace Quillon
