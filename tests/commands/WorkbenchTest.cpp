// Below the menu: the steps with their state in words, the start page, which panes are shown, what is
// dropped.
#include "commands/Workbench.h"
#include "commands/Analmenu.h"
#include "commands/StartUp.h"
#include "models/forms/ModelForm.h"
#include "persistence/Filelist.h"
#include "scandata/forms/FileForm.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

struct WorkbenchCase : testing::Test {
    WorkbenchCase() { StartQuillon(""); }
    Script script;

    static std::string State(std::size_t step) { return Workbench.Steps[step].State.Text; }
    static StepState Progress(std::size_t step) { return Workbench.Steps[step].Progress; }
    static void TakeData() {
        Work.DataChosen = FlagTrue;
        Work.NumSets = 3;
        Work.NumPts = 120;
        SetMenuStatus();
    }
};

TEST_F(WorkbenchCase, AtTheStartDataComeNext) {
    EXPECT_EQ(State(0), "no data sets yet");
    EXPECT_EQ(State(1), "not chosen yet");
    EXPECT_EQ(State(3), "waits for data and a model");
    EXPECT_EQ(Progress(0), StepState::Next);
    for (const std::size_t step : {1U, 2U, 3U})
        EXPECT_EQ(Progress(step), StepState::Waits) << step;
    EXPECT_TRUE(Workbench.Steps[0].Button.Enabled);
    EXPECT_FALSE(Workbench.Steps[3].Button.Enabled);
    EXPECT_TRUE(Workbench.Starts);
    EXPECT_TRUE(PaneIsSeen(PaneKind::Steps));
    EXPECT_FALSE(PaneIsSeen(PaneKind::Graphs)); // there is nothing in it yet
}

TEST_F(WorkbenchCase, BehindDataComesTheModelAndThenTheFit) {
    TakeData();
    EXPECT_EQ(State(0), "3 data sets, 120 points");
    EXPECT_EQ(State(3), "waits for a model");
    EXPECT_EQ(Progress(0), StepState::Done);
    EXPECT_EQ(Progress(1), StepState::Next);
    EXPECT_FALSE(Workbench.Starts);
    EXPECT_TRUE(PaneIsSeen(PaneKind::Graphs));
    Work.ModelChosen = FlagTrue;
    Work.NonIdeal = FlagTrue;
    Work.MassUnits = MassUnit::Molar;
    Work.ConcUnits = ConcUnit::FringeMole;
    SetMenuStatus();
    EXPECT_TRUE(State(1).ends_with(", non-ideal")) << State(1);
    EXPECT_EQ(State(2), "molar mass, mol/L");
    EXPECT_EQ(State(3), "ready");
    EXPECT_EQ(Progress(3), StepState::Next);
    EXPECT_TRUE(Workbench.Steps[3].Button.Enabled);
}

TEST_F(WorkbenchCase, AFitThatDataHaveLeftBehindIsToBeDoneAgain) {
    TakeData();
    Work.ModelChosen = Work.FitDone = FlagTrue;
    Work.RmsResidual = 0.0041F;
    SetMenuStatus();
    EXPECT_EQ(State(3), "converged; rms residual 4.100E-3");
    EXPECT_EQ(Progress(3), StepState::Done);
    Work.NewData = Changed::Constraints;
    SetMenuStatus();
    EXPECT_EQ(State(3), "converged; rms residual 4.100E-3; data or constraints have changed since");
    EXPECT_EQ(Progress(3), StepState::Next);
}

TEST_F(WorkbenchCase, AStepIsTheItemOfTheMenu) {
    script.ExpectModal(ModelFormName, ModelFormCancelButton);
    StepButton(1);
    StepButton(3); // not yet
}

TEST_F(WorkbenchCase, PanesAreFoundAgainAsTheyWereLeft) {
    RunMainCommand("ShowSteps");
    KeepLayout("00ff");
    EXPECT_FALSE(MainItem("ShowSteps").Checked);
    StartQuillon("");
    EXPECT_FALSE(PaneIsSeen(PaneKind::Steps));
    EXPECT_TRUE(GraphsPaneShown());
    EXPECT_EQ(Workbench.Layout, "00ff");
    const int before = Workbench.TimesReset;
    RunMainCommand("ResetLayout");
    EXPECT_TRUE(PaneIsSeen(PaneKind::Steps));
    EXPECT_TRUE(MainItem("ShowSteps").Checked);
    EXPECT_GT(Workbench.TimesReset, before);
    StartQuillon("");
    EXPECT_TRUE(PaneIsSeen(PaneKind::Steps));
    EXPECT_EQ(Workbench.Layout, "");
}

TEST_F(WorkbenchCase, APlaceThatCannotBeKeptIsNoMatter) {
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError("Permission denied"); };
    ShowPane(PaneKind::Parameters, false);
    EXPECT_FALSE(ParametersPaneShown());
    EXPECT_TRUE(script.Asked.empty());
}

TEST_F(WorkbenchCase, NothingIsWrittenWhereNothingHasMoved) {
    KeepLayout("00ff");
    Host.WriteFile = [](const std::string&, const std::string&) { FAIL() << "written once more"; };
    KeepLayout("00ff");
}

TEST_F(WorkbenchCase, RecentFitsAreCalledByTheirNamesAndTellTheirPaths) {
    EXPECT_FALSE(Workbench.RecentHead.Visible);
    AddRecentFile("/data/run 7/a&b.quil");
    SetMenuStatus();
    EXPECT_TRUE(Workbench.RecentHead.Visible);
    EXPECT_EQ(Workbench.Recent[0].Text, "a&&b.quil");
    EXPECT_EQ(Workbench.Recent[0].ToolTip, "/data/run 7/a&b.quil");
    EXPECT_FALSE(Workbench.Recent[1].Visible);
}

TEST_F(WorkbenchCase, ScansAreAskedForBeforeTheTableOpens) {
    script.ExpectFile("Quillon - Open Scans", "");
    OpenScansButton(); // cancelled: no table
    script.ExpectFiles("Quillon - Open Scans", {"/data/1.RA1", "/data/2.RA1"});
    script.ExpectModal(FileFormName, [] {
        EXPECT_EQ(FileForm.Waiting, (std::vector<std::string>{"/data/1.RA1", "/data/2.RA1"}));
    });
    OpenScansButton();
}

TEST_F(WorkbenchCase, AFolderOrAnArchiveThatIsDroppedIsReadAsARun) {
    std::vector<std::string> walked;
    Host.WalkFiles = [&](const std::string& place, const auto&) -> std::vector<PassedFile> {
        walked.push_back(place);
        RaiseError("there is nothing to be read");
    };
    const std::string archive = script.MakeFile("run.zip", "no archive");
    script.ExpectMessage(script.Directory() + ": there is nothing to be read");
    OpenDropped({script.Directory()});
    script.ExpectMessage(archive + ": there is nothing to be read");
    OpenDropped({archive});
    EXPECT_EQ(walked, (std::vector<std::string>{script.Directory(), archive}));
}

TEST_F(WorkbenchCase, ExamplesAreFoundBesideAnInstalledProgramAndInTheTree) {
    for (const std::string place : {"/share/quillon/examples", "/examples"}) {
        const std::string root = "/somewhere";
        const std::string program = place == "/examples" ? "/somewhere/build/dev/bin" : "/somewhere/bin";
        Host.ProgramDirectory = [program] { return program; };
        Host.FileExists = [wanted =
                               root + place + "/monomer-dimer/monomer-dimer.job"](const std::string& path) {
            return path == wanted; // without steps up, which titles of graphs had
        };
        StartQuillon("");
        ASSERT_EQ(Workbench.Examples.size(), 1U) << place;
        EXPECT_TRUE(Workbench.ExamplesHead.Visible);
        std::string read;
        ReadJob = [&](const std::string& path) {
            read = path;
            return true;
        };
        ExampleButton(0);
        EXPECT_EQ(read, Workbench.Examples[0].ToolTip);
        ReadJob = nullptr;
    }
    Host.FileExists = [](const std::string&) { return false; };
    StartQuillon("");
    EXPECT_FALSE(Workbench.ExamplesHead.Visible);
}

TEST_F(WorkbenchCase, AFitThatIsDroppedIsRestoredOrTold) {
    const std::string path = script.Directory() + "/gone.quil";
    script.AnswerAllMessages(BoxAnswer::Ok);
    OpenDropped({path});
    ASSERT_EQ(script.Asked.size(), 1U);
    EXPECT_NE(script.Asked[0].find("File not found"), std::string::npos) << script.Asked[0];
}

} // namespace
} // namespace Quillon
