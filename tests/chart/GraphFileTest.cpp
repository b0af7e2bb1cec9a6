// Graph files: against files that are made here by hand, field by field, and against themselves.
#include "chart/files/GraphFile.h"
#include "../fuzz/GraphFileFuzz.cpp" // the entry that a fuzzer uses
#include "ChartBench.h"
#include "chart/pens/Pens.h"
#include "platform/LittleEndian.h"

#include <cstring>
#include <random>

namespace Quillon {
namespace {

// Bytes put together by the layout of the file, without the program's own codec.
struct Maker {
    std::string Bytes;
    void Word(int v) {
        Bytes += static_cast<char>(v & 0xFF);
        Bytes += static_cast<char>(v >> 8 & 0xFF);
    }
    void Words(int v, int n) {
        for (int i = 0; i < n; ++i)
            Word(v);
    }
    void Long(unsigned v) {
        Word(static_cast<int>(v & 0xFFFF));
        Word(static_cast<int>(v >> 16));
    }
    void Single(float v) {
        unsigned bits = 0;
        std::memcpy(&bits, &v, 4);
        Long(bits);
    }
    void Text(const std::string& t) {
        Word(static_cast<int>(t.size()));
        Bytes += t;
    }
    void Fixed(std::string t, std::size_t n) {
        t.resize(n, ' ');
        Bytes += t;
    }
    void Box(int x2, int y2) {
        Words(0, 2);
        Word(x2);
        Word(y2);
        Word(15);
        Words(0, 3);
    }
    void Title(const std::string& t) {
        Fixed(t, 80);
        Word(3);
        Single(0.02F);
        Word(0);
        Word(1);
    }
    void Axis(const std::string& title, float min, float max) {
        Word(1), Word(1), Word(2);
        Title(title);
        Word(0), Word(1), Word(1);
        Single(10.0F);
        Word(0);
        Single(min), Single(max), Single(1.0F);
        Fixed("", 40);
        Word(3);
        Single(0.02F), Single(min), Single((max - min) / 4.0F);
        Word(1), Word(2), Word(15), Word(10);
    }
    void State(int bytes, int points, int sets) {
        Words(0, 2);
        Word(1);
        Single(1.0F);
        Word(800), Word(600), Word(14), Word(799), Word(599), Word(998);
        Word(0), Word(0), Word(799), Word(599);
        Words(0, 5);
        Word(points), Word(sets), Word(1), Word(sets), Word(1), Word(2), Word(2);
        Words(4, 6);
        if (bytes != 86) Word(0);
        Single(0.04F), Single(0.006F);
        Words(0, bytes == 84 ? 4 : 6);
    }
    void Spec() {
        const std::size_t before = Bytes.size();
        Word(4), Word(1), Word(3), Word(1);
        Box(0, 0), Box(700, 500);
        Title("By hand"), Title("second line");
        Axis("X", 0, 4), Axis("", 0, 4), Axis("Y", 0, 8), Axis("", 0, 8);
        Word(1), Word(3), Word(0), Word(3);
        Single(0.016F);
        Word(1);
        Box(0, 0);
        Word(15);
        Long(0);
        Fixed("0", 80);
        EXPECT_EQ(Bytes.size() - before, 1064U);
    }
    void Former() { // the cycles of versions up to 1.2: all colours alike, so that they are known again
        for (int i = 0; i <= 69; ++i)
            Long(0x123456);
        for (int cycle = 0; cycle < 5; ++cycle)
            Words(cycle == 3 ? 2 : 0, 70);
    }
    void Orders() {
        Word(1), Word(2), Word(0);
        Word(0), Word(1);          // lines
        Word(1), Word(0);          // borders, as many
        Word(5), Word(6), Word(7); // symbols
        Word(0);                   // patterns
    }
};

// A graph of two sets of three points, in the layout of a version.
std::string MadeByHand(const std::string& versionText, double version, int stateBytes = 84, int shift = 0,
                       const std::string& program = "QUILLON") {
    Maker m;
    m.Text(program);
    m.Text(versionText);
    m.Word(-1), m.Word(-1);
    for (const float margin : {1.0F, 1.5F, 2.0F, 2.5F})
        m.Single(margin);
    m.Word(0), m.Word(0);
    m.Single(3.0F), m.Single(4.0F), m.Single(-1.0F), m.Single(0.0F);
    m.Word(-1), m.Word(0), m.Word(-1), m.Word(0), m.Word(2);
    for (int i = 0; i < shift; ++i)
        m.Word(0x7F7F); // the longer header: as a single no size of symbols
    if (version < 1.2) m.Single(77.0F);
    m.Single(0.012F);
    for (const float size : {0.008F, 0.005F, 30.0F, 0.02F, 0.02F, 3.0F, 3.0F, 3.0F, 15.0F, 10.0F, 15.0F})
        m.Single(size);
    for (int i = 0; i < 4; ++i)
        m.Single(1.0F);
    m.Word(1), m.Word(0), m.Word(0), m.Word(0), m.Word(-1);
    m.Word(36), m.Word(6), m.Word(36), m.Word(5);
    m.Word(2);
    m.State(stateBytes, 3, 2);
    m.Spec();
    m.Words(0, 30), m.Words(0, 8);
    for (const float x : {1.0F, 2.0F, 3.0F, 1.0F, 2.0F, MissingValue})
        m.Single(x);
    for (const float y : {1.0F, 4.0F, 7.0F, 2.0F, 5.0F, MissingValue})
        m.Single(y);
    const bool counts = version > 1.0;
    if (counts) m.Word(2), m.Word(0);
    for (int i = 0; i < (counts ? 3 : 14); ++i)
        m.Long(0x0000FF + static_cast<unsigned>(i));
    for (int i = 0; i < (counts ? 1 : 7); ++i)
        m.Long(0);
    if (counts) m.Word(69);
    if (version > 1.2)
        m.Orders();
    else
        m.Former();
    m.Word(1); // a mark
    m.Word(3), m.Word(0), m.Word(1), m.Word(0);
    m.Single(2.0F), m.Single(0.0F), m.Single(0.0F), m.Single(0.0F);
    m.Word(1); // a note
    m.Fixed("here", 80);
    m.Word(3);
    m.Single(0.02F);
    m.Word(0), m.Word(0), m.Word(1);
    m.Single(2.0F), m.Single(6.0F);
    m.Word(2), m.Word(7), m.Word(8); // flags
    m.Word(0);                       // no table
    m.Word(2), m.Text("one"), m.Text("two");
    m.Word(0); // no labels of categories
    if (version > 1.0) m.Word(-1);
    if (version > 1.3) m.Single(9.0F);
    return m.Bytes;
}

class GraphFileTest : public ChartBench {
protected:
    GraphFileTest() {
        Seams.DataDirectory = [this] { return Outside.Directory(); };
    }
    void PlotRich() {
        GraphSpec spec = Begin();
        spec.SymbolMode = 1;
        spec.Title1.Text = "A graph";
        spec.AxisX1.Title.Text = "Radius";
        spec.Legend.Show = 1;
        spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
        const SetTable x = Table({{1, 2, 3}, {1.5F, 2.5F}});
        const SetTable y = Table({{0.11F, 0.52F, 0.93F}, {0.3F, 0.6F}});
        GraphNote note;
        note.Text = "a note";
        note.Size = 0.02F;
        note.X = 2.0F;
        note.Y = 0.5F;
        GraphMark mark;
        mark.Kind = 3;
        mark.X1 = 1.7F;
        PlotSets(spec, x, y, 3, 1, 2, {"first", "second"}, {note}, {mark});
    }
    std::vector<std::string> Painted() {
        Screen.Clear();
        ShowGraph();
        return Screen.Lines();
    }
    static std::string Failure(const std::string& text) {
        return "Error '" + text +
               "' occurred while restoring graph information --- terminating.  This could cause this program "
               "to become unstable.";
    }
    // The text that a file is refused with; "" when it is taken.
    static std::string Refusal(const std::string& bytes) {
        try {
            AdoptGraph(bytes);
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return "";
    }
};

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
        ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5, bytes)), "");
        EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "By hand");
        EXPECT_EQ(Chart.DataX(2, 2), 2.0F);
    }
}

TEST_F(GraphFileTest, AHeaderLongerByAWordIsFoundByTheSizeOfSymbols) {
    ASSERT_EQ(Refusal(MadeByHand("1.50", 1.5, 84, 1)), "");
    EXPECT_EQ(Chart.Style.SymbolSize, 0.012F);
    EXPECT_EQ(Chart.DataY(2, 2), 5.0F);
}

TEST_F(GraphFileTest, EveryTruncationIsRefusedAndTheGraphStands) {
    PlotRich();
    const std::string stands = GraphFileBytes();
    for (const std::string& whole : {stands, MadeByHand("1.0", 1.0), MadeByHand("1.2", 1.2)})
        for (std::size_t n = 0; n < whole.size(); ++n) {
            ASSERT_NE(Refusal(whole.substr(0, n)), "") << n;
            if (n % 97 == 0) {
                ASSERT_EQ(GraphFileBytes(), stands) << n;
            }
        }
    EXPECT_EQ(GraphFileBytes(), stands);
}

TEST_F(GraphFileTest, TwentyThousandMutationsAreRefusedOrDrawn) {
    Outside.AnswerAllMessages(BoxAnswer::Ok);
    std::mt19937 random{20200421};
    const std::string whole[] = {MadeByHand("1.50", 1.5), MadeByHand("1.2", 1.2), MadeByHand("1.0", 1.0)};
    for (int round = 0; round < 20000; ++round) {
        std::string bytes = whole[round % 3];
        for (auto changes = 1 + random() % 3; changes > 0; --changes)
            bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        Outside.Asked.clear();
        Screen.Clear();
    }
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
    const std::string path = Outside.MakeFile("other.grf", MadeByHand("1.50", 1.5, 84, 0, "OTHER"));
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

TEST_F(GraphFileTest, AGraphThatIsWaitedForIsNotReplaced) {
    PlotRich();
    Charts.Needed = true;
    EXPECT_FALSE(RestoreGraphFile(Outside.MakeFile("a.grf", MadeByHand("1.50", 1.5))));
    EXPECT_EQ(Chart.Spec.Title1.Text.Str(), "A graph");
}

} // namespace
} // namespace Quillon
