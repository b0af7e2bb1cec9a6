// Sets of different noise: what the weights are, and that the stated errors cover with them.
#include "fit/equations/NoiseWeights.h"

#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ParmScale.h"
#include "tests/support/ReferenceFit.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace Quillon {
namespace {

constexpr std::array<double, 3> Noises{0.002, 0.006, 0.012};

// One species, three sets, the mass and the concentrations fitted.
Workspace ThreeSets() {
    ModelCase theCase;
    theCase.Model = 1;
    theCase.Fitted = {0};
    theCase.FitOffsets = false;
    theCase.Noise = 0.0;
    theCase.Sets = {{.Rpm = 15000, .Points = 60}, {.Rpm = 18000, .Points = 60}, {.Rpm = 21000, .Points = 60}};
    Workspace w = SimulatedWorkspace(theCase);
    w.MonitorMode = 0;
    w.ConvergenceLimit = 1e-4F;
    Work = w;
    BuildParmNames();
    BuildParmScale();
    SetDefaultBounds();
    return Work;
}

void AddNoise(Workspace& w, std::uint64_t seed) {
    NoiseSource noise(seed);
    for (long p = 1; p <= w.NumPts; ++p)
        w.PtY[p] += static_cast<float>(Noises[static_cast<std::size_t>(w.PtSet[p] - 1)] * noise.Gaussian());
}

void GiveNoise(Workspace& w) {
    for (long set = 1; set <= 3; ++set)
        w.SetNoise[w.SetRow[set]] = static_cast<float>(Noises[static_cast<std::size_t>(set - 1)]);
}

TEST(NoiseWeights, AreTheRatioToTheFirstSet) {
    Work = ThreeSets();
    EXPECT_FALSE(SetsHaveNoise());
    EXPECT_EQ(NoiseWeight(SetNo(3)), 1.0);
    GiveNoise(Work);
    EXPECT_TRUE(SetsHaveNoise());
    EXPECT_EQ(NoiseWeight(SetNo(1)), 1.0);
    EXPECT_NEAR(NoiseWeight(SetNo(3)), 1.0 / 6.0, 1e-7);
    Work.SetNoise[Work.SetRow[2]] = 0.0F;
    EXPECT_EQ(NoiseWeight(SetNo(3)), 1.0) << "for every set or for none";
}

// The pass in blocks and the plain loop are one: same sums, bit for bit.
TEST(NoiseWeights, EnterBothRoadsThroughThePointsAlike) {
    Script script;
    Work = ThreeSets();
    AddNoise(Work, 5);
    GiveNoise(Work);
    ResetFitFunction();
    AccumulateSums();
    const Workspace inBlocks = Work;
    ResetFitFunction();
    AccumulateSumsPlainly();
    EXPECT_EQ(Work.SumSq, inBlocks.SumSq);
    EXPECT_TRUE(Work.NormMatrix == inBlocks.NormMatrix);
    EXPECT_TRUE(Work.NormVector == inBlocks.NormVector);
    double sum = 0.0; // by the definition
    for (long p = 1; p <= Work.NumPts; ++p) {
        const double r = static_cast<double>(Work.PtY[p]) - static_cast<double>(Work.PtFit[p]);
        sum += std::pow(r * Noises[0] / Noises[static_cast<std::size_t>(Work.PtSet[p] - 1)], 2.0);
    }
    EXPECT_NEAR(Work.SumSq / sum, 1.0, 1e-5);
}

struct FittedDraws {
    int Covered = 0;
    double Squares = 0.0; // of the distances from the truth
};

FittedDraws FitDraws(bool weighted, int count) {
    const Workspace truth = ThreeSets();
    FittedDraws draws;
    for (int draw = 0; draw < count; ++draw) {
        Work = truth;
        AddNoise(Work, 1000 + static_cast<std::uint64_t>(draw));
        if (weighted) GiveNoise(Work);
        ResetFitFunction();
        EXPECT_TRUE(RunFit()) << draw;
        const double off = static_cast<double>(Work.Parms[0]) - static_cast<double>(truth.Parms[0]);
        const double error = std::sqrt(Work.NormMatrix(0, 0)) * static_cast<double>(Work.RmsResidual);
        draws.Covered += std::fabs(off) <= error;
        draws.Squares += off * off;
    }
    return draws;
}

// 300 draws: 0.683 of them are 204.9, one standard deviation of the count 8.06; three of them are allowed.
TEST(NoiseWeights, StatedErrorsCoverAndTheMassIsSurer) {
    Script script;
    const FittedDraws weighted = FitDraws(true, 300);
    EXPECT_NEAR(weighted.Covered, 204.9, 3.09 * 8.06);
    const FittedDraws plain = FitDraws(false, 300);
    EXPECT_LT(std::sqrt(weighted.Squares), 0.8 * std::sqrt(plain.Squares)) << "what the weights are for";
}

TEST(NoiseWeights, OfAFitAreTheRmsOfItsSetsAtMostTenToOne) {
    Work = ThreeSets();
    Work.PtFit = Work.PtY;
    for (long p = 1; p <= Work.NumPts; ++p) {
        const float off = Work.PtSet[p] == 1 ? 0.02F : Work.PtSet[p] == 2 ? 0.004F : 0.0001F;
        Work.PtFit[p] = Work.PtY[p] + (p % 2 != 0 ? off : -off);
    }
    const PerRow<float> noises = NoisesOfFit();
    EXPECT_NEAR(noises[Work.SetRow[1]], 0.02F, 1e-6F);
    EXPECT_NEAR(noises[Work.SetRow[2]], 0.004F, 1e-6F);
    EXPECT_NEAR(noises[Work.SetRow[3]], 0.002F, 1e-6F) << "a tenth of the largest one";
}

} // namespace
} // namespace Quillon
