// The scale commands and the options of the chart window.
#include "ChartBench.h"
#include "chart/Charts.h"

namespace Quillon {
namespace {

class ChartScaleTest : public ChartBench {
protected:
    ChartScaleTest() { Spec = Begin(GraphTypes::XYPlot, PlotStyles::SymbolsOnly); }
    // Data from 1 to 9 and 0.5 to 4.5 on an autorange.
    void PlotAuto() {
        Spec.AxisX1.ScaleMode = Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
        Plot(Spec, Table({{1, 4, 9}, {2, 3, 4}}), Table({{0.5F, 2.5F, 4.5F}, {1, 1, 1}}));
    }
    GraphSpec Spec;
};

TEST_F(ChartScaleTest, LastZoomStepsBack) {
    PlotAuto();
    const ChartScale whole = PresentScale();
    const GraphSpec before = Chart.Spec;
    ZoomTo({2, 8, 1, 4});
    ZoomTo({3, 7, 2, 3});
    DoLastZoom();
    EXPECT_EQ(PresentScale(), (ChartScale{2, 8, 1, 4}));
    EXPECT_EQ(Chart.Spec.AxisX1.ScaleMode, ScaleModes::Manual);
    EXPECT_EQ(Chart.Spec.AxisX2.Min, 2.0F);
    EXPECT_EQ(Chart.Spec.AxisY2.Max, 4.0F);
    EXPECT_TRUE(Charts.LastZoom.Enabled);
    DoLastZoom();
    EXPECT_EQ(PresentScale(), whole);
    EXPECT_EQ(Chart.Spec.AxisX1.TicInterval, before.AxisX1.TicInterval);
    EXPECT_EQ(Chart.Spec.AxisX1.FirstTic, before.AxisX1.FirstTic);
    EXPECT_EQ(Chart.Spec.AxisY1.Decimals, before.AxisY1.Decimals);
    EXPECT_TRUE(Chart.Spec.Frame == before.Frame);
    EXPECT_FALSE(Charts.LastZoom.Enabled);
    DoLastZoom(); // nothing is left
    EXPECT_EQ(PresentScale(), whole);
}

TEST_F(ChartScaleTest, LastZoomAfterADeepOneDoesNotKeepItsDecimals) {
    Spec.AxisX1.ScaleMode = Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Plot(Spec, Table({{100, 200, 300}}), Table({{1000, 2000, 3000}}));
    const GraphSpec before = Chart.Spec;
    ZoomTo({200.001F, 200.009F, 2000.01F, 2000.09F});
    ASSERT_GT(Chart.Spec.AxisX1.Decimals, before.AxisX1.Decimals);
    DoLastZoom();
    EXPECT_EQ(Chart.Spec.AxisX1.Decimals, before.AxisX1.Decimals);
    EXPECT_EQ(Chart.Spec.AxisY1.Decimals, before.AxisY1.Decimals);
    EXPECT_NE(Screen.FindText("200"), nullptr);
}

TEST_F(ChartScaleTest, ElevenZoomsKeepTheLastTen) {
    PlotAuto();
    for (int i = 1; i <= 11; ++i) {
        const auto f = static_cast<float>(i);
        ZoomTo({1 + 0.1F * f, 9 - 0.1F * f, 1, 4});
    }
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 10);
    for (int i = 0; i < 9; ++i)
        DoLastZoom();
    EXPECT_TRUE(Charts.LastZoom.Enabled);
    DoLastZoom();
    EXPECT_FALSE(Charts.LastZoom.Enabled);
    EXPECT_EQ(PresentScale().XMin, 1.1F); // the whole scale before the first zoom is lost
    DoLastZoom();
    EXPECT_EQ(PresentScale().XMin, 1.1F);
}

TEST_F(ChartScaleTest, AutoScaleBringsTheFullRangeBackAndCanBeSteppedBackFrom) {
    PlotAuto();
    const ChartScale whole = PresentScale();
    ZoomTo({3, 7, 2, 3});
    DoAutoScale();
    EXPECT_EQ(PresentScale(), whole);
    EXPECT_EQ(Chart.Spec.AxisX1.ScaleMode, ScaleModes::Autorange);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 2);
    EXPECT_TRUE(Charts.LastZoom.Enabled);
    DoLastZoom();
    EXPECT_EQ(PresentScale(), (ChartScale{3, 7, 2, 3}));
}

TEST_F(ChartScaleTest, OneAxisAlone) {
    PlotAuto();
    const ChartScale whole = PresentScale();
    ZoomTo({3, 7, 2, 3});
    DoAutoX();
    EXPECT_EQ(PresentScale(), (ChartScale{whole.XMin, whole.XMax, 2, 3}));
    ZoomTo({3, 7, 2, 3});
    DoAutoY();
    EXPECT_EQ(PresentScale(), (ChartScale{3, 7, whole.YMin, whole.YMax}));
}

TEST_F(ChartScaleTest, AZoomOnALogAxisKeepsLogarithmicLimits) {
    Spec.AxisX1.ScaleType = ScaleTypes::Logarithmic;
    Spec.AxisX1.ScaleMode = Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Plot(Spec, Table({{0.001F, 1, 1000}}), Table({{1, 2, 3}}));
    ZoomTo({-1.5F, 2.25F, 1, 3});
    EXPECT_EQ(Chart.Spec.AxisX1.Min, -1.5F);
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 2.25F);
    for (const char* label : {"0.100", "1.000", "10.000", "100.000"})
        EXPECT_NE(Screen.FindText(label), nullptr) << label;
    Charts.RoundOnZoom.Checked = true; // decades are not rounded, but the first tic is a decade
    ZoomTo({-1.25F, 1.75F, 1, 3});
    EXPECT_EQ(Chart.Spec.AxisX1.Min, -1.25F);
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 1.75F);
    EXPECT_EQ(Chart.Spec.AxisX1.FirstTic, -1.0F);
    EXPECT_EQ(Chart.Spec.AxisX1.ScaleMode, ScaleModes::Manual);
}

TEST_F(ChartScaleTest, ZoomsOfAPrescaledAxisSurviveTheLossOfItsPrescale) {
    Pin(Spec.AxisX1, 0, 1, 1);
    Spec.AxisX1.ScaleMode = ScaleModes::Prescaled;
    Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Plot(Spec, Table({{1000, 5000, 9000}}), Table({{1, 2, 3}}));
    ZoomTo({2, 8, 1, 3});
    DoAutoScale(); // in plain units
    EXPECT_EQ(Chart.Spec.AxisX1.Factor, 1.0F);
    EXPECT_GE(Chart.Spec.AxisX1.Max, 9000.0F);
    DoLastZoom();
    EXPECT_EQ(PresentScale(), (ChartScale{2000, 8000, 1, 3}));
}

TEST_F(ChartScaleTest, ADeepZoomFarFromZeroHasTics) {
    Spec.AxisX1.ScaleMode = Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Plot(Spec, Table({{150, 160, 170}}), Table({{1.5e6F, 1.6e6F, 1.7e6F}}));
    ASSERT_EQ(Chart.Spec.AxisY1.TicFormat, TicFormats::Exponential);
    ZoomTo({160.02F, 160.11F, 1.5000e6F, 1.5010e6F});
    for (const char* label : {"160.04", "160.06", "160.08", "160.10"}) // steps of a fifth of the span
        EXPECT_NE(Screen.FindText(label), nullptr) << label;
    for (const char* label : {"1.5000E+6", "1.5002E+6", "1.5008E+6", "1.5010E+6"})
        EXPECT_NE(Screen.FindText(label), nullptr) << label;
    EXPECT_EQ(Chart.Spec.AxisX2.TicInterval, Chart.Spec.AxisX1.TicInterval);
    DoAutoScale();
    DoLastZoom();
    EXPECT_FLOAT_EQ(Chart.Spec.AxisX1.TicInterval, 0.02F);
}

TEST_F(ChartScaleTest, AScaleWithoutLengthIsNone) {
    PlotAuto();
    const ChartScale whole = PresentScale();
    ZoomTo({3, 3, 1, 4});
    ZoomTo({3, 4, 2, 2});
    EXPECT_EQ(PresentScale(), whole);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
}

TEST_F(ChartScaleTest, OptionsOfTheWindow) {
    PlotAuto();
    ToggleShowGrids();
    EXPECT_EQ(Chart.Spec.AxisX1.Grid + Chart.Spec.AxisY1.Grid, 0);
    EXPECT_FALSE(Charts.ShowGrids.Checked);
    ToggleShowGrids();
    EXPECT_EQ(Chart.Spec.AxisX1.Grid + Chart.Spec.AxisY1.Grid, 2);
    EXPECT_TRUE(Charts.ShowGrids.Checked);
    ToggleRainbow();
    EXPECT_EQ(Chart.Style.UseRainbowColors, -1);
    EXPECT_TRUE(Charts.UseRainbow.Checked);
    SetPlotKind(PlotStyles::Lines, 3);
    EXPECT_TRUE(Charts.LinePlot.Checked);
    EXPECT_FALSE(Charts.DotCenter.Enabled);
    SetPlotKind(PlotStyles::SymbolsOnly, 1);
    EXPECT_TRUE(Charts.SymbolPlot.Checked);
    ToggleDotCenter();
    EXPECT_TRUE(Charts.DotCenter.Checked);
    EXPECT_EQ(Chart.Spec.SymbolMode, 0);
    ToggleDotCenter();
    EXPECT_EQ(Chart.Spec.SymbolMode, 1);
}

TEST_F(ChartScaleTest, ANewGraphHasNoOptionsOfTheFormer) {
    PlotAuto();
    OfferSpecialOption(2, "&Something", [] {});
    ASSERT_TRUE(Charts.SpecialActions[2]);
    PlotAuto();
    EXPECT_FALSE(Charts.SpecialActions[2]);
    EXPECT_FALSE(Charts.SpecialOpts[2].Visible);
}

// --- markers -----------------------------------------------------------------------------------------------

class ChartMarkerTest : public ChartScaleTest {
protected:
    void PlotMarked(float first, float second) {
        Pin(Spec.AxisX1, 0, 10, 1);
        Pin(Spec.AxisY1, 0, 5, 1);
        Plot(Spec, Table({{0, 4, 10}}), Table({{1, 2.5F, 4}}));
        PlaceMarkers(first, second);
    }
    static ChartMarker& Marker(std::size_t i) { return Charts.Markers[i]; }
};

TEST_F(ChartMarkerTest, StandAtTheirX) {
    PlotMarked(2, 8);
    ASSERT_EQ(Charts.Markers.size(), 2U);
    EXPECT_EQ(Charts.ZoomState, 2);
    EXPECT_EQ(Marker(0).Device, Px(2));
    EXPECT_EQ(Marker(1).Device, Px(8));
    RemoveMarkers();
    EXPECT_TRUE(Charts.Markers.empty());
    EXPECT_EQ(Charts.ZoomState, 0);
}

TEST_F(ChartMarkerTest, FollowThePointer) {
    PlotMarked(2, 8);
    MarkerMouseDown(1);
    ChartMouseMove(Px(6), Py(2), 1);
    EXPECT_EQ(Marker(1).Device, Px(6));
    EXPECT_NEAR(Marker(1).X, 6.0, 0.01);
    char expected[60];
    std::snprintf(expected, sizeof expected, "Marker at X = %.3f", static_cast<double>(Marker(1).X));
    EXPECT_EQ(Charts.StatusLine.Text, expected);
    MarkerMouseUp();
    ChartMouseMove(Px(3), Py(2), 0);
    EXPECT_EQ(Marker(1).Device, Px(6));
    EXPECT_EQ(Outside.Beeps, 0);
}

TEST_F(ChartMarkerTest, StayWithinTheFrame) {
    PlotMarked(2, 8);
    MarkerMouseDown(0);
    MarkerMouseMove(-100);
    EXPECT_EQ(Marker(0).Device, Chart.Spec.Frame.X1);
    EXPECT_FLOAT_EQ(Marker(0).X, 0.0F);
    MarkerMouseDown(7); // there is none
    EXPECT_EQ(Charts.CapturedMarker, 0);
}

TEST_F(ChartMarkerTest, DoNotCross) {
    PlotMarked(2, 8);
    MarkerMouseDown(0);
    MarkerMouseMove(Px(8)); // to its neighbour
    EXPECT_EQ(Marker(0).Device, Px(8) - 1);
    EXPECT_EQ(Outside.Beeps, 1);
    MarkerMouseMove(Px(9)); // past it
    EXPECT_EQ(Marker(0).Device, Px(8) - 1);
    EXPECT_EQ(Outside.Beeps, 2);
    MarkerMouseMove(Px(5));
    MarkerMouseDown(1);
    MarkerMouseMove(Px(1));
    EXPECT_EQ(Marker(1).Device, Px(5) + 1);
    EXPECT_EQ(Outside.Beeps, 3);
}

TEST_F(ChartMarkerTest, MoveByTheArrowKeys) {
    PlotMarked(2, 8);
    ChartKey(39, 0);
    EXPECT_EQ(Marker(0).Device, Px(2) + 1);
    ChartKey(39, 2);
    EXPECT_EQ(Marker(0).Device, Px(2) + 11);
    ChartKey(37, 0);
    EXPECT_EQ(Marker(0).Device, Px(2) + 10);
    EXPECT_EQ(Charts.StatusLine.Text.rfind("Marker at X = 2.", 0), 0U);
    ChartKey(40, 0);
    EXPECT_EQ(Charts.ActiveMarker, 1);
    EXPECT_EQ(Charts.StatusLine.Text, "Marker at X = 8.000");
    ChartKey(37, 2);
    EXPECT_EQ(Marker(1).Device, Px(8) - 10);
    ChartKey(38, 0);
    EXPECT_EQ(Charts.ActiveMarker, 0);
    ChartKey(38, 0);
    EXPECT_EQ(Charts.ActiveMarker, 1);
    MarkerMouseDown(0); // one that is taken hold of is active, too
    EXPECT_EQ(Charts.ActiveMarker, 0);
}

TEST_F(ChartMarkerTest, KeepTheirXOverAResize) {
    PlotMarked(2.0625F, 8);
    Screen.Width = 500;
    RedrawChart();
    Screen.Width = 1200;
    RedrawChart();
    EXPECT_EQ(Marker(0).X, 2.0625F); // to the last digit
    EXPECT_EQ(Marker(0).Device, Px(2.0625));
}

TEST_F(ChartMarkerTest, KeepTheirXOverAZoomAndAreShownAtItsEdgeOutside) {
    PlotMarked(2, 8);
    ZoomTo({4, 9, 0, 5});
    EXPECT_EQ(Marker(0).X, 2.0F);
    EXPECT_EQ(Marker(0).Device, Chart.Spec.Frame.X1);
    EXPECT_EQ(Marker(1).X, 8.0F);
    EXPECT_EQ(Marker(1).Device, Px(8));
    DoAutoScale();
    EXPECT_EQ(Marker(0).X, 2.0F);
    EXPECT_EQ(Marker(0).Device, Px(2));
}

TEST_F(ChartMarkerTest, AMovedMarkerIsRecordedBeforeARedraw) {
    PlotMarked(2, 8);
    Marker(0).Device = Px(5);
    RecordMarkers();
    EXPECT_NEAR(Marker(0).X, 5.0, 0.01);
    EXPECT_EQ(Marker(1).X, 8.0F);
}

TEST_F(ChartMarkerTest, KeepTheirPlaceInTheDataOnAPrescaledAxis) {
    Pin(Spec.AxisX1, 0, 1, 1);
    Spec.AxisX1.ScaleMode = ScaleModes::Prescaled;
    Spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Plot(Spec, Table({{1000, 5000, 9000}}), Table({{1, 2, 3}}));
    PlaceMarkers(2000, 8000);
    EXPECT_EQ(Marker(0).Device, Px(2)); // thousands
    DoAutoScale();                      // plain units
    EXPECT_EQ(Marker(0).X, 2000.0F);
    EXPECT_EQ(Marker(0).Device, Px(2000));
}

} // namespace
} // namespace Quillon
