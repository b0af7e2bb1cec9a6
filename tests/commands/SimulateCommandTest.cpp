// The command Simulate: beside the data and in their place, with and without noise, cancelled and failed.
#include "commands/fitting/SimulateCommand.h"

#include "chart/CHART.h"
#include "commands/export/MeasuredData.h"
#include "fit/forms/GetGuess.h"
#include "models/SEDEQ3.h"
#include "scandata/table/FitData.h"
#include "tests/support/ModelCases.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

const std::string OverwriteAsk = "Do you want the simulated data to overwrite the experimental data?";
const std::string NoiseAsk = "Do you want to add random noise to the simulation?";
const std::string LevelAsk = "Input the rms noise level (in signal units)";

class Simulate : public testing::Test {
protected:
    Simulate() {
        Chart = ChartModule{};
        SetScreenSurface(Screen.Surface());
        Outside.UniformNumbers = {0.3F, 0.71F, 0.13F, 0.57F, 0.9F}; // one number alone makes no deviate
        Load("Model02");
    }
    ~Simulate() override { Chart = ChartModule{}; }

    // A finished fit of noisy data at the truth.
    void Load(const std::string& name) {
        Work = SimulatedWorkspace(ModelCaseNamed(name));
        Work.DataChosen = Work.ModelChosen = FlagTrue;
        ApplyModelFlags();
        BuildFitData();
        BuildParmNames();
        BuildParmScale();
        SetDefaultBounds();
        Work.PtFit.Recreate(Work.NumPts, 1.0F);
        Work.FitDone = Work.FitValid = Work.LimitsDone = FlagTrue;
        Work.NewData = Changed::Data;
        Work.RmsResidual = 0.5F;
    }
    void Answer(
        bool overwrite, const char* noise, std::function<void()> dialog = [] {}) {
        Outside.ExpectMessage(OverwriteAsk, overwrite ? BoxAnswer::Yes : BoxAnswer::No);
        Outside.ExpectMessage(NoiseAsk, noise ? BoxAnswer::Yes : BoxAnswer::No);
        if (noise) Outside.ExpectInput(LevelAsk, noise);
        Outside.ExpectModal(GetGuessName, std::move(dialog));
    }
    static OneBased<float> Function() {
        OneBased<float> values(Work.NumPts);
        ResetFitFunction();
        for (long p = 1; p <= Work.NumPts; ++p)
            values[p] = static_cast<float>(FitFunction(p));
        return values;
    }
    Script Outside;
    RecordingSurface Screen;
};

TEST_F(Simulate, BesideTheDataIsACurve) {
    const Workspace before = Work;
    Answer(false, nullptr);
    SimulateCommand();
    EXPECT_EQ(Work.PtFit, Function());
    EXPECT_EQ(Work.PtY, before.PtY);
    EXPECT_EQ(Work.ScanValue, before.ScanValue);
    EXPECT_EQ(Work.FitDone, FlagTrue); // the parameters are still those of the fit
    EXPECT_EQ(Work.FitValid, FlagTrue);
    EXPECT_EQ(Work.NewData, 0);
    EXPECT_EQ(Work.PtResid[7], Work.PtY[7] - Work.PtFit[7]);
    EXPECT_EQ(Outside.Forms, (std::vector<std::string>{"hide Charts", "show Charts"}));
    EXPECT_EQ(Chart.DataY.Sets(), 2 * Work.NumSets);
}

TEST_F(Simulate, OtherParametersAreNoFit) {
    Answer(false, nullptr, [] { Work.Parms[0] *= 1.25F; });
    SimulateCommand();
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.LimitsDone, 0);
    EXPECT_EQ(Work.FitValid, FlagTrue);
    EXPECT_NE(Work.RmsResidual, 0.5F);
}

TEST_F(Simulate, NoiseGoesOntoTheCurve) {
    Answer(false, "0.25");
    SimulateCommand();
    const OneBased<float> curve = Function();
    double sum = 0.0;
    for (long p = 1; p <= Work.NumPts; ++p)
        sum += std::fabs(Work.PtFit[p] - curve[p]);
    EXPECT_GT(sum / Work.NumPts, 0.02);
}

TEST_F(Simulate, OverwritesDataAndScansAlike) {
    const Workspace before = Work;
    Answer(true, "0.01");
    SimulateCommand();
    EXPECT_EQ(Work.PtFit, Work.PtY);
    long p = 0;
    bool noisy = false;
    const OneBased<float> curve = Function();
    for (long k = 1; k <= Work.NumSets; ++k) {
        const long row = Work.SetRow[k];
        for (long i = Work.FitRange[0][row]; i <= Work.FitRange[1][row]; ++i) {
            ++p;
            EXPECT_EQ(Work.ScanValue[row][i], Work.PtY[p]);
            noisy |= Work.PtY[p] != curve[p];
        }
        EXPECT_EQ(Work.ScanValue[row][1], before.ScanValue[row][1]); // outside of the range
    }
    EXPECT_TRUE(noisy);
    EXPECT_EQ(Work.PtX, before.PtX);
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.LimitsDone, 0);
    EXPECT_EQ(Work.FitValid, FlagTrue);
    EXPECT_EQ(Work.RmsResidual, 0.0F);
    EXPECT_EQ(Work.Parms, before.Parms);
    EXPECT_EQ(Work.FreeMap, before.FreeMap);
}

TEST_F(Simulate, MeasuredDataComeBack) {
    const Workspace before = Work;
    Answer(true, nullptr, [] { Work.Parms[0] *= 1.25F; });
    SimulateCommand();
    ASSERT_TRUE(MeasuredDataKept());
    Answer(true, nullptr, [] { Work.Parms[0] *= 1.25F; }); // once more, over the simulated data
    SimulateCommand();
    Work.OverlayPlot = FlagTrue; // a preference that was set since
    BringBackMeasuredData();
    EXPECT_EQ(Work.OverlayPlot, FlagTrue);
    Work.OverlayPlot = before.OverlayPlot;
    EXPECT_EQ(Work, before);
    EXPECT_FALSE(MeasuredDataKept());
    EXPECT_EQ(Outside.Forms.back(), "show Charts");
    EXPECT_EQ(Chart.DataY(3, 1), before.PtY[3]);
}

TEST_F(Simulate, AFitOfSimulatedDataIsAskedAbout) {
    Answer(true, nullptr);
    SimulateCommand();
    Work.FitDone = FlagTrue;
    const Workspace before = Work;
    const std::string question = "The analysis will be again what it was before the simulation.  The fit of "
                                 "the simulated data will be "
                                 "lost, unless you have saved it.  Do you want the measured data back?";
    Outside.ExpectMessage(question, BoxAnswer::No);
    BringBackMeasuredData();
    EXPECT_EQ(Work, before);
    Outside.ExpectMessage(question, BoxAnswer::Yes);
    BringBackMeasuredData();
    EXPECT_NE(Work.PtY, before.PtY);
}

TEST_F(Simulate, OtherScansEndTheWayBack) {
    Answer(true, nullptr);
    SimulateCommand();
    EXPECT_TRUE(MeasuredDataKept());
    Work.ScanFile[2] = "another.RA1";
    EXPECT_FALSE(MeasuredDataKept());
    const Workspace before = Work;
    BringBackMeasuredData();
    EXPECT_EQ(Work, before);
    Load("Model02"); // scans of the same names with other values
    EXPECT_FALSE(MeasuredDataKept());
}

TEST_F(Simulate, OverwrittenSetsLoseTheirBaseline) {
    for (const long row : {2L, 3L}) {
        Work.BaselineFile[row] = "base.RA1";
        Work.BaselinePoints[row] = 2;
        Work.BaselineRadius[row].Recreate(2, 5.0F);
        Work.BaselineRadius[row][2] = 8.0F;
        Work.BaselineValue[row].Recreate(2, 0.25F);
    }
    BuildFitData();
    Answer(true, nullptr);
    Outside.ExpectMessage("The simulated data hold no baseline.  The baselines of the data sets that were "
                          "overwritten have been "
                          "removed, since they would be subtracted from the simulated data.");
    SimulateCommand();
    const OneBased<float> values = Work.PtY;
    EXPECT_EQ(Work.BaselineFile[2], NoBaseline);
    EXPECT_EQ(Work.SetLabel[2].find("-BL"), std::string::npos);
    BuildFitData();
    EXPECT_EQ(Work.PtY, values) << "something was subtracted again";
}

TEST_F(Simulate, ConstraintsKeepTheirLoadings) {
    Load("Model08Constrained");
    Answer(true, "0.01", [] { Work.Parms[SlotA(1)] += 0.5F; });
    SimulateCommand();
    const OneBased<float> values = Work.PtY;
    for (long p = 1; p <= Work.NumPts; ++p) {
        if (Work.PtX[p] != PointMarker) continue;
        const long set = Work.PtSet[p];
        const long row = Work.SetRow[set];
        const bool ofA = Work.PtX[p - 1] != PointMarker && Work.ConcConstraintA[row] > 0;
        const float loading = ofA ? Work.ConcConstraintA[row] : Work.ConcConstraintB[row];
        const float tolerance = ofA ? Work.ConcToleranceA[row] : Work.ConcToleranceB[row];
        const float outer = Work.ScanValue[row][Work.FitRange[1][row]];
        EXPECT_NEAR(values[p] / (loading * outer / tolerance), 1.0,
                    1e-6); // a loading, no signal and no noise
    }
    EXPECT_EQ(Work.PtFit.Hi(), Work.NumPts);
}

TEST_F(Simulate, CancelledValuesLeaveAllAsItWas) {
    for (const bool overwrite : {false, true}) {
        Load("Model02");
        Workspace before = Work;
        Answer(overwrite, "0.1", [] {
            Work.Parms[0] *= 2.0F;
            GetGuessCancelButton();
        });
        SimulateCommand();
        EXPECT_EQ(Work.PtY, before.PtY);
        EXPECT_EQ(Work.PtFit, before.PtFit);
        EXPECT_EQ(Work.Parms, before.Parms);
        EXPECT_EQ(Work.FitDone, FlagTrue);
        EXPECT_EQ(Work.AbortFit, 0);
        EXPECT_EQ(Outside.Forms.back(), "show Charts");
    }
}

TEST_F(Simulate, CancelledNoiseIsNone) {
    Outside.ExpectMessage(OverwriteAsk, BoxAnswer::No);
    Outside.ExpectMessage(NoiseAsk, BoxAnswer::Yes);
    Outside.ExpectInputCancelled(LevelAsk);
    Outside.ExpectModal(GetGuessName, [] {});
    SimulateCommand();
    EXPECT_EQ(Work.PtFit, Function());
    EXPECT_EQ(Outside.Beeps, 0);
}

TEST_F(Simulate, ALevelOfNothingBeepsAndAddsNothing) {
    Answer(false, "0");
    SimulateCommand();
    EXPECT_EQ(Work.PtFit, Function());
    EXPECT_EQ(Outside.Beeps, 1);
}

TEST_F(Simulate, NoiseBeyondSinglesLeftOtherParametersUnderTheFit) {
    for (const bool overwrite : {false, true}) {
        Load("Model02");
        const Workspace before = Work;
        Answer(overwrite, "3.4E38", [] { Work.Parms[0] *= 1.25F; });
        EXPECT_THROW(SimulateCommand(), RuntimeError);
        EXPECT_EQ(Work, before);
    }
}

TEST_F(Simulate, DataThatCouldNotBePreparedLeftTheScansOverwritten) {
    Load("Model08Constrained");
    const Workspace before = Work;
    const long row = Work.SetRow[1];
    Answer(true, nullptr, [row] {
        Work.Parms[SlotA(1)] += 0.5F;
        Work.ConcConstraintA[row] = 3e38F; // times the signal over its tolerance: beyond singles
    });
    EXPECT_THROW(SimulateCommand(), RuntimeError);
    EXPECT_EQ(Work.ScanValue, before.ScanValue);
    EXPECT_EQ(Work, before);
    EXPECT_FALSE(MeasuredDataKept());
}

// A set that shares the concentrations of another one shows those at its own reference radius.
TEST_F(Simulate, FollowersShowedTheConcentrationsOfBefore) {
    Work.ConcLink[2] = 1;
    BuildFitData();
    Answer(false, nullptr, [] { Work.Parms[SlotA(1)] += 0.5F; });
    SimulateCommand();
    const double sigma = static_cast<double>(Work.SetSigmaScale[2]) * Work.Parms[0];
    const double apart = ReferenceX(RowNo(Work.SetRow[2])) - ReferenceX(RowNo(Work.SetRow[1]));
    EXPECT_NEAR(Work.Parms[SlotA(2)], Work.Parms[SlotA(1)] + sigma * apart, 1e-5);
}

TEST_F(Simulate, AFaultInTheModelLeavesDataAndFit) {
    const Workspace before = Work;
    Answer(true, "0.1", [] { Work.Parms[SlotA(2)] = 3000.0F; });
    Outside.AnswerAllMessages(BoxAnswer::Ok);
    SimulateCommand();
    const std::string told = Outside.Asked.back();
    EXPECT_TRUE(told.starts_with(
        "message: Math error during function evaluation, aborting fit\n\nThe fitted value of data set 2 at "))
        << told;
    EXPECT_NE(told.find("most likely by " + Work.ParmName[SlotA(2)] + " = 3000"), std::string::npos) << told;
    EXPECT_EQ(Work.PtY, before.PtY);
    EXPECT_EQ(Work.Parms, before.Parms);
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.AbortFit, 0);
}

} // namespace
} // namespace Quillon
