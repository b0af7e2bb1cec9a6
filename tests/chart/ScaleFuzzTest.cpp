// The scaling under ranges that no one has picked: what must hold for all of them.
#include "ChartBench.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Tics.h"

#include <cmath>
#include <random>
#include <set>

namespace Quillon {
namespace {

class ScaleFuzzTest : public ChartBench {
protected:
    ScaleFuzzTest() {
        Chart.Spec.GraphType = GraphTypes::XYPlot;
        Chart.Spec.PlotStyle = 1;
        Axis = DefaultAxis();
    }
    // A number of any size: its exponent is what is evenly spread.
    float Any(double least = -38.0, double most = 38.0) {
        std::uniform_real_distribution<double> exponent(least, most);
        const double value = std::pow(10.0, exponent(Random));
        return FiniteSingle(Random() % 2 == 0 ? value : -value);
    }
    int Length() { return static_cast<int>(Random() % 3000); }
    int Space() { return static_cast<int>(Random() % 300); }

    void Scale(const SetTable& data, int length, int space) {
        AutoRange(Axis, AxisKinds::Value, data, 1.0F);
        AutoFormat(Axis);
        ChooseAxisTics(Axis, AxisKinds::Value, length, space);
    }
    GraphAxis Axis;
    std::mt19937 Random{20200421};
};

// A step is 1 or 2 times a power of ten.
bool PlainStep(double step) {
    const double power = std::floor(std::log10(step) + 1e-6);
    const double lead = step / std::pow(10.0, power);
    return std::fabs(lead - 1.0) < 1e-5 || std::fabs(lead - 2.0) < 1e-5;
}

TEST_F(ScaleFuzzTest, LinearScales) {
    for (int round = 0; round < 20000; ++round) {
        Axis = DefaultAxis();
        Axis.ScaleMode = Random() % 2 == 0 ? ScaleModes::Autorange : ScaleModes::Prescaled;
        const SetTable data = Table({{Any(), Any()}});
        const int length = Length();
        const int space = Space();
        Scale(data, length, space);
        const double divisor = DrawDivisor(Axis, 1.0F);
        const double low = std::min(data(1, 1), data(2, 1)) / divisor;
        const double high = std::max(data(1, 1), data(2, 1)) / divisor;
        const double size = std::max(std::fabs(low), std::fabs(high));
        ASSERT_LT(Axis.Min, Axis.Max) << low << " " << high;
        ASSERT_LE(Axis.Min, low + 2e-6 * size);
        ASSERT_GE(Axis.Max, high - 2e-6 * size);
        const int labels = length / std::max(space, 1);
        const std::vector<Tic> tics = TicPositions(Axis, AxisKinds::Value);
        ASSERT_GE(tics.size(), 2U) << low << " " << high << " " << labels;
        if (labels < 2) continue;
        ASSERT_TRUE(PlainStep(Axis.TicInterval)) << Axis.TicInterval;
        ASSERT_LE(tics.size(), static_cast<std::size_t>(labels) + 2U) << low << " " << high;
    }
}

TEST_F(ScaleFuzzTest, LabelsOfAScaleAreAllDifferent) {
    for (int round = 0; round < 20000; ++round) {
        Axis = DefaultAxis();
        Axis.ScaleMode = ScaleModes::Autorange;
        const float low = Any(-30.0, 30.0);
        std::uniform_real_distribution<float> part(0.001F, 2.0F);
        Scale(Table({{low, low + std::fabs(low) * part(Random)}}), 400 + Length(), 20 + Space());
        std::set<std::string> texts;
        const std::vector<Tic> tics = TicPositions(Axis, AxisKinds::Value);
        for (const Tic& tic : tics)
            texts.insert(TicLabel(Axis, AxisKinds::Value, tic));
        ASSERT_EQ(texts.size(), tics.size())
            << Axis.Min << " to " << Axis.Max << " by " << Axis.TicInterval << ", " << Axis.Decimals
            << " decimals, format " << Axis.TicFormat;
    }
}

TEST_F(ScaleFuzzTest, LogScales) {
    for (int round = 0; round < 20000; ++round) {
        Axis = DefaultAxis();
        Axis.ScaleMode = ScaleModes::Autorange;
        Axis.ScaleType = ScaleTypes::Logarithmic;
        std::vector<float> values = {std::fabs(Any()), std::fabs(Any())};
        TransformSet(Axis, values.data(), 2);
        Scale(Table({values}), Length(), Space());
        for (const Tic& tic : TicPositions(Axis, AxisKinds::Value)) {
            ASSERT_GE(tic.Value, static_cast<double>(Axis.Min) - 0.01);
            ASSERT_LE(tic.Value, static_cast<double>(Axis.Max) + 0.01);
            ASSERT_TRUE(!tic.Major || tic.Value == std::nearbyint(tic.Value));
        }
    }
}

TEST_F(ScaleFuzzTest, AnyFieldsOfAnAxisAreHarmless) {
    const auto wild = [&]() -> float {
        switch (Random() % 8) {
        case 0:
            return 0.0F;
        case 1:
            return std::nanf("");
        case 2:
            return INFINITY;
        case 3:
            return -INFINITY;
        case 4:
            return MissingValue;
        default:
            return Any(-45.0, 38.0);
        }
    };
    for (int round = 0; round < 20000; ++round) {
        Axis = DefaultAxis();
        Axis.ScaleMode = static_cast<std::int16_t>(Random() % 4);
        Axis.ScaleType = static_cast<std::int16_t>(Random() % 3);
        Axis.LogBase = Random() % 2 == 0 ? 10.0F : std::fabs(wild());
        Axis.Factor = wild();
        Axis.Min = wild();
        Axis.Max = wild();
        Axis.FirstTic = wild();
        Axis.TicInterval = wild();
        std::vector<float> values = {wild(), wild(), wild()};
        TransformSet(Axis, values.data(), 3);
        for (const float value : values)
            ASSERT_TRUE(std::isfinite(value));
        Scale(Table({values}), Length(), Space());
        for (const Tic& tic : TicPositions(Axis, AxisKinds::Value))
            TicLabel(Axis, AxisKinds::Value, tic);
        ASSERT_GE(Axis.Decimals, 0);
    }
}

} // namespace
} // namespace Quillon
