// Graphs on paper: the dialog, the job with its cancel and its failures, and that the graph of the window is
// what it was.
#include "chart/dialogs/PrintGraph.h"

#include "ChartBench.h"
#include "MetafileReader.h"
#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGrForm.h"
#include "chart/files/Exchange.h"
#include "chart/files/GraphFile.h"
#include "platform/Narrow.h"
#include "tests/support/ScriptedPrinter.h"

namespace Quillon {
namespace {

const std::string Aborting = "' during printing--printer may be off line or out of paper, or this may be due "
                             "to low memory.  Aborting...";
const std::string BorderNote = "You are trying to move the margin into a non-printable area on your printer.";

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

// What an item shows and where, without its pen: printers and files have their own thinnest one.
std::vector<std::string> Shown(const std::vector<DrawnItem>& items) {
    std::vector<std::string> lines;
    for (const DrawnItem& item : items)
        lines.push_back(ItemText(item));
    return lines;
}

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

// --- the dialog
// ----------------------------------------------------------------------------------------------

TEST_F(PrintGraphTest, UnitsMultiplyAllLengths) {
    LoadPrintGrForm(false);
    EXPECT_EQ(PrintGrForm.State.Caption, "Graph Printing Options");
    EXPECT_EQ(PrintGrForm.MarginFrame.Text, "Margins (inches)");
    EXPECT_EQ(PrintGrForm.CustomFrame.Text, "Custom Size (inches)");
    EXPECT_EQ(PrintGrForm.Length[LeftEdge].Text, "1.000");
    EXPECT_EQ(PrintGrForm.Length[GraphWidth].Text, "3.000");
    PrintGrUnitsClick(true);
    EXPECT_EQ(PrintGrForm.MarginFrame.Text, "Margins (cm)");
    EXPECT_EQ(PrintGrForm.CustomFrame.Text, "Custom Size (cm)");
    EXPECT_EQ(PrintGrForm.Length[BottomEdge].Text, "2.540");
    EXPECT_EQ(PrintGrForm.Length[GraphHeight].Text, "7.620");
    PrintGrUnitsClick(true); // chosen already
    EXPECT_EQ(PrintGrForm.Length[BottomEdge].Text, "2.540");
    PrintGrUnitsClick(false);
    EXPECT_EQ(PrintGrForm.Lengths[BottomEdge], 1.0F);
}

TEST_F(PrintGraphTest, AMarginBelowTheBorderOfThePrinterIsRaisedToIt) {
    LoadPrintGrForm(false);
    PrintGrForm.Length[TopEdge].Text = "0.1";
    Outside.ExpectMessage(BorderNote);
    PrintGrLengthLostFocus(TopEdge);
    EXPECT_EQ(PrintGrForm.Length[TopEdge].Text, "0.250");
    EXPECT_EQ(PrintGrForm.State.FocusOn, &PrintGrForm.Length[TopEdge]);
    PrintGrLengthLostFocus(TopEdge); // told once
    PrintGrUnitsClick(true);
    PrintGrForm.Length[TopEdge].Text = "0.634";
    Outside.ExpectMessage(BorderNote);
    PrintGrPrintButton();
    EXPECT_TRUE(PrintGrForm.State.Shown) << "a refused length keeps the form open";
    EXPECT_EQ(PrintGrForm.Length[TopEdge].Text, "0.635");
    PrintGrPrintButton();
    EXPECT_FALSE(PrintGrForm.State.Shown);
    EXPECT_EQ(Chart.Style.TopMargin, 0.635F);
    EXPECT_EQ(Chart.Style.MetricUnits, -1);
}

TEST_F(PrintGraphTest, MarginsThatMeetAndSizesOfNothingAreRefused) {
    LoadPrintGrForm(false);
    PrintGrForm.Length[LeftEdge].Text = "8";
    Outside.ExpectMessage("The margins leave no room for the graph on this paper.");
    PrintGrOkButton();
    EXPECT_TRUE(PrintGrForm.State.Shown);
    EXPECT_EQ(Chart.Style.LeftMargin, 1.0F);
    PrintGrForm.Length[LeftEdge].Text = "1";
    PrintGrSizeClick(&PrintGrFormRecord::PageCustom);
    PrintGrForm.Length[GraphWidth].Text = "0";
    Outside.ExpectMessage("A size must be greater than zero.");
    PrintGrOkButton();
    EXPECT_TRUE(PrintGrForm.State.Shown);
}

TEST_F(PrintGraphTest, ASizeOfNothingThatIsNotInUseStoodInTheWayOfEveryPage) {
    Chart.Style.CustomWidth = Chart.Style.CustomHeight = 0.0F; // as chart.ini and graph files may have it
    LoadPrintGrForm(false);
    PrintGrOkButton();
    EXPECT_FALSE(PrintGrForm.State.Shown);
    EXPECT_EQ(Chart.Style.CustomWidth, 0.0F);
}

TEST_F(PrintGraphTest, TheOptionsComeFromTheStyleAndGoBackToIt) {
    Chart.Style.LineWidthFixed = 0;
    Chart.Style.LineWidthIncrease = -1;
    Chart.Style.KeepAspect = -1;
    Chart.Style.DashedLines = 0;
    LoadPrintGrForm(false);
    EXPECT_EQ(PrintGrForm.VaryWidth.Value, 1);
    EXPECT_EQ(PrintGrForm.StartMin.Value, -1);
    EXPECT_EQ(PrintGrForm.FixAspect.Text, "&Preserve From Screen");
    EXPECT_EQ(PrintGrForm.FixAspect.Value, -1);
    EXPECT_EQ(PrintGrForm.ChangeAspect.Text, "Change to &Match");
    EXPECT_EQ(PrintGrForm.EjectPage.Text, "E&ject Page");
    EXPECT_FALSE(PrintGrForm.Length[GraphWidth].Enabled);
    PrintGrSizeClick(&PrintGrFormRecord::PageCustom);
    EXPECT_TRUE(PrintGrForm.Length[GraphWidth].Enabled);
    PrintGrForm.VaryWidth.Value = 0;
    PrintGrVaryWidthClick();
    EXPECT_FALSE(PrintGrForm.StartMin.Enabled);
    PrintGrStartClick(false);
    PrintGrAspectClick(false);
    PrintGrForm.DashedLines.Value = 1;
    Outside.ExpectMessage(
        "In this mode the top and left margins specify the position of the axis frame (the data area of the "
        "graph) from the top left corner of the page.  Any graph titles or y-axis titles and tic labels will "
        "be closer to the page edge than these settings, so you may need to increase the margins to avoid "
        "putting these into non-printable areas.");
    PrintGrCustAxesClick();
    PrintGrOkButton();
    EXPECT_EQ(Chart.Style.PageCustom, -1);
    EXPECT_EQ(Chart.Style.PageFull, 0.0F);
    EXPECT_EQ(Chart.Style.AxisFrame, -1);
    EXPECT_EQ(Chart.Style.LineWidthFixed, -1);
    EXPECT_EQ(Chart.Style.LineWidthIncrease, 0);
    EXPECT_EQ(Chart.Style.KeepAspect, 0);
    EXPECT_EQ(Chart.Style.DashedLines, -1);
}

TEST_F(PrintGraphTest, APrinterDialogThatFailsIsTold) {
    LoadPrintGrForm(false);
    Printer.DialogFails = "no driver";
    Outside.ExpectMessage(
        "Error during printer setup. The driver for the selected printer may be incompatible with the "
        "runtime layer (a platform problem) and this prevents this printer from being selected here. Use "
        "Control Panel to change the default printer to the one you want and then printing should work with "
        "that printer.\n\nThe dialog ended with 'no driver'.");
    PrintGrPSetup();
    Printer.DialogFails.clear();
    PrintGrForm.UseBW.Value = 1;
    PrintGrPSetup();
    EXPECT_EQ(PrintGrForm.UseBW.Value, 1);
    Printer.DuringDialog = [&] { Printer.Now.HasColor = false; };
    PrintGrPSetup();
    EXPECT_EQ(PrintGrForm.UseBW.Text, "Use c&olor on black and white printer");
    EXPECT_EQ(PrintGrForm.UseBW.Value, 0) << "the tick was for the opposite";
}

// --- metafiles and other pictures
// ----------------------------------------------------------------------------

// The size that a metafile tells, in inches.
std::pair<double, double> SizeOf(const std::string& metafile) {
    const EmfFile emf = ReadMetafile(metafile);
    EXPECT_EQ(emf.Problem, "");
    constexpr std::size_t Frame = 24; // of the header: left, top, right, bottom in hundredths of a millimetre
    const EmfRecord& head = emf.Records.at(0);
    return {(head.Signed(Frame + 8) - head.Signed(Frame)) / 2540.0,
            (head.Signed(Frame + 12) - head.Signed(Frame + 4)) / 2540.0};
}

TEST_F(PrintGraphTest, AMetafileIsAsLargeAsTheGraphOnPaper) {
    const Standing before;
    const auto expect = [](double width, double height) {
        const auto [wide, high] = SizeOf(PictureOnPaper("emf"));
        EXPECT_NEAR(wide, width, 0.01);
        EXPECT_NEAR(high, height, 0.01);
    };
    expect(6.5, 9.0); // the full page, less margins of an inch
    Chart.Style.PageFull = 0.0F;
    Chart.Style.PageHalf = -1.0F;
    expect(6.5, 5.5 - 1.0); // the upper half
    std::swap(Printer.Now.Page.Width, Printer.Now.Page.Height);
    expect(5.5 - 1.0, 6.5); // the left one
    std::swap(Printer.Now.Page.Width, Printer.Now.Page.Height);
    SetSize(4.0F, 3.0F, false);
    expect(4.0, 3.0);
    SetSize(3.0F, 2.0F, true); // what is around the frame comes to that
    EXPECT_TRUE(PrintGraph(PrintModes::FromMenu));
    const DeviceRect view = ViewOfPage();
    expect((view.Right - view.Left) / 576.0, (view.Bottom - view.Top) / 576.0);
    EXPECT_GT(view.Right - view.Left, 3 * 576);
    Chart.Style = before.Style;
    EXPECT_EQ(before, Standing());
}

TEST_F(PrintGraphTest, APictureOnPaperShowsWhatIsPrintedPlaceByPlace) {
    Printer.Now.Page.Border = EvenEdges(0.5);
    const auto same = [this](const char* what) {
        EXPECT_TRUE(PrintGraph(PrintModes::FromMenu)) << what;
        EXPECT_EQ(Shown(RecordedPicture()), Shown(Printer.Pages[0])) << what;
    };
    same("full page");
    Chart.Style.LeftMargin = Chart.Style.TopMargin = Chart.Style.RightMargin = Chart.Style.BottomMargin =
        0.1F;
    same("margins below the border");
    EXPECT_EQ(ViewOfPage().Right, 7.5 * 576 - 1) << "to the end of what can be printed on";
    Chart.Style.KeepAspect = -1;
    same("the ratio of the window");
    Chart.Style.KeepAspect = 0;
    Chart.Spec.Title2.Text = "below it";
    Chart.Style.LeftMargin = Chart.Style.TopMargin = 2.0F;
    SetSize(4.0F, 3.0F, true);
    same("the axis frame, with titles in a space that is larger than they are");
}

TEST_F(PrintGraphTest, APaperInPixelsIsRoundedToTheNearest) {
    Printer.Now.Page.Width = 8.269; // 2480.7 dots
    Printer.Now.Page.Height = 11.692;
    Printer.Now.Page.Border = {};
    RecordingSurface sheet;
    PictureRequest asked;
    OpenToolkitPicture = [&](const std::string&, const PictureRequest& request) {
        asked = request;
        sheet.Width = request.Width;
        sheet.Height = request.Height;
        sheet.DotsPerInchX = sheet.DotsPerInchY = request.DotsPerInchX;
        return PictureFile{sheet.Surface(), [](const DeviceRect&) {}, [] { return std::string(); }};
    };
    PictureOnPaper("png");
    OpenToolkitPicture = {};
    EXPECT_EQ(asked.Width, 2481);
    EXPECT_EQ(asked.Height, 3508);
}

TEST_F(PrintGraphTest, TheMetafileCommandsAskForItsPropertiesAndTellOnceWhatTheyMean) {
    MetafileNoteShown = false;
    const std::string path = Outside.Directory() + "/g.emf";
    Outside.ExpectMessage(
        "Metafiles are formatted as though they were being printed, and thus will not use color unless you "
        "have selected a color printer or check the 'Use color on black and white printer' option.  The "
        "metafile will have a 'suggested size' corresponding to the printed size settings.  After importing "
        "it into other programs, the metafile may be rescaled in both height and width without loss of "
        "resolution, but it is best to create it using, at least, the desired height/width ratio.  The graph "
        "margin areas are not included in the metafile; thus the margin settings are relevant only because "
        "for 'Full Page' and 'Half Page' modes they play a role in determining the 'size'.");
    WithOptions([] {
        EXPECT_EQ(PrintGrForm.State.Caption, "Set Properties for MetaFile");
        EXPECT_FALSE(PrintGrForm.PrintButton.Visible);
        PrintGrSizeClick(&PrintGrFormRecord::PageCustom);
        PrintGrOkButton();
    });
    Outside.ExpectFile("Quillon - Save Graph File", path);
    WriteMeta();
    WithOptions([] { PrintGrOkButton(); }); // the note has been read
    CopyMeta();
    EXPECT_EQ(ReadWholeFile(path), Outside.ClipboardKinds.Emf);
    EXPECT_TRUE(Outside.ClipboardKinds.Svg.empty() && Outside.ClipboardKinds.Text.empty());
    WithOptions([] { PrintGrCancelButton(); });
    WriteMeta();
    WithOptions([] { PrintGrCancelButton(); });
    CopyMeta();
    EXPECT_EQ(Printer.Done.size(), 0U);
}

TEST_F(PrintGraphTest, AMetafileHasTheColorsOfThePrinterOrThoseAskedForOnce) {
    Printer.Now.HasColor = false;
    MetafileNoteShown = true;
    const auto colored = [&](std::int16_t box) {
        WithOptions([box] {
            PrintGrForm.UseBW.Value = box;
            PrintGrOkButton();
        });
        CopyMeta();
        const std::vector<EmfItem> items = PlayMetafile(ReadMetafile(Outside.ClipboardKinds.Emf));
        return std::any_of(items.begin(), items.end(), [](const EmfItem& item) {
            return item.PenVisible && item.PenColor != 0 && item.PenColor != 0xFFFFFF;
        });
    };
    EXPECT_FALSE(colored(0));
    EXPECT_TRUE(colored(1));
    EXPECT_FALSE(colored(0));
}

TEST_F(PrintGraphTest, PicturesOfTheSizeOnPaperAreSavedFromTheDialog) {
    Chart.Style.MetricUnits = -1;
    Chart.Style.PageFull = 0.0F;
    Chart.Style.PageCustom = -1;
    Chart.Style.CustomWidth = 8.5F; // 85 mm
    Chart.Style.CustomHeight = 6.0F;
    const std::string path = Outside.Directory() + "/column.svg";
    LoadPrintGrForm(false);
    Outside.ExpectFile("Quillon - Save Graph File", path);
    PrintGrSavePicture();
    EXPECT_TRUE(PrintGrForm.State.Shown);
    const std::string svg = ReadWholeFile(path);
    const std::size_t at = svg.find("width=\"");
    ASSERT_NE(at, std::string::npos);
    EXPECT_NEAR(std::stod(svg.substr(at + 7)) / 72.0 * 25.4, 85.0, 0.1);
    Outside.ExpectFile("Quillon - Save Graph File", Outside.Directory() + "/column.xyz");
    Outside.ExpectMessage("Error 'no graph is written as 'xyz'' occurred while writing " +
                          Outside.Directory() + "/column.xyz");
    PrintGrSavePicture();
}

TEST_F(PrintGraphTest, APictureSavedFromTheDialogTakesNothingOverUntilTheFormIsLeftSo) {
    const Standing before;
    const std::string path = Outside.Directory() + "/half.svg";
    WithOptions([&] {
        PrintGrSizeClick(&PrintGrFormRecord::PageHalf);
        PrintGrForm.Length[LeftEdge].Text = "2";
        PrintGrForm.EjectPage.Value = 0;
        Outside.ExpectFile("Quillon - Save Graph File", path);
        PrintGrSavePicture();
        PrintGrCancelButton();
    });
    PrintGraphControl();
    EXPECT_EQ(before, Standing());
    EXPECT_TRUE(EjectPage);
    const std::string svg = ReadWholeFile(path);
    EXPECT_NEAR(std::stod(svg.substr(svg.find("width=\"") + 7)) / 72.0, 8.5 - 2.0 - 1.0, 0.01);
}

} // namespace
} // namespace Quillon
