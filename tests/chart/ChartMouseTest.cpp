// What the pointer and keys do on a graph: rubber band, readings, Escape.
#include "chart/Charts.h"

#include "ChartBench.h"

namespace Quillon {
namespace {

class ChartMouseTest : public ChartBench {
protected:
    ChartMouseTest() { Spec = Begin(GraphTypes::XYPlot, PlotStyles::SymbolsOnly); }
    // X from 0 to 10, Y from 0 to 5, tics at every 1.
    void PlotPlain() {
        Pin(Spec.AxisX1, 0, 10, 1);
        Pin(Spec.AxisY1, 0, 5, 1);
        Plot(Spec, Table({{1, 4, 9}}), Table({{1, 2.5, 4}}));
    }
    static void Drag(int x1, int y1, int x2, int y2) {
        ChartMouseDown(x1, y1, 1);
        ChartMouseMove((x1 + x2) / 2, (y1 + y2) / 2, 1);
        ChartMouseUp(x2, y2, 1);
    }
    // The value at a device position, by the rule of three.
    static double XAt(int px) {
        const GraphSpec& s = Chart.Spec;
        return static_cast<double>(s.AxisX1.Min) + (px - s.Frame.X1) *
                                                       static_cast<double>(s.AxisX1.Max - s.AxisX1.Min) /
                                                       (s.Frame.X2 - s.Frame.X1);
    }
    static double YAt(int py) {
        const GraphSpec& s = Chart.Spec;
        return static_cast<double>(s.AxisY1.Min) + (s.Frame.Y2 - py) *
                                                       static_cast<double>(s.AxisY1.Max - s.AxisY1.Min) /
                                                       (s.Frame.Y2 - s.Frame.Y1);
    }
    const std::string& Line() const { return Charts.StatusLine.Text; }
    GraphSpec Spec;
};

TEST_F(ChartMouseTest, ABandZooms) {
    PlotPlain();
    const int left = Px(2), right = Px(7), top = Py(4), bottom = Py(1);
    const double xmin = XAt(left), xmax = XAt(right), ymin = YAt(bottom), ymax = YAt(top);
    Drag(right, bottom, left, top); // from any corner
    EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Min, static_cast<float>(xmin));
    EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Max, static_cast<float>(xmax));
    EXPECT_FLOAT_EQ(Chart.Spec.AxisY1.Min, static_cast<float>(ymin));
    EXPECT_FLOAT_EQ(Chart.Spec.AxisY1.Max, static_cast<float>(ymax));
    for (const GraphAxis* axis : {&Chart.Spec.AxisX1, &Chart.Spec.AxisY1})
        EXPECT_EQ(axis->ScaleMode, ScaleModes::Zoomed);
    for (const GraphAxis* axis : {&Chart.Spec.AxisX2, &Chart.Spec.AxisY2})
        EXPECT_EQ(axis->ScaleMode, ScaleModes::Manual);
    EXPECT_EQ(Chart.Spec.AxisX2.Min, Chart.Spec.AxisX1.Min);
    EXPECT_EQ(Chart.Spec.AxisX2.Max, Chart.Spec.AxisX1.Max);
    EXPECT_EQ(Chart.Spec.AxisY2.Min, Chart.Spec.AxisY1.Min);
    EXPECT_EQ(Chart.Spec.AxisY2.Max, Chart.Spec.AxisY1.Max);
    EXPECT_TRUE(Charts.LastZoom.Enabled);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 1);
    EXPECT_FALSE(Charts.Zooming);
    EXPECT_EQ(Chart.GraphHeld, -1);
}

TEST_F(ChartMouseTest, AZoomKeepsTicsAndTheirFormat) {
    PlotPlain();
    Chart.Spec.AxisX1.Decimals = 2;
    Drag(Px(2), Py(4), Px(7), Py(1));
    EXPECT_EQ(Chart.Spec.AxisX1.TicInterval, 1.0F);
    EXPECT_EQ(Chart.Spec.AxisX1.Decimals, 2);
    EXPECT_NE(Screen.FindText("3.00"), nullptr);
}

TEST_F(ChartMouseTest, AZoomBetweenTheTicsGetsItsOwn) {
    PlotPlain();
    Drag(Px(4.1), Py(4), Px(4.9), Py(1));
    EXPECT_LT(Chart.Spec.AxisX1.TicInterval, 0.8F);
    EXPECT_EQ(Chart.Spec.AxisY1.TicInterval, 1.0F); // two of them are left
    EXPECT_GT(Chart.Spec.AxisX1.Decimals, 0);
    EXPECT_NEAR(Chart.Spec.AxisX1.Min, 4.1, 0.02); // the limits are those of the band all the same
    EXPECT_NEAR(Chart.Spec.AxisX1.Max, 4.9, 0.02);
    EXPECT_EQ(Chart.Spec.AxisX1.ScaleMode, ScaleModes::Zoomed);
    int labels = 0;
    for (const std::string& text : Screen.Texts())
        labels += text.rfind("4.", 0) == 0;
    EXPECT_GE(labels, 2);
}

TEST_F(ChartMouseTest, RoundOnZoomRoundsOutward) {
    PlotPlain();
    ToggleRoundOnZoom();
    ASSERT_TRUE(Charts.RoundOnZoom.Checked);
    const int left = Px(2.3), right = Px(7.2);
    Drag(left, Py(4), right, Py(1.2));
    const GraphAxis& x = Chart.Spec.AxisX1;
    EXPECT_EQ(x.ScaleMode, ScaleModes::Manual);
    EXPECT_EQ(Chart.Spec.AxisX2.ScaleMode, ScaleModes::Manual);
    EXPECT_LE(x.Min, 2.3F);
    EXPECT_GE(x.Max, 7.2F);
    const double interval = x.TicInterval; // the limits are whole tics
    EXPECT_NEAR(std::remainder(static_cast<double>(x.Min), interval), 0.0, 1e-5);
    EXPECT_NEAR(std::remainder(static_cast<double>(x.Max), interval), 0.0, 1e-5);
    EXPECT_EQ(x.FirstTic, x.Min);
    EXPECT_EQ(Chart.Spec.AxisX2.Max, x.Max);
}

TEST_F(ChartMouseTest, EightUnitsAreAClickNineAreAZoom) {
    PlotPlain();
    const int x = Px(5), y = Py(2);
    Drag(x, y, x + 8, y - 8);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 10.0F);
    EXPECT_FALSE(Charts.LastZoom.Enabled);
    Drag(x, y, x + 9, y - 3);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 1);
    EXPECT_LT(Chart.Spec.AxisX1.Max, 6.0F);
}

TEST_F(ChartMouseTest, ABandWithoutHeightZoomsAlongX) {
    PlotPlain();
    const int x = Px(5), y = Py(2);
    Drag(x, y, x + 9, y);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 1);
    EXPECT_NEAR(Chart.Spec.AxisX1.Min, 5.0, 0.02);
    EXPECT_EQ(Chart.Spec.AxisY1.Min, 0.0F);
    EXPECT_EQ(Chart.Spec.AxisY1.Max, 5.0F);
}

TEST_F(ChartMouseTest, TheWheelZoomsAboutThePointer) {
    PlotPlain();
    const int x = Px(4), y = Py(2);
    const double placeX = XAt(x), placeY = YAt(y);
    ChartWheel(x, y, 1);
    const GraphSpec& s = Chart.Spec;
    EXPECT_NEAR(s.AxisX1.Max - s.AxisX1.Min, 10 / 1.25, 1e-4);
    EXPECT_NEAR(s.AxisY1.Max - s.AxisY1.Min, 5 / 1.25, 1e-4);
    ChartWheel(x, y, 7);
    EXPECT_NEAR(s.AxisX1.Max - s.AxisX1.Min, 10 / std::pow(1.25, 8), 1e-4);
    const double unit = (s.AxisX1.Max - s.AxisX1.Min) / static_cast<double>(s.Frame.X2 - s.Frame.X1);
    EXPECT_NEAR(XAt(x), placeX, unit) << "within a unit of the device";
    EXPECT_NEAR(YAt(y), placeY, unit);
    EXPECT_EQ(s.AxisX2.Min, s.AxisX1.Min);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 1) << "one zoom";
    DoLastZoom();
    EXPECT_EQ(s.AxisX1.Min, 0.0F);
    EXPECT_EQ(s.AxisX1.Max, 10.0F);
    EXPECT_EQ(s.AxisY1.Max, 5.0F);
    ChartWheel(x, y, -2); // out
    EXPECT_NEAR(s.AxisX1.Max - s.AxisX1.Min, 10 * 1.25 * 1.25, 1e-4);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 1);
}

TEST_F(ChartMouseTest, OnTheLabelsOfAnAxisTheWheelTurnsThatAxisAlone) {
    PlotPlain();
    const GraphBox frame = Chart.Spec.Frame;
    ChartWheel(Px(4), frame.Y2 + 5, 2);
    EXPECT_LT(Chart.Spec.AxisX1.Max - Chart.Spec.AxisX1.Min, 8.0F);
    EXPECT_EQ(Chart.Spec.AxisY1.Min, 0.0F);
    EXPECT_EQ(Chart.Spec.AxisY1.Max, 5.0F);
    DoLastZoom();
    ChartWheel(frame.X1 - 5, Py(2), 2);
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 10.0F);
    EXPECT_LT(Chart.Spec.AxisY1.Max - Chart.Spec.AxisY1.Min, 4.0F);
    DoLastZoom();
    ChartWheel(frame.X1 - 5, frame.Y2 + 5, 2);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
}

TEST_F(ChartMouseTest, TheWheelStopsWhereSinglesEnd) {
    PlotPlain();
    for (int i = 0; i < 40; ++i)
        ChartWheel(Px(4), Py(2), 10);
    const GraphAxis& x = Chart.Spec.AxisX1;
    EXPECT_GT(x.Max, x.Min);
    EXPECT_GT(x.Max - x.Min, 1e-6F);
    for (int i = 0; i < 80; ++i)
        ChartWheel(Px(x.Min), Py(Chart.Spec.AxisY1.Min), -10);
    EXPECT_TRUE(std::isfinite(x.Max - x.Min));
    EXPECT_EQ(Chart.GraphStatus, 0);
}

TEST_F(ChartMouseTest, TheMiddleButtonMovesTheGraph) {
    PlotPlain();
    ToggleShowCursor();
    ASSERT_TRUE(Charts.ShowCursor.Checked);
    const int x = Px(4), y = Py(2);
    const double unit = 10.0 / (Chart.Spec.Frame.X2 - Chart.Spec.Frame.X1);
    ChartMouseDown(x, y, 4);
    ChartMouseMove(x + 2, y, 4);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0) << "not yet a move";
    ChartMouseMove(x + 30, y - 20, 4);
    ChartMouseMove(x + 50, y, 4);
    const GraphSpec& s = Chart.Spec;
    EXPECT_NEAR(s.AxisX1.Min, -50 * unit, 1e-4);
    EXPECT_NEAR(s.AxisX1.Max, 10 - 50 * unit, 1e-4);
    EXPECT_NEAR(s.AxisY1.Min, 0.0, 1e-5);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 1);
    ChartMouseUp(x + 50, y, 4);
    EXPECT_TRUE(Line().empty());
    ChartMouseMove(x + 90, y, 0); // it has been let go
    EXPECT_NEAR(s.AxisX1.Min, -50 * unit, 1e-4);
    DoLastZoom();
    EXPECT_EQ(s.AxisX1.Min, 0.0F);
    ChartMouseDown(x, y, 4);
    ChartMouseUp(x, y, 4); // a click reads
    EXPECT_EQ(Line().rfind("Exactly at", 0), 0U);
    EXPECT_EQ(s.AxisX1.Max, 10.0F);
}

TEST_F(ChartMouseTest, EscapePutsAGraphThatIsBeingMovedBack) {
    PlotPlain();
    ChartMouseDown(Px(4), Py(2), 4);
    ChartMouseMove(Px(6), Py(3), 4);
    EXPECT_LT(Chart.Spec.AxisX1.Min, -1.0F);
    ChartKey(27, 0);
    EXPECT_EQ(Chart.Spec.AxisX1.Min, 0.0F);
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 10.0F);
    EXPECT_EQ(Cancel, 0);
    ChartMouseMove(Px(8), Py(3), 4);
    EXPECT_EQ(Chart.Spec.AxisX1.Min, 0.0F);
}

TEST_F(ChartMouseTest, ABandBeginsInTheFrameAndEndsAtIt) {
    PlotPlain();
    const GraphBox frame = Chart.Spec.Frame;
    ChartMouseDown(frame.X1 - 1, Py(2), 1);
    EXPECT_FALSE(Charts.Zooming);
    ChartMouseDown(frame.X2, frame.Y2, 1); // the ends belong to it
    EXPECT_TRUE(Charts.Zooming);
    ChartMouseMove(-50, -50, 1);
    EXPECT_EQ(Charts.LastX, frame.X1);
    EXPECT_EQ(Charts.LastY, frame.Y1);
    ChartMouseUp(-50, -50, 1);
    EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Min, 0.0F);
    EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.Max, 10.0F);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 1);
}

TEST_F(ChartMouseTest, NothingHappensWithoutAGraphThatIsHeld) {
    PlotPlain();
    Chart.GraphHeld = 0;
    Drag(Px(2), Py(4), Px(7), Py(1));
    DoAutoScale();
    ToggleShowGrids();
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 10.0F);
    EXPECT_EQ(Chart.Spec.AxisX1.Grid, 1);
}

TEST_F(ChartMouseTest, NothingHappensWhileAGraphIsPainted) {
    PlotPlain();
    Screen.OnItem = [this](const DrawnItem& item) {
        if (item.Kind != "polygon" && item.Kind != "line") return;
        Screen.OnItem = nullptr;
        DoAutoScale();
        SetPlotKind(1, 3);
        ChartMouseDown(Px(5), Py(2), 1);
    };
    RedrawChart();
    EXPECT_EQ(Screen.OnItem, nullptr);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
    EXPECT_EQ(Chart.Spec.PlotStyle, PlotStyles::SymbolsOnly);
    EXPECT_FALSE(Charts.Zooming);
}

TEST_F(ChartMouseTest, TheLineReadsThePointer) {
    PlotPlain();
    const int x = Px(5), y = Py(2);
    ChartMouseMove(x, y, 0);
    EXPECT_EQ(Line(), "");
    ToggleShowCursor();
    ChartMouseMove(x, y, 0);
    // Three digits beyond those of the labels, which have none here.
    char expected[120];
    std::snprintf(expected, sizeof expected, "Cursor at X = %.3f, Y = %.3f; right mouse reads exact position",
                  XAt(x), YAt(y));
    EXPECT_EQ(Line(), expected);
    ChartMouseMove(Chart.Spec.Frame.X1 - 5, y, 0); // outside the frame there is nothing to read
    EXPECT_EQ(Line(), expected);
    ToggleShowCursor();
    EXPECT_EQ(Line(), "");
}

TEST_F(ChartMouseTest, AMissingValueIsLeftOut) {
    PlotPlain();
    ShowCursorText(1.5F, 2.5F);
    EXPECT_EQ(Line(), "Cursor at X = 1.500, Y = 2.500; right mouse reads exact position");
    ShowCursorText(1.5F, MissingValue);
    EXPECT_EQ(Line(), "Cursor at X = 1.500; right mouse reads exact position");
    ShowCursorText(MissingValue, 2.5F);
    EXPECT_EQ(Line(), "Cursor at Y = 2.500; right mouse reads exact position");
}

TEST_F(ChartMouseTest, AlongCategoriesThereIsNothingToRead) {
    ToggleShowCursor();
    for (const int type : {GraphTypes::HorizontalBars, GraphTypes::VerticalBars}) {
        Spec = Begin(type, 1);
        Pin(Spec.AxisX1, 0, 5, 1);
        Pin(Spec.AxisY1, 0, 5, 1);
        Plot(Spec, Table({{1, 2, 3}}), Table({{1, 2, 3}}));
        const bool across = type == GraphTypes::HorizontalBars; // the values
        ChartMouseMove(Px(across ? 2 : 0.5), Py(across ? 0.5 : 2), 0);
        EXPECT_EQ(Line().rfind(across ? "Cursor at X = " : "Cursor at Y = ", 0), 0U) << Line();
        EXPECT_EQ(Line().find(across ? "Y" : "X"), std::string::npos) << Line();
        ChartMouseDown(Px(across ? 2 : 0.5), Py(across ? 0.5 : 2), 2);
        EXPECT_EQ(Line().rfind(across ? "Exactly at X = " : "Exactly at Y = ", 0), 0U) << Line();
        EXPECT_EQ(Line().find(across ? "Y" : "X"), std::string::npos) << Line();
    }
}

TEST_F(ChartMouseTest, TheRightButtonReadsThePointNearby) {
    Pin(Spec.AxisX1, 0, 10, 1);
    Pin(Spec.AxisY1, 0, 5, 1);
    Plot(Spec, Table({{1, 4.123456F, 9}, {1, 1, 1}}), Table({{1, 2.510203F, 4}, {MissingValue, 3, 3}}));
    ChartMouseDown(Px(4.12), Py(2.5), 2);
    EXPECT_EQ(Line(), ""); // not asked for
    ToggleShowCursor();
    ChartMouseDown(Px(4.12) + 4, Py(2.5) - 4, 2);
    EXPECT_EQ(Line(), "Exactly at X = 4.123456, Y = 2.510203 (a)");
    EXPECT_FALSE(Charts.Zooming);
    ChartMouseDown(Px(1) + 2, Py(3), 2);
    EXPECT_EQ(Line(), "Exactly at X = 1, Y = 3 (b)");
    Outside.Mark = ',';
    ChartMouseDown(Px(4.12), Py(2.5), 2);
    EXPECT_EQ(Line(), "Exactly at X = 4,123456, Y = 2,510203 (a)");
}

TEST_F(ChartMouseTest, FarFromAllPointsThePlaceItselfIsRead) {
    PlotPlain();
    ToggleShowCursor();
    const int x = Px(7), y = Py(1);
    ChartMouseDown(x, y, 2);
    float readX{}, readY{};
    ASSERT_EQ(std::sscanf(Line().c_str(), "Exactly at X = %f, Y = %f", &readX, &readY), 2) << Line();
    EXPECT_NEAR(readX, XAt(x), 1e-5);
    EXPECT_NEAR(readY, YAt(y), 1e-5);
}

TEST_F(ChartMouseTest, PointsOutsideTheFrameAreNotRead) {
    PlotPlain();
    ToggleShowCursor();
    Drag(Px(4.1), Py(5), Px(10), Py(0)); // the point at 4 is just outside
    ChartMouseDown(Chart.Spec.Frame.X1, Py(2.5), 2);
    EXPECT_EQ(Line().rfind("Exactly at X = 4.", 0), 0U) << Line();
    EXPECT_EQ(Line().find("(a)"), std::string::npos) << Line();
}

TEST_F(ChartMouseTest, ReadingsOnALogAxisAreTheNumbers) {
    Spec.AxisY1.ScaleType = ScaleTypes::Logarithmic;
    Pin(Spec.AxisX1, 0, 10, 1);
    Pin(Spec.AxisY1, -2, 2, 1);
    Plot(Spec, Table({{1, 5, 9}}), Table({{0.01F, 2, 100}}));
    ToggleShowCursor();
    ChartMouseMove(Px(5), (Chart.Spec.Frame.Y1 + Chart.Spec.Frame.Y2) / 2, 0); // the middle is 10^0
    float readX{}, readY{};
    ASSERT_EQ(std::sscanf(Line().c_str(), "Cursor at X = %f, Y = %f", &readX, &readY), 2) << Line();
    EXPECT_NEAR(readY, 1.0, 0.02);
    ChartMouseDown(Px(5), Py(std::log10(2.0)), 2);
    ASSERT_EQ(std::sscanf(Line().c_str(), "Exactly at X = %f, Y = %f", &readX, &readY), 2) << Line();
    EXPECT_EQ(readX, 5.0F);
    EXPECT_NEAR(readY, 2.0, 1e-6);
}

TEST_F(ChartMouseTest, ReadingsOnAPrescaledAxisAreInItsUnits) {
    for (GraphAxis* axis : {&Spec.AxisX1, &Spec.AxisY1}) {
        Pin(*axis, 0, 1, 1);
        axis->ScaleMode = ScaleModes::Prescaled;
    }
    Plot(Spec, Table({{1000, 5000, 9000}}), Table({{0.001F, 0.002F, 0.004F}}));
    ASSERT_EQ(Chart.Spec.AxisX1.Factor, 1000.0F);
    ToggleShowCursor();
    ChartMouseDown(Px(5) + 2, Py(2) + 2, 2);
    EXPECT_EQ(Line(), "Exactly at X = 5, Y = 2 (a)");
    Drag(Px(4), Py(3), Px(6), Py(1)); // and on a zoom of it
    EXPECT_EQ(Chart.Spec.AxisX1.FactorName.Str(), "Thousands");
    ChartMouseDown(Px(5), Py(2), 2);
    EXPECT_EQ(Line(), "Exactly at X = 5, Y = 2 (a)");
}

TEST_F(ChartMouseTest, ReadingsOfAManualFactorAreInItsUnits) {
    Pin(Spec.AxisX1, 0, 10, 1);
    Pin(Spec.AxisY1, 0, 5, 1);
    Spec.AxisX1.Factor = 1000;
    Plot(Spec, Table({{1000, 5000, 9000}}), Table({{1, 2, 4}}));
    ToggleShowCursor();
    ChartMouseDown(Px(5), Py(2), 2);
    EXPECT_EQ(Line(), "Exactly at X = 5, Y = 2 (a)");
}

TEST_F(ChartMouseTest, EscapeRaisesTheCancelFlag) {
    PlotPlain();
    ChartKey(65, 1);
    EXPECT_EQ(Cancel, 0);
    EXPECT_EQ(Charts.KeyCode, 65);
    EXPECT_EQ(Charts.KeyShift, 1);
    ChartKey(27, 0);
    EXPECT_EQ(Cancel, -1);
    EXPECT_EQ(Charts.KeyCode, 27);
}

TEST_F(ChartMouseTest, EscapeDropsARubberBandAndNoMore) {
    PlotPlain();
    Charts.Shown = true;
    Charts.EndsOnKey = [](int code, int) { return code == 27; };
    ChartMouseDown(Px(2), Py(4), 1);
    ChartKey(27, 0);
    EXPECT_FALSE(Charts.Zooming);
    EXPECT_TRUE(Charts.Shown);
    EXPECT_EQ(Cancel, 0);
    ChartMouseUp(Px(7), Py(1), 1);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
    ChartKey(27, 0);
    EXPECT_FALSE(Charts.Shown);
}

TEST_F(ChartMouseTest, AWindowThatIsNeededAsksBeforeItCloses) {
    EXPECT_TRUE(ChartsMayClose());
    Charts.Needed = true;
    const BoxRequest question{"Closing the graphing window at this time is not recommended, and might crash "
                              "the program.  Close it anyway?",
                              "Quillon", BoxIcon::Warning, BoxButtons::YesNo, BoxAnswer::No};
    Outside.ExpectMessage(question, BoxAnswer::No);
    EXPECT_FALSE(ChartsMayClose());
    Outside.ExpectMessage(question, BoxAnswer::Yes);
    EXPECT_TRUE(ChartsMayClose());
}

} // namespace
} // namespace Quillon
