// Markers through what changes the graph below them, and which one a press takes hold of.
#include "ChartBench.h"
#include "chart/Charts.h"

namespace Quillon {
namespace {

class MarkersOnGraphTest : public ChartBench {
protected:
    // X from 0 to 10; titles above and a legend at the right.
    MarkersOnGraphTest() {
        GraphSpec spec = Begin();
        Pin(spec.AxisX1, 0, 10, 1);
        Pin(spec.AxisY1, 0, 5, 1);
        spec.Title1.Text = "first";
        spec.Legend.Show = 1;
        spec.Legend.Where = LegendPlaces::Right;
        Plot(spec, Table({{0, 4, 10}, {0, 4, 10}}), Table({{1, 2, 4}, {2, 3, 5}}));
        PlaceMarkers(2, 8);
    }
    static ChartMarker& Marker(std::size_t i) { return Charts.Markers[i]; }
    static void ExpectPlaces() {
        EXPECT_EQ(Marker(0).X, 2.0F);
        EXPECT_EQ(Marker(1).X, 8.0F);
        EXPECT_EQ(Marker(0).Device, Px(2));
        EXPECT_EQ(Marker(1).Device, Px(8));
    }
};

TEST_F(MarkersOnGraphTest, KeepTheirXWhenTheLegendComesAndGoes) {
    const int right = Chart.Spec.Frame.X2;
    ShowLegend();
    ASSERT_GT(Chart.Spec.Frame.X2, right);
    ExpectPlaces();
    ShowLegend();
    ASSERT_EQ(Chart.Spec.Frame.X2, right);
    ExpectPlaces();
}

// Another view moves the frame with the next change of the titles.
TEST_F(MarkersOnGraphTest, KeepTheirXWhenTitlesGoOrGrow) {
    Chart.Spec.Relayout = 1;
    Chart.Spec.View = {100, 0, 700, 400, 15, {}};
    SetGraphComment("one line\\and another");
    ASSERT_GE(Chart.Spec.Frame.X1, 100);
    ExpectPlaces();
    Chart.Spec.View = {0, 0, 700, 400, 15, {}};
    DeleteTitles();
    ASSERT_LT(Chart.Spec.Frame.X1, 100);
    ExpectPlaces();
}

TEST_F(MarkersOnGraphTest, TitlesAndLegendStayWhileAGraphIsPainted) {
    bool came = false;
    Screen.OnItem = [&](const DrawnItem& item) {
        if (came || item.Kind != "line") return;
        came = true;
        DeleteTitles();
        ShowLegend();
    };
    RedrawChart();
    Screen.OnItem = nullptr;
    EXPECT_TRUE(came);
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "first");
    EXPECT_EQ(Chart.Spec.Legend.Show, 1);
}

TEST_F(MarkersOnGraphTest, APressTakesTheNearestWithinReach) {
    PlaceMarkers(4, 4.05F);
    const int first = Marker(0).Device, second = Marker(1).Device, y = Py(2);
    ASSERT_GE(second - first, 2);
    EXPECT_EQ(MarkerAt(first, y, 5), 0);
    EXPECT_EQ(MarkerAt(second, y, 5), 1);
    EXPECT_EQ(MarkerAt(first - 5, y, 5), 0);
    EXPECT_EQ(MarkerAt(first - 6, y, 5), -1);
    EXPECT_EQ(MarkerAt(second + 5, y, 5), 1);
    EXPECT_EQ(MarkerAt(second + 6, y, 5), -1);
}

// Two markers on each other could not be parted to the right.
TEST_F(MarkersOnGraphTest, OfMarkersOnEachOtherTheFirstMoveChooses) {
    const int y = Py(2);
    for (const int direction : {-1, 1}) {
        PlaceMarkers(4, 4);
        const int place = Marker(0).Device;
        ASSERT_TRUE(MarkerPressed(place, y, 5));
        ChartMouseMove(place, y, 1); // not decided yet
        ChartMouseMove(place + 30 * direction, y, 1);
        MarkerMouseUp();
        const std::size_t moved = direction < 0 ? 0 : 1;
        EXPECT_EQ(Marker(moved).Device, place + 30 * direction);
        EXPECT_EQ(Marker(1 - moved).Device, place);
        EXPECT_EQ(Marker(1 - moved).X, 4.0F);
        ChartMouseMove(place, y, 0); // it has been let go
        EXPECT_EQ(Marker(moved).Device, place + 30 * direction);
    }
    EXPECT_FALSE(MarkerPressed(Px(9), y, 5));
}

// A zoom moved markers for good.
TEST_F(MarkersOnGraphTest, OneOffTheScaleKeepsItsXAndIsShownAtTheEdge) {
    ZoomTo({3, 7, 1, 4});
    EXPECT_EQ(Marker(0).Device, Chart.Spec.Frame.X1);
    EXPECT_EQ(Marker(1).Device, Chart.Spec.Frame.X2);
    EXPECT_EQ(Marker(0).X, 2.0F);
    Charts.ActiveMarker = 0;
    ChartKey(37, 0); // against the edge
    EXPECT_EQ(Marker(0).X, 2.0F);
    ChartKey(39, 0); // into the picture
    EXPECT_GT(Marker(0).X, 3.0F);
    RedrawChart();
    DoLastZoom();
    EXPECT_EQ(Marker(1).X, 8.0F);
    EXPECT_EQ(Marker(1).Device, Px(8));
}

TEST_F(MarkersOnGraphTest, WhoeverMadeThemHearsOfEachMove) {
    int heard = 0;
    Charts.OnMarkers = [&heard] { ++heard; };
    MarkerMouseDown(1);
    MarkerMouseMove(Px(7));
    EXPECT_EQ(heard, 1);
    DoAutoScale();
    EXPECT_GT(heard, 1);
    Charts.OnMarkers = nullptr;
}

TEST_F(MarkersOnGraphTest, APressOutsideTheFrameTakesNone) {
    const GraphBox& frame = Chart.Spec.Frame;
    EXPECT_EQ(MarkerAt(Px(2), frame.Y1, 5), 0);
    EXPECT_EQ(MarkerAt(Px(2), frame.Y2, 5), 0);
    EXPECT_EQ(MarkerAt(Px(2), frame.Y1 - 1, 5), -1);
    EXPECT_EQ(MarkerAt(Px(2), frame.Y2 + 1, 5), -1);
}

// A zoom beside both markers leaves them at one edge: the one that is taken can be dragged away from it.
TEST_F(MarkersOnGraphTest, OfTwoAtAnEdgeTheOneIsTakenThatCanMove) {
    const int y = Py(2);
    ZoomTo({8.5F, 9.5F, 0, 5});
    const GraphBox frame = Chart.Spec.Frame;
    ASSERT_EQ(Marker(0).Device, frame.X1);
    ASSERT_EQ(Marker(1).Device, frame.X1);
    MarkerMouseDown(MarkerAt(frame.X1, y, 5));
    MarkerMouseMove(frame.X1 + 50);
    MarkerMouseUp();
    EXPECT_EQ(Marker(0).Device, frame.X1);
    EXPECT_EQ(Marker(1).Device, frame.X1 + 50);
    ZoomTo({8.52F, 8.53F, 0, 5}); // and at the right edge
    DoAutoScale();
    PlaceMarkers(9, 9.5F);
    ZoomTo({1, 2, 0, 5});
    ASSERT_EQ(Marker(0).Device, Chart.Spec.Frame.X2);
    MarkerMouseDown(MarkerAt(Chart.Spec.Frame.X2, y, 5));
    MarkerMouseMove(Chart.Spec.Frame.X2 - 50);
    EXPECT_EQ(Marker(0).Device, Chart.Spec.Frame.X2 - 50);
    EXPECT_EQ(Outside.Beeps, 0);
}

TEST_F(MarkersOnGraphTest, ANeighbourAtTheEdgePushesNoneOutOfTheFrame) {
    ZoomTo({8.5F, 9.5F, 0, 5});
    MarkerMouseDown(0);
    MarkerMouseMove(Chart.Spec.Frame.X1 + 50);
    EXPECT_EQ(Outside.Beeps, 1);
    EXPECT_EQ(Marker(0).Device, Chart.Spec.Frame.X1);
    EXPECT_EQ(Marker(0).X, 2.0F); // its own, though it is shown at the edge
}

TEST_F(MarkersOnGraphTest, WhatNeedsAGraphIsOffBeforeTheFirst) {
    const ChartsForm fresh;
    for (const MenuItem* item :
         {&fresh.AltPlot, &fresh.DeleteTitles, &fresh.SeparateX, &fresh.SeparateY, &fresh.SeparateBoth,
          &fresh.mnuEditTitles, &fresh.mnuEditLegend, &fresh.LastZoom})
        EXPECT_FALSE(item->Enabled) << item->Text;
}

} // namespace
} // namespace Quillon
