// What a minimum leaves beside the noise: of all sets, of one, in long waves.
#include "fit/Misfit.h"
#include "RescueCase.h"
#include "fit/LongWaves.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace Quillon {
namespace {

class MisfitTest : public RescueCase {};

// Levels of readings that go up and down by a height of their own, with a trend in some sets: residuals of
// the height, and a noise of twice the height over sqrt(1.5 * 0.4549) as neighbouring readings show it.
struct Zigzag {
    double Height;
    double Trend = 0.0; // a point
};
void FitZigzags(const std::vector<Zigzag>& sets, int points) {
    std::vector<std::vector<float>> levels;
    for (const Zigzag& set : sets) {
        levels.emplace_back();
        for (int i = 0; i < points; ++i)
            levels.back().push_back(
                static_cast<float>(set.Trend * i + (i % 2 == 1 ? set.Height : -set.Height)));
    }
    Work = FreshWorkspace();
    MakeLevels(levels);
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtX[p] = 0.001F * static_cast<float>(p);
    RunFit();
    ASSERT_EQ(Work.Outcome.End, FitEnd::Converged);
}

// Variances: 0.004^2 (100^2 - 1) / 12 of the trend, 0.01^2 of the zigzag, and 4e-5 that they have in common;
// noise: 0.02 / sqrt(1.5 * 0.4549).
TEST_F(MisfitTest, AMinimumThatLeavesMoreThanTheNoiseSaidNothing) {
    FitZigzags({{0.01, 0.004}}, 100);
    EXPECT_EQ(MisfitText(), "The fit leaves more than the noise of the data (rms 1.161E-1, noise 2.421E-2): "
                            "a wrong model, or another minimum. Search for Other Minima.");
    EXPECT_EQ(MisfitStateText(), ", more than the noise");
    Work.Outcome.End = FitEnd::StoppedShort;
    EXPECT_EQ(MisfitText(), "") << "is no minimum, which is told already";
    FitZigzags({{0.01}}, 100);
    EXPECT_EQ(MisfitText() + MisfitStateText(), "");
}

// What was found once serves whoever asks again, and nobody who asks about anything else.
TEST_F(MisfitTest, WhatAMinimumLeavesIsThatOfThePointsThatStand) {
    FitZigzags({{0.01, 0.004}, {0.01, 0.004}}, 100);
    const std::string text = MisfitText();
    EXPECT_NE(text, "");
    const auto fit = Work.PtFit;
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtFit[p] = Work.PtY[p] - (p % 2 == 0 ? 0.01F : -0.01F);
    EXPECT_EQ(MisfitText(), "");
    Work.PtFit = fit;
    EXPECT_EQ(MisfitText(), text);
    Work.SetNoise[RowOf(SetNo(1))] = 0.01F;
    Work.SetNoise[RowOf(SetNo(2))] = 0.02F;
    EXPECT_NE(MisfitText(), text) << "the second set counts half as much";
}

TEST_F(MisfitTest, OneSetThatLeavesMoreThanTheNoiseIsToldByItsNumber) {
    FitZigzags({{0.01}, {0.01, 0.003}, {0.01}, {0.01}, {0.01}, {0.01}}, 60);
    EXPECT_TRUE(MisfitText().starts_with("The fit leaves more than the noise of the data in set 2 (rms "))
        << MisfitText();
    EXPECT_EQ(MisfitStateText(), ", more than the noise in set 2");
}

TEST_F(MisfitTest, ASetOfMoreNoiseThanOthersIsNoMisfit) {
    FitZigzags({{0.01}, {0.05}, {0.01}, {0.01}, {0.01}, {0.01}}, 60);
    EXPECT_TRUE(LeavesMoreThanNoise(Work)) << "which costs a look";
    EXPECT_EQ(MisfitText(), "");
}

// A trend of three tenths of the variance of the noise: with 360 points the sum of squares is 1.7 standard
// deviations too high, and the five long waves that its level leaves of each set are nearly four times too
// high.
TEST_F(MisfitTest, AMisfitInLongWavesWasLostInTheSum) {
    const auto fit = [](double share) {
        const double trend = std::sqrt(share * 0.01 * 0.01 * 12.0 / (60.0 * 60.0 - 1.0));
        FitZigzags(std::vector<Zigzag>(6, {0.01, trend}), 60);
    };
    fit(0.3);
    EXPECT_TRUE(LeavesMoreThanNoise(Work));
    EXPECT_TRUE(MisfitText().starts_with(
        "The fit leaves more than the noise of the data (long waves in the residuals 1.9"))
        << MisfitText();
    EXPECT_NE(MisfitText().find(", noise 1.0"), std::string::npos) << MisfitText();
    fit(0.03);
    EXPECT_FALSE(LeavesMoreThanNoise(Work));
    EXPECT_EQ(MisfitText(), "");
}

// A third wave in one set, of eighteen times the noise of a wave. Of 3,000 points another curve through the
// set may find a sum that is half a hundredth lower; of 27,000 no curve finds one that is lower by a
// thousandth, and a search of all sets was made for it.
TEST_F(MisfitTest, OfManyPointsASetThatStandsOutByChanceHasNothingToGive) {
    const auto doubt = [](std::size_t sets, int points) {
        FitZigzags(std::vector<Zigzag>(sets, {0.01}), points);
        const double height = 0.01 * std::sqrt(18.0 * 2.0 / points);
        for (int i = 0; i < points; ++i)
            Work.PtFit[1 + i] +=
                static_cast<float>(height * std::cos(std::numbers::pi * 3.0 * (i + 0.5) / points));
        EXPECT_GT(DeviationsOfSets(Work)[1], 2.3) << "more than chance leaves in one of eighteen sets";
        return DoubtAbout(Work);
    };
    EXPECT_EQ(doubt(6, 500), Doubt::Slight);
    EXPECT_EQ(doubt(18, 1500), Doubt::None);
}

// A cosine of the third wave over 40 points, of the height 0.5 on a level of 2: squares of 40 * 0.5^2 / 2 and
// 40 * 2^2, and nothing elsewhere.
TEST(LongWaves, ACosineIsItsOwnWave) {
    std::vector<double> residuals;
    for (int i = 0; i < 40; ++i)
        residuals.push_back(2.0 + 0.5 * std::cos(std::numbers::pi * 3.0 * (i + 0.5) / 40.0));
    const Waves waves = WavesOf(residuals);
    EXPECT_NEAR(waves.Long.Sum, 160.0 + 5.0, 1e-10);
    EXPECT_NEAR(waves.Middle.Sum, 0.0, 1e-10);
    EXPECT_NEAR(waves.Others.Sum, 0.0, 1e-10);
    EXPECT_EQ(waves.Long.Count, 6.0);
    EXPECT_EQ(waves.Middle.Count, 24.0);
    EXPECT_EQ(waves.Others.Count, 34.0);
    const Waves few = WavesOf({1.0, -1.0, 1.0});
    EXPECT_EQ(few.Long.Count + few.Others.Count, 3.0);
    EXPECT_NEAR(few.Long.Sum + few.Others.Sum, 3.0, 1e-12) << "all squares are somewhere";
}

// Points of the F distribution from tables: 5%, 1% and 0.1%.
TEST(LongWaves, DeviationsAreThoseOfTheFDistribution) {
    const auto deviations = [](double ratio, double above, double below) {
        return DeviationsAbove({ratio * above, above}, {below, below});
    };
    EXPECT_NEAR(deviations(2.348, 10.0, 20.0), 1.645, 0.02);
    EXPECT_NEAR(deviations(3.368, 10.0, 20.0), 2.326, 0.02);
    EXPECT_NEAR(deviations(5.075, 10.0, 20.0), 3.090, 0.03);
    EXPECT_NEAR(deviations(2.254, 6.0, 60.0), 1.645, 0.02);
    EXPECT_EQ(DeviationsAbove({0.0, 6.0}, {1.0, 10.0}), 0.0);
    EXPECT_TRUE(std::isinf(DeviationsAbove({1.0, 6.0}, {0.0, 10.0})));
}

// Readings that bend between neighbours by far more than their noise: the noise was read as their bend, and a
// fit many times above it said nothing.
TEST_F(MisfitTest, ASteepSignalHidItsNoise) {
    FitZigzags({{0.01}}, 100);
    const double noise = NoiseVariance(Work);
    EXPECT_NEAR(noise, 0.02 * 0.02 / (1.5 * 0.4549), 1e-6);
    for (long p = 1; p <= Work.NumPts; ++p) {
        const float steep = std::exp(0.08F * static_cast<float>(p));
        Work.PtY[p] += steep;
        Work.PtFit[p] += steep;
    }
    EXPECT_NEAR(NoiseVariance(Work), noise, 0.1 * noise);
}

TEST_F(MisfitTest, AHandfulOfPointsTellsNoNoise) {
    FitZigzags({{0.01, 1.0}}, 19);
    EXPECT_FALSE(LeavesMoreThanNoise(Work));
    EXPECT_EQ(MisfitText(), "");
}

TEST_F(MisfitTest, AtTheMinimumNoCaseLeavesMoreThanTheNoise) {
    for (const std::string& name : RobustnessCases()) {
        LoadRobustnessCase(ModelCaseNamed(name), 1);
        RunFit();
        EXPECT_EQ(MisfitText(), "") << name;
    }
}

} // namespace
} // namespace Quillon
