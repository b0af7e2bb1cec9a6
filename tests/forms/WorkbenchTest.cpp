// The workbench at its real window: the start page, the panes, what is dropped, and how many gestures lead
// to residuals.
#include "commands/Workbench.h"
#include "commands/Analmenu.h"
#include "commands/RunForm.h"
#include "commands/Sessions.h"
#include "fit/forms/FitMon.h"
#include "fit/forms/GetGuess.h"
#include "forms/shell/Binding.h"
#include "forms/shell/FormHost.h"
#include "graphs/GraphPair.h"
#include "models/forms/ModelForm.h"
#include "platform/Platform.h"
#include "reporting/Results.h"
#include "scandata/forms/FileForm.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "tests/support/MadeRun.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Codes.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QDropEvent>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QMimeData>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>
#include <QUrl>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

namespace Quillon {
namespace {

struct WorkbenchAtTheWindow : testing::Test {
    Player player;

    static QWidget* Main() { return Player::Window(AnalmenuName); }
    static QDockWidget* Dock(const char* key) { return Main()->findChild<QDockWidget*>(key); }
    static void ShowFit() {
        UseFinishedFit();
        RefreshForms();
        Player::Serve();
    }
    static QListWidget* Legend() { return Dock("ShowGraphs")->findChild<QListWidget*>(); }
    static QTableWidget* Parameters() { return Dock("ShowParameters")->findChild<QTableWidget*>(); }
    static void Drop(const std::vector<std::string>& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& path : paths)
            urls << QUrl::fromLocalFile(QString::fromStdString(path));
        data.setUrls(urls);
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(Main(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(Main(), &drop);
        Player::Serve();
    }
};

TEST_F(WorkbenchAtTheWindow, TheStartPageGivesWayToThePanes) {
    EXPECT_TRUE(Player::Widget(Workbench.OpenScans)->isVisible());
    EXPECT_TRUE(Dock("ShowSteps")->isVisible());
    EXPECT_FALSE(Dock("ShowGraphs")->isVisible());
    ShowFit();
    EXPECT_FALSE(Player::Widget(Workbench.OpenScans)->isVisible());
    EXPECT_TRUE(Dock("ShowGraphs")->isVisible());
    EXPECT_TRUE(Dock("ShowParameters")->isVisible());
    EXPECT_GT(Dock("ShowGraphs")->width(), Main()->width() / 2);
    EXPECT_GT(Dock("ShowGraphs")->height(), Main()->height() / 3);
}

TEST_F(WorkbenchAtTheWindow, AStepOpensItsForm) {
    player.Expect(ModelFormName, [] { Player::Press(Qt::Key_Escape); });
    Player::Click(Workbench.Steps[1].Button);
    EXPECT_FALSE(Player::Widget(Workbench.Steps[3].Button)->isEnabled());
}

TEST_F(WorkbenchAtTheWindow, APaneIsClosedByItsButtonAndBroughtBackByTheMenu) {
    ShowFit();
    Dock("ShowParameters")->close();
    Player::Serve();
    EXPECT_FALSE(Dock("ShowParameters")->isVisible());
    EXPECT_FALSE(ParametersPaneShown());
    player.ClickMenu("ShowParameters");
    EXPECT_TRUE(Dock("ShowParameters")->isVisible());
    auto* main = qobject_cast<QMainWindow*>(Main());
    main->addDockWidget(Qt::BottomDockWidgetArea, Dock("ShowSteps"));
    player.ClickMenu("ResetLayout");
    EXPECT_EQ(main->dockWidgetArea(Dock("ShowSteps")), Qt::LeftDockWidgetArea);
}

TEST_F(WorkbenchAtTheWindow, AClickInTheLegendHidesASet) {
    ShowFit();
    ASSERT_EQ(Legend()->count(), Work.NumSets);
    const auto click = [] {
        const QRect place = Legend()->visualItemRect(Legend()->item(1));
        QTest::mouseClick(Legend()->viewport(), Qt::LeftButton, {}, place.center());
        Player::Serve();
    };
    click();
    EXPECT_TRUE(IsLeftOut(SetNo(2)));
    EXPECT_TRUE(Legend()->item(1)->font().strikeOut());
    click();
    EXPECT_FALSE(IsLeftOut(SetNo(2)));
    Legend()->setFocus();
    Legend()->setCurrentRow(0);
    Player::Press(Qt::Key_Space);
    EXPECT_TRUE(IsLeftOut(SetNo(1)));
    ToggleSet(SetNo(1));
}

TEST_F(WorkbenchAtTheWindow, ParametersAreCopiedWithTheirHeads) {
    ShowFit();
    ASSERT_GT(Parameters()->rowCount(), 3);
    Parameters()->setFocus();
    Parameters()->selectRow(1);
    QTest::keyClick(Parameters(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], "Parameter\tValue\tError\tLower limit\tUpper limit\tState\tNote");
    EXPECT_EQ(lines[1].section('\t', 0, 0), Parameters()->item(1, 0)->text());
    EXPECT_EQ(lines[1].count('\t'), 6);
}

TEST_F(WorkbenchAtTheWindow, PanesStayWhileTheMonitorStands) {
    UseSimulatedData();
    Work.LastModel = Work.Model;
    Work.NewData = Changed::Nothing;
    Work.PauseBeforeFit = FlagTrue;
    SetMenuStatus();
    RefreshForms();
    player.Expect(GetGuessName, [] { Player::Click(GetGuess.OkButton); });
    player.Expect(FitMonName, [] {
        EXPECT_TRUE(Dock("ShowGraphs")->isVisible());
        Player::Click(FitMon.CancelButton);
    });
    Player::Click(Workbench.Steps[3].Button);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Cancelled);
}

TEST_F(WorkbenchAtTheWindow, ScansThatAreDroppedComeIntoTheTable) {
    const std::vector<std::string> paths = WriteScans(player.Directory());
    UseChannelRadii();
    player.Expect(FileFormName, [&] {
        for (int i = 0; i < 1000 && FileForm.Timer1; ++i)
            QTest::qWait(1);
        EXPECT_EQ(FileForm.NameBox[0].Text, "00001.RA1");
        Player::Window(FileFormName)->close();
    });
    Drop(paths);
}

TEST_F(WorkbenchAtTheWindow, AJobThatIsDroppedIsFitted) {
    Work.MonitorMode = Monitor::None; // that of a fit of milliseconds is seen by chance
    Drop({QUILLON_SOURCE "/examples/monomer-dimer/monomer-dimer.job"});
    EXPECT_EQ(Work.FitDone, FlagTrue) << Work.Outcome.Sentence;
    EXPECT_EQ(Work.NumSets, 9);
    EXPECT_EQ(Work.Model, 2);
    EXPECT_NEAR(Work.Parms[2], 0.0F, 50.0F);
    EXPECT_EQ(Work.PauseBeforeFit, FlagTrue); // as the user has it, not as the job runs
    EXPECT_FALSE(GraphPair.Remark.Visible);
    EXPECT_EQ(Parameters()->rowCount() > 10, true);
}

// Whatever serves events waits until the monitor has been met.
void HoldUntil(const bool& met) {
    Host.ServeEvents = [&met] {
        RefreshForms();
        for (int i = 0; i < 2000 && FitMon.Loaded && !met; ++i)
            QTest::qWait(1);
        QApplication::processEvents();
    };
}

TEST_F(WorkbenchAtTheWindow, AJobShowedNoProgressAndCouldNotBeCancelled) {
    ShowFit();
    const Workspace before = Work;
    bool met = false;
    HoldUntil(met);
    player.Expect(FitMonName, [&] {
        met = true;
        EXPECT_EQ(FitMon.ParameterName.size(),
                  14U); // a constant, nine concentrations, three offsets; the sum
        Player::Click(FitMon.CancelButton);
    });
    Drop({QUILLON_SOURCE "/examples/monomer-dimer/monomer-dimer.job"});
    EXPECT_TRUE(met);
    EXPECT_TRUE(Work == before);
    EXPECT_EQ(OpenForm(FitMonName), nullptr);
}

TEST_F(WorkbenchAtTheWindow, TheSearchBehindTheFitOfAJobIsCancelledAndTheFitStays) {
    const std::string job = player.Directory() + "/limits.job";
    const std::string folder = QUILLON_SOURCE "/examples/single-species/";
    Host.WriteFile(job, "[fit]\nmodel = 1\nconfidence-limits = yes\n[set 1]\nfile = " + folder +
                            "00024.RA1\ninner = 6.9\nouter = 7.1\n");
    bool met = false;
    HoldUntil(met);
    player.Expect(FitMonName, [&] { met = true; });
    player.Expect(FitMonName, [&] {
        met = true;
        EXPECT_TRUE(FitMon.StatusText.Text.starts_with("confidence limits ")) << FitMon.StatusText.Text;
        Player::Click(FitMon.CancelButton);
    });
    player.ExpectMessage("The search for confidence limits was cancelled");
    const auto hide = Host.HideForm;
    Host.HideForm = [&](const std::string& form) {
        hide(form);
        if (form == FitMonName) met = false; // there is a second one
    };
    Drop({job});
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.LimitsDone, FlagFalse);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
}

TEST_F(WorkbenchAtTheWindow, ThatNothingIsKeptForARestartWasToldNowhere) {
    ShowFit();
    auto* note = Main()->findChild<QLabel*>("KeepNote");
    EXPECT_FALSE(note->isVisible());
    SessionWorker = nullptr; // so that each write has ended when KeepSession has
    const auto write = Host.WriteFile;
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError("Disk full"); };
    KeepSession();
    EXPECT_TRUE(FillKeepNote());
    EXPECT_FALSE(FillKeepNote());
    RefreshForms();
    EXPECT_TRUE(note->isVisible());
    EXPECT_NE(note->text().indexOf("(Disk full)"), -1) << note->text().toStdString();
    Host.WriteFile = write;
    KeepSession();
    FillKeepNote();
    RefreshForms();
    EXPECT_FALSE(note->isVisible());
}

TEST_F(WorkbenchAtTheWindow, AJobThatCannotBeReadLeavesTheAnalysis) {
    ShowFit();
    const Workspace before = Work;
    std::FILE* job = std::fopen((player.Directory() + "/bad.job").c_str(), "w");
    std::fputs("[fit]\nmodel = 99\n", job);
    std::fclose(job);
    player.ExpectMessage(player.Directory() + "/bad.job:2: [fit] model: '99' is not within 1 to 22", "OK");
    Drop({player.Directory() + "/bad.job"});
    EXPECT_EQ(Work.FitDone, before.FitDone);
    EXPECT_EQ(Work.Model, before.Model);
}

// --- gestures ----------------------------------------------------------------------------------------------

// Counts what a user does with the mouse: a click, a double click, a choice in a file dialog (the first file,
// with Shift the last one, Open; of one file a double click).
struct Counted {
    int Gestures = 0;
    void Click(const Control& control) {
        ++Gestures;
        Player::Click(control);
    }
    void DoubleClick(const Control& control) {
        ++Gestures;
        QTest::mouseDClick(Player::Widget(control), Qt::LeftButton);
        Player::Serve();
    }
};

struct GesturesToResiduals : WorkbenchAtTheWindow {
    Counted user;
    // The monitor of a fit of milliseconds is seen by chance.
    GesturesToResiduals() { Work.MonitorMode = Monitor::None; }

    void Give(const std::vector<std::string>& paths) {
        user.Gestures += paths.size() > 1 ? 3 : 1;
        player.GiveFiles(paths);
    }
    void AcceptTable(int rows) {
        player.Expect(FileFormName, [this, rows] {
            for (int i = 0; i < 2000 && FileForm.Timer1; ++i)
                QTest::qWait(1);
            Player::Serve();
            EXPECT_NE(FileForm.NameBox[static_cast<std::size_t>(rows - 1)].Text, "");
            user.Click(FileForm.OkButton);
        });
    }
    void SeeResiduals() {
        player.Expect(ResultsName, [] {
            EXPECT_TRUE(GraphPair.HasResiduals);
            EXPECT_TRUE(Dock("ShowGraphs")->isVisible());
            Player::Click(Results.OkButton);
        });
    }
    static std::string In(const std::string& name) { return QUILLON_SOURCE "/examples/" + name; }
};

TEST_F(GesturesToResiduals, OfMonomerAndDimerAreTwelveAtMost) {
    Give({In("monomer-dimer/00020.RA2"), In("monomer-dimer/00033.RA2"), In("monomer-dimer/00044.RA2")});
    AcceptTable(6);
    user.Click(Workbench.OpenScans);
    EXPECT_EQ(Work.NumSets, 9); // three columns in each of three scans
    player.Expect(ModelFormName, [this] { user.DoubleClick(ModelForm.ModelRow[1]); });
    user.Click(Workbench.Steps[1].Button);
    SeeResiduals();
    user.Click(Workbench.AtOnce);
    EXPECT_EQ(Work.FitDone, FlagTrue) << Work.Outcome.Sentence;
    std::printf("gestures to the residuals of %d sets of monomer and dimer: %d\n", Work.NumSets,
                user.Gestures);
    EXPECT_LE(user.Gestures, 12);
}

TEST_F(GesturesToResiduals, OfOneSetOfATwoChannelCellAreSixAtMost) {
    Give({In("single-species/00024.RA1")});
    AcceptTable(1);
    user.Click(Workbench.OpenScans);
    EXPECT_EQ(Work.NumSets, 1);
    SeeResiduals();
    user.Click(Workbench.AtOnce);
    EXPECT_EQ(Work.FitDone, FlagTrue) << Work.Outcome.Sentence;
    std::printf("gestures to the residuals of 1 set of a two-channel scan: %d\n", user.Gestures);
    EXPECT_LE(user.Gestures, 6);
}

// --- a whole run
// --------------------------------------------------------------------------------------------

struct RunByMouse : GesturesToResiduals {
    static QTreeWidget* Tree() { return Player::Window(RunFormName)->findChild<QTreeWidget*>("Run"); }
    // The box of a cell.
    void Tick(const char* cell) {
        ++user.Gestures;
        QTreeWidgetItem* item = Tree()->findItems(cell, Qt::MatchExactly).value(0);
        ASSERT_NE(item, nullptr) << cell;
        Tree()->scrollToItem(item);
        const QRect rect = Tree()->visualItemRect(item);
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {}, {rect.left() + 9, rect.center().y()});
        Player::Serve();
        EXPECT_EQ(item->checkState(0), Qt::Checked) << cell;
    }
    // A click into a field and what is typed there.
    void Enter(const Control& field, const char* text) {
        user.Click(field);
        ++user.Gestures;
        Player::Type(text);
    }
    void ChooseTwoCells() {
        EXPECT_FALSE(RunForm.OkButton.Enabled) << "63 sets";
        user.Click(RunForm.NoneButton);
        Tick("Cell 2");
        Tick("Cell 5");
        Enter(RunForm.Ratios[1].A, "0.5");
        Enter(RunForm.Ratios[2].A, "0.3333333");
        user.Click(RunForm.OkButton);
    }
};

// 7 cells, 3 speeds, 3 wavelengths, 10 scans each.
TEST_F(RunByMouse, From630ScansInAnArchiveToAGlobalFitInLessThanTwentyGestures) {
    RunPlan plan;
    plan.Cells = {1, 2, 3, 4, 5, 6, 7};
    plan.Wavelengths = {230, 260, 280};
    plan.Wander = 1;
    plan.Points = 60;
    const std::vector<MadeScan> made = MakeRun(plan);
    ASSERT_EQ(made.size(), 630U);
    const std::string archive = player.Directory() + "/run.tar";
    WriteWholeFile(archive, ArchiveOf(EntriesOf(made), "tar"));
    Give({archive});
    player.Expect(RunFormName, [this] { ChooseTwoCells(); });
    AcceptTable(9);     // the lines of the first page
    user.Gestures += 2; // the menu and its item
    player.ClickMenu("ReadRun");
    ASSERT_EQ(Work.NumSets, 18);
    SeeResiduals();
    user.Click(Workbench.AtOnce);
    ASSERT_EQ(Work.FitDone, FlagTrue) << Work.Outcome.Sentence;
    // sigma = M (1 - vbar rho) omega^2 / (R T) of 40 kDa at 10000 rpm, the speed of set 1.
    const double omega = 10000.0 * 3.14159265358979 / 30.0;
    const double sigma = 40e3 * (1.0 - 0.735 * 1.004) * omega * omega / (8.3144710e7 * 293.15);
    EXPECT_NEAR(static_cast<double>(Work.Parms[0]), sigma, 0.05 * sigma);
    std::printf("gestures from an archive of 630 scans to the residuals of 18 sets: %d\n", user.Gestures);
    EXPECT_LT(user.Gestures, 20);
}

TEST_F(RunByMouse, TheTreeIsWorkedWithoutAMouse) {
    RunPlan plan;
    plan.Wavelengths = {260, 280};
    plan.ScansPerStage = 4;
    plan.Points = 40;
    const std::string folder = player.Directory() + "/run";
    std::filesystem::create_directory(folder);
    WriteRun(MakeRun(plan), folder);
    player.Expect(RunFormName, [] {
        Tree()->setFocus();
        Player::Serve();
        EXPECT_EQ(RunForm.Lines[0].Ticked, RunLine::All);
        Player::Press(Qt::Key_Space);
        EXPECT_EQ(RunForm.Lines[0].Ticked, RunLine::None);
        Player::Press(Qt::Key_Down);
        Player::Press(Qt::Key_Space);
        EXPECT_EQ(RunForm.Lines[1].Ticked, RunLine::All);
        EXPECT_EQ(RunForm.Lines[0].Ticked, RunLine::Some);
        Player::TabTo(RunForm.Ratios[1].A);
        Player::Type("0.5");
        Player::TabTo(RunForm.CancelButton);
        EXPECT_EQ(RunForm.Ratios[1].A.Text, "0.5");
        Player::Press(Qt::Key_Escape);
    });
    Drop({folder});
    EXPECT_TRUE(Work.ScanFile[1].empty());
}

} // namespace
} // namespace Quillon
