// Studies and shared concentrations at their windows.
#include "commands/Analmenu.h"
#include "forms/shell/Binding.h"
#include "models/forms/ShareForm.h"
#include "platform/Platform.h"
#include "reporting/Results.h"
#include "studies/MinimaForm.h"
#include "studies/StudyForm.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QProgressBar>
#include <QTableWidget>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace Quillon {
namespace {

struct MinimaAtTheWindow : testing::Test {
    Player player;
    MinimaAtTheWindow() {
        UseFinishedFit();
        Work.LastModel = Work.Model;
        Work.StartParms = Work.Parms;
        SetMenuStatus();
    }
    static QTableWidget* Table() {
        return Player::Window(MinimaFormName)->findChild<QTableWidget*>("Minima");
    }
};

TEST_F(MinimaAtTheWindow, SearchFillsTheTableOnTheDesktopsThreads) {
    const Workspace own = Work;
    player.Expect(MinimaFormName, [] {
        Player::TabTo(MinimaForm.CountInput);
        Player::Type("4");
        Player::Click(MinimaForm.SearchButton);
        ASSERT_EQ(MinimaForm.Rows.size(), 1U);
        ASSERT_EQ(Table()->rowCount(), 1);
        EXPECT_EQ(Table()->columnCount(), static_cast<int>(MinimaForm.Columns.size()));
        EXPECT_EQ(Table()->item(0, 2)->text(), "5");
        EXPECT_EQ(Table()->item(0, 3)->text(), "your fit");
        EXPECT_FALSE(Player::Widget(MinimaForm.TakeButton)->isEnabled());
        Player::Click(MinimaForm.CloseButton);
    });
    player.ClickMenu("SearchMinima");
    EXPECT_TRUE(Work == own);
}

// The list is typed and the table is filled; nothing is taken.
TEST_F(MinimaAtTheWindow, AComparisonIsTypedAndFillsItsTable) {
    const std::int16_t model = Work.Model;
    player.Expect(StudyFormName, [] {
        Player::TabTo(StudyForm.Inputs[0].Box);
        Player::Type("1, 2");
        Player::Click(StudyForm.RunButton);
        auto* table = Player::Window(StudyFormName)->findChild<QTableWidget*>("Study");
        ASSERT_EQ(table->rowCount(), 2);
        ASSERT_EQ(table->columnCount(), static_cast<int>(StudyForm.Columns.size()));
        Player::Click(StudyForm.CloseButton);
    });
    player.ClickMenu("CompareModels");
    EXPECT_EQ(Work.Model, model);
}

// A turn of the wheel above whatever can be set, with the focus there and without: what stands in it stays.
TEST_F(MinimaAtTheWindow, TheWheelChangesNoValue) {
    const Workspace own = Work;
    const auto turnAll = [] {
        for (QWidget* widget : QApplication::activeModalWidget()->findChildren<QWidget*>()) {
            if (!widget->isVisible() || !widget->isEnabled() || widget->focusPolicy() == Qt::NoFocus)
                continue;
            for (const bool withFocus : {false, true}) {
                if (withFocus) widget->setFocus();
                const QPointF middle = widget->rect().center();
                QWheelEvent event(middle, widget->mapToGlobal(middle), {}, {0, -240}, Qt::NoButton,
                                  Qt::NoModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(widget, &event);
            }
        }
        Player::Serve();
    };
    player.Expect(StudyFormName, [&turnAll] {
        const auto valuesOf = [] {
            std::vector<std::string> values;
            for (const StudyInput& input : StudyForm.Inputs)
                values.push_back(input.Box.Text + "/" + std::to_string(input.Box.Value));
            return values;
        };
        const auto before = valuesOf();
        turnAll();
        EXPECT_EQ(valuesOf(), before);
        Player::Click(StudyForm.CloseButton);
    });
    player.ClickMenu("ProfileParameter");
    player.Expect("SettingsForm", [&turnAll] {
        turnAll();
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("AllSettings");
    EXPECT_TRUE(Work == own);
}

// Pieces on this thread, with the user's click between the second one and the third.
TEST_F(MinimaAtTheWindow, StopAndEscEndTheSearchAndTheWindowStays) {
    Host.ServeEvents = [] { // without the desktop's pause between two services, which goes by the clock
        RefreshForms();
        QApplication::processEvents();
    };
    for (const bool byKey : {false, true}) {
        Host.RunPieces = [byKey](long count, const auto& piece, const auto& watch) {
            for (long number = 0; number < count; ++number) {
                if (number == 2 && byKey) Player::Press(Qt::Key_Escape);
                if (number == 2 && !byKey) Player::Click(MinimaForm.StopButton);
                piece(number);
                watch(number + 1);
            }
        };
        player.Expect(MinimaFormName, [] {
            Player::Click(MinimaForm.SearchButton);
            EXPECT_TRUE(MinimaForm.State.Shown);
            EXPECT_NE(MinimaForm.Progress.Text.find("Stopped before the end."), std::string::npos)
                << MinimaForm.Progress.Text;
            EXPECT_EQ(Work.AbortFit, 0);
            Player::Press(Qt::Key_Escape);
        });
        player.ClickMenu("SearchMinima");
        EXPECT_FALSE(MinimaForm.State.Shown);
        EXPECT_NE(Work.FitDone, 0);
    }
}

// A fit that had stopped elsewhere: the minimum is taken and its results are shown.
TEST_F(MinimaAtTheWindow, ATakenMinimumShowsItsResults) {
    const double least = Work.SumSq;
    Work.FitDone = FlagFalse;
    Work.Outcome = {FitEnd::Singular, "Singular Matrix - Fit Aborted"};
    SetMenuStatus();
    player.Expect(MinimaFormName, [] {
        Player::Click(MinimaForm.SearchButton);
        ASSERT_FALSE(MinimaForm.Rows.empty());
        Table()->setCurrentCell(0, 0);
        Player::Click(MinimaForm.TakeButton);
    });
    player.Expect(ResultsName, [] { Player::Click(Results.OkButton); });
    player.ClickMenu("SearchMinima");
    EXPECT_NE(Work.FitDone, 0);
    EXPECT_NEAR(Work.SumSq / least, 1.0, 1e-3);
    EXPECT_TRUE(MainItem("ReviewFit").Enabled);
}

TEST(ShareFormAtTheWindow, TiesTwoWavelengthsOfOneCell) {
    Player player;
    UseSimulatedData();
    Work.ScanRPM[2] = Work.ScanRPM[1];
    Work.ScanWavelength[2] = Work.ScanWavelength[1] + 20.0F;
    const std::int16_t first = Work.SetRow[1];
    player.Expect(ShareFormName, [] {
        EXPECT_EQ(ShareForm.Boxes.LinkNum[1].Text, "1"); // proposed
        Player::Window(ShareFormName)->close();
        Player::Serve();
    });
    player.ClickMenu("ShareConcentrations");
    EXPECT_EQ(Work.ConcLink[2], 0);
    player.Expect(ShareFormName, [] {
        Player::Click(ShareForm.CancelButton);
        EXPECT_EQ(ShareForm.Boxes.LinkNum[1].Text, "");
        Player::Click(ShareForm.ProposeButton);
        Player::TabTo(ShareForm.Boxes.LinkNum[2]);
        Player::Type("1");
        Player::Press(Qt::Key_Return);
        Player::Click(ShareForm.OkButton);
    });
    player.ClickMenu("ShareConcentrations");
    EXPECT_EQ(Work.ConcLink[2], first);
    EXPECT_EQ(Work.ConcLink[3], first);
    EXPECT_EQ(Work.NewData, 1);
}

} // namespace
} // namespace Quillon
