// Data and pictures to other programs, and data back.
#include "chart/files/Exchange.h"
#include "ChartBench.h"
#include "chart/files/GraphFile.h"
#include "chart/files/PastedText.h"
#include "chart/hand/ChartMarkers.h"
#include "chart/hand/ChartScale.h"
#include "chart/records/Cycles.h"

namespace Quillon {
namespace {

class ExchangeTest : public ChartBench {
protected:
    void PlotTwo() {
        GraphSpec spec = Begin();
        spec.AxisX1.Title.Text = "Radius";
        spec.Legend.Show = 1;
        spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
        Plot(spec, Table({{1, 2, 3}, {1.5F, 2.5F}}), Table({{0.25F, 0.5F, 0.75F}, {-1e-3F, 6e9F}}));
    }
    static std::string Refusal(const std::string& text) {
        try {
            ReadPastedText(text);
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return "";
    }
    static float Y(const PastedData& data, long point, long set) { return data.Y(point, set); }
};

TEST_F(ExchangeTest, CopyAndPasteGivesTheSameGraph) {
    PlotTwo();
    Screen.Clear();
    ShowGraph();
    const std::vector<std::string> drawn = Screen.Lines();
    const std::string before = GraphFileBytes();
    EditCopyData();
    Chart.DataY(2, 1) = 7.0F;
    Host.ClipboardText = [this] { return Outside.ClipboardHolds; };
    Screen.Clear();
    EditPasteData();
    EXPECT_EQ(Screen.Lines(), drawn);
    EXPECT_EQ(GraphFileBytes(), before);
}

TEST_F(ExchangeTest, EveryDelimiterIsFound) {
    for (const char* text : {"1\t2,5\r\n3\t4\r\n", "1;2,5\n3;4\n", "1,2.5\n3,4", "1 2.5\n  3   4  \n\n"}) {
        const PastedData data = ReadPastedText(text);
        ASSERT_EQ(data.X.Points(), 2) << text;
        EXPECT_EQ(data.X(2, 1), 3.0F) << text;
        EXPECT_EQ(Y(data, 1, 1), 2.5F) << text;
        EXPECT_TRUE(data.Names.empty());
    }
}

TEST_F(ExchangeTest, HeadsGiveNamesAndEmptyFieldsAreMissing) {
    const PastedData data = ReadPastedText("r\tset one\tr\tset two\n1\t2\t\t\n3\t4\t5\t6\n7\t8\n");
    EXPECT_EQ(data.Names, (std::vector<std::string>{"set one", "set two"}));
    EXPECT_EQ(data.X.Points(), 3);
    EXPECT_EQ(data.X(1, 2), MissingValue);
    EXPECT_EQ(Y(data, 2, 2), 6.0F);
    EXPECT_EQ(Y(data, 3, 2), MissingValue);
    const PastedData blanks = ReadPastedText("1 \" \"\n2 3\n"); // as a gap is written between blanks
    EXPECT_EQ(Y(blanks, 1, 1), MissingValue);
}

TEST_F(ExchangeTest, WhatIsNoTableIsRefused) {
    EXPECT_EQ(Refusal("1\t2\t3\n"), OddColumns);
    EXPECT_EQ(Refusal("1\t2\n3\tx\n"), "'x' is no number");
    EXPECT_EQ(Refusal("1\t2\n3\t4\t5\n"), "line 2 of the numbers has a column too many");
    EXPECT_EQ(Refusal("\n \n"), "there are no numbers");
    EXPECT_EQ(Refusal("x\ty\n"), "there are no numbers");
    EXPECT_EQ(Refusal("1\t1e99\n"), "'1e99' is no number");
}

TEST_F(ExchangeTest, AFailedPasteLeavesTheGraph) {
    PlotTwo();
    const std::string before = GraphFileBytes();
    std::string text;
    Host.ClipboardText = [&] { return text; };
    Outside.ExpectMessage("There is no text on the Clipboard.");
    EditPasteData();
    text = "1\t2\t3\n";
    Outside.ExpectMessage(OddColumns);
    EditPasteData();
    text = "1\t2\n3\tfour\n";
    Outside.ExpectMessage("Error during data paste operation, aborting...\n\n'four' is no number");
    EditPasteData();
    EXPECT_EQ(GraphFileBytes(), before);
}

TEST_F(ExchangeTest, APasteIntoAGraphThatIsWaitedForDidNothingAndSaidNothing) {
    PlotTwo();
    const std::string stands = GraphFileBytes();
    Charts.Needed = true;
    Outside.ExpectMessage(
        "The graph in the window is still waited for.  Numbers can be pasted when that has ended.");
    EditPasteData();
    Charts.Needed = false;
    EXPECT_EQ(GraphFileBytes(), stands);
}

TEST_F(ExchangeTest, APasteEndsZoomsMarkersAndOptions) {
    PlotTwo();
    ZoomTo({1.2F, 2.2F, 0.1F, 0.6F});
    OfferSpecialOption(0, "log", [] {});
    Host.ClipboardText = [] { return std::string("1,2,1,3,1,4\n2,3,2,4,2,5\n"); };
    EditPasteData();
    EXPECT_EQ(Chart.State.Nsets, 3);
    EXPECT_EQ(Chart.State.MultiSet, 1);
    EXPECT_FALSE(Charts.LastZoom.Enabled);
    EXPECT_FALSE(Charts.SpecialOpts[0].Enabled);
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 2.0F);
    EXPECT_EQ(Chart.SetNames[1], "a");
}

TEST_F(ExchangeTest, APasteLeavesNoScaleOfAZoomBehind) {
    Host.ClipboardText = [] { return std::string("50,60\n70,80\n"); };
    const auto expectAll = [](const char* after) {
        EXPECT_LE(Chart.Spec.AxisX1.Min, 50.0F) << after;
        EXPECT_GE(Chart.Spec.AxisX1.Max, 70.0F) << after;
        EXPECT_GE(Chart.Spec.AxisY1.Max, 80.0F) << after;
    };
    PlotTwo();
    Charts.RoundOnZoom.Checked = true;
    ZoomTo({1.2F, 2.2F, 0.1F, 0.6F});
    ASSERT_EQ(Chart.Spec.AxisX1.ScaleMode, ScaleModes::Manual);
    EditPasteData();
    expectAll("a rounded zoom");
    PlotTwo();
    ZoomTo({1.2F, 2.2F, 0.1F, 0.6F});
    DoLastZoom();
    ASSERT_EQ(Chart.Spec.AxisX1.ScaleMode, ScaleModes::Manual);
    EditPasteData();
    expectAll("the last zoom taken back");
    GraphSpec spec = Begin();
    Pin(spec.AxisX1, 0, 10, 2);
    Plot(spec, Table({{1, 2}}), Table({{1, 2}}));
    EditPasteData();
    EXPECT_EQ(Chart.Spec.AxisX1.Max, 10.0F) << "a scale that was chosen stays";
}

TEST_F(ExchangeTest, APasteOverAGraphOfLooksShowsTheNewSets) {
    NextLooks.Sets = {{3, 0}, {4, 0}};
    NextLooks.Legend = {{"monomer", {3, 0}}, {"dimer", {4, 0}}};
    PlotTwo();
    std::string text = "1\t2\n3\tx\n";
    Host.ClipboardText = [&] { return text; };
    const std::string before = GraphFileBytes();
    Outside.ExpectMessage("Error during data paste operation, aborting...\n\n'x' is no number");
    EditPasteData();
    EXPECT_EQ(GraphFileBytes(), before);
    Screen.Width = Screen.Height = 12; // nothing has room
    text = "1\t2\n3\t4\n";
    Outside.ExpectMessage("Error during data paste operation, aborting...\n\nthe graph has no room");
    EditPasteData();
    EXPECT_EQ(GraphFileBytes(), before);
    Screen.Width = 800, Screen.Height = 600;
    text = "r\tfirst\tr\tsecond\n1\t2\t1\t3\n2\t3\t2\t4\n";
    Screen.Clear();
    EditPasteData();
    EXPECT_NE(Screen.FindText("second"), nullptr);
    EXPECT_EQ(Screen.FindText("dimer"), nullptr);
    EXPECT_TRUE(Chart.Looks == SetLooks{});
}

TEST_F(ExchangeTest, AWideFirstLineOverManyShortOnesIsNoTableOfGaps) {
    std::string text = "1\t2";
    for (int pair = 1; pair < 2000; ++pair)
        text += "\t1\t2";
    for (int line = 1; line < 20000; ++line)
        text += "\n1\t2";
    EXPECT_EQ(Refusal(text), "there are too many numbers");
}

TEST_F(ExchangeTest, MoreLinesThanAGraphHasPointsAreRefused) {
    PlotTwo();
    const std::string before = GraphFileBytes();
    std::string text;
    for (int line = 0; line < 32768; ++line)
        text += "1\t2\n";
    Host.ClipboardText = [&] { return text; };
    Outside.ExpectMessage(std::string("Error during data paste operation, aborting...\n\n") +
                          ErrorText::Overflow);
    EditPasteData();
    EXPECT_EQ(GraphFileBytes(), before);
}

TEST_F(ExchangeTest, DataAreWrittenWithTheDelimiterInUse) {
    PlotTwo();
    Chart.Style.AsciiDelimiter = 32;
    const std::string path = Outside.Directory() + "/a.dat";
    Outside.ExpectFile("Quillon - Save Graph File", path);
    EditWriteData();
    EXPECT_EQ(ReadWholeFile(path), "1 0.25 1.5 -0.001\r\n2 0.5 2.5 6E+09\r\n3 0.75 \" \" \" \"\r\n");
}

TEST_F(ExchangeTest, CommaSeparatedValuesHaveHeads) {
    PlotTwo();
    Chart.SetNames[1] = "5 \"mM\"";
    EXPECT_EQ(ReadPastedText(DataCsv()).Names, (std::vector<std::string>{"5 \"mM\"", "b"}));
    EXPECT_EQ(ReadPastedText(DataCsv()).Y(3, 2), MissingValue);
    EXPECT_EQ(DataCsv().substr(0, 37), "\"Radius\",\"5 \"\"mM\"\"\",\"Radius\",\"b\"\r\n1,0");
}

TEST_F(ExchangeTest, WhateverStandsInHeadsTheProgramReadsItsOwnNumbers) {
    for (const char* name : {"a;b", "6\" cell", "\"cell\"", "280", "2,5", "x, \"y\";z", "1 mM", "'"})
        for (const char* title : {"Radius", "r; \"cm\"", "", "7", "r\tcm"}) {
            SCOPED_TRACE(std::string(name) + " over " + title);
            PlotTwo();
            Chart.Spec.AxisX1.Title.Text = title;
            Chart.SetNames[2] = name;
            for (const std::string& text : {DataCsv(), DataTextWithHeads()}) {
                const PastedData data = ReadPastedText(text);
                EXPECT_EQ(data.X.Points(), 3);
                ASSERT_EQ(data.Names.size(), 2U);
                EXPECT_EQ(data.Names[1], name);
                EXPECT_TRUE(data.Y == Chart.DataY);
            }
        }
}

TEST_F(ExchangeTest, AFirstLineOfGapsIsAPointAndNoHead) {
    for (const std::string text : {" \t \r\n1\t2\r\n", ",\n1,2\n", "\" \" \" \"\n1 2\n"}) {
        const PastedData data = ReadPastedText(text);
        EXPECT_EQ(data.X.Points(), 2) << text;
        EXPECT_EQ(data.X(1, 1), MissingValue);
        EXPECT_TRUE(data.Names.empty());
    }
    EXPECT_TRUE(ReadPastedText("\"1\",\"2\"\n\"3\",\"4\"\n").Names.empty()); // all in quotes
    EXPECT_EQ(ReadPastedText("\"1\",\"2\"\n\"3\",\"4\"\n").Y(2, 1), 4.0F);
}

TEST_F(ExchangeTest, HeadsTellWhatStandsBelowThemAndNamesComeBackWithoutIt) {
    GraphSpec spec = Begin();
    spec.AxisX1.Title.Text = "Radius";
    Pin(spec.AxisX1, 0, 4, 1);
    spec.AxisX1.Factor = 1000.0F;
    spec.AxisY1.Title.Text = "Signal";
    spec.AxisY1.ScaleType = ScaleTypes::Logarithmic;
    spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    Plot(spec, Table({{1000, 2000}, {1000, 3000}}), Table({{10, 100}, {10, 1000}}));
    ASSERT_EQ(Chart.DataX(2, 1), 2.0F);
    ASSERT_EQ(Chart.DataY(2, 2), 3.0F);
    Chart.SetNames[2] = "";
    const std::string text = DataTextWithHeads();
    EXPECT_EQ(text.substr(0, text.find('\r')), "Radius / 1000\tlog10 (a)\tRadius / 1000\tlog10 (Signal)");
    const SetTable x = Chart.DataX, y = Chart.DataY;
    Host.ClipboardText = [&] { return text; };
    EditPasteData();
    EXPECT_EQ(Chart.SetNames[1], "a");
    EXPECT_TRUE(Chart.DataX == x && Chart.DataY == y);
    GraphAxis natural;
    natural.ScaleType = ScaleTypes::Logarithmic;
    natural.LogBase = NaturalBase;
    EXPECT_EQ(AsStored("Signal", natural, 1.0F), "Ln (Signal)");
    EXPECT_EQ(AsStored("Ln (Signal)", natural, 1.0F), "Ln (Signal)"); // as the form of axes calls it
}

TEST_F(ExchangeTest, ADialogThatIsLeftChangesNothing) {
    PlotTwo();
    const std::string before = GraphFileBytes();
    for (const char* left : {"", "   "}) { // cancelled; a blank name
        for (void (*command)() : {EditWriteData, SaveGraphAs, DoRestoreGraph, DoSaveGraph}) {
            const char* title = command == DoRestoreGraph ? "Quillon - Restore Graph from Disk"
                                : command == DoSaveGraph  ? "Quillon - Save Graph to Disk"
                                                          : "Quillon - Save Graph File";
            Outside.ExpectFile(title, left);
            command();
        }
    }
    EXPECT_EQ(GraphFileBytes(), before);
    EXPECT_EQ(Outside.Asked.size(), 8U);
}

TEST_F(ExchangeTest, AGraphIsSavedAsWhatItsNameEndsWithAndTheScreenStays) {
    PlotTwo();
    const std::string before = GraphFileBytes();
    for (const auto& [name, start] :
         {std::pair{"a.SVG", "<?xml"}, {"a.csv", "\"Radius\""}, {"a.grf", "\x07"}}) {
        const std::string path = Outside.Directory() + "/" + name;
        Outside.ExpectFile("Quillon - Save Graph File", path);
        SaveGraphAs();
        EXPECT_TRUE(ReadWholeFile(path).starts_with(start)) << name;
    }
    EXPECT_EQ(GraphAs("emf").substr(40, 4), " EMF");
    const std::string path = Outside.Directory() + "/a.bmp";
    Outside.ExpectFile("Quillon - Save Graph File", path);
    Outside.ExpectMessage("Error 'no graph is written as 'bmp'' occurred while writing " + path);
    SaveGraphAs();
    EXPECT_EQ(GraphFileBytes(), before);
    EXPECT_EQ(Chart.Target, Targets::Screen);
}

TEST_F(ExchangeTest, ACopiedGraphIsOfferedInAllKindsAtOnce) {
    PlotTwo();
    RecordingSurface paper;
    OpenToolkitPicture = [&paper](const std::string& kind, const PictureRequest&) {
        return PictureFile{paper.Surface(), {}, [kind] { return kind + " bytes"; }};
    };
    const std::vector<std::string> drawn = Screen.Lines();
    CopyGraph();
    OpenToolkitPicture = nullptr;
    EXPECT_NE(Outside.ClipboardKinds.Svg.find("<svg"), std::string::npos);
    // 170 mm in pixels of 1/96 inch, which is how a pasted drawing is measured
    EXPECT_NE(Outside.ClipboardKinds.Svg.find("viewBox=\"0 0 642.56 "), std::string::npos);
    EXPECT_NE(Outside.ClipboardKinds.Svg.find("<g transform=\"scale(0.32) translate(0.5 0.5)\">"),
              std::string::npos);
    EXPECT_EQ(Outside.ClipboardKinds.Emf.substr(40, 4), " EMF"); // the signature of the format
    EXPECT_EQ(Outside.ClipboardKinds.Png, "png bytes");
    EXPECT_EQ(Outside.ClipboardKinds.Text, DataTextWithHeads());
    EXPECT_EQ(Screen.Lines(), drawn);
}

TEST_F(ExchangeTest, TheBitmapIsTheBoxInItsOwnDotsAndColours) {
    PlotTwo();
    PlaceMarkers(1.5F, 2.5F);
    const std::string before = GraphFileBytes();
    const std::vector<std::string> drawn = Screen.Lines();
    RecordingSurface dots;
    OpenToolkitPicture = [&dots](const std::string& kind, const PictureRequest& request) {
        EXPECT_EQ(kind, "png");
        dots.Width = request.Width, dots.Height = request.Height;
        dots.DotsPerInchX = request.DotsPerInchX, dots.DotsPerInchY = request.DotsPerInchY;
        return PictureFile{dots.Surface(), {}, [] { return std::string("dots"); }};
    };
    Chart.Style.ScreenColors[1] = 0x000080; // of the screen alone
    Chart.State.CyclesBuilt = 0;
    CopyBitmap();
    OpenToolkitPicture = nullptr;
    EXPECT_EQ(dots.Width, 800);
    EXPECT_EQ(dots.Height, 600);
    EXPECT_EQ(dots.Texts(), Screen.Texts());
    bool own = false;
    for (const DrawnItem& item : dots.Items)
        own = own || item.Pen.Color == 0x800000U;
    EXPECT_TRUE(own) << "the colours of paper";
    EXPECT_EQ(Outside.ClipboardKinds.Png, "dots");
    EXPECT_EQ(Outside.ClipboardKinds.Svg + Outside.ClipboardKinds.Emf + Outside.ClipboardKinds.Text, "");
    EXPECT_EQ(Screen.Lines(), drawn);
    EXPECT_EQ(Charts.Markers.size(), 2U);
    Chart.Style.ScreenColors[1] = Chart.Style.PrintColors[1];
    BuildCycles();
    EXPECT_EQ(GraphFileBytes(), before);
    Outside.ExpectMessage("Error 'no graph is written as 'png'' occurred while copying the graph");
    CopyBitmap(); // without the toolkit
}

TEST_F(ExchangeTest, NumbersForASpreadsheetComeWithHeadsAndComeBack) {
    PlotTwo();
    Chart.Spec.AxisX1.Title.Text = "Radius";
    Chart.SetNames[1] = "one\ttab";
    EditCopyDataWithHeads();
    const std::string text = Outside.ClipboardHolds;
    EXPECT_EQ(text.substr(0, text.find('\r')), "Radius\tone tab\tRadius\tb");
    const PastedData back = ReadPastedText(text);
    EXPECT_EQ(back.Names, (std::vector<std::string>{"one tab", "b"}));
    EXPECT_TRUE(back.Y == Chart.DataY);
}

TEST_F(ExchangeTest, AClipboardThatCannotBeUsedIsTold) {
    PlotTwo();
    Host.SetClipboard = [](const ClipboardOffer&) { return false; };
    Outside.ExpectMessage("Error 'the clipboard cannot be used' occurred while copying the graph");
    CopyGraph();
    Host.SetClipboardText = [](const std::string&) { return false; };
    Outside.ExpectMessage("Error 'the clipboard cannot be used' occurred while copying the graph");
    EditCopyDataWithHeads();
    Host.SetClipboardText = [](const std::string&) -> bool { throw std::bad_alloc(); };
    Outside.ExpectMessage(
        "There is too much data to convert it to a string for the clipboard (64 Kbytes max).  "
        "Use 'copy to file' instead.  Aborting...");
    EditCopyData();
    Chart.GraphHeld = 0; // every command needs a graph that is held
    EditCopyData();
    CopyGraph();
}

} // namespace
} // namespace Quillon
