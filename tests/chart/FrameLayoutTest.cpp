// Where the frame stands, and that nothing around it is cut.
#include "ChartBench.h"
#include "chart/layout/Layout.h"

#include <random>

namespace Quillon {
namespace {

class FrameLayoutTest : public ChartBench {
protected:
    GraphSpec Titled() {
        GraphSpec spec = Begin();
        spec.Title1.Text = "first title";
        spec.Title2.Text = "second title";
        spec.AxisX1.Title.Text = "x axis";
        spec.AxisY1.Title.Text = "y axis";
        return spec;
    }
    void PlotLine(GraphSpec& spec) { Plot(spec, Table({{1, 2, 3}}), Table({{0.13F, 0.5F, 0.87F}})); }

    DeviceRect View() const {
        const GraphState& s = Chart.State;
        return {s.ViewLeft, s.ViewTop, s.ViewRight, s.ViewBottom};
    }
    DeviceRect BoundsOf(const std::string& text) const {
        const DrawnItem* item = Screen.FindText(text);
        return item != nullptr ? TextBounds(*item) : DeviceRect{-1, -1, -1, -1};
    }
    // What the digits of a text cover: at the corners of the frame two labels meet with the blank parts of
    // their lines.
    static DeviceRect InkOf(const DrawnItem& text) {
        DeviceRect at = TextBounds(text);
        if (text.Font.Angle != 0) return at;
        at.Top += (text.Font.Height + 4) / 5;
        at.Bottom -= (text.Font.Height + 4) / 5;
        return at;
    }
    // All texts lie in the view, none on another, none on the frame.
    void ExpectTidy() const {
        std::vector<DrawnItem> texts;
        for (const DrawnItem& item : Screen.OfKind("text"))
            if (!item.Clipped) texts.push_back(item);
        const GraphBox& f = Chart.Spec.Frame;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const DeviceRect at = TextBounds(texts[i]);
            EXPECT_TRUE(Within(at, View())) << ItemText(texts[i]) << " leaves the view";
            EXPECT_FALSE(Overlap(at, {f.X1 + 1, f.Y1 + 1, f.X2 - 1, f.Y2 - 1}))
                << ItemText(texts[i]) << " on the frame";
            for (std::size_t k = i + 1; k < texts.size(); ++k)
                EXPECT_FALSE(Overlap(InkOf(texts[i]), InkOf(texts[k])))
                    << ItemText(texts[i]) << " on " << ItemText(texts[k]);
        }
    }
};

TEST_F(FrameLayoutTest, TheBottomMarginIsTheSumOfItsParts) {
    GraphSpec spec = Titled();
    PlotLine(spec);
    // Diagonal trunc(hypot(799, 599)) = 998; text 0.02 of it: 20 units; clearance 0.004: 4.
    EXPECT_EQ(Chart.State.Diagonal, 998);
    EXPECT_EQ(Chart.State.ClearY, 4);
    EXPECT_EQ(Chart.State.ClearX, 4);
    const AxisSpace& bottom = Chart.Layout.Bottom;
    EXPECT_EQ(bottom.TicGap1, 4);
    EXPECT_EQ(bottom.TicHeight, 20);
    EXPECT_EQ(bottom.TitleHeight, 20);
    EXPECT_EQ(bottom.Total(), 4 + 20 + 4 + 4 + 20 + 4);
    EXPECT_EQ(spec.Frame.Y2, 599 - 56);
}

TEST_F(FrameLayoutTest, TheTopMarginHoldsTheTitles) {
    GraphSpec spec = Titled();
    PlotLine(spec);
    const TitleSpace& titles = Chart.Layout.Titles;
    EXPECT_EQ(titles.Total, 4 + 20 + 4 + 20 + 4);
    EXPECT_EQ(Chart.Layout.Top.Total(), 4); // no labels, no title
    EXPECT_EQ(spec.Frame.Y1, 52 + 4);
    EXPECT_EQ(BoundsOf("first title").Top, 4);
    EXPECT_EQ(BoundsOf("second title").Top, 4 + 20 + 4);
}

TEST_F(FrameLayoutTest, TheLeftMarginHoldsTheWidestLabel) {
    GraphSpec spec = Titled();
    PlotLine(spec);
    EXPECT_EQ(Chart.State.LabelWidthY1, 30); // "0.1": three characters of 10
    EXPECT_EQ(spec.Frame.X1, 4 + 30 + 4 + 4 + 20 + 4);
}

TEST_F(FrameLayoutTest, WithoutTextTheLeastMarginsHold) {
    GraphSpec spec = Begin();
    for (GraphAxis* axis : {&spec.AxisX1, &spec.AxisX2, &spec.AxisY1, &spec.AxisY2})
        axis->TicMode = TicModes::MarksOnly;
    spec.AxisY2.Show = 0;
    PlotLine(spec);
    EXPECT_EQ(spec.Frame.X1, 40);       // 0.05 * 799
    EXPECT_EQ(spec.Frame.X2, 799 - 40); // the right axis is off
    EXPECT_EQ(spec.Frame.Y1, 24);       // 0.04 * 599
    EXPECT_EQ(spec.Frame.Y2, 599 - 24);
}

TEST_F(FrameLayoutTest, TicsAndSymbolsFollowTheFrame) {
    GraphSpec spec = Titled();
    PlotLine(spec);
    const double diagonal = std::hypot(spec.Frame.X2 - spec.Frame.X1, spec.Frame.Y2 - spec.Frame.Y1);
    EXPECT_EQ(Chart.State.TicLenY, static_cast<int>(std::nearbyint(0.007 * diagonal)));
    EXPECT_EQ(Chart.State.TicLenX, Chart.State.TicLenY);
    EXPECT_EQ(Chart.State.SymbolHalfX, static_cast<int>(std::nearbyint(0.0035 * diagonal)));
}

TEST_F(FrameLayoutTest, EverythingIsTidyAtManySizes) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Screen.Width = 250 + static_cast<int>(random() % 1500);
        Screen.Height = 200 + static_cast<int>(random() % 1000);
        GraphSpec spec = Titled();
        if (random() % 2 == 0) spec.AxisY2.TicMode = TicModes::MarksAndLabels;
        if (random() % 2 == 0) spec.AxisX2.TicMode = TicModes::MarksAndLabels;
        if (random() % 2 == 0) spec.AxisY2.Title.Text = "right";
        spec.Legend.Show = 1;
        spec.Legend.Where = random() % 2 == 0 ? LegendPlaces::Right : LegendPlaces::Below;
        const float size = std::pow(10.0F, static_cast<float>(random() % 80) / 10.0F - 4.0F);
        Plot(spec, Table({{1, 2, 3}, {1, 2, 3}}), Table({{0, 0.4F * size, size}, {0, 1, 2}}));
        ASSERT_EQ(Chart.GraphStatus, 0);
        Screen.Clear();
        ShowGraph();
        ExpectTidy();
    }
}

TEST_F(FrameLayoutTest, LabelsThatGrowWhenTicsAreChosenGetTheirRoom) {
    GraphSpec spec = Begin();
    Plot(spec, Table({{1, 2}}), Table({{0, 9.7F}})); // "9.7" becomes "10.0"
    EXPECT_EQ(spec.AxisY1.Max, 10.0F);
    Screen.Clear();
    ShowGraph();
    ExpectTidy();
    EXPECT_NE(Screen.FindText("10.0"), nullptr);
}

TEST_F(FrameLayoutTest, TicsOutwardPushTheLabels) {
    GraphSpec spec = Titled();
    PlotLine(spec);
    const GraphBox inward = spec.Frame;
    Chart.Style.TicSize = -0.007F;
    GraphSpec outward = Titled();
    PlotLine(outward);
    EXPECT_EQ(outward.Frame.X1, inward.X1 + 7 + 4); // a tic of 7 and one clearance
    EXPECT_EQ(outward.Frame.Y2, inward.Y2 - 7 - 4);
    Screen.Clear();
    ShowGraph();
    ExpectTidy();
    for (const DrawnItem& item : Screen.OfKind("text"))
        if (item.Text >= "1.0" && item.Text <= "3.0") { // the labels of the bottom axis
            EXPECT_GT(TextBounds(item).Top, outward.Frame.Y2 - Chart.State.TicLenY) << item.Text;
        }
}

TEST_F(FrameLayoutTest, AWindowWithoutRoomHasNoGraph) {
    for (const auto& [width, height] : {std::pair{25, 300}, {300, 20}, {5, 5}, {1, 1}, {0, 0}, {-5, 100}}) {
        Screen.Width = width;
        Screen.Height = height;
        Screen.Clear();
        GraphSpec spec = Titled();
        PlotLine(spec);
        EXPECT_EQ(Chart.GraphStatus, 105) << width << " by " << height;
        EXPECT_TRUE(Screen.OfKind("text").empty());
        EXPECT_TRUE(Screen.OfKind("polyline").empty());
        Replot();
        EXPECT_EQ(Chart.GraphStatus, 105);
        ShowGraph();
        EXPECT_EQ(Chart.GraphStatus, 105);
    }
    Screen.Width = 800; // and comes back with the window
    Screen.Height = 600;
    Replot();
    EXPECT_EQ(Chart.GraphStatus, 0);
    ShowGraph();
    EXPECT_NE(Screen.FindText("first title"), nullptr);
}

TEST_F(FrameLayoutTest, TextShrinksBeforeThereIsNoRoom) {
    GraphSpec spec = Titled();
    spec.AxisX1.LabelSize = spec.AxisX1.Title.Size = spec.Title1.Size = spec.Title2.Size =
        1.0F; // the largest
    Screen.Width = 400;
    Screen.Height = 180; // four lines of 48 units do not fit
    PlotLine(spec);
    EXPECT_EQ(Chart.GraphStatus, 0);
    EXPECT_LT(Chart.Layout.Sizes.Title1, Chart.State.FontMax);
    EXPECT_EQ(spec.Title1.Size, 1.0F); // what was asked for stays in the record
    Screen.Width = 1600;
    Screen.Height = 1200;
    Replot();
    EXPECT_EQ(Chart.Layout.Sizes.Title1, Chart.State.FontMax);
}

TEST_F(FrameLayoutTest, AFrameThatIsKeptShrinksTheTextAroundIt) {
    GraphSpec spec = Titled();
    spec.Frame = {40, 30, 760, 570, 15, {}};
    PlotLine(spec);
    EXPECT_EQ(spec.Relayout, 0);
    EXPECT_EQ(RectOf(spec.Frame).Left, 40);
    EXPECT_EQ(RectOf(spec.Frame).Bottom, 570);
    EXPECT_LT(Chart.Layout.Sizes.Title1, 0.02F);
    EXPECT_LT(Chart.Layout.Sizes.Label[LeftAxis], 0.02F);
    Screen.Clear();
    ShowGraph();
    ExpectTidy();
}

TEST_F(FrameLayoutTest, AFrameThatIsKeptWithRoomSharesItAboutTheTitles) {
    GraphSpec spec = Titled();
    spec.Frame = {100, 156, 700, 500, 15, {}}; // 100 more than the 52 + 4 that are needed
    PlotLine(spec);
    EXPECT_EQ(Chart.Layout.Sizes.Title1, 0.02F);
    Screen.Clear();
    ShowGraph();
    EXPECT_EQ(BoundsOf("first title").Top, 54);
    EXPECT_EQ(BoundsOf("second title").Bottom, 156 - 4 - 4 - 50 - 1);
}

TEST_F(FrameLayoutTest, TextThatCannotShrinkEnoughStaysAndNothingLoops) {
    GraphSpec spec = Titled();
    spec.Frame = {1, 1, 798, 598, 15, {}};
    PlotLine(spec);
    EXPECT_EQ(Chart.GraphStatus, 0);
    EXPECT_EQ(Chart.Layout.Sizes.Title1, Chart.State.FontMin);
}

TEST_F(FrameLayoutTest, ADegenerateFrameIsChosenAfresh) {
    GraphSpec spec = Titled();
    spec.Frame = {300, 100, 300, 500, 15, {}};
    PlotLine(spec);
    EXPECT_EQ(spec.Relayout, 1);
    EXPECT_EQ(spec.Frame.X1, 66);
}

TEST_F(FrameLayoutTest, AViewIsNotLeft) {
    GraphSpec spec = Titled();
    spec.View = {200, 100, 700, 500, 15, {}};
    spec.Legend.Show = 1;
    Plot(spec, Table({{1, 2}, {1, 2}}), Table({{1, 2}, {2, 3}}));
    Screen.Clear();
    ShowGraph();
    ExpectTidy();
    EXPECT_TRUE(Within(RectOf(Chart.Spec.Frame), View()));
    EXPECT_TRUE(Within(RectOf(Chart.Spec.Legend.Box), View()));
}

TEST_F(FrameLayoutTest, LongCategoryLabelsStandInTwoRows) {
    GraphSpec spec = Begin(GraphTypes::VerticalBars);
    Plot(spec, SetTable(8, 1), Table({{1, 2, 3, 4, 5, 6, 7, 8}}));
    EXPECT_EQ(Chart.State.Stagger, 0);
    const int before = Chart.Spec.Frame.Y2;
    Chart.CatLabels.Recreate(8);
    for (long i = 1; i <= 8; ++i)
        Chart.CatLabels[i] = "category " + std::to_string(i);
    Replot();
    EXPECT_EQ(Chart.State.Stagger, 1);
    EXPECT_EQ(Chart.Spec.Frame.Y2, before - 20);
    Screen.Clear();
    ShowGraph();
    EXPECT_EQ(BoundsOf("category 1").Top + 20, BoundsOf("category 2").Top);
    EXPECT_EQ(BoundsOf("category 1").Top, BoundsOf("category 3").Top);
    ExpectTidy();
}

TEST_F(FrameLayoutTest, TheLabelsOfTheOuterCategoriesAreWhole) {
    for (const std::int16_t where : {LegendPlaces::Right, LegendPlaces::Below})
        for (int count = 1; count <= 14; ++count) {
            Screen.Clear();
            GraphSpec spec = Begin(GraphTypes::CategoryLines);
            spec.Legend.Show = 1;
            spec.Legend.Where = where;
            Plot(spec, SetTable(count, 2), SetTable(count, 2, 1.0F));
            Chart.CatLabels.Recreate(count);
            for (long i = 1; i <= count; ++i)
                Chart.CatLabels[i] = "long category " + std::to_string(i);
            Replot();
            Screen.Clear();
            ShowGraph();
            const int widest = Chart.State.LabelWidthX1;
            ASSERT_GT(widest, 100);
            ExpectTidy();
        }
}

TEST_F(FrameLayoutTest, NonSquareUnits) {
    Screen.DotsPerInchX = 192.0; // X counts twice
    GraphSpec spec = Titled();
    PlotLine(spec);
    EXPECT_FLOAT_EQ(Chart.State.Aspect, 2.0F);
    EXPECT_EQ(Chart.State.ClearX, 2 * Chart.State.ClearY);
    EXPECT_EQ(Chart.State.TicLenX, 2 * Chart.State.TicLenY);
}

} // namespace
} // namespace Quillon
