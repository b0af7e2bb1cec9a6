// The dialog of graphs on paper: lengths, margins and what it takes over.
#include "PrintGraphCase.h"

namespace Quillon {
namespace {

const std::string BorderNote = "You are trying to move the margin into a non-printable area on your printer.";

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

} // namespace
} // namespace Quillon
