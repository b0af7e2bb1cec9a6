// Graphs on paper: the job with its cancel and its failures, and that the graph of the window is what it was.
#include "chart/dialogs/PrintGraph.h"

#include "MetafileReader.h"
#include "PrintGraphCase.h"

namespace Quillon {
namespace {

const std::string Aborting = "' during printing--printer may be off line or out of paper, or this may be due "
                             "to low memory.  Aborting...";

bool Colored(const std::vector<DrawnItem>& items) {
    return std::any_of(items.begin(), items.end(), [](const DrawnItem& item) {
        return item.Kind != "text" && item.Pen.Visible && item.Pen.Color != 0 && item.Pen.Color != 0xFFFFFF;
    });
}

TEST_F(PrintGraphTest, ThePageHoldsTheGraphBetweenTheMarginsAndTheWindowIsAsBefore) {
    const Standing before;
    PrintIt();
    EXPECT_EQ(Printer.Done, (std::vector<std::string>{"begin Quillon graph", "end"}));
    ASSERT_EQ(Printer.Pages.size(), 1U);
    // Margins of an inch, less the border, at 576 units per inch.
    const DeviceRect view = ViewOfPage();
    EXPECT_EQ(view.Left, 432);
    EXPECT_EQ(view.Top, 432);
    EXPECT_EQ(view.Right, 4176);
    EXPECT_EQ(view.Bottom, 5616);
    EXPECT_NE(Printer.TextOfPage(1).find("A title\n"), std::string::npos);
    for (const DrawnItem& item : Printer.Pages[0]) {
        if (item.Kind == "text") {
            EXPECT_TRUE(Within(TextBounds(item), view)) << item.Text;
        }
    }
    EXPECT_EQ(before, Standing());
    EXPECT_EQ(Outside.Forms, (std::vector<std::string>{"show PrintEsc", "hide PrintEsc"}));
    EXPECT_EQ(Outside.ClipboardHolds, ""); // the user's own is left alone
}

TEST_F(PrintGraphTest, OkKeepsTheOptionsAndPrintsNothing) {
    WithOptions([] {
        PrintGrSizeClick(&PrintGrFormRecord::PageHalf);
        PrintGrForm.Length[LeftEdge].Text = "2";
        PrintGrOkButton();
    });
    PrintGraphControl();
    EXPECT_EQ(Printer.Done.size(), 0U);
    EXPECT_EQ(Chart.Style.PageHalf, -1.0F);
    EXPECT_EQ(Chart.Style.PageFull, 0.0F);
    EXPECT_EQ(Chart.Style.LeftMargin, 2.0F);
    const Standing before;
    WithOptions([] {
        PrintGrForm.Length[LeftEdge].Text = "3";
        PrintGrAspectClick(true);
        PrintGrCancelButton();
    });
    PrintGraphControl();
    EXPECT_EQ(before, Standing());
}

TEST_F(PrintGraphTest, BlackAndWhiteIsForOneTimeOnly) {
    WithOptions([] {
        EXPECT_EQ(PrintGrForm.UseBW.Text, "Use &only black and white on color printer");
        PrintGrForm.UseBW.Value = 1;
        PrintGrPrintButton();
    });
    PrintGraphControl();
    EXPECT_FALSE(Colored(Printer.Pages[0]));
    PrintIt();
    EXPECT_TRUE(Colored(Printer.Pages[0]));
    Printer.Now.HasColor = false;
    WithOptions([] {
        EXPECT_EQ(PrintGrForm.UseBW.Text, "Use c&olor on black and white printer");
        PrintGrPrintButton();
    });
    PrintGraphControl();
    EXPECT_FALSE(Colored(Printer.Pages[0]));
}

TEST_F(PrintGraphTest, ColorsAskedForOnceReachNoLaterPictureHoweverTheFormWasLeft) {
    const std::string before = GraphAs("svg");
    const auto ticked = [](void (*then)()) {
        return [then] {
            EXPECT_EQ(PrintGrForm.UseBW.Value, 0);
            PrintGrForm.UseBW.Value = 1;
            then();
        };
    };
    WithOptions(ticked(PrintGrOkButton));
    PrintGraphControl();
    EXPECT_EQ(GraphAs("svg"), before);
    MetafileNoteShown = true;
    WithOptions(ticked(PrintGrOkButton));
    Outside.ExpectFile("Quillon - Save Graph File", ""); // and no file is named
    WriteMeta();
    EXPECT_EQ(GraphAs("svg"), before);
    WithOptions(ticked([] {
        PrintGrSavePicture();
        PrintGrCancelButton();
    }));
    Outside.ExpectFile("Quillon - Save Graph File", "");
    PrintGraphControl();
    EXPECT_EQ(GraphAs("svg"), before);
    PrintIt();
    EXPECT_TRUE(Colored(Printer.Pages[0]));
}

TEST_F(PrintGraphTest, WithoutEjectThePageWaitsForTheNextGraph) {
    WithOptions([] {
        PrintGrForm.EjectPage.Value = 0;
        PrintGrPrintButton();
    });
    PrintGraphControl();
    EXPECT_EQ(Printer.Done, (std::vector<std::string>{"begin Quillon graph"}));
    WithOptions([] {
        EXPECT_EQ(PrintGrForm.EjectPage.Value, 0);
        PrintGrForm.EjectPage.Value = 1;
        PrintGrPrintButton();
    });
    PrintGraphControl();
    EXPECT_EQ(Printer.Done, (std::vector<std::string>{"begin Quillon graph", "end"}));
    const std::string text = Printer.TextOfPage(1);
    EXPECT_NE(text.find("A title\n"), text.rfind("A title\n")) << "both on one page";
}

TEST_F(PrintGraphTest, AHeldPageIsPrintedBeforeAnotherPrinterIsChosen) {
    EjectPage = false;
    PrintGraph(PrintModes::FromMenu);
    WithOptions([] {
        PrintGrPSetup();
        PrintGrCancelButton();
    });
    PrintGraphControl();
    EXPECT_EQ(Printer.Done, (std::vector<std::string>{"begin Quillon graph", "end", "choose"}));
}

TEST_F(PrintGraphTest, AHeldPageThatCannotBeEndedIsToldOnce) {
    EjectPage = false;
    PrintGraph(PrintModes::FromMenu);
    Printer.EndFails = "Disk full";
    Outside.ExpectMessage("Error 'Disk full" + Aborting);
    EndHeldPage();
    EXPECT_EQ(Printer.Done, (std::vector<std::string>{"begin Quillon graph", "abort"}));
    EndHeldPage(); // there is none any more
}

TEST_F(PrintGraphTest, TheModeOfReportsEndsThePageAtOnce) {
    EjectPage = false;
    EXPECT_TRUE(PrintGraph(PrintModes::EndPage));
    EXPECT_EQ(Printer.Done.back(), "end");
}

TEST_F(PrintGraphTest, CancelBeforeAndAfterDrawingAbortsTheJob) {
    for (const int at : {1, 2}) {
        const Standing before;
        Printer.Done.clear();
        int served = 0;
        Outside.DuringEvents = [&] {
            if (++served == at) PrintEscCancelButton();
        };
        PrintIt();
        EXPECT_EQ(Printer.Done, (std::vector<std::string>{"begin Quillon graph", "abort"})) << at;
        EXPECT_EQ(Outside.Forms.back(), "hide PrintEsc");
        EXPECT_EQ(Cancel, 0);
        EXPECT_EQ(before, Standing());
        Outside.DuringEvents = {};
    }
}

TEST_F(PrintGraphTest, ACancelWhileTheGraphIsDrawnEndsTheJob) {
    std::vector<float> many(200); // the flag is looked at every 50 points
    for (std::size_t point = 0; point < many.size(); ++point)
        many[point] = static_cast<float>(point);
    GraphSpec spec = Begin();
    Plot(spec, Table({many}), Table({many}));
    const Standing before;
    int drawing = 0;
    Outside.DuringEvents = [&] {
        if (Chart.Painting != 0 && ++drawing == 1) PrintEscCancelButton();
    };
    EXPECT_FALSE(PrintGraph(PrintModes::FromMenu));
    Outside.DuringEvents = {};
    EXPECT_EQ(drawing, 1) << "it was asked once and went no further";
    EXPECT_EQ(Printer.Done, (std::vector<std::string>{"begin Quillon graph", "abort"}));
    EXPECT_EQ(Cancel, 0);
    EXPECT_EQ(before, Standing());
}

TEST_F(PrintGraphTest, ACancelledSecondGraphTakesTheHeldPageWithIt) {
    EjectPage = false;
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    Outside.DuringEvents = PrintEscCancelButton;
    EXPECT_FALSE(PrintGraph(PrintModes::FromMenu));
    Outside.DuringEvents = {};
    EXPECT_EQ(Printer.Done, (std::vector<std::string>{"begin Quillon graph", "abort"}));
    EjectPage = true;
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    EXPECT_EQ(Printer.Done.back(), "end") << "the next one has a page of its own";
}

TEST_F(PrintGraphTest, APrinterThatFailsIsToldAndNothingHasChanged) {
    const Standing before;
    Printer.BeginFails = "the printer could not be opened";
    Outside.ExpectMessage("Error 'the printer could not be opened" + Aborting);
    EXPECT_FALSE(PrintGraph(PrintModes::FromMenu));
    Printer.BeginFails.clear();
    Printer.EndFails = "Disk full";
    Outside.ExpectMessage("Error 'Disk full" + Aborting);
    EXPECT_FALSE(PrintGraph(PrintModes::FromMenu));
    EXPECT_EQ(Printer.Done.back(), "abort");
    EXPECT_EQ(before, Standing());
    EXPECT_EQ(Cancel, 0);
}

TEST_F(PrintGraphTest, NoFileGivenForAPdfIsNoFailure) {
    Printer.TakesJob = false;
    EXPECT_FALSE(PrintGraph(PrintModes::FromMenu));
    EXPECT_EQ(Outside.Asked.size(), 0U);
}

TEST_F(PrintGraphTest, ACustomSizeIsThatOfTheFrameWhereTheOptionSaysSo) {
    Chart.Style.PageFull = 0.0F;
    Chart.Style.PageCustom = Chart.Style.AxisFrame = -1;
    Chart.Style.CustomWidth = 4.0F;
    Chart.Style.CustomHeight = 3.0F;
    Chart.Style.LeftMargin = Chart.Style.TopMargin = 2.0F;
    const Standing before;
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    const std::vector<DrawnItem> page = Printer.Pages[0];
    int frames = 0; // the background of the frame
    for (const DrawnItem& item : page)
        if (item.Kind == "rectangle" && item.Rect.Left == 1008 && item.Rect.Top == 1008) {
            ++frames;
            EXPECT_EQ(item.Rect.Right, 1008 + 4 * 576);
            EXPECT_EQ(item.Rect.Bottom, 1008 + 3 * 576);
        }
    EXPECT_EQ(frames, 1);
    EXPECT_LT(ViewOfPage().Left, 1008);
    EXPECT_LT(ViewOfPage().Top, 1008);
    EXPECT_EQ(before, Standing());
}

TEST_F(PrintGraphTest, AFrameLargerThanThePaperIsPrintedWithItsLabels) {
    SetSize(100.0F, 100.0F, true);
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    const DeviceRect view = ViewOfPage(), page{0, 0, 8 * 576 - 1, 10 * 576 + 287};
    EXPECT_TRUE(Within(view, page));
    int texts = 0;
    for (const DrawnItem& item : Printer.Pages[0])
        if (item.Kind == "text") {
            ++texts;
            EXPECT_TRUE(Within(TextBounds(item), view)) << item.Text;
        }
    EXPECT_GT(texts, 8);
}

TEST_F(PrintGraphTest, ALegendAtAPlaceOfItsOwnTakesTheSamePartOfThePage) {
    GraphLegend& legend = Chart.Spec.Legend;
    legend.AutoPlace = 0;
    legend.Box.X1 = 500;
    legend.Box.X2 = 700;
    legend.Box.Y1 = 100;
    legend.Box.Y2 = 300;
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    // The view is 432 to 4176 across and 432 to 5616 down; in the window 0 to 799 and 0 to 599.
    const auto across = [](int x) { return static_cast<int>(std::nearbyint(432 + x * 3744.0 / 799)); };
    const auto down = [](int y) { return static_cast<int>(std::nearbyint(432 + y * 5184.0 / 599)); };
    const auto& page = Printer.Pages[0];
    EXPECT_TRUE(std::any_of(page.begin(), page.end(), [&](const DrawnItem& item) {
        return item.Kind == "rectangle" && item.Rect.Left == across(500) && item.Rect.Right == across(700) &&
               item.Rect.Top == down(100) && item.Rect.Bottom == down(300);
    }));
    EXPECT_EQ(legend.Box.X1, 500) << "the window keeps its own";
}

} // namespace
} // namespace Quillon
