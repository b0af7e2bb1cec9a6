// The choice of tics and their positions.
#include "chart/scale/Tics.h"

#include "ChartBench.h"
#include "chart/scale/AxisScale.h"

#include <cmath>
#include <cstdlib>

namespace Quillon {
namespace {

class TicsTest : public ChartBench {
protected:
    TicsTest() {
        Axis = DefaultAxis();
        Axis.ScaleMode = ScaleModes::Autorange;
    }
    void Choose(float min, float max, int length, int labelSpace) {
        Axis.Min = min;
        Axis.Max = max;
        AutoFormat(Axis);
        ChooseAxisTics(Axis, AxisKinds::Value, length, labelSpace);
    }
    void Log10() { Axis.ScaleType = ScaleTypes::Logarithmic; }
    std::vector<std::string> Labels() {
        std::vector<std::string> labels;
        for (const Tic& tic : TicPositions(Axis, AxisKinds::Value))
            if (tic.Major) labels.push_back(TicLabel(Axis, AxisKinds::Value, tic));
        return labels;
    }
    std::vector<float> Positions() {
        std::vector<float> positions;
        for (const Tic& tic : TicPositions(Axis, AxisKinds::Value))
            positions.push_back(static_cast<float>(tic.Value));
        return positions;
    }
    GraphAxis Axis;
};

using Texts = std::vector<std::string>;

float Decimal(int digits, int power) {
    return std::strtof((std::to_string(digits) + "e" + std::to_string(power)).c_str(), nullptr);
}

TEST_F(TicsTest, LimitsAreRoundedOutwardToWholeSteps) {
    Choose(0.13F, 0.87F, 1000, 100); // ten labels: 74 steps of 0.01, 37 of 0.02, 8 of 0.1
    EXPECT_EQ(Axis.TicInterval, 0.1F);
    EXPECT_EQ(Axis.Min, 0.1F);
    EXPECT_EQ(Axis.Max, 0.9F);
    EXPECT_EQ(Axis.FirstTic, 0.1F);
    EXPECT_EQ(Axis.Decimals, 1);
    EXPECT_EQ(Labels(), (Texts{"0.1", "0.2", "0.3", "0.4", "0.5", "0.6", "0.7", "0.8", "0.9"}));
}

TEST_F(TicsTest, TheSameInEveryDecade) {
    for (int d = -12; d <= 12; ++d)
        for (const int sign : {1, -1}) {
            const float low = Decimal(13, d - 2);
            const float high = Decimal(87, d - 2);
            if (sign > 0)
                Choose(low, high, 1000, 100);
            else
                Choose(-high, -low, 1000, 100);
            EXPECT_EQ(Axis.TicInterval, Decimal(1, d - 1)) << d;
            EXPECT_EQ(sign > 0 ? Axis.Min : -Axis.Max, Decimal(1, d - 1)) << d;
            EXPECT_EQ(sign > 0 ? Axis.Max : -Axis.Min, Decimal(9, d - 1)) << d;
            EXPECT_EQ(Axis.FirstTic, Axis.Min) << d;
            EXPECT_EQ(Labels().size(), 9U) << d;
        }
}

TEST_F(TicsTest, StepsGoOneTwoTenTwentyNeverFive) {
    const struct {
        int Labels;
        float Step;
    } cases[] = {{1000, 0.01F}, {100, 0.01F}, {99, 0.02F}, {50, 0.02F}, {49, 0.1F},
                 {10, 0.1F},    {9, 0.2F},    {5, 0.2F},   {4, 1.0F},   {2, 1.0F}};
    for (const auto& c :
         cases) { // 0 to 0.999: m = 0.999 gives a first step of 0.01, of which the range has 100
        Choose(0.0F, 0.999F, c.Labels * 20, 20);
        EXPECT_EQ(Axis.TicInterval, c.Step) << c.Labels;
        EXPECT_EQ(Axis.Max, 1.0F);
    }
}

TEST_F(TicsTest, ALimitOnAStepStays) {
    Choose(0.0F, 0.09F, 1000, 100); // nine steps of 0.01
    EXPECT_EQ(Axis.Max, 0.09F);
    Choose(0.0F, 0.3F, 1000, 100); // 30 of 0.01, 15 of 0.02, 3 of 0.1
    EXPECT_EQ(Axis.Max, 0.3F);
    Choose(-0.7F, 0.7F, 1000, 100); // 140, 70, 14, 7 steps of 0.2
    EXPECT_EQ(Axis.TicInterval, 0.2F);
    EXPECT_EQ(Axis.Min, -0.8F);
    EXPECT_EQ(Axis.Max, 0.8F);
}

TEST_F(TicsTest, EveryWholeNumberOfStepsIsItsOwnLimit) {
    for (int power = -9; power <= 9; ++power)
        for (int k = 1; k <= 99; ++k) {
            Choose(0.0F, Decimal(k, power), 1000000,
                   10); // the first step, a tenth of the leading digit or less
            EXPECT_EQ(Axis.Max, Decimal(k, power)) << k << "e" << power;
        }
}

TEST_F(TicsTest, AFrameShorterThanTwoLabelsShowsTheEndsOfTheRange) {
    Choose(0.13F, 0.87F, 150, 100);
    EXPECT_EQ(Axis.Min, 0.13F);
    EXPECT_EQ(Axis.Max, 0.87F);
    EXPECT_EQ(Axis.FirstTic, 0.13F);
    EXPECT_EQ(Axis.TicInterval, 0.74F);
    EXPECT_EQ(Positions(), (std::vector<float>{0.13F, 0.87F}));
    Choose(0.13F, 0.87F, 0, 0);
    EXPECT_EQ(Positions(), (std::vector<float>{0.13F, 0.87F}));
}

TEST_F(TicsTest, OnePointFromOneToTwo) {
    Choose(1.0F, 2.0F, 1000, 100); // m = 2: steps of 0.1, of which ten fit
    EXPECT_EQ(Axis.TicInterval, 0.1F);
    EXPECT_EQ(Labels().front(), "1.0");
    EXPECT_EQ(Labels().back(), "2.0");
    EXPECT_EQ(Labels().size(), 11U);
}

TEST_F(TicsTest, DecimalsFollowTheStepInPlainFormat) {
    Choose(6.85F, 7.15F, 1000, 60); // steps of 0.1
    EXPECT_EQ(Axis.Decimals, 1);
    Choose(0.0F, 0.0042F, 300, 60); // five labels: 42 of 0.0001, 21, 5 of 0.001
    EXPECT_EQ(Axis.TicInterval, 0.001F);
    EXPECT_EQ(Axis.Decimals, 3);
    Choose(0.0F, 0.019F, 500, 50); // 19 of 0.001, ten of 0.002
    EXPECT_EQ(Axis.TicInterval, 0.002F);
    EXPECT_EQ(Axis.Decimals, 3);
    Choose(0.0F, 5000.0F, 1000, 100); // not below 1: as AutoFormat has it
    EXPECT_EQ(Axis.Decimals, 0);
}

TEST_F(TicsTest, DecimalsOfExponentialLabelsStay) {
    Choose(0.0F, 2.5e-5F, 1000, 100);
    EXPECT_EQ(Axis.TicFormat, TicFormats::Exponential);
    EXPECT_EQ(Axis.Decimals, 1);
    EXPECT_EQ(Labels().front(), "0.0E+0");
    EXPECT_EQ(Labels().back(), "3.0E-5");
}

TEST_F(TicsTest, ZeroOfAnExponentialAxisIsZeroWhateverTheRounding) {
    Choose(-3e5F, 3e5F, 1000, 50);
    const Texts labels = Labels();
    EXPECT_EQ(std::count(labels.begin(), labels.end(), "0.0E+0"), 1);
}

TEST_F(TicsTest, CategoriesStandInTheMiddleOfTheirStretch) {
    Chart.State.Npts = 4;
    ChooseAxisTics(Axis, AxisKinds::Category, 500, 50);
    EXPECT_EQ(Axis.TicInterval, 0.25F);
    EXPECT_EQ(Axis.FirstTic, 0.125F);
    Chart.CatLabels.Recreate(2);
    Chart.CatLabels[2] = "second";
    const std::vector<Tic> tics = TicPositions(Axis, AxisKinds::Category);
    ASSERT_EQ(tics.size(), 4U);
    Texts labels;
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_DOUBLE_EQ(tics[i].Value, 0.125 + 0.25 * static_cast<double>(i));
        labels.push_back(TicLabel(Axis, AxisKinds::Category, tics[i]));
    }
    EXPECT_EQ(labels, (Texts{"1", "second", "3", "4"}));
}

// --- logarithmic axes ----------------------------------------------------------------------------------

TEST_F(TicsTest, MinorTicsByThePartOfADecadeThatALabelTakes) {
    Log10();
    const struct {
        int LabelSpace;
        float Minor;
    } cases[] = {{50, 0.0F}, {48, 0.0F}, {47, 1.0F}, {31, 1.0F}, {30, 2.0F},
                 {10, 2.0F}, {9, 4.0F},  {5, 4.0F},  {4, 8.0F}};
    for (const auto& c :
         cases) { // a decade is 100 units long: log10 of 3, 2, 1.25 and 10/9 are 47.7, 30.1, 9.7, 4.6
        Choose(0.0F, 2.0F, 200, c.LabelSpace);
        EXPECT_EQ(Axis.TicInterval, c.Minor) << c.LabelSpace;
        EXPECT_EQ(Axis.Min, 0.0F); // limits are not rounded
        EXPECT_EQ(Axis.Max, 2.0F);
    }
}

TEST_F(TicsTest, FirstTicOfALogAxisIsTheFirstDecade) {
    Log10();
    const struct {
        float Min, First;
    } cases[] = {{0.0F, 0.0F}, {-0.5F, 0.0F}, {0.3F, 1.0F}, {-2.0F, -2.0F}, {-2.7F, -2.0F}, {1.0001F, 2.0F}};
    for (const auto& c : cases) {
        Choose(c.Min, 3.4F, 500, 20);
        EXPECT_EQ(Axis.FirstTic, c.First) << c.Min;
        EXPECT_EQ(Axis.Min, c.Min);
    }
}

TEST_F(TicsTest, MinorTicsOfADecade) {
    Log10();
    Pin(Axis, 0.0F, 1.0F, 0.0F);
    const auto logs = [](std::vector<double> values) {
        std::vector<float> expected;
        for (const double value : values)
            expected.push_back(static_cast<float>(std::log10(value)));
        return expected;
    };
    EXPECT_EQ(Positions(), logs({1, 10}));
    Axis.TicInterval = 1.0F;
    EXPECT_EQ(Positions(), logs({1, 3, 10}));
    Axis.TicInterval = 2.0F;
    EXPECT_EQ(Positions(), logs({1, 2, 5, 10}));
    Axis.TicInterval = 4.0F;
    EXPECT_EQ(Positions(), logs({1, 2, 4, 6, 8, 10}));
    Axis.TicInterval = 8.0F;
    EXPECT_EQ(Positions(), logs({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    Axis.TicInterval = 3.0F; // any other is 1
    EXPECT_EQ(Positions(), logs({1, 3, 10}));
}

TEST_F(TicsTest, MinorTicsBelowTheFirstDecadeAppear) {
    Log10();
    Choose(-0.5F, 1.2F, 1000, 20); // 0.3162 to 15.85
    EXPECT_EQ(Axis.TicInterval, 8.0F);
    const std::vector<float> positions = Positions();
    EXPECT_NEAR(positions.front(), std::log10(0.4), 1e-6);
    EXPECT_NEAR(positions.back(), std::log10(10.0), 1e-6);
    EXPECT_EQ(Labels(), (Texts{"1.0", "10.0"}));
}

TEST_F(TicsTest, ALogScaleWithinOneDecade) {
    Log10();
    Choose(0.2F, 0.9F, 1000, 20); // 1.58 to 7.94: no decade in it
    EXPECT_TRUE(Labels().empty());
    const std::vector<float> positions = Positions();
    ASSERT_EQ(positions.size(), 6U); // 2 to 7
    EXPECT_NEAR(positions.front(), std::log10(2.0), 1e-6);
    EXPECT_NEAR(positions.back(), std::log10(7.0), 1e-6);
}

TEST_F(TicsTest, LogAxesInEveryDecade) {
    Log10();
    for (int d = -12; d <= 12; ++d) {
        Choose(static_cast<float>(d), static_cast<float>(d + 3), 900, 50);
        EXPECT_EQ(Axis.FirstTic, static_cast<float>(d));
        EXPECT_EQ(Labels().size(), 4U) << d;
        for (const std::string& label : Labels())
            EXPECT_NEAR(std::fabs(std::fmod(std::log10(std::stod(label)), 1.0)), 0.0, 1e-9) << label;
    }
}

TEST_F(TicsTest, NaturalLogAxesHaveLinearTics) {
    Log10();
    Axis.LogBase = NaturalBase;
    Choose(-3.21F, 1.9F, 1000, 100); // m = 3.21: 52 steps of 0.1, 26 of 0.2, 6 of 1
    EXPECT_EQ(Axis.TicInterval, 1.0F);
    EXPECT_EQ(Labels(), (Texts{"-4.0", "-3.0", "-2.0", "-1.0", "0.0", "1.0", "2.0"}));
}

// --- positions -----------------------------------------------------------------------------------------

TEST_F(TicsTest, TheLastStepIsNotLostInTheRoundingOfSingles) {
    for (int power = -9; power <= 9; ++power)
        for (int k = 1; k <= 99; ++k) {
            const float step = Decimal(1, power);
            Pin(Axis, Decimal(-3, power), Decimal(k, power), step);
            EXPECT_EQ(TicPositions(Axis, AxisKinds::Value).size(), static_cast<std::size_t>(k + 4))
                << k << "e" << power;
        }
}

TEST_F(TicsTest, StepsBeforeTheScaleDoNotCount) {
    Pin(Axis, 500.0F, 700.0F, 100.0F);
    Axis.FirstTic = 0.0F;
    EXPECT_EQ(Labels(), (Texts{"500", "600", "700"}));
    Axis.FirstTic = -1e6F;
    EXPECT_EQ(Labels(), (Texts{"500", "600", "700"}));
    Axis.FirstTic = 550.0F;
    EXPECT_EQ(Labels(), (Texts{"550", "650"}));
}

TEST_F(TicsTest, RoundSteps) {
    for (const auto& [wanted, step] : {std::pair{1.0, 1.0},
                                       {1.1, 2.0},
                                       {2.0, 2.0},
                                       {3.0, 5.0},
                                       {5.1, 10.0},
                                       {0.03, 0.05},
                                       {700.0, 1000.0}})
        EXPECT_DOUBLE_EQ(RoundStep(wanted), step) << wanted;
}

TEST_F(TicsTest, AZoomBetweenTwoTicsHasNone) {
    Pin(Axis, 510.0F, 590.0F, 100.0F);
    Axis.FirstTic = 0.0F;
    EXPECT_TRUE(Labels().empty());
}

TEST_F(TicsTest, AHairBeyondTheEndStillCountsButNotWhatShows) {
    Pin(Axis, 1000.0F, 1000.01F, 0.005F);
    Axis.FirstTic = 999.995F;
    const std::vector<Tic> tics = TicPositions(Axis, AxisKinds::Value);
    for (const Tic& tic : tics) {
        EXPECT_GT(tic.Value, 999.999);
        EXPECT_LT(tic.Value, 1000.011);
    }
}

TEST_F(TicsTest, AReversedScaleHasTicsToo) {
    Pin(Axis, 10.0F, 0.0F, -2.5F);
    Axis.Decimals = 1;
    EXPECT_EQ(Labels(), (Texts{"10.0", "7.5", "5.0", "2.5", "0.0"}));
}

TEST_F(TicsTest, WildIntervalsEndInAFewTics) {
    for (const float interval : {1e-30F, 1e-8F, 0.0F, -1.0F, 1e30F, std::nanf(""), INFINITY, -INFINITY})
        for (const float first : {0.0F, 1e30F, -1e30F, std::nanf(""), INFINITY, -INFINITY})
            for (const bool logarithmic : {false, true}) {
                Axis.ScaleType = logarithmic ? ScaleTypes::Logarithmic : ScaleTypes::Linear;
                Pin(Axis, 0.0F, 1.0F, interval);
                Axis.FirstTic = first;
                EXPECT_LE(TicPositions(Axis, AxisKinds::Value).size(), 10020U);
            }
}

TEST_F(TicsTest, AnIntervalTooSmallIsTakenTenfold) {
    Pin(Axis, 0.0F, 1.0F, 1e-6F);
    EXPECT_EQ(TicPositions(Axis, AxisKinds::Value).size(), 1001U); // steps of 0.001
}

} // namespace
} // namespace Quillon
