// Normal deviates: by hand from a scripted stream, and their distribution.
#include "models/function/Random.h"

#include "models/function/Simulation.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <thread>

namespace Quillon {
namespace {

// The uniform numbers of a good generator of its own behind the seam.
struct NoiseStream {
    explicit NoiseStream(std::uint64_t seed) : Source(seed) {
        Host.Uniform = [this] { return static_cast<float>(Source.Bits() >> 40) * 0x1p-24F; };
        Host.SeedUniform = [this] { ++Seedings; };
        RestartRandom();
    }
    NoiseSource Source;
    int Seedings = 0;
};

TEST(Random, ShufflesTheStreamByHand) {
    Script script;
    // 97 numbers are discarded, 97 fill the table, one more says which place comes first.
    std::vector<float> stream(97, 0.999F);
    for (int i = 1; i <= 97; ++i)
        stream.push_back(static_cast<float>(i) / 128.0F);
    stream.push_back(0.5F);  // place 1 + int(48.5) = 49
    stream.push_back(0.25F); // goes into place 49
    script.UniformNumbers = stream;
    RestartRandom();
    std::int16_t seed = -5;
    EXPECT_EQ(ShuffledUniform(seed), 49.0F / 128.0F);
    EXPECT_EQ(seed, 1);
    // the next place: 1 + int(97 * 49 / 128) = 38
    EXPECT_EQ(ShuffledUniform(seed), 38.0F / 128.0F);
}

// Fits to resampled data draw side by side: what one thread draws must not shift the stream of another.
TEST(Random, DeviatesOfAnotherThreadDoNotShiftTheStream) {
    Script script;
    const auto deviates = [](bool disturbed) {
        NoiseStream stream(9);
        std::int16_t seed = 1;
        std::vector<double> drawn;
        for (int i = 0; i < 5; ++i) {
            drawn.push_back(GaussianNoise(seed));
            if (!disturbed) continue;
            std::thread([] {
                const Platform former = Host;
                Host.Uniform = [] { return 0.75F; };
                Host.SeedUniform = [] {};
                RestartRandom();
                std::int16_t other = 1;
                GaussianNoise(other);
                Host = former;
            }).join();
        }
        return drawn;
    };
    EXPECT_EQ(deviates(true), deviates(false));
}

TEST(Random, IsThePolarMethod) {
    Script script;
    NoiseStream stream(4);
    std::int16_t seed = 1;
    std::vector<float> uniforms;
    for (int i = 0; i < 40; ++i)
        uniforms.push_back(ShuffledUniform(seed));
    NoiseStream again(4);
    std::size_t next = 0;
    for (int pair = 0; pair < 10; ++pair) {
        double d1, d2, s;
        do {
            d1 = 2.0 * uniforms[next++] - 1.0;
            d2 = 2.0 * uniforms[next++] - 1.0;
            s = d1 * d1 + d2 * d2;
        } while (s <= 0.0 || s > 1.0);
        const double f = std::sqrt(-2.0 * std::log(s) / s);
        EXPECT_DOUBLE_EQ(GaussianNoise(seed), d2 * f);
        EXPECT_EQ(GaussianNoise(seed), static_cast<double>(static_cast<float>(d1 * f)));
    }
}

TEST(Random, TheSpareDeviateHadMoreDigitsThanASingle) {
    Script script;
    NoiseStream stream(9);
    std::int16_t seed = 1;
    for (int pair = 0; pair < 20; ++pair) {
        GaussianNoise(seed);
        const double spare = GaussianNoise(seed);
        EXPECT_EQ(spare, static_cast<double>(static_cast<float>(spare)));
    }
}

TEST(Random, DeviatesAreNormal) {
    Script script;
    NoiseStream stream(11);
    std::int16_t seed = 1;
    constexpr int n = 100000;
    std::vector<double> deviates(n);
    for (double& d : deviates)
        d = GaussianNoise(seed);
    std::sort(deviates.begin(), deviates.end());
    const auto normal = [](double z) { return 0.5 * std::erfc(-z / std::sqrt(2.0)); };
    double distance = 0.0;
    for (int i = 0; i < n; ++i) {
        const double p = normal(deviates[static_cast<std::size_t>(i)]);
        distance = std::max({distance, p - i / double(n), (i + 1) / double(n) - p});
    }
    EXPECT_LT(distance * std::sqrt(double(n)), 1.95); // Kolmogorov-Smirnov, p = 0.001
    // 50 classes of equal probability
    std::vector<int> counts(50);
    for (const double d : deviates)
        ++counts[static_cast<std::size_t>(std::min(49.0, normal(d) * 50))];
    double chi2 = 0.0;
    for (const int count : counts)
        chi2 += (count - n / 50.0) * (count - n / 50.0) / (n / 50.0);
    EXPECT_LT(chi2, 85.4); // 49 degrees of freedom, p = 0.001
    EXPECT_GT(chi2, 23.9);
}

TEST(Random, StartsAnewWithEachRun) {
    Script script;
    NoiseStream stream(3);
    std::int16_t seed = 1;
    const double first = GaussianNoise(seed); // leaves a spare
    RestartRandom();
    stream.Source = NoiseSource(3);
    EXPECT_EQ(GaussianNoise(seed), first);
    EXPECT_EQ(stream.Seedings, 2);
}

TEST(Noise, HasItsStandardDeviationAndSparesPseudoPoints) {
    Script script;
    Work = SimulatedWorkspace(ModelCaseNamed("Model08Constrained"));
    NoiseStream stream(7);
    constexpr double level = 0.005;
    double sum = 0.0;
    long count = 0;
    for (int run = 0; run < 200; ++run) {
        OneBased<float> values(Work.NumPts, 0.0F);
        AddNoise(values, level);
        for (long p = 1; p <= Work.NumPts; ++p) {
            if (Work.PtX[p] == PointMarker) {
                EXPECT_EQ(values[p], 0.0F);
                continue;
            }
            sum += static_cast<double>(values[p]) * values[p] / (level * level);
            ++count;
        }
    }
    // chi-square with count degrees of freedom: 3.3 standard deviations
    EXPECT_NEAR(sum, static_cast<double>(count), 3.3 * std::sqrt(2.0 * static_cast<double>(count)));
    EXPECT_EQ(stream.Seedings, 200);
    OneBased<float> untouched(Work.NumPts, 0.25F);
    AddNoise(untouched, 0.0);
    EXPECT_EQ(untouched, OneBased<float>(Work.NumPts, 0.25F));
}

TEST(SimulateSignals, AreTheFittedFunction) {
    Script script;
    Work = SimulatedWorkspace(ModelCaseNamed("Model20"));
    OneBased<float> values;
    ASSERT_TRUE(SimulateSignals(values));
    for (long p = 1; p <= Work.NumPts; ++p) // the case's data have noise of 0.0015
        EXPECT_NEAR(values[p], Work.PtY[p], 6 * 0.0015);
}

TEST(SimulateSignals, BeyondAllNumbersAndBeyondSinglesAreAFaultThatIsLeftToTheCaller) {
    Script script;
    OneBased<float> values;
    for (const float ln : {2000.0F, 95.0F}) { // e^95 is a double and no single
        Work = SimulatedWorkspace(ModelCaseNamed("Model20"));
        const FitOutcome former = Work.Outcome;
        Work.Parms[SlotA(2)] = ln;
        EXPECT_FALSE(SimulateSignals(values));
        EXPECT_NE(Work.AbortFit, 0);
        EXPECT_EQ(Work.Outcome, former) << "the end of the fit that stands was forgotten";
    }
}

} // namespace
} // namespace Quillon
