// Series of X-Y plots: what is drawn where.
#include "ChartBench.h"
#include "chart/draw/ClipLine.h"
#include "chart/pens/Pens.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Mapping.h"

#include <random>

namespace Quillon {
namespace {

class DrawXYTest : public ChartBench {
protected:
    // A spec on the scale 0 to 10 by 0 to 1.
    GraphSpec Pinned(int style = PlotStyles::Lines) {
        GraphSpec spec = Begin(GraphTypes::XYPlot, style);
        Pin(spec.AxisX1, 0.0F, 10.0F, 1.0F);
        Pin(spec.AxisY1, 0.0F, 1.0F, 0.1F);
        return spec;
    }
    std::string PolylineOf(const std::vector<std::pair<double, double>>& points) {
        std::string text = "polyline";
        for (const auto& [x, y] : points)
            text += " " + std::to_string(Px(x)) + "," + std::to_string(Py(y));
        return text;
    }
};

using Points = std::vector<std::pair<double, double>>;

TEST_F(DrawXYTest, ALineThroughThePoints) {
    GraphSpec spec = Pinned();
    Plot(spec, Table({{1, 2, 9}}), Table({{0.5F, 0.25F, 1}}));
    EXPECT_EQ(Chart.GraphStatus, 0);
    const auto lines = DataItems("polyline");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(ItemText(lines[0]), PolylineOf({{1, 0.5}, {2, 0.25}, {9, 1}}));
    EXPECT_TRUE(DataItems("polygon").empty());
}

TEST_F(DrawXYTest, AGapSplitsTheLine) {
    GraphSpec spec = Pinned();
    const float gap = MissingValue;
    Plot(spec, Table({{gap, 1, 2, gap, 4, 5, 6, 7}}),
         Table({{0.1F, 0.2F, 0.3F, 0.4F, 0.5F, gap, 0.6F, 0.7F}}));
    const auto lines = DataItems("polyline");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(ItemText(lines[0]), PolylineOf({{1, 0.2}, {2, 0.3}}));
    EXPECT_EQ(ItemText(lines[1]), PolylineOf({{6, 0.6}, {7, 0.7}})); // the point at 4 stands alone
}

TEST_F(DrawXYTest, WhatIsNoNumberIsAGap) {
    GraphSpec spec = Pinned();
    Plot(spec, Table({{1, 2, 3, 4, 5}}), Table({{0.1F, 0.2F, std::nanf(""), 0.4F, 0.5F}}));
    EXPECT_EQ(DataItems("polyline").size(), 2U);
}

TEST_F(DrawXYTest, SymbolsOnly) {
    GraphSpec spec = Pinned(PlotStyles::SymbolsOnly);
    Plot(spec, Table({{1, 2}, {3, MissingValue}}), Table({{0.5F, 0.25F}, {0.75F, 0.1F}}));
    EXPECT_TRUE(DataItems("polyline").empty());
    EXPECT_EQ(DataItems("line").size(), 4U);    // the first set has a plus at each of two points
    EXPECT_EQ(DataItems("polygon").size(), 1U); // the second a diamond at its one
}

TEST_F(DrawXYTest, AlternateSetsAreSymbolsAndLines) {
    for (const std::int16_t mode : {std::int16_t{1}, std::int16_t{3}}) { // the symbols come in either mode
        Screen.Clear();
        GraphSpec spec = Pinned(PlotStyles::Alternating);
        spec.SymbolMode = mode;
        Plot(spec, Table({{1, 2}, {1, 2}, {1, 2}, {1, 2}}),
             Table({{0.5F, 0.6F}, {0.5F, 0.6F}, {0.1F, 0.2F}, {0.1F, 0.2F}}));
        const auto lines = DataItems("polyline");
        ASSERT_EQ(lines.size(), 2U);
        EXPECT_EQ(lines[0].Pen.Color, ToRgb(BasicColor(9)));  // set 2: second colour of the cycle
        EXPECT_EQ(lines[1].Pen.Color, ToRgb(BasicColor(11))); // set 4: fourth
        const auto plus = DataItems("line");
        ASSERT_EQ(plus.size(), 4U);
        EXPECT_EQ(plus[0].Pen.Color, ToRgb(BasicColor(0))); // set 1
        const auto diamonds = DataItems("polygon");
        ASSERT_EQ(diamonds.size(), 2U);
        EXPECT_EQ(diamonds[0].Pen.Color, ToRgb(BasicColor(10))); // set 3
    }
}

TEST_F(DrawXYTest, ADotAtTheCentre) {
    GraphSpec spec = Pinned(PlotStyles::SymbolsOnly);
    spec.SymbolMode = 0;
    Plot(spec, Table({{5}}), Table({{0.5F}}));
    const std::string centre = std::to_string(Px(5)) + "," + std::to_string(Py(0.5));
    const auto lines = DataItems("line");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(ItemText(lines[2]), "line " + centre + " " + centre);
}

TEST_F(DrawXYTest, APrescaledAxisDividesWhenItDraws) {
    GraphSpec spec = Begin();
    spec.AxisY1.ScaleMode = ScaleModes::Prescaled;
    spec.AxisY1.Max = 1.0F; // CheckSpec turns Min = Max into a plain autorange
    Plot(spec, Table({{1, 2, 3}}), Table({{0, 2500, 5000}}));
    EXPECT_EQ(spec.AxisY1.FactorName.Str(), "Thousands");
    EXPECT_EQ(spec.AxisY1.Max, 5.0F);
    EXPECT_EQ(Chart.DataY(2, 1), 2500.0F); // the stored data stay unscaled
    const auto lines = DataItems("polyline");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(ItemText(lines[0]), PolylineOf({{1, 0}, {2, 2.5}, {3, 5}}));
    // A zoom keeps the prescale, whatever becomes of the scale mode afterwards.
    for (const std::int16_t mode : {ScaleModes::Zoomed, ScaleModes::Manual}) {
        Chart.Spec.AxisY1.ScaleMode = mode;
        Screen.Clear();
        Replot();
        ShowGraph();
        EXPECT_EQ(ItemText(DataItems("polyline").at(0)), PolylineOf({{1, 0}, {2, 2.5}, {3, 5}}));
    }
}

TEST_F(DrawXYTest, ALineToAPointBeyondTheDeviceKeepsItsSlope) {
    GraphSpec spec = Pinned();
    Plot(spec, Table({{0, 1e6F}}), Table({{0, 1e5F}})); // along the diagonal of the scale, far beyond it
    const auto lines = DataItems("line");
    ASSERT_EQ(lines.size(), 1U);
    const DevicePoint from = lines[0].Points[0];
    const DevicePoint to = lines[0].Points[1];
    EXPECT_EQ(from.X, Px(0));
    EXPECT_EQ(from.Y, Py(0));
    EXPECT_GE(to.X, 0);
    EXPECT_LE(to.X, Screen.Width);
    EXPECT_GE(to.Y, 0);
    const double slope = static_cast<double>(Py(1) - Py(0)) / (Px(10) - Px(0));
    EXPECT_NEAR(static_cast<double>(to.Y - from.Y) / (to.X - from.X), slope, 0.002);
}

TEST_F(DrawXYTest, FarPointsAreClampedAndNeverWrap) {
    GraphSpec spec = Pinned();
    spec.SymbolMode = 0;
    Plot(spec, Table({{-3e38F, 3e38F, 5, 1e9F, -1e9F}}), Table({{3e38F, -3e38F, 0.5F, 0.5F, 1e20F}}));
    for (const DrawnItem& item : Screen.Items)
        for (const DevicePoint& p : item.Points) {
            EXPECT_GE(p.X, -20) << ItemText(item);
            EXPECT_LE(p.X, Screen.Width + 20) << ItemText(item);
            EXPECT_GE(p.Y, -20) << ItemText(item);
            EXPECT_LE(p.Y, Screen.Height + 20) << ItemText(item);
        }
}

TEST_F(DrawXYTest, ColoursRunOutBeforeTheDashesBegin) {
    GraphSpec spec = Pinned();
    SetTable x(2, 30);
    SetTable y(2, 30);
    for (long set = 1; set <= 30; ++set) {
        x(1, set) = 0;
        x(2, set) = 10;
        y(1, set) = y(2, set) = static_cast<float>(set) / 31.0F;
    }
    Plot(spec, x, y);
    EXPECT_EQ(DataItems("polyline").size(), 14U); // the first round of colours is solid
    const auto pieces = DataItems("line");
    ASSERT_FALSE(pieces.empty());
    EXPECT_EQ(pieces.front().Pen.Color, ToRgb(BasicColor(0)));              // the 15th set begins again
    EXPECT_EQ(pieces.front().Points[1].X - pieces.front().Points[0].X, 15); // with dash style 1
    EXPECT_EQ(pieces.back().Pen.Color, ToRgb(BasicColor(9))); // the 30th is the second of the third round
    const DrawnItem* third = nullptr;
    for (const DrawnItem& item : pieces)
        if (item.Points[0].Y == Py(29.0 / 31.0) && third == nullptr) third = &item;
    ASSERT_NE(third, nullptr);
    EXPECT_EQ(third->Points[1].X - third->Points[0].X, 4); // and has dash style 2
}

// Every second set has a line, so that seven colours serve before they run out.
TEST_F(DrawXYTest, AlternateLinesOfTheSameColourDifferInTheirDash) {
    GraphSpec spec = Pinned(PlotStyles::Alternating);
    SetTable x(2, 36);
    SetTable y(2, 36);
    for (long set = 1; set <= 36; ++set) {
        x(1, set) = 0;
        x(2, set) = 10;
        y(1, set) = y(2, set) = static_cast<float>(set) / 37.0F;
    }
    Plot(spec, x, y);
    EXPECT_EQ(DataItems("polyline").size(), 7U); // sets 2 to 14 are solid
    const auto firstPiece = [&](int set) {
        for (const DrawnItem& item : DataItems("line"))
            if (item.Points[0].Y == Py(set / 37.0) && item.Points[0].X == Px(0)) return item;
        return DrawnItem{};
    };
    const DrawnItem second = firstPiece(16);
    ASSERT_EQ(second.Points.size(), 2U);
    EXPECT_EQ(second.Pen.Color, ToRgb(BasicColor(9))); // as set 2
    EXPECT_EQ(second.Points[1].X - second.Points[0].X, 15);
    const DrawnItem third = firstPiece(30);
    ASSERT_EQ(third.Points.size(), 2U);
    EXPECT_EQ(third.Pen.Color, ToRgb(BasicColor(9)));
    EXPECT_EQ(third.Points[1].X - third.Points[0].X, 4);
}

TEST_F(DrawXYTest, AlternateLinesOnTwoColoursTakeTheDashesInTurn) {
    Screen.HasColor = false;
    GraphSpec spec = Pinned(PlotStyles::Alternating);
    SetTable x(2, 6);
    SetTable y(2, 6);
    for (long set = 1; set <= 6; ++set) {
        x(1, set) = 0;
        x(2, set) = 10;
        y(1, set) = y(2, set) = static_cast<float>(set) / 7.0F;
    }
    Plot(spec, x, y);
    const auto solid = DataItems("polyline");
    ASSERT_EQ(solid.size(), 1U); // the first of the lines
    EXPECT_EQ(solid[0].Points[0].Y, Py(2.0 / 7.0));
    const auto length = [&](int set) {
        for (const DrawnItem& item : DataItems("line"))
            if (item.Points[0].Y == Py(set / 7.0) && item.Points[1].Y == Py(set / 7.0) &&
                item.Points[0].X == Px(0))
                return item.Points[1].X - item.Points[0].X;
        return 0;
    };
    EXPECT_EQ(length(4), 15);
    EXPECT_EQ(length(6), 4);
}

TEST_F(DrawXYTest, ALineOnOnePlaceIsSeen) {
    for (const std::int16_t dashed : {std::int16_t{0}, std::int16_t{1}}) {
        Screen.Clear();
        GraphSpec spec = Pinned();
        if (dashed != 0) Chart.Cycles.Line[0] = 1;
        Plot(spec, Table({{4, 4.0001F, 4}}), Table({{0.4F, 0.4F, 0.40001F}}));
        const std::string place = std::to_string(Px(4)) + "," + std::to_string(Py(0.4));
        const auto lines = DataItems("polyline");
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_EQ(ItemText(lines[0]), "polyline " + place + " " + place);
    }
    Screen.Clear();
    GraphSpec spec = Pinned();
    Plot(spec, Table({{5, MissingValue}}), Table({{0.5F, 0.5F}})); // a point alone has no line
    EXPECT_TRUE(DataItems("line").empty());
    EXPECT_TRUE(DataItems("polyline").empty());
}

TEST_F(DrawXYTest, WithoutDashedLinesAllAreSolid) {
    GraphSpec spec = Pinned();
    Chart.Style.DashedLines = 0;
    SetTable x(2, 30, 1.0F);
    SetTable y(2, 30, 0.5F);
    Plot(spec, x, y);
    EXPECT_TRUE(DataItems("line").empty());
}

TEST_F(DrawXYTest, OnTwoColoursEachSetHasItsDashAndAllAreBlack) {
    Screen.HasColor = false;
    GraphSpec spec = Pinned();
    Plot(spec, Table({{0, 10}, {0, 10}, {0, 10}}), Table({{0.2F, 0.2F}, {0.4F, 0.4F}, {0.6F, 0.6F}}));
    EXPECT_EQ(DataItems("polyline").size(), 1U); // set 1 is solid
    for (const DrawnItem& item : DataItems("line"))
        EXPECT_EQ(item.Pen.Color, 0U);
    const auto pieces = DataItems("line");
    EXPECT_EQ(pieces.front().Points[1].X - pieces.front().Points[0].X, 15); // set 2: style 1
    EXPECT_EQ(pieces.back().Points[0].Y, Py(0.6));                          // set 3: style 2
    EXPECT_EQ(TargetColor(BasicColor(15)), 0xFFFFFFU);                      // white stays white
}

TEST_F(DrawXYTest, RainbowColoursRunFromVioletToRed) {
    GraphSpec spec = Pinned();
    Chart.Style.UseRainbowColors = -1;
    Plot(spec, Table({{0, 10}, {0, 10}, {0, 10}}), Table({{0.2F, 0.2F}, {0.4F, 0.4F}, {0.6F, 0.6F}}));
    const auto lines = DataItems("polyline");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].Pen.Color, 0xAA00FFU); // hue 280: red (280 - 240) / 60 of full, blue full
    EXPECT_EQ(lines[1].Pen.Color, 0x00FF55U); // hue 140: green full, blue 20 / 60
    EXPECT_EQ(lines[2].Pen.Color, 0xFF0000U); // hue 0
}

TEST_F(DrawXYTest, LineWidths) {
    Screen.DotsPerInchX = Screen.DotsPerInchY = 1440.0; // a unit is a twip
    SetPrinterSurface(Screen.Surface());
    GraphSpec spec = Pinned();
    spec.Device = "1";
    spec.LineWidth = 9;
    Plot(spec, Table({{0, 10}}), Table({{0.2F, 0.2F}}));
    EXPECT_EQ(DataItems("polyline").at(0).Pen.Width, 9);
    Chart.Style.LineWidthFixed = 0;
    for (const auto& [index, falling, rising] :
         {std::tuple{0, 9, 4}, {4, 9, 4}, {5, 8, 4}, {20, 5, 5}, {25, 4, 6}, {69, 4, 9}}) {
        Chart.Style.LineWidthIncrease = 0;
        EXPECT_EQ(SetLineWidth(index), falling) << index; // 9 less 1 for each five, at least round(4.36)
        Chart.Style.LineWidthIncrease = -1;
        EXPECT_EQ(SetLineWidth(index), rising) << index; // 1 more for each five, at most 9
    }
    Chart.PlotterFonts = -1;
    EXPECT_EQ(SetLineWidth(0), 0);
}

TEST_F(DrawXYTest, EventsAreServedAndACancelStopsAtFiftyPoints) {
    GraphSpec spec = Pinned();
    SetTable x(1000, 3, 1.0F);
    SetTable y(1000, 3, 0.5F);
    for (long p = 1; p <= 1000; ++p)
        x(p, 1) = static_cast<float>(p) / 100.0F;
    int served = 0;
    Outside.DuringEvents = [&] {
        if (++served == 3) Cancel = -1;
    };
    spec.Legend.Show = 1;
    Plot(spec, x, y);
    EXPECT_EQ(served, 3);
    EXPECT_EQ(Screen.FindText("a"), nullptr); // no legend any more
    std::size_t points = 0;
    for (const DrawnItem& item : DataItems("polyline"))
        points += item.Points.size();
    EXPECT_LE(points, 155U);
    EXPECT_EQ(Cancel, 0); // answered by the stop
    ShowGraph();
    EXPECT_NE(Screen.FindText("a"), nullptr);
}

TEST_F(DrawXYTest, ABoxThatKeepsItsPictureIsRefreshedByGroups) {
    GraphSpec spec = Pinned();
    const SetTable x(2, 12, 1.0F);
    Plot(spec, x, x);
    EXPECT_EQ(Screen.OfKind("refresh").size(), 3U); // after sets 5 and 10, and at the end
}

TEST_F(DrawXYTest, LinesOverCategoriesStandInTheMiddle) {
    GraphSpec spec = Begin(GraphTypes::CategoryLines);
    spec.SymbolMode = 3;
    Plot(spec, SetTable(4, 1), Table({{1, 2, 4, 3}}));
    const auto lines = DataItems("polyline");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(ItemText(lines[0]), PolylineOf({{0.125, 1}, {0.375, 2}, {0.625, 4}, {0.875, 3}}));
    EXPECT_EQ(DataItems("line").size(), 0U);
}

TEST_F(DrawXYTest, DeviceToAxisUnitsAndBack) {
    GraphSpec spec = Pinned();
    Plot(spec, Table({{0, 10}}), Table({{0, 1}}));
    for (const double x : {0.0, 0.123, 5.0, 10.0}) {
        EXPECT_NEAR(AxisXAt(MapX(x)), x, 1e-12);
        EXPECT_NEAR(AxisYAt(MapY(x)), x, 1e-12);
    }
    EXPECT_EQ(DeviceX(1e30), 32767);
    EXPECT_EQ(DeviceX(-1e30), -32768);
}

TEST_F(DrawXYTest, FiftyFourThousandPointsAreDrawnWithFewOperations) {
    SetTable x(3000, 18);
    SetTable y(3000, 18);
    std::mt19937 random(1);
    for (long set = 1; set <= 18; ++set)
        for (long p = 1; p <= 3000; ++p) {
            x(p, set) = static_cast<float>(p) / 300.0F;
            y(p, set) = static_cast<float>(random() % 1000) / 1000.0F;
        }
    GraphSpec spec = Pinned();
    spec.SymbolMode = 0;
    Chart.Style.DashedLines = 0;
    std::size_t operations = 0;
    DrawingSurface counting = Screen.Surface(); // measures text, but keeps nothing
    counting.Line = [&](int, int, int, int) { ++operations; };
    counting.Polyline = [&](const std::vector<DevicePoint>&) { ++operations; };
    counting.Polygon = [&](const std::vector<DevicePoint>&) { ++operations; };
    counting.Ellipse = [&](const DeviceRect&) { ++operations; };
    SetScreenSurface(counting);
    Plot(spec, x, y);
    operations = 0;
    Replot();
    ShowGraph();
    EXPECT_GT(operations, 100000U);
    // At most a shape, the two lines of a cross and a dot for each point, and a stroke for every fifty.
    EXPECT_LT(operations, 4U * 54000U + 54000U / 50U + 1000U);
}

TEST_F(DrawXYTest, ClipLineKeepsWhatIsWithin) {
    const struct {
        LineEnds From, To;
        bool Seen;
    } cases[] = {{{1, 1, 9, 9}, {1, 1, 9, 9}, true},
                 {{-10, 5, 20, 5}, {0, 5, 10, 5}, true},
                 {{-10, -10, 20, 20}, {0, 0, 10, 10}, true},
                 {{5, -5, 5, 15}, {5, 0, 5, 10}, true},
                 {{-1, 5, -1, 6}, {}, false},
                 {{11, 5, 12, 9}, {}, false},
                 {{-1e6, -1e6, 1e6, 1e6}, {0, 0, 10, 10}, true},
                 {{25, 0, 0, 25}, {}, false}};
    for (const auto& c : cases) {
        LineEnds line = c.From;
        ASSERT_EQ(ClipLine(line, 10, 10), c.Seen) << c.From.X1;
        if (!c.Seen) continue;
        EXPECT_NEAR(line.X1, c.To.X1, 1e-8);
        EXPECT_NEAR(line.Y1, c.To.Y1, 1e-8);
        EXPECT_NEAR(line.X2, c.To.X2, 1e-8);
        EXPECT_NEAR(line.Y2, c.To.Y2, 1e-8);
    }
    LineEnds diagonal{20, -1, -1, 20}; // x + y = 19
    ASSERT_TRUE(ClipLine(diagonal, 10, 10));
    EXPECT_NEAR(diagonal.X1, 10, 1e-8);
    EXPECT_NEAR(diagonal.Y1, 9, 1e-8);
    EXPECT_NEAR(diagonal.X2, 9, 1e-8);
    EXPECT_NEAR(diagonal.Y2, 10, 1e-8);
    LineEnds infinite{0, 0, INFINITY, 1};
    EXPECT_FALSE(ClipLine(infinite, 10, 10));
}

} // namespace
} // namespace Quillon
