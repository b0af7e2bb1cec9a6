// The data as text, and the separation of sets.
#include "ChartBench.h"

namespace Quillon {
namespace {

class DataTextTest : public ChartBench {
protected:
    void PlotSome() {
        GraphSpec spec = Begin();
        Plot(spec, Table({{1, 2, 3}, {1.5F, MissingValue}}),
             Table({{0.25F, MissingValue, -0.5F}, {1e-11F, 4}}));
    }
};

TEST_F(DataTextTest, ALineForEachPointOfTheLongestSet) {
    PlotSome();
    EXPECT_EQ(DataText('\t'), "1\t0.25\t1.5\t1E-11\r\n"
                              "2\t \t \t4\r\n"
                              "3\t-0.5\t \t \r\n");
    EXPECT_EQ(DataText(',').substr(0, 16), "1,0.25,1.5,1E-11");
}

TEST_F(DataTextTest, PointsThatNoSetHasAreNoLines) {
    GraphSpec spec = Begin();
    SetTable x(5, 1);
    x(2, 1) = 7;
    Plot(spec, x, x);
    EXPECT_EQ(DataText('\t'), " \t \r\n7\t7\r\n");
    Chart = ChartModule{};
    EXPECT_EQ(DataText('\t'), "");
}

TEST_F(DataTextTest, TheValuesAreThoseHeld) {
    GraphSpec spec = Begin();
    spec.AxisY1.ScaleType = ScaleTypes::Logarithmic;
    Plot(spec, Table({{1, 2}}), Table({{1000, 0}}));
    EXPECT_EQ(DataText('\t'), "1\t3\r\n2\t \r\n");
}

TEST_F(DataTextTest, Delimiters) {
    // 1 is the standing value of the setting; every other code is the character.
    for (const auto& [code, expected] : {std::pair{1, '\t'},
                                         {9, '\t'},
                                         {44, ','},
                                         {32, ' '},
                                         {0, '\t'},
                                         {59, ';'},
                                         {124, '|'},
                                         {167, '\xA7'}}) {
        Chart.Style.AsciiDelimiter = static_cast<std::int16_t>(code);
        EXPECT_EQ(AsciiDelimiterChar(), expected);
    }
}

// --- separation ----------------------------------------------------------------------------------------

TEST_F(DataTextTest, TheCommandCopiesAGraphThatIsHeld) {
    PlotSome();
    Chart.GraphHeld = 0;
    EditCopyData();
    EXPECT_EQ(Outside.ClipboardHolds, "");
    Chart.GraphHeld = -1;
    EditCopyData();
    EXPECT_EQ(Outside.ClipboardHolds.substr(0, 19), "1\t0.25\t1.5\t1E-11\r\n2");
}

class SeparationTest : public ChartBench {
protected:
    void PlotSets4(std::int16_t style) {
        GraphSpec spec = Begin(GraphTypes::XYPlot, style);
        Plot(spec, Table({{1, 2}, {1, 2}, {1, MissingValue}, {1, 2}}),
             Table({{1, 2}, {1, 2}, {1, 2}, {1, MissingValue}}));
        Chart.SetShift.Recreate(4);
        for (long i = 1; i <= 4; ++i)
            Chart.SetShift[i] = static_cast<float>(10 * (i - 1));
    }
};

TEST_F(SeparationTest, AlongY) {
    PlotSets4(PlotStyles::Lines);
    Chart.SeparateMode = 2;
    EXPECT_EQ(SeparationCount(), 4);
    Screen.Clear();
    ApplySeparation();
    EXPECT_EQ(Chart.DataY(1, 1), 1.0F);
    EXPECT_EQ(Chart.DataY(2, 3), 22.0F);
    EXPECT_EQ(Chart.DataY(1, 4), 31.0F);
    EXPECT_EQ(Chart.DataY(2, 4), MissingValue);
    EXPECT_EQ(Chart.DataX(1, 4), 1.0F);
    EXPECT_GE(Chart.Spec.AxisY1.Max, 31.0F); // scaled afresh
    EXPECT_FALSE(DataItems("polyline").empty());
}

TEST_F(SeparationTest, AlongXAndBoth) {
    PlotSets4(PlotStyles::Lines);
    Chart.SeparateMode = 1;
    ApplySeparation();
    EXPECT_EQ(Chart.DataX(1, 3), 21.0F);
    EXPECT_EQ(Chart.DataX(2, 3), MissingValue);
    EXPECT_EQ(Chart.DataY(1, 3), 1.0F);
    Chart.SeparateMode = 0;
    ApplySeparation();
    EXPECT_EQ(Chart.DataX(1, 3), 41.0F);
    EXPECT_EQ(Chart.DataY(1, 3), 21.0F);
}

TEST_F(SeparationTest, PairsMoveTogether) {
    PlotSets4(PlotStyles::Alternating);
    EXPECT_EQ(SeparationCount(), 2);
    Chart.SeparateMode = 2;
    ApplySeparation();
    EXPECT_EQ(Chart.DataY(1, 1), 1.0F);
    EXPECT_EQ(Chart.DataY(1, 2), 1.0F);
    EXPECT_EQ(Chart.DataY(1, 3), 11.0F);
    EXPECT_EQ(Chart.DataY(1, 4), 11.0F);
}

TEST_F(SeparationTest, OnALogAxisAShiftMultiplies) {
    GraphSpec spec = Begin();
    spec.AxisY1.ScaleType = ScaleTypes::Logarithmic;
    Plot(spec, Table({{1}, {1}}), Table({{100}, {100}}));
    Chart.SetShift.Recreate(2);
    Chart.SetShift[2] = 1.0F;
    Chart.SeparateMode = 2;
    ApplySeparation();
    EXPECT_EQ(Chart.DataY(1, 1), 2.0F);
    EXPECT_EQ(Chart.DataY(1, 2), 3.0F); // 1000
}

TEST_F(SeparationTest, WhatLeavesTheRangeIsMissingAndAShortTableIsHarmless) {
    PlotSets4(PlotStyles::Lines);
    Chart.SetShift.Recreate(2, 3e38F);
    Chart.SeparateMode = 2;
    for (int i = 0; i < 3; ++i)
        ApplySeparation();
    EXPECT_EQ(Chart.DataY(1, 1), MissingValue);
    EXPECT_EQ(Chart.DataY(1, 3), 1.0F);
}

} // namespace
} // namespace Quillon
