// Putting parameters back onto their bounds.
#include "fit/equations/Bounds.h"

#include "SyntheticFit.h"
#include "fit/forms/FitMon.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

class EnforceBoundsTest : public testing::Test {
protected:
    void SetUp() override {
        Work = FreshWorkspace();
        MakeLevels({{1.0F}, {2.0F}, {3.0F}});
        for (long s = 1; s <= 3; ++s)
            SetBounds(SlotOffset(s), -1.0F, 1.0F);
    }
    static void SetBounds(long slot, float lower, float upper) {
        Work.Bounds[0][slot] = lower;
        Work.Bounds[1][slot] = upper;
    }
    static void FitSlot(long slot) {
        Work.FreeMap[slot] = 0;
        NumberFitted();
    }
    Script Outside;
};

TEST_F(EnforceBoundsTest, InsideIsLeftAlone) {
    Level(1) = 0.5F;
    Level(2) = -0.5F;
    Work.BoundHit = 1;
    Work.AtBound.Recreate(3, 1);
    EnforceBounds();
    EXPECT_EQ(Level(1), 0.5F);
    EXPECT_EQ(Level(2), -0.5F);
    EXPECT_EQ(Work.BoundHit, 0);
    for (long a = 0; a < 3; ++a)
        EXPECT_EQ(Work.AtBound[a], 0);
}

TEST_F(EnforceBoundsTest, OutsideIsPutBackAndTold) {
    Level(1) = -1.5F;
    Level(3) = 40.0F;
    EnforceBounds();
    EXPECT_EQ(Level(1), -1.0F);
    EXPECT_EQ(Level(3), 1.0F);
    EXPECT_EQ(Work.BoundHit, 1);
    EXPECT_EQ(Work.AtBound[0], -1);
    EXPECT_EQ(Work.AtBound[1], 0);
    EXPECT_EQ(Work.AtBound[2], 1);
}

TEST_F(EnforceBoundsTest, ExactlyOnABoundIsFree) {
    Level(1) = -1.0F;
    Level(2) = 1.0F;
    EnforceBounds();
    EXPECT_EQ(Work.BoundHit, 0);
    EXPECT_EQ(Work.AtBound[0], 0);
    EXPECT_EQ(Work.AtBound[1], 0);
    // One last place further on it is not.
    Level(2) = std::nextafter(1.0F, 2.0F);
    EnforceBounds();
    EXPECT_EQ(Work.BoundHit, 1);
    EXPECT_EQ(Level(2), 1.0F);
}

TEST_F(EnforceBoundsTest, LaterFreeParametersDoNotHideAHit) {
    Level(1) = 7.0F;
    EnforceBounds();
    EXPECT_EQ(Work.BoundHit, 1);
}

TEST_F(EnforceBoundsTest, HeldParametersMayStandOutside) {
    Work.FreeMap[SlotOffset(2)] = SlotHeld;
    NumberFitted();
    Level(2) = 50.0F;
    Work.Parms[0] = 1000.0F;
    SetBounds(0, 0.0F, 1.0F);
    EnforceBounds();
    EXPECT_EQ(Level(2), 50.0F);
    EXPECT_EQ(Work.Parms[0], 1000.0F);
    EXPECT_EQ(Work.BoundHit, 0);
}

TEST_F(EnforceBoundsTest, BoundsAreInUserUnits) {
    // A mass by its factor, a concentration by its addend.
    FitSlot(0);
    FitSlot(SlotA(1));
    Work.ParmScale[0] = 40.0F;
    Work.ParmScale[SlotA(1)] = 2.5F;
    SetBounds(0, 10.0F, 100.0F);
    SetBounds(SlotA(1), -3.0F, 4.0F);
    Work.Parms[0] = 2.0F; // 80
    Work.Parms[SlotA(1)] = 1.0F;
    EnforceBounds();
    EXPECT_EQ(Work.BoundHit, 0);
    Work.Parms[0] = 3.0F; // 120
    Work.Parms[SlotA(1)] = -6.0F;
    EnforceBounds();
    EXPECT_EQ(Work.Parms[0], 2.5F);
    EXPECT_EQ(Work.Parms[SlotA(1)], -5.5F);
    EXPECT_EQ(Work.AtBound[0], 1);
    EXPECT_EQ(Work.AtBound[1], -1);
}

TEST_F(EnforceBoundsTest, BoundIsRoundedToASingleInInternalTerms) {
    FitSlot(0);
    Work.ParmScale[0] = 3.0F;
    SetBounds(0, 0.1F, 10.0F);
    Work.Parms[0] = 0.0F;
    EnforceBounds();
    EXPECT_EQ(Work.Parms[0], static_cast<float>(static_cast<double>(0.1F) / 3.0));
    Work.Parms[0] = 11.0F;
    EnforceBounds();
    EXPECT_EQ(Work.Parms[0], static_cast<float>(10.0 / 3.0));
}

// For some scales the bound put back counts as outside once more; it is then put back to the same number.
TEST_F(EnforceBoundsTest, ParameterPutBackStaysWhereItIs) {
    FitSlot(0);
    for (const float scale : {3.0F, 0.7F, 41.3F, 1e-3F, 977.0F})
        for (const float bound : {0.1F, 0.3F, 11.1F}) {
            Work.ParmScale[0] = scale;
            SetBounds(0, bound, 1e9F);
            Work.Parms[0] = 0.0F;
            EnforceBounds();
            const float first = Work.Parms[0];
            EnforceBounds();
            EXPECT_EQ(Work.Parms[0], first);
        }
}

TEST_F(EnforceBoundsTest, CrossedPairMakesTheParameterJump) {
    SetBounds(SlotOffset(1), 2.0F, 1.0F);
    Level(1) = 1.5F;
    for (const float expected : {2.0F, 1.0F, 2.0F, 1.0F}) {
        EnforceBounds();
        EXPECT_EQ(Level(1), expected);
        EXPECT_EQ(Work.BoundHit, 1);
    }
    Level(1) = 3.0F;
    EnforceBounds();
    EXPECT_EQ(Level(1), 1.0F);
    Level(1) = -9.0F;
    EnforceBounds();
    EXPECT_EQ(Level(1), 2.0F);
}

TEST_F(EnforceBoundsTest, MonitorMarksWhatStoodOutside) {
    LoadFitMon();
    const FitProgress progress = MonitorProgress();
    const ProgressInUse inUse(progress);
    const auto enforce = [] {
        EnforceBounds();
        ReportStep(); // as behind each trial
    };
    Level(2) = 9.0F;
    enforce();
    EXPECT_FALSE(FitMon.BoundWarning[0].Visible);
    EXPECT_TRUE(FitMon.BoundWarning[1].Visible);
    enforce();
    EXPECT_FALSE(FitMon.BoundWarning[1].Visible);
    // A row that does not show is not marked.
    FitMon.ParameterName[1].Visible = false;
    Level(2) = 9.0F;
    enforce();
    EXPECT_FALSE(FitMon.BoundWarning[1].Visible);
    UnloadFitMon();
}

} // namespace
} // namespace Quillon
