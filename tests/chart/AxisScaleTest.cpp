// From data to a scale: transform, range, prescale, format.
#include "chart/scale/AxisScale.h"

#include "ChartBench.h"

#include <bit>
#include <cmath>
#include <limits>

namespace Quillon {
namespace {

class AxisScaleTest : public ChartBench {
protected:
    AxisScaleTest() {
        Chart.Spec.GraphType = GraphTypes::XYPlot;
        Chart.Spec.PlotStyle = PlotStyles::Lines;
        Axis = DefaultAxis();
        Axis.ScaleMode = ScaleModes::Autorange;
    }
    std::vector<float> Transformed(std::vector<float> values) {
        TransformSet(Axis, values.data(), static_cast<long>(values.size()));
        return values;
    }
    void Range(const SetTable& data, std::int16_t kind = AxisKinds::Value) {
        Chart.State.Npts = static_cast<std::int16_t>(data.Points());
        Chart.State.Nsets = static_cast<std::int16_t>(data.Sets());
        AutoRange(Axis, kind, data, 1.0F);
    }
    void Format(float min, float max) {
        Axis.Min = min;
        Axis.Max = max;
        AutoFormat(Axis);
    }
    GraphAxis Axis;
};

constexpr float Infinity = std::numeric_limits<float>::infinity();

TEST_F(AxisScaleTest, MissingValueHasItsBits) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(MissingValue), 0xFF7FC99EU);
}

TEST_F(AxisScaleTest, LogBase10) {
    for (int e = -37; e <= 38; ++e)
        EXPECT_EQ(LogBase10(std::pow(10.0, e)), static_cast<float>(e));
    EXPECT_EQ(LogBase10(0.0), -6.0F);
    EXPECT_EQ(LogBase10(-5.0), -6.0F);
    EXPECT_FLOAT_EQ(LogBase10(2.0), 0.30103F);
}

TEST_F(AxisScaleTest, LinearValuesAreCopied) {
    Axis.Factor = 1000.0F; // counts on a manual scale only
    EXPECT_EQ(Transformed({1.5F, -2.0F, 0.0F, MissingValue}),
              (std::vector<float>{1.5F, -2.0F, 0.0F, MissingValue}));
}

TEST_F(AxisScaleTest, AManualFactorDivides) {
    Axis.ScaleMode = ScaleModes::Manual;
    Axis.Factor = 1000.0F;
    EXPECT_EQ(Transformed({5000.0F, MissingValue, -250.0F}),
              (std::vector<float>{5.0F, MissingValue, -0.25F}));
    EXPECT_EQ(LoadDivisor(Axis), 1000.0F);
}

TEST_F(AxisScaleTest, LogarithmsOfWhatIsPositive) {
    Axis.ScaleType = ScaleTypes::Logarithmic;
    EXPECT_EQ(Transformed({100.0F, 0.01F, 1.0F, 0.0F, -1.0F, MissingValue}),
              (std::vector<float>{2.0F, -2.0F, 0.0F, MissingValue, MissingValue, MissingValue}));
    Axis.LogBase = NaturalBase;
    const std::vector<float> natural = Transformed({1.0F, std::exp(1.0F), std::exp(-2.5F)});
    EXPECT_EQ(natural[0], 0.0F);
    EXPECT_NEAR(natural[1], 1.0F, 2e-7F);
    EXPECT_NEAR(natural[2], -2.5F, 5e-7F);
}

TEST_F(AxisScaleTest, AManualFactorComesBeforeTheLogarithm) {
    Axis.ScaleMode = ScaleModes::Manual;
    Axis.Factor = 10.0F;
    Axis.ScaleType = ScaleTypes::Logarithmic;
    EXPECT_EQ(Transformed({10.0F, 1000.0F, -10.0F}), (std::vector<float>{0.0F, 2.0F, MissingValue}));
}

TEST_F(AxisScaleTest, WhatIsNoNumberIsMissing) {
    EXPECT_EQ(Transformed({std::nanf(""), Infinity, -Infinity, 1.0F}),
              (std::vector<float>{MissingValue, MissingValue, MissingValue, 1.0F}));
    Axis.ScaleType = ScaleTypes::Logarithmic;
    EXPECT_EQ(Transformed({std::nanf(""), Infinity, -Infinity, 1.0F}),
              (std::vector<float>{MissingValue, MissingValue, MissingValue, 0.0F}));
    Axis.ScaleType = ScaleTypes::Linear;
    Axis.ScaleMode = ScaleModes::Manual;
    Axis.Factor = 1e-30F;
    EXPECT_EQ(Transformed({1e20F}), (std::vector<float>{MissingValue}));
}

TEST_F(AxisScaleTest, RangeOfValues) {
    Range(Table({{0.5F, -2.0F, 7.0F}, {MissingValue, 9.0F}}));
    EXPECT_EQ(Axis.Min, -2.0F);
    EXPECT_EQ(Axis.Max, 9.0F);
}

TEST_F(AxisScaleTest, FirstPointOfTheFirstSetIsNoPartOfTheRangeWhenMissing) {
    Range(Table({{MissingValue, 4.0F}, {3.0F, 5.0F}}));
    EXPECT_EQ(Axis.Min, 3.0F);
    EXPECT_EQ(Axis.Max, 5.0F);
}

TEST_F(AxisScaleTest, OneValueAndNoneGetAUnit) {
    Range(Table({{1.0F, 1.0F}}));
    EXPECT_EQ(Axis.Min, 1.0F);
    EXPECT_EQ(Axis.Max, 2.0F);
    Range(Table({{MissingValue, MissingValue}}));
    EXPECT_EQ(Axis.Min, 0.0F);
    EXPECT_EQ(Axis.Max, 1.0F);
}

TEST_F(AxisScaleTest, OneHugeValueGetsARangeAllTheSame) {
    for (const float value : {1e9F, -1e9F, 3e38F, -3e38F, std::numeric_limits<float>::max()}) {
        Range(Table({{value}}));
        EXPECT_LT(Axis.Min, Axis.Max) << value;
        EXPECT_LE(Axis.Min, value);
        EXPECT_GE(Axis.Max, value);
    }
}

TEST_F(AxisScaleTest, ManualAndZoomedRangesStand) {
    for (const std::int16_t mode : {ScaleModes::Manual, ScaleModes::Zoomed}) {
        Axis.ScaleMode = mode;
        Axis.Min = 10.0F;
        Axis.Max = 20.0F;
        Range(Table({{1.0F, 100.0F}}));
        EXPECT_EQ(Axis.Min, 10.0F);
        EXPECT_EQ(Axis.Max, 20.0F);
    }
}

TEST_F(AxisScaleTest, CategoriesFillAUnit) {
    Axis.FactorName = "Thousands";
    Axis.Factor = 1000.0F;
    Axis.ScaleMode = ScaleModes::Manual;
    Range(Table({{1.0F, 2.0F, 3.0F, 4.0F}}), AxisKinds::Category);
    EXPECT_EQ(Axis.Min, 0.0F);
    EXPECT_EQ(Axis.Max, 1.0F);
    EXPECT_EQ(Axis.Factor, 1.0F);
    EXPECT_EQ(Axis.FirstTic, 0.0F);
    EXPECT_EQ(Axis.TicInterval, 0.25F);
    EXPECT_TRUE(Axis.FactorName.Empty());
}

TEST_F(AxisScaleTest, StackedBarsRangeOverTheirSums) {
    Chart.Spec.GraphType = GraphTypes::VerticalBars;
    const SetTable data = Table({{1.0F, -2.0F, 3.0F}, {4.0F, -5.0F, MissingValue}});
    Chart.Spec.PlotStyle = 2;
    Range(data);
    EXPECT_EQ(Axis.Min, -7.0F);
    EXPECT_EQ(Axis.Max, 5.0F);
    Chart.Spec.PlotStyle = 1; // side by side
    Range(data);
    EXPECT_EQ(Axis.Min, -5.0F);
    EXPECT_EQ(Axis.Max, 4.0F);
}

TEST_F(AxisScaleTest, StacksOfPositiveValuesStartAtZero) {
    Chart.Spec.GraphType = GraphTypes::HorizontalBars;
    Chart.Spec.PlotStyle = 2;
    Range(Table({{5.0F, 6.0F}, {7.0F, 1.0F}}));
    EXPECT_EQ(Axis.Min, 0.0F);
    EXPECT_EQ(Axis.Max, 12.0F);
}

TEST_F(AxisScaleTest, LinesOverCategoriesNeverStack) {
    Chart.Spec.GraphType = GraphTypes::CategoryLines;
    Chart.Spec.PlotStyle = 2;
    Range(Table({{5.0F, 6.0F}, {7.0F, 1.0F}}));
    EXPECT_EQ(Axis.Min, 1.0F);
    EXPECT_EQ(Axis.Max, 7.0F);
}

TEST_F(AxisScaleTest, PrescaleNames) {
    Axis.ScaleMode = ScaleModes::Prescaled;
    const struct {
        float Value;
        const char* Name;
        float Factor, Max;
    } cases[] = {{500.0F, "", 1.0F, 500.0F},
                 {5000.0F, "Thousands", 1e3F, 5.0F},
                 {5e5F, "Thousands", 1e3F, 500.0F},
                 {5e6F, "Millions", 1e6F, 5.0F},
                 {5e9F, "Billions", 1e9F, 5.0F},
                 {5e12F, "Trillions", 1e12F, 5.0F},
                 {5e15F, " x 10^-15", 1e15F, 5.0F},
                 {0.5F, "Thousandths", 1e-3F, 500.0F},
                 {5e-5F, "Millionths", 1e-6F, 50.0F},
                 {5e-8F, "Billionths", 1e-9F, 50.0F},
                 {5e-11F, "Trillionths", 1e-12F, 50.0F},
                 {5e-14F, " x 10^15", 1e-15F, 50.0F}};
    for (const auto& c : cases) {
        Range(Table({{0.0F, c.Value}}));
        EXPECT_EQ(Axis.FactorName.Str(), c.Name) << c.Value;
        EXPECT_FLOAT_EQ(Axis.Factor, c.Factor) << c.Value;
        EXPECT_FLOAT_EQ(Axis.Max, c.Max) << c.Value;
        EXPECT_EQ(Axis.Min, 0.0F);
    }
}

TEST_F(AxisScaleTest, PrescaleLooksAtTheLargerLimit) {
    Axis.ScaleMode = ScaleModes::Prescaled;
    Range(Table({{-8000.0F, 20.0F}}));
    EXPECT_EQ(Axis.FactorName.Str(), "Thousands");
    EXPECT_FLOAT_EQ(Axis.Min, -8.0F);
    EXPECT_FLOAT_EQ(Axis.Max, 0.02F);
}

TEST_F(AxisScaleTest, NoPrescaleOnALogAxis) {
    Axis.ScaleMode = ScaleModes::Prescaled;
    Axis.ScaleType = ScaleTypes::Logarithmic;
    Axis.Factor = 1000.0F;
    Range(Table({{1.0F, 5000.0F}}));
    EXPECT_EQ(Axis.Factor, 1.0F);
    EXPECT_EQ(Axis.Max, 5000.0F);
}

TEST_F(AxisScaleTest, PrescaleAfterAManualFactorIsThatOfTheValuesThemselves) {
    Axis.ScaleMode = ScaleModes::Prescaled;
    AutoRange(Axis, AxisKinds::Value, Table({{1.0F, 5.0F}}), 1000.0F); // stored: 1000 to 5000 divided by 1000
    EXPECT_EQ(Axis.FactorName.Str(), "Thousands");
    EXPECT_FLOAT_EQ(Axis.Max, 5.0F);
    EXPECT_DOUBLE_EQ(DrawDivisor(Axis, 1000.0F), 1.0);
}

TEST_F(AxisScaleTest, AutorangeDropsAPrescaleOfBefore) {
    Axis.ScaleMode = ScaleModes::Prescaled;
    Range(Table({{0.0F, 5000.0F}}));
    EXPECT_DOUBLE_EQ(DrawDivisor(Axis, 1.0F), 1000.0);
    Axis.ScaleMode = ScaleModes::Zoomed; // the prescale stays
    EXPECT_DOUBLE_EQ(DrawDivisor(Axis, 1.0F), 1000.0);
    Axis.ScaleMode = ScaleModes::Autorange;
    Range(Table({{0.0F, 5000.0F}}));
    EXPECT_EQ(Axis.Max, 5000.0F);
    EXPECT_TRUE(Axis.FactorName.Empty());
    EXPECT_DOUBLE_EQ(DrawDivisor(Axis, 1.0F), 1.0);
}

// --- format --------------------------------------------------------------------------------------------

TEST_F(AxisScaleTest, FormatOfLinearAxes) {
    const struct {
        float Min, Max;
        std::int16_t Format, Decimals;
    } cases[] = {
        {0.0F, 1.0F, 1, 1},                                  // d = 1, m = 1: 1 - floor(0) = 1
        {0.13F, 0.87F, 1, 2},                                // log10 0.74 = -0.13: 1 + 1
        {6.85F, 7.15F, 1, 2},                                // log10 0.3 = -0.52: 1 + 1
        {0.0F, 5.0F, 1, 1},                                  // log10 5 = 0.7: 1 - 0
        {0.0F, 50.0F, 1, 0},                                 // 1 - 1 - 1 < 0
        {1000.0F, 1000.5F, 1, 0},                            // 1 + 1 - 3 < 0
        {-0.002F, 0.001F, 1, 4},                             // log10 0.003 = -2.5: 1 + 3
        {0.0F, 99999.0F, 1, 0},     {0.0F, 100000.0F, 2, 1}, // exactly 100000 is exponential; log10 d = 0
        {-100000.0F, 0.0F, 2, 1},   {100000.0F, 110000.0F, 2, 3}, // d = 0.0909: 1 + 2
        {0.00001F, 0.00009F, 2, 2},                               // both below 0.0001; d = 0.889: 1 + 1
        {0.00001F, 0.0001F, 1, 6},                                // not below: 1 - floor(-4.05)
    };
    for (const auto& c : cases) {
        Axis.TicFormat = TicFormats::Decimal;
        Format(c.Min, c.Max);
        EXPECT_EQ(Axis.TicFormat, c.Format) << c.Min << " to " << c.Max;
        EXPECT_EQ(Axis.Decimals, c.Decimals) << c.Min << " to " << c.Max;
    }
}

TEST_F(AxisScaleTest, ExponentialFormatIsKept) {
    Axis.TicFormat = TicFormats::Exponential;
    Format(0.0F, 1.0F);
    EXPECT_EQ(Axis.TicFormat, TicFormats::Exponential);
    EXPECT_EQ(Axis.Decimals, 1);
}

TEST_F(AxisScaleTest, AtMostNineDecimalsBelowTen) {
    Axis.TicFormat = TicFormats::Decimal;
    Format(1.0F, 1.0F + 1e-7F);
    EXPECT_LE(Axis.Decimals, 9);
    EXPECT_EQ(Axis.Decimals, 8); // the singles differ by 1.19E-7: 1 + 7
}

TEST_F(AxisScaleTest, FormatOfLog10Axes) {
    Axis.ScaleType = ScaleTypes::Logarithmic;
    const struct {
        float Min, Max;
        std::int16_t Format, Decimals;
    } cases[] = {{-3.0F, 2.0F, 1, 3}, {-2.5F, 2.0F, 1, 3}, {0.0F, 6.0F, 1, 0}, {1.5F, 6.0F, 1, 0},
                 {-5.0F, 0.0F, 1, 5}, {0.0F, 6.1F, 2, 1},  {-5.1F, 0.0F, 2, 1}};
    for (const auto& c : cases) {
        Format(c.Min, c.Max);
        EXPECT_EQ(Axis.TicFormat, c.Format) << c.Min << " to " << c.Max;
        EXPECT_EQ(Axis.Decimals, c.Decimals) << c.Min << " to " << c.Max;
    }
}

TEST_F(AxisScaleTest, NaturalLogAxesAreFormattedLikeLinearOnes) {
    Axis.ScaleType = ScaleTypes::Logarithmic;
    Axis.LogBase = NaturalBase;
    Format(-3.0F, 2.0F);
    EXPECT_EQ(Axis.TicFormat, 1);
    EXPECT_EQ(Axis.Decimals, 1); // log10 5 = 0.7: 1 - 0
}

TEST_F(AxisScaleTest, ManualAndZoomedFormatsStand) {
    for (const std::int16_t mode : {ScaleModes::Manual, ScaleModes::Zoomed}) {
        Axis.ScaleMode = mode;
        Axis.Decimals = 5;
        Axis.TicFormat = TicFormats::Decimal;
        Format(0.0F, 1e7F);
        EXPECT_EQ(Axis.Decimals, 5);
        EXPECT_EQ(Axis.TicFormat, TicFormats::Decimal);
    }
}

} // namespace
} // namespace Quillon
