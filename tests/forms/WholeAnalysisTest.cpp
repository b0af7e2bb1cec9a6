// A whole analysis at the windows, once with the mouse and once with the keyboard alone.
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "fit/forms/FitMon.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/WaitForm.h"
#include "forms/shell/Binding.h"
#include "models/forms/ModelForm.h"
#include "models/forms/UnitsForm.h"
#include "models/table/ParmScale.h"
#include "reporting/Results.h"
#include "reporting/values/Correlation.h"
#include "scandata/forms/FileForm.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

const char* const NewGuesses = "Do you want new guesses for the concentrations?";
const char* const NewOffsets = "Do you also want the baseline offsets reset to zero?";

struct WholeAnalysisAtTheWindows : testing::Test {
    Player player;
    WholeAnalysisAtTheWindows() { UseChannelRadii(); }

    static QWidget* Canvas() {
        for (QWidget* w : Player::Window(ChartsName)->findChildren<QWidget*>())
            if (w->hasMouseTracking() && w->focusPolicy() == Qt::StrongFocus) return w;
        return nullptr;
    }

    static void ExpectTheTruth() {
        ASSERT_EQ(Work.FitDone, FlagTrue) << Work.Outcome.Sentence;
        EXPECT_EQ(Work.NumSets, 3);
        EXPECT_EQ(Work.NumFree, 8); // mass, constant, and loading and offset of each set
        // Noise of 0.001 on signals up to 1 at some 240 points leaves per cents of doubt about the mass.
        EXPECT_NEAR(ToUserUnits(SlotNo(0), Work.Parms[0]), TrueMass, 0.04 * TrueMass);
        EXPECT_NEAR(Work.Parms[2], std::log(TrueConstant), 0.3);
        EXPECT_NEAR(Work.RmsResidual, 0.001F, 0.0002F);
    }
};

TEST_F(WholeAnalysisAtTheWindows, WithTheMouse) {
    const std::vector<std::string> paths = WriteScans(player.Directory());
    for (const std::string& path : paths)
        player.GiveFile(path);

    player.Expect(FileFormName, [&] {
        for (int i = 0; i < 1000 && FileForm.Timer1; ++i) // a fresh workspace asks for a scan by itself
            QTest::qWait(1);
        Player::Click(FileForm.NameBox[1]);
        Player::Click(FileForm.NameBox[2]);
        for (std::size_t line = 0; line < 3; ++line) {
            player.Expect(ChartsName, [line] {
                QWidget* canvas = Canvas();
                ASSERT_NE(canvas, nullptr);
                if (line == 0) { // drags the outer marker inwards
                    ASSERT_EQ(Charts.Markers.size(), 2U);
                    const QPoint from(Charts.Markers[1].Device, canvas->height() / 2);
                    const QPoint to(from.x() - 30, from.y());
                    Player::Drag(canvas, from, to);
                }
                QTest::keyClick(canvas, Qt::Key_Return);
            });
            Player::Click(FileForm.ChannelBox[line]);
            EXPECT_EQ(FileForm.ChannelBox[line].Text, "A");
            EXPECT_EQ(Work.CurrentRow, static_cast<int>(line));
        }
        Player::Click(FileForm.OkButton);
    });
    player.ClickMenu("ReadData");
    ASSERT_EQ(Work.DataChosen, FlagTrue);
    EXPECT_EQ(Work.SetLabel[2], "00002.RA1 Ch A");
    // The dragged marker has taken points off the outer end of set 1 alone.
    EXPECT_LT(Work.FitRange[1][1], Work.FitRange[1][2]);

    player.Expect(ModelFormName, [] {
        Player::Click(ModelForm.ModelRow[1]);
        Player::Click(ModelForm.OkButton);
    });
    player.ClickMenu("DoModelSet");
    EXPECT_EQ(Work.Model, 2);
    player.Expect(UnitsFormName, [] {
        Player::Click(UnitsForm.TrueMass);
        Player::Click(UnitsForm.OkButton);
    });
    player.ClickMenu("DefineUnits");
    EXPECT_EQ(Work.MassUnits, 2);

    player.ExpectMessage(NewGuesses, "Yes");
    player.ExpectMessage(NewOffsets, "No");
    player.Expect(GetGuessName, [] {
        for (std::size_t row = 0; row < GetGuess.GuessRows.size(); ++row) {
            const long slot = GetGuess.GuessRows[row].Number;
            const bool wanted = slot == 0 || slot == 2 || slot >= 8;
            if (GetGuess.FitCheck[row].Enabled && (GetGuess.FitCheck[row].Value == 1) != wanted)
                Player::Click(GetGuess.FitCheck[row]);
        }
        Player::Click(GetGuess.OkButton);
    });
    player.Expect(FitMonName, [] { Player::Click(FitMon.FitButton); });
    player.Expect(ResultsName, [this] {
        ExpectTheTruth();
        player.Expect(WaitFormName, [] {});
        Player::Click(Results.ComputeConfidence);
        EXPECT_EQ(Work.LimitsDone, FlagTrue);
        EXPECT_FALSE(Player::Widget(Results.ComputeConfidence)->isEnabled());
        EXPECT_LT(Work.ParmLimits[0][0], Work.Parms[Work.FreeIndex[0]]);
        EXPECT_GT(Work.ParmLimits[1][0], Work.Parms[Work.FreeIndex[0]]);
        player.Expect(CorrelationName, [] { Player::Click(Correlation.OkButton); });
        Player::Click(Results.ViewCorr);
        Player::Click(Results.OkButton);
    });
    player.ClickMenu("FitData");
    EXPECT_TRUE(Player::Window(AnalmenuName)->isVisible());

    player.ClickMenu("GraphResiduals");
    EXPECT_TRUE(Player::Window(ChartsName)->isVisible());
    EXPECT_EQ(Chart.State.Nsets, 3);
    EXPECT_EQ(Chart.GraphDrawn, FlagTrue);
}

TEST_F(WholeAnalysisAtTheWindows, WithTheKeyboardAlone) {
    const std::vector<std::string> paths = WriteScans(player.Directory());
    for (const std::string& path : paths)
        player.GiveFile(path);

    player.Expect(FileFormName, [&] {
        for (int i = 0; i < 1000 && FileForm.Timer1; ++i)
            QTest::qWait(1);
        for (std::size_t line = 0; line < 3; ++line) {
            if (line > 0) {
                Player::TabTo(FileForm.Check1[line - 1]);
                Player::Press(Qt::Key_Down); // to the next line
                ASSERT_EQ(Work.CurrentRow, static_cast<int>(line));
                Player::Press(Qt::Key_D, Qt::AltModifier); // reads a scan into it
            }
            ASSERT_FALSE(Work.ScanFile[static_cast<long>(line) + 1].empty());
            player.Expect(ChartsName, [] { Player::Press(Qt::Key_Return); });
            Player::TabTo(FileForm.Check1[line]);
            Player::Type("a");
            EXPECT_EQ(FileForm.ChannelBox[line].Text, "A");
        }
        Player::TabTo(FileForm.OkButton);
        Player::Press(Qt::Key_Space);
    });
    player.PressMenu(Qt::Key_F, "ReadData");
    ASSERT_EQ(Work.DataChosen, FlagTrue);

    player.Expect(ModelFormName, [] {
        Player::Press(Qt::Key_Down); // from model 1 to model 2
        Player::Press(Qt::Key_Return);
    });
    player.PressMenu(Qt::Key_A, "DoModelSet");
    EXPECT_EQ(Work.Model, 2);
    player.Expect(UnitsFormName, [] {
        Player::Press(Qt::Key_T, Qt::AltModifier);
        Player::Press(Qt::Key_O, Qt::AltModifier); // to the first of the access keys O
        Player::TabTo(UnitsForm.OkButton);
        Player::Press(Qt::Key_Space);
    });
    player.PressMenu(Qt::Key_A, "DefineUnits");
    EXPECT_EQ(Work.MassUnits, 2);

    player.ExpectMessage(NewGuesses, "Return");
    player.ExpectMessage(NewOffsets, "Escape");
    player.Expect(GetGuessName, [] {
        for (std::size_t row = 0; row < GetGuess.GuessRows.size(); ++row) {
            const long slot = GetGuess.GuessRows[row].Number;
            const bool wanted = slot == 0 || slot == 2 || slot >= 8;
            if (!GetGuess.FitCheck[row].Enabled || (GetGuess.FitCheck[row].Value == 1) == wanted) continue;
            Player::Press(Qt::Key_Tab, Qt::ShiftModifier);
            for (int i = 0; i < 50 && QApplication::focusWidget() != WidgetFor(GetGuess.FitCheck[row]); ++i)
                Player::Press(Qt::Key_Tab, Qt::ShiftModifier);
            Player::Press(Qt::Key_Space);
        }
        for (std::size_t row = 0; row < GetGuess.GuessRows.size(); ++row)
            if (QApplication::focusWidget() != WidgetFor(GetGuess.OkButton)) Player::Press(Qt::Key_Tab);
        Player::TabTo(GetGuess.OkButton);
        Player::Press(Qt::Key_Return);
    });
    player.Expect(FitMonName, [] { Player::Press(Qt::Key_F, Qt::AltModifier); });
    player.Expect(ResultsName, [this] {
        ExpectTheTruth();
        player.Expect(WaitFormName, [] {});
        Player::Press(Qt::Key_C, Qt::AltModifier);
        EXPECT_EQ(Work.LimitsDone, FlagTrue);
        player.Expect(CorrelationName, [] { Player::Press(Qt::Key_Return); });
        Player::Press(Qt::Key_V, Qt::AltModifier);
        Player::Press(Qt::Key_Return);
    });
    player.PressMenu(Qt::Key_A, "FitData");

    player.PressMenu(Qt::Key_G, "GraphResiduals");
    EXPECT_TRUE(Player::Window(ChartsName)->isVisible());
    EXPECT_EQ(Chart.State.Nsets, 3);
}

} // namespace
} // namespace Quillon
