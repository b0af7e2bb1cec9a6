// Graphs on paper: the dialog, the job with its cancel and its failures, and that the graph of the window is
// what it was.
#include "chart/dialogs/PrintGraph.h"

#include "ChartBench.h"
#include "MetafileReader.h"
#include "chart/dialogs/PrintEsc.h"
#include "chart/dialogs/PrintGrForm.h"
#include "chart/files/GraphFile.h"
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
    ScriptedPrinter Printer;
};

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
    const auto colored = [](const DrawnItem& item) {
        return item.Kind != "text" && item.Pen.Visible && item.Pen.Color != 0 && item.Pen.Color != 0xFFFFFF;
    };
    EXPECT_EQ(std::count_if(Printer.Pages[0].begin(), Printer.Pages[0].end(), colored), 0);
    PrintIt();
    EXPECT_GT(std::count_if(Printer.Pages[0].begin(), Printer.Pages[0].end(), colored), 0);
    Printer.Now.HasColor = false;
    WithOptions([] {
        EXPECT_EQ(PrintGrForm.UseBW.Text, "Use c&olor on black and white printer");
        PrintGrPrintButton();
    });
    PrintGraphControl();
    EXPECT_EQ(std::count_if(Printer.Pages[0].begin(), Printer.Pages[0].end(), colored), 0);
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
    PrintGrForm.Length[GraphWidth].Text = "0";
    Outside.ExpectMessage("A size must be greater than zero.");
    PrintGrOkButton();
    EXPECT_TRUE(PrintGrForm.State.Shown);
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
        "that printer.");
    PrintGrPSetup();
    Printer.DialogFails.clear();
    Printer.DuringDialog = [&] { Printer.Now.HasColor = false; };
    PrintGrPSetup();
    EXPECT_EQ(PrintGrForm.UseBW.Text, "Use c&olor on black and white printer");
}

// --- metafiles and other pictures
// ----------------------------------------------------------------------------

TEST_F(PrintGraphTest, AMetafileIsAsLargeAsTheGraphOnPaper) {
    Chart.Style.PageFull = 0.0F;
    Chart.Style.PageCustom = -1;
    Chart.Style.CustomWidth = 4.0F;
    Chart.Style.CustomHeight = 3.0F;
    const Standing before;
    const EmfFile emf = ReadMetafile(PictureOnPaper("emf"));
    EXPECT_EQ(emf.Problem, "");
    constexpr std::size_t Frame = 24; // of the header: left, top, right, bottom in hundredths of a millimetre
    const EmfRecord& head = emf.Records.at(0);
    EXPECT_NEAR((head.Signed(Frame + 8) - head.Signed(Frame)) / 2540.0, 4.0, 0.01);
    EXPECT_NEAR((head.Signed(Frame + 12) - head.Signed(Frame + 4)) / 2540.0, 3.0, 0.01);
    EXPECT_EQ(before, Standing());
    EXPECT_EQ(Printer.Done.size(), 0U);
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
    Chart.UseColorOnBW = -1;
    const auto colored = [](const std::string& bytes) {
        const std::vector<EmfItem> items = PlayMetafile(ReadMetafile(bytes));
        return std::any_of(items.begin(), items.end(), [](const EmfItem& item) {
            return item.PenVisible && item.PenColor != 0 && item.PenColor != 0xFFFFFF;
        });
    };
    EXPECT_TRUE(colored(PictureOnPaper("emf")));
    EXPECT_FALSE(colored(PictureOnPaper("emf")));
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

} // namespace
} // namespace Quillon
