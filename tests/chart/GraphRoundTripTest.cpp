// Every kind of graph saved and restored through the commands: its pictures and its file stay what they were.
#include "GraphFileCase.h"
#include "chart/files/Exchange.h"
#include "chart/hand/Redraw.h"
#include "chart/pens/Pens.h"

namespace Quillon {
namespace {

class GraphRoundTrip : public GraphFileTest {
protected:
    // The graph at hand, saved, replaced by another and restored: its pictures and its file are what they
    // were.
    void ExpectItself() {
        ASSERT_LT(Chart.GraphStatus, GraphStatuses::Stop);
        const std::vector<std::string> before = Painted();
        ASSERT_GT(before.size(), 10U);
        const std::string picture = GraphAs("svg");
        const std::string path = Outside.Directory() + "/kind.grf";
        Outside.ExpectFile("Quillon - Save Graph to Disk", path);
        DoSaveGraph();
        GraphSpec other = Begin();
        Plot(other, Table({{5, 6}}), Table({{7, 9}}));
        Outside.ExpectFile("Quillon - Restore Graph from Disk", path);
        DoRestoreGraph();
        EXPECT_EQ(Painted(), before);
        EXPECT_EQ(GraphAs("svg"), picture);
        EXPECT_EQ(GraphFileBytes(), ReadWholeFile(path));
    }
    const SetTable X = Table({{1, 20, 300}, {2, 30, 400}, {3, 40}});
    const SetTable Y = Table({{10, 200, 3000}, {20, 300, 4000}, {30, 700}});
};

TEST_F(GraphRoundTrip, SetsThatLookByWhatTheyShow) {
    PlotLooks();
    ExpectItself();
    EXPECT_EQ(Chart.Looks.Legend.at(1).Name, "dimer");
    EXPECT_EQ(SetColor(1), SetColor(3));
}

TEST_F(GraphRoundTrip, BarsLinesOverCategoriesAndPies) {
    for (int type = GraphTypes::HorizontalBars; type <= GraphTypes::Pie; ++type)
        for (const std::int16_t style : {PlotStyles::Lines, PlotStyles::SymbolsOnly}) {
            SCOPED_TRACE(std::to_string(type) + ", " + std::to_string(style));
            GraphSpec spec = Begin(type, style);
            spec.Legend.Show = 1;
            Plot(spec, Table({{1, 2, 3}, {4, 5, 6}}), Table({{3, 1, 2}, {6, 5, 4}}));
            Chart.CatLabels.Recreate(3, "label");
            Chart.Style.BarWidth = 0.5F;
            RedrawChart();
            ExpectItself();
        }
}

TEST_F(GraphRoundTrip, AlternatingSetsAndSeparatedOnes) {
    GraphSpec spec = Begin(GraphTypes::XYPlot, PlotStyles::Alternating);
    spec.Legend.Show = 1;
    Plot(spec, X, Y);
    ExpectItself();
    Chart.SetShift.Recreate(3, 11.0F);
    Chart.SeparateMode = SeparateModes::Both;
    ApplySeparation();
    ExpectItself();
}

TEST_F(GraphRoundTrip, PrescaledAndLogarithmicScales) {
    GraphSpec spec = Begin();
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Prescaled;
    spec.AxisX1.Max = spec.AxisY1.Max = 1;
    Plot(spec, X, Y);
    ASSERT_EQ(Chart.Spec.AxisY1.Factor, 1000.0F);
    ExpectItself();
    for (const float base : {10.0F, NaturalBase}) {
        spec = Begin();
        spec.AxisX1.ScaleType = spec.AxisY1.ScaleType = ScaleTypes::Logarithmic;
        spec.AxisX1.LogBase = spec.AxisY1.LogBase = base;
        spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
        spec.AxisX1.TicInterval = spec.AxisY1.TicInterval = 4.0F;
        Plot(spec, X, Y);
        ExpectItself();
    }
}

// --- behind the stated fields ---------------------------------------------------------------------------

class GraphTrailer : public GraphFileTest {};

TEST_F(GraphTrailer, AGraphThatNeedsNoneHasAFileOfFieldsAlone) {
    PlotRich(); // two sets of three points, a note, a mark, fourteen colours
    const std::size_t settings = 15 + 4 + 16 + 4 + 16 + 10 + 4 + 44 + 16 + 18 + 2;
    const std::size_t records = 84 + 1064 + 60 + 16;
    const std::size_t style = 4 + 2 * 14 * 4 + 2 + 6 + (5 + 5 + 18 + 7) * 2;
    const std::size_t lists = (2 + 24) + (2 + 100) + (2 + 2 * 2) + 2 + (2 + 7 + 8) + (2 + 2);
    EXPECT_EQ(GraphFileBytes().size(), settings + records + 2 * 24 + style + lists + 2 + 4);
}

TEST_F(GraphTrailer, LooksStandInABlockOfTheirOwn) {
    PlotLooks();
    Maker m;
    m.Text("LOOKS");
    m.Word(1);
    m.Long(2 + 4 * 4 + 2 + (2 + 7 + 4) + (2 + 5 + 4) + 2 * (2 + 3 + 4));
    m.Word(4);
    for (const int v : {1, 0, 2, 0, 1, 1, 2, 1})
        m.Word(v);
    m.Word(4);
    m.Text("monomer"), m.Word(1), m.Word(0);
    m.Text("dimer"), m.Word(2), m.Word(0);
    m.Text("one"), m.Word(-1), m.Word(0);
    m.Text("two"), m.Word(-1), m.Word(1);
    EXPECT_TRUE(GraphFileBytes().ends_with(m.Bytes));
}

TEST_F(GraphTrailer, LooksThatSuitNoGraphAreRefused) {
    const auto with = [](int sets, int color) {
        Maker m;
        m.Text("LOOKS");
        m.Word(1);
        m.Long(static_cast<unsigned>(4 + 4 * sets));
        m.Word(sets);
        for (int i = 0; i < sets; ++i)
            m.Word(color), m.Word(0);
        m.Word(0);
        return MadeByHand("1.50", 1.5) + m.Bytes;
    };
    EXPECT_EQ(Refusal(with(2, 1)), "");
    EXPECT_EQ(Chart.Looks.Sets.size(), 2U);
    EXPECT_EQ(Refusal(with(3, 1)), "the file is damaged at LOOKS"); // there are two sets
    EXPECT_EQ(Refusal(with(2, -2)), "the file is damaged at LOOKS");
    EXPECT_EQ(Refusal(MadeByHand("1.50", 1.5) + "something else"), "");
    EXPECT_TRUE(Chart.Looks == SetLooks{}) << "those of the graph before";
}

} // namespace
} // namespace Quillon
