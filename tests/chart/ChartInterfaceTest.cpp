// The calling interface: initial records, checks, what comes back, what is held, targets, cancel, menus.
#include "ChartBench.h"
#include "chart/Device.h"

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

// --- targets -------------------------------------------------------------------------------------------

TEST_F(ChartInterfaceTest, WithoutAPictureBoxNothingIsPlotted) {
    GraphSpec spec = Begin();
    PlotLine(spec);
    RemoveScreenSurface();
    Outside.ExpectMessage("No PictureBox set for graphic output, aborting...");
    const SetTable table(2, 1, 7.0F);
    PlotSets(spec, table, table, 2, 1, 1, {}, {}, {});
    EXPECT_EQ(Chart.GraphStatus, 195);
    EXPECT_EQ(Chart.DataY(1, 1), 0.13F);
    Replot();
    EXPECT_EQ(Chart.GraphStatus, 195);
}

TEST_F(ChartInterfaceTest, WithoutPrinterOrFileNothingIsSelected) {
    GraphSpec spec = Begin();
    spec.Device = "1";
    Outside.ExpectMessage("No printer set for graphic output, aborting...");
    SelectTarget(spec);
    EXPECT_EQ(Chart.GraphStatus, 195);
    spec.Device = "graph.emf";
    Outside.ExpectMessage("No metafile set for graphic output, aborting...");
    SelectTarget(spec);
    EXPECT_EQ(Chart.GraphStatus, 195);
    EXPECT_EQ(Chart.Target, Targets::Screen);
}

TEST_F(ChartInterfaceTest, TheViewIsPutRight) {
    GraphSpec spec = Begin();
    const struct {
        GraphBox View;
        DeviceRect Taken;
    } cases[] = {{{0, 0, 0, 0}, {0, 0, 799, 599}},        {{10, 20, 300, 200}, {10, 20, 300, 200}},
                 {{-1, 20, 300, 200}, {0, 20, 799, 200}}, {{10, 20, 801, 200}, {0, 20, 799, 200}},
                 {{10, -5, 300, 200}, {10, 0, 300, 599}}, {{10, 20, 300, 601}, {10, 0, 300, 599}},
                 {{50, 20, 50, 200}, {0, 20, 799, 200}},  {{300, 20, 10, 200}, {0, 20, 799, 200}},
                 {{10, 20, 800, 600}, {10, 20, 799, 599}}};
    for (const auto& c : cases) {
        spec.View = c.View;
        SelectTarget(spec);
        const GraphState& s = Chart.State;
        EXPECT_EQ(s.ViewLeft, c.Taken.Left);
        EXPECT_EQ(s.ViewTop, c.Taken.Top);
        EXPECT_EQ(s.ViewRight, c.Taken.Right);
        EXPECT_EQ(s.ViewBottom, c.Taken.Bottom);
        EXPECT_EQ(s.ViewW, c.Taken.Right - c.Taken.Left);
    }
    EXPECT_EQ(Chart.State.DeviceW, 800);
    EXPECT_EQ(Chart.State.DeviceH, 600);
}

TEST_F(ChartInterfaceTest, TheDiagonalAndTheFontLimits) {
    Screen.Width = 301;
    Screen.Height = 401;
    SelectTarget(Begin());
    EXPECT_EQ(Chart.State.Diagonal, 500);
    EXPECT_FLOAT_EQ(Chart.PixY, 96.0F / 1440.0F);
    EXPECT_FLOAT_EQ(Chart.State.FontMin, 6.0F * 20.0F * 96.0F / 1440.0F / 500.0F);
    EXPECT_FLOAT_EQ(Chart.State.FontMax, 36.0F * 20.0F * 96.0F / 1440.0F / 500.0F);
    EXPECT_EQ(ClampFontSize(0.001F), Chart.State.FontMin);
    EXPECT_EQ(ClampFontSize(1.0F), Chart.State.FontMax);
    EXPECT_EQ(ClampFontSize(0.05F), 0.05F);
}

TEST_F(ChartInterfaceTest, ThePrinterHasItsOwnLimitsColoursAndFonts) {
    RecordingSurface paper;
    paper.Width = 4800;
    paper.Height = 6600;
    paper.DotsPerInchX = paper.DotsPerInchY = 600.0;
    SetPrinterSurface(paper.Surface(), true);
    GraphSpec spec = Begin();
    Chart.Style.PrintColors = {BasicColor(4), BasicColor(1), BasicColor(2)};
    spec.Device = "1";
    SelectTarget(spec);
    EXPECT_EQ(Chart.Target, Targets::Printer);
    EXPECT_EQ(Chart.State.NColors, 3);
    EXPECT_EQ(Chart.Cycles.Color[4], BasicColor(1));
    EXPECT_EQ(Chart.PlotterFonts, -1);
    EXPECT_EQ(Chart.ColorDevice, -1);
    EXPECT_FLOAT_EQ(Chart.State.FontMin * Chart.State.Diagonal, 5.0F * 600.0F / 72.0F);
    SelectFont(3, 0.02F, 0); // Arial prints as Modern on a plotter
    paper.Surface().Text(0, 0, "x");
    EXPECT_EQ(paper.Items.back().Font.Face, "Modern");
    SelectTarget(Begin()); // back on the screen: its own colours
    EXPECT_EQ(Chart.State.NColors, 14);
    EXPECT_EQ(Chart.PlotterFonts, 0);
}

TEST_F(ChartInterfaceTest, ColoursOfPrinters) {
    RecordingSurface paper;
    SetPrinterSurface(paper.Surface());
    GraphSpec spec = Begin();
    spec.Device = "1";
    for (const bool color : {true, false})
        for (const bool option : {false, true}) {
            paper.HasColor = color;
            Chart.UseColorOnBW = option && !color ? -1 : 0;
            Chart.UseOnlyBW = option && color ? -1 : 0;
            SelectTarget(spec);
            EXPECT_EQ(Chart.ColorDevice != 0, color != option);
        }
}

TEST_F(ChartInterfaceTest, AMetafileIsMadeInTheSizeOfThePage) {
    RecordingSurface paper;
    paper.Width = 4800;
    paper.Height = 6600;
    paper.DotsPerInchX = paper.DotsPerInchY = 600.0;
    SetPrinterSurface(paper.Surface());
    RecordingSurface file;
    file.Width = 4800;
    file.Height = 6600;
    MetafileRequest asked;
    DeviceRect window{};
    int closed = 0;
    SetMetafileMaker([&](const MetafileRequest& request) {
        asked = request;
        return MetafileTarget{file.Surface(), [&](const DeviceRect& r) { window = r; }, [&] { ++closed; }};
    });
    GraphSpec spec = Begin();
    spec.Device = "out/graph.emf";
    spec.View = {100, 200, 2100, 1700, 15, {}};
    Cancel = -1; // not heeded on a metafile
    Plot(spec, Table({{1, 2}}), Table({{1, 2}}));
    EXPECT_EQ(Chart.GraphStatus, 0);
    EXPECT_EQ(asked.FileName, "out/graph.emf");
    EXPECT_EQ(asked.Description, std::string("Quillon\0Graph\0\0", 15));
    EXPECT_EQ(asked.DeviceW, 4800);
    EXPECT_EQ(asked.WidthHmm, 20320); // 8 inches
    EXPECT_EQ(asked.HeightHmm, 27940);
    EXPECT_EQ(window.Left, 100);
    EXPECT_EQ(window.Bottom, 1700);
    EXPECT_FALSE(file.OfKind("polyline").empty());
    EXPECT_TRUE(Screen.OfKind("polyline").empty());
    EXPECT_EQ(closed, 0);
    CloseMetafile();
    CloseMetafile();
    EXPECT_EQ(closed, 1);
    DrawGraph(); // the file is finished
    ShowGraph();
}

// --- showing -------------------------------------------------------------------------------------------

TEST_F(ChartInterfaceTest, ABoxWithoutItsOwnPictureIsLeftToItsPaintEvent) {
    GraphSpec spec = Begin();
    Seams.KeepsPicture = 0;
    PlotLine(spec);
    EXPECT_FALSE(DrewData());
    EXPECT_EQ(Chart.GraphDrawn, -1);
    DrawGraph();
    EXPECT_TRUE(DrewData());
    EXPECT_TRUE(Screen.OfKind("refresh").empty());
}

TEST_F(ChartInterfaceTest, PaintingOrder) {
    GraphSpec spec = Begin();
    spec.Title1.Text = "title";
    spec.AxisX1.Title.Text = "x axis";
    spec.AxisY1.Title.Text = "y axis";
    spec.Legend.Show = 1;
    GraphNote note;
    note.Text = "note";
    note.X = 2;
    note.Y = 0.5F;
    GraphMark mark;
    mark.X1 = 1.5F;
    mark.Y1 = 0.3F;
    mark.X2 = 2.5F;
    mark.Y2 = 0.4F;
    const SetTable x = Table({{1, 2}, {1, 2}});
    PlotSets(spec, x, x, 2, 1, 2, {"first", "second"}, {note}, {mark});
    std::vector<std::string> order;
    for (const DrawnItem& item : Screen.Items)
        if (item.Kind == "text" && std::isalpha(item.Text[0]) != 0)
            order.push_back(item.Text);
        else if (item.Kind == "polyline")
            order.push_back("data");
    EXPECT_EQ(order, (std::vector<std::string>{"title", "x axis", "y axis", "data", "data", "first", "second",
                                               "note"}));
    EXPECT_EQ(ItemText(Screen.Items[Screen.Items.size() - 3]).substr(0, 4),
              "line"); // the mark, then note and refresh
    const auto boxes = Screen.OfKind("rectangle");
    ASSERT_EQ(boxes.size(), 5U); // the box wiped at the start and before the picture; view, frame, legend
    EXPECT_EQ(ItemText(boxes[2]), "rectangle 0,0 799,599");
    EXPECT_EQ(boxes[3].Rect.Left, Chart.Spec.Frame.X1);
    EXPECT_FALSE(boxes[3].Pen.Visible);
}

TEST_F(ChartInterfaceTest, ACancelBetweenStepsEndsThePicture) {
    GraphSpec spec = Begin();
    spec.Title1.Text = "title";
    Screen.OnItem = [&](const DrawnItem& item) {
        if (item.Kind == "text" && item.Text == "title") Cancel = -1;
    };
    PlotLine(spec);
    EXPECT_NE(Screen.FindText("title"), nullptr);
    EXPECT_FALSE(DrewData());
    EXPECT_EQ(Chart.GraphDrawn, -1);
    EXPECT_EQ(Cancel, 0);
    Screen.OnItem = nullptr;
    ShowGraph();
    EXPECT_TRUE(DrewData());
}

TEST_F(ChartInterfaceTest, ACancelThatStoodBeforeIsLeftToItsOwner) {
    GraphSpec spec = Begin();
    Cancel = -1;
    PlotLine(spec);
    EXPECT_TRUE(DrewData()); // the window is not blank
    EXPECT_EQ(Cancel, -1);
    Screen.Clear();
    DrawGraph(); // which heeds the flag as it stands
    EXPECT_FALSE(DrewData());
    EXPECT_EQ(Cancel, -1);
    Seams.CancelFlag = nullptr;
    DrawGraph();
    EXPECT_TRUE(DrewData());
}

TEST_F(ChartInterfaceTest, ACancelOnThePrinterAbortsTheJob) {
    RecordingSurface paper;
    SetPrinterSurface(paper.Surface());
    int aborted = 0;
    Seams.AbortPrintJob = [&] { ++aborted; };
    GraphSpec spec = Begin();
    spec.Device = "1";
    PlotLine(spec);
    EXPECT_EQ(aborted, 0);
    Cancel = -1;
    DrawGraph();
    EXPECT_EQ(aborted, 1);
}

TEST_F(ChartInterfaceTest, ADrawRequestWhileDrawingIsIgnored) {
    GraphSpec spec = Begin();
    int inside = 0;
    Screen.OnItem = [&](const DrawnItem& item) {
        if (item.Kind == "line" && ++inside < 5) DrawGraph();
    };
    PlotLine(spec);
    EXPECT_EQ(DataItems("polyline").size(), 1U);
    Screen.OnItem = nullptr;
    Chart.State.Busy = 1;
    Screen.Clear();
    DrawGraph();
    ShowGraph();
    EXPECT_TRUE(Screen.Items.empty());
}

TEST_F(ChartInterfaceTest, ThePointerComesBackWhateverHappens) {
    std::vector<Pointer> pointers;
    Host.SetPointer = [&](Pointer p) { pointers.push_back(p); };
    GraphSpec spec = Begin();
    PlotLine(spec);
    ASSERT_EQ(pointers.size(), 2U);
    EXPECT_EQ(pointers[0], Pointer::Hourglass);
    EXPECT_EQ(pointers[1], Pointer::Standard);
    Screen.OnItem = [](const DrawnItem& item) {
        if (item.Kind == "polyline") RaiseError("surface lost");
    };
    EXPECT_THROW(DrawGraph(), RuntimeError);
    EXPECT_EQ(pointers.back(), Pointer::Standard);
    EXPECT_EQ(Chart.Painting, 0);
}

TEST_F(ChartInterfaceTest, ReplotFollowsTheWindow) {
    GraphSpec spec = Begin();
    PlotLine(spec);
    const GraphBox before = Chart.Spec.Frame;
    Screen.Width = 1200;
    Screen.Height = 900;
    Replot();
    EXPECT_GT(Chart.Spec.Frame.X2, before.X2 + 300);
    EXPECT_GT(Chart.Spec.Frame.Y2, before.Y2 + 200);
    Screen.Width = 800;
    Screen.Height = 600;
    Replot();
    EXPECT_TRUE(Chart.Spec.Frame == before);
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
