// Graph files: against files that are made here by hand, field by field, and against themselves.
#include "../fuzz/GraphFileFuzz.cpp" // the entry that a fuzzer uses
#include "GraphFileCase.h"
#include "chart/files/Exchange.h"
#include "chart/hand/ChartMarkers.h"
#include "chart/hand/ChartScale.h"
#include "chart/pens/Pens.h"
#include "platform/LittleEndian.h"

#include <cstdlib>
#include <random>

namespace Quillon {
namespace {

TEST_F(GraphFileTest, EveryFieldStandsAtItsPlace) {
    PlotRich();
    const std::string bytes = GraphFileBytes();
    const auto word = [&](std::size_t at) { return NumberAt<std::int16_t>(bytes, at); };
    const auto single = [&](std::size_t at) { return NumberAt<float>(bytes, at); };
    EXPECT_EQ(bytes.substr(0, 15), std::string("\x07\0QUILLON\x04\0001.50", 15));
    EXPECT_EQ(word(15), -1);       // GraphHeld
    EXPECT_EQ(single(19), 1.0F);   // left margin
    EXPECT_EQ(single(39), 3.0F);   // custom height: behind two words
    EXPECT_EQ(single(47), -1.0F);  // the full page
    EXPECT_EQ(single(65), 0.007F); // SymbolSize, behind five words
    EXPECT_EQ(single(69), 0.007F); // TicSize
    const std::size_t target = 69 + 44 + 16;
    EXPECT_EQ(word(target), 1);       // the screen
    EXPECT_EQ(word(target + 10), 36); // ScreenMaxFont
    const std::size_t state = target + 18 + 2;
    EXPECT_EQ(word(state + 10), 800); // DeviceW
    EXPECT_EQ(word(state + 10 + 30), 3);
    EXPECT_EQ(word(state + 10 + 32), 2); // Nsets
    const std::size_t spec = state + 84;
    EXPECT_EQ(word(spec), 4);
    EXPECT_EQ(bytes.substr(spec + 8 + 32, 8), "A graph ");
    EXPECT_EQ(bytes.substr(spec + 8 + 32 + 180 + 6, 7), "Radius ");
    EXPECT_EQ(bytes.substr(spec + 1064 - 80, 2), "0 ");
    const std::size_t data = spec + 1064 + 60 + 16;
    EXPECT_EQ(single(data), 1.0F);
    EXPECT_EQ(single(data + 12), 1.5F); // the first point of the second set
    EXPECT_EQ(single(data + 20), MissingValue);
    EXPECT_EQ(single(data + 24 + 4), 0.52F);
    EXPECT_EQ(word(data + 48), 13);
    EXPECT_EQ(word(data + 48 + 4 + 8 * 14), 69);
}

TEST_F(GraphFileTest, SavedRestoredAndSavedAgainIsTheSameFileAndTheSamePicture) {
    PlotRich();
    const std::vector<std::string> before = Painted();
    const std::string saved = GraphFileBytes();
    GraphSpec other = Begin();
    Plot(other, Table({{5, 6}}), Table({{7, 9}}));
    ASSERT_NE(Painted(), before);
    AdoptGraph(saved);
    EXPECT_EQ(Painted(), before);
    EXPECT_EQ(GraphFileBytes(), saved);
}

TEST_F(GraphFileTest, AZoomAndTheGradientComeBack) {
    PlotRich();
    ToggleRainbow();
    ZoomTo({1.2F, 2.2F, 0.2F, 0.5F});
    const std::vector<std::string> before = Painted();
    const std::string saved = GraphFileBytes();
    GraphSpec other = Begin();
    Plot(other, Table({{5, 6}}), Table({{7, 9}}));
    Chart.Style.UseRainbowColors = 0;
    AdoptGraph(saved);
    EXPECT_EQ(Painted(), before);
    EXPECT_EQ(GraphFileBytes(), saved);
}

TEST_F(GraphFileTest, APrescaledGraphWithAManualScaleIsNotDividedAgain) {
    GraphSpec spec = Begin();
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Prescaled;
    spec.AxisX1.Max = spec.AxisY1.Max = 1; // without a range they would be autoranged
    Plot(spec, Table({{1000, 5000, 9000}}), Table({{1, 2, 3}}));
    ASSERT_EQ(Chart.Spec.AxisX1.Factor, 1000.0F);
    ZoomTo({2, 8, 1, 3});
    DoLastZoom();
    ASSERT_EQ(Chart.Spec.AxisX1.ScaleMode, ScaleModes::Manual);
    const std::vector<std::string> before = Painted();
    const std::string saved = GraphFileBytes();
    AdoptGraph(saved);
    EXPECT_EQ(Painted(), before);
    EXPECT_EQ(GraphFileBytes(), saved);
}

TEST_F(GraphFileTest, FilesOfEveryVersionAreRead) {
    const struct {
        const char* Text;
        double Version;
    } versions[] = {{"1.0", 1.0}, {"1.1", 1.1},   {"1.2", 1.2}, {"1.3", 1.3},
                    {"1.4", 1.4}, {"1.50", 1.50}, {"old", 0.0}};
    for (const auto& [text, version] : versions) {
        SCOPED_TRACE(text);
        Chart.Style = ChartStyle{};
        ASSERT_EQ(Refusal(MadeByHand(text, version)), "");
        EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "By hand");
        EXPECT_EQ(Chart.Spec.AxisY1.Max, 8.0F);
        EXPECT_EQ(Chart.DataY(3, 1), 7.0F);
        EXPECT_EQ(Chart.DataY(3, 2), MissingValue);
        EXPECT_EQ(Chart.SetNames[2], "two");
        EXPECT_EQ(Chart.Notes.at(0).Text.Str(), "here");
        EXPECT_EQ(Chart.Marks.at(0).X1, 2.0F);
        EXPECT_EQ(Chart.SetFlags[2], 8);
        EXPECT_EQ(Chart.Style.SymbolSize, 0.012F);
        EXPECT_EQ(Chart.Style.RightMargin, 1.5F);
        EXPECT_EQ(Chart.Style.ScreenColors.size(), version > 1.0 ? 3U : 14U);
        EXPECT_EQ(Chart.Style.MetricUnits, version > 1.0 ? -1 : 0);
        EXPECT_EQ(Chart.Style.SymbolWidth, version > 1.3 ? 9.0F : 7.0F);
        EXPECT_EQ(Chart.Cycles.Color[1], version > 1.2 ? 0x000100 : 0x123456);
        EXPECT_EQ(Chart.Cycles.Symbol[0], version > 1.2 ? 5 : 2);
        EXPECT_FALSE(Painted().empty());
    }
}

TEST_F(GraphFileTest, TheThreeLengthsOfTheStateAreToldByWhatStandsBehind) {
    for (const int bytes : {84, 86, 88}) {
        SCOPED_TRACE(bytes);
        ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5, {.StateBytes = bytes})), "");
        EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "By hand");
        EXPECT_EQ(Chart.DataX(2, 2), 2.0F);
    }
}

TEST_F(GraphFileTest, AHeaderLongerByAWordIsFoundByTheSizeOfSymbolsWhereverTheWordStands) {
    for (const auto place : {HandMade::InFront, HandMade::BehindMargins, HandMade::BeforeSymbolSize})
        for (const int word : {0, -1, 0x7F7F}) {
            if (place == HandMade::BeforeSymbolSize && word == 0) continue; // no other than a tiny symbol
            SCOPED_TRACE(std::to_string(place) + ", word " + std::to_string(word));
            Chart.Style = ChartStyle{};
            Chart.Style.LeftMargin = 3.0F;
            const HandMade h{.Margins = {0.8F, 1.2F, 1.2F, 0.7F}, .Longer = place, .Word = word};
            ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5, h)), "");
            EXPECT_EQ(Chart.Style.SymbolSize, 0.012F);
            EXPECT_EQ(Chart.DataY(2, 2), 5.0F);
            EXPECT_EQ(Chart.GraphHeld, -1) << "it can neither be redrawn nor saved";
            // In the midst of them the fields are those in use.
            EXPECT_EQ(Chart.Style.LeftMargin, place == HandMade::BehindMargins ? 3.0F : 0.8F);
            EXPECT_EQ(Chart.Style.DashedLines, -1);
        }
}

TEST_F(GraphFileTest, EveryTruncationIsRefusedAndTheGraphStands) {
    PlotRich();
    const std::string stands = GraphFileBytes();
    for (const std::string& whole : {stands, MadeByHand("1.0", 1.0), MadeByHand("1.2", 1.2)})
        for (std::size_t n = 0; n < whole.size(); ++n) {
            ASSERT_NE(Refusal(whole.substr(0, n)), "") << n;
            ASSERT_EQ(GraphFileBytes(), stands) << n;
        }
}

// Between two blocks of the trailer a file may end; anywhere within them it was cut.
TEST_F(GraphFileTest, ATruncatedTrailerIsRefused) {
    PlotLooks();
    const std::string whole = GraphFileBytes();
    const std::size_t block = whole.rfind(std::string("\x05\0LOOKS", 7));
    ASSERT_NE(block, std::string::npos);
    PlotRich();
    const std::string stands = GraphFileBytes();
    for (std::size_t n = block + 1; n < whole.size(); ++n)
        ASSERT_NE(Refusal(whole.substr(0, n)), "") << n;
    EXPECT_EQ(GraphFileBytes(), stands);
    EXPECT_EQ(Refusal(whole.substr(0, block)), "");
}

// QUILLON_MUTATIONS asks for another number of them.
TEST_F(GraphFileTest, MutationsAreRefusedOrDrawnAndTheFormerGraphStands) {
    Outside.AnswerAllMessages(BoxAnswer::Ok);
    PlotLooks();
    std::mt19937 random{20200421};
    const std::string whole[] = {MadeByHand("1.50", 1.5), MadeByHand("1.2", 1.2), MadeByHand("1.0", 1.0),
                                 GraphFileBytes()};
    const char* asked = std::getenv("QUILLON_MUTATIONS");
    const int rounds = asked ? std::atoi(asked) : 3000;
    int refused = 0;
    for (int round = 0; round < rounds; ++round) {
        std::string bytes = whole[round % 4];
        for (auto changes = 1 + random() % 3; changes > 0; --changes)
            bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
        const std::string stands = GraphFileBytes();
        if (Refusal(bytes).empty()) {
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        } else {
            ++refused;
            ASSERT_EQ(GraphFileBytes(), stands) << round;
        }
        Outside.Asked.clear();
        Screen.Clear();
    }
    EXPECT_GT(refused, rounds / 20);
    EXPECT_LT(refused, rounds - rounds / 20);
}

TEST_F(GraphFileTest, AFileOfANewerEngineIsRefusedInWords) {
    PlotRich();
    const std::string stands = GraphFileBytes();
    const std::string path = Outside.MakeFile("new.grf", MadeByHand("1.51", 1.51));
    Outside.ExpectMessage(
        "This file is a graph from chart module version 1.51, which cannot be used with the "
        "present version (1.50).  Aborting...");
    EXPECT_FALSE(RestoreGraphFile(path));
    EXPECT_EQ(GraphFileBytes(), stands);
}

TEST_F(GraphFileTest, AGraphOfAnotherProgramIsAskedForAndOpened) {
    const std::string path = Outside.MakeFile("other.grf", MadeByHand("1.50", 1.5, {.Program = "OTHER"}));
    const std::string question =
        "This file is a graph from OTHER not Quillon.  It should display properly, but current special "
        "options under the Options heading may be inappropriate.";
    Outside.ExpectMessage({question, "Quillon", BoxIcon::Warning, BoxButtons::OkCancel, BoxAnswer::Ok},
                          BoxAnswer::Cancel);
    EXPECT_FALSE(RestoreGraphFile(path));
    EXPECT_EQ(Chart.State.Nsets, 0);
    Outside.ExpectMessage(question, BoxAnswer::Ok);
    EXPECT_TRUE(RestoreGraphFile(path));
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "By hand");
}

TEST_F(GraphFileTest, ADamagedFileIsToldWithItsReason) {
    PlotRich();
    const std::string whole = GraphFileBytes();
    Outside.ExpectMessage(Failure("Input past end of file"));
    EXPECT_FALSE(RestoreGraphFile(Outside.MakeFile("short.grf", whole.substr(0, whole.size() - 1))));
    Outside.ExpectMessage(Failure("this is not a graph file"));
    EXPECT_FALSE(RestoreGraphFile(Outside.MakeFile("none.grf", "5,1\n6,2\n")));
    Outside.ExpectMessage(Failure("File not found"));
    EXPECT_FALSE(RestoreGraphFile(Outside.Directory() + "/absent.grf"));
    EXPECT_EQ(GraphFileBytes(), whole);
}

TEST_F(GraphFileTest, TheColoursOfTheFileStandAndTheNextGraphHasTheUsersOwn) {
    ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5)), "");
    EXPECT_EQ(SetColor(1), 0xFF0000U); // 0x0000FF, red lowest
    Begin();
    EXPECT_EQ(Chart.Style.ScreenColors.size(), 14U);
    EXPECT_EQ(CycleColor(0), 0x000000U); // sets still go by the numbers that the file gave them
}

TEST_F(GraphFileTest, ABoxOfAnotherSizeGivesTheGraphAFrameOfItsOwn) {
    PlotRich();
    const std::string saved = GraphFileBytes();
    Screen.Width = 500;
    Screen.Height = 400;
    AdoptGraph(saved);
    EXPECT_LT(Chart.Spec.Frame.X2, 500);
    EXPECT_GT(Chart.Spec.Frame.X2, 400);
    EXPECT_LT(Chart.Spec.Frame.Y2, 400);
}

TEST_F(GraphFileTest, ALegendAtAPlaceOfItsOwnStoodOutsideOfASmallerBox) {
    PlotRich();
    Chart.Spec.Legend.AutoPlace = 0;
    Chart.Spec.Legend.Box = {400, 150, 600, 300, 15, {}};
    const std::string saved = GraphFileBytes();
    AdoptGraph(saved);
    EXPECT_EQ(Chart.Spec.Legend.Box.X2, 600) << "a box of the same size";
    const int width = Screen.Width - 1, height = Screen.Height - 1; // of the views, as they count
    Screen.Width = 500;
    Screen.Height = 400;
    AdoptGraph(saved);
    const GraphBox& box = Chart.Spec.Legend.Box;
    EXPECT_NEAR(box.X1, 400.0 * 499 / width, 0.5);
    EXPECT_NEAR(box.Y1, 150.0 * 399 / height, 0.5);
    EXPECT_NEAR(box.X2, 600.0 * 499 / width, 0.5);
    EXPECT_NEAR(box.Y2, 300.0 * 399 / height, 0.5);
}

TEST_F(GraphFileTest, TheCommandsAskForTheFile) {
    PlotRich();
    const std::string path = Outside.Directory() + "/kept.grf";
    Outside.ExpectFile("Quillon - Save Graph to Disk", path);
    DoSaveGraph();
    const std::string saved = ReadWholeFile(path);
    EXPECT_EQ(saved, GraphFileBytes());
    GraphSpec other = Begin();
    Plot(other, Table({{5, 6}}), Table({{7, 9}}));
    Outside.ExpectFile("Quillon - Restore Graph from Disk", "");
    DoRestoreGraph();
    EXPECT_EQ(Chart.State.Nsets, 1);
    Outside.ExpectFile("Quillon - Restore Graph from Disk", path);
    DoRestoreGraph();
    EXPECT_EQ(Chart.State.Nsets, 2);
    EXPECT_TRUE(Charts.ShowLegend.Checked);
}

TEST_F(GraphFileTest, WithoutItsDataAGraphIsNotSaved) {
    PlotRich();
    Chart.GraphHeld = 0;
    Outside.ExpectMessage(
        "Sorry, the data to reproduce this graph is no longer available, so it cannot be saved.");
    DoSaveGraph();
}

TEST_F(GraphFileTest, AGraphThatIsWaitedForIsNotReplacedAndThatIsTold) {
    PlotRich();
    Charts.Needed = true;
    const std::string waited =
        "The graph in the window is still waited for.  A graph file can be shown when that has ended.";
    Outside.ExpectMessage(waited);
    EXPECT_FALSE(RestoreGraphFile(Outside.MakeFile("a.grf", MadeByHand("1.50", 1.5))));
    Outside.ExpectMessage(waited); // before a file is asked for
    DoRestoreGraph();
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "A graph");
}

TEST_F(GraphFileTest, ABoxWithoutRoomRefusesTheGraphAndTheFormerOneStands) {
    PlotRich();
    const std::string stands = GraphFileBytes();
    Screen.Width = Screen.Height = 12;
    EXPECT_EQ(Refusal(MadeByHand("1.50", 1.5)), "the graph has no room");
    EXPECT_EQ(GraphFileBytes(), stands);
    RemoveScreenSurface();
    EXPECT_EQ(Refusal(MadeByHand("1.50", 1.5)), "there is no window for the graph");
    EXPECT_EQ(GraphFileBytes(), stands);
}

TEST_F(GraphFileTest, TheCyclesOfAnEarlyFileLastWhateverItsTargetWas) {
    for (const int target : {0, 1, 2})
        for (const int built : {0, 1}) {
            SCOPED_TRACE(std::to_string(target) + ", " + std::to_string(built));
            ASSERT_EQ(Refusal(MadeByHand("1.2", 1.2, {.Target = target, .CyclesBuilt = built})), "");
            EXPECT_EQ(Chart.Cycles.Color[1], 0x123456);
            EXPECT_EQ(Chart.Cycles.Symbol[3], 2);
            const StyleCycles cycles = Chart.Cycles;
            const std::vector<std::string> before = Painted();
            const std::string picture = GraphAs("svg");
            const std::string saved = GraphFileBytes();
            PlotRich();
            ASSERT_FALSE(Chart.Cycles == cycles) << "the next graph has them too";
            ASSERT_EQ(Refusal(saved), "");
            EXPECT_TRUE(Chart.Cycles == cycles);
            EXPECT_EQ(Painted(), before);
            EXPECT_EQ(GraphAs("svg"), picture);
            EXPECT_EQ(GraphFileBytes(), saved);
        }
    ToggleClassicColors();
    EXPECT_NE(Chart.Cycles.Color[1], 0x123456) << "new colours are not taken";
    EXPECT_EQ(Chart.Cycles.Symbol[3], 2);
    ToggleClassicColors(); // as it was for the tests behind
}

TEST_F(GraphFileTest, WithoutNamesSeveralSetsHaveEmptyOnes) {
    ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5, {.Names = {}})), "");
    EXPECT_EQ(Chart.SetNames.Hi(), 2);
    EXPECT_EQ(Chart.SetNames[1] + Chart.SetNames[2], "");
}

TEST_F(GraphFileTest, NamesThatCountByTheNumbersOfSetsStandAtTheirOwnSets) {
    ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5, {.Names = {"", "", "three", "four"}, .FirstSet = 3})), "");
    ASSERT_EQ(Chart.SetNames.Hi(), 2);
    EXPECT_EQ(Chart.SetNames[1], "three");
    EXPECT_EQ(Chart.SetNames[2], "four");
    ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5, {.FirstSet = 3})), ""); // as they are written here
    EXPECT_EQ(Chart.SetNames[1], "one");
}

TEST_F(GraphFileTest, TheFirstGraphOfARunHasTheUsersSettingsBesideThoseOfTheFile) {
    Outside.MakeFile("chart.ini", "[QUILLON]\nLargeStep=7\nTicSize=.02\n");
    Chart = ChartModule{};
    ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5)), "");
    EXPECT_EQ(Chart.Style.LargeStep, 7.0F);
    EXPECT_EQ(Chart.Style.TicSize, 0.008F);
    EXPECT_EQ(Chart.State.IniRead, 1);
    EXPECT_FALSE(Painted().empty());
}

TEST_F(GraphFileTest, ASaveThatFailsIsTold) {
    PlotRich();
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::DiskFull); };
    Outside.ExpectFile("Quillon - Save Graph to Disk", Outside.Directory() + "/a.grf");
    Outside.ExpectMessage(std::string("Error '") + ErrorText::DiskFull +
                          "' occurred while saving graph information --- terminating.");
    DoSaveGraph();
    Outside.ExpectFile("Quillon - Save Graph to Disk", "  "); // left blank
    DoSaveGraph();
}

TEST_F(GraphFileTest, AGraphThatWasNotHeldIsShownOnceAndNotSaved) {
    PlotRich();
    ASSERT_TRUE(RestoreGraphFile(Outside.MakeFile("a.grf", MadeByHand("1.50", 1.5, {.Held = 0}))));
    EXPECT_NE(Screen.FindText("By hand"), nullptr);
    EXPECT_FALSE(Charts.CopyGraph.Enabled);
    Outside.ExpectMessage(
        "Sorry, the data to reproduce this graph is no longer available, so it cannot be saved.");
    DoSaveGraph();
}

TEST_F(GraphFileTest, NoGraphIsSavedAndRestoredAsNone) {
    Outside.ExpectFile("Quillon - Save Graph to Disk", Outside.Directory() + "/none.grf");
    DoSaveGraph();
    PlotRich();
    Screen.Clear();
    EXPECT_TRUE(RestoreGraphFile(Outside.Directory() + "/none.grf"));
    EXPECT_TRUE(Chart.DataY.Empty());
    EXPECT_EQ(Screen.Items.size(), 1U) << "the former graph is still seen"; // the box is wiped
    EXPECT_FALSE(Charts.PasteData.Enabled);
    Outside.ExpectFile("Quillon - Save Graph to Disk", Outside.Directory() + "/again.grf");
    DoSaveGraph();
    EXPECT_TRUE(RestoreGraphFile(Outside.Directory() + "/again.grf"));
}

TEST_F(GraphFileTest, MarkersGoAndTheFileKeepsThatItHadThem) {
    PlotRich();
    PlaceMarkers(1.5F, 2.5F);
    MarkerMouseDown(1);
    ASSERT_TRUE(RestoreGraphFile(Outside.MakeFile("a.grf", MadeByHand("1.50", 1.5))));
    EXPECT_TRUE(Charts.Markers.empty());
    EXPECT_EQ(Charts.ZoomState, 0);
    EXPECT_EQ(Charts.CapturedMarker, -1);
    EXPECT_EQ(DecodeGraph(GraphFileBytes(), Chart).ZoomState, 2); // as the file has it
    PlotRich();
    EXPECT_EQ(DecodeGraph(GraphFileBytes(), Chart).ZoomState, 0);
}

TEST_F(GraphFileTest, TheAmountsOfTheLastSeparationOutliveARestore) {
    PlotRich();
    Chart.SetShift.Recreate(2, 0.5F);
    Chart.SeparateMode = 2;
    ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5)), "");
    EXPECT_EQ(Chart.SetShift.Hi(), 2);
    EXPECT_EQ(Chart.SetShift[2], 0.5F);
    EXPECT_EQ(Chart.SeparateMode, 2);
}

} // namespace
} // namespace Quillon
