// Windows against the screen and the font: 1024 by 768 pixels, and letters larger than usual.
#include "forms/shell/WindowSizes.h"
#include "chart/dialogs/PrintGrForm.h"
#include "commands/Analmenu.h"
#include "forms/StartDesktop.h"
#include "forms/shell/Binding.h"
#include "forms/shell/ChartBox.h"
#include "forms/shell/WindowPlaces.h"
#include "persistence/settings/WindowPlaces.h"
#include "platform/Platform.h"
#include "reporting/Results.h"
#include "reporting/values/Correlation.h"
#include "scandata/forms/FileForm.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <fstream>

namespace Quillon {
namespace {

QRect PlaceOf(const QWidget& widget) {
    return {widget.mapToGlobal(QPoint(0, 0)), widget.size()};
}

bool IsOnScreen(const QWidget& widget) {
    return widget.screen()->availableGeometry().contains(PlaceOf(widget));
}

// In sight once what scrolls has been scrolled to it.
bool CanBeReached(QWidget& widget) {
    for (QWidget* at = widget.parentWidget(); at; at = at->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(at)) area->ensureWidgetVisible(&widget);
    Player::Serve();
    return IsOnScreen(widget) && widget.visibleRegion().boundingRect().size() == widget.size();
}

// Labels, buttons and text boxes that have less room than their text.
std::vector<std::string> Cut(const QWidget& window) {
    std::vector<std::string> cut;
    const auto check = [&](const QWidget* widget, const QString& text) {
        if (!widget->isVisible() || text.isEmpty()) return;
        const QSize least = widget->minimumSizeHint();
        if (widget->width() < least.width() || widget->height() < least.height())
            cut.push_back(text.toStdString());
    };
    for (const auto* label : window.findChildren<QLabel*>())
        if (!label->wordWrap()) check(label, label->text());
    for (const auto* button : window.findChildren<QAbstractButton*>())
        check(button, button->text());
    for (const auto* field : window.findChildren<QLineEdit*>())
        check(field, field->text());
    return cut;
}

struct WindowSizes : testing::Test {
    Player player;
    ~WindowSizes() override { ScaleForms(100); }
    WindowSizes() { EXPECT_EQ(QApplication::primaryScreen()->size(), QSize(1024, 768)); }
};

TEST_F(WindowSizes, OkOfTheResultsLayBesideTheScreen) {
    UseFinishedFit();
    player.Expect(ResultsName, [] {
        EXPECT_TRUE(IsOnScreen(*Player::Window(ResultsName)));
        EXPECT_TRUE(CanBeReached(*Player::Widget(Results.OkButton)));
        EXPECT_EQ(Cut(*Player::Window(ResultsName)), std::vector<std::string>{});
        Player::Click(Results.OkButton);
    });
    player.ClickMenu("ReviewFit");
}

TEST_F(WindowSizes, OkOfManyCorrelationsLayBelowTheScreen) {
    for (const std::size_t n : {3U, 40U}) {
        Correlation = CorrelationForm{};
        Correlation.Names.assign(n, "Ln c(A,mon), set 11");
        Correlation.Cells.assign(n, std::vector<CorrelationCell>(n));
        Correlation.OkButton.Text = "OK";
        Correlation.HighLegend.Text = Correlation.VeryHighLegend.Text = "magnitude above 0.97";
        player.Expect(CorrelationName, [] {
            EXPECT_TRUE(IsOnScreen(*Player::Window(CorrelationName)));
            EXPECT_TRUE(CanBeReached(*Player::Widget(Correlation.OkButton)));
            Player::Click(Correlation.OkButton);
        });
        Host.ShowModal(CorrelationName);
    }
}

bool IsOk(const QAbstractButton& button) {
    return button.isVisible() && button.text().remove('&') == "OK";
}

// Opens the window of a command and looks at it, with its way out.
void Open(Player& player, const std::string& item, const std::string& form) {
    SCOPED_TRACE(form);
    player.Expect(form, [form] {
        auto* window = qobject_cast<QDialog*>(Player::Window(form));
        ASSERT_NE(window, nullptr);
        EXPECT_TRUE(IsOnScreen(*window));
        EXPECT_EQ(Cut(*window), std::vector<std::string>{});
        for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
            EXPECT_TRUE(!IsOk(*button) || CanBeReached(*button));
        window->close();
        Player::Serve();
    });
    player.ClickMenu(item);
}

TEST_F(WindowSizes, ALargerFontCutTheForms) {
    for (const int percent : {130, 200}) {
        SCOPED_TRACE(percent);
        ScaleForms(percent); // as a desktop with such a font does
        UseAllSets();
        SetMenuStatus();
        RefreshForms();
        Open(player, "DoModelSet", "ModelForm");
        Open(player, "DefineUnits", "UnitsForm");
        Open(player, "SetConcConstraint", "ConcForm");
        Open(player, "SetBaseConstraint", "BaseForm");
        Open(player, "AlterBounds", "BoundsForm");
        Open(player, "SetConfidence", "ConfidenceInput");
        Open(player, "mnuSigmaCalculator", "SigmaCalcForm");
        Open(player, "AllSettings", "SettingsForm");
        Open(player, "ReadData", FileFormName);
        UseFinishedFit();
        Open(player, "ReviewFit", ResultsName);
        Open(player, "Covariance", CorrelationName);
    }
}

TEST_F(WindowSizes, TheMainWindowHasItsPanesOnASmallScreen) {
    UseFinishedFit();
    RefreshForms();
    Player::Serve();
    const QWidget* main = Player::Window(AnalmenuName);
    EXPECT_LT(PlaceOf(*main).bottom(), main->screen()->availableGeometry().bottom()); // as wide as the screen
    EXPECT_EQ(Cut(*main), std::vector<std::string>{});
}

// What the user does to a window takes effect once the window manager has placed it.
TEST_F(WindowSizes, AWindowOpensWhereTheUserHasPutIt) {
    const QRect wanted(120, 90, 700, 520);
    std::string place; // with its frame
    player.Expect("ModelForm", [wanted, &place] {
        QTest::qWait(600);
        QWidget* window = Player::Window("ModelForm");
        window->setGeometry(wanted);
        place = std::to_string(window->x()) + " " + std::to_string(window->y()) + " 700 520";
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("DoModelSet");
    player.Expect("ModelForm", [wanted] {
        EXPECT_EQ(Player::Window("ModelForm")->geometry(), wanted);
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("DoModelSet");
    WritePlaces();
    EXPECT_EQ(KeptPlace("PlaceModelForm"), place);
    KeepPlaces({{"PlaceUnitsForm", "9000 -9000 300 200"}}); // of a screen that has gone
    UseSimulatedData();
    RefreshForms();
    player.Expect("UnitsForm", [] {
        EXPECT_TRUE(IsOnScreen(*Player::Window("UnitsForm")));
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("DefineUnits");
}

TEST_F(WindowSizes, AFormThatScrollsOpenedAtAButtonToTheRightOfItsFirstField) {
    UseFinishedFit();
    player.ClickMenu("GraphOverlay");
    ScaleForms(200);
    player.Expect(PrintGrFormName, [] {
        const auto* area = Player::Window(PrintGrFormName)->findChild<QScrollArea*>();
        ASSERT_NE(area, nullptr);
        EXPECT_GT(area->horizontalScrollBar()->maximum(), 0) << "all of it fits";
        EXPECT_EQ(QApplication::focusWidget(), Player::Widget(PrintGrForm.Length[LeftEdge]));
        EXPECT_EQ(area->horizontalScrollBar()->value(), 0);
        // One further to the right comes into sight whole.
        QWidget* height = Player::Widget(PrintGrForm.Length[GraphHeight]);
        PrintGrSizeClick(&PrintGrFormRecord::PageCustom);
        RefreshForms();
        height->setFocus(Qt::TabFocusReason);
        Player::Serve();
        EXPECT_EQ(height->visibleRegion().boundingRect().size(), height->size());
        Player::Click(PrintGrForm.CancelButton);
    });
    EXPECT_FALSE(AskPrintOptions());
}

TEST_F(WindowSizes, LongWarningsPushedTheLegendOutOfTheResults) {
    UseFinishedFit();
    for (int i = 0; i < 12; ++i)
        Work.Outcome.Reason += "A reason that takes about a line of the form by itself, this being one. ";
    player.Expect(ResultsName, [] {
        const QWidget* window = Player::Window(ResultsName);
        EXPECT_TRUE(IsOnScreen(*window));
        const ChartPicture* graph = nullptr;
        for (const QWidget* widget : window->findChildren<QWidget*>())
            if (const auto* picture = dynamic_cast<const ChartPicture*>(widget)) graph = picture;
        ASSERT_NE(graph, nullptr);
        EXPECT_EQ(graph->visibleRegion().boundingRect().size(), graph->size());
        EXPECT_LT(PlaceOf(*graph).bottom(), PlaceOf(*Player::Widget(Results.OkButton)).top());
        Player::Click(Results.OkButton);
    });
    player.ClickMenu("ReviewFit");
}

TEST_F(WindowSizes, TheScalingOfFormsChangedNothing) {
    const int usual = QFontMetrics(QApplication::font()).lineSpacing();
    std::ofstream(player.Directory() + "/config/QUILLON.ini") << "[quillon]\nformscalingpercent=150\n";
    StartDesktop("");
    const int scaled = QFontMetrics(QApplication::font()).lineSpacing();
    EXPECT_NEAR(scaled, 1.5 * usual, 2.0);
    EXPECT_NEAR(QFontMetrics(FixedPitchFont()).lineSpacing(), scaled, 6.0);
    UseSimulatedData();
    player.Expect("ModelForm", [usual] {
        const QWidget* window = Player::Window("ModelForm");
        EXPECT_NEAR(window->fontMetrics().lineSpacing(), 1.5 * usual, 2.0);
        EXPECT_GE(window->width(), 880); // of 600
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("DoModelSet");
}

} // namespace
} // namespace Quillon
