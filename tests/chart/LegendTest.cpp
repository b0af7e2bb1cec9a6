// The legend: entries, place, size, and that it stays in its box.
#include "chart/layout/LegendLayout.h"

#include "ChartBench.h"
#include "chart/pens/Pens.h"

namespace Quillon {
namespace {

class LegendTest : public ChartBench {
protected:
    LegendTest() { Spec = Begin(); }
    void PlotNamed(const std::vector<std::string>& names) {
        const auto sets = static_cast<long>(names.size());
        SetTable x(3, sets, 1.0F);
        SetTable y(3, sets, 2.0F);
        for (long set = 1; set <= sets; ++set)
            x(2, set) = 2.0F;
        Spec.Legend.Show = 1;
        PlotSets(Spec, x, y, 3, 1, static_cast<int>(sets), names, {}, {});
    }
    static std::vector<std::string> Names(int count, const std::string& stem) {
        std::vector<std::string> names;
        for (int i = 1; i <= count; ++i)
            names.push_back(stem + std::to_string(i));
        return names;
    }
    DeviceRect Box() const { return RectOf(Chart.Spec.Legend.Box); }
    std::vector<DrawnItem> InLegend(const std::string& kind) const {
        std::vector<DrawnItem> items;
        for (const DrawnItem& item : Screen.OfKind(kind))
            if (item.Clipped && item.Clip.Left == Box().Left && item.Clip.Top == Box().Top &&
                item.Clip.Right == Box().Right)
                items.push_back(item);
        return items;
    }
    GraphSpec Spec;
};

TEST_F(LegendTest, BelowTheGraph) {
    PlotNamed({"first", "second", "third"});
    EXPECT_GT(Box().Top, Chart.Spec.Frame.Y2);
    EXPECT_EQ(Box().Bottom, 599);
    EXPECT_NEAR((Box().Left + Box().Right) / 2, (Chart.Spec.Frame.X1 + Chart.Spec.Frame.X2) / 2, 1);
    const auto texts = InLegend("text");
    ASSERT_EQ(texts.size(), 3U);
    for (const DrawnItem& text : texts)
        EXPECT_TRUE(Within(TextBounds(text), Box())) << text.Text;
    EXPECT_EQ(texts[0].Points[0].Y, texts[2].Points[0].Y); // one row
    EXPECT_LT(texts[0].Points[0].X, texts[1].Points[0].X);
    EXPECT_EQ(texts[0].Font.Height, 16); // 0.016 of 998
    EXPECT_EQ(texts[0].TextColor, 0U);
}

TEST_F(LegendTest, ToTheRight) {
    Spec.Legend.Where = LegendPlaces::Right;
    PlotNamed({"first", "second", "third"});
    EXPECT_GT(Box().Left, Chart.Spec.Frame.X2);
    EXPECT_EQ(Box().Right, 799);
    const auto texts = InLegend("text");
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts[0].Points[0].X, texts[2].Points[0].X); // one column
    EXPECT_LT(texts[0].Points[0].Y, texts[1].Points[0].Y);
    for (const DrawnItem& text : texts)
        EXPECT_TRUE(Within(TextBounds(text), Box()));
}

TEST_F(LegendTest, TheFrameGivesTheRoom) {
    Spec.Legend.Show = 0;
    Plot(Spec, Table({{1, 2}, {1, 2}}), Table({{1, 2}, {1, 2}}));
    const GraphBox without = Chart.Spec.Frame;
    Chart.Spec.Legend.Where = LegendPlaces::Below;
    ShowLegend();
    EXPECT_EQ(Chart.Spec.Frame.Y2, without.Y2 - Chart.Layout.Legend.Height);
    EXPECT_TRUE(Charts.ShowLegend.Checked);
    Chart.Spec.Legend.Where = LegendPlaces::Right;
    Replot();
    EXPECT_EQ(Chart.Spec.Frame.X2, without.X2 - Chart.Layout.Legend.Width);
    EXPECT_EQ(Chart.Spec.Frame.Y2, without.Y2);
    ShowLegend();
    EXPECT_EQ(Chart.Spec.Legend.Show, 0);
    EXPECT_FALSE(Charts.ShowLegend.Checked);
    EXPECT_TRUE(Chart.Spec.Frame == without);
}

TEST_F(LegendTest, OneSetHasNone) {
    PlotNamed({"only"});
    EXPECT_EQ(Screen.FindText("only"), nullptr);
    EXPECT_FALSE(HasLegend());
    OneBased<float> values(3, 1.0F);
    PlotSingle(Spec, values, values, 3, {}, {});
    EXPECT_FALSE(HasLegend());
}

TEST_F(LegendTest, Samples) {
    Spec.SymbolMode = 1;
    PlotNamed({"first", "second", "third"});
    const auto lines = InLegend("line"); // solid lines of three sets, and the plus of the first
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0].Pen.Color, ToRgb(BasicColor(0)));
    EXPECT_EQ(lines[0].Points[1].X - lines[0].Points[0].X + 1, Chart.Layout.Legend.SampleWidth);
    const auto shapes = InLegend("polygon");
    ASSERT_EQ(shapes.size(), 2U);
    EXPECT_EQ(shapes[0].Pen.Color, ToRgb(BasicColor(9)));
}

TEST_F(LegendTest, LineOnlyAndSymbolOnlySamples) {
    Spec.SymbolMode = 3;
    PlotNamed({"first", "second"});
    EXPECT_EQ(InLegend("line").size(), 2U);
    EXPECT_TRUE(InLegend("polygon").empty());
    Spec = Begin(GraphTypes::XYPlot, PlotStyles::SymbolsOnly);
    Screen.Clear();
    PlotNamed({"first", "second"});
    EXPECT_EQ(InLegend("line").size(), 2U); // the plus
    EXPECT_EQ(InLegend("polygon").size(), 1U);
}

TEST_F(LegendTest, AlternateSetsShareAnEntry) {
    Spec = Begin(GraphTypes::XYPlot, PlotStyles::Alternating);
    PlotNamed({"a", "a (fit)", "b", "b (fit)", "c"});
    const auto texts = InLegend("text");
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts[0].Text, "a");
    EXPECT_EQ(texts[1].Text, "b");
    EXPECT_EQ(texts[2].Text, "c");
    const std::vector<LegendEntry> entries = LegendEntries();
    EXPECT_EQ(entries[1].SymbolSet, 3);
    EXPECT_EQ(entries[1].LineSet, 4);
    EXPECT_EQ(entries[2].LineSet, 0);
}

TEST_F(LegendTest, TextColours) {
    Spec.Legend.TextColor = 4;
    PlotNamed({"first", "second"});
    EXPECT_EQ(InLegend("text").at(1).TextColor, ToRgb(BasicColor(12)));
    Screen.Clear();
    Spec.Legend.TextColor = ~4; // each in its own
    PlotNamed({"first", "second"});
    EXPECT_EQ(InLegend("text").at(0).TextColor, ToRgb(BasicColor(0)));
    EXPECT_EQ(InLegend("text").at(1).TextColor, ToRgb(BasicColor(9)));
}

TEST_F(LegendTest, RainbowSamplesShowTheGradient) {
    Chart.Style.UseRainbowColors = -1;
    PlotNamed({"first", "second", "third"});
    EXPECT_EQ(InLegend("line").at(0).Pen.Color, 0xAA00FFU);
    EXPECT_EQ(InLegend("line").at(2).Pen.Color, 0xFF0000U);
}

TEST_F(LegendTest, ManyEntriesTakeRowsAndShrink) {
    PlotNamed(Names(60, "a rather long name of set "));
    EXPECT_EQ(Chart.GraphStatus, 0);
    EXPECT_LT(Chart.Layout.Sizes.Legend, 0.016F);
    EXPECT_EQ(Spec.Legend.Size, 0.016F);
    EXPECT_LE(Chart.Layout.Legend.Height, 0.4 * Chart.State.ViewH);
    EXPECT_TRUE(Within(Box(), {0, 0, 799, 599}));
    for (const DrawnItem& text : InLegend("text"))
        EXPECT_TRUE(Within(TextBounds(text), Box())) << text.Text;
}

TEST_F(LegendTest, ALegendStaysInItsBoxAtAnySizeAndPlace) {
    for (const auto& [width, height] : {std::pair{160, 120}, {300, 200}, {500, 300}, {1200, 300}, {300, 900}})
        for (const std::int16_t where : {LegendPlaces::Right, LegendPlaces::Below})
            for (const int count : {2, 9, 33, 70}) {
                Screen.Width = width;
                Screen.Height = height;
                Screen.Clear();
                Spec = Begin();
                Spec.Legend.Where = where;
                PlotNamed(Names(count, std::string(static_cast<std::size_t>(count % 40), 'n')));
                if (Chart.GraphStatus != 0) continue;
                const DeviceRect view{0, 0, width - 1, height - 1};
                EXPECT_TRUE(Within(Box(), view)) << width << " " << where << " " << count;
                EXPECT_FALSE(Overlap(Box(), RectOf(Chart.Spec.Frame)))
                    << width << " " << where << " " << count;
                for (const DrawnItem& item : Screen.OfKind("text"))
                    if (item.Clipped && item.Clip.Left == Box().Left) {
                        EXPECT_GE(TextBounds(item).Top, Box().Top);
                        EXPECT_LE(TextBounds(item).Bottom, Box().Bottom);
                    }
            }
}

TEST_F(LegendTest, ABoxOfTheUsersStands) {
    Spec.Legend.AutoPlace = 0;
    Spec.Legend.Box = {500, 60, 700, 160, 15, {}};
    PlotNamed({"first", "second"});
    EXPECT_EQ(Box().Left, 500);
    EXPECT_EQ(Box().Bottom, 160);
    EXPECT_EQ(Chart.Layout.Legend.Height, 0); // it takes nothing from the frame
    const auto texts = InLegend("text");
    ASSERT_EQ(texts.size(), 2U);
    for (const DrawnItem& text : texts)
        EXPECT_TRUE(Within(TextBounds(text), Box()));
}

} // namespace
} // namespace Quillon
