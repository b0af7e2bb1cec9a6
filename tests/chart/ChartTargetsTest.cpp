// Targets and showing: views, limits and colours of a target, metafiles, the order of painting, cancels.
#include "ChartBench.h"
#include "chart/pens/Device.h"

namespace Quillon {
namespace {

class ChartTargetsTest : public ChartBench {
protected:
    void PlotLine(GraphSpec& spec) { Plot(spec, Table({{1, 2, 3}}), Table({{0.13F, 0.5F, 0.87F}})); }
    bool DrewData() const { return !DataItems("polyline").empty(); }
};

TEST_F(ChartTargetsTest, WithoutAPictureBoxNothingIsPlotted) {
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

TEST_F(ChartTargetsTest, WithoutPrinterOrFileNothingIsSelected) {
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

TEST_F(ChartTargetsTest, TheViewIsPutRight) {
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

TEST_F(ChartTargetsTest, TheDiagonalAndTheFontLimits) {
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

TEST_F(ChartTargetsTest, ThePrinterHasItsOwnLimitsColoursAndFonts) {
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

TEST_F(ChartTargetsTest, ColoursOfPrinters) {
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

TEST_F(ChartTargetsTest, AMetafileIsMadeInTheSizeOfThePage) {
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

TEST_F(ChartTargetsTest, ABoxWithoutItsOwnPictureIsLeftToItsPaintEvent) {
    GraphSpec spec = Begin();
    Seams.KeepsPicture = 0;
    PlotLine(spec);
    EXPECT_FALSE(DrewData());
    EXPECT_EQ(Chart.GraphDrawn, -1);
    DrawGraph();
    EXPECT_TRUE(DrewData());
    EXPECT_TRUE(Screen.OfKind("refresh").empty());
}

TEST_F(ChartTargetsTest, PaintingOrder) {
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
    mark.Y1 = 1.3F;
    mark.X2 = 2.5F;
    mark.Y2 = 1.4F;
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

TEST_F(ChartTargetsTest, ACancelBetweenStepsEndsThePicture) {
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

TEST_F(ChartTargetsTest, ACancelThatStoodBeforeIsLeftToItsOwner) {
    GraphSpec spec = Begin();
    Cancel = -1;
    PlotLine(spec);
    EXPECT_TRUE(DrewData()); // the window is not blank
    EXPECT_EQ(Cancel, -1);
    Screen.Clear();
    DrawGraph(); // which heeds the flag as it stands
    EXPECT_FALSE(DrewData());
    EXPECT_EQ(Cancel, -1);
    LeaveCancelAside();
    DrawGraph();
    EXPECT_TRUE(DrewData());
}

TEST_F(ChartTargetsTest, ACancelOnThePrinterAbortsTheJob) {
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

TEST_F(ChartTargetsTest, ADrawRequestWhileDrawingIsIgnored) {
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

TEST_F(ChartTargetsTest, ThePointerComesBackWhateverHappens) {
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

TEST_F(ChartTargetsTest, ReplotFollowsTheWindow) {
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

} // namespace
} // namespace Quillon
