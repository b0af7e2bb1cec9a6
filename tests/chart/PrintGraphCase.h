#pragma once
// A graph of two sets in the window, and a printer of letter paper with a border of a quarter of an inch.

#include "ChartBench.h"
#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGrForm.h"
#include "chart/dialogs/PrintGraph.h"
#include "chart/files/Exchange.h"
#include "chart/files/GraphFile.h"
#include "platform/Narrow.h"
#include "tests/support/ScriptedPrinter.h"

namespace Quillon {

class PrintGraphTest : public ChartBench {
protected:
    PrintGraphTest() {
        Printer.Now.Page.Width = 8.5;
        Printer.Now.Page.Height = 11.0;
        Printer.Now.Page.Border = EvenEdges(0.25);
        GraphSpec spec = Begin();
        spec.Title1.Text = "A title";
        spec.AxisX1.Title.Text = "x";
        spec.AxisY1.Title.Text = "y";
        spec.Legend.Show = 1;
        Plot(spec, Table({{1, 2, 3}, {1, 2, 3}}), Table({{1, 4, 2}, {2, 3, 5}}));
        EjectPage = true;
    }
    ~PrintGraphTest() override {
        EndHeldPage();
        EjectPage = true;
    }

    // Everything of the graph that a file keeps, and what it does not.
    struct Standing {
        std::string File = GraphFileBytes();
        GraphSpec Spec = Chart.Spec;
        GraphState State = Chart.State;
        ChartStyle Style = Chart.Style;
        std::int16_t Held = Chart.GraphHeld, Drawn = Chart.GraphDrawn, Target = Chart.Target;
        double XScale = Chart.XScale, YOffset = Chart.YOffset;
        bool HasPrinter = Seams.HasPrinter;
        bool operator==(const Standing&) const = default;
    };

    // The options as the user leaves them.
    void WithOptions(const std::function<void()>& during) { Outside.ExpectModal(PrintGrFormName, during); }
    void PrintIt() {
        WithOptions([] { PrintGrPrintButton(); });
        PrintGraphControl();
    }
    DeviceRect ViewOfPage() const { // what is painted first is the background of the view
        const std::vector<DrawnItem>& items = Printer.Pages.at(0);
        return items.at(0).Rect;
    }
    // The size of a graph, or that of its axes' frame, in inches.
    static void SetSize(float width, float height, bool frame) {
        Chart.Style.PageFull = Chart.Style.PageHalf = 0.0F;
        Chart.Style.PageCustom = -1;
        Chart.Style.AxisFrame = Flag(frame);
        Chart.Style.CustomWidth = width;
        Chart.Style.CustomHeight = height;
    }

    // The picture of an ending that the toolkit makes, recorded: text has there the widths that it has on the
    // page, where files have those of the base fonts.
    std::vector<DrawnItem> RecordedPicture() {
        RecordingSurface sheet;
        OpenToolkitPicture = [&](const std::string&, const PictureRequest& request) {
            sheet.Width = request.Width;
            sheet.Height = request.Height;
            sheet.DotsPerInchX = sheet.DotsPerInchY = request.DotsPerInchX;
            return PictureFile{sheet.Surface(), [](const DeviceRect&) {}, [] { return std::string("x"); }};
        };
        EXPECT_EQ(PictureOnPaper("pdf"), "x");
        OpenToolkitPicture = {};
        return sheet.Items;
    }
    ScriptedPrinter Printer;
};

} // namespace Quillon
