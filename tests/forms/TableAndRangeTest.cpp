// The table of data sets and the range graph by mouse and keys: the bar below the graph, the menu of a line,
// the step back, and what a field does with keys that it does not take.
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "fit/forms/ConfidenceInput.h"
#include "forms/shell/Binding.h"
#include "forms/shell/ChartBox.h"
#include "models/forms/UnitsForm.h"
#include "scandata/forms/FileForm.h"
#include "scandata/range/RangeBar.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace Quillon {
namespace {

QWidget* Canvas() {
    return Player::Window(ChartsName)->findChild<ChartCanvas*>();
}

void Replace(const Control& field, const char* text) {
    Player::Click(field);
    Player::Press(Qt::Key_A, Qt::ControlModifier);
    Player::Type(text);
}

struct RangeAtTheWindow : testing::Test {
    Player player;
    RangeAtTheWindow() {
        UseSimulatedData();
        Work.FitRange[0][1] = 11;
        Work.FitRange[1][1] = 90;
    }
    // Plays on the range graph of set 1, and leaves the table by its close button.
    void OnGraph(std::function<void()> play) {
        player.Expect(FileFormName, [&, play] {
            player.Expect(ChartsName, play);
            Player::Click(FileForm.MinRBox[0]);
            FileForm.FormChanged = 0; // the range has been accepted on the graph
            Player::Click(FileForm.OkButton);
        });
        player.ClickMenu("ReadData");
    }
    static float Radius(long p) { return Work.ScanRadius[1][p]; }
};

TEST_F(RangeAtTheWindow, IsAcceptedByMouse) {
    OnGraph([] {
        Player::Drag(Canvas(), {Charts.Markers[0].Device, 200}, {Charts.Markers[0].Device + 40, 200});
        EXPECT_NE(RangeBar.Count.Text, "80 points");
        Player::Click(RangeBar.AcceptButton);
    });
    EXPECT_GT(Work.FitRange[0][1], 11);
    EXPECT_EQ(Work.FitRange[1][1], 90);
}

TEST_F(RangeAtTheWindow, CancelEscAndTheCloseButtonLeaveIt) {
    const std::function<void()> ways[] = {[] { Player::Click(RangeBar.CancelButton); },
                                          [] { Player::Press(Qt::Key_Escape); },
                                          [] { Player::Window(ChartsName)->close(); }}; // which asks nothing
    for (const auto& way : ways)
        OnGraph([&way] {
            Player::Drag(Canvas(), {Charts.Markers[0].Device, 200}, {Charts.Markers[0].Device + 40, 200});
            way();
        });
    EXPECT_EQ(Work.FitRange[0][1], 11);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
}

TEST_F(RangeAtTheWindow, IsTypedAndTheKeysGoBackToTheGraph) {
    OnGraph([] {
        Replace(RangeBar.Radius[0], "5.9");
        Player::Press(Qt::Key_Return);
        EXPECT_EQ(RangeBar.Radius[0].Text, "5.9000");
        EXPECT_TRUE(Canvas()->hasFocus());
        Replace(RangeBar.Radius[1], "6.1");
        Player::Click(RangeBar.AcceptButton); // takes what still stands in the field
    });
    EXPECT_GE(Radius(Work.FitRange[0][1]), 5.9F);
    EXPECT_LT(Radius(Work.FitRange[0][1] - 1), 5.9F);
    EXPECT_LE(Radius(Work.FitRange[1][1]), 6.1F);
    EXPECT_GT(Radius(Work.FitRange[1][1] + 1), 6.1F);
}

TEST_F(RangeAtTheWindow, AutoThenEnter) {
    OnGraph([] {
        Player::Click(RangeBar.AutoButton);
        EXPECT_TRUE(Charts.StatusLine.Text.starts_with("Proposed: "));
        EXPECT_TRUE(Canvas()->hasFocus());
        Player::Press(Qt::Key_Return);
    });
    // The solution begins at point 3; the break in front of it reaches to there, and two points are cut.
    EXPECT_EQ(Work.FitRange[0][1], 6);
}

TEST_F(RangeAtTheWindow, AMenuThatIsLeftGivesTheKeysBack) {
    OnGraph([] {
        auto* bar = Player::Window(ChartsName)->findChild<QMenuBar*>();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(bar->actions()[1]).center());
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        Player::Serve();
        ASSERT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_TRUE(Canvas()->hasFocus());
        Player::Press(Qt::Key_Return);
    });
    EXPECT_EQ(Work.FitRange[0][1], 11);
}

TEST_F(RangeAtTheWindow, MarkersOnEachOtherArePartedToTheRight) {
    OnGraph([] {
        PlaceMarkers(Radius(40), Radius(40));
        const int place = Charts.Markers[0].Device;
        Player::Drag(Canvas(), {place, 200}, {place + 80, 200});
        EXPECT_EQ(Charts.Markers[0].X, Radius(40));
        EXPECT_GT(Charts.Markers[1].X, Radius(40));
        Player::Click(RangeBar.AcceptButton);
    });
    EXPECT_EQ(Work.FitRange[0][1], 40);
}

TEST_F(RangeAtTheWindow, WhatLiesOutsideIsWashedGrey) {
    OnGraph([] {
        const QImage picture = Canvas()->grab().toImage();
        const GraphBox& frame = Chart.Spec.Frame;
        const int y = frame.Y1 + 3; // above the data
        const auto grey = [&](int x) { return qGray(picture.pixel(x, y)); };
        EXPECT_LT(grey((frame.X1 + Charts.Markers[0].Device) / 2), 245);
        EXPECT_EQ(grey((Charts.Markers[0].Device + Charts.Markers[1].Device) / 2), 255);
        Player::Press(Qt::Key_Escape);
    });
}

// --- the table
// ---------------------------------------------------------------------------------------------------

struct TableMistakes : testing::Test {
    Player player;
    TableMistakes() { UseSimulatedData(); }
    // The menu of a line at the mouse, and an item of it or of a menu within it.
    static void Choose(std::size_t line, const QString& item) {
        QWidget* cell = Player::Widget(FileForm.NameBox[line]);
        const QPoint at(5, 5);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, cell->mapToGlobal(at));
        QApplication::sendEvent(cell, &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->findChildren<QAction*>())
            if (action->text().remove('&') == item) {
                menu->close();
                action->trigger();
                return Player::Serve();
            }
        ADD_FAILURE() << "the menu has no item " << item.toStdString();
        menu->close();
    }
};

TEST_F(TableMistakes, ALineHasAMenuAndUndoTakesItsCommandBack) {
    const std::string second = Work.ScanFile[2];
    player.Expect(FileFormName, [&] {
        Choose(1, "3 mm");
        EXPECT_EQ(FileForm.CellPath[1].Text, "3");
        EXPECT_TRUE(Player::Widget(FileForm.Check1[1])->hasFocus());
        Player::Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_NE(FileForm.CellPath[1].Text, "3");
        Choose(0, "Remove This Line");
        EXPECT_EQ(FileForm.NameBox[0].Text, second);
        EXPECT_EQ(FileForm.NameBox[2].Text, "");
        Player::Click(FileForm.UndoButton);
        EXPECT_EQ(FileForm.NameBox[1].Text, second);
        EXPECT_FALSE(Player::Widget(FileForm.UndoButton)->isEnabled());
        Player::Click(FileForm.CancelButton); // nothing has changed after all
    });
    player.ClickMenu("ReadData");
    EXPECT_EQ(Work.ScanFile[2], second);
}

TEST_F(TableMistakes, AnEmptiedTableIsLeftByEsc) {
    Work.FitDone = FlagTrue;
    const Workspace before = Work;
    player.Expect(FileFormName, [&] {
        player.ExpectMessage("Do you want to clear out all loaded scan data?", "Yes");
        Player::Click(FileForm.ClearFiles);
        EXPECT_FALSE(Player::Widget(FileForm.CancelButton)->isEnabled());
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("ReadData");
    EXPECT_EQ(Work.ScanFile, before.ScanFile);
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.DataChosen, FlagTrue);
}

TEST_F(TableMistakes, InsertALineIsTheFirstAnswer) {
    const std::string second = Work.ScanFile[2];
    player.Expect(FileFormName, [&] {
        player.ExpectMessage("Set 2 (" + second +
                                 ") holds a scan.\n\nDo you want to insert a line for the next channel?",
                             "Return");
        Player::Click(FileForm.CopyFile);
        EXPECT_EQ(FileForm.NameBox[2].Text, second);
        player.ExpectMessage("Set 3 (" + second +
                                 ") holds a scan.\n\nDo you want to insert a line for the next channel?",
                             "Write over it");
        Player::Click(FileForm.CopyFile);
        EXPECT_NE(FileForm.NameBox[2].Text, second);
        Player::Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(FileForm.NameBox[2].Text, second);
        FileForm.FormChanged = 0;
        Player::Click(FileForm.OkButton);
    });
    player.ClickMenu("ReadData");
    EXPECT_EQ(Work.NumSets, 4);
}

TEST_F(TableMistakes, LongTipsStandInSeveralLines) {
    player.Expect(FileFormName, [] {
        const QString tip = Player::Widget(FileForm.ExtinctionButton[0])->toolTip();
        EXPECT_GT(tip.count('\n'), 1);
        for (const QString& line : tip.split('\n'))
            EXPECT_LE(line.size(), 60);
        Player::Click(FileForm.CancelButton);
    });
    player.ClickMenu("ReadData");
}

// --- fields
// --------------------------------------------------------------------------------------------------------

TEST_F(TableMistakes, ALetterOverASelectedNumberLeavesTheNumberAndEscLeavesTheForm) {
    Work.VbarA = 0.73F;
    player.Expect(UnitsFormName, [] {
        Player::Click(UnitsForm.VBarInput[0]);
        const std::string number = UnitsForm.VBarInput[0].Text;
        Player::Type("x");
        EXPECT_EQ(UnitsForm.VBarInput[0].Text, number);
        auto* field = qobject_cast<QLineEdit*>(Player::Widget(UnitsForm.VBarInput[0]));
        EXPECT_EQ(field->text().toStdString(), number);
        EXPECT_EQ(field->selectedText().toStdString(), number);
        Player::Type("0.71");
        EXPECT_EQ(field->text(), "0.71");
        Player::Press(Qt::Key_Escape); // the entry is taken back
        EXPECT_EQ(field->text().toStdString(), number);
        EXPECT_TRUE(UnitsForm.State.Shown);
        Player::Press(Qt::Key_Escape); // the form is left
        EXPECT_FALSE(UnitsForm.State.Shown);
    });
    player.ClickMenu("DefineUnits");
    EXPECT_EQ(Work.VbarA, 0.73F);
    EXPECT_EQ(Work.AbortFit, FlagFalse);
}

} // namespace
} // namespace Quillon
