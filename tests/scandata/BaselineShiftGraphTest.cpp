// The graph on which a baseline is shifted by eye: its titles, its keys, its failures.
#include "scandata/range/BaselineShiftGraph.h"

#include "ScanFixture.h"
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "tests/support/RecordingSurface.h"

namespace Quillon {
namespace {

constexpr int RightArrow = 39;
constexpr int WithCtrl = 2;

// Row 1 with five points of signal 0.5 at 10000 rpm and a baseline of 0.1 at 20000 rpm.
struct ShiftGraphTest : ScanTest {
    ShiftGraphTest() {
        SetScreenSurface(screen.Surface());
        Work.ScanRPM[1] = 10000.0F;
        Work.BaselineRPM[1] = 20000.0F;
        Work.ScanPoints[1] = Work.BaselinePoints[1] = 5;
        Work.FitRange[0][1] = 1;
        Work.FitRange[1][1] = 5;
        Work.ScanRadius[1].Recreate(5);
        for (long p = 1; p <= 5; ++p)
            Work.ScanRadius[1][p] = 6.0F + 0.01F * static_cast<float>(p);
        Work.BaselineRadius[1] = Work.ScanRadius[1];
        Work.ScanValue[1].Recreate(5, 0.5F);
        Work.BaselineValue[1].Recreate(5, 0.1F);
    }
    ~ShiftGraphTest() override { RemoveScreenSurface(); }
    RecordingSurface screen;
};

// A baseline of the higher speed stands further out: the shift is rounded down, away from zero.
TEST_F(ShiftGraphTest, TellsCalculatedAndPresentShift) {
    Work.RotorExpansion = 1.1e-11F; // (1e8 - 4e8) 1.1e-11 = -0.0033
    script.ExpectModal(ChartsName, [] {
        EXPECT_EQ(Chart.Spec.Title1.Text,
                  "Use L/R cursor keys to shift baseline (w/ CTRL = big movement); ENTER when done");
        EXPECT_EQ(Chart.Spec.Title2.Text, "calculated shift = -.004 cm; present value = -.004");
        EXPECT_EQ(Chart.Spec.AxisX1.Title.Text, "Radius");
        EXPECT_EQ(Chart.Spec.AxisY1.Title.Text, "Absorbance");
        ChartKey(RightArrow, WithCtrl);
        EXPECT_EQ(Chart.Spec.Title1.Text,
                  "Use cursor keys to shift baseline (w/CNTRL=big movement); ENTER when done");
        EXPECT_EQ(Chart.Spec.Title2.Text, "calculated shift = -.004 cm; present value = .001");
        EXPECT_TRUE(Charts.Shown);
        Work.AbortFit = FlagTrue; // as Esc leaves it
        ChartKey(27, 0);
        EXPECT_FALSE(Charts.Shown);
    });
    AdjustBaselineShift(RowNo(1));
    EXPECT_NEAR(Work.BaselineShift[1], 0.001F, 1e-7F);
    EXPECT_EQ(Work.BaselineShifted[1], FlagTrue);
    EXPECT_EQ(Work.AbortFit, 0);
}

TEST_F(ShiftGraphTest, AFailingKeyEndsItAndTurnsTheShiftOff) {
    Work.BaselineShift[1] = 0.004F;
    script.ExpectModal(ChartsName, [] {
        Work.FitRange[1][1] = 6; // a point that the scan does not have
        ChartKey(RightArrow, 0);
        EXPECT_FALSE(Charts.Shown);
    });
    ExpectTold("Error during baseline shift routine, turning off shift.\n\nSet 1: its range lies outside the "
               "scan");
    AdjustBaselineShift(RowNo(1));
    EXPECT_EQ(Work.BaselineShifted[1], FlagFalse);
    EXPECT_EQ(Work.BaselineShift[1], 0.0F);
    EXPECT_FALSE(Charts.EndsOnKey);
}

} // namespace
} // namespace Quillon
