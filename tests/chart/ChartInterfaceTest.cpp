// The calling interface: initial records, checks, what comes back, what is held, menus.
#include "ChartBench.h"
#include "chart/pens/Device.h"

#include <limits>

namespace Quillon {
namespace {

class ChartInterfaceTest : public ChartBench {
protected:
    void PlotLine(GraphSpec& spec) { Plot(spec, Table({{1, 2, 3}}), Table({{0.13F, 0.5F, 0.87F}})); }
    bool DrewData() const { return !DataItems("polyline").empty(); }
};

TEST_F(ChartInterfaceTest, InitFillsTheDefaults) {
    GraphSpec spec;
    spec.Title1.Text = "of before";
    GraphInit(spec, GraphTypes::XYPlot, PlotStyles::SymbolsOnly);
    EXPECT_EQ(Chart.GraphStatus, 0);
    EXPECT_EQ(Chart.State.IniRead, 1);
    EXPECT_TRUE(spec.Title1.Text.Empty());
    EXPECT_EQ(spec.GraphType, 4);
    EXPECT_EQ(spec.PlotStyle, 2);
    EXPECT_EQ(spec.SymbolMode, 1);
    EXPECT_EQ(spec.Device.Str(), "0");
    EXPECT_EQ(spec.LineWidth, 15);
    EXPECT_EQ(spec.View.Color, 15);
    EXPECT_EQ(spec.Frame.X2, 0);
    const GraphAxis& x = spec.AxisX1;
    EXPECT_EQ(x.Show, 1);
    EXPECT_EQ(x.Grid, 1);
    EXPECT_EQ(x.TicSide, 2);
    EXPECT_EQ(x.TicMode, 1);
    EXPECT_EQ(x.ScaleType, 1);
    EXPECT_EQ(x.LogBase, 10.0F);
    EXPECT_EQ(x.ScaleMode, 0);
    EXPECT_EQ(x.Factor, 1.0F);
    EXPECT_EQ(x.LabelFont, 3);
    EXPECT_EQ(x.LabelSize, 0.02F);
    EXPECT_EQ(x.TicFormat, 1);
    EXPECT_EQ(x.AxisWidth, 15);
    EXPECT_EQ(x.TicWidth, 10);
    EXPECT_EQ(x.Title.Justify, 1);
    EXPECT_EQ(x.Title.Size, 0.02F);
    for (const GraphAxis* second : {&spec.AxisX2, &spec.AxisY2}) {
        EXPECT_EQ(second->TicMode, 2);
        EXPECT_EQ(second->Grid, 0);
    }
    EXPECT_EQ(spec.Legend.Show, 0);
    EXPECT_EQ(spec.Legend.Where, 3);
    EXPECT_EQ(spec.Legend.AutoPlace, 1);
    EXPECT_EQ(spec.Legend.Size, 0.016F);
}

TEST_F(ChartInterfaceTest, LinesHaveNoSymbolsOnAnXYPlotAlone) {
    GraphSpec spec;
    for (int type = 1; type <= 5; ++type)
        for (int style = 1; style <= 3; ++style) {
            GraphInit(spec, type, style);
            EXPECT_EQ(spec.SymbolMode, type == 4 && style == 1 ? 3 : 1) << type << style;
        }
}

TEST_F(ChartInterfaceTest, InitRefusesAnUnknownTypeAndRepairsAStyle) {
    GraphSpec spec;
    spec.Title1.Text = "kept";
    for (const int type : {0, 6, -1}) {
        GraphInit(spec, type, 1);
        EXPECT_EQ(Chart.GraphStatus, 135);
        EXPECT_EQ(spec.Title1.Text.Str(), "kept");
    }
    for (const int style : {0, 4}) {
        GraphInit(spec, 4, style);
        EXPECT_EQ(Chart.GraphStatus, 30);
        EXPECT_EQ(spec.PlotStyle, 1);
    }
}

TEST_F(ChartInterfaceTest, TheSpecComesBackWithTheScale) {
    GraphSpec spec = Begin();
    PlotLine(spec);
    EXPECT_EQ(Chart.GraphStatus, 0);
    EXPECT_EQ(spec.AxisX1.ScaleMode, ScaleModes::Autorange); // Min equal to Max asks for it
    EXPECT_EQ(spec.AxisY1.Min, 0.1F);
    EXPECT_EQ(spec.AxisY1.Max, 0.9F);
    EXPECT_EQ(spec.AxisY1.TicInterval, 0.1F);
    EXPECT_EQ(spec.AxisY1.Decimals, 1);
    EXPECT_EQ(spec.AxisY2.Max, 0.9F); // and its partner follows
    EXPECT_GT(spec.Frame.X2, spec.Frame.X1);
    EXPECT_TRUE(spec == Chart.Spec);
    EXPECT_EQ(Chart.GraphDrawn, -1);
    EXPECT_TRUE(DrewData());
}

TEST_F(ChartInterfaceTest, AManualScaleStands) {
    GraphSpec spec = Begin();
    Pin(spec.AxisY1, 0.2F, 0.77F, 0.19F);
    spec.AxisY1.Decimals = 3;
    PlotLine(spec);
    EXPECT_EQ(spec.AxisY1.Min, 0.2F);
    EXPECT_EQ(spec.AxisY1.Max, 0.77F);
    EXPECT_EQ(spec.AxisY1.TicInterval, 0.19F);
    EXPECT_EQ(spec.AxisY1.Decimals, 3);
    EXPECT_EQ(spec.AxisY2.Min, 0.2F); // which has no scale of its own
    EXPECT_EQ(spec.AxisY2.Max, 0.77F);
}

TEST_F(ChartInterfaceTest, ASecondPlotOfTheSameRecordUsesItsScale) {
    GraphSpec spec = Begin();
    PlotLine(spec);
    spec.AxisY1.ScaleMode = ScaleModes::Manual;
    Plot(spec, Table({{1, 2}}), Table({{-5, 5}}));
    EXPECT_EQ(spec.AxisY1.Min, 0.1F);
    EXPECT_EQ(spec.AxisY1.Max, 0.9F);
}

TEST_F(ChartInterfaceTest, ChecksOfTheSpec) {
    GraphSpec spec = Begin();
    spec.AxisX1.ScaleType = ScaleTypes::Logarithmic;
    spec.AxisX1.LogBase = 0.0F;
    CheckSpec(spec, 1, 1, 1);
    EXPECT_EQ(Chart.GraphStatus, 15);
    EXPECT_EQ(spec.AxisX1.LogBase, 10.0F);
    Pin(spec.AxisY1, 0, 1, 1);
    spec.AxisY1.Factor = 0.0F;
    CheckSpec(spec, 1, 1, 1);
    EXPECT_EQ(Chart.GraphStatus, 20);
    EXPECT_EQ(spec.AxisY1.Factor, 1.0F);
    EXPECT_EQ(spec.AxisY1.ScaleMode, ScaleModes::Manual);
    spec.PlotStyle = 7;
    CheckSpec(spec, 1, 1, 1);
    EXPECT_EQ(Chart.GraphStatus, 30);
    CheckSpec(spec, 1, 3, 2);
    EXPECT_EQ(Chart.GraphStatus, 155);
    CheckSpec(spec, 0, 1, 1);
    EXPECT_EQ(Chart.GraphStatus, 160);
    spec.GraphType = 6;
    CheckSpec(spec, 1, 1, 1);
    EXPECT_EQ(Chart.GraphStatus, 135);
}

TEST_F(ChartInterfaceTest, APieIsNotCheckedButForItsScale) {
    GraphSpec spec = Begin(GraphTypes::Pie);
    spec.AxisY1.ScaleMode = ScaleModes::Prescaled;
    spec.AxisY1.ScaleType = ScaleTypes::Logarithmic;
    spec.AxisY1.LogBase = -1.0F;
    CheckSpec(spec, 1, 1, 1);
    EXPECT_EQ(Chart.GraphStatus, 0);
    EXPECT_EQ(spec.AxisY1.ScaleMode, ScaleModes::Manual);
    EXPECT_EQ(spec.AxisY1.ScaleType, ScaleTypes::Linear);
    EXPECT_EQ(spec.AxisX1.ScaleMode, ScaleModes::Manual);
}

TEST_F(ChartInterfaceTest, AStopLeavesTheFormerGraphUntouched) {
    GraphSpec spec = Begin();
    PlotLine(spec);
    const SetTable y = Chart.DataY;
    const GraphSpec former = Chart.Spec;
    GraphSpec other = Begin();
    const SetTable table(5, 5, 1.0F);
    PlotSets(other, table, table, 5, 3, 2, {}, {}, {});
    EXPECT_EQ(Chart.GraphStatus, 155);
    EXPECT_TRUE(Chart.DataY == y);
    EXPECT_TRUE(Chart.Spec == former);
    EXPECT_EQ(Chart.State.Nsets, 1);
    PlotSets(other, table, table, 0, 1, 2, {}, {}, {});
    EXPECT_EQ(Chart.GraphStatus, 160);
    EXPECT_TRUE(Chart.Spec == former);
}

TEST_F(ChartInterfaceTest, AStopLeavesTheFormerNotesAndMarksUntouched) {
    GraphSpec spec = Begin();
    const SetTable x = Table({{1, 2}});
    GraphNote note;
    note.Text = "former";
    GraphMark mark;
    mark.Kind = 3;
    PlotSets(spec, x, x, 2, 1, 1, {"name"}, {note}, {mark});
    GraphSpec other = Begin();
    Chart.GraphHeld = 0; // nor are the data let go that were to be kept
    PlotSets(other, x, x, 2, 2, 1, {}, {}, {});
    EXPECT_EQ(Chart.GraphStatus, 155);
    EXPECT_EQ(Chart.Notes, std::vector<GraphNote>{note});
    EXPECT_EQ(Chart.Marks, std::vector<GraphMark>{mark});
    EXPECT_EQ(Chart.SetNames[1], "name");
    EXPECT_EQ(Chart.DataY.Points(), 2);
}

TEST_F(ChartInterfaceTest, SetsAreTakenByTheirNumbers) {
    GraphSpec spec = Begin();
    const SetTable x = Table({{1, 2}, {3, 4}, {5, 6}, {7, 8}});
    PlotSets(spec, x, x, 2, 2, 3, {"two", "three"}, {}, {});
    EXPECT_EQ(Chart.State.Nsets, 2);
    EXPECT_EQ(Chart.State.FirstSet, 2);
    EXPECT_EQ(Chart.State.LastSet, 3);
    EXPECT_EQ(Chart.DataX(1, 1), 3.0F);
    EXPECT_EQ(Chart.DataY(2, 2), 6.0F);
    EXPECT_EQ(Chart.SetNames[1], "two");
    EXPECT_EQ(Chart.SetNames[2], "three");
    EXPECT_EQ(Chart.SetFlags.Hi(), 2);
    EXPECT_EQ(Chart.CatLabels.Hi(), 1);
}

TEST_F(ChartInterfaceTest, WhatATableDoesNotHaveIsMissing) {
    GraphSpec spec = Begin();
    const SetTable x = Table({{1, 2}});
    PlotSets(spec, x, x, 4, 1, 3, {"only"}, {}, {});
    EXPECT_EQ(Chart.GraphStatus, 0);
    EXPECT_EQ(Chart.DataX(2, 1), 2.0F);
    EXPECT_EQ(Chart.DataX(3, 1), MissingValue);
    EXPECT_EQ(Chart.DataX(1, 2), MissingValue);
    EXPECT_EQ(Chart.SetNames[3], "");
}

TEST_F(ChartInterfaceTest, CountsBeyondSixteenBitsOverflow) {
    GraphSpec spec = Begin();
    PlotLine(spec);
    const SetTable table(1, 1, 1.0F);
    EXPECT_THROW(PlotSets(spec, table, table, 40000, 1, 1, {}, {}, {}), RuntimeError);
    EXPECT_THROW(PlotSets(spec, table, table, 1, 1, 40000, {}, {}, {}), RuntimeError);
    EXPECT_EQ(Chart.State.Busy, 0);
    EXPECT_EQ(Chart.DataY.Points(), 3);
}

TEST_F(ChartInterfaceTest, AFailureWhileLoadingDoesNotLeaveTheChartBusy) {
    GraphSpec spec = Begin();
    DrawingSurface failing = Screen.Surface();
    failing.Measure = [](const std::string&) -> TextSize { RaiseError("no fonts"); };
    SetScreenSurface(failing);
    EXPECT_THROW(PlotLine(spec), RuntimeError);
    EXPECT_EQ(Chart.State.Busy, 0);
    SetScreenSurface(Screen.Surface());
    PlotLine(spec);
    EXPECT_TRUE(DrewData());
}

TEST_F(ChartInterfaceTest, OneSet) {
    GraphSpec spec = Begin();
    OneBased<float> x(3);
    OneBased<float> y(3);
    for (long i = 1; i <= 3; ++i) {
        x[i] = static_cast<float>(i);
        y[i] = i == 2 ? MissingValue : 1.0F;
    }
    spec.Legend.Show = 1;
    PlotSingle(spec, x, y, 3, {}, {});
    EXPECT_EQ(Chart.State.MultiSet, 0);
    EXPECT_EQ(Chart.State.Nsets, 1);
    EXPECT_EQ(Chart.DataX(3, 1), 3.0F);
    EXPECT_EQ(Chart.DataY(2, 1), MissingValue);
    EXPECT_EQ(Chart.DataY(3, 1), 1.0F);
}

TEST_F(ChartInterfaceTest, WithoutHoldingTheDataGoAfterTheFirstPicture) {
    GraphSpec spec = Begin();
    Chart.GraphHeld = 0;
    PlotLine(spec);
    EXPECT_TRUE(DrewData());
    EXPECT_TRUE(Chart.DataX.Empty());
    Screen.Clear();
    Replot();
    ShowGraph();
    DrawGraph();
    EXPECT_FALSE(DrewData());
}

TEST_F(ChartInterfaceTest, APlotEndsTheZooms) {
    GraphSpec spec = Begin();
    bool told = false;
    Seams.NewGraph = [&] { told = true; };
    PushZoom(1, 2, 3, 4);
    Charts.LastZoom.Enabled = true;
    PlotLine(spec);
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 0);
    EXPECT_FALSE(Charts.LastZoom.Enabled);
    EXPECT_TRUE(told);
}

TEST_F(ChartInterfaceTest, TheStatusLineWentOnTellingOfTheGraphBefore) {
    GraphSpec spec = Begin();
    Charts.StatusLine.Text = "Exactly at 6.1, 0.5";
    PlotLine(spec);
    EXPECT_EQ(Charts.StatusLine.Text, "");
}

TEST_F(ChartInterfaceTest, TenZoomsAreKept) {
    for (int i = 1; i <= 11; ++i)
        PushZoom(static_cast<float>(i), 0, 0, 0);
    Charts.LastZoom.Enabled = true;
    EXPECT_EQ(Charts.Zooms.ZoomDepth, 10);
    float a = 0;
    float b = 0;
    float c = 0;
    float d = 0;
    std::int16_t depth = -1;
    for (int i = 11; i >= 2; --i) {
        EXPECT_TRUE(Charts.LastZoom.Enabled);
        PopZoom(a, b, c, d, depth);
        EXPECT_EQ(a, static_cast<float>(i));
        EXPECT_EQ(depth, i - 2);
    }
    EXPECT_FALSE(Charts.LastZoom.Enabled);
    PopZoom(a, b, c, d, depth);
    EXPECT_EQ(a, 2.0F); // nothing left: as it was
    EXPECT_EQ(depth, 0);
}

// --- menus ---------------------------------------------------------------------------------------------

TEST_F(ChartInterfaceTest, MenusWithoutAGraph) {
    ChartMenuStatus(Charts);
    EXPECT_FALSE(Charts.AltPlot.Enabled);
    EXPECT_FALSE(Charts.DeleteTitles.Enabled);
    EXPECT_FALSE(Charts.SeparateX.Enabled);
    EXPECT_FALSE(Charts.SeparateY.Enabled);
    EXPECT_FALSE(Charts.SeparateBoth.Enabled);
    EXPECT_FALSE(Charts.ShowLegend.Checked);
}

TEST_F(ChartInterfaceTest, MenusByStyleAndSymbols) {
    GraphSpec spec = Begin();
    Plot(spec, Table({{1, 2}, {1, 2}}), Table({{1, 2}, {1, 2}}));
    for (std::int16_t style = 1; style <= 3; ++style)
        for (const std::int16_t mode : {std::int16_t{0}, std::int16_t{1}, std::int16_t{3}}) {
            Chart.Spec.PlotStyle = style;
            Chart.Spec.SymbolMode = mode;
            ChartMenuStatus(Charts);
            EXPECT_EQ(Charts.LinePlot.Checked, style == 1 && mode == 3);
            EXPECT_EQ(Charts.DotCenter.Enabled, !(style == 1 && mode == 3));
            EXPECT_EQ(Charts.DotCenter.Checked, mode == 0);
            EXPECT_EQ(Charts.BothPlot.Checked, style == 1 && mode < 2);
            EXPECT_EQ(Charts.SymbolPlot.Checked, style == 2 && mode < 2);
            EXPECT_EQ(Charts.AltPlot.Checked, style == 3);
            EXPECT_TRUE(Charts.AltPlot.Enabled);
        }
    EXPECT_TRUE(Charts.SeparateX.Enabled && Charts.SeparateY.Enabled && Charts.SeparateBoth.Enabled);
    Chart.GraphHeld = 0;
    ChartMenuStatus(Charts);
    EXPECT_FALSE(Charts.AltPlot.Enabled);
}

TEST_F(ChartInterfaceTest, MenusOfLegendTitlesAndGrids) {
    GraphSpec spec = Begin();
    PlotLine(spec);
    ChartMenuStatus(Charts);
    EXPECT_FALSE(Charts.DeleteTitles.Enabled);
    EXPECT_TRUE(Charts.ShowGrids.Checked);
    EXPECT_FALSE(Charts.SeparateY.Enabled); // one set
    Chart.Spec.Title2.Text = "  text";
    Chart.Spec.Legend.Show = 1;
    Chart.Spec.AxisX1.Grid = 0;
    ChartMenuStatus(Charts);
    EXPECT_TRUE(Charts.DeleteTitles.Enabled);
    EXPECT_TRUE(Charts.ShowLegend.Checked);
    EXPECT_TRUE(Charts.ShowGrids.Checked);
    Chart.Spec.AxisY1.Grid = 0;
    ChartMenuStatus(Charts);
    EXPECT_FALSE(Charts.ShowGrids.Checked);
}

// --- records -------------------------------------------------------------------------------------------

TEST_F(ChartInterfaceTest, FixedTexts) {
    FixedText<5> text = "abcdefg";
    EXPECT_EQ(text.Str(), "abcde");
    text = std::string("ab   ");
    EXPECT_EQ(text.Str(), "ab");
    EXPECT_EQ(text.Padded(), "ab   ");
    EXPECT_TRUE(text == "ab");
    text = "   ";
    EXPECT_TRUE(text.Empty());
    text = "\t";
    EXPECT_FALSE(text.Empty());
}

TEST_F(ChartInterfaceTest, DeviceUnitsRoundAndClamp) {
    EXPECT_EQ(DeviceUnits(2.5), 2);
    EXPECT_EQ(DeviceUnits(3.5), 4);
    EXPECT_EQ(DeviceUnits(-2.5), -2);
    EXPECT_EQ(DeviceUnits(1e9), 32767);
    EXPECT_EQ(DeviceUnits(-INFINITY), -32768);
    EXPECT_EQ(DeviceUnits(std::nan("")), 0);
}

} // namespace
} // namespace Quillon
