// Bars and pies.
#include "ChartBench.h"
#include "chart/draw/Legend.h"

namespace Quillon {
namespace {

class DrawBarsTest : public ChartBench {
protected:
    // The filled rectangles of the bars, in the order drawn, without what is wiped below a hatch.
    std::vector<DrawnItem> Bars() const {
        std::vector<DrawnItem> bars = DataItems("rectangle");
        std::erase_if(bars, [](const DrawnItem& item) {
            return item.Brush.Kind == BrushKind::Solid && item.Brush.Color == 0xFFFFFF;
        });
        return bars;
    }
    void PlotBars(GraphSpec& spec, const SetTable& values) {
        const bool across = spec.GraphType == GraphTypes::HorizontalBars;
        const SetTable none(values.Points(), values.Sets());
        Plot(spec, across ? values : none, across ? none : values);
    }
};

TEST_F(DrawBarsTest, SideBySide) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars);
    PlotBars(spec, Table({{1, -2}, {3, 4}}));
    EXPECT_EQ(Chart.GraphStatus, 0);
    EXPECT_EQ(spec.AxisX1.Max, 1.0F);
    EXPECT_EQ(spec.AxisX1.TicInterval, 0.5F);
    const auto bars = Bars();
    ASSERT_EQ(bars.size(), 4U);
    // A category is half of the axis, of which 0.8 are bars: 0.05 to 0.25 and 0.25 to 0.45.
    EXPECT_EQ(bars[0].Rect.Left, Px(0.05));
    EXPECT_EQ(bars[0].Rect.Right, Px(0.25));
    EXPECT_EQ(bars[0].Rect.Top, Py(1));
    EXPECT_EQ(bars[0].Rect.Bottom, Py(0));
    EXPECT_EQ(bars[1].Rect.Left, Px(0.25));
    EXPECT_EQ(bars[1].Rect.Top, Py(3));
    EXPECT_EQ(bars[2].Rect.Left, Px(0.55));
    EXPECT_EQ(bars[2].Rect.Top, Py(0)); // downward
    EXPECT_EQ(bars[2].Rect.Bottom, Py(-2));
    EXPECT_EQ(bars[0].Brush.Kind, BrushKind::Solid);
    EXPECT_EQ(bars[0].Brush.Color, ToRgb(BasicColor(0)));
    EXPECT_EQ(bars[1].Brush.Kind, BrushKind::Horizontal);
    EXPECT_EQ(bars[1].Brush.Color, ToRgb(BasicColor(9)));
    EXPECT_FALSE(bars[0].Pen.Visible);
    EXPECT_EQ(DataItems("line").size(), 16U); // an outline of four lines about each
}

TEST_F(DrawBarsTest, TheGridIsNotSeenThroughAHatch) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars);
    PlotBars(spec, Table({{1}, {2}}));
    const auto areas = DataItems("rectangle");
    ASSERT_EQ(areas.size(), 3U); // solid; wiped and hatched
    EXPECT_EQ(areas[1].Brush.Kind, BrushKind::Solid);
    EXPECT_EQ(areas[1].Brush.Color, 0xFFFFFFU);
    EXPECT_EQ(ItemText(areas[1]), ItemText(areas[2]));
    EXPECT_NE(areas[2].Brush.Kind, BrushKind::Solid);
}

TEST_F(DrawBarsTest, StackedUpAndDownApart) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars, 2);
    PlotBars(spec, Table({{1}, {-2}, {3}, {-1}, {MissingValue}}));
    EXPECT_LE(spec.AxisY1.Min, -3.0F);
    EXPECT_GE(spec.AxisY1.Max, 4.0F);
    const auto bars = Bars();
    ASSERT_EQ(bars.size(), 4U);
    const int expected[][2] = {{1, 0}, {0, -2}, {4, 1}, {-2, -3}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(bars[i].Rect.Top, Py(expected[i][0])) << i;
        EXPECT_EQ(bars[i].Rect.Bottom, Py(expected[i][1])) << i;
        EXPECT_EQ(bars[i].Rect.Left, Px(0.1));
        EXPECT_EQ(bars[i].Rect.Right, Px(0.9));
    }
}

TEST_F(DrawBarsTest, Horizontal) {
    GraphSpec spec = Begin(GraphTypes::HorizontalBars);
    PlotBars(spec, Table({{2, 5}}));
    EXPECT_EQ(spec.AxisY1.Max, 1.0F);
    const auto bars = Bars();
    ASSERT_EQ(bars.size(), 2U);
    const int base = Px(spec.AxisX1.Min); // the scale does not reach down to zero
    EXPECT_EQ(bars[0].Rect.Left, base);
    EXPECT_EQ(bars[0].Rect.Right, Px(2));
    EXPECT_EQ(bars[0].Rect.Bottom, Py(0.05)); // the first category is the lowest
    EXPECT_EQ(bars[0].Rect.Top, Py(0.45));
    EXPECT_EQ(bars[1].Rect.Right, Px(5));
}

TEST_F(DrawBarsTest, TheBaseIsTheNearerEndWithoutZero) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars);
    Pin(spec.AxisY1, -10.0F, -5.0F, 1.0F);
    PlotBars(spec, Table({{-7}}));
    EXPECT_EQ(Bars().at(0).Rect.Top, Py(-5));
    EXPECT_EQ(Bars().at(0).Rect.Bottom, Py(-7));
}

// What lies between zero and the scale is cut off, so that the pieces that are seen stand at their sums.
TEST_F(DrawBarsTest, StacksOnAScaleWithoutZero) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars, 2);
    Pin(spec.AxisY1, 10.0F, 100.0F, 10.0F);
    PlotBars(spec, Table({{20}, {30}, {-5}}));
    auto bars = Bars();
    ASSERT_EQ(bars.size(), 3U);
    EXPECT_EQ(bars[0].Rect.Bottom, Py(10));
    EXPECT_EQ(bars[0].Rect.Top, Py(20));
    EXPECT_EQ(bars[1].Rect.Bottom, Py(20));
    EXPECT_EQ(bars[1].Rect.Top, Py(50));
    EXPECT_EQ(bars[2].Rect.Top, bars[2].Rect.Bottom); // nothing of it is on the scale
    Screen.Clear();
    spec = Begin(GraphTypes::VerticalBars, 2);
    Pin(spec.AxisY1, -100.0F, -10.0F, 10.0F);
    PlotBars(spec, Table({{-20}, {-30}}));
    bars = Bars();
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_EQ(bars[0].Rect.Top, Py(-10));
    EXPECT_EQ(bars[0].Rect.Bottom, Py(-20));
    EXPECT_EQ(bars[1].Rect.Bottom, Py(-50));
}

TEST_F(DrawBarsTest, BarsStayInTheFrame) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars);
    Pin(spec.AxisY1, 0.0F, 1.0F, 0.1F);
    PlotBars(spec, Table({{1e30F, -1e30F}}));
    ASSERT_EQ(Bars().size(), 2U);
    for (const DrawnItem& bar : Bars()) {
        EXPECT_TRUE(bar.Clipped);
        EXPECT_GE(bar.Rect.Top, -32768);
        EXPECT_LE(bar.Rect.Bottom, 32767);
    }
}

TEST_F(DrawBarsTest, OutlinesTakeTheirDashesInTurn) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars);
    Chart.Style.ScreenColors = {BasicColor(1)}; // the colours run out at once
    Chart.State.CyclesBuilt = 0;
    PlotBars(spec, Table({{1}, {1}}));
    const auto lines = DataItems("line");
    ASSERT_GT(lines.size(), 8U); // solid about the first, pieces about the second
    EXPECT_EQ(lines[4].Points[1].X - lines[4].Points[0].X, 15);
}

TEST_F(DrawBarsTest, ACancelStopsBetweenBars) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars);
    Outside.DuringEvents = [&] { Cancel = -1; };
    PlotBars(spec, SetTable(100, 3, 1.0F));
    EXPECT_EQ(Bars().size(), 50U);
}

TEST_F(DrawBarsTest, ThePrescaleOfBars) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars);
    spec.AxisY1.ScaleMode = ScaleModes::Prescaled;
    spec.AxisY1.Max = 1.0F;
    PlotBars(spec, Table({{0, 4000}}));
    EXPECT_EQ(spec.AxisY1.Max, 4.0F);
    EXPECT_EQ(Bars().at(1).Rect.Top, Py(4));
}

// --- pies ----------------------------------------------------------------------------------------------

class DrawPieTest : public ChartBench {
protected:
    void PlotValues(const std::vector<float>& values) {
        GraphSpec spec = Begin(GraphTypes::Pie);
        OneBased<float> y(static_cast<long>(values.size()));
        std::copy(values.begin(), values.end(), y.begin());
        PlotSingle(spec, y, y, static_cast<int>(values.size()), {}, {});
    }
};

TEST_F(DrawPieTest, SlicesRunClockwiseFromTheTop) {
    PlotValues({1, 2, 1});
    EXPECT_EQ(Chart.GraphStatus, 0);
    const auto slices = Screen.OfKind("pie");
    ASSERT_EQ(slices.size(), 3U);
    EXPECT_DOUBLE_EQ(slices[0].Start, 0.0);
    EXPECT_DOUBLE_EQ(slices[0].Sweep, 90.0);
    EXPECT_DOUBLE_EQ(slices[1].Start, -180.0);
    EXPECT_DOUBLE_EQ(slices[1].Sweep, 180.0);
    EXPECT_DOUBLE_EQ(slices[2].Start, -270.0);
    EXPECT_EQ(slices[0].RadiusX, slices[0].RadiusY);
    EXPECT_EQ(slices[1].Brush.Color, ToRgb(BasicColor(9)));
    EXPECT_NE(Screen.FindText("2 (50.0%)"), nullptr);
    EXPECT_EQ(Chart.Spec.AxisX1.Show, 0); // no axes
    EXPECT_EQ(Chart.State.KindX, AxisKinds::Category);
    EXPECT_EQ(Chart.State.KindY, AxisKinds::Category);
}

TEST_F(DrawPieTest, WhatIsNotPositiveHasNoSlice) {
    PlotValues({1, -5, 0, MissingValue, std::nanf(""), 3});
    const auto slices = Screen.OfKind("pie");
    ASSERT_EQ(slices.size(), 2U);
    EXPECT_DOUBLE_EQ(slices[1].Sweep, 270.0);
    EXPECT_NE(Screen.FindText("6 (75.0%)"), nullptr);
}

TEST_F(DrawPieTest, ASingleValueIsAWholeCircle) {
    PlotValues({7});
    EXPECT_TRUE(Screen.OfKind("pie").empty());
    EXPECT_EQ(Screen.OfKind("ellipse").size(), 1U);
    Screen.Clear();
    PlotValues({0});
    EXPECT_TRUE(Screen.OfKind("ellipse").empty());
}

TEST_F(DrawPieTest, LabelsStandOutsideAndInTheFrame) {
    PlotValues({3, 1, 4, 1, 5, 9, 2, 6});
    const DrawnItem slice = Screen.OfKind("pie").at(0);
    for (const DrawnItem& text : Screen.OfKind("text")) {
        const DeviceRect r = TextBounds(text);
        EXPECT_TRUE(Within(r, RectOf(Chart.Spec.Frame))) << text.Text;
        const double x = std::clamp(slice.Points[0].X, r.Left, r.Right) - slice.Points[0].X;
        const double y = std::clamp(slice.Points[0].Y, r.Top, r.Bottom) - slice.Points[0].Y;
        EXPECT_GT(std::hypot(x, y), slice.RadiusX) << text.Text;
    }
}

TEST_F(DrawPieTest, LabelsGiveWayBeforeThePieDoes) {
    Screen.Width = 400;
    PlotValues({3, 1, 4});
    EXPECT_EQ(Screen.OfKind("text").size(), 3U);
    const int labelled = Screen.OfKind("pie").at(0).RadiusY;
    Chart.CatLabels.Recreate(3, "a name that is far too long for any label");
    Screen.Clear();
    ShowGraph();
    EXPECT_TRUE(Screen.OfKind("text").empty());
    EXPECT_GT(Screen.OfKind("pie").at(0).RadiusY, labelled);
}

TEST_F(DrawPieTest, SeveralSetsAreSlicesWithALegend) {
    GraphSpec spec = Begin(GraphTypes::Pie);
    spec.Legend.Show = 1;
    Plot(spec, SetTable(2, 3), Table({{1, 1}, {2, MissingValue}, {3, 1}}));
    const auto slices = Screen.OfKind("pie");
    ASSERT_EQ(slices.size(), 3U);
    EXPECT_DOUBLE_EQ(slices[2].Sweep, 180.0);
    EXPECT_NE(Screen.FindText("50.0%"), nullptr);
    for (const char* name : {"a", "b", "c"})
        EXPECT_NE(Screen.FindText(name), nullptr);
    // The legend takes half its height from the frame; the pie stays clear of it.
    EXPECT_LE(slices[0].Points[0].Y + slices[0].RadiusY, Chart.Spec.Legend.Box.Y1);
    EXPECT_LT(Chart.Spec.Legend.Box.Y1, Chart.Spec.Frame.Y2);
}

TEST_F(DrawPieTest, APieIsRoundOnNonSquareUnits) {
    Screen.DotsPerInchX = 192.0;
    PlotValues({1, 1});
    const DrawnItem slice = Screen.OfKind("pie").at(0);
    EXPECT_EQ(slice.RadiusX, 2 * slice.RadiusY);
}

} // namespace
} // namespace Quillon
