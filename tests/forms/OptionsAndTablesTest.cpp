// Options, rows and boxes of the forms by keyboard alone, and what a change of size does to them.
#include "chart/records/ChartState.h"
#include "forms/shell/ChartBox.h"
#include "models/forms/BaseForm.h"
#include "models/forms/ConcForm.h"
#include "models/forms/ModelForm.h"
#include "models/forms/SigmaCalcForm.h"
#include "models/forms/UnitsForm.h"
#include "reporting/values/Correlation.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QApplication>
#include <QHeaderView>
#include <QScreen>
#include <QScrollBar>
#include <QTableWidget>

#include <gtest/gtest.h>

#include <algorithm>

namespace Quillon {
namespace {

struct OptionsAndTables : testing::Test {
    Player player;
    OptionsAndTables() { UseSimulatedData(); }
    static bool HasFocus(const Control& control) {
        return QApplication::focusWidget() == Player::Widget(control);
    }
};

// --- options -----------------------------------------------------------------------------------------------

TEST_F(OptionsAndTables, ArrowsChooseAmongTheOptionsOfAFrame) {
    player.Expect(UnitsFormName, [] {
        Player::TabTo(UnitsForm.SigmaUnits);
        Player::Press(Qt::Key_Down);
        EXPECT_EQ(Work.MassUnits, 1);
        EXPECT_TRUE(HasFocus(UnitsForm.Buoyant));
        Player::Press(Qt::Key_Right);
        Player::Press(Qt::Key_Right); // the last one
        EXPECT_EQ(Work.MassUnits, 2);
        Player::Press(Qt::Key_Up);
        EXPECT_EQ(Work.MassUnits, 1);
        Player::Click(UnitsForm.CancelButton);
    });
    player.ClickMenu("DefineUnits");
}

TEST_F(OptionsAndTables, TabStopsOnceAtAFrame) {
    player.Expect(UnitsFormName, [] {
        Player::TabTo(UnitsForm.SigmaUnits);
        Player::Press(Qt::Key_Tab);
        EXPECT_TRUE(HasFocus(UnitsForm.VBarInput[0]));
        Player::TabTo(UnitsForm.Per_AU);
        Player::TabTo(UnitsForm.Per_Fringe); // nothing is chosen in its frame
        Player::Press(Qt::Key_Space);
        EXPECT_EQ(Work.ConcUnits, 3);
        Player::Click(UnitsForm.CancelButton);
    });
    player.ClickMenu("DefineUnits");
}

TEST_F(OptionsAndTables, AnOptionThatIsClosedIsPassedOver) {
    Work.InterferenceData = FlagFalse; // mg/mL of interference data is closed
    player.Expect(UnitsFormName, [] {
        Player::TabTo(UnitsForm.Per_Fringe);
        Player::Press(Qt::Key_Down);
        EXPECT_EQ(Work.ConcUnits, 5);
        Player::Click(UnitsForm.CancelButton);
    });
    player.ClickMenu("DefineUnits");
}

TEST_F(OptionsAndTables, TheListOfModelsFollowsTheArrowsInASmallWindow) {
    player.Expect(ModelFormName, [] {
        Player::Window(ModelFormName)->resize(400, 300);
        Player::Serve();
        for (int i = 0; i < 30; ++i)
            Player::Press(Qt::Key_Down);
        EXPECT_EQ(ModelForm.ChosenModel, 22);
        EXPECT_TRUE(HasFocus(ModelForm.ModelRow[21]));
        EXPECT_FALSE(Player::Widget(ModelForm.ModelRow[21])->visibleRegion().isEmpty());
        EXPECT_TRUE(Player::Widget(ModelForm.ModelRow[0])->visibleRegion().isEmpty());
        Player::Press(Qt::Key_Tab);
        EXPECT_TRUE(HasFocus(ModelForm.Ideal));
        Player::Click(ModelForm.CancelButton);
    });
    player.ClickMenu("DoModelSet");
}

// --- boxes -------------------------------------------------------------------------------------------------

TEST_F(OptionsAndTables, EnterAcceptsTheUnits) {
    player.Expect(UnitsFormName, [] {
        Player::TabTo(UnitsForm.VBarInput[0]);
        Player::Type("0.71");
        Player::Press(Qt::Key_Return);
    });
    player.ClickMenu("DefineUnits");
    EXPECT_EQ(Work.VbarA, 0.71F);
}

TEST_F(OptionsAndTables, EnterGoesFromBoxToBox) {
    player.Expect(ConcFormName, [] {
        EXPECT_TRUE(HasFocus(ConcForm.ConcA[0]));
        Player::Type("0.25");
        Player::Press(Qt::Key_Return);
        EXPECT_TRUE(HasFocus(ConcForm.VarA[0]));
        Player::Press(Qt::Key_Return);
        EXPECT_TRUE(HasFocus(ConcForm.ConcA[1]));
        Player::Click(ConcForm.OkButton);
    });
    player.ClickMenu("SetConcConstraint");
    EXPECT_FLOAT_EQ(Work.ConcConstraintA[Work.SetRow[1]], 0.25F);
    player.Expect(BaseFormName, [] {
        Player::Press(Qt::Key_Return);
        EXPECT_TRUE(HasFocus(BaseForm.Boxes.LinkNum[1]));
        Player::Type("1");
        Player::Press(Qt::Key_Return);
        EXPECT_TRUE(HasFocus(BaseForm.Boxes.LinkNum[2]));
        Player::Click(BaseForm.OkButton);
    });
    player.ClickMenu("SetBaseConstraint");
    EXPECT_EQ(Work.OffsetLink[Work.SetRow[2]], Work.SetRow[1]);
    player.Expect(SigmaCalcFormName, [] {
        Player::Type("12");
        Player::Press(Qt::Key_Return);
        EXPECT_EQ(SigmaCalcForm.MWInput.Text, "12.000");
        EXPECT_TRUE(HasFocus(SigmaCalcForm.VBarInput));
        Player::Click(SigmaCalcForm.ExitButton);
    });
    player.ClickMenu("mnuSigmaCalculator");
}

// --- sizes -------------------------------------------------------------------------------------------------

TEST_F(OptionsAndTables, ColumnsOfCorrelationsGrowWithTheWindow) {
    UseFinishedFit();
    player.Expect(CorrelationName, [] {
        QWidget* window = Player::Window(CorrelationName);
        const QHeaderView& head = *window->findChild<QTableWidget*>()->horizontalHeader();
        const int before = head.sectionSize(0);
        EXPECT_GE(before, head.fontMetrics().horizontalAdvance(WidestCorrelationText));
        window->resize(window->width() + 500, window->height());
        Player::Serve();
        EXPECT_GT(head.sectionSize(0), before);
        EXPECT_NEAR(head.length(), head.viewport()->width(), 2);
        window->resize(100, window->height());
        Player::Serve();
        EXPECT_GE(head.sectionSize(0), head.fontMetrics().horizontalAdvance(WidestCorrelationText));
        Player::Click(Correlation.OkButton);
    });
    player.ClickMenu("Covariance");
}

// What a widget shows on the screen; grab() would paint it anew.
QImage OnScreen(const QWidget& window) {
    return window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
}

// Painting serves events, and what the window shows by then is half of the graph.
TEST_F(OptionsAndTables, ASmallGraphIsShownWhole) {
    QWidget window;
    window.resize(400, 300);
    ChartPicture picture(&window);
    picture.DrawOnce([] {
        const DrawingSurface& surface = Seams.PicBox;
        surface.SetBrush({BrushKind::Solid, 0xFF00FF});
        QApplication::processEvents();
        surface.Rectangle({0, 0, surface.Width(), surface.Height()});
    });
    picture.resize(200, 100);
    window.show();
    Player::Serve();
    picture.resize(300, 200);
    Player::Serve();
    const QImage shown = OnScreen(window);
    EXPECT_EQ(shown.pixelColor(5, 5), QColor(Qt::magenta));
    EXPECT_EQ(shown.pixelColor(295, 195), QColor(Qt::magenta));
}

TEST_F(OptionsAndTables, ASizeThatComesWhileASmallGraphIsPaintedIsTheLast) {
    QWidget window;
    window.resize(400, 300);
    ChartPicture picture(&window);
    int atWork = 0;
    int most = 0;
    picture.DrawOnce([&] {
        most = std::max(most, ++atWork);
        if (picture.width() == 200) picture.resize(300, 200);
        QApplication::processEvents();
        const DrawingSurface& surface = Seams.PicBox;
        surface.SetBrush({BrushKind::Solid, 0xFF00FF});
        surface.Rectangle({0, 0, surface.Width(), surface.Height()});
        --atWork;
    });
    picture.resize(100, 100);
    window.show();
    Player::Serve();
    picture.resize(200, 100);
    Player::Serve();
    EXPECT_EQ(most, 1); // one after the other
    const QImage shown = OnScreen(window);
    EXPECT_EQ(shown.pixelColor(295, 195), QColor(Qt::magenta));
}

} // namespace
} // namespace Quillon
