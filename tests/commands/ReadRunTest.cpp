// The folder of a run, read from the main window.
#include "commands/ReadRun.h"
#include "chart/CHART.h"
#include "chart/hand/Charts.h"
#include "commands/RunForm.h"
#include "files/WalkFiles.h"
#include "graphs/kinds/PickSet.h"
#include "runs/FillTable.h"
#include "runs/RunSets.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormEvents.h"
#include "tests/support/MadeRun.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace Quillon {
namespace {

RunPlan PlanOf(std::vector<int> cells) {
    RunPlan plan;
    plan.Cells = std::move(cells);
    plan.Wavelengths = {260, 280};
    plan.Points = 40;
    plan.ScansPerStage = 4;
    return plan;
}

struct ReadRun : testing::Test {
    Script script;
    ReadRun() {
        Work = FreshWorkspace();
        Host.WalkFiles = WalkFiles;
        Host.MakeFolder = MakeFolder;
        Host.DirectoryExists = [](const std::string& path) { return std::filesystem::is_directory(path); };
        Host.FileExists = [](const std::string& path) { return std::filesystem::exists(path); };
    }
    std::string Folder(const RunPlan& plan) const {
        std::string folder = script.Directory() + "/run";
        std::filesystem::create_directory(folder);
        WriteRun(MakeRun(plan), folder);
        return folder;
    }
    std::string Archive(const RunPlan& plan) {
        return script.MakeFile("run.tar.gz", ArchiveOf(EntriesOf(MakeRun(plan)), "tar.gz"));
    }
    void ExpectTable(const std::function<void()>& look) {
        script.ExpectModal(FileFormName, [look] {
            FileFormTimer1();
            look();
            FileFormOkButton();
        });
    }
    // The first line with a text in its first column.
    static std::size_t Line(const std::string& text, std::size_t from = 0) {
        for (std::size_t i = from; i < RunForm.Lines.size(); ++i)
            if (RunForm.Lines[i].Texts[0] == text) return i;
        ADD_FAILURE() << "there is no line " << text;
        return 0;
    }
    static void Ratio(std::size_t i, const char* a, const char* b = "") {
        RunForm.Ratios[i].A.Text = a;
        RunForm.Ratios[i].B.Text = b;
        RunFormRatioLostFocus(i, 0);
    }
};

TEST_F(ReadRun, MoreSetsThanTheTableHoldsAreToldWithTheirCounts) {
    script.ExpectModal(RunFormName, [] {
        EXPECT_FALSE(RunForm.OkButton.Enabled);
        const std::string& told = RunForm.Count.Text;
        EXPECT_NE(told.find("24 sets are more than the 18 of an analysis"), std::string::npos) << told;
        EXPECT_NE(told.find("cell 1: 6, cell 2: 6, cell 3: 6, cell 4: 6"), std::string::npos) << told;
        EXPECT_NE(told.find("260 nm: 12, 280 nm: 12"), std::string::npos) << told;
        RunFormTick(Line("Cell 4"));
        EXPECT_TRUE(RunForm.OkButton.Enabled);
        EXPECT_EQ(RunForm.Count.Text, "18 data sets of at most 18.");
        RunFormCancelButton();
    });
    ReadRunAt(Folder(PlanOf({1, 2, 3, 4}))); // 4 cells, 3 speeds, 2 wavelengths
    EXPECT_TRUE(Work.ScanFile[1].empty());
}

TEST_F(ReadRun, WavelengthsThatWanderAreCountedAsOne) {
    RunPlan plan = PlanOf({1, 2, 3, 4});
    plan.Wander = 1;
    script.ExpectModal(RunFormName, [] {
        const std::string& told = RunForm.Count.Text;
        const std::size_t begin = told.find("cell 4: 6; 26"); // 260 or 261, whichever comes first
        ASSERT_NE(begin, std::string::npos) << told;
        EXPECT_EQ(told.substr(begin + 14, 9), " nm: 12, ") << told;
        RunFormCancelButton();
    });
    ReadRunAt(Folder(plan));
}

TEST_F(ReadRun, TicksOfTheTreeDecide) {
    script.ExpectModal(RunFormName, [] {
        ASSERT_EQ(RunForm.Lines.size(), 2U * (1 + 3 * (1 + 2 * (1 + 4))));
        EXPECT_EQ(RunForm.Lines[0].Texts[0], "Cell 1");
        EXPECT_EQ(RunForm.Lines[0].Texts[1], "24 scans");
        EXPECT_EQ(RunForm.Lines[1].Texts[0], "10000 rpm");
        EXPECT_EQ(RunForm.Lines[2].Texts[0], "260 nm");
        EXPECT_EQ(RunForm.Lines[3].Depth, 3);
        EXPECT_EQ(RunForm.Lines[3].Ticked, RunLine::None);
        EXPECT_EQ(RunForm.Lines[6].Ticked, RunLine::All) << "the last scan";
        EXPECT_EQ(RunForm.Lines[6].Texts[3], "last");
        for (const std::size_t head : {0UL, 1UL, 2UL})
            EXPECT_EQ(RunForm.Lines[head].Ticked, RunLine::All);
        RunFormNoneButton();
        EXPECT_EQ(RunForm.Count.Text, "Nothing is ticked.");
        EXPECT_FALSE(RunForm.OkButton.Enabled);
        const std::size_t cell2 = Line("Cell 2");
        RunFormTick(cell2 + 2); // its first wavelength at its first speed
        EXPECT_EQ(RunForm.Lines[cell2].Ticked, RunLine::Some);
        EXPECT_EQ(RunForm.Lines[cell2 + 1].Ticked, RunLine::Some);
        EXPECT_EQ(RunForm.Lines[cell2 + 2].Ticked, RunLine::All);
        RunFormTick(cell2 + 4); // one scan before the last one beside it
        EXPECT_EQ(RunForm.Count.Text, "2 data sets of at most 18.");
        RunFormOkButton();
    });
    ExpectTable([] {
        EXPECT_EQ(FileForm.NameBox[0].Text, Work.ScanFile[1]);
        EXPECT_NE(FileForm.Changed.Text.find("2 data sets"), std::string::npos) << FileForm.Changed.Text;
    });
    const std::string folder = Folder(PlanOf({1, 2}));
    ReadRunAt(folder);
    EXPECT_EQ(Work.ScanDirectory[1], folder);
    EXPECT_EQ(Work.NumSets, 2);
    EXPECT_TRUE(Work.ScanFile[1].ends_with(".RA2"));
    EXPECT_LT(Work.ScanTime[1], Work.ScanTime[2]);
    EXPECT_GT(Work.FitRange[0][2], 1) << "a range is proposed";
}

TEST_F(ReadRun, RatiosAreAskedForOnceAndShareConcentrations) {
    RunPlan plan = PlanOf({1});
    script.ExpectModal(RunFormName, [] {
        ASSERT_EQ(RunForm.Ratios.size(), 2U);
        EXPECT_EQ(RunForm.Ratios[1].Label.Text, "280 nm");
        RunFormOkButton();
        EXPECT_TRUE(RunForm.State.Shown);
        Ratio(1, "0.5", "0.6");
        EXPECT_NE(RunForm.Count.Text.find("3 take their concentrations from another wavelength"),
                  std::string::npos)
            << RunForm.Count.Text;
        RunFormOkButton();
        EXPECT_FALSE(RunForm.State.Shown);
    });
    script.ExpectMessage("There is no extinction for 280 nm.\n\nIt is taken as 1 then, and its sets share no "
                         "concentrations. Do you want to go on without it?",
                         BoxAnswer::No);
    ExpectTable([] {});
    ReadRunAt(Archive(plan));
    EXPECT_EQ(Work.NumSets, 6);
    for (const long leader : {1, 3, 5}) {
        EXPECT_EQ(Work.ConcLink[leader], 0);
        EXPECT_EQ(Work.ConcLink[leader + 1], leader);
        EXPECT_EQ(Work.ExtinctionRatio[0][leader + 1], 0.5F);
        EXPECT_EQ(Work.ExtinctionRatio[1][leader + 1], 0.6F);
    }
    EXPECT_TRUE(std::filesystem::is_directory(script.Directory() + "/run-scans"));
}

TEST_F(ReadRun, ARatioThatIsNotAboveZeroIsRefused) {
    script.ExpectModal(RunFormName, [] {
        Ratio(1, "0");
        EXPECT_EQ(RunForm.Ratios[1].A.Text, "");
        EXPECT_EQ(RunForm.State.FocusOn, &RunForm.Ratios[1].A);
        RunFormCancelButton();
    });
    script.ExpectMessage("You must enter a positive, non-zero value for the extinction ratio", BoxAnswer::Ok);
    ReadRunAt(Folder(PlanOf({1})));
}

TEST_F(ReadRun, TheLastEqualScansBecomeOneMean) {
    RunPlan plan = PlanOf({1});
    plan.Wavelengths = {280};
    plan.ScansPerStage = 10;
    script.AnswerAllMessages(BoxAnswer::Ok); // which scans the means are made of
    script.ExpectModal(RunFormName, [] {
        RunForm.Average.Value = 1;
        RunFormAverage();
        EXPECT_EQ(RunForm.Count.Text, "3 data sets of at most 18.");
        RunFormOkButton();
    });
    ExpectTable([] {});
    ReadRunAt(Folder(plan));
    EXPECT_EQ(Work.NumSets, 3);
    for (const long row : {1, 2, 3})
        EXPECT_GT(Work.MeanOf[row].size(), 2U);
    ASSERT_FALSE(script.Asked.empty());
}

TEST_F(ReadRun, ACancelReadsNothingAndUnpacksNothing) {
    script.ExpectModal(RunFormName, [] { RunFormCancelButton(); });
    ReadRunAt(Archive(PlanOf({1})));
    EXPECT_FALSE(std::filesystem::exists(script.Directory() + "/run-scans"));
    EXPECT_TRUE(Work.ScanFile[1].empty());
}

TEST_F(ReadRun, TheSameArchiveCanBeReadAgainAndReplacesTheTableAfterAQuestion) {
    RunPlan plan = PlanOf({1});
    plan.Wavelengths = {280};
    const std::string archive = Archive(plan);
    for (const int time : {1, 2}) {
        if (time == 2) {
            script.ExpectModal(RunFormName, [] {
                RunFormNoneButton();
                RunFormTick(Line("14000 rpm"));
                RunFormOkButton();
            });
            script.ExpectMessage(
                "The table of data sets holds scans. Do you want to replace them by those of the run?",
                BoxAnswer::Yes);
        } else {
            script.ExpectModal(RunFormName, [] { RunFormOkButton(); });
        }
        ExpectTable([] {});
        ReadRunAt(archive);
    }
    EXPECT_EQ(Work.NumSets, 1);
    EXPECT_TRUE(Work.ScanFile[2].empty());
    EXPECT_EQ(Work.ScanDirectory[1], script.Directory() + "/run-scans-2");
}

TEST_F(ReadRun, AScanThatHasGoneLeavesTheTableAsItWas) {
    const std::string folder = Folder(PlanOf({1}));
    const SortedRun run = SortRun(folder, {}, false);
    RunChoice choice;
    choice.Ratios = {{260.0F, 1.0F, 1.0F}, {280.0F, 1.0F, 1.0F}};
    const std::vector<RunSet> sets = PlanSets(run, {0, 1}, choice);
    const auto pathOf = [&](std::size_t scan) { return folder + "/" + run.Scans[scan].File; };
    FillTable(run, sets, pathOf);
    ASSERT_EQ(Work.HighestSet, 2);
    const Workspace before = Work;
    std::filesystem::remove(pathOf(run.Groups[1].Scans.back()));
    EXPECT_THROW(FillTable(run, sets, pathOf), RuntimeError);
    EXPECT_TRUE(Work == before);
}

TEST_F(ReadRun, TheApproachOfASetIsDrawnFromTheFolderOfItsScan) {
    RunPlan plan = PlanOf({1});
    plan.Wavelengths = {260};
    const std::string folder = Folder(plan);
    script.ExpectModal(RunFormName, [] { RunFormOkButton(); });
    ExpectTable([] {});
    ReadRunAt(folder);
    ASSERT_EQ(Work.NumSets, 3); // speeds
    RecordingSurface screen;
    SetScreenSurface(screen.Surface());
    const auto pick = [&] {
        script.ExpectModal(PickSetName, [] {
            PickSetRow(SetNo(2));
            PickSetOkButton();
        });
    };
    pick();
    GraphApproach();
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "Time (h)");
    ASSERT_EQ(Chart.DataX.Points(), plan.ScansPerStage);
    EXPECT_EQ(Chart.DataY(plan.ScansPerStage, 1), 0.0F); // the last one, from itself
    EXPECT_EQ(Charts.Origin.Name, "Approach to Equilibrium, set 2");
    const SetNo second{2};
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().filename() != Work.ScanFile[RowOf(second)]) std::filesystem::remove(entry.path());
    pick();
    script.ExpectMessage("How the scans came to equilibrium cannot be shown: " +
                         GroupName(SortRun(folder, {}, false), 0) + ": there are no scans to compare");
    GraphApproach();
    Work.ScanFile[RowOf(second)] = "other.RA1";
    pick();
    script.ExpectMessage(
        "How the scans came to equilibrium cannot be shown: other.RA1 is in no group of scans in " + folder);
    GraphApproach();
    RemoveScreenSurface();
}

TEST_F(ReadRun, TheApproachOfAGroupIsDrawnFromTheTree) {
    RunPlan plan = PlanOf({1});
    plan.Wavelengths = {260};
    const std::string folder = Folder(plan);
    RecordingSurface screen;
    SetScreenSurface(screen.Surface());
    script.ExpectModal(RunFormName, [&] {
        EXPECT_FALSE(RunForm.GraphButton.Enabled); // a cell
        RunFormMark(Line("260 nm"));
        EXPECT_TRUE(RunForm.GraphButton.Enabled);
        RunFormGraphButton();
        EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "Time (h)");
        EXPECT_EQ(Chart.DataX.Points(), plan.ScansPerStage);
        RunFormCancelButton();
    });
    script.ExpectModal(ChartsName, [] {});
    ReadRunAt(folder);
    RemoveScreenSurface();
}

TEST_F(ReadRun, ArchivesAreKnownByTheirEndings) {
    for (const char* name : {"a.zip", "a.TAR.GZ", "b/a.tgz", "a.tar"})
        EXPECT_TRUE(NamesArchive(name)) << name;
    EXPECT_FALSE(NamesArchive("00001.RA1"));
    EXPECT_FALSE(NamesArchive("a.zip/00001.RA1"));
}

} // namespace
} // namespace Quillon
