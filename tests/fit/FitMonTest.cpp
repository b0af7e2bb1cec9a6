// The fit monitor: its layout, what the engine writes into it, what its buttons do to a running fit.
#include "fit/forms/FitMon.h"

#include "SyntheticFit.h"
#include "fit/GNLLSQ.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Quillon {
namespace {

class Monitor : public testing::Test {
protected:
    void SetUp() override {
        Work = FreshWorkspace();
        UnloadFitMon();
        MakeLevels({{0.25F, 0.75F, 0.25F, 0.75F}});
        Work.MonitorMode = 1;
        Work.PauseBeforeFit = FlagFalse;
    }
    void TearDown() override { UnloadFitMon(); }

    // A monitor over the first count slots that a parameter can have.
    static void LoadWithRows(int count) {
        Work.NumFree = ToInt16(count);
        for (long a = 0; a < count; ++a) {
            Work.FreeIndex[a] = ToInt16(a);
            Work.ParmName[a] = "P" + std::to_string(a);
            Work.ParmFormat[a] = "0.00";
            Work.Parms[a] = static_cast<float>(a);
            Work.ParmScale[a] = 1.0F;
        }
        LoadFitMon();
    }

    // A fit under the monitor, as the command runs it.
    static bool Fit() {
        OpenFitMonitor();
        RunFit(MonitorProgress());
        CloseFitMonitor();
        return Work.FitDone != 0;
    }

    static std::vector<std::size_t> VisibleRows(const std::vector<Control>& rows) {
        std::vector<std::size_t> visible;
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (rows[i].Visible) visible.push_back(i);
        return visible;
    }
    static std::vector<std::size_t> Range(std::size_t from, std::size_t to) {
        std::vector<std::size_t> range;
        for (std::size_t i = from; i <= to; ++i)
            range.push_back(i);
        return range;
    }

    Script Outside;
};

// --- the form
// ----------------------------------------------------------------------------------------------------

TEST_F(Monitor, DesignTexts) {
    LoadFitMon();
    EXPECT_TRUE(FitMon.Loaded);
    EXPECT_EQ(FitMon.Caption, "Quillon - Fit Monitor");
    EXPECT_EQ(FitMon.FitButton.Text, "Do &Fit");
    EXPECT_EQ(FitMon.NextIter.Text, "1 &Iteration");
    EXPECT_EQ(FitMon.CancelButton.Text, "&Cancel");
    EXPECT_EQ(FitMon.Page2.Text, "Page &2");
    EXPECT_EQ(FitMon.StatusText.Text, "Accumulating Sums");
    EXPECT_EQ(FitMon.StatusText.Tag, "");
    EXPECT_EQ(FitMon.IterNum.Text, "1");
    EXPECT_EQ(FitMon.AlphaText.Text, "1.0000");
    ASSERT_EQ(FitMon.Label1.size(), 1U);
    EXPECT_EQ(FitMon.Label1[0].Text, "Parameter");
    EXPECT_EQ(FitMon.Label2[0].Text, "Current Value");
    EXPECT_EQ(FitMon.Label3[0].Text, "Previous Value");
    EXPECT_EQ(FitMon.Label4[0].Text, "Outside Bounds");
}

TEST_F(Monitor, RowsNameTheFittedParametersInUserUnits) {
    MakeLevels({{1.0F}, {2.0F}});
    Work.FreeMap[0] = 0;
    NumberFitted();
    Work.MassUnits = 1;
    BuildParmScale();
    Work.Parms[0] = 1.25F;
    Work.ParmScale[0] = 40.0F; // kDa for each unit of sigma
    Work.ParmFormat[0] = "0.000";
    Work.ParmFormat[SlotOffset(1)] = Work.ParmFormat[SlotOffset(2)] = "#.0000";
    Level(1) = 0.25F;
    Level(2) = -0.5F;
    LoadFitMon();
    ASSERT_EQ(FitMon.ParameterName.size(), 4U);
    EXPECT_EQ(FitMon.ParameterName[0].Text, Work.ParmName[0]);
    EXPECT_EQ(FitMon.CurValue[0].Text, "50.000");
    EXPECT_EQ(FitMon.ParameterName[1].Text, "Zero Offset, set 1");
    EXPECT_EQ(FitMon.CurValue[1].Text, ".2500");
    EXPECT_EQ(FitMon.ParameterName[2].Text, "Zero Offset, set 2");
    EXPECT_EQ(FitMon.CurValue[2].Text, "-.5000");
    EXPECT_EQ(FitMon.ParameterName[3].Text, "Sum (Errors)^2");
    EXPECT_EQ(FitMon.CurValue[3].Text, "");
    for (std::size_t row = 0; row < 4; ++row) {
        EXPECT_EQ(FitMon.PrevValue[row].Text, "");
        EXPECT_FALSE(FitMon.BoundWarning[row].Visible);
    }
}

TEST_F(Monitor, ColumnsFollowTheNumberOfParameters) {
    const struct {
        int Free, Columns, Rows;
        bool Paged;
    } table[] = {{1, 1, 1, false},   {16, 1, 16, false}, {17, 2, 9, false},
                 {18, 2, 9, false},  {19, 2, 10, false}, {31, 2, 16, false},
                 {32, 2, 16, false}, {33, 2, 16, true},  {62, 2, 16, true}};
    for (const auto& row : table) {
        LoadWithRows(row.Free);
        EXPECT_EQ(FitMon.Columns, row.Columns) << row.Free;
        EXPECT_EQ(FitMon.RowsPerColumn, row.Rows) << row.Free;
        EXPECT_EQ(FitMon.Paged, row.Paged) << row.Free;
        EXPECT_EQ(FitMon.Page2.Visible, row.Paged) << row.Free;
        EXPECT_EQ(FitMon.ShowingPage2, false);
        EXPECT_EQ(FitMon.Label1.size(), static_cast<std::size_t>(row.Columns)) << row.Free;
        EXPECT_EQ(FitMon.Label4.back().Text, "Outside Bounds");
        ASSERT_EQ(FitMon.CurValue.size(), static_cast<std::size_t>(row.Free) + 1) << row.Free;
        const auto last = static_cast<std::size_t>(row.Paged ? 31 : row.Free);
        EXPECT_EQ(VisibleRows(FitMon.ParameterName), Range(0, last)) << row.Free;
        EXPECT_EQ(VisibleRows(FitMon.CurValue), Range(0, last)) << row.Free;
        EXPECT_EQ(VisibleRows(FitMon.PrevValue), Range(0, last)) << row.Free;
    }
}

TEST_F(Monitor, SecondPageShowsTheOtherRows) {
    LoadWithRows(40);
    FitMonPage2();
    EXPECT_TRUE(FitMon.ShowingPage2);
    EXPECT_EQ(FitMon.Page2.Text, "Page &1");
    EXPECT_EQ(VisibleRows(FitMon.ParameterName), Range(32, 40));
    EXPECT_EQ(VisibleRows(FitMon.CurValue), Range(32, 40));
    EXPECT_EQ(FitMon.ParameterName[40].Text, "Sum (Errors)^2");
    FitMonPage2();
    EXPECT_EQ(FitMon.Page2.Text, "Page &2");
    EXPECT_EQ(VisibleRows(FitMon.PrevValue), Range(0, 31));
}

TEST_F(Monitor, BoundWarningOfAHiddenRowWaitsForItsPage) {
    LoadWithRows(40);
    ShowBoundWarning(FreePos(3), true);
    ShowBoundWarning(FreePos(35), true);
    EXPECT_TRUE(FitMon.BoundWarning[3].Visible);
    EXPECT_FALSE(FitMon.BoundWarning[35].Visible);
    FitMonPage2();
    EXPECT_FALSE(FitMon.BoundWarning[3].Visible);
    EXPECT_TRUE(FitMon.BoundWarning[35].Visible);
    ShowBoundWarning(FreePos(35), false);
    EXPECT_FALSE(FitMon.BoundWarning[35].Visible);
    FitMonPage2();
    EXPECT_TRUE(FitMon.BoundWarning[3].Visible);
}

TEST_F(Monitor, TagHoldsStatusAndAlpha) {
    LoadFitMon();
    MonitorStatus("one");
    Work.Alpha = 0.5;
    MonitorAlpha();
    FitMon.StatusText.Tag = "1";
    MonitorStatus("two");
    Work.Alpha = 0.25;
    MonitorAlpha();
    EXPECT_EQ(FitMon.StatusText.Text, "one");
    EXPECT_EQ(FitMon.AlphaText.Text, "0.5000");
    FitMon.StatusText.Tag.clear();
    MonitorAlpha();
    EXPECT_EQ(FitMon.AlphaText.Text, "0.2500");
}

TEST_F(Monitor, UnloadedMonitorTakesNothing) {
    MonitorStatus("one");
    MonitorAlpha();
    UpdateMonitor();
    ShowBoundWarning(FreePos(0), true);
    EXPECT_FALSE(FitMon.Loaded);
    EXPECT_EQ(FitMon.StatusText.Text, "");
}

TEST_F(Monitor, ButtonsSetTheirFlagsAndNothingElse) {
    LoadFitMon();
    Work.MonitorMode = 2;
    FitMonNextIter();
    EXPECT_EQ(Work.MonitorMode, 3);
    EXPECT_TRUE(FitMon.FitButton.Visible);
    FitMonFitButton();
    EXPECT_EQ(Work.MonitorMode, 1);
    EXPECT_FALSE(FitMon.FitButton.Visible);
    EXPECT_FALSE(FitMon.NextIter.Visible);
    EXPECT_TRUE(FitMon.CancelButton.Visible);
    EXPECT_EQ(Work.AbortFit, 0);
    FitMonCancelButton();
    EXPECT_EQ(Work.AbortFit, FlagTrue);
    EXPECT_EQ(Work.MonitorMode, 1);
}

// --- the monitor during a fit
// ----------------------------------------------------------------------------------------

using Texts = std::vector<std::string>;

TEST_F(Monitor, FreeRunShowsNeitherStartNorStepAndCloses) {
    bool seen = false;
    Outside.DuringEvents = [&] {
        ASSERT_TRUE(FitMon.Loaded);
        EXPECT_FALSE(FitMon.FitButton.Visible);
        EXPECT_FALSE(FitMon.NextIter.Visible);
        EXPECT_TRUE(FitMon.CancelButton.Visible);
        EXPECT_EQ(Work.MonitorMode, 1);
        seen = true;
    };
    EXPECT_TRUE(Fit());
    EXPECT_TRUE(seen);
    EXPECT_FALSE(FitMon.Loaded);
    EXPECT_EQ(Outside.Forms, (Texts{"show FitMon", "hide FitMon", "show Analmenu"}));
    EXPECT_EQ(Work.MonitorMode, 1);
}

TEST_F(Monitor, WithoutAMonitorNoFormIsTouched) {
    Work.MonitorMode = 0;
    Work.PauseBeforeFit = FlagTrue;
    Outside.DuringEvents = [] { EXPECT_FALSE(FitMon.Loaded); };
    EXPECT_TRUE(Fit());
    EXPECT_TRUE(Outside.Forms.empty());
    EXPECT_EQ(Work.MonitorMode, 0);
}

TEST_F(Monitor, FailureClosesItToo) {
    Work.YieldInterval = 0;
    EXPECT_FALSE(Fit());
    EXPECT_FALSE(FitMon.Loaded);
    EXPECT_EQ(Outside.Forms.back(), "show Analmenu");
}

TEST_F(Monitor, StatusTellsTheStages) {
    Texts stages;
    Outside.DuringEvents = [&] {
        if (stages.empty() || stages.back() != FitMon.StatusText.Text)
            stages.push_back(FitMon.StatusText.Text);
    };
    EXPECT_TRUE(Fit());
    const Texts iteration = {"Accumulating Sums", "Inverting Matrix", "Adjusting Increment"};
    Texts expected = iteration;
    expected.insert(expected.end(), iteration.begin(), iteration.end());
    expected.emplace_back("Converged, last sum");
    EXPECT_EQ(stages, expected);
}

TEST_F(Monitor, LastSumStandsInBlueAndKeepsItsText) {
    int seen = 0;
    Outside.DuringEvents = [&] {
        if (FitMon.StatusText.Tag.empty()) return;
        ++seen;
        EXPECT_EQ(FitMon.StatusText.Text, "Converged, last sum");
        EXPECT_EQ(FitMon.StatusText.ForeColor, 0x00FF0000U);
        EXPECT_EQ(FitMon.StatusText.Tag, "1");
    };
    EXPECT_TRUE(Fit());
    EXPECT_EQ(seen, 1) << "the one service at the first point of the last sums";
}

// Releases iterations one by one: what stands there each time the engine waits.
struct Waiting {
    int Mode, Iteration;
    std::string Status, IterNum, Current, Previous, Sum, LastSum, Alpha;
};

TEST_F(Monitor, SteppingWaitsAfterEachIteration) {
    Work.PauseBeforeFit = FlagTrue;
    Work.ParmFormat[SlotOffset(1)] = "0.000";
    Work.ConvergenceLimit = 1e-9F;
    Level() = -3.0F;
    std::vector<Waiting> waits;
    Outside.DuringEvents = [&] {
        if (FitMon.StatusText.Text != "waiting for input") return;
        waits.push_back({Work.MonitorMode, Work.Iteration, FitMon.StatusText.Text, FitMon.IterNum.Text,
                         FitMon.CurValue[0].Text, FitMon.PrevValue[0].Text, FitMon.CurValue[1].Text,
                         FitMon.PrevValue[1].Text, FitMon.AlphaText.Text});
        EXPECT_TRUE(FitMon.FitButton.Visible);
        EXPECT_TRUE(FitMon.NextIter.Visible);
        FitMonNextIter();
    };
    EXPECT_TRUE(Fit());
    ASSERT_EQ(waits.size(), 3U);
    EXPECT_EQ(waits[0].Mode, 2);
    EXPECT_EQ(waits[0].Iteration, 0);
    EXPECT_EQ(waits[0].Alpha, "1.0000");
    EXPECT_EQ(waits[0].Current, "-3.000");
    EXPECT_EQ(waits[0].Sum, "");
    // The first iteration goes from -3 to the mean of 1/2: sums 1/4 + 4 * 3.5^2 and 1/4.
    EXPECT_EQ(waits[1].Mode, 2);
    EXPECT_EQ(waits[1].IterNum, "1");
    EXPECT_EQ(waits[1].Current, "0.500");
    EXPECT_EQ(waits[1].Previous, "-3.000");
    EXPECT_EQ(waits[1].Sum, "2.5E-1");
    EXPECT_EQ(waits[1].LastSum, "4.925E1");
    // The second one stays; its sum comes from the smallest step, tried in both directions.
    EXPECT_EQ(waits[2].IterNum, "2");
    EXPECT_EQ(waits[2].Previous, "0.500");
    EXPECT_EQ(waits[2].Current, "0.500");
    EXPECT_EQ(waits[2].LastSum, "2.5E-1");
    EXPECT_EQ(waits[2].Alpha, "0.0010");
    EXPECT_EQ(Work.MonitorMode, 2) << "stepping is on to the end";
}

TEST_F(Monitor, LargeSumShowsItsExponentWithoutASign) {
    Work.PauseBeforeFit = FlagTrue;
    MakeLevels({{200.0F, -200.0F}});
    Work.MonitorMode = 1;
    Level() = 100.0F;
    Texts sums, before;
    Outside.DuringEvents = [&] {
        if (FitMon.StatusText.Text != "waiting for input") return;
        sums.push_back(FitMon.CurValue.back().Text);
        before.push_back(FitMon.PrevValue.back().Text);
        FitMonNextIter();
    };
    EXPECT_TRUE(Fit());
    EXPECT_EQ(sums[1], "8.E4");
    EXPECT_EQ(before[1], "1.E5");
    EXPECT_EQ(before[2], "8.E4");
}

TEST_F(Monitor, FreeRunFromTheFirstWait) {
    Work.PauseBeforeFit = FlagTrue;
    int waits = 0;
    Outside.DuringEvents = [&] {
        if (Work.MonitorMode != 2) {
            EXPECT_FALSE(FitMon.FitButton.Visible);
            EXPECT_FALSE(FitMon.NextIter.Visible);
            return;
        }
        if (++waits == 4) FitMonFitButton(); // other events come first
    };
    EXPECT_TRUE(Fit());
    EXPECT_EQ(waits, 4);
    EXPECT_EQ(Work.MonitorMode, 1);
}

TEST_F(Monitor, FreeRunFromALaterWait) {
    Work.PauseBeforeFit = FlagTrue;
    int waits = 0;
    Outside.DuringEvents = [&] {
        if (FitMon.StatusText.Text != "waiting for input" || Work.MonitorMode != 2) return;
        ++waits;
        waits == 1 ? FitMonNextIter() : FitMonFitButton();
    };
    EXPECT_TRUE(Fit());
    EXPECT_EQ(waits, 2);
    EXPECT_EQ(Work.MonitorMode, 1);
}

TEST_F(Monitor, CancelWhileWaitingForTheStart) {
    Work.PauseBeforeFit = FlagTrue;
    Outside.DuringEvents = [] { FitMonCancelButton(); };
    EXPECT_FALSE(Fit());
    EXPECT_EQ(Work.Iteration, 0);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Cancelled);
    EXPECT_FALSE(FitMon.Loaded);
    EXPECT_EQ(Outside.Forms.back(), "show Analmenu");
}

TEST_F(Monitor, CancelWhileWaitingAfterAnIterationKeepsItsStep) {
    Work.PauseBeforeFit = FlagTrue;
    Level() = -3.0F;
    Outside.DuringEvents = [] {
        if (FitMon.StatusText.Text != "waiting for input") return;
        Work.Iteration == 0 ? FitMonNextIter() : FitMonCancelButton();
    };
    EXPECT_FALSE(Fit());
    EXPECT_EQ(Work.Iteration, 1);
    EXPECT_EQ(Level(), 0.5F);
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_FALSE(FitMon.Loaded);
}

TEST_F(Monitor, BoundWarningsComeAndGoWithTheChecks) {
    Work.PauseBeforeFit = FlagFalse;
    Work.Bounds[1][SlotOffset(1)] = 0.25F;
    Work.MaxIterations = 3;
    bool shown = false;
    Outside.DuringEvents = [&] { shown = shown || FitMon.BoundWarning[0].Visible; };
    EXPECT_FALSE(Fit());
    EXPECT_TRUE(shown);
    // Inside again: the next check takes the mark away.
    LoadFitMon();
    ShowBoundWarning(FreePos(0), true);
    Work.Bounds[1][SlotOffset(1)] = 10.0F;
    CalcSumSq();
    Work.Increment[0] = 0.0;
    Outside.DuringEvents = nullptr;
    const FitProgress progress = MonitorProgress();
    const ProgressInUse inUse(progress);
    AdjustIncrement();
    EXPECT_FALSE(FitMon.BoundWarning[0].Visible);
}

TEST_F(Monitor, OnlyTheFirstIterationWritesTheSumItStartsFrom) {
    LoadFitMon();
    const FitProgress progress = MonitorProgress();
    const ProgressInUse inUse(progress);
    FitMon.CurValue.back().Text = "7.5E-1";
    Work.SumSq = 4.0;
    Work.Iteration = 2;
    Work.Increment[0] = 0.0;
    AdjustIncrement();
    EXPECT_EQ(FitMon.PrevValue.back().Text, "7.5E-1");
    EXPECT_EQ(FitMon.CurValue.back().Text, "");
    Work.SumSq = 4.0;
    Work.Iteration = 1;
    AdjustIncrement();
    EXPECT_EQ(FitMon.PrevValue.back().Text, "4.E0");
}

TEST_F(Monitor, SteppingOfTheFitBeforeDoesNotLinger) {
    Work.MonitorMode = 2;
    Work.PauseBeforeFit = FlagFalse;
    Outside.DuringEvents = [] { EXPECT_EQ(Work.MonitorMode, 1); };
    EXPECT_TRUE(Fit());
}

TEST_F(Monitor, AConvergedFitKeepsItsResultsWhenItsLastInverseIsMissing) {
    // A concentration in the second set, which vanishes once the fit has converged: nothing holds it any
    // more.
    MakeLevels({{0.25F, 0.75F, 0.25F, 0.75F}, {0.5F, 0.25F, 0.375F}});
    Work.MonitorMode = 1;
    Work.Parms[SlotA(2)] = -1.0F;
    Work.FreeMap[SlotOffset(2)] = SlotHeld;
    Work.FreeMap[SlotA(2)] = 0;
    NumberFitted();
    Outside.DuringEvents = [] {
        if (FitMon.StatusText.Tag == "1") Work.Parms[SlotA(2)] = -800.0F;
    };
    EXPECT_TRUE(Fit());
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
    EXPECT_EQ(Work.NormMatrix(0, 0), 0.25) << "what the four points of set 1 determine";
    EXPECT_EQ(Work.NormMatrix(1, 1), 0.0) << "no error";
    EXPECT_EQ(Work.Outcome.Reason, "No point depends on " + Work.ParmName[SlotA(2)] + ". Hold it.");
    EXPECT_FALSE(FitMon.Loaded);
}

} // namespace
} // namespace Quillon
