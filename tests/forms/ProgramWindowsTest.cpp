// The windows of long work and of graphs, the table of data sets and the main window: in every way that they
// can be left, also in the middle of what they show.
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "fit/forms/FitMon.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/WaitForm.h"
#include "forms/shell/Binding.h"
#include "platform/Platform.h"
#include "reporting/Results.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/InfoBox.h"
#include "scandata/reader/ExtinctionForm.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QFocusEvent>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace Quillon {
namespace {

// --- the monitor -------------------------------------------------------------------------------------------

struct MonitorAtTheWindow : testing::Test {
    Player player;
    MonitorAtTheWindow() {
        UseSimulatedData();
        Work.LastModel = Work.Model; // no question about new guesses
        Work.NewData = 0;
        Work.PauseBeforeFit = FlagTrue; // the monitor waits for a button
        SetMenuStatus();
        RefreshForms();
    }
    void FitWith(std::function<void()> inMonitor) {
        player.Expect(GetGuessName, [] { Player::Click(GetGuess.OkButton); });
        player.Expect(FitMonName, std::move(inMonitor));
        player.ClickMenu("FitData");
    }
    static void ExpectCancelled() {
        EXPECT_EQ(Work.FitDone, FlagFalse);
        EXPECT_EQ(Work.Outcome.End, FitEnd::Cancelled);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
        EXPECT_TRUE(Player::Window(AnalmenuName)->isVisible());
    }
};

TEST_F(MonitorAtTheWindow, CancelEscAndTheCloseButtonEndTheFit) {
    FitWith([] {
        EXPECT_TRUE(Player::Window(AnalmenuName)->isVisible()); // and takes no commands
        EXPECT_EQ(QApplication::activeModalWidget(), Player::Window(FitMonName));
        Player::Click(FitMon.CancelButton);
    });
    ExpectCancelled();
    FitWith([] { Player::Press(Qt::Key_Escape); });
    ExpectCancelled();
    FitWith([] { Player::Window(FitMonName)->close(); });
    ExpectCancelled();
}

TEST_F(MonitorAtTheWindow, AGraphStaysAboveTheMainWindowAndWhereItWas) {
    player.ClickMenu("GraphData");
    QWidget* graph = Player::Window(ChartsName);
    ASSERT_TRUE(graph->isVisible());
    EXPECT_EQ(graph->parentWidget(), Player::Window(AnalmenuName));
    EXPECT_EQ(graph->windowType(), Qt::Dialog); // others are not kept above their parents
    graph->move(37, 59);
    FitWith([] { Player::Press(Qt::Key_Escape); });
    ExpectCancelled();
    EXPECT_TRUE(graph->isVisible());
    EXPECT_EQ(graph->pos(), QPoint(37, 59));
}

TEST_F(MonitorAtTheWindow, OneIterationAtATimeAndThenTheRest) {
    player.Expect(GetGuessName, [] { Player::Click(GetGuess.OkButton); });
    player.Expect(FitMonName, [] { Player::Click(FitMon.NextIter); });
    // The monitor's window waits within the fit: what follows is played between two iterations.
    QTimer between;
    between.setInterval(2);
    QObject::connect(&between, &QTimer::timeout, [&] {
        if (!FitMon.Loaded || FitMon.PrevValue[0].Text.empty()) return; // the iteration is not over
        if (FitMon.StatusText.Text != "waiting for input") return;
        between.stop();
        EXPECT_EQ(Work.Iteration, 1);
        Player::Click(FitMon.FitButton);
    });
    between.start();
    player.Expect(ResultsName, [] { Player::Click(Results.OkButton); });
    player.ClickMenu("FitData");
    EXPECT_EQ(Work.FitDone, FlagTrue);
}

TEST_F(MonitorAtTheWindow, ClosingTheMainWindowDuringAFitCancelsTheFitAndTheProgramStays) {
    FitWith([] { Player::Window(AnalmenuName)->close(); });
    ExpectCancelled();
    EXPECT_FALSE(Analmenu.Ended);
}

TEST_F(MonitorAtTheWindow, AGraphThatStandsIsBlockedDuringTheFit) {
    UseFinishedFit();
    Work.LastModel = Work.Model;
    Work.PauseBeforeFit = FlagTrue;
    player.ClickMenu("GraphOverlay");
    ASSERT_TRUE(Player::Window(ChartsName)->isVisible());
    FitWith([] {
        EXPECT_EQ(QApplication::activeModalWidget(), Player::Window(FitMonName));
        Player::Click(FitMon.CancelButton);
    });
}

// --- the search for limits ---

struct SearchAtTheWindow : testing::Test {
    Player player;
    SearchAtTheWindow() { UseFinishedFit(); }
    void SearchWith(std::function<void()> inSearch) {
        player.Expect(ResultsName, [&] {
            player.Expect(WaitFormName, std::move(inSearch));
            Player::Click(Results.ComputeConfidence);
            EXPECT_FALSE(WaitForm.State.Shown);
            Player::Click(Results.OkButton);
        });
        player.ClickMenu("ReviewFit");
    }
};

TEST_F(SearchAtTheWindow, CancelEscAndTheCloseButtonsLeaveTheFitAsItWas) {
    const auto parms = Work.Parms;
    const std::function<void()> ways[] = {
        [] { Player::Click(WaitForm.CancelButton); }, [] { Player::Press(Qt::Key_Escape); },
        [] { Player::Window(WaitFormName)->close(); }, [] { Player::Window(AnalmenuName)->close(); }};
    for (const auto& way : ways) {
        SearchWith(way);
        EXPECT_EQ(Work.LimitsDone, FlagFalse);
        EXPECT_EQ(Work.FitDone, FlagTrue);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
        for (long slot = 0; slot < Work.NumParms; ++slot)
            EXPECT_EQ(Work.Parms[slot], parms[slot]);
        EXPECT_FALSE(Analmenu.Ended);
    }
}

TEST_F(SearchAtTheWindow, CancelInTheMidstOfTheSearchLeavesTheFitAsItWas) {
    const auto parms = Work.Parms;
    const double sumSq = Work.SumSq;
    Host.ServeEvents = [] { // without the desktop's pause between two services, which goes by the clock
        RefreshForms();
        QApplication::processEvents();
    };
    QTimer click;
    click.setInterval(0);
    QObject::connect(&click, &QTimer::timeout, [&] {
        if (!WaitForm.State.Shown || WaitForm.Fraction == 0.0) return; // one end point at least is done
        click.stop();
        EXPECT_LT(WaitForm.Fraction, 1.0);
        Player::Click(WaitForm.CancelButton);
    });
    click.start();
    SearchWith([] {});
    EXPECT_FALSE(click.isActive());
    EXPECT_EQ(Work.LimitsDone, FlagFalse);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
    EXPECT_EQ(Work.SumSq, sumSq);
    for (long slot = 0; slot < Work.NumParms; ++slot)
        EXPECT_EQ(Work.Parms[slot], parms[slot]);
}

// --- graphs ---

struct GraphAtTheWindow : testing::Test {
    Player player;
    GraphAtTheWindow() {
        UseFinishedFit();
        UseChannelRadii();
    }
    static QWidget* Canvas() {
        for (QWidget* w : Player::Window(ChartsName)->findChildren<QWidget*>())
            if (w->hasMouseTracking() && w->focusPolicy() == Qt::StrongFocus) return w;
        return nullptr;
    }
};

TEST_F(GraphAtTheWindow, EscOnAGraphThatStandsLeavesNoCancelBehind) {
    player.ClickMenu("GraphResiduals");
    QTest::keyClick(Canvas(), Qt::Key_Escape);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
    EXPECT_TRUE(Player::Window(ChartsName)->isVisible());
    Player::Window(ChartsName)->close();
    EXPECT_FALSE(Player::Window(ChartsName)->isVisible());
    player.ClickMenu("GraphOverlay"); // the same window again
    EXPECT_TRUE(Player::Window(ChartsName)->isVisible());
}

TEST_F(GraphAtTheWindow, ADragZoomsAndBackspaceGoesBack) {
    player.ClickMenu("GraphOverlay");
    const float before = Chart.Spec.AxisX1.Max;
    const GraphBox& frame = Chart.Spec.Frame;
    Player::Drag(Canvas(), {frame.X1 + 40, frame.Y1 + 40}, {(frame.X1 + frame.X2) / 2, frame.Y2 - 40});
    EXPECT_LT(Chart.Spec.AxisX1.Max, before);
    DoLastZoom();
    EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Max, before);
}

// It asked whether to crash the program.
TEST_F(GraphAtTheWindow, TheRangeGraphThatIsClosedAsksNothingAndChangesNothing) {
    player.Expect(FileFormName, [&] {
        const auto range = Work.FitRange;
        player.Expect(ChartsName, [&] { Player::Window(ChartsName)->close(); });
        Player::Click(FileForm.MinRBox[1]);
        EXPECT_EQ(Work.FitRange[0][2], range[0][2]);
        EXPECT_TRUE(FileForm.CancelButton.Enabled);
        player.Expect(ChartsName, [] { QTest::keyClick(Canvas(), Qt::Key_Escape); });
        Player::Click(FileForm.MaxRBox[1]);
        EXPECT_EQ(Work.FitRange[1][2], range[1][2]);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
        Player::Click(FileForm.CancelButton);
    });
    player.ClickMenu("ReadData");
}

// --- the table of data sets ---

struct TableAtTheWindow : testing::Test {
    Player player;
    TableAtTheWindow() {
        UseSimulatedData();
        UseChannelRadii();
        Work.FitDone = FlagTrue;
    }
};

TEST_F(TableAtTheWindow, CancelAndEscLeaveTheFitStandingOkAndTheCloseButtonAcceptTheTable) {
    const std::function<void()> ways[] = {
        [] { Player::Click(FileForm.CancelButton); }, [] { Player::Press(Qt::Key_Escape); },
        [] { Player::Click(FileForm.OkButton); }, [] { Player::Window(FileFormName)->close(); }};
    for (std::size_t way = 0; way < std::size(ways); ++way) {
        Work.FitDone = FlagTrue;
        player.Expect(FileFormName, ways[way]);
        player.ClickMenu("ReadData");
        EXPECT_EQ(Work.FitDone, FlagTrue) << way << ": nothing has been changed";
        EXPECT_EQ(Work.AbortFit, FlagFalse);
        EXPECT_EQ(Work.DataChosen, FlagTrue);
        EXPECT_TRUE(Player::Window(AnalmenuName)->isEnabled());
    }
}

TEST_F(TableAtTheWindow, AChangeDisablesCancelAndEsc) {
    player.Expect(FileFormName, [] {
        Player::Click(FileForm.CellPath[1]);
        EXPECT_FALSE(Player::Widget(FileForm.CancelButton)->isEnabled());
        Player::Press(Qt::Key_Escape);
        EXPECT_TRUE(FileForm.State.Shown);
        Player::Click(FileForm.OkButton);
    });
    player.ClickMenu("ReadData");
    EXPECT_EQ(Work.NewData, 1);
    EXPECT_FLOAT_EQ(Work.CellPath[2], 0.3F);
}

TEST_F(TableAtTheWindow, AClickInALineMakesItTheCurrentOneAndItsFrameMovesThere) {
    player.Expect(FileFormName, [&] {
        QWidget* table = Player::Window(FileFormName);
        const QImage first = table->grab().toImage();
        player.Expect(InfoBoxName, [] { Player::Press(Qt::Key_Escape); });
        Player::Click(FileForm.HelpButton[1]);
        EXPECT_EQ(Work.CurrentRow, 1);
        const QImage second = table->grab().toImage();
        // Left of the boxes of a line there is nothing but its frame.
        const auto changed = [&](std::size_t line) {
            const QWidget* cell = Player::Widget(FileForm.NameBox[line]);
            const QPoint at = cell->mapTo(table, QPoint(-3, cell->height() / 2));
            return first.pixel(at) != second.pixel(at);
        };
        EXPECT_TRUE(changed(0));
        EXPECT_TRUE(changed(1));
        EXPECT_FALSE(changed(2));
        Player::Click(FileForm.CancelButton);
    });
    player.ClickMenu("ReadData");
}

TEST_F(TableAtTheWindow, TheLineOfAClickStaysWhenTheTableBecomesActiveAgain) {
    player.Expect(FileFormName, [&] {
        Player::Click(FileForm.Check1[0]); // the keys stay with line 1
        Player::Click(FileForm.Check1[0]);
        Player::Widget(FileForm.Check1[0])->setFocus();
        player.Expect(ChartsName, [] {
            EXPECT_EQ(Work.CurrentRow, 2);
            QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
            QApplication::sendEvent(Player::Widget(FileForm.Check1[0]), &back);
            EXPECT_EQ(Work.CurrentRow, 2);
            Player::Press(Qt::Key_Return);
        });
        Player::Click(FileForm.MinRBox[2]);
        Player::Click(FileForm.OkButton);
    });
    player.ClickMenu("ReadData");
}

TEST_F(TableAtTheWindow, RatiosAreTakenAsTheyAreLeft) {
    player.Expect(FileFormName, [&] {
        player.Expect(ExtinctionFormName, [&] {
            Player::Press(Qt::Key_A, Qt::ControlModifier);
            Player::Type("0");
            player.ExpectMessage("You must enter a positive, non-zero value for the extinction ratio");
            Player::Click(ExtinctionForm.OkButton);
            EXPECT_TRUE(ExtinctionForm.State.Shown);
            Player::Press(Qt::Key_A, Qt::ControlModifier);
            Player::Type("1.5");
            Player::Press(Qt::Key_Tab);
            Player::Press(Qt::Key_Return); // in the second field: OK
        });
        Player::Click(FileForm.ExtinctionButton[1]);
        Player::Click(FileForm.OkButton);
    });
    player.ClickMenu("ReadData");
    EXPECT_FLOAT_EQ(Work.ExtinctionRatio[0][2], 1.5F);
}

TEST_F(TableAtTheWindow, TheTableIsAwayWhileDataAreWritten) {
    Work.ScanDirectory[1] = player.Directory();
    int dialogs = 0;
    const auto give = Host.AskFile;
    player.Expect(FileFormName, [&] {
        Host.AskFile = [&](const FileRequest&) {
            ++dialogs;
            EXPECT_FALSE(Player::Window(FileFormName)->isVisible());
            return FileAnswer{};
        };
        Player::Click(FileForm.WriteData);
        EXPECT_TRUE(Player::Window(FileFormName)->isVisible());
        EXPECT_EQ(QApplication::activeModalWidget(), Player::Window(FileFormName));
        Player::Click(FileForm.CancelButton);
    });
    player.ClickMenu("ReadData");
    EXPECT_EQ(dialogs, 1); // cancelled at the first
    Host.AskFile = give;
}

// --- the main window ---

struct MainAtTheWindow : testing::Test {
    Player player;
    const std::string Question =
        "This will end Quillon.  Remember, you may want to save the last fit to disk.";
};

TEST_F(MainAtTheWindow, EndingWithAFitAsksOnceAndCancelKeepsTheProgramRunning) {
    UseFinishedFit();
    player.ExpectMessage(Question, "Cancel");
    Player::Window(AnalmenuName)->close();
    EXPECT_TRUE(Player::Window(AnalmenuName)->isVisible());
    EXPECT_FALSE(Analmenu.Ended);
    player.ExpectMessage(Question, "Escape");
    player.ClickMenu("MenuExit");
    EXPECT_FALSE(Analmenu.Ended);

    // The program ends its event loop, as under exec() of the real one.
    player.ExpectMessage(Question, "OK");
    QTimer::singleShot(0, [this] { player.ClickMenu("MenuExit"); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(Analmenu.Ended);
}

TEST_F(MainAtTheWindow, WithoutAFitTheCloseButtonEndsAtOnce) {
    QTimer::singleShot(0, [] { Player::Window(AnalmenuName)->close(); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(Analmenu.Ended);
}

TEST_F(MainAtTheWindow, TheInputBoxGivesUpOnEsc) {
    UseFinishedFit();
    Work.NumSets = Work.Model = 1; // the item goes by these two
    SetMenuStatus();
    RefreshForms();
    player.ExpectMessage("Do you want the data to include the baseline offset?", "No");
    player.Expect("QInputDialog", [] { Player::Press(Qt::Key_Escape); });
    player.ClickMenu("WriteBaseline");
    EXPECT_EQ(Work.AbortFit, FlagFalse);
}

} // namespace
} // namespace Quillon
