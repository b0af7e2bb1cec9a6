// Axis lines, tics, grid lines and labels.
#include "ChartBench.h"
#include "chart/layout/Layout.h"

namespace Quillon {
namespace {

class DrawAxesTest : public ChartBench {
protected:
    void SetUp() override {
        Spec = Begin();
        Pin(Spec.AxisX1, 0.0F, 4.0F, 1.0F);
        Pin(Spec.AxisY1, 0.0F, 1.0F, 0.5F);
        Spec.AxisY1.Decimals = 1;
        for (GraphAxis* axis : {&Spec.AxisX1, &Spec.AxisY1})
            axis->Grid = 0;
        for (GraphAxis* axis : {&Spec.AxisX2, &Spec.AxisY2})
            axis->Show = 0;
    }
    void PlotIt() { Plot(Spec, Table({{1, 2, 3}}), Table({{0.1F, 0.9F, 0.5F}})); }
    bool Drew(int x1, int y1, int x2, int y2) const {
        const auto lines = Screen.Lines("line");
        const std::string ends[2] = {std::to_string(x1) + "," + std::to_string(y1),
                                     std::to_string(x2) + "," + std::to_string(y2)};
        return std::count(lines.begin(), lines.end(), "line " + ends[0] + " " + ends[1]) +
                   std::count(lines.begin(), lines.end(), "line " + ends[1] + " " + ends[0]) >
               0;
    }
    // The middle of a text across its line.
    int MiddleY(const std::string& text) const {
        const DeviceRect r = TextBounds(*Screen.FindText(text));
        return (r.Top + r.Bottom + 1) / 2;
    }
    int MiddleX(const std::string& text) const {
        const DeviceRect r = TextBounds(*Screen.FindText(text));
        return (r.Left + r.Right + 1) / 2;
    }
    GraphSpec Spec;
};

TEST_F(DrawAxesTest, LinesTicsAndLabels) {
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    EXPECT_TRUE(Drew(f.X1, f.Y2, f.X2, f.Y2));
    EXPECT_TRUE(Drew(f.X1, f.Y1, f.X1, f.Y2));
    EXPECT_FALSE(Drew(f.X1, f.Y1, f.X2, f.Y1)); // the top axis is off
    const int length = Chart.State.TicLenY;
    for (int i = 0; i <= 4; ++i) {
        EXPECT_TRUE(Drew(Px(i), f.Y2, Px(i), f.Y2 - length)) << i; // inward
        EXPECT_NEAR(MiddleX(std::to_string(i)), Px(i), 1);
    }
    for (const char* label : {"0.0", "0.5", "1.0"}) {
        const int y = Py(std::stod(label));
        EXPECT_TRUE(Drew(f.X1, y, f.X1 + length, y)) << label;
        EXPECT_NEAR(MiddleY(label), y, 1);
        EXPECT_EQ(TextBounds(*Screen.FindText(label)).Right, f.X1 - Chart.State.ClearX - 1);
    }
    EXPECT_EQ(TextBounds(*Screen.FindText("2")).Top, f.Y2 + Chart.State.ClearY);
}

TEST_F(DrawAxesTest, SecondAxesMirrorTheFirst) {
    Spec.AxisX2.Show = Spec.AxisY2.Show = 1;
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    const int length = Chart.State.TicLenY;
    EXPECT_TRUE(Drew(f.X1, f.Y1, f.X2, f.Y1));
    EXPECT_TRUE(Drew(f.X2, f.Y1, f.X2, f.Y2));
    EXPECT_TRUE(Drew(Px(2), f.Y1, Px(2), f.Y1 + length));
    EXPECT_TRUE(Drew(f.X2, Py(0.5), f.X2 - length, Py(0.5)));
    EXPECT_EQ(Screen.Texts().size(), 8U); // marks only: no labels
}

TEST_F(DrawAxesTest, LabelsOnTheRightAndAbove) {
    Spec.AxisX2.Show = Spec.AxisY2.Show = 1;
    Spec.AxisX2.TicMode = Spec.AxisY2.TicMode = TicModes::MarksAndLabels;
    Pin(Spec.AxisX2, 0.0F, 40.0F, 20.0F); // scales of their own
    Pin(Spec.AxisY2, 100.0F, 300.0F, 100.0F);
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    ASSERT_NE(Screen.FindText("20"), nullptr);
    EXPECT_NEAR(MiddleX("20"), (f.X1 + f.X2) / 2, 1);
    EXPECT_EQ(TextBounds(*Screen.FindText("20")).Bottom, f.Y1 - Chart.State.ClearY - 1);
    EXPECT_NEAR(MiddleY("200.0"), (f.Y1 + f.Y2) / 2, 1); // the format is that of the left axis
    EXPECT_EQ(TextBounds(*Screen.FindText("200.0")).Left, f.X2 + Chart.State.ClearX);
}

TEST_F(DrawAxesTest, TicModes) {
    Spec.AxisX1.TicMode = TicModes::NoTics;
    Spec.AxisY1.TicMode = TicModes::MarksOnly;
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    EXPECT_TRUE(Screen.Texts().empty());
    EXPECT_FALSE(Drew(Px(1), f.Y2, Px(1), f.Y2 - Chart.State.TicLenY));
    EXPECT_TRUE(Drew(f.X1, Py(0.5), f.X1 + Chart.State.TicLenX, Py(0.5)));
}

TEST_F(DrawAxesTest, OutwardTics) {
    Chart.Style.TicSize = -0.01F;
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    const int length = -Chart.State.TicLenY;
    EXPECT_GT(length, 0);
    EXPECT_TRUE(Drew(Px(1), f.Y2, Px(1), f.Y2 + length));
    EXPECT_TRUE(Drew(f.X1, Py(0.5), f.X1 - length, Py(0.5)));
}

TEST_F(DrawAxesTest, GridLinesAtTheMajorTicsWithinTheFrame) {
    Spec.AxisX1.Grid = 1;
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    for (int i = 1; i <= 4; ++i)
        EXPECT_EQ(Drew(Px(i), f.Y1, Px(i), f.Y2), i < 4) << i;
    EXPECT_FALSE(Drew(f.X1, Py(0.5), f.X2, Py(0.5)));
}

TEST_F(DrawAxesTest, GridLinesAreDashedWhereThereIsNoGrey) {
    Screen.HasColor = false;
    Spec.AxisX1.Grid = 1;
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    EXPECT_FALSE(Drew(Px(2), f.Y1, Px(2), f.Y2));
    EXPECT_TRUE(Drew(Px(2), f.Y2, Px(2), f.Y2 - 4));
}

TEST_F(DrawAxesTest, MinorTicsAreShorterAndUnlabelled) {
    Spec.AxisX1.ScaleType = ScaleTypes::Logarithmic;
    Pin(Spec.AxisX1, 0.0F, 2.0F, 1.0F); // a minor tic at 3 and at 30
    Spec.AxisX1.Grid = 1;
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    const int minor = static_cast<int>(std::nearbyint(Chart.State.TicLenY * 0.6));
    EXPECT_TRUE(Drew(Px(std::log10(3.0)), f.Y2, Px(std::log10(3.0)), f.Y2 - minor));
    EXPECT_FALSE(Drew(Px(std::log10(3.0)), f.Y2, Px(std::log10(3.0)), f.Y1));
    EXPECT_TRUE(Drew(Px(1), f.Y2, Px(1), f.Y1));
    EXPECT_NE(Screen.FindText("100"), nullptr);
    EXPECT_EQ(Screen.FindText("3"), nullptr);
}

TEST_F(DrawAxesTest, ALogAxisWithinADecadeHasNumbersAllTheSame) {
    Spec.AxisX1.ScaleType = ScaleTypes::Logarithmic;
    Pin(Spec.AxisX1, 1.2F, 1.95F, 4.0F); // 16 to 89: minor tics at 20, 40, 60 and 80
    PlotIt();
    for (const int value : {20, 40, 60, 80})
        EXPECT_NEAR(MiddleX(std::to_string(value)), Px(std::log10(value)), 1) << value;
}

TEST_F(DrawAxesTest, LabelsThatWouldOverlapAreLeftOut) {
    Pin(Spec.AxisX1, 0.0F, 4.0F, 0.01F);
    Spec.AxisX1.Decimals = 2;
    PlotIt();
    std::vector<DeviceRect> labels;
    for (const DrawnItem& item : Screen.OfKind("text"))
        if (TextBounds(item).Top >= Chart.Spec.Frame.Y2) labels.push_back(TextBounds(item));
    ASSERT_GT(labels.size(), 5U);
    for (std::size_t i = 1; i < labels.size(); ++i)
        EXPECT_GT(labels[i].Left, labels[i - 1].Right);
}

// A character is half a line high wide here, a blank as well.
TEST_F(DrawAxesTest, LabelsOfDecadesStandABlankApart) {
    Spec.AxisX1.ScaleType = ScaleTypes::Logarithmic;
    Spec.AxisX1.TicFormat = TicFormats::Exponential;
    Spec.AxisX1.Decimals = 1;
    for (int decades = 8; decades <= 38; ++decades) {
        Screen.Clear();
        Pin(Spec.AxisX1, 0.0F, static_cast<float>(decades), 0.0F);
        PlotIt();
        std::vector<DrawnItem> labels;
        for (const DrawnItem& item : Screen.OfKind("text"))
            if (TextBounds(item).Top >= Chart.Spec.Frame.Y2) labels.push_back(item);
        ASSERT_GT(labels.size(), 3U) << decades;
        for (std::size_t i = 1; i < labels.size(); ++i)
            EXPECT_GT(TextBounds(labels[i]).Left - TextBounds(labels[i - 1]).Right, labels[i].Font.Height / 2)
                << decades;
        EXPECT_EQ(labels[0].Text, "1.0E+0") << decades;
        const int step = std::stoi(labels[1].Text.substr(5)); // every second decade, or every third, ...
        for (std::size_t i = 1; i < labels.size(); ++i)
            EXPECT_EQ(std::stoi(labels[i].Text.substr(5)), step * static_cast<int>(i));
    }
}

TEST_F(DrawAxesTest, LabelsAreLeftOutAtEqualDistancesAndZeroStays) {
    Pin(Spec.AxisX1, -2.1F, 1.9F, 0.1F);
    Spec.AxisX1.Decimals = 4;
    PlotIt();
    std::vector<double> values;
    for (const DrawnItem& item : Screen.OfKind("text"))
        if (TextBounds(item).Top >= Chart.Spec.Frame.Y2) values.push_back(std::stod(item.Text));
    ASSERT_GT(values.size(), 3U);
    EXPECT_LT(values.size(), 40U);
    EXPECT_EQ(std::count(values.begin(), values.end(), 0.0), 1);
    for (std::size_t i = 2; i < values.size(); ++i)
        EXPECT_NEAR(values[i] - values[i - 1], values[1] - values[0], 1e-6);
}

TEST_F(DrawAxesTest, CategoriesInTwoRowsAreLeftOutAtEqualDistances) {
    Screen.Width = 400;
    Screen.Height = 300;
    GraphSpec spec = Begin(GraphTypes::CategoryLines);
    Plot(spec, SetTable(12, 1), SetTable(12, 1, 1.0F));
    Chart.CatLabels.Recreate(12);
    for (long i = 1; i <= 12; ++i)
        Chart.CatLabels[i] = "category no " + std::to_string(i);
    Replot();
    Screen.Clear();
    ShowGraph();
    std::vector<int> numbers;
    std::vector<int> tops;
    for (const DrawnItem& item : Screen.OfKind("text"))
        if (item.Text.starts_with("category no ")) {
            numbers.push_back(std::stoi(item.Text.substr(12)));
            tops.push_back(TextBounds(item).Top);
        }
    ASSERT_GT(numbers.size(), 2U);
    ASSERT_LT(numbers.size(), 12U);
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        EXPECT_EQ(numbers[i] - numbers[i - 1], numbers[1] - numbers[0]);
        EXPECT_EQ(tops[i] > tops[i - 1], i % 2 == 1); // down and up
    }
}

TEST_F(DrawAxesTest, ColoursAndWidths) {
    Screen.DotsPerInchX = Screen.DotsPerInchY = 720.0; // two twips a unit
    Spec.AxisX1.Color = 3;                             // the fourth of the cycle
    Spec.AxisX1.AxisWidth = 20;
    Spec.AxisX1.TicWidth = 18;
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    bool axis = false;
    bool tic = false;
    for (const DrawnItem& item : Screen.OfKind("line")) {
        if (ItemText(item) == "line " + std::to_string(f.X1) + "," + std::to_string(f.Y2) + " " +
                                  std::to_string(f.X2) + "," + std::to_string(f.Y2)) {
            axis = true;
            EXPECT_EQ(item.Pen.Width, 10);
            EXPECT_EQ(item.Pen.Color, ToRgb(BasicColor(11)));
        }
        if (item.Points[0].X == Px(1) && item.Points[1].X == Px(1)) {
            tic = true;
            EXPECT_EQ(item.Pen.Width, 9);
        }
    }
    EXPECT_TRUE(axis && tic);
    EXPECT_EQ(Screen.FindText("1")->TextColor, ToRgb(BasicColor(11)));
}

TEST_F(DrawAxesTest, AxisTitles) {
    Spec.AxisX2.Show = Spec.AxisY2.Show = 1;
    Spec.AxisX1.Title.Text = "below";
    Spec.AxisX2.Title.Text = "above";
    Spec.AxisY1.Title.Text = "left side";
    Spec.AxisY2.Title.Text = "right side";
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    EXPECT_NEAR(MiddleX("below"), (f.X1 + f.X2) / 2, 1);
    EXPECT_NEAR(MiddleX("above"), (f.X1 + f.X2) / 2, 1);
    EXPECT_NEAR(MiddleY("left side"), (f.Y1 + f.Y2) / 2, 2);
    EXPECT_NEAR(MiddleY("right side"), (f.Y1 + f.Y2) / 2, 2);
    EXPECT_EQ(Screen.FindText("left side")->Font.Angle, 90);
    EXPECT_EQ(Screen.FindText("right side")->Font.Angle, 270);
    EXPECT_LT(TextBounds(*Screen.FindText("left side")).Right, TextBounds(*Screen.FindText("0.5")).Left);
    EXPECT_GT(TextBounds(*Screen.FindText("right side")).Left, f.X2);
    EXPECT_LT(TextBounds(*Screen.FindText("above")).Bottom, f.Y1);
}

TEST_F(DrawAxesTest, ThePrescaleStandsBehindTheTitle) {
    GraphAxis axis = DefaultAxis();
    axis.Title.Text = "Mass";
    EXPECT_EQ(AxisTitleText(axis), "Mass");
    axis.FactorName = "Thousands";
    EXPECT_EQ(AxisTitleText(axis), "Mass (Thousands)");
    axis.FactorName = " x 10^-15";
    EXPECT_EQ(AxisTitleText(axis), "Mass x 10^-15");
    axis.Title.Text = "";
    axis.FactorName = "Millions";
    EXPECT_EQ(AxisTitleText(axis), "(Millions)");
    axis.TicMode = TicModes::MarksOnly; // there are no numbers that the name tells about
    EXPECT_EQ(AxisTitleText(axis), "");
    axis.Title.Text = "Mass";
    EXPECT_EQ(AxisTitleText(axis), "Mass (Millions)");
}

TEST_F(DrawAxesTest, AxisTitlesAreJustified) {
    Spec.AxisX1.Title.Text = "below";
    Spec.AxisX1.Title.Justify = 0;
    Spec.AxisY1.Title.Text = "left side";
    Spec.AxisY1.Title.Justify = 0;
    PlotIt();
    const GraphBox& f = Chart.Spec.Frame;
    EXPECT_EQ(Screen.FindText("below")->Points[0].X, f.X1);
    EXPECT_EQ(Screen.FindText("left side")->Points[0].Y, f.Y2); // upward: from the bottom
    Chart.Spec.AxisX1.Title.Justify = 5;
    Chart.Spec.AxisY1.Title.Justify = 2;
    Screen.Clear();
    ShowGraph();
    EXPECT_EQ(TextBounds(*Screen.FindText("below")).Right + 1, Chart.State.ViewRight);
    EXPECT_EQ(TextBounds(*Screen.FindText("left side")).Top - 1, f.Y1);
}

TEST_F(DrawAxesTest, FontsByCodeAndDirection) {
    Chart.Style.ScreenVFonts = {0, 1, 2, 4, 4, 5};
    Spec.AxisX1.Title.Text = "below";
    Spec.AxisX1.Title.Font = 2 + BoldFont;
    Spec.AxisY1.Title.Text = "left side";
    PlotIt();
    EXPECT_EQ(Screen.FindText("below")->Font.Face, "Times New Roman");
    EXPECT_TRUE(Screen.FindText("below")->Font.Bold);
    EXPECT_EQ(Screen.FindText("left side")->Font.Face, "Courier New"); // Arial, upright
    EXPECT_FALSE(Screen.FindText("left side")->Font.Bold);
}

TEST_F(DrawAxesTest, FontList) {
    const std::vector<std::string> names = FontListNames();
    ASSERT_EQ(names.size(), 12U);
    EXPECT_EQ(names[3], "Arial (TT)");
    EXPECT_EQ(names[9], "Arial (TT) Bold");
    EXPECT_EQ(FontListIndex(3), 3);
    EXPECT_EQ(FontListIndex(19), 9);
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(FontListIndex(FontCode(i)), i);
}

} // namespace
} // namespace Quillon
