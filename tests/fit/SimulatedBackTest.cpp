// The program's own simulation, fitted back: the parameters scatter about the truth by their stated errors.
#include "SyntheticFit.h"
#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "models/function/Random.h"
#include "models/function/Simulation.h"
#include "platform/Platform.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace Quillon {
namespace {

// A uniform generator of good quality behind the seam.
void UseGenerator(NoiseSource& source) {
    Host.Uniform = [&source] { return static_cast<float>(source.Bits() >> 40) * 0x1p-24F; };
}

class SimulatedBack : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        Work = SimulatedWorkspace(ModelCaseNamed(GetParam()));
        Work.MonitorMode = 0;
        BuildParmNames();
        BuildParmScale();
        SetDefaultBounds();
        Truth = Work;
        ASSERT_TRUE(SimulateSignals(Signals));
    }
    // A fit of the signals with noise, from somewhere else than the truth.
    void FitSignals(double noise) {
        Work = Truth;
        Work.PtY = Signals;
        AddNoise(Work.PtY, noise);
        MoveAwayFromTruth();
        ASSERT_TRUE(RunFit()) << Work.Outcome.Sentence;
    }
    double OffTruth(long slot) const {
        return static_cast<double>(Work.Parms[slot]) - static_cast<double>(Truth.Parms[slot]);
    }
    Script Outside;
    Workspace Truth;
    OneBased<float> Signals;
};
INSTANTIATE_TEST_SUITE_P(Models, SimulatedBack, testing::Values("Model01", "Model02", "Model08"),
                         [](const auto& each) { return each.param; });

TEST_P(SimulatedBack, WithoutNoiseGivesTheParameters) {
    Truth.ConvergenceLimit = 1e-5F;
    Truth.MaxIterations = 200;
    FitSignals(0.0);
    for (long a = 0; a < Work.NumFree; ++a) {
        const long slot = Work.FreeIndex[a];
        EXPECT_NEAR(OffTruth(slot), 0.0, 1e-3) << slot; // logarithms, offsets and a sigma next to 1
    }
}

TEST_P(SimulatedBack, ScattersByTheStatedErrors) {
    NoiseSource source(20);
    UseGenerator(source);
    constexpr int Draws = 200;
    std::vector<double> squares(static_cast<std::size_t>(Truth.NumFree));
    for (int draw = 0; draw < Draws; ++draw) {
        FitSignals(ModelCaseNamed(GetParam()).Noise);
        for (long a = 0; a < Work.NumFree; ++a) {
            const double error =
                std::sqrt(std::fabs(Work.NormMatrix(a, a))) * static_cast<double>(Work.RmsResidual);
            squares[static_cast<std::size_t>(a)] += std::pow(OffTruth(Work.FreeIndex[a]) / error, 2);
        }
    }
    // Chi-square with 200 degrees of freedom: one case in a thousand on either side.
    for (std::size_t a = 0; a < squares.size(); ++a) {
        EXPECT_GT(squares[a], 143.8) << Work.ParmName[Work.FreeIndex[static_cast<long>(a)]];
        EXPECT_LT(squares[a], 267.5) << Work.ParmName[Work.FreeIndex[static_cast<long>(a)]];
    }
}

} // namespace
} // namespace Quillon
