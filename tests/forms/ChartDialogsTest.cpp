// The chart window's dialogs, keys and status line as windows.
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "chart/dialogs/AxisOptsForm.h"
#include "chart/dialogs/LegendOptsForm.h"
#include "chart/dialogs/LineWidthForm.h"
#include "chart/dialogs/SetColor.h"
#include "chart/dialogs/ShiftData.h"
#include "chart/dialogs/TitleOptsForm.h"
#include "chart/files/GraphFile.h"
#include "chart/hand/ScaleType.h"
#include "forms/shell/Binding.h"
#include "graphs/FigureForm.h"
#include "graphs/GraphWindows.h"
#include "platform/Platform.h"
#include "scandata/forms/FileForm.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace Quillon {
namespace {

enum class Way { Ok, Cancel, Esc, CloseButton };
constexpr Way AllWays[] = {Way::Ok, Way::Cancel, Way::Esc, Way::CloseButton};

struct ChartDialogs : testing::Test {
    Player player;
    ChartDialogs() {
        UseFinishedFit();
        UseChannelRadii();
        player.ClickMenu("GraphOverlay");
    }
    static QWidget* Canvas() {
        for (QWidget* w : Player::Window(ChartsName)->findChildren<QWidget*>())
            if (w->hasMouseTracking() && w->focusPolicy() == Qt::StrongFocus) return w;
        return nullptr;
    }
    // Runs an item of the chart window's menus.
    static void Run(const MenuItem& item) {
        for (QAction* action : Player::Window(ChartsName)->findChildren<QAction*>())
            if (action->text().toStdString() == item.Text && action->isEnabled()) return action->trigger();
        ADD_FAILURE() << "no item " << item.Text;
    }
    static void Leave(const std::string& form, Way way, const Control& ok, const Control& cancel) {
        if (way == Way::Ok) return Player::Click(ok);
        if (way == Way::Cancel) return Player::Click(cancel);
        if (way == Way::Esc) return Player::Press(Qt::Key_Escape);
        Player::Window(form)->close();
        Player::Serve();
    }
    static void Enter(const Control& field, const char* text) {
        Player::Click(field);
        Player::Press(Qt::Key_A, Qt::ControlModifier);
        Player::Type(text);
        EXPECT_EQ(field.Text, text);
    }
};

TEST_F(ChartDialogs, TitlesAreTakenByOkAlone) {
    for (const Way way : AllWays) {
        Chart.Spec.Title1.Text = "before";
        Chart.Spec.Title2.Justify = 1;
        player.Expect(TitleOptsFormName, [&] {
            EXPECT_EQ(QApplication::focusWidget(), Player::Widget(TitleOptsForm.TitleInput));
            Player::Type("A headline"); // in place of what is selected
            EXPECT_EQ(TitleOptsForm.Preview.Text, "A headline");
            auto* place = qobject_cast<QComboBox*>(Player::Widget(TitleOptsForm.SubAlignment));
            ASSERT_NE(place, nullptr);
            EXPECT_EQ(place->count(), 6);
            place->setFocus();
            Player::Press(Qt::Key_Down);
            EXPECT_EQ(TitleOptsForm.SubAlignment.Value, 2);
            Leave(TitleOptsFormName, way, TitleOptsForm.OkButton, TitleOptsForm.CancelButton);
        });
        Run(Charts.mnuEditTitles);
        EXPECT_EQ(Chart.Spec.Title1.Text.Str(), way == Way::Ok ? "A headline" : "before");
        EXPECT_EQ(Chart.Spec.Title2.Justify, way == Way::Ok ? 2 : 1);
        EXPECT_EQ(Work.AbortFit, FlagFalse);
    }
}

TEST_F(ChartDialogs, ASizeOutsideIsToldOnceAndCancelAsksNothing) {
    const float before = Chart.Spec.Title1.Size;
    player.Expect(TitleOptsFormName, [&] {
        Enter(TitleOptsForm.TitleSizeInput, "2");
        player.ExpectMessage("Input must be between 0 and 1");
        Player::Click(TitleOptsForm.OkButton);
        EXPECT_TRUE(TitleOptsForm.State.Shown);
        EXPECT_EQ(QApplication::focusWidget(), Player::Widget(TitleOptsForm.TitleSizeInput));
        Player::Click(TitleOptsForm.CancelButton);
        EXPECT_FALSE(TitleOptsForm.State.Shown);
    });
    Run(Charts.mnuEditTitles);
    EXPECT_EQ(Chart.Spec.Title1.Size, before);
}

TEST_F(ChartDialogs, TheLegendIsTakenByOkAlone) {
    for (const Way way : AllWays) {
        Chart.SetNames[2] = "second";
        Chart.Spec.Legend.Where = LegendPlaces::Below;
        Chart.Spec.Legend.TextColor = 0;
        player.Expect(LegendOptsFormName, [&] {
            Player::Press(Qt::Key_Down); // the list has the focus
            EXPECT_EQ(LegendOptsForm.txtLegendText.Text, "second");
            Enter(LegendOptsForm.txtLegendText, "other");
            EXPECT_EQ(LegendOptsForm.lstLegendText.Items[1], "other");
            Player::Click(LegendOptsForm.optRight);
            Player::Click(LegendOptsForm.optMatch);
            EXPECT_FALSE(Player::Widget(LegendOptsForm.Color)->isEnabled());
            Leave(LegendOptsFormName, way, LegendOptsForm.OkButton, LegendOptsForm.CancelButton);
        });
        Run(Charts.mnuEditLegend);
        EXPECT_EQ(Chart.SetNames[2], way == Way::Ok ? "other" : "second");
        EXPECT_EQ(Chart.Spec.Legend.Where, way == Way::Ok ? LegendPlaces::Right : LegendPlaces::Below);
        EXPECT_EQ(Chart.Spec.Legend.TextColor < 0, way == Way::Ok);
    }
}

TEST_F(ChartDialogs, SetsAreSeparatedByOkAlone) {
    for (const Way way : AllWays) {
        const SetTable before = Chart.DataY;
        FormerShift = {};
        player.Expect(ShiftDataName, [&] {
            EXPECT_EQ(QApplication::focusWidget(), Player::Widget(ShiftData.PercentInput));
            Player::Click(ShiftData.ByConstant);
            EXPECT_FALSE(Player::Widget(ShiftData.PercentInput)->isEnabled());
            Enter(ShiftData.ValueInput, "0.5");
            Leave(ShiftDataName, way, ShiftData.OkButton, ShiftData.CancelButton);
        });
        Run(Charts.SeparateY);
        EXPECT_EQ(Chart.DataY == before, way != Way::Ok);
    }
    player.Expect(ShiftDataName, [] { Player::Click(ShiftData.TakeBackButton); });
    Run(Charts.SeparateBoth);
    EXPECT_FALSE(IsSeparated(SeparateModes::Both));
}

TEST_F(ChartDialogs, AnAxisIsTakenByOkAlone) {
    for (const Way way : AllWays) {
        Chart.Spec.AxisX1.Title.Text = "before";
        Chart.Spec.AxisY1.Grid = 0;
        player.Expect(AxisOptsFormName, [&] {
            EXPECT_EQ(QApplication::focusWidget(), Player::Widget(AxisOptsForm.MinScale));
            Enter(AxisOptsForm.AxisTitleInput, "after");
            Player::Click(AxisOptsForm.SwapButton);
            EXPECT_EQ(Player::Window(AxisOptsFormName)->windowTitle(), "Vertical Axis Options");
            Player::Click(AxisOptsForm.GridCheck);
            Leave(AxisOptsFormName, way, AxisOptsForm.OkButton, AxisOptsForm.CancelButton);
        });
        Run(Charts.EditHorz);
        EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), way == Way::Ok ? "after" : "before");
        EXPECT_EQ(Chart.Spec.AxisY1.Grid, way == Way::Ok ? 1 : 0);
    }
}

TEST_F(ChartDialogs, AnIntervalOfZeroIsToldOnceAndALogarithmIsAsked) {
    player.Expect(AxisOptsFormName, [&] {
        Enter(AxisOptsForm.IntervalInput, "0");
        player.ExpectMessage("The tic interval cannot be zero!");
        Player::Click(AxisOptsForm.OkButton);
        EXPECT_TRUE(AxisOptsForm.State.Shown);
        Enter(AxisOptsForm.IntervalInput, "0.5");
        const long lost = ValuesWithoutLogarithm(true); // x lies on both sides of its reference
        player.ExpectMessage("Changing from linear to log scales is likely to produce undesirable axis "
                             "limits and tic intervals.  "
                             "A rescaling using AutoRange is advised.  Rescale now?\n\n" +
                                 std::to_string(lost) + " values are not positive and will not be shown.",
                             "Yes");
        Player::Click(AxisOptsForm.LogBase10);
        EXPECT_TRUE(Player::Widget(AxisOptsForm.Note)->isVisible());
        Player::Click(AxisOptsForm.OkButton);
    });
    Run(Charts.EditHorz);
    EXPECT_EQ(Chart.Spec.AxisX1.ScaleType, ScaleTypes::Logarithmic);
}

TEST_F(ChartDialogs, WidthsAreTakenByOkAlone) {
    for (const Way way : AllWays) {
        Chart.Spec.LineWidth = 15;
        player.Expect(LineWidthFormName, [&] {
            EXPECT_EQ(QApplication::focusWidget(), Player::Widget(LineWidthForm.Width[DataWidth]));
            Player::Type("40");
            Leave(LineWidthFormName, way, LineWidthForm.OkButton, LineWidthForm.CancelButton);
        });
        Run(Charts.LineWidths);
        EXPECT_EQ(Chart.Spec.LineWidth, way == Way::Ok ? 40 : 15);
    }
}

TEST_F(ChartDialogs, AFigureIsChosenSeenAndWritten) {
    const std::string file = player.Directory() + "/figure.svg";
    const GraphSpec spec = Chart.Spec;
    for (const Way way : AllWays) {
        player.Expect(FigureFormName, [&] {
            const auto preview = [] {
                const auto* label = Player::Window(FigureFormName)->findChild<QLabel*>("FigurePreview");
                return label ? label->pixmap(Qt::ReturnByValue).size() : QSize();
            };
            const QSize one = preview();
            EXPECT_GT(one.width(), 100);
            EXPECT_NE(FigureForm.Note.Text.find(" mm in print"), std::string::npos) << FigureForm.Note.Text;
            Player::Click(FigureForm.TwoColumnsOption);
            Player::Click(FigureForm.SetsOption);
            EXPECT_EQ(FigureForm.Choice, (FigureChoice{TwoColumns, 0.0, true, 0}));
            EXPECT_NE(preview(), one);
            Player::Click(FigureForm.OwnOption);
            EXPECT_EQ(QApplication::focusWidget(), Player::Widget(FigureForm.WidthInput));
            Player::Type("120");
            Player::Press(Qt::Key_Return);
            EXPECT_EQ(FigureForm.Choice.Width, 120.0);
            player.GiveFile(file);
            Player::Click(FigureForm.SaveButton);
            EXPECT_TRUE(FigureForm.State.Shown);
            Player::Click(FigureForm.OneColumnOption);
            Player::Click(FigureForm.AllOption);
            Leave(FigureFormName, way, FigureForm.CloseButton, FigureForm.CloseButton);
        });
        player.ClickMenu("GraphFigure");
        EXPECT_EQ(Work.AbortFit, FlagFalse);
        EXPECT_TRUE(Chart.Spec == spec);
    }
    QFile written(QString::fromStdString(file));
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_TRUE(written.readAll().contains("width=\"340.2pt\"")); // 120 mm
}

TEST_F(ChartDialogs, ColoursAreSeenAtOnceAndKeptByOkAlone) {
    for (const Way way : AllWays) {
        Chart.Style.ScreenColors = {0, 0x00FF0000, 0x000000FF};
        player.Expect(SetColorName, [&] {
            EXPECT_EQ(QApplication::focusWidget(), Player::Widget(SetColorForm.Rows));
            auto* palette = qobject_cast<QComboBox*>(Player::Widget(SetColorForm.Palette));
            ASSERT_NE(palette, nullptr);
            EXPECT_EQ(palette->currentText(), "Own");
            palette->setFocus();
            Player::Press(Qt::Key_Home); // the first palette
            EXPECT_EQ(Chart.State.NColors, 14);
            Leave(SetColorName, way, SetColorForm.OkButton, SetColorForm.CancelButton);
        });
        Run(Charts.AlterColors);
        EXPECT_EQ(Chart.Style.ScreenColors.size(), way == Way::Ok ? 14U : 3U);
        EXPECT_EQ(Chart.State.NColors, way == Way::Ok ? 14 : 3);
    }
}

TEST_F(ChartDialogs, TheChosenColourWasTintedByTheHighlight) {
    player.Expect(SetColorName, [] {
        const auto* list = qobject_cast<QListWidget*>(Player::Widget(SetColorForm.Rows));
        ASSERT_NE(list, nullptr);
        const QIcon swatch = list->item(0)->icon();
        const auto image = [&](QIcon::Mode mode) { return swatch.pixmap(list->iconSize(), mode).toImage(); };
        EXPECT_EQ(image(QIcon::Selected).pixelColor(10, 7), QColor(Qt::black));
        EXPECT_EQ(image(QIcon::Selected), image(QIcon::Normal));
        Player::Press(Qt::Key_Escape);
    });
    Run(Charts.AlterColors);
}

TEST_F(ChartDialogs, TheWayOutOfAChainOfQuestionsStoodBetweenYesAndNo) {
    QStringList order;
    QTimer::singleShot(0, qApp, [&order] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        QList<QAbstractButton*> buttons = box->buttons();
        std::sort(buttons.begin(), buttons.end(), [](auto* a, auto* b) { return a->x() < b->x(); });
        for (const QAbstractButton* button : buttons) {
            order << button->text().remove('&');
            EXPECT_TRUE(button->icon().isNull()) << order.last().toStdString(); // as in the forms
        }
    });
    player.ExpectMessage("Do you?", "Cancel");
    Host.MessageBoxAnswer(
        {"Do you?", "Quillon", BoxIcon::Question, BoxButtons::YesNoCancel, BoxAnswer::Cancel, WayOutCaption});
    ASSERT_EQ(order.size(), 4);
    EXPECT_EQ(std::abs(order.indexOf("Yes") - order.indexOf("No")), 1) << order.join(" ").toStdString();
}

TEST_F(ChartDialogs, ACopiedGraphIsOnTheClipboardInAllKinds) {
    for (QAction* action : Player::Window(ChartsName)->findChildren<QAction*>())
        if (action->text() == "&Copy Graph") action->trigger();
    const QMimeData* held = QApplication::clipboard()->mimeData();
    ASSERT_NE(held, nullptr);
    EXPECT_TRUE(held->data("image/svg+xml").contains("<svg"));
    EXPECT_EQ(held->data("image/x-emf").mid(40, 4), " EMF");
    EXPECT_TRUE(held->data("image/png").startsWith("\x89PNG"));
    EXPECT_TRUE(held->hasImage());
    EXPECT_EQ(held->text().toStdString(), DataTextWithHeads());
}

TEST_F(ChartDialogs, ACopiedBitmapHasTheDotsOfTheWindowOnWhite) {
    Run(Charts.DarkCanvas);
    Run(Charts.CopyBitmap);
    const QMimeData* held = QApplication::clipboard()->mimeData();
    ASSERT_NE(held, nullptr);
    ASSERT_TRUE(held->hasImage());
    const QImage image = qvariant_cast<QImage>(held->imageData());
    EXPECT_EQ(image.width(), static_cast<int>(Canvas()->width() * Canvas()->devicePixelRatioF()));
    EXPECT_EQ(image.height(), static_cast<int>(Canvas()->height() * Canvas()->devicePixelRatioF()));
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::white));
    EXPECT_FALSE(held->hasText());
    Run(Charts.DarkCanvas);
}

TEST_F(ChartDialogs, WhatNeedsAGraphIsOffWithoutOne) {
    const MenuItem* const needing[] = {&Charts.SaveAs,       &Charts.WriteData, &Charts.WriteMetafile,
                                       &Charts.Print,        &Charts.CopyGraph, &Charts.CopyBitmap,
                                       &Charts.CopyMetafile, &Charts.CopyData,  &Charts.CopyHeads,
                                       &Charts.PasteData};
    const auto actionOf = [](const MenuItem& item) -> QAction* {
        for (QAction* action : Player::Window(ChartsName)->findChildren<QAction*>())
            if (action->text().toStdString() == item.Text) return action;
        return nullptr;
    };
    for (const bool held : {true, false}) {
        Chart.GraphHeld = Flag(held);
        ChartMenuStatus(Charts);
        RefreshForms(); // as at the end of every command
        for (const MenuItem* item : needing) {
            ASSERT_NE(actionOf(*item), nullptr) << item->Text;
            EXPECT_EQ(actionOf(*item)->isEnabled(), held) << item->Text;
        }
    }
    Chart.GraphHeld = FlagTrue;
    ChartMenuStatus(Charts);
}

TEST_F(ChartDialogs, AGraphFileThatIsDroppedIsShown) {
    Chart.Spec.Title1.Text = "dropped";
    const QTemporaryDir folder;
    const std::string path = folder.filePath("dropped graph.GRF").toStdString();
    Host.WriteFile(path, GraphFileBytes());
    Chart.Spec.Title1.Text = "before";
    const auto drop = [](const std::string& file) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(file))});
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(Player::Window(ChartsName), &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent event({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(Player::Window(ChartsName), &event);
        Player::Serve();
        return true;
    };
    EXPECT_FALSE(drop("/tmp/picture.png"));
    EXPECT_TRUE(drop(path));
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "dropped");
}

TEST_F(ChartDialogs, EscDropsARubberBand) {
    const float before = Chart.Spec.AxisX1.Max;
    const GraphBox& frame = Chart.Spec.Frame;
    QTest::mousePress(Canvas(), Qt::LeftButton, {}, {frame.X1 + 40, frame.Y1 + 40});
    EXPECT_TRUE(Charts.Zooming);
    QTest::keyClick(Canvas(), Qt::Key_Escape);
    EXPECT_FALSE(Charts.Zooming);
    QTest::mouseRelease(Canvas(), Qt::LeftButton, {}, {frame.X2 - 40, frame.Y2 - 40});
    EXPECT_EQ(Chart.Spec.AxisX1.Max, before);
    EXPECT_TRUE(Player::Window(ChartsName)->isVisible());
}

TEST_F(ChartDialogs, TheWheelZoomsAndTheMiddleButtonMoves) {
    const GraphSpec& spec = Chart.Spec;
    const float low = spec.AxisX1.Min, high = spec.AxisX1.Max;
    const QPointF middle((spec.Frame.X1 + spec.Frame.X2) / 2.0, (spec.Frame.Y1 + spec.Frame.Y2) / 2.0);
    const auto turn = [&](int angle) {
        QWheelEvent event(middle, Canvas()->mapToGlobal(middle), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(Canvas(), &event);
        EXPECT_TRUE(event.isAccepted());
    };
    turn(120);
    turn(120);
    EXPECT_NEAR(spec.AxisX1.Max - spec.AxisX1.Min, (high - low) / 1.5625F, 1e-4F);
    const QPoint from = middle.toPoint();
    const float before = spec.AxisX1.Min;
    QTest::mousePress(Canvas(), Qt::MiddleButton, {}, from);
    QTest::mouseMove(Canvas(), from + QPoint(40, 0));
    EXPECT_EQ(Canvas()->cursor().shape(), Qt::ClosedHandCursor);
    QTest::mouseRelease(Canvas(), Qt::MiddleButton, {}, from + QPoint(40, 0));
    EXPECT_LT(spec.AxisX1.Min, before);
    Run(Charts.LastZoom);
    Run(Charts.LastZoom);
    EXPECT_EQ(spec.AxisX1.Min, low);
    EXPECT_EQ(spec.AxisX1.Max, high);
    EXPECT_FALSE(Charts.LastZoom.Enabled);
}

TEST_F(ChartDialogs, AFurtherWindowHasItsOwnGraphAndFollowsTheFit) {
    Run(Charts.NewWindow);
    Player::Serve();
    ASSERT_EQ(GraphWindows.size(), 1U);
    GraphWindow& graph = GraphWindows.front();
    QWidget* window = nullptr;
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top->objectName() == "Graph2") window = top;
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->windowTitle().endsWith(" - Graph 2: Overlay"));
    const QPoint from = Player::Window(ChartsName)->pos();
    EXPECT_NE(window->pos(), from) << "it lay exactly over the first one";
    EXPECT_TRUE(window->screen()->availableGeometry().contains(window->pos()));
    QWidget* canvas = nullptr;
    for (QWidget* w : window->findChildren<QWidget*>())
        if (w->hasMouseTracking() && w->focusPolicy() == Qt::StrongFocus) canvas = w;
    ASSERT_NE(canvas, nullptr);
    const GraphBox& frame = ModuleOf(&graph).Spec.Frame;
    ASSERT_GT(frame.X2, frame.X1);
    const QPointF middle((frame.X1 + frame.X2) / 2.0, (frame.Y1 + frame.Y2) / 2.0);
    QWheelEvent event(middle, canvas->mapToGlobal(middle), {}, {0, 240}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    const GraphAxis whole = Chart.Spec.AxisX1;
    QApplication::sendEvent(canvas, &event);
    EXPECT_EQ(Chart.Spec.AxisX1, whole);
    EXPECT_LT(ModuleOf(&graph).Spec.AxisX1.Max - ModuleOf(&graph).Spec.AxisX1.Min, whole.Max - whole.Min);
    window->resize(700, 500);
    Player::Serve();
    EXPECT_NEAR(ModuleOf(&graph).State.DeviceW, 700, 4);
    player.ClickMenu("GraphResiduals");
    EXPECT_EQ(Chart.Spec.AxisY1.Title.Text.Str(), "Y(exp) - Y(fit)");
    EXPECT_NE(ModuleOf(&graph).Spec.AxisY1.Title.Text.Str(), "Y(exp) - Y(fit)");
    Work.FitValid = FlagFalse;
    RefreshForms();
    EXPECT_TRUE(window->windowTitle().endsWith(" - Graph 2: Overlay, of an older fit"));
    Work.FitValid = FlagTrue;
    RefreshForms();
    EXPECT_TRUE(window->windowTitle().endsWith(" - Graph 2: Overlay"));
    window->close();
    Player::Serve();
    EXPECT_TRUE(GraphWindows.empty());
}

TEST_F(ChartDialogs, ALongStatusLineDoesNotWidenTheWindow) {
    QWidget* window = Player::Window(ChartsName);
    window->resize(340, 320);
    Player::Serve();
    const int width = window->width();
    Charts.StatusLine.Text = std::string(200, 'x');
    RedrawChart();
    Player::Serve();
    Charts.ShowCursor.Checked = true;
    QTest::mouseMove(Canvas(), {width / 2, 100}); // brings the window up to its record
    Player::Serve();
    EXPECT_EQ(window->width(), width);
    EXPECT_LE(window->minimumSizeHint().width(), width);
}

TEST_F(ChartDialogs, TheArrowKeysMoveAMarkerOfTheRangeGraph) {
    player.Expect(FileFormName, [&] {
        const auto before = Work.FitRange[0][1];
        player.Expect(ChartsName, [] {
            const int place = Charts.Markers[0].Device;
            for (int i = 0; i < 5; ++i)
                QTest::keyClick(Canvas(), Qt::Key_Right, Qt::ControlModifier);
            EXPECT_EQ(Charts.Markers[0].Device, place + 50);
            EXPECT_EQ(Charts.StatusLine.Text.rfind("Marker at X = ", 0), 0U);
            QTest::keyClick(Canvas(), Qt::Key_Down);
            EXPECT_EQ(Charts.ActiveMarker, 1);
            QTest::keyClick(Canvas(), Qt::Key_Return);
        });
        Player::Click(FileForm.MinRBox[0]);
        EXPECT_GT(Work.FitRange[0][1], before);
        player.Expect(ChartsName, [] { QTest::keyClick(Canvas(), Qt::Key_Escape); });
        Player::Click(FileForm.MaxRBox[0]);
        Player::Click(FileForm.OkButton);
    });
    player.ClickMenu("ReadData");
}

} // namespace
} // namespace Quillon
